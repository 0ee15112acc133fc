#include "bkimgutl/geometry/Rotate.h"

#include "bkimgutl/geometry/Cubic_Table.h"
#include "bkimgutl/geometry/Rotation_Map.h"
#include "bkimgutl/geometry/Turn.h"
#include "tests/bkimgutl/Reference_Pictures.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace {

constexpr Background_Color background{200, 40, 90};

double Cubic_Kernel(double t)
{
    t = std::abs(t);
    if (t < 1) return 1.5 * t * t * t - 2.5 * t * t + 1;
    if (t < 2) return -0.5 * t * t * t + 2.5 * t * t - 4 * t + 2;
    return 0;
}

double Cubic_Reference(const Bitmap_View& from, double u, double v, int channel)
{
    double sum = 0;
    for (int y = int(std::floor(v)) - 1; y <= int(std::floor(v)) + 2; ++y)
        for (int x = int(std::floor(u)) - 1; x <= int(std::floor(u)) + 2; ++x)
            sum += Cubic_Kernel(u - x) * Cubic_Kernel(v - y) *
                   from.Row(std::clamp(
                       y, 0, from.height - 1))[std::clamp(x, 0, from.width - 1) * from.bytes_per_pixel + channel];
    return std::clamp(sum, 0.0, 255.0);
}

double Cover(double position, int length)
{
    return std::clamp(std::min(position + 1, length - position), 0.0, 1.0);
}

Bitmap Rotated_Reference(const Bitmap_View& from, double degrees, int width, int height)
{
    Bitmap result = Plain_Picture(width, height, from.bytes_per_pixel, 0, 0, 0);
    const auto to = result.Change();
    const double cosine = std::cos(degrees * std::numbers::pi / 180);
    const double sine = std::sin(degrees * std::numbers::pi / 180);
    const double behind[3] = {from.Is_Grey() ? 93.0 : 90.0, 40, 200}; // the luminance of the background is 93
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const double dx = x + 0.5 - width / 2.0;
            const double dy = y + 0.5 - height / 2.0;
            const double u = dx * cosine - dy * sine + from.width / 2.0 - 0.5;
            const double v = dx * sine + dy * cosine + from.height / 2.0 - 0.5;
            const double cover = Cover(u, from.width) * Cover(v, from.height);
            for (int c = 0; c < from.bytes_per_pixel; ++c)
                to.Row(y)[x * from.bytes_per_pixel + c] =
                    std::uint8_t(std::lround(Cubic_Reference(from, u, v, c) * cover + behind[c] * (1 - cover)));
        }
    }
    return result;
}

TEST(Rotated, Is_Within_One_Level_Of_The_Reference_On_Edge_Case_Pictures)
{
    For_Edge_Case_Pictures([](const Bitmap& source) {
        for (const float degrees : {0.01F, 7.3F, 45.0F, 89.99F, 133.7F, 180.5F, 271.0F, 359.999F}) {
            SCOPED_TRACE(degrees);
            const Rotation_Map map(source.Width(), source.Height(), double(degrees));
            const Bitmap expected = Rotated_Reference(source.View(), double(degrees), map.width, map.height);
            For_Every_Target([&] {
                const auto rotated = Rotated(source, degrees, background);
                ASSERT_TRUE(rotated);
                EXPECT_TRUE(Pixels_Within(1, expected.View(), rotated->View()));
                EXPECT_TRUE(Padding_Is_Zero(*rotated));
            });
        }
    });
}

TEST(Rotated, By_Right_Angles_Is_Exact_And_Keeps_The_Origin)
{
    Bitmap source = Random_Picture(33, 21, 3, 4);
    source.Set_Origin(std::make_shared<Pixel_Origin>());
    for (int quarters = 0; quarters < 4; ++quarters) {
        const auto rotated = Rotated(source, 90.0F * float(quarters), background);
        ASSERT_TRUE(rotated);
        EXPECT_TRUE(Same_Pixels(Turned(source, {quarters, false})->View(), rotated->View()));
        ASSERT_NE(rotated->Origin(), nullptr);
        EXPECT_EQ(rotated->Origin()->symmetry.quarter_turns, quarters);
    }
    EXPECT_EQ(Rotated(source, 1.0F, background)->Origin(), nullptr);
}

