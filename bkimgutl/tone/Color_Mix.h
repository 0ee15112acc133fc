#pragma once

#include "bkimgutl/core/Bitmap.h"

#include <array>
#include <cstdint>
#include <span>

/// How the mixed luminance Y meets a mixed channel c. Hosts pass these numbers: never renumber.
enum class Luminance_Blend : std::int32_t {
    Normal = 0,  ///< Y
    Lighten = 1, ///< the larger of c and Y
    Darken = 2,  ///< the smaller of c and Y
};

/// One row of the mixer: (red R + green G + blue B) x scale, all in percent, -200 to 200.
struct Mix_Row {
    std::int32_t red, green, blue, scale;
};

/// The mixed channels and the mixed luminance are limited to 0..255; then a channel moves by luminance_percent (0 to 100)
/// of the way to what the blend gives. With to_grey all three channels take the luminance of the result. Each result is
/// rounded half to even.
struct Color_Mix {
    Mix_Row red{100, 0, 0, 100};
    Mix_Row green{0, 100, 0, 100};
    Mix_Row blue{0, 0, 100, 100};
    Mix_Row luminance{0, 0, 0, 0};
    std::int32_t luminance_percent = 0;
    Luminance_Blend blend = Luminance_Blend::Normal;
    bool to_grey = false;

    /// The 19 fields of the contract in their order; fails on values out of range.
    static Result<Color_Mix> From_Fields(std::span<const std::int32_t, 19> fields);
};

/// A grey picture is mixed as red = green = blue, and takes the luminance of the result.
Result<Bitmap> Color_Mixed(const Bitmap_View& source, const Color_Mix& mix);
