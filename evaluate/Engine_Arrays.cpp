// Arrays, and the Mid statement.

#include "evaluate/Engine.h"
#include "evaluate/variant/Conversions.h"
#include "evaluate/variant/Variant_Array.h"

#include <algorithm>
#include <array>

namespace Formula {

Error_Number Engine::Assign_Array(Instruction& instruction, const QString& name)
{
    const std::size_t count = instruction.count;
    if (count < 1) return Error_Number::Not_An_Array;
    if (count > Depth()) return Error_Number::Stack_Underflow;
    if (const Error_Number error = context_.memory.Take_Elements(std::int64_t(count)); error != Error_Number::None)
        return error;
    Variable_Cell* cell = Resolve(instruction, name);
    if (!cell && raise_errors) return Error_Number::Unknown_Variable;
    std::vector<Variant> elements;
    elements.reserve(count);
    for (Variant* item = top_ - count + 1; item <= top_; ++item) elements.push_back(std::move(*item));
    Drop_Items(count);
    if (!cell) return Error_Number::None;
    cell->Dimensions = 1;
    cell->Value = Make_List(std::move(elements), code_.option_base);
    return Error_Number::None;
}

/// The indices are the topmost items, in the order of the source.
Error_Number Engine::Find_Element(const Variable_Cell& cell, int count, std::size_t& place)
{
    if (count < 1 || count > 3 || count != cell.Dimensions) return Error_Number::Array_Index_Invalid;
    std::array<std::int32_t, 3> indices{};
    for (int i = 0; i < count; ++i) {
        const Evaluated<std::int32_t> index = To_Long(top_[i - count + 1]);
        if (!index) return index.error();
        indices[std::size_t(i)] = *index;
    }
    const auto found = Element_Place(cell.Value, std::span(indices).first(std::size_t(count)));
    if (!found) return found.error();
    place = *found;
    return Error_Number::None;
}

Error_Number Engine::Element(Instruction& instruction, const QString& name, bool store)
{
    const std::size_t count = instruction.count;
    if (count + (store ? 1 : 0) > Depth()) return Error_Number::Stack_Underflow;
    Variable_Cell* cell = Resolve(instruction, name);
    if (!cell || cell->Value.Is_Empty()) {
        if (raise_errors) return cell ? Error_Number::Uninitialized_Variable : Error_Number::Unknown_Variable;
        Drop_Items(count + (store ? 1 : 0));
        return store ? Error_Number::None : Push(Variant());
    }
    Variant value;
    if (store) value = Pop_Unchecked();
    std::size_t place = 0;
    if (const Error_Number error = Find_Element(*cell, int(count), place); error != Error_Number::None) return error;
    if (store) {
        if (const Error_Number error = context_.memory.Take_Copy_Of(cell->Value); error != Error_Number::None)
            return error;
        cell->Value.Writable_Array().elements[place] = std::move(value);
    } else {
        value = cell->Value.Array().elements[place];
    }
    Drop_Items(count);
    return store ? Error_Number::None : Push(std::move(value));
}

Error_Number Engine::Pop_Bounds(std::vector<Array_Bound>& bounds)
{
    // The last dimension lies on top: its count of bounds, its upper bound, and its lower bound if it was written.
    for (std::size_t i = bounds.size(); i-- > 0;) {
        const bool both = Depth() > 0 && Pop_Unchecked().Long() == 2;
        if (Depth() < (both ? 2u : 1u)) return Error_Number::Stack_Underflow;
        const Evaluated<std::int32_t> upper = To_Long(Pop_Unchecked());
        if (!upper) return upper.error();
        bounds[i].lower = code_.option_base;
        if (both) {
            const Evaluated<std::int32_t> lower = To_Long(Pop_Unchecked());
            if (!lower) return lower.error();
            bounds[i].lower = *lower;
        }
        bounds[i].count = std::int64_t(*upper) - bounds[i].lower + 1;
    }
    return Error_Number::None;
}

Error_Number Engine::Re_Dim(Instruction& instruction, const QString& name, bool preserve)
{
    const Variant dimensions = Pop_Unchecked(); // the compiler wrote 1 to 3
    if (dimensions.Type() != Variant_Type::Long || dimensions.Long() < 1 || dimensions.Long() > 3)
        return Error_Number::Stack_Underflow;
    std::vector<Array_Bound> bounds(std::size_t(dimensions.Long()));
    if (const Error_Number error = Pop_Bounds(bounds); error != Error_Number::None) return error;
    Variable_Cell* cell = Resolve(instruction, name);
    if (!cell) return If_Raised(Error_Number::Unknown_Variable);
    // There are empty lists, but only functions make them.
    if (std::ranges::any_of(bounds, [](const Array_Bound& bound) { return bound.count < 1; }))
        return Error_Number::Subscript_Out_Of_Range;
    if (const auto elements = Element_Count(bounds)) // otherwise there will be nothing
        if (const Error_Number error = context_.memory.Take_Elements(*elements); error != Error_Number::None)
            return error;
    if (preserve && !cell->Value.Is_Empty()) {
        if (const Error_Number error = context_.memory.Take_Copy_Of(cell->Value); error != Error_Number::None)
            return error;
        if (const Error_Number error = Resize_Array(cell->Value, bounds); error != Error_Number::None) return error;
    } else {
        Evaluated<Variant> array = Make_Array(bounds);
        if (!array) return array.error();
        cell->Value = std::move(*array);
    }
    cell->Dimensions = int(bounds.size());
    return Error_Number::None;
}

/// The variable stays declared.
Error_Number Engine::Erase(Instruction& instruction, const QString& name)
{
    Variable_Cell* cell = Resolve(instruction, name);
    if (!cell) return If_Raised(Error_Number::Unknown_Variable);
    if (cell->Value.Is_Empty()) return Error_Number::None;
    if (!cell->Value.Is_Array()) return Error_Number::Type_Mismatch;
    cell->Value.Clear();
    return Error_Number::None;
}

Error_Number Engine::Replace_Mid(const Variant& operand, bool bytes)
{
    const bool limited = operand.Long() == 3;
    if (Depth() < (limited ? 4u : 3u)) return Error_Number::Stack_Underflow;
    const Variant value = Pop_Unchecked();
    const Variant length = limited ? Pop_Unchecked() : Variant();
    const Variant start = Pop_Unchecked();
    const Variant reference = Pop_Unchecked();
    if (!reference.Is_Array() || reference.Array().elements.size() != 2) return Error_Number::Stack_Underflow;
    const QString name = reference.Array().elements[1].Text();
    Variant text;
    if (const Error_Number error = Read_Cell(Find_Cell(Current_Frame(), name), name, text); error != Error_Number::None)
        return error;
    const auto replace = bytes ? Replace_Middle_Bytes : Replace_Middle;
    if (const Error_Number error = replace(text, start, limited ? &length : nullptr, value);
        error != Error_Number::None)
        return error;
    const Error_Number error = context_.memory.Note(text);
    if (Variable_Cell* cell = Find_Cell(Current_Frame(), name)) cell->Value = std::move(text);
    return error;
}

} // namespace Formula
