#include "dev/samples/Jpeg_File.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include <jpeglib.h>

namespace {

using Colors = Jpeg_File_Options::Colors;

bool Has_Black(const Jpeg_File_Options& options)
{
    return options.colors == Colors::CMYK || options.colors == Colors::YCCK;
}

/// C,M,Y,K with as much black as goes; complements when the file will carry the mark.
std::vector<std::uint8_t> CMYK_Row(const Sample_Picture& picture, int y, bool complements)
{
    std::vector<std::uint8_t> row;
    for (int x = 0; x < picture.width; ++x) {
        const std::uint8_t* pixel = picture.Pixel(x, y);
        const int white = std::max({int(pixel[0]), int(pixel[1]), int(pixel[2]), 1});
        for (int i = 0; i < 3; ++i) {
            const int left = (pixel[i] * 255 + white / 2) / white;
            row.push_back(std::uint8_t(complements ? left : 255 - left));
        }
        row.push_back(std::uint8_t(complements ? white : 255 - white));
    }
    return row;
}

void Configure(jpeg_compress_struct& object, const Sample_Picture& picture, const Jpeg_File_Options& options)
{
    object.image_width = JDIMENSION(picture.width);
    object.image_height = JDIMENSION(picture.height);
    object.input_components = Has_Black(options) ? 4 : picture.channels;
    object.in_color_space = Has_Black(options) ? JCS_CMYK : picture.channels == 1 ? JCS_GRAYSCALE : JCS_RGB;
    jpeg_set_defaults(&object);
    if (options.colors == Colors::RGB) jpeg_set_colorspace(&object, JCS_RGB);
    if (options.colors == Colors::CMYK) jpeg_set_colorspace(&object, JCS_CMYK);
    if (options.colors == Colors::YCCK) jpeg_set_colorspace(&object, JCS_YCCK);
    jpeg_set_quality(&object, options.quality, TRUE);
    if (object.num_components > 1) {
        object.comp_info[0].h_samp_factor = options.horizontal_sampling;
        object.comp_info[0].v_samp_factor = options.vertical_sampling;
        if (options.colors == Colors::YCCK) {
            object.comp_info[3].h_samp_factor = options.horizontal_sampling;
            object.comp_info[3].v_samp_factor = options.vertical_sampling;
        }
    }
    if (Has_Black(options)) object.write_Adobe_marker = options.adobe_mark;
    object.write_JFIF_header = object.write_JFIF_header && options.jfif;
    if (options.dpi > 0) {
        object.density_unit = 1;
        object.X_density = object.Y_density = UINT16(options.dpi);
    }
    object.restart_in_rows = options.restart_rows;
    object.arith_code = options.arithmetic;
    if (options.progressive) jpeg_simple_progression(&object);
}

void Write_Rows(jpeg_compress_struct& object, const Sample_Picture& picture, const Jpeg_File_Options& options)
{
    for (int y = 0; y < picture.height; ++y) {
        std::vector<std::uint8_t> inks;
        if (Has_Black(options)) inks = CMYK_Row(picture, y, options.adobe_mark);
        JSAMPROW row = inks.empty() ? const_cast<JSAMPROW>(picture.Pixel(0, y)) : inks.data();
        jpeg_write_scanlines(&object, &row, 1);
    }
}

} // namespace

std::vector<std::uint8_t> Jpeg_File(const Sample_Picture& picture, const Jpeg_File_Options& options)
{
    jpeg_compress_struct object{};
    jpeg_error_mgr errors{};
    object.err = jpeg_std_error(&errors);
    jpeg_create_compress(&object);
    unsigned char* memory = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&object, &memory, &size);
    Configure(object, picture, options);
    jpeg_start_compress(&object, TRUE);
    for (const auto& segment : options.segments)
        jpeg_write_marker(&object, segment.marker, segment.data.data(), unsigned(segment.data.size()));
    Write_Rows(object, picture, options);
    jpeg_finish_compress(&object);
    jpeg_destroy_compress(&object);
    std::vector<std::uint8_t> bytes(memory, memory + size);
    std::free(memory);
    return bytes;
}
