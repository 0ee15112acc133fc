#include "bkimgutl/contract/Histogram.h"

#include "bkimgutl/core/Color.h"
#include "bkimgutl/core/Handle_Table.h"
#include "tests/bkimgutl/Reference_Pictures.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <random>

namespace {

constexpr int all_components[] = {1, 2, 4, 7, 8, 16, 32, 64, 128};
using Table = std::array<std::int32_t, 256>;

std::vector<int> Values_Of(const Bitmap_View& view, int x, int y, int component)
{
    const std::uint8_t* p = view.Row(y) + x * view.bytes_per_pixel;
    const int blue = p[0];
    const int green = view.Is_Grey() ? p[0] : p[1];
    const int red = view.Is_Grey() ? p[0] : p[2];
    CMYK_Planes planes{};
    if (component >= 16 && !RGB_To_CMYK_Planes(red, green, blue, Current_CMYK_Tables(), planes)) return {};
    switch (component) {
    case 16: return {planes.cyan};
    case 32: return {planes.magenta};
    case 64: return {planes.yellow};
    case 128: return {planes.black};
    default: break;
    }
    if (view.Is_Grey()) return {p[0]};
    switch (component) {
    case 1: return {red};
    case 2: return {green};
    case 4: return {blue};
    case 7: return {red, green, blue};
    default: return {RGB_To_Luminance(red, green, blue)};
    }
}

Table Histogram_Reference(const Bitmap_View& view, const std::uint8_t* mask, int component)
{
    Table table{};
    for (int y = 0; y < view.height; ++y)
        for (int x = 0; x < view.width; ++x)
            if (mask == nullptr || mask[y * view.width + x] != 0)
                for (const int value : Values_Of(view, x, y, component)) ++table[std::size_t(value)];
    return table;
}

std::vector<std::uint8_t> Random_Mask(int width, int height, unsigned seed)
{
    std::mt19937 random(seed);
    std::vector<std::uint8_t> mask(std::size_t(width) * std::size_t(height));
    for (auto& byte : mask) byte = random() % 3 == 0 ? std::uint8_t(1 + random() % 255) : std::uint8_t(0);
    return mask;
}

std::int32_t Sum(const Table& table)
{
    std::int32_t sum = 0;
    for (const std::int32_t count : table) sum += count;
    return sum;
}

void Expect_Agreement(const Bitmap_View& view, Bitmap_Handle handle, int component)
{
    const auto mask = Random_Mask(view.width, view.height, unsigned(component));
    Table actual{};
    std::int32_t count = -1;
    ASSERT_NE(Compute_Bitmap_Color_Component_Histogram_CPP(handle, component, actual.data(), &count), Flag_False);
    EXPECT_EQ(actual, Histogram_Reference(view, nullptr, component)) << "component " << component;
    EXPECT_EQ(count, Sum(actual));
    ASSERT_NE(Compute_Masked_Area_Color_Component_Histogram_CPP(handle, mask.data(), component, actual.data(), &count),
              Flag_False);
    EXPECT_EQ(actual, Histogram_Reference(view, mask.data(), component)) << "component " << component << ", masked";
    EXPECT_EQ(count, Sum(actual));
}

TEST(Histogram, Agrees_With_The_Reference_For_Every_Component_And_Mask)
{
    For_Edge_Case_Pictures([](const Bitmap& source) {
        const Bitmap_View view = source.View();
        Bitmap copy = Random_Picture(view.width, view.height, view.bytes_per_pixel, 0);
        for (int y = 0; y < view.height; ++y) std::copy_n(view.Row(y), view.Row_Bytes(), copy.Change().Row(y));
        const Bitmap_Handle handle = Adopt(std::move(copy));
        For_Every_Target([&] {
            for (const int component : all_components) Expect_Agreement(view, handle, component);
        });
        EXPECT_TRUE(Release(handle));
    });
}

TEST(Histogram, Of_A_Large_Picture_Counts_Every_Pixel_Once_Whatever_The_Threads)
{
    const Bitmap_Handle handle = Adopt(Random_Picture(1501, 1203, 3, 7));
    const Bitmap_View view = (*Find_Bitmap(handle))->View();
    for (const int component : {1, 7, 8}) Expect_Agreement(view, handle, component);
    EXPECT_TRUE(Release(handle));
}

TEST(Histogram, Of_One_Colour_Stands_In_One_Bin)
{
    const Bitmap_Handle handle = Adopt(Plain_Picture(640, 480, 3, 10, 20, 30));
    Table table{};
    std::int32_t count = 0;
    ASSERT_NE(Compute_Bitmap_Color_Component_Histogram_CPP(handle, 1, table.data(), &count), Flag_False);
    EXPECT_EQ(table[10], 640 * 480);
    ASSERT_NE(Compute_Bitmap_Color_Component_Histogram_CPP(handle, 7, table.data(), &count), Flag_False);
    EXPECT_EQ(count, 3 * 640 * 480);
    EXPECT_TRUE(Release(handle));
}

TEST(Histogram, Leaves_Out_Colours_That_The_Split_Has_No_Value_For)
{
    Set_CMYK_Parameters({.black_gamma = 100, .black_start = 0, .ink_limit = 765});
    Bitmap picture = Plain_Picture(4, 1, 3, 255, 255, 255);
    const auto view = picture.Change();
    view.Row(0)[3] = view.Row(0)[4] = 0; // green and blue: its black exceeds its cyan
    view.Row(0)[5] = 250;
    const Bitmap_Handle handle = Adopt(std::move(picture));
    for (const int component : {16, 32, 64, 128}) {
        Table table{};
        std::int32_t count = 0;
        EXPECT_NE(Compute_Bitmap_Color_Component_Histogram_CPP(handle, component, table.data(), &count), Flag_False);
        EXPECT_EQ(3, count) << component;
        EXPECT_EQ(3, table[255]) << component;
    }
    Set_CMYK_Parameters({});
    EXPECT_TRUE(Release(handle));
}

TEST(Histogram, Refuses_Masks_Of_Several_Components_And_Bad_Arguments)
{
    const Bitmap_Handle handle = Adopt(Random_Picture(4, 4, 3, 7));
    Table table{};
    std::int32_t count = 0;
    for (const int component : {0, 3, 5, 6, 9, 15, 240, 256, -1, INT32_MIN})
        EXPECT_EQ(Compute_Bitmap_Color_Component_Histogram_CPP(handle, component, table.data(), &count), Flag_False);
    EXPECT_EQ(Compute_Bitmap_Color_Component_Histogram_CPP(handle, 1, nullptr, &count), Flag_False);
    EXPECT_EQ(Compute_Masked_Area_Color_Component_Histogram_CPP(handle, nullptr, 1, table.data(), &count), Flag_False);
    EXPECT_TRUE(Release(handle));
    EXPECT_EQ(Compute_Bitmap_Color_Component_Histogram_CPP(handle, 1, table.data(), &count), Flag_False);
}

struct Average_Case {
    const char* name;
    int x, y, area;
    int red, green, blue, hue, saturation, value; ///< red below 0: refused
};

class Area_Average_Of_A_Drawn_Picture : public testing::TestWithParam<Average_Case> {};

TEST_P(Area_Average_Of_A_Drawn_Picture, Rounds_Half_To_Even_And_Clips_At_Edges)
{
    const auto& row = GetParam();
    Bitmap bitmap = Plain_Picture(4, 4, 3, 0, 0, 0);
    const auto view = bitmap.Change();
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 4; ++x) view.Row(y)[3 * x + 2] = std::uint8_t(2 * (x + y)); // red only
    view.Row(0)[2] = 1;
    const Bitmap_Handle handle = Adopt(std::move(bitmap));
    std::int32_t r = 0, g = 0, b = 0, h = 99, s = 0, v = 0;
    const Flag done = Compute_Area_Average_RGB_HSV_CPP(handle, row.x, row.y, row.area, &r, &g, &b, &h, &s, &v);
    EXPECT_EQ(done != Flag_False, row.red >= 0);
    if (done != Flag_False) {
        EXPECT_EQ((std::array{r, g, b, h, s, v}),
                  (std::array{row.red, row.green, row.blue, row.hue, row.saturation, row.value}));
    }
    EXPECT_TRUE(Release(handle));
}

