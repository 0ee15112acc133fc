#include "catalogue/Folder_Operations.h"
#include "frame/files/Replacement_File.h"
#include "tests/catalogue/Picture_Fixture.h"
#include "tests/support/Failing_Calls.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <cerrno>
#include <filesystem>
#include <sys/stat.h>

namespace {

namespace fs = std::filesystem;

const QString Rule = "A folder name can contain up to 255 characters,\r"
                     "including spaces. It cannot contain the following\r"
                     "characters: \\ / : * ? \" < > |";
const QString Way_Out = "\rOr press [Esc] or click cancel.";

class Folder_Commands : public Picture_Test {
protected:
    Folder_Commands()
    {
        fs::create_directories(folder.File("Summer/Beach"));
        fs::create_directory(folder.File("Winter"));
    }
    ~Folder_Commands() override { Failing_Calls::Refuse_Nothing(); }

    void Type(std::initializer_list<std::optional<QString>> names) { platform.dialogs.inputs.assign(names); }
    const Input_Question& Question(std::size_t i) const { return platform.dialogs.input_asked.at(i); }
    bool Is_Dir(const QString& name) const { return QFileInfo(Path(name)).isDir(); }
    int Pick_In_Summer() { return Pick(Make("Summer/Beach/a.jpg")); }
    void Lock(int key) { form.Set_Form_Enabled_Pictures_Locked(true, true, std::array{key}, 0x1000); }
    QString Base() const { return QString::fromStdString(folder.Path()); }

