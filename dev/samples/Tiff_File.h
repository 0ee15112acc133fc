#pragma once

#include "dev/samples/Picture.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

/// How a sample file is stored.
struct Tiff_File_Options {
    enum class Colors {
        Natural,       ///< grey or RGB, as the picture is
        White_Is_Zero, ///< grey, inverted
        Palette,       ///< a colour cube for 8 bits, a grey ramp for fewer
        CMYK,          ///< complements without black
        YCbCr,         ///< subsampled 2 x 2; with JPEG coding only
        Lab,           ///< lightness alone, neutral colours
    };
    enum class Alpha { None, Associated, Unassociated, Unspecified };
    struct Private_Tag {
        std::uint16_t tag;
        std::string value;
    };
    Colors colors = Colors::Natural;
    int bits = 8; ///< 1, 2, 4, 8, 12, 16 or 32; of grey pictures below 8
    bool floating = false;
    Alpha alpha = Alpha::None; ///< opaque at the left, transparent at the right
    int compression = 1;       ///< as in tag 259
    int predictor = 1;
    bool separate = false;
    int rows_per_strip = 16;
    int tile_size = 0;   ///< 0 for strips, else a multiple of 16
    int orientation = 0; ///< 0 leaves the tag out
    bool big_endian = false;
    bool big = false;                 ///< BigTIFF
    double horizontal_resolution = 0; ///< 0 for none
    double vertical_resolution = 0;
    int resolution_unit = 2; ///< 1 none, 2 inch, 3 centimetre
    int pages = 1;
    std::string description = {};
    std::string make = {};
    std::string model = {};
    std::vector<Private_Tag> private_tags = {};
    std::string maker_note = {}; ///< not empty: an EXIF directory with it and an exposure time
};

/// Writes a file with the picture as stored; throws std::runtime_error when that fails.
void Write_Tiff_File(const std::string& path, const Sample_Picture& picture, const Tiff_File_Options& options);

/// The opacity of column x of a picture with alpha, 0 to 255.
int Sample_Opacity(int x, int width);
