#include "bkimgutl/geometry/Rotate.h"

#include "bkimgutl/core/Color.h"
#include "bkimgutl/core/Row_Loop.h"
#include "bkimgutl/geometry/Cubic_Row.h"
#include "bkimgutl/geometry/Cubic_Table.h"
#include "bkimgutl/geometry/Rotation_Map.h"
#include "bkimgutl/geometry/Turn.h"

#include <algorithm>
#include <cmath>

// A row of the result runs along a slanted line through the source. From left to right it meets the background, a few
// pixels near the source's edge, pixels whose sixteen neighbours all lie inside, and the same backwards. Nearly all are
// of the middle kind, which has a fast kernel; those near the edge are computed in real arithmetic.

namespace {

struct Rotation {
    Bitmap_View from;
    Mutable_Bitmap_View to;
    Rotation_Map map;
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
        const double here_u = std::ldexp(double(u + x * r.map.U_Step()), -Rotation_Map::places);
        const double here_v = std::ldexp(double(v + x * r.map.V_Step()), -Rotation_Map::places);
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

void Rotate_One_Row(const Rotation& r, int y)
{
    const std::int64_t u = r.map.U_At_Row_Start(y);
    const std::int64_t v = r.map.V_At_Row_Start(y);
    const std::int64_t du = r.map.U_Step();
    const std::int64_t dv = r.map.V_Step();
    const int width = r.map.width;
    const Pixel_Span touched = Both(Span_Where(u, du, Whole(-1), Whole(r.from.width), width),
                                    Span_Where(v, dv, Whole(-1), Whole(r.from.height), width));
    // One less than the kernel allows, since it rounds positions.
    Pixel_Span inside = Both(Span_Where(u, du, Whole(1), Whole(r.from.width - 6), width),
                             Span_Where(v, dv, Whole(1), Whole(r.from.height - 4), width));
    if (inside.end == 0) inside = {touched.end, touched.end};
    Fill(r, y, {0, touched.first});
    Edge_Pixels(r, y, {touched.first, inside.first}, u, v);
    Cubic_Row(r.from, u + inside.first * du, v + inside.first * dv, du, dv, inside.end - inside.first,
              r.to.Row(y) + inside.first * r.from.bytes_per_pixel);
    Edge_Pixels(r, y, {inside.end, touched.end}, u, v);
    Fill(r, y, {touched.end, width});
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
    Rotation r{source.View(), {}, {source.Width(), source.Height(), double(degrees)}, {}};
    auto rotated = Bitmap::Create(r.map.width, r.map.height, source.Bytes_Per_Pixel());
    if (!rotated) return rotated;
    r.to = rotated->Change();
    Set_Background(r, background);
    For_Rows(r.map.height, 16 * r.to.Row_Bytes(), [&](int first, int end) {
        for (int y = first; y < end; ++y) Rotate_One_Row(r, y);
    });
    return rotated;
}
