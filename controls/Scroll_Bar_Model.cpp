#include "controls/Scroll_Bar_Model.h"

#include <algorithm>
#include <cmath>

// Whatever the ends, no sum here leaves 64 bits.

int Scroll_Bar_Model::Limited(long long value) const
{
    const long long low = std::min(minimum_, maximum_);
    const long long high = std::max(minimum_, maximum_);
    return int(std::clamp(value, low, high));
}

bool Scroll_Bar_Model::Set_Value(int New_Value)
{
    const int limited = Limited(New_Value);
    const bool changed = limited != value_;
    value_ = limited;
    return changed;
}

bool Scroll_Bar_Model::Set_Min(int New_Min)
{
    minimum_ = New_Min;
    return Set_Value(value_);
}

bool Scroll_Bar_Model::Set_Max(int New_Max)
{
    maximum_ = New_Max;
    return Set_Value(value_);
}

void Scroll_Bar_Model::Set_SmallChange(int New_Change)
{
    small_change_ = std::max(1, New_Change);
}

void Scroll_Bar_Model::Set_LargeChange(int New_Change)
{
    large_change_ = std::max(1, New_Change);
}

bool Scroll_Bar_Model::Step(int small_steps, int large_steps)
{
    const long long distance =
        static_cast<long long>(small_steps) * small_change_ + static_cast<long long>(large_steps) * large_change_;
    return Set_Value(Limited(value_ + (minimum_ <= maximum_ ? distance : -distance)));
}

int Scroll_Bar_Model::Tick_Count() const
{
    if (TickStyle == 0) return 0;
    const long long span = std::llabs(static_cast<long long>(maximum_) - minimum_);
    return int(std::min(span / std::max(1, TickFrequency) + 1, 1'000'000LL));
}

int Scroll_Bar_Model::Position_Of(int value, int length) const
{
    const double span = double(maximum_) - minimum_;
    if (span == 0 || length < 2) return 0;
    return int(std::lround((double(Limited(value)) - minimum_) / span * (length - 1)));
}

int Scroll_Bar_Model::Value_At(int position, int length) const
{
    if (length < 2) return minimum_;
    const double part = std::clamp(double(position) / (length - 1), 0.0, 1.0);
    return Limited(std::llround(minimum_ + part * (double(maximum_) - minimum_)));
}
