#pragma once

#include "evaluate/library/Arguments.h"
#include "evaluate/variant/Dates.h"

namespace Formula {

/// Which day a week begins with (1 is Sunday) and which week is the first of a year.
struct Week_Rule {
    int first_day = 1;
    int first_week = 1; ///< 1: that of January 1; 2: the first with four days in the year; 3: the first whole one
};

/// Reads the first day and the first week; 0, "as the system", is Sunday and the week of January 1. 5 out of range.
Evaluated<Week_Rule> Week_Rule_At(Arguments arguments, std::size_t index);

int Day_Of_Year(const Date_Parts& parts);             ///< from 1
int Weekday_By(double days, const Week_Rule& rule);   ///< 1 is the rule's first day
int Week_Of_Year(double days, const Week_Rule& rule); ///< 1 to 54; a week may belong to the year beside

} // namespace Formula
