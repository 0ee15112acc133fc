#include "evaluate/library/Arguments.h"
#include "evaluate/library/Built_In_Routines.h"
#include "evaluate/variant/Variant_Array.h"

// Built-ins that reach a variable by name, and sorting and searching of arrays.
namespace Formula {

namespace {

using Elements = std::vector<Variant>;

/// The variable of a by-reference argument when it holds an array of one dimension; 32771 otherwise.
Evaluated<Variable_View> One_Dimension(Library_Context& context, const Variant& reference)
{
    const auto view = context.variables.Find_Variable(reference);
    if (!view) return view;
    if (!view->value->Is_Array() || view->value->Array().bounds.size() != 1)
        return Fails(Error_Number::Array_Index_Invalid);
    return view;
}

Error_Number Bound_Of(Library_Context& context, Arguments arguments, Variant& result, bool wants_upper)
{
    const auto view = context.variables.Find_Variable(arguments[0]);
    FORMULA_CHECK(view);
    const auto dimension = Long_At(arguments, 1, 1);
    FORMULA_CHECK(dimension);
    // The recorded dimensions count: a scalar that holds a list, as Split makes it, has none.
    if (*dimension < 1 || *dimension > view->dimensions) return Error_Number::Array_Index_Invalid;
    const auto bound = Dimension_Bound(*view->value, *dimension);
    FORMULA_CHECK(bound);
    return Yield(result, wants_upper ? Upper_Bound(*bound) : bound->lower);
}

/// How two elements stand to each other while sorting.
struct Order {
    bool by_length = false, descending = false;
};

Evaluated<int> Compared(const Variant& left, const Variant& right, const Order& order)
{
    int sense = order.descending ? -1 : 1;
    if (order.by_length) {
        const auto a = To_Display_Text(left), b = To_Display_Text(right);
        if (!a) return Fails(a.error());
        if (!b) return Fails(b.error());
        if (a->size() != b->size()) return a->size() < b->size() ? -sense : sense;
    }
    const auto plain = Compare(left, right);
    if (!plain) return plain;
    return *plain * sense;
}

// An insertion sort of the elements that stand `gap` apart.
Error_Number Sort_Pass(Elements& elements, std::int64_t base, std::int64_t count, std::int64_t gap, const Order& order)
{
    for (auto i = gap; i < count; ++i) {
        auto held = std::move(elements[std::size_t(base + i)]);
        auto hole = i;
        auto problem = Error_Number::None;
        for (; hole >= gap; hole -= gap) {
            auto& before = elements[std::size_t(base + hole - gap)];
            const auto compared = Compared(before, held, order);
            if (!compared) problem = compared.error();
            if (!compared || *compared <= 0) break;
            elements[std::size_t(base + hole)] = std::move(before);
        }
        elements[std::size_t(base + hole)] = std::move(held);
        if (problem != Error_Number::None) return problem;
    }
    return Error_Number::None;
}

// The gaps 1, 4, 13, ... as far as a third of the elements, largest first.
Error_Number Shell_Sort(Elements& elements, std::int64_t base, std::int64_t count, const Order& order)
{
    const auto third = std::int64_t(Round_Half_Even(double(count) / 3));
    std::int64_t gap = 1;
    while (gap <= third) gap = 3 * gap + 1;
    for (; gap >= 1; gap /= 3) {
        const auto problem = Sort_Pass(elements, base, count, gap, order);
        if (problem != Error_Number::None) return problem;
    }
    return Error_Number::None;
}

/// The elements to sort, counted from 0.
struct Sort_Range {
    std::int64_t base = 0, count = 0;
};

// First and last are counted from the lower bound and only mean something above 1.
Evaluated<Sort_Range> Sort_Range_Of(const Array_Bound& bound, std::int32_t first, std::int32_t last)
{
    const std::int64_t before = std::int64_t(bound.lower) - 1, upper = bound.lower + bound.count - 1;
    const auto base = before + (first > 1 ? first - 1 : 0);
    const auto end = last > 1 ? base + last : upper;
    if (base >= upper || end > upper) return Fails(Error_Number::Array_Index_Invalid);
    return Sort_Range{base - before, end - base};
}

Error_Number Sorted(Library_Context& context, Arguments arguments, Variant& result, bool by_length)
{
    const auto view = One_Dimension(context, arguments[0]);
    FORMULA_CHECK(view);
    const auto descending = Boolean_At(arguments, 1, false);
    FORMULA_CHECK(descending);
    const auto first = Long_At(arguments, 2), last = Long_At(arguments, 3);
    FORMULA_CHECK(first);
    FORMULA_CHECK(last);
    const auto range = Sort_Range_Of(view->value->Array().bounds[0], *first, *last);
    FORMULA_CHECK(range);
    if (const auto full = context.memory.Take_Copy_Of(*view->value); full != Error_Number::None) return full;
    auto& elements = view->value->Writable_Array().elements;
    const auto problem = Shell_Sort(elements, range->base, range->count, {by_length, *descending});
    return problem == Error_Number::None ? Yield(result, true) : problem;
}

/// Keeps the best element so far: for a mode above 0 the largest not above the value, below 0 the smallest not below.
Evaluated<std::int64_t> Best_Match(const Elements& elements, const Variant& value, int mode)
{
    std::int64_t best = -1;
    for (std::size_t i = 0; i < elements.size(); ++i) {
        const auto to_value = Compare(elements[i], value);
        if (!to_value) return Fails(to_value.error());
        if (mode == 0 && *to_value == 0) return std::int64_t(i);
        if (mode == 0 || (mode > 0 ? *to_value > 0 : *to_value < 0)) continue;
        if (best < 0) {
            best = std::int64_t(i);
            continue;
        }
        const auto to_best = Compare(elements[i], elements[std::size_t(best)]);
        if (!to_best) return Fails(to_best.error());
        if (mode > 0 ? *to_best > 0 : *to_best < 0) best = std::int64_t(i);
    }
    return best;
}

} // namespace

Error_Number Run_LBound(Library_Context& context, Arguments arguments, Variant& result)
{
    return Bound_Of(context, arguments, result, false);
}

Error_Number Run_UBound(Library_Context& context, Arguments arguments, Variant& result)
{
    return Bound_Of(context, arguments, result, true);
}

Error_Number Run_IsArray(Library_Context& context, Arguments arguments, Variant& result)
{
    const auto view = context.variables.Find_Variable(arguments[0]);
    FORMULA_CHECK(view);
    return Yield(result, view->value->Is_Array());
}

Error_Number Run_IsEmpty(Library_Context& context, Arguments arguments, Variant& result)
{
    const auto view = context.variables.Find_Variable(arguments[0]);
    FORMULA_CHECK(view);
    return Yield(result, view->value->Is_Empty());
}

// Not found is one below the lower bound, but always negative, so that it is no index of an array from 1 either.
Error_Number Run_Match(Library_Context& context, Arguments arguments, Variant& result)
{
    const auto view = One_Dimension(context, arguments[1]);
    FORMULA_CHECK(view);
    const auto mode = Long_At(arguments, 2, 1);
    FORMULA_CHECK(mode);
    const auto& array = view->value->Array();
    const auto best = Best_Match(array.elements, arguments[0], *mode);
    FORMULA_CHECK(best);
    const auto lower = std::int64_t(array.bounds[0].lower);
    return Yield(result, std::int32_t(*best >= 0 ? lower + *best : lower - 1 >= 0 ? -1 : lower - 1));
}

Error_Number Run_ASort(Library_Context& context, Arguments arguments, Variant& result)
{
    return Sorted(context, arguments, result, false);
}

Error_Number Run_ASortLen(Library_Context& context, Arguments arguments, Variant& result)
{
    return Sorted(context, arguments, result, true);
}

} // namespace Formula
