#include "catalogue/Filmstrip_Layout.h"

#include <gtest/gtest.h>

namespace {

Filmstrip_Layout Strip(int count)
{
    Filmstrip_Layout strip;
    strip.Set_View(100, 3, 2);
    strip.Set_Count(count);
    return strip;
}

TEST(Filmstrip, Cells_Stand_In_Rows_With_Half_A_Gap_Around)
{
    EXPECT_EQ((Filmstrip_Layout::Place{50, 50}), Strip(9).Cell_Place(1));
    EXPECT_EQ((Filmstrip_Layout::Place{50 + 2 * 2020, 50}), Strip(9).Cell_Place(3));
    EXPECT_EQ((Filmstrip_Layout::Place{50, 50 + 2020}), Strip(9).Cell_Place(4));
}

TEST(Filmstrip, Scrolls_Only_When_There_Is_More_Than_Fits)
{
    EXPECT_EQ((Filmstrip_Layout::Scroll_Range{0, 1, 1}), Strip(6).Range());
    EXPECT_EQ((Filmstrip_Layout::Scroll_Range{2, 1, 1}), Strip(10).Range());
    Filmstrip_Layout strip = Strip(10);
    strip.Set_Top_Row(99);
    EXPECT_EQ(2, strip.Top_Row());
    strip.Set_Count(6);
    EXPECT_EQ(0, strip.Top_Row());
}

TEST(Filmstrip, A_Point_In_A_Gap_Or_Behind_The_Last_Picture_Is_A_Miss)
{
    Filmstrip_Layout strip = Strip(8);
    EXPECT_EQ(1, strip.Index_At(50, 50));
    EXPECT_EQ(1, strip.Index_At(1969, 1969));
    EXPECT_EQ(0, strip.Index_At(1970, 50));
    EXPECT_EQ(0, strip.Index_At(49, 50));
    strip.Set_Top_Row(1);
    EXPECT_EQ(8, strip.Index_At(50 + 2020, 50 + 2020));
    EXPECT_EQ(0, strip.Index_At(50 + 2 * 2020, 50 + 2020));
}

TEST(Filmstrip, Any_Picture_Scrolled_To_Is_On_View)
{
    for (int from = 0; from <= 5; ++from)
        for (int index = 1; index <= 20; ++index) {
            Filmstrip_Layout strip = Strip(20);
            strip.Set_Top_Row(from);
            strip.Scroll_To_Index(index);
            EXPECT_TRUE(strip.Is_On_View(index)) << index << " from row " << from;
        }
}

TEST(Filmstrip, A_Thumbnail_Fills_Its_Longer_Side_And_Is_Centred)
{
    EXPECT_EQ((Filmstrip_Layout::Fitted{0, 192, 1920, 1536}), Filmstrip_Layout::Fitted_Thumbnail(100, 80));
    EXPECT_EQ((Filmstrip_Layout::Fitted{480, 0, 960, 1920}), Filmstrip_Layout::Fitted_Thumbnail(50, 100));
}

} // namespace
