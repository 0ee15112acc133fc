#include "tests/bkimgutl/codecs/Jpeg_Fixture.h"

#include <algorithm>

// Files in the shapes that cameras, phones and old programs give them. Whatever stands beside the pixels must be there again
// after a save of texts, byte for byte, and after a turn.

namespace {

using namespace std::string_view_literals;

void Append(File_Bytes& bytes, const File_Bytes& more)
{
    bytes.insert(bytes.end(), more.begin(), more.end());
}

/// Numbers in the byte order of a TIFF structure.
class Structure {
public:
    explicit Structure(bool big_endian) : big_(big_endian)
    {
        Text(big_ ? "MM" : "II");
        Short(42);
        Long(8);
    }
    void Short(unsigned value) { Number(value, 2); }
    void Long(unsigned value) { Number(value, 4); }
    void Entry(unsigned tag, unsigned type, unsigned count, unsigned value)
    {
        Short(tag);
        Short(type);
        Long(count);
        const bool short_inside = type == 3 && count == 1;
        Number(value, short_inside ? 2 : 4);
        if (short_inside) Short(0);
    }
    void Text(std::string_view text) { Append(bytes, {text.begin(), text.end()}); }
    void Fill_To(std::size_t position) { bytes.resize(position, 0xEE); }
    File_Bytes bytes;

private:
    void Number(unsigned value, int size)
    {
        for (int i = 0; i < size; ++i) bytes.push_back(std::uint8_t(value >> 8 * (big_ ? size - 1 - i : i)));
    }
    bool big_;
};

constexpr std::string_view Note = "a maker note at an odd place, with offsets that nobody can read";

/// Orientation, a maker note at an odd offset, unused bytes between the values, and a thumbnail in a second directory.
File_Segment Odd_Camera_Block(bool big_endian, unsigned orientation = 1)
{
    constexpr unsigned exif_at = 62, next_at = 200, note_at = 101, thumbnail_at = 301;
    const File_Bytes thumbnail = Jpeg_File(Meadow(16, 16, 1));
    Structure s(big_endian);
    s.Short(3);
    s.Entry(274, 3, 1, orientation);
    s.Entry(271, 2, 4, 0x41424300); // a text inside of its entry
    s.Entry(34665, 4, 1, exif_at);
    s.Long(next_at);
    s.Fill_To(exif_at);
    s.Short(2);
    s.Entry(33434, 5, 1, 93);
    s.Entry(37500, 7, unsigned(Note.size()), note_at);
    s.Long(0);
    s.Fill_To(93);
    s.Long(1);
    s.Long(250);
    s.Text(Note);
    s.Fill_To(next_at);
    s.Short(2);
    s.Entry(513, 4, 1, thumbnail_at);
    s.Entry(514, 4, 1, unsigned(thumbnail.size()));
    s.Long(0);
    s.Fill_To(thumbnail_at);
    Append(s.bytes, thumbnail);
    File_Segment segment = Segment(0xE1, "Exif\0\0"sv);
    Append(segment.data, s.bytes);
    return segment;
}

const Sample_Picture& Photo()
{
    static const Sample_Picture picture = Meadow(96, 64, 4);
    return picture;
}

File_Bytes Photo_File(std::vector<File_Segment> segments, Jpeg_File_Options options = {})
{
    options.segments = std::move(segments);
    return Jpeg_File(Photo(), options);
}

/// Every segment in front of the picture gets `count` fill bytes.
File_Bytes With_Fill_Bytes(const File_Bytes& file, std::size_t count)
{
    File_Bytes filled = {0xFF, 0xD8};
    for (std::size_t at = 2;;) {
        const std::size_t end = at + 2 + (std::size_t(file[at + 2]) << 8 | file[at + 3]);
        filled.insert(filled.end(), count, 0xFF);
        if (file[at + 1] == 0xDA) {
            filled.insert(filled.end(), file.begin() + std::ptrdiff_t(at), file.end());
            return filled;
        }
        filled.insert(filled.end(), file.begin() + std::ptrdiff_t(at), file.begin() + std::ptrdiff_t(end));
        at = end;
    }
}

File_Bytes With_Garbage_Behind(File_Bytes file)
{
    for (int i = 0; i < 5000; ++i) file.push_back(std::uint8_t(i * 7));
    file.insert(file.end(), {0xFF, 0xD9, 0xFF, 0xD8, 0xFF}); // marks that are none
    return file;
}

constexpr std::size_t Index_Head = 4;      ///< "MPF", 0
constexpr std::size_t Second_At = 50 + 16; ///< of the second picture's entry in the index

/// An index of two pictures; places count from the index's own byte order mark.
File_Segment Picture_Index(unsigned first_bytes, unsigned second_bytes, unsigned second_offset)
{
    Structure s(true);
    s.Short(3);
    s.Entry(0xB000, 7, 4, 0x30313030);
    s.Entry(0xB001, 4, 1, 2);
    s.Entry(0xB002, 7, 32, 50);
    s.Long(0);
    for (const auto& [size, offset] : {std::pair{first_bytes, 0U}, std::pair{second_bytes, second_offset}}) {
        s.Long(0x00020002);
        s.Long(size);
        s.Long(offset);
        s.Long(0);
    }
    File_Segment segment = Segment(0xE2, "MPF\0"sv);
    Append(segment.data, s.bytes);
    return segment;
}

File_Bytes Place_Of(const File_Bytes& file, std::string_view text)
{
    return {std::search(file.begin(), file.end(), text.begin(), text.end()), file.end()};
}

/// The second picture as a reader of the index finds it.
File_Bytes Second_Picture(const File_Bytes& file)
{
    const auto index = std::search(file.begin(), file.end(), std::begin("MPF"), std::end("MPF"));
    if (index == file.end()) return {};
    const auto start = index + Index_Head;
    const auto number = [&](std::size_t at) {
        const auto p = start + std::ptrdiff_t(at);
        return std::size_t(p[0]) << 24 | std::size_t(p[1]) << 16 | std::size_t(p[2]) << 8 | p[3];
    };
    const std::size_t at = std::size_t(start - file.begin()) + number(Second_At + 8);
    const std::size_t bytes = number(Second_At + 4);
    if (at > file.size() || bytes > file.size() - at) return {};
    return {file.begin() + std::ptrdiff_t(at), file.begin() + std::ptrdiff_t(at + bytes)};
}

File_Bytes Two_Pictures()
{
    const File_Bytes second = Jpeg_File(Meadow(32, 24, 9));
    const auto with_index = [&](unsigned first_bytes, unsigned offset) {
        return Photo_File({Odd_Camera_Block(true, 6), Picture_Index(first_bytes, unsigned(second.size()), offset)});
    };
    File_Bytes file = with_index(0, 0);
    const std::size_t start = file.size() - Place_Of(file, "MPF\0"sv).size() + Index_Head;
    file = with_index(unsigned(file.size()), unsigned(file.size() - start));
    Append(file, second);
    return file;
}

std::vector<File_Segment> Profile_In_Parts()
{
    return {Profile_Segment("RGB ", 1, 3, 4000), Profile_Segment("RGB ", 2, 3, 4000),
            Profile_Segment("RGB ", 3, 3, 70)};
}

std::vector<File_Segment> Behind(std::vector<File_Segment> first, const std::vector<File_Segment>& more)
{
    first.insert(first.end(), more.begin(), more.end());
    return first;
}

const std::vector<File_Segment> Metadata = {Segment(0xE1, "http://ns.adobe.com/xap/1.0/\0<x:xmpmeta/>"sv),
                                            Segment(0xE1, "http://ns.adobe.com/xmp/extension/\0abc"sv, 3000),
                                            Segment(0xE1, "http://ns.adobe.com/xmp/extension/\0abc"sv, 500),
                                            Segment(0xED, "Photoshop 3.0\0008BIM"sv, 700),
                                            Segment(0xED, "Photoshop 3.0\0008BIM"sv, 900),
                                            Segment(0xEC, "Ducky\0\1"sv),
                                            Segment(0xE4, "vendor's own"sv, 20000)};

struct Shape {
    const char* name;
    File_Bytes (*make)();
};

std::ostream& operator<<(std::ostream& out, const Shape& shape)
{
    return out << shape.name;
}

const Shape Shapes[] = {
    {"little_endian_camera_block_at_odd_offsets",
     [] { return Photo_File({Odd_Camera_Block(false)}, {.jfif = false}); }},
    {"big_endian_camera_block_at_odd_offsets", [] { return Photo_File({Odd_Camera_Block(true)}, {.jfif = false}); }},
    {"stored_sideways", [] { return Photo_File({Odd_Camera_Block(true, 8)}, {.jfif = false}); }},
    {"jfif_and_camera_block", [] { return Photo_File({Odd_Camera_Block(false, 6)}, {.dpi = 72}); }},
    {"fill_bytes_in_front_of_markers", [] { return With_Fill_Bytes(Photo_File({Odd_Camera_Block(false)}), 3); }},
    {"fill_bytes_and_metadata", [] { return With_Fill_Bytes(Photo_File(Metadata), 1); }},
    {"profile_in_three_segments", [] { return Photo_File(Profile_In_Parts()); }},
    {"profile_and_adobe_mark",
     [] { return Photo_File(Behind({Segment(0xEE, "Adobe\0d\0\0\0\0\1"sv)}, Profile_In_Parts()), {.jfif = false}); }},
    {"metadata_of_editors", [] { return Photo_File(Behind({Odd_Camera_Block(false)}, Metadata)); }},
    {"garbage_behind", [] { return With_Garbage_Behind(Photo_File({})); }},
    {"camera_block_and_garbage_behind", [] { return With_Garbage_Behind(Photo_File({Odd_Camera_Block(false)})); }},
    {"two_pictures", Two_Pictures},
    {"restart_markers", [] { return Photo_File({Odd_Camera_Block(false)}, {.restart_rows = 1}); }},
    {"restart_markers_and_garbage_behind", [] { return With_Garbage_Behind(Photo_File({}, {.restart_rows = 1})); }},
    {"progressive_with_garbage_behind", [] { return With_Garbage_Behind(Photo_File({}, {.progressive = true})); }},
    {"arithmetic_coding", [] { return Photo_File({Odd_Camera_Block(false)}, {.arithmetic = true}); }},
};

/// What follows the end mark of the first picture, found with the knowledge that no sample has a marker inside its scans
/// but restarts and tables.
File_Bytes Behind_Picture(const File_Bytes& file)
{
    const File_Bytes coded = Coded_Data(file);
    constexpr File_Bytes::value_type mark[] = {0xFF, 0xD9};
    const auto end = std::search(coded.begin(), coded.end(), std::begin(mark), std::end(mark));
    return {end == coded.end() ? end : end + 2, coded.end()};
}

std::vector<File_Bytes> Foreign_Segments(const File_Bytes& file)
{
    std::vector<File_Bytes> foreign;
    for (const File_Segment& segment : Outer_Segments(file)) {
        const bool ours = segment.marker == 0xFE || segment.marker == 0xEA;
        const bool mended =
            segment.data.size() > 6 && (Place_Of(segment.data, "JFIF"sv).size() == segment.data.size() ||
                                        Place_Of(segment.data, "Exif"sv).size() == segment.data.size());
        if (!ours && !mended) foreign.push_back(segment.data);
    }
    return foreign;
}

class Jpeg_Shapes : public Jpeg_Fixture, public testing::WithParamInterface<Shape> {};

TEST_P(Jpeg_Shapes, Are_Loaded_As_The_Codec_Decodes_Them)
{
    const auto bitmap = Load(Put("a.jpg", GetParam().make()));
    ASSERT_TRUE(bitmap) << Error_Text();
    EXPECT_FALSE(bitmap->Origin()->damaged);
    if (bitmap->Origin()->symmetry.Is_Identity()) {
        EXPECT_TRUE(Shows(Decode_Plainly(GetParam().make()), *bitmap));
    }
}

TEST_P(Jpeg_Shapes, Stay_Byte_For_Byte_When_Texts_Change_And_Change_Back)
{
    const File_Bytes file = GetParam().make();
    const std::string path = Put("a.jpg", file);
    const Picture_Facts facts = Facts(path);
    const Save_Arguments texts = {.comment = "a description",
                                  .script = "Flip(1)",
                                  .parent = path,
                                  .horizontal_dpi = facts.horizontal_dpi,
                                  .vertical_dpi = facts.vertical_dpi};
    ASSERT_TRUE(Save(Load(path), path, texts)) << Error_Text();
    EXPECT_EQ("a description", Comment(path));
    EXPECT_EQ("Flip(1)", Script(path));
    EXPECT_GT(Get(path).size(), file.size());
    EXPECT_EQ(Second_Picture(file), Second_Picture(Get(path)));
    Save_Arguments none = texts;
    none.comment = none.script = {};
    ASSERT_TRUE(Save(Load(path), path, none)) << Error_Text();
    EXPECT_EQ(file, Get(path));
}

TEST_P(Jpeg_Shapes, Keep_All_That_Stands_Beside_The_Pixels_When_They_Turn)
{
    const File_Bytes file = GetParam().make();
    const std::string path = Put("a.jpg", file);
    const auto turned = Load(path, 1, 90);
    ASSERT_TRUE(Save(turned, Path("b.jpg"), {.comment = "c", .parent = path})) << Error_Text();
    const File_Bytes after = Get(Path("b.jpg"));
    EXPECT_EQ(Foreign_Segments(file), Foreign_Segments(after));
    EXPECT_EQ(Behind_Picture(file), Behind_Picture(after));
    EXPECT_EQ(Second_Picture(file), Second_Picture(after));
    EXPECT_EQ(EXIF(path).size(), EXIF(Path("b.jpg")).size());
    EXPECT_EQ(Place_Of(EXIF(path), Note).size(), Place_Of(EXIF(Path("b.jpg")), Note).size()) << "the note moved";
    const auto again = Load(Path("b.jpg"));
    ASSERT_TRUE(again) << Error_Text();
    EXPECT_TRUE(Pixels_Within(60, turned->View(), again->View())) << "rounding of colours between pixels";
}

TEST_P(Jpeg_Shapes, Four_Turns_Over_Themselves_Give_The_First_Pixels_Back)
{
    const std::string path = Put("a.jpg", GetParam().make());
    const auto turn_around = [&] {
        for (int i = 0; i < 4; ++i) ASSERT_TRUE(Save(Load(path, 1, 90), path, {.parent = path})) << Error_Text();
    };
    // Decoding rounds a sideways picture a little otherwise than an upright one.
    if (!Load(path)->Origin()->symmetry.Is_Identity()) turn_around();
    const auto before = Load(path);
    turn_around();
    EXPECT_TRUE(Same_Pixels(before->View(), Load(path)->View()));
}

INSTANTIATE_TEST_SUITE_P(All, Jpeg_Shapes, testing::ValuesIn(Shapes), [](const auto& row) { return row.param.name; });

class Jpeg_Odd : public Jpeg_Fixture {
protected:
    static int Orientation(const std::string& path)
    {
        const File_Bytes block = EXIF(path);
        const auto bytes = std::as_bytes(std::span(block));
        return Orientation_Of_EXIF_Block({bytes.begin(), bytes.end()});
    }
};

TEST_F(Jpeg_Odd, The_Second_Picture_Is_Where_The_Index_Says)
{
    EXPECT_EQ(Jpeg_File(Meadow(32, 24, 9)), Second_Picture(Two_Pictures())); // else the tests above compare nothing
}

TEST_F(Jpeg_Odd, A_Missing_End_Mark_Stays_Missing)
{
    File_Bytes file = Photo_File({Odd_Camera_Block(false)});
    file.resize(file.size() - 2);
    const std::string path = Put("a.jpg", file);
    ASSERT_TRUE(Save(Load(path), path, {.comment = "c", .parent = path})) << Error_Text();
    EXPECT_EQ(Coded_Data(file), Coded_Data(Get(path)));
    const auto turned = Load(path, 1, 90);
    ASSERT_TRUE(Save(turned, Path("b.jpg"), {.parent = path})) << Error_Text();
    EXPECT_TRUE(Pixels_Within(60, turned->View(), Load(Path("b.jpg"))->View()));
}

// A side of 90 is no whole number of units of 16: this turn would bring the broken ones to the left.
TEST_F(Jpeg_Odd, Where_Units_Would_Break_The_Picture_Is_Encoded_Upright_With_Its_Own_Tables)
{
    const File_Bytes first = Jpeg_File(Meadow(90, 64, 4), {.jfif = false, .segments = {Odd_Camera_Block(true)}});
    const std::string path = Put("a.jpg", first);
    const auto turned = Load(path, 1, 90);
    ASSERT_TRUE(Save(turned, path, {.comment = "c", .parent = path})) << Error_Text();
    EXPECT_TRUE(Pixels_Within(60, turned->View(), Load(path)->View()));
    EXPECT_EQ(Decode_Plainly(first).tables, Decode_Plainly(Get(path)).tables);
    EXPECT_EQ(64, Facts(path).width);
    EXPECT_EQ(1, Orientation(path));
}

TEST_F(Jpeg_Odd, Whole_Units_Are_Written_Upright)
{
    const std::string path = Put("a.jpg", Photo_File({Odd_Camera_Block(false)}));
    ASSERT_TRUE(Save(Load(path, 1, 90), path, {.parent = path})) << Error_Text();
    EXPECT_EQ(1, Orientation(path));
    EXPECT_EQ(64, Facts(path).width);
}

struct Refused_Case {
    std::string name;
    std::size_t at; ///< behind the frame's marker
    std::uint8_t byte;
    const char* reason;
};

class Jpeg_Refused : public Jpeg_Fixture, public testing::WithParamInterface<Refused_Case> {};

TEST_P(Jpeg_Refused, With_A_Clear_Reason)
{
    File_Bytes file = Jpeg_File(Meadow(16, 16, 1));
    std::size_t frame = 2;
    while (file[frame + 1] != 0xC0) frame += 2 + (std::size_t(file[frame + 2]) << 8 | file[frame + 3]);
    file[frame + GetParam().at] = GetParam().byte;
    EXPECT_FALSE(Load(Put("a.jpg", file)));
    EXPECT_NE(std::string::npos, Error_Text().find(GetParam().reason)) << Error_Text();
    EXPECT_NE(std::string::npos, Error_Text().find("a.jpg")) << Error_Text();
}

INSTANTIATE_TEST_SUITE_P(All, Jpeg_Refused,
                         testing::Values(Refused_Case{"height_to_come_later", 6, 0, "width or height of 0"},
                                         Refused_Case{"twelve_bits", 4, 12, "12 bits per sample"},
                                         Refused_Case{"lossless_coding", 1, 0xC3, "lossless kind"},
                                         Refused_Case{"hierarchical_coding", 1, 0xC5, "hierarchical kind"}),
                         [](const auto& row) { return row.param.name; });

} // namespace
