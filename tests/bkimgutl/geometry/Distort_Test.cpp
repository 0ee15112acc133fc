#include "bkimgutl/geometry/Distort.h"

#include "bkimgutl/filter/Scale.h"
#include "tests/bkimgutl/Reference_Pictures.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

// Column x of row y of the result, in real arithmetic.
double Sample(const Bitmap_View& from, int y, double position, double step, Interpolation_Method method, int channel)
{
    const double widening = std::max(1.0, step);
    const double centre = std::clamp(position, 0.0, double(from.width - 1));
    double sum = 0;
    double weights = 0;
    for (int i = 0; i < from.width; ++i) {
        const double weight = Interpolation_Weight(method, (i - centre) / widening);
        sum += weight * from.Row(y)[i * from.bytes_per_pixel + channel];
        weights += weight;
    }
    return std::clamp(sum / weights, 0.0, 255.0);
}

TEST(Horizontally_Distorted, The_Pictures_Own_Edges_Change_Nothing)
{
    For_Edge_Case_Pictures([](const Bitmap& source) {
        if (source.Width() < 2) return;
        const double right = source.Width() - 1;
        for (const bool expand : {false, true}) {
            const auto same = Horizontally_Distorted(
                source.View(), {0, right, 0, right, source.Width(), 0, expand, Interpolation_Method::Lanczos3}, {});
            ASSERT_TRUE(same);
            EXPECT_TRUE(Same_Pixels(source.View(), same->View()));
            EXPECT_TRUE(Padding_Is_Zero(*same));
        }
    });
}

TEST(Horizontally_Distorted, Cropping_Stretches_Each_Row_Between_Its_Edges)
{
    const Bitmap source = Random_Picture(90, 21, 3, 4);
    for (int number = 1; number <= 8; ++number) {
        const auto method = Interpolation_Method(number);
        const auto result = Horizontally_Distorted(source.View(), {20.25, 60.5, 3.75, 85.5, 70, 0, false, method}, {});
        ASSERT_TRUE(result);
        Bitmap expected = Plain_Picture(70, 21, 3, 0, 0, 0);
        const auto to = expected.Change();
        for (int y = 0; y < 21; ++y) {
            const double left = 20.25 + (3.75 - 20.25) * y / 20;
            const double right = 60.5 + (85.5 - 60.5) * y / 20;
            const double step = (right - left) / 69;
            for (int x = 0; x < 70; ++x)
                for (int c = 0; c < 3; ++c)
                    to.Row(y)[3 * x + c] =
                        std::uint8_t(std::lround(Sample(source.View(), y, left + x * step, step, method, c)));
        }
        EXPECT_TRUE(Pixels_Within(1, expected.View(), result->View())) << "method " << number;
    }
}

TEST(Horizontally_Distorted, Expanding_Lines_The_Segments_Up_And_Fills_With_Background)
{
    Bitmap source = Plain_Picture(100, 11, 1, 100, 0, 0);
    const auto view = source.Change();
    for (int y = 0; y < 11; ++y) { // two dark lines that lean towards each other at the top
        view.Row(y)[30 - 2 * y] = 0;
        view.Row(y)[70 + 2 * y] = 0;
    }
    // The wider segment, 10 to 90 at the bottom, keeps its scale; column 0 is 40 pixels left of the picture's own edge.
    const auto result = Horizontally_Distorted(
        source.View(), {30, 70, 10, 90, 180, -40, true, Interpolation_Method::Triangle}, {255, 255, 255});
    ASSERT_TRUE(result);
    const Bitmap_View made = result->View();
    for (int y = 0; y < 11; ++y) {
        EXPECT_LT(made.Row(y)[50], 60) << y;
        EXPECT_LT(made.Row(y)[130], 60) << y;
        EXPECT_EQ(made.Row(y)[90], 100) << y;
    }
    EXPECT_EQ(made.Row(10)[39], 255);
    EXPECT_EQ(made.Row(10)[40], 100);
    EXPECT_EQ(made.Row(10)[139], 100);
    EXPECT_EQ(made.Row(10)[140], 255);
    EXPECT_EQ(made.Row(0)[0], 100) << "the narrow row is stretched beyond the wide one";
}

struct Distortion_Case {
    const char* name;
    Horizontal_Distortion distortion;
};

class Distortion_Refused : public testing::TestWithParam<Distortion_Case> {};

TEST_P(Distortion_Refused, With_A_Reason)
{
    const Bitmap source = Random_Picture(20, 10, 3, 4);
    const auto result = Horizontally_Distorted(source.View(), GetParam().distortion, {});
    ASSERT_FALSE(result);
    EXPECT_FALSE(result.error().text.empty());
}

constexpr auto triangle = Interpolation_Method::Triangle;
constexpr double nan_value = std::numeric_limits<double>::quiet_NaN();
INSTANTIATE_TEST_SUITE_P(
    All, Distortion_Refused,
    testing::Values(Distortion_Case{"crossed_top", {10, 5, 0, 19, 20, 0, false, triangle}},
                    Distortion_Case{"empty_bottom", {0, 19, 7, 7, 20, 0, false, triangle}},
                    Distortion_Case{"not_a_number", {nan_value, 19, 0, 19, 20, 0, false, triangle}},
                    Distortion_Case{"endless",
                                    {0, std::numeric_limits<double>::infinity(), 0, 19, 20, 0, true, triangle}},
                    Distortion_Case{"no_width", {0, 19, 0, 19, 0, 0, false, triangle}},
                    Distortion_Case{"shrinks_beyond_reason", {0, 1e8, 0, 19, 20, 0, false, triangle}},
                    Distortion_Case{"no_method", {0, 19, 0, 19, 20, 0, false, Interpolation_Method::None}},
                    Distortion_Case{"unknown_method", {0, 19, 0, 19, 20, 0, false, Interpolation_Method(9)}},
                    Distortion_Case{"wider_than_the_limit", {0, 19, 0, 19, 2'000'000'000, 0, true, triangle}}),
    [](const auto& row) { return row.param.name; });

} // namespace
