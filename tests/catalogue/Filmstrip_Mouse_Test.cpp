#include "catalogue/Filmstrip_Mouse.h"
#include "tests/catalogue/Catalogue_Fixture.h"

namespace {

using Indices = std::vector<int>;

class Strip_Rules : public Catalogue_Test {
protected:
    Strip_Rules()
    {
        for (int i = 1; i <= 14; ++i) Add(QStringLiteral("%1.jpg").arg(i));
        layout.Set_View_Size(4 * Filmstrip_Layout::Pitch, 2 * Filmstrip_Layout::Pitch);
        layout.Set_Count(14);
    }
    Strip_Action Click(int index, Strip_Modifiers modifiers = {})
    {
        return Press_Cell(form, index, Strip_Button::Left, modifiers);
    }
    int Key(int cursor, Strip_Key key, Strip_Modifiers modifiers = {})
    {
        return Press_Key(form, layout, cursor, key, modifiers).cursor_index;
    }
    Indices Selected() const { return form.State().selection.Selected_Indices(); }

    static constexpr Strip_Modifiers Shift{.shift = true};
    static constexpr Strip_Modifiers Control{.control = true};
    Filmstrip_Layout layout; // 4 columns; rows of 4, 4, 4 and 2
};

TEST_F(Strip_Rules, A_Miss_Does_Nothing)
{
    Click(3);
    EXPECT_EQ(0, Click(0).current_index);
    EXPECT_EQ(0, Click(99).current_index);
    EXPECT_EQ(Indices{3}, Selected());
}

TEST_F(Strip_Rules, A_Plain_Click_Selects_One_Picture_Which_Becomes_The_Current_One)
{
    Click(3);
    EXPECT_EQ(5, Click(5).current_index);
    EXPECT_EQ(Indices{5}, Selected());
}

TEST_F(Strip_Rules, Control_Toggles)
{
    Click(3);
    Click(5, Control);
    EXPECT_EQ((Indices{3, 5}), Selected());
    EXPECT_EQ(3, Click(3, Control).current_index);
    EXPECT_EQ(Indices{5}, Selected());
}

TEST_F(Strip_Rules, Shift_Selects_From_The_Anchor_In_Either_Direction)
{
    Click(5);
    Click(9, Control);
    Click(7, Shift);
    EXPECT_EQ((Indices{5, 6, 7}), Selected());
    Click(3, Shift);
    EXPECT_EQ((Indices{5, 4, 3}), Selected());
    Click(5, Shift);
    EXPECT_EQ(Indices{5}, Selected());
}

TEST_F(Strip_Rules, Shift_Without_A_Selection_Selects_Only_This_Picture)
{
    Click(6, Shift);
    EXPECT_EQ(Indices{6}, Selected());
}

TEST_F(Strip_Rules, Control_Goes_Before_Shift)
{
    Click(3);
    Click(6, {.shift = true, .control = true});
    EXPECT_EQ((Indices{3, 6}), Selected());
}

TEST_F(Strip_Rules, The_Right_Button_Keeps_A_Selection_That_The_Picture_Belongs_To)
{
    Click(3);
    Click(5, Control);
    const Strip_Action inside = Press_Cell(form, 3, Strip_Button::Right, {});
    EXPECT_TRUE(inside.opens_popup);
    EXPECT_EQ(3, inside.current_index);
    EXPECT_EQ((Indices{3, 5}), Selected());
    Press_Cell(form, 8, Strip_Button::Right, {});
    EXPECT_EQ(Indices{8}, Selected());
    EXPECT_FALSE(Press_Cell(form, 0, Strip_Button::Right, {}).opens_popup);
}

TEST_F(Strip_Rules, Frames_Follow_The_Selection)
{
    Click(3);
    Click(4);
    EXPECT_EQ((QList<int>{3, -3, 4}), view.frames);
    EXPECT_GT(view.status_updates, 0);
}

struct Move_Case {
    const char* name;
    int from;
    Strip_Key key;
    int to;
};

TEST_F(Strip_Rules, Keys_Move_Within_The_List)
{
    const Move_Case cases[] = {
        {"left", 6, Strip_Key::Left, 5},
        {"left at the first", 1, Strip_Key::Left, 1},
        {"right goes on into the next row", 4, Strip_Key::Right, 5},
        {"right at the last", 14, Strip_Key::Right, 14},
        {"up", 6, Strip_Key::Up, 2},
        {"up in the first row stays", 2, Strip_Key::Up, 2},
        {"down", 2, Strip_Key::Down, 6},
        {"down onto an incomplete row takes its last picture", 12, Strip_Key::Down, 14},
        {"down in the last row stays", 13, Strip_Key::Down, 13},
        {"home", 9, Strip_Key::Home, 1},
        {"end", 2, Strip_Key::End, 14},
        {"page down moves by the rows on view less one", 2, Strip_Key::Page_Down, 6},
        {"page up in the first row stays in its column", 3, Strip_Key::Page_Up, 3},
        {"the first key of all goes to the first picture", 0, Strip_Key::Right, 1},
        {"the first key may go to the end", 0, Strip_Key::End, 14},
        {"a cursor behind the end starts anew", 99, Strip_Key::Left, 1},
    };
    for (const Move_Case& row : cases) {
        EXPECT_EQ(row.to, Key(row.from, row.key)) << row.name;
        EXPECT_EQ(Indices{row.to}, Selected()) << row.name;
    }
}

TEST_F(Strip_Rules, Shift_With_An_Arrow_Selects_From_The_Anchor)
{
    Click(6);
    Key(6, Strip_Key::Down, Shift);
    EXPECT_EQ((Indices{6, 7, 8, 9, 10}), Selected());
    Key(10, Strip_Key::Home, Shift);
    EXPECT_EQ((Indices{6, 5, 4, 3, 2, 1}), Selected());
}

TEST_F(Strip_Rules, Control_With_An_Arrow_Moves_The_Cursor_Alone_And_Space_Toggles_There)
{
    Click(6);
    const Strip_Action moved = Press_Key(form, layout, 6, Strip_Key::Right, Control);
    EXPECT_EQ(7, moved.cursor_index);
    EXPECT_EQ(0, moved.current_index);
    EXPECT_EQ(Indices{6}, Selected());
    Key(7, Strip_Key::Space);
    EXPECT_EQ((Indices{6, 7}), Selected());
    Key(7, Strip_Key::Space);
    EXPECT_EQ(Indices{6}, Selected());
}

TEST_F(Strip_Rules, Enter_Blows_The_Picture_Up)
{
    const Strip_Action action = Press_Key(form, layout, 5, Strip_Key::Enter, {});
    EXPECT_TRUE(action.blows_up);
    EXPECT_EQ(5, action.current_index);
}

TEST_F(Strip_Rules, Keys_On_An_Empty_Strip_Do_Nothing)
{
    form.Discard_All();
    layout.Set_Count(0);
    EXPECT_EQ(0, Key(1, Strip_Key::Right));
}

} // namespace
