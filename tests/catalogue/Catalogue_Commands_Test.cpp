#include "catalogue/Catalogue_Commands.h"
#include "catalogue/New_Image_Size.h"
#include "imaging/Script_Interpreter.h"
#include "tests/catalogue/Picture_Fixture.h"

namespace {

class Scripted_Host : public Window_Host {
public:
    bool Leave_Full_Window_View() override { return std::exchange(full_window, false); }
    bool Leave_Picture_List() override { return std::exchange(list, false); }
    void Show_Picture_List() override { list = true; }
    void Rotate_Blowup(int degrees) override { blowup = degrees; }
    int File_Row_Count() const override { return int(all_files.size()); }
    QStringList Selected_File_Paths() const override { return selected_files; }
    QStringList All_File_Paths() const override { return all_files; }
    bool Shows_Found_Files() const override { return found; }
    void Go_To_Folder(const QString& folder) override { went_to = folder; }
    std::optional<Save_Options> Ask_Save_Options() override { return options; }
    std::optional<std::array<int, 3>> Ask_Color(std::array<int, 3> present) override
    {
        asked_color = present;
        return color;
    }
    Bitmap_Handle Clipboard_Bitmap() override { return clipboard.Release(); }
    void Close_Window() override { ++closes; }

    QStringList selected_files, all_files;
    QString went_to;
    std::optional<Save_Options> options;
    std::optional<std::array<int, 3>> color;
    std::array<int, 3> asked_color{};
    Owned_Bitmap clipboard;
    int blowup = 0, closes = 0;
    bool full_window = false, list = false, found = false;
};

class Commands : public Picture_Test {
protected:
    bool Run(Menu menu, int number) { return commands.Run({menu, number}); }
    void Select(std::initializer_list<int> indices)
    {
        for (const int index : indices) form.Set_Picture_Selected(index, true);
    }
    Scripted_Host host;
    Catalogue_Commands commands{form, host};
};

TEST_F(Commands, Picking_With_No_Files_In_The_Grid_Does_Nothing)
{
    EXPECT_FALSE(Run(Menu::File, 101));
    commands.Press_Panel(Pick_Button, 1, 0);
    EXPECT_EQ(0, form.State().pictures.Count());
    EXPECT_TRUE(platform.dialogs.asked.empty());
}

TEST_F(Commands, Pick_Takes_The_Selected_Rows_Or_All_When_None_Is)
{
    host.all_files = {Make("a.jpg"), Make("b.jpg")};
    EXPECT_TRUE(Run(Menu::File, 101));
    EXPECT_EQ(2, form.State().pictures.Count());
    EXPECT_EQ(2, form.State().selection.Count()); // a pick selects what it brings
    host.selected_files = {Path("b.jpg")};
    Run(Menu::File, 101);
    EXPECT_EQ(1, form.State().pictures.Count());
    EXPECT_EQ("b.jpg", form.State().pictures.Item(1).File_Name);
}

TEST_F(Commands, Append_Keeps_The_Old_Selection_And_Shift_Selects_What_Came)
{
    host.all_files = {Make("a.jpg")};
    Run(Menu::File, 101);
    host.all_files = {Make("b.jpg")};
    Run(Menu::File, 102);
    EXPECT_EQ(std::vector{1}, form.State().selection.Selected_Indices());
    commands.Press_Panel(Pick_Append_Button, 1, 1);
    EXPECT_EQ(std::vector{3}, form.State().selection.Selected_Indices());
}

TEST_F(Commands, What_Is_Dropped_Is_Appended_And_The_Selection_Stays)
{
    Pick_New("a.jpg");
    Select({1});
    commands.Pick_Dropped({Make("b.jpg")});
    EXPECT_EQ(2, form.State().pictures.Count());
    EXPECT_EQ(std::vector{1}, form.State().selection.Selected_Indices());
    commands.Pick_Dropped({});
    EXPECT_EQ("No pictures available.", Last_Message());
}

TEST_F(Commands, A_Pick_From_Found_Files_Moves_The_Pane_To_The_Folder_Of_The_First)
{
    host.all_files = {Make("a.jpg"), Make("b.jpg")};
    host.selected_files = {Path("b.jpg")};
    host.found = true;
    Run(Menu::File, 101);
    EXPECT_EQ(QString::fromStdString(folder.Path()) + "/", host.went_to);
    EXPECT_EQ(1, form.State().pictures.Count());
}

TEST_F(Commands, A_Pick_That_Is_Refused_Leaves_The_Pane_On_What_Was_Found)
{
    host.all_files = {Make("a.jpg")};
    host.found = true;
    QStringList picked_from;
    commands.Set_Picked_From([&](const QString& from) { picked_from << from; });
    Item(Pick_New("b.jpg")).Lock_Flags = 0x1000;
    Run(Menu::File, 101);
    EXPECT_EQ(1U, platform.dialogs.asked.size()) << "in use";
    EXPECT_EQ("", host.went_to);
    EXPECT_EQ(QStringList(), picked_from);
    Run(Menu::File, 102);
    EXPECT_EQ(QString::fromStdString(folder.Path()) + "/", host.went_to);
    EXPECT_EQ(QStringList{host.went_to}, picked_from);
}

TEST_F(Commands, A_Pick_That_Is_Not_Confirmed_Changes_Nothing)
{
    Item(Pick_New("b.jpg")).Description_Modified = true;
    host.all_files = {Make("a.jpg")};
    slide_show.open = true;
    slide_show.may_abandon = false;
    Run(Menu::File, 101);
    EXPECT_TRUE(platform.dialogs.asked.empty()) << "the show is to be kept";
    slide_show.may_abandon = true;
    Run(Menu::File, 101); // the descriptions are
    EXPECT_EQ("b.jpg", form.State().pictures.Item(1).File_Name);
    EXPECT_TRUE(slide_show.open);
    platform.dialogs.answers = {Message_Answer::Yes};
    Run(Menu::File, 101);
    EXPECT_EQ("a.jpg", form.State().pictures.Item(1).File_Name);
    EXPECT_FALSE(slide_show.open) << "its file is forgotten";
}

TEST_F(Commands, Shift_On_The_Append_Button_Leaves_The_List_And_Waits_Like_A_Command)
{
    host.all_files = {Make("a.jpg")};
    host.list = true;
    commands.Press_Panel(Pick_Append_Button, 1, 1);
    EXPECT_FALSE(host.list);
    EXPECT_EQ(1, form.State().pictures.Count());
    commands.Set_Handler({Menu::File, 801}, [&] { commands.Press_Panel(Pick_Append_Button, 1, 1); });
    Run(Menu::File, 801);
    EXPECT_EQ(1, form.State().pictures.Count());
}

TEST_F(Commands, The_Pick_Button_Stops_A_Pick_That_Runs)
{
    host.all_files = {Make("0.jpg")};
    for (int i = 1; i < 20; ++i) host.all_files << host.all_files.front();
    platform.events.on_call = [&](int) {
        EXPECT_FALSE(Run(Menu::Select, 102)); // everything else waits
        commands.Press_Panel(Stop_Pick_Button, 1, 0);
    };
    Run(Menu::File, 101);
    EXPECT_EQ(6, form.State().pictures.Count()); // the first row; it stays
    EXPECT_FALSE(form.Picking().Pick_In_Progress());
}

TEST_F(Commands, The_Pick_Button_Stops_A_Short_Pick_Too_Though_It_Was_Not_Turned)
{
    for (int i = 0; i < 5; ++i) host.all_files << Make(QStringLiteral("%1.jpg").arg(i));
    Stepping_Clock clock(30);
    Platform slow{platform.dialogs, platform.events, clock, platform.settings, platform.shell, {}};
    Halvine_Form other(slow, &view, &slide_show);
    Catalogue_Commands others(other, host);
    platform.events.on_call = [&](int) { others.Press_Panel(Pick_Button, 1, 0); };
    others.Press_Panel(Pick_Button, 1, 0);
    EXPECT_EQ(0, view.progress_begun);
    EXPECT_EQ(1, platform.events.calls);
    EXPECT_GT(5, other.State().pictures.Count());
}

TEST_F(Commands, A_Pick_Yields_After_Fifty_Milliseconds_Also_Within_A_Row)
{
    for (int i = 0; i < 4; ++i) host.all_files << Make(QStringLiteral("%1.jpg").arg(i));
    Stepping_Clock clock(30);
    Platform slow{platform.dialogs, platform.events, clock, platform.settings, platform.shell, {}};
    Halvine_Form other(slow, &view, &slide_show);
    Catalogue_Commands(other, host).Run({Menu::File, 101});
    EXPECT_EQ(4, other.State().pictures.Count());
    EXPECT_LE(2, platform.events.calls); // a file that is slow to come adds yields of its own
}

TEST_F(Commands, A_Command_Leaves_The_Full_Window_And_The_List_First)
{
    Add("a.jpg");
    host.full_window = host.list = true;
    Run(Menu::Select, 102);
    EXPECT_FALSE(host.full_window);
    EXPECT_FALSE(host.list);
}

TEST_F(Commands, Thumbnail_List_Shows_The_List_And_Puts_It_Away_Again)
{
    Add("a.jpg");
    Run(Menu::Options, 401);
    EXPECT_TRUE(host.list);
    Run(Menu::Options, 401);
    EXPECT_FALSE(host.list);
}

TEST_F(Commands, What_Is_Not_There_Yet_Says_So_Until_Its_Area_Brings_It)
{
    Run(Menu::File, 801);
    EXPECT_EQ("Feature Not Implemented", Last_Message());
    EXPECT_EQ(Message_Icon::Exclamation, platform.dialogs.asked.back().icon);
    int runs = 0;
    commands.Set_Handler({Menu::File, 801}, [&] {
        ++runs;
        EXPECT_TRUE(commands.Is_Busy());
        EXPECT_FALSE(Run(Menu::File, 304)); // one at a time
    });
    Run(Menu::File, 801);
    EXPECT_EQ(1, runs);
    EXPECT_EQ(1U, platform.dialogs.asked.size());
    EXPECT_FALSE(commands.Is_Busy());
    EXPECT_EQ(0, platform.shell.busy_depth);
}

TEST_F(Commands, Rotate_With_Nothing_Selected_Works_On_All_Free_Pictures)
{
    const int a = Add("a.jpg"), b = Add("b.jpg"), c = Add("c.jpg");
    Item(b).Lock_Flags = 0x1000;
    Run(Menu::Rotate, 101);
    EXPECT_EQ(270, Item(a).Rotate); // degrees run counterclockwise
    EXPECT_EQ(0, Item(b).Rotate);
    EXPECT_EQ(270, Item(c).Rotate);
    EXPECT_EQ("1 picture could not be rotated, locked by another function.", Last_Message());
    Item(a).Lock_Flags = 0x100;
    Run(Menu::Rotate, 102);
    EXPECT_EQ("2 pictures could not be rotated, locked by another function.", Last_Message());
    EXPECT_EQ(0, Item(c).Rotate);
}

TEST_F(Commands, Rotate_Turns_Only_The_Selected_Pictures_When_There_Are_Some)
{
    const int a = Add("a.jpg"), b = Add("b.jpg");
    Select({2});
    Run(Menu::Rotate, 103);
    EXPECT_EQ(0, Item(a).Rotate);
    EXPECT_EQ(180, Item(b).Rotate);
}

TEST_F(Commands, A_Clockwise_Turn_Puts_The_Left_Column_On_Top)
{
    const int key = Pick(Make("a.jpg", 160, 96));
    const Owned_Bitmap upright(form.Return_Picture(key, 0, 1));
    const Owned_Bitmap expected(Rotate_Bitmap(upright.Get(), 270));
    Run(Menu::Rotate, 101);
    const Owned_Bitmap turned(form.Return_Picture(key, 0, 1));
    EXPECT_EQ((Pixel_Size{96, 160}), Size_Of_Bitmap(turned.Get()));
    EXPECT_EQ(Pixels_Of(expected.Get()), Pixels_Of(turned.Get()));
}

TEST_F(Commands, Flips_Toggle_And_Both_Together_Are_A_Half_Turn)
{
    slide_show.open = true;
    const int key = Pick_New("a.jpg");
    const auto before = Pixels_Of(Thumbnail(key));
    Run(Menu::Rotate, 301);
    EXPECT_EQ(Flip_Left_To_Right, Item(key).Flip);
    Run(Menu::Rotate, 301);
    EXPECT_EQ(0, Item(key).Flip);
    EXPECT_EQ(before, Pixels_Of(Thumbnail(key)));
    Run(Menu::Rotate, 301);
    Run(Menu::Rotate, 302);
    EXPECT_EQ(0, Item(key).Flip);
    EXPECT_EQ(180, Item(key).Rotate);
    const Owned_Bitmap upright(Load_Picture_Bitmap(Path("a.jpg"), 1, Item(key).Scale_Divisor, 180, 0));
    EXPECT_EQ(Pixels_Of(upright.Get()), Pixels_Of(Thumbnail(key)));
    EXPECT_TRUE(slide_show.modified);
    EXPECT_FALSE(Item(key).Script_Modified); // there was no text to turn
}

TEST_F(Commands, Both_Flips_Turn_The_Texts_Of_The_Script)
{
    const int key =
        Add("a.jpg", "Text(\"<Paragraph width='50' height='20' orgx='10' orgy='30' escape='0' >a</Paragraph>\")");
    const QString before = form.Recall_Picture_All_Script_Items(key);
    Run(Menu::Rotate, 302);
    EXPECT_EQ(before, form.Recall_Picture_All_Script_Items(key));
    Run(Menu::Rotate, 301);
    EXPECT_NE(before, form.Recall_Picture_All_Script_Items(key));
    EXPECT_TRUE(Item(key).Script_Modified);
}

TEST_F(Commands, Select_None_All_And_Invert)
{
    for (const char* name : {"a", "b", "c"}) Add(name);
    const auto shown_once = [&] {
        return std::exchange(view.all_drawn, 0) == 1 && std::exchange(view.status_updates, 0) == 1;
    };
    Run(Menu::Select, 102);
    EXPECT_EQ((std::vector{1, 2, 3}), form.State().selection.Selected_Indices());
    EXPECT_TRUE(shown_once());
    Run(Menu::Select, 101);
    EXPECT_EQ(0, form.State().selection.Count());
    EXPECT_TRUE(shown_once());
    Select({2});
    Run(Menu::Select, 103);
    EXPECT_EQ((std::vector{1, 3}), form.State().selection.Selected_Indices());
    EXPECT_TRUE(shown_once());
}

TEST_F(Commands, Discard_Asks_First_And_Shift_On_The_Button_Discards_All)
{
    const int a = Add("a.jpg", "Crop(1,2,3,4)");
    Add("b.jpg");
    Item(a).Script_Modified = true;
    Select({1});
    Run(Menu::File, 103);
    EXPECT_EQ(2, form.State().pictures.Count()); // nobody said Yes
    platform.dialogs.answers = {Message_Answer::Yes};
    commands.Press_Panel(Discard_Button, 1, 0);
    EXPECT_EQ(1, form.State().pictures.Count());
    commands.Press_Panel(Discard_Button, 1, 1);
    EXPECT_EQ(0, form.State().pictures.Count());
}

TEST_F(Commands, Choosing_The_Prepared_Script_In_Force_Clears_It)
{
    commands.Choose_Prepared_Script(2);
    EXPECT_EQ(2, form.State().Current_Prepared_Script);
    commands.Choose_Prepared_Script(3);
    EXPECT_EQ(3, form.State().Current_Prepared_Script);
    commands.Choose_Prepared_Script(3);
    EXPECT_EQ(0, form.State().Current_Prepared_Script);
    commands.Choose_Prepared_Script(4);
    EXPECT_EQ(0, form.State().Current_Prepared_Script);
}

TEST_F(Commands, Scripts_Are_Cleared_Copied_And_Pasted)
{
    const int a = Add("a.jpg", "Crop(1,2,3,4)"), b = Add("b.jpg"), c = Add("c.jpg", "Blur(1,50,7)");
    Item(c).Lock_Flags = 0x1000;
    Select({1});
    Run(Menu::Script, 201);
    form.Set_Picture_Selected(0, false);
    Select({2});
    Run(Menu::Script, 202);
    EXPECT_EQ("Crop(1,2,3,4)", form.Recall_Picture_All_Script_Items(b));
    EXPECT_TRUE(Item(b).Script_Modified);
    Run(Menu::Script, 102);
    EXPECT_TRUE(Item(a).Script_Items.Is_Empty());
    EXPECT_TRUE(Item(a).Script_Modified);
    EXPECT_FALSE(Item(c).Script_Items.Is_Empty()); // in use elsewhere
    EXPECT_EQ("1 picture locked by another function.", Last_Message());
}

TEST_F(Commands, The_Script_That_Is_Copied_Is_That_Of_The_Picture_Selected_First)
{
    Add("a.jpg", "Crop(1,2,3,4)"), Add("b.jpg", "Crop(5,6,7,8)"), Add("c.jpg", "Crop(9,9,9,9)");
    Select({2, 1});
    Run(Menu::Script, 201);
    Run(Menu::Script, 203);
    EXPECT_EQ("Crop(5,6,7,8)", form.Recall_Picture_All_Script_Items(1));
    EXPECT_EQ("Crop(5,6,7,8)", form.Recall_Picture_All_Script_Items(3));
    EXPECT_TRUE(Item(3).Script_Modified);
}

TEST_F(Commands, Erasing_A_Script_That_Was_Not_There_Leaves_The_Record_Clean)
{
    const int key = Add("a.jpg");
    Run(Menu::Script, 102);
    EXPECT_FALSE(Item(key).Script_Modified);
}

TEST_F(Commands, The_Prepared_Script_Is_Pasted_Into_All)
{
    const int key = Add("a.jpg");
    commands.Choose_Prepared_Script(1);
    EXPECT_TRUE(Run(Menu::Script, 205));
    EXPECT_EQ("ConOpt(0.005,0.005,LUM)", form.Recall_Picture_All_Script_Items(key));
}

TEST_F(Commands, Scripts_Are_Saved_Where_They_Differ_And_Count_As_Unmodified_Then)
{
    const int key = Pick_New("a.jpg");
    form.Set_Picture_All_Script_Items(key, "Crop(1,2,3,4)");
    Run(Menu::Script, 402);
    EXPECT_FALSE(Item(key).Script_Modified);
    EXPECT_EQ("Crop(1,2,3,4)", Get_Image_Script(Path("a.jpg"), 1));
    const auto shown = platform.dialogs.progress_shown.size();
    Run(Menu::Script, 402);
    EXPECT_EQ(shown, platform.dialogs.progress_shown.size()); // nothing left to save
}

TEST_F(Commands, Rotations_Are_Saved_Into_The_Files)
{
    const int key = Pick(Make("a.jpg", 160, 96));
    Select({1});
    Run(Menu::Rotate, 101);
    Run(Menu::Rotate, 401);
    File_Dimensions facts;
    ASSERT_TRUE(Get_Dimensions(Path("a.jpg"), 1, facts));
    EXPECT_EQ(96, facts.width);
    EXPECT_EQ(0, Item(key).Rotate);
}

TEST_F(Commands, An_Empty_Image_Is_White_And_Has_The_Size_Asked_For)
{
    platform.dialogs.inputs = {QStringLiteral("40, 30")};
    platform.dialogs.picks = {QStringList{Path("new")}};
    Run(Menu::Options, 503);
    EXPECT_EQ("Enter image width and height in pixels, spearated by a comma.",
              platform.dialogs.input_asked.at(0).prompt);
    EXPECT_EQ("Halvine Create Empty Image File", platform.dialogs.input_asked.at(0).title);
    EXPECT_EQ("Halvine - Save Empty Image As", platform.dialogs.pick_asked.at(0).caption);
    const Owned_Bitmap bitmap(Load_Bitmap(Path("new.jpg"), 0, 1, 0));
    EXPECT_EQ((Pixel_Size{40, 30}), Size_Of_Bitmap(bitmap.Get()));
    for (const std::uint8_t byte : Pixels_Of(bitmap.Get())) ASSERT_EQ(255, byte);
}

TEST_F(Commands, A_Size_That_Is_None_Is_Refused)
{
    platform.dialogs.inputs = {QStringLiteral("40"), std::nullopt};
    Run(Menu::Options, 503);
    EXPECT_TRUE(platform.dialogs.pick_asked.empty());
    EXPECT_EQ("Image width and height must be whole numbers of at least 1.", Last_Message());
    Run(Menu::Options, 503);
    EXPECT_EQ(1U, platform.dialogs.asked.size()); // cancelled: not a word
}

TEST_F(Commands, The_Clipboards_Image_Is_Saved_And_A_Type_Behind_The_Name_Counts)
{
    host.clipboard = Drawn_Bitmap(20, 10, 1);
    platform.dialogs.picks = {QStringList{Path("clip.jpg:TIF")}};
    Run(Menu::Options, 501);
    EXPECT_EQ("Halvine - Save Image As", platform.dialogs.pick_asked.at(0).caption);
    EXPECT_EQ(int(Image_File_Type::TIFF), File_Type_From_Signature(Path("clip.jpg")));
    Run(Menu::Options, 501);
    EXPECT_EQ("The clipboard holds no image.", Last_Message());
}

TEST_F(Commands, A_Grey_Picture_Becomes_A_Color_File)
{
    Owned_Bitmap grey(Count_Bitmap(Create_Empty_Bitmap_CPP(20, 10, 1, 8)));
    ASSERT_TRUE(Save_Bitmap(grey.Get(), Path("grey.jpg"), 1, {}));
    Pick(Path("grey.jpg"));
    Select({1});
    platform.dialogs.picks = {QStringList{Path("color.jpg")}};
    Run(Menu::Options, 502);
    EXPECT_EQ("Halvine - Save RGB Image As", platform.dialogs.pick_asked.at(0).caption);
    EXPECT_EQ("grey-.jpg", platform.dialogs.pick_asked.at(0).name);
    File_Dimensions facts;
    ASSERT_TRUE(Get_Dimensions(Path("color.jpg"), 1, facts));
    EXPECT_EQ(24, facts.pixel_depth);
}

TEST_F(Commands, Camera_Information_Says_When_There_Is_None)
{
    Pick_New("a.jpg");
    Run(Menu::Options, 301);
    EXPECT_EQ("Halvine - Camera Information (EXIF)", platform.dialogs.asked.back().title);
    EXPECT_EQ("No camera information available", Last_Message());
}

TEST_F(Commands, The_Background_Color_Is_Asked_With_The_Present_One)
{
    host.color = std::array<int, 3>{1, 2, 3};
    Run(Menu::Options, 701);
    EXPECT_EQ((std::array<int, 3>{255, 255, 255}), host.asked_color);
    int red = 0, green = 0, blue = 0;
    form.Recall_Background_Color(red, green, blue);
    EXPECT_EQ(3, blue);
    form.Set_Background_Color(255, 255, 255);
}

TEST_F(Commands, Save_Selected_As_Follows_The_Options_And_A_Cancel_Saves_Nothing)
{
    Pick_New("a.jpg");
    Select({1});
    Run(Menu::File, 205);
    EXPECT_EQ(1U, folder.Names().size());
    host.options = Save_Options{.Save_Option = Save_Options::Target::Auto_Copy};
    Run(Menu::File, 205);
    EXPECT_EQ((QStringList{"a-hv.jpg", "a.jpg"}), Names());
}

TEST_F(Commands, Exit_Closes_Also_While_A_Pick_Runs)
{
    host.all_files = {Make("0.jpg")};
    for (int i = 1; i < 7; ++i) host.all_files << host.all_files.front();
    platform.events.on_call = [&](int) { Run(Menu::File, 999); };
    Run(Menu::File, 101);
    EXPECT_EQ(1, host.closes); // the close sequence will have its say
}

TEST(New_Image, Sizes_Are_Split_At_Commas_Semicolons_Slashes_And_Blanks)
{
    for (const char* text : {"640,480", "640;480", "640/480", "640 480", " 640 , 480 "})
        EXPECT_EQ((Pixel_Size{640, 480}), New_Image_Size(text)) << text;
    for (const char* text : {"", "640", "640,0", "-1,5", "a,b", "1,2,3", "1.5,2", "99999999999,1"})
        EXPECT_FALSE(New_Image_Size(text)) << text;
}

} // namespace
