#include "tests/bkimgutl/Reference_Pictures.h"
#include "tests/bkimgutl/codecs/Tiff_Fixture.h"

#include <random>
#include <tiff.h>

namespace {

using Options = Tiff_File_Options;

struct Hostile_Case {
    const char* name;
    std::vector<std::byte> bytes;
    const char* error; ///< a part of the load's error
};

std::ostream& operator<<(std::ostream& out, const Hostile_Case& row)
{
    return out << row.name;
}

class Tiff_Hostile : public Tiff_Folder, public testing::WithParamInterface<Hostile_Case> {};
class Tiff_Damaged : public Tiff_Folder {};

constexpr std::uint16_t Short = 3, Long = 4;

/// A grey picture without data, with entries in place of or besides its own.
std::vector<std::byte> Grey_Tiff(std::vector<Raw_Entry> others, std::uint32_t next = 0, std::size_t tail_bytes = 0)
{
    std::vector<Raw_Entry> entries{{256, Long, 1, 16}, {257, Long, 1, 16}, {258, Short, 1, 8},
                                   {259, Short, 1, 1}, {262, Short, 1, 1}, {273, Long, 1, 8},
                                   {277, Short, 1, 1}, {278, Long, 1, 16}, {279, Long, 1, 256}};
    for (const Raw_Entry& other : others) {
        std::erase_if(entries, [&](const Raw_Entry& entry) { return entry.tag == other.tag; });
        entries.push_back(other);
    }
    std::sort(entries.begin(), entries.end(), [](const auto& a, const auto& b) { return a.tag < b.tag; });
    return Raw_Tiff(entries, next, tail_bytes);
}

std::vector<std::byte> Bytes_Of(std::string_view text)
{
    const auto bytes = std::as_bytes(std::span(text));
    return {bytes.begin(), bytes.end()};
}

std::vector<std::byte> With_Entry_Count(std::uint16_t count)
{
    auto bytes = Grey_Tiff({}, 0, 70000 * 12 / 10);
    Tiff_Layout().Put(bytes.data() + 8, 2, count);
    return bytes;
}

using namespace std::string_view_literals;

} // namespace

INSTANTIATE_TEST_SUITE_P(
    All, Tiff_Hostile,
    testing::Values(
        Hostile_Case{"empty", {}, "empty"}, Hostile_Case{"two_bytes", Bytes_Of("II"), "too short"},
        Hostile_Case{"a_text", Bytes_Of("This is no picture at all."), "no TIFF file"},
        Hostile_Case{"a_jpeg_by_another_name", Bytes_Of("\xFF\xD8\xFF\xE0\0\x10JFIF\0\1\1"sv), "no TIFF file"},
        Hostile_Case{"header_alone", Bytes_Of("II\x2A\0\x08\0\0\0"sv), "outside the file"},
        Hostile_Case{"directory_far_outside", Bytes_Of("II\x2A\0\xFF\xFF\xFF\xFF"sv), "outside the file"},
        Hostile_Case{"directory_in_the_header", Bytes_Of("II\x2A\0\x02\0\0\0"sv), "outside the file"},
        Hostile_Case{"bigtiff_header_cut", Bytes_Of("II\x2B\0\x08\0\0\0"sv), "too short"},
        Hostile_Case{"bigtiff_with_odd_offsets", Bytes_Of("II\x2B\0\x04\0\0\0\0\0\0\0\0\0\0\0"sv), "header is damaged"},
        Hostile_Case{"bigtiff_directory_beyond_everything",
                     Bytes_Of("II\x2B\0\x08\0\0\0\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"sv), "outside the file"},
        Hostile_Case{"too_many_entries", With_Entry_Count(1025), "1025 entries"},
        Hostile_Case{"most_entries_there_can_be", With_Entry_Count(65535), "65535 entries"},
        Hostile_Case{"no_entries", With_Entry_Count(0), "empty"},
        Hostile_Case{"no_width", Grey_Tiff({{256, Long, 1, 0}}), "no size"},
        Hostile_Case{"huge_sides", Grey_Tiff({{256, Long, 1, 0xFFFFFFFF}, {257, Long, 1, 0xFFFFFFFF}}), "larger than"},
        Hostile_Case{"huge_area", Grey_Tiff({{256, Long, 1, 100000}, {257, Long, 1, 100000}}), "larger than"},
        Hostile_Case{"too_many_samples", Grey_Tiff({{277, Short, 1, 6}}), "6 samples"},
        Hostile_Case{"samples_without_end", Grey_Tiff({{277, Short, 1, 65535}}), "65535 samples"},
        Hostile_Case{"no_samples", Grey_Tiff({{277, Short, 1, 0}}), "0 samples"},
        Hostile_Case{"too_many_strips", Grey_Tiff({{257, Long, 1, 2000000}, {278, Long, 1, 1}}), "strips or tiles"},
        Hostile_Case{"too_many_strip_offsets", Grey_Tiff({{273, Long, 0x7FFFFFFF, 8}}), "strips or tiles"},
        Hostile_Case{"too_many_tiles",
                     Grey_Tiff({{256, Long, 1, 20000}, {257, Long, 1, 20000}, {322, Long, 1, 16}, {323, Long, 1, 16}}),
                     "strips or tiles"},
        Hostile_Case{
            "a_tile_larger_than_memory",
            Grey_Tiff({{322, Long, 1, 0x7FFFFFF0}, {323, Long, 1, 0x7FFFFFF0}, {324, Long, 1, 8}, {325, Long, 1, 256}}),
            "t"},
        Hostile_Case{"strip_outside_the_file", Grey_Tiff({{273, Long, 1, 0x7FFFFFFF}}), "cannot be decoded"},
        Hostile_Case{"no_strips_at_all", Raw_Tiff({{256, Long, 1, 16}, {257, Long, 1, 16}}), "cannot be"},
        Hostile_Case{"unknown_compression", Grey_Tiff({{259, Short, 1, 4711}}), "compression 4711"},
        Hostile_Case{"old_jpeg_coding", Grey_Tiff({{259, Short, 1, 6}}), "old kind of JPEG"},
        Hostile_Case{"unknown_colours", Grey_Tiff({{262, Short, 1, 32803}}), "colour kind 32803"},
        Hostile_Case{"palette_without_colours", Grey_Tiff({{262, Short, 1, 3}}), ""},
        Hostile_Case{"bits_beyond_all", Grey_Tiff({{258, Short, 1, 65}}), "65 bits"}),
    [](const auto& row) { return row.param.name; });

