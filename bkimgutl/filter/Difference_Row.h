#pragma once

#include <cstddef>
#include <cstdint>

/// Vector code for what follows a blur. `blurred` is in units of 1 / 128 level (see Gaussian.h). Results are rounded once,
/// half to even, and limited to 0..255.

/// (100 - weight) percent of the source and weight percent of the blur. Exact, given the blur.
void Mix_Blur_Row(const std::uint8_t* source, const std::int16_t* blurred, std::size_t count, int weight_percent,
                  std::uint8_t* out);

/// With d = source - blurred, in levels: above lighten_threshold adds lighten_amount x d, below -darken_threshold
/// darken_amount x d.
struct Sharpening {
    float lighten_amount, darken_amount;
    float lighten_threshold, darken_threshold;
};
void Sharpen_Row(const std::uint8_t* source, const std::int16_t* blurred, std::size_t count,
                 const Sharpening& sharpening, std::uint8_t* out);
