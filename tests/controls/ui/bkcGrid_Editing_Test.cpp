#include "tests/controls/ui/Grid_Window.h"

namespace {

TEST_F(Grid_Window, An_Edit_Is_Stored_And_Told)
{
    Allow_Edits();
    const QSignalSpy changes(&grid, &bkcGrid::CellChange);
    QTest::mouseDClick(grid.viewport(), Qt::LeftButton, Qt::NoModifier, Middle(2, 1));
    ASSERT_TRUE(grid.EditCellActive());
    QTest::keyClicks(Editor(), "new");
    EXPECT_TRUE(grid.EditCellChanged());
    QTest::keyClick(Editor(), Qt::Key_Return);
    EXPECT_FALSE(grid.EditCellActive());
    EXPECT_EQ(QVariant("new"), grid.Content().CellValue(2, 1));
    EXPECT_EQ(1, changes.size());
}

TEST_F(Grid_Window, A_Refused_Edit_Keeps_The_Editor_And_The_Value)
{
    Allow_Edits();
    grid.Content().Change_Column(1, [](auto& column) { column.data_type = 3; });
    ASSERT_TRUE(grid.EditCellStart(1, 1));
    QTest::keyClicks(Editor(), "abc");
    EXPECT_FALSE(grid.EditCellExit());
    EXPECT_TRUE(grid.EditCellActive());
    EXPECT_EQ(QVariant(3), grid.Content().CellValue(1, 1));
    Press(1, 3);
    EXPECT_TRUE(grid.EditCellActive()) << "a click elsewhere does not leave a refused edit";
    QTest::keyClick(Editor(), Qt::Key_Escape);
    EXPECT_FALSE(grid.EditCellActive());
    EXPECT_EQ(QVariant(3), grid.Content().CellValue(1, 1));
}

TEST_F(Grid_Window, A_Host_That_Leaves_The_Editor_During_Its_Update_Is_Not_Served_Twice)
{
    Allow_Edits();
    int asked = 0;
    QObject::connect(&grid, &bkcGrid::BeforeCellChange, &grid, [&](int, int, const QString&, bool& Cancel) {
        ++asked;
        EXPECT_FALSE(grid.EditCellExit());
        Cancel = true;
    });
    grid.EditCellStart(2, 1);
    grid.Set_EditCellText("other");
    EXPECT_FALSE(grid.EditCellExit());
    EXPECT_EQ(1, asked);
    EXPECT_TRUE(grid.EditCellActive());
    grid.EditCellCancel();
}

TEST_F(Grid_Window, An_Unchanged_Text_Simply_Closes)
{
    Allow_Edits();
    const QSignalSpy changes(&grid, &bkcGrid::CellChange);
    grid.EditCellStart(2, 1);
    EXPECT_TRUE(grid.EditCellExit());
    EXPECT_EQ(0, changes.size());
}

TEST_F(Grid_Window, The_Selected_Text_Of_The_Active_Cell_Is_That_Of_The_Editor_While_It_Is_Open)
{
    auto& content = grid.Content();
    Allow_Edits();
    content.Set_CellValue(2, 1, "summer");
    content.Set_Active(2, 1);
    grid.Set_ActiveSelection(0, 3);
    EXPECT_EQ("sum", grid.ActiveSelText().toStdString());
    ASSERT_TRUE(grid.EditCellStart(2, 1));
    EXPECT_EQ("sum", grid.EditCellSelText().toStdString()) << "the editor opens with it";
    EXPECT_TRUE(grid.Set_ActiveSelText("ham"));
    EXPECT_EQ("hammer", grid.EditCellText().toStdString());
    grid.Set_ActiveSelection(3, 3);
    EXPECT_EQ("mer", grid.ActiveSelText().toStdString());
    EXPECT_TRUE(grid.EditCellExit());
    EXPECT_EQ("mer", grid.ActiveSelText().toStdString()) << "and leaves it behind";
    EXPECT_EQ("hammer", content.ActiveText().toStdString());
}

TEST_F(Grid_Window, The_Choices_Of_A_List_Open_With_Down)
{
    auto& content = grid.Content();
    Allow_Edits();
    content.Change_Column(2, [](auto& column) {
        column.control = Grid_Column_Control::List;
        column.data = QStringList{"c", "d"};
    });
    ASSERT_TRUE(grid.EditCellStart(2, 1));
    QTest::keyClick(Editor(), Qt::Key_Down);
    auto* popup = Editor()->completer()->popup();
    EXPECT_TRUE(popup->isVisible());
    EXPECT_EQ(2, popup->model()->rowCount());
    popup->hide();
    grid.EditCellCancel();
    content.Change_Column(2, [](auto& column) { column.control = Grid_Column_Control::Text; });
    ASSERT_TRUE(grid.EditCellStart(2, 1));
    EXPECT_EQ(nullptr, Editor()->completer());
}

TEST_F(Grid_Window, A_Check_Is_Turned_Over_By_Click_And_By_Space)
{
    auto& content = grid.Content();
    Allow_Edits();
    content.Change_Column(2, [](auto& column) {
        column.control = Grid_Column_Control::Check;
        column.data_type = int(Grid_Data_Type::Boolean);
    });
    content.Set_CellValue(2, 1, false);
    const QSignalSpy changes(&grid, &bkcGrid::CellChange);
    Press(2, 1);
    EXPECT_TRUE(content.CellValue(2, 1).toBool());
    QTest::keyClick(&grid, Qt::Key_Space);
    EXPECT_FALSE(content.CellValue(2, 1).toBool());
    EXPECT_EQ(2, changes.size());
}

TEST_F(Grid_Window, An_Update_Stores_Without_Leaving)
{
    Allow_Edits();
    ASSERT_TRUE(grid.EditCellStart(2, 1));
    grid.Set_EditCellText("new");
    EXPECT_TRUE(grid.EditCellUpdate());
    EXPECT_TRUE(grid.EditCellActive());
    EXPECT_FALSE(grid.EditCellChanged());
    EXPECT_EQ(QVariant("new"), grid.Content().CellValue(2, 1));
    EXPECT_EQ(QVariant("c"), grid.Content().CellPreviousValue(2, 1));
    EXPECT_TRUE(grid.Content().RowChanged(1));
    grid.Set_EditCellText("other");
    grid.EditCellCancel();
    EXPECT_EQ(QVariant("new"), grid.Content().CellValue(2, 1)) << "a cancel takes back what was not stored";
}

TEST_F(Grid_Window, The_Host_Is_Asked_Before_And_Told_After_The_Edit)
{
    Allow_Edits();
    QStringList told;
    const auto value = [&] { return grid.Content().CellText(2, 1); };
    QObject::connect(&grid, &bkcGrid::BeforeCellChange, &grid,
                     [&](int, int, const QString& text, bool&) { told << "before " + value() + " " + text; });
    QObject::connect(&grid, &bkcGrid::CellChange, &grid, [&] { told << "after " + value(); });
    grid.EditCellStart(2, 1);
    grid.Set_EditCellText("new");
    grid.EditCellExit();
    EXPECT_EQ("before c new, after new", told.join(", ").toStdString());
}

TEST_F(Grid_Window, Typing_On_A_Cell_Takes_Its_Place_And_F2_Keeps_It)
{
    Allow_Edits();
    Press(2, 1);
    QTest::keyClick(&grid, Qt::Key_X);
    EXPECT_EQ("x", grid.EditCellText().toStdString());
    QTest::keyClick(Editor(), Qt::Key_Escape);
    QTest::keyClick(&grid, Qt::Key_F2);
    EXPECT_EQ("c", grid.EditCellText().toStdString());
    EXPECT_EQ("c", grid.EditCellSelText().toStdString());
    grid.EditCellCancel();
}

TEST_F(Grid_Window, Delete_Empties_A_Cell_That_May_Be_Edited)
{
    const QSignalSpy changes(&grid, &bkcGrid::CellChange);
    Press(2, 1);
    QTest::keyClick(&grid, Qt::Key_Delete);
    EXPECT_EQ(QVariant("c"), grid.Content().CellValue(2, 1));
    Allow_Edits();
    QTest::keyClick(&grid, Qt::Key_Delete);
    EXPECT_EQ(QVariant(""), grid.Content().CellValue(2, 1));
    QTest::keyClick(&grid, Qt::Key_Delete);
    EXPECT_EQ(1, changes.size()) << "it is empty already";
}

TEST_F(Grid_Window, Another_Row_Is_Edited_After_A_Click_That_Leaves_The_First)
{
    Allow_Edits();
    grid.EditCellStart(2, 1);
    grid.Set_EditCellText("new");
    Press(2, 3);
    EXPECT_FALSE(grid.EditCellActive());
    EXPECT_EQ(QVariant("new"), grid.Content().CellValue(2, 1));
    EXPECT_EQ(3, grid.Content().ActiveRow());
    ASSERT_TRUE(grid.EditCellStart(2, 2));
    grid.Set_EditCellText("next");
    ASSERT_TRUE(grid.EditCellStart(2, 4)) << "opening another one leaves the first with update";
    EXPECT_EQ(QVariant("next"), grid.Content().CellValue(2, 2));
}

TEST_F(Grid_Window, Tab_In_The_Editor_Goes_On_To_The_Next_Cell_Where_The_Behaviour_Says_So)
{
    Allow_Edits();
    grid.EditCellStart(1, 1);
    grid.Set_EditCellText("30");
    QTest::keyClick(Editor(), Qt::Key_Tab);
    EXPECT_FALSE(grid.EditCellActive());
    grid.Content().Set(Grid_Property::TabBehavior, 1);
    grid.EditCellStart(1, 1);
    QTest::keyClick(Editor(), Qt::Key_Tab);
    EXPECT_TRUE(grid.EditCellActive());
    EXPECT_EQ(2, grid.Content().ActiveColumn());
    EXPECT_EQ("c", grid.EditCellText().toStdString());
}

TEST_F(Grid_Window, A_Sort_Takes_The_Editor_Along_With_Its_Row)
{
    Allow_Edits();
    grid.EditCellStart(2, 1); // the row of 3
    grid.Set_EditCellText("new");
    grid.Content().SortColumn(1, 1);
    EXPECT_EQ(grid.CellGeometry(2, 3, bkcGrid::Geometry::Top), Editor()->y());
    EXPECT_TRUE(grid.EditCellExit());
    EXPECT_EQ(QVariant("new"), grid.Content().CellValue(2, 3));
}

TEST_F(Grid_Window, A_Column_Without_The_Right_Is_Not_Edited)
{
    Allow_Edits();
    grid.Content().Set_ColumnAllowUpdate(2, false);
    const QSignalSpy opened(&grid, &bkcGrid::DblClick);
    QTest::mouseDClick(grid.viewport(), Qt::LeftButton, Qt::NoModifier, Middle(2, 1));
    EXPECT_FALSE(grid.EditCellActive());
    EXPECT_EQ(1, opened.size()) << "the host hears of the double click instead";
}

} // namespace
