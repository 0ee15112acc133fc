#include "bkimgutl/core/Color.h"
#include "bkimgutl/tone/Clip_Table.h"
#include "bkimgutl/tone/Table_Map.h"
#include "tests/bkimgutl/Picture_Fixtures.h"

#include <algorithm>
#include <array>
#include <limits>

namespace {

using Table = std::array<std::int32_t, 256>;

Table Random_Table(unsigned seed)
{
    std::mt19937 random(seed);
    Table table;
    for (auto& entry : table) entry = std::int32_t(random() >> 8 & 255);
    return table;
}

Table Scale_Table(double scale)
{
    Table table;
    for (int i = 0; i < 256; ++i) table[std::size_t(i)] = int(std::clamp(std::nearbyint(scale * i), 0.0, 255.0));
    return table;
}

template <class Pixel>
Bitmap Mapped_Pixels(const Bitmap_View& source, Pixel&& pixel)
{
    Bitmap result = New_Picture(source.width, source.height, source.bytes_per_pixel);
    const auto target = result.Change();
    for (int y = 0; y < source.height; ++y)
        for (int x = 0; x < source.width; ++x)
            pixel(source.Row(y) + x * source.bytes_per_pixel, target.Row(y) + x * source.bytes_per_pixel);
    return result;
}

std::size_t Luminance_Of(const std::uint8_t* bgr)
{
    return std::size_t(RGB_To_Luminance(bgr[2], bgr[1], bgr[0]));
}

Bitmap Table_Mapped_Reference(const Bitmap_View& source, const Table_Map_Settings& s)
{
    const auto entry = [](const std::int32_t* table, std::size_t i) { return std::clamp(table[i], 0, 255); };
    if (source.Is_Grey())
        return Mapped_Pixels(source, [&](const std::uint8_t* in, std::uint8_t* out) {
            int level = (s.component_mask & 1) ? entry(s.red, *in) : *in;
            if (s.component_mask & 8) level = entry(s.luminance, std::size_t(level));
            *out = std::uint8_t(level);
        });
    return Mapped_Pixels(source, [&](const std::uint8_t* in, std::uint8_t* out) {
        out[0] = std::uint8_t((s.component_mask & 4) ? entry(s.blue, in[0]) : in[0]);
        out[1] = std::uint8_t((s.component_mask & 2) ? entry(s.green, in[1]) : in[1]);
        out[2] = std::uint8_t((s.component_mask & 1) ? entry(s.red, in[2]) : in[2]);
        if (!(s.component_mask & 8)) return;
        const int move = entry(s.luminance, Luminance_Of(out)) - int(Luminance_Of(out));
        for (int c = 0; c < 3; ++c) out[c] = std::uint8_t(std::clamp(out[c] + move, 0, 255));
    });
}

Bitmap Hsv_Mapped_Reference(const Bitmap_View& source, const Table& saturations, const Table& values)
{
    if (source.Is_Grey()) return Mapped_Pixels(source, [&](auto* in, auto* out) { *out = std::uint8_t(values[*in]); });
    return Mapped_Pixels(source, [&](const std::uint8_t* in, std::uint8_t* out) {
        int hue = 0, saturation = 0, value = 0, red = 0, green = 0, blue = 0;
        RGB_To_HSV(in[2], in[1], in[0], hue, saturation, value);
        HSV_To_RGB(hue, saturations[std::size_t(saturation)], values[std::size_t(value)], red, green, blue);
        out[0] = std::uint8_t(blue), out[1] = std::uint8_t(green), out[2] = std::uint8_t(red);
    });
}

/// Every color once; under the sanitizers, which look for other faults, every seventh row of them.
Bitmap All_Colors()
{
#ifdef __SANITIZE_ADDRESS__
    constexpr int step = 7;
#else
    constexpr int step = 1;
#endif
    return Drawn_Picture(4096, 4096 / step, 3, [](int x, int y, int c) {
        const int color = y * step * 4096 + x;
        return color >> (8 * c) & 255;
    });
}

} // namespace

TEST(Color, Luminance_Of_A_Grey_Is_The_Grey)
{
    for (int level = 0; level < 256; ++level) EXPECT_EQ(level, RGB_To_Luminance(level, level, level));
}

