#include "bkimgutl/geometry/Turn_Rows.h"

#include "bkimgutl/core/Row_Writer.h"

#include <algorithm>
#include <cstring>
#include <memory>

// Pixels move in squares of 4 x 4 (colour) or 16 x 16 (grey) that are transposed in registers. Squares are taken in bands
// of rows of the result, narrow enough that a band's lines of source and result stay in the first cache.

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "bkimgutl/geometry/Turn_Rows.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace bkimgutl {
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

// For the rows and columns that fill no square, and for processors without byte shuffles.
void Transpose_Plainly(const Bitmap_View& from, const Mutable_Bitmap_View& to, int left, int right, int first, int end)
{
    const int size = from.bytes_per_pixel;
    for (int x = left; x < right; ++x) {
        const std::uint8_t* source = from.Row(x);
        for (int y = first; y < end; ++y)
            for (int c = 0; c < size; ++c) to.Row(y)[x * size + c] = source[y * size + c];
    }
}

void Reverse_Plainly(const std::uint8_t* from, int width, int size, int first, std::uint8_t* to)
{
    for (int x = first; x < width; ++x)
        for (int c = 0; c < size; ++c)
            to[std::ptrdiff_t(x) * size + c] = from[std::ptrdiff_t(width - 1 - x) * size + c];
}

#if HWY_TARGET == HWY_SCALAR

void Reverse_Grey(const std::uint8_t* from, int width, std::uint8_t* to)
{
    Reverse_Plainly(from, width, 1, 0, to);
}

void Reverse_Color(const std::uint8_t* from, int width, std::uint8_t* to)
{
    Reverse_Plainly(from, width, 3, 0, to);
}

// Squares that stay in the first cache.
void Transpose_Grey(const Bitmap_View& from, const Mutable_Bitmap_View& to, int first, int end)
{
    for (int y = first; y < end; y += 32)
        for (int x = 0; x < to.width; x += 32)
            Transpose_Plainly(from, to, x, std::min(x + 32, to.width), y, std::min(y + 32, end));
}

void Transpose_Color(const Bitmap_View& from, const Mutable_Bitmap_View& to, int first, int end)
{
    Transpose_Grey(from, to, first, end);
}

#else

using Tag8 = hn::FixedTag<std::uint8_t, 16>;
using Tag32 = hn::FixedTag<std::uint32_t, 4>;
using Vector8 = hn::Vec<Tag8>;
using Vector32 = hn::Vec<Tag32>;

constexpr int band_rows = Transpose_Band;

// ---- reversing -------------------------------------------------------------------------------------------------------

HWY_ALIGN constexpr std::uint8_t all_reversed[16] = {15, 14, 13, 12, 11, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1, 0};
HWY_ALIGN constexpr std::uint8_t five_reversed[16] = {13, 14, 15, 10, 11, 12, 7, 8, 9, 4, 5, 6, 1, 2, 3, 0};

void Reverse_Grey(const std::uint8_t* from, int width, std::uint8_t* to)
{
    const Tag8 d;
    const auto order = hn::Load(d, all_reversed);
    int x = 0;
    for (; x + 16 <= width; x += 16)
        hn::StoreU(hn::TableLookupBytes(hn::LoadU(d, from + width - 16 - x), order), d, to + x);
    Reverse_Plainly(from, width, 1, x, to);
}

// Five pixels a step; the sixteenth byte is mended by the next step.
void Reverse_Color(const std::uint8_t* from, int width, std::uint8_t* to)
{
    const Tag8 d;
    const auto order = hn::Load(d, five_reversed);
    int x = 0;
    for (; x + 6 <= width; x += 5) {
        const auto pixels = hn::LoadU(d, from + 3 * std::ptrdiff_t(width - x) - 16);
        hn::StoreU(hn::TableLookupBytes(pixels, order), d, to + 3 * std::ptrdiff_t(x));
    }
    Reverse_Plainly(from, width, 3, x, to);
}

// ---- transposing -----------------------------------------------------------------------------------------------------

