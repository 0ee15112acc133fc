#include "tests/bkimgutl/codecs/Jpeg_Fixture.h"

#include <cmath>
#include <cstring>

namespace {

using Colors = Jpeg_File_Options::Colors;

struct Kind {
    const char* name;
    Jpeg_File_Options options;
    bool grey = false;
    int width = 67; ///< no multiple of any unit
    int height = 45;
};

const Kind kinds[] = {
    {"baseline_4_2_0", {}},
    {"progressive", {.progressive = true}},
    {"arithmetic_coding", {.arithmetic = true}},
    {"grey", {}, true},
    {"grey_progressive", {.progressive = true}, true},
    {"full_colour_4_4_4", {.horizontal_sampling = 1, .vertical_sampling = 1}},
    {"half_width_4_2_2", {.horizontal_sampling = 2, .vertical_sampling = 1}},
    {"half_height_4_4_0", {.horizontal_sampling = 1, .vertical_sampling = 2}},
    {"quarter_width_4_1_1", {.horizontal_sampling = 4, .vertical_sampling = 1}},
    {"stored_as_rgb", {.horizontal_sampling = 1, .vertical_sampling = 1, .colors = Colors::RGB}},
    {"restart_markers", {.restart_rows = 1}},
    {"restart_markers_progressive", {.progressive = true, .restart_rows = 2}},
    {"whole_units", {}, false, 64, 48},
    {"one_pixel", {}, false, 1, 1},
    {"one_row", {}, false, 100, 1},
    {"one_column", {}, false, 1, 100},
    {"lowest_quality", {.quality = 1}},
    {"highest_quality", {.quality = 100}},
};

class Jpeg_Load_Kinds : public Jpeg_Fixture, public testing::WithParamInterface<Kind> {
protected:
    File_Bytes Made() const
    {
        const Sample_Picture picture = Meadow(GetParam().width, GetParam().height, 5);
        return Jpeg_File(GetParam().grey ? To_Grey(picture) : picture, GetParam().options);
    }
};

TEST_P(Jpeg_Load_Kinds, Gives_What_The_Codec_Decodes)
{
    const File_Bytes file = Made();
    const auto bitmap = Load(Put("a.jpg", file));
    ASSERT_TRUE(bitmap) << Error_Text();
    EXPECT_TRUE(Shows(Decode_Plainly(file), *bitmap));
    EXPECT_TRUE(Padding_Is_Zero(*bitmap));
}

TEST_P(Jpeg_Load_Kinds, Uses_The_Codecs_Own_Reduction_For_2_4_And_8)
{
    const File_Bytes file = Made();
    const std::string path = Put("a.jpg", file);
    for (const int divisor : {2, 4, 8}) {
        const auto bitmap = Load(path, divisor);
        ASSERT_TRUE(bitmap) << Error_Text();
        EXPECT_TRUE(Shows(Decode_Plainly(file, divisor), *bitmap)) << "divisor " << divisor;
        EXPECT_EQ(nullptr, bitmap->Origin());
    }
}

/// The mean of each box, with what there is at the right and bottom.
Plain_Decode Boxes(const Plain_Decode& from, int divisor)
{
    Plain_Decode to{.width = (from.width + divisor - 1) / divisor,
                    .height = (from.height + divisor - 1) / divisor,
                    .channels = from.channels};
    for (int y = 0; y < to.height; ++y) {
        for (int i = 0; i < to.width * to.channels; ++i) {
            double sum = 0;
            int count = 0;
            for (int row = y * divisor; row < std::min(from.height, (y + 1) * divisor); ++row) {
                const int x = i / to.channels;
                for (int column = x * divisor; column < std::min(from.width, (x + 1) * divisor); ++column, ++count)
                    sum += from.bytes[std::size_t((row * from.width + column) * from.channels + i % to.channels)];
            }
            to.bytes.push_back(std::uint8_t(std::floor(sum / count + 0.5)));
        }
    }
    return to;
}

TEST_P(Jpeg_Load_Kinds, Averages_Whole_Boxes_For_Other_Divisors)
{
    const File_Bytes file = Made();
    const std::string path = Put("a.jpg", file);
    struct {
        int divisor, codec, box;
    } const rows[] = {{3, 1, 3}, {5, 1, 5}, {6, 2, 3}, {12, 4, 3}, {16, 8, 2}, {1000, 8, 125}};
    for (const auto& row : rows) {
        const auto bitmap = Load(path, row.divisor);
        ASSERT_TRUE(bitmap) << Error_Text();
        EXPECT_TRUE(Shows(Boxes(Decode_Plainly(file, row.codec), row.box), *bitmap)) << "divisor " << row.divisor;
    }
}

INSTANTIATE_TEST_SUITE_P(All, Jpeg_Load_Kinds, testing::ValuesIn(kinds),
                         [](const auto& row) { return row.param.name; });

class Jpeg_Load_CMYK : public Jpeg_Fixture, public testing::WithParamInterface<std::tuple<Colors, bool>> {};

TEST_P(Jpeg_Load_CMYK, Multiplies_Ink_And_Black)
{
    const auto [colors, adobe] = GetParam();
    const File_Bytes file = Jpeg_File(
        Portrait(40, 30, 2),
        {.quality = 95, .horizontal_sampling = 1, .vertical_sampling = 1, .colors = colors, .adobe_mark = adobe});
    const auto bitmap = Load(Put("a.jpg", file));
    ASSERT_TRUE(bitmap) << Error_Text();
    const Plain_Decode inks = Decode_Plainly(file);
    ASSERT_EQ(4, inks.channels);
    Plain_Decode expected{.width = inks.width, .height = inks.height, .channels = 3};
    for (std::size_t i = 0; i < inks.bytes.size(); i += 4) {
        const auto paper = [&](std::size_t channel) { // 255 is no ink
            return adobe ? int(inks.bytes[i + channel]) : 255 - inks.bytes[i + channel];
        };
        for (const std::size_t channel : {2, 1, 0})
            expected.bytes.push_back(std::uint8_t(std::lround(paper(channel) * paper(3) / 255.0)));
    }
    EXPECT_TRUE(Shows(expected, *bitmap));
    EXPECT_EQ(32, Facts(Path("a.jpg")).pixel_depth);
}

TEST_P(Jpeg_Load_CMYK, Looks_Like_The_Picture)
{
    const auto [colors, adobe] = GetParam();
    const Sample_Picture picture = Portrait(80, 60, 2);
    const auto bitmap = Load(Put(
        "a.jpg",
        Jpeg_File(
            picture,
            {.quality = 98, .horizontal_sampling = 1, .vertical_sampling = 1, .colors = colors, .adobe_mark = adobe})));
    ASSERT_TRUE(bitmap) << Error_Text();
    double sum = 0;
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            for (int c = 0; c < 3; ++c)
                sum += std::abs(int(picture.Pixel(x, y)[c]) - int(bitmap->View().Row(y)[x * 3 + 2 - c]));
        }
    }
    EXPECT_LT(sum / double(picture.bytes.size()), 4.0);
}

