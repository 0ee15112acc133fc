#include "evaluate/bkcStack.h"

#include <algorithm>

namespace Formula {

void bkcStack::Set_Quantum(int New_Quantum)
{
    quantum_ = std::max(1, New_Quantum);
    Initialize();
}

void bkcStack::Initialize()
{
    items_.assign(1, Variant());
    depth_ = 0;
    highwater_ = 0;
}

/// Items between the depth and the high water mark are still there: raising the depth brings them back.
void bkcStack::Set_Depth(int New_Depth)
{
    if (New_Depth >= 0 && New_Depth <= highwater_) depth_ = New_Depth;
}

int bkcStack::Push(const Variant& Push_Data)
{
    const auto place = std::size_t(depth_) + 1;
    if (place >= items_.size()) {
        const Variant data = Push_Data; // may be an item of ours
        items_.resize(items_.size() + std::size_t(quantum_));
        items_[place] = data;
    } else {
        items_[place] = Push_Data;
    }
    highwater_ = std::max(highwater_, ++depth_);
    return depth_;
}

Variant bkcStack::Pop()
{
    return depth_ == 0 ? Variant() : items_[std::size_t(depth_--)];
}

} // namespace Formula
