#include "catalogue/File_Operations.h"
#include "tests/catalogue/Picture_Fixture.h"
#include "tests/support/Failing_Calls.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <cerrno>
#include <filesystem>

namespace {

constexpr std::uint32_t A_Lock = 0x1000;

class File_Commands : public Picture_Test {
protected:
    File_Commands() { std::filesystem::create_directory(folder.File("there")); }
    ~File_Commands() override { Failing_Calls::Refuse_Nothing(); }

    QString There(const QString& name = {}) const { return Path("there/" + name); }
    int Pick_And_Select(const QString& name, int seed = 1)
    {
        const int key = Pick(Make(name, 160, 96, 1, {}, {}, seed));
        form.Set_Picture_Key_Selected(key, true);
        return key;
    }
    void Lock(int key) { form.Set_Form_Enabled_Pictures_Locked(true, true, std::array{key}, A_Lock); }
    void Answer(std::initializer_list<Response_Code> codes) { platform.dialogs.responses.assign(codes); }
    QStringList Listed() const
    {
        QStringList names;
        for (int index = 1; index <= form.State().pictures.Count(); ++index)
            names << form.State().pictures.Item(index).Full_Name();
        return names;
    }
    bool Exists(const QString& path) const { return QFileInfo::exists(path); }
    const Scripted_Dialogs& Dialogs() const { return platform.dialogs; }

