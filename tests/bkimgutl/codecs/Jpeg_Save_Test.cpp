#include "bkimgutl/codecs/EXIF_Block.h"
#include "dev/samples/Tiff_File.h"
#include "tests/bkimgutl/codecs/Jpeg_Fixture.h"

#include <sys/stat.h>

namespace {

using namespace std::string_view_literals;

class Jpeg_Save : public Jpeg_Fixture {
protected:
    /// A bitmap that comes from no file.
    static Held_Bitmap New_Picture(int width = 64, int height = 48, int bytes_per_pixel = 3)
    {
        return Held_Bitmap(Adopt(Photograph_Like_Picture(width, height, bytes_per_pixel, 3)));
    }

    /// A change that every save must encode.
    static void Touch(const Held_Bitmap& bitmap) { bitmap->Change().Row(0)[0] ^= 1; }
};

std::vector<File_Segment> Without(std::vector<File_Segment> segments, std::initializer_list<int> markers)
{
    std::erase_if(segments, [&](const File_Segment& segment) {
        return std::find(markers.begin(), markers.end(), segment.marker) != markers.end();
    });
    return segments;
}

void Expect_Equal(const std::vector<File_Segment>& expected, const std::vector<File_Segment>& actual)
{
    ASSERT_EQ(expected.size(), actual.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(expected[i].marker, actual[i].marker) << i;
        EXPECT_EQ(expected[i].data, actual[i].data) << i;
    }
}

/// Something of everything that other programs leave in a file.
std::vector<File_Segment> Foreign_Segments()
{
    return {{0xE1, Camera_Block({.maker_note = std::vector<std::uint8_t>(400, 7)})},
            Segment(0xE1, "http://ns.adobe.com/xap/1.0/\0<x:xmpmeta/>"sv),
            Segment(0xE1, "http://ns.adobe.com/xmp/extension/\0"sv, 500),
            Profile_Segment("RGB ", 1, 2, 60'000),
            Profile_Segment("RGB ", 2, 2, 900),
            Segment(0xED, "Photoshop 3.0\0"sv, 700),
            Segment(0xE2, "MPF\0"sv, 80),
            Segment(0xE5, "nobody knows this one", 65'000),
            Segment(0xEA, "not our script", 10),
            Segment(0xEF, "", 0)};
}

TEST_F(Jpeg_Save, Texts_Come_Back)
{
    const auto bitmap = New_Picture();
    const std::string path = Path("a.jpg");
    ASSERT_TRUE(Save(bitmap, path, {.comment = "Wiese \xC3\xBC", .script = "Crop,1,2,3,4;"})) << Error_Text();
    EXPECT_EQ("Wiese \xC3\xBC", Comment(path));
    EXPECT_EQ("Crop,1,2,3,4;", Script(path));
    EXPECT_TRUE(EXIF(path).empty());
    const Plain_Decode plain = Decode_Plainly(Get(path));
    EXPECT_EQ(64, plain.width);
    EXPECT_EQ(48, plain.height);
}

TEST_F(Jpeg_Save, The_Longest_Texts_Come_Back)
{
    const std::string comment(1024, 'c');
    std::string script;
    while (script.size() < 65535) script += char('a' + script.size() % 26);
    const std::string path = Path("a.jpg");
    ASSERT_TRUE(Save(New_Picture(), path, {.comment = comment, .script = script})) << Error_Text();
    EXPECT_EQ(comment, Comment(path));
    EXPECT_EQ(script, Script(path));
    int parts = 0;
    for (const File_Segment& segment : Outer_Segments(Get(path))) parts += segment.marker == 0xEA;
    EXPECT_EQ(2, parts) << "one segment cannot hold it";
}

TEST_F(Jpeg_Save, Texts_That_Are_Too_Long_Are_An_Error_That_Names_The_Limit)
{
    const std::string path = Put("a.jpg", {1, 2, 3});
    EXPECT_FALSE(Save(New_Picture(), path, {.comment = std::string(1025, 'c')}));
    EXPECT_NE(std::string::npos, Error_Text().find("1024")) << Error_Text();
    EXPECT_FALSE(Save(New_Picture(), path, {.script = std::string(65536, 's')}));
    EXPECT_NE(std::string::npos, Error_Text().find("65535")) << Error_Text();
    EXPECT_EQ((File_Bytes{1, 2, 3}), Get(path)) << "nothing was touched";
}

TEST_F(Jpeg_Save, A_Resolution_Of_One_Side_Is_That_Of_Both)
{
    ASSERT_TRUE(Save(New_Picture(), Path("a.jpg"), {.horizontal_dpi = 300})) << Error_Text();
    EXPECT_EQ(300, Facts(Path("a.jpg")).vertical_dpi);
    ASSERT_TRUE(Save(New_Picture(), Path("a.jpg"), {.vertical_dpi = 72})) << Error_Text();
    EXPECT_EQ(72, Facts(Path("a.jpg")).horizontal_dpi);
}

TEST_F(Jpeg_Save, Empty_Texts_Remove_Those_Of_The_Parent)
{
    const std::string path = Path("a.jpg");
    ASSERT_TRUE(Save(New_Picture(), path, {.comment = "one", .script = "two"}));
    ASSERT_TRUE(Save(Load(path), path, {.parent = path})) << Error_Text();
    EXPECT_EQ("", Comment(path));
    EXPECT_EQ("", Script(path));
}

TEST_F(Jpeg_Save, Quality_Falls_Back_To_The_Default_Without_A_Parent)
{
    const std::string path = Path("a.jpg");
    for (const int quality : {Quality_Default, Quality_Of_Parent}) {
        ASSERT_TRUE(Save(New_Picture(), path, {.quality = quality})) << Error_Text();
        EXPECT_EQ(90, Estimated_Quality(*Regular_File::Open(path)));
    }
}

TEST_F(Jpeg_Save, Every_Quality_Is_Estimated_As_It_Was_Asked_For)
{
    const std::string path = Path("a.jpg");
    for (const int quality : {1, 10, 25, 50, 75, 85, 90, 95, 99, 100}) {
        ASSERT_TRUE(Save(New_Picture(), path, {.quality = quality})) << Error_Text();
        EXPECT_EQ(quality, Estimated_Quality(*Regular_File::Open(path)));
    }
    EXPECT_TRUE(Save(New_Picture(), path, {.quality = 0}));
    EXPECT_FALSE(Save(New_Picture(), path, {.quality = 101}));
    EXPECT_FALSE(Save(New_Picture(), path, {.quality = -3}));
}

TEST_F(Jpeg_Save, Colours_Have_Full_Resolution_From_90_On)
{
    const std::string path = Path("a.jpg");
    ASSERT_TRUE(Save(New_Picture(), path, {.quality = 90}));
    EXPECT_EQ((std::vector<int>{1, 1, 1, 1, 1, 1}), Decode_Plainly(Get(path)).sampling);
    ASSERT_TRUE(Save(New_Picture(), path, {.quality = 89}));
    EXPECT_EQ((std::vector<int>{2, 2, 1, 1, 1, 1}), Decode_Plainly(Get(path)).sampling);
}

TEST_F(Jpeg_Save, Parent_Quality_Is_Told)
{
    const std::string parent = Put("p.jpg", Jpeg_File(Meadow(16, 16, 1), {.quality = 73}));
    const auto bitmap = New_Picture();
    std::int32_t quality = 0;
    ASSERT_TRUE(Save_Bitmap_To_File(bitmap.Handle(), Path("a.jpg"), 1, "", "", parent, -1, 0, 0, &quality));
    EXPECT_EQ(73, quality);
    ASSERT_TRUE(Save_Bitmap_To_File(bitmap.Handle(), Path("a.jpg"), 1, "", "", "", -1, 0, 0, &quality));
    EXPECT_EQ(-1, quality);
}

/// How many tables the file holds.
std::size_t Table_Count(const File_Bytes& file)
{
    constexpr std::size_t table_bytes = 65; // of 8 bits, with its number
    std::size_t bytes = 0, length = 0;
    for (std::size_t at = 2; file[at + 1] != 0xDA; at += 2 + length) {
        length = std::size_t(file[at + 2]) << 8 | file[at + 3];
        if (file[at + 1] == 0xDB) bytes += length - 2;
    }
    return bytes / table_bytes;
}

TEST_F(Jpeg_Save, The_Parents_Tables_And_Sampling_Stay_When_Pixels_Change)
{
    using Colors = Jpeg_File_Options::Colors;
    const Jpeg_File_Options parents[] = {
        {.quality = 63},
        {.quality = 97, .horizontal_sampling = 2, .vertical_sampling = 1},
        {.quality = 40, .horizontal_sampling = 4, .vertical_sampling = 1, .progressive = true},
        {.quality = 80, .horizontal_sampling = 1, .vertical_sampling = 1, .colors = Colors::RGB},
        {.quality = 95, .horizontal_sampling = 2, .vertical_sampling = 1, .colors = Colors::YCCK},
    };
    for (const Jpeg_File_Options& options : parents) {
        const std::string parent = Put("p.jpg", Jpeg_File(Meadow(100, 60, 1), options));
        const auto bitmap = Load(parent);
        Touch(bitmap);
        ASSERT_TRUE(Save(bitmap, Path("a.jpg"), {.parent = parent})) << Error_Text();
        Plain_Decode before = Decode_Plainly(Get(parent));
        const Plain_Decode after = Decode_Plainly(Get(Path("a.jpg")));
        ASSERT_EQ(3U, after.tables.size());
        before.tables.resize(3); // black has no channel in the new file
        before.sampling.resize(6);
        EXPECT_EQ(before.tables, after.tables);
        EXPECT_EQ(before.sampling, after.sampling);
        EXPECT_EQ(Table_Count(Get(parent)), Table_Count(Get(Path("a.jpg")))) << "equal tables are stored once";
        EXPECT_EQ(before.progressive, after.progressive);
        EXPECT_TRUE(Pixels_Within(90, bitmap->View(), Load(Path("a.jpg"))->View()));
    }
}

/// The file with each of its tables replaced by one of 16 bits with this step at every frequency.
File_Bytes With_Step(File_Bytes file, int step)
{
    for (std::size_t at = 2; file[at + 1] != 0xDA;) {
        const std::size_t length = std::size_t(file[at + 2]) << 8 | file[at + 3];
        if (file[at + 1] != 0xDB) {
            at += 2 + length;
            continue;
        }
        File_Bytes table = {0xFF, 0xDB, 0, 131, std::uint8_t(0x10 | file[at + 4])};
        for (int i = 0; i < 64; ++i) table.insert(table.end(), {std::uint8_t(step >> 8), std::uint8_t(step)});
        const auto place =
            file.erase(file.begin() + std::ptrdiff_t(at), file.begin() + std::ptrdiff_t(at + 2 + length));
        file.insert(place, table.begin(), table.end());
        at += table.size();
    }
    return file;
}

TEST_F(Jpeg_Save, Impossible_Steps_In_The_Parents_Tables_Do_No_Harm)
{
    for (const int step : {0, 8192, 65535}) { // found by fuzzing: the encoder divides by them, or by their overflow
        const std::string parent = Put("p.jpg", With_Step(Jpeg_File(Meadow(32, 32, 1)), step));
        const auto bitmap = Load(parent);
        ASSERT_TRUE(bitmap) << Error_Text();
        Touch(bitmap);
        EXPECT_TRUE(Save(bitmap, Path("a.jpg"), {.parent = parent})) << Error_Text();
        EXPECT_TRUE(Load(Path("a.jpg"))) << Error_Text();
    }
}

TEST_F(Jpeg_Save, A_Parent_Of_Other_Colours_Gives_What_Fits)
{
    using Colors = Jpeg_File_Options::Colors;
    const std::string grey = Put("g.jpg", Jpeg_File(To_Grey(Meadow(32, 32, 1)), {.quality = 70}));
    const std::string inks =
        Put("k.jpg", Jpeg_File(Meadow(32, 32, 1),
                               {.quality = 70, .colors = Colors::YCCK, .segments = {Profile_Segment("CMYK")}}));
    for (const std::string& parent : {grey, inks}) {
        for (const int bytes : {1, 3}) {
            const auto bitmap = New_Picture(50, 40, bytes);
            ASSERT_TRUE(Save(bitmap, Path("a.jpg"), {.parent = parent})) << Error_Text();
            const auto again = Load(Path("a.jpg"));
            ASSERT_TRUE(again) << Error_Text();
            EXPECT_EQ(bytes, again->Bytes_Per_Pixel());
            EXPECT_TRUE(Pixels_Within(90, bitmap->View(), again->View()));
            for (const File_Segment& segment : Outer_Segments(Get(Path("a.jpg"))))
                EXPECT_NE(0xE2, segment.marker) << "an ink profile would tint the new colours";
        }
    }
}

TEST_F(Jpeg_Save, Foreign_Segments_Stay_Byte_For_Byte_When_Texts_Change)
{
    const std::string path = Put("a.jpg", Jpeg_File(Meadow(64, 48, 1), {.dpi = 300, .segments = Foreign_Segments()}));
    const auto before = Outer_Segments(Get(path));
    ASSERT_TRUE(Save(Load(path), path,
                     {.comment = "c", .script = "s", .parent = path, .horizontal_dpi = 300, .vertical_dpi = 300}))
        << Error_Text();
    auto after = Outer_Segments(Get(path));
    std::erase_if(after, [](const File_Segment& segment) {
        return segment.marker == 0xFE || (segment.marker == 0xEA && segment.data[0] == 'H');
    });
    Expect_Equal(before, after);
}

TEST_F(Jpeg_Save, Foreign_Segments_Stay_Byte_For_Byte_When_Pixels_Change)
{
    const std::string path = Put("a.jpg", Jpeg_File(Meadow(64, 48, 1), {.dpi = 300, .segments = Foreign_Segments()}));
    const auto before = Outer_Segments(Get(path));
    const auto bitmap = Load(path);
    Touch(bitmap);
    ASSERT_TRUE(Save(bitmap, path, {.comment = "c", .parent = path, .horizontal_dpi = 300, .vertical_dpi = 300}));
    Expect_Equal(before, Without(Outer_Segments(Get(path)), {0xFE}));
}

TEST_F(Jpeg_Save, Our_Segments_Stand_Before_Those_That_Point_Behind_Themselves)
{
    const std::string path = Put("a.jpg", Jpeg_File(Meadow(64, 48, 1), {.segments = Foreign_Segments()}));
    ASSERT_TRUE(Save(Load(path), path, {.comment = "c", .script = "s", .parent = path}));
    std::vector<int> markers;
    for (const File_Segment& segment : Outer_Segments(Get(path))) markers.push_back(segment.marker);
    EXPECT_EQ((std::vector<int>{0xE0, 0xE1, 0xFE, 0xEA, 0xE1}), std::vector<int>(markers.begin(), markers.begin() + 5));
}

TEST_F(Jpeg_Save, Changed_Pixels_Set_The_Orientation_To_1_And_Blank_The_Thumbnail)
{
    const auto thumbnail = Jpeg_File(Meadow(40, 30, 1), {.jfif = false});
    const std::string path =
        Put("a.jpg", Jpeg_File(Meadow(64, 48, 1),
                               {.segments = {{0xE1, Camera_Block({.orientation = 6, .thumbnail = thumbnail})}}}));
    const File_Bytes before = EXIF(path);
    const auto bitmap = Load(path);
    Touch(bitmap);
    ASSERT_TRUE(Save(bitmap, path, {.parent = path})) << Error_Text();
    const File_Bytes after = EXIF(path);
    EXPECT_EQ(before.size(), after.size());
    EXPECT_EQ(after.end(), std::search(after.begin(), after.end(), thumbnail.begin(), thumbnail.end()));
    EXPECT_TRUE(std::all_of(after.end() - std::ptrdiff_t(thumbnail.size()), after.end(), [](int b) { return b == 0; }));
    const Picture_Facts facts = Facts(path);
    EXPECT_EQ(48, facts.width);
    EXPECT_EQ(48, Decode_Plainly(Get(path)).width) << "the pixels themselves are upright";
}

TEST_F(Jpeg_Save, Text_Saves_Keep_Orientation_And_Thumbnail)
{
    const auto block = Camera_Block({.orientation = 8, .thumbnail = Jpeg_File(Meadow(40, 30, 1))});
    const std::string path = Put("a.jpg", Jpeg_File(Meadow(64, 48, 1), {.segments = {{0xE1, block}}}));
    ASSERT_TRUE(Save(Load(path), path, {.comment = "c", .parent = path})) << Error_Text();
    EXPECT_EQ(block, EXIF(path));
}

TEST_F(Jpeg_Save, Thumbnails_Of_JFIF_Go_When_Pixels_Change)
{
    File_Bytes file = Jpeg_File(Meadow(64, 48, 1), {.segments = {Segment(0xE0, "JFXX\0\x13\1\1abc"sv)}});
    file[5] += 3; // one pixel behind the fields of JFIF
    file[18] = file[19] = 1;
    file.insert(file.begin() + 20, {9, 9, 9});
    const std::string path = Put("a.jpg", file);
    const auto bitmap = Load(path);
    ASSERT_TRUE(bitmap) << Error_Text();
    ASSERT_TRUE(Save(bitmap, Path("b.jpg"), {.parent = path}));
    EXPECT_EQ(17U, Outer_Segments(Get(Path("b.jpg")))[0].data.size());
    EXPECT_EQ(2U, Outer_Segments(Get(Path("b.jpg"))).size());
    Touch(bitmap);
    ASSERT_TRUE(Save(bitmap, Path("b.jpg"), {.parent = path}));
    EXPECT_EQ(14U, Outer_Segments(Get(Path("b.jpg")))[0].data.size());
    EXPECT_EQ(1U, Outer_Segments(Get(Path("b.jpg"))).size());
}

struct Resolution_Case {
    const char* name;
    int parent_dpi; ///< in JFIF
    int camera_dpi; ///< 0 for none
    int asked;
    int expected;
};

class Jpeg_Resolution : public Jpeg_Save, public testing::WithParamInterface<Resolution_Case> {
protected:
    static double Camera_Resolution(const std::string& path, std::uint16_t tag)
    {
        const File_Bytes exif = EXIF(path);
        const auto view = EXIF_View::Of(std::as_bytes(std::span(exif)));
        return view->Ratio(*view->Find(view->First_Directory(), tag)).value_or(0);
    }
};

TEST_P(Jpeg_Resolution, Is_What_Was_Asked_For)
{
    const Resolution_Case& row = GetParam();
    Camera_Facts camera;
    camera.dpi = row.camera_dpi == 0 ? std::nullopt : std::optional(row.camera_dpi);
    const std::string parent = Put("p.jpg", Jpeg_File(Meadow(32, 16, 1), {.jfif = row.parent_dpi >= 0,
                                                                          .dpi = std::max(row.parent_dpi, 0),
                                                                          .segments = {{0xE1, Camera_Block(camera)}}}));
    for (const bool touched : {false, true}) {
        const auto bitmap = Load(parent);
        if (touched) Touch(bitmap);
        ASSERT_TRUE(
            Save(bitmap, Path("a.jpg"), {.parent = parent, .horizontal_dpi = row.asked, .vertical_dpi = row.asked}))
            << Error_Text();
        EXPECT_EQ(row.expected, Facts(Path("a.jpg")).horizontal_dpi) << touched;
        EXPECT_EQ(row.expected, Facts(Path("a.jpg")).vertical_dpi) << touched;
        if (row.camera_dpi != 0 && row.expected > 0) {
            EXPECT_EQ(row.expected, Camera_Resolution(Path("a.jpg"), 282)) << touched;
            EXPECT_EQ(row.expected, Camera_Resolution(Path("a.jpg"), 283)) << touched;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(All, Jpeg_Resolution,
                         testing::Values(Resolution_Case{"the_parents_own", 300, 0, 300, 300},
                                         Resolution_Case{"another", 300, 0, 96, 96},
                                         Resolution_Case{"none_asked_none_there", 0, 0, -1, -1},
                                         Resolution_Case{"none_asked", 300, 0, -1, -1},
                                         Resolution_Case{"a_new_one", 0, 0, 150, 150},
                                         Resolution_Case{"a_new_one_without_jfif", -1, 0, 150, 150},
                                         Resolution_Case{"the_cameras_own", -1, 240, 240, 240},
                                         Resolution_Case{"another_than_the_cameras", -1, 240, 72, 72},
                                         Resolution_Case{"another_than_both", 72, 300, 96, 96},
                                         Resolution_Case{"none_asked_where_the_camera_has_one", -1, 240, -1, 240},
                                         Resolution_Case{"more_than_the_field_holds", 0, 0, 70'000, 65535}),
                         [](const auto& row) { return row.param.name; });

TEST_F(Jpeg_Save, Resolution_Follows_The_Stored_Sides_In_A_Text_Save)
{
    const std::string path =
        Put("a.jpg", Jpeg_File(Meadow(32, 16, 1), {.dpi = 72, .segments = {{0xE1, Camera_Block({.orientation = 6})}}}));
    ASSERT_TRUE(Save(Load(path), path, {.parent = path, .horizontal_dpi = 100, .vertical_dpi = 200})) << Error_Text();
    EXPECT_EQ(100, Facts(path).horizontal_dpi);
    EXPECT_EQ(200, Facts(path).vertical_dpi);
}

TEST_F(Jpeg_Save, Resolution_Does_Not_Turn_Stored_RGB_Into_Other_Colours)
{
    const std::string path = Put("a.jpg", Jpeg_File(Meadow(32, 16, 1), {.colors = Jpeg_File_Options::Colors::RGB}));
    const auto before = Decode_Plainly(Get(path));
    ASSERT_TRUE(Save(Load(path), path, {.parent = path, .horizontal_dpi = 100, .vertical_dpi = 100})) << Error_Text();
    EXPECT_EQ(before.bytes, Decode_Plainly(Get(path)).bytes);
}

TEST_F(Jpeg_Save, A_Parent_That_Is_No_Picture_Is_An_Error)
{
    EXPECT_FALSE(Save(New_Picture(), Path("a.jpg"), {.parent = Path("missing.jpg")}));
    EXPECT_NE(std::string::npos, Error_Text().find("missing.jpg"));
    EXPECT_FALSE(Save(New_Picture(), Path("a.jpg"), {.parent = Put("text.jpg", {'n', 'o', 'n', 'e', '!'})}));
    EXPECT_FALSE(std::filesystem::exists(Path("a.jpg")));
}

/// What a profile stands for in a TIFF file.
std::string Long_Profile(std::size_t bytes = 70'000) // more than one segment holds
{
    std::string profile(bytes, 'p');
    profile.replace(16, 4, "RGB ");
    return profile;
}

TEST_F(Jpeg_Save, A_TIFF_Parent_Gives_Camera_Data_Profile_And_The_Default_Quality)
{
    constexpr std::uint16_t profile_tag = 34675;
    const Sample_Picture seen = Meadow(48, 32, 1);
    Tiff_File_Options options{.orientation = 6, .make = "Sample Works", .model = "Field Camera 2"};
    options.private_tags = {{profile_tag, Long_Profile()}};
    options.maker_note = "a maker note";
    const std::string parent = Path("p.tif");
    Write_Tiff_File(parent, Stored_With_Orientation(seen, 6), options);
    const auto bitmap = Load(parent);
    ASSERT_TRUE(bitmap) << Error_Text();
    ASSERT_TRUE(Save(bitmap, Path("a.jpg"), {.comment = "c", .parent = parent})) << Error_Text();
    const File_Bytes exif = EXIF(Path("a.jpg"));
    const auto bytes = std::as_bytes(std::span(exif));
    EXPECT_EQ(EXIF(parent).size(), exif.size());
    EXPECT_NE(std::string::npos, std::string(exif.begin(), exif.end()).find("Field Camera 2"));
    EXPECT_EQ(1, Orientation_Of_EXIF_Block({bytes.begin(), bytes.end()}));
    EXPECT_EQ(48, Facts(Path("a.jpg")).width);
    const auto profile = JPEG_Codec().Read_Profile(*Regular_File::Open(Path("a.jpg")));
    ASSERT_TRUE(profile);
    EXPECT_EQ(Long_Profile(), std::string(reinterpret_cast<const char*>(profile->data()), profile->size()));
    EXPECT_EQ(90, Estimated_Quality(*Regular_File::Open(Path("a.jpg"))));
}

TEST_F(Jpeg_Save, A_Profile_That_No_JPEG_File_Can_Hold_Is_Refused_With_A_Message)
{
    const std::string parent = Path("p.tif");
    Write_Tiff_File(parent, Meadow(48, 32, 1), {.private_tags = {{34675, Long_Profile(16'707'346)}}});
    EXPECT_FALSE(Save(Load(parent), Path("a.jpg"), {.parent = parent}));
    EXPECT_EQ(Path("a.jpg") +
                  ": the colour profile of 16707346 bytes does not fit into a JPEG file, 16707345 are the limit",
              Error_Text());
    EXPECT_FALSE(std::filesystem::exists(Path("a.jpg")));
}

TEST_F(Jpeg_Save, An_Incomplete_Profile_Goes_Along_As_It_Is_And_Into_No_TIFF)
{
    const auto first_of_two = Segment(0xE2, std::string("ICC_PROFILE\0\1\2", 14) + "some of a profile");
    const std::string parent = Put("p.jpg", Jpeg_File(Meadow(16, 16, 1), {.segments = {first_of_two}}));
    const auto bitmap = Load(parent);
    ASSERT_TRUE(Save(bitmap, Path("a.jpg"), {.parent = parent, .quality = 80})) << Error_Text();
    const auto segments = Outer_Segments(Get(Path("a.jpg")));
    EXPECT_EQ(1, std::count_if(segments.begin(), segments.end(), [&](const File_Segment& segment) {
                  return segment.marker == 0xE2 && segment.data == first_of_two.data;
              }));
    EXPECT_EQ(0, Save_Bitmap_To_File(bitmap.Handle(), Path("a.tif"), 2, {}, {}, parent, -2, -1, -1, nullptr));
    EXPECT_EQ(Path("a.tif: ") + parent + ": has an incomplete colour profile, which cannot be carried along",
              Error_Text());
}

TEST_F(Jpeg_Save, A_Folder_As_Target_And_A_Stale_Handle_Are_Errors)
{
    EXPECT_FALSE(Save(New_Picture(), folder_.string(), {}));
    EXPECT_FALSE(Save(Held_Bitmap(0), Path("a.jpg"), {}));
    EXPECT_FALSE(Save(New_Picture(), Path("no/such/folder/a.jpg"), {}));
    EXPECT_NE(std::string::npos, Error_Text().find("a.jpg")) << Error_Text();
}

TEST_F(Jpeg_Save, A_Picture_Too_Wide_For_The_Format_Is_An_Error)
{
    EXPECT_FALSE(Save(New_Picture(65'501, 1, 1), Path("a.jpg"), {}));
    EXPECT_NE(std::string::npos, Error_Text().find("65500")) << Error_Text();
    EXPECT_FALSE(std::filesystem::exists(Path("a.jpg")));
}

TEST_F(Jpeg_Save, Takes_The_Mode_Of_The_Original_That_Stands_Aside)
{
    const std::string path = Put("a.jpg", Jpeg_File(Meadow(16, 16, 1)));
    ASSERT_EQ(0, chmod(path.c_str(), 0640));
    const auto bitmap = Load(path);
    std::filesystem::rename(path, path + "~");
    ASSERT_TRUE(Save(bitmap, path, {.parent = path + "~"})) << Error_Text();
    struct stat facts {};
    ASSERT_EQ(0, stat(path.c_str(), &facts));
    EXPECT_EQ(0640U, facts.st_mode & 0777U);
}

TEST_F(Jpeg_Save, Leaves_No_Hidden_File_Behind)
{
    ASSERT_TRUE(Save(New_Picture(), Path("a.jpg"), {}));
    EXPECT_FALSE(Save(New_Picture(), Path("b.jpg"), {.parent = Path("missing.jpg")}));
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder_)) files += entry.is_regular_file();
    EXPECT_EQ(1, files);
}

} // namespace
