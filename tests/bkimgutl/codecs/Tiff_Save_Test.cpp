#include "dev/samples/Camera_Block.h"
#include "dev/samples/Jpeg_File.h"
#include "tests/bkimgutl/Reference_Pictures.h"
#include "tests/bkimgutl/codecs/Tiff_Fixture.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <random>
#include <tiff.h>

namespace {

using Options = Tiff_File_Options;
using Colors = Options::Colors;

struct Parent_Case {
    const char* name;
    Options options;
};

std::ostream& operator<<(std::ostream& out, const Parent_Case& row)
{
    return out << row.name;
}

class Tiff_Parents : public Tiff_Folder, public testing::WithParamInterface<Parent_Case> {};
class Tiff_Save : public Tiff_Folder {};

Sample_Picture Picture()
{
    return Meadow(90, 61, 7);
}

const std::string Foreign_A = "a tag that nobody knows\0\x01\xFF";
const std::string Foreign_B = "abc"; // stands in the entry itself

/// A profile in name only: its colour space is what counts.
std::string Profile(const char* space)
{
    std::string profile(200, '\x07');
    profile.replace(16, 4, space);
    return profile;
}

Options With_Everything(Options options)
{
    options.private_tags = {{65001, Foreign_A}, {65002, Foreign_B}, {Tiff_Tag::ICC_Profile, Profile("RGB ")}};
    options.maker_note = "Maker note";
    options.make = "Sample Works";
    options.description = "before";
    options.horizontal_resolution = options.vertical_resolution = 72.5;
    return options;
}

void Expect_Everything(const std::string& path)
{
    EXPECT_EQ(Foreign_A, Text_Of(Tag_Value(path, 65001)));
    EXPECT_EQ(Foreign_B, Text_Of(Tag_Value(path, 65002)));
    EXPECT_EQ(Profile("RGB "), Text_Of(Tag_Value(path, Tiff_Tag::ICC_Profile)));
    EXPECT_EQ("Maker note", Text_Of(EXIF_Tag_Value(path, Tiff_Tag::Maker_Note)));
    EXPECT_EQ(std::string("Sample Works\0", 13), Text_Of(Tag_Value(path, Tiff_Tag::Make)));
}

int Pages(const std::string& path)
{
    const auto file = Open_File(path);
    const auto structure = Tiff_Structure::Open(file);
    int pages = 0;
    for (std::uint64_t at = structure->First_Position(); at != 0 && pages < 10; ++pages)
        at = structure->Read_Directory(at)->next;
    return pages;
}

} // namespace

INSTANTIATE_TEST_SUITE_P(
    All, Tiff_Parents,
    testing::Values(Parent_Case{"rgb_strips", {}},
                    Parent_Case{"big_endian_tiles", {.tile_size = 32, .big_endian = true}},
                    Parent_Case{"bits_16", {.bits = 16, .compression = COMPRESSION_ADOBE_DEFLATE, .predictor = 2}},
                    Parent_Case{"cmyk", {.colors = Colors::CMYK}},
                    Parent_Case{"jpeg_coded", {.colors = Colors::YCbCr, .compression = COMPRESSION_JPEG}},
                    Parent_Case{"palette", {.colors = Colors::Palette, .compression = COMPRESSION_LZW}},
                    Parent_Case{"planes", {.compression = COMPRESSION_PACKBITS, .separate = true}},
                    Parent_Case{"three_pages", {.pages = 3}}, Parent_Case{"turned", {.orientation = 6}},
                    Parent_Case{"bigtiff", {.big = true}},
                    Parent_Case{"bigtiff_big_endian", {.big_endian = true, .big = true}},
                    Parent_Case{"alpha", {.alpha = Options::Alpha::Unassociated}}),
    [](const auto& row) { return row.param.name; });

