#include "dev/samples/Sample_Set.h"
#include "dev/samples/Tiff_File.h"

#include <tiff.h>

namespace {

struct Tiff_Sample {
    const char* name;
    Sample_Picture (*picture)(int width, int height, unsigned seed);
    bool grey;
    Tiff_File_Options options;
};

void Write_Tiff_Samples(const std::string& folder)
{
    using Options = Tiff_File_Options;
    using Colors = Options::Colors;
    constexpr int deflate = COMPRESSION_ADOBE_DEFLATE;
    const Tiff_Sample samples[] = {
        {"meadow_deflate.tif",
         Meadow,
         false,
         {.compression = deflate,
          .predictor = 2,
          .horizontal_resolution = 300,
          .vertical_resolution = 300,
          .description = "A meadow",
          .make = "Sample Works",
          .model = "Field Camera 2",
          .maker_note = "Sample note"}},
        {"portrait_lzw_tiled.tif",
         Portrait,
         false,
         {.compression = COMPRESSION_LZW,
          .predictor = 2,
          .tile_size = 128,
          .horizontal_resolution = 118.11,
          .vertical_resolution = 118.11,
          .resolution_unit = 3}},
        {"night_16_bit_big_endian.tif",
         Night_Town,
         false,
         {.bits = 16, .compression = deflate, .predictor = 2, .big_endian = true}},
        {"meadow_palette.tif", Meadow, false, {.colors = Colors::Palette, .compression = COMPRESSION_PACKBITS}},
        {"portrait_grey.tif", Portrait, true, {.compression = COMPRESSION_LZW, .orientation = 6}},
        {"night_1_bit_fax.tif",
         Night_Town,
         true,
         {.colors = Colors::White_Is_Zero,
          .bits = 1,
          .compression = COMPRESSION_CCITTFAX4,
          .horizontal_resolution = 204,
          .vertical_resolution = 98}},
        {"meadow_cmyk_planes.tif", Meadow, false, {.colors = Colors::CMYK, .compression = deflate, .separate = true}},
        {"portrait_jpeg_coded.tif", Portrait, false, {.colors = Colors::YCbCr, .compression = COMPRESSION_JPEG}},
        {"night_alpha_big.tif",
         Night_Town,
         false,
         {.alpha = Options::Alpha::Unassociated, .compression = deflate, .big = true}},
        {"meadow_three_pages.tif", Meadow, false, {.compression = COMPRESSION_LZW, .pages = 3}},
    };
    unsigned seed = 101;
    for (const Tiff_Sample& sample : samples) {
        const bool is_upright = sample.picture == Portrait;
        Sample_Picture picture = sample.picture(is_upright ? 427 : 640, is_upright ? 640 : 427, seed++);
        if (sample.grey) picture = To_Grey(picture);
        if (sample.options.orientation != 0) picture = Stored_With_Orientation(picture, sample.options.orientation);
        Write_Tiff_File(folder + "/" + sample.name, picture, sample.options);
    }
}

const Sample_Set tiff_samples(&Write_Tiff_Samples);

} // namespace