HWY_ALIGN constexpr std::uint8_t spread[16] = {0, 1, 2, 0x80, 3, 4, 5, 0x80, 6, 7, 8, 0x80, 9, 10, 11, 0x80};
HWY_ALIGN constexpr std::uint8_t gather[16] = {0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, 0x80, 0x80, 0x80, 0x80};

struct Square {
    Vector8 row0, row1, row2, row3;
};

HWY_INLINE Vector32 Four_Pixels(const std::uint8_t* from)
{
    const Tag8 d;
    return hn::BitCast(Tag32(), hn::TableLookupBytes(hn::LoadU(d, from), hn::Load(d, spread)));
}

HWY_INLINE Vector8 Packed(hn::Vec<hn::FixedTag<std::uint64_t, 2>> pixels)
{
    const Tag8 d;
    return hn::TableLookupBytes(hn::BitCast(d, pixels), hn::Load(d, gather));
}

// The 4 x 4 pixels whose top left is (y, x) of the source, transposed: each row has 12 bytes that count.
HWY_INLINE Square Transposed_Square(const Bitmap_View& from, int x, int y)
{
    const Tag32 d32;
    const hn::FixedTag<std::uint64_t, 2> d64;
    const std::uint8_t* corner = from.Row(x) + 3 * std::ptrdiff_t(y);
    const auto a = Four_Pixels(corner);
    const auto b = Four_Pixels(corner + from.step);
    const auto c = Four_Pixels(corner + 2 * from.step);
    const auto e = Four_Pixels(corner + 3 * from.step);
    const auto ab_low = hn::BitCast(d64, hn::InterleaveLower(d32, a, b));
    const auto ab_high = hn::BitCast(d64, hn::InterleaveUpper(d32, a, b));
    const auto ce_low = hn::BitCast(d64, hn::InterleaveLower(d32, c, e));
    const auto ce_high = hn::BitCast(d64, hn::InterleaveUpper(d32, c, e));
    return {Packed(hn::InterleaveLower(d64, ab_low, ce_low)), Packed(hn::InterleaveUpper(d64, ab_low, ce_low)),
            Packed(hn::InterleaveLower(d64, ab_high, ce_high)), Packed(hn::InterleaveUpper(d64, ab_high, ce_high))};
}

HWY_INLINE void Store_Square(const Square& square, std::uint8_t* to, std::ptrdiff_t step)
{
    const Tag8 d;
    hn::StoreU(square.row0, d, to);
    hn::StoreU(square.row1, d, to + step);
    hn::StoreU(square.row2, d, to + 2 * step);
    hn::StoreU(square.row3, d, to + 3 * step);
}

// A band jumps from row to row of the source, which no processor foresees.
HWY_INLINE void Prefetch_Ahead(const Bitmap_View& from, int row, std::ptrdiff_t offset, int bytes)
{
    for (int i = row; i < std::min(row + 4, from.height); ++i)
        for (int k = 0; k < bytes; k += 64) __builtin_prefetch(from.Row(i) + offset + k);
}

// Part of a band: `columns` pixels wide, a multiple of 4. It is put together in the first cache and leaves as whole lines;
// written square by square, the lines of a band would travel half filled.
struct Tile {
    static constexpr int side = Transpose_Band;
    static constexpr std::ptrdiff_t step = 3 * side + 16; // a square's last store runs over by 4
    HWY_ALIGN std::uint8_t bytes[side * step];
};

void Fill_Tile(const Bitmap_View& from, int x, int columns, int y, int rows, Tile& tile)
{
    for (int column = 0; column < columns; column += 4) {
        Prefetch_Ahead(from, x + column + 32, 3 * std::ptrdiff_t(y), 3 * rows);
        for (int row = 0; row < rows; row += 4)
            Store_Square(Transposed_Square(from, x + column, y + row), tile.bytes + row * Tile::step + 3 * column,
                         Tile::step);
    }
}

