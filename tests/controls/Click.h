#pragma once

constexpr int Left = 1, Right = 2;    // of Button
constexpr int Shift = 1, Control = 2; // of Shift

/// A click on a row or a button, by its number.
struct Click {
    int target;
    int shift = 0;
    int button = Left;
};
