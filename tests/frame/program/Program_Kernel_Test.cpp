#include "frame/program/Program_Kernel.h"

#include "tests/catalogue/Picture_Fixture.h"

#include <gtest/gtest.h>

namespace {

TEST(Program_Kernel, Hands_The_Background_Colour_To_The_Pixel_Library)
{
    Program_Kernel kernel;
    kernel.Set_Background_Color({.red = 10, .green = 20, .blue = 30});
    const Owned_Bitmap turned(Rotate_Bitmap(Drawn_Bitmap(60, 40, 1).Get(), 30));
    kernel.Set_Background_Color({});
    const auto pixels = Pixels_Of(turned.Get()); // the first is a corner, which no picture covers
    EXPECT_EQ((std::vector<std::uint8_t>{30, 20, 10}), std::vector<std::uint8_t>(pixels.begin(), pixels.begin() + 3));
}

TEST(Program_Kernel, Counts_The_Bitmaps_That_Are_Alive)
{
    const Program_Kernel kernel;
    const int before = kernel.Live_Bitmaps();
    {
        const Owned_Bitmap one = Drawn_Bitmap(4, 3, 1);
        EXPECT_EQ(before + 1, kernel.Live_Bitmaps());
    }
    EXPECT_EQ(before, kernel.Live_Bitmaps());
}

} // namespace
