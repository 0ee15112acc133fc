#pragma once

#include <QtCore/QDateTime>
#include <QtCore/QString>

/// Dates are 64-bit floats in days of local time since 30 December 1899; the fraction is the time of day. Before that day
/// the whole part counts backwards and the fraction still runs forwards: -1.25 is 29 December 1899, 6 o'clock.

constexpr double Date_Of_Now = 2.0; ///< the day that stands for "now" in settings and ranges

/// An invalid date-time gives 0. Exact to the millisecond.
double Date_From_Date_Time(const QDateTime& date_time);
QDateTime Date_Time_From_Date(double date); ///< local time, rounded to the millisecond

/// The first year that a two-digit year may mean: 50 years ago, raised by 100 until it is at least 1930.
int Pivot_Year(int current_year);

/// The century guard for files with a two-digit year. Day 2 is the current time. A year more than 50 years away from
/// pivot + 50 and below the pivot is raised by 100 until it reaches the pivot. Without keep_time the time is cut off.
/// The pivot is fixed at the first call.
double Normalize_Date(double date, bool keep_time);
double Normalize_Date_At(double date, bool keep_time, const QDateTime& now, int pivot_year);

/// English, whatever the locale.
QString Medium_Date(const QDateTime& date_time); ///< dd-mmm-yy: "14-Mar-26"
QString Medium_Time(const QDateTime& date_time); ///< hh:nn AM/PM: "03:09 PM"
QString Short_Month_Name(int month);             ///< 1 to 12: "Jan"; empty otherwise
QString Month_Name(int month);
QString Short_Weekday_Name(int weekday); ///< 1 Sunday to 7 Saturday: "Sun"; empty otherwise
QString Weekday_Name(int weekday);
