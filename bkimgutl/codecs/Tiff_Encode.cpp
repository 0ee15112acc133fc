#include "bkimgutl/codecs/Tiff_Encode.h"

#include "bkimgutl/codecs/Tiff_Handle.h"

#include <algorithm>
#include <cstring>
#include <sys/stat.h>
#include <tiffio.h>
#include <unistd.h>

namespace {

bool Has_Predictor(std::uint16_t compression, int bits)
{
    const bool whole_bytes = bits == 8 || bits == 16 || bits == 32; // the library takes differences of no others
    return whole_bytes && (compression == COMPRESSION_LZW || compression == COMPRESSION_ADOBE_DEFLATE);
}

int Rows_Per_Strip(const Tiff_Rows& picture)
{
    constexpr std::size_t strip_bytes = 256 * 1024;
    const std::size_t rows = std::max<std::size_t>(strip_bytes / picture.Row_Bytes(), 1);
    return int(std::min(rows, std::size_t(picture.height)));
}

tl::unexpected<Error> Write_Failure(const Tiff_Handle& handle)
{
    if (handle.System_Error() != 0) return Failure(System_Error_Text(handle.System_Error()), handle.System_Error());
    return Failure("the picture cannot be written: " + handle.Error_Text());
}

// The directory that the library makes of this is thrown away; here it only tells how to code.
void Set_Up(TIFF* out, const Tiff_Rows& picture, std::uint16_t compression, int rows)
{
    TIFFSetField(out, TIFFTAG_IMAGEWIDTH, std::uint32_t(picture.width));
    TIFFSetField(out, TIFFTAG_IMAGELENGTH, std::uint32_t(picture.height));
    TIFFSetField(out, TIFFTAG_BITSPERSAMPLE, picture.bits);
    TIFFSetField(out, TIFFTAG_SAMPLESPERPIXEL, picture.samples);
    TIFFSetField(out, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISBLACK);
    TIFFSetField(out, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    TIFFSetField(out, TIFFTAG_ROWSPERSTRIP, std::uint32_t(rows));
    TIFFSetField(out, TIFFTAG_COMPRESSION, compression);
    if (Has_Predictor(compression, picture.bits)) TIFFSetField(out, TIFFTAG_PREDICTOR, PREDICTOR_HORIZONTAL);
}

void Copy_Row(const Bitmap_View& pixels, int y, std::uint8_t* out)
{
    const std::uint8_t* from = pixels.Row(y);
    if (pixels.Is_Grey()) {
        std::memcpy(out, from, pixels.Row_Bytes());
        return;
    }
    for (int x = 0; x < pixels.width; ++x, from += 3, out += 3) {
        out[0] = from[2];
        out[1] = from[1];
        out[2] = from[0];
    }
}

Result<void> Write_Strips(const Tiff_Handle& handle, const Tiff_Rows& picture, int rows)
{
    std::vector<std::uint8_t> strip(picture.Row_Bytes() * std::size_t(rows));
    std::uint32_t number = 0;
    for (int top = 0; top < picture.height; top += rows, ++number) {
        const int count = std::min(rows, picture.height - top);
        picture.fill(top, count, strip.data());
        const auto bytes = tmsize_t(picture.Row_Bytes() * std::size_t(count));
        if (TIFFWriteEncodedStrip(handle.Get(), number, strip.data(), bytes) != bytes) return Write_Failure(handle);
    }
    if (TIFFFlushData(handle.Get()) != 1) return Write_Failure(handle);
    return {};
}

Tiff_Field Numbers_Field(const Tiff_Layout& layout, std::uint16_t tag, const std::uint64_t* numbers, std::size_t count)
{
    const std::size_t unit = layout.Field_Size();
    Tiff_Field field{.tag = tag, .type = layout.big ? Tiff_Type::Long8 : Tiff_Type::Long, .count = count};
    field.value.resize(count * unit);
    for (std::size_t i = 0; i < count; ++i) layout.Put(field.value.data() + i * unit, unit, numbers[i]);
    return field;
}

Tiff_Field Long_Field(const Tiff_Layout& layout, std::uint16_t tag, int value)
{
    Tiff_Field field{.tag = tag, .type = Tiff_Type::Long, .count = 1, .value = std::vector<std::byte>(4)};
    layout.Put(field.value.data(), 4, std::uint64_t(value));
    return field;
}

Result<Tiff_Fields> Strip_Fields(const Tiff_Handle& handle, const Tiff_Layout& layout, const Tiff_Rows& picture,
                                 std::uint16_t compression, int rows)
{
    std::uint64_t *offsets = nullptr, *sizes = nullptr;
    if (TIFFGetField(handle.Get(), TIFFTAG_STRIPOFFSETS, &offsets) != 1 ||
        TIFFGetField(handle.Get(), TIFFTAG_STRIPBYTECOUNTS, &sizes) != 1 || !offsets || !sizes)
        return Write_Failure(handle);
    const std::size_t strips = std::size_t((std::int64_t(picture.height) + rows - 1) / rows);
    Tiff_Fields fields{Long_Field(layout, Tiff_Tag::Image_Width, picture.width),
                       Long_Field(layout, Tiff_Tag::Image_Length, picture.height),
                       Short_Field(layout, Tiff_Tag::Compression, compression),
                       Numbers_Field(layout, Tiff_Tag::Strip_Offsets, offsets, strips),
                       Short_Field(layout, Tiff_Tag::Orientation, 1),
                       Long_Field(layout, Tiff_Tag::Rows_Per_Strip, rows),
                       Numbers_Field(layout, Tiff_Tag::Strip_Byte_Counts, sizes, strips),
                       Short_Field(layout, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG)};
    if (Has_Predictor(compression, picture.bits))
        fields.push_back(Short_Field(layout, TIFFTAG_PREDICTOR, PREDICTOR_HORIZONTAL));
    return fields;
}

} // namespace

Tiff_Rows Rows_Of_Bitmap(const Bitmap_View& pixels)
{
    Tiff_Rows rows{.width = pixels.width, .height = pixels.height, .samples = pixels.bytes_per_pixel};
    rows.fill = [pixels](int top, int count, std::uint8_t* out) {
        for (int row = 0; row < count; ++row) Copy_Row(pixels, top + row, out + std::size_t(row) * pixels.Row_Bytes());
    };
    return rows;
}

Tiff_Fields Color_Fields_Of_Bitmap(const Tiff_Layout& layout, const Bitmap_View& pixels)
{
    Tiff_Field bits = Short_Field(layout, Tiff_Tag::Bits_Per_Sample, 8);
    if (!pixels.Is_Grey()) {
        bits.count = 3;
        bits.value.resize(6);
        for (std::size_t i = 0; i < 3; ++i) layout.Put(bits.value.data() + i * 2, 2, 8);
    }
    const std::uint16_t colors = pixels.Is_Grey() ? PHOTOMETRIC_MINISBLACK : PHOTOMETRIC_RGB;
    return {std::move(bits), Short_Field(layout, TIFFTAG_PHOTOMETRIC, colors),
            Short_Field(layout, Tiff_Tag::Samples_Per_Pixel, std::uint16_t(pixels.bytes_per_pixel))};
}

Result<Tiff_Fields> Encode_Tiff_Strips(int descriptor, const Tiff_Layout& layout, const Tiff_Rows& picture,
                                       std::uint16_t compression)
{
    const std::string mode = std::string("w") + (layout.little_endian ? "l" : "b") + (layout.big ? "8" : "4");
    struct stat facts {};
    Result<Tiff_Fields> fields;
    {
        auto handle = Tiff_Handle::Open_To_Write(descriptor, mode.c_str());
        if (!handle) return tl::make_unexpected(handle.error());
        const int rows = Rows_Per_Strip(picture);
        Set_Up(handle->Get(), picture, compression, rows);
        if (auto written = Write_Strips(*handle, picture, rows); !written) return tl::make_unexpected(written.error());
        fields = Strip_Fields(*handle, layout, picture, compression, rows);
        if (fstat(descriptor, &facts) != 0) return Failure(System_Error_Text(errno), errno);
    }
    // The library has written a directory of its own at its close; the one that counts comes from the caller.
    if (fields && ftruncate(descriptor, facts.st_size) != 0) return Failure(System_Error_Text(errno), errno);
    return fields;
}
