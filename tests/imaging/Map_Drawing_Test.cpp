#include "imaging/Map_Drawing.h"

#include "tests/imaging/Small_Pictures.h"

#include <gtest/gtest.h>
#include <numeric>

namespace {

// One unit a level: x = level + 5, y = 255 - level; bottom strip from y = 256.
class Map_Handles : public testing::Test {
protected:
    void SetUp() override
    {
        stack.Current().Active_Component = 1;
        stack.Current().Red_Points = {{0, 0}, {20, 0}, {100, 90}, {180, 200}, {240, 255}, {255, 255}};
    }
    Map_Point Point(std::size_t index) { return stack.Current().Red_Points[index - 1]; }
    int Selected() { return stack.Current().Selected_Handle; }

    Map_Stack stack;
    Map_View view{stack, {}};
};

TEST_F(Map_Handles, Are_Picked_In_The_Bottom_Strip_Within_Reach)
{
    view.Select_Map_Handle(5 + 22, 257);
    EXPECT_EQ(Selected(), Handle_Shadow);
    view.Select_Map_Handle(5 + 23, 257);
    EXPECT_EQ(Selected(), Handle_None);
    view.Select_Map_Handle(5 + 238, 260);
    EXPECT_EQ(Selected(), Handle_Highlight);
    view.Select_Map_Handle(5 + 238, 261);
    EXPECT_EQ(Selected(), Handle_None) << "below the strip";
}

TEST_F(Map_Handles, Are_Picked_In_The_Plot_By_X_And_At_The_Left_By_Y)
{
    view.Select_Map_Handle(5 + 139, 0);
    EXPECT_EQ(Selected(), Handle_Interior + 1);
    view.Select_Map_Handle(5 + 141, 255);
    EXPECT_EQ(Selected(), Handle_Interior + 2);
    view.Select_Map_Handle(2, 255 - 100);
    EXPECT_EQ(Selected(), Handle_Interior + 1);
    view.Select_Map_Handle(0, 255 - 190);
    EXPECT_EQ(Selected(), Handle_Interior + 2);
    view.Select_Map_Handle(-1, 255 - 190);
    EXPECT_EQ(Selected(), Handle_None) << "beside the strip";
}

TEST_F(Map_Handles, Without_Interior_Points_None_Is_Picked)
{
    stack.Current().Red_Points = Diagonal_Curve();
    view.Select_Map_Handle(100, 100);
    EXPECT_EQ(Selected(), Handle_None);
    EXPECT_FALSE(view.Drag_Map_Handle(100, 100));
}

TEST_F(Map_Handles, Bottom_Drag_Stays_Between_The_Neighbours)
{
    view.Select_Map_Handle(5 + 20, 257);
    EXPECT_TRUE(view.Drag_Map_Handle(5 + 60, 257));
    EXPECT_EQ(Point(2), (Map_Point{60, 0}));
    view.Drag_Map_Handle(5 + 200, 257);
    EXPECT_EQ(int(Point(2).x), 99);
    view.Drag_Map_Handle(0, 257);
    EXPECT_EQ(int(Point(2).x), 0) << "the anchor only bounds it";
    view.Select_Map_Handle(5 + 240, 257);
    view.Drag_Map_Handle(5 + 255, 257);
    EXPECT_EQ(int(Point(5).x), 255);
    view.Drag_Map_Handle(5, 257);
    EXPECT_EQ(int(Point(5).x), 181);
}

TEST_F(Map_Handles, Plot_Drag_Moves_Along_The_Curve)
{
    view.Select_Map_Handle(5 + 100, 100);
    const int level = stack.Active_Table()[140];
    EXPECT_TRUE(view.Drag_Map_Handle(5 + 140, 10));
    EXPECT_EQ(int(Point(3).x), 140);
    EXPECT_EQ(int(Point(3).y), level);
}

TEST_F(Map_Handles, Left_Drag_Changes_Y_Alone)
{
    view.Select_Map_Handle(2, 255 - 90);
    EXPECT_TRUE(view.Drag_Map_Handle(3, 255 - 7));
    EXPECT_EQ(Point(3), (Map_Point{100, 7}));
}

TEST_F(Map_Handles, A_Drag_In_Another_Part_Does_Nothing)
{
    view.Select_Map_Handle(5 + 100, 100);
    EXPECT_FALSE(view.Drag_Map_Handle(5 + 120, 257));
    EXPECT_FALSE(view.Drag_Map_Handle(2, 100));
    EXPECT_EQ(Point(3), (Map_Point{100, 90}));
}

TEST_F(Map_Handles, Neighbours_Without_Room_Hold_A_Point)
{
    stack.Current().Red_Points = {{0, 0}, {99, 0}, {100, 90}, {101, 200}, {255, 255}};
    view.Select_Map_Handle(5 + 100, 100);
    EXPECT_FALSE(view.Drag_Map_Handle(5 + 150, 100));
    EXPECT_EQ(int(Point(3).x), 100);
}

// ---- histogram ----

TEST(Histogram_Columns, Of_One_Unit_A_Level_Are_The_Bins)
{
    Histogram_Counts histogram;
    std::iota(histogram.begin(), histogram.end(), 1);
    const auto columns = Resample_Histogram(histogram, 256);
    ASSERT_EQ(columns.size(), 256U);
    for (std::size_t i = 0; i < 256; ++i) EXPECT_EQ(columns[i], histogram[i]);
}

TEST(Histogram_Columns, Share_Bins_By_Length)
{
    Histogram_Counts histogram;
    histogram.fill(1000);
    const auto columns = Resample_Histogram(histogram, 103); // 2.5 bins a column
    EXPECT_EQ(columns[0], 2500);
    EXPECT_EQ(columns[1], 2500);
    EXPECT_EQ(columns[102], 1000) << "the last begins at the last bin";
}

TEST(Histogram_Columns, Of_A_Tiny_Plot_Hold_Everything)
{
    Histogram_Counts histogram;
    histogram.fill(2);
    EXPECT_EQ(Resample_Histogram(histogram, 1), (std::vector<std::int64_t>{512}));
    EXPECT_EQ(Resample_Histogram(histogram, -3), (std::vector<std::int64_t>{512}));
}

TEST(Clip_Height, Cuts_Four_To_Six_Columns)
{
    std::vector<std::int64_t> columns;
    for (int i = 0; i < 200; ++i) columns.push_back(i * 10);
    const auto samples = std::accumulate(columns.begin(), columns.end(), std::int64_t(0));
    const auto height = Histogram_Clip_Height(columns, samples);
    const auto above = std::count_if(columns.begin(), columns.end(), [height](auto n) { return n > height; });
    EXPECT_GE(above, 4);
    EXPECT_LE(above, 6);
}

/// The height for `count` columns of 200 among many empty ones; 6400 samples, so that the search begins at 100.
std::int64_t Height_For(int count)
{
    std::vector<std::int64_t> columns(std::size_t(count), 200);
    columns.resize(250);
    return Histogram_Clip_Height(columns, 6400);
}

TEST(Clip_Height, Halves_Its_Step_From_A_128th_Of_The_Samples_Down_To_2)
{
    EXPECT_EQ(Height_For(3), 100 - 50 - 25 - 12 - 6 - 3);
    EXPECT_EQ(Height_For(4), 100);
    EXPECT_EQ(Height_For(6), 100);
    EXPECT_EQ(Height_For(7), 100 + 50 + 25 + 12 + 6 + 3);
    EXPECT_EQ(Histogram_Clip_Height(std::vector<std::int64_t>(5, 250), 6400), 100) << "a 64th is where it begins";
}

TEST(Clip_Height, Ends_When_No_Height_Will_Do)
{
    EXPECT_GE(Histogram_Clip_Height(std::vector<std::int64_t>(100, 5), 500), 0);
    EXPECT_EQ(Histogram_Clip_Height({}, 0), 0);
}

TEST(Colors, By_Component)
{
    EXPECT_EQ(Handle_Colors(8), (Map_Colors{0xFFFF80, 0x0000FF}));
    EXPECT_EQ(Handle_Colors(7), (Map_Colors{0xFFFF80, 0x0000FF}));
    EXPECT_EQ(Handle_Colors(1), (Map_Colors{0xFFFF80, 0xFF00FF}));
    EXPECT_EQ(Histogram_Colors(1), (Map_Colors{0xFF0000, 0x0000FF}));
    EXPECT_EQ(Histogram_Colors(2), (Map_Colors{0x0000FF, 0x00FF00}));
    EXPECT_EQ(Histogram_Colors(3), (Map_Colors{0x0000FF, 0x00FFFF}));
    EXPECT_EQ(Histogram_Colors(4), (Map_Colors{0x0000FF, 0xFF0000}));
    EXPECT_EQ(Histogram_Colors(5), (Map_Colors{0xFF0000, 0xFF00FF}));
    EXPECT_EQ(Histogram_Colors(6), (Map_Colors{0x0000FF, 0xFFFF00}));
    for (const int other : {0, 7, 8}) EXPECT_EQ(Histogram_Colors(other), (Map_Colors{0x0000FF, 0x808080})) << other;
}

struct Recording_Surface : Map_Surface {
    void Line(int x1, int y1, int x2, int y2, int color) override { lines.push_back({x1, y1, x2, y2, color}); }
    void Box(int x1, int y1, int x2, int y2, int color) override { boxes.push_back({x1, y1, x2, y2, color}); }
    void Point(int x, int y, int color) override { points.push_back({x, y, color}); }
    std::vector<std::array<int, 5>> lines, boxes;
    std::vector<std::array<int, 3>> points;
};

TEST_F(Map_Handles, Are_Drawn_Over_Ramp_And_Curve)
{
    view.Select_Map_Handle(5 + 100, 100);
    Recording_Surface surface;
    view.Draw_Map(surface);
    ASSERT_EQ(surface.lines.size(), 256U + 5U) << "the grey ramp, then five segments";
    EXPECT_EQ(surface.lines[0][4], 0x000000);
    EXPECT_EQ(surface.lines[255][4], 0xFFFFFF);
    EXPECT_EQ(surface.lines[256], (std::array{5, 255, 25, 255, 0}));
    ASSERT_EQ(surface.boxes.size(), 4U);
    EXPECT_EQ(surface.boxes[0][4], 0xFFFF80);
    EXPECT_EQ(surface.boxes[2][4], 0xFF00FF) << "the selected interior point";
    EXPECT_EQ(surface.boxes[3][4], 0xFFFF80);
}

TEST_F(Map_Handles, Stand_Before_The_Histogram_Whose_Cut_Columns_Have_A_Mark)
{
    // Of 256 samples one has the level 30: it reaches half the clip height of 2, the others are cut.
    const Owned_Bitmap picture(Drawn_Bitmap(16, 16, [](int x, int y) { return (x + y == 0 ? 30 : 100) << 16; }));
    view.Set_Geometry({.width = 257}); // a column a level
    ASSERT_TRUE(view.Set_Map_Histogram(picture.Get(), 1));
    EXPECT_EQ(view.Histogram_Clip_Count(), 2);
    Recording_Surface surface;
    view.Draw_Map(surface);
    EXPECT_EQ(surface.lines[0], (std::array{5 + 30, 255, 5 + 30, 255 - 128, 0x0000FF}));
    EXPECT_EQ(surface.lines[1], (std::array{5 + 100, 255, 5 + 100, 0, 0x0000FF}));
    EXPECT_EQ(surface.points, (std::vector<std::array<int, 3>>{{5 + 100, 0, 0xFF0000}}));
}

} // namespace
