#include "frame/text/Date_Utilities.h"

#include <cmath>

namespace {

constexpr qint64 Milliseconds_A_Day = 86'400'000;

QDate Day_Zero()
{
    return QDate(1899, 12, 30);
}

constexpr const char16_t* Month_Names[] = {u"January", u"February", u"March",     u"April",   u"May",      u"June",
                                           u"July",    u"August",   u"September", u"October", u"November", u"December"};
constexpr const char16_t* Weekday_Names[] = {u"Sunday",   u"Monday", u"Tuesday", u"Wednesday",
                                             u"Thursday", u"Friday", u"Saturday"};

} // namespace

double Date_From_Date_Time(const QDateTime& date_time)
{
    if (!date_time.isValid()) return 0;
    const QDateTime local = date_time.toLocalTime();
    const auto days = double(Day_Zero().daysTo(local.date()));
    const double fraction = double(local.time().msecsSinceStartOfDay()) / double(Milliseconds_A_Day);
    return days < 0 ? days - fraction : days + fraction;
}

QDateTime Date_Time_From_Date(double date)
{
    constexpr double last_day = 2958465; // 31 December 9999
    if (!std::isfinite(date) || std::abs(date) > last_day) return {};
    const double days = std::trunc(date);
    auto milliseconds = std::llround(std::abs(date - days) * double(Milliseconds_A_Day));
    QDate day = Day_Zero().addDays(qint64(days));
    if (milliseconds >= Milliseconds_A_Day) {
        milliseconds -= Milliseconds_A_Day;
        day = day.addDays(1);
    }
    return QDateTime(day, QTime::fromMSecsSinceStartOfDay(int(milliseconds)));
}

int Pivot_Year(int current_year)
{
    int pivot = current_year - 50;
    while (pivot < 1930) pivot += 100;
    return pivot;
}

double Normalize_Date(double date, bool keep_time)
{
    const QDateTime now = QDateTime::currentDateTime();
    static const int pivot_year = Pivot_Year(now.date().year());
    return Normalize_Date_At(date, keep_time, now, pivot_year);
}

double Normalize_Date_At(double date, bool keep_time, const QDateTime& now, int pivot_year)
{
    if (date == Date_Of_Now) date = Date_From_Date_Time(now);
    const QDate day = Date_Time_From_Date(std::trunc(date)).date();
    if (day.isValid() && std::abs(day.year() - (pivot_year + 50)) > 50 && day.year() < pivot_year) {
        int year = day.year();
        while (year < pivot_year) year += 100;
        // 29 February moves on to 1 March where the new year has none.
        const QDate raised = QDate(year, day.month(), 1).addDays(day.day() - 1);
        const double fraction = std::abs(date - std::trunc(date));
        date = double(Day_Zero().daysTo(raised)) + fraction;
    }
    return keep_time ? date : std::trunc(date);
}

QString Medium_Date(const QDateTime& date_time)
{
    const QDate date = date_time.date();
    return QStringLiteral("%1-%2-%3")
        .arg(date.day(), 2, 10, QChar(u'0'))
        .arg(Short_Month_Name(date.month()))
        .arg(date.year() % 100, 2, 10, QChar(u'0'));
}

QString Medium_Time(const QDateTime& date_time)
{
    const QTime time = date_time.time();
    const int hour = time.hour() % 12;
    return QStringLiteral("%1:%2 %3")
        .arg(hour == 0 ? 12 : hour, 2, 10, QChar(u'0'))
        .arg(time.minute(), 2, 10, QChar(u'0'))
        .arg(time.hour() < 12 ? QStringLiteral("AM") : QStringLiteral("PM"));
}

QString Month_Name(int month)
{
    return month >= 1 && month <= 12 ? QString::fromUtf16(Month_Names[month - 1]) : QString();
}

QString Short_Month_Name(int month)
{
    return Month_Name(month).left(3);
}

QString Weekday_Name(int weekday)
{
    return weekday >= 1 && weekday <= 7 ? QString::fromUtf16(Weekday_Names[weekday - 1]) : QString();
}

QString Short_Weekday_Name(int weekday)
{
    return Weekday_Name(weekday).left(3);
}
