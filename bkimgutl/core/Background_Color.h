#pragma once

#include <cstdint>

/// The colour of what a turn or an expansion leaves uncovered, and of what shows through transparent pixels of a file.
/// Black until it is set. Grey pictures take its luminance.
struct Background_Color {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
};

Background_Color Current_Background_Color();
void Set_Background_Color(const Background_Color& color);
