#include "slides/Slide_Commands.h"

#include "slides/Slide_Show_Forwarder.h"
#include "tests/catalogue/Picture_Fixture.h"

namespace {

QString Q(const char* text)
{
    return QString::fromUtf8(text);
}

/// The Slides menu on a main window without widgets.
class Slide_Commands_Test : public Picture_Test {
protected:
    Slide_Commands_Test()
    {
        form.Set_Slide_Show(&link);
        commands.Bring_To(menu);
    }
    ~Slide_Commands_Test() override { form.Set_Slide_Show(nullptr); }
    bool Run(int number) { return menu.Run({Menu::Slides, number}); }
    int Count() const { return form.State().pictures.Count(); }
    QString Show(const char* name, const char* text)
    {
        Put_File(folder.File(name), text);
        return Path(Q(name));
    }

    Program_State program;
    Slide_Shows shows{form.State(), form.Picking(), program};
    Slide_Player player{form.State(), form.Pictures(), shows, program};
    Slide_Show_Forwarder link{shows, player};
    Recent_List recent{platform.settings, Q("Recent-Show")};
    Window_Host host;
    Catalogue_Commands menu{form, host};
    Slide_Commands commands{form, shows, player, program, recent};
};

TEST_F(Slide_Commands_Test, Every_Command_That_The_Table_Leaves_To_Others_Is_Here)
{
    int found = 0;
    for (const Command_Id& id : Commands_Brought()) {
        found += id.menu == Menu::Slides;
        EXPECT_TRUE(id.menu != Menu::Slides || menu.Is_Here(*Find_Command(id))) << id.number;
    }
    EXPECT_EQ(found, 12);
}

TEST_F(Slide_Commands_Test, Open_Replaces_And_Append_Adds)
{
    Make(Q("a.jpg"));
    Make(Q("b.jpg"));
    const QString one = Show("one.hvs", "PIC,'.\\a.jpg';");
    const QString two = Show("two.hvs", "PIC,'.\\b.jpg';");
    platform.dialogs.picks = {{one}, {two}, {two}};
    platform.dialogs.answers = {Message_Answer::Yes};
    ASSERT_TRUE(Run(101));
    EXPECT_EQ(Count(), 1);
    ASSERT_TRUE(Run(102));
    EXPECT_EQ(Count(), 2);
    EXPECT_TRUE(shows.Slide_Show_Modified());
    ASSERT_TRUE(Run(101)); // the question about the appended show is answered with Yes
    EXPECT_EQ(Count(), 1);
    EXPECT_EQ(recent.Paths(), (QStringList{two, one}));
}

TEST_F(Slide_Commands_Test, A_Show_That_Cannot_Be_Read_Is_Not_Remembered)
{
    commands.Open(Path(Q("none.hvs")), false);
    EXPECT_TRUE(Last_Message().contains(Q("none.hvs")));
    EXPECT_TRUE(recent.Paths().isEmpty());
    EXPECT_TRUE(link.File_Name().isEmpty());
}

TEST_F(Slide_Commands_Test, Saving_Names_The_Show_And_Copying_Does_Not)
{
    Pick_New(Q("a.jpg"));
    std::filesystem::create_directory(folder.File("copy"));
    platform.dialogs.picks = {{Path(Q("s.hvs"))}, {Path(Q("copy/c.hvs"))}, {Path(Q("t.hvs"))}, {Path(Q("copy/d.hvs"))}};
    ASSERT_TRUE(Run(201));
    EXPECT_EQ(link.File_Name(), Path(Q("s.hvs")));
    ASSERT_TRUE(Run(203));
    EXPECT_EQ(link.File_Name(), Path(Q("s.hvs")));
    form.Set_Picture_Selected(1, true);
    ASSERT_TRUE(Run(202));
    EXPECT_EQ(link.File_Name(), Path(Q("t.hvs")));
    ASSERT_TRUE(Run(204));
    EXPECT_TRUE(std::filesystem::exists(folder.File("copy/d.hvs")));
    EXPECT_EQ(recent.Paths(), (QStringList{Path(Q("t.hvs")), Path(Q("s.hvs"))}));
}

TEST_F(Slide_Commands_Test, Checks_Follow_Their_Commands)
{
    EXPECT_FALSE(menu.Is_Checked({Menu::Slides, 302}));
    ASSERT_TRUE(Run(302));
    EXPECT_TRUE(menu.Is_Checked({Menu::Slides, 302}));
    EXPECT_TRUE(player.Display_Full_Window);
    ASSERT_TRUE(Run(303));
    EXPECT_TRUE(player.Slide_Continuous);
    ASSERT_TRUE(Run(302));
    EXPECT_FALSE(menu.Is_Checked({Menu::Slides, 302}));
    EXPECT_TRUE(menu.Is_Checked({Menu::File, 903}));
}

TEST_F(Slide_Commands_Test, Start_And_Stop_Act_By_Turns)
{
    EXPECT_FALSE(Run(401)) << "no pictures";
    Pick_New(Q("a.jpg"));
    EXPECT_FALSE(Run(402));
    ASSERT_TRUE(Run(401));
    EXPECT_TRUE(player.Is_Running());
    EXPECT_FALSE(Run(401));
    ASSERT_TRUE(Run(402));
    EXPECT_FALSE(player.Is_Running());
}

TEST_F(Slide_Commands_Test, A_Pick_Asks_About_A_Modified_Show_And_Forgets_It)
{
    Make(Q("a.jpg"));
    commands.Open(Show("s.hvs", "PIC,'.\\a.jpg';"), true);
    menu.Pick_Paths({Make(Q("b.jpg"))}, false, true);
    EXPECT_TRUE(Last_Message().contains(Q("s.hvs modified, do you wish to abandon modifications?")));
    EXPECT_TRUE(link.Is_File_Open()) << "the answer was No";
    EXPECT_EQ(Count(), 1);
    platform.dialogs.answers = {Message_Answer::Yes};
    menu.Pick_Paths({Path(Q("b.jpg"))}, false, true);
    EXPECT_FALSE(link.Is_File_Open());
    EXPECT_EQ(form.State().pictures.Item(1).File_Name, Q("b.jpg"));
}

TEST_F(Slide_Commands_Test, A_Rotation_Modifies_The_Open_Show)
{
    Make(Q("a.jpg"));
    commands.Open(Show("s.hvs", "PIC,'.\\a.jpg';"), false);
    EXPECT_FALSE(shows.Slide_Show_Modified());
    form.Rotate_Picture(form.State().pictures.Item(1).Picture_Key, 90);
    EXPECT_TRUE(shows.Slide_Show_Modified());
}

struct Interval_Case {
    const char* name;
    const char* answer;
    float expected; // 0: refused
};

class Display_Interval : public Slide_Commands_Test, public testing::WithParamInterface<Interval_Case> {};

INSTANTIATE_TEST_SUITE_P(All, Display_Interval,
                         testing::Values(Interval_Case{"a_number", "4.5", 4.5F},
                                         Interval_Case{"blanks_around", " 3 ", 3},
                                         Interval_Case{"just_below_30", "29.99", 29.99F},
                                         Interval_Case{"30_itself", "30", 0}, Interval_Case{"zero", "0", 0},
                                         Interval_Case{"below_zero", "-1", 0}, Interval_Case{"no_number", "soon", 0},
                                         Interval_Case{"nothing", "", 0}, Interval_Case{"two_points", "1.2.3", 0}),
                         [](const auto& row) { return row.param.name; });

TEST_P(Display_Interval, Is_Accepted_Or_Asked_For_Again)
{
    platform.dialogs.inputs = {Q(GetParam().answer)};
    ASSERT_TRUE(Run(301));
    const auto& asked = platform.dialogs.input_asked;
    EXPECT_EQ(asked[0].title, Q("Slide display time interval"));
    EXPECT_EQ(asked[0].prompt, Q("Display interval for each slide, in seconds\r(must be less than 30 seconds)"));
    EXPECT_EQ(asked[0].text, Q("2.00"));
    const bool refused = GetParam().expected == 0;
    EXPECT_EQ(program.Slide_Display_Interval, refused ? 2 : GetParam().expected);
    EXPECT_EQ(asked.size(), refused ? 2U : 1U);
    EXPECT_EQ(platform.shell.beeps, refused ? 1 : 0);
}

TEST_F(Slide_Commands_Test, The_Hint_About_Esc_Is_Added_Once)
{
    platform.dialogs.inputs = {Q("a"), Q("b"), Q("c")};
    ASSERT_TRUE(Run(301));
    const auto& asked = platform.dialogs.input_asked;
    ASSERT_EQ(asked.size(), 4U);
    EXPECT_EQ(asked[1].prompt, asked[0].prompt + Q("\rOr press [Esc] or click cancel."));
    EXPECT_EQ(asked[3].prompt, asked[1].prompt);
    EXPECT_EQ(platform.shell.beeps, 3);
    EXPECT_EQ(program.Slide_Display_Interval, 2) << "cancelled";
}

TEST_F(Slide_Commands_Test, Slide_Times_Are_Asked_For_The_Selected_Or_All)
{
    Pick_New(Q("a.jpg"));
    Pick_New(Q("b.jpg"));
    ASSERT_TRUE(Run(103));
    EXPECT_EQ(Last_Message(), Q("Feature Not Implemented")) << "without a dialog";
    std::vector<int> asked;
    commands.Set_Slide_Time_Dialog([&](const std::vector<int>& indices, std::vector<float>& seconds, float standard) {
        EXPECT_EQ(standard, 2);
        asked = indices;
        seconds.back() = 7.5F;
        return indices.size() == 2;
    });
    ASSERT_TRUE(Run(103));
    EXPECT_EQ(asked, (std::vector{1, 2}));
    EXPECT_EQ(form.State().pictures.Item(2).Interval_In_Seconds, 7.5F);
    EXPECT_EQ(form.State().pictures.Item(1).Interval_In_Seconds, 0);
    form.Set_Picture_Selected(1, true);
    ASSERT_TRUE(Run(103));
    EXPECT_EQ(asked, std::vector{1});
    EXPECT_EQ(form.State().pictures.Item(1).Interval_In_Seconds, 0) << "cancelled";
    EXPECT_EQ(platform.shell.busy_depth, 0);
}

TEST_F(Slide_Commands_Test, A_Changed_Time_Modifies_The_Open_Show)
{
    Make(Q("a.jpg"));
    commands.Open(Show("s.hvs", "PIC,'.\\a.jpg',TIM:3;"), false);
    const int indices[] = {1, 9};
    const float same[] = {3, 3};
    commands.Apply_Slide_Times(indices, same);
    EXPECT_FALSE(shows.Slide_Show_Modified());
    const float other[] = {4};
    commands.Apply_Slide_Times(indices, other);
    EXPECT_TRUE(shows.Slide_Show_Modified());
}

} // namespace
