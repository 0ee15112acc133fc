#include "bkimgutl/geometry/Rotation_Map.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

std::int64_t Fixed(double value)
{
    return std::llround(std::ldexp(value, Rotation_Map::places));
}

std::int64_t Floor_Divide(std::int64_t a, std::int64_t b) // b > 0
{
    return a / b - (a % b < 0 ? 1 : 0);
}

} // namespace

Rotation_Map::Rotation_Map(int source_width, int source_height, double degrees)
{
    const double angle = degrees * std::numbers::pi / 180;
    cosine = std::cos(angle);
    sine = std::sin(angle);
    constexpr double forgiven = 1e-6; // a side of 100.0000001 is 100
    width = int(std::ceil(source_width * std::abs(cosine) + source_height * std::abs(sine) - forgiven));
    height = int(std::ceil(source_width * std::abs(sine) + source_height * std::abs(cosine) - forgiven));
    const double x = 0.5 - width / 2.0;
    const double y = 0.5 - height / 2.0;
    u0 = x * cosine - y * sine + source_width / 2.0 - 0.5;
    v0 = x * sine + y * cosine + source_height / 2.0 - 0.5;
}

std::int64_t Rotation_Map::U_At_Row_Start(int y) const
{
    return Fixed(u0 - y * sine);
}

std::int64_t Rotation_Map::V_At_Row_Start(int y) const
{
    return Fixed(v0 + y * cosine);
}

std::int64_t Rotation_Map::U_Step() const
{
    return Fixed(cosine);
}

std::int64_t Rotation_Map::V_Step() const
{
    return Fixed(sine);
}

Pixel_Span Span_Where(std::int64_t start, std::int64_t step, std::int64_t low, std::int64_t high, int width)
{
    if (step < 0) return Span_Where(-start, -step, -high, -low, width);
    if (step == 0) return start >= low && start <= high ? Pixel_Span{0, width} : Pixel_Span{};
    const std::int64_t first = std::max<std::int64_t>(0, -Floor_Divide(start - low, step));
    const std::int64_t end = std::min<std::int64_t>(width, Floor_Divide(high - start, step) + 1);
    return first < end ? Pixel_Span{int(first), int(end)} : Pixel_Span{};
}

Pixel_Span Both(Pixel_Span a, Pixel_Span b)
{
    const Pixel_Span both{std::max(a.first, b.first), std::min(a.end, b.end)};
    return both.first < both.end ? both : Pixel_Span{};
}
