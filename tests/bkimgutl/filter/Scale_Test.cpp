#include "bkimgutl/filter/Scale.h"
#include "tests/bkimgutl/Picture_Fixtures.h"
#include "tests/bkimgutl/filter/Filter_References.h"

#include <cmath>
#include <numeric>

namespace {

struct Filter_Case {
    const char* name;
    Interpolation_Method method;
    double support;
    std::vector<std::pair<double, double>> values; ///< distance, weight
};

std::ostream& operator<<(std::ostream& out, const Filter_Case& row)
{
    return out << row.name;
}

class Interpolation_Filter : public testing::TestWithParam<Filter_Case> {};

/// The values of the filters as they stand in textbooks; the reference of the other tests uses ours.
INSTANTIATE_TEST_SUITE_P(
    All, Interpolation_Filter,
    testing::Values(
        Filter_Case{"box", Interpolation_Method::Box, 0.5, {{0, 1}, {0.49, 1}, {0.51, 0}}},
        Filter_Case{"triangle", Interpolation_Method::Triangle, 1, {{0, 1}, {0.25, 0.75}, {0.5, 0.5}, {0.75, 0.25}}},
        Filter_Case{"bell",
                    Interpolation_Method::Bell,
                    1.5,
                    {{0, 3.0 / 4}, {0.25, 11.0 / 16}, {0.5, 1.0 / 2}, {1, 1.0 / 8}, {1.25, 1.0 / 32}}},
        Filter_Case{
            "hermite", Interpolation_Method::Hermite, 1, {{0, 1}, {0.25, 27.0 / 32}, {0.5, 1.0 / 2}, {0.75, 5.0 / 32}}},
        Filter_Case{"b_spline",
                    Interpolation_Method::B_Spline,
                    2,
                    {{0, 2.0 / 3}, {0.5, 23.0 / 48}, {1, 1.0 / 6}, {1.5, 1.0 / 48}}},
        Filter_Case{"lanczos_2",
                    Interpolation_Method::Lanczos2,
                    2,
                    {{0, 1}, {0.5, 0.573159168507}, {1, 0}, {1.5, -0.063684352056}}},
        Filter_Case{"lanczos_3",
                    Interpolation_Method::Lanczos3,
                    3,
                    {{0, 1}, {0.5, 0.607927101854}, {1, 0}, {1.5, -0.135094911523}, {2, 0}, {2.5, 0.024317084074}}},
        Filter_Case{"mitchell",
                    Interpolation_Method::Mitchell,
                    2,
                    {{0, 8.0 / 9}, {0.5, 77.0 / 144}, {1, 1.0 / 18}, {1.5, -5.0 / 144}}}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_P(Interpolation_Filter, Has_Its_Values_On_Both_Sides_And_None_Beyond)
{
    const Filter_Case& row = GetParam();
    EXPECT_EQ(row.support, Interpolation_Support(row.method));
    for (const auto& [distance, weight] : row.values) {
        EXPECT_NEAR(weight, Interpolation_Weight(row.method, distance), 1e-9) << distance;
        EXPECT_NEAR(weight, Interpolation_Weight(row.method, -distance), 1e-9) << -distance;
    }
    for (const double beyond : {row.support + 1e-9, row.support + 0.5, 100.0}) {
        EXPECT_NEAR(0, Interpolation_Weight(row.method, beyond), 1e-15);
        EXPECT_NEAR(0, Interpolation_Weight(row.method, -beyond), 1e-15);
    }
}

/// A sample on the border of two boxes belongs to the one on its left.
TEST(Interpolation_Filter, A_Border_Belongs_To_One_Box)
{
    EXPECT_EQ(1, Interpolation_Weight(Interpolation_Method::Box, 0.5));
    EXPECT_EQ(0, Interpolation_Weight(Interpolation_Method::Box, -0.5));
}

struct Scale_Case {
    const char* name;
    int from_width, from_height, to_width, to_height;
};

} // namespace

class Scale : public testing::TestWithParam<Scale_Case> {};

INSTANTIATE_TEST_SUITE_P(
    All, Scale,
    testing::Values(Scale_Case{"same_size", 40, 30, 40, 30}, Scale_Case{"quarter", 264, 128, 66, 32},
                    Scale_Case{"third", 201, 99, 67, 33}, Scale_Case{"uneven_reduction", 157, 111, 53, 40},
                    Scale_Case{"hardly_smaller", 131, 77, 130, 76}, Scale_Case{"enlarged_four_times", 33, 37, 132, 148},
                    Scale_Case{"enlarged_unevenly", 29, 31, 97, 71}, Scale_Case{"enlarged_three_times", 31, 29, 93, 87},
                    Scale_Case{"narrower_and_higher", 150, 20, 41, 75}, Scale_Case{"wider_and_lower", 21, 150, 77, 40},
                    Scale_Case{"to_one_pixel", 301, 203, 1, 1}, Scale_Case{"from_one_pixel", 1, 1, 70, 19},
                    Scale_Case{"one_row", 300, 1, 77, 1}, Scale_Case{"one_column", 1, 300, 1, 411},
                    Scale_Case{"a_hundredth", 900, 700, 9, 7}, Scale_Case{"large_blocks", 68, 64, 4, 4},
                    Scale_Case{"high_blocks", 6, 900, 3, 3}, Scale_Case{"two_pixels", 2, 2, 5, 3},
                    Scale_Case{"several_tiles_wide", 301, 40, 1203, 161},
                    Scale_Case{"narrower_and_much_higher", 611, 23, 571, 190},
                    Scale_Case{"only_wider", 600, 30, 1100, 30}, Scale_Case{"only_lower", 333, 90, 333, 37}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_P(Scale, Is_Within_One_Level_Of_Real_Numbers_For_Every_Filter)
{
    const Scale_Case& c = GetParam();
    for (const int depth : {1, 3})
        for (const bool harsh : {false, true})
            for (int method = 1; method <= 8; ++method) {
                const Bitmap source = harsh ? Harsh_Picture(c.from_width, c.from_height, depth, 7)
                                            : Random_Picture(c.from_width, c.from_height, depth, 8);
                const Bitmap expected =
                    Scaled_Reference(source.View(), c.to_width, c.to_height, Interpolation_Method(method));
                For_Every_Target([&] {
                    const auto actual = Scaled(source.View(), c.to_width, c.to_height, Interpolation_Method(method));
                    ASSERT_TRUE(actual) << actual.error().text;
                    const Difference difference = Difference_Of(expected.View(), actual->View());
                    EXPECT_LE(difference.most, 1) << "method " << method << " depth " << depth;
                    if (c.to_width * c.to_height >= 400 && method != 1) { // the means of boxes often lie half-way
                        EXPECT_LE(difference.mean, c.to_height < c.from_height ? 0.02 : 0.15) << "method " << method;
                    }
                });
            }
}

TEST_P(Scale, Flat_Pictures_Stay_Flat_Up_To_The_Edges)
{
    const Scale_Case& c = GetParam();
    for (const int level : {0, 1, 128, 255})
        for (int method = 1; method <= 8; ++method) {
            const Bitmap source = Flat_Picture(c.from_width, c.from_height, 3, level);
            const Bitmap expected = Flat_Picture(c.to_width, c.to_height, 3, level);
            For_Every_Target([&] {
                const auto actual = Scaled(source.View(), c.to_width, c.to_height, Interpolation_Method(method));
                ASSERT_TRUE(actual);
                EXPECT_EQ(0, Difference_Of(expected.View(), actual->View()).most);
            });
        }
}

TEST(Scale_Box, Is_Exact_For_Every_Reduction)
{
    const Scale_Case cases[] = {{"halves", 60, 40, 30, 20},
                                {"thirds", 93, 60, 31, 20},
                                {"quarters", 132, 80, 33, 20},
                                {"blocks_of_both_parities", 157, 111, 53, 40},
                                {"centres_on_borders", 105, 75, 42, 30},
                                {"only_lower", 67, 60, 67, 20},
                                {"only_narrower", 60, 33, 17, 33},
                                {"same_size", 41, 23, 41, 23},
                                {"last_sums_of_16_bits", 64, 64, 4, 4},
                                {"first_sums_of_32_bits", 68, 64, 4, 4},
                                {"largest_blocks", 63 * 3, 64 * 3, 3, 3},
                                {"to_one_pixel", 63, 63, 1, 1}};
    for (const Scale_Case& c : cases)
        for (const int depth : {1, 3})
            for (const bool harsh : {false, true}) {
                const Bitmap source = harsh ? Harsh_Picture(c.from_width, c.from_height, depth, 5)
                                            : Random_Picture(c.from_width, c.from_height, depth, 6);
                const Bitmap expected = Mean_Of_Blocks(source.View(), c.to_width, c.to_height);
                For_Every_Target([&] {
                    const auto actual = Scaled(source.View(), c.to_width, c.to_height, Interpolation_Method::Box);
                    ASSERT_TRUE(actual);
                    EXPECT_EQ(0, Difference_Of(expected.View(), actual->View()).most) << c.name << " depth " << depth;
                });
            }
}

TEST(Scale_Box, Rounds_Every_Sum_To_The_Nearest)
{
    // Blocks of n pixels with every sum there is around the halves.
    for (const int pixels : {2, 3, 4, 6, 7, 9, 12, 16, 63, 82, 94, 110, 121, 122, 164}) {
        const int sums = pixels * 255 + 1;
        const Bitmap source = Drawn_Picture(pixels * sums, 1, 1, [&](int x, int, int) {
            const int sum = x / pixels, i = x % pixels;
            return sum / pixels + (i < sum % pixels ? 1 : 0);
        });
        const Bitmap colored =
            Drawn_Picture(pixels * sums, 1, 3, [&](int x, int, int) { return source.View().Row(0)[x]; });
        const Bitmap expected = Mean_Of_Blocks(colored.View(), sums, 1);
        For_Every_Target([&] {
            const auto actual = Scaled(colored.View(), sums, 1, Interpolation_Method::Box);
            ASSERT_TRUE(actual);
            EXPECT_EQ(0, Difference_Of(expected.View(), actual->View()).most) << pixels;
        });
    }
}

TEST(Scale_Arguments, Out_Of_Range_Are_Failures)
{
    const Bitmap source = Flat_Picture(4, 4, 3, 9);
    for (const int method : {0, 9, -1, -2147483647})
        EXPECT_FALSE(Scaled(source.View(), 2, 2, Interpolation_Method(method))) << method;
    for (const auto& [width, height] :
         {std::pair(0, 1), {1, 0}, {-5, 4}, {-2147483647, -2147483647}, {2147483647, 2147483647}})
        EXPECT_FALSE(Scaled(source.View(), width, height, Interpolation_Method::Lanczos3)) << width;
}

TEST(Scale_Result, Does_Not_Depend_On_The_Processor)
{
    const Bitmap source = Random_Picture(211, 173, 3, 5);
    const auto expected = Scaled(source.View(), 83, 97, Interpolation_Method::Lanczos3);
    ASSERT_TRUE(expected);
    For_Every_Target([&] {
        const auto actual = Scaled(source.View(), 83, 97, Interpolation_Method::Lanczos3);
        ASSERT_TRUE(actual);
        EXPECT_EQ(0, Difference_Of(expected->View(), actual->View()).most);
    });
}
