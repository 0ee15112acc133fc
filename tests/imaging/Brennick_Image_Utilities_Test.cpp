#include "imaging/Brennick_Image_Utilities.h"

#include "tests/imaging/Small_Pictures.h"

#include <QtCore/QTemporaryDir>
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

TEST_F(Wrappers, A_Bitmap_That_Is_No_More_Is_Not_Counted_Twice)
{
    const Bitmap_Handle copy = Copy_Bitmap(source.Get());
    for (int round = 0; round < 3; ++round) Delete_Bitmap(copy);
    EXPECT_EQ(1, Bitmap_Count());
}

TEST_F(Wrappers, A_Turn_By_Nothing_Copies_And_One_By_Any_Angle_Holds_The_Whole_Picture)
{
    for (const int degrees : {0, 360, -360}) {
        const Owned_Bitmap copy(Rotate_Bitmap(source.Get(), degrees));
        EXPECT_NE(source.Get(), copy.Get());
        EXPECT_EQ(Colors_Of(source.Get()), Colors_Of(copy.Get())) << degrees;
    }
    const Owned_Bitmap turned(Rotate_Bitmap(source.Get(), -270));
    EXPECT_EQ((std::vector{1, 11, 0, 10}), Colors_Of(turned.Get()));
    const Owned_Bitmap oblique(Rotate_Bitmap(source.Get(), 45));
    EXPECT_GE(Size_Of_Bitmap(oblique.Get()).width, 3);
}

TEST_F(Wrappers, A_Load_That_Succeeds_Leaves_No_Reason)
{
    QTemporaryDir folder;
    const QString path = folder.filePath("a.tif");
    EXPECT_EQ(0, Load_Bitmap(path, 0, 1, 0));
    EXPECT_FALSE(Last_Load_Error().isEmpty());
    ASSERT_TRUE(Save_Bitmap(source.Get(), path, 2, {}));
    const Owned_Bitmap loaded(Load_Bitmap(path, 0, 1, 0));
    EXPECT_EQ(QString(), Last_Load_Error());
    EXPECT_EQ(Colors_Of(source.Get()), Colors_Of(loaded.Get()));
}

TEST_F(Wrappers, A_Crop_Counts_From_0_Where_The_Library_Counts_From_1)
{
    const Owned_Bitmap corner(Crop_Bitmap(source.Get(), 1, 0, 1, 2));
    EXPECT_EQ((std::vector{1, 11}), Colors_Of(corner.Get()));
}

} // namespace
