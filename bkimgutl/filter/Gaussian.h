#pragma once

#include "bkimgutl/core/Bitmap_View.h"
#include "frame/files/Result.h"

#include <cstdint>
#include <functional>

/// Fractional bits of the blurred samples.
constexpr int Blur_Bits = 7;
constexpr float Least_Blur_Radius = 1, Most_Blur_Radius = 25;

/// A part of a row of the blurred picture: samples first .. first + count - 1 of row y, whole pixels, interleaved like the
/// source, in units of 1 / 128 level.
struct Blurred_Part {
    int y;
    std::size_t first, count;
    const std::int16_t* samples;
};

/// Parts come in any order and from several threads, together the whole picture.
using Blur_Sink = std::function<void(const Blurred_Part& part)>;

/// Gaussian blur with `radius` as standard deviation; outside pixels repeat the nearest edge pixel. A large radius costs
/// hardly more than a small one: the picture is reduced by a whole factor with one filter and enlarged with a cubic spline,
/// and the two together have the moments of the Gaussian. Fails on a radius outside 1 to 25 and without memory.
Result<void> Blur_Parts(const Bitmap_View& source, float radius, const Blur_Sink& sink);
