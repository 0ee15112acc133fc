#include "controls/Value_Format.h"

#include <QtCore/QDateTime>
#include <gtest/gtest.h>

namespace {

struct Format_Case {
    const char* name;
    QVariant value;
    const char* format;
    const char* expected;
};
class Value_Format : public testing::TestWithParam<Format_Case> {};

const QDateTime Pi_Day(QDate(2026, 3, 14), QTime(15, 9, 26));

INSTANTIATE_TEST_SUITE_P(
    All, Value_Format,
    testing::Values(Format_Case{"null_is_empty", QVariant(), "General Date", ""},
                    Format_Case{"general_date", Pi_Day, "General Date", "3/14/2026 3:09:26 PM"},
                    Format_Case{"general_date_at_midnight_is_the_day", QDateTime(QDate(2026, 3, 14), QTime(0, 0)),
                                "General Date", "3/14/2026"},
                    Format_Case{"general_date_on_day_zero_is_the_time", 0.5, "General Date", "12:00:00 PM"},
                    Format_Case{"short_date", Pi_Day, "short date", "3/14/2026"},
                    Format_Case{"medium_date", Pi_Day, "Medium Date", "14-Mar-26"},
                    Format_Case{"long_date", Pi_Day, "Long Date", "Saturday, March 14, 2026"},
                    Format_Case{"short_time", Pi_Day, "Short Time", "15:09"},
                    Format_Case{"kilobytes_are_grouped", 1234567, "#,##0\"KB\"", "1,234,567KB"},
                    Format_Case{"a_small_number_is_not_grouped", 12, "#,##0\"KB\"", "12KB"},
                    Format_Case{"zero_keeps_its_digit", 0, "#,##0\"KB\"", "0KB"},
                    Format_Case{"a_negative_number_has_its_sign_in_front", -1234.5, "#,##0.00", "-1,234.50"},
                    Format_Case{"what_rounds_to_zero_has_no_sign", -0.001, "0.00", "0.00"},
                    Format_Case{"percent_multiplies", 0.256, "0.0%", "25.6%"},
                    Format_Case{"a_quoted_percent_does_not", 25, "0\"%\"", "25%"},
                    Format_Case{"an_open_quote_runs_to_the_end", 5, "0\"KB", "5KB"},
                    Format_Case{"a_backslash_at_the_end_is_nothing", 5, "0\\", "5"},
                    Format_Case{"a_text_stays", "abc", "0.00", "abc"}, Format_Case{"yes_no", true, "Yes/No", "Yes"},
                    Format_Case{"plain_double", 0.1, "", "0.1"},
                    Format_Case{"standard", 1234.5, "Standard", "1,234.50"}),
    [](const auto& row) { return row.param.name; });

TEST_P(Value_Format, Gives_The_Text)
{
    EXPECT_EQ(GetParam().expected, Format_Value(GetParam().value, GetParam().format).toStdString());
}

} // namespace
