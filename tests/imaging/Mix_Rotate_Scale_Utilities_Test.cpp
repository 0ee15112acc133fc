#include "imaging/Mix_Rotate_Scale_Utilities.h"

#include <gtest/gtest.h>

namespace {

Mix_Fields Mix(int value)
{
    Mix_Fields fields = Neutral_Mix;
    fields[0] = value;
    return fields;
}

class Mix_Stack : public testing::Test {
protected:
    void SetUp() override
    {
        Clear_Mix_Stack();
        Push_Mix_State(Neutral_Mix);
    }
    static int Top_Value()
    {
        Mix_Fields fields{};
        EXPECT_TRUE(Peek_Mix_State(fields));
        return fields[0];
    }
};

TEST_F(Mix_Stack, Opens_With_The_Neutral_Record)
{
    Mix_Fields fields{};
    ASSERT_TRUE(Peek_Mix_State(fields));
    EXPECT_EQ(fields, (Mix_Fields{100, 0, 0, 100, 0, 100, 0, 100, 0, 0, 100, 100, 0, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(Mix_Stack_Current(), 1);
    EXPECT_EQ(Mix_Stack_Upper_Bound(), 10);
}

TEST_F(Mix_Stack, Eleventh_Push_Grows_To_Twenty_And_Keeps_All)
{
    for (int i = 2; i <= 11; ++i) Push_Mix_State(Mix(i));
    EXPECT_EQ(Mix_Stack_Upper_Bound(), 20);
    for (int i = 2; i <= 11; ++i) {
        Set_Mix_Stack_Current(i);
        EXPECT_EQ(Top_Value(), i);
    }
}

TEST_F(Mix_Stack, Push_After_Undo_Throws_The_Redo_States_Away)
{
    Push_Mix_State(Mix(2));
    Push_Mix_State(Mix(3));
    Set_Mix_Stack_Current(1);
    Push_Mix_State(Mix(9));
    EXPECT_EQ(Mix_Stack_Current(), 2);
    EXPECT_EQ(Mix_Stack_Top(), 2);
    EXPECT_EQ(Top_Value(), 9);
    Set_Mix_Stack_Current(3);
    EXPECT_EQ(Mix_Stack_Current(), 2);
}

TEST_F(Mix_Stack, Undo_Stops_At_The_First_State)
{
    Set_Mix_Stack_Current(0);
    EXPECT_EQ(Mix_Stack_Current(), 1);
    Clear_Mix_Stack();
    Set_Mix_Stack_Current(1);
    EXPECT_EQ(Mix_Stack_Current(), 0);
    Mix_Fields fields{};
    EXPECT_FALSE(Peek_Mix_State(fields));
}

TEST(Parameter_Stacks, Are_Kept_Apart)
{
    Clear_Rotate_Stack();
    Clear_Scale_Stack();
    Clear_Perspective_Stack();
    Push_Rotate_State(Neutral_Rotate(90));
    Push_Scale_State(Neutral_Scale(640, 480, 300, -1));
    Push_Scale_State({7, 320, 240, 300, 300});
    Push_Perspective_State(Neutral_Perspective(640));
    EXPECT_EQ(Rotate_Stack_Top(), 1);
    EXPECT_EQ(Scale_Stack_Top(), 2);
    EXPECT_EQ(Perspective_Stack_Top(), 1);
    Rotate_Fields rotate;
    Scale_Fields scale;
    Perspective_Fields perspective;
    ASSERT_TRUE(Peek_Rotate_State(rotate) && Peek_Perspective_State(perspective));
    Set_Scale_Stack_Current(1);
    ASSERT_TRUE(Peek_Scale_State(scale));
    EXPECT_EQ(rotate, (Rotate_Fields{90, 0}));
    EXPECT_EQ(scale, (Scale_Fields{0, 640, 480, 300, -1}));
    EXPECT_EQ(perspective, (Perspective_Fields{0, 0, 639, 0, 639}));
}

/// One stack behind one number of its record.
struct Tool_Stack {
    const char* name;
    void (*clear)();
    void (*push)(int value);
    bool (*peek)(int& value);
    int (*current)();
    void (*set_current)(int index);
    int (*top)();
};

class Every_Stack : public testing::TestWithParam<Tool_Stack> {};

INSTANTIATE_TEST_SUITE_P(
    All, Every_Stack,
    testing::Values(Tool_Stack{"mix", Clear_Mix_Stack, [](int value) { Push_Mix_State(Mix(value)); },
                               [](int& value) {
                                   Mix_Fields fields{};
                                   const bool there = Peek_Mix_State(fields);
                                   value = fields[0];
                                   return there;
                               },
                               Mix_Stack_Current, Set_Mix_Stack_Current, Mix_Stack_Top},
                    Tool_Stack{"rotate", Clear_Rotate_Stack,
                               [](int value) {
                                   Push_Rotate_State({90, float(value)});
                               },
                               [](int& value) {
                                   Rotate_Fields fields;
                                   const bool there = Peek_Rotate_State(fields);
                                   value = int(fields.angle_degrees);
                                   return there;
                               },
                               Rotate_Stack_Current, Set_Rotate_Stack_Current, Rotate_Stack_Top},
                    Tool_Stack{"scale", Clear_Scale_Stack,
                               [](int value) {
                                   Push_Scale_State({7, value, 1, 1, 1});
                               },
                               [](int& value) {
                                   Scale_Fields fields;
                                   const bool there = Peek_Scale_State(fields);
                                   value = fields.width;
                                   return there;
                               },
                               Scale_Stack_Current, Set_Scale_Stack_Current, Scale_Stack_Top},
                    Tool_Stack{"perspective", Clear_Perspective_Stack,
                               [](int value) {
                                   Push_Perspective_State({7, value, 1, 1, 1});
                               },
                               [](int& value) {
                                   Perspective_Fields fields;
                                   const bool there = Peek_Perspective_State(fields);
                                   value = fields.top_left_x;
                                   return there;
                               },
                               Perspective_Stack_Current, Set_Perspective_Stack_Current, Perspective_Stack_Top}),
    [](const auto& row) { return row.param.name; });

TEST_P(Every_Stack, Is_Cleared_Filled_Undone_And_Cut)
{
    const Tool_Stack& stack = GetParam();
    int value = -1;
    stack.clear();
    EXPECT_EQ(stack.top(), 0);
    EXPECT_FALSE(stack.peek(value));
    for (int i = 1; i <= 11; ++i) stack.push(i);
    EXPECT_EQ(stack.top(), 11);
    for (int i = 1; i <= 11; ++i) {
        stack.set_current(i);
        EXPECT_EQ(stack.current(), i);
        EXPECT_TRUE(stack.peek(value));
        EXPECT_EQ(value, i);
    }
    stack.set_current(1);
    stack.push(99);
    EXPECT_EQ(stack.current(), 2);
    EXPECT_EQ(stack.top(), 2);
    EXPECT_TRUE(stack.peek(value));
    EXPECT_EQ(value, 99);
    stack.clear();
    EXPECT_EQ(stack.top(), 0);
}

TEST(Script_Item_Types, Of_The_Clear_Commands)
{
    const auto& tables = Initialize_Script_Item_Tables();
    EXPECT_EQ(tables.tone, (std::array{1, 2, 3}));
    EXPECT_EQ(tables.tone_and_gamma, (std::array{1, 2, 3, 4}));
    EXPECT_EQ(tables.geometry, (std::array{5, 6}));
    EXPECT_EQ(tables.text, (std::array{9}));
}

} // namespace
