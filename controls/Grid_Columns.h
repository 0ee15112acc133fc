#pragma once

#include "controls/Grid_Records.h"
#include <functional>

/// The properties of a grid's columns, one by one; Grid_Records.h tells their values. Grid_Column counts from 1. A column
/// that does not exist reads as a default one and is not written.
class Grid_Columns {
public:
    virtual const Grid_Column_Record& Column(int Grid_Column) const = 0;
    /// Changes the record by `change` and tells the view, once for all that it changes.
    virtual void Change_Column(int Grid_Column, const std::function<void(Grid_Column_Record&)>& change) = 0;

    Grid_Column_Control ColumnControl(int Grid_Column) const { return Column(Grid_Column).control; }
    QVariant ColumnData(int Grid_Column) const { return Column(Grid_Column).data; }
    QVariant ColumnDataImages(int Grid_Column) const { return Column(Grid_Column).data_images; }
    QVariant ColumnDataToolTips(int Grid_Column) const { return Column(Grid_Column).data_tool_tips; }
    int ColumnDataType(int Grid_Column) const { return Column(Grid_Column).data_type; }
    bool ColumnAllowSizing(int Grid_Column) const { return Column(Grid_Column).allow_sizing; }
    bool ColumnAllowUpdate(int Grid_Column) const { return Column(Grid_Column).allow_update; }
    std::optional<Stored_Color> ColumnBackColor(int Grid_Column) const { return Column(Grid_Column).back_color; }
    QString ColumnField(int Grid_Column) const { return Column(Grid_Column).field; }
    int ColumnFieldSize(int Grid_Column) const { return Column(Grid_Column).field_size; }
    std::optional<Stored_Color> ColumnForeColor(int Grid_Column) const { return Column(Grid_Column).fore_color; }
    QString ColumnFormat(int Grid_Column, int Data_Type) const { return Column(Grid_Column).format.value(Data_Type); }
    std::optional<Stored_Color> ColumnHeaderForeColor(int Grid_Column) const
    {
        return Column(Grid_Column).header_fore_color;
    }
    QString ColumnHeaderText(int Grid_Column) const { return Column(Grid_Column).header_text; }
    Grid_Text_Align ColumnHeaderTextAlign(int Grid_Column) const { return Column(Grid_Column).header_text_align; }
    int ColumnRenderMode(int Grid_Column) const { return Column(Grid_Column).render_mode; }
    int ColumnSortOrder(int Grid_Column) const { return Column(Grid_Column).sort_order; }
    virtual Grid_Text_Align ColumnTextAlign(int Grid_Column) const = 0; ///< the grid's where the column has none
    int ColumnWidth(int Grid_Column) const { return Column(Grid_Column).width; }
    int ColumnWidthProportional(int Grid_Column) const { return Column(Grid_Column).width_proportional; }

    void Set_ColumnControl(int Grid_Column, Grid_Column_Control New_Control);
    void Set_ColumnData(int Grid_Column, const QVariant& New_Data);
    void Set_ColumnDataImages(int Grid_Column, const QVariant& New_Images);
    void Set_ColumnDataToolTips(int Grid_Column, const QVariant& New_Tips);
    void Set_ColumnDataType(int Grid_Column, int New_Type);
    void Set_ColumnAllowSizing(int Grid_Column, bool New_Allow);
    void Set_ColumnAllowUpdate(int Grid_Column, bool New_Allow);
    void Set_ColumnBackColor(int Grid_Column, std::optional<Stored_Color> New_Color);
    void Set_ColumnField(int Grid_Column, const QString& New_Field);
    void Set_ColumnFieldSize(int Grid_Column, int New_Size);
    void Set_ColumnForeColor(int Grid_Column, std::optional<Stored_Color> New_Color);
    void Set_ColumnFormat(int Grid_Column, int Data_Type, const QString& New_Format); ///< empty: none for this type
    void Set_ColumnHeaderForeColor(int Grid_Column, std::optional<Stored_Color> New_Color);
    void Set_ColumnHeaderText(int Grid_Column, const QString& New_Text);
    void Set_ColumnHeaderTextAlign(int Grid_Column, Grid_Text_Align New_Align);
    void Set_ColumnRenderMode(int Grid_Column, int New_Mode);
    void Set_ColumnSortOrder(int Grid_Column, int New_Order); ///< of the next sort
    void Set_ColumnTextAlign(int Grid_Column, std::optional<int> New_Align);
    void Set_ColumnWidth(int Grid_Column, int New_Width); ///< below 0 is ignored
    void Set_ColumnWidthProportional(int Grid_Column, int New_Share);

protected:
    ~Grid_Columns() = default;

private:
    template <class Value>
    void Set_Field(int Grid_Column, Value Grid_Column_Record::*field, const Value& value)
    {
        Change_Column(Grid_Column, [&](Grid_Column_Record& column) { column.*field = value; });
    }
};