TEST(Color, A_Grey_Leaves_The_Hue_As_It_Was_Passed_In)
{
    int hue = 123, saturation = 9, value = 9;
    RGB_To_HSV(70, 70, 70, hue, saturation, value);
    EXPECT_EQ(123, hue);
    EXPECT_EQ(0, saturation);
    EXPECT_EQ(70, value);
    RGB_To_HSV(0, 0, 0, hue, saturation, value);
    EXPECT_EQ(0, saturation);
    EXPECT_EQ(0, value);
}

struct Hsv_Case {
    const char* name;
    int red, green, blue, hue, saturation, value;
};
class Hsv_Of_A_Color : public testing::TestWithParam<Hsv_Case> {};
INSTANTIATE_TEST_SUITE_P(All, Hsv_Of_A_Color,
                         testing::Values(Hsv_Case{"red", 255, 0, 0, 0, 255, 255},
                                         Hsv_Case{"yellow", 255, 255, 0, 60, 255, 255},
                                         Hsv_Case{"green", 0, 255, 0, 120, 255, 255},
                                         Hsv_Case{"cyan", 0, 255, 255, 180, 255, 255},
                                         Hsv_Case{"blue", 0, 0, 255, 240, 255, 255},
                                         Hsv_Case{"magenta_comes_out_of_minus_60", 255, 0, 255, 300, 255, 255},
                                         Hsv_Case{"just_below_red_rounds_to_359", 255, 0, 4, 359, 255, 255}),
                         [](const auto& row) { return std::string(row.param.name); });
TEST_P(Hsv_Of_A_Color, And_Back)
{
    const Hsv_Case& c = GetParam();
    int hue = 0, saturation = 0, value = 0, red = 0, green = 0, blue = 0;
    RGB_To_HSV(c.red, c.green, c.blue, hue, saturation, value);
    EXPECT_EQ(c.hue, hue);
    EXPECT_EQ(c.saturation, saturation);
    EXPECT_EQ(c.value, value);
    HSV_To_RGB(hue, saturation, value, red, green, blue);
    EXPECT_NEAR(c.red, red, 1);
    EXPECT_NEAR(c.green, green, 1);
    EXPECT_NEAR(c.blue, blue, 1);
}

TEST(Color, Values_Out_Of_Range_Are_Brought_In)
{
    int red = 0, green = 0, blue = 0;
    HSV_To_RGB(-120, 999, 300, red, green, blue);
    EXPECT_EQ(std::tuple(0, 0, 255), std::tuple(red, green, blue));
    HSV_To_RGB(std::numeric_limits<int>::max(), -5, -5, red, green, blue);
    EXPECT_EQ(std::tuple(0, 0, 0), std::tuple(red, green, blue));
}

TEST(Cmyk, Default_Split)
{
    Set_CMYK_Parameters({});
    CMYK_Planes planes{};
    ASSERT_TRUE(RGB_To_CMYK_Planes(0, 0, 0, Current_CMYK_Tables(), planes));
    EXPECT_EQ(std::tuple(255, 255, 255, 0), std::tuple(planes.cyan, planes.magenta, planes.yellow, planes.black));
    ASSERT_TRUE(RGB_To_CMYK_Planes(255, 128, 55, Current_CMYK_Tables(), planes));
    EXPECT_EQ(std::tuple(255, 128, 55, 255), std::tuple(planes.cyan, planes.magenta, planes.yellow, planes.black));
}

TEST(Cmyk, An_Ink_Limit_Of_0_Means_The_Defaults)
{
    Set_CMYK_Parameters({.black_gamma = 3.0F, .black_start = 0, .ink_limit = 0});
    EXPECT_EQ(64, Current_CMYK_Tables().black[128]);
    EXPECT_EQ(0, Current_CMYK_Tables().removal[191]);
    EXPECT_EQ(2, Current_CMYK_Tables().removal[192]);
    Set_CMYK_Parameters({});
}

TEST(Cmyk, A_Plane_Outside_Its_Range_Is_A_Failure)
{
    Set_CMYK_Parameters({.black_gamma = 5.0F, .black_start = 0, .ink_limit = 765});
    CMYK_Planes planes{};
    EXPECT_FALSE(RGB_To_CMYK_Planes(200, 200, 200, Current_CMYK_Tables(), planes));
    for (const float gamma :
         {0.0F, -1.0F, std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()})
        for (const int start : {std::numeric_limits<int>::min(), -1, 255, 1000}) {
            Set_CMYK_Parameters(
                {.black_gamma = gamma, .black_start = start, .ink_limit = std::numeric_limits<int>::min()});
            RGB_To_CMYK_Planes(10, 200, 3, Current_CMYK_Tables(), planes); // any answer, but an answer
        }
    Set_CMYK_Parameters({});
}

