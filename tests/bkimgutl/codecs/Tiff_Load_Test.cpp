#include "bkimgutl/core/Background_Color.h"
#include "tests/bkimgutl/Reference_Pictures.h"
#include "tests/bkimgutl/codecs/Tiff_Fixture.h"

#include <tiff.h>

namespace {

using Options = Tiff_File_Options;
using Colors = Options::Colors;

struct Kind_Case {
    const char* name;
    bool grey; ///< the sample picture
    Options options;
    int depth;     ///< bits per pixel as stored
    int tolerance; ///< of the loaded pixels
    bool reduced;  ///< the origin says that the file holds more
};

std::ostream& operator<<(std::ostream& out, const Kind_Case& row)
{
    return out << row.name;
}

class Tiff_Kinds : public Tiff_Folder, public testing::WithParamInterface<Kind_Case> {};

/// What a loader must show of a sample picture stored in this way.
Sample_Picture Shown(const Sample_Picture& picture, const Options& options)
{
    Sample_Picture shown = picture;
    const int most = options.bits < 8 ? (1 << options.bits) - 1 : 255;
    for (std::size_t i = 0; i < shown.bytes.size(); ++i) {
        int value = shown.bytes[i];
        if (options.bits < 8) value = ((value * most + 127) / 255 * 255 + most / 2) / most;
        if (options.bits < 8 && options.colors == Colors::White_Is_Zero) {
            const int stored = ((255 - shown.bytes[i]) * most + 127) / 255;
            value = 255 - (stored * 255 + most / 2) / most;
        }
        if (options.bits == 8 && options.colors == Colors::Palette) value = std::min(value / 52, 5) * 51;
        shown.bytes[i] = std::uint8_t(value);
    }
    return shown;
}

const Sample_Picture& Colored()
{
    static const Sample_Picture picture = Meadow(75, 53, 3);
    return picture;
}

Sample_Picture Grey()
{
    return To_Grey(Colored());
}

} // namespace

constexpr int Deflate = COMPRESSION_ADOBE_DEFLATE;

