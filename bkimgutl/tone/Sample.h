#pragma once

#include "bkimgutl/core/Bitmap_View.h"
#include "frame/files/Result.h"

#include <array>

struct Color_Sample {
    int red = 0, green = 0, blue = 0;
    int hue = 0, saturation = 0, value = 0; ///< of red, green and blue as they stand here
};

/// The average over the square of side `area_size` (1, 3 or 5) around (x, y), 0-based, clipped at the picture's edges;
/// rounded half to even. A colour without saturation has hue 0. Fails when (x, y) lies outside.
Result<Color_Sample> Area_Average(const Bitmap_View& picture, int x, int y, int area_size);

struct Sample_Range {
    int minimum = 0, average = 0, maximum = 0;
};

/// Of red, green, blue, hue, saturation and value over the pixels whose mask byte is not 0; averages half to even, that of
/// the hue too, over the numbers 0 to 359. `mask` has width x height bytes, topmost row first. Fails on an empty mask.
Result<std::array<Sample_Range, 6>> Color_Ranges(const Bitmap_View& picture, const std::uint8_t* mask);
