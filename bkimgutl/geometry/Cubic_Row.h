#pragma once

#include "bkimgutl/core/Bitmap_View.h"

/// A line through a picture, in steps of at most one pixel. Positions have 32 binary places; pixel centres are whole
/// numbers.
struct Cubic_Line {
    Bitmap_View source;
    std::int64_t u = 0, v = 0; ///< where it begins
    std::int64_t u_step = 0, v_step = 0;
};

/// Interpolates `count` pixels along the line, from four by four source pixels each.
/// Every position must satisfy 1 <= u < width - 5 and 1 <= v < height - 3, so that no edge is in reach.
void Cubic_Row(const Cubic_Line& line, int count, std::uint8_t* to);
