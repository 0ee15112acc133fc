#pragma once

#include "catalogue/Catalogue_State.h"

/// Questions before changes that were not saved are given up; `all` asks for all pictures, otherwise for the selected
/// ones. True when there are none or the user said Yes.
bool Confirm_Abandon_Scripts(const Catalogue_State& state, bool all);
bool Confirm_Abandon_Descriptions(const Catalogue_State& state, bool all);
/// The same for the pictures of these indices.
bool Confirm_Abandon_Scripts(const Catalogue_State& state, std::span<const int> indices);
bool Confirm_Abandon_Descriptions(const Catalogue_State& state, std::span<const int> indices);

/// Erases the scripts of all or the selected pictures. A picture that had no items counts as unmodified afterwards.
void Discard_Scripts(Catalogue_State& state, bool all);

/// The indices of all or the selected pictures.
std::vector<int> All_Or_Selected(const Catalogue_State& state, bool all);
