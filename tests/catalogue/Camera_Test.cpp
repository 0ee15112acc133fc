#include "catalogue/Camera_Information.h"
#include "dev/samples/Jpeg_File.h"
#include "tests/catalogue/Exif_Block_Maker.h"
#include "tests/catalogue/Picture_Fixture.h"

#include <gtest/gtest.h>
#include <random>

namespace {

Camera_Record Record(const Exif_Block_Maker& maker)
{
    const auto record = Parse_Camera_Record(maker.Block());
    EXPECT_TRUE(record.has_value());
    return record.value_or(Camera_Record());
}

QString Report(const Exif_Block_Maker& maker)
{
    return Camera_Report(Record(maker));
}

Exif_Block_Maker Whole_Camera(bool little_endian)
{
    Exif_Block_Maker maker(little_endian);
    maker.Text(271, "Maker ").Text(272, "Model 1").Text(306, "2003:05:01 12:00:00");
    maker.Text(36867, "2003:05:01 11:00:00").Text(36868, "2003:05:01 11:00:01");
    maker.Short(40962, 1600).Long(40963, 1200).Short(34850, 3).Signed_Ratio(37379, -3, 2).Short(34855, 200);
    maker.Short(37384, 10).Short(37385, 0x19).Short(37383, 5).Signed_Ratio(37380, -2, 3);
    maker.Ratio(33434, 1, 250).Ratio(33437, 56, 10).Ratio(37381, 3, 1).Ratio(37382, 5, 2).Ratio(37122, 4, 1);
    maker.Raw(36864, 7, 4, "0220").Raw(40960, 7, 4, "0100");
    return maker;
}

TEST(Camera_Report, Has_A_Line_For_Each_Fact_In_Order_In_Both_Byte_Orders)
{
    const QString expected = "Make: Maker\r\nModel: Model 1\r\nDate/Time Taken: 2003:05:01 11:00:00\r\n"
                             "Date/Time Digitized: 2003:05:01 11:00:01\r\nResolution (w x h): 1600 x 1200\r\n"
                             "Exposure Program: Aperture Priority\r\nBrightness Value: -1.5ev\r\n"
                             "ISO Speed Rating: 200\r\nWhite Balance: Flash\r\nFlash Used\r\n"
                             "Metering Mode: Multi-segment\r\nExposure Bias: -0.7ev\r\n"
                             "Shutter Speed: 0.004s (1/250)\r\nAperture: f/5.6\r\nMaximum Aperture: f/2.8\r\n"
                             "Subject Distance: 2.50m\r\nAverage JPEG Compression Ratio: 4.0 bits/pixel\r\n"
                             "EXIF version: 220\r\nFlashPix version: 100";
    EXPECT_EQ(expected, Report(Whole_Camera(true)));
    EXPECT_EQ(expected, Report(Whole_Camera(false)));
}

struct Line_Case {
    const char* name;
    Exif_Block_Maker maker;
    const char* expected; // the whole report
};

class Camera_Lines : public testing::TestWithParam<Line_Case> {};

TEST_P(Camera_Lines, Give_The_Report)
{
    EXPECT_EQ(QString(GetParam().expected), Report(GetParam().maker));
}

Exif_Block_Maker Make()
{
    return Exif_Block_Maker();
}

INSTANTIATE_TEST_SUITE_P(
    All, Camera_Lines,
    testing::Values(
        Line_Case{"an_empty_block_has_no_lines", Make(), ""},
        Line_Case{"white_balance_0_is_auto", Make().Short(37384, 0), "White Balance: Auto"},
        Line_Case{"white_balance_1", Make().Short(37384, 1), "White Balance: Daylight"},
        Line_Case{"white_balance_2", Make().Short(37384, 2), "White Balance: Fluorescent"},
        Line_Case{"white_balance_3", Make().Short(37384, 3), "White Balance: Tungsten"},
        Line_Case{"white_balance_4_leaves_the_line_out", Make().Short(37384, 4), ""},
        Line_Case{"exposure_program_0_leaves_the_line_out", Make().Short(34850, 0), ""},
        Line_Case{"exposure_program_9_leaves_the_line_out", Make().Short(34850, 9), ""},
        Line_Case{"exposure_program_1", Make().Short(34850, 1), "Exposure Program: Manual"},
        Line_Case{"exposure_program_2", Make().Short(34850, 2), "Exposure Program: Program"},
        Line_Case{"exposure_program_4", Make().Short(34850, 4), "Exposure Program: Shutter Priority"},
        Line_Case{"exposure_program_5", Make().Short(34850, 5), "Exposure Program: Slow Program"},
        Line_Case{"exposure_program_6", Make().Short(34850, 6), "Exposure Program: High-Speed Program"},
        Line_Case{"exposure_program_7", Make().Short(34850, 7), "Exposure Program: Portrait"},
        Line_Case{"exposure_program_8_is_the_last", Make().Short(34850, 8), "Exposure Program: Landscape"},
        Line_Case{"metering_mode_0_leaves_the_line_out", Make().Short(37383, 0), ""},
        Line_Case{"metering_mode_1", Make().Short(37383, 1), "Metering Mode: Average"},
        Line_Case{"metering_mode_2", Make().Short(37383, 2), "Metering Mode: Center weighted Average"},
        Line_Case{"metering_mode_3", Make().Short(37383, 3), "Metering Mode: Spot"},
        Line_Case{"metering_mode_4", Make().Short(37383, 4), "Metering Mode: Multi-spot"},
        Line_Case{"metering_mode_6_leaves_the_line_out", Make().Short(37383, 6), ""},
        Line_Case{"a_date_without_a_date_taken_stands_alone", Make().Text(306, "2003:05:01 12:00:00"),
                  "Date/Time: 2003:05:01 12:00:00"},
        Line_Case{"a_digitized_date_without_a_date_taken_is_not_shown", Make().Text(36868, "2003:05:01 12:00:00"), ""},
        Line_Case{"a_time_of_2_seconds_has_no_reciprocal", Make().Ratio(33434, 2, 1), "Shutter Speed: 2.0s"},
        Line_Case{"a_time_of_0_004_has_one", Make().Ratio(33434, 4, 1000), "Shutter Speed: 0.004s (1/250)"},
        Line_Case{"a_time_is_rounded_as_on_paper", Make().Ratio(33434, 1, 400), "Shutter Speed: 0.003s (1/400)"},
        Line_Case{"a_bias_is_rounded_as_on_paper", Make().Signed_Ratio(37380, -65, 100), "Exposure Bias: -0.7ev"},
        Line_Case{"a_short_time_shows_in_its_reciprocal", Make().Ratio(33434, 1, 8000), "Shutter Speed: 0.0s (1/8000)"},
        Line_Case{"a_shutter_value_below_0_is_a_long_time", Make().Signed_Ratio(37377, -2, 1), "Shutter Speed: 4.0s"},
        Line_Case{"a_shutter_value_of_0_is_none", Make().Signed_Ratio(37377, 0, 1), ""},
        Line_Case{"the_shutter_value_stands_in_for_the_time", Make().Signed_Ratio(37377, 2, 1),
                  "Shutter Speed: 0.25s (1/4)"},
        Line_Case{"the_exposure_time_is_preferred", Make().Signed_Ratio(37377, 2, 1).Ratio(33434, 1, 1),
                  "Shutter Speed: 1.0s"},
        Line_Case{"the_aperture_value_stands_in_for_the_f_number", Make().Ratio(37378, 5, 1), "Aperture: f/5.7"},
        Line_Case{"the_f_number_is_preferred", Make().Ratio(37378, 5, 1).Ratio(33437, 8, 1), "Aperture: f/8.0"},
        Line_Case{"an_aperture_of_0_is_none", Make().Ratio(37378, 0, 1).Ratio(37381, 0, 1), ""},
        Line_Case{"a_zero_denominator_gives_0", Make().Ratio(33437, 5, 0), ""},
        Line_Case{"a_width_without_a_height_is_no_size", Make().Short(40962, 100), ""},
        Line_Case{"an_unlimited_distance_has_no_number", Make().Ratio(37382, 0xFFFFFFFF, 1), ""},
        Line_Case{"flash_bit_0_alone_counts", Make().Short(37385, 0x10), ""},
        Line_Case{"a_number_may_be_a_byte", Make().Raw(34850, 1, 1, "\3"), "Exposure Program: Aperture Priority"},
        Line_Case{"a_number_may_be_a_signed_byte", Make().Raw(37379, 6, 1, "\xFE"), "Brightness Value: -2.0ev"},
        Line_Case{"a_number_may_be_a_signed_short", Make().Raw(37379, 8, 1, "\xFE\xFF"), "Brightness Value: -2.0ev"},
        Line_Case{"a_number_may_be_a_signed_long", Make().Raw(37379, 9, 1, "\xFE\xFF\xFF\xFF"),
                  "Brightness Value: -2.0ev"},
        Line_Case{"a_number_may_be_a_float", Make().Raw(37379, 11, 1, std::string("\0\0\x20\x40", 4)),
                  "Brightness Value: 2.5ev"},
        Line_Case{"a_number_may_be_a_double", Make().Raw(37379, 12, 1, std::string("\0\0\0\0\0\0\x04\x40", 8)),
                  "Brightness Value: 2.5ev"},
        Line_Case{"a_text_of_numbers_is_none", Make().Raw(271, 3, 2, "ABCD"), ""},
        Line_Case{"a_number_of_a_text_is_none", Make().Text(37379, "2"), ""},
        Line_Case{"a_type_beyond_12_is_passed_over", Make().Raw(34850, 13, 1, std::string("\3\0\0\0", 4)), ""},
        Line_Case{"a_blank_make_is_empty", Make().Text(271, "   "), ""},
        Line_Case{"a_text_in_its_entry", Make().Text(271, "ab"), "Make: ab"}),
    [](const auto& row) { return row.param.name; });

struct Summary_Case {
    const char* name;
    Exif_Block_Maker maker;
    QString expected;
};
class Camera_Summary : public testing::TestWithParam<Summary_Case> {};
TEST_P(Camera_Summary, Gives_The_Line)
{
    EXPECT_EQ(GetParam().expected, Camera_Summary_Line(Record(GetParam().maker)));
}
INSTANTIATE_TEST_SUITE_P(
    All, Camera_Summary,
    testing::Values(
        Summary_Case{"all_parts", Make().Ratio(33434, 1, 250).Ratio(33437, 56, 10).Short(37385, 1),
                     QStringLiteral("1/250s, f/5.6, \u00A4")},
        Summary_Case{"half_a_second_is_a_fraction", Make().Ratio(33434, 1, 2), QStringLiteral("1/2s")},
        Summary_Case{"more_than_half_a_second_is_a_number", Make().Ratio(33434, 6, 10), QStringLiteral("0.6s")},
        Summary_Case{"aperture_alone_has_no_comma", Make().Ratio(33437, 8, 1), QStringLiteral("f/8.0")},
        Summary_Case{"flash_alone", Make().Short(37385, 1), QStringLiteral("\u00A4")},
        Summary_Case{"shutter_value_in_place_of_the_time", Make().Signed_Ratio(37377, 3, 1), QStringLiteral("1/8s")},
        Summary_Case{"nothing", Make(), QString()}),
    [](const auto& row) { return row.param.name; });

TEST(Camera_Block, Has_Texts_That_The_Report_Leaves_Out)
{
    const Camera_Record record =
        Record(Make().Text(270, " Sea ").Text(305, "Works 1").Raw(37510, 7, 15, std::string("ASCII\0\0\0a shell", 15)));
    EXPECT_EQ("Sea", record.Image_Description);
    EXPECT_EQ("Works 1", record.Software);
    EXPECT_EQ("a shell", record.User_Comment) << "behind the name of its character code";
    EXPECT_EQ(QString(), Camera_Report(record));
}

TEST(Camera_Block, That_Is_None_Gives_Nothing)
{
    const auto parse = [](std::string text) { return Parse_Camera_Record(std::as_bytes(std::span(text))).has_value(); };
    EXPECT_FALSE(parse(""));
    EXPECT_FALSE(parse("II*"));
    EXPECT_FALSE(parse(std::string("XX*\0\10\0\0\0\0\0", 10)));
    EXPECT_FALSE(parse(std::string("II+\0\10\0\0\0\0\0", 10))) << "not 42";
    EXPECT_FALSE(parse(std::string("II*\0\11\0\0\0\0\0", 10))) << "the first directory is not at 8";
    EXPECT_TRUE(parse(std::string("II*\0\10\0\0\0\0\0", 10)));
}

/// Writes a JPEG file of 160 x 96 with the block in it.
QString Photo(const Test_Folder& folder, const Exif_Block_Maker& maker)
{
    const auto plain = Jpeg_File(Meadow(160, 96, 1));
    std::string bytes(plain.begin(), plain.end());
    const auto block = maker.Block();
    const std::size_t length = block.size() + 2;
    std::string segment{char(0xFF), char(0xE1), char(length >> 8), char(length & 0xFF)};
    for (const std::byte byte : block) segment += char(byte);
    Put_File(folder.File("a.jpg"), bytes.insert(2, segment));
    return QString::fromStdString(folder.File("a.jpg"));
}

TEST(Camera_File, Takes_The_Size_From_The_Block_And_Else_From_The_Picture)
{
    const Test_Folder folder;
    const auto report = [&](const Exif_Block_Maker& maker) {
        const auto record = Camera_Record_Of_File(Photo(folder, maker));
        return record ? Camera_Report(*record) : No_Camera_Information;
    };
    EXPECT_EQ("Resolution (w x h): 1600 x 1200", report(Make().Short(40962, 1600).Short(40963, 1200)));
    EXPECT_EQ("Resolution (w x h): 160 x 96", report(Make().Short(40962, 1600)));
    EXPECT_EQ("Make: Works\r\nResolution (w x h): 160 x 96", report(Make().Text(271, "Works")));
    Put_File(folder.File("b.jpg"), Contents_Of(folder.File("a.jpg")).erase(2, 10)); // no segment where one begins
    EXPECT_FALSE(Camera_Record_Of_File(QString::fromStdString(folder.File("b.jpg"))));
    EXPECT_FALSE(Camera_Record_Of_File(QString::fromStdString(folder.File("none.jpg"))));
}

class Camera_Of_A_Record : public Picture_Test {};

TEST_F(Camera_Of_A_Record, Is_The_Summary_Line)
{
    const int photo = Pick(Photo(folder, Exif_Block_Maker().Ratio(33434, 1, 400).Ratio(33437, 28, 10)));
    EXPECT_EQ("1/400s, f/2.8", Item(photo).Camera_Summary);
    EXPECT_EQ(QString(), Item(Pick_New("plain.jpg")).Camera_Summary);
}

TEST(Camera_Block, Cut_At_Every_Byte_Is_Read_Without_Looking_Behind_Its_End)
{
    const std::vector<std::byte> whole = Whole_Camera(true).Block();
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const std::vector<std::byte> cut(whole.begin(), whole.begin() + std::ptrdiff_t(length));
        Parse_Camera_Record(cut); // the sanitizers judge
    }
}

TEST(Camera_Block, With_Random_Bytes_Changed_Gives_A_Report_Of_Bounded_Length)
{
    const unsigned seed = 7;
    std::mt19937 random(seed);
    for (int round = 0; round < 5000; ++round) {
        std::vector<std::byte> block = Whole_Camera(round % 2 == 0).Block();
        for (int i = 0; i < 4; ++i) block[random() % block.size()] = std::byte(random());
        const auto record = Parse_Camera_Record(block);
        if (record) {
            EXPECT_LT(Camera_Report(*record).size(), 8000) << "seed " << seed << " round " << round;
        }
    }
}

TEST(Camera_Block, A_Directory_That_Points_At_Itself_Ends)
{
    std::vector<std::byte> block = Exif_Block_Maker().Short(37385, 1).Block();
    for (std::size_t i = 6; i + 4 < block.size(); ++i)
        if (block[i] == std::byte(0x69) && block[i + 1] == std::byte(0x87)) { // 34665
            block[i + 8] = std::byte(8);
            block[i + 9] = block[i + 10] = block[i + 11] = std::byte(0);
        }
    EXPECT_FALSE(Parse_Camera_Record(block)->Flash_Used);
}

} // namespace
