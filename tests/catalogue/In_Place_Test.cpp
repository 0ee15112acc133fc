// What a save over the picture's own file must not lose: pictures that were read with errors, and files that hold more
// than a save keeps.

#include "dev/samples/Jpeg_File.h"
#include "dev/samples/Tiff_File.h"
#include "tests/catalogue/Picture_Fixture.h"

namespace {

const std::vector<int> Clear_Nothing{0};

using Scripts = Save_Options::Scripts;
using Target = Save_Options::Target;

void Put_Half_A_Jpeg(const std::string& path)
{
    const auto whole = Jpeg_File(Meadow(160, 96, 1));
    Put_File(path, std::string(whole.begin(), whole.begin() + std::ptrdiff_t(whole.size() / 2)));
}

void Put_Tiff_With_A_Bad_Strip(const std::string& path)
{
    Write_Tiff_File(path, Meadow(160, 96, 1), {.compression = 5});
    std::string bytes = Contents_Of(path);
    bytes.replace(60, 1000, 1000, '\xFF'); // the first strip stands right behind the header
    Put_File(path, bytes);
}

struct Damaged_File {
    const char* name;
    void (*put)(const std::string& path);
};

struct Route {
    const char* name;
    bool (*save)(Halvine_Form& form, int key);
};

bool Save_New_Pixels(Halvine_Form& form, int key)
{
    const Owned_Bitmap bitmap = Drawn_Bitmap(80, 50, 9);
    return form.Save_Adjusted_Picture(key, bitmap.Get(), {}, {}, Clear_Nothing, true);
}

template <int method>
bool Save_By_Method(Halvine_Form& form, int key)
{
    const Owned_Bitmap bitmap = Drawn_Bitmap(80, 50, 9);
    return form.Save_Picture(method, key, bitmap.Get(), {}, Clear_Nothing);
}

bool Save_Turned(Halvine_Form& form, int key)
{
    form.Rotate_Picture(key, 90);
    return form.Saving().Save_Rotation_And_Flips(key);
}

bool Save_Selected(Halvine_Form& form, int key, const Save_Options& options)
{
    form.Set_Picture_Key_Selected(key, true);
    return form.Save_Selected_As(options) == 1;
}

bool Save_Coded_Anew(Halvine_Form& form, int key)
{
    return Save_Selected(form, key, {.Script_Option = Scripts::Save_With, .JPEG_Quality = 80});
}

bool Save_Run_Scripts(Halvine_Form& form, int key)
{
    form.Set_Picture_All_Script_Items(key, "Crop(10,0,0,0)");
    return Save_Selected(form, key, {.Script_Option = Scripts::Run});
}

class Damaged_Picture : public Picture_Test, public testing::WithParamInterface<std::tuple<Damaged_File, Route>> {};

TEST_P(Damaged_Picture, Is_Not_Saved_Over_Its_Original)
{
    const auto& [damaged, route] = GetParam();
    damaged.put(File("a.pic"));
    const std::string before = Contents_Of(File("a.pic"));
    const int key = Pick(Path("a.pic"));
    ASSERT_NE(0, key);
    platform.dialogs.answers.assign(5, Message_Answer::Yes);
    EXPECT_FALSE(route.save(form, key));
    EXPECT_EQ(Path("a.pic") + " was read with errors and can't be saved over itself, save a copy instead.",
              Last_Message());
    EXPECT_EQ(before, Contents_Of(File("a.pic")));
    EXPECT_FALSE(Names().contains("a.pic~"));
}

INSTANTIATE_TEST_SUITE_P(
    All, Damaged_Picture,
    testing::Combine(
        testing::Values(Damaged_File{"jpeg", Put_Half_A_Jpeg}, Damaged_File{"tiff", Put_Tiff_With_A_Bad_Strip}),
        testing::Values(Route{"by_a_window", Save_New_Pixels}, Route{"after_a_snapshot", Save_By_Method<2>},
                        Route{"after_the_question", Save_By_Method<3>}, Route{"under_its_own_name", Save_By_Method<0>},
                        Route{"turned", Save_Turned}, Route{"as_selected_with_a_quality", Save_Coded_Anew},
                        Route{"as_selected_with_scripts_run", Save_Run_Scripts})),
    [](const auto& row) { return std::string(std::get<0>(row.param).name) + "_" + std::get<1>(row.param).name; });

class In_Place : public Picture_Test {
protected:
    int Pick_Damaged()
    {
        Put_Half_A_Jpeg(File("a.jpg"));
        return Pick(Path("a.jpg"));
    }
    int Pick_Deep(const QString& script = {})
    {
        Write_Tiff_File(File("deep.tif"), Meadow(160, 96, 1), {.bits = 16});
        deep_contents = Contents_Of(File("deep.tif"));
        const int key = Pick(Path("deep.tif"));
        if (!script.isEmpty()) form.Set_Picture_All_Script_Items(key, script);
        return key;
    }
    bool Original_Is_Untouched() const { return Contents_Of(File("deep.tif")) == deep_contents; }

