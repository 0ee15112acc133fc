#pragma once

#include "bkimgutl/codecs/Tiff_Fields.h"
#include "bkimgutl/core/Bitmap_View.h"

#include <functional>

/// A picture to be written, given out row by row.
struct Tiff_Rows {
    int width = 0;
    int height = 0;
    int samples = 1; ///< of a pixel, side by side
    int bits = 8;    ///< of a sample
    /// Puts rows top to top + count into `out`, packed as TIFF has them.
    std::function<void(int top, int count, std::uint8_t* out)> fill{};

    std::size_t Row_Bytes() const { return (std::size_t(width) * std::size_t(samples) * std::size_t(bits) + 7) / 8; }
};

/// Rows of a bitmap, which must outlive them.
Tiff_Rows Rows_Of_Bitmap(const Bitmap_View& pixels);

/// Writes the rows in strips behind what the file holds so far (at least its header is written anew), and returns the
/// fields that tell where they are: sides, strips, compression, orientation 1. `compression` is one without loss: none,
/// LZW, deflate or PackBits.
Result<Tiff_Fields> Encode_Tiff_Strips(int descriptor, const Tiff_Layout& layout, const Tiff_Rows& rows,
                                       std::uint16_t compression);

/// The fields that tell what the samples of a bitmap's rows are.
Tiff_Fields Color_Fields_Of_Bitmap(const Tiff_Layout& layout, const Bitmap_View& pixels);
