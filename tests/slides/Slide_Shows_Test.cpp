#include "slides/Slide_Shows.h"

#include "tests/catalogue/Picture_Fixture.h"

#include <filesystem>

namespace {

QString Q(const char* text)
{
    return QString::fromUtf8(text);
}

class Slide_Shows_Test : public Picture_Test {
protected:
    QString Put(const char* name, const char* text)
    {
        Put_File(folder.File(name), text);
        return Path(Q(name));
    }
    int Count() const { return form.State().pictures.Count(); }
    Picture_Item& Nth(int index) { return form.State().pictures.Item(index); }
    std::string Text(const char* name) const { return Contents_Of(folder.File(name)); }
    Program_State program;
    Slide_Shows shows{form.State(), form.Picking(), program};
};

TEST_F(Slide_Shows_Test, Saved_Shows_Open_Again_With_Rotation_And_Time)
{
    std::filesystem::create_directory(folder.File("sub"));
    Pick_New(Q("a.jpg"));
    Pick_New(Q("sub/b.jpg"));
    Nth(1).Rotate = 90;
    Nth(2).Interval_In_Seconds = 1.25F;
    program.Slide_Display_Interval = 3;
    platform.dialogs.picks = {{Path(Q("show"))}};
    ASSERT_TRUE(shows.Save_Slide_Show(false));
    EXPECT_EQ(shows.Slide_Show_File_Name(), Path(Q("show.hvs")));
    EXPECT_EQ(platform.dialogs.pick_asked.back().caption, Q("Halvine - Save Slide Show"));
    program.Slide_Display_Interval = 2;
    ASSERT_TRUE(shows.Open_Slide_Show(Path(Q("show.hvs")), false, true));
    ASSERT_EQ(Count(), 2);
    EXPECT_EQ(Nth(1).Rotate, 90);
    EXPECT_EQ(Nth(2).Interval_In_Seconds, 1.25F);
    EXPECT_EQ(Nth(2).Full_Name(), Path(Q("sub/b.jpg")));
    EXPECT_EQ(program.Slide_Display_Interval, 3);
    EXPECT_FALSE(shows.Slide_Show_Modified());
    EXPECT_TRUE(platform.dialogs.asked.empty());
}

TEST_F(Slide_Shows_Test, Time_Alone_Sets_The_Default_And_Opens_No_Pictures)
{
    Pick_New(Q("a.jpg"));
    ASSERT_TRUE(shows.Open_Slide_Show(Put("t.hvs", "TIM,5;"), false, true));
    EXPECT_EQ(program.Slide_Display_Interval, 5);
    EXPECT_EQ(Count(), 1) << "nothing was picked";
    EXPECT_EQ(shows.Slide_Show_File_Name(), Path(Q("t.hvs")));
}

TEST_F(Slide_Shows_Test, All_Moved_And_No_At_The_First_Question_Opens_An_Empty_Show)
{
    const QString file = Put("m.hvs", "<hvSlideShow><Slide file='.\\x.jpg'/><Slide file='.\\y.jpg'/></hvSlideShow>");
    ASSERT_TRUE(shows.Open_Slide_Show(file, false, true));
    EXPECT_EQ(Count(), 0);
    EXPECT_EQ(shows.Slide_Show_File_Name(), file);
    ASSERT_EQ(platform.dialogs.pick_asked.size(), 1U);
    EXPECT_EQ(platform.dialogs.pick_asked[0].caption, Q("Halvine - Find Folder Containing: x.jpg"));
    ASSERT_EQ(platform.dialogs.asked.size(), 1U);
    EXPECT_EQ(platform.dialogs.asked[0].text, Q("Do you wish to continue?"));
}

TEST_F(Slide_Shows_Test, A_Folder_Found_Once_Serves_The_Next_Pictures)
{
    std::filesystem::create_directory(folder.File("moved"));
    Make(Q("moved/x.jpg"));
    Make(Q("moved/y.jpg"));
    const QString file = Put("m.hvs", "PIC,'.\\x.jpg';\r\nPIC,'.\\y.jpg',ROT:90;\r\n");
    platform.dialogs.picks = {{Path(Q(""))}, {Path(Q("moved"))}};
    ASSERT_TRUE(shows.Open_Slide_Show(file, false, true));
    EXPECT_EQ(platform.dialogs.pick_asked.size(), 2U) << "the first folder did not hold it";
    ASSERT_EQ(Count(), 2);
    EXPECT_EQ(Nth(2).Rotate, 90);
}

TEST_F(Slide_Shows_Test, A_Full_Name_Is_Asked_For_As_A_File_And_Yes_Goes_On)
{
    Make(Q("a.jpg"));
    Make(Q("b.jpg"));
    const QString file = Put("m.hvs", "PIC,'/nowhere/gone.jpg';\nPIC,'C:\\old\\a.jpg';\nPIC,'.\\b.jpg';\n");
    platform.dialogs.picks = {{}, {Path(Q("a.jpg"))}};
    platform.dialogs.answers = {Message_Answer::Yes};
    ASSERT_TRUE(shows.Open_Slide_Show(file, false, true));
    EXPECT_EQ(platform.dialogs.pick_asked[0].caption, Q("Halvine - Find File: /nowhere/gone.jpg"));
    EXPECT_EQ(Count(), 2);
}

TEST_F(Slide_Shows_Test, Appending_Marks_The_Show_Modified_And_Asks_Before_The_Next)
{
    Make(Q("a.jpg"));
    const QString file = Put("m.hvs", "PIC,'.\\a.jpg';");
    ASSERT_TRUE(shows.Open_Slide_Show(file, true, true));
    EXPECT_TRUE(shows.Slide_Show_Modified());
    EXPECT_FALSE(shows.Open_Slide_Show(file, false, true)) << "the answer is No";
    EXPECT_EQ(Last_Message(), file +
                                  Q(" modified, do you wish to abandon modifications?\r\nTo save, click 'No' or "
                                    "'Cancel' then use Slides menu to save ") +
                                  file + Q("."));
    platform.dialogs.answers = {Message_Answer::Yes};
    EXPECT_TRUE(shows.Open_Slide_Show(file, false, true));
    EXPECT_FALSE(shows.Slide_Show_Modified());
}

TEST_F(Slide_Shows_Test, Sounds_Are_Kept_Until_Another_Show_Opens)
{
    Put("x.wav", "sound");
    ASSERT_TRUE(shows.Open_Slide_Show(Put("s.hvs", "SND,'.\\x.wav';"), false, true));
    EXPECT_EQ(shows.Sounds(), QStringList(Path(Q("x.wav"))));
    ASSERT_TRUE(shows.Open_Slide_Show(Put("t.hvs", "TIM,5;"), false, false));
    EXPECT_TRUE(shows.Sounds().isEmpty());
    EXPECT_EQ(shows.Slide_Show_File_Name(), Path(Q("s.hvs"))) << "without picking nothing else happens";
}

TEST_F(Slide_Shows_Test, Names_In_Windows_1252_Are_Found)
{
    Make(Q("K\xC3\xB6ln.jpg"));
    ASSERT_TRUE(shows.Open_Slide_Show(Put("w.hvs", "PIC,'.\\K\xF6ln.jpg';"), false, true));
    EXPECT_EQ(Count(), 1);
}

TEST_F(Slide_Shows_Test, A_File_That_Cannot_Be_Read_Says_Why)
{
    EXPECT_FALSE(shows.Open_Slide_Show(Path(Q("none.hvs")), false, true));
    EXPECT_TRUE(Last_Message().contains(Q("none.hvs")));
    EXPECT_FALSE(shows.Open_Slide_Show({}, false, true)) << "the dialog was cancelled";
    EXPECT_EQ(platform.dialogs.pick_asked.back().caption, Q("Halvine - Open Slide Show"));
}

TEST_F(Slide_Shows_Test, Copies_Stand_By_Themselves)
{
    std::filesystem::create_directory(folder.File("it's"));
    Pick_New(Q("a.jpg"));
    Pick_New(Q("b.jpg"));
    Pick_New(Q("c'd.jpg"));
    Nth(1).Rotate = 180;
    Nth(3).Interval_In_Seconds = 9;
    std::filesystem::remove(folder.File("b.jpg"));
    platform.dialogs.picks = {{Path(Q("it's/copy"))}};
    ASSERT_TRUE(shows.Copy_Slide_Show_As(false));
    const std::string text = Text("it's/copy.hvs");
    const std::string records = text.substr(text.find("PIC"));
    EXPECT_EQ(records, "PIC,'.\\ss001-a.jpg',ROT:180;\r\nPIC,'.\\ss003-c''d.jpg';\r\nTIM,2.00;\r\n");
    EXPECT_NE(text.find("it''s\\';\r\n"), std::string::npos);
    EXPECT_TRUE(shows.Slide_Show_File_Name().isEmpty());
    EXPECT_EQ(platform.shell.busy_depth, 0);
    std::filesystem::rename(folder.File("it's"), folder.File("elsewhere"));
    ASSERT_TRUE(shows.Open_Slide_Show(Path(Q("elsewhere/copy.hvs")), false, true));
    EXPECT_EQ(Count(), 2) << "found beside the show";
}

TEST_F(Slide_Shows_Test, A_Copy_Never_Takes_The_Place_Of_A_Picture_Of_The_Show)
{
    Pick_New(Q("a.jpg"));
    Pick(Make(Q("ss001-a.jpg"), 40, 40));
    const std::string before = Text("ss001-a.jpg");
    platform.dialogs.picks = {{Path(Q("copy.hvs"))}};
    ASSERT_TRUE(shows.Copy_Slide_Show_As(false));
    EXPECT_EQ(Text("ss001-a.jpg"), before);
    EXPECT_EQ(Text("copy.hvs").find("ss001-a.jpg',"), std::string::npos);
}

TEST_F(Slide_Shows_Test, Only_The_Selected_Are_Saved_And_A_Failure_Is_Told)
{
    Pick_New(Q("a.jpg"));
    const int second = Pick_New(Q("b.jpg"));
    form.State().selection.Clear();
    form.Set_Picture_Key_Selected(second, true);
    platform.dialogs.picks = {{Path(Q("one.hvs"))}, {Path(Q("no/such/one.hvs"))}};
    ASSERT_TRUE(shows.Save_Slide_Show(true));
    EXPECT_EQ(Text("one.hvs").find("a.jpg"), std::string::npos);
    EXPECT_FALSE(shows.Save_Slide_Show(true));
    EXPECT_EQ(platform.dialogs.asked.back().title, Q("Halvine Error Saving Slide Show"));
    EXPECT_EQ(shows.Slide_Show_File_Name(), Path(Q("one.hvs")));
}

TEST_F(Slide_Shows_Test, What_Was_Read_Before_A_No_Is_Picked)
{
    Make(Q("a.jpg"));
    Make(Q("c.jpg"));
    const QString file = Put("m.hvs", "PIC,'.\\a.jpg';\nPIC,'.\\gone.jpg';\nPIC,'.\\c.jpg';\nTIM,9;\n");
    for (const Message_Answer answer : {Message_Answer::No, Message_Answer::Cancel}) {
        platform.dialogs.answers = {answer};
        ASSERT_TRUE(shows.Open_Slide_Show(file, false, true));
        ASSERT_EQ(Count(), 1);
        EXPECT_EQ(Nth(1).File_Name, Q("a.jpg"));
        EXPECT_EQ(program.Slide_Display_Interval, 2) << "the reading stopped";
    }
}

TEST_F(Slide_Shows_Test, Folders_Are_Tried_Last_Found_Own_And_Named)
{
    for (const char* name : {"last", "own", "named"}) std::filesystem::create_directory(folder.File(name));
    for (const char* name : {"last/1.jpg", "last/2.jpg", "own/2.jpg", "own/3.jpg", "named/3.jpg", "named/4.jpg"})
        Make(Q(name));
    Put("own/s.hvs", ("DIR,'" + folder.File("named") +
                      "';\nPIC,'.\\1.jpg';\nPIC,'.\\2.jpg';\nPIC,'.\\3.jpg';\n"
                      "PIC,'.\\4.jpg';\n")
                         .c_str());
    platform.dialogs.picks = {{Path(Q("last"))}};
    ASSERT_TRUE(shows.Open_Slide_Show(Path(Q("own/s.hvs")), false, true));
    ASSERT_EQ(Count(), 4);
    EXPECT_EQ(Nth(1).Full_Name(), Path(Q("last/1.jpg")));
    EXPECT_EQ(Nth(2).Full_Name(), Path(Q("last/2.jpg")));
    EXPECT_EQ(Nth(3).Full_Name(), Path(Q("own/3.jpg")));
    EXPECT_EQ(Nth(4).Full_Name(), Path(Q("named/4.jpg")));
}

TEST_F(Slide_Shows_Test, All_Selected_Are_Saved_In_The_Order_Of_Selecting)
{
    Pick_New(Q("a.jpg"));
    Pick_New(Q("b.jpg"));
    form.State().selection.Clear();
    form.Set_Picture_Selected(2, true);
    form.Set_Picture_Selected(1, true);
    platform.dialogs.picks = {{Path(Q("one.hvs"))}};
    ASSERT_TRUE(shows.Save_Slide_Show(false));
    EXPECT_LT(Text("one.hvs").find("b.jpg"), Text("one.hvs").find("a.jpg"));
}

TEST_F(Slide_Shows_Test, Saving_Selected_Without_A_Selection_Saves_All)
{
    Pick_New(Q("a.jpg"));
    Pick_New(Q("b.jpg"));
    form.State().selection.Clear();
    platform.dialogs.picks = {{Path(Q("one.hvs"))}};
    ASSERT_TRUE(shows.Save_Slide_Show(true));
    EXPECT_NE(Text("one.hvs").find("b.jpg"), std::string::npos);
}

TEST_F(Slide_Shows_Test, Without_Pictures_Nothing_Is_Asked_For)
{
    EXPECT_FALSE(shows.Save_Slide_Show(false));
    EXPECT_FALSE(shows.Copy_Slide_Show_As(false));
    EXPECT_TRUE(platform.dialogs.pick_asked.empty());
}

TEST_F(Slide_Shows_Test, The_Open_Show_Is_Proposed_And_Written_Over_Without_A_Question)
{
    Pick_New(Q("a.jpg"));
    Put("other.hvs", "other");
    platform.dialogs.picks = {{Path(Q("one.hvs"))}, {Path(Q("one.hvs"))}, {Path(Q("other.hvs"))}};
    ASSERT_TRUE(shows.Save_Slide_Show(false));
    ASSERT_TRUE(shows.Save_Slide_Show(false));
    EXPECT_EQ(platform.dialogs.pick_asked.back().name, Q("one.hvs"));
    EXPECT_TRUE(platform.dialogs.asked.empty());
    EXPECT_FALSE(shows.Save_Slide_Show(false)) << "another file is asked about, and the answer is No";
    EXPECT_EQ(Text("other.hvs"), "other");
    EXPECT_EQ(shows.Slide_Show_File_Name(), Path(Q("one.hvs")));
}

TEST_F(Slide_Shows_Test, Flips_Go_Into_Neither_Form)
{
    Pick_New(Q("a.jpg"));
    std::filesystem::create_directory(folder.File("copy"));
    platform.dialogs.picks = {{Path(Q("one.hvs"))}, {Path(Q("copy/two.hvs"))}};
    ASSERT_TRUE(shows.Save_Slide_Show(false));
    ASSERT_TRUE(shows.Copy_Slide_Show_As(false));
    const std::string one = Text("one.hvs"), two = Text("copy/two.hvs");
    Nth(1).Flip = Flip_Left_To_Right;
    platform.dialogs.picks = {{Path(Q("one.hvs"))}, {Path(Q("copy/two.hvs"))}};
    platform.dialogs.answers = {Message_Answer::Yes};
    ASSERT_TRUE(shows.Save_Slide_Show(false));
    ASSERT_TRUE(shows.Copy_Slide_Show_As(false));
    EXPECT_EQ(Text("one.hvs"), one);
    EXPECT_EQ(Text("copy/two.hvs"), two);
}

TEST_F(Slide_Shows_Test, A_Copy_Gets_Its_Extension_Unless_The_Name_Ends_In_A_Point)
{
    Pick_New(Q("a.jpg"));
    for (const char* name : {"c1", "c2"}) std::filesystem::create_directory(folder.File(name));
    platform.dialogs.picks = {{Path(Q("c1/show"))}, {Path(Q("c2/show."))}};
    ASSERT_TRUE(shows.Copy_Slide_Show_As(false));
    EXPECT_TRUE(std::filesystem::exists(folder.File("c1/show.hvs")));
    EXPECT_EQ(platform.dialogs.pick_asked.back().caption, Q("Halvine - Copy Slide Show As"));
    ASSERT_TRUE(shows.Copy_Slide_Show_As(false));
    EXPECT_TRUE(std::filesystem::exists(folder.File("c2/show.")));
}

TEST_F(Slide_Shows_Test, A_Copy_Asks_Before_It_Overwrites_A_Show)
{
    Pick_New(Q("a.jpg"));
    Put("there.hvs", "before");
    platform.dialogs.picks = {{Path(Q("there.hvs"))}};
    EXPECT_FALSE(shows.Copy_Slide_Show_As(false));
    EXPECT_EQ(Last_Message(), Path(Q("there.hvs")) + Q(" already exists, do you wish to overwrite?"));
    EXPECT_EQ(Text("there.hvs"), "before");
    EXPECT_FALSE(std::filesystem::exists(folder.File("ss001-a.jpg")));
}

TEST_F(Slide_Shows_Test, A_Script_That_Would_Be_Lost_Is_Asked_About)
{
    Pick_New(Q("a.jpg"));
    Nth(1).Script_Modified = true;
    const QString file = Put("m.hvs", "TIM,5;");
    EXPECT_FALSE(shows.Open_Slide_Show(file, false, true));
    EXPECT_TRUE(Last_Message().contains(Q("1 scripts modified")));
    ASSERT_TRUE(shows.Open_Slide_Show(file, true, true)) << "appending loses nothing";
}

TEST_F(Slide_Shows_Test, Pictures_In_Use_Are_Not_Replaced)
{
    Pick_New(Q("a.jpg"));
    Make(Q("b.jpg"));
    const QString file = Put("m.hvs", "PIC,'.\\b.jpg';");
    Nth(1).Lock_Flags = Hard_Lock_Mask;
    EXPECT_FALSE(shows.Open_Slide_Show(file, false, true));
    EXPECT_TRUE(Last_Message().startsWith(Q("Some or all of the pictures that would be discarded are in use.")));
    ASSERT_TRUE(shows.Open_Slide_Show(file, true, true));
    EXPECT_EQ(Count(), 2);
}

} // namespace
