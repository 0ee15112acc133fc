#include "bkimgutl/codecs/Upright_Rows.h"

#include "tests/bkimgutl/Reference_Pictures.h"

#include <cstring>

namespace {

/// One pixel after a symmetry, step by step.
void Step_By_Step(const Bitmap_View& from, Mutable_Bitmap_View to, Pixel_Symmetry symmetry, int x, int y)
{
    const std::uint8_t* pixel = from.Row(y) + x * from.bytes_per_pixel;
    int width = from.width;
    int height = from.height;
    if (symmetry.mirrored) x = width - 1 - x;
    for (int turn = 0; turn < symmetry.quarter_turns; ++turn) {
        const int old = x;
        x = y;
        y = width - 1 - old;
        std::swap(width, height);
    }
    std::memcpy(to.Row(y) + x * from.bytes_per_pixel, pixel, std::size_t(from.bytes_per_pixel));
}

TEST(Upright_Rows, Lay_Out_Every_Symmetry_Of_Every_Size)
{
    For_Edge_Case_Pictures([](const Bitmap& picture) {
        const Bitmap_View from = picture.View();
        for (int index = 0; index < 8; ++index) {
            const Pixel_Symmetry symmetry{.quarter_turns = index % 4, .mirrored = index >= 4};
            const bool swaps = symmetry.Swaps_Sides();
            const int width = swaps ? from.height : from.width;
            const int height = swaps ? from.width : from.height;
            auto expected = *Bitmap::Create(width, height, from.bytes_per_pixel);
            for (int y = 0; y < from.height; ++y) {
                for (int x = 0; x < from.width; ++x) Step_By_Step(from, expected.Change(), symmetry, x, y);
            }
            auto actual = *Bitmap::Create(width, height, from.bytes_per_pixel);
            Upright_Rows rows(actual.Change(), symmetry, from.width, from.height);
            for (int y = 0; y < from.height; ++y) {
                std::memcpy(rows.Next_Row(), from.Row(y), from.Row_Bytes());
                rows.Row_Is_Written();
            }
            rows.Finish();
            ASSERT_TRUE(Same_Pixels(expected.View(), actual.View())) << "symmetry " << index;
        }
    });
}

TEST(Box_Rows, Round_The_Mean_To_Nearest)
{
    Box_Rows box(3, 1, 2);
    const std::uint8_t above[] = {1, 2, 9};
    const std::uint8_t below[] = {2, 2, 10};
    std::uint8_t mean[2];
    box.Add(above);
    EXPECT_FALSE(box.Is_Full());
    box.Add(below);
    EXPECT_TRUE(box.Is_Full());
    box.Take(mean);
    EXPECT_EQ(2, mean[0]);  // 7 / 4
    EXPECT_EQ(10, mean[1]); // 19 / 2, a box of one column
    EXPECT_TRUE(box.Is_Empty());
}

TEST(Box_Rows, Take_A_Divisor_Near_The_Largest_Number)
{
    Box_Rows box(3, 1, 2147483647);
    const std::uint8_t row[] = {3, 6, 9};
    std::uint8_t mean[1];
    box.Add(row);
    box.Take(mean);
    EXPECT_EQ(6, mean[0]);
}

} // namespace
