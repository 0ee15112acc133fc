#include "frame/Settings_Store.h"
#include "frame/ui/Framed_Form.h"
#include "tests/catalogue/ui/Window_Fixture.h"

// Size, place, start and end of the main window.

namespace {

class Window_Frame : public Window_Test {
protected:
    QRect Box(const char* name) const
    {
        auto* part = Part<QWidget>(name);
        return {part->mapTo(window.get(), QPoint()), part->size()};
    }
    void Resize(QSize by)
    {
        window->resize(window->size() + by);
        QApplication::processEvents();
    }
};

struct Other_Window : Framed_Form {
    Other_Window(const char* window_name, QStringList& log)
        : Framed_Form(nullptr, {}, nullptr, Kind::Working_Window), name(window_name), calls(log)
    {
        setAttribute(Qt::WA_DeleteOnClose, false);
        resize(100, 100);
    }
    bool May_Close() override
    {
        calls << QStringLiteral("ask ") + name;
        return may_close;
    }
    void hideEvent(QHideEvent* event) override
    {
        calls << QStringLiteral("close ") + name;
        Framed_Form::hideEvent(event);
    }
    QString name;
    QStringList& calls;
    bool may_close = true;
};

TEST_F(Window_Frame, Parts_Follow_The_Windows_Size)
{
    Make_Pictures(1);
    Open();
    const QRect panel = Box("Halvine_bkcButtonPanel"), files = Box("File_Frame"), pictures = Box("Picture_Frame"),
                bar = Box("Thumbnail_VScroll"), status = Box("Status_Frame"), help = Box("Help_Command");
    Resize({100, 60});
    EXPECT_EQ(panel.adjusted(0, 0, 100, 0), Box("Halvine_bkcButtonPanel"));
    EXPECT_EQ(files.height() + 60, Box("File_Frame").height());
    EXPECT_EQ(pictures.height() + 60, Box("Picture_Frame").height());
    EXPECT_EQ(pictures.right() + 100, Box("Picture_Frame").right());
    EXPECT_EQ(bar.height() + 60, Box("Thumbnail_VScroll").height());
    EXPECT_EQ(status.adjusted(0, 60, 100, 60), Box("Status_Frame"));
    EXPECT_EQ(help.translated(100, 60), Box("Help_Command"));
}

TEST_F(Window_Frame, Many_Tiny_Steps_End_Where_One_Large_Step_Does)
{
    Make_Pictures(1);
    Open();
    const QList<const char*> parts{"File_Frame", "Picture_Frame", "Status_Frame", "Help_Command"};
    Resize({120, 90});
    QList<QRect> at_once;
    for (const char* part : parts) at_once << Box(part);
    Resize({-120, -90});
    for (int step = 0; step < 30; ++step) Resize({4, 3});
    for (qsizetype i = 0; i < parts.size(); ++i) EXPECT_EQ(at_once[i], Box(parts[i])) << parts[i];
}

TEST_F(Window_Frame, Refuses_To_Be_Smaller_Than_Its_Design)
{
    Make_Pictures(1);
    Open();
    window->resize(200, 100);
    EXPECT_EQ(QSize(800, 600), window->size());
}

TEST_F(Window_Frame, A_Double_Click_On_The_Size_Brings_The_Design_Size_Back)
{
    Make_Pictures(1);
    Open();
    Resize({100, 100});
    auto* size = Part<QLabel>("Design_Size_Label");
    EXPECT_EQ(QStringLiteral("%1 x %2").arg(window->width()).arg(window->height()), size->text());
    QTest::mouseDClick(size, Qt::LeftButton);
    EXPECT_EQ(QSize(800, 600), window->size());
}

TEST_F(Window_Frame, Comes_Back_Where_It_Was)
{
    Make_Pictures(1);
    entry.scripted.settings.user[Settings_Key][Main_Window_Placement] =
        "WOR:600:450,WSZ:13500:9750,SPR:0.400,SPR:0.250";
    Open();
    EXPECT_EQ(QSize(900, 650), window->size());
    EXPECT_EQ(QPoint(40, 30), window->geometry().topLeft());
    EXPECT_NEAR(0.4, Part<bkcSplit>("Picture_bkcSplit")->SplitRatio(), 1e-6);
    EXPECT_NEAR(0.25, Part<bkcSplit>("File_bkcSplit")->SplitRatio(), 1e-6);
    EXPECT_TRUE(window->close());
    EXPECT_EQ("WOR:600:450,WSZ:13500:9750,SPR:0.400,SPR:0.250",
              entry.scripted.settings.Read_Value(Settings_Key, Main_Window_Placement).toStdString());
}

struct Damaged_Place {
    const char* name;
    const char* record;
};

class Damaged_Places : public Window_Frame, public testing::WithParamInterface<Damaged_Place> {};

INSTANTIATE_TEST_SUITE_P(All, Damaged_Places,
                         testing::Values(Damaged_Place{"no_record", "\x01\x02 garbage ''"},
                                         Damaged_Place{"no_numbers", "WOR:x:y,WSZ::,SPR:z"},
                                         Damaged_Place{"far_outside", "WOR:2147483647:2147483647,WSZ:1:1"},
                                         Damaged_Place{"too_large", "WOR:1:1,WSZ:2147483647:2147483647,SPR:9,SPR:-4"},
                                         Damaged_Place{"cut_off", "WOR:600:450,WSZ:135"}),
                         [](const auto& row) { return row.param.name; });

TEST_P(Damaged_Places, Still_Open_The_Window_On_The_Screen_With_All_Its_Parts)
{
    Make_Pictures(1);
    entry.scripted.settings.user[Settings_Key][Main_Window_Placement] = GetParam().record;
    Open();
    const QRect screen(QPoint(), entry.scripted.shell.screen / 15);
    EXPECT_TRUE(window->isVisible());
    EXPECT_GE(window->width(), 800);
    EXPECT_GE(window->height(), 600);
    EXPECT_TRUE(screen.contains(window->geometry().topLeft()));
    EXPECT_LE(window->width(), screen.width());
    EXPECT_LE(window->height(), screen.height());
    EXPECT_GT(Part<QWidget>("File_Frame")->width(), 50);
    EXPECT_GT(Part<QWidget>("Picture_Frame")->width(), 50);
}

TEST_F(Window_Frame, Without_Save_Configuration_The_Place_Is_Not_Stored)
{
    Make_Pictures(1);
    Open();
    window->Commands().Run({Menu::File, 903});
    EXPECT_TRUE(window->close());
    EXPECT_TRUE(entry.scripted.settings.Read_Value(Settings_Key, Main_Window_Placement).isEmpty());
    EXPECT_FALSE(entry.scripted.settings.Read_Value(Settings_Key, Settings_Value).isEmpty());
}

/// Calls when a window is hidden.
class Hide_Watch : public QObject {
public:
    Hide_Watch(QWidget& window, std::function<void()> call) : call_(std::move(call))
    {
        window.installEventFilter(this);
    }

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Hide) call_();
        return false;
    }

