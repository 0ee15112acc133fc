#include "controls/ui/bkcGrid.h"

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <gtest/gtest.h>

namespace {

class Grid_Window : public testing::Test {
protected:
    void SetUp() override
    {
        auto& content = grid.Content();
        content.Set_GridData(QVariantList{QVariantList{3, "c"}, QVariantList{1, "a"}, QVariantList{2, "b"},
                                          QVariantList{5, "e"}, QVariantList{4, "d"}});
        content.Set_SelectionMode(2);
        content.Set_AutoPaint(true);
        grid.resize(400, 300);
        grid.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&grid));
    }
    QPoint Middle(int column, int row) const
    {
        return grid.visualRect(grid.model()->index(row - 1, column - 1)).center();
    }
    void Press(int column, int row, Qt::KeyboardModifiers keys = Qt::NoModifier)
    {
        QTest::mouseClick(grid.viewport(), Qt::LeftButton, keys, Middle(column, row));
    }
    void Press_Header(int column)
    {
        auto* header = grid.horizontalHeader();
        QTest::mouseClick(header->viewport(), Qt::LeftButton, Qt::NoModifier,
                          {header->sectionViewportPosition(column - 1) + 20, header->height() / 2});
    }
    std::vector<int> Selected() const { return grid.Content().SelectedRowsReturn(); }
    QLineEdit* Editor() { return grid.findChild<QLineEdit*>("bkcCell_Text"); }

    bkcGrid grid;
};

TEST_F(Grid_Window, Control_And_Shift_Clicks_Select_Rows)
{
    const QSignalSpy changes(&grid, &bkcGrid::SelChange);
    Press(1, 2);
    EXPECT_EQ((std::vector<int>{2}), Selected());
    Press(2, 4, Qt::ControlModifier);
    EXPECT_EQ((std::vector<int>{2, 4}), Selected());
    Press(1, 2, Qt::ShiftModifier);
    EXPECT_EQ((std::vector<int>{2, 3, 4}), Selected());
    EXPECT_EQ(3, grid.selectionModel()->selectedRows().size()) << "what assistive tools see";
    EXPECT_EQ(3, changes.size());
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, Qt::NoModifier, {20, grid.viewport()->height() - 5});
    EXPECT_TRUE(Selected().empty());
}

TEST_F(Grid_Window, Arrow_Keys_Move_And_Shift_Extends)
{
    Press(1, 2);
    QTest::keyClick(&grid, Qt::Key_Down);
    EXPECT_EQ((std::vector<int>{3}), Selected());
    QTest::keyClick(&grid, Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ((std::vector<int>{3, 4}), Selected());
    QTest::keyClick(&grid, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(5U, Selected().size());
    EXPECT_EQ(4, grid.Content().ActiveRow());
}

TEST_F(Grid_Window, A_Header_Click_Sorts_Only_When_Allowed)
{
    const QSignalSpy clicks(&grid, &bkcGrid::ColumnClick);
    Press_Header(1);
    EXPECT_EQ(QVariant(3), grid.Content().CellValue(1, 1));
    grid.Content().Set(Grid_Property::AllowColumnSort, true);
    Press_Header(1);
    EXPECT_EQ(QVariant(1), grid.Content().CellValue(1, 1));
    EXPECT_EQ(Qt::AscendingOrder, grid.horizontalHeader()->sortIndicatorOrder());
    Press_Header(1);
    EXPECT_EQ(QVariant(5), grid.Content().CellValue(1, 1));
    EXPECT_EQ(Qt::DescendingOrder, grid.horizontalHeader()->sortIndicatorOrder());
    EXPECT_EQ("5", grid.model()->index(0, 0).data().toString().toStdString());
    EXPECT_EQ(3, clicks.size());
}

TEST_F(Grid_Window, An_Edit_Is_Stored_And_Told)
{
    grid.Content().Set(Grid_Property::AllowUpdate, true);
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
    grid.Content().Set(Grid_Property::AllowUpdate, true);
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
    grid.Content().Set(Grid_Property::AllowUpdate, true);
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
    grid.Content().Set(Grid_Property::AllowUpdate, true);
    const QSignalSpy changes(&grid, &bkcGrid::CellChange);
    grid.EditCellStart(2, 1);
    EXPECT_TRUE(grid.EditCellExit());
    EXPECT_EQ(0, changes.size());
}

TEST_F(Grid_Window, Tab_Moves_Between_Cells_Where_The_Behaviour_Says_So)
{
    grid.Content().Set(Grid_Property::TabBehavior, 1);
    Press(1, 1);
    grid.setFocus();
    QTest::keyClick(&grid, Qt::Key_Tab);
    EXPECT_EQ(2, grid.Content().ActiveColumn());
    QTest::keyClick(&grid, Qt::Key_Tab);
    EXPECT_EQ(2, grid.Content().ActiveRow());
    QTest::keyClick(&grid, Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(1, grid.Content().ActiveRow());
}

TEST_F(Grid_Window, Down_On_The_Last_Row_Adds_One_When_Allowed)
{
    Press(1, 5);
    QTest::keyClick(&grid, Qt::Key_Down);
    EXPECT_EQ(5, grid.Content().Rows());
    grid.Content().Set(Grid_Property::AllowAddNew, true);
    QTest::keyClick(&grid, Qt::Key_Down);
    EXPECT_EQ(6, grid.Content().Rows());
    EXPECT_EQ(6, grid.Content().ActiveRow());
}

TEST_F(Grid_Window, Copy_Puts_The_Selected_Rows_On_The_Clipboard)
{
    grid.Content().Set(Grid_Property::AllowCopy, true);
    Press(1, 2);
    QTest::keyClick(&grid, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ("1\ta\n", QGuiApplication::clipboard()->text().toStdString());
}

TEST_F(Grid_Window, Geometry_Agrees_With_The_Cells)
{
    EXPECT_EQ(1, grid.GridTopRow());
    EXPECT_EQ(5, grid.GridBottomRow());
    EXPECT_EQ(2, grid.ReturnColumnHit(Middle(2, 3).x()));
    EXPECT_EQ(3, grid.ReturnRowHit(Middle(2, 3).y()));
    EXPECT_EQ(0, grid.ReturnRowHit(grid.viewport()->height() - 5));
    EXPECT_EQ(grid.ColumnLeft(2), grid.CellGeometry(2, 1, bkcGrid::Geometry::Left));
    EXPECT_EQ(75, grid.CellGeometry(1, 1, bkcGrid::Geometry::Width));
    EXPECT_TRUE(grid.CellVisible(2, 5));
    EXPECT_FALSE(grid.RowVisible(6));
}

TEST_F(Grid_Window, Deferred_Changes_Show_At_Update)
{
    grid.Content().Set_AutoPaint(false);
    grid.Content().Set_Rows(50'000);
    EXPECT_EQ(5, grid.model()->rowCount());
    grid.Update();
    EXPECT_EQ(50'000, grid.model()->rowCount());
    grid.Content().Set_Rows(0);
    grid.Update();
    EXPECT_EQ(0, grid.GridTopRow());
}

} // namespace
