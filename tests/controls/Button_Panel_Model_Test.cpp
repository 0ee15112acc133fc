#include "controls/Button_Panel_Model.h"
#include "tests/controls/Click.h"

#include <gtest/gtest.h>

namespace {

Button_Panel_Model Panel(int mode, int count = 5)
{
    Button_Panel_Model panel;
    panel.Set_ButtonMode(mode);
    for (int id = 1; id <= count; ++id) panel.Add_Button(id, QStringLiteral("button %1").arg(id));
    return panel;
}

struct Mode_Case {
    const char* name;
    int mode;
    std::vector<Click> presses;
    std::vector<int> down;
};
class Panel_Modes : public testing::TestWithParam<Mode_Case> {};

INSTANTIATE_TEST_SUITE_P(
    All, Panel_Modes,
    testing::Values(Mode_Case{"mode_0_keeps_no_state", 0, {{1}, {2}}, {}},
                    Mode_Case{"mode_1_turns_over", 1, {{1}, {3}, {1}}, {3}},
                    Mode_Case{"mode_2_a_second_click_releases", 2, {{1}, {3}, {3}}, {}},
                    Mode_Case{"mode_3_is_one_of_many", 3, {{1}, {3}, {3}}, {3}},
                    Mode_Case{"mode_5_changes_no_other_button", 5, {{1}, {3}, {4}, {3}}, {1, 4}},
                    Mode_Case{"mode_6_a_plain_click_is_the_only_one_down", 6, {{1}, {3}}, {3}},
                    Mode_Case{"mode_6_control_keeps_the_others", 6, {{1}, {3, Control}}, {1, 3}},
                    Mode_Case{"mode_6_control_releases", 6, {{1}, {3, Control}, {1, Control}}, {3}},
                    Mode_Case{"mode_6_shift_sets_anchor_to_clicked", 6, {{2}, {4, Shift}}, {2, 3, 4}},
                    Mode_Case{"mode_6_shift_runs_backwards_too", 6, {{4}, {2, Shift}}, {2, 3, 4}},
                    Mode_Case{"mode_6_shift_without_anchor_is_a_plain_click", 6, {{1}, {2, Control}, {5, Shift}}, {5}},
                    Mode_Case{"the_right_button_changes_no_state", 6, {{1}, {3, 0, Right}}, {1}},
                    Mode_Case{"an_unknown_id_changes_nothing", 6, {{1}, {77}}, {1}}),
    [](const auto& row) { return row.param.name; });

TEST_P(Panel_Modes, Decide_What_Is_Down)
{
    auto panel = Panel(GetParam().mode);
    for (const auto& press : GetParam().presses) panel.Press(press.button, press.shift, press.target);
    EXPECT_EQ(GetParam().down, panel.Get_Selected_ID_List());
}

TEST(Button_Panel_Model, The_Anchor_Is_The_Single_Button_That_Is_Down)
{
    auto panel = Panel(6);
    EXPECT_EQ(0, panel.Anchor());
    panel.Press(Left, 0, 2);
    EXPECT_EQ(2, panel.Anchor());
    panel.Press(Left, Control, 3);
    EXPECT_EQ(0, panel.Anchor());
}

TEST(Button_Panel_Model, Starts_With_The_Usual_Sizes)
{
    const Button_Panel_Model panel;
    const auto& p = panel.Properties;
    EXPECT_EQ((std::vector<int>{25, 25, 20, 20}),
              (std::vector<int>{p.ButtonWidth, p.ButtonHeight, p.ButtonPictureWidth, p.ButtonPictureHeight}));
    EXPECT_EQ((std::vector<int>{1, 1, 2, 2, 1, 1}),
              (std::vector<int>{p.HorizontalSpacing, p.VerticalSpacing, p.HorizontalSpacerWidth, p.VerticalSpacerHeight,
                                p.HorizontalOffset, p.VerticalOffset}));
    EXPECT_EQ((std::vector<bool>(5, false)), (std::vector<bool>{p.CenterButtonsHorizontal, p.CenterButtonsVertical,
                                                                p.AllowRearrange, p.StretchPictures, p.CropPictures}));
    EXPECT_EQ((std::vector<int>{0, 0, 0, 0}),
              (std::vector<int>{panel.DisplayStyle(), p.BorderStyle, int(panel.ButtonMode()), panel.ScrollState()}));
    EXPECT_EQ(255U, p.ButtonDropColor) << "red";
    EXPECT_EQ("", p.FrameCaption.toStdString());
}

TEST(Button_Panel_Model, In_Mode_4_Each_Group_Between_Spacers_Is_One_Of_Many)
{
    auto panel = Panel(4, 2);
    panel.Add_Spacer();
    for (const int id : {3, 4}) panel.Add_Button(id, QString());
    for (const int id : {1, 3, 4, 2}) panel.Press(Left, 0, id);
    EXPECT_EQ((std::vector<int>{2, 4}), panel.Get_Selected_ID_List());
    EXPECT_EQ(2, panel.Get_Selected_Button_ID()) << "the first of them";
}

TEST(Button_Panel_Model, The_Flat_Style_Forces_The_Stateless_Mode)
{
    auto panel = Panel(5);
    panel.Press(Left, 0, 1);
    panel.Set_DisplayStyle(2);
    EXPECT_EQ(Panel_Mode::Stateless, panel.ButtonMode());
    EXPECT_TRUE(panel.Get_Selected_ID_List().empty());
    panel.Set_ButtonMode(6);
    EXPECT_EQ(Panel_Mode::Stateless, panel.ButtonMode());
}

TEST(Button_Panel_Model, A_Click_Tells_Button_Shift_State_And_Id)
{
    auto panel = Panel(5);
    const auto click = panel.Press(Left, Shift, 4);
    EXPECT_EQ(1, click.Button);
    EXPECT_EQ(1, click.Shift);
    EXPECT_TRUE(click.State);
    EXPECT_EQ(4, click.Button_ID);
}

TEST(Button_Panel_Model, A_Disabled_Button_Takes_No_Click)
{
    auto panel = Panel(5);
    panel.Set_Enabled(2, false);
    EXPECT_EQ(0, panel.Press(Left, 0, 2).Button_ID);
    EXPECT_FALSE(panel.ButtonState(2));
}

TEST(Button_Panel_Model, A_Range_Holds_Every_Button_In_It_The_Disabled_Too)
{
    auto panel = Panel(6);
    panel.Set_Enabled(3, false);
    panel.Press(Left, 0, 2);
    panel.Press(Left, Shift, 4);
    EXPECT_EQ((std::vector<int>{2, 3, 4}), panel.Get_Selected_ID_List());
}

TEST(Button_Panel_Model, Ids_Are_Unique)
{
    auto panel = Panel(0);
    EXPECT_FALSE(panel.Add_Button(3, "again"));
    EXPECT_FALSE(panel.ButtonID(1, 3));
    EXPECT_TRUE(panel.ButtonID(1, 19));
    EXPECT_EQ((std::vector<int>{19, 2, 3, 4, 5}), panel.Get_ID_List());
    EXPECT_TRUE(panel.Add_Button(7, "second", false, true, 2));
    EXPECT_EQ((std::vector<int>{19, 7, 2, 3, 4, 5}), panel.Get_ID_List());
}

TEST(Button_Panel_Model, Partners_Exchange_Their_Places)
{
    auto panel = Panel(0);
    panel.Add_Button(19, "Stop pick");
    panel.Set_Visible(19, false);
    Panel_Rectangle before, after, hidden;
    ASSERT_TRUE(panel.Get_Button_Rectangle(1, 500, 30, before));
    ASSERT_TRUE(panel.Exchange(1, 19));
    ASSERT_TRUE(panel.Get_Button_Rectangle(19, 500, 30, after));
    EXPECT_EQ(before, after);
    EXPECT_FALSE(panel.Get_Button_Rectangle(1, 500, 30, hidden));
    EXPECT_FALSE(panel.Exchange(1, 77));
    ASSERT_TRUE(panel.Exchange(1, 19));
    EXPECT_TRUE(panel.Get_Button_Rectangle(1, 500, 30, hidden));
}

TEST(Button_Panel_Layout, Buttons_Flow_And_Wrap)
{
    auto panel = Panel(0, 3);
    const auto places = panel.Layout(60, 100); // two of 25 with spacing 1 and offset 1 fit
    EXPECT_EQ((Panel_Rectangle{1, 1, 26, 26}), places[0]);
    EXPECT_EQ((Panel_Rectangle{27, 1, 52, 26}), places[1]);
    EXPECT_EQ((Panel_Rectangle{1, 27, 26, 52}), places[2]);
    EXPECT_EQ(3, panel.Button_At(5, 30, 60, 100));
    EXPECT_EQ(0, panel.Button_At(26, 5, 60, 100));
}

TEST(Button_Panel_Layout, A_Panel_Narrower_Than_A_Button_Has_One_A_Row)
{
    auto panel = Panel(0, 3);
    const auto places = panel.Layout(3, 3);
    EXPECT_EQ(1, places[2].left);
    EXPECT_EQ(53, places[2].top);
}

TEST(Button_Panel_Layout, Columns_Run_The_Other_Way)
{
    auto panel = Panel(0, 3);
    panel.Set_ScrollState(2);
    EXPECT_EQ((Panel_Rectangle{27, 1, 52, 26}), panel.Layout(100, 60)[2]);
    EXPECT_EQ(27, panel.Auto_Size().right);
    EXPECT_EQ(2, panel.Auto_Scroll_State(20, 60));
}

TEST(Button_Panel_Layout, Spacers_Part_Groups_And_The_Size_Holds_All)
{
    auto panel = Panel(0, 2);
    panel.Properties.HorizontalSpacing = 0;
    panel.Properties.HorizontalSpacerWidth = 5;
    panel.Properties.ButtonWidth = panel.Properties.ButtonHeight = 40;
    panel.Add_Spacer();
    panel.Add_Button(3, "third");
    EXPECT_EQ(86, panel.Layout(500, 50)[3].left);
    EXPECT_EQ((Panel_Rectangle{0, 0, 127, 42}), panel.Auto_Size());
}

TEST(Button_Panel_Layout, Centred_Rows_Leave_The_Same_On_Both_Sides)
{
    auto panel = Panel(0, 2);
    panel.Properties.CenterButtonsHorizontal = true;
    const auto places = panel.Layout(101, 30);
    EXPECT_EQ(places[0].left, 101 - places[1].right);
}

TEST(Button_Panel_Model, Rearranging_Needs_The_Right_To)
{
    auto panel = Panel(0, 4);
    EXPECT_FALSE(panel.Rearrange(4, 2));
    panel.Properties.AllowRearrange = true;
    EXPECT_TRUE(panel.Rearrange(4, 2));
    EXPECT_EQ((std::vector<int>{1, 4, 2, 3}), panel.Get_ID_List());
    EXPECT_TRUE(panel.Rearrange(1, 0));
    EXPECT_EQ((std::vector<int>{4, 2, 3, 1}), panel.Get_ID_List());
    EXPECT_FALSE(panel.Rearrange(1, 99));
    EXPECT_EQ(2, panel.Drop_Before(20, 5, 500, 30));
    EXPECT_EQ(0, panel.Drop_Before(400, 5, 500, 30));
}

} // namespace
