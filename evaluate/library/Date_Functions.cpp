#include "evaluate/library/Arguments.h"
#include "evaluate/library/Built_In_Routines.h"
#include "evaluate/library/Weeks.h"
#include "evaluate/variant/Dates.h"

#include <cmath>
#include <limits>

// Date and time: now, parts, spans, and dates from parts.
namespace Formula {

namespace {

enum class Interval { Year, Quarter, Month, Day_Of_Year, Day, Weekday, Week, Hour, Minute, Second };

struct Interval_Name {
    const char* name;
    Interval interval;
};

constexpr Interval_Name Interval_Names[] = {
    {"yyyy", Interval::Year}, {"q", Interval::Quarter}, {"m", Interval::Month}, {"y", Interval::Day_Of_Year},
    {"d", Interval::Day},     {"w", Interval::Weekday}, {"ww", Interval::Week}, {"h", Interval::Hour},
    {"n", Interval::Minute},  {"s", Interval::Second},
};

Evaluated<Interval> Interval_At(Arguments arguments, std::size_t index)
{
    const auto text = To_Text(arguments[index]);
    if (!text) return Fails(text.error());
    for (const auto& row : Interval_Names)
        if (text->compare(QLatin1StringView(row.name), Qt::CaseInsensitive) == 0) return row.interval;
    return Fails(Error_Number::Invalid_Call);
}

std::int64_t Day_Of(double days)
{
    return Floor_Divide(Seconds_Of(days), 86400);
}

// A day that the month does not have becomes its last one.
Evaluated<double> With_Months_Added(double days, std::int64_t months)
{
    const auto parts = Parts_Of(days);
    const auto total = std::int64_t(parts.year) * 12 + parts.month - 1 + months;
    const auto year = Floor_Divide(total, 12);
    const int month = int(total - year * 12) + 1;
    const auto day = Day_Number(year, month, std::min(parts.day, Days_In_Month(year, month)));
    if (!day) return Fails(day.error());
    return Date_From(*day, parts.hour * 3600 + parts.minute * 60 + parts.second);
}

Evaluated<double> Added(Interval interval, std::int64_t count, double days)
{
    const auto seconds = Seconds_Of(days);
    switch (interval) {
    case Interval::Year: return With_Months_Added(days, count * 12);
    case Interval::Quarter: return With_Months_Added(days, count * 3);
    case Interval::Month: return With_Months_Added(days, count);
    case Interval::Day_Of_Year:
    case Interval::Day:
    case Interval::Weekday: return Date_From_Seconds(seconds + count * 86400);
    case Interval::Week: return Date_From_Seconds(seconds + count * 7 * 86400);
    case Interval::Hour: return Date_From_Seconds(seconds + count * 3600);
    case Interval::Minute: return Date_From_Seconds(seconds + count * 60);
    case Interval::Second: return Date_From_Seconds(seconds + count);
    }
    return Fails(Error_Number::Invalid_Call);
}

// Years, months and clock units count the boundaries between two dates; weeks either whole ones or week beginnings.
std::int64_t Span(Interval interval, double from, double to, const Week_Rule& rule)
{
    const auto a = Parts_Of(from), b = Parts_Of(to);
    const auto start = Seconds_Of(from), end = Seconds_Of(to);
    const auto days = Day_Of(to) - Day_Of(from);
    switch (interval) {
    case Interval::Year: return b.year - a.year;
    case Interval::Quarter: return (b.year - a.year) * 4 + (b.month - 1) / 3 - (a.month - 1) / 3;
    case Interval::Month: return (b.year - a.year) * 12 + b.month - a.month;
    case Interval::Day_Of_Year:
    case Interval::Day: return days;
    case Interval::Weekday: return days / 7;
    case Interval::Week: {
        const auto begin_of = [&](double date) { return Day_Of(date) - (Weekday_By(date, rule) - 1); };
        return (begin_of(to) - begin_of(from)) / 7;
    }
    case Interval::Hour: return Floor_Divide(end, 3600) - Floor_Divide(start, 3600);
    case Interval::Minute: return Floor_Divide(end, 60) - Floor_Divide(start, 60);
    case Interval::Second: return end - start;
    }
    return 0;
}

int Part_Of(Interval interval, double days, const Week_Rule& rule)
{
    const auto parts = Parts_Of(days);
    switch (interval) {
    case Interval::Year: return parts.year;
    case Interval::Quarter: return (parts.month + 2) / 3;
    case Interval::Month: return parts.month;
    case Interval::Day_Of_Year: return Day_Of_Year(parts);
    case Interval::Day: return parts.day;
    case Interval::Weekday: return Weekday_By(days, rule);
    case Interval::Week: return Week_Of_Year(days, rule);
    case Interval::Hour: return parts.hour;
    case Interval::Minute: return parts.minute;
    case Interval::Second: return parts.second;
    }
    return 0;
}

double Days_Of(const QDateTime& moment)
{
    const auto date = moment.date();
    const auto day = Day_Number(date.year(), date.month(), date.day());
    const auto days = Date_From(day.value_or(0), moment.time().msecsSinceStartOfDay() / 1000);
    return days.value_or(0);
}

Evaluated<double> Date_Of_Text(const Variant& value)
{
    const auto text = To_Text(value);
    if (!text) return Fails(text.error());
    return Date_From_Text(*text, This_Year());
}

} // namespace

double Days_From(const QDateTime& moment)
{
    return Days_Of(moment);
}

Error_Number Run_Now(Library_Context& context, Arguments, Variant& result)
{
    return Yield(result, Date_Value{Days_Of(context.services.Now())});
}

Error_Number Run_Date(Library_Context& context, Arguments, Variant& result)
{
    return Yield(result, Date_Value{std::trunc(Days_Of(context.services.Now()))});
}

Error_Number Run_Time(Library_Context& context, Arguments, Variant& result)
{
    const auto seconds = context.services.Now().time().msecsSinceStartOfDay() / 1000;
    return Yield(result, Date_Value{seconds / 86400.0});
}

Error_Number Run_Timer(Library_Context& context, Arguments, Variant& result)
{
    return Yield(result, float(context.services.Now().time().msecsSinceStartOfDay() / 1000.0));
}

Error_Number Run_DateAdd(Library_Context&, Arguments arguments, Variant& result)
{
    const auto interval = Interval_At(arguments, 0);
    FORMULA_CHECK(interval);
    const auto count = To_Long(arguments[1]);
    FORMULA_CHECK(count);
    if (arguments[2].Is_Null()) return Yield_Null(result);
    const auto date = To_Date(arguments[2]);
    FORMULA_CHECK(date);
    const auto sum = Added(*interval, *count, *date);
    FORMULA_CHECK(sum);
    return Yield(result, Date_Value{*sum});
}

Error_Number Run_DateDiff(Library_Context&, Arguments arguments, Variant& result)
{
    const auto interval = Interval_At(arguments, 0);
    FORMULA_CHECK(interval);
    const auto rule = Week_Rule_At(arguments, 3);
    FORMULA_CHECK(rule);
    if (arguments[1].Is_Null() || arguments[2].Is_Null()) return Yield_Null(result);
    const auto from = To_Date(arguments[1]), to = To_Date(arguments[2]);
    FORMULA_CHECK(from);
    FORMULA_CHECK(to);
    const auto span = Span(*interval, *from, *to, *rule);
    if (span != std::int32_t(span)) return Error_Number::Overflow;
    return Yield(result, std::int32_t(span));
}

Error_Number Run_DatePart(Library_Context&, Arguments arguments, Variant& result)
{
    const auto interval = Interval_At(arguments, 0);
    FORMULA_CHECK(interval);
    const auto rule = Week_Rule_At(arguments, 2);
    FORMULA_CHECK(rule);
    if (arguments[1].Is_Null()) return Yield_Null(result);
    const auto date = To_Date(arguments[1]);
    FORMULA_CHECK(date);
    return Yield(result, std::int16_t(Part_Of(*interval, *date, *rule)));
}

// Months and days may lie outside their usual range and carry over; years of up to two digits get their century.
Error_Number Run_DateSerial(Library_Context&, Arguments arguments, Variant& result)
{
    const auto year = To_Integer(arguments[0]), month = To_Integer(arguments[1]), day = To_Integer(arguments[2]);
    FORMULA_CHECK(year);
    FORMULA_CHECK(month);
    FORMULA_CHECK(day);
    const auto number = Day_Number(*year >= 0 && *year < 100 ? Full_Year(*year) : *year, *month, *day);
    FORMULA_CHECK(number);
    return Yield(result, Date_Value{double(*number)});
}

Error_Number Run_TimeSerial(Library_Context&, Arguments arguments, Variant& result)
{
    const auto hour = To_Integer(arguments[0]), minute = To_Integer(arguments[1]), second = To_Integer(arguments[2]);
    FORMULA_CHECK(hour);
    FORMULA_CHECK(minute);
    FORMULA_CHECK(second);
    return Yield(result, Date_Value{(*hour * 3600.0 + *minute * 60.0 + *second) / 86400.0});
}

Error_Number Run_DateValue(Library_Context&, Arguments arguments, Variant& result)
{
    const auto date = Date_Of_Text(arguments[0]);
    FORMULA_CHECK(date);
    return Yield(result, Date_Value{std::trunc(*date)});
}

Error_Number Run_TimeValue(Library_Context&, Arguments arguments, Variant& result)
{
    const auto date = Date_Of_Text(arguments[0]);
    FORMULA_CHECK(date);
    return Yield(result, Date_Value{std::fabs(*date - std::trunc(*date))});
}

Error_Number Run_MonthName(Library_Context&, Arguments arguments, Variant& result)
{
    const auto month = Long_At(arguments, 0);
    FORMULA_CHECK(month);
    const auto is_short = Boolean_At(arguments, 1, false);
    FORMULA_CHECK(is_short);
    if (*month < 1 || *month > 12) return Error_Number::Invalid_Call;
    const auto name = QString::fromLatin1(Month_Names[*month - 1]);
    return Yield(result, *is_short ? name.left(3) : name);
}

Error_Number Run_WeekdayName(Library_Context&, Arguments arguments, Variant& result)
{
    const auto day = Long_At(arguments, 0);
    FORMULA_CHECK(day);
    const auto is_short = Boolean_At(arguments, 1, false);
    FORMULA_CHECK(is_short);
    const auto rule = Week_Rule_At(arguments, 2);
    FORMULA_CHECK(rule);
    if (*day < 1 || *day > 7) return Error_Number::Invalid_Call;
    const auto name = QString::fromLatin1(Day_Names[(*day - 1 + rule->first_day - 1) % 7]);
    return Yield(result, *is_short ? name.left(3) : name);
}

Error_Number Take_Date_Part(Variant& value, Date_Part part)
{
    if (value.Is_Null()) return Error_Number::None;
    const auto date = To_Date(value);
    FORMULA_CHECK(date);
    const auto parts = Parts_Of(*date);
    const int values[] = {parts.year, parts.month, parts.day, parts.hour, parts.minute, parts.second, parts.weekday};
    return Yield(value, std::int16_t(values[int(part)]));
}

} // namespace Formula
