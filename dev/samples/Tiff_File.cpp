#include "dev/samples/Tiff_File.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <tiffio.h>

namespace {

using Options = Tiff_File_Options;
using Handle = std::unique_ptr<TIFF, decltype(&TIFFClose)>;

[[noreturn]] void Fail_With(const std::string& what)
{
    throw std::runtime_error("sample TIFF: " + what);
}

int Color_Samples(const Sample_Picture& picture, const Options& options)
{
    switch (options.colors) {
    case Options::Colors::CMYK: return 4;
    case Options::Colors::Palette:
    case Options::Colors::White_Is_Zero: return 1;
    case Options::Colors::Lab: return 3;
    default: return picture.channels;
    }
}

int Luminance(const std::uint8_t* pixel, int channels)
{
    return channels == 1 ? pixel[0] : (pixel[0] * 77 + pixel[1] * 151 + pixel[2] * 28) / 256;
}

/// Sample `s` of a pixel as a number of 0 to 255, before it is brought to its depth.
int Sample_Of(const std::uint8_t* pixel, int channels, const Options& options, int s)
{
    switch (options.colors) {
    case Options::Colors::CMYK: return s == 3 ? 0 : 255 - pixel[channels == 1 ? 0 : s];
    case Options::Colors::White_Is_Zero: return 255 - Luminance(pixel, channels);
    case Options::Colors::Palette:
        if (options.bits < 8) return Luminance(pixel, channels);
        return channels == 1 ? pixel[0] / 52 * 43 : pixel[0] / 52 * 36 + pixel[1] / 52 * 6 + pixel[2] / 52;
    case Options::Colors::Lab: return s == 0 ? Luminance(pixel, channels) : 0;
    default: return pixel[s];
    }
}

/// Packs numbers of 0 to 255 into samples of the wanted depth; 12 bits lie packed, 16 and more in this machine's order.
void Pack(const std::vector<int>& numbers, const Options& options, std::vector<std::uint8_t>& out)
{
    if (options.floating) {
        for (const int number : numbers) {
            const float value = float(number) / 255;
            out.insert(out.end(), reinterpret_cast<const std::uint8_t*>(&value),
                       reinterpret_cast<const std::uint8_t*>(&value) + 4);
        }
        return;
    }
    if (options.bits >= 16) {
        for (const int number : numbers) {
            const std::uint32_t value =
                options.bits == 16 ? std::uint32_t(number) * 257 : std::uint32_t(number) * 16843009;
            out.insert(out.end(), reinterpret_cast<const std::uint8_t*>(&value),
                       reinterpret_cast<const std::uint8_t*>(&value) + options.bits / 8);
        }
        return;
    }
    std::uint32_t store = 0;
    int held = 0;
    const int most = (1 << options.bits) - 1;
    for (const int number : numbers) {
        const bool index = options.colors == Options::Colors::Palette && options.bits == 8;
        store = store << options.bits | std::uint32_t(index ? number : (number * most + 127) / 255);
        for (held += options.bits; held >= 8; held -= 8) out.push_back(std::uint8_t(store >> (held - 8)));
    }
    if (held > 0) out.push_back(std::uint8_t(store << (8 - held)));
}

/// One row of a rectangle of the picture, samples `first` to `last`; outside of the picture it is 0.
std::vector<std::uint8_t> Packed_Row(const Sample_Picture& picture, const Options& options, int left, int width, int y,
                                     int first, int last)
{
    std::vector<int> numbers;
    const int colors = Color_Samples(picture, options);
    for (int x = left; x < left + width; ++x)
        for (int s = first; s <= last; ++s) {
            if (x >= picture.width || y >= picture.height) {
                numbers.push_back(0);
                continue;
            }
            const int opacity = options.alpha == Options::Alpha::None ? 255 : Sample_Opacity(x, picture.width);
            int number = s < colors ? Sample_Of(picture.Pixel(x, y), picture.channels, options, s) : opacity;
            if (s < colors && options.alpha == Options::Alpha::Associated) number = (number * opacity + 127) / 255;
            numbers.push_back(number);
        }
    std::vector<std::uint8_t> out;
    Pack(numbers, options, out);
    return out;
}

std::uint16_t Photometric(const Sample_Picture& picture, const Options& options)
{
    switch (options.colors) {
    case Options::Colors::White_Is_Zero: return PHOTOMETRIC_MINISWHITE;
    case Options::Colors::Palette: return PHOTOMETRIC_PALETTE;
    case Options::Colors::CMYK: return PHOTOMETRIC_SEPARATED;
    case Options::Colors::YCbCr: return PHOTOMETRIC_YCBCR;
    case Options::Colors::Lab: return PHOTOMETRIC_CIELAB;
    case Options::Colors::Natural: break;
    }
    return picture.channels == 1 ? PHOTOMETRIC_MINISBLACK : PHOTOMETRIC_RGB;
}

void Set_Palette(TIFF* out, int bits)
{
    std::vector<std::uint16_t> red(std::size_t(1) << bits), green(red.size()), blue(red.size());
    for (std::size_t i = 0; i < red.size(); ++i) {
        const auto ramp = std::uint16_t(i * 65535 / (red.size() - 1));
        red[i] = bits == 8 ? std::uint16_t(std::min<std::size_t>(i / 36, 5) * 51 * 257) : ramp;
        green[i] = bits == 8 ? std::uint16_t(i / 6 % 6 * 51 * 257) : ramp;
        blue[i] = bits == 8 ? std::uint16_t(i % 6 * 51 * 257) : ramp;
    }
    TIFFSetField(out, TIFFTAG_COLORMAP, red.data(), green.data(), blue.data());
}

void Set_Layout(TIFF* out, const Sample_Picture& picture, const Options& options)
{
    const int colors = Color_Samples(picture, options);
    TIFFSetField(out, TIFFTAG_IMAGEWIDTH, picture.width);
    TIFFSetField(out, TIFFTAG_IMAGELENGTH, picture.height);
    TIFFSetField(out, TIFFTAG_BITSPERSAMPLE, options.floating ? 32 : options.bits);
    TIFFSetField(out, TIFFTAG_SAMPLESPERPIXEL, colors + (options.alpha != Options::Alpha::None));
    TIFFSetField(out, TIFFTAG_COMPRESSION, options.compression);
    if (options.predictor != 1) TIFFSetField(out, TIFFTAG_PREDICTOR, options.predictor);
    TIFFSetField(out, TIFFTAG_PHOTOMETRIC, Photometric(picture, options));
    TIFFSetField(out, TIFFTAG_PLANARCONFIG, options.separate ? PLANARCONFIG_SEPARATE : PLANARCONFIG_CONTIG);
    if (options.floating) TIFFSetField(out, TIFFTAG_SAMPLEFORMAT, SAMPLEFORMAT_IEEEFP);
    if (options.colors == Options::Colors::Palette) Set_Palette(out, options.bits);
    if (options.colors == Options::Colors::YCbCr) TIFFSetField(out, TIFFTAG_JPEGCOLORMODE, JPEGCOLORMODE_RGB);
    if (options.alpha != Options::Alpha::None) {
        const std::uint16_t kind = options.alpha == Options::Alpha::Associated     ? EXTRASAMPLE_ASSOCALPHA
                                   : options.alpha == Options::Alpha::Unassociated ? EXTRASAMPLE_UNASSALPHA
                                                                                   : EXTRASAMPLE_UNSPECIFIED;
        TIFFSetField(out, TIFFTAG_EXTRASAMPLES, 1, &kind);
    }
    if (options.tile_size != 0) {
        TIFFSetField(out, TIFFTAG_TILEWIDTH, options.tile_size);
        TIFFSetField(out, TIFFTAG_TILELENGTH, options.tile_size);
    } else {
        TIFFSetField(out, TIFFTAG_ROWSPERSTRIP, options.rows_per_strip);
    }
}

void Set_Texts(TIFF* out, const Options& options)
{
    if (options.orientation != 0) TIFFSetField(out, TIFFTAG_ORIENTATION, options.orientation);
    if (options.horizontal_resolution > 0) {
        TIFFSetField(out, TIFFTAG_XRESOLUTION, options.horizontal_resolution);
        TIFFSetField(out, TIFFTAG_YRESOLUTION, options.vertical_resolution);
        TIFFSetField(out, TIFFTAG_RESOLUTIONUNIT, options.resolution_unit);
    }
    if (!options.description.empty()) TIFFSetField(out, TIFFTAG_IMAGEDESCRIPTION, options.description.c_str());
    if (!options.make.empty()) TIFFSetField(out, TIFFTAG_MAKE, options.make.c_str());
    if (!options.model.empty()) TIFFSetField(out, TIFFTAG_MODEL, options.model.c_str());
    for (const auto& tag : options.private_tags) {
        char name[] = "Private";
        const TIFFFieldInfo info{tag.tag, TIFF_VARIABLE2, TIFF_VARIABLE2, TIFF_UNDEFINED, FIELD_CUSTOM, 1, 1, name};
        if (TIFFFindField(out, tag.tag, TIFF_ANY) == nullptr) TIFFMergeFieldInfo(out, &info, 1);
        TIFFSetField(out, tag.tag, std::uint32_t(tag.value.size()), tag.value.data());
    }
}

/// All rows of the rectangle behind one another, as one strip or tile.
std::vector<std::uint8_t> Piece(const Sample_Picture& picture, const Options& options, int left, int top, int width,
                                int height, int first, int last)
{
    std::vector<std::uint8_t> bytes;
    for (int y = top; y < top + height; ++y) {
        const auto row = Packed_Row(picture, options, left, width, y, first, last);
        bytes.insert(bytes.end(), row.begin(), row.end());
    }
    return bytes;
}

void Write_Pixels(TIFF* out, const Sample_Picture& picture, const Options& options)
{
    const int samples = Color_Samples(picture, options) + (options.alpha != Options::Alpha::None);
    const int planes = options.separate ? samples : 1;
    for (int plane = 0; plane < planes; ++plane) {
        const int first = options.separate ? plane : 0, last = options.separate ? plane : samples - 1;
        const int step_y = options.tile_size ? options.tile_size : options.rows_per_strip;
        const int step_x = options.tile_size ? options.tile_size : picture.width;
        for (int y = 0; y < picture.height; y += step_y)
            for (int x = 0; x < picture.width; x += step_x) {
                const int rows = options.tile_size ? step_y : std::min(step_y, picture.height - y);
                auto bytes = Piece(picture, options, x, y, step_x, rows, first, last);
                const auto size = tmsize_t(bytes.size());
                const auto ux = std::uint32_t(x), uy = std::uint32_t(y);
                const tmsize_t written =
                    options.tile_size ? TIFFWriteEncodedTile(out, TIFFComputeTile(out, ux, uy, 0, std::uint16_t(plane)),
                                                             bytes.data(), size)
                                      : TIFFWriteEncodedStrip(out, TIFFComputeStrip(out, uy, std::uint16_t(plane)),
                                                              bytes.data(), size);
                if (written != size) Fail_With("a strip or tile");
            }
    }
}

void Add_EXIF_Directory(TIFF* out, const Options& options)
{
    if (TIFFCreateEXIFDirectory(out) != 0) Fail_With("the EXIF directory");
    TIFFSetField(out, EXIFTAG_EXPOSURETIME, 1.0 / 250);
    TIFFSetField(out, EXIFTAG_MAKERNOTE, std::uint32_t(options.maker_note.size()), options.maker_note.data());
    std::uint64_t position = 0;
    if (TIFFWriteCustomDirectory(out, &position) != 1) Fail_With("the EXIF directory");
    TIFFSetDirectory(out, 0);
    TIFFSetField(out, TIFFTAG_EXIFIFD, position);
    if (TIFFRewriteDirectory(out) != 1) Fail_With("the directory");
}

} // namespace

int Sample_Opacity(int x, int width)
{
    return width < 2 ? 255 : 255 - x * 255 / (width - 1);
}

void Write_Tiff_File(const std::string& path, const Sample_Picture& picture, const Tiff_File_Options& options)
{
    const std::string mode = std::string("w") + (options.big_endian ? "b" : "l") + (options.big ? "8" : "4");
    TIFFSetWarningHandler(nullptr); // that private tags are unknown is no news
    const Handle out(TIFFOpen(path.c_str(), mode.c_str()), &TIFFClose);
    if (!out) Fail_With(path);
    for (int page = 0; page < options.pages; ++page) {
        Set_Layout(out.get(), picture, options);
        Set_Texts(out.get(), options);
        if (!options.maker_note.empty() && page == 0) TIFFSetField(out.get(), TIFFTAG_EXIFIFD, std::uint64_t(0));
        Write_Pixels(out.get(), picture, options);
        if (TIFFWriteDirectory(out.get()) != 1) Fail_With("the directory");
    }
    if (!options.maker_note.empty()) Add_EXIF_Directory(out.get(), options);
}