INSTANTIATE_TEST_SUITE_P(All, Area_Average_Of_A_Drawn_Picture,
                         testing::Values(Average_Case{"one_pixel", 3, 3, 1, 12, 0, 0, 0, 255, 12},
                                         Average_Case{"inner_square", 2, 2, 3, 8, 0, 0, 0, 255, 8},
                                         Average_Case{"corner_is_clipped_to_four", 0, 0, 3, 2, 0, 0, 0, 255,
                                                      2}, // 9 / 4
                                         Average_Case{"five_covers_nine_at_a_corner", 3, 3, 5, 8, 0, 0, 0, 255, 8},
                                         Average_Case{"left_of_the_picture", -1, 0, 1, -1, 0, 0, 0, 0, 0},
                                         Average_Case{"below_the_picture", 0, 4, 1, -1, 0, 0, 0, 0, 0},
                                         Average_Case{"even_side", 1, 1, 2, -1, 0, 0, 0, 0, 0},
                                         Average_Case{"side_of_seven", 1, 1, 7, -1, 0, 0, 0, 0, 0}),
                         [](const auto& row) { return row.param.name; });

TEST(Histogram, Counts_Stretches_Of_One_Value_And_Of_Two_In_Turn)
{
    // More than a million pixels, an odd width, and stretches of all lengths between others.
    constexpr int width = 1531, height = 701;
    std::mt19937 random(5);
    Bitmap bitmap = Plain_Picture(width, height, 1, 0, 0, 0);
    const auto view = bitmap.Change();
    Table expected{};
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width;) {
            const int length = 1 + int(random() % 90), kind = int(random() % 4);
            const int low = int(random() % 256), high = kind == 0 ? low : int(random() % 256);
            for (int i = 0; i < length && x < width; ++i, ++x) {
                view.Row(y)[x] = std::uint8_t(kind == 3 ? int(random() % 256) : i % 2 == 0 ? low : high);
                ++expected[view.Row(y)[x]];
            }
        }
    const Bitmap_Handle handle = Adopt(std::move(bitmap));
    Table counts{};
    std::int32_t samples = 0;
    ASSERT_TRUE(Compute_Bitmap_Color_Component_Histogram_CPP(handle, Component_Luminance, counts.data(), &samples));
    EXPECT_EQ(expected, counts);
    EXPECT_EQ(width * height, samples);
    EXPECT_TRUE(Release(handle));
}

