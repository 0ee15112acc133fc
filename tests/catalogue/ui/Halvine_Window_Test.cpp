#include "tests/catalogue/ui/Window_Fixture.h"

#include "catalogue/ui/Bitmap_Image.h"
#include "catalogue/ui/Qt_Window_System.h"
#include "catalogue/ui/Save_Options_Dialog.h"

namespace {

TEST_F(Window_Test, Shows_The_Folder_And_Its_Counts)
{
    Make_Pictures(3);
    Open();
    EXPECT_EQ("3 files", Part<QLabel>("File_Status_Label")->text());
    EXPECT_EQ("0 pictures", Part<QLabel>("Picture_Status_Label")->text());
    EXPECT_EQ("Halvine v0.1 (0.1.0)", window->windowTitle());
    EXPECT_FALSE(Part<QWidget>("Magnify_Picture")->isVisible());
    EXPECT_FALSE(Part<QWidget>("Pick_Progress_Frame")->isVisible());
}

TEST_F(Window_Test, A_Picture_Under_Its_Kept_Name_Is_Back_When_The_Folder_Is_Listed)
{
    Make_Pictures(2);
    ASSERT_TRUE(QFile::rename(Path(2), Path(2) + QLatin1Char('~')));
    Open();
    EXPECT_EQ("2 files", Part<QLabel>("File_Status_Label")->text());
    EXPECT_TRUE(QFile::exists(Path(2)));
}

TEST_F(Window_Test, Found_Files_Take_The_Place_Of_The_Folders_Files)
{
    Make_Pictures(3);
    Open();
    entry.scripted.dialogs.inputs.push_back(QStringLiteral("*2*"));
    EXPECT_TRUE(window->Commands().Run({Menu::Search, 101}));
    const Explorer_Model& pane = Part<bkcExplorer>("f_bkcExplorer")->Model();
    EXPECT_TRUE(pane.Shows_File_List());
    EXPECT_EQ("1 file", Part<QLabel>("File_Status_Label")->text());
    EXPECT_EQ(Path(2), pane.Path_At(1));
    EXPECT_TRUE(window->Commands().Run({Menu::Search, 102})); // given up: nothing changes
    EXPECT_EQ("1 file", Part<QLabel>("File_Status_Label")->text());
}

TEST_F(Window_Test, Control_And_Shift_Act_On_Cells)
{
    Open_And_Pick(8);
    Click(2);
    EXPECT_EQ(std::vector{2}, Selected());
    Click(4, Qt::ControlModifier);
    EXPECT_EQ((std::vector{2, 4}), Selected());
    Click(3, Qt::ShiftModifier);
    EXPECT_EQ((std::vector{2, 3}), Selected());
    EXPECT_EQ("8 pictures, 2 selected", Part<QLabel>("Picture_Status_Label")->text());
    EXPECT_TRUE(Part<QWidget>("Magnify_Picture")->isVisible());
    EXPECT_TRUE(window->windowTitle().endsWith(" - 03.jpg"));
}

TEST_F(Window_Test, A_Press_On_A_Selected_Cell_Selects_It_Alone_At_The_Release)
{
    Open_And_Pick(3);
    Click(1);
    Click(2, Qt::ControlModifier);
    QWidget* view = window->Filmstrip().viewport();
    QTest::mousePress(view, Qt::LeftButton, {}, window->Filmstrip().Cell_On_View(1).center());
    EXPECT_EQ((std::vector{1, 2}), Selected()); // both may be about to be dragged
    QTest::mouseRelease(view, Qt::LeftButton, {}, window->Filmstrip().Cell_On_View(1).center());
    EXPECT_EQ(std::vector{1}, Selected());
}

TEST_F(Window_Test, Keys_Move_Select_And_Blow_Up)
{
    Open_And_Pick(6);
    Filmstrip_Widget& strip = window->Filmstrip();
    strip.setFocus();
    QTest::keyClick(&strip, Qt::Key_Home);
    QTest::keyClick(&strip, Qt::Key_Right);
    QTest::keyClick(&strip, Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ((std::vector{2, 3}), Selected());
    QTest::keyClick(&strip, Qt::Key_Space);
    EXPECT_EQ(std::vector{2}, Selected());
    QTest::keyClick(&strip, Qt::Key_Return);
    EXPECT_TRUE(window->Is_In_Full_Window_View());
    EXPECT_FALSE(strip.isVisible());
    QTest::keyClick(Part<QWidget>("Magnify_Picture"), Qt::Key_Escape);
    EXPECT_FALSE(window->Is_In_Full_Window_View());
    EXPECT_TRUE(strip.isVisible());
}

TEST_F(Window_Test, The_Menu_Works_By_Keyboard)
{
    Open_And_Pick(4);
    QAction* select = nullptr;
    for (QAction* action : window->menuBar()->actions())
        if (action->text() == "&Select") select = action;
    ASSERT_NE(nullptr, select);
    window->menuBar()->setActiveAction(select);
    QApplication::processEvents();
    QTest::keyClick(select->menu(), Qt::Key_A); // the mnemonic of Select All
    EXPECT_EQ(4U, Selected().size());
}

TEST_F(Window_Test, Items_That_Cannot_Act_Are_Greyed)
{
    Make_Pictures(1);
    Open();
    QApplication::processEvents();
    const auto action = [&](const QString& text) {
        for (QAction* candidate : window->findChildren<QAction*>())
            if (candidate->text().remove('&') == text) return candidate;
        return static_cast<QAction*>(nullptr);
    };
    EXPECT_TRUE(action("Pick Selected")->isEnabled());
    EXPECT_FALSE(action("Discard Selected")->isEnabled());
    EXPECT_FALSE(action("Select All")->isEnabled());
    window->Commands().Run({Menu::File, 101});
    QApplication::processEvents();
    EXPECT_TRUE(action("Discard Selected")->isEnabled());
}

TEST_F(Window_Test, A_Close_During_A_Pick_Is_Refused_And_Stop_Ends_The_Pick)
{
    Make_Pictures(30);
    Open();
    entry.scripted.events.on_call = [&](int call) {
        QApplication::processEvents();
        if (call == 1) {
            EXPECT_TRUE(Part<QWidget>("Pick_Progress_Frame")->isVisible());
            EXPECT_NE("0 pictures", Part<QLabel>("Picture_Status_Label")->text().toStdString());
            EXPECT_FALSE(window->close());
        }
        if (call == 2) window->Commands().Press_Panel(Stop_Pick_Button, 1, 0);
    };
    window->Commands().Run({Menu::File, 101});
    ASSERT_FALSE(entry.scripted.dialogs.asked.empty());
    EXPECT_EQ("Please stop the picture pick currently in progress before exiting.",
              entry.scripted.dialogs.asked[0].text);
    EXPECT_GT(form.State().pictures.Count(), 0);
    EXPECT_LT(form.State().pictures.Count(), 30);
    EXPECT_FALSE(Part<QWidget>("Pick_Progress_Frame")->isVisible());
    EXPECT_TRUE(window->isVisible());
}

TEST_F(Window_Test, The_Progress_Of_A_Pick_Ends_With_Its_Last_File)
{
    Make_Pictures(30);
    Open();
    window->Commands().Run({Menu::File, 101});
    const auto* frame = Part<QWidget>("Pick_Progress_Frame");
    EXPECT_EQ("30 of 30 (100%)", frame->findChild<QLabel*>()->text());
    EXPECT_EQ(30, frame->findChild<QProgressBar*>()->value());
    EXPECT_EQ(30, frame->findChild<QProgressBar*>()->maximum());
    EXPECT_EQ("30 pictures, 30 selected", Part<QLabel>("Picture_Status_Label")->text());
}

TEST_F(Window_Test, Closing_In_The_Full_Window_View_Takes_Two_Closes)
{
    Open_And_Pick(2);
    Click(1);
    QTest::mouseClick(Part<QToolButton>("Zoom_Toggle"), Qt::LeftButton);
    ASSERT_TRUE(window->Is_In_Full_Window_View());
    EXPECT_FALSE(window->close());
    EXPECT_FALSE(window->Is_In_Full_Window_View());
    EXPECT_TRUE(window->close());
    EXPECT_EQ(0, form.State().pictures.Count());
}

TEST_F(Window_Test, Closing_In_The_List_View_Takes_Two_Closes)
{
    Open_And_Pick(2);
    window->Commands().Run({Menu::Options, 401});
    ASSERT_TRUE(window->Shows_Picture_List());
    EXPECT_EQ(2, Part<bkcGrid>("Picture_List_bkcGrid")->Content().Rows());
    EXPECT_FALSE(window->close());
    EXPECT_FALSE(window->Shows_Picture_List());
    EXPECT_TRUE(window->close());
}

TEST_F(Window_Test, Modified_Scripts_Keep_The_Window_Open_Unless_They_May_Go)
{
    Open_And_Pick(1);
    form.State().pictures.Item(1).Script_Modified = true;
    EXPECT_FALSE(window->close());
    entry.scripted.dialogs.answers = {Message_Answer::Yes};
    EXPECT_TRUE(window->close());
}

TEST_F(Window_Test, A_File_That_Is_Dropped_Is_Appended)
{
    Open_And_Pick(2);
    Put_File(folder.Path() + "/extra.jpg", Contents_Of(Path(1).toStdString()));
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(QString::fromStdString(folder.Path() + "/extra.jpg"))});
    QWidget* view = window->Filmstrip().viewport();
    QDragEnterEvent enter({40, 40}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(view, &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop({40, 40}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(view, &drop);
    QTest::qWait(1);
    EXPECT_EQ(3, form.State().pictures.Count());
    EXPECT_EQ("extra.jpg", form.State().pictures.Item(3).File_Name);
}

TEST_F(Window_Test, The_Right_Button_Opens_The_Popup)
{
    Open_And_Pick(3);
    QContextMenuEvent event(QContextMenuEvent::Mouse, window->Filmstrip().Cell_On_View(2).center(), {10, 10});
    Click(2, {}, Qt::RightButton);
    QApplication::sendEvent(window->Filmstrip().viewport(), &event);
    EXPECT_EQ(std::vector{2}, Selected());
    QMenu* popup = Part<QMenu>("ThumbnailPopup_Menu");
    EXPECT_TRUE(popup->isVisible());
    popup->close();
}

TEST_F(Window_Test, The_Wheel_Scrolls_By_Rows)
{
    Open_And_Pick(60);
    QWheelEvent down({20, 20}, {20, 20}, {}, {0, -120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(window->Filmstrip().viewport(), &down);
    EXPECT_EQ(1, window->Filmstrip().Layout().Top_Row());
}

TEST_F(Window_Test, A_Prepared_Script_Is_Checked_While_It_Is_In_Force)
{
    Open_And_Pick(1);
    QAction* people = Part<QAction>("Prepared_Script_Menu_Item_2");
    people->trigger();
    EXPECT_TRUE(people->isChecked());
    EXPECT_EQ(2, form.State().Current_Prepared_Script);
    people->trigger();
    EXPECT_FALSE(people->isChecked());
    EXPECT_EQ(0, form.State().Current_Prepared_Script);
}

/// A cell as the strip shows it once all that it waits for was made.
QImage Cell_Image(Halvine_Window& window, int index)
{
    for (int turn = 0; turn < 20; ++turn) QApplication::processEvents();
    return window.Filmstrip().viewport()->grab(window.Filmstrip().Cell_On_View(index)).toImage();
}

TEST_F(Window_Test, The_Strip_Shows_Each_Picture_With_Its_Script_And_Follows_Its_Changes)
{
    Make_Pictures(2);
    ASSERT_TRUE(Save_Bitmap(Drawn_Bitmap(200, 120, 5).Get(), Path(3), 1,
                            {.comment = {}, .script = "Crop(0,0,100,0)", .parent = {}}));
    ASSERT_TRUE(Save_Bitmap(Drawn_Bitmap(200, 120, 5).Get(), Path(4), 1, {}));
    Open();
    window->Commands().Run({Menu::File, 101});
    EXPECT_NE(Cell_Image(*window, 3), Cell_Image(*window, 4)) << "the script that stands in the file";
    const QImage plain = Cell_Image(*window, 4);
    const int key = form.State().pictures.Item(4).Picture_Key;
    form.Set_Picture_Crop(key, 0, 0, 100, 0, 0);
    EXPECT_EQ(Cell_Image(*window, 3), Cell_Image(*window, 4));
    form.Rotate_Picture(key, 90);
    EXPECT_NE(Cell_Image(*window, 3), Cell_Image(*window, 4));
    form.Rotate_Picture(key, 270);
    EXPECT_EQ(Cell_Image(*window, 3), Cell_Image(*window, 4));
    form.Set_Picture_All_Script_Items(key, {});
    EXPECT_EQ(plain, Cell_Image(*window, 4));
}

TEST_F(Window_Test, The_Strip_Follows_The_Prepared_Script_And_Cleared_Scripts)
{
    Open_And_Pick(2);
    const QImage plain = Cell_Image(*window, 2);
    QAction* people = Part<QAction>("Prepared_Script_Menu_Item_2");
    people->trigger();
    EXPECT_NE(plain, Cell_Image(*window, 2));
    people->trigger();
    EXPECT_EQ(plain, Cell_Image(*window, 2));
    form.Set_Picture_Blur(form.State().pictures.Item(2).Picture_Key, 3, 100, 7, 0);
    EXPECT_NE(plain, Cell_Image(*window, 2));
    window->Commands().Clear_All_Scripts();
    EXPECT_EQ(plain, Cell_Image(*window, 2));
}

TEST_F(Window_Test, A_Given_Up_Thumbnail_Comes_Back_Where_A_Neutral_Shape_Stood)
{
    Open_And_Pick(2);
    const auto cell = [this] {
        return window->Filmstrip().viewport()->grab(window->Filmstrip().Cell_On_View(2)).toImage();
    };
    const QImage picture = cell();
    form.State().pictures.Item(2).Thumbnail_Bitmap.Reset();
    const QImage neutral = cell();
    EXPECT_NE(picture, neutral);
    EXPECT_NE(neutral.pixel(64, 1), neutral.pixel(64, 64)) << "the shape of the picture in its cell";
    EXPECT_TRUE(QTest::qWaitFor([&] { return bool(form.State().pictures.Item(2).Thumbnail_Bitmap); }));
    EXPECT_EQ(picture, Cell_Image(*window, 2));
}

TEST_F(Window_Test, Given_Up_Thumbnails_Beside_One_That_Cannot_Be_Read_Come_Back)
{
    Open_And_Pick(9);
    for (int index = 1; index <= 9; ++index) form.State().pictures.Item(index).Thumbnail_Bitmap.Reset();
    ASSERT_TRUE(QFile::remove(Path(1)));
    window->Filmstrip().viewport()->grab();
    EXPECT_TRUE(QTest::qWaitFor([&] {
        int read = 0;
        for (int index = 2; index <= 6; ++index) read += bool(form.State().pictures.Item(index).Thumbnail_Bitmap);
        return read == 5;
    }));
    EXPECT_FALSE(form.State().pictures.Item(1).Thumbnail_Bitmap);
}

TEST_F(Window_Test, A_Closed_Window_Leaves_No_Drawn_Thumbnail_Behind)
{
    const int before = Bitmap_Count();
    Open_And_Pick(3);
    entry.scripted.dialogs.answers = {Message_Answer::Yes};
    form.Set_Picture_Blur(form.State().pictures.Item(2).Picture_Key, 3, 100, 7, 0);
    QApplication::processEvents();
    EXPECT_TRUE(window->close());
    EXPECT_EQ(before, Bitmap_Count());
}

TEST_F(Window_Test, The_Settings_Keep_Path_And_Place)
{
    Open_And_Pick(1);
    EXPECT_TRUE(window->close());
    EXPECT_EQ(folder.Path(), entry.state.Default_Path.toStdString());
    EXPECT_FALSE(
        entry.scripted.settings.Read_Value(QStringLiteral("Brennick\\Halvine"), Main_Window_Placement).isEmpty());
}

TEST(Bitmap_Images, Go_To_The_Clipboard_And_Back)
{
    const Qt_Window_System window_system;
    const Owned_Bitmap bitmap = Drawn_Bitmap(5, 3, 7);
    const QImage image = Image_Of_Bitmap(bitmap.Get());
    ASSERT_EQ(QSize(5, 3), image.size());
    QGuiApplication::clipboard()->setImage(image);
    const Owned_Bitmap again(Count_Bitmap(Get_Bitmap_From_Clipboard(0)));
    const auto before = Pixels_Of(bitmap.Get()), after = Pixels_Of(again.Get());
    ASSERT_EQ(before.size(), after.size());
    for (std::size_t i = 0; i < before.size(); ++i)
        EXPECT_EQ(i % 16 < 15 ? before[i] : 0, i % 16 < 15 ? after[i] : 0) << i; // without the padding
    EXPECT_TRUE(Image_Of_Bitmap(0).isNull());
    QGuiApplication::clipboard()->setText(QStringLiteral("no picture"));
    EXPECT_EQ(0, Get_Bitmap_From_Clipboard(0));
    QGuiApplication::clipboard()->clear();
    EXPECT_EQ(QSize(2, 1), Fitted_Image(bitmap.Get(), {2, 2}).size());
    EXPECT_EQ(QSize(5, 3), Fitted_Image(bitmap.Get(), {50, 50}).size());
}

TEST(Bitmap_Images, Lie_Over_White_Where_The_Clipboards_Is_Transparent)
{
    const Qt_Window_System window_system;
    QImage image(2, 1, QImage::Format_ARGB32);
    image.setPixelColor(0, 0, QColor(0, 0, 0, 0));
    image.setPixelColor(1, 0, QColor(10, 20, 30));
    QGuiApplication::clipboard()->setImage(image);
    const Owned_Bitmap bitmap(Count_Bitmap(Get_Bitmap_From_Clipboard(0)));
    const auto bytes = Pixels_Of(bitmap.Get());
    EXPECT_EQ((std::vector<std::uint8_t>{255, 255, 255, 30, 20, 10, 0, 0}),
              std::vector<std::uint8_t>(bytes.begin(), bytes.end()));
    QGuiApplication::clipboard()->clear();
}

TEST(Font_Names, Are_Those_That_Scale)
{
    const Qt_Window_System window_system;
    std::string buffer(32000, 'x');
    std::int32_t length = 0;
    const int count = Get_TrueType_Font_FaceNames(0, buffer.data(), int(buffer.size()), &length);
    ASSERT_GT(count, 0);
    ASSERT_GT(length, 0);
    buffer.resize(std::size_t(length));
    EXPECT_EQ(count, std::count(buffer.begin(), buffer.end(), '\n') + 1);
    EXPECT_NE(std::string::npos, buffer.find("DejaVu Sans"));
}

TEST(Save_Options_Form, Starts_With_The_First_Of_Each_And_The_Parents_Quality)
{
    Save_Options_Dialog dialog;
    EXPECT_EQ(Save_Options::Scripts::Ignore, dialog.Options().Script_Option);
    EXPECT_EQ(Quality_Of_Parent, dialog.Options().JPEG_Quality);
    dialog.findChild<QLineEdit*>()->setText("85");
    for (QRadioButton* button : dialog.findChildren<QRadioButton*>())
        if (button->text() == "Save As &Auto Copy") button->click();
    EXPECT_EQ(Save_Options::Target::Auto_Copy, dialog.Options().Save_Option);
    EXPECT_EQ(85, dialog.Options().JPEG_Quality);
}

TEST(Save_Options_Form, Takes_No_Quality_That_Would_Silently_Mean_The_Parents)
{
    Save_Options_Dialog dialog;
    auto* quality = dialog.findChild<QLineEdit*>();
    QTest::keyClicks(quality, "x150");
    EXPECT_EQ("15", quality->text());
    quality->clear();
    QTest::keyClicks(quality, "100");
    EXPECT_EQ(100, dialog.Options().JPEG_Quality);
}

TEST(Save_Options_Form, Begins_With_The_Answers_Of_The_Last_Time)
{
    const Save_Options last{.Script_Option = Save_Options::Scripts::Run,
                            .Save_Rotations_Flips = true,
                            .Save_Option = Save_Options::Target::Prompted_Copy,
                            .Picture_Type = 2,
                            .JPEG_Quality = 0};
    const Save_Options again = Save_Options_Dialog(last).Options();
    EXPECT_EQ(last.Script_Option, again.Script_Option);
    EXPECT_EQ(last.Save_Rotations_Flips, again.Save_Rotations_Flips);
    EXPECT_EQ(last.Save_Option, again.Save_Option);
    EXPECT_EQ(last.Picture_Type, again.Picture_Type);
    EXPECT_EQ(last.JPEG_Quality, again.JPEG_Quality);
}

} // namespace
