#include "tests/slides/Slide_Player_Fixture.h"

#include <limits>

namespace {

struct Milliseconds_Case {
    const char* name;
    float picture;
    float show;
    int expected;
};

class Slide_Time : public testing::TestWithParam<Milliseconds_Case> {};

INSTANTIATE_TEST_SUITE_P(All, Slide_Time,
                         testing::Values(Milliseconds_Case{"the_pictures_own", 4.5F, 2, 4500},
                                         Milliseconds_Case{"0_means_the_shows", 0, 3, 3000},
                                         Milliseconds_Case{"below_the_threshold_means_the_shows", 0.005F, 3, 3000},
                                         Milliseconds_Case{"the_threshold_itself_means_the_shows", 0.01F, 3, 3000},
                                         Milliseconds_Case{"just_above_the_threshold", 0.02F, 3, 20},
                                         Milliseconds_Case{"a_show_of_0_takes_the_programs_default", 0, 0, 2000},
                                         Milliseconds_Case{"a_show_below_0_takes_the_programs_default", 0, -5, 2000},
                                         Milliseconds_Case{"a_picture_below_0_means_the_shows", -1, 3, 3000},
                                         Milliseconds_Case{"never_below_a_millisecond", 0, 0.0001F, 1},
                                         Milliseconds_Case{"never_above_what_a_timer_takes", 1e30F, 2,
                                                           std::numeric_limits<int>::max()}),
                         [](const auto& row) { return row.param.name; });

TEST_P(Slide_Time, Is_In_Milliseconds)
{
    EXPECT_EQ(Slide_Milliseconds(GetParam().picture, GetParam().show), GetParam().expected);
}

TEST_F(Slide_Player_Test, An_Empty_List_Does_Nothing)
{
    player.Start_Slide_Show(true);
    EXPECT_FALSE(player.Is_Running());
    EXPECT_EQ(Last_Message(), Q("No pictures available."));
    EXPECT_TRUE(control.said.isEmpty());
    EXPECT_FALSE(window.look);
}

TEST_F(Slide_Player_Test, Without_A_Selection_All_Pictures_Are_The_Show)
{
    Add_Pictures(3);
    player.Start_Slide_Show(true);
    EXPECT_EQ(player.Slide_Indices(), (std::vector{1, 2, 3}));
    EXPECT_EQ(player.Slide_Show_Count(), 3);
    EXPECT_EQ(Shown(), 1);
    EXPECT_TRUE(window.look);
    EXPECT_EQ(control.said, Q("display 1/3 play;"));
    EXPECT_TRUE(Timer().on);
    EXPECT_EQ(Timer().interval, 2000);
}

TEST_F(Slide_Player_Test, Two_Selected_Are_The_Show_In_Their_Order)
{
    Add_Pictures(4);
    Select({4, 2});
    player.Start_Slide_Show(true);
    EXPECT_EQ(player.Slide_Indices(), (std::vector{4, 2}));
    EXPECT_EQ(Shown(), 4);
}

TEST_F(Slide_Player_Test, One_Selected_Is_The_First_Slide_Of_All)
{
    Add_Pictures(4);
    Select({3});
    player.Start_Slide_Show(true);
    EXPECT_EQ(player.Slide_Indices(), (std::vector{1, 2, 3, 4}));
    EXPECT_EQ(player.Slide_Index(), 3);
    EXPECT_EQ(Shown(), 3);
}

TEST_F(Slide_Player_Test, One_Selected_And_Locked_Is_No_First_Slide)
{
    Add_Pictures(3);
    Item(keys[1]).Lock_Flags = Hard_Lock_Mask;
    Select({2});
    player.Start_Slide_Show(true);
    EXPECT_EQ(player.Slide_Indices(), (std::vector{1, 3}));
    EXPECT_EQ(player.Slide_Index(), 1);
}

TEST_F(Slide_Player_Test, Not_In_Play_Mode_It_Starts_Paused)
{
    Add_Pictures(2);
    player.Start_Slide_Show(false);
    EXPECT_TRUE(player.Is_Paused());
    EXPECT_EQ(control.said, Q("display 1/2;"));
}

TEST_F(Slide_Player_Test, A_Second_Start_Leaves_The_Running_Show_Alone)
{
    Add_Pictures(2);
    player.Start_Slide_Show(true);
    Timer().Fire();
    player.Start_Slide_Show(true);
    EXPECT_EQ(player.Slide_Index(), 2);
}

TEST_F(Slide_Player_Test, Each_Tick_Shows_The_Next_For_Its_Own_Time)
{
    Add_Pictures(3);
    Item(keys[1]).Interval_In_Seconds = 4.5F;
    program.Slide_Display_Interval = 3;
    player.Start_Slide_Show(true);
    EXPECT_EQ(Timer().interval, 3000);
    Timer().Fire();
    EXPECT_EQ(Shown(), 2);
    EXPECT_EQ(Timer().interval, 4500);
    EXPECT_TRUE(control.said.endsWith(Q("index 2;")));
    Timer().Fire();
    EXPECT_EQ(Shown(), 3);
    EXPECT_EQ(Timer().interval, 3000);
}

TEST_F(Slide_Player_Test, The_Last_Slides_Time_Ends_The_Show)
{
    Add_Pictures(2);
    player.Start_Slide_Show(true);
    Timer().Fire();
    Timer().Fire();
    EXPECT_FALSE(player.Is_Running());
    EXPECT_FALSE(Timer().on);
    EXPECT_EQ(player.Slide_Show_Count(), 0);
    EXPECT_TRUE(control.said.endsWith(Q("erase;")));
    EXPECT_FALSE(window.look);
    EXPECT_EQ(Shown(), 2) << "the picture stays on view";
}

TEST_F(Slide_Player_Test, One_Slide_Ends_After_Its_Time)
{
    Add_Pictures(1);
    player.Start_Slide_Show(true);
    Timer().Fire();
    EXPECT_FALSE(player.Is_Running());
}

TEST_F(Slide_Player_Test, Continuous_Display_Begins_Again)
{
    Add_Pictures(2);
    player.Slide_Continuous = true;
    player.Start_Slide_Show(true);
    Timer().Fire();
    Timer().Fire();
    EXPECT_EQ(player.Slide_Index(), 1);
    EXPECT_TRUE(player.Is_Running());
}

TEST_F(Slide_Player_Test, Continuous_Display_Of_One_Picture_Keeps_Redrawing_It)
{
    Add_Pictures(1);
    player.Slide_Continuous = true;
    player.Start_Slide_Show(true);
    const int before = view.current_shown;
    Timer().Fire();
    Timer().Fire();
    EXPECT_EQ(view.current_shown, before + 2);
    EXPECT_EQ(Shown(), 1);
    EXPECT_TRUE(Timer().on);
}

TEST_F(Slide_Player_Test, A_Tick_During_A_Command_Waits_For_A_Later_One)
{
    Add_Pictures(2);
    player.Start_Slide_Show(true);
    window.busy = true;
    Timer().Fire();
    EXPECT_EQ(Shown(), 1);
    EXPECT_TRUE(Timer().on);
    window.busy = false;
    Timer().Fire();
    EXPECT_EQ(Shown(), 2);
}

TEST_F(Slide_Player_Test, Pause_Is_The_Timer_Being_Off_And_Again_Goes_On)
{
    Add_Pictures(3);
    player.Start_Slide_Show(true);
    Control(Slide_Control_Code::Pause);
    EXPECT_TRUE(player.Is_Paused());
    Timer().Fire();
    EXPECT_EQ(Shown(), 1);
    const int shown = view.current_shown;
    Control(Slide_Control_Code::Pause);
    EXPECT_FALSE(player.Is_Paused());
    EXPECT_EQ(view.current_shown, shown + 1) << "the slide is shown anew";
    EXPECT_EQ(control.said, Q("display 1/3 play;paused;playing;"));
}

TEST_F(Slide_Player_Test, Play_Arms_The_Timer_And_Shows_The_Slide)
{
    Add_Pictures(2);
    player.Start_Slide_Show(false);
    Control(Slide_Control_Code::Play);
    EXPECT_TRUE(Timer().on);
    EXPECT_EQ(Shown(), 1);
}

TEST_F(Slide_Player_Test, Next_And_Previous_Go_Round_Without_Arming)
{
    Add_Pictures(3);
    player.Start_Slide_Show(false);
    Control(Slide_Control_Code::Previous);
    EXPECT_EQ(Shown(), 3);
    Control(Slide_Control_Code::Next);
    EXPECT_EQ(Shown(), 1);
    Control(Slide_Control_Code::Next);
    EXPECT_EQ(Shown(), 2);
    EXPECT_TRUE(player.Is_Paused());
    EXPECT_TRUE(control.said.endsWith(Q("index 3;index 1;index 2;")));
}

TEST_F(Slide_Player_Test, Next_While_Playing_Leaves_The_Running_Time_Alone)
{
    Add_Pictures(3);
    Item(keys[1]).Interval_In_Seconds = 9;
    player.Start_Slide_Show(true);
    Control(Slide_Control_Code::Next);
    EXPECT_EQ(Shown(), 2);
    EXPECT_EQ(Timer().interval, 2000);
    EXPECT_TRUE(Timer().on);
}

TEST_F(Slide_Player_Test, Unknown_Codes_And_A_Stopped_Show_Do_Nothing)
{
    Add_Pictures(2);
    for (int code = -1; code <= 7; ++code) form.Slide_Show_Control(code, 1);
    EXPECT_FALSE(player.Is_Running());
    player.Start_Slide_Show(false);
    form.Slide_Show_Control(7, 1);
    form.Slide_Show_Control(-1, 1);
    EXPECT_EQ(Shown(), 1);
    EXPECT_TRUE(player.Is_Running());
}

TEST_F(Slide_Player_Test, Stop_Selects_What_Was_Shown_Last_And_Scrolls_To_It)
{
    Add_Pictures(3);
    Select({1, 3});
    player.Start_Slide_Show(true);
    Timer().Fire();
    const int drawn = view.all_drawn;
    const int status = view.status_updates;
    Control(Slide_Control_Code::Stop);
    EXPECT_EQ(Selected(), std::vector{3});
    EXPECT_EQ(view.scrolled_to, 3);
    EXPECT_GT(view.all_drawn, drawn);
    EXPECT_GT(view.status_updates, status);
}

TEST_F(Slide_Player_Test, Stop_Leaves_The_Full_Window_Before_It_Scrolls)
{
    Add_Pictures(2);
    player.Display_Full_Window = true;
    player.Start_Slide_Show(true);
    window.on_switch = [this] { EXPECT_EQ(view.scrolled_to, 0); };
    player.Stop_Slide_Show();
    EXPECT_EQ(view.scrolled_to, 1);
    EXPECT_FALSE(window.full);
}

TEST_F(Slide_Player_Test, A_Pick_Stops_The_Show_First)
{
    Add_Pictures(2);
    player.Start_Slide_Show(true);
    form.Pick_Files({}, true, false);
    EXPECT_FALSE(player.Is_Running());
    EXPECT_FALSE(Timer().on);
}

TEST_F(Slide_Player_Test, The_Full_Window_Follows_The_Check_And_Is_Left_At_The_Stop)
{
    Add_Pictures(2);
    window.full = true;
    player.Start_Slide_Show(false);
    EXPECT_FALSE(window.full) << "the check is off";
    player.Stop_Slide_Show();
    player.Display_Full_Window = true;
    player.Start_Slide_Show(false);
    EXPECT_TRUE(window.full);
    player.Stop_Slide_Show();
    EXPECT_FALSE(window.full);
}

TEST_F(Slide_Player_Test, The_Check_Counts_At_The_Start_Alone)
{
    Add_Pictures(2);
    player.Start_Slide_Show(false);
    player.Display_Full_Window = true;
    Control(Slide_Control_Code::Next);
    EXPECT_FALSE(window.full);
}

TEST_F(Slide_Player_Test, Without_Windows_It_Plays_All_The_Same)
{
    Add_Pictures(2);
    player.Set_Windows(nullptr, nullptr);
    player.Start_Slide_Show(true);
    Timer().Fire();
    EXPECT_EQ(Shown(), 2);
    player.Stop_Slide_Show();
}

} // namespace
