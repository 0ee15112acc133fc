#include "bkimgutl/filter/Blur.h"

#include "bkimgutl/contract/Types.h"
#include "bkimgutl/core/Color.h"
#include "bkimgutl/filter/Difference_Row.h"
#include "bkimgutl/filter/Gaussian.h"
#include "tests/bkimgutl/Picture_Fixtures.h"
#include "tests/bkimgutl/filter/Filter_References.h"

#include <cmath>
#include <limits>

namespace {

std::uint8_t Level(double value)
{
    return std::uint8_t(std::clamp(std::nearbyint(value), 0.0, 255.0));
}

template <class Sample>
Bitmap Picture_Of(const Bitmap_View& source, Sample&& sample)
{
    return Drawn_Picture(source.width, source.height, source.bytes_per_pixel, [&](int x, int y, int c) {
        return sample(std::size_t(y), std::size_t(x * source.bytes_per_pixel + c));
    });
}

Bitmap Plane_Picture_Of(const Bitmap_View& source, int component)
{
    return Drawn_Picture(source.width, source.height, 1, [&](int x, int y, int) {
        const std::uint8_t* p = source.Row(y) + 3 * x;
        CMYK_Planes planes{};
        RGB_To_CMYK_Planes(p[2], p[1], p[0], Current_CMYK_Tables(), planes);
        switch (component) {
        case Component_Red: return int(p[2]);
        case Component_Green: return int(p[1]);
        case Component_Blue: return int(p[0]);
        case Component_Luminance: return RGB_To_Luminance(p[2], p[1], p[0]);
        case Component_Cyan: return planes.cyan;
        case Component_Magenta: return planes.magenta;
        case Component_Yellow: return planes.yellow;
        default: return planes.black;
        }
    });
}

bool Changes_Channel(int component, int channel) // in memory order
{
    const int targets[3] = {4 + 8 + 64 + 128, 2 + 8 + 32 + 128, 1 + 8 + 16 + 128};
    return (component & targets[channel]) != 0;
}

/// Adds to every channel what `change` makes of the planes' samples and their blur.
template <class Change>
Bitmap Component_Reference(const Bitmap_View& source, double radius, int components, Change&& change)
{
    Real_Rows sums(std::size_t(source.height), std::vector<double>(source.Row_Bytes()));
    for (int component = 1; component <= 128; component *= 2) {
        if (!(components & component)) continue;
        const Bitmap plane = Plane_Picture_Of(source, component);
        const Real_Rows blurred = Blurred_Reference(plane.View(), radius);
        for (int y = 0; y < source.height; ++y)
            for (int x = 0; x < source.width; ++x)
                for (int c = 0; c < 3; ++c)
                    if (Changes_Channel(component, c))
                        sums[std::size_t(y)][std::size_t(3 * x + c)] +=
                            change(plane.View().Row(y)[x], blurred[std::size_t(y)][std::size_t(x)]);
    }
    return Picture_Of(source, [&](std::size_t y, std::size_t i) { return Level(source.Row(int(y))[i] + sums[y][i]); });
}

Bitmap Photograph(int width, int height, int depth)
{
    std::mt19937 random(3);
    return Drawn_Picture(width, height, depth, [&](int x, int y, int c) {
        const double wave = 110 + 80 * std::sin(x * 0.11 + c) * std::cos(y * 0.07) + ((x / 23 + y / 17) % 2) * 40;
        return std::clamp(int(wave) + int(random() % 17), 0, 255);
    });
}

} // namespace

class Blur_Radius : public testing::TestWithParam<float> {};
INSTANTIATE_TEST_SUITE_P(All, Blur_Radius,
                         testing::Values(1.0F, 1.3F, 1.5F, 1.84F, 1.85F, 2.0F, 2.75F, 2.8F, 3.7F, 4.9F, 5.0F, 7.3F,
                                         12.0F, 17.6F, 24.99F, 25.0F));

TEST_P(Blur_Radius, Is_Within_One_Level_And_A_Tenth_On_Average)
{
    for (const int depth : {1, 3})
        for (const int kind : {0, 1, 2}) {
            const Bitmap source = kind == 0   ? Random_Picture(141, 119, depth, 4)
                                  : kind == 1 ? Harsh_Picture(133, 127, depth, 5)
                                              : Photograph(151, 113, depth);
            const Real_Rows exact = Blurred_Reference(source.View(), double(GetParam()));
            const Bitmap expected =
                Picture_Of(source.View(), [&](std::size_t y, std::size_t i) { return Level(exact[y][i]); });
            For_Every_Target([&] {
                const auto actual = Blurred(source.View(), {GetParam(), 100, 7});
                ASSERT_TRUE(actual) << actual.error().text;
                const Difference difference = Difference_Of(expected.View(), actual->View());
                EXPECT_LE(difference.most, 1);
                EXPECT_LE(difference.mean, 0.1);
            });
        }
}

