#include "evaluate/variant/Conversions.h"
#include "evaluate/variant/Like.h"
#include "evaluate/variant/Operators.h"

namespace Formula {

namespace {

using Type = Variant_Type;

int Sign(double left, double right)
{
    return left < right ? -1 : left > right ? 1 : 0;
}

bool Is_Textual(const Variant& value)
{
    return value.Is_String() || value.Is_Empty();
}

int Compare_Numbers(const Variant& left, const Variant& right)
{
    const double a = To_Double(left).value_or(0), b = To_Double(right).value_or(0);
    const bool has_single = left.Type() == Type::Single || right.Type() == Type::Single;
    const bool has_double = left.Type() == Type::Double || right.Type() == Type::Double;
    // A Double beside a Single is rounded to it, so that CSng(0.1) = 0.1.
    if (has_single && has_double) return Sign(float(a), float(b));
    return Sign(a, b);
}

template <class Test>
Error_Number Apply(Variant& left, const Variant& right, Compare_Mode mode, Test test)
{
    if (left.Type() == Type::Long && right.Type() == Type::Long) {
        left.Set_Boolean(test(left.Long() < right.Long() ? -1 : left.Long() > right.Long()));
        return Error_Number::None;
    }
    const auto order = Compare(left, right, mode);
    if (!order) return order.error();
    if (left.Is_Null() || right.Is_Null())
        left = Variant::Null();
    else
        left.Set_Boolean(test(*order));
    return Error_Number::None;
}

} // namespace

int Compare_Text(QStringView left, QStringView right, Compare_Mode mode)
{
    const auto order = left.compare(right, mode == Compare_Mode::Text ? Qt::CaseInsensitive : Qt::CaseSensitive);
    return order < 0 ? -1 : order > 0 ? 1 : 0;
}

Evaluated<int> Compare(const Variant& left, const Variant& right, Compare_Mode mode)
{
    for (const auto* value : {&left, &right})
        if (value->Is_Array() || value->Is_Missing()) return Fails(Error_Number::Type_Mismatch);
    if (left.Is_Null() || right.Is_Null()) return int(!left.Is_Null()) - int(!right.Is_Null());
    if (!left.Is_String() && !right.Is_String()) return Compare_Numbers(left, right);
    if (!Is_Textual(left)) return -1; // a number is below any text
    if (!Is_Textual(right)) return 1;
    return Compare_Text(left.Is_Empty() ? QString() : left.Text(), right.Is_Empty() ? QString() : right.Text(), mode);
}

Error_Number Equal(Variant& left, const Variant& right, Compare_Mode mode)
{
    return Apply(left, right, mode, [](int order) { return order == 0; });
}

Error_Number Not_Equal(Variant& left, const Variant& right, Compare_Mode mode)
{
    return Apply(left, right, mode, [](int order) { return order != 0; });
}

Error_Number Less(Variant& left, const Variant& right, Compare_Mode mode)
{
    return Apply(left, right, mode, [](int order) { return order < 0; });
}

Error_Number Less_Or_Equal(Variant& left, const Variant& right, Compare_Mode mode)
{
    return Apply(left, right, mode, [](int order) { return order <= 0; });
}

Error_Number Greater(Variant& left, const Variant& right, Compare_Mode mode)
{
    return Apply(left, right, mode, [](int order) { return order > 0; });
}

Error_Number Greater_Or_Equal(Variant& left, const Variant& right, Compare_Mode mode)
{
    return Apply(left, right, mode, [](int order) { return order >= 0; });
}

Error_Number Like(Variant& left, const Variant& right, Compare_Mode mode)
{
    if (left.Is_Array() || right.Is_Array()) return Error_Number::Type_Mismatch;
    if (left.Is_Null() || right.Is_Null()) {
        left = Variant::Null();
        return Error_Number::None;
    }
    const auto text = To_Text(left);
    if (!text) return text.error();
    const auto pattern = To_Text(right);
    if (!pattern) return pattern.error();
    const auto matches = Is_Like(*text, *pattern, mode);
    if (!matches) return matches.error();
    left.Set_Boolean(*matches);
    return Error_Number::None;
}

Evaluated<bool> Equals_Boolean(const Variant& value, bool wanted)
{
    if (value.Type() == Type::Boolean) return value.Boolean() == wanted;
    if (value.Is_Null()) return false;
    const auto order = Compare(value, Variant(wanted));
    if (!order) return Fails(order.error());
    return *order == 0;
}

} // namespace Formula
