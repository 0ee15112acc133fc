#pragma once

/// The values of a scroll bar: a Value in Min..Max with two steps. Min above Max is allowed and runs the bar the other
/// way.
class Scroll_Bar_Model {
public:
    int Value() const { return value_; }
    int Min() const { return minimum_; }              ///< default 0
    int Max() const { return maximum_; }              ///< default 100
    int SmallChange() const { return small_change_; } ///< default 1, at least 1
    int LargeChange() const { return large_change_; } ///< default 10, at least 1
    bool Set_Value(int New_Value);                    ///< clamped; whether it changed
    bool Set_Min(int New_Min);                        ///< whether the value changed with it
    bool Set_Max(int New_Max);
    void Set_SmallChange(int New_Change);
    void Set_LargeChange(int New_Change);
    bool Step(int small_steps, int large_steps); ///< towards Max when positive; whether the value changed

    // Ticks: 0 none, 1 above or left, 2 below or right, 3 both.
    int TickStyle = 0;
    int TickFrequency = 1;     ///< values from tick to tick, at least 1
    int TickSize = 4;          ///< pixels
    int SliderPointerSize = 0; ///< pixels; 0 is the style's own
    int ScrollBarStyle = 0;    ///< 0 horizontal, 1 vertical
    bool AcceptDragScrolling = false;

    int Tick_Count() const; ///< ticks from Min to Max; 0 without ticks
    /// Pixel of a value on a track of `length` pixels, and back, rounded to nearest. Both ends are on the track.
    int Position_Of(int value, int length) const;
    int Value_At(int position, int length) const;

private:
    int Limited(long long value) const;

    int value_ = 0;
    int minimum_ = 0;
    int maximum_ = 100;
    int small_change_ = 1;
    int large_change_ = 10;
};
