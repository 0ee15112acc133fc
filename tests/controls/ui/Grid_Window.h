#pragma once

#include "controls/ui/bkcGrid.h"

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <gtest/gtest.h>

/// A grid of five rows with the numbers 3 1 2 5 4 and their letters, that selects several and paints at once.
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
    void Allow_Edits() { grid.Content().Set(Grid_Property::AllowUpdate, true); }
    std::vector<int> Selected() const { return grid.Content().SelectedRowsReturn(); }
    QLineEdit* Editor() { return grid.findChild<QLineEdit*>("bkcCell_Text"); }

    bkcGrid grid;
};