private:
    std::function<void()> call_;
};

TEST_F(Window_Frame, Is_Gone_From_The_Screen_Before_Its_Pictures_Are_Let_Go)
{
    Open_And_Pick(2);
    std::vector<int> pictures_when_hidden;
    const Hide_Watch watch(*window, [&] { pictures_when_hidden.push_back(form.State().pictures.Count()); });
    EXPECT_TRUE(window->close());
    EXPECT_EQ(std::vector{2}, pictures_when_hidden);
    EXPECT_EQ(0, form.State().pictures.Count());
}

TEST_F(Window_Frame, Other_Windows_Go_With_It_The_Last_Opened_First)
{
    Make_Pictures(1);
    Open();
    QStringList calls;
    Other_Window first("first", calls), second("second", calls), third("third", calls);
    second.show();
    first.show();
    third.show();
    EXPECT_TRUE(window->close());
    EXPECT_EQ("ask third|ask first|ask second|close third|close first|close second", calls.join('|').toStdString());
}

TEST_F(Window_Frame, A_Window_That_Has_To_Stay_Keeps_All_Of_Them_Open)
{
    Make_Pictures(1);
    Open();
    QStringList calls;
    Other_Window first("first", calls), second("second", calls);
    first.show();
    second.show();
    first.may_close = false;
    EXPECT_FALSE(window->close());
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(second.isVisible());
    EXPECT_TRUE(entry.scripted.settings.user.isEmpty());
    EXPECT_TRUE(second.close());
    EXPECT_EQ("ask second|ask first|ask second|close second", calls.join('|').toStdString()) << "it asks again";
}

TEST_F(Window_Frame, A_Missing_Slide_Show_Leaves_An_Empty_Window)
{
    Make_Pictures(1);
    Open();
    QString asked;
    window->Set_Slide_Show_Opener([&](const QString& path) { asked = path; });
    Display_Main_Window(*window, "  /no/such show.hvs");
    EXPECT_EQ("/no/such show.hvs", asked.toStdString());
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(0, form.State().pictures.Count());
}

TEST_F(Window_Frame, A_Long_Name_Leaves_Room_For_The_Other_Texts_Of_The_Status_Line)
{
    Make_Pictures(1);
    const QString long_name = QString(240, 'n') + ".jpg";
    ASSERT_TRUE(QFile::rename(Path(1), QString::fromStdString(folder.Path()) + '/' + long_name));
    Open();
    window->resize(800, 600);
    window->Commands().Run({Menu::File, 101});
    Click(1);
    QApplication::processEvents();
    auto* current = Part<QLabel>("Current_Picture_Label");
    EXPECT_TRUE(current->text().contains(long_name));
    EXPECT_LT(current->width(), 600);
    EXPECT_EQ(QSize(800, 600), window->size());
    for (const char* name : {"File_Status_Label", "Picture_Status_Label", "Design_Size_Label"})
        EXPECT_GE(Part<QLabel>(name)->width(), Part<QLabel>(name)->sizeHint().width()) << name;
    QHelpEvent help(QEvent::ToolTip, {5, 5}, current->mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(current, &help);
    EXPECT_TRUE(QToolTip::text().contains(long_name));
    QToolTip::hideText();
}

struct Plain_Framed_Window : QWidget {
    explicit Plain_Framed_Window(QStringList& log) : frame(*this, nullptr, {}), calls(log) { resize(100, 100); }
    void hideEvent(QHideEvent*) override { calls << "close plain"; }
    Form_Frame frame;
    QStringList& calls;
};

TEST_F(Window_Frame, Windows_That_Have_Nothing_To_Ask_Go_Too)
{
    Make_Pictures(1);
    Open();
    QStringList calls;
    Other_Window first("first", calls);
    Plain_Framed_Window second(calls);
    first.show();
    second.show();
    EXPECT_TRUE(window->close());
    EXPECT_EQ("ask first|close plain|close first", calls.join('|').toStdString());
}

} // namespace
