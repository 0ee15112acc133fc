#pragma once

#include "controls/Grid_Model.h"

/// A grid with the numbers of its rows in the first column and "row 1", "row 2", ... in the second.
inline Grid_Model Numbered(int rows)
{
    Grid_Model grid;
    QVariantList data;
    for (int row = 1; row <= rows; ++row) data.append(QVariant(QVariantList{row, QStringLiteral("row %1").arg(row)}));
    grid.Set_GridData(data);
    return grid;
}
