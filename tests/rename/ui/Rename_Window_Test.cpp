// The mode that names a batch of pictures.

#include "tests/rename/ui/Rename_Window_Fixture.h"

namespace {

TEST_F(Rename_Window_Test, A_Holiday_Is_Named_While_The_User_Types)
{
    Put_Picture("IMG_0012.jpg");
    Put_Picture("IMG_0013.jpg");
    const QStringList names = Rename([&] {
        EXPECT_EQ(window->windowTitle(), "Halvine - Rename Selected");
        EXPECT_EQ(Part<QPushButton>("Execute_Command").text(), "&Rename Selected");
        EXPECT_EQ(Head(1), "Current Name");
        EXPECT_EQ(Head(2), "New Name");
        EXPECT_EQ(Head(3), "OR User Name/Type");
        EXPECT_TRUE(Grid().isColumnHidden(3));
        EXPECT_EQ(Grid().Content().CellValue(4, 2).toInt(), 2) << "the picture's index";
        EXPECT_EQ(Text("Rename_Change_From_Text"), "IMG_") << "what all names begin with is proposed";
        EXPECT_FALSE(Part<QPushButton>("Execute_Command").isEnabled());
        EXPECT_EQ(Part<QLabel>("Status_Label").text(), "Type into Change To what takes its place");
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
        EXPECT_TRUE(Part<QLabel>("Formula_Error_Label").text().endsWith(Q(" (Formula Broken, Character Position 12)")))
            << Part<QLabel>("Formula_Error_Label").text().toStdString();
        auto& text = Part<QLineEdit>("Formula_Error_Text");
        EXPECT_EQ(text.text(), "ChangeTo & FileVPix");
        EXPECT_EQ(text.selectedText(), "FileVPix") << "from the position to the end";
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

TEST_F(Rename_Window_Test, A_Folder_In_The_Users_Own_Name_Is_Left_Out)
{
    Put_Picture("IMG_0012.jpg");
    const QStringList names = Rename([&] {
        Edit(3, 1, "../2026/Sunset");
        EXPECT_EQ(Cell(3, 1), "Sunset.jpg");
        Execute();
    });
    EXPECT_EQ(names, QStringList{Q("Sunset.jpg")});
}

TEST_F(Rename_Window_Test, The_Users_Own_Name_Gets_The_Type_Of_All_New_Names)
{
    Put_Picture("IMG_0012.jpeg");
    const QStringList names = Rename([&] {
        Type("File_Type_Text", "jpg");
        Edit(3, 1, "Sunset");
        Execute();
    });
    EXPECT_EQ(names, QStringList{Q("Sunset.jpg")});
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

TEST_F(Rename_Window_Test, A_New_Name_Is_Marked_Unless_The_Users_Own_Takes_Its_Place)
{
    Put_Picture("IMG_0012.jpg");
    const auto is_marked = [&] {
        const QImage cell = Grid().viewport()->grab(Grid().visualRect(Grid().model()->index(0, 1))).toImage();
        for (int y = 0; y < cell.height(); ++y)
            for (int x = 0; x < cell.width(); ++x)
                if (qBlue(cell.pixel(x, y)) > qRed(cell.pixel(x, y)) + 100) return true; // the colour of links
        return false;
    };
    Rename([&] {
        EXPECT_FALSE(is_marked());
        Type("Rename_Change_To_Text", "Trip_");
        EXPECT_TRUE(is_marked());
        Edit(3, 1, "Sunset");
        EXPECT_FALSE(is_marked());
        Edit(3, 1, "");
        EXPECT_TRUE(is_marked());
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

TEST_F(Rename_Window_Test, Ctrl_Enter_Renames_When_There_Is_A_New_Name)
{
    Put_Picture("IMG_0012.jpg");
    const QStringList names = Rename([&] {
        auto& to = Part<QLineEdit>("Rename_Change_To_Text");
        QTest::keyClick(&to, Qt::Key_Return, Qt::ControlModifier);
        EXPECT_TRUE(window->isVisible()) << "nothing to rename";
        Type("Rename_Change_To_Text", "Trip_");
        QTest::keyClick(&to, Qt::Key_Return, Qt::ControlModifier);
    });
    EXPECT_EQ(names, QStringList{Q("Trip_0012.jpg")});
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

} // namespace
