#include "evaluate/variant/Conversions.h"

#include "evaluate/variant/Dates.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace Formula {

namespace {

using Type = Variant_Type;

template <class Real>
QString Shortest_Text(Real value, int digits)
{
    if (value == 0) return QStringLiteral("0"); // also for minus zero
    char buffer[64];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, digits).ptr;
    auto text = QString::fromLatin1(buffer, int(end - buffer));
    text.replace(u'e', u'E');
    return text;
}

template <class Whole>
Evaluated<Whole> Rounded(double value)
{
    const double whole = Round_Half_Even(value);
    if (!(whole >= double(std::numeric_limits<Whole>::min()) && whole <= double(std::numeric_limits<Whole>::max())))
        return Fails(Error_Number::Overflow);
    return Whole(whole);
}

template <class Whole>
Evaluated<Whole> To_Whole(const Variant& value)
{
    const auto number = To_Double(value);
    if (!number) return Fails(number.error());
    return Rounded<Whole>(*number);
}

bool Is_Word(QStringView text, QLatin1StringView word)
{
    return text.compare(word, Qt::CaseInsensitive) == 0;
}

Evaluated<bool> Boolean_From_Text(QStringView text)
{
    const auto trimmed = text.trimmed();
    if (Is_Word(trimmed, QLatin1StringView("True")) || Is_Word(trimmed, QLatin1StringView("#TRUE#"))) return true;
    if (Is_Word(trimmed, QLatin1StringView("False")) || Is_Word(trimmed, QLatin1StringView("#FALSE#"))) return false;
    const auto number = Number_From_Text(text);
    if (!number) return Fails(number.error());
    return *number != 0;
}

} // namespace

double Round_Half_Even(double value)
{
    return std::nearbyint(value); // the processor's default way, which nobody here changes
}

Evaluated<double> To_Double(const Variant& value)
{
    switch (value.Type()) {
    case Type::Empty: return 0.0;
    case Type::Null: return Fails(Error_Number::Invalid_Use_Of_Null);
    case Type::Integer:
    case Type::Boolean: return double(value.Integer());
    case Type::Long: return double(value.Long());
    case Type::Single: return double(value.Single());
    case Type::Double:
    case Type::Date: return value.Double();
    case Type::String: return Number_From_Text(value.Text());
    case Type::Byte: return double(value.Byte());
    case Type::Error:
    case Type::Array: return Fails(Error_Number::Type_Mismatch);
    }
    return Fails(Error_Number::Type_Mismatch);
}

Evaluated<bool> To_Boolean(const Variant& value)
{
    if (value.Is_String()) return Boolean_From_Text(value.Text());
    const auto number = To_Double(value);
    if (!number) return Fails(number.error());
    return *number != 0;
}

Evaluated<std::uint8_t> To_Byte(const Variant& value)
{
    if (value.Type() == Type::Boolean) return std::uint8_t(value.Boolean() ? 255 : 0); // the low byte of -1
    return To_Whole<std::uint8_t>(value);
}

Evaluated<std::int16_t> To_Integer(const Variant& value)
{
    if (value.Is_String()) return Integer_From_Text(value.Text());
    return To_Whole<std::int16_t>(value);
}

Evaluated<std::int32_t> To_Long(const Variant& value)
{
    if (value.Type() == Type::Long) return value.Long();
    if (value.Is_String()) return Long_From_Text(value.Text());
    return To_Whole<std::int32_t>(value);
}

Evaluated<float> To_Single(const Variant& value)
{
    const auto number = To_Double(value);
    if (!number) return Fails(number.error());
    const auto single = float(*number);
    if (!std::isfinite(single)) return Fails(Error_Number::Overflow);
    return single;
}

Evaluated<double> To_Date(const Variant& value)
{
    if (value.Is_String()) {
        const auto date = Date_From_Text(value.Text(), This_Year());
        if (date) return date;
    }
    const auto days = To_Double(value);
    if (days && !Is_Date_In_Range(*days)) return Fails(Error_Number::Overflow);
    return days;
}

Evaluated<QString> To_Text(const Variant& value)
{
    switch (value.Type()) {
    case Type::Empty: return QString();
    case Type::Null: return Fails(Error_Number::Invalid_Use_Of_Null);
    case Type::Integer: return QString::number(value.Integer());
    case Type::Long: return QString::number(value.Long());
    case Type::Single: return Text_From_Single(value.Single());
    case Type::Double: return Text_From_Double(value.Double());
    case Type::Date: return Text_From_Date(value.Double());
    case Type::String: return value.Text();
    case Type::Boolean: return value.Boolean() ? QStringLiteral("True") : QStringLiteral("False");
    case Type::Byte: return QString::number(value.Byte());
    case Type::Error:
    case Type::Array: return Fails(Error_Number::Type_Mismatch);
    }
    return Fails(Error_Number::Type_Mismatch);
}

Evaluated<QString> To_Display_Text(const Variant& value)
{
    return value.Is_Null() ? Evaluated<QString>(QString()) : To_Text(value);
}

QString Text_From_Double(double value)
{
    return Shortest_Text(value, 15);
}

QString Text_From_Single(float value)
{
    return Shortest_Text(value, 7);
}

QString Text_From_Date(double days)
{
    if (!Is_Date_In_Range(days)) return Text_From_Double(days);
    const auto parts = Parts_Of(days);
    const bool has_time = parts.hour || parts.minute || parts.second;
    const bool is_day_zero = parts.year == 1899 && parts.month == 12 && parts.day == 30;
    QString text;
    if (!is_day_zero) text = QStringLiteral("%1/%2/%3").arg(parts.month).arg(parts.day).arg(parts.year);
    if (is_day_zero || has_time) {
        if (!text.isEmpty()) text += u' ';
        text += Text_From_Time(parts);
    }
    return text;
}

QString Text_From_Time(const Date_Parts& parts)
{
    return QString::asprintf("%d:%02d:%02d %s", (parts.hour + 11) % 12 + 1, parts.minute, parts.second,
                             parts.hour < 12 ? "AM" : "PM");
}

} // namespace Formula
