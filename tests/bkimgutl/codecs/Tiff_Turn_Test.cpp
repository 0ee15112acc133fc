#include "bkimgutl/geometry/Turn.h"
#include "tests/bkimgutl/Reference_Pictures.h"
#include "tests/bkimgutl/codecs/Tiff_Fixture.h"

#include <tiffio.h>

// A TIFF that is turned or mirrored keeps its samples with all their bits, and all that tells what they mean.

namespace {

using Options = Tiff_File_Options;
using Colors = Options::Colors;

/// Every sample of the first page, as a number.
struct Sample_Grid {
    int width = 0, height = 0, samples = 0;
    std::vector<std::uint32_t> numbers;
    std::uint32_t& At(int x, int y, int s)
    {
        return numbers[(std::size_t(y) * std::size_t(width) + std::size_t(x)) * std::size_t(samples) + std::size_t(s)];
    }
    bool operator==(const Sample_Grid&) const = default;
};

std::uint32_t Sample_In(const std::vector<std::uint8_t>& row, std::size_t number, int bits)
{
    if (bits == 16) return reinterpret_cast<const std::uint16_t*>(row.data())[number];
    if (bits == 32) return reinterpret_cast<const std::uint32_t*>(row.data())[number];
    std::uint32_t value = 0;
    for (std::size_t bit = number * std::size_t(bits); bit < (number + 1) * std::size_t(bits); ++bit)
        value = value * 2 + (row[bit / 8] >> (7 - bit % 8) & 1);
    return value;
}

/// Read with plain calls of the TIFF library: rows for strips, whole tiles for tiles.
Sample_Grid Samples_Of(const std::string& path)
{
    TIFF* file = TIFFOpen(path.c_str(), "r");
    if (file == nullptr) throw std::runtime_error("no TIFF file");
    std::uint32_t width = 0, height = 0, tile_width = 0, tile_height = 0;
    std::uint16_t bits = 0, samples = 0, planar = 0;
    TIFFGetField(file, TIFFTAG_IMAGEWIDTH, &width);
    TIFFGetField(file, TIFFTAG_IMAGELENGTH, &height);
    TIFFGetFieldDefaulted(file, TIFFTAG_BITSPERSAMPLE, &bits);
    TIFFGetFieldDefaulted(file, TIFFTAG_SAMPLESPERPIXEL, &samples);
    TIFFGetFieldDefaulted(file, TIFFTAG_PLANARCONFIG, &planar);
    TIFFGetField(file, TIFFTAG_TILEWIDTH, &tile_width);
    TIFFGetField(file, TIFFTAG_TILELENGTH, &tile_height);
    const bool tiled = TIFFIsTiled(file) != 0;
    const int unit = planar == PLANARCONFIG_SEPARATE ? 1 : samples;
    Sample_Grid grid{int(width), int(height), samples, {}};
    grid.numbers.resize(std::size_t(width) * height * samples);
    std::vector<std::uint8_t> bytes(std::size_t(tiled ? TIFFTileSize(file) : TIFFScanlineSize(file)) + 64);
    for (int plane = 0; plane < samples / unit; ++plane)
        for (std::uint32_t y = 0; y < height; ++y)
            for (std::uint32_t x = 0; x < width; ++x) {
                std::size_t place = x;
                if (tiled) {
                    const bool fresh = x % tile_width == 0;
                    if (fresh) TIFFReadTile(file, bytes.data(), x, y, 0, std::uint16_t(plane));
                    place = std::size_t(y % tile_height) * tile_width + x % tile_width;
                } else if (x == 0) {
                    TIFFReadScanline(file, bytes.data(), y, std::uint16_t(plane));
                }
                for (int s = 0; s < unit; ++s)
                    grid.At(int(x), int(y), plane + s) =
                        Sample_In(bytes, place * std::size_t(unit) + std::size_t(s), bits);
            }
    TIFFClose(file);
    return grid;
}

/// First mirrored left to right, then turned counterclockwise: the right column becomes the topmost row.
Sample_Grid Turned_Grid(Sample_Grid grid, Pixel_Symmetry symmetry)
{
    if (symmetry.mirrored) {
        Sample_Grid mirrored = grid;
        for (int y = 0; y < grid.height; ++y)
            for (int x = 0; x < grid.width; ++x)
                for (int s = 0; s < grid.samples; ++s) mirrored.At(x, y, s) = grid.At(grid.width - 1 - x, y, s);
        grid = mirrored;
    }
    for (int i = 0; i < symmetry.quarter_turns; ++i) {
        Sample_Grid turned{grid.height, grid.width, grid.samples, grid.numbers};
        for (int y = 0; y < turned.height; ++y)
            for (int x = 0; x < turned.width; ++x)
                for (int s = 0; s < grid.samples; ++s) turned.At(x, y, s) = grid.At(grid.width - 1 - y, x, s);
        grid = turned;
    }
    return grid;
}

std::string Some_Profile()
{
    std::string profile(200, '\x07');
    profile.replace(16, 4, "CMYK"); // one for other colours than a bitmap has
    return profile;
}

void Save_Turned(const Bitmap& bitmap, const std::string& from, const std::string& to)
{
    Save({.bitmap = &bitmap, .target = to, .comment = "turned", .script = "Flip(1)", .parent = from});
}

struct Turn_Case {
    const char* name;
    bool grey;
    Options options;
};

std::ostream& operator<<(std::ostream& out, const Turn_Case& row)
{
    return out << row.name;
}

class Turned_Samples : public Tiff_Folder, public testing::WithParamInterface<Turn_Case> {
protected:
    Turned_Samples()
    {
        Options options = GetParam().options;
        options.private_tags = {{65001, "nobody knows"}, {Tiff_Tag::ICC_Profile, Some_Profile()}};
        options.maker_note = "Maker note";
        const Sample_Picture picture = Meadow(75, 53, 3);
        Write_Tiff_File(Path(), GetParam().grey ? To_Grey(picture) : picture, options);
    }
};

class Turned_By_Tag : public Tiff_Folder {};

constexpr int Deflate = COMPRESSION_ADOBE_DEFLATE;

} // namespace

