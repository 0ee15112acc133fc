#include "tests/bkimgutl/Reference_Pictures.h"
#include "tests/bkimgutl/codecs/Tiff_Fixture.h"

#include <filesystem>
#include <tiff.h>

namespace {

using Options = Tiff_File_Options;

Sample_Picture Small_Picture()
{
    return Meadow(60, 40, 5);
}

struct Dpi_Case {
    const char* name;
    double horizontal, vertical;
    int unit;
    int orientation;
    int expected_horizontal, expected_vertical;
};

std::ostream& operator<<(std::ostream& out, const Dpi_Case& row)
{
    return out << row.name;
}

class Tiff_Dpi : public Tiff_Folder, public testing::WithParamInterface<Dpi_Case> {};

} // namespace

INSTANTIATE_TEST_SUITE_P(All, Tiff_Dpi,
                         testing::Values(Dpi_Case{"inches", 300, 150, 2, 1, 300, 150},
                                         Dpi_Case{"centimetres_are_rounded", 118.11, 118.11, 3, 1, 300, 300},
                                         Dpi_Case{"a_ratio_without_unit_is_none", 1, 2, 1, 1, -1, -1},
                                         Dpi_Case{"a_quarter_turn_swaps_them", 300, 150, 2, 6, 150, 300},
                                         Dpi_Case{"none", 0, 0, 2, 1, -1, -1}),
                         [](const auto& row) { return row.param.name; });

TEST_P(Tiff_Dpi, Is_Read_Upright)
{
    const auto& row = GetParam();
    Write_Tiff_File(Path(), Small_Picture(),
                    {.orientation = row.orientation,
                     .horizontal_resolution = row.horizontal,
                     .vertical_resolution = row.vertical,
                     .resolution_unit = row.unit});
    EXPECT_EQ(row.expected_horizontal, Facts(Path()).horizontal_dpi);
    EXPECT_EQ(row.expected_vertical, Facts(Path()).vertical_dpi);
}

class Tiff_Text : public Tiff_Folder {};

TEST_F(Tiff_Text, Of_A_File_Without_Texts_Is_Empty)
{
    Write_Tiff_File(Path(), Small_Picture(), {});
    EXPECT_EQ("", Comment(Path()));
    EXPECT_EQ("", Script(Path()));
    EXPECT_TRUE(EXIF(Path()).empty());
}

TEST_F(Tiff_Text, A_Comment_Beyond_The_Limit_Is_Read_And_Kept_Whole_Unless_It_Was_Edited)
{
    const std::string whole = std::string(1500, 'd') + " and the end", seen = whole.substr(0, 1024);
    Write_Tiff_File(Path(), Small_Picture(), {.description = whole});
    EXPECT_EQ(whole, Comment(Path()));
    for (const bool change : {false, true}) {
        Bitmap bitmap = Loaded(Path());
        if (change) bitmap.Change();
        for (const std::string& brought_back : {whole, seen}) {
            Save({.bitmap = &bitmap, .target = Path("b.tif"), .comment = brought_back, .parent = Path()});
            EXPECT_EQ(whole, Comment(Path("b.tif")));
        }
        Save({.bitmap = &bitmap, .target = Path("b.tif"), .comment = "X" + seen.substr(1), .parent = Path()});
        EXPECT_EQ("X" + seen.substr(1), Comment(Path("b.tif")));
        EXPECT_FALSE(
            TIFF_Codec().Save({.bitmap = &bitmap, .target = Path("b.tif"), .comment = whole + ".", .parent = Path()}));
    }
}

TEST_F(Tiff_Text, A_Comment_That_Is_Too_Long_To_Be_Read_Survives_A_Save)
{
    const std::string longest(1024 + 65533, 'x'), longer(1024 + 65534, 'y');
    Write_Tiff_File(Path(), Small_Picture(), {.description = longest});
    EXPECT_EQ(longest, Comment(Path()));
    Write_Tiff_File(Path(), Small_Picture(), {.description = longer});
    EXPECT_FALSE(TIFF_Codec().Read_Comment(Open_File(Path())));

    for (const bool change : {false, true}) {
        Bitmap bitmap = Loaded(Path());
        if (change) bitmap.Change();
        Save({.bitmap = &bitmap, .target = Path("b.tif"), .script = "Crop(1)", .parent = Path()});
        EXPECT_EQ(longer + '\0', Text_Of(Tag_Value(Path("b.tif"), Tiff_Tag::Image_Description)));
        EXPECT_EQ("Crop(1)", Script(Path("b.tif")));
    }
}

