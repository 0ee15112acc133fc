#include "frame/files/Replacement_File.h"
#include "tests/catalogue/Picture_Fixture.h"

#include <cerrno>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace {

const std::vector<int> Clear_Nothing{0};

class Saving : public Picture_Test {
protected:
    bool Save_Onto_Itself(int key, const std::vector<int>& clear = Clear_Nothing)
    {
        const Owned_Bitmap bitmap = Drawn_Bitmap(80, 50, 9);
        return form.Save_Adjusted_Picture(key, bitmap.Get(), {}, {}, clear, true);
    }
    bool Save_To(int key, const QString& name, const QString& qualifier = {})
    {
        const Owned_Bitmap bitmap = Drawn_Bitmap(80, 50, 9);
        return form.Save_Adjusted_Picture(key, bitmap.Get(), Path(name), qualifier, Clear_Nothing, true);
    }
};

TEST_F(Saving, Onto_The_Original_Keeps_Its_Date_Clears_Rotation_And_Leaves_No_Kept_File)
{
    const int key = Pick(Make("a.jpg", 160, 96, 1, "Crop(1,2,3,4);Blur(2,50,RGB)"));
    ASSERT_TRUE(Set_Times(File("a.jpg"), {{1000, 0}, {2000, 0}}));
    form.Pictures().Reload_Picture_Thumbnail(1, false);
    Item(key).Flip = 3;
    ASSERT_TRUE(Save_Onto_Itself(key, {5})) << Last_Message().toStdString();
    EXPECT_EQ(2000, Times_Of(File("a.jpg"))->modified.tv_sec);
    EXPECT_EQ(QStringList{"a.jpg"}, Names());
    EXPECT_EQ(0, Item(key).Flip);
    EXPECT_EQ(80, form.Return_Picture_Horz_Pixels(key));
    EXPECT_EQ("Blur(2,50,RGB)", form.Recall_Picture_All_Script_Items(key));
    EXPECT_EQ("Blur(2,50,RGB)", Get_Image_Script(Path("a.jpg"), 0));
}

TEST_F(Saving, Under_A_New_Name_Leaves_The_Record_And_Lists_The_Copy)
{
    const int key = Pick_New("a.jpg");
    form.Rotate_Picture(key, 90);
    form.Set_Picture_All_Script_Items(key, "Crop(1,2,3,4)");
    ASSERT_TRUE(Save_To(key, "b.jpg"));
    EXPECT_EQ(90, form.Return_Picture_Rotate(key));
    EXPECT_EQ("Crop(1,2,3,4)", Get_Image_Script(Path("b.jpg"), 0)) << "as the record has it";
    EXPECT_EQ(2, form.State().pictures.Count());
    EXPECT_EQ(2, form.Return_Picture_Key(Path("b.jpg"), false));
}

TEST_F(Saving, The_Qualifier_Decides_The_Type_Then_The_Extension_Then_The_Record)
{
    const int key = Pick_New("a.jpg");
    ASSERT_TRUE(Save_To(key, "b.jpg", "TIF"));
    EXPECT_EQ(2, File_Type_From_Signature(Path("b.jpg")));
    ASSERT_TRUE(Save_To(key, "c.TIF", "80"));
    EXPECT_EQ(2, File_Type_From_Signature(Path("c.TIF")));
    ASSERT_TRUE(Save_To(key, "d.dat"));
    EXPECT_EQ(1, File_Type_From_Signature(Path("d.dat")));
}

TEST_F(Saving, A_TIFF_That_Is_Called_Jpg_Stays_A_TIFF)
{
    const int key = Pick(Make("a.jpg", 160, 96, 2));
    ASSERT_TRUE(Save_Onto_Itself(key));
    EXPECT_EQ(2, File_Type_From_Signature(Path("a.jpg")));
}

TEST_F(Saving, A_File_Whose_Name_Ends_In_The_Mark_Of_Kept_Originals_Does_Not_Collide)
{
    const int key = Pick(Make("a.jpg~"));
    const std::string backup = Contents_Of(Make("a.jpg", 40, 40).toStdString());
    ASSERT_TRUE(Save_Onto_Itself(key)) << Last_Message().toStdString();
    EXPECT_EQ(80, form.Return_Picture_Horz_Pixels(key));
    EXPECT_EQ(backup, Contents_Of(File("a.jpg")));
    EXPECT_EQ((QStringList{"a.jpg", "a.jpg~"}), Names());
}