TEST_P(Tiff_Parents, Get_Their_New_Values_At_Even_Places)
{
    Write_Tiff_File(Path(), Picture(), With_Everything(GetParam().options));
    for (const char* comment : {"six by", "seven b"}) {
        const Bitmap bitmap = Loaded(Path());
        Save({.bitmap = &bitmap, .target = Path(), .comment = comment, .script = "odd or", .parent = Path()});
        const auto file = Open_File(Path());
        const auto structure = Tiff_Structure::Open(file);
        const auto directory = structure->First_Directory();
        EXPECT_EQ(0U, directory->position % 2);
        for (const auto tag : {Tiff_Tag::Image_Description, Tiff_Tag::Image_Script}) {
            const Tiff_Entry* entry = directory->Find(tag);
            ASSERT_NE(nullptr, entry);
            EXPECT_TRUE(entry->inside || entry->position % 2 == 0) << tag;
        }
    }
}

TEST_P(Tiff_Parents, Stay_Byte_For_Byte_When_Only_Texts_Change)
{
    Write_Tiff_File(Path(), Picture(), With_Everything(GetParam().options));
    const auto before = File_Bytes(Path());
    const Bitmap bitmap = Loaded(Path());
    const Picture_Facts facts = Facts(Path());
    Save({.bitmap = &bitmap,
          .target = Path("b.tif"),
          .comment = "after",
          .script = "Flip(1)",
          .parent = Path(),
          .horizontal_dpi = facts.horizontal_dpi,
          .vertical_dpi = facts.vertical_dpi});
    const auto after = File_Bytes(Path("b.tif"));
    const std::size_t header = GetParam().options.big ? 16 : 8;
    ASSERT_GT(after.size(), before.size());
    EXPECT_TRUE(std::equal(before.begin() + long(header), before.end(), after.begin() + long(header)));
    EXPECT_TRUE(Same_Pixels(bitmap.View(), Loaded(Path("b.tif")).View()));
    EXPECT_EQ("after", Comment(Path("b.tif")));
    EXPECT_EQ("Flip(1)", Script(Path("b.tif")));
    EXPECT_EQ(EXIF(Path()), EXIF(Path("b.tif")));
    EXPECT_EQ(Tag_Value(Path(), Tiff_Tag::X_Resolution), Tag_Value(Path("b.tif"), Tiff_Tag::X_Resolution));
    EXPECT_EQ(Pages(Path()), Pages(Path("b.tif")));
    Expect_Everything(Path("b.tif"));
}

TEST_P(Tiff_Parents, Keep_Their_Pixels_And_Size_Through_A_Hundred_Saves_Of_Texts)
{
    Write_Tiff_File(Path(), Picture(), With_Everything(GetParam().options));
    const Bitmap first = Loaded(Path());
    const auto size = std::filesystem::file_size(Path());
    for (int i = 0; i < 100; ++i) {
        const Bitmap bitmap = Loaded(Path());
        Save({.bitmap = &bitmap,
              .target = Path(),
              .comment = "number " + std::to_string(i),
              .script = std::string(std::size_t(i), 's'),
              .parent = Path(),
              .horizontal_dpi = 100 + i});
    }
    EXPECT_TRUE(Same_Pixels(first.View(), Loaded(Path()).View()));
    EXPECT_EQ("number 99", Comment(Path()));
    EXPECT_EQ(std::string(99, 's'), Script(Path()));
    EXPECT_EQ(199, Facts(Path()).horizontal_dpi);
    EXPECT_LT(std::filesystem::file_size(Path()), size + 2000);
    Expect_Everything(Path());
}

TEST_P(Tiff_Parents, Give_Everything_But_Pixels_Along_When_Pixels_Change)
{
    Write_Tiff_File(Path(), Picture(), With_Everything(GetParam().options));
    Bitmap bitmap = Loaded(Path());
    bitmap.Change().Row(0)[0] ^= 1;
    Save({.bitmap = &bitmap,
          .target = Path("b.tif"),
          .comment = "after",
          .script = "Flip(1)",
          .parent = Path(),
          .horizontal_dpi = 240,
          .vertical_dpi = 120});
    EXPECT_TRUE(Same_Pixels(bitmap.View(), Loaded(Path("b.tif")).View()));
    EXPECT_EQ("after", Comment(Path("b.tif")));
    EXPECT_EQ("Flip(1)", Script(Path("b.tif")));
    EXPECT_EQ(1, Facts(Path("b.tif")).orientation);
    EXPECT_EQ(240, Facts(Path("b.tif")).horizontal_dpi);
    EXPECT_EQ(120, Facts(Path("b.tif")).vertical_dpi);
    EXPECT_EQ(1, Pages(Path("b.tif")));
    EXPECT_FALSE(Loaded(Path("b.tif")).Origin()->reduced);
    Expect_Everything(Path("b.tif"));
    const auto compression = GetParam().options.compression;
    const bool lossless = compression != COMPRESSION_JPEG;
    EXPECT_EQ(std::uint64_t(lossless ? compression : COMPRESSION_ADOBE_DEFLATE), Tag_Number(Path("b.tif"), 259));
}

