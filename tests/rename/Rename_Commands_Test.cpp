#include "rename/Rename_Commands.h"

#include "frame/text/Path_Utilities.h"
#include "tests/catalogue/Picture_Fixture.h"

#include <QtCore/QRegularExpression>

namespace {

QString Q(const char* text)
{
    return QString::fromUtf8(text);
}

/// Answers in the windows' place.
class Scripted_Forms final : public Rename_Describe_Dialogs {
public:
    bool Rename_Dialog(const QString& Dialog_Caption, const std::vector<int>& Rename_Picture_Index,
                       QStringList& Rename_To_File_Name) override
    {
        caption = Dialog_Caption;
        indices = Rename_Picture_Index;
        if (accept) Rename_To_File_Name = texts;
        return accept;
    }
    void Rename_Pattern_Dialog() override { opened << Q("patterns"); }
    void Rename_Formula_Dialog() override { opened << Q("formulas"); }
    void File_Data_Formula_Dialog() override { opened << Q("file data"); }
    bool Describe_Dialog(const std::vector<int>& Describe_Picture_Index, QStringList& Picture_Description) override
    {
        indices = Describe_Picture_Index;
        given = Picture_Description;
        if (accept) Picture_Description = texts;
        return accept;
    }
    bool Slide_Time_Dialog(const std::vector<int>&, std::vector<float>&, float) override { return false; }

    bool accept = true;
    QString caption;
    std::vector<int> indices;
    QStringList texts; // what the user leaves in the grid
    QStringList given;
    QStringList opened;
};

class Folder_View : public Recording_View {
public:
    QString Explorer_Path() const override { return path; }
    QString path;
};

class Rename_Commands_Test : public Picture_Test {
protected:
    Rename_Commands_Test()
    {
        form.Set_View(&folder_view);
        folder_view.path = QString::fromStdString(folder.Path());
    }
    void Pick_New_Pictures(const QStringList& names)
    {
        int seed = 0;
        for (const QString& name : names) Pick(Make(name, 160, 96, 1, {}, {}, ++seed));
    }
    void Rename_To(const QStringList& names)
    {
        forms.texts = names;
        commands.Rename_Selected();
    }
    QStringList Listed() const
    {
        QStringList names;
        for (int i = 1; i <= form.State().pictures.Count(); ++i) names << form.State().pictures.Item(i).File_Name;
        return names;
    }
    std::string Bytes(const QString& name) const { return Contents_Of(File(name)); }
    QStringList Pictures() const { return Names().filter(QRegularExpression(Q("jpg$"))); }
    QString Last_List() const
    {
        return platform.dialogs.lists_shown.empty() ? QString()
                                                    : platform.dialogs.lists_shown.back().second.join(u'\n');
    }

