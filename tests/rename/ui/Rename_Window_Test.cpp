// The rename and describe window in its modes, on real events.

#include "frame/Settings_Store.h"
#include "rename/Rename_Job.h"
#include "rename/ui/Rename_Describe_Form.h"
#include "rename/ui/Rename_Describe_Windows.h"
#include "tests/catalogue/Picture_Fixture.h"
#include "tests/support/Accessible_Names.h"

#include <QtTest/QtTest>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <numeric>

namespace {

QString Q(const char* text)
{
    return QString::fromUtf8(text);
}

class Rename_Window_Test : public Picture_Test {
protected:
    Rename_Window_Test()
    {
        Complete_Empty_Lists(program);
        windows.Show_Form = [this](Rename_Describe_Form& shown) {
            window = &shown;
            shown.show();
            QApplication::setActiveWindow(&shown);
            QApplication::processEvents();
            user();
            EXPECT_FALSE(shown.isVisible()) << "the user leaves the window";
            if (shown.isVisible()) shown.reject();
            window = nullptr;
        };
    }
    void Put_Picture(const char* name)
    {
        Picture_Item item;
        item.Picture_Key = form.State().pictures.Take_Next_Key();
        item.Path = QString::fromStdString(folder.Path()) + u'/';
        item.File_Name = Q(name);
        item.File_Type = 1;
        item.File_Date = 46095.5; // 14 March 2026
        item.Horz_Pixels = 160;
        item.Vert_Pixels = 96;
        form.State().pictures.Append(std::move(item));
    }
    std::vector<int> All() const
    {
        std::vector<int> indices(std::size_t(form.State().pictures.Count()));
        std::iota(indices.begin(), indices.end(), 1);
        return indices;
    }
    /// Opens the rename mode; `what` is what the user does. The names that came out; empty when cancelled.
    QStringList Rename(std::function<void()> what)
    {
        user = std::move(what);
        QStringList names;
        const bool accepted = windows.Rename_Dialog(Q("Halvine - Rename Selected"), All(), names);
        return accepted ? names : QStringList();
    }

    template <class Widget>
    Widget& Part(const char* name)
    {
        auto* part = window->findChild<Widget*>(QLatin1String(name));
        if (part == nullptr) throw std::runtime_error(name);
        return *part;
    }
    void Type(const char* name, const char* text)
    {
        auto& field = Part<QLineEdit>(name);
        field.setFocus();
        field.selectAll();
        QTest::keyClick(&field, Qt::Key_Delete);
        QTest::keyClicks(&field, Q(text));
    }
    QString Text(const char* name) { return Part<QLineEdit>(name).text(); }
    void Choose(const char* name, const char* text) { Part<QComboBox>(name).setCurrentText(Q(text)); }
    void Press(const char* name) { QTest::mouseClick(&Part<QPushButton>(name), Qt::LeftButton); }
    void Execute() { Press("Execute_Command"); }
    bkcGrid& Grid() { return window->Grid(); }
    QString Cell(int column, int row) { return Grid().Content().CellText(column, row); }
    QString Head(int column) { return Grid().model()->headerData(column - 1, Qt::Horizontal).toString(); }
    QStringList New_Names()
    {
        QStringList names;
        for (int row = 1; row <= Grid().Content().Rows(); ++row) names << Cell(2, row);
        return names;
    }
    void Edit(int column, int row, const char* text)
    {
        ASSERT_TRUE(Grid().EditCellStart(column, row));
        auto* editor = Grid().findChild<QLineEdit*>();
        ASSERT_NE(editor, nullptr);
        editor->selectAll();
        QTest::keyClick(editor, Qt::Key_Delete);
        QTest::keyClicks(editor, Q(text));
        QTest::keyClick(editor, Qt::Key_Return);
    }

