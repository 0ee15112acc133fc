#include "bkimgutl/geometry/Rotate.h"

#include "bkimgutl/core/Color.h"
#include "bkimgutl/core/Row_Loop.h"
#include "bkimgutl/core/Row_Writer.h"
#include "bkimgutl/geometry/Cubic_Row.h"
#include "bkimgutl/geometry/Cubic_Table.h"
#include "bkimgutl/geometry/Rotation_Map.h"
#include "bkimgutl/geometry/Turn.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

// A row of the result runs along a slanted line through the source. From left to right it meets the background, a few
// pixels near the source's edge, pixels whose sixteen neighbours all lie inside, and the same backwards. Nearly all are
// of the middle kind, which has a fast kernel; those near the edge are computed in real arithmetic.

namespace {

struct Rotation {
    Bitmap_View from;
    Mutable_Bitmap_View to;
    Rotation_Map map;
    std::int64_t u_step, v_step;
    std::uint8_t background[3];
};

constexpr std::int64_t Whole(std::int64_t pixels)
{
    return pixels * (std::int64_t(1) << Rotation_Map::places);
}

double Clamped_Cubic(const Bitmap_View& from, double u, double v, int channel)
{
    const int column = int(std::floor(u));
    const int row = int(std::floor(v));
    const auto across = Cubic_Weights(u - column);
    const auto down = Cubic_Weights(v - row);
    double sum = 0;
    for (int j = 0; j < 4; ++j) {
        const std::uint8_t* line = from.Row(std::clamp(row - 1 + j, 0, from.height - 1));
        double along = 0;
        for (int i = 0; i < 4; ++i)
            along += across[std::size_t(i)] *
                     line[std::clamp(column - 1 + i, 0, from.width - 1) * from.bytes_per_pixel + channel];
        sum += down[std::size_t(j)] * along;
    }
    return std::clamp(sum, 0.0, 255.0);
}

// How much of a pixel's width the picture covers: 1 from half a pixel inside the edge, 0 from half a pixel outside.
double Cover(double position, int length)
{
    return std::clamp(std::min(position + 1, length - position), 0.0, 1.0);
}

void Edge_Pixels(const Rotation& r, int y, Pixel_Span span, std::int64_t u, std::int64_t v)
{
    for (int x = span.first; x < span.end; ++x) {
        const double here_u = std::ldexp(double(u + x * r.u_step), -Rotation_Map::places);
        const double here_v = std::ldexp(double(v + x * r.v_step), -Rotation_Map::places);
        const double cover = Cover(here_u, r.from.width) * Cover(here_v, r.from.height);
        std::uint8_t* pixel = r.to.Row(y) + x * r.from.bytes_per_pixel;
        for (int c = 0; c < r.from.bytes_per_pixel; ++c) {
            const double color = cover > 0 ? Clamped_Cubic(r.from, here_u, here_v, c) : 0;
            pixel[c] = std::uint8_t(std::lround(color * cover + r.background[c] * (1 - cover)));
        }
    }
}

void Fill(const Rotation& r, int y, Pixel_Span span)
{
    const int size = r.from.bytes_per_pixel;
    std::uint8_t* row = r.to.Row(y);
    for (int x = span.first; x < span.end; ++x)
        for (int c = 0; c < size; ++c) row[x * size + c] = r.background[c];
}

/// What a row of the result meets on its way through the source.
struct Row_Course {
    std::int64_t u = 0, v = 0; ///< source position of column 0
    Pixel_Span touched;        ///< not background alone
    Pixel_Span inside;         ///< of these, the pixels that have all their neighbours
};

Row_Course Course_Of_Row(const Rotation& r, int y)
{
    const std::int64_t u = r.map.U_At_Row_Start(y);
    const std::int64_t v = r.map.V_At_Row_Start(y);
    const std::int64_t du = r.u_step;
    const std::int64_t dv = r.v_step;
    const int width = r.map.width;
    const Pixel_Span touched = Both(Span_Where(u, du, Whole(-1), Whole(r.from.width), width),
                                    Span_Where(v, dv, Whole(-1), Whole(r.from.height), width));
    // One less than the kernel allows, since it rounds positions.
    Pixel_Span inside = Both(Span_Where(u, du, Whole(1), Whole(r.from.width - 6), width),
                             Span_Where(v, dv, Whole(1), Whole(r.from.height - 4), width));
    if (inside.end == 0) inside = {touched.end, touched.end};
    return {u, v, touched, inside};
}

void Outer_Pixels(const Rotation& r, int y, const Row_Course& row)
{
    Fill(r, y, {0, row.touched.first});
    Edge_Pixels(r, y, {row.touched.first, row.inside.first}, row.u, row.v);
    Edge_Pixels(r, y, {row.inside.end, row.touched.end}, row.u, row.v);
    Fill(r, y, {row.touched.end, r.map.width});
}

// A whole row of the result crosses hundreds of rows of the source, more than the first cache holds until the next row
// comes by. So the band goes from left to right in tiles.
constexpr int band_rows = 32;
constexpr int tile_columns = 128;

// The kernel runs across the rows of the source, which no processor foresees: it would wait for each line of memory by
// itself, and for each page. Reading a byte of every line first, row by row, fetches them in a third of the time.
void Fetch_Source(const Rotation& r, int left, int right, int first, int end)
{
    constexpr double reach = 3;
    const auto range = [](double start, double along, double across, int length) {
        const double low = start + std::min(along, 0.0) + std::min(across, 0.0) - reach;
        const double high = start + std::max(along, 0.0) + std::max(across, 0.0) + reach;
        const double last = length - 1;
        return std::pair(int(std::clamp(low, 0.0, last)), int(std::clamp(high, 0.0, last)));
    };
    const int columns = right - left;
    const int rows = end - first;
    const double u = r.map.u0 + left * r.map.cosine - first * r.map.sine;
    const double v = r.map.v0 + left * r.map.sine + first * r.map.cosine;
    const auto [u_low, u_high] = range(u, columns * r.map.cosine, -rows * r.map.sine, r.from.width);
    const auto [v_low, v_high] = range(v, columns * r.map.sine, rows * r.map.cosine, r.from.height);
    constexpr std::ptrdiff_t line = 64;
    for (int row = v_low; row <= v_high; ++row) {
        const std::uint8_t* end_of_row = r.from.Row(row) + std::ptrdiff_t(u_high) * r.from.bytes_per_pixel;
        for (const std::uint8_t* at = r.from.Row(row) + std::ptrdiff_t(u_low) * r.from.bytes_per_pixel;; at += line) {
            (void)*static_cast<const volatile std::uint8_t*>(std::min(at, end_of_row));
            if (at >= end_of_row) break;
        }
    }
}

/// A tile of the result, put together in the first cache: a picture is best written in long pieces.
struct Tile {
    static constexpr std::size_t step = 3 * tile_columns;
    alignas(64) std::uint8_t bytes[band_rows * step];
};

void Inner_Pixels(const Rotation& r, int y, const Row_Course& row, Pixel_Span part, std::uint8_t* room,
                  Row_Writer& writer)
{
    const int first = std::max(part.first, row.inside.first);
    const int end = std::min(part.end, row.inside.end);
    if (first >= end) return;
    const auto size = std::size_t(r.from.bytes_per_pixel);
    Cubic_Row({r.from, row.u + first * r.u_step, row.v + first * r.v_step, r.u_step, r.v_step}, end - first, room);
    writer.Copy_To_Row(y, std::size_t(first) * size, room, std::size_t(end - first) * size);
}

void Rotate_Band(const Rotation& r, int first, int end)
{
    std::array<Row_Course, band_rows> rows;
    const auto row = [&](int y) -> Row_Course& { return rows[std::size_t(y - first)]; };
    for (int y = first; y < end; ++y) {
        row(y) = Course_Of_Row(r, y);
        Outer_Pixels(r, y, row(y));
    }
    Tile tile;
    Row_Writer writer(r.to);
    for (int x = 0; x < r.map.width; x += tile_columns) {
        const int right = std::min(x + tile_columns, r.map.width);
        Fetch_Source(r, x, right, first, end);
        for (int y = first; y < end; ++y)
            Inner_Pixels(r, y, row(y), {x, right}, tile.bytes + std::size_t(y - first) * Tile::step, writer);
    }
}

void Set_Background(Rotation& r, const Background_Color& color)
{
    r.background[0] =
        r.from.Is_Grey() ? std::uint8_t(RGB_To_Luminance(color.red, color.green, color.blue)) : color.blue;
    r.background[1] = color.green;
    r.background[2] = color.red;
}

} // namespace

Result<Bitmap> Rotated(const Bitmap& source, float degrees, const Background_Color& background)
{
    if (!(degrees >= 0.0F && degrees < 360.0F)) return Failure("a rotation angle is 0 to 359.999 degrees");
    const int quarters = int(degrees / 90.0F);
    if (degrees == 90.0F * float(quarters)) return Turned(source, {quarters, false});
    const Rotation_Map map(source.Width(), source.Height(), double(degrees));
    Rotation r{source.View(), {}, map, map.U_Step(), map.V_Step(), {}};
    auto rotated = Bitmap::Create(r.map.width, r.map.height, source.Bytes_Per_Pixel());
    if (!rotated) return rotated;
    r.to = rotated->Change();
    Set_Background(r, background);
    const int bands = (r.map.height + band_rows - 1) / band_rows;
    For_Rows(bands, 16 * r.to.Row_Bytes() * band_rows, [&](int first, int end) {
        for (int band = first; band < end; ++band)
            Rotate_Band(r, band * band_rows, std::min(r.map.height, (band + 1) * band_rows));
    });
    return rotated;
}