INSTANTIATE_TEST_SUITE_P(
    All, Tiff_Kinds,
    testing::Values(
        Kind_Case{"rgb", false, {}, 24, 0, false},
        Kind_Case{"rgb_in_one_strip", false, {.rows_per_strip = 53}, 24, 0, false},
        Kind_Case{"rgb_lzw_predicted", false, {.compression = COMPRESSION_LZW, .predictor = 2}, 24, 0, false},
        Kind_Case{"rgb_deflate", false, {.compression = Deflate}, 24, 0, false},
        Kind_Case{"rgb_packbits", false, {.compression = COMPRESSION_PACKBITS}, 24, 0, false},
        Kind_Case{"rgb_planes", false, {.compression = COMPRESSION_LZW, .separate = true}, 24, 0, false},
        Kind_Case{"rgb_tiles", false, {.compression = Deflate, .predictor = 2, .tile_size = 16}, 24, 0, false},
        Kind_Case{"rgb_tiled_planes", false, {.separate = true, .tile_size = 32}, 24, 0, false},
        Kind_Case{"rgb_big_endian", false, {.big_endian = true}, 24, 0, false},
        Kind_Case{"rgb_bigtiff", false, {.compression = Deflate, .big = true}, 24, 0, false},
        Kind_Case{"rgb_bigtiff_big_endian", false, {.big_endian = true, .big = true}, 24, 0, false},
        Kind_Case{"rgb_16_bit", false, {.bits = 16, .compression = Deflate, .predictor = 2}, 48, 0, true},
        Kind_Case{
            "rgb_16_bit_big_endian_planes", false, {.bits = 16, .separate = true, .big_endian = true}, 48, 0, true},
        Kind_Case{
            "rgb_16_bit_tiles", false, {.bits = 16, .compression = COMPRESSION_LZW, .tile_size = 16}, 48, 0, true},
        Kind_Case{"rgb_12_bit", false, {.bits = 12}, 36, 1, true},
        Kind_Case{"rgb_32_bit", false, {.bits = 32}, 96, 0, true}, Kind_Case{"grey", true, {}, 8, 0, false},
        Kind_Case{"grey_tiles", true, {.compression = COMPRESSION_LZW, .tile_size = 16}, 8, 0, false},
        Kind_Case{"grey_16_bit", true, {.bits = 16}, 16, 0, true},
        Kind_Case{"grey_white_is_zero", true, {.colors = Colors::White_Is_Zero}, 8, 0, false},
        Kind_Case{"grey_4_bit", true, {.bits = 4, .compression = COMPRESSION_LZW}, 4, 0, false},
        Kind_Case{"grey_2_bit_tiles", true, {.bits = 2, .tile_size = 16}, 2, 0, false},
        Kind_Case{"bilevel", true, {.bits = 1}, 1, 0, false},
        Kind_Case{"bilevel_white_is_zero", true, {.colors = Colors::White_Is_Zero, .bits = 1}, 1, 0, false},
        Kind_Case{"bilevel_fax",
                  true,
                  {.colors = Colors::White_Is_Zero, .bits = 1, .compression = COMPRESSION_CCITTFAX4},
                  1,
                  0,
                  false},
        Kind_Case{"palette", false, {.colors = Colors::Palette}, 8, 0, false},
        Kind_Case{
            "palette_tiles", false, {.colors = Colors::Palette, .compression = Deflate, .tile_size = 16}, 8, 0, false},
        Kind_Case{"palette_of_greys_is_grey", true, {.colors = Colors::Palette, .bits = 4}, 4, 0, false},
        Kind_Case{"cmyk", false, {.colors = Colors::CMYK}, 32, 0, true},
        Kind_Case{
            "cmyk_planes", false, {.colors = Colors::CMYK, .compression = Deflate, .separate = true}, 32, 0, true},
        Kind_Case{"cmyk_16_bit", false, {.colors = Colors::CMYK, .bits = 16}, 64, 0, true},
        Kind_Case{"jpeg_rgb", false, {.compression = COMPRESSION_JPEG}, 24, 90, false},
        Kind_Case{"jpeg_ycbcr", false, {.colors = Colors::YCbCr, .compression = COMPRESSION_JPEG}, 24, 255, false},
        Kind_Case{"jpeg_ycbcr_tiles",
                  false,
                  {.colors = Colors::YCbCr, .compression = COMPRESSION_JPEG, .tile_size = 32},
                  24,
                  255,
                  false},
        Kind_Case{"jpeg_grey", true, {.compression = COMPRESSION_JPEG}, 8, 40, false},
        Kind_Case{
            "an_unspecified_extra_sample_is_left_out", false, {.alpha = Options::Alpha::Unspecified}, 32, 0, true},
        Kind_Case{"several_pages", false, {.pages = 3}, 24, 0, true}),
    [](const auto& row) { return row.param.name; });

TEST_P(Tiff_Kinds, Load_As_Drawn)
{
    const auto& row = GetParam();
    const Sample_Picture picture = row.grey ? Grey() : Colored();
    Write_Tiff_File(Path(), picture, row.options);
    const Bitmap bitmap = Loaded(Path());
    EXPECT_TRUE(Pixels_Within(row.tolerance, Bitmap_Of(Shown(picture, row.options)).View(), bitmap.View()));
    EXPECT_TRUE(Padding_Is_Zero(bitmap));
    EXPECT_EQ(row.depth, Facts(Path()).pixel_depth);
    ASSERT_TRUE(bitmap.Origin());
    EXPECT_EQ(row.reduced, bitmap.Origin()->reduced);
    EXPECT_FALSE(bitmap.Origin()->damaged);
    EXPECT_EQ(Open_File(Path()).Identity(), bitmap.Origin()->identity);
}

TEST_P(Tiff_Kinds, Load_Reduced_In_Every_Orientation)
{
    const auto& row = GetParam();
    const Sample_Picture picture = row.grey ? Grey() : Colored();
    for (const int orientation : {1, 3, 6, 7}) {
        SCOPED_TRACE(orientation);
        Options options = row.options;
        options.orientation = orientation;
        Write_Tiff_File(Path(), picture, options);
        const Bitmap full = Loaded(Path());
        const Bitmap reduced = Loaded(Path(), 4);
        const bool swapped = orientation >= 5;
        EXPECT_EQ(swapped ? 53 : 75, full.Width());
        EXPECT_EQ(swapped ? 14 : 19, reduced.Width());
        EXPECT_EQ(swapped ? 19 : 14, reduced.Height());
        EXPECT_FALSE(reduced.Origin());
        unsigned sum = 0;
        for (int y = 0; y < 4; ++y)
            for (int x = 0; x < 4; ++x) sum += full.View().Row(4 + y)[(8 + x) * full.Bytes_Per_Pixel()];
        EXPECT_EQ((sum + 8) / 16, reduced.View().Row(1)[2 * reduced.Bytes_Per_Pixel()]);
    }
}

