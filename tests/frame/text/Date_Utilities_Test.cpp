#include "frame/text/Date_Utilities.h"

#include <gtest/gtest.h>

namespace {

QDateTime Moment(int year, int month, int day, int hour = 0, int minute = 0, int second = 0)
{
    return QDateTime(QDate(year, month, day), QTime(hour, minute, second));
}

TEST(Day_Scale, Counts_From_30_December_1899)
{
    EXPECT_EQ(Date_From_Date_Time(Moment(1899, 12, 30)), 0);
    EXPECT_EQ(Date_From_Date_Time(Moment(1900, 1, 1)), 2);
    EXPECT_EQ(Date_From_Date_Time(Moment(2026, 3, 14, 12)), 46095.5);
    EXPECT_EQ(Date_From_Date_Time(Moment(1899, 12, 29, 6)), -1.25);
    EXPECT_EQ(Date_From_Date_Time(QDateTime()), 0);
}

TEST(Day_Scale, Comes_Back_To_The_Millisecond)
{
    for (const QDateTime& moment : {Moment(2026, 3, 14, 15, 9, 26), Moment(1899, 12, 29, 6),
                                    Moment(1850, 2, 28, 23, 59, 59), Moment(9999, 12, 31)})
        EXPECT_EQ(Date_Time_From_Date(Date_From_Date_Time(moment)), moment);
    EXPECT_EQ(Date_Time_From_Date(0.9999999999), Moment(1899, 12, 31));
    EXPECT_FALSE(Date_Time_From_Date(1e300).isValid());
}

TEST(Pivot, Is_Fifty_Years_Ago_But_Not_Before_1930)
{
    EXPECT_EQ(Pivot_Year(2026), 1976);
    EXPECT_EQ(Pivot_Year(1980), 1930);
    EXPECT_EQ(Pivot_Year(1979), 2029);
}

struct Normal_Case {
    const char* name;
    QDateTime date;
    bool keep_time;
    QDateTime expected;
};

class Normal_Date : public testing::TestWithParam<Normal_Case> {};

TEST_P(Normal_Date, Is)
{
    const auto& row = GetParam();
    const QDateTime now = Moment(2026, 3, 14, 12);
    const double normal = Normalize_Date_At(Date_From_Date_Time(row.date), row.keep_time, now, 1976);
    EXPECT_EQ(Date_Time_From_Date(normal), row.expected) << normal;
}

INSTANTIATE_TEST_SUITE_P(
    All, Normal_Date,
    testing::Values(Normal_Case{"day_two_is_now", Moment(1900, 1, 1), true, Moment(2026, 3, 14, 12)},
                    Normal_Case{"now_without_time", Moment(1900, 1, 1), false, Moment(2026, 3, 14)},
                    Normal_Case{"last_century", Moment(1905, 5, 6, 7), true, Moment(2005, 5, 6, 7)},
                    Normal_Case{"just_below_the_pivot", Moment(1975, 12, 31), true, Moment(2075, 12, 31)},
                    Normal_Case{"the_pivot_stays", Moment(1976, 1, 1), true, Moment(1976, 1, 1)},
                    Normal_Case{"two_centuries", Moment(1850, 1, 1), true, Moment(2050, 1, 1)},
                    Normal_Case{"far_future_stays", Moment(2150, 1, 1), true, Moment(2150, 1, 1)},
                    Normal_Case{"leap_day_moves_on", Moment(1804, 2, 29), true, Moment(2004, 2, 29)},
                    Normal_Case{"time_is_cut_off", Moment(2020, 1, 2, 18), false, Moment(2020, 1, 2)}),
    [](const auto& row) { return row.param.name; });

TEST(Normal_Date_Of_Nonsense, Stays)
{
    EXPECT_EQ(Normalize_Date_At(1e18, true, Moment(2026, 1, 1), 1976), 1e18);
}

TEST(Labels, Are_English)
{
    EXPECT_EQ(Medium_Date(Moment(2026, 3, 4)), QStringLiteral("04-Mar-26"));
    EXPECT_EQ(Medium_Date(Moment(2005, 12, 31)), QStringLiteral("31-Dec-05"));
    EXPECT_EQ(Medium_Time(Moment(2026, 3, 4, 15, 9)), QStringLiteral("03:09 PM"));
    EXPECT_EQ(Medium_Time(Moment(2026, 3, 4, 0, 5)), QStringLiteral("12:05 AM"));
    EXPECT_EQ(Medium_Time(Moment(2026, 3, 4, 12, 0)), QStringLiteral("12:00 PM"));
    EXPECT_EQ(Short_Month_Name(9), QStringLiteral("Sep"));
    EXPECT_EQ(Weekday_Name(1), QStringLiteral("Sunday"));
    EXPECT_EQ(Short_Weekday_Name(7), QStringLiteral("Sat"));
    EXPECT_EQ(Month_Name(13), QString());
}

} // namespace
