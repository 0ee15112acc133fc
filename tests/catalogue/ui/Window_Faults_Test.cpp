#include "frame/text/Path_Utilities.h"
#include "tests/catalogue/ui/Window_Fixture.h"

#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

// Folders that are not as folders should be: the window stays, says what it can, and never waits for ever.

namespace {

class Window_Faults : public Window_Test {
protected:
    std::string Files() const { return Part<QLabel>("File_Status_Label")->text().toStdString(); }
    std::string Message() const
    {
        for (const QLabel* label : window->Explorer().ExplorerGrid().viewport()->findChildren<QLabel*>())
            if (label->isVisible()) return label->text().toStdString();
        return {};
    }
};

TEST_F(Window_Faults, A_Start_Folder_That_Is_Gone_Leads_Home)
{
    entry.state.Default_Path = "/no/such/folder";
    window = Make_Halvine_Window({.form = form,
                                  .state = entry.state,
                                  .ports = entry.ports,
                                  .icon = {},
                                  .short_version = {},
                                  .long_version = {}});
    Display_Main_Window(*window, {});
    EXPECT_EQ(QDir::homePath(), window->Explorer().Path());
}

TEST_F(Window_Faults, A_Folder_That_Vanishes_Is_Left_For_Its_Parent)
{
    Make_Pictures(1);
    std::filesystem::create_directory(folder.Path() + "/below");
    Open();
    ASSERT_TRUE(window->Explorer().Set_Path(QString::fromStdString(folder.Path() + "/below")));
    std::filesystem::remove_all(folder.Path() + "/below");
    EXPECT_TRUE(QTest::qWaitFor([&] { return window->Explorer().Path().toStdString() == folder.Path(); }, 5000));
    EXPECT_EQ("1 file", Files());
}

TEST_F(Window_Faults, A_Folder_That_Cannot_Be_Read_Says_Why_In_The_Place_Of_Its_Files)
{
    Make_Pictures(1);
    Open();
    window->Explorer().Set_FolderItemAvailableMessage(true);
    // A folder that is replaced by a file reads as little as one without the right to, for root too.
    const std::string below = folder.Path() + "/below";
    std::filesystem::create_directory(below);
    ASSERT_TRUE(window->Explorer().Set_Path(QString::fromStdString(below)));
    EXPECT_EQ("No pictures in this folder", Message());
    std::filesystem::remove(below);
    Put_File(below, "no folder");
    window->Explorer().Refresh();
    EXPECT_NE(std::string::npos, Message().find("below")) << Message();
    EXPECT_EQ("0 files", Files());
}

TEST_F(Window_Faults, Pipes_Devices_And_Circular_Links_Are_Passed_Over)
{
    Make_Pictures(2);
    ASSERT_EQ(0, mkfifo((folder.Path() + "/pipe.jpg").c_str(), 0600));
    std::filesystem::create_symlink("/dev/zero", folder.Path() + "/device.jpg");
    std::filesystem::create_symlink("loop.jpg", folder.Path() + "/loop.jpg");
    std::filesystem::create_symlink("nowhere", folder.Path() + "/broken.jpg");
    std::filesystem::create_directory_symlink(".", folder.Path() + "/round");
    Open();
    EXPECT_EQ("2 files", Files());
    window->Commands().Run({Menu::File, 101});
    EXPECT_EQ(2, form.State().pictures.Count());
    EXPECT_TRUE(entry.scripted.dialogs.asked.empty());
}

TEST_F(Window_Faults, A_Pipe_That_Is_Named_Directly_Is_A_Line_In_The_Failure_List)
{
    Make_Pictures(1);
    Open();
    ASSERT_EQ(0, mkfifo((folder.Path() + "/pipe.jpg").c_str(), 0600));
    entry.scripted.dialogs.answers = {Message_Answer::Yes};
    window->Commands().Pick_Paths({QString::fromStdString(folder.Path() + "/pipe.jpg"), Path(1)}, true, false);
    EXPECT_EQ(1, form.State().pictures.Count());
    ASSERT_EQ(1U, entry.scripted.dialogs.lists_shown.size());
    EXPECT_TRUE(entry.scripted.dialogs.lists_shown[0].second[0].endsWith("/pipe.jpg"));
}

TEST_F(Window_Faults, A_File_That_Goes_Between_Listing_And_Pick_Is_A_Line_In_The_Failure_List)
{
    Make_Pictures(3);
    Open();
    ASSERT_TRUE(QFile::remove(Path(2)));
    entry.scripted.dialogs.answers = {Message_Answer::Yes};
    window->Commands().Run({Menu::File, 101});
    EXPECT_EQ(2, form.State().pictures.Count());
    ASSERT_EQ(1U, entry.scripted.dialogs.lists_shown.size());
    EXPECT_EQ(QStringList{Path(2)}, entry.scripted.dialogs.lists_shown[0].second);
}

TEST_F(Window_Faults, A_Name_That_Is_No_Valid_Text_Is_Listed_Picked_And_Shown)
{
    Make_Pictures(1);
    const std::string odd = folder.Path() + "/\xFF\xE4.jpg";
    std::filesystem::rename(Path(1).toStdString(), odd);
    Open();
    EXPECT_EQ("1 file", Files());
    window->Commands().Run({Menu::File, 101});
    ASSERT_EQ(1, form.State().pictures.Count());
    EXPECT_EQ(odd, File_System_Bytes(form.State().pictures.Item(1).Full_Name()));
    Click(1);
    EXPECT_TRUE(form.State().Current_Picture_Bitmap);
}

TEST_F(Window_Faults, A_Folder_With_Fifty_Thousand_Files_Is_Listed_And_Scrolled)
{
    const int count = 50'000;
    Put_File(folder.Path() + "/0.jpg", {});
    for (int i = 1; i < count; ++i) // names of one file: made faster than files
        ASSERT_EQ(0,
                  link((folder.Path() + "/0.jpg").c_str(), (folder.Path() + "/" + std::to_string(i) + ".jpg").c_str()));
    Open();
    EXPECT_EQ("50000 files", Files());
    bkcGrid& files = window->Explorer().ExplorerGrid();
    QTest::keyClick(&files, Qt::Key_Home, Qt::ControlModifier);
    QTest::keyClick(&files, Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(count, files.GridBottomRow());
    files.Content().Select_All();
    EXPECT_EQ("50000 files, 50000 selected", Files());
}

} // namespace
