#pragma once

#include "controls/Grid_Columns.h"
#include "controls/Grid_Sort.h"

/// The content of a grid: properties, columns, rows, cells, selection and sorting, without any drawing.
///
/// Grid_Column and Grid_Row count from 1; a Grid_Row is a position in the display. Rows never move in storage: a map
/// gives the stored row of each display position, and sorting writes the map alone. Selection, colours and the active
/// row belong to the stored row and follow it. An index that does not exist reads as a default and is not written.
class Grid_Model final : public Grid_Columns {
public:
    Grid_Model();

    // Properties, under the names of Grid_Property.
    const Grid_Properties& Properties() const { return properties_; }
    bool Is_On(Grid_Property property) const { return properties_.Is_On(property); }
    int Value(Grid_Property property) const { return int(properties_.Value(property)); }
    void Set(Grid_Property property, std::int64_t value); ///< Rows and Columns resize, AutoPaint updates
    QVariantMap Write_Properties() const { return properties_.Stored(); }
    /// Read before a host fills the grid: the columns and rows that are there take width and height from it too.
    void Read_Properties(const QVariantMap& store);

    int Rows() const { return int(rows_.size()); }
    void Set_Rows(int New_Rows) { Set(Grid_Property::Rows, New_Rows); } ///< keeps what fits
    int Columns() const { return int(columns_.size()); }
    void Set_Columns(int New_Columns) { Set(Grid_Property::Columns, New_Columns); }
    bool AutoPaint() const { return Is_On(Grid_Property::AutoPaint); }
    void Set_AutoPaint(bool New_AutoPaint) { Set(Grid_Property::AutoPaint, New_AutoPaint); }
    int SelectionMode() const { return Value(Grid_Property::SelectionMode); }
    void Set_SelectionMode(int New_SelectionMode) { Set(Grid_Property::SelectionMode, New_SelectionMode); }

    // Columns.
    const Grid_Column_Record& Column(int Grid_Column) const override;
    void Change_Column(int Grid_Column, const std::function<void(Grid_Column_Record&)>& change) override;
    Grid_Text_Align ColumnTextAlign(int Grid_Column) const override;
    /// Widths of all columns in a view of available pixels: proportional columns share what the others leave.
    std::vector<int> Column_Widths(int available) const;
    void InsertColumns(int Grid_Column, int Column_Count); ///< in front of Grid_Column; Columns() + 1 appends
    void DeleteColumns(int Grid_Column, int Column_Count);

    // Rows.
    int RowHeight(int Grid_Row) const;
    void Set_RowHeight(int Grid_Row, int New_Height);
    std::optional<Stored_Color> RowBackColor(int Grid_Row) const;
    void Set_RowBackColor(int Grid_Row, std::optional<Stored_Color> New_Color);
    std::optional<Stored_Color> RowForeColor(int Grid_Row) const;
    void Set_RowForeColor(int Grid_Row, std::optional<Stored_Color> New_Color);
    bool RowChanged(int Grid_Row) const;
    void Set_RowChanged(int Grid_Row, bool New_Changed);
    int Stored_Row(int Grid_Row) const;           ///< 1-based; 0 without such a row
    int Display_Row(int stored_row) const;        ///< the reverse
    void InsertRows(int Grid_Row, int Row_Count); ///< in front of Grid_Row; Rows() + 1 appends
    void DeleteRows(int Grid_Row, int Row_Count);
    void DeleteSelectedRows();
    void RowCopy(int Original_Grid_Row, int Copy_Grid_Row); ///< values alone

    // Cells.
    using Value_Source = std::function<QVariant(int Grid_Column, int stored_row)>;
    /// Takes the place of all rows: as many new ones, in the order of their storage, whose values are asked for each time
    /// that one is needed, so that a hundred thousand rows cost little more than those on view. A row that is written to
    /// has values of its own from then on; when rows come or go or columns are inserted or deleted, all have. The source is
    /// not called any more then, nor when no row is left.
    void Set_Sourced_Rows(int count, Value_Source source);
    QVariant CellValue(int Grid_Column, int Grid_Row) const;
    void Set_CellValue(int Grid_Column, int Grid_Row, const QVariant& New_Value);
    /// The value in the column's format. With DataFormat a value without one has the usual format of its kind: numbers
    /// are grouped, Booleans are Yes or No.
    QString CellText(int Grid_Column, int Grid_Row) const;
    /// The column's alignment. With DataAlign numbers and dates stand at the right and Booleans in the middle.
    Grid_Text_Align CellAlign(int Grid_Column, int Grid_Row) const;
    QString Cell_Image(int Grid_Column, int Grid_Row) const; ///< the name of the value's image; empty for none
    QVariant CellPreviousValue(int Grid_Column, int Grid_Row) const;
    std::optional<Stored_Color> CellBackColor(int Grid_Column, int Grid_Row) const;
    void Set_CellBackColor(int Grid_Column, int Grid_Row, std::optional<Stored_Color> New_Color);
    std::optional<Stored_Color> CellForeColor(int Grid_Column, int Grid_Row) const;
    void Set_CellForeColor(int Grid_Column, int Grid_Row, std::optional<Stored_Color> New_Color);
    bool CellHidden(int Grid_Column, int Grid_Row) const;
    void Set_CellHidden(int Grid_Column, int Grid_Row, bool New_Hidden);
    int CellAttribute(int Grid_Column, int Grid_Row) const;
    void Set_CellAttribute(int Grid_Column, int Grid_Row, int New_Attribute);
    /// Grid and column allow it, and the cell is neither hidden nor locked.
    bool Cell_Editable(int Grid_Column, int Grid_Row) const;
    /// The user's edit: takes the text as the column's data type, keeps the value before it, marks the row. False, and
    /// nothing changed, when the cell is not editable or the text is no such value. The empty text is Null, but in text
    /// columns the empty text.
    bool Edit_Cell(int Grid_Column, int Grid_Row, const QString& text);
    QVariant GridData() const;                   ///< a list of rows in display order, each a list of values
    void Set_GridData(const QVariant& New_Data); ///< resizes to fit; clears map, selection and active cell
    QString Copied_Text() const; ///< the selected rows, tabs and line feeds between the texts; empty without AllowCopy

