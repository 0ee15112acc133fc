#pragma once

#include "catalogue/Picture_Pictures.h"

/// Toggles a pending flip of a picture (Flip_Left_To_Right or Flip_Top_To_Bottom) and its thumbnail with it. Both flips
/// together are a half turn: the record then says so, and the text items of its script turn along. Unknown keys change
/// nothing.
void Flip_Picture(Catalogue_State& state, Picture_Pictures& pictures, int key, int flip);
