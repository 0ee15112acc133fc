#pragma once

#include "evaluate/variant/Variant.h"

#include <vector>

namespace Formula {

/// A stack of values for hosts and their tools. Indices start at 1; the room behind it grows by Quantum items at a time.
class bkcStack {
public:
    int Quantum() const { return quantum_; }
    void Set_Quantum(int New_Quantum); ///< empties the stack; below 1 counts as 1
    void Initialize();                 ///< depth and high water mark to 0
    int Depth() const { return depth_; }
    void Set_Depth(int New_Depth); ///< 0 to HighwaterDepth; anything else is ignored
    int HighwaterDepth() const { return highwater_; }
    int Push(const Variant& Push_Data); ///< the new depth
    Variant Pop();                      ///< Empty from an empty stack

private:
    int quantum_ = 10;
    int depth_ = 0;
    int highwater_ = 0;
    std::vector<Variant> items_ = std::vector<Variant>(1); ///< item 0 is not used
};

} // namespace Formula
