#include "controls/Value_Format.h"
#include "frame/Settings_Store.h"
#include "frame/text/Date_Utilities.h"
#include "frame/text/Path_Utilities.h"
#include "frame/text/Uri_List.h"
#include "tests/catalogue/ui/Window_Fixture.h"
#include "tests/support/Mouse_Drag.h"

// The window as a hand at the mouse and a hand at the keyboard meet it.

namespace {

class Window_Input : public Window_Test {
protected:
    /// To the window as the desktop delivers it, so that shortcuts and mnemonics have their say.
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QApplication::processEvents(); // what is greyed follows the selection
        QTest::keyClick(window->windowHandle(), key, modifiers);
        QApplication::processEvents();
    }
    int Current() const { return form.State().Current_Picture_Index(); }
    QWidget& View() { return *window->Filmstrip().viewport(); }
    QPoint Middle(int index) { return window->Filmstrip().Cell_On_View(index).center(); }
};

TEST_F(Window_Input, Home_End_And_The_Page_Keys_Walk_Through_The_Strip)
{
    Open_And_Pick(60);
    window->Filmstrip().setFocus();
    Key(Qt::Key_Home);
    EXPECT_EQ(1, Current());
    Key(Qt::Key_End);
    EXPECT_EQ(60, Current());
    EXPECT_GT(window->Filmstrip().Layout().Top_Row(), 0);
    Key(Qt::Key_PageUp);
    EXPECT_LT(Current(), 60);
    const int before = Current();
    Key(Qt::Key_PageDown);
    EXPECT_GT(Current(), before);
    Key(Qt::Key_Home);
    EXPECT_EQ(0, window->Filmstrip().Layout().Top_Row());
}

TEST_F(Window_Input, Space_Toggles_And_Enter_Blows_Up)
{
    Open_And_Pick(4);
    window->Filmstrip().setFocus();
    Key(Qt::Key_Home);
    Key(Qt::Key_Right, Qt::ControlModifier);
    Key(Qt::Key_Space);
    EXPECT_EQ((std::vector{1, 2}), Selected());
    Key(Qt::Key_Space);
    EXPECT_EQ(std::vector{1}, Selected());
    Key(Qt::Key_Return);
    EXPECT_TRUE(window->Is_In_Full_Window_View());
    Key(Qt::Key_Return);
    EXPECT_FALSE(window->Is_In_Full_Window_View());
}

TEST_F(Window_Input, Control_A_Selects_Pictures_In_The_Strip_And_Files_In_The_File_Grid)
{
    Open_And_Pick(4);
    window->Filmstrip().setFocus();
    Key(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(4U, Selected().size());
    window->Commands().Run({Menu::Select, 101});
    window->Explorer().ExplorerGrid().setFocus();
    Key(Qt::Key_A, Qt::ControlModifier);
    EXPECT_TRUE(Selected().empty());
    EXPECT_EQ(4, window->Explorer().ExplorerGrid().Content().SelectedRowsCount());
}

TEST_F(Window_Input, Delete_Discards_The_Selected_Pictures_And_Leaves_Their_Files)
{
    Open_And_Pick(3);
    window->Filmstrip().setFocus();
    Click(2);
    Key(Qt::Key_Delete);
    EXPECT_EQ(2, form.State().pictures.Count());
    EXPECT_TRUE(QFile::exists(Path(2)));
}

TEST_F(Window_Input, Delete_In_The_File_Grid_Trashes_Files_And_Discards_No_Picture)
{
    Open_And_Pick(3);
    Click(3);
    bkcGrid& files = window->Explorer().ExplorerGrid();
    QTest::mouseClick(files.viewport(), Qt::LeftButton, {}, files.visualRect(files.model()->index(0, 0)).center());
    ASSERT_EQ(std::vector{3}, Selected());
    Key(Qt::Key_Delete);
    EXPECT_EQ(1U, entry.scripted.dialogs.response_asked.size()) << "one question, and Cancel is its answer";
    EXPECT_TRUE(entry.scripted.shell.trashed.empty());
    EXPECT_EQ(3, form.State().pictures.Count());
    entry.scripted.dialogs.responses = {Response_Code::Yes};
    Key(Qt::Key_Delete);
    EXPECT_EQ(QStringList{Path(1)}, entry.scripted.shell.trashed);
    ASSERT_EQ(2, form.State().pictures.Count()) << "only the record of the file goes with it";
    EXPECT_EQ("03.jpg", form.State().pictures.Item(2).File_Name.toStdString());
}

TEST_F(Window_Input, F1_And_The_Help_Button_Open_The_Help_Once_Each)
{
    Open_And_Pick(2);
    window->Filmstrip().setFocus();
    Key(Qt::Key_F1);
    EXPECT_EQ(1, entry.scripted.shell.help_opened.size());
    QTest::mouseClick(Part<QPushButton>("Help_Command"), Qt::LeftButton);
    EXPECT_EQ(2, entry.scripted.shell.help_opened.size());
    Click(1);
    Key(Qt::Key_Return);
    ASSERT_TRUE(window->Is_In_Full_Window_View());
    Key(Qt::Key_F1);
    EXPECT_EQ(3, entry.scripted.shell.help_opened.size()) << "also where the button is hidden";
    EXPECT_FALSE(window->Is_In_Full_Window_View());
    EXPECT_TRUE(window->close());
    EXPECT_EQ(1, entry.scripted.shell.help_quits);
}

TEST_F(Window_Input, F5_Reads_The_Folder_Again)
{
    Make_Pictures(2);
    Open();
    ASSERT_TRUE(QFile::copy(Path(1), Path(3)));
    Key(Qt::Key_F5);
    EXPECT_EQ("3 files", Part<QLabel>("File_Status_Label")->text());
}

TEST_F(Window_Input, Control_Q_Ends_The_Program)
{
    Make_Pictures(1);
    Open();
    Key(Qt::Key_Q, Qt::ControlModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !window->isVisible(); }, 3000));
    EXPECT_FALSE(entry.scripted.settings.Read_Value(Settings_Key, Settings_Value).isEmpty());
}

