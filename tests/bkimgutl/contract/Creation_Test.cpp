#include "bkimgutl/contract/Creation.h"

#include "bkimgutl/core/Background_Color.h"
#include "bkimgutl/core/Handle_Table.h"
#include "bkimgutl/core/Last_Error.h"
#include "bkimgutl/geometry/Turn.h"
#include "tests/bkimgutl/Reference_Pictures.h"

#include <algorithm>
#include <functional>

namespace {

/// A bitmap of the contract, released at its end.
class Owned {
public:
    explicit Owned(Bitmap_Handle handle) : handle_(handle) {}
    Owned(const Owned&) = delete;
    Owned& operator=(const Owned&) = delete;
    ~Owned()
    {
        if (handle_ != 0) {
            EXPECT_EQ(Delete_Bitmap_CPP(handle_), Flag_True);
        }
    }
    operator Bitmap_Handle() const { return handle_; }
    const Bitmap& operator*() const { return **Find_Bitmap(handle_); }
    const Bitmap* operator->() const { return *Find_Bitmap(handle_); }

private:
    Bitmap_Handle handle_;
};

TEST(Empty_Bitmap, Is_All_Zero_And_Takes_Three_Bytes_For_None)
{
    { // dirt for the pool to hand out
        const Bitmap dirt = Plain_Picture(1500, 1000, 3, 255, 255, 255);
    }
    const Owned bitmap(Create_Empty_Bitmap_CPP(1500, 1000, 0, 8));
    ASSERT_NE(bitmap, 0);
    EXPECT_TRUE(Same_Pixels(Plain_Picture(1500, 1000, 3, 0, 0, 0).View(), bitmap->View()));
}

TEST(Empty_Bitmap, Refuses_Other_Sample_Sizes_And_Depths)
{
    EXPECT_EQ(Create_Empty_Bitmap_CPP(5, 5, 3, 16), 0);
    EXPECT_EQ(Create_Empty_Bitmap_CPP(5, 5, 2, 8), 0);
    EXPECT_EQ(Create_Empty_Bitmap_CPP(5, 5, 4, 8), 0);
    EXPECT_EQ(Create_Empty_Bitmap_CPP(0, 5, 3, 8), 0);
    EXPECT_EQ(Create_Empty_Bitmap_CPP(INT32_MAX, INT32_MAX, 3, 8), 0);
    EXPECT_NE(Last_Error_Text().find("limit"), std::string::npos);
}

TEST(Bitmap_Facts, Are_Those_Of_The_Layout)
{
    const Owned color(Create_Empty_Bitmap_CPP(5, 4, 3, 8));
    const Owned grey(Create_Empty_Bitmap_CPP(5, 4, 1, 8));
    Bitmap_Facts facts;
    ASSERT_NE(Get_Bitmap_Facts_CPP(color, &facts), Flag_False);
    EXPECT_EQ(facts.stride, 16);
    EXPECT_EQ(facts.bits_per_pixel, 24);
    ASSERT_NE(Get_Bitmap_Facts_CPP(grey, &facts), Flag_False);
    EXPECT_EQ(facts.stride, 8);
    EXPECT_EQ(facts.bits_per_pixel, 8);
    EXPECT_EQ(facts.width, 5);
    EXPECT_EQ(facts.height, 4);
}

TEST(Bitmap_Bytes, Come_And_Go_In_Memory_Order_Bottom_Row_First)
{
    const Owned bitmap(Create_Empty_Bitmap_CPP(3, 2, 1, 8));
    const std::uint8_t bytes[8] = {1, 2, 3, 99, 4, 5, 6, 99}; // 99 stands in the padding
    ASSERT_NE(Put_Bitmap_Bytes_CPP(bitmap, bytes, 8), Flag_False);
    EXPECT_EQ(Row_Bytes(bitmap->View(), 1), (std::vector<std::uint8_t>{1, 2, 3}));
    EXPECT_EQ(Row_Bytes(bitmap->View(), 0), (std::vector<std::uint8_t>{4, 5, 6}));
    EXPECT_TRUE(Padding_Is_Zero(*bitmap));
    std::uint8_t back[8];
    ASSERT_NE(Get_Bitmap_Bytes_CPP(bitmap, back, 8), Flag_False);
    EXPECT_EQ((std::vector<std::uint8_t>(back, back + 8)), (std::vector<std::uint8_t>{1, 2, 3, 0, 4, 5, 6, 0}));
}

TEST(Bitmap_Bytes, Of_Another_Size_Are_Refused)
{
    const Owned bitmap(Create_Empty_Bitmap_CPP(3, 2, 1, 8));
    std::uint8_t bytes[8] = {};
    EXPECT_EQ(Get_Bitmap_Bytes_CPP(bitmap, bytes, 7), Flag_False);
    EXPECT_EQ(Put_Bitmap_Bytes_CPP(bitmap, bytes, 6), Flag_False);
    EXPECT_EQ(Put_Bitmap_Bytes_CPP(bitmap, nullptr, 8), Flag_False);
}

TEST(Cropped_Bitmap, Takes_Left_And_Top_One_Based)
{
    const Owned source(Adopt(Random_Picture(6, 5, 3, 3)));
    const Owned part(Create_Cropped_Bitmap_CPP(source, 1, 1, 2, 2));
    ASSERT_NE(part, 0);
    EXPECT_EQ(part->View().Row(0)[0], source->View().Row(0)[0]);
    const Owned corner(Create_Cropped_Bitmap_CPP(source, 6, 5, 1, 1));
    ASSERT_NE(corner, 0);
    EXPECT_EQ(corner->View().Row(0)[2], source->View().Row(4)[17]);
    EXPECT_EQ(Create_Cropped_Bitmap_CPP(source, 0, 1, 2, 2), 0);
    EXPECT_EQ(Create_Cropped_Bitmap_CPP(source, 6, 5, 2, 1), 0);
    EXPECT_EQ(Create_Cropped_Bitmap_CPP(source, INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX), 0);
}

TEST(Rotated_Bitmap, Takes_Right_Angles_Only_And_Counterclockwise)
{
    const Owned source(Adopt(Random_Picture(6, 5, 3, 3)));
    const Owned turned(Create_Rectilinearly_Rotated_Bitmap_CPP(source, 90));
    ASSERT_NE(turned, 0);
    EXPECT_EQ(turned->View().Row(0)[0], source->View().Row(0)[15]) << "the top right pixel comes to the top left";
    for (const int degrees : {0, -90, 45, 360, 450})
        EXPECT_EQ(Create_Rectilinearly_Rotated_Bitmap_CPP(source, degrees), 0);
}

TEST(Rotated_Bitmap, Fills_Corners_With_The_Background_In_Force)
{
    Set_Background_Color({10, 20, 30});
    const Owned source(Adopt(Random_Picture(40, 40, 3, 3)));
    const Owned turned(Create_Arbitrarily_Rotated_Bitmap_CPP(source, 45.0F));
    Set_Background_Color({});
    ASSERT_NE(turned, 0);
    EXPECT_EQ(turned->View().Row(0)[0], 30);
    EXPECT_EQ(turned->View().Row(0)[2], 10);
    EXPECT_EQ(Create_Arbitrarily_Rotated_Bitmap_CPP(source, 360.0F), 0);
}

TEST(Flipped_Bitmap, Mirrors_Left_To_Right_For_The_First_Kind)
{
    const Owned source(Adopt(Random_Picture(6, 5, 3, 3)));
    const Owned first(Create_Flipped_Bitmap_CPP(source, Flag_True));
    const Owned second(Create_Flipped_Bitmap_CPP(source, Flag_False));
    EXPECT_TRUE(Same_Pixels(Turned(*source, Mirror_Left_To_Right)->View(), first->View()));
    EXPECT_TRUE(Same_Pixels(Turned(*source, Mirror_Top_To_Bottom)->View(), second->View()));
}

TEST(Flags, Are_True_When_They_Are_Not_Zero)
{
    constexpr Flag one = 1;
    const Owned source(Adopt(Random_Picture(20, 10, 3, 3)));
    const auto distorted = [&](Flag expand) {
        return Create_Horizontally_Distorted_Bitmap_CPP(source, 5, 15, 0, 19, 30, 10, 0, expand, 2);
    };
    EXPECT_TRUE(Same_Pixels(Owned(Create_Flipped_Bitmap_CPP(source, Flag_True))->View(),
                            Owned(Create_Flipped_Bitmap_CPP(source, one))->View()));
    EXPECT_TRUE(Same_Pixels(Owned(distorted(Flag_True))->View(), Owned(distorted(one))->View()));
    EXPECT_FALSE(Same_Pixels(Owned(distorted(Flag_False))->View(), Owned(distorted(one))->View()));
}

TEST(Distorted_Bitmap, Keeps_The_Height)
{
    const Owned source(Adopt(Random_Picture(20, 10, 3, 3)));
    for (const int height : {9, 11, 0, -10}) {
        EXPECT_EQ(Create_Horizontally_Distorted_Bitmap_CPP(source, 0, 19, 0, 19, 20, height, 0, Flag_False, 2), 0);
        EXPECT_EQ(Last_Error_Text(), "a horizontal distortion keeps the height");
    }
}

struct Creation_Call {
    const char* name;
    std::function<Bitmap_Handle(Bitmap_Handle)> call;
};

class Creation : public testing::TestWithParam<Creation_Call> {};

TEST_P(Creation, Leaves_The_Source_Alone_And_Refuses_Stale_And_Foreign_Handles)
{
    Bitmap_Handle source = Adopt(Random_Picture(37, 23, 3, 11));
    const Bitmap before = Random_Picture(37, 23, 3, 11);
    const Bitmap_Handle made = GetParam().call(source);
    EXPECT_NE(made, 0);
    EXPECT_NE(made, source);
    EXPECT_TRUE(Same_Pixels(before.View(), (*Find_Bitmap(source))->View()));
    EXPECT_EQ(Delete_Bitmap_CPP(made), Flag_True);
    EXPECT_EQ(Delete_Bitmap_CPP(source), Flag_True);
    EXPECT_EQ(Delete_Bitmap_CPP(source), Flag_False);
    for (const Bitmap_Handle bad : {source, 0, -1, 12345}) {
        EXPECT_EQ(GetParam().call(bad), 0);
        EXPECT_EQ(Last_Error_Text(), "invalid bitmap handle");
    }
}

INSTANTIATE_TEST_SUITE_P(
    All, Creation,
    testing::Values(
        Creation_Call{"copy", Create_Bitmap_Copy_CPP}, Creation_Call{"colour", Create_RGB_From_Grayscale_Bitmap_CPP},
        Creation_Call{"replicate", [](Bitmap_Handle s) { return Create_Integrally_Scaled_Bitmap_CPP(s, 2, 3); }},
        Creation_Call{"crop", [](Bitmap_Handle s) { return Create_Cropped_Bitmap_CPP(s, 1, 1, 2, 3); }},
        Creation_Call{"turn", [](Bitmap_Handle s) { return Create_Rectilinearly_Rotated_Bitmap_CPP(s, 270); }},
        Creation_Call{"rotate", [](Bitmap_Handle s) { return Create_Arbitrarily_Rotated_Bitmap_CPP(s, 12.5F); }},
        Creation_Call{"flip", [](Bitmap_Handle s) { return Create_Flipped_Bitmap_CPP(s, Flag_True); }},
        Creation_Call{"distort",
                      [](Bitmap_Handle s) {
                          return Create_Horizontally_Distorted_Bitmap_CPP(s, 3, 30, 0, 36, 37, 23, 0, Flag_False, 7);
                      }}),
    [](const auto& row) { return row.param.name; });

Bitmap Loaded_Picture(bool damaged, bool reduced)
{
    Bitmap bitmap = Random_Picture(4, 4, 1, 1);
    auto origin = std::make_shared<Pixel_Origin>();
    origin->damaged = damaged;
    origin->reduced = reduced;
    bitmap.Set_Origin(origin);
    return bitmap;
}

TEST(Source_Warnings, Tell_Of_Damage_And_Reduction_Until_The_First_Change)
{
    EXPECT_EQ(Get_Bitmap_Source_Warnings_CPP(Owned(Adopt(Loaded_Picture(false, false)))), 0);
    EXPECT_EQ(Get_Bitmap_Source_Warnings_CPP(Owned(Adopt(Loaded_Picture(true, false)))), 1);
    EXPECT_EQ(Get_Bitmap_Source_Warnings_CPP(Owned(Adopt(Loaded_Picture(false, true)))), 2);
    const Owned handle(Adopt(Loaded_Picture(true, true)));
    EXPECT_EQ(Get_Bitmap_Source_Warnings_CPP(handle), 3);
    const std::uint8_t bytes[16] = {};
    ASSERT_NE(Put_Bitmap_Bytes_CPP(handle, bytes, 16), Flag_False);
    EXPECT_EQ(Get_Bitmap_Source_Warnings_CPP(handle), 0);
    EXPECT_EQ(Get_Bitmap_Source_Warnings_CPP(0), 0);
}

} // namespace
