// The modes that edit the lists of patterns and formulas.

#include "tests/rename/ui/Rename_Window_Fixture.h"

namespace {

TEST_F(Rename_Window_Test, Each_List_Has_Its_Texts)
{
    struct List_Texts {
        std::function<void()> open;
        const char *text, *name_column, *value_column;
    };
    const List_Texts lists[] = {
        {[&] { windows.Rename_Pattern_Dialog(); }, "Enter Rename Pattern Name And Pattern Using Wildcards * ? # [ ]",
         "Pattern Name", "'Change Part Of File Name' Pattern"},
        {[&] { windows.Rename_Formula_Dialog(); }, "Enter Rename Formula Using VBA Expression Syntax", "Formula Name",
         "'Change This Part To' Formula"},
        {[&] { windows.File_Data_Formula_Dialog(); }, "Enter File Data Formula Using VBA Expression Syntax",
         "Formula Name", "'Change This Part To' Formula"},
    };
    for (const List_Texts& list : lists) {
        user = [&] {
            QStringList texts;
            for (const QLabel* label : window->findChildren<QLabel*>()) texts << label->text();
            EXPECT_TRUE(texts.contains(Q(list.text))) << texts.join(u'\n').toStdString();
            EXPECT_EQ(Head(1), Q(list.name_column));
            EXPECT_EQ(Head(2), Q(list.value_column));
            EXPECT_EQ(Grid().Content().Columns(), 2);
            EXPECT_EQ(Part<QPushButton>("Execute_Command").text(), "Done");
            EXPECT_EQ(Cell(1, 1), "(none)");
            EXPECT_EQ(window->findChildren<QPushButton*>().size(), 1) << "Done alone";
            window->reject();
        };
        list.open();
    }
}

TEST_F(Rename_Window_Test, None_Cannot_Be_Edited)
{
    user = [&] {
        EXPECT_EQ(Cell(1, 1), "(none)");
        Grid().Content().Set_Active(1, 1);
        EXPECT_FALSE(Grid().EditCellStart(1, 1));
        Grid().Content().Set_Active(1, 2);
        EXPECT_TRUE(Grid().EditCellStart(1, 2));
        Execute();
    };
    windows.Rename_Pattern_Dialog();
    EXPECT_EQ(program.Rename_Patterns.Count(), 0) << "the empty row is no entry";
}

TEST_F(Rename_Window_Test, A_New_Entry_Is_Typed_With_Tab_Between_Its_Cells)
{
    user = [&] {
        QTest::keyClick(&Grid(), 'D');
        ASSERT_TRUE(Grid().EditCellActive());
        QTest::keyClicks(QApplication::focusWidget(), Q("ash"));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(Grid().Content().ActiveColumn(), 2);
        EXPECT_EQ(Grid().Content().ActiveRow(), 2);
        QTest::keyClicks(QApplication::focusWidget(), Q("*-"));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        EXPECT_EQ(Grid().Content().Rows(), 3) << "a row for the next one";
        Execute();
    };
    windows.Rename_Pattern_Dialog();
    ASSERT_EQ(program.Rename_Patterns.Count(), 1);
    EXPECT_EQ(program.Rename_Patterns[1], (Name_Value_Pair{Q("Dash"), Q("*-")}));
    user = [&] {
        Edit(1, 2, "");
        Edit(2, 2, "");
        Execute();
    };
    windows.Rename_Pattern_Dialog();
    EXPECT_EQ(program.Rename_Patterns.Count(), 0) << "an entry goes with its texts";
}

TEST_F(Rename_Window_Test, Closing_A_List_Without_Done_Keeps_It)
{
    user = [&] {
        Edit(1, 2, "x");
        window->close();
    };
    windows.Rename_Pattern_Dialog();
    EXPECT_EQ(program.Rename_Patterns.Count(), 0);
}

TEST_F(Rename_Window_Test, A_Formula_List_Shows_The_Fault_Of_Its_Row_And_What_Is_Typed_May_Read_More)
{
    user = [&] {
        EXPECT_EQ(Head(1), "Formula Name");
        EXPECT_EQ(Head(2), "'Change This Part To' Formula");
        EXPECT_EQ(Cell(1, 2), "Subject-Date-Serial");
        Edit(1, 4, "Home");
        Edit(2, 4, "FileName & FileVPix");
        EXPECT_TRUE(Part<QFrame>("Formula_Error_Frame").isVisible());
        Edit(2, 4, "Environ(\"HOME\")");
        Grid().Content().Set_Active(1, 4);
        EXPECT_FALSE(Part<QFrame>("Formula_Error_Frame").isVisible());
        Execute();
    };
    windows.Rename_Formula_Dialog();
    ASSERT_EQ(program.Rename_Formulas.Count(), 3);
    EXPECT_EQ(windows.Chosen(program.Rename_Formulas[3]).allowed_access,
              Formula::File_Access | unsigned(Formula::Access_Class::Environment));
    EXPECT_EQ(windows.Chosen(program.Rename_Formulas[1]).allowed_access, Formula::File_Access);
}

TEST_F(Rename_Window_Test, A_Row_From_A_File_Reads_No_More_Because_The_User_Looks_At_It)
{
    const auto denied = [this] {
        return Part<QLabel>("Formula_Error_Label").text().startsWith(Q("Permission denied")) &&
               Part<QFrame>("Formula_Error_Frame").isVisible();
    };
    for (Name_Value_List* list : {&program.Rename_Formulas, &program.File_Data_Formulas}) {
        const bool renames = list == &program.Rename_Formulas;
        const Name_Value_Pair from_file{Q(renames ? "Home" : "Place"), Q("Environ(\"HOME\")")};
        list->Append(from_file);
        const int row = list->Count() + 1;
        const auto open = [&] {
            if (renames)
                windows.Rename_Formula_Dialog();
            else
                windows.File_Data_Formula_Dialog();
        };
        user = [&] {
            Grid().Content().Set_Active(2, row);
            EXPECT_TRUE(denied()) << "as it came";
            Edit(2, row, "Environ(\"USER\")");
            Grid().Content().Set_Active(2, row);
            EXPECT_FALSE(denied()) << "now it is the user's";
            Edit(2, row, "Environ(\"HOME\")");
            Grid().Content().Set_Active(2, row);
            EXPECT_TRUE(denied()) << "the file's again";
            window->close();
        };
        open();
        Formula::Formula_Consent(platform.dialogs, platform.settings).Remember_Typed(from_file.Name, from_file.Value);
        user = [&] {
            Grid().Content().Set_Active(2, row);
            EXPECT_FALSE(Part<QFrame>("Formula_Error_Frame").isVisible()) << "allowed before";
            window->close();
        };
        open();
    }
}

TEST_F(Rename_Window_Test, File_Data_Formulas_Have_A_List_Of_Their_Own)
{
    const int count = program.File_Data_Formulas.Count();
    user = [&] {
        EXPECT_EQ(Head(1), "Formula Name");
        EXPECT_EQ(Head(2), "'Change This Part To' Formula");
        Edit(1, count + 2, "Where");
        Edit(2, count + 2, "FilePath & FileDescr");
        Execute();
    };
    windows.File_Data_Formula_Dialog();
    EXPECT_EQ(program.File_Data_Formulas.Count(), count + 1);
    EXPECT_EQ(program.File_Data_Formulas[count + 1].Value, "FilePath & FileDescr");
}

} // namespace
