// The modes for descriptions and slide times.

#include "tests/rename/ui/Rename_Window_Fixture.h"

namespace {

TEST_F(Rename_Window_Test, Descriptions_Are_Written_Back_At_Describe)
{
    Put_Picture("a.jpg");
    Put_Picture("b.jpg");
    QStringList descriptions{Q("the sea"), QString()};
    user = [&] {
        EXPECT_EQ(window->windowTitle(), "Describe");
        EXPECT_EQ(Part<QPushButton>("Execute_Command").text(), "Describe");
        EXPECT_EQ(Head(1), "Name");
        EXPECT_EQ(Head(2), "Description");
        EXPECT_EQ(Cell(1, 2), "b.jpg");
        EXPECT_EQ(Cell(2, 1), "the sea");
        EXPECT_FALSE(Grid().EditCellStart(1, 1)) << "names are not edited here";
        Edit(2, 2, "a hill");
        Execute();
    };
    EXPECT_TRUE(windows.Describe_Dialog(All(), descriptions));
    EXPECT_EQ(descriptions, (QStringList{Q("the sea"), Q("a hill")}));
    user = [&] {
        Edit(2, 1, "x");
        Press("Cancel_Command");
    };
    EXPECT_FALSE(windows.Describe_Dialog(All(), descriptions));
    EXPECT_EQ(descriptions[0], "the sea") << "a cancel writes nothing";
}

TEST_F(Rename_Window_Test, Descriptions_Are_Typed_One_After_The_Other)
{
    for (const char* name : {"a.jpg", "b.jpg", "c.jpg"}) Put_Picture(name);
    QStringList descriptions{QString(), QString(), QString()};
    user = [&] {
        for (const char* text : {"the sea", "a hill", "a boat"}) {
            Type_At_Focus(text);
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        }
        EXPECT_EQ(Grid().Content().ActiveRow(), 3) << "the last row";
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(QApplication::focusWidget()->objectName(), "Execute_Command") << "out of the rows";
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    };
    EXPECT_TRUE(windows.Describe_Dialog(All(), descriptions));
    EXPECT_EQ(descriptions, (QStringList{Q("the sea"), Q("a hill"), Q("a boat")}));
}

TEST_F(Rename_Window_Test, A_Time_That_Is_None_Is_Told_At_Enter_And_Stays_Open)
{
    for (const char* name : {"a.jpg", "b.jpg"}) Put_Picture(name);
    std::vector<float> seconds{0, 0};
    user = [&] {
        Type_At_Focus("soon");
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        EXPECT_EQ(Last_Message(), "\"soon\" is no time in seconds. A blank cell is the default time.");
        EXPECT_TRUE(Grid().EditCellActive());
        EXPECT_EQ(Grid().Content().ActiveRow(), 1);
        Press("Execute_Command");
        EXPECT_TRUE(window->isVisible()) << "nor does the button take it";
        Grid().EditCellCancel();
        Press("Cancel_Command");
    };
    EXPECT_FALSE(windows.Slide_Time_Dialog(All(), seconds, 2.0F));
}

TEST_F(Rename_Window_Test, Ctrl_Enter_Takes_The_Description_That_Is_Being_Typed)
{
    Put_Picture("a.jpg");
    QStringList descriptions{QString()};
    user = [&] {
        ASSERT_TRUE(Grid().EditCellStart(2, 1));
        auto* editor = Grid().findChild<QLineEdit*>();
        QTest::keyClicks(editor, Q("the sea"));
        QTest::keyClick(editor, Qt::Key_Return, Qt::ControlModifier);
    };
    EXPECT_TRUE(windows.Describe_Dialog(All(), descriptions));
    EXPECT_EQ(descriptions, QStringList{Q("the sea")});
}

TEST_F(Rename_Window_Test, A_Description_That_No_File_Takes_Is_Refused)
{
    Put_Picture("a.jpg");
    QStringList descriptions{Q("the sea")};
    user = [&] {
        ASSERT_TRUE(Grid().EditCellStart(2, 1));
        Grid().Set_EditCellText(QString(1025, u'x'));
        EXPECT_FALSE(Grid().EditCellUpdate());
        EXPECT_EQ(Last_Message(), "The description has 1025 bytes; a file takes 1024.");
        Grid().EditCellCancel();
        Execute();
    };
    EXPECT_TRUE(windows.Describe_Dialog(All(), descriptions));
    EXPECT_EQ(descriptions, QStringList{Q("the sea")});
}

TEST_F(Rename_Window_Test, Slide_Times_Are_Seconds_And_A_Blank_Is_The_Default)
{
    Put_Picture("a.jpg");
    Put_Picture("b.jpg");
    std::vector<float> seconds{0, 2.5F};
    user = [&] {
        EXPECT_EQ(window->windowTitle(), "Slide Times");
        EXPECT_EQ(Part<QPushButton>("Execute_Command").text(), "Set Times");
        EXPECT_EQ(Head(2), "Slide Time(sec)");
        EXPECT_EQ(Cell(2, 1), "");
        EXPECT_EQ(Cell(2, 2), "2.5");
        Edit(2, 1, "4");
        ASSERT_TRUE(Grid().EditCellStart(2, 2));
        Grid().Set_EditCellText(Q("soon"));
        EXPECT_FALSE(Grid().EditCellUpdate());
        Grid().Set_EditCellText(QString());
        EXPECT_TRUE(Grid().EditCellExit());
        Execute();
    };
    EXPECT_TRUE(windows.Slide_Time_Dialog(All(), seconds, 2.0F));
    EXPECT_EQ(seconds, (std::vector<float>{4, 0}));
}

} // namespace