// Without the mark YCCK cannot be told from CMYK, so this combination does not exist.
INSTANTIATE_TEST_SUITE_P(All, Jpeg_Load_CMYK,
                         testing::Values(std::tuple(Colors::CMYK, true), std::tuple(Colors::CMYK, false),
                                         std::tuple(Colors::YCCK, true)));

class Jpeg_Orientation : public Jpeg_Fixture, public testing::WithParamInterface<int> {
protected:
    File_Bytes Made() const
    {
        const Sample_Picture seen = Meadow(61, 43, 8);
        return Jpeg_File(Stored_With_Orientation(seen, GetParam()),
                         {.jfif = false, .segments = {{0xE1, Camera_Block({.orientation = GetParam()})}}});
    }
};

TEST_P(Jpeg_Orientation, Stands_Upright_In_Pixels_And_Dimensions)
{
    const File_Bytes file = Made();
    const std::string path = Put("a.jpg", file);
    const auto bitmap = Load(path);
    ASSERT_TRUE(bitmap) << Error_Text();
    EXPECT_EQ(61, bitmap->Width());
    EXPECT_EQ(43, bitmap->Height());
    EXPECT_EQ(61, Facts(path).width);
    EXPECT_EQ(43, Facts(path).height);
    Sample_Picture seen{.width = 61, .height = 43, .channels = 3, .bytes = {}};
    for (int y = 0; y < 43; ++y) {
        const auto row = Row_Bytes(bitmap->View(), y);
        seen.bytes.insert(seen.bytes.end(), row.begin(), row.end());
    }
    EXPECT_EQ(Decode_Plainly(file).bytes, Stored_With_Orientation(seen, GetParam()).bytes);
    ASSERT_NE(nullptr, bitmap->Origin());
    EXPECT_EQ(Symmetry_Of_Orientation(GetParam()), bitmap->Origin()->symmetry);
}

