#include "bkimgutl/bkimgutl.h"

#include "bkimgutl/core/Handle_Table.h"
#include "bkimgutl/core/Last_Error.h"

#include <gtest/gtest.h>

namespace {

struct Scripted_Window_System final : Window_System {
    Clipboard_Picture picture{};
    std::vector<std::string> names{};
    std::intptr_t asked = 0;

    Scripted_Window_System() { Install_Window_System(this); }
    ~Scripted_Window_System() override { Install_Window_System(nullptr); }
    Clipboard_Picture Picture_Of_Clipboard(std::intptr_t window) override
    {
        asked = window;
        return picture;
    }
    std::vector<std::string> Scalable_Font_Names(std::intptr_t device_context) override
    {
        asked = device_context;
        return names;
    }
};

TEST(Clipboard, Gives_A_New_Bitmap_Of_Three_Bytes_A_Pixel)
{
    Scripted_Window_System system;
    system.picture = {2, 2, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}};
    const Bitmap_Handle bitmap = Get_Bitmap_From_Clipboard(77);
    ASSERT_NE(0, bitmap);
    EXPECT_EQ(77, system.asked);
    Bitmap_Facts facts;
    ASSERT_TRUE(Get_Bitmap_Facts_CPP(bitmap, &facts));
    EXPECT_EQ(24, facts.bits_per_pixel);
    std::uint8_t bytes[16];
    ASSERT_TRUE(Get_Bitmap_Bytes_CPP(bitmap, bytes, sizeof bytes));
    const std::uint8_t expected[] = {7, 8, 9, 10, 11, 12, 0, 0, 1, 2, 3, 4, 5, 6, 0, 0}; // the bottom row first
    EXPECT_TRUE(std::equal(bytes, bytes + 16, expected));
    Release(bitmap);
}

struct Refusal_Case {
    const char* name;
    Clipboard_Picture picture;
    const char* reason;
};
class Clipboard_Refusal : public testing::TestWithParam<Refusal_Case> {};

TEST_P(Clipboard_Refusal, Gives_No_Bitmap_And_The_Reason)
{
    Scripted_Window_System system;
    system.picture = GetParam().picture;
    EXPECT_EQ(0, Get_Bitmap_From_Clipboard(0));
    EXPECT_NE(std::string_view::npos, Last_Error_Text().find(GetParam().reason)) << Last_Error_Text();
}

INSTANTIATE_TEST_SUITE_P(All, Clipboard_Refusal,
                         testing::Values(Refusal_Case{"no_picture", {}, "holds no picture"},
                                         Refusal_Case{"rows_are_missing", {2, 2, {1, 2, 3}}, "incomplete"},
                                         Refusal_Case{"too_large", {2000000000, 2000000000, {}}, "limit"}),
                         [](const auto& row) { return row.param.name; });

TEST(Clipboard, Without_A_Window_System_Is_A_Failure)
{
    EXPECT_EQ(0, Get_Bitmap_From_Clipboard(0));
    EXPECT_EQ("there is no window system", Last_Error_Text());
}

TEST(Font_Face_Names, Stand_In_The_Buffer_One_A_Line)
{
    Scripted_Window_System system;
    system.names = {"Sans", "Serif", "Typewriter"};
    char buffer[100];
    std::int32_t length = 0;
    EXPECT_EQ(3, Get_TrueType_Font_FaceNames(5, buffer, sizeof buffer, &length));
    EXPECT_EQ(5, system.asked);
    EXPECT_STREQ("Sans\nSerif\nTypewriter", buffer);
    EXPECT_EQ(21, length);
    EXPECT_EQ(3, Get_TrueType_Font_FaceNames(5, buffer, 10, &length));
    EXPECT_EQ(-10, length);
    EXPECT_EQ("Sans\nSerif", std::string_view(buffer, 10));
}

TEST(Font_Face_Names, Are_None_Without_A_Window_System)
{
    char buffer[10] = "x";
    std::int32_t length = 7;
    EXPECT_EQ(0, Get_TrueType_Font_FaceNames(0, buffer, sizeof buffer, &length));
    EXPECT_EQ(0, length);
    EXPECT_STREQ("", buffer);
}

} // namespace
