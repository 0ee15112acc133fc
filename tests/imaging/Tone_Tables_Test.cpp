#include "imaging/Tone_Tables.h"

#include <cmath>
#include <gtest/gtest.h>

namespace {

Tone_Table Identity()
{
    Tone_Table table;
    Build_Identity_Table(table);
    return table;
}

TEST(Scale_Table, Rounds_Half_To_Even_In_Single_Precision)
{
    Tone_Table table;
    Build_Scale_Table(0.1F, table);
    EXPECT_EQ(table[5], 0) << "0.5 goes to the even 0";
    EXPECT_EQ(table[15], 2);
    EXPECT_EQ(table[255], 26) << "25.5 goes to the even 26";
    Build_Scale_Table(0.5F, table);
    EXPECT_EQ(table[255], 128) << "127.5";
    EXPECT_EQ(table[253], 126) << "126.5";
}

TEST(Scale_Table, Is_Limited)
{
    Tone_Table table;
    Build_Scale_Table(9.9F, table);
    for (std::size_t i = 26; i < 256; ++i) EXPECT_EQ(table[i], 255) << i;
    Build_Scale_Table(-2147483648.0F, table);
    for (const auto level : table) EXPECT_EQ(level, 0);
    Build_Scale_Table(1, table);
    EXPECT_EQ(table, Identity());
}

TEST(Gamma_Table, Of_One_Is_The_Identity)
{
    Tone_Table table;
    ASSERT_TRUE(Build_Black_Gamma_White_Table(0, 1, 255, table));
    EXPECT_EQ(table, Identity());
    ASSERT_TRUE(Build_Gamma_Table(1, table));
    EXPECT_EQ(table, Identity());
}

TEST(Gamma_Table, Agrees_With_The_Formula)
{
    for (const double gamma : {0.1, 0.45, 1.0, 1.8, 2.2, 9.9}) {
        Tone_Table table;
        ASSERT_TRUE(Build_Gamma_Table(gamma, table));
        for (int i = 0; i < 256; ++i)
            EXPECT_EQ(table[std::size_t(i)], int(std::nearbyint(std::pow(i / 255.0, 1 / gamma) * 255))) << gamma;
    }
}

TEST(Gamma_Table, Stretches_Between_Black_And_White)
{
    Tone_Table table;
    ASSERT_TRUE(Build_Black_Gamma_White_Table(10, 1, 245, table));
    EXPECT_EQ(table[10], 0);
    EXPECT_EQ(table[11], 1);
    EXPECT_EQ(table[244], 254);
    EXPECT_EQ(table[245], 255);
}

TEST(Gamma_Table, Black_Equal_To_White_Is_A_Step)
{
    Tone_Table table;
    ASSERT_TRUE(Build_Black_Gamma_White_Table(100, 2, 100, table));
    for (int i = 0; i < 256; ++i) EXPECT_EQ(table[std::size_t(i)], i <= 100 ? 0 : 255);
}

TEST(Gamma_Table, Of_Zero_Cannot_Be_Built)
{
    Tone_Table table = Identity();
    EXPECT_FALSE(Build_Gamma_Table(0, table));
    EXPECT_EQ(table, Identity());
}

TEST(Gamma_Table, Of_A_Damaged_Item_Is_Nearly_All_White)
{
    Tone_Table table;
    ASSERT_TRUE(Build_Black_Gamma_White_Table(-2147483647, 1, 255, table));
    for (const auto level : table) EXPECT_EQ(level, 255);
    ASSERT_TRUE(Build_Black_Gamma_White_Table(0, 1, -2147483647, table));
    EXPECT_EQ(table[0], 0);
    EXPECT_EQ(table[1], 255);
    ASSERT_TRUE(Build_Black_Gamma_White_Table(0, -2147483648.0, 255, table));
    EXPECT_EQ(table[0], 0);
    EXPECT_EQ(table[128], 255);
}

Histogram_Counts Counts(std::initializer_list<std::pair<int, int>> bins)
{
    Histogram_Counts histogram{};
    for (const auto& [level, count] : bins) histogram[std::size_t(level)] = count;
    return histogram;
}

TEST(Clip_Table, Stretches_What_Is_Left_After_The_Allowance)
{
    const auto histogram = Counts({{10, 5}, {50, 900}, {200, 90}, {240, 5}});
    Tone_Table table;
    ASSERT_TRUE(Build_Clip_Table(histogram, 1000, 0.005F, 0.005F, table));
    // The level where the next bin would exceed the allowance: 49 from below, 201 from above.
    EXPECT_EQ(table[48], 0);
    EXPECT_EQ(table[49], 0);
    EXPECT_EQ(table[201], 255);
    EXPECT_EQ(table[255], 255);
    EXPECT_EQ(table[125], (76 * 255 + 76) / 152);
}

TEST(Clip_Table, First_Bin_Above_The_Allowance_Stays)
{
    const auto range = Search_Clip_Range(Counts({{0, 100}, {255, 100}}), 200, 0.005F, 0.005F);
    EXPECT_EQ(range.in_low, 0);
    EXPECT_EQ(range.in_high, 255);
}

TEST(Clip_Table, Sides_Switched_Off_Do_Not_Move)
{
    Tone_Table table;
    ASSERT_TRUE(Build_Clip_Table(Counts({{20, 1}, {200, 1}}), 2, -1, -1, table));
    EXPECT_EQ(table[19], 0) << "below the low end nothing is written";
    for (int i = 20; i <= 200; ++i) EXPECT_EQ(table[std::size_t(i)], i);
}

TEST(Clip_Table, Pure_Black_Picture_Does_Not_Fail)
{
    Tone_Table table;
    ASSERT_TRUE(Build_Clip_Table(Counts({{0, 1000}}), 1000, 0.005F, 0.005F, table));
    const auto range = Search_Clip_Range(Counts({{0, 1000}}), 1000, 0.005F, 0.005F);
    EXPECT_EQ(range.in_low, 0);
    EXPECT_EQ(range.in_high, 1);
    EXPECT_EQ(table[0], 0);
    EXPECT_EQ(table[1], 255);
}

TEST(Clip_Table, One_Bin_With_Both_Sides_Off_Fails_Cleanly)
{
    Tone_Table table = Identity();
    EXPECT_FALSE(Build_Clip_Table(Counts({{77, 1000}}), 1000, -1, -1, table));
    EXPECT_EQ(table, Identity());
}

TEST(Clip_Table, Ends_That_Cross_Stay_Inside_The_Levels)
{
    Tone_Table table;
    Build_Clip_Table(Counts({{100, 10}, {101, 10}}), 20, 1, 1, table);
    for (const auto level : table) EXPECT_TRUE(level >= 0 && level <= 255);
}

TEST(Clip_Points, Are_The_Same_Search)
{
    int low = -1, high = -1;
    Find_Clip_Points(Counts({{30, 100}, {60, 100}}), 200, 0.05F, 0.05F, low, high);
    EXPECT_EQ(low, 29);
    EXPECT_EQ(high, 61);
    Find_Clip_Points(Counts({{30, 100}, {60, 100}}), 200, -1, -1, low, high);
    EXPECT_EQ(low, 30);
    EXPECT_EQ(high, 60);
    Find_Clip_Points({}, 0, -1, -1, low, high);
    EXPECT_EQ(low, 0);
    EXPECT_EQ(high, 255);
}

} // namespace
