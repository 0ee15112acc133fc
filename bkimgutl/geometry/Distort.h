#pragma once

#include "bkimgutl/contract/Types.h"
#include "bkimgutl/core/Background_Color.h"
#include "bkimgutl/core/Bitmap.h"

/// A quadrilateral with level top and bottom, as high as the picture, that is to become a rectangle. Positions are pixel
/// numbers of the source, fractions allowed: 0 is the leftmost pixel, width - 1 the rightmost. Between the top and the
/// bottom row left and right run linearly; each right must exceed its left.
struct Horizontal_Distortion {
    double top_left = 0, top_right = 0, bottom_left = 0, bottom_right = 0;
    int width = 0;     ///< of the result
    double offset = 0; ///< with expand, the source position of the result's column 0 in the row with the wider segment
    bool expand = false;
    Interpolation_Method method = Interpolation_Method::Triangle;
};

/// Without expand the result's columns 0 and width - 1 are the left and right of each row. With expand the row with the
/// wider segment keeps its scale, the segments of all rows stand in the same columns, and what lies outside the picture is
/// background. The filter widens where a row shrinks; rounded to nearest, within 1 level of real arithmetic.
/// Fails on positions that make no quadrilateral, and when a row would shrink to less than a 64th.
Result<Bitmap> Horizontally_Distorted(const Bitmap_View& source, const Horizontal_Distortion& distortion,
                                      const Background_Color& background);
