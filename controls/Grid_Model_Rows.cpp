#include "controls/Grid_Model.h"

// Rows and the two maps between their places in storage and in the display.

Grid_Row_Record* Grid_Model::Row_At(int Grid_Row)
{
    return const_cast<Grid_Row_Record*>(std::as_const(*this).Row_At(Grid_Row));
}

const Grid_Row_Record* Grid_Model::Row_At(int Grid_Row) const
{
    const int stored = Stored_Row(Grid_Row);
    return stored == 0 ? nullptr : &rows_[std::size_t(stored - 1)];
}

int Grid_Model::Stored_Row(int Grid_Row) const
{
    return Grid_Row >= 1 && Grid_Row <= Rows() ? row_map_[std::size_t(Grid_Row - 1)] + 1 : 0;
}

int Grid_Model::Display_Row(int stored_row) const
{
    return stored_row >= 1 && stored_row <= Rows() ? display_map_[std::size_t(stored_row - 1)] + 1 : 0;
}

int Grid_Model::RowHeight(int Grid_Row) const
{
    const auto* row = Row_At(Grid_Row);
    return row ? row->height : 0;
}

void Grid_Model::Set_RowHeight(int Grid_Row, int New_Height)
{
    auto* row = Row_At(Grid_Row);
    if (!row || New_Height < 0) return;
    row->height = New_Height;
    Mark(Change::Layout);
}

std::optional<Stored_Color> Grid_Model::RowBackColor(int Grid_Row) const
{
    const auto* row = Row_At(Grid_Row);
    return row ? row->back_color : std::nullopt;
}

void Grid_Model::Set_RowBackColor(int Grid_Row, std::optional<Stored_Color> New_Color)
{
    if (auto* row = Row_At(Grid_Row)) {
        row->back_color = New_Color;
        Mark(Change::Content);
    }
}

std::optional<Stored_Color> Grid_Model::RowForeColor(int Grid_Row) const
{
    const auto* row = Row_At(Grid_Row);
    return row ? row->fore_color : std::nullopt;
}

void Grid_Model::Set_RowForeColor(int Grid_Row, std::optional<Stored_Color> New_Color)
{
    if (auto* row = Row_At(Grid_Row)) {
        row->fore_color = New_Color;
        Mark(Change::Content);
    }
}

bool Grid_Model::RowChanged(int Grid_Row) const
{
    const auto* row = Row_At(Grid_Row);
    return row && row->changed;
}

void Grid_Model::Set_RowChanged(int Grid_Row, bool New_Changed)
{
    if (auto* row = Row_At(Grid_Row)) row->changed = New_Changed;
}

Grid_Row_Record Grid_Model::New_Row() const
{
    Grid_Row_Record row;
    row.height = Value(Grid_Property::RowInitialHeight);
    return row;
}

void Grid_Model::Refresh_Display_Map()
{
    display_map_.resize(row_map_.size());
    for (std::size_t i = 0; i < row_map_.size(); ++i) display_map_[std::size_t(row_map_[i])] = int(i);
}

void Grid_Model::Set_Sourced_Rows(int count, Value_Source source)
{
    const bool selection_changes = SelectedRowsCount() != 0;
    source_ = nullptr;
    Resize_Rows(0);
    properties_.Set_Value(Grid_Property::Rows, count);
    Resize_Rows(Value(Grid_Property::Rows));
    source_ = std::move(source);
    Clear_Sort_Keys();
    sort_pending_ = false;
    Mark(Change::Layout);
    if (selection_changes) Tell(Change::Selection);
}

void Grid_Model::Own_Cells(int stored_row)
{
    auto& cells = rows_[std::size_t(stored_row - 1)].cells;
    if (!cells.empty()) return;
    std::vector<Grid_Cell> own(columns_.size());
    for (int column = 1; column <= Columns(); ++column)
        own[std::size_t(column - 1)].value = Stored_Value(stored_row, column);
    cells = std::move(own);
}

void Grid_Model::Own_All_Cells()
{
    if (!source_) return;
    for (int row = 1; row <= Rows(); ++row) Own_Cells(row);
    source_ = nullptr;
}

