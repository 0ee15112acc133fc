#include "catalogue/ui/Template_Dialogs.h"

#include "tests/support/Accessible_Names.h"

#include <QtTest/QtTest>
#include <gtest/gtest.h>

namespace {

using enum Template_Dialog::Purpose;
const std::vector<Template_Name> Three{{"Two up", "Custom-1"}, {"Four up", "Custom-2"}, {"Wide", "Custom-3"}};

QPushButton* Button(QWidget& dialog, const QString& caption)
{
    for (QPushButton* button : dialog.findChildren<QPushButton*>())
        if (button->text().remove('&') == caption) return button;
    return nullptr;
}

TEST(Template_Dialogs, Marked_Templates_Are_Struck_Out_And_Go_With_Ok)
{
    Template_Dialog dialog(Delete, Three, nullptr, nullptr);
    EXPECT_EQ("Halvine - Delete Templates", dialog.windowTitle().toStdString());
    dialog.show();
    auto* grid = dialog.findChild<bkcGrid*>();
    EXPECT_EQ("Template Name", grid->Content().Column(1).header_text.toStdString());
    EXPECT_EQ("Template ID", grid->Content().Column(2).header_text.toStdString());
    EXPECT_FALSE(Button(dialog, "OK")->isEnabled());
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, grid->visualRect(grid->model()->index(1, 0)).center());
    Button(dialog, "Mark For Deletion")->click();
    EXPECT_EQ(Cell_Struck_Out, grid->Content().CellAttribute(1, 2));
    Button(dialog, "OK")->click();
    EXPECT_EQ(QDialog::Accepted, dialog.result());
    EXPECT_EQ((std::vector<Template_Name>{Three[0], Three[2]}), dialog.Result());
}

TEST(Template_Dialogs, A_New_Name_Is_Typed_Into_The_List)
{
    Template_Dialog dialog(Rename, Three, nullptr, nullptr);
    EXPECT_EQ("Halvine - Rename Templates", dialog.windowTitle().toStdString());
    dialog.show();
    auto* grid = dialog.findChild<bkcGrid*>();
    EXPECT_FALSE(grid->EditCellStart(2, 1)) << "an id stays";
    ASSERT_TRUE(grid->EditCellStart(1, 1));
    auto* editor = grid->findChild<QLineEdit*>("bkcCell_Text");
    editor->setText("Wide"); // another's name
    Button(dialog, "OK")->click();
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_TRUE(grid->EditCellActive());
    editor->setText("Pair");
    Button(dialog, "OK")->click();
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ("Pair", dialog.Result()[0].name.toStdString());
}

TEST(Template_Dialogs, Cancel_Changes_Nothing)
{
    auto templates = Three;
    QTimer::singleShot(0, [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape); });
    EXPECT_FALSE(Custom_Template_Delete_Dialog(templates, nullptr, nullptr));
    QTimer::singleShot(0, [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape); });
    EXPECT_FALSE(Custom_Template_Rename_Dialog(templates, nullptr, nullptr));
    EXPECT_EQ(Three, templates);
}

TEST(Template_Dialogs, Every_Widget_Has_A_Name)
{
    Template_Dialog dialog(Delete, Three, nullptr, nullptr);
    EXPECT_EQ("", Widgets_Without_A_Name(dialog).join('\n').toStdString());
}

} // namespace
