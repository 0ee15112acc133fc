#pragma once

#include "bkimgutl/core/Bitmap_View.h"

/// Pixels of a row in reverse order.
void Reverse_Row(const std::uint8_t* from, int width, int bytes_per_pixel, std::uint8_t* to);

/// Fastest with this many rows a call.
constexpr int Transpose_Band = 256;

/// Rows first_row to end_row of the transposed picture: to(x, y) is from(y, x).
void Transpose_Rows(const Bitmap_View& from, const Mutable_Bitmap_View& to, int first_row, int end_row);