TEST_F(Saving, Beside_A_File_Under_The_Kept_Name_Leaves_That_File)
{
    const int key = Pick_New("a.jpg");
    const std::string other = Contents_Of(Make("a.jpg~", 40, 40).toStdString());
    ASSERT_TRUE(Save_Onto_Itself(key)) << Last_Message().toStdString();
    EXPECT_EQ(other, Contents_Of(File("a.jpg~")));
    EXPECT_EQ((QStringList{"a.jpg", "a.jpg~"}), Names());
}

TEST_F(Saving, Over_The_Original_By_A_Window_Leaves_Script_Modified_And_Takes_The_Listed_Types_Out)
{
    const int key = Pick_New("a.jpg");
    form.Set_Picture_All_Script_Items(key, "Crop(1,2,3,4);Blur(2,50,RGB)");
    ASSERT_TRUE(Save_Onto_Itself(key, {5})) << Last_Message().toStdString();
    EXPECT_TRUE(Item(key).Script_Modified);
    EXPECT_EQ("Blur(2,50,RGB)", form.Recall_Picture_All_Script_Items(key));
}

TEST_F(Saving, Over_Another_Listed_Picture_Takes_The_Listed_Types_Out_Of_That_Ones_Script)
{
    const int key = Pick_New("a.jpg");
    const int other = Pick(Make("b.jpg", 160, 96, 1, "Crop(1,2,3,4);Blur(2,50,RGB)"));
    const Owned_Bitmap bitmap = Drawn_Bitmap(80, 50, 9);
    const std::vector<int> crop{5};
    ASSERT_TRUE(form.Save_Adjusted_Picture(key, bitmap.Get(), Path("B.JPG"), {}, crop, true));
    EXPECT_EQ(2, form.State().pictures.Count()) << "found without regard to case";
    ASSERT_TRUE(form.Save_Adjusted_Picture(key, bitmap.Get(), Path("b.jpg"), {}, crop, true));
    EXPECT_EQ("Blur(2,50,RGB)", form.Recall_Picture_All_Script_Items(other));
    EXPECT_EQ(80, form.Return_Picture_Horz_Pixels(other));
}

TEST_F(Saving, Over_Another_Listed_Picture_Of_Another_Type_Changes_The_Type_Of_That_One)
{
    const int key = Pick_New("a.jpg");
    const int other = Pick_New("b.jpg");
    ASSERT_TRUE(Save_To(key, "b.jpg", "TIF"));
    EXPECT_EQ(2, Item(other).File_Type);
    EXPECT_EQ(1, Item(key).File_Type);
    EXPECT_TRUE(bool(Owned_Bitmap(form.Return_Picture(other, 0, 1))));
}

TEST_F(Saving, A_Thumbnail_Keeps_Its_Divisor_As_Long_As_The_Picture_Keeps_Its_Size)
{
    const int key = Pick_New("a.jpg");
    Item(key).Scale_Divisor = 3;
    const Owned_Bitmap same = Drawn_Bitmap(160, 96, 4);
    ASSERT_TRUE(form.Save_Adjusted_Picture(key, same.Get(), {}, {}, Clear_Nothing, true));
    EXPECT_EQ(3, Item(key).Scale_Divisor);
    ASSERT_TRUE(Save_Onto_Itself(key));
    EXPECT_EQ(1, Item(key).Scale_Divisor) << "found anew for 80 x 50";
}

TEST_F(Saving, Stores_The_Resolutions_Of_The_Record)
{
    const int key = Pick_New("a.jpg");
    form.Set_Picture_Horz_Resolution(key, 240);
    form.Set_Picture_Vert_Resolution(key, 120);
    ASSERT_TRUE(Save_Onto_Itself(key));
    File_Dimensions facts;
    ASSERT_TRUE(Get_Dimensions(Path("a.jpg"), 0, facts));
    EXPECT_EQ(240, facts.horizontal_dpi);
    EXPECT_EQ(120, facts.vertical_dpi);
}

