#include "bkimgutl/codecs/Jpeg_XMP.h"

#include "dev/samples/Tiff_File.h"
#include "tests/bkimgutl/codecs/Jpeg_Fixture.h"

namespace {

const std::string Name = "0123456789ABCDEF0123456789ABCDEF";
const std::string Start = "<?xpacket begin='' id='W5M0MpCehiHzreSzNTczkc9d'?><x:xmpmeta xmlns:x='adobe:ns:meta/'>"
                          "<rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'>";
const std::string End = "</rdf:RDF></x:xmpmeta><?xpacket end='w'?>";
const std::string Rating = "<rdf:Description rdf:about='' xmlns:xmp='u' xmp:Rating='4'/>";
const std::string History =
    "<rdf:Description rdf:about='' xmlns:h='v'><h:Steps>" + std::string(100'000, 's') + "</h:Steps></rdf:Description>";
const std::string Extended = "<x:xmpmeta xmlns:x='adobe:ns:meta/'><rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/"
                             "22-rdf-syntax-ns#'>" +
                             History + "</rdf:RDF></x:xmpmeta>";

std::string With_Pointer()
{
    return "<rdf:Description rdf:about='' xmlns:xmpNote='n' xmpNote:HasExtendedXMP='" + Name + "' xmlns:a='b'/>";
}

const std::string Without_Pointer = "<rdf:Description rdf:about='' xmlns:xmpNote='n' xmlns:a='b'/>";

File_Segment Packet(const std::string& inside)
{
    return Segment(0xE1, std::string("http://ns.adobe.com/xap/1.0/") + '\0' + Start + inside + End);
}

File_Segment Part(std::size_t first, std::size_t end, const std::string& name = Name)
{
    std::string data = std::string("http://ns.adobe.com/xmp/extension/") + '\0' + name;
    for (const std::size_t number : {Extended.size(), first})
        for (int shift = 24; shift >= 0; shift -= 8) data += char(number >> shift & 255);
    return Segment(0xE1, data + Extended.substr(first, end - first));
}

class Jpeg_XMP : public Jpeg_Fixture {
protected:
    static std::string XMP(const std::string& path)
    {
        const auto file = Regular_File::Open(path);
        const auto& codec = Type_From_Signature(*file) == Image_File_Type::TIFF ? TIFF_Codec() : JPEG_Codec();
        const auto bytes = codec.Read_XMP(*file);
        return {reinterpret_cast<const char*>(bytes->data()), bytes->size()};
    }
    std::string With_Segments(const std::vector<File_Segment>& segments) const
    {
        return Put("a.jpg", Jpeg_File(Meadow(16, 16, 1), {.segments = segments}));
    }
    std::string As_Tiff(const std::string& path) const { return Saved(Load(path), "a.tif", path); }
    std::string Saved(const Held_Bitmap& bitmap, const std::string& name, const std::string& parent) const
    {
        EXPECT_EQ(-1, Save_To(bitmap, name, parent)) << Error_Text();
        return Path(name);
    }
    int Save_To(const Held_Bitmap& bitmap, const std::string& name, const std::string& parent, int quality = -2) const
    {
        return Save_Bitmap_To_File(bitmap.Handle(), Path(name), name.ends_with("tif") ? 2 : 1, {}, {}, parent, quality,
                                   -1, -1, nullptr);
    }
    static Held_Bitmap Changed(const std::string& path)
    {
        auto bitmap = Load(path);
        bitmap->Change().Row(0)[0] ^= 1;
        return bitmap;
    }
    /// The data of all XMP segments.
    static std::vector<std::string> Segments(const std::string& path)
    {
        const auto file = Regular_File::Open(path);
        std::vector<std::string> all;
        const auto head = Read_Jpeg_Head(*file);
        for (const Jpeg_Segment& segment : head->segments) {
            const auto data = Read_Segment(*file, segment);
            std::string text(reinterpret_cast<const char*>(data->data()), data->size());
            if (text.starts_with("http://ns.adobe.com/")) all.push_back(std::move(text));
        }
        return all;
    }
};

TEST_F(Jpeg_XMP, An_Extended_Packet_Becomes_Part_Of_The_Packet_Of_A_TIFF)
{
    // The parts stand in another order in the file.
    const std::string path =
        With_Segments({Packet(With_Pointer() + Rating), Part(60'000, Extended.size()), Part(0, 60'000)});
    EXPECT_EQ(Start + Without_Pointer + Rating + History + End, XMP(As_Tiff(path)));
}

/// Parts beside a packet that names an extended one.
struct Parts_Case {
    std::string name;
    std::vector<File_Segment> parts;
};

class Jpeg_XMP_Without_Extension : public Jpeg_XMP, public testing::WithParamInterface<Parts_Case> {};

TEST_P(Jpeg_XMP_Without_Extension, Keeps_Its_Packet_As_It_Is)
{
    std::vector<File_Segment> segments = {Packet(With_Pointer())};
    segments.insert(segments.end(), GetParam().parts.begin(), GetParam().parts.end());
    EXPECT_EQ(Start + With_Pointer() + End, XMP(As_Tiff(With_Segments(segments))));
}

INSTANTIATE_TEST_SUITE_P(All, Jpeg_XMP_Without_Extension,
                         testing::Values(Parts_Case{"no_part", {}},
                                         Parts_Case{"of_another_packet",
                                                    {Part(0, 60'000, std::string(32, 'F')),
                                                     Part(60'000, Extended.size(), std::string(32, 'F'))}},
                                         Parts_Case{"too_short", {Segment(0xE1, "http://ns.adobe.com/xmp/ext")}}),
                         [](const auto& row) { return row.param.name; });

class Jpeg_XMP_Damaged : public Jpeg_XMP, public testing::WithParamInterface<Parts_Case> {};

TEST_P(Jpeg_XMP_Damaged, Is_Not_Left_Out_Of_A_TIFF_But_Refused)
{
    std::vector<File_Segment> segments = {Packet(With_Pointer())};
    segments.insert(segments.end(), GetParam().parts.begin(), GetParam().parts.end());
    const std::string path = With_Segments(segments);
    EXPECT_EQ(0, Save_To(Load(path), "a.tif", path));
    EXPECT_EQ(Path("a.tif: ") + path + ": has a damaged extended XMP packet, which cannot be carried along",
              Error_Text());
    EXPECT_FALSE(std::filesystem::exists(Path("a.tif")));
    // In a file of its own type all of it goes along as it stands.
    EXPECT_EQ(Segments(path), Segments(Saved(Changed(path), "b.jpg", path)));
}

INSTANTIATE_TEST_SUITE_P(
    All, Jpeg_XMP_Damaged,
    testing::Values(Parts_Case{"a_part_is_missing", {Part(0, 60'000)}},
                    Parts_Case{"the_first_part_is_missing", {Part(60'000, Extended.size())}},
                    Parts_Case{"a_part_in_the_middle_is_missing", {Part(0, 100), Part(200, Extended.size() - 40'000)}},
                    Parts_Case{"parts_overlap", {Part(0, 60'000), Part(59'999, Extended.size() - 1)}},
                    Parts_Case{"a_part_stands_there_twice",
                               {Part(0, 60'000), Part(0, 60'000), Part(60'000, Extended.size())}}),
    [](const auto& row) { return row.param.name; });

TEST_F(Jpeg_XMP, A_Pointer_In_An_Element_Of_Its_Own_Goes)
{
    const std::string pointer = "<xmpNote:HasExtendedXMP>" + Name + "</xmpNote:HasExtendedXMP>";
    EXPECT_EQ(Start + "<a/>" + "<b/>" + History + End,
              With_Extended_XMP(Start + "<a/>" + pointer + "<b/>" + End, Extended));
}

TEST_F(Jpeg_XMP, Names_Declared_Outside_Of_Descriptions_Are_Not_Torn_Off)
{
    const std::string packet = Start + Rating + End;
    const std::string odd = "<rdf:RDF xmlns:rdf='r' xmlns:h='v'><rdf:Description h:a='b'/></rdf:RDF>";
    for (const std::string& other :
         {odd, std::string(), std::string("<rdf:RDF"), std::string("</rdf:RDF>"),
          std::string("</rdf:RDF><rdf:RDF xmlns:rdf='r'>"), std::string("<rdf:RDF></rdf:RDF>")}) {
        const auto joined = With_Extended_XMP(packet, other);
        ASSERT_FALSE(joined) << other;
        EXPECT_EQ("has an extended XMP packet that cannot be joined with the first one", joined.error().text);
    }
    EXPECT_FALSE(With_Extended_XMP("no packet", Extended));
}

const std::string Image_Names = " xmlns:xmpGImg='http://ns.adobe.com/xap/1.0/g/img/'";

/// A description with a picture of 80 000 characters.
std::string Thumbnails_With(const std::string& picture)
{
    return "<rdf:Description rdf:about=''" + Image_Names + "><xmpGImg:image>" + picture + "</xmpGImg:image>" + Rating +
           "</rdf:Description>";
}

TEST_F(Jpeg_XMP, Of_A_Changed_Picture_Holds_No_Thumbnail_Of_The_Old_One)
{
    const std::string packet = Thumbnails_With("/9j/4AAQ");
    const std::string blank = Start + Thumbnails_With("        ") + End;
    const std::string jpeg = With_Segments({Packet(packet)});
    Write_Tiff_File(Path("p.tif"), Meadow(16, 16, 1), {.private_tags = {{700, Start + packet + End}}});
    for (const std::string& parent : {jpeg, Path("p.tif")})
        for (const char* name : {"b.jpg", "b.tif"}) EXPECT_EQ(blank, XMP(Saved(Changed(parent), name, parent))) << name;
}

TEST_F(Jpeg_XMP, Of_An_Unchanged_Picture_Keeps_Its_Thumbnail)
{
    const std::string packet = Thumbnails_With("/9j/4AAQ");
    const std::string path = With_Segments({Packet(packet)});
    EXPECT_EQ(Start + packet + End, XMP(Saved(Load(path), "b.jpg", path)));
}

std::vector<File_Segment> As_Written(const std::string& packet)
{
    const auto bytes = std::as_bytes(std::span(packet));
    const auto written = XMP_Segments({bytes.begin(), bytes.end()});
    std::vector<File_Segment> segments;
    for (std::size_t at = 0; at < written->size();) {
        const std::size_t length =
            std::to_integer<std::size_t>((*written)[at + 2]) << 8 | std::to_integer<std::size_t>((*written)[at + 3]);
        const char* const data = reinterpret_cast<const char*>(written->data()) + at + 4;
        segments.push_back(Segment(0xE1, std::string(data, length - 2)));
        at += length + 2;
    }
    return segments;
}

TEST_F(Jpeg_XMP, A_Thumbnail_That_Goes_Over_Into_The_Next_Part_Is_Blanked_And_The_Packet_Gets_Another_Number)
{
    constexpr std::size_t number_at = 35, text_at = 75;
    const std::string whole = "<rdf:RDF>" + Thumbnails_With(std::string(80'000, '#')) + "</rdf:RDF>";
    std::string blank = whole;
    std::replace(blank.begin(), blank.end(), '#', ' ');
    const std::string path = With_Segments(As_Written(whole));
    const std::string saved = Saved(Changed(path), "b.jpg", path);
    const auto before = Segments(path), after = Segments(saved);
    ASSERT_EQ(3u, before.size());
    ASSERT_EQ(3u, after.size());
    const std::string number = after[1].substr(number_at, 32);
    EXPECT_NE(before[1].substr(number_at, 32), number);
    EXPECT_EQ(number, after[2].substr(number_at, 32));
    EXPECT_NE(std::string::npos, after[0].find(number));
    EXPECT_EQ(blank, after[1].substr(text_at) + after[2].substr(text_at));
    EXPECT_NE(std::string::npos, XMP(saved).find(blank)) << "the number is the checksum of what stands there now";
}

/// A TIFF's packet on its way into a JPEG file.
class Jpeg_XMP_From_TIFF : public Jpeg_XMP {
protected:
    std::string As_Jpeg(const std::string& packet) const
    {
        Write_Tiff_File(Path("p.tif"), Meadow(16, 16, 1), {.private_tags = {{700, packet}}});
        EXPECT_TRUE(Save(Load(Path("p.tif")), Path("b.jpg"), {.parent = Path("p.tif")})) << Error_Text();
        return Path("b.jpg");
    }
    /// A packet of so many bytes, names declared in the start tag of its RDF element.
    static std::string Packet_Of(std::size_t bytes)
    {
        const std::string start = "<?xpacket begin='' id='W5M0MpCehiHzreSzNTczkc9d'?>\n", end = "\n<?xpacket end='w'?>";
        return start + Inside_Of(bytes - start.size() - end.size()) + end;
    }
    static std::string Inside_Of(std::size_t bytes)
    {
        const std::string start = "<x:xmpmeta xmlns:x='adobe:ns:meta/'><rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/"
                                  "22-rdf-syntax-ns#' xmlns:h='v'><rdf:Description rdf:about='' h:Steps='",
                          end = "'/></rdf:RDF></x:xmpmeta>";
        std::string steps;
        while (start.size() + steps.size() + end.size() < bytes) steps += std::to_string(steps.size());
        steps.resize(bytes - start.size() - end.size());
        return start + steps + end;
    }
};

TEST_F(Jpeg_XMP_From_TIFF, What_Just_Fits_Stays_One_Segment_As_It_Is)
{
    const std::string packet = Packet_Of(65533 - 29);
    const std::string path = As_Jpeg(packet);
    EXPECT_EQ(1u, Segments(path).size());
    EXPECT_EQ(packet, XMP(path));
}

TEST_F(Jpeg_XMP_From_TIFF, A_Byte_More_Becomes_An_Extended_Packet)
{
    const auto segments = Segments(As_Jpeg(Packet_Of(65533 - 28)));
    ASSERT_EQ(3u, segments.size());
    EXPECT_NE(std::string::npos, segments[0].find("xmpNote:HasExtendedXMP"));
    for (std::size_t i = 1; i < 3; ++i) EXPECT_TRUE(segments[i].starts_with("http://ns.adobe.com/xmp/extension/"));
}

TEST_F(Jpeg_XMP_From_TIFF, An_Extended_Packet_Is_Named_By_Its_Checksum_And_Stands_In_Parts_In_Order)
{
    const std::string inside = "<rdf:RDF>" + std::string(199'982, 'a') + "</rdf:RDF>";
    const auto segments = Segments(As_Jpeg("\xEF\xBB\xBF<?xpacket begin=''?>" + inside + "\n \n<?xpacket end='w'?>\n"));
    const std::string number = "3A128A0AC0B8F7D7317BE461E43BD4BE"; // of `inside`
    ASSERT_EQ(5u, segments.size());
    EXPECT_NE(std::string::npos, segments[0].find("xmlns:xmpNote=\"http://ns.adobe.com/xmp/note/\""));
    EXPECT_NE(std::string::npos, segments[0].find(" xmpNote:HasExtendedXMP=\"" + number + '"'));
    const std::string length("\0\x03\x0D\x41", 4); // 200 001
    const std::string places[] = {{"\0\0\0\0", 4}, {"\0\0\xFF\x78", 4}, {"\0\x01\xFE\xF0", 4}, {"\0\x02\xFE\x68", 4}};
    for (std::size_t i = 0; i < 4; ++i) {
        const std::string head = std::string("http://ns.adobe.com/xmp/extension/") + '\0' + number + length + places[i];
        EXPECT_EQ(head + inside.substr(i * 65400, 65400), segments[i + 1]) << i;
    }
}

TEST_F(Jpeg_XMP_From_TIFF, A_Long_Packet_Comes_Back_Whole)
{
    const std::string packet = Packet_Of(200'000);
    const std::string back = XMP(As_Tiff(As_Jpeg(packet)));
    EXPECT_NE(std::string::npos, back.find(packet.substr(packet.find("<x:xmpmeta"), 199'000)));
    EXPECT_TRUE(back.starts_with("<?xpacket begin="));
    EXPECT_TRUE(back.ends_with("</rdf:RDF></x:xmpmeta>\n<?xpacket end=\"w\"?>"));
    EXPECT_EQ(std::string::npos, back.find("HasExtendedXMP"));
    EXPECT_EQ(back, XMP(As_Tiff(As_Jpeg(back)))) << "the second time";
}

struct Wrapped_Case {
    std::string name, before, behind;
};

class Jpeg_XMP_Wrapped : public Jpeg_XMP_From_TIFF, public testing::WithParamInterface<Wrapped_Case> {};

TEST_P(Jpeg_XMP_Wrapped, Only_What_Is_Inside_Is_Extended)
{
    const std::string inside = Inside_Of(70'000);
    std::string extended;
    for (const std::string& segment : Segments(As_Jpeg(GetParam().before + inside + GetParam().behind)))
        if (segment.starts_with("http://ns.adobe.com/xmp/extension/")) extended += segment.substr(35 + 40);
    EXPECT_EQ(inside, extended);
}

INSTANTIATE_TEST_SUITE_P(
    All, Jpeg_XMP_Wrapped,
    testing::Values(Wrapped_Case{"in_nothing", "", ""}, Wrapped_Case{"in_a_packet", "<?xpacket?>", "<?xpacket end?>"},
                    Wrapped_Case{"with_padding", " \n", std::string(3000, ' ') + "\n<?xpacket end='r'?>\n"},
                    Wrapped_Case{"with_zeros", "", std::string(8, '\0')},
                    Wrapped_Case{"with_a_declaration", "<?xml version='1.0'?>\n<?xpacket?>\n", "<?xpacket end?>"}),
    [](const auto& row) { return row.param.name; });

TEST_F(Jpeg_XMP_From_TIFF, Of_Nothing_But_Padding_Nothing_Is_Written)
{
    for (const std::size_t bytes : {std::size_t(0), std::size_t(70'000)}) {
        const auto segments = XMP_Segments(std::vector<std::byte>(bytes, std::byte(' ')));
        ASSERT_TRUE(segments);
        EXPECT_TRUE(segments->empty()) << bytes;
    }
}

TEST_F(Jpeg_XMP_From_TIFF, The_Longest_Packet_Is_Read_Back)
{
    const std::string inside = Inside_Of(std::size_t(64) << 20);
    EXPECT_NE(std::string::npos, XMP(As_Jpeg(inside)).find(inside));
}

TEST_F(Jpeg_XMP_From_TIFF, What_Would_Not_Be_Read_Back_Fails_With_A_Message)
{
    const auto segments = XMP_Segments(std::vector<std::byte>((std::size_t(64) << 20) + 1, std::byte('a')));
    ASSERT_FALSE(segments);
    EXPECT_EQ("the XMP packet of 67108865 bytes does not fit into a JPEG file, 67108864 are the limit",
              segments.error().text);
}

} // namespace
