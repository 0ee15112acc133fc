#pragma once

#include "bkimgutl/core/Bitmap.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <hwy/targets.h>
#include <random>
#include <vector>

/// Pictures for the tests of the tone and filter kernels, and the loop over what the processor can run.

template <class Body>
void For_Every_Target(Body&& body)
{
    const std::int64_t all = hwy::SupportedTargets();
    for (std::int64_t rest = all; rest != 0; rest &= rest - 1) {
        const std::int64_t target = rest & -rest;
        SCOPED_TRACE(hwy::TargetName(target));
        hwy::SetSupportedTargetsForTest(target);
        hwy::GetChosenTarget().Update(hwy::SupportedTargets());
        body();
    }
    hwy::SetSupportedTargetsForTest(0);
    hwy::GetChosenTarget().Update(hwy::SupportedTargets());
}

struct Picture_Size {
    int width, height;
};

/// One pixel, one row, one column, odd widths with padding, widths around the registers' sizes.
inline std::vector<Picture_Size> Edge_Sizes()
{
    return {{1, 1},   {2, 1},  {1, 2},  {37, 1}, {1, 41},   {3, 3},   {5, 7},
            {16, 16}, {63, 5}, {64, 4}, {65, 3}, {131, 23}, {257, 40}};
}

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

inline Bitmap Random_Picture(int width, int height, int bytes_per_pixel, unsigned seed)
{
    std::mt19937 random(seed);
    return Drawn_Picture(width, height, bytes_per_pixel, [&](int, int, int) { return random() >> 8 & 255; });
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
