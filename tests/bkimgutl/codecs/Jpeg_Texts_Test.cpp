#include "dev/samples/Tiff_File.h"
#include "tests/bkimgutl/codecs/Jpeg_Fixture.h"

namespace {

using namespace std::string_view_literals;

class Jpeg_Texts : public Jpeg_Fixture {
protected:
    std::string Made(std::vector<File_Segment> segments, bool jfif = true, int dpi = 0) const
    {
        Jpeg_File_Options options{.jfif = jfif, .dpi = dpi};
        options.segments = std::move(segments);
        return Put("a.jpg", Jpeg_File(Meadow(32, 24, 1), options));
    }
};

File_Segment Script_Part(int part, int parts, std::string_view text)
{
    File_Segment segment = Segment(0xEA, "Halvine script\0"sv);
    segment.data.push_back(std::uint8_t(part));
    segment.data.push_back(std::uint8_t(parts));
    segment.data.insert(segment.data.end(), text.begin(), text.end());
    return segment;
}

TEST_F(Jpeg_Texts, Are_Empty_In_A_Bare_File)
{
    const std::string path = Made({}, false);
    EXPECT_EQ("", Comment(path));
    EXPECT_EQ("", Script(path));
    EXPECT_TRUE(EXIF(path).empty());
    EXPECT_EQ(-1, Facts(path).horizontal_dpi);
    EXPECT_EQ(-1, Facts(path).vertical_dpi);
}

TEST_F(Jpeg_Texts, Comment_Is_Decoded_From_UTF8_Or_Windows_1252)
{
    EXPECT_EQ("Gr\xC3\xBC\xC3\x9F"
              "e",
              Comment(Made({Segment(0xFE, "Gr\xC3\xBC\xC3\x9F"
                                          "e")})));
    EXPECT_EQ("Gr\xC3\xBC\xC3\x9F"
              "e",
              Comment(Made({Segment(0xFE, "Gr\xFC\xDF"
                                          "e")})));
}

TEST_F(Jpeg_Texts, Comment_Loses_A_Terminating_Zero)
{
    EXPECT_EQ("Meadow", Comment(Made({Segment(0xFE, "Meadow\0"sv)})));
}

TEST_F(Jpeg_Texts, Several_Comments_Are_Joined_By_Line_Breaks)
{
    EXPECT_EQ("one\ntwo", Comment(Made({Segment(0xFE, "one"), Segment(0xFE, ""), Segment(0xFE, "two")})));
}

TEST_F(Jpeg_Texts, A_Text_That_Fills_The_Buffer_Has_A_Negative_Length)
{
    const std::string path = Made({Segment(0xFE, "123456")});
    char buffer[6];
    std::int32_t length = 0;
    ASSERT_TRUE(Get_File_Comment(path, 1, buffer, 6, &length));
    EXPECT_EQ(-6, length);
    ASSERT_TRUE(Get_File_Comment(path, 1, buffer, 4, &length));
    EXPECT_EQ(-4, length);
    EXPECT_EQ("1234"sv, std::string_view(buffer, 4));
    char wide[7];
    ASSERT_TRUE(Get_File_Comment(path, 1, wide, 7, &length));
    EXPECT_EQ(6, length);
    EXPECT_EQ('\0', wide[6]);
}

TEST_F(Jpeg_Texts, Script_Is_Put_Together_In_The_Order_Of_Its_Numbers)
{
    EXPECT_EQ("onetwo", Script(Made({Script_Part(2, 2, "two"), Script_Part(1, 2, "one")})));
}

TEST_F(Jpeg_Texts, A_Script_With_A_Missing_Part_Is_An_Error_Not_Half_A_Script)
{
    EXPECT_EQ("FAIL", Script(Made({Script_Part(1, 2, "one")})));
    EXPECT_NE(std::string::npos, Error_Text().find("incomplete script")) << Error_Text();
    EXPECT_EQ("FAIL", Script(Made({Script_Part(1, 2, "one"), Script_Part(1, 2, "one")})));
    EXPECT_EQ("FAIL", Script(Made({Script_Part(1, 2, "one"), Script_Part(2, 3, "two")})));
    EXPECT_EQ("FAIL", Script(Made({Script_Part(0, 1, "one")})));
    EXPECT_EQ("FAIL", Script(Made({Script_Part(1, 0, "one")})));
}

TEST_F(Jpeg_Texts, A_Script_Beyond_The_Limit_Is_An_Error)
{
    const std::string long_text(40'000, 'x');
    EXPECT_EQ("FAIL", Script(Made({Script_Part(1, 2, long_text), Script_Part(2, 2, long_text)})));
    EXPECT_NE(std::string::npos, Error_Text().find("65535")) << Error_Text();
}

TEST_F(Jpeg_Texts, Others_May_Use_The_Same_Segment_For_Themselves)
{
    EXPECT_EQ("", Script(Made({Segment(0xEA, "Other program", 100)})));
}

TEST_F(Jpeg_Texts, EXIF_Comes_Back_Byte_For_Byte)
{
    const auto block = Camera_Block({.orientation = 3});
    EXPECT_EQ(block, EXIF(Made({Segment(0xE1, "http://ns.adobe.com/xap/1.0/\0<x/>"sv), {0xE1, block}})));
}

TEST_F(Jpeg_Texts, Resolution_Is_That_Of_JFIF_Or_Else_Of_EXIF)
{
    const File_Segment camera{0xE1, Camera_Block({.dpi = 240})};
    EXPECT_EQ(96, Facts(Made({camera}, true, 96)).horizontal_dpi);
    EXPECT_EQ(240, Facts(Made({camera}, true, 0)).horizontal_dpi);
    EXPECT_EQ(240, Facts(Made({camera}, false)).vertical_dpi);
    EXPECT_EQ(-1, Facts(Made({{0xE1, Camera_Block({.dpi = std::nullopt})}}, false)).vertical_dpi);
}

TEST_F(Jpeg_Texts, A_Resolution_In_No_Unit_Is_None)
{
    File_Segment camera{0xE1, Camera_Block({.dpi = 240})};
    const std::uint8_t unit[] = {0x28, 0x01, 3, 0, 1, 0, 0, 0, 2, 0}; // tag 296, one short: inches
    const auto at = std::search(camera.data.begin(), camera.data.end(), std::begin(unit), std::end(unit));
    ASSERT_NE(camera.data.end(), at);
    at[8] = 1;
    EXPECT_EQ(-1, Facts(Made({camera}, false)).horizontal_dpi);
    EXPECT_EQ(-1, Facts(Made({camera}, false)).vertical_dpi);
}

TEST_F(Jpeg_Texts, Resolution_In_Centimetres_Is_Converted)
{
    File_Bytes file = Jpeg_File(Meadow(32, 24, 1), {.dpi = 118});
    file[13] = 2; // the unit in JFIF
    EXPECT_EQ(300, Facts(Put("a.jpg", file)).horizontal_dpi);
}

TEST_F(Jpeg_Texts, Resolutions_Swap_Sides_With_An_Orientation)
{
    File_Bytes file =
        Jpeg_File(Meadow(32, 24, 1), {.dpi = 100, .segments = {{0xE1, Camera_Block({.orientation = 6})}}});
    file[17] = 50; // vertical density
    const Picture_Facts facts = Facts(Put("a.jpg", file));
    EXPECT_EQ(24, facts.width);
    EXPECT_EQ(32, facts.height);
    EXPECT_EQ(50, facts.horizontal_dpi);
    EXPECT_EQ(100, facts.vertical_dpi);
}

TEST_F(Jpeg_Texts, Depth_Counts_All_Samples)
{
    EXPECT_EQ(24, Facts(Put("a.jpg", Jpeg_File(Meadow(8, 8, 1)))).pixel_depth);
    EXPECT_EQ(8, Facts(Put("b.jpg", Jpeg_File(To_Grey(Meadow(8, 8, 1))))).pixel_depth);
}

TEST_F(Jpeg_Texts, Type_Is_Told_By_The_First_Bytes)
{
    EXPECT_EQ(1, Get_Image_File_Type_From_Signature(Put("a.tif", Jpeg_File(Meadow(8, 8, 1)))));
    EXPECT_EQ(2, Get_Image_File_Type_From_Signature(Put("a.jpg", {'I', 'I', 42, 0, 8, 0, 0, 0})));
    EXPECT_EQ(2, Get_Image_File_Type_From_Signature(Put("b.jpg", {'M', 'M', 0, 43, 0, 8, 0, 0})));
    EXPECT_EQ(0, Get_Image_File_Type_From_Signature(Put("c.jpg", {'M', 'M', 42, 0, 0, 8, 0, 0})));
    EXPECT_EQ(0, Get_Image_File_Type_From_Signature(Put("d.jpg", {})));
    EXPECT_EQ(0, Get_Image_File_Type_From_Signature(Path("missing.jpg")));
    EXPECT_NE(std::string::npos, Error_Text().find("missing.jpg"));
}

TEST_F(Jpeg_Texts, Segments_Padded_With_Fill_Bytes_Are_Read)
{
    File_Bytes file = Jpeg_File(Meadow(16, 16, 1), {.segments = {Segment(0xFE, "kept")}});
    file.insert(file.begin() + 2, {0xFF, 0xFF, 0xFF});
    EXPECT_EQ("kept", Comment(Put("a.jpg", file)));
}

TEST_F(Jpeg_Texts, A_Longer_Description_Of_Another_Program_Is_Not_Cut_Unless_It_Was_Edited)
{
    const std::string long_text = std::string(1500, 'd') + " and the end";
    const std::string path = Put("a.jpg", Jpeg_File(Meadow(16, 16, 1), {.segments = {Segment(0xFE, long_text)}}));
    const std::string seen = long_text.substr(0, 1024); // what a caller's buffer holds
    for (const std::string& brought_back : {seen, long_text}) {
        ASSERT_TRUE(Save(Load(path), path, {.comment = brought_back, .script = "s", .parent = path})) << Error_Text();
        EXPECT_EQ(long_text, Comment(path));
    }
    EXPECT_FALSE(Save(Load(path), path, {.comment = long_text + ".", .parent = path}));
    EXPECT_NE(std::string::npos, Error_Text().find("has 1513 bytes, 1024 are the limit")) << Error_Text();
    ASSERT_TRUE(Save(Load(path), path, {.comment = "edited" + seen.substr(6), .parent = path})) << Error_Text();
    EXPECT_EQ("edited" + seen.substr(6), Comment(path));
}

TEST_F(Jpeg_Texts, A_Long_Description_Of_A_TIFF_Goes_Along_And_One_That_Cannot_Be_Read_Is_Refused)
{
    const std::string long_text(3000, 'd'), longer(70'000, 'e');
    Write_Tiff_File(Path("p.tif"), Meadow(16, 16, 1), {.description = long_text});
    EXPECT_EQ(long_text, Comment(Path("p.tif")));
    ASSERT_TRUE(Save(Load(Path("p.tif")), Path("a.jpg"), {.comment = long_text, .parent = Path("p.tif")}))
        << Error_Text();
    EXPECT_EQ(long_text, Comment(Path("a.jpg")));
    Write_Tiff_File(Path("p.tif"), Meadow(16, 16, 1), {.description = longer});
    EXPECT_FALSE(Save(Load(Path("p.tif")), Path("b.jpg"), {.parent = Path("p.tif")}));
    EXPECT_NE(std::string::npos, Error_Text().find("p.tif: the description cannot be carried along: ")) << Error_Text();
    EXPECT_TRUE(Save(Load(Path("p.tif")), Path("b.jpg"), {.comment = "another", .parent = Path("p.tif")}));
}

} // namespace