TEST_F(Saving, Beside_The_Kept_Name_Of_An_Interrupted_Save_Asks_Nothing)
{
    const int key = Pick_New("a.jpg");
    std::filesystem::create_hard_link(File("a.jpg"), File("a.jpg~"));
    EXPECT_TRUE(Save_Onto_Itself(key)) << Last_Message().toStdString();
    EXPECT_EQ(QStringList{"a.jpg"}, Names());
}

TEST_F(Saving, Without_A_Bitmap_Nothing_Is_Written)
{
    const int key = Pick_New("a.jpg");
    const std::string before = Contents_Of(File("a.jpg"));
    EXPECT_FALSE(form.Save_Adjusted_Picture(key, 0, {}, {}, Clear_Nothing, true));
    EXPECT_TRUE(platform.dialogs.asked.empty()) << Last_Message().toStdString();
    EXPECT_EQ(before, Contents_Of(File("a.jpg")));
}

TEST_F(Saving, A_Turned_Picture_Turns_The_Crop_And_Text_Of_Its_Script)
{
    const int key = Pick(Make("a.jpg", 160, 96, 1,
                              "Text(\"<Paragraph width='50' height='20' orgx='10' orgy='30' "
                              "orgpx='0' orgpy='0' align='0' escape='0' leading='0' "
                              "scalex='1' >x</Paragraph>\");Crop(1,2,3,4)"));
    form.Rotate_Picture(key, 90);
    ASSERT_TRUE(form.Saving().Save_Rotation_And_Flips(key)) << Last_Message().toStdString();
    const QString script = Get_Image_Script(Path("a.jpg"), 0);
    EXPECT_TRUE(script.contains("orgx='30' orgy='150'")) << script.toStdString();
    EXPECT_TRUE(script.contains("escape='900'"));
    EXPECT_TRUE(script.endsWith("Crop(2,3,4,1)")) << script.toStdString();
    EXPECT_EQ(0, form.Return_Picture_Rotate(key));
    EXPECT_EQ(96, form.Return_Picture_Horz_Pixels(key));
    EXPECT_EQ(script, form.Recall_Picture_All_Script_Items(key));
}

TEST_F(Saving, Texts_Alone_Leaves_The_Pixels_And_The_Times)
{
    const int key = Pick_New("a.jpg");
    ASSERT_TRUE(Set_Times(File("a.jpg"), {{1000, 0}, {2000, 0}}));
    form.Pictures().Reload_Picture_Thumbnail(1, false);
    const auto pixels = Pixels_Of(Owned_Bitmap(form.Return_Picture(key, 0, 1)).Get());
    for (int i = 0; i < 20; ++i) {
        form.Set_Picture_All_Script_Items(key, QString("Crop(%1,2,3,4)").arg(i));
        ASSERT_TRUE(form.Saving().Save_Texts(key)) << Last_Message().toStdString();
        EXPECT_FALSE(Item(key).Script_Modified);
    }
    EXPECT_EQ(pixels, Pixels_Of(Owned_Bitmap(form.Return_Picture(key, 0, 1)).Get()));
    EXPECT_EQ("Crop(19,2,3,4)", Get_Image_Script(Path("a.jpg"), 0));
    EXPECT_EQ(2000, Times_Of(File("a.jpg"))->modified.tv_sec);
}

TEST_F(Saving, A_File_That_Another_Program_Changed_Is_Overwritten_Only_On_Yes)
{
    const int key = Pick_New("a.jpg");
    Make("a.jpg", 40, 40);
    const std::string changed = Contents_Of(File("a.jpg"));
    EXPECT_FALSE(Save_Onto_Itself(key));
    EXPECT_TRUE(Last_Message().contains("was changed by another program"));
    EXPECT_EQ(changed, Contents_Of(File("a.jpg")));
    platform.dialogs.answers = {Message_Answer::Yes};
    EXPECT_TRUE(Save_Onto_Itself(key));
}