TEST(Rotated, Turns_Counterclockwise_As_Seen)
{
    Bitmap source = Plain_Picture(41, 41, 1, 0, 0, 0);
    const auto view = source.Change();
    for (int y = 18; y < 23; ++y) view.Row(y)[38] = 255; // a mark at three o'clock
    const auto rotated = Rotated(source, 45.0F, {});
    const Bitmap_View turned = rotated->View();
    int best_x = 0;
    int best_y = 0;
    for (int y = 0; y < turned.height; ++y)
        for (int x = 0; x < turned.width; ++x)
            if (turned.Row(y)[x] > turned.Row(best_y)[best_x]) best_x = x, best_y = y;
    EXPECT_GT(best_x, turned.width / 2 + 8); // half past one
    EXPECT_LT(best_y, turned.height / 2 - 8);
}

TEST(Rotated, Holds_The_Whole_Picture_And_Fills_The_Corners_With_The_Background)
{
    const Bitmap source = Plain_Picture(100, 60, 3, 10, 20, 30);
    const auto rotated = Rotated(source, 30.0F, background);
    ASSERT_TRUE(rotated);
    EXPECT_EQ(rotated->Width(), 117);  // 100 cos 30 + 60 sin 30 = 116.6
    EXPECT_EQ(rotated->Height(), 102); // 100 sin 30 + 60 cos 30 = 101.96
    const Bitmap_View view = rotated->View();
    for (const int y : {0, 101}) {
        for (const int x : {0, 116}) {
            EXPECT_EQ(view.Row(y)[3 * x], 90);
            EXPECT_EQ(view.Row(y)[3 * x + 1], 40);
            EXPECT_EQ(view.Row(y)[3 * x + 2], 200);
        }
    }
    EXPECT_EQ(view.Row(51)[3 * 58], 30);
}

TEST(Rotated, Refuses_Angles_Outside_The_Circle)
{
    const Bitmap source = Random_Picture(3, 3, 3, 1);
    for (const float degrees : {-0.001F, 360.0F, 1e30F, -std::numeric_limits<float>::infinity(),
                                std::numeric_limits<float>::infinity(), std::numeric_limits<float>::quiet_NaN()})
        EXPECT_FALSE(Rotated(source, degrees, background)) << degrees;
}

TEST(Rotated, Rounds_To_Nearest)
{
    // What is cut off instead makes a picture darker by half a level.
    for (const int bytes_per_pixel : {1, 3}) {
        const Bitmap source = Random_Picture(119, 87, bytes_per_pixel, 12);
        const Rotation_Map map(119, 87, 7.3);
        const Bitmap expected = Rotated_Reference(source.View(), 7.3, map.width, map.height);
        For_Every_Target([&] {
            const auto rotated = Rotated(source, 7.3F, background);
            ASSERT_TRUE(rotated);
            const Bitmap_View a = expected.View(), b = rotated->View();
            double sum = 0;
            for (int y = 0; y < a.height; ++y)
                for (std::size_t i = 0; i < a.Row_Bytes(); ++i) sum += b.Row(y)[i] - a.Row(y)[i];
            EXPECT_NEAR(0, sum / (double(a.Row_Bytes()) * a.height), 0.03);
        });
    }
}

TEST(Rotated, Sides_That_Are_Whole_Stay_Whole)
{
    // Angles of right-angled triangles with whole sides.
    const int triangles[][3] = {{3, 4, 5},   {4, 3, 5},    {5, 12, 13}, {8, 15, 17},
                                {7, 24, 25}, {20, 21, 29}, {12, 35, 37}};
    for (const auto& [opposite, adjacent, hypotenuse] : triangles)
        for (int times = 1; times <= 40; ++times) {
            const int side = times * hypotenuse;
            const double degrees = std::atan2(opposite, adjacent) * 180 / std::numbers::pi;
            const Rotation_Map map(side, side, degrees);
            EXPECT_EQ(times * (opposite + adjacent), map.width);
            EXPECT_EQ(times * (opposite + adjacent), map.height);
        }
    const Rotation_Map hardly(1000, 800, 1e-8);
    EXPECT_EQ(1000, hardly.width);
    EXPECT_EQ(800, hardly.height);
}

} // namespace
