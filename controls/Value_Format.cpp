#include "controls/Value_Format.h"

#include "controls/Grid_Records.h"
#include "frame/text/Text_Utilities.h"
#include <cmath>

namespace {

QString Twelve_Hour_Time(const QTime& time, bool seconds)
{
    const int hour = time.hour() % 12 == 0 ? 12 : time.hour() % 12;
    auto text = QString::number(hour) + QStringLiteral(":%1").arg(time.minute(), 2, 10, QLatin1Char('0'));
    if (seconds) text += QStringLiteral(":%1").arg(time.second(), 2, 10, QLatin1Char('0'));
    return text + (time.hour() < 12 ? QStringLiteral(" AM") : QStringLiteral(" PM"));
}

QString Short_Date(const QDate& date)
{
    return QStringLiteral("%1/%2/%3").arg(date.month()).arg(date.day()).arg(date.year());
}

QString Long_Date(const QDate& date)
{
    return QStringLiteral("%1, %2 %3, %4")
        .arg(Weekday_Name(date.dayOfWeek() % 7 + 1), Month_Name(date.month()))
        .arg(date.day())
        .arg(date.year());
}

// Day 0 stands for "a time alone".
QString General_Date(const QDateTime& date_time)
{
    const bool day_zero = date_time.date() == QDate(1899, 12, 30);
    const bool midnight = date_time.time() == QTime(0, 0);
    if (day_zero) return Twelve_Hour_Time(date_time.time(), true);
    if (midnight) return Short_Date(date_time.date());
    return Short_Date(date_time.date()) + QLatin1Char(' ') + Twelve_Hour_Time(date_time.time(), true);
}

struct Date_Format {
    const char* name;
    QString (*text)(const QDateTime&);
};
const Date_Format Date_Formats[] = {
    {"general date", General_Date},
    {"short date", [](const QDateTime& when) { return Short_Date(when.date()); }},
    {"medium date", [](const QDateTime& when) { return Medium_Date(when); }},
    {"long date", [](const QDateTime& when) { return Long_Date(when.date()); }},
    {"short time", [](const QDateTime& when) { return when.time().toString(QStringLiteral("HH:mm")); }},
    {"medium time", [](const QDateTime& when) { return Medium_Time(when); }},
    {"long time", [](const QDateTime& when) { return Twelve_Hour_Time(when.time(), true); }},
};

const Date_Format* Date_Format_Named(const QString& format)
{
    for (const auto& row : Date_Formats)
        if (format.compare(QLatin1String(row.name), Qt::CaseInsensitive) == 0) return &row;
    return nullptr;
}

QDateTime Date_Time_Of(const QVariant& value)
{
    if (value.typeId() == QMetaType::QTime) return QDateTime(QDate(1899, 12, 30), value.toTime());
    if (Data_Type_Of(value) == Grid_Data_Type::Date) return value.toDateTime();
    return Date_Time_From_Date(value.toDouble());
}

struct Word_Format {
    const char* name;
    const char* yes;
    const char* no;
};
constexpr Word_Format Word_Formats[] = {
    {"yes/no", "Yes", "No"}, {"true/false", "True", "False"}, {"on/off", "On", "Off"}};

struct Picture_Name {
    const char* name;
    const char* picture;
};
constexpr Picture_Name Picture_Names[] = {{"percent", "0.00%"}, {"fixed", "0.00"}, {"standard", "#,##0.00"}};

/// A number picture taken apart: text, digits, text.
struct Number_Picture {
    QString before, digits, after;
    bool grouped = false;
    bool percent = false;
};

void Read_Literal(const QString& format, int& i, QString& text)
{
    if (format[i] == QLatin1Char('\\')) {
        if (++i < format.size()) text += format[i++];
        return;
    }
    for (++i; i < format.size() && format[i] != QLatin1Char('"'); ++i) text += format[i];
    ++i; // the closing mark; without one the rest was text
}

Number_Picture Read_Picture(const QString& format)
{
    Number_Picture picture;
    for (int i = 0; i < format.size();) {
        auto& text = picture.digits.isEmpty() ? picture.before : picture.after;
        const auto mark = format[i];
        if (mark == QLatin1Char('"') || mark == QLatin1Char('\\')) {
            Read_Literal(format, i, text);
            continue;
        }
        if (QStringLiteral("#0.").contains(mark) && picture.after.isEmpty()) {
            picture.digits += mark;
        } else if (mark == QLatin1Char(',') && picture.after.isEmpty()) {
            picture.grouped = true;
        } else {
            picture.percent |= mark == QLatin1Char('%');
            text += mark;
        }
        ++i;
    }
    return picture;
}

QString Grouped(const QString& number)
{
    auto whole = number.section(QLatin1Char('.'), 0, 0);
    for (auto i = whole.size() - 3; i > 0; i -= 3) whole.insert(i, QLatin1Char(','));
    const auto point = number.indexOf(QLatin1Char('.'));
    return point < 0 ? whole : whole + number.mid(point);
}

QString Picture_Text(double value, const QString& format)
{
    const auto picture = Read_Picture(format);
    if (picture.digits.isEmpty()) return picture.before;
    if (picture.percent) value *= 100;
    auto digits = Format_Number(std::abs(value), picture.digits);
    const bool negative =
        value < 0 && std::any_of(digits.begin(), digits.end(), [](QChar c) { return c >= u'1' && c <= u'9'; });
    if (picture.grouped) digits = Grouped(digits);
    return (negative ? QStringLiteral("-") : QString()) + picture.before + digits + picture.after;
}

QString Plain_Text(const QVariant& value)
{
    switch (Data_Type_Of(value)) {
    case Grid_Data_Type::Boolean: return value.toBool() ? QStringLiteral("True") : QStringLiteral("False");
    case Grid_Data_Type::Date: return General_Date(Date_Time_Of(value));
    case Grid_Data_Type::Single: return Text_Of_Single(value.toFloat());
    case Grid_Data_Type::Double: return QString::number(value.toDouble(), 'g', 15);
    case Grid_Data_Type::Byte: return QString::number(value.toInt());
    case Grid_Data_Type::Any:
    case Grid_Data_Type::Null:
    case Grid_Data_Type::Integer:
    case Grid_Data_Type::Long:
    case Grid_Data_Type::Currency:
    case Grid_Data_Type::String: break;
    }
    return value.toString();
}

} // namespace

QString Format_Value(const QVariant& value, const QString& format)
{
    const auto type = Data_Type_Of(value);
    if (type == Grid_Data_Type::Null) return {};
    if (type == Grid_Data_Type::Date && !Date_Time_Of(value).isValid()) return {};
    if (format.isEmpty() || type == Grid_Data_Type::String) return Plain_Text(value);
    if (const auto* date_format = Date_Format_Named(format)) {
        const auto when = Date_Time_Of(value);
        return when.isValid() ? date_format->text(when) : QString();
    }
    if (type == Grid_Data_Type::Date || format.compare(QLatin1String("general number"), Qt::CaseInsensitive) == 0)
        return Plain_Text(value);
    const auto number = type == Grid_Data_Type::Boolean ? (value.toBool() ? -1.0 : 0.0) : value.toDouble();
    for (const auto& row : Word_Formats)
        if (format.compare(QLatin1String(row.name), Qt::CaseInsensitive) == 0)
            return QLatin1String(number != 0 ? row.yes : row.no);
    for (const auto& row : Picture_Names)
        if (format.compare(QLatin1String(row.name), Qt::CaseInsensitive) == 0)
            return Picture_Text(number, QLatin1String(row.picture));
    return Picture_Text(number, format);
}
