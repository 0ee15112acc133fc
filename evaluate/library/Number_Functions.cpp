#include "evaluate/library/Arguments.h"
#include "evaluate/library/Built_In_Routines.h"
#include "evaluate/variant/Dates.h"

#include <bit>
#include <cmath>

// Conversions, mathematics, random numbers and questions about a value.
namespace Formula {

namespace {

using Type = Variant_Type;

template <class Calculate>
Error_Number Calculated(Arguments arguments, Variant& result, Calculate calculate)
{
    const auto number = To_Double(arguments[0]);
    FORMULA_CHECK(number);
    const double value = calculate(*number);
    if (!std::isfinite(value)) return Error_Number::Overflow;
    return Yield(result, value);
}

// Int and Fix keep the kind of a number; a text becomes a Double.
template <class Cut>
Error_Number Whole_Part(const Variant& value, Variant& result, Cut cut)
{
    switch (value.Type()) {
    case Type::Null: return Yield_Null(result);
    case Type::Byte:
    case Type::Integer:
    case Type::Long: result = value; return Error_Number::None;
    case Type::Empty: return Yield(result, std::int16_t(0));
    case Type::Boolean: return Yield(result, value.Integer());
    case Type::Single: return Yield(result, float(cut(double(value.Single()))));
    case Type::Date: return Yield(result, Date_Value{cut(value.Double())});
    case Type::Double:
    case Type::String:
    case Type::Error:
    case Type::Array: break;
    }
    const auto number = To_Double(value);
    FORMULA_CHECK(number);
    return Yield(result, cut(*number));
}

// The bits of a whole number: 16 for what an Integer holds, else 32.
Evaluated<std::uint32_t> Bits_Of(const Variant& value)
{
    const auto number = To_Long(value);
    if (!number) return Fails(number.error());
    const auto bits = std::uint32_t(*number);
    const bool is_short = value.Type() == Type::Integer || value.Type() == Type::Boolean;
    return is_short ? bits & 0xFFFF : bits;
}

Error_Number In_Radix(Arguments arguments, Variant& result, int radix)
{
    if (arguments[0].Is_Null()) return Yield_Null(result);
    const auto bits = Bits_Of(arguments[0]);
    FORMULA_CHECK(bits);
    return Yield(result, QString::number(*bits, radix).toUpper());
}

/// Shifts the point, rounds half to even and shifts back. What the shift makes of a number decides whether it is a half:
/// 2.675 becomes 267.5, although it is a little less.
double Rounded_Decimal(double value, int digits)
{
    const double scale = std::pow(10.0, digits);
    const double shifted = value * scale;
    if (!std::isfinite(shifted)) return value; // so large that it has no digits behind the point
    const double rounded = Round_Half_Even(shifted) / scale;
    return rounded == 0 ? 0.0 : rounded;
}

bool Is_Numeric(const Variant& value)
{
    switch (value.Type()) {
    case Type::Null:
    case Type::Date:
    case Type::Error:
    case Type::Array: return false;
    case Type::String: return Number_From_Text(value.Text()).has_value();
    case Type::Empty:
    case Type::Integer:
    case Type::Long:
    case Type::Single:
    case Type::Double:
    case Type::Boolean:
    case Type::Byte: return true;
    }
    return false;
}

std::uint32_t Next_Random(Random_State& state)
{
    state.seed = (state.seed * 0x43FD43FDu + 0xC39EC3u) & 0xFFFFFFu;
    return state.seed;
}

} // namespace

QString Type_Name(Type type)
{
    switch (type) {
    case Type::Empty: return QStringLiteral("Empty");
    case Type::Null: return QStringLiteral("Null");
    case Type::Integer: return QStringLiteral("Integer");
    case Type::Long: return QStringLiteral("Long");
    case Type::Single: return QStringLiteral("Single");
    case Type::Double: return QStringLiteral("Double");
    case Type::Date: return QStringLiteral("Date");
    case Type::String: return QStringLiteral("String");
    case Type::Error: return QStringLiteral("Error");
    case Type::Boolean: return QStringLiteral("Boolean");
    case Type::Byte: return QStringLiteral("Byte");
    case Type::Array: return QStringLiteral("Variant()");
    }
    return {};
}

Error_Number Run_Abs(Library_Context&, Arguments arguments, Variant& result)
{
    if (arguments[0].Is_Null()) return Yield_Null(result);
    if (arguments[0].Is_Empty()) return Yield(result, std::int16_t(0));
    const auto number = To_Double(arguments[0]);
    FORMULA_CHECK(number);
    // Adding 0 turns a Boolean into a number and leaves the others.
    Variant value = arguments[0].Is_String() ? Variant(*number) : arguments[0];
    if (*number < 0) return Negate(value) == Error_Number::None ? Yield(result, value) : Error_Number::Overflow;
    const auto problem = Add(value, Variant(std::uint8_t(0)));
    if (problem != Error_Number::None) return problem;
    return Yield(result, value);
}

Error_Number Run_Int(Library_Context&, Arguments arguments, Variant& result)
{
    return Whole_Part(arguments[0], result, [](double value) { return std::floor(value); });
}

Error_Number Run_Fix(Library_Context&, Arguments arguments, Variant& result)
{
    return Whole_Part(arguments[0], result, [](double value) { return std::trunc(value); });
}

Error_Number Run_Sgn(Library_Context&, Arguments arguments, Variant& result)
{
    const auto number = To_Double(arguments[0]);
    FORMULA_CHECK(number);
    return Yield(result, std::int16_t(*number > 0 ? 1 : *number < 0 ? -1 : 0));
}

Error_Number Run_Atn(Library_Context&, Arguments arguments, Variant& result)
{
    return Calculated(arguments, result, [](double x) { return std::atan(x); });
}

Error_Number Run_Cos(Library_Context&, Arguments arguments, Variant& result)
{
    return Calculated(arguments, result, [](double x) { return std::cos(x); });
}

Error_Number Run_Exp(Library_Context&, Arguments arguments, Variant& result)
{
    return Calculated(arguments, result, [](double x) { return std::exp(x); });
}

Error_Number Run_Sin(Library_Context&, Arguments arguments, Variant& result)
{
    return Calculated(arguments, result, [](double x) { return std::sin(x); });
}

Error_Number Run_Tan(Library_Context&, Arguments arguments, Variant& result)
{
    return Calculated(arguments, result, [](double x) { return std::tan(x); });
}

Error_Number Run_Log(Library_Context&, Arguments arguments, Variant& result)
{
    const auto number = To_Double(arguments[0]);
    FORMULA_CHECK(number);
    return *number > 0 ? Yield(result, std::log(*number)) : Error_Number::Invalid_Call;
}

Error_Number Run_Sqr(Library_Context&, Arguments arguments, Variant& result)
{
    const auto number = To_Double(arguments[0]);
    FORMULA_CHECK(number);
    return *number >= 0 ? Yield(result, std::sqrt(*number)) : Error_Number::Invalid_Call;
}

Error_Number Run_Round(Library_Context&, Arguments arguments, Variant& result)
{
    const auto digits = Long_At(arguments, 1);
    FORMULA_CHECK(digits);
    if (*digits < 0 || *digits > 22) return Error_Number::Invalid_Call;
    return Whole_Part(arguments[0], result, [&](double value) { return Rounded_Decimal(value, *digits); });
}

Error_Number Run_CDate(Library_Context&, Arguments arguments, Variant& result)
{
    const auto days = To_Date(arguments[0]);
    FORMULA_CHECK(days);
    return Yield(result, Date_Value{*days});
}

Error_Number Run_Val(Library_Context&, Arguments arguments, Variant& result)
{
    const auto text = To_Text(arguments[0]);
    FORMULA_CHECK(text);
    const auto number = Val(*text);
    FORMULA_CHECK(number);
    return Yield(result, *number);
}

Error_Number Run_Hex(Library_Context&, Arguments arguments, Variant& result)
{
    return In_Radix(arguments, result, 16);
}

Error_Number Run_Oct(Library_Context&, Arguments arguments, Variant& result)
{
    return In_Radix(arguments, result, 8);
}

Error_Number Run_IsNull(Library_Context&, Arguments arguments, Variant& result)
{
    return Yield(result, arguments[0].Is_Null());
}

Error_Number Run_IsNumeric(Library_Context&, Arguments arguments, Variant& result)
{
    return Yield(result, Is_Numeric(arguments[0]));
}

Error_Number Run_IsDate(Library_Context&, Arguments arguments, Variant& result)
{
    const auto& value = arguments[0];
    const bool is_text = value.Is_String() && Date_From_Text(value.Text(), This_Year()).has_value();
    return Yield(result, is_text || value.Type() == Type::Date);
}

Error_Number Run_TypeName(Library_Context&, Arguments arguments, Variant& result)
{
    return Yield(result, Type_Name(arguments[0].Type()));
}

Error_Number Run_VarType(Library_Context&, Arguments arguments, Variant& result)
{
    constexpr int of_variants = 12;
    const int number = int(arguments[0].Type()) + (arguments[0].Is_Array() ? of_variants : 0);
    return Yield(result, std::int16_t(number));
}

Error_Number Run_IIf(Library_Context&, Arguments arguments, Variant& result)
{
    // A test that is not known counts as False.
    const auto test = arguments[0].Is_Null() ? Evaluated<bool>(false) : To_Boolean(arguments[0]);
    FORMULA_CHECK(test);
    result = std::move(arguments[*test ? 1 : 2]);
    return Error_Number::None;
}

namespace {

Error_Number Chosen(Arguments arguments, Variant& result, int wanted_order)
{
    // One operand is compared with 126, the filler of the second: odd, but formulas rely on it.
    Variant other = arguments.size() > 1 ? std::move(arguments[1]) : Variant(std::int32_t(126));
    const auto order = Compare(other, arguments[0]);
    FORMULA_CHECK(order);
    result = std::move(*order == wanted_order ? other : arguments[0]);
    return Error_Number::None;
}

} // namespace

Error_Number Run_Max(Library_Context&, Arguments arguments, Variant& result)
{
    return Chosen(arguments, result, 1);
}

Error_Number Run_Min(Library_Context&, Arguments arguments, Variant& result)
{
    return Chosen(arguments, result, -1);
}

// A negative number starts a sequence of its own, 0 repeats the last number, anything else goes on.
Error_Number Run_Rnd(Library_Context& context, Arguments arguments, Variant& result)
{
    const auto number = Has(arguments, 0) ? To_Single(arguments[0]) : Evaluated<float>(1.0f);
    FORMULA_CHECK(number);
    if (*number < 0) {
        const auto bits = std::bit_cast<std::uint32_t>(*number);
        context.random.seed = (bits + (bits >> 24)) & 0xFFFFFFu;
    }
    if (*number != 0) Next_Random(context.random);
    return Yield(result, float(context.random.seed) / 16777216.0f);
}

// The upper half of the number's bits is folded into the middle of the seed; its low byte stays.
Error_Number Randomize(Library_Context& context, const Variant* number)
{
    double value = 0;
    if (number) {
        const auto given = To_Double(*number);
        FORMULA_CHECK(given);
        value = *given;
    } else {
        value = context.services.Now().time().msecsSinceStartOfDay() / 1000.0;
    }
    const auto upper = std::uint32_t(std::bit_cast<std::uint64_t>(value) >> 32);
    context.random.seed = (((upper ^ (upper >> 16)) & 0xFFFFu) << 8) | (context.random.seed & 0xFFu);
    return Error_Number::None;
}

} // namespace Formula
