#pragma once

#include "bkimgutl/core/Bitmap.h"

#include <cstdint>

/// Gaussian blur, mixed with the source. Rounded once, half to even, after mixing; edges repeat.
/// radius          standard deviation in pixels, 1 to 25, fractions allowed
/// weight_percent  0 is a plain copy, 100 is blur only
/// components      see Component_Filtered
struct Blur_Settings {
    float radius = 1;
    std::int32_t weight_percent = 100;
    std::int32_t components = 7;
};
Result<Bitmap> Blurred(const Bitmap_View& source, const Blur_Settings& settings);

/// Unsharp mask: with d = sample - blur, d above lighten_threshold adds lighten_amount x d, d below -darken_threshold adds
/// darken_amount x d. Rounded once, half to even.
/// lighten_amount, darken_amount        0 to 5
/// radius                               of the blur, 1 to 25
/// lighten_threshold, darken_threshold  levels, 0 to 255
/// components                           see Component_Filtered
struct Unsharp_Settings {
    float lighten_amount = 0;
    float darken_amount = 0;
    float radius = 1;
    std::int32_t lighten_threshold = 0;
    std::int32_t darken_threshold = 0;
    std::int32_t components = 7;
};
Result<Bitmap> Unsharp_Masked(const Bitmap_View& source, const Unsharp_Settings& settings);