TEST_F(Tiff_Save, Reads_Back_Every_Size_Without_A_Parent)
{
    For_Edge_Case_Pictures([this](const Bitmap& picture) {
        Save({.bitmap = &picture, .target = Path(), .comment = "c\xC3\xA4", .script = "s", .horizontal_dpi = 300});
        EXPECT_TRUE(Same_Pixels(picture.View(), Loaded(Path()).View()));
        EXPECT_EQ("c\xC3\xA4", Comment(Path()));
        EXPECT_EQ(300, Facts(Path()).vertical_dpi);
        EXPECT_EQ(picture.Bytes_Per_Pixel() * 8, Facts(Path()).pixel_depth);
    });
}

TEST_F(Tiff_Save, Pixels_Turned_By_Right_Angles_Are_Written_Upright)
{
    Write_Tiff_File(Path(), Picture(), {.orientation = 6});
    const Bitmap stored = Bitmap_Of(Picture());
    // What the loader gives, turned as the stored pixels lie: the symmetry is no more that of the tag.
    Bitmap turned = Bitmap_Of(Picture());
    const auto origin = Loaded(Path()).Origin();
    turned.Set_Origin(std::make_shared<Pixel_Origin>(Pixel_Origin{origin->path, origin->identity, {}, false, false}));
    Save({.bitmap = &turned, .target = Path(), .parent = Path()});
    EXPECT_EQ(1, Facts(Path()).orientation);
    EXPECT_TRUE(Same_Pixels(stored.View(), Loaded(Path()).View()));
}

TEST_F(Tiff_Save, A_Parent_That_Changed_Meanwhile_Is_Not_Copied)
{
    Write_Tiff_File(Path(), Picture(), {});
    const Bitmap bitmap = Loaded(Path());
    Write_Tiff_File(Path(), Meadow(20, 20, 1), {});
    Save({.bitmap = &bitmap, .target = Path("b.tif"), .parent = Path()});
    EXPECT_TRUE(Same_Pixels(bitmap.View(), Loaded(Path("b.tif")).View()));
}

TEST_F(Tiff_Save, A_Profile_For_Other_Colours_Stays_Behind)
{
    Options options{.colors = Colors::CMYK};
    options.private_tags = {{Tiff_Tag::ICC_Profile, Profile("CMYK")}};
    Write_Tiff_File(Path(), Picture(), options);
    Bitmap bitmap = Loaded(Path());
    bitmap.Change();
    Save({.bitmap = &bitmap, .target = Path("b.tif"), .parent = Path()});
    EXPECT_TRUE(Tag_Value(Path("b.tif"), Tiff_Tag::ICC_Profile).empty());
}

TEST_F(Tiff_Save, Removes_Texts_And_Resolution_That_Are_Empty)
{
    Write_Tiff_File(Path(), Picture(), With_Everything({}));
    Bitmap bitmap = Loaded(Path());
    Save({.bitmap = &bitmap, .target = Path(), .script = "s", .parent = Path()});
    bitmap = Loaded(Path());
    Save({.bitmap = &bitmap, .target = Path(), .parent = Path()});
    EXPECT_EQ("", Comment(Path()));
    EXPECT_EQ("", Script(Path()));
    EXPECT_EQ(-1, Facts(Path()).horizontal_dpi);
}

TEST_F(Tiff_Save, A_Damaged_Picture_Is_Not_Saved_Over_Its_Original)
{
    Write_Tiff_File(Path(), Picture(), {.compression = COMPRESSION_LZW});
    Bitmap bitmap = Loaded(Path());
    Pixel_Origin origin = *bitmap.Origin();
    origin.damaged = true;
    bitmap.Set_Origin(std::make_shared<Pixel_Origin>(origin));
    EXPECT_FALSE(TIFF_Codec().Save({.bitmap = &bitmap, .target = Path(), .parent = Path()}));
    Save({.bitmap = &bitmap, .target = Path("copy.tif"), .parent = Path()});
}

