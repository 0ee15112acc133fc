#include "bkimgutl/codecs/Tiff_Samples.h"

#include "bkimgutl/codecs/Tiff_Handle.h"

#include <algorithm>
#include <cstring>
#include <tiffio.h>

// Rows are kept packed as the TIFF library decodes them. Whole bytes are moved as bytes, all else sample by sample, bit by
// bit from the left of its row. Numbers of 16 and 32 bits are in the order of this machine on both ways.

namespace {

tl::unexpected<Error> Read_Failure(const Tiff_Handle& handle)
{
    const std::string& text = handle.Error_Text();
    return Failure(text.empty() ? "the picture cannot be decoded" : "the picture cannot be decoded: " + text);
}

std::uint32_t Bits_At(const std::uint8_t* row, std::size_t bit, int count)
{
    std::uint32_t value = 0;
    for (int i = 0; i < count; ++i, ++bit) value = value << 1 | (row[bit / 8] >> (7 - bit % 8) & 1U);
    return value;
}

/// The target's bits are 0 before.
void Put_Bits(std::uint8_t* row, std::size_t bit, int count, std::uint32_t value)
{
    for (int i = count - 1; i >= 0; --i, ++bit) row[bit / 8] |= std::uint8_t((value >> i & 1U) << (7 - bit % 8));
}

/// Where the pixels of a row of the turned picture stand: x, y + i * (x_step, y_step).
struct Course {
    int x, y, x_step, y_step;
};

Course Course_Of_Row(Pixel_Symmetry symmetry, int width, int height, int y)
{
    Course course{};
    switch (symmetry.quarter_turns) {
    case 0: course = {0, y, 1, 0}; break;
    case 1: course = {width - 1 - y, 0, 0, 1}; break;
    case 2: course = {width - 1, height - 1 - y, -1, 0}; break;
    default: course = {y, height - 1, 0, -1}; break;
    }
    if (symmetry.mirrored) { // which came before the turn
        course.x = width - 1 - course.x;
        course.x_step = -course.x_step;
    }
    return course;
}

} // namespace

bool Can_Move_Samples(const Tiff_Kind& kind)
{
    return !kind.by_library && kind.samples_as_told;
}

Result<Tiff_Samples> Tiff_Samples::Read(const Regular_File& file)
{
    auto handle = Tiff_Handle::Open_To_Read(file);
    if (!handle) return tl::make_unexpected(handle.error());
    const auto kind = Kind_Of(handle->Get());
    if (!kind) return tl::make_unexpected(kind.error());
    Tiff_Samples samples(*kind);
    samples.row_bytes_ = (std::size_t(kind->width) * std::size_t(samples.Unit_Bits()) + 7) / 8;
    if (!kind->tiled && std::size_t(TIFFScanlineSize64(handle->Get())) != samples.row_bytes_)
        return Failure("the rows of the picture have an odd size");
    const std::size_t rows = std::size_t(samples.Planes()) * std::size_t(kind->height);
    auto memory = Pixel_Memory::Allocate(rows * samples.row_bytes_);
    if (!memory) return tl::make_unexpected(memory.error());
    samples.memory_ = std::move(*memory);
    for (int plane = 0; plane < samples.Planes(); ++plane)
        if (!samples.Read_Plane(handle->Get(), std::uint16_t(plane))) return Read_Failure(*handle);
    return samples;
}

Result<void> Tiff_Samples::Read_Plane(TIFF* handle, std::uint16_t plane)
{
    if (!kind_.tiled) {
        for (int y = 0; y < kind_.height; ++y)
            if (TIFFReadScanline(handle, Row(plane, y), std::uint32_t(y), plane) != 1) return Failure("a bad strip");
        return {};
    }
    const tmsize_t size = TIFFTileSize(handle);
    if (size <= 0) return Failure("no usable tiles");
    std::vector<std::uint8_t> tile(std::size_t(size) + 64);
    std::uint32_t tile_height = 0;
    TIFFGetField(handle, TIFFTAG_TILELENGTH, &tile_height);
    for (std::int64_t top = 0; top < kind_.height; top += std::max<std::int64_t>(tile_height, 1))
        if (auto read = Read_Tile_Row(handle, plane, int(top), tile); !read) return read;
    return {};
}

// The width of a tile is a multiple of 16, so each starts at a whole byte of its row.
Result<void> Tiff_Samples::Read_Tile_Row(TIFF* handle, std::uint16_t plane, int top, std::vector<std::uint8_t>& tile)
{
    std::uint32_t tile_width = 0, tile_height = 0;
    TIFFGetField(handle, TIFFTAG_TILEWIDTH, &tile_width);
    TIFFGetField(handle, TIFFTAG_TILELENGTH, &tile_height);
    const auto tile_row = std::size_t(TIFFTileRowSize64(handle));
    const auto size = tmsize_t(tile.size() - 64);
    if (tile_width == 0 || tile_width % 8 != 0) return Failure("no usable tiles");
    const int rows = int(std::min<std::int64_t>(tile_height, kind_.height - top));
    for (std::int64_t left = 0; left < kind_.width; left += tile_width) {
        const auto number = TIFFComputeTile(handle, std::uint32_t(left), std::uint32_t(top), 0, plane);
        if (TIFFReadEncodedTile(handle, number, tile.data(), size) != size) return Failure("a bad tile");
        const std::size_t offset = std::size_t(left) * std::size_t(Unit_Bits()) / 8;
        const std::size_t bytes = std::min(tile_row, row_bytes_ - offset);
        for (int row = 0; row < rows; ++row)
            std::memcpy(Row(plane, top + row) + offset, tile.data() + std::size_t(row) * tile_row, bytes);
    }
    return {};
}

Tiff_Rows Tiff_Samples::Turned(Pixel_Symmetry symmetry) const
{
    const bool swaps = symmetry.Swaps_Sides();
    Tiff_Rows rows{.width = swaps ? kind_.height : kind_.width,
                   .height = swaps ? kind_.width : kind_.height,
                   .samples = kind_.samples,
                   .bits = kind_.bits};
    const auto move = [this](const Course& course, int first, int end, std::uint8_t* to) {
        const int bits = kind_.bits;
        for (int plane = 0; plane < Planes(); ++plane) {
            for (int x = first; x < end; ++x) {
                const std::uint8_t* from = Row(plane, course.y + x * course.y_step);
                std::size_t source = std::size_t(course.x + x * course.x_step) * std::size_t(Unit_Bits());
                std::size_t target =
                    (std::size_t(x) * std::size_t(kind_.samples) + std::size_t(plane)) * std::size_t(bits);
                if (bits % 8 == 0) {
                    std::memcpy(to + target / 8, from + source / 8, std::size_t(Unit_Bits()) / 8);
                    continue;
                }
                for (int i = 0; i < Unit_Samples(); ++i, source += std::size_t(bits), target += std::size_t(bits))
                    Put_Bits(to, target, bits, Bits_At(from, source, bits));
            }
        }
    };
    rows.fill = [=, this, width = rows.width, bytes = rows.Row_Bytes()](int top, int count, std::uint8_t* out) {
        std::memset(out, 0, std::size_t(count) * bytes);
        constexpr int block = 64; // a column of the source comes row by row: so many lines of memory stay at hand
        for (int first = 0; first < width; first += block)
            for (int row = 0; row < count; ++row)
                move(Course_Of_Row(symmetry, kind_.width, kind_.height, top + row), first,
                     std::min(width, first + block), out + std::size_t(row) * bytes);
    };
    return rows;
}
