#include "imaging/Map_Drawing.h"

#include "frame/text/Number_Text.h"

#include <algorithm>
#include <cmath>

namespace {

std::int64_t Rounded_Part(double part, std::int32_t count)
{
    return std::llround(std::nearbyint(part * count));
}

int Scaled(float level, int units)
{
    return Round_Half_Even(double(level) * double(units - 1) / 255);
}

float Level_At(int units_in, int units)
{
    return units < 2 ? 0.0F : std::clamp(float(units_in) * 255 / float(units - 1), 0.0F, 255.0F);
}

int Grey(int level)
{
    return level | level << 8 | level << 16;
}

} // namespace

int Map_Geometry::X_Of(float level) const
{
    return left + Scaled(level, width);
}
int Map_Geometry::Y_Of(float level) const
{
    return top + height - 1 - Scaled(level, height);
}
float Map_Geometry::Level_Of_X(int x) const
{
    return Level_At(x - left, width);
}
float Map_Geometry::Level_Of_Y(int y) const
{
    return Level_At(top + height - 1 - y, height);
}

std::vector<std::int64_t> Resample_Histogram(const Histogram_Counts& histogram, int columns)
{
    if (columns < 2) {
        std::int64_t all = 0;
        for (const auto count : histogram) all += count;
        return {all};
    }
    std::vector<std::int64_t> resampled;
    for (int c = 0; c < columns; ++c) {
        const double a = std::min(255.0, double(c) * 255 / (columns - 1));
        const double b = std::min(255.0, double(c + 1) * 255 / (columns - 1));
        const int i = int(a), j = int(b);
        std::int64_t value = Rounded_Part(1 - (a - i), histogram[std::size_t(i)]);
        for (int bin = i + 1; bin < j; ++bin) value += histogram[std::size_t(bin)];
        if (j > i) value += Rounded_Part(b - j, histogram[std::size_t(j)]);
        resampled.push_back(value);
    }
    return resampled;
}

std::int64_t Histogram_Clip_Height(const std::vector<std::int64_t>& columns, std::int64_t sample_count)
{
    std::int64_t height = sample_count / 64;
    for (std::int64_t step = height / 2; step >= 2; step /= 2) {
        const auto above = std::count_if(columns.begin(), columns.end(), [height](auto n) { return n > height; });
        if (above >= 4 && above <= 6) break;
        height += above >= 7 ? step : -step;
    }
    return height;
}

Map_Colors Handle_Colors(int component)
{
    return {0xFFFF80, component == Component_Red ? 0xFF00FF : 0x0000FF};
}

Map_Colors Histogram_Colors(int component)
{
    static constexpr Map_Colors pairs[] = {{0xFF0000, 0x0000FF}, {0x0000FF, 0x00FF00}, {0x0000FF, 0x00FFFF},
                                           {0x0000FF, 0xFF0000}, {0xFF0000, 0xFF00FF}, {0x0000FF, 0xFFFF00}};
    return component >= 1 && component <= 6 ? pairs[component - 1] : Map_Colors{0x0000FF, 0x808080};
}

void Map_View::Set_Geometry(const Map_Geometry& geometry)
{
    geometry_ = geometry;
    Resample();
}

void Map_View::Resample()
{
    columns_ = sample_count_ > 0 ? Resample_Histogram(histogram_, geometry_.width - 1) : std::vector<std::int64_t>();
    clip_height_ = Histogram_Clip_Height(columns_, sample_count_);
}

Map_View::Pick_Kind Map_View::Kind_At(int x, int y) const
{
    const int bottom = geometry_.top + geometry_.height;
    const bool is_beside = x < geometry_.left || x >= geometry_.left + geometry_.width;
    if (y >= bottom) return y < bottom + Map_Strip_Units ? Pick_Kind::Bottom : Pick_Kind::None;
    if (y < geometry_.top) return Pick_Kind::None;
    if (x < geometry_.left && x >= geometry_.left - Map_Strip_Units) return Pick_Kind::Left;
    return is_beside ? Pick_Kind::None : Pick_Kind::Top;
}

int Map_View::Bottom_Handle_Near(int x) const
{
    const Map_Record& record = stack_.Current();
    const Map_Curve* curve = record.Curve_Of(record.Active_Component);
    if (curve == nullptr) return Handle_None;
    const int to_shadow = std::abs(x - geometry_.X_Of((*curve)[1].x));
    const int to_highlight = std::abs(x - geometry_.X_Of((*curve)[curve->size() - 2].x));
    if (std::min(to_shadow, to_highlight) >= Map_Handle_Reach) return Handle_None;
    return to_shadow <= to_highlight ? Handle_Shadow : Handle_Highlight;
}

int Map_View::Interior_Handle_Near(int x, int y, bool by_y) const
{
    const Map_Record& record = stack_.Current();
    const Map_Curve* curve = record.Curve_Of(record.Active_Component);
    if (curve == nullptr || curve->size() <= 4) return Handle_None;
    const auto distance = [&](const Map_Point& point) {
        return by_y ? std::abs(y - geometry_.Y_Of(point.y)) : std::abs(x - geometry_.X_Of(point.x));
    };
    const auto nearest = std::min_element(curve->begin() + 2, curve->end() - 2,
                                          [&](const auto& a, const auto& b) { return distance(a) < distance(b); });
    return Handle_Interior + int(nearest - curve->begin()) - 1;
}

