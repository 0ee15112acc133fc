#include "bkimgutl/core/Color.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <gtest/gtest.h>

// The conversions against real arithmetic on a grid of all colours, and against numbers computed by hand.

namespace {

template <class Visit>
void For_Colors(Visit visit)
{
    for (int red = 0; red <= 255; red += 5)
        for (int green = 0; green <= 255; green += 5)
            for (int blue = 0; blue <= 255; blue += 3) visit(red, green, blue);
}

TEST(Luminance, Is_Rounded_To_Nearest)
{
    For_Colors([](int red, int green, int blue) {
        const double exact = (19660.0 * red + 38666.0 * green + 7209.0 * blue) / 65536;
        ASSERT_EQ(int(std::floor(exact + 0.5)), RGB_To_Luminance(red, green, blue));
    });
    EXPECT_EQ(255, RGB_To_Luminance(255, 255, 255));
    EXPECT_EQ(76, RGB_To_Luminance(255, 0, 0));
    EXPECT_EQ(150, RGB_To_Luminance(0, 255, 0));
    EXPECT_EQ(28, RGB_To_Luminance(0, 0, 255));
}

TEST(HSV, Of_A_Color_Rounds_Hue_Away_From_Zero_And_Saturation_Up)
{
    For_Colors([](int red, int green, int blue) {
        const int most = std::max({red, green, blue}), range = most - std::min({red, green, blue});
        int hue = 77, saturation = -1, value = -1;
        RGB_To_HSV(red, green, blue, hue, saturation, value);
        ASSERT_EQ(most, value);
        ASSERT_EQ(most == 0 ? 0 : int(std::floor(255.0 * range / most + 0.5)), saturation);
        int expected = 77; // without saturation the hue stays what it was
        if (saturation > 0) {
            const auto sixth = [range](int difference) { return int(std::round(60.0 * difference / range)); };
            expected = red == most     ? sixth(green - blue)
                       : green == most ? 120 + sixth(blue - red)
                                       : 240 + sixth(red - green);
            expected = (expected + 360) % 360;
        }
        ASSERT_EQ(expected, hue) << red << " " << green << " " << blue;
    });
}

TEST(HSV, To_A_Color_Interpolates_Inside_Its_Sector)
{
    for (int hue = 0; hue < 360; ++hue)
        for (int saturation = 0; saturation <= 255; saturation += 5)
            for (int value = 0; value <= 255; value += 5) {
                const double step = std::floor(hue % 60 * saturation / 60.0 + 0.5);
                const auto level = [value](double part) {
                    return int(std::floor(part * value / 255 + 127.0 / 255 + 1e-9));
                };
                const int low = level(255 - saturation), up = level(255 - saturation + step), down = level(255 - step);
                const std::array<int, 3> sectors[] = {{value, up, low},   {down, value, low}, {low, value, up},
                                                      {low, down, value}, {up, low, value},   {value, low, down}};
                const auto expected = saturation == 0 ? std::array{value, value, value} : sectors[hue / 60];
                int red = 0, green = 0, blue = 0;
                HSV_To_RGB(hue, saturation, value, red, green, blue);
                ASSERT_EQ(expected, (std::array{red, green, blue})) << hue << " " << saturation << " " << value;
            }
}

struct Limit_Case {
    const char* name;
    std::array<int, 3> given, same_as;
};
class HSV_Limits : public testing::TestWithParam<Limit_Case> {};

TEST_P(HSV_Limits, Bring_Values_Into_Their_Ranges)
{
    const auto color = [](const std::array<int, 3>& hsv) {
        std::array<int, 3> rgb{};
        HSV_To_RGB(hsv[0], hsv[1], hsv[2], rgb[0], rgb[1], rgb[2]);
        return rgb;
    };
    EXPECT_EQ(color(GetParam().same_as), color(GetParam().given));
}

INSTANTIATE_TEST_SUITE_P(All, HSV_Limits,
                         testing::Values(Limit_Case{"hue_below_0", {-30, 200, 200}, {330, 200, 200}},
                                         Limit_Case{"hue_of_a_full_turn", {360, 200, 200}, {0, 200, 200}},
                                         Limit_Case{"hue_of_several_turns", {-1050, 200, 200}, {30, 200, 200}},
                                         Limit_Case{"saturation_above", {30, 300, 200}, {30, 255, 200}},
                                         Limit_Case{"saturation_below", {30, -5, 200}, {30, 0, 200}},
                                         Limit_Case{"value_above", {30, 200, 999}, {30, 200, 255}},
                                         Limit_Case{"value_below", {30, 200, -1}, {30, 200, 0}}),
                         [](const auto& row) { return row.param.name; });

/// The split with other parameters for one test.
class CMYK_Split : public testing::Test {
protected:
    ~CMYK_Split() override { Set_CMYK_Parameters({}); }
    static std::array<int, 4> Planes(int red, int green, int blue)
    {
        CMYK_Planes planes{-1, -1, -1, -1};
        if (!RGB_To_CMYK_Planes(red, green, blue, Current_CMYK_Tables(), planes)) return {-1, -1, -1, -1};
        return {planes.cyan, planes.magenta, planes.yellow, planes.black};
    }
    static int Black(int level) { return Current_CMYK_Tables().black[level]; }
};

TEST_F(CMYK_Split, Takes_The_Square_Of_The_Common_Ink_As_Black)
{
    for (int i = 0; i < 256; ++i) EXPECT_EQ(int(std::nearbyint(i / 255.0 * (i / 255.0) * 255)), Black(i)) << i;
    EXPECT_EQ((std::array{255, 255, 255, 255}), Planes(255, 255, 255));
    EXPECT_EQ((std::array{255, 255, 255, 0}), Planes(0, 0, 0));
    EXPECT_EQ((std::array{255, 0, 255, 255}), Planes(255, 0, 255)); // no ink is common
    // 127 of each ink: 63 of it are black, and (381 - 126) / 4 = 63 leave nothing to remove.
    EXPECT_EQ((std::array{191, 191, 191, 192}), Planes(128, 128, 128));
}

TEST_F(CMYK_Split, Removes_Ink_Above_The_Limit)
{
    Set_CMYK_Parameters({.black_gamma = 0.5F, .black_start = 0, .ink_limit = 200});
    // (381 - 126) / 4 = 63 is 13 above a quarter of the limit: 26 more leave each ink and go to black.
    EXPECT_EQ((std::array{217, 217, 217, 166}), Planes(128, 128, 128));
    EXPECT_EQ(0, Current_CMYK_Tables().removal[50]);
    EXPECT_EQ(2, Current_CMYK_Tables().removal[51]);
    EXPECT_EQ(410, Current_CMYK_Tables().removal[255]);
}

TEST_F(CMYK_Split, Black_Begins_Behind_Its_Start)
{
    Set_CMYK_Parameters({.black_gamma = 1, .black_start = 55, .ink_limit = 765});
    for (int i = 0; i <= 55; ++i) EXPECT_EQ(0, Black(i)) << i;
    for (int i = 56; i < 256; ++i) EXPECT_EQ(255 - (255 - i) * 255 / 200, Black(i)) << i;
}

TEST_F(CMYK_Split, Takes_A_Start_Out_Of_Range_For_The_Nearest_In_It)
{
    Set_CMYK_Parameters({.black_gamma = 1, .black_start = -100, .ink_limit = 765});
    for (int i = 0; i < 256; ++i) EXPECT_EQ(i, Black(i)) << i;
    Set_CMYK_Parameters({.black_gamma = 1, .black_start = 1000, .ink_limit = 765});
    for (int i = 0; i < 256; ++i) EXPECT_EQ(0, Black(i)) << i;
}

TEST_F(CMYK_Split, Without_A_Limit_Has_The_Usual_Gamma_And_Limit)
{
    const auto usual = Planes(40, 90, 200);
    Set_CMYK_Parameters({.black_gamma = 3, .black_start = 0, .ink_limit = 0});
    EXPECT_EQ(usual, Planes(40, 90, 200));
    EXPECT_EQ(64, Black(128));
}

TEST_F(CMYK_Split, That_Leaves_The_Range_Is_None)
{
    Set_CMYK_Parameters({.black_gamma = 100, .black_start = 0, .ink_limit = 765});
    EXPECT_EQ((std::array{-1, -1, -1, -1}), Planes(250, 0, 0));
}

} // namespace