TEST_F(Window_Input, A_Menu_Opens_By_Its_Mnemonic_And_Runs_By_Arrows_And_Enter)
{
    Open_And_Pick(4);
    Key(Qt::Key_S, Qt::AltModifier);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(nullptr, menu);
    EXPECT_EQ("Select", menu->title().remove('&').toStdString());
    QTest::keyClick(menu, Qt::Key_Down); // the first item that can act: Select None cannot
    while (menu->activeAction() != nullptr && menu->activeAction()->text().remove('&') != "Select All")
        QTest::keyClick(menu, Qt::Key_Down);
    QTest::keyClick(menu, Qt::Key_Return);
    EXPECT_EQ(4U, Selected().size());
}

TEST_F(Window_Input, Escape_Leaves_A_Menu_And_Then_The_Large_View)
{
    Open_And_Pick(2);
    window->Filmstrip().setFocus();
    Key(Qt::Key_Home);
    Key(Qt::Key_Return);
    ASSERT_TRUE(window->Is_In_Full_Window_View());
    Key(Qt::Key_Escape);
    EXPECT_FALSE(window->Is_In_Full_Window_View());
}

TEST_F(Window_Input, The_Splitters_Are_Dragged_And_Their_Places_Kept)
{
    Open_And_Pick(2);
    Click(1);
    auto* split = Part<bkcSplit>("File_bkcSplit");
    const double before = split->SplitRatio();
    QWidget* handle = split->handle(1);
    const QPoint from = handle->rect().center();
    QTest::mousePress(handle, Qt::LeftButton, {}, from);
    const QPoint to = from + QPoint(60, 0);
    QMouseEvent move(QEvent::MouseMove, to, handle->mapToGlobal(to), Qt::NoButton, Qt::LeftButton, {});
    QApplication::sendEvent(handle, &move);
    QTest::mouseRelease(handle, Qt::LeftButton, {}, from);
    EXPECT_GT(split->SplitRatio(), before);
    const double dragged = split->SplitRatio();
    EXPECT_TRUE(window->close());
    window.reset();
    Open();
    EXPECT_NEAR(dragged, Part<bkcSplit>("File_bkcSplit")->SplitRatio(), 0.001);
}

TEST_F(Window_Input, Selected_Pictures_Are_Dragged_Out_As_Files)
{
    const std::string odd = folder.Path() + "/\xFF\xE4.jpg";
    Make_Pictures(2);
    Put_File(odd, Contents_Of(Path(1).toStdString()));
    Open();
    window->Commands().Run({Menu::File, 101});
    window->Commands().Run({Menu::Select, 102});
    const QMimeData* data = Begin_Mouse_Drag(View(), Middle(2));
    ASSERT_NE(nullptr, data);
    QStringList expected;
    for (int index = 1; index <= 3; ++index) expected << form.State().pictures.Item(index).Full_Name();
    EXPECT_TRUE(expected.contains(Path_From_Bytes(QByteArray::fromStdString(odd))));
    EXPECT_EQ(expected, Paths_Of_Uri_List(data->data("text/uri-list")));
    EXPECT_EQ(3, data->urls().size()) << "what other programs read";
    EXPECT_EQ(3U, Selected().size()) << "a drag is no click";
}

