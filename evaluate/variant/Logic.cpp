#include "evaluate/variant/Conversions.h"
#include "evaluate/variant/Operators.h"

#include <optional>

namespace Formula {

namespace {

using Type = Variant_Type;

/// An operand as the bitwise operators see it: Boolean, Byte, Integer or Long.
struct Bits {
    Type type = Type::Integer;
    std::int32_t value = 0;
};

Evaluated<Bits> Bits_Of(const Variant& value)
{
    const auto number = To_Long(value);
    if (!number) return Fails(number.error());
    const auto type = value.Type();
    if (type == Type::Boolean || type == Type::Byte || type == Type::Integer) return Bits{type, *number};
    return Bits{type == Type::Empty ? Type::Integer : Type::Long, *number};
}

void Store(Variant& target, Type type, std::int32_t value)
{
    if (type == Type::Boolean)
        target = Variant(value != 0);
    else if (type == Type::Byte)
        target = Variant(std::uint8_t(value));
    else if (type == Type::Integer)
        target = Variant(std::int16_t(value));
    else
        target.Set_Long(value);
}

Type Common_Type(Type left, Type right)
{
    if (left == right) return left;
    return left == Type::Long || right == Type::Long ? Type::Long : Type::Integer;
}

bool Is_Refused(const Variant& value)
{
    return value.Is_Array() || value.Is_Missing();
}

/// rule        what the bits become
/// with_null   what a known operand makes of a Null on the other side: nothing for Null
template <class Rule, class Null_Rule>
Error_Number Apply(Variant& left, const Variant& right, Rule rule, Null_Rule with_null)
{
    if (Is_Refused(left) || Is_Refused(right)) return Error_Number::Type_Mismatch;
    if (left.Is_Null() && right.Is_Null()) return Error_Number::None;
    if (left.Is_Null() || right.Is_Null()) {
        const bool known_is_left = right.Is_Null();
        const auto known = Bits_Of(known_is_left ? left : right);
        if (!known) return known.error();
        const std::optional<std::int32_t> value = with_null(known->value, known_is_left);
        if (value)
            Store(left, known->type, *value);
        else
            left = Variant::Null();
        return Error_Number::None;
    }
    const auto a = Bits_Of(left);
    if (!a) return a.error();
    const auto b = Bits_Of(right);
    if (!b) return b.error();
    Store(left, Common_Type(a->type, b->type), rule(a->value, b->value));
    return Error_Number::None;
}

using Known = std::optional<std::int32_t>;

Known Never_Known(std::int32_t, bool)
{
    return std::nullopt;
}

} // namespace

Error_Number Not(Variant& value)
{
    if (Is_Refused(value)) return Error_Number::Type_Mismatch;
    if (value.Is_Null()) return Error_Number::None;
    const auto bits = Bits_Of(value);
    if (!bits) return bits.error();
    Store(value, bits->type, ~bits->value);
    return Error_Number::None;
}

Error_Number And(Variant& left, const Variant& right)
{
    return Apply(
        left, right, [](auto a, auto b) { return a & b; },
        [](std::int32_t known, bool) { return known == 0 ? Known(0) : Known(); });
}

Error_Number Or(Variant& left, const Variant& right)
{
    return Apply(
        left, right, [](auto a, auto b) { return a | b; },
        [](std::int32_t known, bool) { return known != 0 ? Known(known) : Known(); });
}

Error_Number Xor(Variant& left, const Variant& right)
{
    return Apply(
        left, right, [](auto a, auto b) { return a ^ b; }, Never_Known);
}

Error_Number Eqv(Variant& left, const Variant& right)
{
    return Apply(
        left, right, [](auto a, auto b) { return ~(a ^ b); }, Never_Known);
}

// False implies anything; anything implies True.
Error_Number Imp(Variant& left, const Variant& right)
{
    return Apply(
        left, right, [](auto a, auto b) { return ~a | b; },
        [](std::int32_t known, bool known_is_left) {
            if (known_is_left) return known == 0 ? Known(-1) : Known();
            return known != 0 ? Known(known) : Known();
        });
}

} // namespace Formula