class Tiff_Load : public Tiff_Folder {};

TEST_F(Tiff_Load, Turns_Every_Orientation_Upright)
{
    for (int orientation = 1; orientation <= 8; ++orientation) {
        SCOPED_TRACE(orientation);
        Write_Tiff_File(Path(), Stored_With_Orientation(Colored(), orientation), {.orientation = orientation});
        const Bitmap bitmap = Loaded(Path());
        EXPECT_TRUE(Same_Pixels(Bitmap_Of(Colored()).View(), bitmap.View()));
        EXPECT_EQ(Symmetry_Of_Orientation(orientation), bitmap.Origin()->symmetry);
        EXPECT_EQ(75, Facts(Path()).width);
        EXPECT_EQ(orientation, Facts(Path()).orientation);
    }
}

TEST_F(Tiff_Load, Lays_Alpha_Over_The_Background)
{
    Set_Background_Color({.red = 200, .green = 100, .blue = 50});
    for (const auto alpha : {Options::Alpha::Associated, Options::Alpha::Unassociated})
        for (const bool separate : {false, true}) {
            Write_Tiff_File(Path(), Colored(), {.alpha = alpha, .separate = separate});
            Sample_Picture expected = Colored();
            for (int y = 0; y < expected.height; ++y)
                for (int x = 0; x < expected.width; ++x) {
                    const int opacity = Sample_Opacity(x, expected.width);
                    const int background[3] = {200, 100, 50};
                    for (int c = 0; c < 3; ++c) {
                        auto& value = expected.Pixel(x, y)[c];
                        value = std::uint8_t((value * opacity + background[c] * (255 - opacity) + 127) / 255);
                    }
                }
            const Bitmap bitmap = Loaded(Path());
            const int rounded_twice = alpha == Options::Alpha::Associated ? 1 : 0;
            EXPECT_TRUE(Pixels_Within(rounded_twice, Bitmap_Of(expected).View(), bitmap.View()));
            EXPECT_TRUE(bitmap.Origin()->reduced);
        }
    Set_Background_Color({});
}

TEST_F(Tiff_Load, Shows_Lab_Colours_Through_The_Librarys_Conversion)
{
    Write_Tiff_File(Path(), Grey(), {.colors = Colors::Lab});
    const Bitmap bitmap = Loaded(Path());
    EXPECT_EQ(3, bitmap.Bytes_Per_Pixel());
    EXPECT_TRUE(bitmap.Origin()->reduced);
}

TEST_F(Tiff_Load, Shows_The_Colours_Of_A_Jpeg_Coded_Picture)
{
    Sample_Picture plain{32, 32, 3, std::vector<std::uint8_t>(32 * 32 * 3)};
    for (std::size_t i = 0; i < plain.bytes.size(); i += 3) {
        plain.bytes[i] = 220;
        plain.bytes[i + 1] = 120;
        plain.bytes[i + 2] = 40;
    }
    Write_Tiff_File(Path(), plain, {.colors = Colors::YCbCr, .compression = COMPRESSION_JPEG});
    EXPECT_TRUE(Pixels_Within(3, Bitmap_Of(plain).View(), Loaded(Path()).View()));
}

TEST_F(Tiff_Load, Refuses_Floating_Point_With_A_Reason)
{
    Write_Tiff_File(Path(), Grey(), {.floating = true});
    EXPECT_EQ("pictures with floating-point samples are not supported", Load_Error(Path()));
}

/// A file of one row of pixels, a directory and raw data behind it. What the entries have at `Data_At` + n stands n bytes
/// into the data.
constexpr std::uint32_t Data_At = 1 << 24;

std::vector<std::byte> Raw_Row(std::vector<Raw_Entry> entries, const std::vector<std::uint8_t>& data)
{
    const std::size_t start = 8 + Tiff_Layout().Directory_Size(entries.size());
    for (Raw_Entry& entry : entries)
        if (entry.value >= Data_At) entry.value = std::uint32_t(entry.value - Data_At + start);
    auto bytes = Raw_Tiff(entries, 0, data.size());
    std::transform(data.begin(), data.end(), bytes.begin() + std::ptrdiff_t(start),
                   [](std::uint8_t byte) { return std::byte(byte); });
    return bytes;
}