TEST_F(Tiff_Text, With_More_Pixels_To_An_Inch_Than_Is_Believed_Has_The_Most)
{
    const Bitmap bitmap = Bitmap_Of(Small_Picture());
    Save({.bitmap = &bitmap, .target = Path(), .horizontal_dpi = 2'000'000'000, .vertical_dpi = 300});
    EXPECT_EQ(1'000'000, Facts(Path()).horizontal_dpi);
    EXPECT_EQ(300, Facts(Path()).vertical_dpi);
}

TEST_F(Tiff_Text, With_A_Quality_Out_Of_Range_Is_Refused_As_In_A_JPEG)
{
    const Bitmap bitmap = Bitmap_Of(Small_Picture());
    for (const int quality : {-3, 101})
        EXPECT_FALSE(TIFF_Codec().Save({.bitmap = &bitmap, .target = Path(), .quality = quality})) << quality;
}

TEST_F(Tiff_Text, Of_Another_Program_Under_Our_Number_Is_Never_Taken_Nor_Overwritten)
{
    Write_Tiff_File(Path(), Small_Picture(), {.private_tags = {{Tiff_Tag::Image_Script, "something else"}}});
    EXPECT_EQ("", Script(Path()));
    const Bitmap bitmap = Loaded(Path());
    Save({.bitmap = &bitmap, .target = Path("b.tif"), .comment = "c", .parent = Path()});
    EXPECT_EQ("something else", Text_Of(Tag_Value(Path("b.tif"), Tiff_Tag::Image_Script)));
    EXPECT_FALSE(TIFF_Codec().Save({.bitmap = &bitmap, .target = Path("c.tif"), .script = "s", .parent = Path()}));
    EXPECT_FALSE(std::filesystem::exists(Path("c.tif")));
}

TEST_F(Tiff_Text, Too_Long_Or_With_A_Zero_Byte_Is_Refused)
{
    const Bitmap bitmap = Bitmap_Of(Small_Picture());
    const auto refused = [&](const std::string& comment, const std::string& script) {
        return !TIFF_Codec().Save({.bitmap = &bitmap, .target = Path(), .comment = comment, .script = script});
    };
    EXPECT_TRUE(refused(std::string(1025, 'x'), ""));
    EXPECT_TRUE(refused("", std::string(65536, 'x')));
    EXPECT_TRUE(refused(std::string("a\0b", 3), ""));
    EXPECT_FALSE(refused(std::string(1024, 'x'), std::string(65535, 'y')));
    EXPECT_EQ(std::string(65535, 'y'), Script(Path()));
}

namespace {

const char Note[] = "Maker\0note with whatever bytes \xFF\x01";

Options With_Camera()
{
    return {.compression = COMPRESSION_LZW,
            .make = "Sample Works",
            .model = "Field Camera 2",
            .maker_note = std::string(Note, sizeof Note)};
}

} // namespace

TEST_F(Tiff_Text, Camera_Block_Has_The_Head_And_The_Shape_That_Readers_Expect)
{
    for (const bool big_endian : {false, true})
        for (const bool big : {false, true}) {
            Options options = With_Camera();
            options.big_endian = big_endian;
            options.big = big;
            options.orientation = 8;
            Write_Tiff_File(Path(), Small_Picture(), options);
            const auto block = EXIF(Path());
            ASSERT_GT(block.size(), 14U);
            EXPECT_EQ(std::string("Exif\0\0", 6), Text_Of(block).substr(0, 6));
            EXPECT_EQ(big_endian ? std::string("MM\0\x2A\0\0\0\x08", 8) : std::string("II\x2A\0\x08\0\0\0", 8),
                      Text_Of(block).substr(6, 8));
            EXPECT_EQ(8, Orientation_Of_EXIF_Block(block));

            const auto structure = Tiff_Structure::Open(std::span(block).subspan(6));
            const auto first = structure->First_Directory();
            ASSERT_TRUE(first);
            EXPECT_EQ(std::string("Sample Works\0", 13), Text_Of(*structure->Value(*first->Find(Tiff_Tag::Make), 100)));
            const auto camera = structure->Read_Directory(structure->Number(*first, Tiff_Tag::EXIF_Directory, 0));
            ASSERT_TRUE(camera);
            EXPECT_EQ(std::string(Note, sizeof Note),
                      Text_Of(*structure->Value(*camera->Find(Tiff_Tag::Maker_Note), 1000)));
        }
}

TEST_F(Tiff_Text, Camera_Block_Beyond_The_Limit_Is_An_Error_And_Survives_A_Save)
{
    Options options = With_Camera();
    options.maker_note = std::string(70000, 'n');
    Write_Tiff_File(Path(), Small_Picture(), options);
    EXPECT_FALSE(TIFF_Codec().Read_EXIF(Open_File(Path())));
    Bitmap bitmap = Loaded(Path());
    bitmap.Change();
    Save({.bitmap = &bitmap, .target = Path("b.tif"), .parent = Path()});
    EXPECT_EQ(options.maker_note, Text_Of(EXIF_Tag_Value(Path("b.tif"), Tiff_Tag::Maker_Note)));
}

TEST_F(Tiff_Text, What_Tells_About_The_Picture_Stands_In_The_Camera_Block_Or_Is_Too_Much_For_It)
{
    constexpr std::uint16_t keywords = 40094, samples = 65001;
    for (const bool fits : {true, false}) {
        const std::string words(fits ? 60'000 : 66'000, 'w');
        Write_Tiff_File(Path(), Small_Picture(), {.private_tags = {{keywords, words}, {samples, "of the pixels"}}});
        const auto block = TIFF_Codec().Read_EXIF(Open_File(Path()));
        ASSERT_EQ(fits, block.has_value());
        if (!fits) continue;
        EXPECT_NE(std::string::npos, Text_Of(*block).find(words));
        EXPECT_EQ(std::string::npos, Text_Of(*block).find("of the pixels"));
    }
}

TEST_F(Tiff_Text, A_Maker_Note_Keeps_Its_Place_Once_It_Has_One_In_Front)
{
    Write_Tiff_File(Path(), Small_Picture(), With_Camera());
    Bitmap bitmap = Loaded(Path());
    bitmap.Change();
    Save({.bitmap = &bitmap, .target = Path("b.tif"), .comment = "b", .parent = Path()});
    std::uint64_t before = 0, after = 0;
    EXIF_Tag_Value(Path("b.tif"), Tiff_Tag::Maker_Note, &before);
    bitmap = Loaded(Path("b.tif"));
    bitmap.Change();
    Save({.bitmap = &bitmap, .target = Path("c.tif"), .comment = "a longer one", .parent = Path("b.tif")});
    EXPECT_EQ(std::string(Note, sizeof Note), Text_Of(EXIF_Tag_Value(Path("c.tif"), Tiff_Tag::Maker_Note, &after)));
    EXPECT_EQ(before, after);
}
