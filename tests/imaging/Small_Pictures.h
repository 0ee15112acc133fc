#pragma once

#include "imaging/Brennick_Image_Utilities.h"

#include <functional>
#include <vector>

/// Pictures for tests: drawn by a function of x and y, read back as numbers 0xRRGGBB (or a grey level).

inline Bitmap_Handle Drawn_Bitmap(int width, int height, const std::function<int(int x, int y)>& color, int bytes = 3)
{
    const Bitmap_Handle bitmap = Count_Bitmap(Create_Empty_Bitmap_CPP(width, height, bytes, 8));
    Bitmap_Facts facts;
    if (!Get_Bitmap_Facts_CPP(bitmap, &facts)) return 0;
    std::vector<std::uint8_t> memory(std::size_t(facts.stride) * std::size_t(height));
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            for (int sample = 0; sample < bytes; ++sample)
                memory[std::size_t(height - 1 - y) * std::size_t(facts.stride) + std::size_t(x * bytes + sample)] =
                    std::uint8_t(color(x, y) >> 8 * sample);
    Put_Bitmap_Bytes_CPP(bitmap, memory.data(), memory.size());
    return bitmap;
}

inline std::vector<int> Colors_Of(Bitmap_Handle bitmap)
{
    Bitmap_Facts facts;
    if (!Get_Bitmap_Facts_CPP(bitmap, &facts)) return {};
    std::vector<std::uint8_t> memory(std::size_t(facts.stride) * std::size_t(facts.height));
    Get_Bitmap_Bytes_CPP(bitmap, memory.data(), memory.size());
    const int bytes = facts.bits_per_pixel / 8;
    std::vector<int> colors;
    for (int y = facts.height - 1; y >= 0; --y)
        for (int x = 0; x < facts.width; ++x) {
            int color = 0;
            for (int sample = bytes - 1; sample >= 0; --sample)
                color =
                    color << 8 | memory[std::size_t(y) * std::size_t(facts.stride) + std::size_t(x * bytes + sample)];
            colors.push_back(color);
        }
    return colors;
}
