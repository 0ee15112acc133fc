#include "bkimgutl/codecs/Image_Resources.h"

#include "bkimgutl/codecs/Jpeg_Segments.h"
#include "bkimgutl/codecs/Tiff_Structure.h"
#include "dev/samples/Tiff_File.h"
#include "tests/bkimgutl/codecs/Jpeg_Fixture.h"

#include <random>

namespace {

using namespace std::string_literals;

std::string Number_Of(std::size_t value, int bytes)
{
    std::string text;
    for (int shift = bytes * 8 - 8; shift >= 0; shift -= 8) text += char(value >> shift & 255);
    return text;
}

std::string Resource(int number, const std::string& data, const std::string& name = "")
{
    std::string text = "8BIM" + Number_Of(std::size_t(number), 2) + char(name.size()) + name;
    if (text.size() % 2 != 0) text += '\0';
    text += Number_Of(data.size(), 4) + data;
    return data.size() % 2 != 0 ? text + '\0' : text;
}

const std::string Record = "\x1C\x02\x19\0\x06meadow\x1C\x02\x50\0\x06"s + "Anna K";
const std::string Other_Record = "\x1C\x02\x19\0\x06winter"s;
const std::string Thumbnail = Number_Of(1, 4) + std::string(199, 'T');
const std::string Path_Resource = Resource(0x07D0, std::string(26, 'p'), "Outline");

Resource_Bytes Bytes(const std::string& text)
{
    const auto bytes = std::as_bytes(std::span(text));
    return {bytes.begin(), bytes.end()};
}

std::string Text(const Resource_Bytes& bytes)
{
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

/// Both ways between a JPEG and a TIFF file, with resources in place.
class Image_Resources : public Jpeg_Fixture {
protected:
    /// The resources as text, from whichever type the file is of.
    static std::string In(const std::string& path)
    {
        const auto file = Regular_File::Open(path);
        const bool tiff = Type_From_Signature(*file) == Image_File_Type::TIFF;
        const auto bytes = (tiff ? TIFF_Codec() : JPEG_Codec()).Read_Resources(*file);
        return bytes ? Text(*bytes) : "?";
    }
    static std::string Tag(const std::string& path, std::uint16_t tag)
    {
        const auto file = Regular_File::Open(path);
        const auto structure = Tiff_Structure::Open(*file);
        const auto directory = structure->First_Directory();
        const Tiff_Entry* entry = directory->Find(tag);
        return entry ? Text(*structure->Value(*entry, 1 << 20)) : "none";
    }
    std::string Jpeg(const std::vector<std::string>& pieces) const
    {
        std::vector<File_Segment> segments;
        for (const auto& piece : pieces) segments.push_back(Segment(0xED, std::string(Resources_Head) + piece));
        return Put("a.jpg", Jpeg_File(Meadow(16, 16, 1), {.segments = segments}));
    }
    std::string Tiff(const std::string& resources, const std::string& iptc, bool big_endian = false) const
    {
        Tiff_File_Options options;
        options.big_endian = big_endian;
        if (!resources.empty()) options.private_tags.push_back({Tiff_Tag::Photoshop, resources});
        if (!iptc.empty()) options.private_tags.push_back({Tiff_Tag::IPTC, iptc});
        Write_Tiff_File(Path("a.tif"), Meadow(16, 16, 1), options);
        return Path("a.tif");
    }
    /// Saves the file's pixels with the file as parent; changed by a point where told.
    std::string Saved(const std::string& path, const std::string& name, bool changed = false) const
    {
        const auto bitmap = Load(path);
        if (changed) bitmap->Change().Row(0)[0] ^= 1;
        EXPECT_TRUE(Save_Bitmap_To_File(bitmap.Handle(), Path(name), name.ends_with("jpg") ? 1 : 2, {}, {}, path, -2,
                                        -1, -1, nullptr))
            << Error_Text();
        return Path(name);
    }
};

struct Record_Case {
    const char* name;
    std::string resources;
    std::string iptc;
    std::string in_jpeg;
};

class Image_Resources_To_JPEG : public Image_Resources, public testing::WithParamInterface<Record_Case> {};

TEST_P(Image_Resources_To_JPEG, Hold_What_Both_Tags_Of_A_TIFF_Tell)
{
    for (const bool big_endian : {false, true}) {
        const auto& row = GetParam();
        EXPECT_EQ(row.in_jpeg, In(Saved(Tiff(row.resources, row.iptc, big_endian), "b.jpg")));
    }
}

std::string Swapped_In_Words(std::string text)
{
    text.resize((text.size() + 3) / 4 * 4);
    for (std::size_t at = 0; at < text.size(); at += 4)
        std::reverse(text.begin() + long(at), text.begin() + long(at) + 4);
    return text;
}

const Record_Case Record_Cases[] = {
    {"none", "", "", ""},
    {"record_alone", "", Record, Resource(0x0404, Record)},
    {"resources_alone", Path_Resource, "", Path_Resource},
    {"record_joins_the_resources", Path_Resource, Record, Resource(0x0404, Record) + Path_Resource},
    {"the_same_record_in_both_is_one", Path_Resource + Resource(0x0404, Record), Record,
     Path_Resource + Resource(0x0404, Record)},
    {"padding_is_no_difference", Resource(0x0404, Record), Record + "\0\0\0"s, Resource(0x0404, Record)},
    {"records_that_differ_both_stay", Resource(0x0404, Other_Record), Record,
     Resource(0x0404, Record) + Resource(0x0404, Other_Record)},
    {"record_swapped_as_numbers", "", Swapped_In_Words(Record), Resource(0x0404, Record + "\0\0"s)},
    {"resources_of_another_signature", "MeSa" + Resource(0x0BB8, "x").substr(4) + Resource(0x0404, Record), Record,
     "MeSa" + Resource(0x0BB8, "x").substr(4) + Resource(0x0404, Record)},
    {"damaged_resources_go_along", "no resources at all", Record, Resource(0x0404, Record) + "no resources at all"},
    {"a_cut_resource_goes_along", Resource(0x0404, Record).substr(0, 20), Record,
     Resource(0x0404, Record) + Resource(0x0404, Record).substr(0, 20)},
    {"a_huge_size_inside", "8BIM\x04\x04\0\0\xFF\xFF\xFF\xFFxx"s, Record,
     Resource(0x0404, Record) + "8BIM\x04\x04\0\0\xFF\xFF\xFF\xFFxx"s},
    {"a_name_beyond_the_end", "8BIM\x04\x04\xFFname"s, "", "8BIM\x04\x04\xFFname"s},
    {"a_record_of_three_bytes", "", "\x1C\x02\x19"s, Resource(0x0404, "\x1C\x02\x19"s)},
};

INSTANTIATE_TEST_SUITE_P(All, Image_Resources_To_JPEG, testing::ValuesIn(Record_Cases),
                         [](const auto& row) { return row.param.name; });

TEST_F(Image_Resources, Of_A_JPEG_Become_Both_Tags_Of_A_TIFF)
{
    const std::string all = Path_Resource + Resource(0x0404, Record);
    const std::string path = Saved(Jpeg({all}), "b.tif");
    EXPECT_EQ(all, Tag(path, Tiff_Tag::Photoshop));
    EXPECT_EQ(Record, Tag(path, Tiff_Tag::IPTC));
}

TEST_F(Image_Resources, Come_Back_From_A_TIFF_As_They_Left_A_JPEG)
{
    const std::string all = Path_Resource + Resource(0x0404, Record) + Resource(0x0BB8, std::string(90'000, 'x'));
    const std::string there = Saved(Jpeg({all.substr(0, 60'000), all.substr(60'000)}), "b.tif");
    const std::string back = Saved(there, "c.jpg");
    EXPECT_EQ(all, Tag(there, Tiff_Tag::Photoshop)); // goes on in the second segment
    EXPECT_EQ(all, In(back));
}

TEST_F(Image_Resources, Without_A_Record_Make_No_Tag_Of_It)
{
    const std::string path = Saved(Jpeg({Path_Resource}), "b.tif");
    EXPECT_EQ(Path_Resource, Tag(path, Tiff_Tag::Photoshop));
    EXPECT_EQ("none", Tag(path, Tiff_Tag::IPTC));
}

TEST_F(Image_Resources, That_Are_Damaged_Go_Along_From_A_JPEG)
{
    for (const std::string& damaged :
         {"8BIM"s, "8BIM\x04\x04\0"s, "whatever"s, Resource(0x0404, Record).substr(0, 25)}) {
        const std::string path = Saved(Jpeg({damaged}), "b.tif");
        EXPECT_EQ(damaged, Tag(path, Tiff_Tag::Photoshop));
        EXPECT_EQ("none", Tag(path, Tiff_Tag::IPTC));
    }
}

TEST_F(Image_Resources, Stay_Whole_In_Segments_Where_They_Fit)
{
    const std::string large = Resource(0x0BB8, std::string(65'500, 'x'));
    const std::string larger = Resource(0x0BB9, std::string(150'000, 'y'));
    const std::string path = Saved(Tiff(Path_Resource + large + larger, Record), "b.jpg");
    std::vector<std::size_t> sizes;
    std::string all;
    for (const File_Segment& segment : Outer_Segments(Get(path))) {
        if (segment.marker != 0xED) continue;
        sizes.push_back(segment.data.size() - Resources_Head.size());
        all.append(segment.data.begin() + long(Resources_Head.size()), segment.data.end());
    }
    const std::string first = Resource(0x0404, Record) + Path_Resource;
    EXPECT_EQ(first + large + larger, all);
    const std::size_t most = 65'533 - Resources_Head.size();
    EXPECT_EQ((std::vector<std::size_t>{first.size(), large.size(), most, most, larger.size() - 2 * most}), sizes);
}

const std::string With_Thumbnails = Resource(0x0409, Thumbnail) + Path_Resource + Resource(0x040C, Thumbnail);
const std::string With_Blank_Thumbnails = Resource(0x0409, std::string(Thumbnail.size(), '\0')) + Path_Resource +
                                          Resource(0x040C, std::string(Thumbnail.size(), '\0'));

TEST_F(Image_Resources, Of_A_Changed_Picture_Have_No_Thumbnail_Of_The_Old_One)
{
    const std::string jpeg = Jpeg({With_Thumbnails.substr(0, 100), With_Thumbnails.substr(100)});
    EXPECT_EQ(With_Blank_Thumbnails, In(Saved(jpeg, "b.jpg", true)));
    EXPECT_EQ(With_Blank_Thumbnails, In(Saved(jpeg, "b.tif", true)));
    const std::string tiff = Tiff(With_Thumbnails, "");
    EXPECT_EQ(With_Blank_Thumbnails, In(Saved(tiff, "c.jpg", true)));
    EXPECT_EQ(With_Blank_Thumbnails, In(Saved(tiff, "c.tif", true)));
}

TEST_F(Image_Resources, Of_An_Unchanged_Picture_Keep_Their_Thumbnails)
{
    EXPECT_EQ(With_Thumbnails, In(Saved(Jpeg({With_Thumbnails.substr(0, 100), With_Thumbnails.substr(100)}), "b.jpg")));
    EXPECT_EQ(With_Thumbnails, In(Saved(Tiff(With_Thumbnails, ""), "b.tif")));
}

TEST(Image_Resources_Bytes, Give_The_First_Record)
{
    EXPECT_EQ(Record, Text(IPTC_Of_Resources(Bytes(Path_Resource + Resource(0x0404, Record) + Resource(0x0404, "z")))));
    EXPECT_EQ("", Text(IPTC_Of_Resources(Bytes(Path_Resource + "junk" + Resource(0x0404, Record)))));
    EXPECT_EQ("", Text(IPTC_Of_Resources({})));
}

TEST(Image_Resources_Bytes, Are_Swapped_Back_Only_Where_The_Mark_Stands_Last_In_A_Word)
{
    for (const std::string& same : {""s, "\x1C\x02"s, Record, "\x1C\x02\x19\x1C\x02"s, "abcd"s})
        EXPECT_EQ(same, Text(IPTC_In_Order(Bytes(same))));
    EXPECT_EQ("\x1C\x02\x19\0\0\x01x\0z"s, Text(IPTC_In_Order(Bytes("\0\x19\x02\x1C\0x\x01\0z"s))));
}

TEST(Image_Resources_Bytes, Bear_Any_Damage)
{
    const Resource_Bytes whole = Bytes(With_Thumbnails + Resource(0x0404, Record, "name"));
    std::mt19937 random(11);
    for (int round = 0; round < 20'000; ++round) {
        Resource_Bytes damaged(whole.begin(), whole.begin() + long(random() % (whole.size() + 1)));
        for (unsigned i = 0; i < random() % 4 && !damaged.empty(); ++i)
            damaged[random() % damaged.size()] = std::byte(random() % 256);
        const std::size_t size = damaged.size();
        const Resource_Bytes record = IPTC_In_Order(IPTC_Of_Resources(damaged));
        EXPECT_LE(record.size(), size);
        EXPECT_GE(Resources_With_IPTC(damaged, Bytes(Record)).size(), size);
        Blank_Thumbnails(damaged);
        EXPECT_EQ(size, damaged.size());
        EXPECT_EQ(size == 0 ? 0 : size + 4 + Resources_Head.size(), Resource_Segments(damaged).size());
    }
}

TEST(Image_Resources_Bytes, Without_Any_Make_No_Segment)
{
    EXPECT_TRUE(Resource_Segments({}).empty());
}

} // namespace
