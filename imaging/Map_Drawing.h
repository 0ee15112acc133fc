#pragma once

#include "imaging/Map_Utilities.h"

#include <vector>

/// The plot of the curve set: histogram behind the active curve, handles, and what the pointer does with them. The plot
/// has a strip at its left edge and one, 5 units high, at its bottom edge. Units are those of the surface, y runs down.

/// What the plot is drawn on. Colours hold red in the low byte, then green, then blue.
class Map_Surface {
public:
    virtual ~Map_Surface() = default;
    virtual void Line(int x1, int y1, int x2, int y2, int color) = 0;
    virtual void Box(int x1, int y1, int x2, int y2, int color) = 0; ///< filled
    virtual void Point(int x, int y, int color) = 0;
};

constexpr int Map_Strip_Units = 5;
constexpr int Map_Handle_Reach = 3; ///< a handle is picked at a distance below this

/// Where the plot area lies; strips lie outside it, below and to the left.
struct Map_Geometry {
    int left = Map_Strip_Units;
    int top = 0;
    int width = 256;
    int height = 256;

    int X_Of(float level) const;
    int Y_Of(float level) const;
    float Level_Of_X(int x) const; ///< limited to 0..255
    float Level_Of_Y(int y) const;
};

/// One count per display column: bins shared between columns are split by length, each part rounded. `columns` is the plot
/// width - 1; fewer than 2 give one column with all.
std::vector<std::int64_t> Resample_Histogram(const Histogram_Counts& histogram, int columns);

/// The height at which 4 to 6 columns are cut, or nearly.
std::int64_t Histogram_Clip_Height(const std::vector<std::int64_t>& columns, std::int64_t sample_count);

struct Map_Colors {
    int first = 0;
    int second = 0;
    bool operator==(const Map_Colors&) const = default;
};
Map_Colors Handle_Colors(int component);    ///< handle, selected handle
Map_Colors Histogram_Colors(int component); ///< mark of cut columns, fill

class Map_View {
public:
    Map_View(Map_Stack& stack, const Map_Geometry& geometry) : stack_(stack), geometry_(geometry) {}

    void Set_Geometry(const Map_Geometry& geometry);

    /// False, and no histogram, when the bitmap or the component is refused.
    bool Set_Map_Histogram(Bitmap_Handle bitmap, int component);
    const std::vector<std::int64_t>& Columns() const { return columns_; }
    std::int64_t Histogram_Clip_Count() const { return clip_height_; }

    /// In the bottom strip: the shadow or highlight handle within reach. In the plot: the interior point nearest in x. In
    /// the left strip: the one nearest in y. Elsewhere, and when there is none: no handle.
    void Select_Map_Handle(int point_x, int point_y);

    /// Moves the selected handle; only a drag in the part of the plot in which it was picked counts. x stays strictly
    /// between the neighbouring points (the anchors only bound it), a drag in the plot also moves y along the curve, one in
    /// the left strip moves y alone. True when something changed.
    bool Drag_Map_Handle(int point_x, int point_y);

    void Draw_Map(Map_Surface& surface) const;

private:
    enum class Pick_Kind { None = 0, Bottom = 1, Top = 2, Left = 3 };
    Pick_Kind Kind_At(int x, int y) const;
    int Bottom_Handle_Near(int x) const;
    int Interior_Handle_Near(int x, int y, bool by_y) const;
    Map_Point* Selected_Point(std::size_t& index);
    void Resample();
    void Draw_Histogram(Map_Surface& surface) const;
    void Draw_Ramp(Map_Surface& surface) const;
    void Draw_Curve(Map_Surface& surface) const;
    void Draw_Handles(Map_Surface& surface) const;

    Map_Stack& stack_;
    Map_Geometry geometry_;
    Pick_Kind pick_kind_ = Pick_Kind::None;
    Histogram_Counts histogram_{};
    std::int64_t sample_count_ = 0;
    int histogram_component_ = 0;
    std::vector<std::int64_t> columns_;
    std::int64_t clip_height_ = 0;
};
