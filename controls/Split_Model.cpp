#include "controls/Split_Model.h"

#include <algorithm>
#include <cmath>

void Split_Model::Set_SplitterWidth(int New_Width)
{
    splitter_width_ = std::clamp(New_Width, 0, 1000);
}

double Split_Model::Clamped(double ratio) const
{
    return std::isfinite(ratio) ? std::clamp(ratio, minimum_, maximum_) : ratio_;
}

void Split_Model::Set_SplitRatio(double New_SplitRatio)
{
    ratio_ = Clamped(New_SplitRatio);
}

void Split_Model::Set_SplitRatioUnbound(double New_SplitRatio)
{
    if (std::isfinite(New_SplitRatio)) ratio_ = std::clamp(New_SplitRatio, 0.0, 1.0);
}

void Split_Model::Set_MinSplitRatio(double New_Ratio)
{
    if (!std::isfinite(New_Ratio)) return;
    minimum_ = std::clamp(New_Ratio, 0.0, 1.0);
    maximum_ = std::max(maximum_, minimum_);
    ratio_ = Clamped(ratio_);
}

void Split_Model::Set_MaxSplitRatio(double New_Ratio)
{
    if (!std::isfinite(New_Ratio)) return;
    maximum_ = std::clamp(New_Ratio, 0.0, 1.0);
    minimum_ = std::min(minimum_, maximum_);
    ratio_ = Clamped(ratio_);
}

void Split_Model::Set_Container(const Split_Rectangle& container)
{
    container_ = container;
}

void Split_Model::Resize_Container(const Split_Rectangle& container)
{
    const int first = Pixels_LT();
    const int second = Usable_Length() - first;
    const bool had_length = Usable_Length() > 0;
    container_ = container;
    const int usable = Usable_Length();
    if (!had_length || usable <= 0) return;
    if (!ResizeSplitterAxis || !ResizeToAxisLT)
        Set_SplitRatioUnbound(double(first) / usable);
    else if (!ResizeToAxisRB)
        Set_SplitRatioUnbound(double(usable - second) / usable);
}

Split_Rectangle Split_Model::Inner() const
{
    return {container_.left + margins_.left, container_.top + margins_.top,
            std::max(0, container_.width - margins_.left - margins_.right),
            std::max(0, container_.height - margins_.top - margins_.bottom)};
}

int Split_Model::Usable_Length() const
{
    const auto inner = Inner();
    return std::max(0, (orientation_ == Split_Orientation::Horizontal ? inner.width : inner.height) - splitter_width_);
}

int Split_Model::Pixels_LT() const
{
    return int(std::lrint(ratio_ * Usable_Length()));
}

double Split_Model::ComputeSplitRatio(int Split_Offset, int Split_Pixels_LT) const
{
    const int usable = Usable_Length();
    return usable > 0 ? (double(Split_Pixels_LT) + Split_Offset) / usable : ratio_;
}

Split_Layout Split_Model::Layout() const
{
    const auto inner = Inner();
    const int first = Pixels_LT();
    const int second = Usable_Length() - first;
    const bool side_by_side = orientation_ == Split_Orientation::Horizontal;
    const int bar = std::min(splitter_width_, side_by_side ? inner.width : inner.height);
    if (side_by_side)
        return {{inner.left, inner.top, first, inner.height},
                {inner.left + first, inner.top, bar, inner.height},
                {inner.left + first + bar, inner.top, second, inner.height}};
    return {{inner.left, inner.top, inner.width, first},
            {inner.left, inner.top + first, inner.width, bar},
            {inner.left, inner.top + first + bar, inner.width, second}};
}
