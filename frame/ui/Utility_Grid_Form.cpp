#include "frame/ui/Utility_Grid_Form.h"

Utility_Grid_Form::Utility_Grid_Form(const Platform* platform, const QString& grid_name,
                                     const std::vector<Column>& columns, QWidget* parent)
    : Framed_Form(platform, QStringLiteral("Halvine-Grid"), parent), grid_(new bkcGrid)
{
    grid_->setAccessibleName(grid_name);
    Content().Set_Columns(int(columns.size()));
    Content().Set_SelectionMode(2);
    for (const auto property : {Grid_Property::AllowColumnSizing, Grid_Property::AllowCopy, Grid_Property::ScrollTrack,
                                Grid_Property::ToolTipEnabled})
        Content().Set(property, true);
    for (int column = 1; column <= Content().Columns(); ++column) {
        const auto& [header, width] = columns[std::size_t(column - 1)];
        Content().Set_ColumnHeaderText(column, header);
        if (width > 0)
            Content().Set_ColumnWidth(column, width);
        else
            Content().Set_ColumnWidthProportional(column, 1);
    }
}

void Utility_Grid_Form::Mark_Row(int Grid_Row, bool marked)
{
    for (int column = 1; column <= Content().Columns(); ++column)
        Content().Set_CellAttribute(column, Grid_Row, marked ? Cell_Struck_Out : 0);
}
