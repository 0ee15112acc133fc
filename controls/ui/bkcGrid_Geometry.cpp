#include "controls/ui/bkcGrid.h"

// Where cells are: columns and rows count from 1, pixels from the corner of the cells on view.

int bkcGrid::GridLeftColumn() const
{
    return columnAt(0) + 1;
}

int bkcGrid::GridTopRow() const
{
    return rowAt(0) + 1;
}

int bkcGrid::GridRightColumn() const
{
    const int column = columnAt(viewport()->width() - 1);
    return column < 0 ? content_.Columns() : column + 1;
}

int bkcGrid::GridBottomRow() const
{
    const int row = rowAt(viewport()->height() - 1);
    return row < 0 ? content_.Rows() : row + 1;
}

void bkcGrid::Set_GridLeftColumn(int Grid_Column)
{
    if (Grid_Column >= 1 && Grid_Column <= content_.Columns())
        horizontalScrollBar()->setValue(horizontalHeader()->sectionPosition(Grid_Column - 1));
}

void bkcGrid::Set_GridTopRow(int Grid_Row)
{
    if (Grid_Row >= 1 && Grid_Row <= content_.Rows()) scrollTo(model()->index(Grid_Row - 1, 0), PositionAtTop);
}

int bkcGrid::GridWidth() const
{
    return viewport()->width();
}

int bkcGrid::GridHeight() const
{
    return viewport()->height();
}

int bkcGrid::ColumnLeft(int Grid_Column) const
{
    return columnViewportPosition(Grid_Column - 1);
}

bool bkcGrid::ColumnVisible(int Test_Column) const
{
    return Test_Column >= 1 && Test_Column >= GridLeftColumn() && Test_Column <= GridRightColumn();
}

bool bkcGrid::RowVisible(int Test_Row) const
{
    return Test_Row >= 1 && Test_Row >= GridTopRow() && Test_Row <= GridBottomRow();
}

bool bkcGrid::CellVisible(int Grid_Column, int Grid_Row) const
{
    return ColumnVisible(Grid_Column) && RowVisible(Grid_Row);
}

int bkcGrid::CellGeometry(int Grid_Column, int Grid_Row, Geometry Geometry_Selector) const
{
    const auto place = visualRect(model()->index(Grid_Row - 1, Grid_Column - 1));
    switch (Geometry_Selector) {
    case Geometry::Left: return place.left();
    case Geometry::Top: return place.top();
    case Geometry::Width: return place.width();
    case Geometry::Height: return place.height();
    }
    return 0;
}

void bkcGrid::CellForceVisible(int Grid_Column, int Grid_Row)
{
    scrollTo(model()->index(Grid_Row - 1, Grid_Column - 1));
}

int bkcGrid::ReturnColumnHit(int X) const
{
    return columnAt(X) + 1;
}

int bkcGrid::ReturnRowHit(int Y) const
{
    return rowAt(Y) + 1;
}

int bkcGrid::ColumnHeaderHeight() const
{
    return horizontalHeader()->isHidden() ? 0 : horizontalHeader()->height();
}

int bkcGrid::RowHeaderWidth() const
{
    return verticalHeader()->isHidden() ? 0 : verticalHeader()->width();
}
