#include "imaging/Script_Interpreter.h"

#include "imaging/Tone_Tables.h"
#include "tests/imaging/Small_Pictures.h"

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <gtest/gtest.h>

namespace {

QString Q(const char* text)
{
    return QString::fromUtf8(text);
}

Script_Item_Array Items(const char* script)
{
    Script_Item_Array items;
    EXPECT_EQ(Parse_Script_Items(Q(script), items), Script_Status::Complete);
    return items;
}

int Ramp(int x, int y)
{
    return (x * 10) << 16 | (y * 10) << 8 | (x + y);
}

/// Every test ends with as many bitmaps as it began with.
class Interpreter : public testing::Test {
protected:
    void TearDown() override
    {
        start.Reset();
        EXPECT_EQ(Bitmap_Count(), 0);
    }
    std::vector<int> Result(const char* script, const Script_Run& run = {})
    {
        const Bitmap_Handle result = Apply_Script_Items(start.Get(), Items(script), run);
        size = Size_Of_Bitmap(result);
        const auto colors = Colors_Of(result);
        if (result != start.Get()) Delete_Bitmap(result);
        return colors;
    }
    /// What a script leaves as it is.
    void Expect_Unchanged(const char* script, const Script_Run& run = {})
    {
        const Bitmap_Handle result = Apply_Script_Items(start.Get(), Items(script), run);
        EXPECT_EQ(result, start.Get()) << script;
        if (result != start.Get()) Delete_Bitmap(result);
    }
    Owned_Bitmap start{Drawn_Bitmap(20, 12, Ramp)};
    Pixel_Size size;
};

TEST_F(Interpreter, Without_Items_The_Picture_Is_The_One_Given)
{
    Expect_Unchanged("");
}

TEST_F(Interpreter, Crop_Cuts_Margins_Off)
{
    const auto colors = Result("Crop(1,2,3,4)");
    EXPECT_EQ(size, (Pixel_Size{16, 6}));
    EXPECT_EQ(colors.front(), Ramp(1, 2));
    EXPECT_EQ(colors.back(), Ramp(16, 7));
}

TEST_F(Interpreter, Crop_Margins_Turn_With_The_Picture)
{
    // Turned by 90 degrees counterclockwise, the old left edge is at the bottom.
    const auto colors = Result("Crop(5,0,0,0)", {.rotation = 90});
    EXPECT_EQ(size, (Pixel_Size{20, 7}));
    EXPECT_EQ(colors.front(), Ramp(0, 0));
}

TEST_F(Interpreter, Crop_That_Leaves_Nothing_Is_Passed_Over)
{
    Expect_Unchanged("Crop(15,0,10,0)");
    Expect_Unchanged("Crop(0,0,0,12)");
    Expect_Unchanged("Crop(x");
    Expect_Unchanged("Crop(2147483647,2147483647,0,0)");
    Expect_Unchanged("Crop(-5,0,0,0)");
}

TEST_F(Interpreter, Crop_Is_Reduced_By_Rounding_For_Files_And_Cut_Off_For_Thumbnails)
{
    Result("Crop(7,5,0,0)", {.divisor = 2});
    EXPECT_EQ(size, (Pixel_Size{16, 10})) << "3.5 goes to 4, 2.5 to 2";
    Result("Crop(7,5,0,0)", {.divisor = 2, .margin_division = Margin_Division::Truncated});
    EXPECT_EQ(size, (Pixel_Size{17, 10})) << "3 and 2";
}

TEST_F(Interpreter, Thumbnail_With_Margins_Below_The_Divisor_Is_Not_Cut)
{
    bool is_copy = false;
    const Owned_Bitmap result(Adjusted_Thumbnail(start.Get(), Items("Crop(7,7,7,7)"), 8, 0, is_copy));
    EXPECT_TRUE(is_copy);
    EXPECT_EQ(Colors_Of(result.Get()), Colors_Of(start.Get()));
}

TEST_F(Interpreter, Thumbnail_Without_Items_Is_The_Cached_One)
{
    bool is_copy = true;
    EXPECT_EQ(Adjusted_Thumbnail(start.Get(), {}, 8, 0, is_copy), start.Get());
    EXPECT_FALSE(is_copy);
    EXPECT_EQ(Adjusted_Thumbnail(start.Get(), Items("SatVal(10,1);Crop(x"), 8, 0, is_copy), start.Get());
    EXPECT_FALSE(is_copy);
}

TEST_F(Interpreter, Thumbnail_Crops_What_The_Turned_Picture_Shows_There)
{
    bool is_copy = false;
    const Owned_Bitmap result(Adjusted_Thumbnail(start.Get(), Items("Crop(8,0,0,0)"), 1, 90, is_copy));
    EXPECT_EQ(Size_Of_Bitmap(result.Get()), (Pixel_Size{20, 4}))
        << "the left margin of the file is the bottom one here";
}

TEST_F(Interpreter, SatVal_Acts_Within_Its_Limits_Only)
{
    Expect_Unchanged("SatVal(10,1)");
    Expect_Unchanged("SatVal(1,0.09)");
    Expect_Unchanged("SatVal(1)");
    EXPECT_NE(Result("SatVal(9.9,0.1)"), Colors_Of(start.Get()));
    EXPECT_EQ(Result("SatVal(1,1)").size(), 240U);
}

TEST_F(Interpreter, ColBal_Scales_Channels)
{
    EXPECT_EQ(Result("ColBal(0,1,2)")[20 + 3], 0 << 16 | 10 << 8 | 8);
    EXPECT_EQ(Result("ColBal(1,1,1)"), Colors_Of(start.Get()));
}

TEST_F(Interpreter, ColBal_That_Is_Damaged_Acts_With_What_Was_Read)
{
    // The blue field is missing: its sentinel makes the table black.
    EXPECT_EQ(Result("ColBal(1,1,x)")[20 + 3], Ramp(3, 1) & 0xFFFF00);
}

TEST_F(Interpreter, Gamma_Maps_Each_Channel)
{
    EXPECT_EQ(Result("Gamma(0,1,255,0,1,255,0,1,255)"), Colors_Of(start.Get()));
    EXPECT_EQ(Result("Gamma(30,1,30,0,1,255,0,1,255)")[4], 255 << 16 | 0 << 8 | 4);
}

TEST_F(Interpreter, Gamma_That_Is_Damaged_Turns_White_Or_Does_Nothing)
{
    // Black of green is missing: everything above it is white.
    const auto colors = Result("Gamma(0,1,255,x");
    EXPECT_EQ(colors, Colors_Of(start.Get())) << "green and blue gamma 0 give no table";
    Expect_Unchanged("Gamma(0,0,255,0,1,255,0,1,255)");
    Expect_Unchanged("Gamma(0,1.2.3,255,0,1,255,0,1,255)");
}

TEST_F(Interpreter, Contrast_In_RGB_Stretches_Each_Channel)
{
    const auto colors = Result("ConOpt(0,0,RGB)");
    EXPECT_EQ(colors.front() & 0xFFFF00, 0);
    // Each channel ends one level below where the allowance of nothing runs out.
    EXPECT_EQ(colors.back(), 254 << 16 | 253 << 8 | 247);
}

TEST_F(Interpreter, Contrast_Of_One_Level_With_Both_Sides_Off_Is_Passed_Over)
{
    start.Reset(Drawn_Bitmap(4, 4, [](int, int) { return 0x404040; }));
    Expect_Unchanged("ConOpt(-1,-1,RGB)");
    Expect_Unchanged("ConOpt(-1,-1,LUM)");
}

TEST_F(Interpreter, Contrast_Of_Black_Does_Not_Fail)
{
    start.Reset(Drawn_Bitmap(4, 4, [](int, int) { return 0; }));
    EXPECT_EQ(Result("ConOpt(0.005,0.005,RGB)"), std::vector<int>(16, 0));
}

TEST_F(Interpreter, Contrast_Without_Mode_Is_Passed_Over)
{
    Expect_Unchanged("ConOpt(0.005,0.005)");
}

TEST_F(Interpreter, Scale_Is_Not_Reduced_By_The_Divisor)
{
    Result("Scale(40,30,Triangle,300,300)", {.divisor = 8});
    EXPECT_EQ(size, (Pixel_Size{40, 30}));
}

TEST_F(Interpreter, Scale_Without_Method_Is_Passed_Over)
{
    Expect_Unchanged("Scale(40,30,,300,300)");
    Expect_Unchanged("Scale(40,30,B-Spline,300,300)");
    Expect_Unchanged("Scale(0,30,Box,300,300)");
}

TEST_F(Interpreter, Crop_Behind_A_Scale_Is_Reduced_All_The_Same)
{
    Result("Scale(40,30,Box,-1,-1);Crop(8,0,0,0)", {.divisor = 4});
    EXPECT_EQ(size, (Pixel_Size{38, 30}));
}

TEST_F(Interpreter, Sharpen_And_Blur_Run)
{
    EXPECT_EQ(Result("Unsharp(0.75,0.25,1.5,2,5,K)").size(), 240U);
    EXPECT_EQ(Result("Blur(2,0,RGB)"), Colors_Of(start.Get()));
    EXPECT_NE(Result("Blur(2,100,RGB)"), Colors_Of(start.Get()));
    Expect_Unchanged("Blur(x");
}

/// A picture and rows in which no two fields are alike: a field in another's place shows.
class Fields : public Interpreter {
protected:
    Fields()
    {
        start.Reset(Drawn_Bitmap(20, 12, [](int x, int y) { return int((unsigned(x * 31 + y) * 2654435761U) >> 8); }));
    }
    static std::vector<int> Taken(Bitmap_Handle result)
    {
        const Owned_Bitmap owned(Count_Bitmap(result));
        EXPECT_TRUE(bool(owned));
        return Colors_Of(owned.Get());
    }
    std::vector<int> Mapped(const Tone_Table& red, const Tone_Table& green, const Tone_Table& blue)
    {
        return Taken(Create_RGB_Luminance_Table_Mapped_Bitmap_CPP(start.Get(), Component_RGB, red.data(), green.data(),
                                                                  blue.data(), nullptr));
    }
    Tone_Table Clip_Table_Of(int component, float shadow_clip, float highlight_clip)
    {
        Histogram_Counts counts{};
        std::int32_t samples = 0;
        Tone_Table table{};
        EXPECT_TRUE(Compute_Bitmap_Color_Component_Histogram_CPP(start.Get(), component, counts.data(), &samples));
        EXPECT_TRUE(Build_Clip_Table(counts, samples, shadow_clip, highlight_clip, table));
        return table;
    }
};

TEST_F(Fields, Of_ConOpt)
{
    EXPECT_EQ(Result("ConOpt(0.1,0.02,LUM)"), Taken(Create_Contrast_Optimized_Bitmap_CPP(start.Get(), 0.1F, 0.02F)));
    EXPECT_EQ(Result("ConOpt(0.1,0.02,RGB)"),
              Mapped(Clip_Table_Of(Component_Red, 0.1F, 0.02F), Clip_Table_Of(Component_Green, 0.1F, 0.02F),
                     Clip_Table_Of(Component_Blue, 0.1F, 0.02F)));
}

TEST_F(Fields, Of_SatVal)
{
    Tone_Table saturation, value;
    Build_Scale_Table(0.5F, saturation);
    Build_Scale_Table(1.4F, value);
    EXPECT_EQ(Result("SatVal(0.5,1.4)"),
              Taken(Create_HSV_Table_Mapped_Bitmap_CPP(start.Get(), saturation.data(), value.data())));
}

TEST_F(Fields, Of_ColBal)
{
    Tone_Table red, green, blue;
    Build_Scale_Table(0.5F, red);
    Build_Scale_Table(1.2F, green);
    Build_Scale_Table(1.7F, blue);
    EXPECT_EQ(Result("ColBal(0.5,1.2,1.7)"), Mapped(red, green, blue));
}

TEST_F(Fields, Of_Gamma)
{
    Tone_Table red, green, blue;
    ASSERT_TRUE(Build_Black_Gamma_White_Table(10, 1.5, 240, red));
    ASSERT_TRUE(Build_Black_Gamma_White_Table(20, 0.7, 230, green));
    ASSERT_TRUE(Build_Black_Gamma_White_Table(30, 2, 220, blue));
    EXPECT_EQ(Result("Gamma(10,1.5,240,20,0.7,230,30,2,220)"), Mapped(red, green, blue));
    for (const char* one_without_a_table : {"Gamma(10,0,240,20,1,230,30,1,220)", "Gamma(10,1,240,20,0,230,30,1,220)",
                                            "Gamma(10,1,240,20,1,230,30,0,220)"})
        Expect_Unchanged(one_without_a_table);
}

TEST_F(Fields, Of_Scale)
{
    EXPECT_EQ(Result("Scale(33,21,Mitchell,300,200)"), Taken(Create_Scaled_Bitmap_CPP(start.Get(), 33, 21, 8)));
    EXPECT_EQ(size, (Pixel_Size{33, 21}));
}

TEST_F(Fields, Of_Unsharp)
{
    EXPECT_EQ(Result("Unsharp(2,0.5,1.5,3,19,G)"),
              Taken(Create_Unsharp_Masked_Bitmap_CPP(start.Get(), 2, 0.5F, 1.5F, 3, 19, Component_Green)));
}

TEST_F(Fields, Of_Blur)
{
    EXPECT_EQ(Result("Blur(2.5,60,GB)"),
              Taken(Create_Blurred_Bitmap_CPP(start.Get(), 2.5F, 60, Component_Green | Component_Blue)));
}

TEST_F(Interpreter, An_Item_That_Fails_Does_Not_Stop_The_Script)
{
    Result("Crop(99,99,99,99);Swirl(3);Gamma(1.2.3);Crop(1,0,0,0);Scale(1);Crop(1,0,0,0)");
    EXPECT_EQ(size, (Pixel_Size{18, 12}));
}

TEST_F(Interpreter, Own_Bitmap_Is_Released_On_The_Way)
{
    const Owned_Bitmap result(
        Apply_Script_Items_To_Own(start.Release(), Items("Crop(1,0,0,0);Blur(2,50,RGB);Crop(0,1,0,0)"), {}));
    EXPECT_EQ(Size_Of_Bitmap(result.Get()), (Pixel_Size{19, 11}));
    EXPECT_EQ(Bitmap_Count(), 1);
}

struct Painting_Renderer : Text_Item_Renderer {
    bool Render(Bitmap_Handle, const QString& new_body, int new_divisor, int new_rotation) override
    {
        body = new_body;
        divisor = new_divisor;
        rotation = new_rotation;
        return draws;
    }
    QString body;
    int divisor = 0, rotation = -1;
    bool draws = true;
};

TEST_F(Interpreter, Text_Does_Nothing_Without_A_Renderer)
{
    Expect_Unchanged("Text(\"hello\")");
}

TEST_F(Interpreter, Text_Is_Drawn_On_A_Copy)
{
    Painting_Renderer renderer;
    Install_Text_Item_Renderer(&renderer);
    EXPECT_EQ(Result("Text(\"a;b\")", {.divisor = 4, .rotation = 450}), Colors_Of(start.Get()));
    EXPECT_EQ(renderer.body, Q("a;b"));
    EXPECT_EQ(renderer.divisor, 4);
    EXPECT_EQ(renderer.rotation, 90);
    EXPECT_EQ(Result("Text(\"say \"hi\"\")"), Colors_Of(start.Get()));
    EXPECT_EQ(renderer.body, Q("say ")) << "what was read of a damaged item acts";
    Expect_Unchanged("Text(\"\")");
    renderer.draws = false;
    Expect_Unchanged("Text(\"hello\")");
    Install_Text_Item_Renderer(nullptr);
}

TEST_F(Interpreter, Text_Is_Not_Run_Aside)
{
    EXPECT_TRUE(May_Run_Aside(Items("Crop(1,0,0,0);Blur(2,50,RGB)")));
    EXPECT_TRUE(May_Run_Aside({}));
    EXPECT_FALSE(May_Run_Aside(Items("Text(\"a;b\");Crop(1,0,0,0)")));
}

TEST_F(Interpreter, A_Stop_Lets_No_Further_Item_Begin)
{
    std::atomic<bool> stop = true;
    Expect_Unchanged("Crop(1,0,0,0)", {.stop = &stop});
    stop = false;
    EXPECT_NE(Result("Crop(1,0,0,0)", {.stop = &stop}), Colors_Of(start.Get()));
}

// ---- crop margins ----

struct Margin_Case {
    int degrees;
    std::array<int, 4> expected;
};

class Crop_Margins : public testing::TestWithParam<Margin_Case> {};

TEST_P(Crop_Margins, Turn)
{
    int left = 1, top = 2, right = 3, bottom = 4;
    Rotate_Crop_Margins(left, top, right, bottom, GetParam().degrees);
    EXPECT_EQ((std::array{left, top, right, bottom}), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(All, Crop_Margins,
                         testing::Values(Margin_Case{0, {1, 2, 3, 4}}, Margin_Case{90, {2, 3, 4, 1}},
                                         Margin_Case{180, {3, 4, 1, 2}}, Margin_Case{270, {4, 1, 2, 3}},
                                         Margin_Case{-90, {4, 1, 2, 3}}, Margin_Case{450, {2, 3, 4, 1}},
                                         Margin_Case{45, {1, 2, 3, 4}}, Margin_Case{360, {1, 2, 3, 4}}));

// ---- components ----

TEST_F(Interpreter, Components_Are_Taken_Out)
{
    const auto component = [&](int mask) {
        const Owned_Bitmap plane(Extract_Color_Component(start.Get(), mask));
        return Colors_Of(plane.Get());
    };
    EXPECT_EQ(component(Component_Red)[3], 30);
    EXPECT_EQ(component(Component_Green)[20], 10);
    EXPECT_EQ(component(Component_Blue)[20 + 3], 4);
    EXPECT_EQ(component(Component_Luminance)[0], 0);
    EXPECT_EQ(component(Component_Black).size(), 240U);
    const Owned_Bitmap grey(Drawn_Bitmap(
        2, 1, [](int x, int) { return 70 + x; }, 1));
    EXPECT_EQ(Colors_Of(Owned_Bitmap(Extract_Color_Component(grey.Get(), Component_Green)).Get()),
              (std::vector{70, 71}));
    EXPECT_TRUE(component(Component_RGB).empty()) << "one component only";
    EXPECT_TRUE(component(0).empty());
}

TEST_F(Interpreter, Components_Of_Ink_Follow_The_Split)
{
    start.Reset(Drawn_Bitmap(1, 1, [](int, int) { return 0xC86432; })); // 200, 100, 50: inks of 55, 155, 205
    const auto plane = [&](int mask) {
        return Colors_Of(Owned_Bitmap(Extract_Color_Component(start.Get(), mask)).Get());
    };
    const int black = 12; // (55 / 255) squared
    EXPECT_EQ(plane(Component_Black), std::vector{255 - black});
    EXPECT_EQ(plane(Component_Cyan), std::vector{255 - (55 - black)});
    EXPECT_EQ(plane(Component_Magenta), std::vector{255 - (155 - black)});
    EXPECT_EQ(plane(Component_Yellow), std::vector{255 - (205 - black)});
}

TEST_F(Interpreter, A_Component_That_Leaves_The_Levels_Gives_No_Bitmap)
{
    start.Reset(Drawn_Bitmap(1, 1, [](int, int) { return 0xFFFF00; }));
    Set_CMYK_Parameters_CPP(0.5F, 0, 4); // hardly any ink is allowed: more is taken away than there is
    EXPECT_EQ(Extract_Color_Component(start.Get(), Component_Cyan), 0);
    Set_CMYK_Parameters_CPP(0.5F, 0, 765);
    EXPECT_NE(Owned_Bitmap(Extract_Color_Component(start.Get(), Component_Cyan)).Get(), 0);
}

// ---- files ----

class Picture_Files : public testing::Test {
protected:
    void SetUp() override
    {
        const Owned_Bitmap picture(Drawn_Bitmap(20, 12, Ramp));
        File_Contents contents;
        contents.comment = Q("Grüße");
        contents.script = Q("Crop(1,2,3,4)");
        contents.quality = 95;
        contents.horizontal_dpi = contents.vertical_dpi = 300;
        ASSERT_TRUE(Save_Bitmap(picture.Get(), path, 2, contents)) << Last_Image_Error().toStdString();
    }
    void TearDown() override { EXPECT_EQ(Bitmap_Count(), 0); }
    QTemporaryDir folder;
    QString path = folder.filePath(Q("Bild ä.tif"));
};

TEST_F(Picture_Files, Texts_Come_Back)
{
    EXPECT_EQ(File_Type_From_Signature(path), 2);
    EXPECT_EQ(Get_Comment(path, 0), Q("Grüße"));
    EXPECT_EQ(Get_Image_Script(path, 0), Q("Crop(1,2,3,4)"));
    EXPECT_TRUE(Get_EXIF_Data(path, 0).isEmpty());
    File_Dimensions facts;
    ASSERT_TRUE(Get_Dimensions(path, 0, facts));
    EXPECT_EQ(facts.width, 20);
    EXPECT_EQ(facts.height, 12);
    EXPECT_EQ(facts.horizontal_dpi, 300);
}

TEST_F(Picture_Files, Load_Rotate_Flip)
{
    const Owned_Bitmap plain(Load_Picture_Bitmap(path, 0, 1, 0, 0));
    EXPECT_EQ(Colors_Of(plain.Get())[0], Ramp(0, 0));
    const Owned_Bitmap mirrored(Load_Picture_Bitmap(path, 0, 1, 360, 1));
    EXPECT_EQ(Colors_Of(mirrored.Get())[0], Ramp(19, 0)) << "the first kind goes left to right";
    const Owned_Bitmap upside_down(Load_Picture_Bitmap(path, 2, 1, 0, 2));
    EXPECT_EQ(Colors_Of(upside_down.Get())[0], Ramp(0, 11));
    const Owned_Bitmap turned(Load_Picture_Bitmap(path, 2, 1, 90, 3));
    EXPECT_EQ(Size_Of_Bitmap(turned.Get()), (Pixel_Size{12, 20}));
    EXPECT_EQ(Colors_Of(turned.Get())[0], Ramp(0, 11)) << "turned first, flipped then";
}

TEST_F(Picture_Files, Load_And_Run_The_Script)
{
    const Owned_Bitmap adjusted(Load_Adjusted_Picture({.path = path, .rotation = 90}, Items("Crop(5,0,0,0)")));
    EXPECT_EQ(Size_Of_Bitmap(adjusted.Get()), (Pixel_Size{12, 15}));
}

TEST_F(Picture_Files, Load_Reduced_And_Run_The_Script_At_That_Scale)
{
    const Owned_Bitmap adjusted(Load_Adjusted_Picture({.path = path, .scale_divisor = 2}, Items("Crop(4,0,0,0)")));
    EXPECT_EQ(Size_Of_Bitmap(adjusted.Get()), (Pixel_Size{8, 6}));
}

TEST_F(Picture_Files, A_Missing_File_Gives_Nothing_And_Its_Reason_Is_Kept)
{
    EXPECT_EQ(Load_Adjusted_Picture({.path = folder.filePath(Q("none.tif"))}, {}), 0);
    EXPECT_TRUE(Last_Load_Error().contains(Q("none.tif"))) << Last_Load_Error().toStdString();
    EXPECT_TRUE(Get_Comment(folder.filePath(Q("none.tif")), 0).isEmpty());
}

TEST_F(Picture_Files, Flips_Of_No_Kind_Give_Nothing)
{
    const Owned_Bitmap plain(Load_Picture_Bitmap(path, 0, 1, 0, 0));
    EXPECT_EQ(Flip_Bitmap(plain.Get(), 0), 0);
    EXPECT_EQ(Flip_Bitmap(plain.Get(), 3), 0);
}

} // namespace
