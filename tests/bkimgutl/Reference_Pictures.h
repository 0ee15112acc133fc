#pragma once

#include "bkimgutl/core/Bitmap.h"

#include <cstdint>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

// Pictures for tests, and what compares them. All are made from seeds: the same on every machine.

/// Every byte is random.
Bitmap Random_Picture(int width, int height, int bytes_per_pixel, unsigned seed);

/// Smooth gradients, edges and some noise, as in a photograph.
Bitmap Photograph_Like_Picture(int width, int height, int bytes_per_pixel, unsigned seed);

/// A picture of one colour; a grey one takes `red`.
Bitmap Plain_Picture(int width, int height, int bytes_per_pixel, int red, int green, int blue);

/// One pixel, one row, one column, odd widths around the sizes of registers and tiles.
struct Picture_Size {
    int width;
    int height;
};
std::vector<Picture_Size> Edge_Case_Sizes();

/// Runs body(picture) over random grey and colour pictures of all edge case sizes, with a trace of the size.
void For_Edge_Case_Pictures(const std::function<void(const Bitmap&)>& body);

/// Runs `body` once for each set of vector instructions that this machine has, the best one included.
void For_Every_Target(const std::function<void()>& body);

/// A row as the bytes of its pixels, without padding.
std::vector<std::uint8_t> Row_Bytes(const Bitmap_View& view, int y);

/// Same sizes and same bytes; a failure tells the first pixel that differs.
testing::AssertionResult Same_Pixels(const Bitmap_View& expected, const Bitmap_View& actual);

/// Same sizes, and no byte further apart than `most`.
testing::AssertionResult Pixels_Within(int most, const Bitmap_View& expected, const Bitmap_View& actual);

/// Bytes between a row's last pixel and its end are 0.
testing::AssertionResult Padding_Is_Zero(const Bitmap& bitmap);
