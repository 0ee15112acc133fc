#pragma once

#include "bkimgutl/core/Bitmap_View.h"

/// Reduction to the mean of blocks of pixels: a source pixel belongs to the output pixel whose area holds its centre, on
/// the border between two to the left or upper one. Exact; halves are rounded upwards.

/// True where the target is nowhere larger than the source and the blocks are small enough for the integer sums.
bool Can_Scale_By_Box(const Bitmap_View& source, int width, int height);
void Scale_By_Box(const Bitmap_View& source, const Mutable_Bitmap_View& target);