TEST_F(Saving, A_File_With_Several_Names_Is_Saved_Only_On_Yes_And_The_Other_Name_Keeps_The_Old_Picture)
{
    const int key = Pick_New("a.jpg");
    std::filesystem::create_hard_link(File("a.jpg"), File("b.jpg"));
    const std::string before = Contents_Of(File("a.jpg"));
    EXPECT_FALSE(Save_Onto_Itself(key));
    EXPECT_TRUE(Last_Message().contains("several names"));
    EXPECT_EQ(before, Contents_Of(File("a.jpg")));
    platform.dialogs.answers = {Message_Answer::Yes};
    EXPECT_TRUE(Save_Onto_Itself(key));
    EXPECT_EQ(before, Contents_Of(File("b.jpg")));
}

TEST_F(Saving, Through_A_Symbolic_Link_Changes_The_File_And_Leaves_The_Link)
{
    Make("a.jpg");
    std::filesystem::create_symlink("a.jpg", File("link.jpg"));
    const int key = Pick(Path("link.jpg"));
    EXPECT_TRUE(Save_Onto_Itself(key)) << Last_Message().toStdString();
    EXPECT_TRUE(std::filesystem::is_symlink(File("link.jpg")));
    EXPECT_EQ((QStringList{"a.jpg", "link.jpg"}), Names());
}

TEST_F(Saving, Onto_A_Directory_Is_Refused)
{
    const int key = Pick_New("a.jpg");
    std::filesystem::create_directory(File("d.jpg"));
    EXPECT_FALSE(Save_To(key, "d.jpg"));
    EXPECT_EQ(Path("d.jpg") + " is a directory.", Last_Message());
}

TEST_F(Saving, A_Vanished_Original_Gives_The_Message_And_Makes_No_File)
{
    const int key = Pick_New("a.jpg");
    std::filesystem::remove(File("a.jpg"));
    EXPECT_FALSE(Save_Onto_Itself(key));
    EXPECT_TRUE(Last_Message().startsWith("Error saving picture to " + Path("a.jpg")));
    EXPECT_EQ(QStringList{}, Names());
}

TEST_F(Saving, A_Read_Only_File_Is_Asked_For_And_Stays_On_No)
{
    const int key = Pick_New("a.jpg");
    const std::string before = Contents_Of(File("a.jpg"));
    chmod(File("a.jpg").c_str(), 0444);
    const int answer = As_Ordinary_User([&] {
        EXPECT_FALSE(Save_Onto_Itself(key));
        if (platform.dialogs.asked.back().buttons != Message_Buttons::Yes_No) return 2;
        return Last_Message() == Path("a.jpg") + " is Read-only, do you wish to overwrite?" ? 0 : 1;
    });
    EXPECT_EQ(0, answer) << "1 another message, 2 other buttons";
    EXPECT_EQ(before, Contents_Of(File("a.jpg")));
}

TEST_F(Saving, A_Read_Only_File_Is_Made_Writable_On_Yes)
{
    const int key = Pick_New("a.jpg");
    chmod(File("a.jpg").c_str(), 0444);
    for (const std::string& path : {folder.Path(), File("a.jpg")})
        ASSERT_EQ(0, geteuid() == 0 ? chown(path.c_str(), 65534, 65534) : 0);
    platform.dialogs.answers = {Message_Answer::Yes};
    const int answer = As_Ordinary_User([&] { return Save_Onto_Itself(key) ? 0 : 1; });
    EXPECT_EQ(0, answer);
    File_Dimensions facts;
    ASSERT_TRUE(Get_Dimensions(Path("a.jpg"), 0, facts));
    EXPECT_EQ(80, facts.width);
}

TEST_F(Saving, A_Read_Only_File_That_Stays_So_Gives_The_Systems_Reason)
{
    if (geteuid() != 0) GTEST_SKIP() << "only root can give a file to somebody else";
    const int key = Pick_New("a.jpg");
    chmod(File("a.jpg").c_str(), 0444);
    platform.dialogs.answers = {Message_Answer::Yes};
    const int answer = As_Ordinary_User([&] {
        if (Save_Onto_Itself(key)) return 1;
        return Last_Message() == QString::fromStdString(System_Error_Text(EPERM)) ? 0 : 2;
    });
    EXPECT_EQ(0, answer) << "1 saved, 2 another message";
}