TEST_F(Window_Input, A_Drag_That_Begins_On_A_Picture_Outside_The_Selection_Takes_That_One)
{
    Open_And_Pick(3);
    Click(1);
    const QMimeData* data = Begin_Mouse_Drag(View(), Middle(3));
    ASSERT_NE(nullptr, data);
    EXPECT_EQ(QStringList{Path(3)}, Paths_Of_Uri_List(data->data("text/uri-list")));
    EXPECT_EQ(nullptr, form.Return_Drag_Source()) << "the drag is over";
}

TEST_F(Window_Input, Dropped_Files_Are_Appended_Whatever_Their_Names)
{
    Open_And_Pick(1);
    const std::string odd = folder.Path() + "/\xFF\xE4 100%#.jpg";
    Put_File(odd, Contents_Of(Path(1).toStdString()));
    QMimeData data;
    data.setData("text/uri-list", Uri_List_Of({Path_From_Bytes(QByteArray::fromStdString(odd)), Path(1)}));
    EXPECT_TRUE(Drop_On(View(), data, {QPoint(40, 40)}));
    EXPECT_TRUE(QTest::qWaitFor([&] { return form.State().pictures.Count() == 3; }, 3000));
    EXPECT_EQ(odd, File_System_Bytes(form.State().pictures.Item(2).Full_Name()));
}

TEST_F(Window_Input, A_Dropped_File_That_Is_No_Picture_Is_Told)
{
    Open_And_Pick(1);
    Put_File(folder.Path() + "/notes.txt", "no picture");
    QMimeData data;
    data.setData("text/uri-list", Uri_List_Of({QString::fromStdString(folder.Path() + "/notes.txt")}));
    EXPECT_TRUE(Drop_On(View(), data, {QPoint(40, 40)}));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !entry.scripted.dialogs.asked.empty(); }, 3000));
    EXPECT_TRUE(entry.scripted.dialogs.asked[0].text.startsWith("Halvine was unable to read 1"));
    EXPECT_EQ(1, form.State().pictures.Count());
}

TEST_F(Window_Input, What_Is_No_File_Is_Not_Wanted_As_A_Drop)
{
    Open_And_Pick(1);
    QMimeData text;
    text.setText("file:///nowhere.jpg");
    EXPECT_FALSE(Drop_On(View(), text, {QPoint(40, 40)}));
    QMimeData elsewhere;
    elsewhere.setData("text/uri-list", "http://example.org/x.jpg\r\n");
    EXPECT_FALSE(Drop_On(View(), elsewhere, {QPoint(40, 40)}));
}

TEST_F(Window_Input, The_Pictures_Of_A_Dropped_Folder_Are_Appended_But_Not_Those_Of_Its_Folders)
{
    Open_And_Pick(3);
    const QString sub = QString::fromStdString(folder.Path()) + "/sub";
    ASSERT_TRUE(QDir().mkpath(sub + "/deep"));
    for (const char* name : {"/b.jpg", "/a.JPG", "/deep/c.jpg"}) ASSERT_TRUE(QFile::copy(Path(1), sub + name));
    Put_File((sub + "/notes.txt").toStdString(), "no picture");
    QMimeData data;
    data.setData("text/uri-list", Uri_List_Of({sub, Path(2)}));
    EXPECT_TRUE(Drop_On(View(), data, {QPoint(40, 40)}));
    EXPECT_TRUE(QTest::qWaitFor([&] { return form.State().pictures.Count() == 6; }, 3000));
    EXPECT_EQ(sub + "/a.JPG", form.State().pictures.Item(4).Full_Name());
    EXPECT_EQ(sub + "/b.jpg", form.State().pictures.Item(5).Full_Name());
    EXPECT_EQ(Path(2), form.State().pictures.Item(6).Full_Name());
    EXPECT_TRUE(entry.scripted.dialogs.asked.empty()) << "the text file was not meant";
}

TEST_F(Window_Input, A_Dropped_Folder_Without_Pictures_Is_Told)
{
    Open_And_Pick(1);
    const QString sub = QString::fromStdString(folder.Path()) + "/sub";
    ASSERT_TRUE(QDir().mkpath(sub));
    QMimeData data;
    data.setData("text/uri-list", Uri_List_Of({sub}));
    EXPECT_TRUE(Drop_On(View(), data, {QPoint(40, 40)}));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !entry.scripted.dialogs.asked.empty(); }, 3000));
    EXPECT_EQ("No pictures available.", entry.scripted.dialogs.asked[0].text);
}