TEST(Area_Average, Covers_The_Whole_Square_At_Every_Place)
{
    const Bitmap_Handle handle = Adopt(Random_Picture(9, 8, 3, 11));
    const Bitmap_View view = (*Find_Bitmap(handle))->View();
    for (const int area : {1, 3, 5})
        for (int y = 0; y < view.height; ++y)
            for (int x = 0; x < view.width; ++x) {
                double sums[3] = {};
                int count = 0;
                for (int v = y - area / 2; v <= y + area / 2; ++v)
                    for (int u = x - area / 2; u <= x + area / 2; ++u) {
                        if (u < 0 || v < 0 || u >= view.width || v >= view.height) continue;
                        for (int c = 0; c < 3; ++c) sums[c] += view.Row(v)[3 * u + c];
                        ++count;
                    }
                std::int32_t r = 0, g = 0, b = 0;
                ASSERT_TRUE(
                    Compute_Area_Average_RGB_HSV_CPP(handle, x, y, area, &r, &g, &b, nullptr, nullptr, nullptr));
                const std::array expected{std::nearbyint(sums[2] / count), std::nearbyint(sums[1] / count),
                                          std::nearbyint(sums[0] / count)};
                EXPECT_EQ(expected, (std::array{double(r), double(g), double(b)})) << area << " at " << x << ", " << y;
            }
    EXPECT_TRUE(Release(handle));
}