TEST_F(Saving, Method_3_Asks_And_Only_Yes_Saves)
{
    const int key = Pick_New("a.jpg");
    const Owned_Bitmap bitmap = Drawn_Bitmap(80, 50, 9);
    EXPECT_FALSE(form.Save_Picture(3, key, bitmap.Get(), {}, Clear_Nothing));
    EXPECT_EQ("This will overwrite (modify) your original(s), are you sure?", Last_Message());
    platform.dialogs.answers = {Message_Answer::Yes};
    EXPECT_TRUE(form.Save_Picture(3, key, bitmap.Get(), {}, Clear_Nothing));
}

TEST_F(Saving, Any_Other_Method_Saves_To_The_Own_Path_As_If_It_Were_A_New_Name)
{
    for (const int method : {0, 1, 6, -1}) {
        const int key = Pick_New(QString("a%1.jpg").arg(method));
        form.Rotate_Picture(key, 90);
        const Owned_Bitmap bitmap = Drawn_Bitmap(80, 50, 9);
        EXPECT_TRUE(form.Save_Picture(method, key, bitmap.Get(), {}, Clear_Nothing)) << Last_Message().toStdString();
        EXPECT_EQ(80, form.Return_Picture_Horz_Pixels(key));
        EXPECT_EQ(90, form.Return_Picture_Rotate(key)) << "stays pending, as for a copy";
    }
    EXPECT_EQ(4, form.State().pictures.Count());
}

TEST_F(Saving, Method_2_Copies_The_Original_To_A_Snapshot_First)
{
    const int key = Pick_New("a.jpg");
    const std::string before = Contents_Of(File("a.jpg"));
    const Owned_Bitmap bitmap = Drawn_Bitmap(80, 50, 9);
    EXPECT_TRUE(form.Save_Picture(2, key, bitmap.Get(), {}, Clear_Nothing));
    EXPECT_EQ(before, Contents_Of(File("~a-20260314-150926.jpg")));
    EXPECT_NE(before, Contents_Of(File("a.jpg")));
}

TEST_F(Saving, Method_2_Leaves_No_Snapshot_Of_A_Picture_That_Was_Not_Overwritten)
{
    const int key = Pick_New("a.jpg");
    EXPECT_FALSE(form.Save_Picture(2, key, 0, {}, Clear_Nothing)) << "nothing to write";
    EXPECT_EQ(QStringList{"a.jpg"}, Names());
    Put_File(File("a.jpg"), Contents_Of(File("a.jpg")) + " ");
    const Owned_Bitmap bitmap = Drawn_Bitmap(80, 50, 9);
    EXPECT_FALSE(form.Save_Picture(2, key, bitmap.Get(), {}, Clear_Nothing)) << "changed by another program";
    EXPECT_EQ(QStringList{"a.jpg"}, Names());
}

TEST_F(Saving, Method_2_Twice_In_A_Second_Keeps_Both_Snapshots)
{
    const int key = Pick_New("a.jpg");
    const std::string first = Contents_Of(File("a.jpg"));
    form.Save_Picture(2, key, Drawn_Bitmap(80, 50, 9).Get(), {}, Clear_Nothing);
    const std::string second = Contents_Of(File("a.jpg"));
    form.Save_Picture(2, key, Drawn_Bitmap(80, 50, 8).Get(), {}, Clear_Nothing);
    EXPECT_EQ(first, Contents_Of(File("~a-20260314-150926.jpg")));
    EXPECT_EQ(second, Contents_Of(File("~a-20260314-150927.jpg")));
}

TEST_F(Saving, Method_4_Names_The_Copy_By_The_Suffix_And_Asks_Before_Overwriting)
{
    const int key = Pick_New("a.jpg");
    const Owned_Bitmap bitmap = Drawn_Bitmap(80, 50, 9);
    EXPECT_TRUE(form.Save_Picture(4, key, bitmap.Get(), "re", Clear_Nothing));
    EXPECT_EQ((QStringList{"a-re.jpg", "a.jpg"}), Names());
    EXPECT_FALSE(form.Save_Picture(4, key, bitmap.Get(), "re", Clear_Nothing));
    EXPECT_EQ(Path("a-re.jpg") + " already exists, do you wish to overwrite?", Last_Message());
}

