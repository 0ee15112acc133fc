#include "tests/catalogue/ui/Window_Fixture.h"

#include <filesystem>

namespace {

class Folder_Pane : public Window_Test {
protected:
    Folder_Pane() { std::filesystem::create_directories(folder.File("sub/deep")); }

    QString Base() const { return QString::fromStdString(folder.Path()); }
    QString In(const QString& name) const { return Base() + '/' + name; }
    bool Exists(const QString& name) const { return QFileInfo::exists(In(name)); }
    Scripted_Dialogs& Dialogs() { return entry.scripted.dialogs; }
    void Select_Row(int row)
    {
        bkcGrid& grid = window->Explorer().ExplorerGrid();
        QTest::mouseClick(grid.viewport(), Qt::LeftButton, {},
                          grid.visualRect(grid.model()->index(row - 1, 0)).center());
    }
    void Press(QWidget& part, Qt::Key key)
    {
        part.setFocus();
        QTest::keyClick(&part, key);
        QApplication::processEvents();
    }
    QStringList Shown() const
    {
        QStringList names;
        const bkcExplorer& explorer = window->Explorer();
        for (int row = 1; row <= window->Explorer().ExplorerGrid().Content().Rows(); ++row)
            names << explorer.Model().Name_At(row);
        return names;
    }
    /// A drop on the tree, as the pane tells of it.
    void Drop(const QStringList& paths, const QString& target, int shift)
    {
        QMimeData data;
        QList<QUrl> urls;
        for (const QString& path : paths) urls << QUrl::fromLocalFile(path);
        data.setUrls(urls);
        BKC_DirTree& tree = window->Explorer().ExplorerTree();
        tree.expand(tree.currentIndex());
        QApplication::processEvents();
        const QPoint point = Point_Of(tree, target);
        ASSERT_FALSE(point.isNull());
        const Qt::KeyboardModifiers keys = shift == 2   ? Qt::ControlModifier
                                           : shift == 1 ? Qt::ShiftModifier
                                                        : Qt::NoModifier;
        QDragEnterEvent enter(point, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, keys);
        QApplication::sendEvent(tree.viewport(), &enter);
        QDropEvent drop(point, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, keys);
        QApplication::sendEvent(tree.viewport(), &drop);
        QApplication::processEvents();
        QApplication::processEvents();
    }
    /// Of a child of the selected folder.
    static QPoint Point_Of(BKC_DirTree& tree, const QString& folder)
    {
        const QModelIndex parent = tree.currentIndex();
        for (int row = 0; row < tree.model()->rowCount(parent); ++row) {
            const QModelIndex child = tree.model()->index(row, 0, parent);
            tree.scrollTo(child);
            const QPoint point = tree.visualRect(child).center();
            if (tree.Folder_At(point) == folder) return point;
        }
        return {};
    }
};

TEST_F(Folder_Pane, Delete_In_The_Grid_Moves_Files_To_The_Recycle_Bin_And_Discards_No_Picture)
{
    Open_And_Pick(2);
    Select_Row(1);
    Dialogs().responses = {Response_Code::Yes};
    Press(window->Explorer().ExplorerGrid(), Qt::Key_Delete);
    EXPECT_EQ(QStringList{Path(1)}, entry.scripted.shell.trashed);
    ASSERT_EQ(1, form.State().pictures.Count()); // its record went with the file, the other stays
    EXPECT_EQ("02.jpg", form.State().pictures.Item(1).File_Name);
    EXPECT_EQ(QStringList{"02.jpg"}, Shown());
}

TEST_F(Folder_Pane, Keys_In_The_Tree_Are_Wishes_For_Its_Folder)
{
    Make_Pictures(1);
    Open();
    window->Explorer().Set_Path(In("sub"));
    BKC_DirTree& tree = window->Explorer().ExplorerTree();
    Dialogs().inputs = {"new"};
    Press(tree, Qt::Key_Insert);
    EXPECT_TRUE(Exists("sub/new"));
    Dialogs().inputs = {"holiday"};
    Press(tree, Qt::Key_F2);
    EXPECT_TRUE(Exists("holiday/new"));
    EXPECT_EQ(In("holiday"), window->Explorer().Path()) << "the pane goes along";
    Press(tree, Qt::Key_Delete);
    EXPECT_TRUE(Dialogs().asked.back().text.startsWith("Moving folder " + In("holiday")));
}

TEST_F(Folder_Pane, A_Folder_That_Somebody_Makes_Is_Told_To_An_Open_Picker)
{
    Make_Pictures(1);
    Open();
    BKC_DirTree& tree = window->Explorer().ExplorerTree();
    tree.expand(tree.currentIndex());
    QDir(Base()).mkdir("others");
    const auto& told = Dialogs().trees_refreshed; // and what other programs make above this folder meanwhile
    const auto is_told = [&] { return std::find(told.begin(), told.end(), std::pair(Base(), true)) != told.end(); };
    EXPECT_TRUE(QTest::qWaitFor(is_told, 20000));
}

TEST_F(Folder_Pane, Menu_Commands_Work_On_The_Panes_Folder)
{
    Open_And_Pick(2);
    Click(1);
    window->Explorer().Set_Path(In("sub"));
    window->Commands().Run({Menu::File, 202});
    EXPECT_TRUE(Exists("sub/01.jpg") && Exists("01.jpg"));
    EXPECT_EQ(QStringList{"01.jpg"}, Shown());
    Dialogs().responses = {Response_Code::Yes};
    window->Commands().Run({Menu::File, 203});
    EXPECT_FALSE(Exists("01.jpg"));
    EXPECT_EQ(In("sub/01.jpg"), form.State().pictures.Item(1).Full_Name());
    Dialogs().inputs = {"new"};
    window->Commands().Run({Menu::File, 301});
    EXPECT_TRUE(Exists("sub/new"));
    Dialogs().picks = {{Base() + "/sub/new"}};
    window->Commands().Run({Menu::File, 303});
    EXPECT_TRUE(Dialogs().asked.back().text.endsWith("as a child of itself."));
    Dialogs().responses = {Response_Code::Yes};
    window->Commands().Run({Menu::Thumbnail_Popup, 102});
    EXPECT_EQ(QStringList{In("sub/01.jpg")}, entry.scripted.shell.trashed);
}

TEST_F(Folder_Pane, Files_Of_Another_Program_Are_Copied_Unless_Shift_Is_Held)
{
    Make_Pictures(2);
    Open();
    Drop({Path(1)}, In("sub"), 0);
    EXPECT_TRUE(Exists("sub/01.jpg") && Exists("01.jpg"));
    Drop({Path(2)}, In("sub"), 1);
    EXPECT_TRUE(Exists("sub/02.jpg") && !Exists("02.jpg"));
}

TEST_F(Folder_Pane, Files_Of_The_Pane_Are_Moved_Unless_Control_Is_Held)
{
    Make_Pictures(2);
    Open();
    Select_Row(1);
    Drop({Path(1)}, In("sub"), 2);
    EXPECT_TRUE(Exists("sub/01.jpg") && Exists("01.jpg"));
    Select_Row(2);
    Drop({Path(2)}, In("sub"), 0);
    EXPECT_TRUE(Exists("sub/02.jpg") && !Exists("02.jpg"));
    EXPECT_EQ(QStringList{"01.jpg"}, Shown());
}

TEST_F(Folder_Pane, A_Folder_That_Is_Dragged_Moves_After_A_Question)
{
    std::filesystem::create_directory(folder.File("other"));
    Make_Pictures(1);
    Open();
    Dialogs().responses = {Response_Code::Yes};
    emit window->Explorer().DirectoryDragDrop(1, 0, In("sub"), In("other"), false);
    QApplication::processEvents();
    EXPECT_TRUE(Exists("other/sub/deep") && !Exists("sub"));
    emit window->Explorer().DirectoryDragDrop(1, 0, In("other"), In("other/sub"), false);
    QApplication::processEvents();
    EXPECT_TRUE(Dialogs().asked.back().text.startsWith("Attempt to put folder "));
    emit window->Explorer().DirectoryDragDrop(1, 0, In("other"), {}, true);
    QApplication::processEvents();
    EXPECT_TRUE(Dialogs().asked.back().text.startsWith("Moving folder "));
}

TEST_F(Folder_Pane, A_Wish_While_A_Command_Runs_Is_Refused)
{
    Open_And_Pick(1);
    window->Commands().Set_Handler({Menu::File, 801}, [&] {
        window->Commands().New_Folder_In(Base());
        window->Commands().Delete_Files({Path(1)});
        window->Commands().Drop_Folder(In("sub/deep"), Base(), false);
    });
    window->Commands().Run({Menu::File, 801});
    EXPECT_TRUE(Dialogs().input_asked.empty());
    EXPECT_TRUE(Dialogs().response_asked.empty());
    EXPECT_TRUE(Exists("sub/deep"));
}

TEST_F(Folder_Pane, Found_Files_Stay_Listed_But_For_Those_That_Are_Gone)
{
    Make_Pictures(3);
    Open();
    window->Explorer().InitializeGridExplicit({Path(1), Path(2), Path(3)});
    Select_Row(2);
    Dialogs().responses = {Response_Code::Yes};
    Press(window->Explorer().ExplorerGrid(), Qt::Key_Delete);
    EXPECT_TRUE(window->Explorer().Model().Shows_File_List());
    EXPECT_EQ((QStringList{Path(1), Path(3)}), Shown());
}

TEST_F(Folder_Pane, Configuration_Files_Are_Saved_And_Opened_From_The_Menu)
{
    Make_Pictures(1);
    Open();
    entry.state.Slide_Display_Interval = 7.5F;
    Dialogs().picks = {{In("mine.hvi")}, {In("mine.hvi")}};
    window->Commands().Run({Menu::File, 902});
    EXPECT_TRUE(Exists("mine.hvi"));
    EXPECT_EQ("Halvine - Save Configuration File", Dialogs().pick_asked.back().caption);
    entry.state.Slide_Display_Interval = 1;
    window->Commands().Run({Menu::File, 901});
    EXPECT_EQ("Halvine - Open Configuration File", Dialogs().pick_asked.back().caption);
    EXPECT_EQ(7.5F, entry.state.Slide_Display_Interval);
}

} // namespace