TEST(Table_Map, Agrees_With_The_Reference_For_Every_Mask)
{
    const Table red = Random_Table(1), green = Random_Table(2), blue = Random_Table(3), luminance = Random_Table(4);
    For_Every_Target([&] {
        for (const auto size : Edge_Case_Sizes())
            for (const int depth : {1, 3})
                for (int mask = 1; mask < 16; ++mask) {
                    const Bitmap source = Random_Picture(size.width, size.height, depth, unsigned(size.width + mask));
                    const Table_Map_Settings settings{mask, red.data(), green.data(), blue.data(), luminance.data()};
                    const auto actual = Table_Mapped(source.View(), settings);
                    ASSERT_TRUE(actual);
                    const Bitmap expected = Table_Mapped_Reference(source.View(), settings);
                    ASSERT_EQ(0, Difference_Of(expected.View(), actual->View()).most) << size.width << " mask " << mask;
                }
    });
}

TEST(Table_Map, Luminance_Is_Exact_For_Every_Color)
{
    Table step; // any wrong luminance shows as a jump
    for (int i = 0; i < 256; ++i) step[std::size_t(i)] = i & 1 ? 255 : 0;
    const Bitmap all = All_Colors();
    const Table_Map_Settings settings{.component_mask = 8, .luminance = step.data()};
    const Bitmap expected = Table_Mapped_Reference(all.View(), settings);
    For_Every_Target([&] {
        const auto actual = Table_Mapped(all.View(), settings);
        ASSERT_TRUE(actual);
        EXPECT_EQ(0, Difference_Of(expected.View(), actual->View()).most);
    });
}

TEST(Table_Map, Limits_Table_Entries)
{
    Table wild = Scale_Table(1);
    wild[10] = -2147483647, wild[11] = 2147483647;
    const Bitmap source = Drawn_Picture(2, 1, 1, [](int x, int, int) { return 10 + x; });
    const auto actual = Table_Mapped(source.View(), {.component_mask = 1, .red = wild.data()});
    ASSERT_TRUE(actual);
    EXPECT_EQ(0, actual->View().Row(0)[0]);
    EXPECT_EQ(255, actual->View().Row(0)[1]);
}

TEST(Table_Map, Refuses_Bad_Masks_And_Missing_Tables)
{
    const Bitmap source = Flat_Picture(2, 2, 3, 9);
    const Table table = Scale_Table(1);
    for (const int mask : {0, 16, -1, 240, std::numeric_limits<int>::min()})
        EXPECT_FALSE(Table_Mapped(source.View(), {mask, table.data(), table.data(), table.data(), table.data()}))
            << mask;
    EXPECT_FALSE(Table_Mapped(source.View(), {7, table.data(), nullptr, table.data(), nullptr}));
    EXPECT_FALSE(Table_Mapped(source.View(), {15, table.data(), table.data(), table.data(), nullptr}));
    EXPECT_FALSE(Hsv_Table_Mapped(source.View(), nullptr, table.data()));
}

TEST(Hsv_Map, Is_Exact_For_Every_Color)
{
    const Bitmap all = All_Colors();
    const std::pair<Table, Table> cases[] = {
        {Scale_Table(1), Scale_Table(1)}, {Scale_Table(1.3), Scale_Table(0.8)}, {Random_Table(5), Random_Table(6)}};
    for (const auto& [saturation, value] : cases) {
        const Bitmap expected = Hsv_Mapped_Reference(all.View(), saturation, value);
        For_Every_Target([&] {
            const auto actual = Hsv_Table_Mapped(all.View(), saturation.data(), value.data());
            ASSERT_TRUE(actual);
            EXPECT_EQ(0, Difference_Of(expected.View(), actual->View()).most);
        });
    }
}

TEST(Hsv_Map, Agrees_With_The_Reference_At_Every_Size)
{
    const Table saturation = Scale_Table(2.1), value = Random_Table(8);
    For_Every_Target([&] {
        for (const auto size : Edge_Case_Sizes())
            for (const int depth : {1, 3}) {
                const Bitmap source = Random_Picture(size.width, size.height, depth, unsigned(size.width));
                const auto actual = Hsv_Table_Mapped(source.View(), saturation.data(), value.data());
                ASSERT_TRUE(actual);
                const Bitmap expected = Hsv_Mapped_Reference(source.View(), saturation, value);
                ASSERT_EQ(0, Difference_Of(expected.View(), actual->View()).most) << size.width;
            }
    });
}