TEST_P(Blur_Radius, Is_Within_One_Level_On_The_Worst_Waves)
{
    // Steps and stripes at the edges and at periods near the reduced grid's.
    for (const int period : {2, 3, 4, 5, 7, 9, 12, 13, 18, 19, 26, 27, 60, 400}) {
        const Bitmap source =
            Drawn_Picture(203, 97, 1, [&](int x, int y, int) { return (x + y / 3) % period < period / 2 ? 255 : 0; });
        const Real_Rows exact = Blurred_Reference(source.View(), double(GetParam()));
        const Bitmap expected =
            Picture_Of(source.View(), [&](std::size_t y, std::size_t i) { return Level(exact[y][i]); });
        For_Every_Target([&] {
            const auto actual = Blurred(source.View(), {GetParam(), 100, 7});
            ASSERT_TRUE(actual);
            EXPECT_LE(Difference_Of(expected.View(), actual->View()).most, 1) << period;
        });
    }
}

TEST_P(Blur_Radius, Is_Within_One_Level_Across_Tiles)
{
    const Bitmap source = Photograph(1103, 45, 3);
    const Real_Rows exact = Blurred_Reference(source.View(), double(GetParam()));
    const Bitmap expected = Picture_Of(source.View(), [&](std::size_t y, std::size_t i) { return Level(exact[y][i]); });
    For_Every_Target([&] {
        const auto actual = Blurred(source.View(), {GetParam(), 100, 7});
        ASSERT_TRUE(actual);
        EXPECT_LE(Difference_Of(expected.View(), actual->View()).most, 1);
    });
}

TEST_P(Blur_Radius, Edge_Sizes_Work_And_Flat_Pictures_Stay)
{
    for (const auto size : Edge_Case_Sizes())
        for (const int depth : {1, 3}) {
            const Bitmap source = Harsh_Picture(size.width, size.height, depth, 9);
            const Real_Rows exact = Blurred_Reference(source.View(), double(GetParam()));
            const Bitmap expected =
                Picture_Of(source.View(), [&](std::size_t y, std::size_t i) { return Level(exact[y][i]); });
            For_Every_Target([&] {
                const auto actual = Blurred(source.View(), {GetParam(), 100, 7});
                ASSERT_TRUE(actual);
                EXPECT_LE(Difference_Of(expected.View(), actual->View()).most, 1) << size.width << " x " << size.height;
                for (const int level : {0, 77, 255}) {
                    const Bitmap flat = Flat_Picture(size.width, size.height, depth, level);
                    const auto same = Blurred(flat.View(), {GetParam(), 100, 7});
                    ASSERT_TRUE(same);
                    EXPECT_EQ(0, Difference_Of(flat.View(), same->View()).most);
                }
            });
        }
}

TEST_P(Blur_Radius, Every_Flat_Level_Stays_However_Much_It_Is_Sharpened)
{
    For_Every_Target([&] {
        for (int level = 0; level <= 255; ++level) {
            const Bitmap flat = Flat_Picture(23, 2, 1, level);
            const auto same = Unsharp_Masked(flat.View(), {5, 5, GetParam(), 0, 0, 7});
            ASSERT_TRUE(same);
            EXPECT_EQ(0, Difference_Of(flat.View(), same->View()).most) << level;
        }
    });
}

TEST(Blur_Mix, Rounds_Once_Half_To_Even)
{
    For_Every_Target([] {
        for (int weight = 0; weight <= 100; ++weight)
            for (const std::size_t count : {1U, 5U, 16U, 67U, 301U}) {
                std::mt19937 random(unsigned(weight) * 1000U + unsigned(count));
                std::vector<std::uint8_t> source(count), actual(count);
                std::vector<std::int16_t> blurred(count);
                for (std::size_t i = 0; i < count; ++i) {
                    source[i] = std::uint8_t(random() >> 8);
                    blurred[i] = std::int16_t(random() % 256 * 128);
                    if (random() & 64) blurred[i] = std::int16_t(std::min(32640, blurred[i] + 64));
                }
                Mix_Blur_Row(source.data(), blurred.data(), count, weight, actual.data());
                for (std::size_t i = 0; i < count; ++i) {
                    const int sum = source[i] * 128 * (100 - weight) + blurred[i] * weight;
                    int level = sum / 12800;
                    const int rest = sum % 12800;
                    if (rest > 6400 || (rest == 6400 && level % 2 == 1)) ++level;
                    ASSERT_EQ(level, actual[i]) << "weight " << weight << " " << int(source[i]) << " " << blurred[i];
                }
            }
    });
}