constexpr std::uint16_t Short = Tiff_Type::Short, Long = Tiff_Type::Long;

TEST_F(Tiff_Load, Takes_The_Upper_Half_Of_32_Bits)
{
    Write_File(Path(), Raw_Row({{256, Long, 1, 3},
                                {257, Long, 1, 1},
                                {258, Short, 1, 32},
                                {262, Short, 1, 1},
                                {273, Long, 1, Data_At},
                                {279, Long, 1, 12}},
                               {0xFF, 0xFF, 0, 0, 0, 0, 0xFF, 0xFF, 0, 0, 0, 0x80}));
    EXPECT_EQ((std::vector<std::uint8_t>{0, 255, 128}), Row_Bytes(Loaded(Path()).View(), 0));
}

TEST_F(Tiff_Load, Takes_A_Colour_Table_Of_Bytes_As_It_Is_Meant)
{
    // Red, green and blue of the two colours, in numbers of 16 bits that old programs filled with bytes.
    Write_File(Path(), Raw_Row({{256, Long, 1, 2},
                                {257, Long, 1, 1},
                                {258, Short, 1, 1},
                                {262, Short, 1, 3},
                                {273, Long, 1, Data_At + 12},
                                {279, Long, 1, 1},
                                {320, Short, 6, Data_At}},
                               {10, 0, 200, 0, 20, 0, 210, 0, 30, 0, 255, 0, 0x40}));
    EXPECT_EQ((std::vector<std::uint8_t>{30, 20, 10, 255, 210, 200}), Row_Bytes(Loaded(Path()).View(), 0));
}

TEST_F(Tiff_Load, Limits_A_Colour_To_The_Opacity_That_It_Is_Multiplied_By)
{
    Set_Background_Color({.red = 255, .green = 255, .blue = 255});
    Write_File(Path(), Raw_Row({{256, Long, 1, 2},
                                {257, Long, 1, 1},
                                {258, Short, 2, 8 | 8 << 16},
                                {262, Short, 1, 1},
                                {273, Long, 1, Data_At},
                                {277, Short, 1, 2},
                                {279, Long, 1, 4},
                                {338, Short, 1, 1}},
                               {200, 100, 50, 100}));
    const Bitmap bitmap = Loaded(Path());
    Set_Background_Color({});
    EXPECT_EQ((std::vector<std::uint8_t>{255, 205}), Row_Bytes(bitmap.View(), 0));
}

TEST_F(Tiff_Load, Refuses_Other_Inks_Than_The_Usual_Four)
{
    Write_File(Path(), Raw_Row({{256, Long, 1, 1},
                                {257, Long, 1, 1},
                                {258, Short, 4, Data_At},
                                {262, Short, 1, 5},
                                {273, Long, 1, Data_At + 8},
                                {277, Short, 1, 4},
                                {279, Long, 1, 4},
                                {332, Short, 1, 2}},
                               {8, 0, 8, 0, 8, 0, 8, 0, 1, 2, 3, 4}));
    EXPECT_EQ("pictures with inks other than cyan, magenta, yellow and black are not supported", Load_Error(Path()));
}

TEST_F(Tiff_Load, Counts_Pages_But_No_Reduced_Copies_And_Masks_As_More_Than_It_Shows)
{
    enum Kind : std::uint32_t { Page = 0, Reduced_Copy = 1, Page_Of_Many = 2, Reduced_Page = 3, Mask = 4 };
    for (const Kind kind : {Page, Reduced_Copy, Page_Of_Many, Reduced_Page, Mask}) {
        auto bytes = Raw_Row({{256, Long, 1, 1},
                              {257, Long, 1, 1},
                              {258, Short, 1, 8},
                              {262, Short, 1, 1},
                              {273, Long, 1, Data_At},
                              {279, Long, 1, 1}},
                             {77, 0});
        const Tiff_Layout layout;
        const auto next = bytes.size();
        layout.Put(bytes.data() + 8 + layout.Directory_Size(6) - 4, 4, next);
        const auto second = Raw_Tiff({{254, Long, 1, kind}});
        bytes.insert(bytes.end(), second.begin() + 8, second.end());
        Write_File(Path(), bytes);
        EXPECT_EQ(kind == Page || kind == Page_Of_Many, Loaded(Path()).Origin()->reduced) << kind;
    }
}