    Test_Folder state;
    Folder_View folder_view;
    Scripted_Forms forms;
    System_Rename_Files files;
    Rename_Journal_Folder journal{state.Path()};
    int changes_shown = 0;
    Rename_Commands commands{
        {.form = form, .dialogs = forms, .files = files, .journal = journal, .show_file_changes = [this] {
             ++changes_shown;
         }}};
};

TEST_F(Rename_Commands_Test, Records_Follow_Their_Files)
{
    Pick_New_Pictures({Q("a.jpg"), Q("b.jpg")});
    Rename_To({Q("x.jpg"), Q("b.jpg")});
    EXPECT_EQ(Pictures(), (QStringList{Q("b.jpg"), Q("x.jpg")}));
    EXPECT_EQ(Listed(), (QStringList{Q("x.jpg"), Q("b.jpg")}));
    EXPECT_EQ(form.Return_Picture_Key(Path(Q("x.jpg")), false), form.State().pictures.Item(1).Picture_Key);
    EXPECT_EQ(changes_shown, 1);
    EXPECT_TRUE(platform.dialogs.asked.empty());
}

TEST_F(Rename_Commands_Test, Two_Pictures_Exchange_Their_Names)
{
    Pick_New_Pictures({Q("a.jpg"), Q("b.jpg")});
    const std::string a = Bytes(Q("a.jpg"));
    Rename_To({Q("b.jpg"), Q("a.jpg")});
    EXPECT_EQ(Listed(), (QStringList{Q("b.jpg"), Q("a.jpg")}));
    EXPECT_EQ(Bytes(Q("b.jpg")), a);
}

TEST_F(Rename_Commands_Test, Names_That_Are_No_Utf_8_Are_Changed_And_Taken_Back)
{
    const auto text = [](const char* bytes) { return Path_From_Bytes(QByteArray(bytes)); };
    Pick(Make(text("K\xf6ln_1.jpg")));
    Rename_To({text("M\xfcnchen_1.jpg")});
    EXPECT_EQ(folder.Names(), std::vector<std::string>{"M\xfcnchen_1.jpg"});
    EXPECT_EQ(Listed(), QStringList{text("M\xfcnchen_1.jpg")});
    platform.dialogs.answers = {Message_Answer::Yes};
    commands.Take_Back();
    EXPECT_EQ(folder.Names(), std::vector<std::string>{"K\xf6ln_1.jpg"});
    EXPECT_EQ(Listed(), QStringList{text("K\xf6ln_1.jpg")});
}

TEST_F(Rename_Commands_Test, The_Selected_Pictures_Are_Named_In_The_Order_Of_Selecting)
{
    Pick_New_Pictures({Q("a.jpg"), Q("b.jpg"), Q("c.jpg")});
    form.Set_Picture_Selected(3, true);
    form.Set_Picture_Selected(1, true);
    Rename_To({Q("1.jpg"), Q("2.jpg")});
    EXPECT_EQ(forms.indices, (std::vector<int>{3, 1}));
    EXPECT_EQ(Listed(), (QStringList{Q("2.jpg"), Q("b.jpg"), Q("1.jpg")}));
}

TEST_F(Rename_Commands_Test, Cancel_Changes_Nothing)
{
    Pick_New_Pictures({Q("a.jpg")});
    forms.accept = false;
    Rename_To({Q("x.jpg")});
    EXPECT_EQ(Pictures(), QStringList{Q("a.jpg")});
}

TEST_F(Rename_Commands_Test, A_File_That_Was_Picked_Twice_Is_Named_Once_And_Both_Records_Follow)
{
    Pick_New_Pictures({Q("a.jpg")});
    Pick(Path(Q("a.jpg")));
    ASSERT_EQ(form.State().pictures.Count(), 2);
    Rename_To({Q("x.jpg")});
    EXPECT_EQ(forms.indices, std::vector<int>{1});
    EXPECT_EQ(Listed(), (QStringList{Q("x.jpg"), Q("x.jpg")}));
}

TEST_F(Rename_Commands_Test, Yes_To_The_Overwrite_Question_Puts_The_Other_File_Into_The_Trash)
{
    Pick_New_Pictures({Q("a.jpg")});
    Make(Q("x.jpg"));
    const std::string a = Bytes(Q("a.jpg"));
    platform.dialogs.responses = {Response_Code::Yes};
    Rename_To({Q("x.jpg")});
    ASSERT_EQ(platform.dialogs.response_asked.size(), 1U);
    EXPECT_EQ(platform.dialogs.response_asked[0].first, "Halvine - Rename File Overwrite");
    EXPECT_EQ(platform.dialogs.response_asked[0].second,
              Q("Do you wish to overwrite ") + Path(Q("x.jpg")) + Q(" with \r\n") + Path(Q("a.jpg")) + Q("?"));
    EXPECT_EQ(platform.shell.trashed, QStringList{Path(Q("x.jpg"))});
    EXPECT_EQ(Bytes(Q("x.jpg")), a);
    EXPECT_EQ(Pictures(), QStringList{Q("x.jpg")});
}

TEST_F(Rename_Commands_Test, No_Lets_The_File_Keep_Its_Name_And_The_Others_Go_On)
{
    Pick_New_Pictures({Q("a.jpg"), Q("b.jpg")});
    Make(Q("x.jpg"));
    platform.dialogs.responses = {Response_Code::No};
    Rename_To({Q("x.jpg"), Q("y.jpg")});
    EXPECT_EQ(Listed(), (QStringList{Q("a.jpg"), Q("y.jpg")}));
    EXPECT_TRUE(platform.shell.trashed.isEmpty());
}

TEST_F(Rename_Commands_Test, A_Name_That_Is_Kept_After_A_No_Is_Asked_About_Too)
{
    Pick_New_Pictures({Q("a.jpg"), Q("b.jpg")});
    Make(Q("x.jpg"));
    platform.dialogs.responses = {Response_Code::No, Response_Code::No};
    Rename_To({Q("x.jpg"), Q("a.jpg")}); // b may have the name a only if a goes away
    EXPECT_EQ(platform.dialogs.response_asked.size(), 2U);
    EXPECT_EQ(Listed(), (QStringList{Q("a.jpg"), Q("b.jpg")}));
}

TEST_F(Rename_Commands_Test, Cancel_In_The_Overwrite_Question_Ends_The_Whole_Rename)
{
    Pick_New_Pictures({Q("a.jpg"), Q("b.jpg")});
    Make(Q("x.jpg"));
    platform.dialogs.responses = {Response_Code::Cancel};
    Rename_To({Q("x.jpg"), Q("y.jpg")});
    EXPECT_EQ(Listed(), (QStringList{Q("a.jpg"), Q("b.jpg")}));
    EXPECT_EQ(Pictures(), (QStringList{Q("a.jpg"), Q("b.jpg"), Q("x.jpg")}));
}

TEST_F(Rename_Commands_Test, Yes_To_All_Holds_For_The_Rest)
{
    Pick_New_Pictures({Q("a.jpg"), Q("b.jpg")});
    Make(Q("x.jpg"));
    Make(Q("y.jpg"));
    platform.dialogs.responses = {Response_Code::Yes_To_All};
    Rename_To({Q("x.jpg"), Q("y.jpg")});
    EXPECT_EQ(platform.dialogs.response_asked.size(), 1U);
    EXPECT_EQ(platform.shell.trashed.size(), 2);
    EXPECT_EQ(Listed(), (QStringList{Q("x.jpg"), Q("y.jpg")}));
}

TEST_F(Rename_Commands_Test, A_File_That_Cannot_Go_To_The_Trash_Stops_The_Rename)
{
    Pick_New_Pictures({Q("a.jpg")});
    Make(Q("x.jpg"));
    platform.dialogs.responses = {Response_Code::Yes};
    platform.shell.refuse_trash_with = Q("no trash here");
    Rename_To({Q("x.jpg")});
    EXPECT_EQ(Last_Message(), Path(Q("x.jpg")) + Q(": no trash here. No picture was renamed."));
    EXPECT_EQ(Listed(), QStringList{Q("a.jpg")});
}

TEST_F(Rename_Commands_Test, A_File_That_A_Window_Works_With_Is_Not_Given_Up)
{
    Pick_New_Pictures({Q("a.jpg"), Q("x.jpg")});
    form.Set_Picture_Selected(1, true);
    Item(form.State().pictures.Item(2).Picture_Key).Lock_Flags = 0x1000;
    platform.dialogs.responses = {Response_Code::Yes};
    Rename_To({Q("x.jpg")});
    EXPECT_EQ(Last_Message(), Path(Q("x.jpg")) + Q(": locked by another function. Nothing was changed."));
    EXPECT_EQ(Pictures(), (QStringList{Q("a.jpg"), Q("x.jpg")}));
}

TEST_F(Rename_Commands_Test, The_Record_Of_A_File_That_Was_Given_Up_Goes)
{
    Pick_New_Pictures({Q("a.jpg"), Q("x.jpg")});
    form.Set_Picture_Selected(1, true);
    platform.dialogs.responses = {Response_Code::Yes};
    Rename_To({Q("x.jpg")});
    EXPECT_EQ(Listed(), QStringList{Q("x.jpg")});
}

TEST_F(Rename_Commands_Test, Names_That_Cannot_Be_Are_Listed_And_Nothing_Is_Changed)
{
    Pick_New_Pictures({Q("a.jpg"), Q("b.jpg"), Q("c.jpg")});
    platform.dialogs.answers = {Message_Answer::Yes};
    Rename_To({Q("x/y.jpg"), Q("z.jpg"), Q("z.jpg")});
    EXPECT_EQ(Last_Message(), Q("Halvine was unable to use 2 of the new names. Nothing was changed.\r\nDo you wish to "
                                "see a list of them?"));
    EXPECT_EQ(Last_List(),
              Q("a.jpg: \"x/y.jpg\" would leave the folder\nc.jpg: \"z.jpg\" is the new name of b.jpg too"));
    EXPECT_EQ(Pictures(), (QStringList{Q("a.jpg"), Q("b.jpg"), Q("c.jpg")}));
}

TEST_F(Rename_Commands_Test, A_Locked_Picture_Is_Told_And_Left_Out)
{
    Pick_New_Pictures({Q("a.jpg"), Q("b.jpg")});
    form.State().pictures.Item(1).Lock_Flags = 0x100;
    Rename_To({Q("y.jpg")});
    EXPECT_EQ(Last_Message(), "1 picture locked by another function.");
    EXPECT_EQ(Listed(), (QStringList{Q("a.jpg"), Q("y.jpg")}));
}

TEST_F(Rename_Commands_Test, The_Last_Rename_Is_Taken_Back_And_Records_Follow)
{
    Pick_New_Pictures({Q("a.jpg"), Q("b.jpg")});
    Rename_To({Q("b.jpg"), Q("a.jpg")});
    platform.dialogs.answers = {Message_Answer::Yes};
    commands.Take_Back();
    EXPECT_EQ(Last_Message(), Q("Do you wish to give the files of the last rename their old names, 2 of 2?\r\n") +
                                  Path(Q("b.jpg")) + Q(" is to be a.jpg again."));
    EXPECT_EQ(Listed(), (QStringList{Q("a.jpg"), Q("b.jpg")}));
    commands.Take_Back();
    EXPECT_EQ(Last_Message(), "There is no rename to take back.");
}

TEST_F(Rename_Commands_Test, A_Damaged_Journal_Of_The_Last_Rename_Is_Told_And_Nothing_Is_Taken_Back)
{
    Pick_New_Pictures({Q("a.jpg")});
    Rename_To({Q("b.jpg")});
    Rename_To({Q("c.jpg")});
    const std::string path = state.File(state.Names().back());
    Put_File(path, Contents_Of(path) + "x");
    commands.Take_Back();
    EXPECT_TRUE(Last_Message().startsWith("The last rename cannot be taken back, for its journal is damaged: "))
        << Last_Message().toStdString();
    EXPECT_EQ(Listed(), QStringList{Q("c.jpg")});
}

TEST_F(Rename_Commands_Test, A_Rename_Whose_Files_Are_Gone_Is_Told_And_Forgotten)
{
    Pick_New_Pictures({Q("a.jpg")});
    Rename_To({Q("b.jpg")});
    ASSERT_EQ(std::remove(File(Q("b.jpg")).c_str()), 0);
    commands.Take_Back();
    EXPECT_EQ(Last_Message(), "None of the files of the last rename is there any more");
    commands.Take_Back();
    EXPECT_EQ(Last_Message(), "There is no rename to take back.");
}

TEST_F(Rename_Commands_Test, A_Damaged_Journal_Is_Told_At_One_Start_And_Not_At_The_Next)
{
    Put_File(state.File("rename-9.journal"), "B\nnames");
    commands.Put_Interrupted_Right();
    EXPECT_EQ(Last_Message(),
              Q("The journal of a rename that may have been interrupted is damaged: line 1 breaks off; it "
                "is kept as ") +
                  QString::fromStdString(state.File("set-aside-rename-9.journal")));
    const auto asked = platform.dialogs.asked.size();
    commands.Put_Interrupted_Right();
    EXPECT_EQ(platform.dialogs.asked.size(), asked);
}

TEST_F(Rename_Commands_Test, A_No_To_Taking_Back_Leaves_The_Names)
{
    Pick_New_Pictures({Q("a.jpg")});
    Rename_To({Q("x.jpg")});
    platform.dialogs.answers = {Message_Answer::No};
    commands.Take_Back();
    EXPECT_EQ(Listed(), QStringList{Q("x.jpg")});
    EXPECT_TRUE(journal.Last_Done().value());
}

TEST_F(Rename_Commands_Test, A_Crash_In_The_Middle_Is_Told_At_The_Next_Start)
{
    Pick_New_Pictures({Q("a.jpg"), Q("b.jpg")});
    const std::string folder_name = folder.Path() + "/";
    const Rename_Plan plan(files, {{folder_name, "a.jpg", "b.jpg"}, {folder_name, "b.jpg", "a.jpg"}});
    {
        Rename_Journal_Folder crashed(state.Path());
        ASSERT_TRUE(crashed.Begin({plan.Moves(), plan.Steps()}));
        ASSERT_TRUE(files.Rename(plan.Steps()[0].from, plan.Steps()[0].to));
    }
    commands.Put_Interrupted_Right();
    EXPECT_EQ(Last_Message(), "A rename was interrupted; its files have their old names again");
    EXPECT_EQ(Pictures(), (QStringList{Q("a.jpg"), Q("b.jpg")}));
}

TEST_F(Rename_Commands_Test, Copies_Go_To_The_Folder_Of_The_Pane_Under_Their_New_Names)
{
    Pick_New_Pictures({Q("a.jpg"), Q("b.jpg")});
    Test_Folder target;
    folder_view.path = QString::fromStdString(target.Path());
    forms.texts = {Q("x.jpg"), Q("b.jpg")};
    commands.Copy_Rename_Selected();
    EXPECT_EQ(target.Names(), (std::vector<std::string>{"b.jpg", "x.jpg"}));
    EXPECT_EQ(Listed(), (QStringList{Q("a.jpg"), Q("b.jpg")}));
    EXPECT_EQ(Contents_Of(target.File("x.jpg")), Bytes(Q("a.jpg")));
    EXPECT_EQ(changes_shown, 1);
}

TEST_F(Rename_Commands_Test, A_Copy_Onto_Another_File_Is_Asked_About)
{
    Pick_New_Pictures({Q("a.jpg"), Q("b.jpg")});
    Test_Folder target;
    Put_File(target.File("a.jpg"), "old a");
    Put_File(target.File("b.jpg"), "old b");
    folder_view.path = QString::fromStdString(target.Path());
    forms.texts = {Q("a.jpg"), Q("b.jpg")};
    platform.dialogs.responses = {Response_Code::No, Response_Code::Yes};
    commands.Copy_Rename_Selected();
    EXPECT_EQ(platform.dialogs.response_asked[0].first, "Halvine - Rename/Copy File Overwrite");
    EXPECT_EQ(Contents_Of(target.File("a.jpg")), "old a");
    EXPECT_EQ(Contents_Of(target.File("b.jpg")), Bytes(Q("b.jpg")));
    EXPECT_EQ(platform.shell.trashed, QStringList{QString::fromStdString(target.File("b.jpg"))});
}

TEST_F(Rename_Commands_Test, Copies_In_The_Same_Folder_Leave_Alone_What_Keeps_Its_Name)
{
    Pick_New_Pictures({Q("a.jpg"), Q("b.jpg")});
    forms.texts = {Q("a.jpg"), Q("c.jpg")};
    commands.Copy_Rename_Selected();
    EXPECT_EQ(Pictures(), (QStringList{Q("a.jpg"), Q("b.jpg"), Q("c.jpg")}));
    EXPECT_TRUE(platform.dialogs.response_asked.empty());
}

TEST_F(Rename_Commands_Test, Descriptions_Are_Written_Into_The_Records_That_Changed)
{
    Pick_New_Pictures({Q("a.jpg"), Q("b.jpg")});
    form.State().pictures.Item(1).Description = Q("the sea");
    forms.texts = {Q("the sea"), Q("a hill")};
    commands.Describe_Selected();
    EXPECT_EQ(forms.given, (QStringList{Q("the sea"), QString()}));
    EXPECT_FALSE(form.State().pictures.Item(1).Description_Modified);
    EXPECT_EQ(form.State().pictures.Item(2).Description, "a hill");
    EXPECT_TRUE(form.State().pictures.Item(2).Description_Modified);
    forms.accept = false;
    forms.texts = {Q("x"), Q("y")};
    commands.Describe_Selected();
    EXPECT_EQ(form.State().pictures.Item(2).Description, "a hill") << "a cancel writes nothing";
}

TEST_F(Rename_Commands_Test, The_Menu_Brings_Every_Command)
{
    Window_Host host;
    Catalogue_Commands menu(form, host);
    commands.Bring_To(menu);
    Pick_New_Pictures({Q("a.jpg")});
    forms.accept = false;
    for (const int number : {101, 102, 201, 202, 203, 301})
        EXPECT_TRUE(menu.Is_Here(*Find_Command({Menu::Rename, number}))) << number;
    EXPECT_TRUE(menu.Is_Here(*Find_Command({Menu::File, 201})));
    EXPECT_TRUE(menu.Run({Menu::Rename, 101}));
    EXPECT_TRUE(menu.Run({Menu::Rename, 102}));
    EXPECT_EQ(forms.opened, (QStringList{Q("patterns"), Q("formulas")}));
    EXPECT_TRUE(menu.Run({Menu::Rename, 202}));
    EXPECT_EQ(forms.caption, "Halvine - Rename Selected");
    EXPECT_TRUE(menu.Run({Menu::File, 201}));
    EXPECT_EQ(forms.caption, "Halvine - Copy/Rename Selected to Folder");
}

} // namespace
