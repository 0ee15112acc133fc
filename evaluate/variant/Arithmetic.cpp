#include "evaluate/variant/Conversions.h"
#include "evaluate/variant/Dates.h"
#include "evaluate/variant/Operators.h"
#include "frame/files/Limits.h"

#include <cmath>
#include <limits>

namespace Formula {

namespace {

using Type = Variant_Type;

/// An operand as arithmetic sees it: Empty and Boolean are an Integer, a text is a Double. A double holds every Long.
struct Number {
    Type type = Type::Integer;
    double value = 0;
};

Evaluated<Number> Number_Of(const Variant& value)
{
    const auto number = To_Double(value);
    if (!number) return Fails(number.error());
    auto type = value.Type();
    if (type == Type::Empty || type == Type::Boolean) type = Type::Integer;
    if (type == Type::String) type = Type::Double;
    return Number{type, *number};
}

bool Either(Type wanted, const Number& left, const Number& right)
{
    return left.type == wanted || right.type == wanted;
}

// The kind in which two operands meet.
Type Common_Type(const Number& left, const Number& right)
{
    if (Either(Type::Date, left, right)) return Type::Date;
    if (Either(Type::Double, left, right)) return Type::Double;
    // A Long has more digits than a Single can hold.
    if (Either(Type::Single, left, right)) return Either(Type::Long, left, right) ? Type::Double : Type::Single;
    if (Either(Type::Long, left, right)) return Type::Long;
    if (Either(Type::Integer, left, right)) return Type::Integer;
    return Type::Byte;
}

template <class Whole>
bool Fits(double value)
{
    return value >= double(std::numeric_limits<Whole>::min()) && value <= double(std::numeric_limits<Whole>::max());
}

// Stores a result in its kind, or in the next one that holds it.
Error_Number Store(Variant& target, Type type, double value)
{
    if (!std::isfinite(value)) return Error_Number::Overflow;
    if (type == Type::Byte && Fits<std::uint8_t>(value)) {
        target = Variant(std::uint8_t(value));
    } else if ((type == Type::Byte || type == Type::Integer) && Fits<std::int16_t>(value)) {
        target = Variant(std::int16_t(value));
    } else if ((type == Type::Byte || type == Type::Integer || type == Type::Long) && Fits<std::int32_t>(value)) {
        target.Set_Long(std::int32_t(value));
    } else if (type == Type::Single && std::isfinite(float(value))) {
        target = Variant(float(value));
    } else if (type == Type::Date && Is_Date_In_Range(value)) {
        target = Variant(Date_Value{value});
    } else {
        target.Set_Double(value);
    }
    return Error_Number::None;
}

bool Is_Value(const Variant& value)
{
    return !value.Is_Array() && !value.Is_Missing();
}

/// What the operators have in common: arrays are refused, Null spreads, both operands become numbers.
template <class Rule>
Error_Number Apply(Variant& left, const Variant& right, Rule rule)
{
    if (!Is_Value(left) || !Is_Value(right)) return Error_Number::Type_Mismatch;
    if (left.Is_Null() || right.Is_Null()) {
        left = Variant::Null();
        return Error_Number::None;
    }
    const auto a = Number_Of(left);
    if (!a) return a.error();
    const auto b = Number_Of(right);
    if (!b) return b.error();
    return rule(*a, *b);
}

Error_Number Join_Texts(Variant& left, const QString& right)
{
    if (left.Text().size() + right.size() > Current_Limits().formula_string_characters)
        return Error_Number::Out_Of_String_Space;
    left.Writable_Text() += right;
    return Error_Number::None;
}

// For \ and Mod: whole numbers stay what they are, everything else is rounded to a Long.
Evaluated<Number> Whole_Of(const Number& number)
{
    if (number.type == Type::Byte || number.type == Type::Integer || number.type == Type::Long) return number;
    const double whole = Round_Half_Even(number.value);
    if (!Fits<std::int32_t>(whole)) return Fails(Error_Number::Overflow);
    return Number{Type::Long, whole};
}

template <class Rule>
Error_Number Apply_Whole(Variant& left, const Variant& right, Rule rule)
{
    return Apply(left, right, [&](const Number& a, const Number& b) {
        const auto x = Whole_Of(a);
        if (!x) return x.error();
        const auto y = Whole_Of(b);
        if (!y) return y.error();
        if (y->value == 0) return Error_Number::Division_By_Zero;
        return Store(left, Common_Type(*x, *y), double(rule(std::int64_t(x->value), std::int64_t(y->value))));
    });
}

} // namespace

Error_Number Add(Variant& left, const Variant& right)
{
    if (left.Type() == Type::Long && right.Type() == Type::Long) {
        const auto sum = std::int64_t(left.Long()) + right.Long();
        return sum == std::int32_t(sum) ? (left.Set_Long(std::int32_t(sum)), Error_Number::None)
                                        : (left.Set_Double(double(sum)), Error_Number::None);
    }
    if (left.Is_String() && right.Is_String()) return Join_Texts(left, right.Text());
    // With one Empty the other operand stays as it is, a text stays a text.
    if (right.Is_Empty() && left.Is_String()) return Error_Number::None;
    if (left.Is_Empty() && right.Is_String()) {
        left = right;
        return Error_Number::None;
    }
    return Apply(left, right, [&](const Number& a, const Number& b) {
        if (left.Is_Empty() != right.Is_Empty()) {
            if (left.Is_Empty()) left = right;
            return Error_Number::None;
        }
        return Store(left, Common_Type(a, b), a.value + b.value);
    });
}

Error_Number Subtract(Variant& left, const Variant& right)
{
    if (left.Type() == Type::Long && right.Type() == Type::Long) {
        const auto difference = std::int64_t(left.Long()) - right.Long();
        return Store(left, Type::Long, double(difference));
    }
    return Apply(left, right, [&](const Number& a, const Number& b) {
        const bool is_span = a.type == Type::Date && b.type == Type::Date;
        return Store(left, is_span ? Type::Double : Common_Type(a, b), a.value - b.value);
    });
}

Error_Number Multiply(Variant& left, const Variant& right)
{
    return Apply(left, right, [&](const Number& a, const Number& b) {
        const auto type = Common_Type(a, b);
        return Store(left, type == Type::Date ? Type::Double : type, a.value * b.value);
    });
}

Error_Number Divide(Variant& left, const Variant& right)
{
    return Apply(left, right, [&](const Number& a, const Number& b) {
        // Zero by zero is an overflow and not a division by zero: the classic operator's own distinction.
        if (b.value == 0) return a.value == 0 ? Error_Number::Overflow : Error_Number::Division_By_Zero;
        return Store(left, Common_Type(a, b) == Type::Single ? Type::Single : Type::Double, a.value / b.value);
    });
}

Error_Number Integer_Divide(Variant& left, const Variant& right)
{
    return Apply_Whole(left, right, [](std::int64_t a, std::int64_t b) { return a / b; });
}

Error_Number Modulo(Variant& left, const Variant& right)
{
    return Apply_Whole(left, right, [](std::int64_t a, std::int64_t b) { return a % b; });
}

Error_Number Power(Variant& left, const Variant& right)
{
    return Apply(left, right, [&](const Number& a, const Number& b) {
        if (a.value == 0 && b.value < 0) return Error_Number::Invalid_Call;
        if (a.value < 0 && b.value != std::trunc(b.value)) return Error_Number::Invalid_Call;
        return Store(left, Type::Double, std::pow(a.value, b.value));
    });
}

Error_Number Negate(Variant& value)
{
    if (!Is_Value(value)) return Error_Number::Type_Mismatch;
    if (value.Is_Null()) return Error_Number::None;
    const auto number = Number_Of(value);
    if (!number) return number.error();
    const auto type = number->type == Type::Byte ? Type::Integer : number->type;
    return Store(value, type, number->value == 0 ? 0.0 : -number->value);
}

// Null counts as "" on either side, also on both.
Error_Number Concatenate(Variant& left, const Variant& right)
{
    if (left.Is_String() && right.Is_String()) return Join_Texts(left, right.Text());
    const auto head = To_Display_Text(left);
    if (!head) return head.error();
    const auto tail = To_Display_Text(right);
    if (!tail) return tail.error();
    Variant joined(*head);
    const auto problem = Join_Texts(joined, *tail);
    if (problem == Error_Number::None) left = std::move(joined);
    return problem;
}

} // namespace Formula
