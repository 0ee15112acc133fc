#include "evaluate/variant/Dates.h"

#include <QtCore/QDate>
#include <cmath>

namespace Formula {

const char* const Month_Names[12] = {"January", "February", "March",     "April",   "May",      "June",
                                     "July",    "August",   "September", "October", "November", "December"};
const char* const Day_Names[7] = {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};

namespace {

constexpr std::int64_t Seconds_A_Day = 86400;
constexpr std::int64_t Days_In_400_Years = 146097;

// Days from 0000-03-01 (a year that begins in March has its leap day at the end) to the first of a month.
std::int64_t Days_Before_Month(std::int64_t year, int month)
{
    const auto y = month > 2 ? year : year - 1;
    const auto months = month > 2 ? month - 3 : month + 9;
    return y * 365 + Floor_Divide(y, 4) - Floor_Divide(y, 100) + Floor_Divide(y, 400) + (months * 153 + 2) / 5;
}

const std::int64_t Day_Zero = Days_Before_Month(1899, 12) + 29;

// The whole day and the second of the day, to the nearest second.
std::pair<std::int64_t, std::int64_t> Split(double days)
{
    const double whole = std::trunc(days);
    auto day = std::int64_t(whole);
    auto seconds = std::int64_t(std::floor(std::fabs(days - whole) * double(Seconds_A_Day) + 0.5));
    if (seconds == Seconds_A_Day) {
        seconds = 0;
        ++day;
    }
    if (double(day) >= End_Of_Dates) return {day - 1, Seconds_A_Day - 1};
    return {day, seconds};
}

void Set_Calendar_Day(Date_Parts& parts, std::int64_t day)
{
    const auto since_march = day + Day_Zero;
    auto era = Floor_Divide(since_march, Days_In_400_Years);
    auto rest = since_march - era * Days_In_400_Years;
    const auto century = std::min<std::int64_t>(rest / 36524, 3);
    rest -= century * 36524;
    const auto four = rest / 1461;
    rest -= four * 1461;
    const auto single = std::min<std::int64_t>(rest / 365, 3);
    rest -= single * 365;
    const auto month = (rest * 5 + 2) / 153;
    parts.day = int(rest - (month * 153 + 2) / 5 + 1);
    parts.month = int(month < 10 ? month + 3 : month - 9);
    parts.year = int(era * 400 + century * 100 + four * 4 + single + (month < 10 ? 0 : 1));
    parts.weekday = int(((day + 6) % 7 + 7) % 7 + 1);
}

} // namespace

bool Is_Date_In_Range(double days)
{
    return days > Minimum_Date - 1 && days < End_Of_Dates;
}

Date_Parts Parts_Of(double days)
{
    const auto [day, seconds] = Split(days);
    Date_Parts parts;
    Set_Calendar_Day(parts, day);
    parts.hour = int(seconds / 3600);
    parts.minute = int(seconds / 60 % 60);
    parts.second = int(seconds % 60);
    return parts;
}

Evaluated<std::int64_t> Day_Number(std::int64_t year, std::int64_t month, std::int64_t day)
{
    const auto years = Floor_Divide(month - 1, 12);
    year += years;
    if (year < -1'000'000 || year > 1'000'000) return Fails(Error_Number::Invalid_Call);
    const auto number = Days_Before_Month(year, int(month - years * 12)) + day - 1 - Day_Zero;
    if (double(number) < Minimum_Date || double(number) >= End_Of_Dates) return Fails(Error_Number::Invalid_Call);
    return number;
}

Evaluated<double> Date_From(std::int64_t day, std::int64_t seconds)
{
    const auto carried = Floor_Divide(seconds, Seconds_A_Day);
    const auto whole = double(day + carried);
    if (whole < Minimum_Date || whole >= End_Of_Dates) return Fails(Error_Number::Invalid_Call);
    const double fraction = double(seconds - carried * Seconds_A_Day) / double(Seconds_A_Day);
    return whole < 0 ? whole - fraction : whole + fraction;
}

std::int64_t Seconds_Of(double days)
{
    const auto [day, seconds] = Split(days);
    return day * Seconds_A_Day + seconds;
}

Evaluated<double> Date_From_Seconds(std::int64_t seconds)
{
    const auto day = Floor_Divide(seconds, Seconds_A_Day);
    return Date_From(day, seconds - day * Seconds_A_Day);
}

bool Is_Leap_Year(std::int64_t year)
{
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

int Days_In_Month(std::int64_t year, int month)
{
    constexpr int days[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && Is_Leap_Year(year) ? 29 : days[month - 1];
}

int Full_Year(int year)
{
    return year < 30 ? year + 2000 : year < 100 ? year + 1900 : year;
}

int This_Year()
{
    return QDate::currentDate().year();
}

} // namespace Formula
