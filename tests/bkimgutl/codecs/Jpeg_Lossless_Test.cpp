#include "tests/bkimgutl/codecs/Jpeg_Fixture.h"

namespace {

using Colors = Jpeg_File_Options::Colors;

class Jpeg_Lossless : public Jpeg_Fixture {
protected:
    static Pixel_Symmetry Turn(int quarters) { return {.quarter_turns = quarters, .mirrored = false}; }
};

TEST_F(Jpeg_Lossless, A_Hundred_Text_Saves_Leave_The_Coded_Data_As_It_Is)
{
    const std::string path =
        Put("a.jpg", Jpeg_File(Meadow(101, 67, 1), {.quality = 60, .segments = {{0xE1, Camera_Block({})}}}));
    const File_Bytes first = Get(path);
    for (int i = 0; i < 100; ++i) {
        const std::string text = "text " + std::to_string(i);
        ASSERT_TRUE(Save(Load(path), path, {.comment = text, .script = text, .parent = path})) << Error_Text();
        ASSERT_EQ(text, Comment(path));
        ASSERT_EQ(text, Script(path));
    }
    EXPECT_EQ(Coded_Data(first), Coded_Data(Get(path)));
    EXPECT_EQ(Decode_Plainly(first).bytes, Decode_Plainly(Get(path)).bytes);
    EXPECT_LT(Get(path).size(), first.size() + 100);
}

TEST_F(Jpeg_Lossless, What_Stands_Behind_The_Picture_Stays)
{
    File_Bytes file = Jpeg_File(Meadow(64, 48, 1));
    for (int i = 0; i < 3000; ++i) file.push_back(std::uint8_t(i));
    const std::string path = Put("a.jpg", file);
    ASSERT_TRUE(Save(Load(path), path, {.comment = "c", .parent = path})) << Error_Text();
    EXPECT_EQ(Coded_Data(file), Coded_Data(Get(path)));
}

TEST_F(Jpeg_Lossless, The_Original_May_Stand_Aside_Under_Another_Name)
{
    const std::string path = Put("a.jpg", Jpeg_File(Meadow(64, 48, 1)));
    const File_Bytes first = Get(path);
    const auto bitmap = Load(path);
    std::filesystem::rename(path, path + "~");
    ASSERT_TRUE(Save(bitmap, path, {.comment = "c", .parent = path + "~"})) << Error_Text();
    EXPECT_EQ(Coded_Data(first), Coded_Data(Get(path)));
}

TEST_F(Jpeg_Lossless, A_File_That_Changed_Meanwhile_Is_Not_Taken_For_The_Bitmap)
{
    const std::string path = Put("a.jpg", Jpeg_File(Meadow(64, 48, 1)));
    const auto bitmap = Load(path);
    Put("a.jpg", Jpeg_File(Meadow(64, 48, 77), {.quality = 80}));
    ASSERT_TRUE(Save(bitmap, Path("b.jpg"), {.parent = path})) << Error_Text();
    EXPECT_TRUE(Pixels_Within(70, bitmap->View(), Load(Path("b.jpg"))->View()));
    EXPECT_NE(Coded_Data(Get(path)), Coded_Data(Get(Path("b.jpg"))));
}

TEST_F(Jpeg_Lossless, Another_Quality_Encodes_Anew)
{
    const std::string path = Put("a.jpg", Jpeg_File(Meadow(64, 48, 1), {.quality = 50}));
    ASSERT_TRUE(Save(Load(path), Path("b.jpg"), {.parent = path, .quality = 75})) << Error_Text();
    EXPECT_EQ(75, Estimated_Quality(*Regular_File::Open(Path("b.jpg"))));
}

struct Turn_Kind {
    const char* name;
    Jpeg_File_Options options;
    bool grey = false;
    int width = 96; ///< whole units of every sampling here
    int height = 64;
};

class Jpeg_Turns : public Jpeg_Lossless, public testing::WithParamInterface<Turn_Kind> {
protected:
    std::string Made(const std::string& name) const
    {
        const Sample_Picture picture = Meadow(GetParam().width, GetParam().height, 4);
        return Put(name, Jpeg_File(GetParam().grey ? To_Grey(picture) : picture, GetParam().options));
    }
};

bool Has_Restart_Markers(const File_Bytes& file)
{
    const std::uint8_t interval[] = {0xFF, 0xDD, 0, 4};
    return std::search(file.begin(), file.end(), std::begin(interval), std::end(interval)) != file.end();
}

TEST_P(Jpeg_Turns, Four_By_90_Give_The_First_Pixels_Back)
{
    const std::string path = Made("a.jpg");
    const Plain_Decode first = Decode_Plainly(Get(path));
    const bool restarts = Has_Restart_Markers(Get(path));
    EXPECT_EQ(GetParam().options.restart_rows > 0, restarts);
    for (int i = 1; i <= 4; ++i) {
        ASSERT_TRUE(Save(Load(path, 1, 90), path, {.parent = path})) << Error_Text();
        if (i == 1) {
            EXPECT_EQ(first.width, Decode_Plainly(Get(path)).height);
        }
    }
    const Plain_Decode last = Decode_Plainly(Get(path));
    EXPECT_EQ(first.bytes, last.bytes);
    EXPECT_EQ(first.tables, last.tables);
    EXPECT_EQ(first.sampling, last.sampling);
    EXPECT_EQ(first.progressive, last.progressive);
    EXPECT_EQ(restarts, Has_Restart_Markers(Get(path)));
}

TEST_P(Jpeg_Turns, Every_Turn_Shows_What_Was_Asked_For)
{
    const std::string path = Made("a.jpg");
    for (const int degrees : {90, 180, 270}) {
        const auto turned = Load(path, 1, degrees);
        ASSERT_TRUE(Save(turned, Path("b.jpg"), {.parent = path})) << Error_Text();
        const auto again = Load(Path("b.jpg"));
        ASSERT_TRUE(again) << Error_Text();
        // The decoder's rounding and its way to enlarge colours are not symmetric to the last level.
        EXPECT_TRUE(Pixels_Within(40, turned->View(), again->View())) << degrees;
        double sum = 0;
        for (int y = 0; y < turned->Height(); ++y) {
            for (std::size_t i = 0; i < turned->View().Row_Bytes(); ++i)
                sum += std::abs(int(turned->View().Row(y)[i]) - int(again->View().Row(y)[i]));
        }
        EXPECT_LT(sum / (double(turned->Height()) * double(turned->View().Row_Bytes())), 1.0) << degrees;
    }
}

INSTANTIATE_TEST_SUITE_P(
    All, Jpeg_Turns,
    testing::Values(Turn_Kind{"usual", {}}, Turn_Kind{"progressive", {.progressive = true}},
                    Turn_Kind{"grey", {}, true, 40, 24}, Turn_Kind{"restart_markers", {.restart_rows = 1}},
                    Turn_Kind{"full_colour", {.horizontal_sampling = 1, .vertical_sampling = 1}},
                    Turn_Kind{"half_width", {.horizontal_sampling = 2, .vertical_sampling = 1}},
                    Turn_Kind{"quarter_width", {.horizontal_sampling = 4, .vertical_sampling = 1}},
                    Turn_Kind{"stored_as_rgb",
                              {.horizontal_sampling = 1, .vertical_sampling = 1, .colors = Colors::RGB}},
                    Turn_Kind{"ink", {.horizontal_sampling = 1, .vertical_sampling = 1, .colors = Colors::CMYK}},
                    Turn_Kind{"ink_transformed", {.colors = Colors::YCCK}}),
    [](const auto& row) { return row.param.name; });

/// A bitmap as all eight symmetries of a file, with the origin that the library's own turns and flips leave.
Held_Bitmap Under(const Bitmap_View& from, Pixel_Symmetry symmetry, const Pixel_Origin& origin)
{
    const bool swaps = symmetry.Swaps_Sides();
    auto to = *Bitmap::Create(swaps ? from.height : from.width, swaps ? from.width : from.height, from.bytes_per_pixel);
    auto view = to.Change();
    for (int y = 0; y < from.height; ++y) {
        for (int x = 0; x < from.width; ++x) {
            int px = symmetry.mirrored ? from.width - 1 - x : x;
            int py = y;
            int width = from.width;
            int height = from.height;
            for (int turn = 0; turn < symmetry.quarter_turns; ++turn) {
                const int old = px;
                px = py;
                py = width - 1 - old;
                std::swap(width, height);
            }
            std::copy_n(from.Row(y) + x * from.bytes_per_pixel, from.bytes_per_pixel,
                        view.Row(py) + px * from.bytes_per_pixel);
        }
    }
    Pixel_Origin moved = origin;
    moved.symmetry = Then(origin.symmetry, symmetry);
    to.Set_Origin(std::make_shared<const Pixel_Origin>(moved));
    return Held_Bitmap(Adopt(std::move(to)));
}

TEST_F(Jpeg_Lossless, Every_Symmetry_Of_Every_Orientation_Is_Written_Upright)
{
    // Full colour, so that only rounding is left between both ways.
    for (int orientation = 1; orientation <= 8; ++orientation) {
        const std::string path = Put(
            "a.jpg", Jpeg_File(Meadow(48, 32, 4), {.horizontal_sampling = 1,
                                                   .vertical_sampling = 1,
                                                   .segments = {{0xE1, Camera_Block({.orientation = orientation})}}}));
        const auto loaded = Load(path);
        for (int index = 0; index < 8; ++index) {
            const Pixel_Symmetry symmetry{.quarter_turns = index % 4, .mirrored = index >= 4};
            const auto bitmap = Under(loaded->View(), symmetry, *loaded->Origin());
            ASSERT_TRUE(Save(bitmap, Path("b.jpg"), {.parent = path})) << Error_Text();
            const auto again = Load(Path("b.jpg"));
            ASSERT_TRUE(again) << Error_Text();
            EXPECT_TRUE(Pixels_Within(3, bitmap->View(), again->View())) << orientation << " symmetry " << index;
            const File_Bytes exif = EXIF(Path("b.jpg"));
            const auto bytes = std::as_bytes(std::span(exif));
            EXPECT_EQ(index == 0 ? orientation : 1, Orientation_Of_EXIF_Block({bytes.begin(), bytes.end()}));
        }
    }
}

TEST_F(Jpeg_Lossless, Turning_Back_To_The_Stored_Side_Keeps_The_Data_And_Mends_The_Tag)
{
    const auto block = Camera_Block({.orientation = 6, .thumbnail = Jpeg_File(Meadow(16, 16, 1))});
    const std::string path = Put("a.jpg", Jpeg_File(Meadow(50, 30, 4), {.segments = {{0xE1, block}}}));
    const auto stored = Load(path, 1, 90); // seen clockwise by 90, then turned back
    ASSERT_TRUE(stored->Origin()->symmetry.Is_Identity());
    ASSERT_TRUE(Save(stored, Path("b.jpg"), {.parent = path})) << Error_Text();
    EXPECT_EQ(Coded_Data(Get(path)), Coded_Data(Get(Path("b.jpg"))));
    EXPECT_EQ(50, Facts(Path("b.jpg")).width);
}

TEST_F(Jpeg_Lossless, Edges_That_Are_No_Whole_Unit_Are_Encoded_Only_When_They_Must_Move)
{
    // 90 is no multiple of 16: a turn that moves the right end to the left cannot be done in whole units.
    const std::string path = Put("a.jpg", Jpeg_File(Meadow(90, 64, 4), {.quality = 30}));
    const Plain_Decode before = Decode_Plainly(Get(path));
    const auto clockwise = Load(path, 1, 270); // moves the bottom to the left, which is whole
    ASSERT_TRUE(Save(clockwise, Path("b.jpg"), {.parent = path})) << Error_Text();
    const auto counterclockwise = Load(path, 1, 90); // moves the right end to the top
    ASSERT_TRUE(Save(counterclockwise, Path("c.jpg"), {.parent = path})) << Error_Text();
    EXPECT_TRUE(Pixels_Within(80, clockwise->View(), Load(Path("b.jpg"))->View()));
    EXPECT_TRUE(Pixels_Within(80, counterclockwise->View(), Load(Path("c.jpg"))->View()));
    const auto transposed = [](const std::vector<int>& table) {
        std::vector<int> result;
        for (std::size_t i = 0; i < 64; ++i) result.push_back(table[i % 8 * 8 + i / 8]);
        return result;
    };
    EXPECT_EQ(transposed(before.tables[0]), Decode_Plainly(Get(Path("b.jpg"))).tables[0]);
    EXPECT_EQ(before.tables[0], Decode_Plainly(Get(Path("c.jpg"))).tables[0]) << "encoded, with the parent's tables";
}

TEST_F(Jpeg_Lossless, Foreign_Segments_Go_Along_With_A_Turn)
{
    using namespace std::string_view_literals;
    const std::vector<File_Segment> foreign = {Segment(0xE1, "http://ns.adobe.com/xap/1.0/\0<x/>"sv),
                                               Profile_Segment("RGB "), Segment(0xE7, "unknown", 1000)};
    const std::string path = Put("a.jpg", Jpeg_File(Meadow(96, 64, 4), {.segments = foreign}));
    ASSERT_TRUE(Save(Load(path, 1, 90), path, {.comment = "c", .parent = path})) << Error_Text();
    const auto after = Outer_Segments(Get(path));
    ASSERT_EQ(5U, after.size()); // JFIF and the comment in front
    for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(foreign[i].data, after[i + 2].data);
}

TEST_F(Jpeg_Lossless, The_Same_Save_Gives_The_Same_Bytes)
{
    const std::string path = Put("a.jpg", Jpeg_File(Meadow(96, 64, 4)));
    for (const int rotation : {0, 90}) {
        ASSERT_TRUE(Save(Load(path, 1, rotation), Path("b.jpg"), {.comment = "c", .parent = path}));
        ASSERT_TRUE(Save(Load(path, 1, rotation), Path("c.jpg"), {.comment = "c", .parent = path}));
        EXPECT_EQ(Get(Path("b.jpg")), Get(Path("c.jpg")));
    }
}

} // namespace
