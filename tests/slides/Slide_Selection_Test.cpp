// Marks that are set during a show, and slides that leave it.

#include "tests/slides/Slide_Player_Fixture.h"

namespace {

TEST_F(Slide_Player_Test, Stop_Keeps_The_Marks_That_Were_Made)
{
    Add_Pictures(3);
    player.Start_Slide_Show(false);
    Control(Slide_Control_Code::Select);
    Control(Slide_Control_Code::Next);
    Control(Slide_Control_Code::Next);
    Control(Slide_Control_Code::Select);
    Control(Slide_Control_Code::Previous);
    Control(Slide_Control_Code::Stop);
    EXPECT_EQ(Selected(), (std::vector{1, 3}));
    EXPECT_EQ(view.scrolled_to, 0);
}

TEST_F(Slide_Player_Test, The_First_Mark_Of_A_Show_Empties_The_Selection_And_Its_Frames)
{
    Add_Pictures(3);
    Select({1, 2});
    player.Start_Slide_Show(false);
    Control(Slide_Control_Code::Select);
    EXPECT_EQ(view.frames, (QList<int>{-1, -2, 1}));
    EXPECT_EQ(Selected(), std::vector{1});
    EXPECT_TRUE(player.Slide_Selection_Made());
    Control(Slide_Control_Code::Select);
    EXPECT_EQ(view.frames.last(), -1) << "toggled";
    EXPECT_TRUE(Selected().empty());
    Control(Slide_Control_Code::Next);
    Control(Slide_Control_Code::Select);
    EXPECT_EQ(Selected(), std::vector{2});
    EXPECT_EQ(player.Slide_Indices(), (std::vector{1, 2})) << "the show goes on as it was";
}

TEST_F(Slide_Player_Test, Marks_In_The_Full_Window_Draw_No_Frames)
{
    Add_Pictures(2);
    Select({1, 2});
    player.Display_Full_Window = true;
    player.Start_Slide_Show(false);
    Control(Slide_Control_Code::Select);
    EXPECT_TRUE(view.frames.isEmpty());
    EXPECT_EQ(Selected(), std::vector{1});
}

TEST_F(Slide_Player_Test, Tells_Whether_A_Slide_Is_Selected)
{
    Add_Pictures(3);
    Select({2, 3});
    player.Start_Slide_Show(false);
    EXPECT_TRUE(form.Slide_Show_Test_Slide_Selected(1));
    EXPECT_FALSE(form.Slide_Show_Test_Slide_Selected(0));
    EXPECT_FALSE(form.Slide_Show_Test_Slide_Selected(3)) << "there is no third slide";
    Control(Slide_Control_Code::Select);
    EXPECT_TRUE(player.Slide_Show_Test_Slide_Selected(1));
    EXPECT_FALSE(player.Slide_Show_Test_Slide_Selected(2));
}

TEST_F(Slide_Player_Test, Remove_Takes_The_Slide_Out_Of_Show_And_Selection)
{
    Add_Pictures(4);
    Select({1, 3, 4});
    player.Start_Slide_Show(false);
    Control(Slide_Control_Code::Next);
    Control(Slide_Control_Code::Remove);
    EXPECT_EQ(player.Slide_Indices(), (std::vector{1, 4}));
    EXPECT_EQ(Selected(), (std::vector{1, 4}));
    EXPECT_EQ(Shown(), 4) << "the slide that followed";
    EXPECT_TRUE(control.said.contains(Q("count 2;")));
    Control(Slide_Control_Code::Remove);
    EXPECT_EQ(player.Slide_Indices(), std::vector{1});
    EXPECT_EQ(player.Slide_Index(), 1) << "behind the last comes the first";
    Control(Slide_Control_Code::Remove);
    EXPECT_EQ(player.Slide_Indices(), std::vector{1}) << "the last slide stays";
    EXPECT_EQ(Selected(), std::vector{1});
}

TEST_F(Slide_Player_Test, Remove_Does_Nothing_Once_Marks_Were_Made)
{
    Add_Pictures(3);
    player.Start_Slide_Show(false);
    Control(Slide_Control_Code::Select);
    Control(Slide_Control_Code::Remove);
    EXPECT_EQ(player.Slide_Show_Count(), 3);
}

TEST_F(Slide_Player_Test, Remove_In_A_Show_Of_All_Leaves_The_Others_In_It)
{
    Add_Pictures(3);
    Select({2});
    player.Start_Slide_Show(false);
    Control(Slide_Control_Code::Next);
    Control(Slide_Control_Code::Remove);
    EXPECT_EQ(player.Slide_Indices(), (std::vector{1, 2}));
    EXPECT_EQ(Selected(), std::vector{2});
    EXPECT_EQ(Shown(), 1);
}

TEST_F(Slide_Player_Test, Discarded_Pictures_Leave_The_Show)
{
    Add_Pictures(4);
    player.Start_Slide_Show(true);
    Timer().Fire(); // the second
    const int first[] = {1};
    form.Picking().Remove_Pictures(first);
    EXPECT_EQ(player.Slide_Show_Count(), 3);
    EXPECT_EQ(player.Slide_Index(), 1);
    EXPECT_EQ(Item(keys[1]).Picture_Key, form.State().current_picture_key);
    const int shown_and_next[] = {1, 2};
    form.Picking().Remove_Pictures(shown_and_next);
    EXPECT_EQ(player.Slide_Indices(), std::vector{1});
    EXPECT_EQ(keys[3], form.State().current_picture_key);
    EXPECT_TRUE(Timer().on) << "still playing";
    const int last[] = {1};
    form.Picking().Remove_Pictures(last);
    EXPECT_FALSE(player.Is_Running());
}

TEST_F(Slide_Player_Test, A_Discard_While_Paused_Stays_Paused)
{
    Add_Pictures(2);
    player.Start_Slide_Show(false);
    const int shown[] = {1};
    form.Picking().Remove_Pictures(shown);
    EXPECT_TRUE(player.Is_Paused());
    EXPECT_EQ(keys[1], form.State().current_picture_key);
}

} // namespace
