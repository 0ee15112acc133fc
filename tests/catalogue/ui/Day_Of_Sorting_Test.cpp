// A day's sorting on real events: browse, pick, turn, adjust, save, move away, and look at the files with another reader.

#include "tests/catalogue/ui/Window_Fixture.h"

#include <QtCore/QProcess>
#include <QtCore/QStandardPaths>
#include <filesystem>

namespace {

class Day_Of_Sorting : public Window_Test {
protected:
    /// The menu item, as a click on it would.
    void Choose(Menu menu, const QString& caption)
    {
        for (QAction* action : window->findChildren<QAction*>()) {
            if (action->text().remove('&') != caption) continue;
            ASSERT_TRUE(action->isEnabled()) << caption.toStdString();
            action->trigger();
            QApplication::processEvents();
            return;
        }
        FAIL() << "no item " << caption.toStdString() << " in menu " << int(menu);
    }
    void Click_Row(int row, Qt::KeyboardModifiers keys = Qt::NoModifier)
    {
        bkcGrid& grid = window->Explorer().ExplorerGrid();
        QTest::mouseClick(grid.viewport(), Qt::LeftButton, keys,
                          grid.visualRect(grid.model()->index(row - 1, 0)).center());
    }
    /// What an independent program says about the file; empty where it is not installed.
    static QString Other_Readers_Word(const QString& path, const char* tag)
    {
        if (QStandardPaths::findExecutable("exiftool").isEmpty()) return {};
        QProcess reader;
        reader.start("exiftool", {"-s3", QString("-%1").arg(QLatin1String(tag)), path});
        EXPECT_TRUE(reader.waitForFinished(60'000));
        return QString::fromUtf8(reader.readAllStandardOutput()).trimmed();
    }
    QString In(const QString& name) const { return QString::fromStdString(folder.Path()) + '/' + name; }
    Scripted_Dialogs& Dialogs() { return entry.scripted.dialogs; }
};

TEST_F(Day_Of_Sorting, Ends_With_The_Right_Files_In_The_Right_Places)
{
    Make_Pictures(4); // 168, 176, 184 and 192 by 120
    std::filesystem::create_directory(folder.File("best"));
    Open();

    // Three of the four are picked.
    Click_Row(1);
    Click_Row(3, Qt::ShiftModifier);
    Choose(Menu::File, "Pick Selected");
    ASSERT_EQ(3, form.State().pictures.Count());

    // The first is turned and saved so, the second gets a script and is saved with it.
    Click(1);
    Choose(Menu::Rotate, "Rotate Selected 90\u00B0 Clockwise");
    Choose(Menu::Rotate, "Save Selected Rotations/Flips");
    EXPECT_EQ(0, form.State().pictures.Item(1).Rotate);
    Click(2);
    form.Set_Picture_Crop(form.State().pictures.Item(2).Picture_Key, 10, 10, 10, 10, 0);
    EXPECT_TRUE(form.State().pictures.Item(2).Script_Modified);
    Choose(Menu::Script, "Save Selected Scripts");
    EXPECT_FALSE(form.State().pictures.Item(2).Script_Modified);

    // Both go to another folder; the third goes to the recycle bin.
    window->Explorer().Set_Path(In("best"));
    Click(1);
    Click(2, Qt::ControlModifier);
    Choose(Menu::File, "Move Selected to Folder");
    window->Explorer().Set_Path(In({}));
    Click(3);
    Dialogs().responses = {Response_Code::Yes};
    Choose(Menu::File, "Delete Selected from Folder");
    EXPECT_TRUE(Dialogs().asked.empty()) << Dialogs().asked.back().text.toStdString();

    // What is left: two moved pictures in the list, and the fourth untouched in its folder.
    ASSERT_EQ(2, form.State().pictures.Count());
    EXPECT_EQ(In("best/01.jpg"), form.State().pictures.Item(1).Full_Name());
    EXPECT_EQ(QStringList{Path(3)}, entry.scripted.shell.trashed);
    EXPECT_EQ((std::vector<std::string>{"04.jpg", "best"}), folder.Names());

    // Picked again, the files hold everything.
    form.Discard_All();
    window->Explorer().Set_Path(In("best"));
    Choose(Menu::File, "Pick Selected");
    ASSERT_EQ(2, form.State().pictures.Count());
    EXPECT_EQ(120, form.State().pictures.Item(1).Horz_Pixels);
    EXPECT_EQ(168, form.State().pictures.Item(1).Vert_Pixels);
    EXPECT_EQ("Crop(10,10,10,10)", form.Recall_Picture_All_Script_Items(form.State().pictures.Item(2).Picture_Key));
    if (const QString size = Other_Readers_Word(In("best/01.jpg"), "ImageSize"); !size.isEmpty()) {
        EXPECT_EQ("120x168", size);
        EXPECT_EQ("176x120", Other_Readers_Word(In("best/02.jpg"), "ImageSize"));
        EXPECT_EQ("", Other_Readers_Word(In("best/02.jpg"), "Warning"));
    }
}

} // namespace
