#include "imaging/Map_Utilities.h"

#include "bkimgutl/core/Color.h"
#include "frame/text/Number_Text.h"

#include <algorithm>

namespace {

constexpr int Bezier_Levels = 6;

Curve_Point Point_Of(const Map_Point& point)
{
    return {float(point.x), float(point.y)};
}

/// What lies between the shadow point and the upper anchor in smooth mode.
void Append_Smooth_Middle(const Map_Curve& points, std::vector<Curve_Point>& polyline)
{
    if (points.size() == 4) polyline.push_back(Point_Of(points[2]));
    if (points.size() != 6) return;
    std::vector<Curve_Point> samples;
    for (std::size_t i = 1; i <= 4; ++i) samples.push_back(Point_Of(points[i]));
    if (const auto curve = Fit_Bezier(samples))
        Subdivide_Bezier(*curve, Bezier_Levels, polyline);
    else
        polyline.insert(polyline.end(), samples.begin() + 1, samples.end());
}

float Level_On_Polyline(const std::vector<Curve_Point>& polyline, float level)
{
    if (level <= polyline.front().x) return polyline.front().y;
    if (level >= polyline.back().x) return polyline.back().y;
    // A segment that holds the level is never upright: its ends lie on both sides.
    for (std::size_t j = 0; j + 1 < polyline.size(); ++j) {
        const auto [x, y] = polyline[j];
        const auto [next_x, next_y] = polyline[j + 1];
        if (x <= level && level < next_x) return (next_y - y) * (level - x) / (next_x - x) + y;
    }
    return polyline.back().y;
}

std::uint8_t Level_Byte(int level)
{
    return std::uint8_t(std::clamp(level, 0, 255));
}

} // namespace

Map_Curve Diagonal_Curve()
{
    return {{0, 0}, {0, 0}, {255, 255}, {255, 255}};
}

const Map_Curve* Map_Record::Curve_Of(int component) const
{
    switch (component) {
    case Component_Luminance: return &Luminance_Points;
    case Component_RGB: return &RGB_Points;
    case Component_Red: return &Red_Points;
    case Component_Green: return &Green_Points;
    case Component_Blue: return &Blue_Points;
    default: return nullptr;
    }
}

Map_Curve* Map_Record::Curve_Of(int component)
{
    return const_cast<Map_Curve*>(std::as_const(*this).Curve_Of(component));
}

std::vector<Curve_Point> Curve_Polyline(const Map_Curve& points, bool smooth)
{
    std::vector<Curve_Point> polyline;
    if (smooth && points.size() >= 4) {
        polyline = {Point_Of(points[0]), Point_Of(points[1])};
        Append_Smooth_Middle(points, polyline);
        polyline.push_back(Point_Of(points.back()));
    } else {
        for (const Map_Point& point : points) polyline.push_back(Point_Of(point));
    }
    for (Curve_Point& point : polyline) point = {std::clamp(point.x, 0.0F, 255.0F), std::clamp(point.y, 0.0F, 255.0F)};
    return polyline;
}

void Map_Stack::Add_Map_State()
{
    Map_Record next = Current();
    next.Last_Point = next.Previous_Point = -1;
    states_.Push(std::move(next));
}

void Map_Stack::Build_Map_Table(int stack_index, int component, int second_component, Tone_Table& table) const
{
    std::array<float, 256> levels;
    for (int i = 0; i < 256; ++i) levels[std::size_t(i)] = float(i);
    for (const int part : {component, second_component}) {
        const Map_Curve* curve = states_.At(stack_index).Curve_Of(part);
        if (curve == nullptr) continue;
        const auto polyline = Curve_Polyline(*curve, smooth_);
        for (float& level : levels) level = Level_On_Polyline(polyline, level);
    }
    for (std::size_t i = 0; i < 256; ++i) table[i] = Round_Half_Even(double(levels[i]));
}

Tone_Table Map_Stack::Active_Table() const
{
    Tone_Table table;
    Build_Map_Table(states_.Current(), Current().Active_Component, 0, table);
    return table;
}

void Map_Stack::Set_End_Points(int which, int red, int green, int blue)
{
    if (which < 1 || which > 10) return;
    const bool is_shadow = which <= 5;
    const auto set = [is_shadow](Map_Curve& curve, int level) {
        (is_shadow ? curve[1] : curve[curve.size() - 2]).x = Level_Byte(level);
    };
    Map_Record& record = Current();
    const int part = is_shadow ? which : which - 5;
    if (part == 1) set(record.Luminance_Points, RGB_To_Luminance(red, green, blue));
    if (part == 2 || part == 3) set(record.Red_Points, red);
    if (part == 2 || part == 4) set(record.Green_Points, green);
    if (part == 2 || part == 5) set(record.Blue_Points, blue);
}

void Map_Stack::Add_Map_Point(int x)
{
    Map_Record& record = Current();
    Map_Curve* curve = record.Curve_Of(record.Active_Component);
    if (curve == nullptr || x < 0 || x > 255) return;
    const auto first = curve->begin() + 2, behind = curve->end() - 2;
    const auto place = std::find_if(first, behind, [x](const Map_Point& point) { return int(point.x) >= x; });
    if (place != behind && int(place->x) == x) return;
    const int index = int(place - curve->begin()) + 1;
    const Map_Point point{Level_Byte(x), Level_Byte(Active_Table()[std::size_t(x)])};
    curve->insert(place, point);
    // Points behind the new one moved up.
    if (record.Last_Point >= index) ++record.Last_Point;
    if (record.Previous_Point >= index) ++record.Previous_Point;
    const bool only_last_is_set = record.Last_Point >= 1 && record.Previous_Point < 1;
    (only_last_is_set ? record.Previous_Point : record.Last_Point) = index;
}