QVariant Grid_Model::Stored_Value(int stored_row, int Grid_Column) const
{
    const auto& cells = rows_[std::size_t(stored_row - 1)].cells;
    if (!cells.empty()) return cells[std::size_t(Grid_Column - 1)].value;
    return source_ ? source_(Grid_Column, stored_row) : QVariant();
}

void Grid_Model::Resize_Rows(int count)
{
    if (count < Rows()) {
        std::vector<bool> removed(rows_.size());
        for (int i = count; i < Rows(); ++i) removed[std::size_t(row_map_[std::size_t(i)])] = true;
        return Remove_Stored_Rows(removed);
    }
    if (count > Rows()) Own_All_Cells();
    rows_.reserve(std::size_t(count));
    while (Rows() < count) {
        row_map_.push_back(Rows());
        rows_.push_back(New_Row());
    }
    Refresh_Display_Map();
}

// Removed rows are marked by stored row; what stays keeps its order in both maps.
void Grid_Model::Remove_Stored_Rows(const std::vector<bool>& removed)
{
    if (std::find(removed.begin(), removed.end(), false) == removed.end())
        source_ = nullptr;
    else
        Own_All_Cells(); // stored rows get other numbers
    std::vector<int> new_place(rows_.size(), -1);
    int kept = 0;
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        if (removed[i]) continue;
        new_place[i] = kept;
        if (std::size_t(kept) != i) rows_[std::size_t(kept)] = std::move(rows_[i]);
        ++kept;
    }
    rows_.resize(std::size_t(kept));
    std::vector<int> map;
    map.reserve(std::size_t(kept));
    for (const int stored : row_map_)
        if (!removed[std::size_t(stored)]) map.push_back(new_place[std::size_t(stored)]);
    row_map_ = std::move(map);
    const auto moved = [&](int stored) { return stored == 0 ? 0 : new_place[std::size_t(stored - 1)] + 1; };
    active_stored_row_ = moved(active_stored_row_);
    anchor_stored_row_ = moved(anchor_stored_row_);
    Refresh_Display_Map();
    properties_.Set_Value(Grid_Property::Rows, Rows());
}

void Grid_Model::InsertRows(int Grid_Row, int Row_Count)
{
    if (Row_Count < 1 || Grid_Row < 1 || Grid_Row > Rows() + 1) return;
    if (!properties_.Set_Value(Grid_Property::Rows, std::int64_t(Rows()) + Row_Count)) return;
    Own_All_Cells();
    for (int i = 0; i < Row_Count; ++i) {
        row_map_.insert(row_map_.begin() + (Grid_Row - 1 + i), Rows());
        rows_.push_back(New_Row());
    }
    Refresh_Display_Map();
    Mark(Change::Layout);
}

void Grid_Model::DeleteRows(int Grid_Row, int Row_Count)
{
    if (Grid_Row < 1 || Grid_Row > Rows() || Row_Count < 1) return;
    Row_Count = std::min(Row_Count, Rows() - Grid_Row + 1);
    std::vector<bool> removed(rows_.size());
    bool selection_changes = false;
    for (int row = Grid_Row; row < Grid_Row + Row_Count; ++row) {
        removed[std::size_t(Stored_Row(row) - 1)] = true;
        selection_changes |= SelectedRowTest(row);
    }
    Remove_Stored_Rows(removed);
    Mark(Change::Layout);
    if (selection_changes) Tell(Change::Selection);
}

void Grid_Model::DeleteSelectedRows()
{
    std::vector<bool> removed;
    removed.reserve(rows_.size());
    for (const auto& row : rows_) removed.push_back(row.selected);
    if (std::find(removed.begin(), removed.end(), true) == removed.end()) return;
    Remove_Stored_Rows(removed);
    Mark(Change::Layout);
    Tell(Change::Selection);
}

void Grid_Model::RowCopy(int Original_Grid_Row, int Copy_Grid_Row)
{
    const auto* original = Row_At(Original_Grid_Row);
    auto* copy = Row_At(Copy_Grid_Row);
    if (!original || !copy || original == copy) return;
    const int from = Stored_Row(Original_Grid_Row);
    Own_Cells(Stored_Row(Copy_Grid_Row));
    for (std::size_t i = 0; i < columns_.size(); ++i) copy->cells[i].value = Stored_Value(from, int(i) + 1);
    Mark(Change::Content);
}