INSTANTIATE_TEST_SUITE_P(
    All, Turned_Samples,
    testing::Values(
        Turn_Case{"rgb_16", false, {.bits = 16}},
        Turn_Case{"rgb_16_big_endian", false, {.bits = 16, .compression = COMPRESSION_LZW, .big_endian = true}},
        Turn_Case{"rgb_16_differences", false, {.bits = 16, .compression = Deflate, .predictor = 2}},
        Turn_Case{"rgb_16_planes", false, {.bits = 16, .separate = true}},
        Turn_Case{"rgb_16_tiles", false, {.bits = 16, .tile_size = 32}},
        Turn_Case{"rgb_16_bigtiff", false, {.bits = 16, .big = true}},
        Turn_Case{"rgb_16_stored_sideways", false, {.bits = 16, .orientation = 6}},
        Turn_Case{"rgb_16_stored_mirrored", false, {.bits = 16, .orientation = 5}},
        Turn_Case{"rgb_16_alpha", false, {.bits = 16, .alpha = Options::Alpha::Unassociated}},
        Turn_Case{"rgb_8_alpha", false, {.alpha = Options::Alpha::Associated}},
        Turn_Case{"rgb_8_unknown_sample_planes", false, {.alpha = Options::Alpha::Unspecified, .separate = true}},
        Turn_Case{"grey_16", true, {.bits = 16}}, Turn_Case{"grey_32", true, {.bits = 32}},
        Turn_Case{"grey_12", true, {.bits = 12}}, Turn_Case{"grey_4_tiles", true, {.bits = 4, .tile_size = 16}},
        Turn_Case{"grey_2", true, {.bits = 2, .compression = COMPRESSION_PACKBITS}},
        Turn_Case{"black_and_white", true, {.bits = 1}},
        Turn_Case{"fax", true, {.colors = Colors::White_Is_Zero, .bits = 1, .compression = COMPRESSION_CCITTFAX4}},
        Turn_Case{"white_is_zero", true, {.colors = Colors::White_Is_Zero}},
        Turn_Case{"palette_8", false, {.colors = Colors::Palette, .compression = COMPRESSION_LZW}},
        Turn_Case{"palette_4", true, {.colors = Colors::Palette, .bits = 4}},
        Turn_Case{"cmyk_8", false, {.colors = Colors::CMYK}},
        Turn_Case{"cmyk_16_tiles", false, {.colors = Colors::CMYK, .bits = 16, .tile_size = 16}}),
    [](const auto& row) { return row.param.name; });