TEST_P(Tiff_Hostile, Gives_One_Clear_Line)
{
    Write_File(Path(), GetParam().bytes);
    for (const int divisor : {1, 8}) {
        const std::string error = Load_Error(Path(), divisor);
        EXPECT_FALSE(error.empty());
        EXPECT_NE(std::string::npos, error.find(GetParam().error)) << error;
        EXPECT_EQ(std::string::npos, error.find('\n'));
    }
    // The other readers must survive it too, whatever they say.
    const auto file = Open_File(Path());
    (void)TIFF_Codec().Read_Facts(file);
    (void)TIFF_Codec().Read_Comment(file);
    (void)TIFF_Codec().Read_Script(file);
    (void)TIFF_Codec().Read_EXIF(file);
    (void)TIFF_Codec().Read_Profile(file);
}

TEST_F(Tiff_Damaged, Directories_In_A_Circle_End)
{
    Write_File(Path(), Grey_Tiff({}, /*next=*/8, 300));
    const Bitmap bitmap = Loaded(Path());
    EXPECT_FALSE(bitmap.Origin()->reduced);

    // The EXIF directory is the first one again, and points to itself.
    Write_File(Path(), Grey_Tiff({{34665, Long, 1, 8}, {40965, Long, 1, 8}, {34853, Long, 1, 8}}, 8, 300));
    EXPECT_TRUE(TIFF_Codec().Read_EXIF(Open_File(Path())));
}

TEST_F(Tiff_Damaged, Values_Outside_The_File_Are_Errors)
{
    Write_File(Path(), Grey_Tiff({{270, 2, 500, 0x7FFFFFFF}, {34675, 7, 0x7FFFFFFF, 100}}, 0, 300));
    EXPECT_FALSE(TIFF_Codec().Read_Comment(Open_File(Path())));
    EXPECT_FALSE(TIFF_Codec().Read_Profile(Open_File(Path())));
    EXPECT_EQ(16, Facts(Path()).width);
}