void Store_Tile(const Tile& tile, Row_Writer& writer, int x, int columns, int y, int rows)
{
    const auto bytes = 3 * std::size_t(columns);
    for (int row = 0; row < rows; ++row)
        writer.Copy_To_Row(y + row, 3 * std::size_t(x), tile.bytes + row * Tile::step, bytes);
}

void Transpose_Color(const Bitmap_View& from, const Mutable_Bitmap_View& to, int first, int end)
{
    const int columns = to.width / 4 * 4; // rows of the source that fill squares
    Row_Writer writer(to);
    const auto tile_memory = std::make_unique<Tile>();
    Tile& tile = *tile_memory;
    for (int band = first; band < end; band += band_rows) {
        const int band_end = std::min(end, band + band_rows);
        // A load takes 16 bytes: six pixels must be left in the source's row.
        const int rows = std::max(0, std::min(band_end - band, from.width - 2 - band)) / 4 * 4;
        for (int x = 0; x < columns; x += Tile::side) {
            const int width = std::min(Tile::side, columns - x);
            Fill_Tile(from, x, width, band, rows, tile);
            Store_Tile(tile, writer, x, width, band, rows);
        }
        Transpose_Plainly(from, to, 0, columns, band + rows, band_end);
        Transpose_Plainly(from, to, columns, to.width, band, band_end);
    }
}

void Transpose_Grey_Square(const Bitmap_View& from, const Mutable_Bitmap_View& to, int x, int y)
{
    const Tag8 d;
    Vector8 rows[2][16];
    for (int i = 0; i < 16; ++i) rows[0][i] = hn::LoadU(d, from.Row(x + i) + y);
    for (int round = 0; round < 4; ++round) { // each round deals rows i and i + 8 out as the next two
        const auto& before = rows[round & 1];
        auto& after = rows[(round & 1) ^ 1];
        for (int i = 0; i < 8; ++i) {
            after[2 * i] = hn::InterleaveLower(d, before[i], before[i + 8]);
            after[2 * i + 1] = hn::InterleaveUpper(d, before[i], before[i + 8]);
        }
    }
    for (int i = 0; i < 16; ++i) hn::StoreU(rows[0][i], d, to.Row(y + i) + x);
}

void Transpose_Grey(const Bitmap_View& from, const Mutable_Bitmap_View& to, int first, int end)
{
    const int columns = to.width / 16 * 16;
    for (int band = first; band < end; band += band_rows) {
        const int band_end = std::min(end, band + band_rows);
        const int vector_end = band + (band_end - band) / 16 * 16;
        for (int x = 0; x < columns; x += 16) {
            for (int y = band; y < vector_end; y += 16) Transpose_Grey_Square(from, to, x, y);
            Transpose_Plainly(from, to, x, x + 16, vector_end, band_end);
        }
        Transpose_Plainly(from, to, columns, to.width, band, band_end);
    }
}

#endif // HWY_SCALAR

} // namespace HWY_NAMESPACE
} // namespace bkimgutl
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace bkimgutl {
HWY_EXPORT(Reverse_Grey);
HWY_EXPORT(Reverse_Color);
HWY_EXPORT(Transpose_Grey);
HWY_EXPORT(Transpose_Color);
} // namespace bkimgutl

void Reverse_Row(const std::uint8_t* from, int width, int bytes_per_pixel, std::uint8_t* to)
{
    using namespace bkimgutl;
    if (bytes_per_pixel == 1)
        HWY_DYNAMIC_DISPATCH(Reverse_Grey)(from, width, to);
    else
        HWY_DYNAMIC_DISPATCH(Reverse_Color)(from, width, to);
}

void Transpose_Rows(const Bitmap_View& from, const Mutable_Bitmap_View& to, int first_row, int end_row)
{
    using namespace bkimgutl;
    if (from.Is_Grey())
        HWY_DYNAMIC_DISPATCH(Transpose_Grey)(from, to, first_row, end_row);
    else
        HWY_DYNAMIC_DISPATCH(Transpose_Color)(from, to, first_row, end_row);
}

#endif
