#include "frame/program/Slide_Wiring.h"

#include "frame/Settings_Store.h"
#include "frame/text/Path_Utilities.h"
#include "frame/ui/Icon_Set.h"
#include "slides/ui/Slide_Keys.h"
#include "tests/catalogue/ui/Window_Fixture.h"

namespace {

QString Q(const char* text)
{
    return QString::fromUtf8(text);
}

/// The main window with its slide shows, on real events; the timers of the shows fire by hand.
class Slide_Wiring_Test : public Window_Test {
protected:
    ~Slide_Wiring_Test() override { slides.reset(); }

    void Open_With_Slides(const QString& arguments = {})
    {
        window = Window_On(QString::fromStdString(folder.Path()), form, entry, Icon);
        slides = std::make_unique<Slide_Wiring>(form, *window, entry.state, entry.scripted.platform, Icon);
        Bring_Up(*window, arguments);
    }
    void Open_And_Pick_With_Slides(int count)
    {
        Make_Pictures(count);
        Open_With_Slides();
        Run(Menu::File, 101);
        Run(Menu::Select, 101);
        QApplication::processEvents();
    }
    bool Run(Menu menu, int number) { return window->Commands().Run({menu, number}); }
    Scripted_Timer& Slide_Timer() { return *entry.scripted.timers.at(entry.scripted.timers.size() - 2); }
    QToolButton* Control_Button(const char* tooltip)
    {
        for (auto* button : slides->Control_Form().findChildren<QToolButton*>())
            if (button->toolTip() == QLatin1String(tooltip) && button->isVisible()) return button;
        return nullptr;
    }
    void Press(const char* tooltip)
    {
        QToolButton* button = Control_Button(tooltip);
        ASSERT_NE(nullptr, button) << tooltip;
        QTest::mouseClick(button, Qt::LeftButton);
    }
    QString Label() { return slides->Control_Form().Label_Text(); }
    QString Show_Of(int count)
    {
        std::string text;
        for (int i = 1; i <= count; ++i) text += "PIC,'.\\" + Name_Part(Path(i)).toStdString() + "';\r\n";
        Put_File(folder.File("show.hvs"), text);
        return QString::fromStdString(folder.File("show.hvs"));
    }