TEST_F(Tiff_Save, A_Failure_Leaves_The_Target_And_No_Other_File)
{
    Write_Tiff_File(Path(), Picture(), {});
    const auto before = File_Bytes(Path());
    const Bitmap bitmap = Loaded(Path());
    EXPECT_FALSE(TIFF_Codec().Save({.bitmap = &bitmap, .target = Path(), .parent = Path("missing.tif")}));
    EXPECT_EQ(before, File_Bytes(Path()));
    const auto folder = std::filesystem::path(Path()).parent_path();
    EXPECT_EQ(1, std::distance(std::filesystem::directory_iterator(folder), {}));
}

TEST_F(Tiff_Save, Camera_Block_And_Profile_Of_A_Jpeg_Parent_Go_Along)
{
    for (const bool big_endian : {false, true}) {
        Camera_Facts camera{.big_endian = big_endian, .orientation = 6};
        camera.maker_note = {1, 2, 3, 4, 5, 6, 7, 8, 9};
        camera.thumbnail = {0xFF, 0xD8, 0xFF, 0xD9, 1, 2, 3};
        const auto block = Camera_Block(camera);
        const std::string xmp = std::string("http://ns.adobe.com/xap/1.0/\0", 29) + "<x/>  ";
        const std::string profile = std::string("ICC_PROFILE\0\x01\x01", 14) + Profile("RGB ");
        Jpeg_File_Options options;
        options.segments = {{0xE1, block}, {0xE1, {xmp.begin(), xmp.end()}}, {0xE2, {profile.begin(), profile.end()}}};
        const auto jpeg = Jpeg_File(Picture(), options);
        std::vector<std::byte> bytes(jpeg.size());
        std::memcpy(bytes.data(), jpeg.data(), jpeg.size());
        Write_File(Path("a.jpg"), bytes);

        const Bitmap bitmap = Bitmap_Of(Picture());
        Save({.bitmap = &bitmap,
              .target = Path(),
              .comment = "c",
              .script = "s",
              .parent = Path("a.jpg"),
              .parent_type = Image_File_Type::JPEG,
              .horizontal_dpi = 200});
        EXPECT_TRUE(Same_Pixels(bitmap.View(), Loaded(Path()).View()));
        EXPECT_EQ("<x/>  ", Text_Of(Tag_Value(Path(), Tiff_Tag::XMP)));
        EXPECT_EQ(Profile("RGB "), Text_Of(Tag_Value(Path(), Tiff_Tag::ICC_Profile)));
        EXPECT_EQ(1, Facts(Path()).orientation);
        EXPECT_EQ(200, Facts(Path()).horizontal_dpi);
        EXPECT_EQ(1, Orientation_Of_EXIF_Block(EXIF(Path())));
        std::uint64_t position = 0;
        const auto note = EXIF_Tag_Value(Path(), Tiff_Tag::Maker_Note, &position);
        ASSERT_EQ(9U, note.size());
        // Offsets inside of the note stay true: it stands where it stood in the block.
        EXPECT_EQ(0, std::memcmp(block.data() + 6 + position, note.data(), note.size()));
        EXPECT_EQ(std::string::npos, Text_Of(File_Bytes(Path())).find("\xFF\xD8\xFF\xD9\x01\x02\x03"));
    }
}

TEST_F(Tiff_Save, Four_Saves_With_Texts_And_Pixels_In_Turn_Stay_Readable)
{
    std::mt19937 random(4);
    Write_Tiff_File(Path(), Picture(), With_Everything({.big_endian = true}));
    for (int i = 0; i < 12; ++i) {
        Bitmap bitmap = Loaded(Path());
        if (random() % 2) bitmap.Change().Row(i)[i] ^= 0x55;
        Save({.bitmap = &bitmap, .target = Path(), .comment = std::string(random() % 50, 'c'), .parent = Path()});
        EXPECT_TRUE(Same_Pixels(bitmap.View(), Loaded(Path()).View()));
        Expect_Everything(Path());
    }
}
