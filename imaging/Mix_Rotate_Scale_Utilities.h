#pragma once

#include "imaging/Parameter_Stack.h"

#include <array>
#include <span>

/// What the colour mix, rotate, scale and perspective tools need for undo and redo: one stack of parameters a tool. A
/// stack lives while its dialog is open; opening clears it and pushes the neutral record, and each application of the
/// tool pushes first.

/// 18 percentages and the grey flag, in the order of Create_Color_Mixed_Bitmap_CPP.
using Mix_Fields = std::array<int, 19>;
/// Each colour takes its own channel; the luminance row and its blend are off.
constexpr Mix_Fields Neutral_Mix = {100, 0, 0, 100, 0, 100, 0, 100, 0, 0, 100, 100, 0, 0, 0, 0, 0, 0, 0};

struct Rotate_Fields {
    int Picture_Rotate = 0;  ///< the picture's stored rotation, degrees
    float angle_degrees = 0; ///< counterclockwise, 0 to 359.999
    bool operator==(const Rotate_Fields&) const = default;
};

struct Scale_Fields {
    int method = 0; ///< 0 none, else an interpolation method
    int width = 0;
    int height = 0;
    int horizontal_dpi = -1;
    int vertical_dpi = -1;
    bool operator==(const Scale_Fields&) const = default;
};

struct Perspective_Fields {
    int method = 0;
    int top_left_x = 0;
    int top_right_x = 0;
    int bottom_left_x = 0;
    int bottom_right_x = 0;
    bool operator==(const Perspective_Fields&) const = default;
};

Rotate_Fields Neutral_Rotate(int picture_rotate);
Scale_Fields Neutral_Scale(int width, int height, int horizontal_dpi, int vertical_dpi);
Perspective_Fields Neutral_Perspective(int width); ///< the picture's own edges

void Clear_Mix_Stack();
void Push_Mix_State(const Mix_Fields& fields);
bool Peek_Mix_State(Mix_Fields& fields);
int Mix_Stack_Current();
void Set_Mix_Stack_Current(int index);
int Mix_Stack_Top();
int Mix_Stack_Upper_Bound();

void Clear_Rotate_Stack();
void Push_Rotate_State(const Rotate_Fields& fields);
bool Peek_Rotate_State(Rotate_Fields& fields);
int Rotate_Stack_Current();
void Set_Rotate_Stack_Current(int index);
int Rotate_Stack_Top();

void Clear_Scale_Stack();
void Push_Scale_State(const Scale_Fields& fields);
bool Peek_Scale_State(Scale_Fields& fields);
int Scale_Stack_Current();
void Set_Scale_Stack_Current(int index);
int Scale_Stack_Top();

void Clear_Perspective_Stack();
void Push_Perspective_State(const Perspective_Fields& fields);
bool Peek_Perspective_State(Perspective_Fields& fields);
int Perspective_Stack_Current();
void Set_Perspective_Stack_Current(int index);
int Perspective_Stack_Top();

/// The script item types that each clear command removes.
struct Script_Item_Tables {
    std::array<int, 3> tone;           ///< contrast, saturation, colour balance
    std::array<int, 4> tone_and_gamma; ///< and gamma
    std::array<int, 2> geometry;       ///< crop and scale
    std::array<int, 1> text;
};
const Script_Item_Tables& Initialize_Script_Item_Tables();
