#include "catalogue/Filmstrip_Layout.h"

#include <gtest/gtest.h>

namespace {

constexpr int Pitch = Filmstrip_Layout::Pitch;
constexpr int Half = Filmstrip_Layout::Thumbnail_Gap / 2;
constexpr int Side = Filmstrip_Layout::Cell_Side;

/// Three columns and two rows on view.
Filmstrip_Layout Strip(int count)
{
    Filmstrip_Layout strip;
    strip.Set_View_Size(3 * Pitch + 200, 2 * Pitch + 200);
    strip.Set_Count(count);
    return strip;
}

TEST(Filmstrip, Cells_Stand_In_Rows_With_Half_A_Gap_Around)
{
    EXPECT_EQ((Twips_Rectangle{Half, Half, Side, Side}), Strip(9).Cell(1));
    EXPECT_EQ((Twips_Rectangle{Half + 2 * Pitch, Half, Side, Side}), Strip(9).Cell(3));
    EXPECT_EQ((Twips_Rectangle{Half, Half + Pitch, Side, Side}), Strip(9).Cell(4));
}

TEST(Filmstrip, A_Frame_Begins_Three_Pixels_Outside_Its_Cell_And_Touches_No_Neighbour)
{
    const Twips_Rectangle frame = Strip(9).Frame(1);
    EXPECT_EQ((Twips_Rectangle{Half - 45, Half - 45, Side + 75, Side + 75}), frame);
    EXPECT_GE(frame.left, 0);
    EXPECT_LT(frame.left + frame.width, Strip(9).Frame(2).left);
}

TEST(Filmstrip, A_View_Smaller_Than_A_Cell_Still_Has_One_Column_And_One_Row)
{
    Filmstrip_Layout strip;
    strip.Set_View_Size(10, 0);
    strip.Set_Count(3);
    EXPECT_EQ(1, strip.Thumbnails_Per_Row());
    EXPECT_EQ(1, strip.Thumbnail_Rows());
    EXPECT_EQ(2, strip.Last_Top_Row());
}

TEST(Filmstrip, Scrolls_Only_When_There_Is_More_Than_Fits)
{
    EXPECT_EQ((Scroll_Range{0, 0, 1, 1, 0}), Strip(0).Range());
    EXPECT_EQ((Scroll_Range{0, 0, 1, 1, 0}), Strip(6).Range());
    EXPECT_EQ((Scroll_Range{0, 2, 1, 1, 0}), Strip(10).Range());
}

TEST(Filmstrip, The_Large_Change_Is_The_Visible_Rows_Less_One)
{
    Filmstrip_Layout strip = Strip(30);
    strip.Set_View_Size(3 * Pitch, 5 * Pitch);
    EXPECT_EQ(4, strip.Range().large_change);
    strip.Set_Count(15); // just fits
    EXPECT_EQ((Scroll_Range{0, 0, 1, 1, 0}), strip.Range());
}

TEST(Filmstrip, The_Top_Row_Is_Limited_Also_When_Pictures_Go)
{
    Filmstrip_Layout strip = Strip(10);
    strip.Set_Top_Row(99);
    EXPECT_EQ(2, strip.Top_Row());
    strip.Set_Top_Row(-1);
    EXPECT_EQ(0, strip.Top_Row());
    strip.Set_Top_Row(2);
    strip.Set_Count(6);
    EXPECT_EQ(0, strip.Top_Row());
}

TEST(Filmstrip, A_Point_In_A_Gap_Or_Behind_The_Last_Picture_Is_A_Miss)
{
    const Filmstrip_Layout strip = Strip(8);
    EXPECT_EQ(1, strip.Index_At(Half, Half));
    EXPECT_EQ(1, strip.Index_At(Half + Side - 1, Half + Side - 1));
    EXPECT_EQ(0, strip.Index_At(Half + Side, Half));
    EXPECT_EQ(0, strip.Index_At(Half - 1, Half));
    EXPECT_EQ(0, strip.Index_At(-1, Half));
    EXPECT_EQ(8, strip.Index_At(Half + Pitch, Half + 2 * Pitch));
    EXPECT_EQ(0, strip.Index_At(Half + 2 * Pitch, Half + 2 * Pitch));
    EXPECT_EQ(0, strip.Index_At(Half + 3 * Pitch, Half)); // right of the last column
}

TEST(Filmstrip, Any_Picture_Scrolled_To_Is_On_View)
{
    for (int from = 0; from <= 5; ++from)
        for (int index = 1; index <= 20; ++index) {
            Filmstrip_Layout strip = Strip(20);
            strip.Set_Top_Row(from);
            strip.Scroll_To_Index(index);
            EXPECT_TRUE(strip.On_View(index)) << index << " from row " << from;
        }
}

TEST(Filmstrip, Scrolling_To_A_Picture_On_View_Or_To_None_Moves_Nothing)
{
    Filmstrip_Layout strip = Strip(20);
    strip.Set_Top_Row(2);
    for (const int index : {7, 12, 0, 21, -3}) EXPECT_FALSE(strip.Scroll_To_Index(index)) << index;
    EXPECT_EQ(2, strip.Top_Row());
}

TEST(Filmstrip, The_Rows_That_A_Stripe_Touches_Are_Painted_And_No_Others)
{
    const Filmstrip_Layout strip = Strip(8);
    EXPECT_EQ(std::pair(1, 3), strip.Indices_Between(0, Pitch));
    EXPECT_EQ(std::pair(1, 6), strip.Indices_Between(Pitch - 1, 2));
    EXPECT_EQ(std::pair(7, 8), strip.Indices_Between(2 * Pitch, 9 * Pitch));
    for (const auto& [first, last] :
         {strip.Indices_Between(3 * Pitch, Pitch), strip.Indices_Between(0, 0), strip.Indices_Between(-50, 20)})
        EXPECT_GT(first, last);
}

TEST(Filmstrip, A_Thumbnail_Fills_Its_Longer_Side_And_Is_Centred)
{
    const Twips_Rectangle cell{0, 0, Side, Side};
    EXPECT_EQ((Twips_Rectangle{0, 192, 1920, 1536}), Filmstrip_Layout::Picture_Place(cell, 100, 80));
    EXPECT_EQ((Twips_Rectangle{480, 0, 960, 1920}), Filmstrip_Layout::Picture_Place(cell, 50, 100));
    EXPECT_EQ((Twips_Rectangle{0, 0, 1920, 1920}), Filmstrip_Layout::Picture_Place(cell, 7, 7));
    EXPECT_EQ(0, Filmstrip_Layout::Picture_Place(cell, 0, 7).width);
    EXPECT_EQ(1, Filmstrip_Layout::Picture_Place(cell, 100000, 1).height);
}

} // namespace
