#include "frame/Form_Resize.h"

#include <gtest/gtest.h>

namespace {

struct Recorded_Control : Anchored_Control {
    void Change_Box(int t, int l, int h, int w) override
    {
        top += t;
        left += l;
        height += h;
        width += w;
        ++calls;
    }
    int top = 0, left = 0, height = 0, width = 0, calls = 0;
};

constexpr QSize Design(800 * 15, 600 * 15);

struct Anchor_Case {
    const char* name;
    Anchor_Factors factors;
    int top, left, height, width; // after 100 pixels more across and 60 down
};

class Anchors : public testing::TestWithParam<Anchor_Case> {};

INSTANTIATE_TEST_SUITE_P(Of_The_Main_Window, Anchors,
                         testing::Values(Anchor_Case{"button_panel_takes_the_width", {0, 0, 0, 1}, 0, 0, 0, 100},
                                         Anchor_Case{"file_pane_takes_the_height", {0, 0, 1, 0}, 0, 0, 60, 0},
                                         Anchor_Case{"picture_pane_takes_both", {0, 0, 1, 1}, 0, 0, 60, 100},
                                         Anchor_Case{"scroll_bar_stays_at_the_right", {0, 1, 1, 0}, 0, 100, 60, 0},
                                         Anchor_Case{"status_line_stays_at_the_bottom", {1, 0, 0, 1}, 60, 0, 0, 100},
                                         Anchor_Case{"help_stays_in_the_corner", {1, 1, 0, 0}, 60, 100, 0, 0},
                                         Anchor_Case{"a_share_is_a_share", {0.5F, 0.25F, 0, 0.75F}, 30, 25, 0, 75}),
                         [](const auto& row) { return row.param.name; });

TEST_P(Anchors, Move_The_Control)
{
    Recorded_Control control;
    Form_Resize resize(Design, Design, 15);
    resize.Add_Group({.entries = {{.control = &control, .factors = GetParam().factors}}});
    resize.Resize_To({900 * 15, 660 * 15});
    EXPECT_EQ(GetParam().top, control.top);
    EXPECT_EQ(GetParam().left, control.left);
    EXPECT_EQ(GetParam().height, control.height);
    EXPECT_EQ(GetParam().width, control.width);
}

TEST(Form_Resize, Group_Factors_Multiply_Those_Of_The_Entries)
{
    Recorded_Control control;
    Form_Resize resize(Design, Design, 15);
    resize.Add_Group({.factors = {0, 0, 0, 0.5F}, .entries = {{&control, {1, 1, 1, 0.5F}}}});
    resize.Resize_To(Design + QSize(100 * 15, 100 * 15));
    EXPECT_EQ(25, control.width);
    EXPECT_EQ(0, control.top);
}

TEST(Form_Resize, Many_Tiny_Steps_End_Where_One_Large_Step_Does)
{
    Recorded_Control control;
    Form_Resize resize(Design, Design, 15);
    resize.Add_Group({.entries = {{&control, {0, 0, 0, 1}}}});
    for (int twip = 1; twip <= 40 * 15; ++twip) resize.Resize_To(Design + QSize(twip, 0));
    EXPECT_EQ(40, control.width);
}

TEST(Form_Resize, Movement_Below_Half_A_Pixel_Waits)
{
    Recorded_Control control;
    Form_Resize resize(Design, Design, 15);
    resize.Add_Group({.entries = {{&control, {0, 0, 0, 1}}}});
    resize.Resize_To(Design + QSize(7, 0));
    EXPECT_EQ(0, control.calls);
    resize.Resize_To(Design + QSize(8, 0));
    EXPECT_EQ(1, control.width);
}

TEST(Form_Resize, A_Step_Without_Change_Moves_Nothing_Back)
{
    Recorded_Control control;
    Form_Resize resize(Design, Design, 15);
    resize.Add_Group({.entries = {{&control, {0.5F, 0, 0, 0}}}});
    resize.Resize_To(Design + QSize(0, 15)); // half a pixel, taken as a whole one
    for (int again = 0; again < 5; ++again) resize.Resize_To(Design + QSize(0, 15));
    EXPECT_EQ(1, control.top);
    resize.Resize_To(Design);
    EXPECT_EQ(0, control.top);
}

TEST(Form_Resize, Refuses_Less_Than_The_Design_Size)
{
    const Form_Resize resize(Design, Design, 15);
    EXPECT_EQ(Design, resize.Bounded_Size({100, 100}));
    EXPECT_EQ(QSize(20000, 600 * 15), resize.Bounded_Size({20000, 1}));
}

TEST(Form_Resize, A_New_Design_Size_Is_The_Base_Of_The_Next_Step)
{
    Recorded_Control control;
    Form_Resize resize(Design, Design, 15);
    resize.Add_Group({.entries = {{&control, {0, 0, 0, 1}}}});
    resize.Set_Design_Size({300, 300}, {1500, 1500});
    resize.Resize_To({1500 + 150, 1500});
    EXPECT_EQ(10, control.width);
}

TEST(Form_Resize, After_The_Release_Nothing_Moves)
{
    Recorded_Control control;
    Form_Resize resize(Design, Design, 15);
    resize.Add_Group({.entries = {{&control, {0, 0, 0, 1}}}});
    resize.Release();
    resize.Resize_To(Design * 2);
    EXPECT_EQ(0, control.calls);
}

TEST(Form_Design_Size, Is_The_Forms_Own_Or_The_Global_One)
{
    const QSize form(4000, 3000);
    EXPECT_EQ(form, Form_Design_Size(true, form, Design));
    EXPECT_EQ(Design, Form_Design_Size(false, form, Design));
    EXPECT_EQ(QSize(4000, 600 * 15), Form_Design_Size(false, form, {0, 600 * 15}));
}

} // namespace
