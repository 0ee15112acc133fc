#pragma once

#include "bkimgutl/core/Background_Color.h"
#include "bkimgutl/core/Bitmap.h"

/// Turned counterclockwise by degrees, 0 up to but not 360. The result is just large enough to hold the whole picture,
/// centre on centre. Multiples of 90 are exact turns. Otherwise pixels are interpolated by Catmull and Rom's cubic, the
/// nearest edge pixel repeated outside; within half a pixel of the picture's edge they fade into the background.
/// Each byte is within 1 level of this in real arithmetic.
Result<Bitmap> Rotated(const Bitmap& source, float degrees, const Background_Color& background);