TEST_F(Window_Input, A_Drop_During_A_Pick_Changes_Nothing)
{
    Make_Pictures(30);
    Open();
    QMimeData data;
    data.setData("text/uri-list", Uri_List_Of({Path(1)}));
    entry.scripted.events.on_call = [&](int call) {
        if (call == 1) Drop_On(View(), data, {QPoint(40, 40)});
        QApplication::processEvents();
    };
    window->Commands().Run({Menu::File, 101});
    QTest::qWait(10);
    EXPECT_EQ(30, form.State().pictures.Count());
}

TEST_F(Window_Input, A_Double_Click_On_A_File_Appends_It_And_On_A_Cell_Blows_It_Up)
{
    Open_And_Pick(2);
    bkcGrid& files = window->Explorer().ExplorerGrid();
    QTest::mouseDClick(files.viewport(), Qt::LeftButton, {}, files.visualRect(files.model()->index(1, 0)).center());
    EXPECT_EQ(3, form.State().pictures.Count());
    Click(3);
    QTest::mouseDClick(&View(), Qt::LeftButton, {}, Middle(3));
    EXPECT_TRUE(window->Is_In_Full_Window_View());
}

TEST_F(Window_Input, A_New_Pattern_Lists_Other_Files)
{
    Make_Pictures(2);
    Put_File(folder.Path() + "/scan.tif", "x");
    Open();
    EXPECT_EQ("3 files", Part<QLabel>("File_Status_Label")->text());
    auto* pattern = Part<QLineEdit>("Picture_Path_Pattern_Text");
    pattern->setFocus();
    pattern->selectAll();
    QTest::keyClicks(pattern, "*.tif");
    QTest::keyClick(pattern, Qt::Key_Return);
    EXPECT_EQ("1 file", Part<QLabel>("File_Status_Label")->text());
    EXPECT_EQ("*.tif", form.State().Default_Extensions.toStdString());
}

TEST_F(Window_Input, The_Panels_Buttons_Are_Reached_By_Tab_And_Pressed_By_Space)
{
    Make_Pictures(3);
    Open();
    auto* panel = Part<bkcButtonPanel>("Halvine_bkcButtonPanel");
    QToolButton* first = nullptr;
    for (QToolButton* button : panel->findChildren<QToolButton*>())
        if (button->toolTip() == "Pick selected files") first = button;
    ASSERT_NE(nullptr, first);
    EXPECT_EQ(Qt::TabFocus, first->focusPolicy());
    QTest::keyClick(first, Qt::Key_Space);
    EXPECT_EQ(3, form.State().pictures.Count());
}

TEST_F(Window_Input, The_Picture_List_Sorts_By_Its_Headings_And_Selects_The_Right_Pictures)
{
    Open_And_Pick(3);
    window->Commands().Run({Menu::Options, 401});
    auto* list = Part<bkcGrid>("Picture_List_bkcGrid");
    QHeaderView* header = list->horizontalHeader();
    const QPoint name(header->sectionViewportPosition(1) + 20, header->height() / 2);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, name);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, name);
    EXPECT_EQ("03.jpg", list->Content().CellText(2, 1).toStdString());
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(list->model()->index(0, 1)).center());
    EXPECT_EQ(std::vector{3}, Selected());
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(list->model()->index(2, 1)).center());
    EXPECT_FALSE(window->Shows_Picture_List());
    EXPECT_EQ(1, Current());
}

TEST_F(Window_Input, The_Picture_List_Tells_Its_Pictures_As_They_Are_And_Forgets_Those_That_Went)
{
    Open_And_Pick(3);
    Click(2);
    window->Commands().Run({Menu::Options, 401});
    const Grid_Model& content = Part<bkcGrid>("Picture_List_bkcGrid")->Content();
    const Picture_Item& item = form.State().pictures.Item(2);
    const QStringList expected{item.Path,
                               QStringLiteral("02.jpg"),
                               QStringLiteral("JPG"),
                               Format_Value(Date_Time_From_Date(item.File_Date), QStringLiteral("General Date")),
                               QString::number(item.File_Size_KB) + "KB",
                               QStringLiteral("176"),
                               QStringLiteral("120"),
                               QStringLiteral("24")};
    for (int column = 1; column <= 8; ++column)
        EXPECT_EQ(expected[column - 1].toStdString(), content.CellText(column, 2).toStdString()) << column;
    EXPECT_EQ(std::vector{2}, content.SelectedRowsReturn());
    const int gone[] = {1};
    form.Picking().Remove_Pictures(gone);
    EXPECT_EQ("", content.CellText(2, 1).toStdString());
    auto* list = Part<bkcGrid>("Picture_List_bkcGrid");
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(list->model()->index(2, 1)).center());
    EXPECT_EQ(std::vector{2}, Selected()) << "the third of the list is the second picture now";
}

} // namespace