    const QString question = Path("deep.tif") +
                             " holds more than is kept by a save (more than 8 bits, several pages or transparency), do "
                             "you wish to overwrite?\r\nTo save a copy instead, click 'No'.";
    std::string deep_contents;
};

TEST_F(In_Place, A_Damaged_Picture_Can_Be_Saved_As_A_Copy)
{
    const int key = Pick_Damaged();
    const Owned_Bitmap bitmap(form.Return_Picture(key, 0, 1));
    EXPECT_TRUE(form.Save_Adjusted_Picture(key, bitmap.Get(), Path("b.jpg"), {}, Clear_Nothing, true))
        << Last_Message().toStdString();
    const Owned_Bitmap copy(Load_Bitmap(Path("b.jpg"), 0, 1, 0));
    EXPECT_EQ(0, Get_Bitmap_Source_Warnings_CPP(copy.Get()));
}

class Damaged_Texts : public Picture_Test, public testing::WithParamInterface<Damaged_File> {};

// Where the coded data can be carried over as it is, nothing is lost; where it cannot, the save is refused.
TEST_P(Damaged_Texts, Never_Cost_A_Pixel)
{
    GetParam().put(File("a.pic"));
    const std::string before = Contents_Of(File("a.pic"));
    const int key = Pick(Path("a.pic"));
    const auto pixels = Pixels_Of(Owned_Bitmap(form.Return_Picture(key, 0, 1)).Get());
    form.Set_Picture_All_Script_Items(key, "Crop(1,2,3,4)");
    const bool saved = form.Saving().Save_Texts(key);
    EXPECT_EQ(saved ? "Crop(1,2,3,4)" : "", Get_Image_Script(Path("a.pic"), 0));
    if (!saved) {
        EXPECT_EQ(before, Contents_Of(File("a.pic")));
        EXPECT_TRUE(Last_Message().contains("was read with errors")) << Last_Message().toStdString();
    }
    const Owned_Bitmap stored(Load_Bitmap(Path("a.pic"), 0, 1, 0));
    EXPECT_EQ(1, Get_Bitmap_Source_Warnings_CPP(stored.Get()));
    EXPECT_EQ(pixels, Pixels_Of(stored.Get()));
}

INSTANTIATE_TEST_SUITE_P(All, Damaged_Texts,
                         testing::Values(Damaged_File{"jpeg", Put_Half_A_Jpeg},
                                         Damaged_File{"tiff", Put_Tiff_With_A_Bad_Strip}),
                         [](const auto& row) { return row.param.name; });

struct Rich_Case {
    const char* name;
    Tiff_File_Options options;
};

class Rich_File : public Picture_Test, public testing::WithParamInterface<Rich_Case> {};

TEST_P(Rich_File, Is_Overwritten_Only_On_Yes)
{
    Write_Tiff_File(File("a.tif"), Meadow(160, 96, 1), GetParam().options);
    const std::string before = Contents_Of(File("a.tif"));
    const int key = Pick(Path("a.tif"));
    EXPECT_FALSE(Save_New_Pixels(form, key));
    ASSERT_FALSE(platform.dialogs.asked.empty());
    const Message& asked = platform.dialogs.asked.back();
    EXPECT_TRUE(asked.text.contains(" holds more than is kept by a save")) << asked.text.toStdString();
    EXPECT_EQ(Message_Buttons::Yes_No_Cancel, asked.buttons);
    EXPECT_EQ(Message_Answer::No, asked.standard);
    EXPECT_EQ(before, Contents_Of(File("a.tif")));
    platform.dialogs.answers = {Message_Answer::Yes};
    EXPECT_TRUE(Save_New_Pixels(form, key));
    platform.dialogs.asked.clear();
    EXPECT_TRUE(Save_New_Pixels(form, key)) << "what is lost is asked for once";
    EXPECT_TRUE(platform.dialogs.asked.empty());
}

INSTANTIATE_TEST_SUITE_P(
    All, Rich_File,
    testing::Values(Rich_Case{"with_16_bits", {.bits = 16}}, Rich_Case{"with_several_pages", {.pages = 3}},
                    Rich_Case{"with_transparency", {.alpha = Tiff_File_Options::Alpha::Unassociated}}),
    [](const auto& row) { return row.param.name; });

TEST_F(In_Place, No_Lets_The_User_Name_A_Copy_And_Keeps_The_Original)
{
    const int key = Pick_Deep();
    platform.dialogs.answers = {Message_Answer::No};
    platform.dialogs.picks = {{Path("copy.tif")}};
    EXPECT_TRUE(Save_New_Pixels(form, key));
    EXPECT_EQ(question, platform.dialogs.asked[0].text);
    ASSERT_EQ(1U, platform.dialogs.pick_asked.size());
    EXPECT_EQ("Halvine - Save As", platform.dialogs.pick_asked[0].caption);
    EXPECT_EQ("deep-.tif", platform.dialogs.pick_asked[0].name);
    EXPECT_TRUE(Original_Is_Untouched());
    EXPECT_EQ(80, form.Return_Picture_Horz_Pixels(form.Return_Picture_Key(Path("copy.tif"), false)));
}

TEST_F(In_Place, Cancel_Saves_Neither_The_Original_Nor_A_Copy)
{
    const int key = Pick_Deep();
    platform.dialogs.answers = {Message_Answer::Cancel};
    platform.dialogs.picks = {{Path("copy.tif")}};
    EXPECT_FALSE(Save_New_Pixels(form, key));
    EXPECT_TRUE(Original_Is_Untouched());
    EXPECT_EQ(QStringList{"deep.tif"}, Names());
}

TEST_F(In_Place, A_Copy_That_Gets_No_Name_Is_Not_Made)
{
    const int key = Pick_Deep();
    platform.dialogs.answers = {Message_Answer::No};
    EXPECT_FALSE(Save_New_Pixels(form, key));
    EXPECT_EQ(1U, platform.dialogs.pick_asked.size());
    EXPECT_TRUE(Original_Is_Untouched());
}

TEST_F(In_Place, Naming_The_Original_As_The_Copy_Asks_Again)
{
    const int key = Pick_Deep();
    platform.dialogs.answers = {Message_Answer::No, Message_Answer::Yes, Message_Answer::Cancel};
    platform.dialogs.picks = {{Path("deep.tif")}};
    EXPECT_FALSE(Save_New_Pixels(form, key));
    ASSERT_EQ(3U, platform.dialogs.asked.size());
    EXPECT_EQ(Path("deep.tif") + " already exists, do you wish to overwrite?", platform.dialogs.asked[1].text);
    EXPECT_EQ(question, platform.dialogs.asked[2].text);
    EXPECT_TRUE(Original_Is_Untouched());
}

TEST_F(In_Place, A_Saved_Turn_Keeps_All_Bits_And_Asks_Nothing)
{
    const int key = Pick_Deep();
    EXPECT_TRUE(Save_Turned(form, key)) << Last_Message().toStdString();
    EXPECT_TRUE(platform.dialogs.asked.empty());
    EXPECT_EQ(0, form.Return_Picture_Rotate(key));
    EXPECT_EQ(96, form.Return_Picture_Horz_Pixels(key));
    const Owned_Bitmap bitmap(Load_Bitmap(Path("deep.tif"), 0, 1, 0));
    EXPECT_EQ(2, Get_Bitmap_Source_Warnings_CPP(bitmap.Get())) << "the 16 bits are still there";
}

TEST_F(In_Place, A_Turn_In_A_Series_Keeps_All_Bits_And_Asks_Only_For_The_Originals)
{
    const int key = Pick_Deep();
    form.Rotate_Picture(key, 90);
    platform.dialogs.answers = {Message_Answer::Yes};
    EXPECT_TRUE(Save_Selected(form, key, {.Script_Option = Scripts::Save_With, .Save_Rotations_Flips = true}));
    EXPECT_EQ(1U, platform.dialogs.asked.size());
    const Owned_Bitmap bitmap(Load_Bitmap(Path("deep.tif"), 0, 1, 0));
    EXPECT_EQ(96, Size_Of_Bitmap(bitmap.Get()).width);
    EXPECT_EQ(2, Get_Bitmap_Source_Warnings_CPP(bitmap.Get()));
}

TEST_F(In_Place, A_Turned_Picture_That_Was_Painted_On_Asks)
{
    const int key = Pick_Deep();
    form.Rotate_Picture(key, 90);
    const Owned_Bitmap turned(form.Return_Picture(key, 0, 1));
    const Owned_Bitmap painted(turned.Get() ? Create_Contrast_Optimized_Bitmap_CPP(turned.Get(), 0.005F, 0.005F) : 0);
    platform.dialogs.answers = {Message_Answer::Cancel};
    EXPECT_FALSE(form.Save_Adjusted_Picture(key, painted.Get(), {}, {}, Clear_Nothing, true));
    EXPECT_EQ(question, platform.dialogs.asked.at(0).text);
    EXPECT_TRUE(Original_Is_Untouched());
}

TEST_F(In_Place, In_A_Series_No_Names_A_Copy_And_Leaves_The_Record)
{
    const int key = Pick_Deep("Crop(10,0,0,0)");
    platform.dialogs.answers = {Message_Answer::Yes, Message_Answer::No}; // modify originals; this one not
    platform.dialogs.picks = {{Path("copy.jpg")}};
    EXPECT_TRUE(Save_Selected(form, key, {.Script_Option = Scripts::Run}));
    EXPECT_EQ("Halvine - Save Picture As", platform.dialogs.pick_asked.at(0).caption);
    EXPECT_TRUE(Original_Is_Untouched());
    EXPECT_TRUE(Item(key).Script_Modified);
    EXPECT_EQ(1, File_Type_From_Signature(Path("copy.jpg")));
    EXPECT_EQ(150, Size_Of_Bitmap(Owned_Bitmap(Load_Bitmap(Path("copy.jpg"), 0, 1, 0)).Get()).width);
}

TEST_F(In_Place, In_A_Series_A_Cancelled_Question_Skips_The_Picture)
{
    const int key = Pick_Deep("Crop(10,0,0,0)");
    platform.dialogs.answers = {Message_Answer::Yes, Message_Answer::Cancel};
    EXPECT_FALSE(Save_Selected(form, key, {.Script_Option = Scripts::Run}));
    EXPECT_TRUE(platform.dialogs.pick_asked.empty());
    EXPECT_TRUE(Original_Is_Untouched());
}

TEST_F(In_Place, In_A_Series_The_Original_Itself_Is_No_Copy)
{
    const int key = Pick_Deep("Crop(10,0,0,0)");
    platform.dialogs.answers = {Message_Answer::Yes, Message_Answer::No, Message_Answer::Yes};
    platform.dialogs.picks = {{Path("deep.tif")}};
    EXPECT_FALSE(Save_Selected(form, key, {.Script_Option = Scripts::Run}));
    EXPECT_TRUE(Original_Is_Untouched());
}

TEST_F(In_Place, A_Prompted_Copy_Under_The_Own_Name_Asks_Like_A_Save_Over_The_Original)
{
    const int key = Pick_Damaged();
    const std::string before = Contents_Of(File("a.jpg"));
    platform.dialogs.answers = {Message_Answer::Yes};
    platform.dialogs.picks = {{Path("a.jpg")}};
    form.Set_Picture_All_Script_Items(key, "Crop(10,0,0,0)");
    EXPECT_FALSE(Save_Selected(form, key, {.Script_Option = Scripts::Run, .Save_Option = Target::Prompted_Copy}));
    EXPECT_TRUE(Last_Message().contains("was read with errors")) << Last_Message().toStdString();
    EXPECT_EQ(before, Contents_Of(File("a.jpg")));
}

TEST_F(In_Place, Texts_Alone_Lose_Nothing_And_Ask_Nothing)
{
    const int key = Pick_Deep("Crop(1,2,3,4)");
    EXPECT_TRUE(bool(Owned_Bitmap(form.Return_Picture(key, 0, 1)))); // it is known to hold more than is kept
    EXPECT_TRUE(form.Saving().Save_Texts(key)) << Last_Message().toStdString();
    EXPECT_TRUE(platform.dialogs.asked.empty());
    EXPECT_EQ("Crop(1,2,3,4)", Get_Image_Script(Path("deep.tif"), 0));
    const Owned_Bitmap bitmap(Load_Bitmap(Path("deep.tif"), 0, 1, 0));
    EXPECT_EQ(2, Get_Bitmap_Source_Warnings_CPP(bitmap.Get())) << "the 16 bits are still there";
}

} // namespace
