#include "imaging/Mix_Rotate_Scale_Utilities.h"

namespace {

Parameter_Stack<Mix_Fields> mix_stack;
Parameter_Stack<Rotate_Fields> rotate_stack;
Parameter_Stack<Scale_Fields> scale_stack;
Parameter_Stack<Perspective_Fields> perspective_stack;

} // namespace

Rotate_Fields Neutral_Rotate(int picture_rotate)
{
    return {.Picture_Rotate = picture_rotate, .angle_degrees = 0};
}

Scale_Fields Neutral_Scale(int width, int height, int horizontal_dpi, int vertical_dpi)
{
    return {
        .method = 0, .width = width, .height = height, .horizontal_dpi = horizontal_dpi, .vertical_dpi = vertical_dpi};
}

Perspective_Fields Neutral_Perspective(int width)
{
    return {.method = 0, .top_left_x = 0, .top_right_x = width - 1, .bottom_left_x = 0, .bottom_right_x = width - 1};
}

void Clear_Mix_Stack()
{
    mix_stack.Clear();
}
void Push_Mix_State(const Mix_Fields& fields)
{
    mix_stack.Push(fields);
}
bool Peek_Mix_State(Mix_Fields& fields)
{
    return mix_stack.Peek(fields);
}
int Mix_Stack_Current()
{
    return mix_stack.Current();
}
void Set_Mix_Stack_Current(int index)
{
    mix_stack.Set_Current(index);
}
int Mix_Stack_Top()
{
    return mix_stack.Top();
}
int Mix_Stack_Upper_Bound()
{
    return mix_stack.Upper_Bound();
}

void Clear_Rotate_Stack()
{
    rotate_stack.Clear();
}
void Push_Rotate_State(const Rotate_Fields& fields)
{
    rotate_stack.Push(fields);
}
bool Peek_Rotate_State(Rotate_Fields& fields)
{
    return rotate_stack.Peek(fields);
}
int Rotate_Stack_Current()
{
    return rotate_stack.Current();
}
void Set_Rotate_Stack_Current(int index)
{
    rotate_stack.Set_Current(index);
}
int Rotate_Stack_Top()
{
    return rotate_stack.Top();
}

void Clear_Scale_Stack()
{
    scale_stack.Clear();
}
void Push_Scale_State(const Scale_Fields& fields)
{
    scale_stack.Push(fields);
}
bool Peek_Scale_State(Scale_Fields& fields)
{
    return scale_stack.Peek(fields);
}
int Scale_Stack_Current()
{
    return scale_stack.Current();
}
void Set_Scale_Stack_Current(int index)
{
    scale_stack.Set_Current(index);
}
int Scale_Stack_Top()
{
    return scale_stack.Top();
}

void Clear_Perspective_Stack()
{
    perspective_stack.Clear();
}
void Push_Perspective_State(const Perspective_Fields& fields)
{
    perspective_stack.Push(fields);
}
bool Peek_Perspective_State(Perspective_Fields& fields)
{
    return perspective_stack.Peek(fields);
}
int Perspective_Stack_Current()
{
    return perspective_stack.Current();
}
void Set_Perspective_Stack_Current(int index)
{
    perspective_stack.Set_Current(index);
}
int Perspective_Stack_Top()
{
    return perspective_stack.Top();
}

const Script_Item_Tables& Initialize_Script_Item_Tables()
{
    static constexpr Script_Item_Tables tables{
        .tone = {1, 2, 3}, .tone_and_gamma = {1, 2, 3, 4}, .geometry = {5, 6}, .text = {9}};
    return tables;
}