void Map_View::Select_Map_Handle(int point_x, int point_y)
{
    pick_kind_ = Kind_At(point_x, point_y);
    int handle = Handle_None;
    if (pick_kind_ == Pick_Kind::Bottom) handle = Bottom_Handle_Near(point_x);
    if (pick_kind_ == Pick_Kind::Top) handle = Interior_Handle_Near(point_x, point_y, false);
    if (pick_kind_ == Pick_Kind::Left) handle = Interior_Handle_Near(point_x, point_y, true);
    stack_.Current().Selected_Handle = handle;
}

Map_Point* Map_View::Selected_Point(std::size_t& index)
{
    Map_Record& record = stack_.Current();
    Map_Curve* curve = record.Curve_Of(record.Active_Component);
    if (curve == nullptr || record.Selected_Handle == Handle_None) return nullptr;
    if (record.Selected_Handle == Handle_Shadow)
        index = 1;
    else if (record.Selected_Handle == Handle_Highlight)
        index = curve->size() - 2;
    else
        index = std::size_t(record.Selected_Handle - Handle_Interior + 1);
    const bool is_inside = index >= 1 && index + 1 < curve->size();
    return is_inside ? &(*curve)[index] : nullptr;
}

bool Map_View::Drag_Map_Handle(int point_x, int point_y)
{
    std::size_t index = 0;
    Map_Point* const point = Selected_Point(index);
    if (point == nullptr || pick_kind_ == Pick_Kind::None || Kind_At(point_x, point_y) != pick_kind_) return false;
    const Map_Point before = *point;
    if (pick_kind_ == Pick_Kind::Left) {
        point->y = std::uint8_t(Round_Half_Even(double(geometry_.Level_Of_Y(point_y))));
        return !(*point == before);
    }
    const Map_Curve& curve = *stack_.Current().Curve_Of(stack_.Current().Active_Component);
    const int low = index == 1 ? 0 : int(curve[index - 1].x) + 1;
    const int high = index + 2 == curve.size() ? 255 : int(curve[index + 1].x) - 1;
    if (low > high) return false;
    const int x = std::clamp(Round_Half_Even(double(geometry_.Level_Of_X(point_x))), low, high);
    if (pick_kind_ == Pick_Kind::Top) point->y = std::uint8_t(stack_.Active_Table()[std::size_t(x)]);
    point->x = std::uint8_t(x);
    return !(*point == before);
}

void Map_View::Draw_Map(Map_Surface& surface) const
{
    Draw_Histogram(surface);
    Draw_Ramp(surface);
    Draw_Curve(surface);
    Draw_Handles(surface);
}

void Map_View::Draw_Histogram(Map_Surface& surface) const
{
    const Map_Colors colors = Histogram_Colors(histogram_component_);
    const int bottom = geometry_.top + geometry_.height - 1;
    for (std::size_t c = 0; c < columns_.size(); ++c) {
        const int x = geometry_.left + int(c);
        const bool is_cut = columns_[c] > clip_height_;
        const double share = clip_height_ > 0 ? double(columns_[c]) / double(clip_height_) : 0;
        const int units = is_cut ? geometry_.height - 1 : Round_Half_Even(share * (geometry_.height - 1));
        if (units > 0) surface.Line(x, bottom, x, bottom - units, colors.second);
        if (is_cut) surface.Point(x, geometry_.top, colors.first);
    }
}

void Map_View::Draw_Ramp(Map_Surface& surface) const
{
    const int y = geometry_.top + geometry_.height;
    for (int x = geometry_.left; x < geometry_.left + geometry_.width; ++x) {
        const int level = Round_Half_Even(double(geometry_.Level_Of_X(x)));
        surface.Line(x, y, x, y + Map_Strip_Units - 1, Grey(level));
    }
}

void Map_View::Draw_Curve(Map_Surface& surface) const
{
    const Map_Record& record = stack_.Current();
    const Map_Curve* curve = record.Curve_Of(record.Active_Component);
    if (curve == nullptr) return;
    const auto polyline = Curve_Polyline(*curve, stack_.Is_Smooth());
    for (std::size_t i = 0; i + 1 < polyline.size(); ++i)
        surface.Line(geometry_.X_Of(polyline[i].x), geometry_.Y_Of(polyline[i].y), geometry_.X_Of(polyline[i + 1].x),
                     geometry_.Y_Of(polyline[i + 1].y), 0);
}

void Map_View::Draw_Handles(Map_Surface& surface) const
{
    const Map_Record& record = stack_.Current();
    const Map_Curve* curve = record.Curve_Of(record.Active_Component);
    if (curve == nullptr) return;
    const Map_Colors colors = Handle_Colors(record.Active_Component);
    const auto color_of = [&](int handle) { return record.Selected_Handle == handle ? colors.second : colors.first; };
    const int strip = geometry_.top + geometry_.height;
    const auto draw_bottom = [&](const Map_Point& point, int handle) {
        const int x = geometry_.X_Of(point.x);
        surface.Box(x - 1, strip, x + 1, strip + Map_Strip_Units - 1, color_of(handle));
    };
    draw_bottom((*curve)[1], Handle_Shadow);
    draw_bottom((*curve)[curve->size() - 2], Handle_Highlight);
    for (std::size_t i = 2; i + 2 < curve->size(); ++i) {
        const int x = geometry_.X_Of((*curve)[i].x), y = geometry_.Y_Of((*curve)[i].y);
        surface.Box(x - 1, y - 1, x + 1, y + 1, color_of(Handle_Interior + int(i) - 1));
    }
}
