#include "controls/Split_Model.h"

#include <cmath>
#include <gtest/gtest.h>

namespace {

Split_Model Side_By_Side(int width)
{
    Split_Model split;
    split.Set_SplitterWidth(4);
    split.Set_Container({10, 20, width, 50});
    return split;
}

TEST(Split_Model, Puts_The_Splitter_At_Ratio_Times_The_Usable_Length)
{
    auto split = Side_By_Side(104);
    split.Set_SplitRatio(0.25);
    EXPECT_EQ((Split_Rectangle{10, 20, 25, 50}), split.Layout().first);
    EXPECT_EQ((Split_Rectangle{35, 20, 4, 50}), split.Layout().splitter);
    EXPECT_EQ((Split_Rectangle{39, 20, 75, 50}), split.Layout().second);
}

TEST(Split_Model, Stands_In_The_Middle_At_First_And_May_Go_Everywhere)
{
    const Split_Model split;
    EXPECT_EQ(Split_Orientation::Horizontal, split.Orientation());
    EXPECT_DOUBLE_EQ(0.5, split.SplitRatio());
    EXPECT_DOUBLE_EQ(0, split.MinSplitRatio());
    EXPECT_DOUBLE_EQ(1, split.MaxSplitRatio());
    EXPECT_EQ(5, split.SplitterWidth());
    EXPECT_TRUE(split.ResizeToAxisLT && split.ResizeToAxisRB && split.ResizeSplitterAxis);
}

TEST(Split_Model, A_Limit_Beyond_The_Other_Takes_It_Along)
{
    Split_Model split;
    split.Set_MaxSplitRatio(0.4);
    EXPECT_DOUBLE_EQ(0.4, split.SplitRatio());
    split.Set_MinSplitRatio(0.7);
    EXPECT_DOUBLE_EQ(0.7, split.MaxSplitRatio());
    EXPECT_DOUBLE_EQ(0.7, split.SplitRatio());
    split.Set_MaxSplitRatio(0.2);
    EXPECT_DOUBLE_EQ(0.2, split.MinSplitRatio());
}

TEST(Split_Model, Margins_Are_Taken_From_The_Area)
{
    auto split = Side_By_Side(104);
    split.Set_Margin(2);
    EXPECT_EQ((Split_Rectangle{12, 22, 48, 46}), split.Layout().first);
    EXPECT_EQ(96, split.Usable_Length());
}

TEST(Split_Model, Vertical_Splits_Stack_The_Controls)
{
    auto split = Side_By_Side(100);
    split.Set_Orientation(Split_Orientation::Vertical);
    EXPECT_EQ((Split_Rectangle{10, 20, 100, 23}), split.Layout().first);
    EXPECT_EQ((Split_Rectangle{10, 47, 100, 23}), split.Layout().second);
}

TEST(Split_Model, Computing_A_Ratio_Moves_Nothing_And_Knows_No_Limits)
{
    auto split = Side_By_Side(104);
    split.Set_MaxSplitRatio(0.6);
    EXPECT_DOUBLE_EQ(0.8, split.ComputeSplitRatio(30, 50));
    EXPECT_DOUBLE_EQ(-0.1, split.ComputeSplitRatio(-60, 50));
    EXPECT_DOUBLE_EQ(0.5, split.SplitRatio());
}

TEST(Split_Model, The_Unbound_Ratio_Skips_The_Limits)
{
    auto split = Side_By_Side(104);
    split.Set_MinSplitRatio(0.3);
    split.Set_SplitRatio(0.1);
    EXPECT_DOUBLE_EQ(0.3, split.SplitRatio());
    split.Set_SplitRatioUnbound(0.1);
    EXPECT_DOUBLE_EQ(0.1, split.SplitRatio());
    split.Set_SplitRatioUnbound(std::nan(""));
    split.Set_SplitRatio(std::nan(""));
    EXPECT_DOUBLE_EQ(0.1, split.SplitRatio());
}

struct Follow_Case {
    const char* name;
    bool first, second, splitter;
    int pixels; // of the first control after the usable length doubled from 100
};
class Split_Follow : public testing::TestWithParam<Follow_Case> {};
INSTANTIATE_TEST_SUITE_P(All, Split_Follow,
                         testing::Values(Follow_Case{"all_follow_and_the_ratio_stays", true, true, true, 50},
                                         Follow_Case{"the_first_keeps_its_pixels", false, true, true, 25},
                                         Follow_Case{"the_second_keeps_its_pixels", true, false, true, 125},
                                         Follow_Case{"the_splitter_keeps_its_place", true, true, false, 25}),
                         [](const auto& row) { return row.param.name; });

TEST_P(Split_Follow, When_The_Container_Grows)
{
    auto split = Side_By_Side(104);
    split.Set_SplitRatio(0.25);
    split.ResizeToAxisLT = GetParam().first;
    split.ResizeToAxisRB = GetParam().second;
    split.ResizeSplitterAxis = GetParam().splitter;
    split.Resize_Container({10, 20, 204, 50});
    EXPECT_EQ(GetParam().pixels, split.Pixels_LT());
}

TEST(Split_Model, An_Area_Smaller_Than_The_Splitter_Has_No_Negative_Sizes)
{
    auto split = Side_By_Side(3);
    EXPECT_EQ(0, split.Layout().first.width);
    EXPECT_EQ(0, split.Layout().second.width);
    EXPECT_DOUBLE_EQ(0.5, split.ComputeSplitRatio(10, 10));
}

} // namespace
