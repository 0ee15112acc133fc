#include "evaluate/library/Weeks.h"

namespace Formula {

namespace {

int Weekday_In(int weekday, const Week_Rule& rule)
{
    return (weekday - rule.first_day + 7) % 7 + 1;
}

// The day of the year (from 1, may be below 1) on which the first week of a year begins.
int First_Week_Begin(int year, const Week_Rule& rule)
{
    const auto january = Day_Number(year, 1, 1);
    const int weekday = january ? Weekday_In(Parts_Of(double(*january)).weekday, rule) : 1;
    const int begin = 2 - weekday; // of the week that holds January 1
    if (rule.first_week == 2) return weekday <= 4 ? begin : begin + 7;
    if (rule.first_week == 3) return weekday == 1 ? begin : begin + 7;
    return begin;
}

} // namespace

Evaluated<Week_Rule> Week_Rule_At(Arguments arguments, std::size_t index)
{
    if (arguments.size() <= index) return Week_Rule();
    const auto day = Long_At(arguments, index, 1), week = Long_At(arguments, index + 1, 1);
    if (!day) return Fails(day.error());
    if (!week) return Fails(week.error());
    if (*day < 0 || *day > 7 || *week < 0 || *week > 3) return Fails(Error_Number::Invalid_Call);
    return Week_Rule{*day ? *day : 1, *week ? *week : 1};
}

int Day_Of_Year(const Date_Parts& parts)
{
    int day = parts.day;
    for (int month = 1; month < parts.month; ++month) day += Days_In_Month(parts.year, month);
    return day;
}

int Weekday_By(double days, const Week_Rule& rule)
{
    return Weekday_In(Parts_Of(days).weekday, rule);
}

int Week_Of_Year(double days, const Week_Rule& rule)
{
    const auto parts = Parts_Of(days);
    const int day = Day_Of_Year(parts), begin = First_Week_Begin(parts.year, rule);
    if (day < begin) { // still a week of the year before
        const int length = Is_Leap_Year(parts.year - 1) ? 366 : 365;
        return (day + length - First_Week_Begin(parts.year - 1, rule)) / 7 + 1;
    }
    const int length = Is_Leap_Year(parts.year) ? 366 : 365;
    const bool can_be_next = rule.first_week == 2; // only this rule takes days of December into the next year
    if (can_be_next && day >= First_Week_Begin(parts.year + 1, rule) + length) return 1;
    return (day - begin) / 7 + 1;
}

} // namespace Formula
