#pragma once

#include "evaluate/variant/Evaluate_Error.h"

#include <QtCore/QStringView>

/// The day scale: day 0 is 1899-12-30, the fraction is the time of day and counts forward on both sides of it, so -1.25
/// is 1899-12-29 06:00. Years 100 to 9999.
namespace Formula {

struct Date_Parts {
    int year = 1899, month = 12, day = 30; ///< month and day from 1
    int hour = 0, minute = 0, second = 0;
    int weekday = 7; ///< 1 is Sunday
};

inline constexpr double Minimum_Date = -657434.0; ///< 100-01-01
inline constexpr double End_Of_Dates = 2958466.0; ///< 10000-01-01, the first day outside

/// The quotient rounded down, also of a negative value. The divisor is positive.
constexpr std::int64_t Floor_Divide(std::int64_t value, std::int64_t by)
{
    return value >= 0 ? value / by : -((-value + by - 1) / by);
}

bool Is_Date_In_Range(double days);

/// The parts, to the nearest second. The date must be in range.
Date_Parts Parts_Of(double days);

/// The whole day of a date of the Gregorian calendar carried backwards. The month may be any number: 13 is January of
/// the next year; so may the day. 5 outside the years 100 to 9999.
Evaluated<std::int64_t> Day_Number(std::int64_t year, std::int64_t month, std::int64_t day);

/// A whole day and a time of day in seconds (any sign) on the day scale. 5 out of range.
Evaluated<double> Date_From(std::int64_t day, std::int64_t seconds);

/// Seconds since the beginning of day 0, and back: a straight line, unlike the day scale below 0.
std::int64_t Seconds_Of(double days);
Evaluated<double> Date_From_Seconds(std::int64_t seconds);

int Days_In_Month(std::int64_t year, int month);
bool Is_Leap_Year(std::int64_t year);

/// A year of one or two digits: 0 to 29 are 2000 to 2029, 30 to 99 are 1930 to 1999.
int Full_Year(int year);

/// Reads "1/2/2003", "2003-01-02", "2 Jan 2003", "January 2, 2003 3:04 PM", "3:04:05", "3 PM" and the like, English (US),
/// month first when both ways are possible. A date without a year is in `this_year`. 13 when it is none.
Evaluated<double> Date_From_Text(QStringView text, int this_year);
int This_Year(); ///< by the system's clock; dates without a year

extern const char* const Month_Names[12]; ///< English, full; the short forms are the first three letters
extern const char* const Day_Names[7];    ///< from Sunday on

} // namespace Formula
