#pragma once

#include <cstddef>
#include <cstdint>

/// A look at pixels that somebody else owns. y is 0-based from the top of the picture as seen; pixels of a row stand one
/// after another as B,G,R or as grey bytes.
struct Bitmap_View {
    const std::uint8_t* top = nullptr; ///< first byte of the topmost row
    std::ptrdiff_t step = 0;           ///< bytes from a row to the one below it; negative for bottom-up memory
    int width = 0;
    int height = 0;
    int bytes_per_pixel = 0;

    const std::uint8_t* Row(int y) const { return top + y * step; }
    std::size_t Row_Bytes() const { return std::size_t(width) * std::size_t(bytes_per_pixel); }
    bool Is_Grey() const { return bytes_per_pixel == 1; }
};

struct Mutable_Bitmap_View {
    std::uint8_t* top = nullptr;
    std::ptrdiff_t step = 0;
    int width = 0;
    int height = 0;
    int bytes_per_pixel = 0;

    std::uint8_t* Row(int y) const { return top + y * step; }
    std::size_t Row_Bytes() const { return std::size_t(width) * std::size_t(bytes_per_pixel); }
    operator Bitmap_View() const { return {top, step, width, height, bytes_per_pixel}; }
};
