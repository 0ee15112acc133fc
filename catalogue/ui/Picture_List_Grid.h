#pragma once

#include "catalogue/Halvine_Form.h"
#include "controls/ui/bkcGrid.h"

/// Columns and rows of the picture list ("Thumbnail List..."). Fill shows the pictures as they are now, with the rows of
/// the selected ones selected; Take_Selection brings the rows' selection back to the pictures, in display order.
void Set_Up_Picture_List(bkcGrid& grid);
void Fill_Picture_List(bkcGrid& grid, const Catalogue_State& state);
void Take_Selection(const bkcGrid& grid, Halvine_Form& form);