TEST_F(Saving, Method_5_Proposes_The_Name_Of_A_Copy_And_Splits_The_Qualifier_Off)
{
    const int key = Pick_New("a.jpg");
    const Owned_Bitmap bitmap = Drawn_Bitmap(80, 50, 9);
    platform.dialogs.picks = {{Path("b.jpg:TIF")}};
    EXPECT_TRUE(form.Save_Picture(5, key, bitmap.Get(), "re", Clear_Nothing));
    EXPECT_EQ(2, File_Type_From_Signature(Path("b.jpg")));
    EXPECT_EQ("Halvine - Save As", platform.dialogs.pick_asked[0].caption);
    EXPECT_EQ("a-re.jpg", platform.dialogs.pick_asked[0].name) << "the name that an automatic copy gets";
    EXPECT_EQ(form.State().Default_Extensions, platform.dialogs.pick_asked[0].pattern);
    EXPECT_FALSE(form.Save_Picture(5, key, bitmap.Get(), {}, Clear_Nothing)) << "cancelled";
}

TEST_F(Saving, Selected_As_Original_With_Run_Scripts_Keeps_The_Script_In_The_Record)
{
    const int key = Pick(Make("a.jpg", 160, 96, 1, "Crop(10,0,0,0)"));
    Item(key).Script_Modified = true;
    form.Rotate_Picture(key, 180);
    form.Set_Picture_Key_Selected(key, true);
    platform.dialogs.answers = {Message_Answer::Yes};
    EXPECT_EQ(1, form.Save_Selected_As({.Script_Option = Save_Options::Scripts::Run}));
    EXPECT_EQ("Crop(0,0,10,0)", form.Recall_Picture_All_Script_Items(key));
    EXPECT_FALSE(Item(key).Script_Modified);
    EXPECT_EQ(0, form.Return_Picture_Rotate(key));
    EXPECT_EQ("", Get_Image_Script(Path("a.jpg"), 0)) << "the script is in the pixels";
    EXPECT_EQ(150, form.Return_Picture_Horz_Pixels(key));
}

TEST_F(Saving, Selected_As_Auto_Copy_Has_A_Suffix_And_Leaves_The_Record)
{
    const int key = Pick_New("a.jpg");
    form.Set_Picture_All_Script_Items(key, "Crop(1,2,3,4)");
    form.Set_Picture_Key_Selected(key, true);
    EXPECT_EQ(1, form.Save_Selected_As({.Script_Option = Save_Options::Scripts::Save_With,
                                        .Save_Option = Save_Options::Target::Auto_Copy,
                                        .Picture_Type = 2}));
    EXPECT_EQ("Crop(1,2,3,4)", Get_Image_Script(Path("a-hv.tif"), 0));
    EXPECT_TRUE(Item(key).Script_Modified);
    EXPECT_EQ(1, form.Save_Selected_As(
                     {.Script_Option = Save_Options::Scripts::Run, .Save_Option = Save_Options::Target::Auto_Copy}));
    EXPECT_TRUE(Names().contains("a-rs.jpg"));
}

TEST_F(Saving, Selected_As_Original_With_Scripts_Turns_Only_When_Asked)
{
    const int key = Pick_New("a.jpg");
    form.Set_Picture_All_Script_Items(key, "Crop(1,2,3,4)");
    form.Rotate_Picture(key, 90);
    form.Set_Picture_Key_Selected(key, true);
    platform.dialogs.answers = {Message_Answer::Yes, Message_Answer::Yes};
    ASSERT_EQ(1, form.Save_Selected_As({.Script_Option = Save_Options::Scripts::Save_With}));
    EXPECT_FALSE(Item(key).Script_Modified);
    EXPECT_EQ(90, form.Return_Picture_Rotate(key));
    EXPECT_EQ("Crop(1,2,3,4)", form.Recall_Picture_All_Script_Items(key));
    ASSERT_EQ(1,
              form.Save_Selected_As({.Script_Option = Save_Options::Scripts::Save_With, .Save_Rotations_Flips = true}));
    EXPECT_EQ(0, form.Return_Picture_Rotate(key));
    EXPECT_EQ("Crop(2,3,4,1)", form.Recall_Picture_All_Script_Items(key));
    EXPECT_EQ("Crop(2,3,4,1)", Get_Image_Script(Path("a.jpg"), 0));
    EXPECT_EQ(96, form.Return_Picture_Horz_Pixels(key));
}