TEST(Blur_Mix, Weight_0_Is_A_Copy)
{
    const Bitmap source = Random_Picture(71, 33, 3, 1);
    for (const int components : {1, 7, 8, 16, 255}) {
        const auto actual = Blurred(source.View(), {3.5F, 0, components});
        ASSERT_TRUE(actual);
        EXPECT_EQ(0, Difference_Of(source.View(), actual->View()).most) << components;
    }
}

class Filter_Components : public testing::TestWithParam<int> {};
INSTANTIATE_TEST_SUITE_P(All, Filter_Components,
                         testing::Values(1, 2, 4, 3, 5, 7, 8, 16, 32, 64, 128, 240, 15, 136, 255));

TEST_P(Filter_Components, Blur_Changes_What_The_Components_Say)
{
    const Bitmap source = Photograph(93, 61, 3);
    for (const float radius : {1.5F, 4.2F})
        for (const int weight : {100, 37}) {
            const Bitmap expected =
                Component_Reference(source.View(), double(radius), GetParam(),
                                    [&](double plane, double blurred) { return weight / 100.0 * (blurred - plane); });
            For_Every_Target([&] {
                const auto actual = Blurred(source.View(), {radius, weight, GetParam()});
                ASSERT_TRUE(actual);
                EXPECT_LE(Difference_Of(expected.View(), actual->View()).most, 1);
            });
        }
}

TEST_P(Filter_Components, Unsharp_Changes_What_The_Components_Say)
{
    const Bitmap source = Photograph(93, 61, 3);
    const Bitmap expected = Component_Reference(source.View(), 2.5, GetParam(), [&](double plane, double blurred) {
        const double d = plane - blurred;
        return d > 0 ? 0.75 * d : 0.5 * d;
    });
    For_Every_Target([&] {
        const auto actual = Unsharp_Masked(source.View(), {0.75F, 0.5F, 2.5F, 0, 0, GetParam()});
        ASSERT_TRUE(actual);
        EXPECT_LE(Difference_Of(expected.View(), actual->View()).most, 1);
    });
}

TEST(Filter_Components, A_Grey_Picture_Has_One_Plane)
{
    const Bitmap source = Photograph(80, 40, 1);
    const auto expected = Blurred(source.View(), {2.0F, 60, 7});
    ASSERT_TRUE(expected);
    for (const int components : {1, 8, 16, 128, 255}) {
        const auto actual = Blurred(source.View(), {2.0F, 60, components});
        ASSERT_TRUE(actual);
        EXPECT_EQ(0, Difference_Of(expected->View(), actual->View()).most);
    }
}

namespace {

std::vector<std::vector<std::int16_t>> Blurred_Samples(const Bitmap_View& source, float radius)
{
    std::vector<std::vector<std::int16_t>> blurred(std::size_t(source.height));
    for (auto& row : blurred) row.resize(source.Row_Bytes());
    EXPECT_TRUE(Blur_Parts(source, radius, [&](const Blurred_Part& part) {
        std::copy_n(part.samples, part.count, blurred[std::size_t(part.y)].begin() + std::ptrdiff_t(part.first));
    }));
    return blurred;
}

double Sharpening_Change(int level, std::int16_t blurred, const Unsharp_Settings& s)
{
    const double d = level - blurred / 128.0;
    if (d > s.lighten_threshold) return double(s.lighten_amount) * d;
    return d < -s.darken_threshold ? double(s.darken_amount) * d : 0;
}

/// Smooth enough that many differences lie at the thresholds, and of levels with room for all changes.
Bitmap Smooth_Picture()
{
    return Drawn_Picture(119, 45, 3, [](int x, int y, int c) { return 90 + (x * 7 + y * 5 + c * 3) % 60; });
}

// Amounts of few binary digits, so that the products are exact whether or not they are fused with the sum.
constexpr Unsharp_Settings exact_settings[] = {{1.5F, 0.75F, 2.5F, 0, 0, 7},
                                               {0.75F, 0.75F, 2.5F, 0, 0, 7},
                                               {5, 5, 2.5F, 3, 12, 7},
                                               {1.5F, 0.75F, 2.5F, 1, 1, 7},
                                               {0, 2, 2.5F, 255, 0, 7}};

} // namespace