TEST_F(Tiff_Damaged, A_Truncated_Picture_Shows_What_Is_There_And_Says_So)
{
    for (const int compression : {COMPRESSION_NONE, COMPRESSION_LZW, COMPRESSION_ADOBE_DEFLATE, COMPRESSION_PACKBITS}) {
        SCOPED_TRACE(compression);
        Write_Tiff_File(Path(), Meadow(64, 64, 2), {.compression = compression, .rows_per_strip = 8});
        const Bitmap whole = Loaded(Path());
        // The directory stands at the end, so the strips are damaged in their middle instead of being cut off.
        auto bytes = File_Bytes(Path());
        std::fill(bytes.begin() + long(bytes.size() / 2), bytes.begin() + long(bytes.size() / 2 + 40), std::byte(0xFF));
        Write_File(Path(), bytes);
        const Bitmap bitmap = Loaded(Path());
        EXPECT_EQ(Row_Bytes(whole.View(), 0), Row_Bytes(bitmap.View(), 0));
        if (compression == COMPRESSION_ADOBE_DEFLATE) {
            EXPECT_TRUE(bitmap.Origin()->damaged);
        }
    }
}

TEST_F(Tiff_Damaged, A_Strip_That_Ends_Outside_The_File_Is_Black_And_The_Picture_Damaged)
{
    auto bytes = Grey_Tiff({{278, Long, 1, 8}, {273, Long, 2, 122}, {279, Long, 2, 130}}, 0, 16 + 128);
    const Tiff_Layout layout;
    layout.Put(bytes.data() + 122, 4, 138);
    layout.Put(bytes.data() + 126, 4, 0x00FFFFFF);
    layout.Put(bytes.data() + 130, 4, 128);
    layout.Put(bytes.data() + 134, 4, 128);
    std::fill(bytes.begin() + 138, bytes.begin() + 138 + 128, std::byte(77));
    Write_File(Path(), bytes);
    const Bitmap bitmap = Loaded(Path());
    EXPECT_EQ(77, bitmap.View().Row(7)[15]);
    EXPECT_EQ(0, bitmap.View().Row(8)[0]);
    EXPECT_TRUE(bitmap.Origin()->damaged);
}

TEST_F(Tiff_Damaged, Every_Shortening_And_Random_Damage_Ends_Well)
{
    Options options{.compression = COMPRESSION_LZW, .rows_per_strip = 4};
    options.maker_note = "note";
    options.description = "text";
    Write_Tiff_File(Path("whole.tif"), Meadow(24, 16, 2), options);
    const auto whole = File_Bytes(Path("whole.tif"));
    std::mt19937 random(8);
    for (std::size_t i = 0; i < 600; ++i) {
        auto bytes = whole;
        if (i % 2 == 0) bytes.resize(bytes.size() * i / 600);
        for (std::size_t n = 0; n < i % 4 && !bytes.empty(); ++n) bytes[random() % bytes.size()] = std::byte(random());
        Write_File(Path(), bytes);
        const auto file = Open_File(Path());
        (void)TIFF_Codec().Load(file, 1 + int(i % 3));
        (void)TIFF_Codec().Read_Facts(file);
        (void)TIFF_Codec().Read_EXIF(file);
        const auto loaded = TIFF_Codec().Load(file, 1);
        if (!loaded) continue;
        (void)TIFF_Codec().Save({.bitmap = &*loaded, .target = Path("b.tif"), .comment = "x", .parent = Path()});
    }
}

struct Cut_Value_Case {
    const char* name;
    std::uint16_t tag;
    const char* called;
};

class Tiff_Cut_Value : public Tiff_Folder, public testing::WithParamInterface<Cut_Value_Case> {
protected:
    /// The error of a save of changed pixels, without the folder's path; "" when it succeeds.
    std::string Error_Of_Save(const Codec& codec, const char* name)
    {
        Bitmap bitmap = Loaded(Path());
        bitmap.Change().Row(0)[0] ^= 1;
        const auto saved = codec.Save({.bitmap = &bitmap, .target = Path(name), .parent = Path()});
        if (saved) return "";
        EXPECT_FALSE(Regular_File::Open(Path(name)));
        return saved.error().text.substr(Path("").size());
    }
};

