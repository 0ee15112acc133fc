#include "bkimgutl/filter/Scale.h"
#include "tests/bkimgutl/Picture_Fixtures.h"

#include <cmath>
#include <numeric>

namespace {

/// What one sample of a scaled line is made of: neighbours of the old line, their weights with the sum 1.
struct Sample_Recipe {
    int first = 0;
    std::vector<double> weights{};
};

std::vector<Sample_Recipe> Recipes(int from, int to, Interpolation_Method method)
{
    const double ratio = double(from) / to, widening = std::max(ratio, 1.0);
    std::vector<Sample_Recipe> recipes;
    for (int i = 0; i < to; ++i) {
        const double centre = (i + 0.5) * ratio - 0.5, reach = Interpolation_Support(method) * widening;
        Sample_Recipe recipe{.first = std::max(0, int(std::ceil(centre - reach)) - 1)};
        double sum = 0;
        for (int j = recipe.first; j <= std::min(from - 1.0, centre + reach + 1); ++j) {
            // One division of whole numbers, so that the border between two boxes is where it is.
            const double distance = ((2.0 * j + 1) * to - (2.0 * i + 1) * from) / (2.0 * std::max(from, to));
            recipe.weights.push_back(Interpolation_Weight(method, distance));
            sum += recipe.weights.back();
        }
        for (double& weight : recipe.weights) weight /= sum;
        recipes.push_back(std::move(recipe));
    }
    return recipes;
}

/// One line of samples with real numbers throughout.
std::vector<double> Scaled_Line(const std::vector<double>& line, const std::vector<Sample_Recipe>& recipes)
{
    std::vector<double> out;
    for (const Sample_Recipe& recipe : recipes)
        out.push_back(
            std::inner_product(recipe.weights.begin(), recipe.weights.end(), line.data() + recipe.first, 0.0));
    return out;
}

Bitmap Scaled_Reference(const Bitmap_View& source, int width, int height, Interpolation_Method method)
{
    const auto across = Recipes(source.width, width, method);
    const auto down = Recipes(source.height, height, method);
    Bitmap result = New_Picture(width, height, source.bytes_per_pixel);
    const auto target = result.Change();
    for (int c = 0; c < source.bytes_per_pixel; ++c) {
        std::vector<std::vector<double>> middle;
        for (int y = 0; y < source.height; ++y) {
            std::vector<double> line;
            for (int x = 0; x < source.width; ++x) line.push_back(source.Row(y)[x * source.bytes_per_pixel + c]);
            middle.push_back(Scaled_Line(line, across));
        }
        for (int x = 0; x < width; ++x) {
            std::vector<double> line;
            for (const auto& row : middle) line.push_back(row[std::size_t(x)]);
            const auto scaled = Scaled_Line(line, down);
            for (int y = 0; y < height; ++y)
                target.Row(y)[x * source.bytes_per_pixel + c] =
                    std::uint8_t(std::clamp(std::nearbyint(scaled[std::size_t(y)]), 0.0, 255.0));
        }
    }
    return result;
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
                    Scale_Case{"enlarged_unevenly", 29, 31, 97, 71}, Scale_Case{"narrower_and_higher", 150, 20, 41, 75},
                    Scale_Case{"wider_and_lower", 21, 150, 77, 40}, Scale_Case{"to_one_pixel", 301, 203, 1, 1},
                    Scale_Case{"from_one_pixel", 1, 1, 70, 19}, Scale_Case{"one_row", 300, 1, 77, 1},
                    Scale_Case{"one_column", 1, 300, 1, 411}, Scale_Case{"a_hundredth", 900, 700, 9, 7},
                    Scale_Case{"two_pixels", 2, 2, 5, 3}),
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
                    EXPECT_LE(Difference_Of(expected.View(), actual->View()).most, 1)
                        << "method " << method << " depth " << depth;
                });
            }
}

TEST_P(Scale, Flat_Pictures_Stay_Flat_Up_To_The_Edges)
{
    const Scale_Case& c = GetParam();
    for (const int level : {0, 1, 128, 255})
        for (int method = 1; method <= 8; ++method) {
            const auto actual = Scaled(Flat_Picture(c.from_width, c.from_height, 3, level).View(), c.to_width,
                                       c.to_height, Interpolation_Method(method));
            ASSERT_TRUE(actual);
            EXPECT_EQ(0, Difference_Of(Flat_Picture(c.to_width, c.to_height, 3, level).View(), actual->View()).most);
        }
}

TEST(Scale_Box, Is_Exact_For_Whole_Ratios)
{
    for (const int ratio : {2, 3, 4, 5, 8}) {
        const Bitmap source = Random_Picture(30 * ratio, 20 * ratio, 3, unsigned(ratio));
        const auto actual = Scaled(source.View(), 30, 20, Interpolation_Method::Box);
        ASSERT_TRUE(actual);
        const Bitmap expected = Drawn_Picture(30, 20, 3, [&](int x, int y, int c) {
            int sum = 0;
            for (int j = 0; j < ratio * ratio; ++j)
                sum += source.View().Row(y * ratio + j / ratio)[(x * ratio + j % ratio) * 3 + c];
            return (2 * sum + ratio * ratio) / (2 * ratio * ratio);
        });
        EXPECT_EQ(0, Difference_Of(expected.View(), actual->View()).most) << ratio;
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