TEST_P(Turned_Samples, Stand_Upright_In_All_Eight_Symmetries)
{
    const Sample_Grid stored = Samples_Of(Path());
    const Bitmap upright = Loaded(Path());
    for (int number = 1; number < 8; ++number) {
        SCOPED_TRACE(number);
        const Bitmap turned = std::move(*Turned(upright, {number & 3, number > 3}));
        const Pixel_Symmetry symmetry = turned.Origin()->symmetry;
        if (symmetry == Symmetry_Of_Orientation(GetParam().options.orientation)) continue;
        Save_Turned(turned, Path(), Path("b.tif"));
        EXPECT_EQ(Turned_Grid(stored, symmetry), Samples_Of(Path("b.tif")));
        EXPECT_EQ(1U, Tag_Number(Path("b.tif"), Tiff_Tag::Orientation, 1));
        EXPECT_TRUE(Same_Pixels(turned.View(), Loaded(Path("b.tif")).View()));
    }
}

TEST_P(Turned_Samples, Keep_What_Tells_Of_Their_Colours_And_All_Foreign_Tags)
{
    const Bitmap turned = std::move(*Turned(Loaded(Path()), {1, false}));
    Save_Turned(turned, Path(), Path("b.tif"));
    for (const int tag : {TIFFTAG_BITSPERSAMPLE, TIFFTAG_PHOTOMETRIC, TIFFTAG_SAMPLESPERPIXEL, TIFFTAG_COLORMAP,
                          TIFFTAG_EXTRASAMPLES, TIFFTAG_INKSET, TIFFTAG_SAMPLEFORMAT, TIFFTAG_ICCPROFILE, 65001})
        EXPECT_EQ(Tag_Value(Path(), std::uint16_t(tag)), Tag_Value(Path("b.tif"), std::uint16_t(tag))) << tag;
    EXPECT_EQ("Maker note", Text_Of(EXIF_Tag_Value(Path("b.tif"), Tiff_Tag::Maker_Note)));
    EXPECT_EQ("turned", Comment(Path("b.tif")));
    EXPECT_EQ("Flip(1)", Script(Path("b.tif")));
}

TEST_P(Turned_Samples, Are_The_First_Ones_After_Four_Turns_Over_Themselves)
{
    const Sample_Grid before = Turned_Grid(Samples_Of(Path()), Symmetry_Of_Orientation(GetParam().options.orientation));
    for (int i = 0; i < 4; ++i) {
        const Bitmap turned = std::move(*Turned(Loaded(Path()), {1, false}));
        Save_Turned(turned, Path(), Path());
    }
    EXPECT_EQ(before, Samples_Of(Path()));
}

TEST_P(Turned_Samples, Are_Told_To_Lose_Nothing_Until_A_Pixel_Changes)
{
    Bitmap turned = std::move(*Turned(Loaded(Path()), {3, true}));
    const auto parent = Open_File(Path());
    EXPECT_TRUE(TIFF_Codec().Keeps_All(turned, parent));
    EXPECT_EQ(!turned.Origin()->reduced, JPEG_Codec().Keeps_All(turned, parent));
    turned.Change();
    EXPECT_FALSE(TIFF_Codec().Keeps_All(turned, parent));
}