    std::unique_ptr<Slide_Wiring> slides;
};

TEST_F(Slide_Wiring_Test, The_Control_Window_Shows_Slide_And_State)
{
    Open_And_Pick_With_Slides(3);
    ASSERT_TRUE(Run(Menu::Slides, 401));
    Slide_Show_Control_Form& control = slides->Control_Form();
    EXPECT_TRUE(control.isVisible());
    EXPECT_TRUE(control.windowFlags() & Qt::WindowStaysOnTopHint);
    EXPECT_EQ(Label(), Q("Slide 1 of 3"));
    EXPECT_EQ(nullptr, Control_Button("Play"));
    Press("Pause");
    EXPECT_EQ(Label(), Q("Slide 1 of 3 (Paused)"));
    Press("Next Slide");
    EXPECT_EQ(Label(), Q("Slide 2 of 3 (Paused)"));
    Press("Previous slide");
    Press("Previous slide");
    EXPECT_EQ(Label(), Q("Slide 3 of 3 (Paused)"));
    Press("Play");
    EXPECT_EQ(Label(), Q("Slide 3 of 3"));
    EXPECT_TRUE(Slide_Timer().on);
    Press("Stop");
    EXPECT_FALSE(control.isVisible());
    EXPECT_EQ(std::vector{3}, Selected());
}

TEST_F(Slide_Wiring_Test, Select_Marks_The_Slide_For_After_The_Show)
{
    Open_And_Pick_With_Slides(3);
    Run(Menu::Slides, 401);
    Press("Next Slide");
    Press("Select slide");
    Press("Stop");
    EXPECT_EQ(std::vector{2}, Selected());
}

TEST_F(Slide_Wiring_Test, The_Keys_Of_The_Control_Window_Step_And_Stop)
{
    Open_And_Pick_With_Slides(3);
    Run(Menu::Slides, 401);
    Slide_Show_Control_Form& control = slides->Control_Form();
    QTest::keyClick(&control, Qt::Key_Space);
    QTest::keyClick(&control, Qt::Key_Right);
    EXPECT_EQ(Label(), Q("Slide 2 of 3 (Paused)"));
    QTest::keyClick(&control, Qt::Key_A);
    QTest::keyClick(&control, Qt::Key_Right, Qt::ControlModifier);
    EXPECT_EQ(Label(), Q("Slide 2 of 3 (Paused)"));
    QTest::keyClick(&control, Qt::Key_Escape);
    EXPECT_FALSE(slides->Player().Is_Running());
}

TEST_F(Slide_Wiring_Test, Esc_In_The_Main_Window_Stops_The_Show)
{
    Open_And_Pick_With_Slides(2);
    Run(Menu::Slides, 401);
    QTest::keyClick(&window->Filmstrip(), Qt::Key_Escape);
    EXPECT_FALSE(slides->Player().Is_Running());
}

TEST_F(Slide_Wiring_Test, Closing_The_Control_Window_Stops_The_Show)
{
    Open_And_Pick_With_Slides(2);
    Run(Menu::Slides, 401);
    slides->Control_Form().close();
    EXPECT_FALSE(slides->Player().Is_Running());
    ASSERT_TRUE(Run(Menu::Slides, 401));
    EXPECT_TRUE(slides->Control_Form().isVisible());
}

TEST_F(Slide_Wiring_Test, The_Control_Windows_Place_Is_Remembered)
{
    Open_And_Pick_With_Slides(2);
    Run(Menu::Slides, 401);
    Run(Menu::Slides, 402);
    EXPECT_TRUE(entry.scripted.settings.Read_Value(Settings_Key, Q("Halvine-Slide-Control")).startsWith(Q("WOR:")));
}

TEST_F(Slide_Wiring_Test, The_Panels_Button_Starts_And_Stops)
{
    Open_And_Pick_With_Slides(2);
    auto* panel = Part<bkcButtonPanel>("Halvine_bkcButtonPanel");
    const auto visible = [&](const char* tooltip) {
        for (auto* button : panel->findChildren<QToolButton*>())
            if (button->toolTip() == QLatin1String(tooltip)) return button->isVisible() && button->isEnabled();
        return false;
    };
    EXPECT_TRUE(visible("Start slide show"));
    window->Commands().Press_Panel(Slide_Show_Button, 1, 0);
    QApplication::processEvents();
    EXPECT_TRUE(slides->Player().Is_Running());
    EXPECT_FALSE(visible("Start slide show"));
    EXPECT_TRUE(visible("Stop slide show"));
    window->Commands().Press_Panel(Stop_Slide_Show_Button, 1, 0);
    QApplication::processEvents();
    EXPECT_FALSE(slides->Player().Is_Running());
    EXPECT_TRUE(visible("Start slide show"));
}

TEST_F(Slide_Wiring_Test, The_Ground_Is_Black_And_The_Screen_Stays_On_During_The_Show)
{
    Open_And_Pick_With_Slides(2);
    Run(Menu::Slides, 401);
    auto* magnify = Part<QWidget>("Magnify_Picture");
    EXPECT_EQ(magnify->grab().toImage().pixelColor(2, 2), QColor(Qt::black));
    EXPECT_TRUE(entry.scripted.shell.screen_saver_held_off);
    Run(Menu::Slides, 402);
    EXPECT_FALSE(entry.scripted.shell.screen_saver_held_off);
    EXPECT_EQ(magnify->grab().toImage().pixelColor(2, 2), magnify->palette().color(QPalette::Window));
}

TEST_F(Slide_Wiring_Test, The_Whole_Screen_Has_The_Picture_Alone_And_The_Shows_Keys)
{
    Open_And_Pick_With_Slides(3);
    const QString caption = window->windowTitle();
    Run(Menu::Slides, 302);
    Run(Menu::Slides, 401);
    QApplication::processEvents();
    EXPECT_TRUE(window->isFullScreen());
    EXPECT_TRUE(window->Is_In_Full_Window_View());
    EXPECT_FALSE(window->Filmstrip().isVisible());
    EXPECT_FALSE(Part<QToolButton>("Zoom_Toggle")->isVisible());
    EXPECT_EQ(window->cursor().shape(), Qt::BlankCursor);
    QWidget* picture = Part<QWidget>("Magnify_Picture");
    QTest::keyClick(picture, Qt::Key_Space);
    EXPECT_TRUE(slides->Player().Is_Paused());
    QTest::keyClick(picture, Qt::Key_Right);
    QTest::keyClick(picture, Qt::Key_Left);
    QTest::keyClick(picture, Qt::Key_Left);
    EXPECT_EQ(Label(), Q("Slide 3 of 3 (Paused)"));
    QTest::keyClick(picture, Qt::Key_A, Qt::ControlModifier);
    EXPECT_TRUE(Selected().empty()) << "the window's own shortcuts rest";
    QTest::keyClick(picture, Qt::Key_Escape);
    EXPECT_FALSE(slides->Player().Is_Running());
    EXPECT_FALSE(window->isFullScreen());
    EXPECT_FALSE(window->Is_In_Full_Window_View());
    EXPECT_TRUE(window->Filmstrip().isVisible());
    EXPECT_NE(window->cursor().shape(), Qt::BlankCursor);
    EXPECT_EQ(window->windowTitle(), caption + Q(" - 03.jpg"));
}

TEST_F(Slide_Wiring_Test, The_Pointer_Comes_Back_When_The_Mouse_Moves)
{
    Open_And_Pick_With_Slides(2);
    Run(Menu::Slides, 302);
    Run(Menu::Slides, 401);
    QApplication::processEvents();
    QTest::mouseMove(window->windowHandle(), QPoint(30, 30));
    QTest::mouseMove(window->windowHandle(), QPoint(60, 70));
    QApplication::processEvents();
    EXPECT_NE(window->cursor().shape(), Qt::BlankCursor);
}

TEST_F(Slide_Wiring_Test, The_Control_Window_Leaves_A_Resting_Screen_And_Comes_Back)
{
    Open_And_Pick_With_Slides(2);
    Run(Menu::Slides, 302);
    Run(Menu::Slides, 401);
    EXPECT_TRUE(slides->Control_Form().isVisible());
    ASSERT_TRUE(QTest::qWaitFor([&] { return !slides->Control_Form().isVisible(); }, 10000));
    QTest::keyClick(Part<QWidget>("Magnify_Picture"), Qt::Key_Right);
    EXPECT_TRUE(slides->Control_Form().isVisible());
    EXPECT_EQ(Label(), Q("Slide 2 of 2"));
    QTest::keyClick(Part<QWidget>("Magnify_Picture"), Qt::Key_Escape);
    EXPECT_FALSE(slides->Control_Form().isVisible());
    EXPECT_TRUE(window->isVisible());
}

TEST_F(Slide_Wiring_Test, A_Maximized_Window_Is_Maximized_Again)
{
    Open_And_Pick_With_Slides(2);
    window->showMaximized();
    Run(Menu::Slides, 302);
    Run(Menu::Slides, 401);
    Run(Menu::Slides, 402);
    EXPECT_FALSE(slides->Player().Is_Running());
    EXPECT_TRUE(window->isMaximized());
    EXPECT_FALSE(window->isFullScreen());
}

TEST_F(Slide_Wiring_Test, A_Close_During_A_Show_Stops_It_First)
{
    Open_And_Pick_With_Slides(2);
    QStringList slow; // the next slide is still being made when the window goes
    for (int i = 0; i < 500; ++i) slow << Q("Blur(25,100,7)");
    Parse_Script_Items(slow.join(u';'), form.State().pictures.Item(2).Script_Items);
    Run(Menu::Slides, 401);
    Slide_Timer().Fire();
    EXPECT_TRUE(form.Pictures().Next().Is_Being_Made(slides->Player().Picture_Key_Of_Slide(2)));
    EXPECT_TRUE(window->close());
    EXPECT_FALSE(slides->Player().Is_Running());
    EXPECT_FALSE(slides->Control_Form().isVisible());
    EXPECT_EQ(Bitmap_Count(), 0);
}

TEST_F(Slide_Wiring_Test, Closing_A_Show_Over_The_Whole_Screen_Takes_Two_Closes)
{
    Open_And_Pick_With_Slides(2);
    Run(Menu::Slides, 302);
    Run(Menu::Slides, 401);
    EXPECT_FALSE(window->close());
    EXPECT_FALSE(slides->Player().Is_Running());
    EXPECT_FALSE(window->isFullScreen());
    EXPECT_TRUE(window->close());
}

TEST_F(Slide_Wiring_Test, A_Close_Asks_About_A_Modified_Show_First)
{
    Make_Pictures(2);
    Open_With_Slides();
    slides->Commands().Open(Show_Of(2), true);
    EXPECT_TRUE(window->windowTitle().endsWith(Q(" - show")));
    EXPECT_FALSE(window->close());
    EXPECT_TRUE(entry.scripted.dialogs.asked.back().text.contains(Q("show.hvs modified, do you wish to abandon")));
    entry.scripted.dialogs.answers = {Message_Answer::Yes};
    EXPECT_TRUE(window->close());
}

TEST_F(Slide_Wiring_Test, A_Start_With_A_Show_Picks_And_Plays_It)
{
    Make_Pictures(3);
    Open_With_Slides(Q("  ") + Show_Of(2));
    EXPECT_EQ(form.State().pictures.Count(), 2);
    EXPECT_TRUE(slides->Player().Is_Running());
    EXPECT_EQ(Label(), Q("Slide 1 of 2"));
    EXPECT_TRUE(window->windowTitle().endsWith(Q(" - show - 01.jpg")));
}

TEST_F(Slide_Wiring_Test, A_Start_With_A_Missing_Show_Goes_On_To_The_Empty_Window)
{
    Open_With_Slides(Q("/nowhere/none.hvs"));
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(form.State().pictures.Is_Empty());
    EXPECT_FALSE(slides->Player().Is_Running());
    EXPECT_TRUE(entry.scripted.dialogs.asked.back().text.contains(Q("/nowhere/none.hvs")));
}

TEST_F(Slide_Wiring_Test, A_Start_With_Blanks_Alone_Opens_Nothing)
{
    Open_With_Slides(Q("   "));
    EXPECT_TRUE(entry.scripted.dialogs.asked.empty());
    EXPECT_TRUE(window->isVisible());
}

TEST_F(Slide_Wiring_Test, A_Start_With_A_Show_Of_Nothing_Does_Not_Play)
{
    Put_File(folder.File("t.hvs"), "TIM,5;");
    Open_With_Slides(QString::fromStdString(folder.File("t.hvs")));
    EXPECT_FALSE(slides->Player().Is_Running());
    EXPECT_EQ(entry.state.Slide_Display_Interval, 5);
}

QAction* Item_At_End(QMenu& menu, const QString& path)
{
    emit menu.aboutToShow();
    for (QAction* action : menu.actions())
        if (action->toolTip() == path) return action;
    return nullptr;
}

TEST_F(Slide_Wiring_Test, Recent_Shows_And_Folders_Stand_Below_And_Missing_Ones_Are_Greyed)
{
    Make_Pictures(2);
    const QString show = Show_Of(2);
    Open_With_Slides();
    QMenu& menu = window->Menu_Of(Menu::Slides);
    const auto own = menu.actions().size();
    emit menu.aboutToShow();
    EXPECT_EQ(menu.actions().size(), own) << "nothing yet";
    slides->Commands().Open(show, false);
    window->Commands().Pick_Paths({Path(1)}, false, true);
    QAction* item = Item_At_End(menu, show);
    ASSERT_NE(nullptr, item);
    EXPECT_EQ(menu.actions().indexOf(item), own + 1) << "behind a separator";
    EXPECT_TRUE(item->text().startsWith(Q("&1 ")));
    EXPECT_TRUE(item->isEnabled());
    item->trigger();
    EXPECT_EQ(form.State().pictures.Count(), 2);
    QAction* folder_item = Item_At_End(window->Menu_Of(Menu::File), QString::fromStdString(folder.Path()) + u'/');
    ASSERT_NE(nullptr, folder_item);
    window->Explorer().Set_Path(Q("/"));
    folder_item->trigger();
    EXPECT_EQ(QDir::cleanPath(window->Explorer().Path()), QString::fromStdString(folder.Path()));
    QFile::remove(show);
    EXPECT_FALSE(Item_At_End(menu, show)->isEnabled());
}

TEST_F(Slide_Wiring_Test, The_Next_Run_Has_The_Lists_Of_The_Last)
{
    entry.scripted.settings.Write_Value(Settings_Key, Q("Recent-Show-1"), Q("/nowhere/gone & old.hvs"));
    Open_With_Slides();
    QAction* item = Item_At_End(window->Menu_Of(Menu::Slides), Q("/nowhere/gone & old.hvs"));
    ASSERT_NE(nullptr, item);
    EXPECT_FALSE(item->isEnabled());
    EXPECT_EQ(item->text(), Q("&1 /nowhere/gone && old.hvs"));
}

TEST_F(Slide_Wiring_Test, After_A_Show_Over_The_Whole_Screen_The_Status_Line_Tells_The_Windows_Size_Again)
{
    Open_And_Pick_With_Slides(2);
    auto* size = Part<QLabel>("Design_Size_Label");
    const QString before = size->text();
    Run(Menu::Slides, 302);
    Run(Menu::Slides, 401);
    QApplication::processEvents();
    ASSERT_TRUE(window->isFullScreen());
    QTest::keyClick(window.get(), Qt::Key_Escape);
    QApplication::processEvents();
    EXPECT_FALSE(window->isFullScreen());
    EXPECT_EQ(before, size->text());
    EXPECT_EQ(Q("%1 x %2").arg(window->width()).arg(window->height()), size->text());
}

TEST_F(Slide_Wiring_Test, A_Menu_Command_Ends_A_Show_Over_The_Whole_Screen_And_Leaves_One_In_The_Window)
{
    Open_And_Pick_With_Slides(3);
    Run(Menu::Slides, 401);
    ASSERT_TRUE(Run(Menu::Select, 102));
    EXPECT_TRUE(slides->Player().Is_Running());
    Run(Menu::Slides, 402);
    Run(Menu::Slides, 302);
    Run(Menu::Slides, 401);
    ASSERT_TRUE(Run(Menu::Select, 102));
    EXPECT_FALSE(slides->Player().Is_Running());
    EXPECT_FALSE(window->isFullScreen());
}

} // namespace
