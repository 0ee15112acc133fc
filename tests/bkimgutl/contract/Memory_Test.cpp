// What the functions of the contract do where memory ends; of those for files, each request for memory is refused in turn.

#include "bkimgutl/bkimgutl.h"
#include "bkimgutl/core/Handle_Table.h"
#include "dev/samples/Camera_Block.h"
#include "dev/samples/Jpeg_File.h"
#include "tests/bkimgutl/contract/Refused_Memory.h"
#include "tests/support/Test_Folder.h"

#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <new>

namespace {

struct File_Function {
    const char* name;
    /// With the source and a free name; true when it did what it is for.
    std::function<bool(const std::string& source, Bitmap_Handle bitmap, const std::string& target)> call;
};

void PrintTo(const File_Function& function, std::ostream* out)
{
    *out << function.name;
}

template <class Byte>
bool Gives_A_Block(Flag (*get)(std::string_view, std::int32_t, Byte*, std::int32_t, std::int32_t*),
                   const std::string& path)
{
    Byte buffer[4096];
    std::int32_t length = 0;
    return get(path, 0, buffer, sizeof buffer, &length) != 0 && length > 0;
}

const File_Function Functions[] = {
    {"Type", [](const auto& source, auto, auto&) { return Get_Image_File_Type_From_Signature(source) != 0; }},
    {"Dimensions",
     [](const auto& source, auto, auto&) {
         return Get_File_Dimensions(source, 0, nullptr, nullptr, nullptr, nullptr, nullptr) != 0;
     }},
    {"Comment", [](const auto& source, auto, auto&) { return Gives_A_Block(Get_File_Comment, source); }},
    {"Script", [](const auto& source, auto, auto&) { return Gives_A_Block(Get_File_Image_Script, source); }},
    {"EXIF", [](const auto& source, auto, auto&) { return Gives_A_Block(Get_File_EXIF_Data, source); }},
    {"Load",
     [](const auto& source, auto, auto&) {
         const Bitmap_Handle bitmap = Load_Bitmap_From_File(source, 0, 1, 90);
         return bitmap != 0 && Release(bitmap);
     }},
    {"Save_As_JPEG",
     [](const auto& source, auto bitmap, auto& target) {
         return Save_Bitmap_To_File(bitmap, target, 1, "a comment", "a script", source, 50, -1, -1, nullptr) != 0;
     }},
    {"Save_As_TIFF",
     [](const auto& source, auto bitmap, auto& target) {
         return Save_Bitmap_To_File(bitmap, target, 2, "a comment", "a script", source, -2, -1, -1, nullptr) != 0;
     }},
    {"Save_Texts",
     [](const auto& source, auto, auto& target) {
         return Save_File_Texts(target, 0, "another comment", "another script", source, 300, 300) != 0;
     }},
    {"Keeps_All",
     [](const auto& source, auto bitmap, auto&) { return Test_Save_Keeps_All_CPP(bitmap, 1, source) != 0; }},
};

std::string Last_Text()
{
    char text[1024] = {};
    Get_Last_Image_Error_String(text, sizeof text, nullptr);
    return text;
}

class Memory_Ends : public testing::TestWithParam<File_Function> {};

TEST_P(Memory_Ends, So_It_Fails_With_A_Message_And_Leaves_No_File)
{
    const Test_Folder folder;
    const std::string source = folder.File("a.jpg"), target = folder.File("b");
    const auto bytes = Jpeg_File(Meadow(16, 16, 1), {.segments = {{0xE1, Camera_Block({})}}});
    Put_File(folder.File("plain.jpg"), {bytes.begin(), bytes.end()});
    ASSERT_TRUE(Save_File_Texts(source, 0, "comment", "script", folder.File("plain.jpg"), 72, 72));
    const Bitmap_Handle bitmap = Load_Bitmap_From_File(source, 0, 1, 0);
    const auto names = folder.Names();
    int failures = 0;
    for (int requests = 0;; ++requests) {
        Requests_Until_Refused = requests;
        const bool done = GetParam().call(source, bitmap, target);
        const bool refused = Requests_Until_Refused < 0;
        Requests_Until_Refused = -1;
        if (!refused) {
            EXPECT_TRUE(done);
            break;
        }
        if (done) { // a stable sort does without the memory that it would like to have
            std::filesystem::remove(target);
            continue;
        }
        ++failures;
        EXPECT_TRUE(Last_Text().ends_with(": there is not enough memory")) << Last_Text() << ", " << requests;
        EXPECT_EQ(names, folder.Names()) << requests;
    }
    EXPECT_GT(failures, 0);
    Release(bitmap);
}

INSTANTIATE_TEST_SUITE_P(All, Memory_Ends, testing::ValuesIn(Functions),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(Memory_Ends_For_A_Result, So_Creating_It_Fails_With_A_Message)
{
    const Bitmap_Handle bitmap = Create_Empty_Bitmap_CPP(20, 20, 3, 8);
    Requests_Until_Refused = 0;
    const Bitmap_Handle smaller = Create_Scaled_Bitmap_CPP(bitmap, 7, 9, 2);
    const bool refused = Requests_Until_Refused < 0;
    Requests_Until_Refused = -1;
    EXPECT_TRUE(refused);
    EXPECT_EQ(0, smaller);
    EXPECT_EQ("not enough memory for the result", Last_Text());
    Release(bitmap);
}

TEST(Memory_Ends_For_A_Histogram, So_Counting_Fails_With_A_Message)
{
    const Bitmap_Handle bitmap = Create_Empty_Bitmap_CPP(20, 20, 3, 8);
    std::int32_t table[256], count = 0;
    Requests_Until_Refused = 0;
    const Flag counted = Compute_Bitmap_Color_Component_Histogram_CPP(bitmap, 8, table, &count);
    const bool refused = Requests_Until_Refused < 0;
    Requests_Until_Refused = -1;
    EXPECT_TRUE(refused);
    EXPECT_EQ(0, counted);
    EXPECT_EQ("not enough memory for the histogram", Last_Text());
    Release(bitmap);
}

/// Runs out of memory while it looks.
struct Starved_Window_System final : Window_System {
    Starved_Window_System() { Install_Window_System(this); }
    ~Starved_Window_System() override { Install_Window_System(nullptr); }
    Clipboard_Picture Picture_Of_Clipboard(std::intptr_t) override { throw std::bad_alloc(); }
    std::vector<std::string> Scalable_Font_Names(std::intptr_t) override { throw std::bad_alloc(); }
};

TEST(Memory_Ends_In_The_Window_System, So_Nothing_Is_Handed_Out)
{
    const Starved_Window_System system;
    EXPECT_EQ(0, Get_Bitmap_From_Clipboard(0));
    EXPECT_EQ("not enough memory for the picture of the clipboard", Last_Text());
    char names[10] = "x";
    std::int32_t length = 7;
    EXPECT_EQ(0, Get_TrueType_Font_FaceNames(0, names, sizeof names, &length));
    EXPECT_EQ(0, length);
    EXPECT_EQ("not enough memory for the names of the fonts", Last_Text());
}

} // namespace