TEST(Unsharp, Is_Exact_Given_The_Blur)
{
    const Bitmap pictures[] = {Random_Picture(119, 45, 3, 6), Smooth_Picture()};
    for (const Bitmap& source : pictures)
        for (const Unsharp_Settings& s : exact_settings) {
            const auto blurred = Blurred_Samples(source.View(), 2.5F);
            const Bitmap expected = Picture_Of(source.View(), [&](std::size_t y, std::size_t i) {
                const int level = source.View().Row(int(y))[i];
                return Level(level + Sharpening_Change(level, blurred[y][i], s));
            });
            For_Every_Target([&] {
                const auto actual = Unsharp_Masked(source.View(), s);
                ASSERT_TRUE(actual);
                EXPECT_EQ(0, Difference_Of(expected.View(), actual->View()).most);
            });
        }
}

class Plane_Filter : public testing::TestWithParam<int> {};
INSTANTIATE_TEST_SUITE_P(All, Plane_Filter, testing::Values(8, 16, 32, 64, 128));

TEST_P(Plane_Filter, Is_Exact_Given_The_Blur)
{
    const Bitmap source = Smooth_Picture();
    const Bitmap plane = Plane_Picture_Of(source.View(), GetParam());
    const auto blurred = Blurred_Samples(plane.View(), 2.5F);
    const auto expected_of = [&](auto&& change) {
        return Picture_Of(source.View(), [&](std::size_t y, std::size_t i) {
            const int level = source.View().Row(int(y))[i];
            if (!Changes_Channel(GetParam(), int(i % 3))) return Level(level);
            return Level(level + change(plane.View().Row(int(y))[i / 3], blurred[y][i / 3]));
        });
    };
    for (Unsharp_Settings s : exact_settings) {
        s.components = GetParam();
        const Bitmap expected = expected_of([&](int level, std::int16_t b) { return Sharpening_Change(level, b, s); });
        const auto actual = Unsharp_Masked(source.View(), s);
        ASSERT_TRUE(actual);
        EXPECT_EQ(0, Difference_Of(expected.View(), actual->View()).most);
    }
    const Bitmap expected = expected_of([&](int level, std::int16_t b) { return 0.5 * (b / 128.0 - level); });
    const auto actual = Blurred(source.View(), {2.5F, 50, GetParam()});
    ASSERT_TRUE(actual);
    EXPECT_EQ(0, Difference_Of(expected.View(), actual->View()).most);
}

TEST(Filter_Arguments, Out_Of_Range_Are_Failures)
{
    const Bitmap source = Random_Picture(5, 5, 3, 1);
    const float no_number = std::numeric_limits<float>::quiet_NaN(), infinite = std::numeric_limits<float>::infinity();
    for (const float radius : {0.0F, 0.99F, 25.01F, -1.0F, -2147483648.0F, no_number, infinite, -infinite}) {
        EXPECT_FALSE(Blurred(source.View(), {radius, 100, 7})) << radius;
        EXPECT_FALSE(Blurred(source.View(), {radius, 100, 8})) << radius;
        EXPECT_FALSE(Unsharp_Masked(source.View(), {1, 1, radius, 0, 0, 7})) << radius;
    }
    for (const int weight : {-1, 101, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()})
        EXPECT_FALSE(Blurred(source.View(), {2, weight, 7})) << weight;
    for (const int components : {0, 256, -1, std::numeric_limits<int>::min()}) {
        EXPECT_FALSE(Blurred(source.View(), {2, 50, components})) << components;
        EXPECT_FALSE(Unsharp_Masked(source.View(), {1, 1, 2, 0, 0, components})) << components;
    }
    for (const float amount : {-0.01F, 5.01F, -2147483648.0F, no_number, infinite}) {
        EXPECT_FALSE(Unsharp_Masked(source.View(), {amount, 1, 2, 0, 0, 7})) << amount;
        EXPECT_FALSE(Unsharp_Masked(source.View(), {1, amount, 2, 0, 0, 7})) << amount;
    }
    for (const int threshold : {-1, 256, std::numeric_limits<int>::min()}) {
        EXPECT_FALSE(Unsharp_Masked(source.View(), {1, 1, 2, threshold, 0, 7})) << threshold;
        EXPECT_FALSE(Unsharp_Masked(source.View(), {1, 1, 2, 0, threshold, 7})) << threshold;
    }
}

TEST(Filter_Arguments, A_Split_That_Overflows_Is_A_Failure)
{
    Set_CMYK_Parameters({.black_gamma = 5.0F, .black_start = 0, .ink_limit = 765});
    const auto actual = Blurred(Flat_Picture(3, 3, 3, 200).View(), {2, 50, Component_Cyan});
    Set_CMYK_Parameters({});
    ASSERT_FALSE(actual);
    EXPECT_EQ("the CMYK split of a colour leaves 0 to 255", actual.error().text);
}
