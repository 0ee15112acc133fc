#pragma once

#include "frame/Program_State.h"

/// What the rows of a list of named patterns or formulas say: a row without any text is left out, and one without a name
/// is named by its text.
Name_Value_List List_From_Rows(const std::vector<Name_Value_Pair>& rows);

bool Stands_In(const Name_Value_List& list, const Name_Value_Pair& row);

/// The rows of `now` that were not in `before`: what the user wrote or changed.
std::vector<Name_Value_Pair> New_Rows(const Name_Value_List& before, const Name_Value_List& now);