TEST_P(Tiff_Cut_Value, Is_Not_Left_Out_But_Refused)
{
    constexpr std::uint16_t bytes = 7;
    const std::string tag = std::to_string(GetParam().tag);
    Write_File(Path(), Grey_Tiff({{GetParam().tag, bytes, 5000, 270}}, 0, 300));
    EXPECT_EQ("a.tif: the " + std::string(GetParam().called) + " cannot be carried along: the value of tag " + tag +
                  " lies outside the file",
              Error_Of_Save(JPEG_Codec(), "b.jpg"));
    EXPECT_EQ("a.tif: the value of tag " + tag + " lies outside the file and cannot be carried along",
              Error_Of_Save(TIFF_Codec(), "b.tif"));
}

TEST_P(Tiff_Cut_Value, Of_Which_Nothing_Is_There_Does_Not_Matter)
{
    constexpr std::uint16_t bytes = 7;
    Write_File(Path(), Grey_Tiff({{GetParam().tag, bytes, 5000, 0x7FFFFFFF}}, 0, 300));
    EXPECT_EQ("", Error_Of_Save(JPEG_Codec(), "b.jpg"));
    EXPECT_EQ("", Error_Of_Save(TIFF_Codec(), "b.tif"));
    EXPECT_TRUE(Tag_Value(Path("b.tif"), GetParam().tag).empty());
}

INSTANTIATE_TEST_SUITE_P(All, Tiff_Cut_Value,
                         testing::Values(Cut_Value_Case{"profile", 34675, "colour profile"},
                                         Cut_Value_Case{"xmp", 700, "XMP data"},
                                         Cut_Value_Case{"resources", 34377, "image resources"},
                                         Cut_Value_Case{"iptc", 33723, "image resources"}),
                         [](const auto& row) { return row.param.name; });

TEST_F(Tiff_Damaged, A_File_That_Leaves_The_Size_Of_Its_Data_To_Guess_Is_Written_Anew)
{
    // Its data would seem to go on into whatever a save appends.
    auto bytes = Grey_Tiff({{279, Long, 1, 0}}, 0, 400);
    for (std::size_t i = 130; i < bytes.size(); ++i) bytes[i] = std::byte(i & 255);
    Tiff_Layout().Put(bytes.data() + 10 + 5 * 12 + 8, 4, 130);
    Write_File(Path(), bytes);
    const Bitmap bitmap = Loaded(Path());
    ASSERT_EQ(130, bitmap.View().Row(0)[0]);
    Save({.bitmap = &bitmap, .target = Path("b.tif"), .comment = "c", .parent = Path()});
    EXPECT_TRUE(Same_Pixels(bitmap.View(), Loaded(Path("b.tif")).View()));
    EXPECT_EQ(256U, Tag_Number(Path("b.tif"), Tiff_Tag::Strip_Byte_Counts));
}

TEST_F(Tiff_Damaged, A_File_With_A_Palette_In_Its_Header_Is_Written_Anew)
{
    // A save of texts changes the header, and would change the colours with it.
    for (const auto& [position, is_carried] : {std::pair{4u, false}, {7u, false}, {8u, true}, {150u, true}}) {
        auto bytes =
            Grey_Tiff({{258, Short, 1, 1}, {262, Short, 1, 3}, {279, Long, 1, 32}, {320, Short, 6, position}}, 0, 400);
        Tiff_Layout().Put(bytes.data() + 10 + 5 * 12 + 8, 4, 200);
        Write_File(Path(), bytes);
        EXPECT_EQ(is_carried, TIFF_Codec().Is_Complete(Open_File(Path()))) << position;
        const Bitmap bitmap = Loaded(Path());
        Save({.bitmap = &bitmap, .target = Path("b.tif"), .comment = "c", .parent = Path()});
        EXPECT_TRUE(Same_Pixels(bitmap.View(), Loaded(Path("b.tif")).View())) << position;
    }
}

TEST_F(Tiff_Damaged, A_File_With_Sizes_Of_Strips_And_Of_Tiles_Is_Written_Anew)
{
    // Readers take either for the other, whichever comes last, and a save of texts would sort them.
    const auto is_carried = [&](const std::vector<Raw_Entry>& more) {
        auto bytes = Grey_Tiff(more, 0, 400);
        Tiff_Layout().Put(bytes.data() + 10 + 5 * 12 + 8, 4, 130);
        Write_File(Path(), bytes);
        const auto file = Regular_File::Open(Path());
        return file && TIFF_Codec().Is_Complete(*file);
    };
    EXPECT_TRUE(is_carried({{279, Long, 1, 256}}));
    EXPECT_FALSE(is_carried({{279, Long, 1, 256}, {325, Long, 1, 8}}));
}
