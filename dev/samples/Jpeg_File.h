#pragma once

#include "dev/samples/Picture.h"

#include <cstdint>
#include <string>
#include <vector>

/// How a sample file is coded.
struct Jpeg_File_Options {
    enum class Colors { Natural, RGB, CMYK, YCCK };
    struct Segment {
        int marker; ///< 0xE0 to 0xEF, or 0xFE for a comment
        std::vector<std::uint8_t> data;
    };
    int quality = 90;
    int horizontal_sampling = 2; ///< of the luminance; the other channels have 1
    int vertical_sampling = 2;
    Colors colors = Colors::Natural; ///< grey or YCbCr
    bool progressive = false;
    bool arithmetic = false;
    bool adobe_mark = true; ///< for CMYK: with the mark the file holds complements
    bool jfif = true;
    int dpi = 0;                        ///< in JFIF; 0 for none
    int restart_rows = 0;               ///< unit rows between restart markers
    std::vector<Segment> segments = {}; ///< behind JFIF, in this order
};

/// The bytes of a whole file. Ends the program when the codec refuses the options.
std::vector<std::uint8_t> Jpeg_File(const Sample_Picture& picture, const Jpeg_File_Options& options = {});
