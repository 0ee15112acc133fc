#include "imaging/Map_Utilities.h"

#include <gtest/gtest.h>

namespace {

Tone_Table Table_Of(const Map_Stack& stack, int component, int second = 0)
{
    Tone_Table table;
    stack.Build_Map_Table(stack.Current_Index(), component, second, table);
    return table;
}

TEST(New_Curve, Is_The_Diagonal_Of_Four_Points)
{
    Map_Stack stack;
    EXPECT_EQ(stack.Current().Luminance_Points.size(), 4U);
    EXPECT_EQ(stack.Current().Last_Point, -1);
    Tone_Table identity;
    Build_Identity_Table(identity);
    for (const int component : {8, 7, 1, 2, 4}) EXPECT_EQ(Table_Of(stack, component, 7), identity);
    EXPECT_EQ(Table_Of(stack, 99), identity);
}

TEST(Map_States, A_New_One_Takes_The_Curves_Along_But_Not_The_Sampled_Points)
{
    Map_Stack stack;
    stack.Add_Map_Point(100);
    stack.Add_Map_Point(150);
    stack.Add_Map_State();
    EXPECT_EQ(stack.Current().Last_Point, -1);
    EXPECT_EQ(stack.Current().Previous_Point, -1);
    EXPECT_EQ(stack.Current().Luminance_Points.size(), 6U);
}

TEST(Map_States, Undo_And_Redo_Move_The_Index_Only)
{
    Map_Stack stack;
    stack.Add_Map_Point(100);
    stack.Add_Map_State();
    stack.Add_Map_Point(50);
    stack.Undo_Map_State();
    EXPECT_EQ(stack.Current().Luminance_Points.size(), 5U);
    stack.Undo_Map_State();
    EXPECT_EQ(stack.Current_Index(), 1);
    stack.Redo_Map_State();
    EXPECT_EQ(stack.Current().Luminance_Points.size(), 6U);
    stack.Redo_Map_State();
    EXPECT_EQ(stack.Current_Index(), 2);
}

TEST(Map_States, A_New_One_Ends_The_Redo_History)
{
    Map_Stack stack;
    stack.Add_Map_State();
    stack.Add_Map_State();
    stack.Undo_Map_State();
    stack.Undo_Map_State();
    stack.Add_Map_State();
    EXPECT_EQ(stack.Top_Index(), 2);
}

TEST(Map_States, Grow_By_Nine)
{
    Map_Stack stack;
    for (int i = 2; i <= 11; ++i) stack.Add_Map_State();
    EXPECT_EQ(stack.Upper_Bound(), 20);
}

TEST(End_Points, Go_To_The_Curves_Of_Their_Number)
{
    Map_Stack stack;
    stack.Set_End_Points(1, 200, 100, 50);
    EXPECT_EQ(int(stack.Current().Luminance_Points[1].x), 124) << "0.3 x 200 + 0.59 x 100 + 0.11 x 50, not quite 125";
    stack.Set_End_Points(6, 250, 251, 252);
    EXPECT_EQ(stack.Current().Luminance_Points[2], (Map_Point{251, 255}));
    stack.Set_End_Points(2, 1, 2, 3);
    stack.Set_End_Points(7, 251, 252, 253);
    EXPECT_EQ(stack.Current().Red_Points[1], (Map_Point{1, 0}));
    EXPECT_EQ(stack.Current().Green_Points[1], (Map_Point{2, 0}));
    EXPECT_EQ(stack.Current().Blue_Points[1], (Map_Point{3, 0}));
    EXPECT_EQ(stack.Current().Blue_Points[2], (Map_Point{253, 255}));
    stack.Set_End_Points(3, 9, 8, 7);
    stack.Set_End_Points(9, 200, 201, 202);
    stack.Set_End_Points(5, 9, 8, 7);
    EXPECT_EQ(int(stack.Current().Red_Points[1].x), 9);
    EXPECT_EQ(int(stack.Current().Green_Points[1].x), 2);
    EXPECT_EQ(int(stack.Current().Green_Points[2].x), 201);
    EXPECT_EQ(int(stack.Current().Blue_Points[1].x), 7);
    EXPECT_EQ(stack.Current().RGB_Points, Diagonal_Curve());
    const Map_Record before = stack.Current();
    stack.Set_End_Points(0, 1, 1, 1);
    stack.Set_End_Points(11, 1, 1, 1);
    EXPECT_EQ(stack.Current(), before);
}

TEST(End_Points, Bound_The_Table)
{
    Map_Stack stack;
    stack.Set_End_Points(1, 51, 51, 51);
    stack.Set_End_Points(6, 204, 204, 204);
    const Tone_Table table = Table_Of(stack, 8);
    EXPECT_EQ(table[51], 0);
    EXPECT_EQ(table[20], 0);
    EXPECT_EQ(table[204], 255);
    EXPECT_EQ(table[102], 85);
}

TEST(Map_Points, Are_Inserted_In_Order_On_The_Curve)
{
    Map_Stack stack;
    stack.Current().Active_Component = 1;
    stack.Add_Map_Point(200);
    EXPECT_EQ(stack.Current().Last_Point, 3);
    EXPECT_EQ(stack.Current().Previous_Point, -1);
    stack.Add_Map_Point(100);
    EXPECT_EQ(stack.Current().Previous_Point, 3);
    EXPECT_EQ(stack.Current().Last_Point, 4) << "the first point moved up";
    const Map_Curve expected = {{0, 0}, {0, 0}, {100, 100}, {200, 200}, {255, 255}, {255, 255}};
    EXPECT_EQ(stack.Current().Red_Points, expected);
}

TEST(Map_Points, A_Third_Takes_The_Place_Of_The_Last_And_The_Previous_One_Moves_Up)
{
    Map_Stack stack;
    for (const int x : {200, 150, 100}) stack.Add_Map_Point(x);
    EXPECT_EQ(stack.Current().Last_Point, 3);
    EXPECT_EQ(stack.Current().Previous_Point, 4);
    EXPECT_EQ(stack.Current().Luminance_Points[3], (Map_Point{150, 150}));
}

TEST(Map_Points, At_An_Interior_X_Or_Outside_Change_Nothing)
{
    Map_Stack stack;
    stack.Add_Map_Point(100);
    const Map_Record before = stack.Current();
    stack.Add_Map_Point(100);
    stack.Add_Map_Point(-1);
    stack.Add_Map_Point(256);
    EXPECT_EQ(stack.Current(), before);
}

TEST(Map_Table, Composes_Two_Curves)
{
    Map_Stack stack;
    stack.Current().Red_Points = {{0, 0}, {0, 0}, {100, 50}, {255, 255}, {255, 255}};
    stack.Current().RGB_Points = {{0, 0}, {0, 0}, {50, 200}, {255, 255}, {255, 255}};
    EXPECT_EQ(Table_Of(stack, 1)[100], 50);
    EXPECT_EQ(Table_Of(stack, 1, 7)[100], 200);
    EXPECT_EQ(Table_Of(stack, 7, 1)[50], Table_Of(stack, 1)[200]);
}

TEST(Map_Table, Ends_At_The_Levels_Of_The_Anchors)
{
    Map_Stack stack;
    stack.Current().Red_Points = {{10, 20}, {50, 60}, {200, 190}, {240, 230}};
    const Tone_Table table = Table_Of(stack, 1);
    for (const auto& [level, expected] : {std::pair{0, 20}, {10, 20}, {30, 40}, {240, 230}, {255, 230}})
        EXPECT_EQ(table[std::size_t(level)], expected) << level;
}

TEST(Map_Table, Rounds_Half_To_Even)
{
    Map_Stack stack;
    stack.Current().Red_Points = {{0, 0}, {0, 0}, {254, 127}, {255, 255}, {255, 255}};
    EXPECT_EQ(Table_Of(stack, 1)[1], 0);
    EXPECT_EQ(Table_Of(stack, 1)[3], 2);
}

TEST(Polyline, Is_The_Point_List_When_Not_Smooth)
{
    const Map_Curve points = {{0, 0}, {5, 0}, {100, 9}, {250, 255}, {255, 255}};
    EXPECT_EQ(Curve_Polyline(points, false).size(), 5U);
    EXPECT_EQ(Curve_Polyline(points, false)[2], (Curve_Point{100, 9}));
}

TEST(Smooth_Polyline, Of_Four_Points_Has_Them_All)
{
    EXPECT_EQ(Curve_Polyline(Diagonal_Curve(), true).size(), 4U);
}

TEST(Smooth_Polyline, Of_Six_Points_Follows_One_Bezier)
{
    const Map_Curve points = {{0, 0}, {10, 0}, {80, 60}, {160, 200}, {250, 255}, {255, 255}};
    const auto polyline = Curve_Polyline(points, true);
    ASSERT_EQ(polyline.size(), 2U + 64U + 1U);
    EXPECT_NEAR(polyline[65].x, 250, 0.01);
    EXPECT_NEAR(polyline[65].y, 255, 0.01);
    for (const auto& [x, y] : polyline) EXPECT_TRUE(x >= 0 && x <= 255 && y >= 0 && y <= 255);
}

TEST(Smooth_Polyline, That_Swings_Out_Is_Limited_To_The_Levels)
{
    const Map_Curve points = {{0, 0}, {0, 0}, {5, 250}, {250, 255}, {255, 0}, {255, 255}};
    bool swings = false;
    for (const auto& [x, y] : Curve_Polyline(points, true)) {
        EXPECT_TRUE(x >= 0 && x <= 255 && y >= 0 && y <= 255) << x << ", " << y;
        swings = swings || (y == 255 && x > 20 && x < 200);
    }
    EXPECT_TRUE(swings) << "the test shows nothing";
}

TEST(Smooth_Polyline, Of_Five_Or_Seven_Points_Loses_The_Inner_Ones)
{
    const Map_Curve five = {{0, 0}, {10, 0}, {80, 60}, {250, 255}, {255, 255}};
    const Map_Curve seven = {{0, 0}, {10, 0}, {80, 60}, {90, 70}, {99, 80}, {250, 255}, {255, 255}};
    for (const auto& points : {five, seven}) {
        const auto polyline = Curve_Polyline(points, true);
        EXPECT_EQ(polyline, (std::vector<Curve_Point>{{0, 0}, {10, 0}, {255, 255}}));
    }
}

TEST(Smooth_Table, Is_Used_After_Set_Map_Smooth)
{
    Map_Stack stack;
    stack.Current().Red_Points = {{0, 0}, {10, 0}, {80, 60}, {250, 255}, {255, 255}};
    const auto straight = Table_Of(stack, 1);
    stack.Set_Map_Smooth(true);
    EXPECT_NE(Table_Of(stack, 1), straight);
    stack.Set_Map_Smooth(false);
    EXPECT_EQ(Table_Of(stack, 1), straight);
}

} // namespace