TEST(Area_Average, Of_Two_Levels_Rounds_Half_To_Even)
{
    for (const auto& [low, expected] : {std::pair{4, 4}, std::pair{5, 6}}) { // 4.5 and 5.5
        Bitmap bitmap = Plain_Picture(2, 1, 1, 0, 0, 0);
        bitmap.Change().Row(0)[0] = std::uint8_t(low);
        bitmap.Change().Row(0)[1] = std::uint8_t(low + 1);
        const Bitmap_Handle handle = Adopt(std::move(bitmap));
        std::int32_t red = 0, hue = -1;
        EXPECT_NE(Compute_Area_Average_RGB_HSV_CPP(handle, 0, 0, 3, &red, nullptr, nullptr, &hue, nullptr, nullptr),
                  Flag_False);
        EXPECT_EQ(red, expected);
        EXPECT_EQ(hue, 0) << "a grey has hue 0";
        EXPECT_TRUE(Release(handle));
    }
}

TEST(Masked_Range, Agrees_With_The_Reference)
{
    const Bitmap_Handle handle = Adopt(Random_Picture(301, 217, 3, 7));
    const Bitmap_View view = (*Find_Bitmap(handle))->View();
    const auto mask = Random_Mask(view.width, view.height, 5);
    std::array<std::vector<int>, 6> values;
    for (int y = 0; y < view.height; ++y) {
        for (int x = 0; x < view.width; ++x) {
            if (mask[std::size_t(y * view.width + x)] == 0) continue;
            const std::uint8_t* p = view.Row(y) + 3 * x;
            int h = 0, s = 0, v = 0;
            RGB_To_HSV(p[2], p[1], p[0], h, s, v);
            const int all[6] = {p[2], p[1], p[0], h, s, v};
            for (std::size_t i = 0; i < 6; ++i) values[i].push_back(all[i]);
        }
    }
    Component_Range ranges[6];
    ASSERT_NE(Compute_Masked_Area_RGB_HSV_Range_CPP(handle, mask.data(), ranges), Flag_False);
    for (std::size_t i = 0; i < 6; ++i) {
        double sum = 0;
        for (const int value : values[i]) sum += value;
        EXPECT_EQ(ranges[i].minimum, *std::min_element(values[i].begin(), values[i].end()));
        EXPECT_EQ(ranges[i].maximum, *std::max_element(values[i].begin(), values[i].end()));
        EXPECT_EQ(ranges[i].average, std::int32_t(std::nearbyint(sum / double(values[i].size()))));
    }
    EXPECT_TRUE(Release(handle));
}

TEST(Masked_Range, Of_One_Colour_Is_That_Colour)
{
    const Bitmap_Handle handle = Adopt(Plain_Picture(3, 2, 3, 200, 100, 150)); // hue 330, beyond all bytes
    const std::vector<std::uint8_t> mask(6, 1);
    Component_Range ranges[6];
    ASSERT_NE(Compute_Masked_Area_RGB_HSV_Range_CPP(handle, mask.data(), ranges), Flag_False);
    const std::int32_t expected[6] = {200, 100, 150, 330, 128, 200};
    for (std::size_t i = 0; i < 6; ++i) {
        EXPECT_EQ(expected[i], ranges[i].minimum) << i;
        EXPECT_EQ(expected[i], ranges[i].average) << i;
        EXPECT_EQ(expected[i], ranges[i].maximum) << i;
    }
    EXPECT_TRUE(Release(handle));
}

TEST(Masked_Range, Of_An_Empty_Mask_Is_Refused)
{
    const Bitmap_Handle handle = Adopt(Random_Picture(5, 5, 3, 7));
    const std::vector<std::uint8_t> mask(25);
    Component_Range ranges[6];
    EXPECT_EQ(Compute_Masked_Area_RGB_HSV_Range_CPP(handle, mask.data(), ranges), Flag_False);
    EXPECT_TRUE(Release(handle));
}

} // namespace
