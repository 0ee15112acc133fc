#include "imaging/Brennick_Image_Utilities.h"

#include "tests/imaging/Small_Pictures.h"

#include <gtest/gtest.h>

namespace {

class Wrappers : public testing::Test {
protected:
    void TearDown() override
    {
        source.Reset();
        EXPECT_EQ(0, Bitmap_Count());
    }
    Owned_Bitmap source{Drawn_Bitmap(
        2, 2, [](int x, int y) { return 10 * y + x; }, 1)};
};

TEST_F(Wrappers, Count_What_Is_Created_And_Released)
{
    EXPECT_EQ(1, Bitmap_Count());
    {
        const Owned_Bitmap copy(Copy_Bitmap(source.Get()));
        EXPECT_EQ(2, Bitmap_Count());
        EXPECT_EQ(0, Copy_Bitmap(0));
        EXPECT_EQ(2, Bitmap_Count()) << "a failure is no bitmap";
    }
    EXPECT_EQ(1, Bitmap_Count());
}

TEST_F(Wrappers, A_Flip_Of_No_Kind_Gives_Nothing)
{
    const Owned_Bitmap across(Flip_Bitmap(source.Get(), 1)), over(Flip_Bitmap(source.Get(), 2));
    EXPECT_EQ((std::vector{1, 0, 11, 10}), Colors_Of(across.Get()));
    EXPECT_EQ((std::vector{10, 11, 0, 1}), Colors_Of(over.Get()));
    for (const int mode : {0, 3, -1}) EXPECT_EQ(0, Flip_Bitmap(source.Get(), mode)) << mode;
}

TEST_F(Wrappers, A_Crop_Counts_From_0_Where_The_Library_Counts_From_1)
{
    const Owned_Bitmap corner(Crop_Bitmap(source.Get(), 1, 0, 1, 2));
    EXPECT_EQ((std::vector{1, 11}), Colors_Of(corner.Get()));
}

} // namespace