TEST_F(Saving, Selected_As_Does_Not_Flip_And_Keeps_The_Type_In_The_Extension)
{
    const int key = Pick_New("a.jpg");
    Item(key).Flip = 1;
    form.Set_Picture_Key_Selected(key, true);
    const Owned_Bitmap stored(Load_Bitmap(Path("a.jpg"), 0, 1, 0));
    ASSERT_EQ(1, form.Save_Selected_As({.Script_Option = Save_Options::Scripts::Ignore,
                                        .Save_Rotations_Flips = true,
                                        .Save_Option = Save_Options::Target::Auto_Copy,
                                        .Picture_Type = 2}));
    const Owned_Bitmap copy(Load_Bitmap(Path("a-hv.tif"), 0, 1, 0));
    EXPECT_EQ(Pixels_Of(stored.Get()), Pixels_Of(copy.Get()));
    EXPECT_EQ(1, Item(key).Flip);
}

TEST_F(Saving, Selected_As_With_Scripts_Stores_The_Prepared_Script_Where_A_Picture_Has_None)
{
    form.State().Current_Prepared_Script = 1;
    const QString prepared = Join_Script_Items(*form.State().Prepared_Items());
    ASSERT_FALSE(prepared.isEmpty());
    const int bare = Pick_New("a.jpg");
    const int own = Pick(Make("b.jpg", 160, 96, 2, "Crop(1,2,3,4)"));
    for (const int key : {bare, own}) form.Set_Picture_Key_Selected(key, true);
    ASSERT_EQ(2, form.Save_Selected_As({.Script_Option = Save_Options::Scripts::Save_With,
                                        .Save_Option = Save_Options::Target::Auto_Copy}));
    EXPECT_EQ(prepared, Get_Image_Script(Path("a-hv.jpg"), 0));
    EXPECT_EQ("Crop(1,2,3,4)", Get_Image_Script(Path("b-hv.jpg"), 0));
    EXPECT_EQ("", form.Recall_Picture_All_Script_Items(bare));
}

TEST_F(Saving, Selected_As_Original_Without_Scripts_Leaves_Script_Modified)
{
    const int key = Pick_New("a.jpg");
    form.Set_Picture_All_Script_Items(key, "Crop(1,2,3,4)");
    form.Set_Picture_Key_Selected(key, true);
    platform.dialogs.answers = {Message_Answer::Yes};
    ASSERT_EQ(1, form.Save_Selected_As({}));
    EXPECT_TRUE(Item(key).Script_Modified);
    EXPECT_EQ("", Get_Image_Script(Path("a.jpg"), 0));
}

TEST_F(Saving, Selected_As_Stops_When_The_User_Does)
{
    form.Set_Picture_Key_Selected(Pick_New("a.jpg"), true);
    form.Set_Picture_Key_Selected(Pick_New("b.jpg"), true);
    platform.dialogs.stop_after_progress_steps = 2;
    EXPECT_EQ(1, form.Save_Selected_As({.Save_Option = Save_Options::Target::Auto_Copy}));
    EXPECT_EQ((QStringList{"Halvine - Save Selected As", "Saving 0 of 2", "Saving 1 of 2", "Saving 2 of 2"}),
              platform.dialogs.progress_shown);
}

TEST_F(Saving, A_Cancelled_Prompt_Stops_The_Series_Unless_The_User_Goes_On)
{
    form.Set_Picture_Key_Selected(Pick_New("a.jpg"), true);
    form.Set_Picture_Key_Selected(Pick_New("b.jpg"), true);
    platform.dialogs.answers = {Message_Answer::Yes};
    platform.dialogs.picks = {{}, {Path("c.jpg")}};
    EXPECT_EQ(1, form.Save_Selected_As({.Save_Option = Save_Options::Target::Prompted_Copy}));
    EXPECT_EQ("Do you wish to continue?", platform.dialogs.asked[0].text);
    EXPECT_EQ("a-.jpg", platform.dialogs.pick_asked[0].name);
}

} // namespace