TEST(Clip_Table, Both_Sides_Off_On_One_Level_Has_No_Table)
{
    Table histogram{};
    histogram[77] = 5;
    const auto table = Clip_Table(histogram, 5, -1, -1);
    ASSERT_FALSE(table);
    EXPECT_EQ("the picture has one level only, so its contrast cannot be stretched", table.error().text);
}

TEST(Clip_Table, A_Pure_Black_Picture_Is_Not_Stretched_To_Nothing)
{
    Table histogram{};
    histogram[0] = 100;
    const auto table = Clip_Table(histogram, 100, 0.005F, 0.005F); // in 0 to 1
    ASSERT_TRUE(table);
    EXPECT_EQ(0, (*table)[0]);
    EXPECT_EQ(255, (*table)[1]);
}

TEST(Clip_Table, Stretches_Between_The_Clip_Points)
{
    Table histogram{};
    histogram[50] = 10, histogram[100] = 80, histogram[150] = 10;
    const auto table = Clip_Table(histogram, 100, 0.1F, 0.1F); // the walk stops before 100 from both ends
    ASSERT_TRUE(table);
    EXPECT_EQ(0, (*table)[99]);
    EXPECT_EQ((1 * 255 + 1) / 2, (*table)[100]);
    EXPECT_EQ(255, (*table)[101]);
    EXPECT_EQ(0, (*table)[10]);
    const auto off = Clip_Table(histogram, 100, -1, -1);
    ASSERT_TRUE(off);
    EXPECT_EQ(49 * 0, (*off)[49]);
    EXPECT_EQ(50, (*off)[50]);
    EXPECT_EQ(150, (*off)[150]);
    EXPECT_EQ(255, (*off)[255]);
}

TEST(Clip_Table, Loses_A_Whole_Number_Of_Samples_Halves_To_Even)
{
    std::array<std::int32_t, 256> histogram{};
    for (const std::size_t i : {0, 1, 2, 3, 4, 251, 252, 253, 254, 255}) histogram[i] = 1;
    const auto ends = [&](int samples, float clip) {
        histogram[128] = samples - 10;
        const Clip_Range range = Clip_Range_Of(histogram, samples, clip, clip);
        return std::pair(range.in_low, range.in_high);
    };
    EXPECT_EQ(std::pair(1, 254), ends(80, 0.03125F));  // 2.5
    EXPECT_EQ(std::pair(3, 252), ends(112, 0.03125F)); // 3.5
    EXPECT_EQ(std::pair(2, 253), ends(85, 0.03125F));  // 2.66
}

TEST(Clip_Table, Refuses_What_Is_No_Number)
{
    Table histogram{};
    histogram[1] = histogram[2] = 1;
    EXPECT_FALSE(Clip_Table(histogram, 2, std::numeric_limits<float>::quiet_NaN(), 0));
    EXPECT_FALSE(Clip_Table(histogram, 2, 0, std::numeric_limits<float>::infinity()));
    EXPECT_TRUE(Clip_Table(histogram, 2, -2147483648.0F, -2147483648.0F));
    EXPECT_TRUE(Clip_Table(histogram, 2, 5, 5)); // walks past each other, and still gives a table
}

TEST(Contrast_Optimize, Maps_The_Luminance)
{
    const Bitmap source = Drawn_Picture(256, 2, 3, [](int x, int, int c) { return 40 + x / 2 + 5 * c; });
    Table histogram{};
    for (int x = 0; x < 256; ++x) histogram[Luminance_Of(source.View().Row(0) + 3 * x)] += 2;
    const auto table = Clip_Table(histogram, 512, 0.01F, 0.01F);
    ASSERT_TRUE(table);
    const Bitmap expected = Table_Mapped_Reference(source.View(), {.component_mask = 8, .luminance = table->data()});
    const auto actual = Contrast_Optimized(source.View(), 0.01F, 0.01F);
    ASSERT_TRUE(actual);
    EXPECT_EQ(0, Difference_Of(expected.View(), actual->View()).most);
    EXPECT_FALSE(Contrast_Optimized(Flat_Picture(3, 3, 1, 80).View(), -1, -1));
}
