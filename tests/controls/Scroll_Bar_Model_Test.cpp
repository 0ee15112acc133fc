#include "controls/Scroll_Bar_Model.h"
#include "controls/Slider_Model.h"

#include <gtest/gtest.h>
#include <limits>
#include <vector>

namespace {

TEST(Scroll_Bar_Model, Runs_From_0_To_100_At_First)
{
    const Scroll_Bar_Model bar;
    EXPECT_EQ((std::vector<int>{0, 0, 100, 1, 10}),
              (std::vector<int>{bar.Value(), bar.Min(), bar.Max(), bar.SmallChange(), bar.LargeChange()}));
    EXPECT_EQ((std::vector<int>{0, 1, 4, 0, 0}), (std::vector<int>{bar.TickStyle, bar.TickFrequency, bar.TickSize,
                                                                   bar.SliderPointerSize, bar.ScrollBarStyle}));
    EXPECT_FALSE(bar.AcceptDragScrolling);
}

TEST(Scroll_Bar_Model, Steps_Are_At_Least_One)
{
    Scroll_Bar_Model bar;
    bar.Set_SmallChange(0);
    bar.Set_LargeChange(-5);
    EXPECT_EQ(1, bar.SmallChange());
    EXPECT_EQ(1, bar.LargeChange());
}

TEST(Scroll_Bar_Model, Keeps_The_Value_Between_Its_Ends)
{
    Scroll_Bar_Model bar;
    EXPECT_TRUE(bar.Set_Value(500));
    EXPECT_EQ(100, bar.Value());
    EXPECT_FALSE(bar.Set_Value(700));
    EXPECT_TRUE(bar.Set_Max(40));
    EXPECT_EQ(40, bar.Value());
}

TEST(Scroll_Bar_Model, Runs_The_Other_Way_When_Min_Is_Above_Max)
{
    Scroll_Bar_Model bar;
    bar.Set_Min(100);
    bar.Set_Max(0);
    bar.Set_Value(50);
    bar.Step(1, 0);
    EXPECT_EQ(49, bar.Value());
    EXPECT_EQ(0, bar.Position_Of(100, 101));
    EXPECT_EQ(75, bar.Value_At(25, 101));
}

TEST(Scroll_Bar_Model, Steps_Stop_At_The_Ends_Without_Overflow)
{
    Scroll_Bar_Model bar;
    bar.Set_Max(std::numeric_limits<int>::max());
    bar.Set_LargeChange(std::numeric_limits<int>::max());
    bar.Set_Value(std::numeric_limits<int>::max() - 1);
    bar.Step(0, 5);
    EXPECT_EQ(std::numeric_limits<int>::max(), bar.Value());
    bar.Step(0, -std::numeric_limits<int>::max());
    EXPECT_EQ(0, bar.Value());
}

TEST(Scroll_Bar_Model, Position_And_Value_Are_Each_Others_Reverse)
{
    Scroll_Bar_Model bar;
    for (int value = 0; value <= 100; ++value) EXPECT_EQ(value, bar.Value_At(bar.Position_Of(value, 301), 301));
    EXPECT_EQ(0, bar.Value_At(5, 1)) << "a track without length";
    EXPECT_EQ(100, bar.Value_At(9999, 301));
}

TEST(Scroll_Bar_Model, Counts_Ticks_With_Both_Ends)
{
    Scroll_Bar_Model bar;
    EXPECT_EQ(0, bar.Tick_Count());
    bar.TickStyle = 1;
    bar.TickFrequency = 10;
    EXPECT_EQ(11, bar.Tick_Count());
    bar.TickFrequency = 0;
    EXPECT_EQ(101, bar.Tick_Count());
}

TEST(Slider_Model, Shows_The_Text_And_The_Value_In_Its_Format)
{
    Slider_Model slider;
    slider.LegendText = "Opacity ";
    slider.LegendFormatString = "0\"%\"";
    slider.Value = 40;
    EXPECT_EQ("Opacity 40%", slider.Legend().toStdString());
    slider.LegendFormatString = "0.00";
    slider.Legend_Scale = 0.01;
    EXPECT_EQ("Opacity 0.40", slider.Legend().toStdString());
    slider.ShowLegend = false;
    EXPECT_EQ("", slider.Legend().toStdString());
}

} // namespace
