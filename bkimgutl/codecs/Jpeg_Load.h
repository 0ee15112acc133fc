#pragma once

#include "bkimgutl/codecs/Jpeg_Segments.h"
#include "bkimgutl/core/Bitmap.h"

#include <array>

/// The upright picture, reduced. Divisors 2, 4 and 8 decode only what they need; others take the largest of these that
/// divides them and average whole boxes on top. Grey files give 1 byte per pixel, all others 3.
/// CMYK becomes R = (255 - C) * (255 - K) / 255, rounded, and likewise G and B; files with Adobe's mark hold the
/// complements of C, M, Y and K. Divisor 1 gives the picture an origin, marked damaged when data was missing or wrong.
Result<Bitmap> Load_Jpeg(const Regular_File& file, int scale_divisor);

/// How a file's pixels are coded.
struct Jpeg_Coding {
    struct Component {
        int horizontal_sampling = 1;
        int vertical_sampling = 1;
        std::array<std::uint16_t, 64> quantisation{}; ///< row by row
    };
    enum class Colors { Grey, YCbCr, RGB, CMYK, YCCK, Other };
    Colors colors = Colors::Other;
    bool progressive = false;
    std::vector<Component> components;

    /// Width and height in pixels of the smallest part that is coded as a whole.
    int Unit_Width() const;
    int Unit_Height() const;
};

Result<Jpeg_Coding> Coding_Of(const Regular_File& file);

/// The quality 0 to 100 whose usual tables are nearest to those of the file.
int Estimated_Quality(const Jpeg_Coding& coding);