TEST_F(Turned_By_Tag, A_Turn_Leaves_All_Pages_And_Their_Coded_Data)
{
    Write_Tiff_File(Path(), Meadow(75, 53, 3),
                    {.bits = 16, .horizontal_resolution = 300, .vertical_resolution = 150, .pages = 3});
    const auto before = File_Bytes(Path());
    const Sample_Grid stored = Samples_Of(Path());
    const Bitmap turned = std::move(*Turned(Loaded(Path()), {1, false}));
    EXPECT_TRUE(TIFF_Codec().Keeps_All(turned, Open_File(Path())));
    Save({.bitmap = &turned, .target = Path("b.tif"), .parent = Path(), .horizontal_dpi = 150, .vertical_dpi = 300});
    const auto after = File_Bytes(Path("b.tif"));
    ASSERT_GT(after.size(), before.size());
    EXPECT_TRUE(std::equal(before.begin() + 8, before.end(), after.begin() + 8));
    EXPECT_EQ(stored, Samples_Of(Path("b.tif")));
    EXPECT_EQ(8U, Tag_Number(Path("b.tif"), Tiff_Tag::Orientation));
    EXPECT_EQ(Tag_Value(Path(), Tiff_Tag::X_Resolution), Tag_Value(Path("b.tif"), Tiff_Tag::X_Resolution));
    EXPECT_TRUE(Same_Pixels(turned.View(), Loaded(Path("b.tif")).View()));
    EXPECT_EQ(53, Facts(Path("b.tif")).width);
}

TEST_F(Turned_By_Tag, Four_Turns_Come_Back_To_The_First_Orientation)
{
    Write_Tiff_File(Path(), Meadow(75, 53, 3), {.orientation = 6, .pages = 2});
    const Bitmap before = Loaded(Path());
    const Sample_Grid stored = Samples_Of(Path());
    for (int i = 0; i < 4; ++i) {
        const Bitmap turned = std::move(*Turned(Loaded(Path()), {1, false}));
        Save_Turned(turned, Path(), Path());
    }
    EXPECT_EQ(6U, Tag_Number(Path(), Tiff_Tag::Orientation));
    EXPECT_EQ(stored, Samples_Of(Path()));
    EXPECT_TRUE(Same_Pixels(before.View(), Loaded(Path()).View()));
}

TEST_F(Turned_By_Tag, Colours_That_Only_The_Library_Knows_Are_Not_Converted)
{
    Write_Tiff_File(Path(), Meadow(75, 53, 3), {.colors = Colors::Lab});
    const Sample_Grid stored = Samples_Of(Path());
    const Bitmap turned = std::move(*Turned(Loaded(Path()), {2, false}));
    Save_Turned(turned, Path(), Path("b.tif"));
    EXPECT_EQ(stored, Samples_Of(Path("b.tif")));
    EXPECT_EQ(3U, Tag_Number(Path("b.tif"), Tiff_Tag::Orientation));
    EXPECT_TRUE(Same_Pixels(turned.View(), Loaded(Path("b.tif")).View()));
}

TEST_F(Turned_By_Tag, A_Bitmap_Of_Another_File_Is_Written_As_It_Is)
{
    Write_Tiff_File(Path(), Meadow(75, 53, 3), {.bits = 16});
    Write_Tiff_File(Path("other.tif"), Meadow(75, 53, 4), {.bits = 16});
    const Bitmap turned = std::move(*Turned(Loaded(Path("other.tif")), {1, false}));
    EXPECT_FALSE(TIFF_Codec().Keeps_All(turned, Open_File(Path())));
    Save_Turned(turned, Path(), Path("b.tif"));
    EXPECT_TRUE(Same_Pixels(turned.View(), Loaded(Path("b.tif")).View()));
    EXPECT_EQ(8U, Tag_Number(Path("b.tif"), Tiff_Tag::Bits_Per_Sample));
}
