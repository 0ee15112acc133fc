#include "frame/text/Number_Text.h"

#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <tuple>

namespace {

struct Format_Case {
    double value;
    const char* format;
    const char* text;
};

class Number_Format : public testing::TestWithParam<Format_Case> {};

TEST_P(Number_Format, Gives_The_Text)
{
    const auto& row = GetParam();
    EXPECT_EQ(Format_Number(row.value, QString::fromLatin1(row.format)).toStdString(), row.text);
}

INSTANTIATE_TEST_SUITE_P(All, Number_Format,
                         testing::Values(Format_Case{0.004, "0.0##", "0.004"}, Format_Case{2, "0.0##", "2.0"},
                                         Format_Case{0.0166667, "0.0##", "0.017"}, Format_Case{5.6, "#0.0", "5.6"},
                                         Format_Case{0, "#0.0", "0.0"}, Format_Case{-0.34, "#0.0", "-0.3"},
                                         Format_Case{-0.04, "#0.0", "0.0"}, Format_Case{0.25, "#0.0", "0.3"},
                                         Format_Case{9.96, "#0.0", "10.0"}, Format_Case{12.345, "###0.00", "12.35"},
                                         Format_Case{1.5, "0", "2"}, Format_Case{7, "00", "07"},
                                         Format_Case{0.5, "#.0", ".5"}, Format_Case{3, "0.##", "3."},
                                         Format_Case{1e21, "0", "1000000000000000000000"},
                                         Format_Case{std::numeric_limits<double>::infinity(), "0.0", "0.0"},
                                         Format_Case{std::numeric_limits<double>::quiet_NaN(), "0.0", "0.0"},
                                         Format_Case{std::numeric_limits<double>::denorm_min(), "0.0", "0.0"}));

TEST(Single_Format, Rounds_What_Stands_On_Paper)
{
    const std::tuple<float, const char*, const char*> rows[] = {
        {1.0F / 400, "0.0##", "0.003"}, {-0.65F, "#0.0", "-0.7"}, {0.35F, "#0.0", "0.4"},
        {1.005F, "###0.00", "1.01"},    {0.25F, "#0.0", "0.3"},   {16777216.0F, "0", "16777216"}};
    for (const auto& [value, format, text] : rows)
        EXPECT_EQ(Format_Number(value, QString::fromLatin1(format)).toStdString(), text);
}

TEST(Single_Text, Is_Short_And_Has_No_Exponent)
{
    const std::pair<float, const char*> rows[] = {{0.005F, "0.005"},
                                                  {1.0F, "1"},
                                                  {0.0F, "0"},
                                                  {-1.0F, "-1"},
                                                  {1.05F, "1.05"},
                                                  {0.1F, "0.1"},
                                                  {9.9F, "9.9"},
                                                  {100.0F, "100"},
                                                  {1e-6F, "0.000001"},
                                                  {1.0F / 3, "0.3333333"},
                                                  {-2147483648.0F, "-2147484000"},
                                                  {12345678.0F, "12345680"}};
    for (const auto& [value, text] : rows) EXPECT_EQ(Text_Of_Single(value).toStdString(), text);
}

TEST(Single_Text, Read_And_Written_Again_Is_The_Same_Text)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<float> numbers(-30, 300);
    for (int i = 0; i < 20000; ++i) {
        const QString text = Text_Of_Single(numbers(random));
        const auto read = Single_From_Text(text);
        ASSERT_TRUE(read) << text.toStdString();
        ASSERT_EQ(Text_Of_Single(*read), text) << text.toStdString();
    }
}

TEST(Number_From_Text, Refuses_What_Is_No_Number)
{
    for (const char* text : {"", "-", "+", ".", "1.2.3", "5-3", "+-1", "1e5", " 1", "1 ", "nan", "inf", "0x1"})
        EXPECT_FALSE(Single_From_Text(QString::fromLatin1(text))) << text;
    for (const char* text : {"", "1.5", "2147483648", "-2147483649", "--1"})
        EXPECT_FALSE(Long_From_Text(QString::fromLatin1(text))) << text;
    EXPECT_FALSE(Single_From_Text(QString(60, u'9')));
    EXPECT_FALSE(Double_From_Text(QString(5000, u'1')));
}

TEST(Number_From_Text, Takes_Signs_And_Bare_Points)
{
    EXPECT_EQ(Single_From_Text(QStringLiteral("+1.")), 1.0F);
    EXPECT_EQ(Single_From_Text(QStringLiteral("-.5")), -0.5F);
    EXPECT_EQ(Long_From_Text(QStringLiteral("-2147483648")), std::numeric_limits<int>::min());
    EXPECT_EQ(Long_From_Text(QStringLiteral("+007")), 7);
}

TEST(Rounding, Is_Half_To_Even_And_Limited)
{
    EXPECT_EQ(Round_Half_Even(127.5), 128);
    EXPECT_EQ(Round_Half_Even(128.5), 128);
    EXPECT_EQ(Round_Half_Even(-0.5), 0);
    EXPECT_EQ(Round_Half_Even(1e300), std::numeric_limits<int>::max());
    EXPECT_EQ(Round_Half_Even(-1e300), std::numeric_limits<int>::min());
    EXPECT_EQ(Round_Half_Even(std::numeric_limits<double>::quiet_NaN()), 0);
}

} // namespace