    Folder_Operations folders{form.State(), form.Picking(), form.Pictures()};
};

TEST_F(Folder_Commands, A_New_Folder_Is_Asked_For_And_Made)
{
    Type({"Spring 2026"});
    EXPECT_EQ(Path("Spring 2026"), folders.New_Folder(Base()));
    EXPECT_EQ("Halvine - Create New Folder", Question(0).title);
    EXPECT_EQ("Create new folder in folder:\r" + Base(), Question(0).prompt);
    EXPECT_TRUE(Is_Dir("Spring 2026"));
}

TEST_F(Folder_Commands, A_Name_That_Cannot_Be_Brings_The_Box_Back_With_The_Rule)
{
    Type({"Summer", "a/b", "what?", "..", "", QString(256, 'x'), std::nullopt});
    EXPECT_FALSE(folders.New_Folder(Base()));
    ASSERT_EQ(7U, platform.dialogs.input_asked.size());
    for (std::size_t i = 1; i < 7; ++i)
        EXPECT_EQ("Create new folder in folder:\r" + Base() + "\rFolder already exists or error in folder name.\r" +
                      Rule + Way_Out,
                  Question(i).prompt);
    EXPECT_EQ("Summer", Question(1).text); // what was typed is there to be mended
}

TEST_F(Folder_Commands, A_Folder_That_May_Not_Be_Written_Tells_The_Reason)
{
    Type({"new", std::nullopt});
    Failing_Calls::Refuse_Once("mkdir", EACCES);
    EXPECT_FALSE(folders.New_Folder(Base()));
    EXPECT_TRUE(Question(1).prompt.contains("error in folder name.\rPermission denied\rA folder name"));
}

TEST_F(Folder_Commands, A_Renamed_Folder_Takes_The_Records_Below_It_Along)
{
    const int key = Pick_In_Summer();
    const int other = Pick(Make("Winter/b.jpg"));
    Type({"Holiday"});
    EXPECT_EQ(Path("Holiday"), folders.Rename_Folder(Path("Summer/")));
    EXPECT_EQ("Rename Folder", Question(0).title);
    EXPECT_EQ("Rename folder Summer contained in:\r" + Base(), Question(0).prompt);
    EXPECT_EQ("Summer", Question(0).text);
    EXPECT_EQ(Path("Holiday/Beach/a.jpg"), Item(key).Full_Name());
    EXPECT_EQ(key, form.Return_Picture_Key(Path("Holiday/Beach/a.jpg"), false));
    EXPECT_EQ(Path("Winter/b.jpg"), Item(other).Full_Name());
    EXPECT_FALSE(Is_Dir("Summer"));
}

TEST_F(Folder_Commands, A_Folder_Whose_Name_Only_Begins_Alike_Stays)
{
    fs::create_directory(folder.File("Summer 2"));
    const int key = Pick(Make("Summer 2/a.jpg"));
    Type({"Holiday"});
    folders.Rename_Folder(Path("Summer"));
    EXPECT_EQ(Path("Summer 2/a.jpg"), Item(key).Full_Name());
}

TEST_F(Folder_Commands, A_Name_That_Is_Taken_Or_Barred_Brings_The_Rename_Box_Back)
{
    Type({"Winter", "a:b", std::nullopt});
    EXPECT_FALSE(folders.Rename_Folder(Path("Summer")));
    EXPECT_TRUE(Question(1).prompt.endsWith("\rFolder with this name already exists:\rWinter\r" + Rule + Way_Out));
    EXPECT_TRUE(Question(2).prompt.endsWith("\rYou do not have permissions to rename folder,\r"
                                            "or there is an error in the new folder name.\r" +
                                            Rule + Way_Out));
    EXPECT_TRUE(Is_Dir("Summer"));
}

TEST_F(Folder_Commands, A_Folder_Keeps_Its_Name_While_A_Window_Works_In_It)
{
    Lock(Pick_In_Summer());
    Type({"Holiday"});
    EXPECT_FALSE(folders.Rename_Folder(Path("Summer")));
    EXPECT_EQ("1 picture locked by another function.", Last_Message());
    EXPECT_TRUE(platform.dialogs.input_asked.empty());
}

TEST_F(Folder_Commands, Copies_A_Folder_With_All_That_Is_In_It)
{
    Make("Summer/Beach/a.jpg");
    Put_File(folder.File("Summer/.hidden"), "h");
    fs::create_symlink("Beach/a.jpg", folder.File("Summer/link.jpg"));
    fs::create_symlink("..", folder.File("Summer/loop"));
    chmod(folder.File("Summer/Beach").c_str(), 0711);
    ASSERT_TRUE(Set_Times(folder.File("Summer/Beach"), {.accessed = {10, 0}, .modified = {20, 0}}));
    platform.dialogs.picks = {{Path("Winter")}};
    EXPECT_TRUE(folders.Copy_Folders({Path("Summer")}));
    EXPECT_EQ("Halvine - Copy Folder 'Summer' To", platform.dialogs.pick_asked[0].caption);
    EXPECT_EQ(Picker_Question::Kind::Folder, platform.dialogs.pick_asked[0].kind);
    EXPECT_EQ(Contents_Of(folder.File("Summer/Beach/a.jpg")), Contents_Of(folder.File("Winter/Summer/Beach/a.jpg")));
    EXPECT_EQ("h", Contents_Of(folder.File("Winter/Summer/.hidden")));
    EXPECT_EQ("Beach/a.jpg", fs::read_symlink(folder.File("Winter/Summer/link.jpg")));
    EXPECT_TRUE(fs::is_symlink(folder.File("Winter/Summer/loop")));
    struct stat facts {};
    stat(folder.File("Winter/Summer/Beach").c_str(), &facts);
    EXPECT_EQ(0711U, facts.st_mode & 07777U);
    EXPECT_EQ(20, facts.st_mtim.tv_sec);
    EXPECT_TRUE(platform.dialogs.asked.empty());
}

TEST_F(Folder_Commands, Several_Folders_Have_A_Caption_Of_Their_Own)
{
    fs::create_directory(folder.File("Spring"));
    platform.dialogs.picks = {{Path("Winter")}};
    folders.Copy_Folders({Path("Summer"), Path("Spring")});
    EXPECT_EQ("Halvine - Copy Folders 'Summer', ... To", platform.dialogs.pick_asked[0].caption);
    EXPECT_TRUE(Is_Dir("Winter/Summer/Beach"));
    EXPECT_TRUE(Is_Dir("Winter/Spring"));
}

struct Into_Itself {
    std::string name;
    QString target;
};
class Copy_Into_Itself : public Folder_Commands, public testing::WithParamInterface<Into_Itself> {};

TEST_P(Copy_Into_Itself, Is_Refused)
{
    fs::create_symlink("Summer", folder.File("way"));
    const QString target = Base() + GetParam().target;
    platform.dialogs.picks = {{target}};
    EXPECT_FALSE(folders.Copy_Folders({Path("Summer")}));
    EXPECT_EQ("Cannot copy " + Path("Summer") + " to " + target + " as a child of itself.", Last_Message());
    EXPECT_EQ(Message_Icon::Exclamation, platform.dialogs.asked.back().icon);
}

INSTANTIATE_TEST_SUITE_P(All, Copy_Into_Itself,
                         testing::Values(Into_Itself{"the_folder", "/Summer"}, Into_Itself{"below", "/Summer/Beach"},
                                         Into_Itself{"through_a_link", "/way"}, Into_Itself{"onto_itself", ""}),
                         [](const auto& row) { return row.param.name; });

TEST_F(Folder_Commands, Copying_Into_A_Folder_Of_The_Name_Asks_Before_Files_Are_Written_Over)
{
    Put_File(folder.File("Summer/a.txt"), "new");
    Put_File(folder.File("Summer/b.txt"), "new");
    fs::create_directory(folder.File("Winter/Summer"));
    Put_File(folder.File("Winter/Summer/a.txt"), "old");
    Put_File(folder.File("Winter/Summer/c.txt"), "kept");
    platform.dialogs.picks = {{Path("Winter")}};
    platform.dialogs.responses = {Response_Code::No};
    EXPECT_TRUE(folders.Copy_Folders({Path("Summer")}));
    EXPECT_EQ("Halvine - Copy File Overwrite", platform.dialogs.response_asked[0].first);
    EXPECT_EQ("old", Contents_Of(folder.File("Winter/Summer/a.txt")));
    EXPECT_EQ("new", Contents_Of(folder.File("Winter/Summer/b.txt")));
    EXPECT_EQ("kept", Contents_Of(folder.File("Winter/Summer/c.txt")));
}

TEST_F(Folder_Commands, What_Cannot_Be_Copied_Is_Listed_And_The_Rest_Is_Copied)
{
    Put_File(folder.File("Summer/a.txt"), "a");
    ASSERT_EQ(0, mkfifo(folder.File("Summer/pipe").c_str(), 0600));
    platform.dialogs.picks = {{Path("Winter")}};
    platform.dialogs.answers = {Message_Answer::Yes};
    EXPECT_TRUE(folders.Copy_Folders({Path("Summer")}));
    EXPECT_EQ("Halvine was unable to copy 1 of the files.\r\nDo you wish to see a list of failed copies?",
              Last_Message());
    EXPECT_EQ("Halvine copy failure for", platform.dialogs.lists_shown[0].first);
    EXPECT_EQ(QStringList{Path("Summer/pipe") + ": is not a regular file"}, platform.dialogs.lists_shown[0].second);
    EXPECT_EQ("a", Contents_Of(folder.File("Winter/Summer/a.txt")));
}

TEST_F(Folder_Commands, Deletes_A_Folder_After_A_Question_And_Its_Records_With_It)
{
    Pick_In_Summer();
    EXPECT_FALSE(folders.Delete_Folder(Path("Summer")));
    EXPECT_EQ("Moving folder " + Path("Summer") + " with everything in it to the recycle bin.\r\nAre you sure?",
              Last_Message());
    EXPECT_EQ(Message_Answer::No, platform.dialogs.asked.back().standard);
    platform.dialogs.answers = {Message_Answer::Yes};
    platform.shell.refuse_trash_with = "no trash";
    EXPECT_FALSE(folders.Delete_Folder(Path("Summer")));
    EXPECT_EQ(Path("Summer") + ": no trash", Last_Message());
    EXPECT_EQ(1, form.State().pictures.Count());
}

TEST_F(Folder_Commands, A_Folder_Of_Pictures_In_Use_Is_Not_Deleted)
{
    Lock(Pick_In_Summer());
    platform.dialogs.answers = {Message_Answer::Yes, Message_Answer::Yes};
    EXPECT_FALSE(folders.Delete_Folder(Path("Summer")));
    EXPECT_TRUE(Is_Dir("Summer"));
}

TEST_F(Folder_Commands, A_Folder_Is_Dragged_Into_Another_After_A_Question)
{
    const int key = Pick_In_Summer();
    platform.dialogs.responses = {Response_Code::Cancel, Response_Code::Yes};
    EXPECT_FALSE(folders.Drop_Folder(Path("Summer"), Path("Winter"), false));
    EXPECT_TRUE(Is_Dir("Summer"));
    EXPECT_TRUE(folders.Drop_Folder(Path("Summer"), Path("Winter"), false));
    EXPECT_EQ("Halvine - Move Folder", platform.dialogs.response_asked[0].first);
    EXPECT_EQ("Move folder " + Path("Summer") + "\r\nto " + Path("Winter"), platform.dialogs.response_asked[0].second);
    EXPECT_FALSE(Is_Dir("Summer"));
    EXPECT_EQ(Path("Winter/Summer/Beach/a.jpg"), Item(key).Full_Name());
}

TEST_F(Folder_Commands, A_Folder_Is_Never_Put_Into_Itself)
{
    for (const QString& target : {Path("Summer"), Path("Summer/Beach")}) {
        EXPECT_FALSE(folders.Drop_Folder(Path("Summer"), target, false));
        EXPECT_EQ("Attempt to put folder " + Path("Summer") + " into itself or one of its subfolders.", Last_Message());
    }
    EXPECT_FALSE(folders.Drop_Folder(Path("Summer"), Base(), false)); // it stands there already
    EXPECT_TRUE(platform.dialogs.response_asked.empty());
}

TEST_F(Folder_Commands, A_Folder_Is_Not_Moved_Onto_One_Of_Its_Name)
{
    fs::create_directory(folder.File("Winter/Summer"));
    platform.dialogs.responses = {Response_Code::Yes};
    EXPECT_FALSE(folders.Drop_Folder(Path("Summer"), Path("Winter"), false));
    EXPECT_EQ("Folder with this name already exists:\r\n" + Path("Winter/Summer"), Last_Message());
    EXPECT_TRUE(Is_Dir("Summer/Beach"));
}

TEST_F(Folder_Commands, With_Control_A_Dragged_Folder_Is_Copied)
{
    platform.dialogs.responses = {Response_Code::Yes};
    Put_File(folder.File("Summer/a.txt"), "a");
    EXPECT_TRUE(folders.Drop_Folder(Path("Summer"), Path("Winter"), true));
    EXPECT_EQ("Halvine - Copy Folder", platform.dialogs.response_asked[0].first);
    EXPECT_TRUE(Is_Dir("Summer") && Is_Dir("Winter/Summer/Beach"));
}

class Folder_Across : public Folder_Commands {
protected:
    Folder_Across()
    {
        key = Pick_In_Summer();
        Put_File(folder.File("Summer/b.txt"), "b");
        fs::create_symlink("b.txt", folder.File("Summer/link"));
        platform.dialogs.responses = {Response_Code::Yes};
    }
    bool Drop()
    {
        Failing_Calls::Refuse_Once("renameat2", EXDEV);
        const bool moved = folders.Drop_Folder(Path("Summer"), Path("Winter"), false);
        Failing_Calls::Refuse_Nothing();
        return moved;
    }
    int key = 0;
};

TEST_F(Folder_Across, Is_Copied_Whole_And_Then_Removed)
{
    EXPECT_TRUE(Drop());
    EXPECT_FALSE(fs::exists(folder.File("Summer")));
    EXPECT_EQ("b", Contents_Of(folder.File("Winter/Summer/link")));
    EXPECT_EQ(Path("Winter/Summer/Beach/a.jpg"), Item(key).Full_Name());
    EXPECT_EQ("Halvine - Move Folder", platform.dialogs.progress_shown[0]);
}

TEST_F(Folder_Across, A_Fault_Leaves_The_Source_And_Takes_The_Copy_Back)
{
    for (const int call : {1, 2, 3, 4}) { // the flush of a file, of its folder, of the next file
        platform.dialogs.responses = {Response_Code::Yes};
        Failing_Calls::Refuse_From(call, "fsync", EIO);
        EXPECT_FALSE(Drop());
        EXPECT_TRUE(fs::is_empty(folder.File("Winter"))) << call;
        EXPECT_TRUE(fs::exists(folder.File("Summer/Beach/a.jpg")));
        EXPECT_EQ(Path("Summer/Beach/a.jpg"), Item(key).Full_Name());
        EXPECT_TRUE(Last_Message().startsWith("Halvine was unable to move")) << Last_Message().toStdString();
    }
}

TEST_F(Folder_Across, Stopped_It_Takes_The_Copy_Back)
{
    platform.dialogs.stop_after_progress_steps = 2;
    EXPECT_FALSE(Drop());
    EXPECT_TRUE(fs::is_empty(folder.File("Winter")));
    EXPECT_TRUE(fs::exists(folder.File("Summer/Beach/a.jpg")));
}

TEST_F(Folder_Across, What_Cannot_Be_Copied_Keeps_The_Whole_Folder_Where_It_Is)
{
    ASSERT_EQ(0, mkfifo(folder.File("Summer/pipe").c_str(), 0600));
    EXPECT_FALSE(Drop());
    EXPECT_TRUE(fs::is_empty(folder.File("Winter")));
    EXPECT_TRUE(fs::exists(folder.File("Summer/b.txt")));
}

TEST(Folders, One_Lies_Within_Another)
{
    const Test_Folder folder;
    const QString base = QString::fromStdString(folder.Path());
    fs::create_directories(folder.File("a/b"));
    fs::create_directories(folder.File("ab"));
    EXPECT_TRUE(Lies_Within(base + "/a/b", base + "/a/"));
    EXPECT_TRUE(Lies_Within(base + "/a", base + "/a"));
    EXPECT_FALSE(Lies_Within(base + "/ab", base + "/a"));
    EXPECT_FALSE(Lies_Within(base + "/a", base + "/a/b"));
}

} // namespace
