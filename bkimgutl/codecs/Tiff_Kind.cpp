#include "bkimgutl/codecs/Tiff_Kind.h"

#include "frame/files/Limits.h"

#include <algorithm>
#include <limits>
#include <set>
#include <string>
#include <tiffio.h>

int Tiff_Kind::Channels() const
{
    if (by_library) return 3;
    if (colors == Tiff_Colors::Grey) return 1;
    if (colors != Tiff_Colors::Palette) return 3;
    for (std::size_t i = 0; i + 2 < palette.size(); i += 3)
        if (palette[i] != palette[i + 1] || palette[i] != palette[i + 2]) return 3;
    return 1;
}

namespace {

Result<void> Check_Size(std::uint64_t width, std::uint64_t height)
{
    constexpr std::uint64_t most_side = std::numeric_limits<std::int32_t>::max();
    if (width == 0 || height == 0) return Failure("the picture has no size");
    const auto most = std::uint64_t(Current_Limits().bitmap_pixels);
    if (width > most_side || height > most_side || width * height > most)
        return Failure("the picture of " + std::to_string(width) + " x " + std::to_string(height) +
                       " pixels is larger than the limit of " + std::to_string(most) + " pixels");
    return {};
}

std::uint64_t Pieces(const Tiff_Structure& structure, const Tiff_Directory& directory, std::uint64_t width,
                     std::uint64_t height)
{
    const std::uint64_t tile_width = structure.Number(directory, TIFFTAG_TILEWIDTH, 0);
    const std::uint64_t tile_height = structure.Number(directory, TIFFTAG_TILELENGTH, 0);
    if (tile_width != 0 && tile_height != 0) return ((width - 1) / tile_width + 1) * ((height - 1) / tile_height + 1);
    const std::uint64_t rows = structure.Number(directory, Tiff_Tag::Rows_Per_Strip, height);
    return rows == 0 ? 1 : (height - 1) / rows + 1;
}

} // namespace

std::uint64_t Tiff_Piece_Count(const Tiff_Structure& structure, const Tiff_Directory& directory)
{
    const std::uint64_t width = structure.Number(directory, Tiff_Tag::Image_Width, 0);
    const std::uint64_t height = structure.Number(directory, Tiff_Tag::Image_Length, 0);
    if (width == 0 || height == 0) return 0;
    const bool separate = structure.Number(directory, TIFFTAG_PLANARCONFIG, 1) == PLANARCONFIG_SEPARATE;
    const std::uint64_t samples = structure.Number(directory, Tiff_Tag::Samples_Per_Pixel, 1);
    return Pieces(structure, directory, width, height) * (separate ? samples : 1);
}

Result<void> Check_Tiff_Limits(const Tiff_Structure& structure, const Tiff_Directory& directory)
{
    const Limits& limits = Current_Limits();
    const std::uint64_t width = structure.Number(directory, Tiff_Tag::Image_Width, 0);
    const std::uint64_t height = structure.Number(directory, Tiff_Tag::Image_Length, 0);
    if (auto size = Check_Size(width, height); !size) return size;
    const std::uint64_t samples = structure.Number(directory, Tiff_Tag::Samples_Per_Pixel, 1);
    if (samples == 0 || samples > std::uint64_t(limits.tiff_samples_per_pixel))
        return Failure("the picture has " + std::to_string(samples) + " samples per pixel, the limit is " +
                       std::to_string(limits.tiff_samples_per_pixel));
    std::uint64_t pieces = Tiff_Piece_Count(structure, directory);
    for (const auto tag :
         {Tiff_Tag::Strip_Offsets, Tiff_Tag::Strip_Byte_Counts, Tiff_Tag::Tile_Offsets, Tiff_Tag::Tile_Byte_Counts})
        if (const Tiff_Entry* entry = directory.Find(tag)) pieces = std::max(pieces, entry->count);
    if (pieces > std::uint64_t(limits.tiff_strips))
        return Failure("the picture has " + std::to_string(pieces) + " strips or tiles, the limit is " +
                       std::to_string(limits.tiff_strips));
    return {};
}

