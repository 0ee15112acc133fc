#include "controls/ui/bkcExplorer.h"
#include "frame/text/Path_Utilities.h"
#include "tests/support/Test_Folder.h"

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <gtest/gtest.h>

namespace {

class Explorer_Window : public testing::Test {
protected:
    void SetUp() override
    {
        root = Path_From_Bytes(QByteArray::fromStdString(folder.Path()));
        QDir(root).mkpath("sub/deep");
        for (const auto* name : {"a.jpg", "b.JPG", "c.txt"}) Put_File(folder.File(name), "x");
        Put_File(folder.File("sub/d.jpg"), "x");
        explorer.Set_ExplorerPattern("*.jpg;*.jif;*.tif");
        explorer.resize(500, 500);
        explorer.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&explorer));
        ASSERT_TRUE(explorer.Set_Path(root));
    }
    void Press_Row(int row, Qt::KeyboardModifiers keys = Qt::NoModifier)
    {
        auto& grid = explorer.ExplorerGrid();
        QTest::mouseClick(grid.viewport(), Qt::LeftButton, keys,
                          grid.visualRect(grid.model()->index(row - 1, 0)).center());
    }
    int Rows() { return explorer.ExplorerGrid().Content().Rows(); }

    Test_Folder folder;
    QString root;
    bkcExplorer explorer;
};

TEST_F(Explorer_Window, Lists_Files_And_Selects_Them_By_Mouse)
{
    EXPECT_EQ(2, Rows());
    const QSignalSpy changes(&explorer, &bkcExplorer::SelChange);
    Press_Row(1);
    Press_Row(2, Qt::ShiftModifier);
    EXPECT_EQ((QStringList{root + "/a.jpg", root + "/b.JPG"}), explorer.Selected_Files());
    EXPECT_EQ(2, changes.size());
}

TEST_F(Explorer_Window, A_Click_In_The_Tree_Changes_The_Folder)
{
    const QSignalSpy changes(&explorer, &bkcExplorer::ChangePath);
    auto& tree = explorer.ExplorerTree();
    tree.expand(tree.currentIndex());
    const auto sub = tree.model()->index(0, 0, tree.currentIndex());
    tree.scrollTo(sub);
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, Qt::NoModifier, tree.visualRect(sub).center());
    ASSERT_EQ(1, changes.size());
    EXPECT_EQ(root + "/sub", explorer.Path());
    EXPECT_EQ(root, explorer.PreviousPath());
    EXPECT_EQ(1, Rows());
}

TEST_F(Explorer_Window, A_Folder_That_Does_Not_Exist_Changes_Nothing)
{
    EXPECT_FALSE(explorer.Set_Path(root + "/gone"));
    EXPECT_EQ(root, explorer.Path());
}

TEST_F(Explorer_Window, New_Files_Appear_By_Themselves)
{
    Put_File(folder.File("e.tif"), "x");
    EXPECT_TRUE(QTest::qWaitFor([&] { return Rows() == 3; }, 20000));
}

TEST_F(Explorer_Window, A_Removed_Folder_Is_Left_For_Its_Parent)
{
    ASSERT_TRUE(explorer.Set_Path(root + "/sub/deep"));
    QDir(root + "/sub").removeRecursively();
    EXPECT_TRUE(QTest::qWaitFor([&] { return explorer.Path() == root; }, 20000));
    EXPECT_EQ(2, Rows());
}

TEST_F(Explorer_Window, A_Folder_That_Is_Opened_Again_Shows_What_Came_Meanwhile)
{
    auto& tree = explorer.ExplorerTree();
    tree.expand(tree.currentIndex());
    EXPECT_EQ(1, tree.model()->rowCount(tree.currentIndex()));
    tree.collapse(tree.currentIndex());
    QDir(root).mkdir("tmp");
    tree.expand(tree.currentIndex());
    EXPECT_EQ(2, tree.model()->rowCount(tree.currentIndex()));
}

TEST_F(Explorer_Window, A_New_Folder_Shows_Also_While_Something_Else_Changes_All_The_Time)
{
    auto& tree = explorer.ExplorerTree();
    tree.expand(tree.currentIndex());
    QTimer changes;
    QObject::connect(&changes, &QTimer::timeout, [this, odd = false]() mutable {
        odd = !odd;
        odd ? Put_File(folder.File("busy"), "x") : void(QFile::remove(root + "/busy"));
    });
    changes.start(20);
    QDir(root).mkdir("tmp");
    const auto is_there = [&] { return tree.model()->rowCount(tree.currentIndex()) == 2; };
    EXPECT_TRUE(QTest::qWaitFor(is_there, 5000));
}

