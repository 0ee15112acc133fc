#pragma once

#include "bkimgutl/core/Bitmap_View.h"
#include "frame/files/Result.h"

#include <cstdint>
#include <functional>

/// Fractional bits of the blurred samples.
constexpr int Blur_Bits = 7;
constexpr float Least_Blur_Radius = 1, Most_Blur_Radius = 25;

/// Takes row y of the blurred picture, interleaved like the source, in units of 1 / 128 level; rows come in any order and
/// from several threads.
using Blurred_Row_Sink = std::function<void(int y, const std::int16_t* row)>;

/// Gaussian blur with `radius` as standard deviation; outside pixels repeat the nearest edge pixel. A large radius costs no
/// more than a small one: the picture is first reduced by a whole factor with one Gaussian, then enlarged with another, and
/// the variances of the two add up to that of the blur. Fails on a radius outside 1 to 25 and without memory.
Result<void> Blur_Rows(const Bitmap_View& source, float radius, const Blurred_Row_Sink& sink);
