#pragma once

#include "bkimgutl/core/Bitmap_View.h"

/// Interpolates `count` pixels along a line through the source, four by four source pixels each.
/// u, v            position of the first, with 32 binary places; pixel centres are whole numbers
/// u_step, v_step  from one pixel to the next
/// Every position must satisfy 1 <= u < width - 5 and 1 <= v < height - 3, so that no edge is in reach.
void Cubic_Row(const Bitmap_View& source, std::int64_t u, std::int64_t v, std::int64_t u_step, std::int64_t v_step,
               int count, std::uint8_t* to);
