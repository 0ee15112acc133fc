#include "bkimgutl/core/Bitmap.h"

#include "tests/bkimgutl/Reference_Pictures.h"

#include <limits>

namespace {

struct Size_Case {
    const char* name;
    std::int64_t width;
    std::int64_t height;
    int bytes_per_pixel;
    const char* reason;
};

class Bitmap_Refused : public testing::TestWithParam<Size_Case> {};

TEST_P(Bitmap_Refused, Names_The_Reason)
{
    const auto& row = GetParam();
    const auto bitmap = Bitmap::Create(row.width, row.height, row.bytes_per_pixel);
    ASSERT_FALSE(bitmap);
    EXPECT_NE(bitmap.error().text.find(row.reason), std::string::npos) << bitmap.error().text;
}

constexpr std::int64_t huge = std::numeric_limits<std::int64_t>::max();
INSTANTIATE_TEST_SUITE_P(All, Bitmap_Refused,
                         testing::Values(Size_Case{"no_width", 0, 5, 3, "no area"},
                                         Size_Case{"negative_height", 5, -1, 1, "no area"},
                                         Size_Case{"two_bytes_per_pixel", 5, 5, 2, "bytes per pixel"},
                                         Size_Case{"four_bytes_per_pixel", 5, 5, 4, "bytes per pixel"},
                                         Size_Case{"more_pixels_than_the_limit", 30000, 30000, 1, "limit"},
                                         Size_Case{"a_pixel_more_than_the_limit", 700'000'001, 1, 1, "limit"},
                                         Size_Case{"product_overflows_32_bits", 65536, 65537, 1, "limit"},
                                         Size_Case{"product_overflows_64_bits", huge / 2, huge / 2, 3, "limit"},
                                         Size_Case{"row_longer_than_32_bits", huge, 1, 3, "limit"},
                                         Size_Case{"more_rows_than_32_bits", 1, std::int64_t(1) << 32, 1, "limit"}),
                         [](const auto& row) { return row.param.name; });

TEST(Bitmap, Stride_Is_Padded_To_Four_Bytes_With_Zeros)
{
    for (int width = 1; width <= 9; ++width) {
        for (const int bytes_per_pixel : {1, 3}) {
            { // leave dirt in the memory that the next bitmap may get
                const Bitmap dirt = Plain_Picture(width + 1, 7, bytes_per_pixel, 255, 255, 255);
            }
            const auto bitmap = Bitmap::Create(width, 7, bytes_per_pixel);
            ASSERT_TRUE(bitmap);
            EXPECT_EQ(bitmap->Stride() % 4, 0U);
            EXPECT_LT(bitmap->Stride() - bitmap->View().Row_Bytes(), 4U);
            EXPECT_TRUE(Padding_Is_Zero(*bitmap));
        }
    }
}

TEST(Bitmap, The_Bottom_Row_Comes_First_In_Memory)
{
    const Bitmap bitmap = Random_Picture(5, 4, 3, 1);
    const Bitmap_View view = bitmap.View();
    EXPECT_EQ(view.step, -16);
    EXPECT_EQ(view.Row(3) + 3 * 16, view.Row(0));
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(view.Row(3)) % 64, 0U);
}

TEST(Bitmap, A_Change_Forgets_The_Origin)
{
    Bitmap bitmap = Random_Picture(5, 4, 3, 1);
    bitmap.Set_Origin(std::make_shared<Pixel_Origin>());
    const Bitmap moved = std::move(bitmap);
    EXPECT_NE(moved.Origin(), nullptr);
    Bitmap again = Random_Picture(5, 4, 3, 1);
    again.Set_Origin(moved.Origin());
    again.Change();
    EXPECT_EQ(again.Origin(), nullptr);
}

TEST(Bitmap, Beyond_The_Bytes_Of_Live_Bitmaps_Is_Refused)
{
    const std::size_t room = Current_Pixel_Memory_Use().most_live_bytes - Current_Pixel_Memory_Use().live_bytes;
    std::vector<Bitmap> bitmaps; // untouched pages cost nothing
    constexpr int side = 24000;
    const std::size_t fitting = room / (std::size_t(side) * side);
    for (std::size_t i = 0; i < fitting - fitting / 8; ++i) {
        auto bitmap = Bitmap::Create(side, side, 1);
        ASSERT_TRUE(bitmap) << bitmap.error().text;
        bitmaps.push_back(std::move(*bitmap));
    }
    bool refused = false;
    for (std::size_t i = 0; i <= fitting / 8 + 1 && !refused; ++i) {
        auto bitmap = Bitmap::Create(side, side, 1);
        refused = !bitmap;
        if (bitmap) bitmaps.push_back(std::move(*bitmap));
        if (refused) {
            EXPECT_NE(bitmap.error().text.find("not enough memory"), std::string::npos);
        }
    }
    EXPECT_TRUE(refused);
    bitmaps.clear();
    EXPECT_TRUE(Bitmap::Create(side, side, 1));
}

} // namespace
