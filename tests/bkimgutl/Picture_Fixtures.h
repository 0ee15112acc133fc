#pragma once

#include "tests/bkimgutl/Reference_Pictures.h"

#include <algorithm>
#include <random>
#include <stdexcept>

/// More pictures for the tests of the tone and filter kernels, drawn level by level.

inline Bitmap New_Picture(int width, int height, int bytes_per_pixel)
{
    auto picture = Bitmap::Create(width, height, bytes_per_pixel);
    if (!picture) throw std::runtime_error(picture.error().text);
    return std::move(*picture);
}

template <class Level>
Bitmap Drawn_Picture(int width, int height, int bytes_per_pixel, Level&& level)
{
    Bitmap picture = New_Picture(width, height, bytes_per_pixel);
    const auto view = picture.Change();
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            for (int c = 0; c < bytes_per_pixel; ++c)
                view.Row(y)[x * bytes_per_pixel + c] = std::uint8_t(level(x, y, c));
    return picture;
}

/// Black and white only: the largest steps there are.
inline Bitmap Harsh_Picture(int width, int height, int bytes_per_pixel, unsigned seed)
{
    std::mt19937 random(seed);
    return Drawn_Picture(width, height, bytes_per_pixel, [&](int, int, int) { return random() & 256 ? 255 : 0; });
}

inline Bitmap Flat_Picture(int width, int height, int bytes_per_pixel, int level)
{
    return Drawn_Picture(width, height, bytes_per_pixel, [=](int, int, int) { return level; });
}

struct Difference {
    int most = 0;
    double mean = 0;
};

inline Difference Difference_Of(const Bitmap_View& a, const Bitmap_View& b)
{
    Difference difference;
    EXPECT_EQ(a.width, b.width);
    EXPECT_EQ(a.height, b.height);
    EXPECT_EQ(a.bytes_per_pixel, b.bytes_per_pixel);
    for (int y = 0; y < a.height; ++y)
        for (std::size_t i = 0; i < a.Row_Bytes(); ++i) {
            const int one = std::abs(a.Row(y)[i] - b.Row(y)[i]);
            difference.most = std::max(difference.most, one);
            difference.mean += one;
        }
    difference.mean /= double(a.Row_Bytes()) * a.height;
    return difference;
}
