#include "bkimgutl/geometry/Copy.h"

#include "tests/bkimgutl/Reference_Pictures.h"

namespace {

TEST(Copied, Has_The_Same_Pixels_And_The_Same_Origin)
{
    For_Edge_Case_Pictures([](const Bitmap& source) {
        auto copy = Copied(source);
        ASSERT_TRUE(copy);
        EXPECT_TRUE(Same_Pixels(source.View(), copy->View()));
        EXPECT_TRUE(Padding_Is_Zero(*copy));
    });
    Bitmap source = Random_Picture(4, 4, 3, 1);
    source.Set_Origin(std::make_shared<Pixel_Origin>());
    EXPECT_EQ(Copied(source)->Origin(), source.Origin());
}

TEST(Colored, Repeats_Each_Grey_Byte_Three_Times)
{
    For_Edge_Case_Pictures([](const Bitmap& source) {
        const auto color = Colored(source);
        ASSERT_TRUE(color);
        EXPECT_TRUE(Padding_Is_Zero(*color));
        if (source.Bytes_Per_Pixel() == 3) {
            EXPECT_TRUE(Same_Pixels(source.View(), color->View()));
            return;
        }
        for (int y = 0; y < source.Height(); ++y)
            for (int i = 0; i < 3 * source.Width(); ++i)
                ASSERT_EQ(color->View().Row(y)[i], source.View().Row(y)[i / 3]);
    });
}

TEST(Replicated, Repeats_Pixels_In_Both_Directions)
{
    For_Edge_Case_Pictures([](const Bitmap& source) {
        const auto large = Replicated(source.View(), 3, 2);
        ASSERT_TRUE(large);
        ASSERT_EQ(large->Width(), 3 * source.Width());
        ASSERT_EQ(large->Height(), 2 * source.Height());
        EXPECT_TRUE(Padding_Is_Zero(*large));
        const int size = source.Bytes_Per_Pixel();
        for (int y = 0; y < large->Height(); ++y)
            for (int x = 0; x < large->Width(); ++x)
                for (int c = 0; c < size; ++c)
                    ASSERT_EQ(large->View().Row(y)[x * size + c], source.View().Row(y / 2)[x / 3 * size + c]);
    });
}

TEST(Replicated, Refuses_Factors_Below_One_And_Results_Beyond_The_Limit)
{
    const Bitmap source = Random_Picture(4, 4, 3, 1);
    EXPECT_FALSE(Replicated(source.View(), 0, 1));
    EXPECT_FALSE(Replicated(source.View(), 1, -1));
    EXPECT_FALSE(Replicated(source.View(), 2'000'000'000, 2'000'000'000));
}

struct Crop_Case {
    const char* name;
    std::int64_t left, top, width, height;
    bool fits;
};

class Cropped_Rectangle : public testing::TestWithParam<Crop_Case> {};

TEST_P(Cropped_Rectangle, Is_Cut_Out_Or_Refused)
{
    const auto& row = GetParam();
    const Bitmap source = Random_Picture(7, 5, 3, 1);
    const auto part = Cropped(source.View(), row.left, row.top, row.width, row.height);
    ASSERT_EQ(part.has_value(), row.fits);
    if (!part) return;
    EXPECT_TRUE(Padding_Is_Zero(*part));
    ASSERT_EQ(part->Width(), row.width);
    ASSERT_EQ(part->Height(), row.height);
    for (int y = 0; y < row.height; ++y)
        for (int i = 0; i < 3 * row.width; ++i)
            ASSERT_EQ(part->View().Row(y)[i], source.View().Row(int(row.top) + y)[3 * row.left + i]);
}

constexpr std::int64_t huge = std::int64_t(1) << 62;
INSTANTIATE_TEST_SUITE_P(
    All, Cropped_Rectangle,
    testing::Values(Crop_Case{"everything", 0, 0, 7, 5, true}, Crop_Case{"corner", 6, 4, 1, 1, true},
                    Crop_Case{"inside", 1, 2, 5, 2, true}, Crop_Case{"no_width", 0, 0, 0, 5, false},
                    Crop_Case{"negative_height", 0, 0, 7, -5, false},
                    Crop_Case{"left_of_the_picture", -1, 0, 3, 3, false},
                    Crop_Case{"above_the_picture", 0, -1, 3, 3, false}, Crop_Case{"one_too_wide", 1, 0, 7, 5, false},
                    Crop_Case{"one_too_high", 0, 1, 7, 5, false}, Crop_Case{"sum_overflows", huge, 0, huge, 1, false}),
    [](const auto& row) { return row.param.name; });

} // namespace
