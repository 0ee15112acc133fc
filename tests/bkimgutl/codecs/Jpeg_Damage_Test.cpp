#include "tests/bkimgutl/codecs/Jpeg_Fixture.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <sys/stat.h>

#include <jpeglib.h>

namespace {

class Jpeg_Damage : public Jpeg_Fixture {
protected:
    /// One line that names the file and says why.
    void Expect_Refused(const std::string& path, std::string_view reason)
    {
        EXPECT_FALSE(Load(path)) << reason;
        EXPECT_EQ(0U, Error_Text().find(path + ": ")) << Error_Text();
        EXPECT_NE(std::string::npos, Error_Text().find(reason)) << Error_Text();
        EXPECT_EQ(std::string::npos, Error_Text().find('\n'));
    }
};

TEST_F(Jpeg_Damage, An_Empty_File_Is_Refused)
{
    Expect_Refused(Put("a.jpg", {}), "is empty");
}

TEST_F(Jpeg_Damage, A_Missing_File_Is_Refused)
{
    Expect_Refused(Path("a.jpg"), "No such file");
}

TEST_F(Jpeg_Damage, A_Folder_And_A_Pipe_Are_Refused_At_Once)
{
    Expect_Refused(folder_.string(), "is a folder");
    ASSERT_EQ(0, mkfifo(Path("pipe.jpg").c_str(), 0600));
    Expect_Refused(Path("pipe.jpg"), "not a regular file");
}

TEST_F(Jpeg_Damage, Another_Format_Under_The_Name_Is_Refused)
{
    const std::string text = "GIF89a and so on, but no picture of ours";
    Expect_Refused(Put("a.jpg", File_Bytes(text.begin(), text.end())), "neither a JPEG nor a TIFF");
    Expect_Refused(Put("b.jpg", {0xFF, 0xD8}), "neither a JPEG nor a TIFF");
}

TEST_F(Jpeg_Damage, The_Signature_Wins_Over_The_Type_That_Was_Asked_For)
{
    const std::string path = Put("a.tif", Jpeg_File(Meadow(16, 16, 1)));
    EXPECT_TRUE(Held_Bitmap(Load_Bitmap_From_File(path, 2, 1, 0)));
}

TEST_F(Jpeg_Damage, Every_Truncation_Of_The_Head_Is_Refused)
{
    const File_Bytes whole = Jpeg_File(Meadow(16, 16, 1), {.segments = {{0xE1, Camera_Block({})}}});
    const std::size_t head = whole.size() - Coded_Data(whole).size();
    for (std::size_t size = 3; size < head; size += 7) {
        const std::string path = Put("a.jpg", {whole.begin(), whole.begin() + std::ptrdiff_t(size)});
        EXPECT_FALSE(Load(path)) << size;
        std::int32_t width = 0;
        EXPECT_FALSE(Get_File_Dimensions(path, 0, &width, &width, &width, &width, &width));
    }
}

TEST_F(Jpeg_Damage, A_File_That_Ends_Inside_Its_Pixels_Is_Shown_And_Marked)
{
    const File_Bytes whole = Jpeg_File(Meadow(200, 150, 1));
    const std::string path = Put("a.jpg", {whole.begin(), whole.begin() + std::ptrdiff_t(whole.size() / 2)});
    const auto bitmap = Load(path);
    ASSERT_TRUE(bitmap) << Error_Text();
    ASSERT_NE(nullptr, bitmap->Origin());
    EXPECT_TRUE(bitmap->Origin()->damaged);
}

TEST_F(Jpeg_Damage, Pixels_That_End_Early_Are_Marked_However_They_Are_Coded)
{
    for (const Jpeg_File_Options& options : {Jpeg_File_Options{.progressive = true}, {.arithmetic = true}}) {
        const File_Bytes whole = Jpeg_File(Meadow(200, 150, 1), options);
        const auto bitmap = Load(Put("a.jpg", {whole.begin(), whole.begin() + std::ptrdiff_t(whole.size() / 2)}));
        ASSERT_TRUE(bitmap) << Error_Text();
        EXPECT_TRUE(bitmap->Origin()->damaged) << options.arithmetic;
    }
}

TEST_F(Jpeg_Damage, A_Progressive_File_Without_Its_Last_Scan_Is_Marked)
{
    File_Bytes file = Jpeg_File(Meadow(64, 48, 1), {.progressive = true});
    const std::uint8_t start_of_scan[] = {0xFF, 0xDA};
    file.erase(std::find_end(file.begin(), file.end(), std::begin(start_of_scan), std::end(start_of_scan)), file.end());
    const auto bitmap = Load(Put("a.jpg", file));
    ASSERT_TRUE(bitmap) << Error_Text();
    EXPECT_TRUE(bitmap->Origin()->damaged);
}

TEST_F(Jpeg_Damage, Oddities_Of_The_Head_Are_No_Damage)
{
    const File_Bytes plain = Jpeg_File(Meadow(64, 48, 1));
    File_Bytes newer = plain;
    newer[11] = 7; // version of JFIF
    const File_Bytes unknown_transform = Jpeg_File(
        Meadow(64, 48, 1), {.jfif = false, .segments = {Segment(0xEE, std::string("Adobe\0d\0\0\0\0\7", 12))}});
    for (const File_Bytes& file : {newer, unknown_transform}) {
        const auto bitmap = Load(Put("a.jpg", file));
        ASSERT_TRUE(bitmap) << Error_Text();
        EXPECT_FALSE(bitmap->Origin()->damaged);
        EXPECT_TRUE(Shows(Decode_Plainly(plain), *bitmap));
    }
}

TEST_F(Jpeg_Damage, A_Damaged_Picture_Is_Not_Saved_Over_Its_Original)
{
    const File_Bytes whole = Jpeg_File(Meadow(200, 150, 1));
    const File_Bytes half(whole.begin(), whole.begin() + std::ptrdiff_t(whole.size() / 2));
    const std::string path = Put("a.jpg", half);
    const auto bitmap = Load(path);
    EXPECT_FALSE(Save(bitmap, path, {.parent = path}));
    EXPECT_NE(std::string::npos, Error_Text().find("read with errors")) << Error_Text();
    EXPECT_EQ(half, Get(path));
    std::filesystem::rename(path, path + "~"); // an original that stands aside is still the original
    EXPECT_FALSE(Save(bitmap, path, {.parent = path + "~"}));
    EXPECT_TRUE(Save(bitmap, Path("copy.jpg"), {.parent = path + "~"})) << Error_Text();
    EXPECT_FALSE(Load(Path("copy.jpg"))->Origin()->damaged) << "the copy is encoded anew";
    Put("a.jpg", whole); // another program has put a whole picture under the name meanwhile
    EXPECT_FALSE(Save(bitmap, path, {.parent = path}));
    EXPECT_EQ(whole, Get(path));
}

TEST_F(Jpeg_Damage, A_Wrong_Byte_In_The_Pixels_Is_Marked_Or_Harmless)
{
    const File_Bytes whole = Jpeg_File(Meadow(120, 90, 1));
    const std::size_t head = whole.size() - Coded_Data(whole).size();
    std::mt19937 random(7);
    int marked = 0;
    for (int round = 0; round < 100; ++round) {
        File_Bytes file = whole;
        for (int i = 0; i < 5; ++i) file[head + 20 + random() % (file.size() - head - 20)] = std::uint8_t(random());
        const auto bitmap = Load(Put("a.jpg", file));
        if (bitmap && bitmap->Origin()->damaged) ++marked;
    }
    EXPECT_GT(marked, 20);
}

TEST_F(Jpeg_Damage, A_Missing_End_Mark_Alone_Is_Harmless)
{
    const File_Bytes whole = Jpeg_File(Meadow(120, 90, 1));
    const auto bitmap = Load(Put("a.jpg", {whole.begin(), whole.end() - 2}));
    ASSERT_TRUE(bitmap);
    EXPECT_FALSE(bitmap->Origin()->damaged);
    EXPECT_TRUE(Shows(Decode_Plainly(whole), *bitmap));
}

TEST_F(Jpeg_Damage, A_Huge_Claim_In_A_Small_File_Is_Refused_Before_Any_Allocation)
{
    File_Bytes file = Jpeg_File(Meadow(16, 16, 1));
    std::size_t frame = 2;
    while (file[frame + 1] != 0xC0) frame += 2 + (std::size_t(file[frame + 2]) << 8 | file[frame + 3]);
    file[frame + 5] = file[frame + 6] = file[frame + 7] = file[frame + 8] = 0xFF;
    file[frame + 6] = file[frame + 8] = 0x00;
    Expect_Refused(Put("a.jpg", file), "claims 65280 x 65280 pixels");
}

TEST_F(Jpeg_Damage, A_Plain_Picture_Of_Few_Bytes_Is_No_Claim)
{
    const Sample_Picture plain{1600, 1200, 3, std::vector<std::uint8_t>(1600 * 1200 * 3, 90)};
    for (const Jpeg_File_Options& options : {Jpeg_File_Options{}, {.progressive = true}, {.arithmetic = true}}) {
        const auto bitmap = Load(Put("a.jpg", Jpeg_File(plain, options)));
        ASSERT_TRUE(bitmap) << Error_Text();
        EXPECT_FALSE(bitmap->Origin()->damaged);
        EXPECT_EQ(1600, bitmap->Width());
    }
}

TEST_F(Jpeg_Damage, A_Size_Of_Zero_Is_Refused)
{
    File_Bytes file = Jpeg_File(Meadow(16, 16, 1));
    std::size_t frame = 2;
    while (file[frame + 1] != 0xC0) frame += 2 + (std::size_t(file[frame + 2]) << 8 | file[frame + 3]);
    file[frame + 5] = file[frame + 6] = 0;
    Expect_Refused(Put("a.jpg", file), "width or height of 0");
}

TEST_F(Jpeg_Damage, A_Flood_Of_Segments_Is_Refused)
{
    File_Bytes file = {0xFF, 0xD8};
    for (int i = 0; i < 30'000; ++i) file.insert(file.end(), {0xFF, 0xFE, 0, 2});
    Expect_Refused(Put("a.jpg", file), "too many segments");
}

TEST_F(Jpeg_Damage, Zeros_Instead_Of_Segments_Are_Refused)
{
    File_Bytes file = {0xFF, 0xD8, 0xFF, 0xFE, 0, 2};
    file.resize(200'000);
    Expect_Refused(Put("a.jpg", file), "is damaged");
}

/// A progressive file with ten scans for each of so many frequencies, one bit more of it in each, all as they should be.
File_Bytes Many_Scans(int frequencies)
{
    constexpr int bits = 10;
    std::vector<jpeg_scan_info> scans{{1, {0}, 0, 0, 0, 0}};
    for (int k = 1; k <= frequencies; ++k)
        for (int low = bits - 1; low >= 0; --low) scans.push_back({1, {0}, k, k, low == bits - 1 ? 0 : low + 1, low});
    jpeg_compress_struct object{};
    jpeg_error_mgr errors;
    object.err = jpeg_std_error(&errors);
    jpeg_create_compress(&object);
    unsigned char* bytes = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&object, &bytes, &size);
    object.image_width = object.image_height = 8;
    object.input_components = 1;
    object.in_color_space = JCS_GRAYSCALE;
    jpeg_set_defaults(&object);
    object.scan_info = scans.data();
    object.num_scans = int(scans.size());
    jpeg_start_compress(&object, TRUE);
    JSAMPLE row[8] = {0, 40, 200, 90, 10, 255, 30, 70};
    JSAMPROW rows[1] = {row};
    for (int y = 0; y < 8; ++y) jpeg_write_scanlines(&object, rows, 1);
    jpeg_finish_compress(&object);
    jpeg_destroy_compress(&object);
    const File_Bytes file(bytes, bytes + size);
    std::free(bytes);
    return file;
}

TEST_F(Jpeg_Damage, A_Flood_Of_Scans_Is_Refused)
{
    const auto bitmap = Load(Put("a.jpg", Many_Scans(49)));
    ASSERT_TRUE(bitmap) << Error_Text();
    EXPECT_FALSE(bitmap->Origin()->damaged);
    EXPECT_FALSE(Load(Put("a.jpg", Many_Scans(51))));
    EXPECT_EQ(Path("a.jpg") + ": has too many scans", Error_Text());
}

TEST_F(Jpeg_Damage, A_Flood_Of_Warnings_Is_Refused)
{
    // The first scan of a progressive file is repeated; its data ends where the next marker begins.
    const File_Bytes file = Jpeg_File(To_Grey(Meadow(16, 16, 1)), {.progressive = true});
    const std::size_t scan = file.size() - Coded_Data(file).size();
    std::size_t end = scan + 2;
    while (file[end] != 0xFF || file[end + 1] == 0) ++end;
    const File_Bytes one(file.begin() + std::ptrdiff_t(scan), file.begin() + std::ptrdiff_t(end));
    for (const int scans : {80, 150}) {
        File_Bytes flood(file.begin(), file.begin() + std::ptrdiff_t(scan));
        for (int i = 0; i < scans; ++i) flood.insert(flood.end(), one.begin(), one.end());
        flood.insert(flood.end(), {0xFF, 0xD9});
        const auto bitmap = Load(Put("a.jpg", flood));
        EXPECT_EQ(scans < 100, bool(bitmap));
    }
    EXPECT_EQ(Path("a.jpg") + ": is damaged in too many places", Error_Text());
}

TEST_F(Jpeg_Damage, Random_Changes_Never_Crash_Any_Reader)
{
    const File_Bytes whole =
        Jpeg_File(Meadow(40, 30, 1), {.segments = {{0xE1, Camera_Block({.orientation = 5})}, Segment(0xFE, "text")}});
    std::mt19937 random(99);
    for (int round = 0; round < 1'500; ++round) {
        File_Bytes file = whole;
        for (int i = 0; i < 3; ++i) file[random() % file.size()] = std::uint8_t(random());
        const std::string path = Put("a.jpg", file);
        Load(path, 1 + int(random() % 9));
        Comment(path);
        Script(path);
        EXIF(path);
    }
}

} // namespace