TEST_F(Explorer_Window, Hidden_Folders_And_Files_Show_When_The_User_Asks_For_Them)
{
    QDir(root).mkdir(".secret");
    Put_File(folder.File(".x.jpg"), "x");
    auto& tree = explorer.ExplorerTree();
    const auto folders = [&] { return tree.model()->rowCount(tree.currentIndex()); };
    tree.expand(tree.currentIndex());
    explorer.Refresh();
    EXPECT_EQ(1, folders());
    EXPECT_EQ(2, Rows());
    const QPoint place = tree.visualRect(tree.currentIndex()).center();
    QContextMenuEvent wish(QContextMenuEvent::Keyboard, place, tree.viewport()->mapToGlobal(place));
    QApplication::sendEvent(tree.viewport(), &wish);
    auto* menu = tree.findChild<QMenu*>();
    ASSERT_NE(nullptr, menu);
    auto* action = menu->actions().back();
    EXPECT_EQ("Show &Hidden", action->text());
    EXPECT_FALSE(action->isChecked());
    action->trigger();
    EXPECT_EQ(2, folders());
    EXPECT_EQ(3, Rows());
    QTest::keyClick(&tree, Qt::Key_H, Qt::ControlModifier);
    EXPECT_EQ(1, folders());
    EXPECT_EQ(2, Rows());
}

TEST_F(Explorer_Window, Says_That_A_Folder_Is_Empty_In_The_Hosts_Words)
{
    const auto message = [&] {
        for (const auto* label : explorer.ExplorerGrid().viewport()->findChildren<QLabel*>())
            if (label->isVisible()) return label->text().toStdString();
        return std::string();
    };
    EXPECT_EQ("", message());
    explorer.Set_ExplorerPattern("*.tif");
    EXPECT_EQ("No pictures in this folder", message());
    explorer.Set_EmptyMessage("Nothing of that kind");
    EXPECT_EQ("Nothing of that kind", message());
    explorer.Set_FolderItemAvailableMessage(false);
    EXPECT_EQ("", message());
}

TEST_F(Explorer_Window, Found_Files_Stay_Until_The_Folder_Is_Chosen_Again)
{
    explorer.InitializeGridExplicit({root + "/sub/d.jpg", root + "/gone.jpg"});
    EXPECT_EQ(1, Rows());
    Press_Row(1);
    EXPECT_EQ(QStringList{root + "/sub/d.jpg"}, explorer.Selected_Files());
    explorer.Refresh();
    EXPECT_EQ(2, Rows());
}

TEST_F(Explorer_Window, Folder_Mode_Opens_Folders_By_Double_Click)
{
    explorer.Set_ExplorerGridMode(Explorer_Grid_Mode::Folders);
    ASSERT_EQ(1, Rows());
    auto& grid = explorer.ExplorerGrid();
    QTest::mouseDClick(grid.viewport(), Qt::LeftButton, Qt::NoModifier,
                       grid.visualRect(grid.model()->index(0, 0)).center());
    EXPECT_EQ(root + "/sub", explorer.Path());
}

TEST_F(Explorer_Window, Dropped_Files_Name_Their_Folder)
{
    QStringList dropped;
    QString target;
    QObject::connect(&explorer, &bkcExplorer::DragDrop, &explorer, [&](const QString& folder_name, int) {
        target = folder_name;
        dropped = explorer.DroppedFiles();
    });
    QMimeData files;
    files.setUrls({QUrl::fromLocalFile("/somewhere/x.jpg")});
    auto& tree = explorer.ExplorerTree();
    tree.scrollTo(tree.currentIndex());
    const auto place = tree.visualRect(tree.currentIndex()).center();
    QDragEnterEvent enter(place, Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(tree.viewport(), &enter);
    QDropEvent drop(place, Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(tree.viewport(), &drop);
    EXPECT_EQ(root, target);
    EXPECT_EQ(QStringList{"/somewhere/x.jpg"}, dropped);
}

TEST_F(Explorer_Window, Alias_And_Pattern_Come_Back_As_They_Were_Given)
{
    auto& tree = explorer.ExplorerTree();
    tree.Set_Alias("any \"text\";");
    EXPECT_EQ("any \"text\";", tree.Alias().toStdString());
    EXPECT_EQ("*.jpg;*.jif;*.tif", tree.Pattern().toStdString());
}

} // namespace
