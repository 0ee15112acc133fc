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
    row.cells.resize(columns_.size());
    return row;
}

void Grid_Model::Refresh_Display_Map()
{
    display_map_.resize(row_map_.size());
    for (std::size_t i = 0; i < row_map_.size(); ++i) display_map_[std::size_t(row_map_[i])] = int(i);
}

void Grid_Model::Resize_Rows(int count)
{
    if (count < Rows()) {
        std::vector<bool> removed(rows_.size());
        for (int i = count; i < Rows(); ++i) removed[std::size_t(row_map_[std::size_t(i)])] = true;
        return Remove_Stored_Rows(removed);
    }
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
    for (std::size_t i = 0; i < columns_.size(); ++i) copy->cells[i].value = original->cells[i].value;
    Mark(Change::Content);
}
