#pragma once

#include "imaging/Bezier_Fit.h"
#include "imaging/Parameter_Stack.h"
#include "imaging/Tone_Tables.h"

#include <cstdint>
#include <vector>

/// The curves of the colour correction dialog: points, undo, tables. Point indices are 1-based.

/// Input level x, output level y.
struct Map_Point {
    std::uint8_t x = 0;
    std::uint8_t y = 0;
    bool operator==(const Map_Point&) const = default;
};

/// Point 1 is the lower anchor, point 2 the shadow point, the last but one the highlight point, the last the upper
/// anchor; between them the interior points by ascending x, all x distinct. A new curve is the diagonal of 4 points.
using Map_Curve = std::vector<Map_Point>;
Map_Curve Diagonal_Curve();

constexpr int Handle_None = 0;
constexpr int Handle_Shadow = 1;
constexpr int Handle_Highlight = 2;
constexpr int Handle_Interior = 258; ///< + i for interior point i, from 1, which is point i + 2 of the curve

/// One state of the curve set.
struct Map_Record {
    Map_Curve Luminance_Points = Diagonal_Curve();
    Map_Curve RGB_Points = Diagonal_Curve();
    Map_Curve Red_Points = Diagonal_Curve();
    Map_Curve Green_Points = Diagonal_Curve();
    Map_Curve Blue_Points = Diagonal_Curve();
    int Active_Component = Component_Luminance; ///< which curve is edited: 8, 7, 1, 2, 4
    int Last_Point = -1;                        ///< points added by sampling, below 1 when none
    int Previous_Point = -1;
    int Selected_Handle = Handle_None;

    /// The curve of a component; null for other numbers than 8, 7, 1, 2, 4.
    Map_Curve* Curve_Of(int component);
    const Map_Curve* Curve_Of(int component) const;
    bool operator==(const Map_Record&) const = default;
};

/// The straight segments that a curve stands for, limited to 0..255. Smooth curves follow one Bezier through the points 2
/// to 5 of a curve of six; with 5, or with 7 and more points a smooth curve has no inner points.
std::vector<Curve_Point> Curve_Polyline(const Map_Curve& points, bool smooth);

/// A curve set with its history. The first state is neutral.
class Map_Stack {
public:
    Map_Stack() { states_.Push({}); }

    Map_Record& Current() { return states_.At(states_.Current()); }
    const Map_Record& Current() const { return states_.At(states_.Current()); }
    const Map_Record& State(int stack_index) const { return states_.At(stack_index); }
    int Current_Index() const { return states_.Current(); }
    int Top_Index() const { return states_.Top(); }
    int Upper_Bound() const { return states_.Upper_Bound(); }

    /// Copies the current state to the next place, without its sampled points; states that could be redone are gone.
    void Add_Map_State();
    void Undo_Map_State() { states_.Set_Current(states_.Current() - 1); }
    void Redo_Map_State() { states_.Set_Current(states_.Current() + 1); }

    void Set_Map_Smooth(bool smooth) { smooth_ = smooth; }
    bool Is_Smooth() const { return smooth_; }

    /// Table of one curve, or of two one after the other (second_component 0: only one). Unknown components act as the
    /// diagonal.
    void Build_Map_Table(int stack_index, int component, int second_component, Tone_Table& table) const;

    /// Table of the active curve of the current state.
    Tone_Table Active_Table() const;

    /// which 1 to 5 sets the shadow point's x, 6 to 10 the highlight point's: of the luminance curve (1), of red, green
    /// and blue at once (2), of red (3), green (4), blue (5). Levels 0 to 255.
    void Set_End_Points(int which, int red, int green, int blue);

    /// Inserts an interior point into the active curve where the curve is at x now. An x that an interior point has
    /// already, or outside 0..255, changes nothing. The new index goes to Last_Point, or to Previous_Point when only the
    /// first is set.
    void Add_Map_Point(int x);

private:
    Parameter_Stack<Map_Record> states_;
    bool smooth_ = false;
};