TEST_P(Jpeg_Orientation, Holds_For_Reduced_Pictures_Too)
{
    const std::string path = Put("a.jpg", Made());
    for (const int divisor : {2, 3, 8}) {
        const auto bitmap = Load(path, divisor);
        ASSERT_TRUE(bitmap) << Error_Text();
        EXPECT_EQ((61 + divisor - 1) / divisor, bitmap->Width());
        EXPECT_EQ((43 + divisor - 1) / divisor, bitmap->Height());
        EXPECT_GT(int(bitmap->View().Row(0)[0]), 150) << "the blue sky is above";
    }
}

INSTANTIATE_TEST_SUITE_P(All_Eight, Jpeg_Orientation, testing::Range(1, 9));

class Jpeg_Load : public Jpeg_Fixture {};

TEST_F(Jpeg_Load, Turns_Counterclockwise_By_The_Rotation)
{
    const std::string path = Put("a.jpg", Jpeg_File(Meadow(50, 30, 1)));
    const auto straight = Load(path);
    const auto turned = Load(path, 1, 90);
    const auto half = Load(path, 1, 180);
    const auto back = Load(path, 1, 270);
    ASSERT_TRUE(turned && half && back);
    EXPECT_EQ(30, turned->Width());
    for (int y = 0; y < 30; ++y) {
        for (int x = 0; x < 50; ++x) {
            const std::uint8_t* pixel = straight->View().Row(y) + x * 3;
            EXPECT_EQ(0, std::memcmp(pixel, turned->View().Row(49 - x) + y * 3, 3));
            EXPECT_EQ(0, std::memcmp(pixel, half->View().Row(29 - y) + (49 - x) * 3, 3));
            EXPECT_EQ(0, std::memcmp(pixel, back->View().Row(x) + (29 - y) * 3, 3));
        }
    }
    ASSERT_NE(nullptr, turned->Origin());
    EXPECT_EQ((Pixel_Symmetry{.quarter_turns = 1, .mirrored = false}), turned->Origin()->symmetry);
}

TEST_F(Jpeg_Load, Remembers_The_File)
{
    const std::string path = Put("a.jpg", Jpeg_File(Meadow(20, 20, 1)));
    const auto bitmap = Load(path);
    ASSERT_NE(nullptr, bitmap->Origin());
    EXPECT_EQ(path, bitmap->Origin()->path);
    EXPECT_EQ(*Identity_Of(path), bitmap->Origin()->identity);
    EXPECT_FALSE(bitmap->Origin()->damaged);
}

TEST_F(Jpeg_Load, Refuses_Odd_Arguments)
{
    const std::string path = Put("a.jpg", Jpeg_File(Meadow(20, 20, 1)));
    EXPECT_FALSE(Load(path, 0));
    EXPECT_FALSE(Load(path, -3));
    EXPECT_FALSE(Load(path, 1, 45));
    EXPECT_FALSE(Load(path, 1, 360));
    EXPECT_FALSE(Load(path, 1, -90));
    EXPECT_EQ(0, Load_Bitmap_From_File(path, 7, 1, 0));
    EXPECT_NE(std::string::npos, Error_Text().find(path));
}

} // namespace