    Program_State program;
    Rename_Describe_Windows windows{form, program};
    Rename_Describe_Form* window = nullptr;
    std::function<void()> user;
};

TEST_F(Rename_Window_Test, A_Holiday_Is_Named_While_The_User_Types)
{
    Put_Picture("IMG_0012.jpg");
    Put_Picture("IMG_0013.jpg");
    const QStringList names = Rename([&] {
        EXPECT_EQ(window->windowTitle(), "Halvine - Rename Selected");
        EXPECT_EQ(Head(1), "Current Name");
        EXPECT_EQ(Head(2), "New Name");
        EXPECT_EQ(Head(3), "OR User Name/Type");
        EXPECT_TRUE(Grid().isColumnHidden(3));
        EXPECT_EQ(Grid().Content().CellValue(4, 2).toInt(), 2) << "the picture's index";
        EXPECT_EQ(Text("Rename_Change_From_Text"), "IMG_") << "what all names begin with is proposed";
        EXPECT_FALSE(Part<QPushButton>("Execute_Command").isEnabled());
        Type("Rename_Change_From_Text", "IMG");
        Type("Rename_Change_To_Text", "T");
        EXPECT_EQ(New_Names(), (QStringList{Q("T_0012.jpg"), Q("T_0013.jpg")})) << "at the first key";
        Type("Rename_Change_To_Text", "Trip");
        EXPECT_EQ(Text("Start_Numbering_Text"), "0013");
        QTest::mouseClick(&Part<QCheckBox>("Reserialize_Check"), Qt::LeftButton, {}, QPoint(8, 8));
        Type("Start_Numbering_Text", "001");
        EXPECT_EQ(New_Names(), (QStringList{Q("Trip_001.jpg"), Q("Trip_002.jpg")}));
        EXPECT_EQ(Part<QLabel>("Status_Label").text(), "2 files, 2 new names");
        Execute();
    });
    EXPECT_EQ(names, (QStringList{Q("Trip_001.jpg"), Q("Trip_002.jpg")}));
}

TEST_F(Rename_Window_Test, Start_Numbering_Is_Disabled_Without_Digits)
{
    Put_Picture("beach.jpg");
    Rename([&] {
        EXPECT_FALSE(Part<QLineEdit>("Start_Numbering_Text").isEnabled());
        EXPECT_EQ(Text("Start_Numbering_Text"), "");
        EXPECT_FALSE(Part<QCheckBox>("Reserialize_Check").isEnabled());
        Press("Cancel_Command");
    });
}

TEST_F(Rename_Window_Test, A_Pattern_Takes_The_Place_Of_The_Prefix)
{
    program.Rename_Patterns.Append({Q("Before the dash"), Q("*-")});
    Put_Picture("a-b-c.jpg");
    const QStringList names = Rename([&] {
        EXPECT_EQ(Part<QComboBox>("Rename_Pattern_Combo").itemText(0), "(none)");
        Type("Rename_Change_To_Text", "x-");
        Choose("Rename_Pattern_Combo", "Before the dash");
        EXPECT_EQ(Text("Rename_Change_From_Text"), "*-");
        Execute();
    });
    EXPECT_EQ(names, QStringList{Q("x-b-c.jpg")});
}

TEST_F(Rename_Window_Test, A_Formula_Gives_The_Names)
{
    Put_Picture("IMG_0012.jpg");
    const QStringList names = Rename([&] {
        Type("Rename_Change_To_Text", "Trip");
        Choose("Rename_Formula_Combo", "Subject-Date-Serial");
        Execute();
    });
    EXPECT_EQ(names, QStringList{Q("Trip-20260314-0012.jpg")});
}

TEST_F(Rename_Window_Test, A_Faulty_Formula_Shows_Its_Frame_And_The_Names_Stay)
{
    program.Rename_Formulas.Append({Q("Broken"), Q("ChangeTo & FileVPix")});
    Put_Picture("IMG_0012.jpg");
    Rename([&] {
        Type("Rename_Change_To_Text", "Trip");
        const QStringList before = New_Names();
        EXPECT_FALSE(Part<QFrame>("Formula_Error_Frame").isVisible());
        Choose("Rename_Formula_Combo", "Broken");
        EXPECT_TRUE(Part<QFrame>("Formula_Error_Frame").isVisible());
        EXPECT_TRUE(Part<QLabel>("Formula_Error_Label").text().contains(Q(" (Formula Broken, Character Position ")))
            << Part<QLabel>("Formula_Error_Label").text().toStdString();
        auto& text = Part<QLineEdit>("Formula_Error_Text");
        EXPECT_EQ(text.text(), "ChangeTo & FileVPix");
        EXPECT_TRUE(text.hasSelectedText());
        EXPECT_EQ(text.selectionStart() + text.selectedText().size(), text.text().size()) << "to the end";
        EXPECT_EQ(New_Names(), before);
        EXPECT_FALSE(Part<QPushButton>("Execute_Command").isEnabled());
        Choose("Rename_Formula_Combo", "(none)");
        EXPECT_FALSE(Part<QFrame>("Formula_Error_Frame").isVisible());
        EXPECT_TRUE(Part<QPushButton>("Execute_Command").isEnabled());
        Press("Cancel_Command");
    });
}

TEST_F(Rename_Window_Test, A_Formula_From_A_File_Reads_No_More_Than_It_Was_Allowed)
{
    program.Rename_Formulas.Append({Q("Home"), Q("ChangeTo & Environ(\"HOME\")")});
    Put_Picture("IMG_0012.jpg");
    Rename([&] {
        Choose("Rename_Formula_Combo", "Home");
        EXPECT_TRUE(Part<QLabel>("Formula_Error_Label").text().startsWith(Q("Permission denied")));
        Press("Cancel_Command");
    });
    Formula::Formula_Consent(platform.dialogs, platform.settings)
        .Remember_Typed(Q("Home"), Q("ChangeTo & Environ(\"HOME\")"));
    Rename([&] {
        Choose("Rename_Formula_Combo", "Home");
        EXPECT_FALSE(Part<QFrame>("Formula_Error_Frame").isVisible());
        Press("Cancel_Command");
    });
}

TEST_F(Rename_Window_Test, The_Users_Own_Name_Wins)
{
    Put_Picture("IMG_0012.jpg");
    Put_Picture("IMG_0013.jpg");
    const QStringList names = Rename([&] {
        Type("Rename_Change_To_Text", "Trip_");
        Edit(3, 2, "Sunset");
        EXPECT_EQ(Cell(3, 2), "Sunset.jpg") << "the type is that of the file";
        Execute();
    });
    EXPECT_EQ(names, (QStringList{Q("Trip_0012.jpg"), Q("Sunset.jpg")}));
}

TEST_F(Rename_Window_Test, A_Name_That_Is_Being_Typed_Counts_When_Rename_Is_Pressed)
{
    Put_Picture("IMG_0012.jpg");
    const QStringList names = Rename([&] {
        Type("Rename_Change_To_Text", "Trip_");
        ASSERT_TRUE(Grid().EditCellStart(3, 1));
        QTest::keyClicks(Grid().findChild<QLineEdit*>(), Q("Sunset"));
        Execute();
    });
    EXPECT_EQ(names, QStringList{Q("Sunset.jpg")});
}

TEST_F(Rename_Window_Test, Collisions_Are_Told_And_The_User_Decides)
{
    Put_Picture("IMG_0012.jpg");
    Put_Picture("IMG_0013.jpg");
    platform.dialogs.answers = {Message_Answer::Cancel, Message_Answer::Ok};
    const QStringList names = Rename([&] {
        Edit(3, 1, "x.jpg");
        Edit(3, 2, "X.jpg");
        EXPECT_EQ(Part<QLabel>("Status_Label").text(), "2 files, 2 new names, 1 name stands twice");
        Execute();
        EXPECT_TRUE(window->isVisible()) << "for another try";
        Execute();
    });
    ASSERT_EQ(platform.dialogs.asked.size(), 2U);
    EXPECT_EQ(platform.dialogs.asked[0].title, "File name collisions");
    EXPECT_EQ(platform.dialogs.asked[0].text, Duplicates_Message(1));
    EXPECT_EQ(platform.dialogs.asked[0].standard, Message_Answer::Cancel);
    EXPECT_EQ(names, (QStringList{Q("x.jpg"), Q("X.jpg")}));
}

TEST_F(Rename_Window_Test, Marked_Names_Are_Legible_In_Light_And_Dark)
{
    Put_Picture("IMG_0012.jpg");
    Put_Picture("IMG_0013.jpg");
    const auto is_black_on_bright = [&](int row) {
        const QModelIndex cell = Grid().model()->index(row - 1, 2);
        const QVariant text = cell.data(Qt::ForegroundRole); // none is the palette's
        const auto ground = cell.data(Qt::BackgroundRole).value<QBrush>();
        return text.isValid() && text.value<QBrush>().color() == Qt::black && ground.color().lightness() > 200;
    };
    Rename([&] {
        Edit(3, 1, "x.jpg");
        Edit(3, 2, "X.jpg");
        EXPECT_TRUE(is_black_on_bright(1));
        EXPECT_TRUE(is_black_on_bright(2));
        Edit(3, 2, "y.jpg");
        for (const int role : {Qt::ForegroundRole, Qt::BackgroundRole})
            EXPECT_FALSE(Grid().model()->index(1, 2).data(role).isValid()) << "the palette's own again";
        Press("Cancel_Command");
    });
}

TEST_F(Rename_Window_Test, A_Fault_Is_Legible_In_Light_And_Dark)
{
    program.Rename_Formulas.Append({Q("Broken"), Q("ChangeTo & FileVPix")});
    Put_Picture("IMG_0012.jpg");
    const QPalette before = QApplication::palette();
    for (const QColor ground : {QColor(Qt::white), QColor(40, 40, 40)}) {
        QApplication::setPalette(QPalette(ground, ground));
        Rename([&] {
            Type("Rename_Change_To_Text", "Trip");
            Choose("Rename_Formula_Combo", "Broken");
            const auto& label = Part<QLabel>("Formula_Error_Label");
            const QColor text = label.palette().color(QPalette::WindowText);
            EXPECT_GT(text.red(), text.blue());
            EXPECT_GT(std::abs(text.lightness() - label.palette().color(QPalette::Window).lightness()), 80);
            Press("Cancel_Command");
        });
    }
    QApplication::setPalette(before);
}

TEST_F(Rename_Window_Test, Every_Part_Has_A_Name_For_Assistive_Tools)
{
    Put_Picture("IMG_0012.jpg");
    const auto look = [&] {
        EXPECT_EQ(Widgets_Without_A_Name(*window), QStringList());
        window->reject();
    };
    Rename(look);
    windows.Rename_Pattern_Dialog();
    windows.Rename_Formula_Dialog();
    windows.File_Data_Formula_Dialog();
    QStringList descriptions{QString()};
    windows.Describe_Dialog(All(), descriptions);
}

TEST_F(Rename_Window_Test, Escape_Leaves_All_Names)
{
    Put_Picture("IMG_0012.jpg");
    EXPECT_TRUE(Rename([&] {
                    Type("Rename_Change_To_Text", "Trip");
                    QTest::keyClick(window, Qt::Key_Escape);
                }).isEmpty());
}

TEST_F(Rename_Window_Test, Enter_In_A_Field_Renames_Nothing)
{
    Put_Picture("IMG_0012.jpg");
    EXPECT_TRUE(Rename([&] {
                    Type("Rename_Change_To_Text", "Trip");
                    QTest::keyClick(&Part<QLineEdit>("Rename_Change_To_Text"), Qt::Key_Return);
                    EXPECT_TRUE(window->isVisible());
                    Press("Cancel_Command");
                }).isEmpty());
}

TEST_F(Rename_Window_Test, The_Pane_Shows_The_Picture_Of_The_Row)
{
    Pick_New(Q("a.jpg"));
    Pick_New(Q("b.jpg"));
    Rename([&] {
        auto* pane = window->findChild<Picture_Pane*>();
        ASSERT_NE(pane, nullptr);
        QApplication::processEvents();
        EXPECT_TRUE(pane->Shows_A_Picture());
        EXPECT_EQ(pane->accessibleDescription(), "a.jpg");
        Grid().setFocus();
        QTest::keyClick(&Grid(), Qt::Key_Down);
        QApplication::processEvents();
        EXPECT_EQ(pane->accessibleDescription(), "b.jpg");
        Press("Cancel_Command");
    });
}

TEST_F(Rename_Window_Test, The_Place_Is_Remembered)
{
    Put_Picture("IMG_0012.jpg");
    Rename([&] { Press("Cancel_Command"); });
    EXPECT_TRUE(Read_Stored_Value(platform.settings, Q("Halvine-Rename-Describe")).startsWith(Q("WOR:")));
}

TEST_F(Rename_Window_Test, A_Pattern_Is_Defined_And_Used_At_Once)
{
    Put_Picture("a-b-c.jpg");
    const QStringList names = Rename([&] {
        Rename_Describe_Form* rename = window;
        user = [&] {
            EXPECT_EQ(Head(1), "Pattern Name");
            EXPECT_EQ(Head(2), "'Change Part Of File Name' Pattern");
            Edit(1, 2, "Dash");
            Edit(2, 2, "*-");
            Execute();
        };
        Press("Define_Pattern_Command");
        window = rename;
        Choose("Rename_Pattern_Combo", "Dash");
        Type("Rename_Change_To_Text", "x-");
        Execute();
    });
    EXPECT_EQ(names, QStringList{Q("x-b-c.jpg")});
    ASSERT_EQ(program.Rename_Patterns.Count(), 1);
    EXPECT_EQ(program.Rename_Patterns[1], (Name_Value_Pair{Q("Dash"), Q("*-")}));
    EXPECT_TRUE(Settings_String_Of(program, false).contains(Q("RNP:\"'Dash','*-'\""))) << "as it is stored at the end";
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