bool Has_Further_Pages(const Tiff_Structure& structure, const Tiff_Directory& first)
{
    std::set<std::uint64_t> visited{first.position};
    std::uint64_t position = first.next;
    while (position != 0 && int(visited.size()) < Current_Limits().tiff_directories &&
           visited.insert(position).second) {
        const auto directory = structure.Read_Directory(position);
        if (!directory) return false;
        const auto kind = structure.Number(*directory, Tiff_Tag::New_Subfile_Type, 0);
        if ((kind & (FILETYPE_REDUCEDIMAGE | FILETYPE_MASK)) == 0) return true;
        position = directory->next;
    }
    return false;
}

namespace {

template <class Number>
Number Field_Of(TIFF* handle, std::uint32_t tag, Number otherwise)
{
    Number value = otherwise;
    return TIFFGetFieldDefaulted(handle, tag, &value) == 1 ? value : otherwise;
}

Result<void> Take_Samples(TIFF* handle, Tiff_Kind& kind)
{
    const auto format = Field_Of<std::uint16_t>(handle, TIFFTAG_SAMPLEFORMAT, SAMPLEFORMAT_UINT);
    if (format == SAMPLEFORMAT_IEEEFP) return Failure("pictures with floating-point samples are not supported");
    if (format != SAMPLEFORMAT_UINT && format != SAMPLEFORMAT_VOID)
        return Failure("pictures with signed or complex samples are not supported");
    if (kind.bits < 1 || (kind.bits > 16 && kind.bits != 32))
        return Failure("pictures with " + std::to_string(kind.bits) + " bits per sample are not supported");
    return {};
}

void Take_Alpha(TIFF* handle, Tiff_Kind& kind)
{
    std::uint16_t count = 0;
    std::uint16_t* types = nullptr;
    TIFFGetFieldDefaulted(handle, TIFFTAG_EXTRASAMPLES, &count, &types);
    const int base = kind.Color_Samples();
    kind.extra_samples = kind.samples > base;
    for (int i = 0; i < count && base + i < kind.samples && kind.alpha < 0; ++i) {
        if (types[i] != EXTRASAMPLE_ASSOCALPHA && types[i] != EXTRASAMPLE_UNASSALPHA) continue;
        kind.alpha = base + i;
        kind.associated = types[i] == EXTRASAMPLE_ASSOCALPHA;
    }
}

Result<void> Take_Palette(TIFF* handle, Tiff_Kind& kind)
{
    std::uint16_t *red = nullptr, *green = nullptr, *blue = nullptr;
    if (TIFFGetField(handle, TIFFTAG_COLORMAP, &red, &green, &blue) != 1 || !red || !green || !blue || kind.bits > 16)
        return Failure("the picture has no colour table");
    const std::size_t size = std::size_t(1) << kind.bits;
    // Old writers stored 8-bit values where 16-bit ones belong.
    const auto small = [size](const std::uint16_t* from) {
        return std::all_of(from, from + size, [](std::uint16_t value) { return value < 256; });
    };
    const bool bytes = small(red) && small(green) && small(blue);
    const auto to_byte = [bytes](std::uint16_t value) { return std::uint8_t(bytes ? value : (value + 128) / 257); };
    kind.palette.resize(size * 3);
    for (std::size_t i = 0; i < size; ++i) {
        kind.palette[i * 3] = to_byte(blue[i]);
        kind.palette[i * 3 + 1] = to_byte(green[i]);
        kind.palette[i * 3 + 2] = to_byte(red[i]);
    }
    return {};
}

Result<void> Leave_To_Library(TIFF* handle, Tiff_Kind& kind)
{
    char reason[1024] = "";
    if (TIFFRGBAImageOK(handle, reason) == 0)
        return Failure("pictures of this kind are not supported: " + std::string(reason));
    kind.by_library = true;
    return {};
}

Result<void> Take_Colors(TIFF* handle, Tiff_Kind& kind)
{
    const auto compression = Field_Of<std::uint16_t>(handle, TIFFTAG_COMPRESSION, COMPRESSION_NONE);
    const auto standard = std::uint16_t(kind.samples < 3 ? PHOTOMETRIC_MINISBLACK : PHOTOMETRIC_RGB);
    const auto photometric = Field_Of<std::uint16_t>(handle, TIFFTAG_PHOTOMETRIC, standard);
    switch (photometric) {
    case PHOTOMETRIC_MINISWHITE: kind.white_is_zero = true; return {};
    case PHOTOMETRIC_MINISBLACK: return {};
    case PHOTOMETRIC_PALETTE: kind.colors = Tiff_Colors::Palette; return Take_Palette(handle, kind);
    case PHOTOMETRIC_RGB: kind.colors = Tiff_Colors::RGB; return {};
    case PHOTOMETRIC_SEPARATED:
        kind.colors = Tiff_Colors::CMYK;
        if (Field_Of<std::uint16_t>(handle, TIFFTAG_INKSET, INKSET_CMYK) != INKSET_CMYK)
            return Failure("pictures with inks other than cyan, magenta, yellow and black are not supported");
        return {};
    case PHOTOMETRIC_YCBCR:
        if (compression != COMPRESSION_JPEG || kind.separate || kind.bits != 8) return Leave_To_Library(handle, kind);
        kind.colors = Tiff_Colors::RGB;
        kind.samples_as_told = false;
        if (TIFFSetField(handle, TIFFTAG_JPEGCOLORMODE, JPEGCOLORMODE_RGB) != 1)
            return Failure("the JPEG coded colours cannot be read");
        return {};
    case PHOTOMETRIC_CIELAB:
    case PHOTOMETRIC_LOGL:
    case PHOTOMETRIC_LOGLUV: return Leave_To_Library(handle, kind);
    default: return Failure("pictures of colour kind " + std::to_string(photometric) + " are not supported");
    }
}

Result<void> Check_Coder(TIFF* handle)
{
    const auto compression = Field_Of<std::uint16_t>(handle, TIFFTAG_COMPRESSION, COMPRESSION_NONE);
    if (compression == COMPRESSION_OJPEG) return Failure("pictures with the old kind of JPEG coding are not supported");
    if (TIFFIsCODECConfigured(compression) == 0)
        return Failure("pictures with compression " + std::to_string(compression) + " are not supported");
    return {};
}

} // namespace

