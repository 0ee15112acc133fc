#include "bkimgutl/tone/Color_Mix.h"

#include "bkimgutl/core/Color.h"
#include "tests/bkimgutl/Picture_Fixtures.h"

#include <cmath>
#include <limits>

namespace {

using Fields = std::array<std::int32_t, 19>;
constexpr Fields neutral{100, 0, 0, 100, 0, 100, 0, 100, 0, 0, 100, 100, 0, 0, 0, 0, 0, 0, 0};

double Row_Sum(const Fields& f, std::size_t row, const std::uint8_t* bgr)
{
    const double sum = f[row] / 100.0 * bgr[2] + f[row + 1] / 100.0 * bgr[1] + f[row + 2] / 100.0 * bgr[0];
    return std::clamp(sum * f[row + 3] / 100.0, 0.0, 255.0);
}

std::array<double, 3> Mixed_Reference(const Fields& f, const std::uint8_t* bgr)
{
    const double luminance = Row_Sum(f, 12, bgr), share = f[16] / 100.0;
    std::array<double, 3> out;
    for (std::size_t c = 0; c < 3; ++c) {
        const double channel = Row_Sum(f, 8 - 4 * c, bgr);
        const double blend = f[17] == 0   ? luminance
                             : f[17] == 1 ? std::max(channel, luminance)
                                          : std::min(channel, luminance);
        out[c] = channel + share * (blend - channel);
    }
    return out;
}

} // namespace

TEST(Color_Mix, The_Neutral_Record_Is_A_Copy)
{
    const auto mix = Color_Mix::From_Fields(neutral);
    ASSERT_TRUE(mix);
    for (const int depth : {1, 3}) {
        const Bitmap source = Random_Picture(61, 47, depth, 1);
        const auto actual = Color_Mixed(source.View(), *mix);
        ASSERT_TRUE(actual);
        EXPECT_EQ(0, Difference_Of(source.View(), actual->View()).most);
    }
}

TEST(Color_Mix, Agrees_With_Real_Numbers)
{
    std::mt19937 random(11);
    const Bitmap source = Random_Picture(61, 47, 3, 2);
    for (int round = 0; round < 60; ++round) {
        Fields fields;
        for (auto& field : fields) field = int(random() % 401) - 200;
        fields[16] = int(random() % 101), fields[17] = round % 3, fields[18] = 0;
        const auto mix = Color_Mix::From_Fields(fields);
        ASSERT_TRUE(mix);
        const auto actual = Color_Mixed(source.View(), *mix);
        ASSERT_TRUE(actual);
        for (int y = 0; y < 47; ++y)
            for (int x = 0; x < 61; ++x) {
                const auto expected = Mixed_Reference(fields, source.View().Row(y) + 3 * x);
                for (int c = 0; c < 3; ++c)
                    ASSERT_NEAR(expected[std::size_t(c)], actual->View().Row(y)[3 * x + c], 0.5 + 1e-9);
            }
    }
}

TEST(Color_Mix, Rounds_Half_To_Even)
{
    Fields fields = neutral;
    fields[0] = 50; // red 1 and 3 give 0.5 and 1.5
    const auto mix = Color_Mix::From_Fields(fields);
    ASSERT_TRUE(mix);
    const Bitmap source = Drawn_Picture(2, 1, 3, [](int x, int, int) { return 1 + 2 * x; });
    const auto actual = Color_Mixed(source.View(), *mix);
    ASSERT_TRUE(actual);
    EXPECT_EQ(0, actual->View().Row(0)[2]);
    EXPECT_EQ(2, actual->View().Row(0)[5]);
}

TEST(Color_Mix, To_Grey_Takes_The_Luminance_Of_The_Mix)
{
    Fields fields = neutral;
    fields[18] = -1;
    const auto mix = Color_Mix::From_Fields(fields);
    ASSERT_TRUE(mix);
    const Bitmap source = Random_Picture(20, 10, 3, 4);
    const auto actual = Color_Mixed(source.View(), *mix);
    ASSERT_TRUE(actual);
    for (int x = 0; x < 20; ++x) {
        const std::uint8_t* in = source.View().Row(3) + 3 * x;
        for (int c = 0; c < 3; ++c) EXPECT_EQ(RGB_To_Luminance(in[2], in[1], in[0]), actual->View().Row(3)[3 * x + c]);
    }
}

TEST(Color_Mix, Refuses_Fields_Out_Of_Range)
{
    for (std::size_t i = 0; i < 18; ++i)
        for (const std::int32_t wrong :
             {-201, 201, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()}) {
            Fields fields = neutral;
            fields[i] = wrong;
            EXPECT_FALSE(Color_Mix::From_Fields(fields)) << i << " " << wrong;
        }
}