    // Selection. Mode 0: no rows. 1: one row. 2: several, with Ctrl and Shift. 3: several, each click toggles.
    void SelectRow(int Grid_Row);                        ///< adds the row; in mode 1 it becomes the only one
    void Select_Rows(const std::vector<int>& grid_rows); ///< these and no others, as far as the mode allows
    void SelectRowClear(int Grid_Row);                   ///< takes the row out
    /// Button is a bit set (1 left, 2 right), Shift too (1 shift, 2 control). The right button keeps a selection that
    /// the row belongs to. Row 0 (below the last row) clears.
    void SelectRowClick(int Button, int Shift, int New_Click_Row);
    void SelectedRowsClear();
    void Select_All();                           ///< modes 2 and 3 only
    std::vector<int> SelectedRowsReturn() const; ///< display rows, ascending
    int SelectedRowsCount() const;
    QVariant SelectionReturn() const; ///< as GridData, of the selected rows
    int SelectedRow() const;          ///< the first selected display row, or 0
    bool SelectedRowTest(int Grid_Row) const;

    int ActiveColumn() const { return active_column_; } ///< 0: none
    int ActiveRow() const;
    void Set_Active(int Grid_Column, int Grid_Row);
    QVariant ActiveValue() const { return CellValue(ActiveColumn(), ActiveRow()); }
    void Set_ActiveValue(const QVariant& New_Value) { Set_CellValue(ActiveColumn(), ActiveRow(), New_Value); }
    QString ActiveText() const { return CellText(ActiveColumn(), ActiveRow()); }
    /// The text as a value of the column's data type; false, and nothing changed, when it is none. Rights do not count
    /// here: the host is free to write.
    bool Set_ActiveText(const QString& New_Text);
    /// The selected part of the active cell's text, 0-based, always within it; nothing in a cell that becomes active.
    int ActiveSelStart() const;
    int ActiveSelLength() const;
    QString ActiveSelText() const { return ActiveText().mid(ActiveSelStart(), ActiveSelLength()); }
    void Set_ActiveSelection(int New_Start, int New_Length);
    bool Set_ActiveSelText(const QString& New_Text); ///< in the place of the selected part; then nothing is selected

    // Sorting.
    /// Sets the column's order (1, -1, or 0: dates newest first, anything else ascending) and makes the column the only
    /// key or, with Append, the last of several. Sorts at once unless AutoPaint is off: then Update does.
    void SortColumn(int Column_To_Sort, int Sort_Order, bool Append = false);
    /// A click on a header: the first sorts by the column's own order, the next ones turn it over. Needs AllowColumnSort.
    bool Header_Click(int Grid_Column, bool Append);
    /// +1 or -1: where a key's values rise or fall. A column of type 7 with order 0 falls.
    int Sort_Direction(int Grid_Column) const;
    const std::vector<int>& Sort_Keys() const { return sort_keys_; } ///< column numbers
    void Clear_Sort_Keys() { sort_keys_.clear(); }                   ///< the order on display stays
    void Update(); ///< carries out a deferred sort and tells the view of all deferred changes
    bool Needs_Update() const { return changed_ || sort_pending_; }

    /// What the view hears: at once with AutoPaint, otherwise from Update. Selection and the active cell are told at
    /// once in both cases.
    enum class Change { Content, Layout, Selection, Active };
    std::function<void(Change)> On_Change;

private:
    Grid_Row_Record* Row_At(int Grid_Row);
    const Grid_Row_Record* Row_At(int Grid_Row) const;
    bool Has_Cell(int Grid_Column, int Grid_Row) const;
    Grid_Cell* Cell_At(int Grid_Column, int Grid_Row);             ///< to write: the row has cells of its own then
    const Grid_Cell* Cell_At(int Grid_Column, int Grid_Row) const; ///< null also when nothing was written to the row
    Grid_Cell::Extra* Extra_At(int Grid_Column, int Grid_Row);
    Grid_Row_Record New_Row() const;
    Grid_Column_Record New_Column() const;
    void Resize_Rows(int count);
    void Own_Cells(int stored_row);
    void Own_All_Cells();
    QVariant Stored_Value(int stored_row, int Grid_Column) const;
    void Resize_Columns(int count);
    void Cut_Selection_To_Mode();
    void Remove_Stored_Rows(const std::vector<bool>& removed);
    void Refresh_Display_Map();
    void Sort_Now();
    void Mark(Change change);
    void Tell(Change change) const;
    QVariantList Row_Values(int stored_row) const;
    void Select_Range(int first, int last, bool selected);

    Grid_Properties properties_;
    std::vector<Grid_Column_Record> columns_;
    std::vector<Grid_Row_Record> rows_;
    Value_Source source_;          // of the rows without cells; none when they are empty
    std::vector<int> row_map_;     // display position to stored row, 0-based
    std::vector<int> display_map_; // the reverse
    std::vector<int> sort_keys_;
    int active_column_ = 0;
    int active_stored_row_ = 0; // 1-based, 0 is none
    int active_selection_start_ = 0;
    int active_selection_length_ = 0;
    int anchor_stored_row_ = 0; // where a Shift range begins
    bool changed_ = false;
    bool layout_changed_ = false;
    bool sort_pending_ = false;
};
