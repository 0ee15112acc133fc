#include "bkimgutl/codecs/XMP_Thumbnails.h"

#include <gtest/gtest.h>
#include <random>
#include <string>

namespace {

const std::string Declared = "<a xmlns:img='http://ns.adobe.com/xap/1.0/g/img/'/>";

std::string Blanked(std::string packet)
{
    Blank_XMP_Thumbnails(std::as_writable_bytes(std::span(packet)));
    return packet;
}

struct Thumbnail_Case {
    const char* name;
    std::string packet;
    std::string expected;
};

class XMP_Thumbnails : public testing::TestWithParam<Thumbnail_Case> {};

TEST_P(XMP_Thumbnails, Become_Spaces)
{
    const auto& [name, packet, expected] = GetParam();
    std::string blank = packet;
    EXPECT_EQ(packet != expected, Blank_XMP_Thumbnails(std::as_writable_bytes(std::span(blank))));
    EXPECT_EQ(expected, blank);
}

const Thumbnail_Case Thumbnail_Cases[] = {
    {"nothing", "", ""},
    {"element", Declared + "<img:image>/9j/4A==</img:image><b/>", Declared + "<img:image>        </img:image><b/>"},
    {"with_line_ends", Declared + "<img:image>/9j&#xA;\n4AA</img:image>",
     Declared + "<img:image>            </img:image>"},
    {"element_with_attributes", Declared + "<img:image xml:lang='x'>AA</img:image>",
     Declared + "<img:image xml:lang='x'>  </img:image>"},
    {"in_a_section", Declared + "<img:image><![CDATA[AA]]></img:image>",
     Declared + "<img:image>              </img:image>"},
    {"several", Declared + "<img:image>AA</img:image><img:image>BB</img:image>",
     Declared + "<img:image>  </img:image><img:image>  </img:image>"},
    {"attribute", Declared + "<c img:image=\"/9j/\" d='1'/>", Declared + "<c img:image=\"    \" d='1'/>"},
    {"attribute_with_spaces", Declared + "<c img:image = '/9j/' d='1'/>", Declared + "<c img:image = '    ' d='1'/>"},
    {"two_prefixes",
     "<a xmlns:p='http://ns.adobe.com/xap/1.0/g/img/' xmlns:q=\"http://ns.adobe.com/xap/1.0/g/img/\">"
     "<p:image>A</p:image><q:image>B</q:image>",
     "<a xmlns:p='http://ns.adobe.com/xap/1.0/g/img/' xmlns:q=\"http://ns.adobe.com/xap/1.0/g/img/\">"
     "<p:image> </p:image><q:image> </q:image>"},
    {"declared_with_spaces", "<a xmlns:p = 'http://ns.adobe.com/xap/1.0/g/img/'><p:image>A</p:image>",
     "<a xmlns:p = 'http://ns.adobe.com/xap/1.0/g/img/'><p:image> </p:image>"},
    {"declared_behind", "<p:image>A</p:image><a xmlns:p='http://ns.adobe.com/xap/1.0/g/img/'/>",
     "<p:image> </p:image><a xmlns:p='http://ns.adobe.com/xap/1.0/g/img/'/>"},
    {"cut_element", Declared + "<img:image>/9j/", Declared + "<img:image>    "},
    {"cut_attribute", Declared + "<c img:image='/9j/", Declared + "<c img:image='    "},
    {"cut_tag", Declared + "<img:image", Declared + "<img:image"},
    {"empty_element", Declared + "<img:image/><b>text</b>", Declared + "<img:image/><b>text</b>"},
    {"another_name", Declared + "<img:imageSize>9</img:imageSize>", Declared + "<img:imageSize>9</img:imageSize>"},
    {"another_prefix", Declared + "<oimg:image>AA</oimg:image>", Declared + "<oimg:image>AA</oimg:image>"},
    {"another_name_space", "<a xmlns:img='http://ns.adobe.com/xap/1.0/g/'><img:image>AA</img:image>",
     "<a xmlns:img='http://ns.adobe.com/xap/1.0/g/'><img:image>AA</img:image>"},
    {"name_in_a_text", Declared + "<b>the img:image is</b>", Declared + "<b>the img:image is</b>"},
    {"name_space_in_a_text", "http://ns.adobe.com/xap/1.0/g/img/ :image='x'",
     "http://ns.adobe.com/xap/1.0/g/img/ :image='x'"},
};

INSTANTIATE_TEST_SUITE_P(All, XMP_Thumbnails, testing::ValuesIn(Thumbnail_Cases),
                         [](const auto& row) { return row.param.name; });

TEST(XMP_Thumbnails_Bytes, Bear_Any_Damage)
{
    const std::string whole = Declared + "<img:image>AA</img:image><c img:image = 'BB' img:image=\"C\"/>";
    std::mt19937 random(5);
    for (int round = 0; round < 50'000; ++round) {
        std::string packet = whole.substr(random() % whole.size());
        packet.resize(random() % (packet.size() + 1));
        for (unsigned i = 0; i < random() % 4 && !packet.empty(); ++i)
            packet[random() % packet.size()] = whole[random() % whole.size()];
        const std::string blank = Blanked(packet);
        EXPECT_EQ(packet.size(), blank.size());
        EXPECT_EQ(blank, Blanked(blank));
    }
}

} // namespace
