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
    std::string As_Tiff(const std::string& path) const
    {
        const auto bitmap = Load(path);
        EXPECT_EQ(-1, Save_Bitmap_To_File(bitmap.Handle(), Path("a.tif"), 2, {}, {}, path, -2, -1, -1, nullptr));
        return Path("a.tif");
    }
};

TEST_F(Jpeg_XMP, An_Extended_Packet_Becomes_Part_Of_The_Packet_Of_A_TIFF)
{
    // The parts stand in another order in the file.
    const std::string path =
        With_Segments({Packet(With_Pointer() + Rating), Part(60'000, Extended.size()), Part(0, 60'000)});
    EXPECT_EQ(Start + Without_Pointer + Rating + History + End, XMP(As_Tiff(path)));
}

struct Left_Out_Case {
    std::string name;
    std::vector<File_Segment> parts;
};

class Jpeg_XMP_Left_Out : public Jpeg_XMP, public testing::WithParamInterface<Left_Out_Case> {};

TEST_P(Jpeg_XMP_Left_Out, The_Packet_Stays_As_It_Is)
{
    std::vector<File_Segment> segments = {Packet(With_Pointer())};
    segments.insert(segments.end(), GetParam().parts.begin(), GetParam().parts.end());
    EXPECT_EQ(Start + With_Pointer() + End, XMP(As_Tiff(With_Segments(segments))));
}

INSTANTIATE_TEST_SUITE_P(All, Jpeg_XMP_Left_Out,
                         testing::Values(Left_Out_Case{"no_extension", {}},
                                         Left_Out_Case{"a_part_is_missing", {Part(0, 60'000)}},
                                         Left_Out_Case{"a_part_in_the_middle_is_missing",
                                                       {Part(0, 100), Part(200, Extended.size() - 40'000)}},
                                         Left_Out_Case{"of_another_packet",
                                                       {Part(0, 60'000, std::string(32, 'F')),
                                                        Part(60'000, Extended.size(), std::string(32, 'F'))}},
                                         Left_Out_Case{"too_short", {Segment(0xE1, "http://ns.adobe.com/xmp/ext")}}),
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
    EXPECT_EQ(packet, With_Extended_XMP(packet, odd));
    for (const char* broken :
         {"", "<rdf:RDF", "</rdf:RDF>", "</rdf:RDF><rdf:RDF xmlns:rdf='r'>", "<rdf:RDF></rdf:RDF>"})
        EXPECT_EQ(packet, With_Extended_XMP(packet, broken)) << broken;
    EXPECT_EQ("no packet", With_Extended_XMP("no packet", Extended));
}

TEST_F(Jpeg_XMP, A_Packet_Goes_Along_From_A_TIFF_When_It_Fits_Into_A_Segment)
{
    for (const std::size_t more : {0, 70'000}) {
        const std::string packet = Start + std::string(more, ' ') + Rating + End;
        Write_Tiff_File(Path("p.tif"), Meadow(16, 16, 1), {.private_tags = {{700, packet}}});
        ASSERT_TRUE(Save(Load(Path("p.tif")), Path("b.jpg"), {.parent = Path("p.tif")})) << Error_Text();
        EXPECT_EQ(more == 0 ? packet : "", XMP(Path("b.jpg")));
    }
}

} // namespace
