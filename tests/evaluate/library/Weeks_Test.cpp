#include "evaluate/library/Weeks.h"

#include <QtCore/QDate>
#include <gtest/gtest.h>

using namespace Formula;

namespace {

QDate Begin_Of_Week(QDate day, int first_day)
{
    const int weekday = day.dayOfWeek() % 7 + 1; // 1 is Sunday
    return day.addDays(-((weekday - first_day + 7) % 7));
}

// Obviously right: which year a week belongs to is told by one of its days, the first week by one of January's.
int Week_Reference(QDate day, const Week_Rule& rule)
{
    const QDate begin = Begin_Of_Week(day, rule.first_day);
    const int year = rule.first_week == 1 ? day.year() : rule.first_week == 2 ? begin.addDays(3).year() : begin.year();
    const int told_by = rule.first_week == 1 ? 1 : rule.first_week == 2 ? 4 : 7;
    return int(Begin_Of_Week(QDate(year, 1, told_by), rule.first_day).daysTo(begin)) / 7 + 1;
}

} // namespace

TEST(Weeks, Agree_With_The_Calendar_On_Every_Day_By_Every_Rule)
{
    const QDate day_zero(1899, 12, 30);
    for (QDate day(1895, 1, 1); day.year() < 2025; day = day.addDays(day.month() > 1 && day.month() < 12 ? 17 : 1))
        for (int first_day = 1; first_day <= 7; ++first_day)
            for (int first_week = 1; first_week <= 3; ++first_week) {
                const Week_Rule rule{first_day, first_week};
                ASSERT_EQ(Week_Reference(day, rule), Week_Of_Year(double(day_zero.daysTo(day)), rule))
                    << day.toString(Qt::ISODate).toStdString() << " from day " << first_day << " by rule "
                    << first_week;
            }
}
