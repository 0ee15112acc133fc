// What windows are given to show: the picture and its thumbnail, turned further, with the script of the record.

#include "dev/samples/Jpeg_File.h"
#include "tests/catalogue/Picture_Fixture.h"

#include <algorithm>

namespace {

class Adjusted : public Picture_Test {
protected:
    Pixel_Size Size_Of(Bitmap_Handle bitmap)
    {
        const Owned_Bitmap owned(bitmap);
        return Size_Of_Bitmap(owned.Get());
    }
    Pixel_Size Thumbnail_Size(int rotate_delta)
    {
        bool is_copy = false;
        const Bitmap_Handle bitmap = form.Return_Thumbnail_Picture_Adjusted(key, rotate_delta, is_copy);
        EXPECT_TRUE(is_copy);
        return Size_Of(bitmap);
    }
    const int key = Pick(Make("a.jpg", 1600, 960, 1, "Crop(12,0,0,0)"));
};

TEST_F(Adjusted, The_Margins_Turn_With_The_Record_And_With_What_The_Caller_Adds)
{
    EXPECT_EQ((Pixel_Size{1588, 960}), Size_Of(form.Return_Picture_Adjusted(key, 0, 1)));
    EXPECT_EQ((Pixel_Size{960, 1588}), Size_Of(form.Return_Picture_Adjusted(key, 90, 1)));
    form.Rotate_Picture(key, 90);
    EXPECT_EQ((Pixel_Size{960, 1588}), Size_Of(form.Return_Picture_Adjusted(key, 0, 1)));
    EXPECT_EQ((Pixel_Size{1588, 960}), Size_Of(form.Return_Picture_Adjusted(key, 270, 1)));
    EXPECT_EQ((Pixel_Size{1600, 960}), Size_Of(form.Return_Picture(key, 270, 1))) << "without the script";
}

TEST_F(Adjusted, A_Thumbnail_Follows_Each_Flip_Of_Its_Record_And_Back)
{
    const auto bytes = Jpeg_File(Meadow(320, 200, 1));
    Put_File(File("meadow.jpg"), std::string(bytes.begin(), bytes.end()));
    const int meadow = Pick(Path("meadow.jpg"));
    const auto upright = Pixels_Of(Thumbnail(meadow));
    std::vector<std::vector<std::uint8_t>> seen{upright};
    for (const int flip : {Flip_Left_To_Right, Flip_Top_To_Bottom, 3}) {
        Item(meadow).Flip = flip;
        seen.push_back(Pixels_Of(Thumbnail(meadow)));
        EXPECT_EQ(1, std::count(seen.begin(), seen.end(), seen.back())) << flip;
    }
    Item(meadow).Flip = 0;
    EXPECT_EQ(upright, Pixels_Of(Thumbnail(meadow)));
}

TEST_F(Adjusted, No_Current_Picture_Holds_No_Bitmap)
{
    form.Pictures().Set_Current_Picture(1);
    EXPECT_EQ(1, form.State().Current_Picture_Index());
    EXPECT_TRUE(bool(form.State().Current_Picture_Bitmap));
    form.Pictures().Set_Current_Picture(0);
    EXPECT_EQ(0, form.State().Current_Picture_Index());
    EXPECT_FALSE(bool(form.State().Current_Picture_Bitmap));
}

TEST_F(Adjusted, A_Picture_Reduced_On_Loading_Rounds_Its_Margins_And_A_Thumbnail_Cuts_Them_Off)
{
    ASSERT_EQ(8, Item(key).Scale_Divisor);
    EXPECT_EQ((Pixel_Size{198, 120}), Size_Of(form.Return_Picture_Adjusted(key, 0, 8))) << "12 / 8 goes to 2";
    EXPECT_EQ((Pixel_Size{199, 120}), Thumbnail_Size(0)) << "and to 1";
    EXPECT_EQ((Pixel_Size{120, 199}), Thumbnail_Size(90));
    form.Rotate_Picture(key, 90);
    EXPECT_EQ((Pixel_Size{120, 199}), Thumbnail_Size(0));
    EXPECT_EQ((Pixel_Size{199, 120}), Thumbnail_Size(-90));
}

TEST_F(Adjusted, The_Left_Margin_Is_Cut_Where_The_Left_Edge_Has_Gone)
{
    const auto part = [](Bitmap_Handle whole, int left, int top, int width, int height) {
        const Owned_Bitmap owned(whole);
        return Pixels_Of(Owned_Bitmap(Crop_Bitmap(owned.Get(), left, top, width, height)).Get());
    };
    EXPECT_EQ(part(form.Return_Picture(key, 90, 1), 0, 0, 960, 1588),
              Pixels_Of(Owned_Bitmap(form.Return_Picture_Adjusted(key, 90, 1)).Get()))
        << "at the bottom, counterclockwise";
}

} // namespace
