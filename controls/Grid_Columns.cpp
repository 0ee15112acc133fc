#include "controls/Grid_Columns.h"

using Record = Grid_Column_Record;

void Grid_Columns::Set_ColumnControl(int Grid_Column, Grid_Column_Control New_Control)
{
    Set_Field(Grid_Column, &Record::control, New_Control);
}

void Grid_Columns::Set_ColumnData(int Grid_Column, const QVariant& New_Data)
{
    Set_Field(Grid_Column, &Record::data, New_Data);
}

void Grid_Columns::Set_ColumnDataImages(int Grid_Column, const QVariant& New_Images)
{
    Set_Field(Grid_Column, &Record::data_images, New_Images);
}

void Grid_Columns::Set_ColumnDataToolTips(int Grid_Column, const QVariant& New_Tips)
{
    Set_Field(Grid_Column, &Record::data_tool_tips, New_Tips);
}

void Grid_Columns::Set_ColumnDataType(int Grid_Column, int New_Type)
{
    Set_Field(Grid_Column, &Record::data_type, New_Type);
}

void Grid_Columns::Set_ColumnAllowSizing(int Grid_Column, bool New_Allow)
{
    Set_Field(Grid_Column, &Record::allow_sizing, New_Allow);
}

void Grid_Columns::Set_ColumnAllowUpdate(int Grid_Column, bool New_Allow)
{
    Set_Field(Grid_Column, &Record::allow_update, New_Allow);
}

void Grid_Columns::Set_ColumnBackColor(int Grid_Column, std::optional<Stored_Color> New_Color)
{
    Set_Field(Grid_Column, &Record::back_color, New_Color);
}

void Grid_Columns::Set_ColumnField(int Grid_Column, const QString& New_Field)
{
    Set_Field(Grid_Column, &Record::field, New_Field);
}

void Grid_Columns::Set_ColumnFieldSize(int Grid_Column, int New_Size)
{
    Set_Field(Grid_Column, &Record::field_size, New_Size);
}

void Grid_Columns::Set_ColumnForeColor(int Grid_Column, std::optional<Stored_Color> New_Color)
{
    Set_Field(Grid_Column, &Record::fore_color, New_Color);
}

void Grid_Columns::Set_ColumnFormat(int Grid_Column, int Data_Type, const QString& New_Format)
{
    Change_Column(Grid_Column, [&](Record& column) {
        column.format[Data_Type] = New_Format;
        if (New_Format.isEmpty()) column.format.remove(Data_Type);
    });
}

void Grid_Columns::Set_ColumnHeaderForeColor(int Grid_Column, std::optional<Stored_Color> New_Color)
{
    Set_Field(Grid_Column, &Record::header_fore_color, New_Color);
}

void Grid_Columns::Set_ColumnHeaderText(int Grid_Column, const QString& New_Text)
{
    Set_Field(Grid_Column, &Record::header_text, New_Text);
}

void Grid_Columns::Set_ColumnHeaderTextAlign(int Grid_Column, Grid_Text_Align New_Align)
{
    Set_Field(Grid_Column, &Record::header_text_align, New_Align);
}

void Grid_Columns::Set_ColumnRenderMode(int Grid_Column, int New_Mode)
{
    Set_Field(Grid_Column, &Record::render_mode, New_Mode);
}

void Grid_Columns::Set_ColumnSortOrder(int Grid_Column, int New_Order)
{
    Set_Field(Grid_Column, &Record::sort_order, New_Order);
}

void Grid_Columns::Set_ColumnTextAlign(int Grid_Column, std::optional<int> New_Align)
{
    Set_Field(Grid_Column, &Record::text_align, New_Align);
}

void Grid_Columns::Set_ColumnWidth(int Grid_Column, int New_Width)
{
    if (New_Width >= 0) Set_Field(Grid_Column, &Record::width, New_Width);
}

void Grid_Columns::Set_ColumnWidthProportional(int Grid_Column, int New_Share)
{
    Set_Field(Grid_Column, &Record::width_proportional, New_Share);
}