Result<Tiff_Kind> Kind_Of(TIFF* handle)
{
    Tiff_Kind kind;
    const auto width = Field_Of<std::uint32_t>(handle, TIFFTAG_IMAGEWIDTH, 0);
    const auto height = Field_Of<std::uint32_t>(handle, TIFFTAG_IMAGELENGTH, 0);
    if (auto size = Check_Size(width, height); !size) return tl::make_unexpected(size.error());
    kind.width = int(width);
    kind.height = int(height);
    kind.samples = Field_Of<std::uint16_t>(handle, TIFFTAG_SAMPLESPERPIXEL, 1);
    kind.bits = Field_Of<std::uint16_t>(handle, TIFFTAG_BITSPERSAMPLE, 1);
    kind.orientation = Field_Of<std::uint16_t>(handle, TIFFTAG_ORIENTATION, 1);
    const auto planar = Field_Of<std::uint16_t>(handle, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    kind.separate = planar == PLANARCONFIG_SEPARATE && kind.samples > 1;
    kind.tiled = TIFFIsTiled(handle) != 0;
    if (auto coder = Check_Coder(handle); !coder) return tl::make_unexpected(coder.error());
    if (auto colors = Take_Colors(handle, kind); !colors) return tl::make_unexpected(colors.error());
    if (kind.by_library) return kind;
    if (auto samples = Take_Samples(handle, kind); !samples) return tl::make_unexpected(samples.error());
    if (kind.samples < kind.Color_Samples() || kind.samples > Current_Limits().tiff_samples_per_pixel)
        return Failure("the picture has " + std::to_string(kind.samples) +
                       " samples per pixel, which is not supported");
    Take_Alpha(handle, kind);
    return kind;
}
