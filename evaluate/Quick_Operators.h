#pragma once

// The operators on what nearly all formulas compute with: Longs and Doubles. They give what evaluate/variant/Operators.h
// gives, or leave the operands to it.

#include "evaluate/Opcode.h"
#include "evaluate/variant/Variant.h"

#include <cmath>
#include <memory>

namespace Formula {

enum class Quick { None, Value, Test };

constexpr int Pair_Of(Variant_Type left, Variant_Type right)
{
    return int(left) * 32 + int(right);
}

/// Both operands Long and the result too, or one Double and the result finite.
/// value  where the result is built; owns nothing, and may be the left operand
template <class Long_Way, class Double_Way>
inline Quick Quick_Arithmetic(const Variant& left, const Variant& right, Variant* value, Long_Way long_way,
                              Double_Way double_way)
{
    const auto real = [&](double a, double b) {
        const double result = double_way(a, b);
        if (!std::isfinite(result)) return Quick::None;
        std::construct_at(value, result);
        return Quick::Value;
    };
    switch (Pair_Of(left.Type(), right.Type())) {
    case Pair_Of(Variant_Type::Long, Variant_Type::Long): {
        std::int32_t result = 0;
        if (long_way(left.Long(), right.Long(), &result)) return Quick::None;
        std::construct_at(value, result);
        return Quick::Value;
    }
    case Pair_Of(Variant_Type::Double, Variant_Type::Double): return real(left.Double(), right.Double());
    case Pair_Of(Variant_Type::Double, Variant_Type::Long): return real(left.Double(), right.Long());
    case Pair_Of(Variant_Type::Long, Variant_Type::Double): return real(left.Long(), right.Double());
    default: return Quick::None;
    }
}

template <class Test>
inline Quick Quick_Comparison(const Variant& left, const Variant& right, bool& holds, Test test)
{
    switch (Pair_Of(left.Type(), right.Type())) {
    case Pair_Of(Variant_Type::Long, Variant_Type::Long): holds = test(left.Long(), right.Long()); return Quick::Test;
    case Pair_Of(Variant_Type::Double, Variant_Type::Double):
        holds = test(left.Double(), right.Double());
        return Quick::Test;
    default: return Quick::None;
    }
}

constexpr bool Has_Quick_Way(Opcode opcode)
{
    return opcode == Opcode::Add || opcode == Opcode::Subtract || opcode == Opcode::Multiply ||
           opcode == Opcode::Modulo || (opcode >= Opcode::Equal && opcode <= Opcode::Greater_Or_Equal);
}

/// holds  the result of a comparison; otherwise left alone
[[gnu::always_inline]] inline Quick Quick_Binary(Opcode opcode, const Variant& left, const Variant& right,
                                                 Variant* value, bool& holds)
{
    switch (opcode) {
    case Opcode::Add:
        return Quick_Arithmetic(
            left, right, value, [](auto a, auto b, auto* r) { return __builtin_add_overflow(a, b, r); },
            [](double a, double b) { return a + b; });
    case Opcode::Subtract:
        return Quick_Arithmetic(
            left, right, value, [](auto a, auto b, auto* r) { return __builtin_sub_overflow(a, b, r); },
            [](double a, double b) { return a - b; });
    case Opcode::Multiply:
        return Quick_Arithmetic(
            left, right, value, [](auto a, auto b, auto* r) { return __builtin_mul_overflow(a, b, r); },
            [](double a, double b) { return a * b; });
    case Opcode::Modulo:
        if (left.Type() != Variant_Type::Long || right.Type() != Variant_Type::Long || right.Long() <= 0)
            return Quick::None;
        std::construct_at(value, left.Long() % right.Long());
        return Quick::Value;
    case Opcode::Equal: return Quick_Comparison(left, right, holds, [](auto a, auto b) { return a == b; });
    case Opcode::Not_Equal: return Quick_Comparison(left, right, holds, [](auto a, auto b) { return a != b; });
    case Opcode::Less: return Quick_Comparison(left, right, holds, [](auto a, auto b) { return a < b; });
    case Opcode::Less_Or_Equal: return Quick_Comparison(left, right, holds, [](auto a, auto b) { return a <= b; });
    case Opcode::Greater: return Quick_Comparison(left, right, holds, [](auto a, auto b) { return a > b; });
    case Opcode::Greater_Or_Equal: return Quick_Comparison(left, right, holds, [](auto a, auto b) { return a >= b; });
    default: return Quick::None;
    }
}

} // namespace Formula
