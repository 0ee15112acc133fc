#include "controls/Button_Panel_Model.h"

#include <algorithm>

// Buttons flow along the first axis and wrap to the next line:
//
//     offset | button | spacing | button | spacing | spacer | button
//
// With columns first the two axes change their parts. Everything is computed along "along" and "across" and turned into
// rectangles at the end.

namespace {

struct Flow {
    int along_offset, across_offset;
    int along_button, across_button;
    int along_spacing, across_spacing;
    int spacer;
    int length; // what is available along
};

Flow Flow_Of(const Button_Panel_Properties& p, bool columns, int width, int height)
{
    if (columns)
        return {p.VerticalOffset,  p.HorizontalOffset,  p.ButtonHeight,         p.ButtonWidth,
                p.VerticalSpacing, p.HorizontalSpacing, p.VerticalSpacerHeight, height};
    return {p.HorizontalOffset,  p.VerticalOffset,  p.ButtonWidth,           p.ButtonHeight,
            p.HorizontalSpacing, p.VerticalSpacing, p.HorizontalSpacerWidth, width};
}

struct Place {
    int along = 0, across = 0, length = 0, breadth = 0;
};

std::vector<Place> Places(const std::vector<Panel_Button>& buttons, const Flow& flow)
{
    std::vector<Place> places;
    int along = flow.along_offset;
    int across = flow.across_offset;
    bool line_empty = true;
    for (const auto& button : buttons) {
        if (!button.visible) {
            places.push_back({along, across, 0, 0});
            continue;
        }
        const int length = button.spacer ? flow.spacer : flow.along_button;
        // A spacer never begins a line by itself; a button too long for the panel still gets a line.
        if (!button.spacer && !line_empty && along + length + flow.along_offset > flow.length) {
            along = flow.along_offset;
            across += flow.across_button + flow.across_spacing;
        }
        places.push_back({along, across, length, flow.across_button});
        along += length + (button.spacer ? 0 : flow.along_spacing);
        line_empty = line_empty && button.spacer;
    }
    return places;
}

void Center_Along(std::vector<Place>& places, int length)
{
    for (auto first = places.begin(); first != places.end();) {
        const auto last = std::find_if(first, places.end(), [&](const Place& p) { return p.across != first->across; });
        int end = 0;
        for (auto place = first; place != last; ++place) end = std::max(end, place->along + place->length);
        const int shift = std::max(0, (length - end - first->along) / 2);
        for (; first != last; ++first) first->along += shift;
    }
}

void Center_Across(std::vector<Place>& places, int breadth)
{
    int end = 0;
    for (const auto& place : places) end = std::max(end, place.across + place.breadth);
    const int offset = places.empty() ? 0 : places.front().across;
    const int shift = std::max(0, (breadth - end - offset) / 2);
    for (auto& place : places) place.across += shift;
}

} // namespace

std::vector<Panel_Rectangle> Button_Panel_Model::Layout(int width, int height) const
{
    const bool columns = Columns_First();
    auto places = Places(buttons_, Flow_Of(Properties, columns, width, height));
    const bool center_along = columns ? Properties.CenterButtonsVertical : Properties.CenterButtonsHorizontal;
    const bool center_across = columns ? Properties.CenterButtonsHorizontal : Properties.CenterButtonsVertical;
    if (center_along) Center_Along(places, columns ? height : width);
    if (center_across) Center_Across(places, columns ? width : height);
    std::vector<Panel_Rectangle> rectangles;
    rectangles.reserve(places.size());
    for (const auto& p : places) {
        if (columns)
            rectangles.push_back({p.across, p.along, p.across + p.breadth, p.along + p.length});
        else
            rectangles.push_back({p.along, p.across, p.along + p.length, p.across + p.breadth});
    }
    return rectangles;
}

Panel_Rectangle Button_Panel_Model::Content_Size(int width, int height) const
{
    Panel_Rectangle size{0, 0, 2 * Properties.HorizontalOffset, 2 * Properties.VerticalOffset};
    for (const auto& place : Layout(width, height)) {
        size.right = std::max(size.right, place.right + Properties.HorizontalOffset);
        size.bottom = std::max(size.bottom, place.bottom + Properties.VerticalOffset);
    }
    return size;
}

Panel_Rectangle Button_Panel_Model::Auto_Size() const
{
    constexpr int No_Wrap = 1 << 24; // wider than any panel
    auto natural = *this;
    natural.Properties.CenterButtonsHorizontal = false;
    natural.Properties.CenterButtonsVertical = false;
    return natural.Content_Size(No_Wrap, No_Wrap);
}

bool Button_Panel_Model::Get_Button_Rectangle(int Button_ID, int width, int height, Panel_Rectangle& rectangle) const
{
    const auto* button = Find(Button_ID);
    if (!button || !button->visible) return false;
    rectangle = Layout(width, height)[std::size_t(button - buttons_.data())];
    return true;
}

int Button_Panel_Model::Button_At(int x, int y, int width, int height) const
{
    const auto places = Layout(width, height);
    for (std::size_t i = 0; i < places.size(); ++i) {
        const auto& p = places[i];
        if (!buttons_[i].spacer && x >= p.left && x < p.right && y >= p.top && y < p.bottom) return buttons_[i].id;
    }
    return 0;
}

// The first button whose middle lies behind the point, on the point's line or below it.
int Button_Panel_Model::Drop_Before(int x, int y, int width, int height) const
{
    const auto places = Layout(width, height);
    for (std::size_t i = 0; i < places.size(); ++i) {
        if (buttons_[i].spacer || !buttons_[i].visible) continue;
        const auto& p = places[i];
        const bool columns = Columns_First();
        const int line_end = columns ? p.right : p.bottom;
        const int line_begin = columns ? p.left : p.top;
        const int across = columns ? x : y;
        const int middle = columns ? (p.top + p.bottom) / 2 : (p.left + p.right) / 2;
        if (across < line_begin || (across < line_end && (columns ? y : x) < middle)) return buttons_[i].id;
    }
    return 0;
}
