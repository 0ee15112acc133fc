#include "evaluate/variant/Variant_Array.h"

#include "frame/files/Limits.h"

namespace Formula {

Evaluated<std::int64_t> Element_Count(std::span<const Array_Bound> bounds)
{
    std::int64_t total = bounds.empty() ? 0 : 1;
    for (const auto& bound : bounds) {
        if (bound.count < 0) return Fails(Error_Number::Subscript_Out_Of_Range);
        if (bound.count > 0 && total > Current_Limits().formula_array_elements / bound.count)
            return Fails(Error_Number::Out_Of_Memory);
        total *= bound.count;
    }
    return total;
}

Evaluated<Variant> Make_Array(std::span<const Array_Bound> bounds)
{
    const auto count = Element_Count(bounds);
    if (!count) return Fails(count.error());
    auto array = std::make_unique<Variant_Array>();
    array->bounds.assign(bounds.begin(), bounds.end());
    array->elements.resize(std::size_t(*count));
    return Variant(array.release());
}

Variant Make_List(std::vector<Variant> elements, std::int32_t lower)
{
    auto array = std::make_unique<Variant_Array>();
    array->bounds = {{lower, std::int64_t(elements.size())}};
    array->elements = std::move(elements);
    return Variant(array.release());
}

Error_Number Resize_Array(Variant& array, std::span<const Array_Bound> bounds)
{
    if (!array.Is_Array()) return Error_Number::Type_Mismatch;
    const auto& before = array.Array().bounds;
    if (before.size() != bounds.size() || bounds.empty()) return Error_Number::Subscript_Out_Of_Range;
    for (std::size_t i = 0; i < bounds.size(); ++i) {
        const bool is_last = i + 1 == bounds.size();
        if (before[i].lower != bounds[i].lower || (!is_last && before[i].count != bounds[i].count))
            return Error_Number::Subscript_Out_Of_Range;
    }
    const auto count = Element_Count(bounds);
    if (!count) return count.error();
    auto& changed = array.Writable_Array();
    changed.bounds.assign(bounds.begin(), bounds.end());
    changed.elements.resize(std::size_t(*count));
    return Error_Number::None;
}

Evaluated<std::size_t> Element_Place(const Variant& array, std::span<const std::int32_t> indices)
{
    if (!array.Is_Array()) return Fails(Error_Number::Type_Mismatch);
    const auto& bounds = array.Array().bounds;
    if (indices.size() != bounds.size()) return Fails(Error_Number::Subscript_Out_Of_Range);
    std::int64_t place = 0;
    for (std::size_t i = bounds.size(); i-- > 0;) {
        const auto offset = std::int64_t(indices[i]) - bounds[i].lower;
        if (offset < 0 || offset >= bounds[i].count) return Fails(Error_Number::Subscript_Out_Of_Range);
        place = place * bounds[i].count + offset;
    }
    return std::size_t(place);
}

Evaluated<Array_Bound> Dimension_Bound(const Variant& array, int dimension)
{
    if (!array.Is_Array()) return Fails(Error_Number::Type_Mismatch);
    const auto& bounds = array.Array().bounds;
    if (dimension < 1 || std::size_t(dimension) > bounds.size()) return Fails(Error_Number::Subscript_Out_Of_Range);
    return bounds[std::size_t(dimension - 1)];
}

} // namespace Formula