    File_Operations files{form.State(), form.Picking(), form.Pictures()};
};

TEST_F(File_Commands, Delete_Asks_And_Moves_The_Files_To_The_Recycle_Bin)
{
    Pick_And_Select("a.jpg");
    Pick_And_Select("b.jpg");
    Pick(Make("c.jpg"));
    Answer({Response_Code::Yes});
    EXPECT_EQ(2, files.Delete_Selected());
    ASSERT_EQ(1U, Dialogs().response_asked.size());
    EXPECT_EQ("Halvine - Delete File Confirm", Dialogs().response_asked[0].first);
    EXPECT_EQ("Moving 2 pictures to the recycle bin.\r\nDo you wish to see a list of files to be recycled?",
              Dialogs().response_asked[0].second);
    EXPECT_EQ((QStringList{Path("a.jpg"), Path("b.jpg")}), platform.shell.trashed);
    EXPECT_EQ(QStringList{Path("c.jpg")}, Listed());
    EXPECT_TRUE(form.State().selection.Is_Empty());
}

TEST_F(File_Commands, Delete_Shows_The_List_And_Takes_Its_Cancel)
{
    Pick_And_Select("a.jpg");
    Answer({Response_Code::No});
    platform.dialogs.list_answers = {false};
    EXPECT_EQ(0, files.Delete_Selected());
    ASSERT_EQ(1U, Dialogs().lists_shown.size());
    EXPECT_EQ("Halvine recycle files", Dialogs().lists_shown[0].first);
    EXPECT_EQ(QStringList{Path("a.jpg")}, Dialogs().lists_shown[0].second);
    EXPECT_TRUE(Exists(Path("a.jpg")));
    Answer({Response_Code::No});
    platform.dialogs.list_answers = {true};
    EXPECT_EQ(1, files.Delete_Selected());
    EXPECT_FALSE(Exists(Path("a.jpg")));
}

TEST_F(File_Commands, Delete_Cancelled_Changes_Nothing)
{
    Pick_And_Select("a.jpg");
    Answer({Response_Code::Cancel});
    EXPECT_EQ(0, files.Delete_Selected());
    EXPECT_TRUE(Exists(Path("a.jpg")));
    EXPECT_EQ(1, form.State().selection.Count());
}

TEST_F(File_Commands, Delete_With_One_Locked_Picture_Leaves_This_One_And_Deletes_The_Others)
{
    Pick_And_Select("a.jpg");
    Lock(Pick_And_Select("b.jpg"));
    Pick_And_Select("c.jpg");
    Answer({Response_Code::Yes});
    EXPECT_EQ(2, files.Delete_Selected());
    EXPECT_EQ("1 picture locked by another function.", Last_Message());
    EXPECT_EQ(QStringList{Path("b.jpg")}, Listed());
    EXPECT_TRUE(Exists(Path("b.jpg")));
}

TEST_F(File_Commands, Delete_Asks_First_About_Scripts_And_Descriptions_That_Were_Not_Saved)
{
    const int key = Pick_And_Select("a.jpg");
    form.Set_Picture_All_Script_Items(key, "Crop(1,2,3,4)");
    Answer({Response_Code::Yes});
    EXPECT_EQ(0, files.Delete_Selected());
    EXPECT_TRUE(Last_Message().startsWith("1 scripts modified, do you wish to abandon modifications?"));
    EXPECT_TRUE(Dialogs().response_asked.empty());
    Item(key).Description_Modified = true;
    platform.dialogs.answers = {Message_Answer::Yes, Message_Answer::Yes};
    EXPECT_EQ(1, files.Delete_Selected());
    EXPECT_TRUE(Last_Message().startsWith("1 descriptions modified"));
}

TEST_F(File_Commands, Delete_Without_A_Selection_Says_So)
{
    EXPECT_EQ(0, files.Delete_Selected());
    EXPECT_EQ("No pictures available.", Last_Message());
    Pick(Make("a.jpg"));
    EXPECT_EQ(0, files.Delete_Selected());
    EXPECT_EQ("No pictures selected for function.", Last_Message());
    EXPECT_TRUE(Exists(Path("a.jpg")));
}

TEST_F(File_Commands, A_Delete_That_Fails_Keeps_The_Picture_And_Tells_Why)
{
    Pick_And_Select("a.jpg");
    platform.shell.refuse_trash_with = "no trash on this device";
    Answer({Response_Code::Yes});
    platform.dialogs.answers = {Message_Answer::Yes};
    EXPECT_EQ(0, files.Delete_Selected());
    EXPECT_EQ("Halvine was unable to delete 1 of the selected pictures.\r\n"
              "Do you wish to see a list of failed deletions?",
              Last_Message());
    EXPECT_EQ(QStringList{Path("a.jpg") + ": no trash on this device"}, Dialogs().lists_shown.back().second);
    EXPECT_EQ(1, form.State().pictures.Count());
}

TEST_F(File_Commands, The_Picture_That_Moves_Up_Is_Shown_After_A_Delete)
{
    Pick_And_Select("a.jpg");
    const int second = Pick(Make("b.jpg"));
    form.Pictures().Set_Current_Picture(1);
    Answer({Response_Code::Yes});
    files.Delete_Selected();
    EXPECT_EQ(second, form.State().current_picture_key);
}

TEST_F(File_Commands, A_File_That_Was_Picked_Twice_Is_Deleted_Once_And_Leaves_No_Record)
{
    Pick_And_Select("a.jpg");
    form.Set_Picture_Key_Selected(Pick(Path("a.jpg")), true);
    Answer({Response_Code::Yes});
    EXPECT_EQ(1, files.Delete_Selected());
    EXPECT_TRUE(Dialogs().response_asked[0].second.startsWith("Moving 1 pictures"));
    EXPECT_EQ(0, form.State().pictures.Count());
}

TEST_F(File_Commands, Copy_Leaves_The_Records_Where_They_Are)
{
    Pick_And_Select("a.jpg");
    EXPECT_EQ(1, files.Copy_Selected(There()));
    EXPECT_EQ(Contents_Of(File("a.jpg")), Contents_Of(File("there/a.jpg")));
    EXPECT_EQ(QStringList{Path("a.jpg")}, Listed());
    EXPECT_EQ("Halvine - Copy Selected to Folder", Dialogs().progress_shown[0]);
    EXPECT_TRUE(Dialogs().progress_shown.contains("Copying 1 of 1"));
}

TEST_F(File_Commands, Move_Takes_The_Records_Along)
{
    const int key = Pick_And_Select("a.jpg");
    form.Set_Picture_All_Script_Items(key, "Crop(1,2,3,4)");
    EXPECT_EQ(1, files.Move_Selected(There()));
    EXPECT_EQ(There("a.jpg"), Item(key).Full_Name());
    EXPECT_TRUE(Item(key).Script_Modified);
    EXPECT_FALSE(Exists(Path("a.jpg")));
    EXPECT_EQ(key, form.Return_Picture_Key(There("a.jpg"), false));
    EXPECT_TRUE(form.Saving().Save_Texts(key)) << Last_Message().toStdString(); // no question: the file is known
    EXPECT_TRUE(Dialogs().asked.empty());
}

TEST_F(File_Commands, A_Move_Into_Another_File_System_Keeps_The_Record_In_Step)
{
    const int key = Pick_And_Select("a.jpg");
    Failing_Calls::Refuse_Once("renameat2", EXDEV);
    EXPECT_EQ(1, files.Move_Selected(There()));
    EXPECT_TRUE(form.Saving().Save_Texts(key)); // another file on the disk, and known
    EXPECT_TRUE(Dialogs().asked.empty());
}

struct Overwrite_Case {
    std::string name;
    std::vector<Response_Code> answers;
    std::string overwritten; // which of a, b, c
    int questions;
};

class Overwriting : public File_Commands, public testing::WithParamInterface<Overwrite_Case> {
protected:
    Overwriting()
    {
        for (const char* name : {"a.jpg", "b.jpg", "c.jpg"}) {
            Pick_And_Select(name);
            Put_File(File(QString("there/") + name), "old");
        }
        platform.dialogs.responses.assign(GetParam().answers.begin(), GetParam().answers.end());
    }
    std::string Overwritten() const
    {
        std::string names;
        for (const char* name : {"a", "b", "c"})
            if (Contents_Of(File(QString("there/%1.jpg").arg(name))) != "old") names += name;
        return names;
    }
};

TEST_P(Overwriting, A_Copy_Asks_As_Long_As_It_Must)
{
    files.Copy_Selected(There());
    EXPECT_EQ(GetParam().overwritten, Overwritten());
    ASSERT_EQ(GetParam().questions, int(Dialogs().response_asked.size()));
    EXPECT_EQ("Halvine - Copy File Overwrite", Dialogs().response_asked[0].first);
    EXPECT_EQ("Do you wish to overwrite " + There("a.jpg") + " with \r\n" + Path("a.jpg") + "?",
              Dialogs().response_asked[0].second);
}

TEST_P(Overwriting, A_Move_Asks_As_Long_As_It_Must)
{
    files.Move_Selected(There());
    EXPECT_EQ(GetParam().overwritten, Overwritten());
    ASSERT_EQ(GetParam().questions, int(Dialogs().response_asked.size()));
    EXPECT_EQ("Halvine - Move File Overwrite", Dialogs().response_asked[0].first);
    for (const char* name : {"a", "b", "c"})
        EXPECT_EQ(GetParam().overwritten.find(name) == std::string::npos, Exists(Path(QString("%1.jpg").arg(name))));
}

using R = Response_Code;
INSTANTIATE_TEST_SUITE_P(All, Overwriting,
                         testing::Values(Overwrite_Case{"yes_is_for_one_file", {R::Yes, R::No, R::Yes}, "ac", 3},
                                         Overwrite_Case{"yes_to_all_is_for_the_rest", {R::No, R::Yes_To_All}, "bc", 2},
                                         Overwrite_Case{"cancel_ends_the_loop", {R::Yes, R::Cancel, R::Yes}, "a", 2},
                                         Overwrite_Case{"a_close_of_the_window_is_cancel", {R::None}, "", 1}),
                         [](const auto& row) { return row.param.name; });

TEST_F(File_Commands, Yes_To_All_Holds_For_The_Rest_Of_The_Loop_Only)
{
    Pick_And_Select("a.jpg");
    Put_File(File("there/a.jpg"), "old");
    Answer({Response_Code::Yes_To_All});
    files.Copy_Selected(There());
    Answer({Response_Code::No});
    files.Copy_Selected(There());
    EXPECT_EQ(2U, Dialogs().response_asked.size());
}

TEST_F(File_Commands, Yes_To_All_Does_Not_Let_Two_Pictures_Of_One_Name_End_As_One)
{
    std::filesystem::create_directory(folder.File("other"));
    Pick_And_Select("a.jpg", 1);
    Pick_And_Select("other/a.jpg", 2);
    Put_File(File("there/a.jpg"), "old");
    Answer({Response_Code::Yes_To_All, Response_Code::No});
    EXPECT_EQ(1, files.Move_Selected(There()));
    EXPECT_EQ(2U, Dialogs().response_asked.size());
    EXPECT_TRUE(Exists(Path("other/a.jpg")));
    EXPECT_EQ((QStringList{There("a.jpg"), Path("other/a.jpg")}), Listed());
}

TEST_F(File_Commands, A_Picture_That_Is_Overwritten_By_A_Copy_Shows_The_New_One)
{
    const int there = Pick(Make("there/a.jpg", 80, 50, 1, "Crop(1,1,1,1)", "old"));
    form.Rotate_Picture(there, 90);
    Pick_And_Select("a.jpg");
    Answer({Response_Code::Yes});
    EXPECT_EQ(1, files.Copy_Selected(There()));
    EXPECT_EQ(160, Item(there).Horz_Pixels);
    EXPECT_EQ("", Item(there).Description);
    EXPECT_TRUE(Item(there).Script_Items.Is_Empty());
    EXPECT_EQ(0, Item(there).Rotate);
}

TEST_F(File_Commands, A_Picture_That_Is_Overwritten_By_A_Move_Leaves_One_Record)
{
    const int gone = Pick(Make("there/a.jpg", 80, 50));
    const int key = Pick_And_Select("a.jpg");
    Answer({Response_Code::Yes});
    EXPECT_EQ(1, files.Move_Selected(There()));
    EXPECT_EQ(QStringList{There("a.jpg")}, Listed());
    EXPECT_EQ(nullptr, form.State().pictures.Find(gone));
    EXPECT_EQ(There("a.jpg"), Item(key).Full_Name());
}

TEST_F(File_Commands, A_Locked_Picture_Is_Neither_Moved_Nor_Overwritten)
{
    Lock(Pick_And_Select("a.jpg"));
    EXPECT_EQ(0, files.Move_Selected(There()));
    EXPECT_EQ("1 picture locked by another function.", Last_Message());
    Lock(Pick(Make("there/b.jpg", 80, 50)));
    Pick_And_Select("b.jpg");
    platform.dialogs.answers = {Message_Answer::No, Message_Answer::No, Message_Answer::Yes};
    EXPECT_EQ(1, files.Copy_Selected(There())); // a copy of a softly locked picture harms nobody
    EXPECT_TRUE(Dialogs().response_asked.empty());
    File_Dimensions facts;
    ASSERT_TRUE(Get_Dimensions(There("b.jpg"), 0, facts));
    EXPECT_EQ(80, facts.width);
}

TEST_F(File_Commands, Failed_Moves_Are_Counted_And_Listed)
{
    Pick_And_Select("a.jpg");
    Pick_And_Select("b.jpg");
    QFile::remove(Path("a.jpg"));
    platform.dialogs.answers = {Message_Answer::Yes};
    EXPECT_EQ(1, files.Move_Selected(There()));
    EXPECT_EQ("Halvine was unable to move 1 of the selected pictures.\r\n"
              "Do you wish to see a list of failed moves?",
              Last_Message());
    EXPECT_EQ("Halvine move failure for", Dialogs().lists_shown.back().first);
    EXPECT_EQ(QStringList{Path("a.jpg") + ": No such file or directory"}, Dialogs().lists_shown.back().second);
}

TEST_F(File_Commands, A_Full_Disk_Fails_The_Copy_And_Leaves_No_Half_File)
{
    Pick_And_Select("a.jpg");
    Failing_Calls::Refuse_Always("write", ENOSPC);
    EXPECT_EQ(0, files.Copy_Selected(There()));
    Failing_Calls::Refuse_Nothing();
    EXPECT_TRUE(Last_Message().startsWith("Halvine was unable to copy 1 of the selected pictures."));
    EXPECT_TRUE(std::filesystem::is_empty(folder.File("there")));
}

TEST_F(File_Commands, Stop_Ends_The_Loop_Between_Two_Files)
{
    Pick_And_Select("a.jpg");
    Pick_And_Select("b.jpg");
    platform.dialogs.stop_after_progress_steps = 2;
    EXPECT_EQ(1, files.Move_Selected(There()));
    EXPECT_TRUE(Exists(Path("b.jpg")));
}

TEST_F(File_Commands, In_Their_Own_Folder_A_Move_Does_Nothing_And_A_Copy_Says_So)
{
    Pick_And_Select("a.jpg");
    EXPECT_EQ(0, files.Move_Selected(Path({})));
    EXPECT_TRUE(Dialogs().asked.empty());
    EXPECT_EQ(0, files.Copy_Selected(Path({})));
    EXPECT_TRUE(Dialogs().response_asked.empty());
    EXPECT_TRUE(Last_Message().startsWith("Halvine was unable to copy 1"));
    EXPECT_TRUE(Exists(Path("a.jpg")));
}

TEST_F(File_Commands, A_Folder_Of_The_Files_Name_Is_Never_Replaced)
{
    Pick_And_Select("a.jpg");
    std::filesystem::create_directory(folder.File("there/a.jpg"));
    Answer({Response_Code::Yes});
    EXPECT_EQ(0, files.Move_Selected(There()));
    EXPECT_TRUE(QFileInfo(There("a.jpg")).isDir());
    EXPECT_TRUE(Exists(Path("a.jpg")));
}

TEST_F(File_Commands, Two_Files_That_Differ_By_Case_Are_Two)
{
    const int lower = Pick_And_Select("a.jpg");
    const int upper = Pick(Make("A.JPG"));
    EXPECT_EQ(1, files.Move_Selected(There()));
    EXPECT_EQ(There("a.jpg"), Item(lower).Full_Name());
    EXPECT_EQ(Path("A.JPG"), Item(upper).Full_Name());
}

TEST_F(File_Commands, An_Open_Slide_Show_Counts_As_Modified_When_Its_Pictures_Move)
{
    Pick_And_Select("a.jpg");
    slide_show.open = true;
    files.Copy_Selected(There());
    EXPECT_FALSE(slide_show.modified);
    Answer({Response_Code::Yes});
    files.Move_Selected(There());
    EXPECT_TRUE(slide_show.modified);
}

TEST_F(File_Commands, Files_That_Were_Never_Picked_Move_Too)
{
    Make("a.jpg");
    EXPECT_EQ(1, files.Move_Files({Path("a.jpg")}, There()));
    EXPECT_TRUE(Exists(There("a.jpg")));
    Answer({Response_Code::Yes});
    EXPECT_EQ(1, files.Delete_Files({There("a.jpg")}));
    EXPECT_EQ(QStringList{There("a.jpg")}, platform.shell.trashed);
}

} // namespace
