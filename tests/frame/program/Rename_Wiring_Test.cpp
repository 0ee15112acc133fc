#include "frame/program/Rename_Wiring.h"

#include "frame/program/Slide_Wiring.h"
#include "frame/ui/Icon_Set.h"
#include "rename/ui/Rename_Describe_Form.h"
#include "tests/catalogue/ui/Window_Fixture.h"

namespace {

QString Q(const char* text)
{
    return QString::fromUtf8(text);
}

/// The main window with renaming, on real events.
class Rename_Wiring_Test : public Window_Test {
protected:
    ~Rename_Wiring_Test() override
    {
        rename.reset();
        slides.reset();
    }
    void Open_And_Pick_With_Rename(int count)
    {
        Make_Pictures(count);
        Open();
        slides = std::make_unique<Slide_Wiring>(form, *window, entry.state, entry.scripted.platform, Icon);
        rename = std::make_unique<Rename_Wiring>(form, *window, entry.state, journals.Path());
        rename->Bring_Slide_Times(slides->Commands());
        rename->Windows().Show_Form = [this](Rename_Describe_Form& shown) {
            shown.show();
            QApplication::setActiveWindow(&shown);
            user(shown);
        };
        window->Commands().Run({Menu::File, 101});
        window->Commands().Run({Menu::Select, 101});
        QApplication::processEvents();
    }
    static void Press(Rename_Describe_Form& shown, const char* name)
    {
        QTest::mouseClick(shown.findChild<QPushButton*>(QLatin1String(name)), Qt::LeftButton);
    }
    QStringList Listed() const
    {
        QStringList names;
        for (int i = 1; i <= form.State().pictures.Count(); ++i) names << form.State().pictures.Item(i).File_Name;
        return names;
    }
    QStringList Pane() const
    {
        QStringList names;
        const int rows = window->Explorer().ExplorerGrid().Content().Rows();
        for (int row = 1; row <= rows; ++row) names << QFileInfo(window->Explorer().Model().Path_At(row)).fileName();
        return names;
    }

    Test_Folder journals;
    std::unique_ptr<Slide_Wiring> slides;
    std::unique_ptr<Rename_Wiring> rename;
    std::function<void(Rename_Describe_Form&)> user;
};

TEST_F(Rename_Wiring_Test, F2_Names_The_Pictures_And_The_Pane_Follows)
{
    Open_And_Pick_With_Rename(2);
    user = [](Rename_Describe_Form& shown) {
        auto* from = shown.findChild<QLineEdit*>(Q("Rename_Change_From_Text"));
        from->selectAll();
        QTest::keyClicks(from, Q("0"));
        QTest::keyClicks(shown.findChild<QLineEdit*>(Q("Rename_Change_To_Text")), Q("Trip_"));
        Press(shown, "Execute_Command");
    };
    QTest::keyClick(window.get(), Qt::Key_F2);
    QApplication::processEvents();
    EXPECT_EQ(Listed(), (QStringList{Q("Trip_1.jpg"), Q("Trip_2.jpg")}));
    EXPECT_EQ(Pane(), Listed());
    entry.scripted.dialogs.answers = {Message_Answer::Yes};
    EXPECT_TRUE(window->Commands().Run({Menu::Rename, 203}));
    EXPECT_EQ(Listed(), (QStringList{Q("01.jpg"), Q("02.jpg")}));
    EXPECT_EQ(Pane(), Listed());
}

TEST_F(Rename_Wiring_Test, Set_Slide_Times_Reaches_The_Records)
{
    Open_And_Pick_With_Rename(2);
    user = [](Rename_Describe_Form& shown) {
        EXPECT_EQ(shown.windowTitle(), "Slide Times");
        shown.Grid().EditCellStart(2, 2);
        shown.Grid().Set_EditCellText(Q("7.5"));
        Press(shown, "Execute_Command");
    };
    EXPECT_TRUE(window->Commands().Run({Menu::Slides, 103}));
    EXPECT_EQ(form.State().pictures.Item(1).Interval_In_Seconds, 0.0F);
    EXPECT_EQ(form.State().pictures.Item(2).Interval_In_Seconds, 7.5F);
}

TEST_F(Rename_Wiring_Test, Describe_Marks_The_Record_And_A_Second_Command_Waits)
{
    Open_And_Pick_With_Rename(1);
    user = [this](Rename_Describe_Form& shown) {
        EXPECT_FALSE(window->Commands().Run({Menu::Rename, 202})) << "one command at a time";
        shown.Grid().EditCellStart(2, 1);
        shown.Grid().Set_EditCellText(Q("the sea"));
        Press(shown, "Execute_Command");
    };
    EXPECT_TRUE(window->Commands().Run({Menu::Rename, 301}));
    EXPECT_EQ(form.State().pictures.Item(1).Description, "the sea");
    EXPECT_TRUE(form.State().pictures.Item(1).Description_Modified);
}

} // namespace
