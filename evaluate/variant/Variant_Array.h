#pragma once

#include "evaluate/variant/Evaluate_Error.h"
#include "evaluate/variant/Variant.h"

#include <memory>
#include <span>
#include <vector>

namespace Formula {

struct Array_Bound {
    std::int32_t lower = 0;
    std::int64_t count = 0; ///< elements; 0 is an array without elements, whose upper bound is lower - 1
};

/// Elements of one to three (or more) dimensions; the first index runs fastest, so that the last dimension can grow
/// without moving an element.
struct Variant_Array {
    int references = 1; ///< values that share it; a formula runs on one thread
    std::vector<Array_Bound> bounds;
    std::vector<Variant> elements;
};

/// How many elements an array with these bounds has. Fails as Make_Array does.
Evaluated<std::int64_t> Element_Count(std::span<const Array_Bound> bounds);

/// An array of Empty elements. Fails with 9 when an upper bound lies more than one below its lower bound, with 7 when
/// there would be more elements than a formula may have.
Evaluated<Variant> Make_Array(std::span<const Array_Bound> bounds);

/// One dimension from 0 with these elements.
Variant Make_List(std::vector<Variant> elements, std::int32_t lower = 0);

/// Changes the upper bound of the last dimension and keeps the elements that stay inside. Fails with 9 when the number
/// of dimensions or another bound differs, with 7 as above.
Error_Number Resize_Array(Variant& array, std::span<const Array_Bound> bounds);

/// Where the element stands; 9 when an index is outside its bounds or the number of indices is wrong, 13 for a value
/// that is no array.
Evaluated<std::size_t> Element_Place(const Variant& array, std::span<const std::int32_t> indices);

/// The bounds of a dimension counted from 1; 9 outside the dimensions, 13 for a value that is no array.
Evaluated<Array_Bound> Dimension_Bound(const Variant& array, int dimension);

inline std::int32_t Upper_Bound(const Array_Bound& bound)
{
    return std::int32_t(bound.lower + bound.count - 1);
}

} // namespace Formula
