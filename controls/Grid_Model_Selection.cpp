#include "controls/Grid_Model.h"

// Selected rows belong to the stored rows: a sort moves them along.

namespace {

enum Selection_Modes : int { No_Rows = 0, One_Row = 1, Several_Rows = 2, Toggled_Rows = 3 };
constexpr int Right_Button = 2;
constexpr int Shift_Key = 1;
constexpr int Control_Key = 2;

} // namespace

void Grid_Model::SelectRow(int Grid_Row)
{
    auto* row = Row_At(Grid_Row);
    if (!row || SelectionMode() == No_Rows) return;
    if (SelectionMode() == One_Row)
        for (auto& other : rows_) other.selected = false;
    row->selected = true;
    anchor_stored_row_ = Stored_Row(Grid_Row);
    Tell(Change::Selection);
}

void Grid_Model::Select_Rows(const std::vector<int>& grid_rows)
{
    bool changed = SelectedRowsCount() != 0;
    for (auto& row : rows_) row.selected = false;
    for (const int grid_row : grid_rows) {
        auto* row = Row_At(grid_row);
        if (!row || SelectionMode() == No_Rows) continue;
        row->selected = changed = true;
        anchor_stored_row_ = Stored_Row(grid_row);
        if (SelectionMode() == One_Row) break;
    }
    if (changed) Tell(Change::Selection);
}

void Grid_Model::SelectRowClear(int Grid_Row)
{
    auto* row = Row_At(Grid_Row);
    if (!row || !row->selected) return;
    row->selected = false;
    Tell(Change::Selection);
}

void Grid_Model::SelectedRowsClear()
{
    if (SelectedRowsCount() == 0) return;
    for (auto& row : rows_) row.selected = false;
    Tell(Change::Selection);
}

void Grid_Model::Select_All()
{
    if (SelectionMode() != Several_Rows && SelectionMode() != Toggled_Rows) return;
    for (auto& row : rows_) row.selected = true;
    Tell(Change::Selection);
}

void Grid_Model::Select_Range(int first, int last, bool selected)
{
    for (int row = std::min(first, last); row <= std::max(first, last); ++row)
        if (auto* record = Row_At(row)) record->selected = selected;
}

void Grid_Model::SelectRowClick(int Button, int Shift, int New_Click_Row)
{
    const int mode = SelectionMode();
    if (mode == No_Rows) return;
    auto* clicked = Row_At(New_Click_Row);
    if (!clicked) return mode == Toggled_Rows ? void() : SelectedRowsClear();
    if ((Button & Right_Button) != 0 && clicked->selected) return;
    const bool toggles = (Shift & Control_Key) != 0 || (mode == Toggled_Rows && (Button & Right_Button) == 0);
    const int anchor = Display_Row(anchor_stored_row_);
    if (mode != One_Row && (Shift & Shift_Key) != 0 && anchor != 0) {
        if (!toggles) Select_Range(1, Rows(), false);
        Select_Range(anchor, New_Click_Row, true);
    } else {
        const bool down = !toggles || !clicked->selected;
        if (!toggles || mode == One_Row) Select_Range(1, Rows(), false);
        clicked->selected = down;
        anchor_stored_row_ = Stored_Row(New_Click_Row);
    }
    Tell(Change::Selection);
}

void Grid_Model::Cut_Selection_To_Mode()
{
    const int keep = SelectionMode() == One_Row ? SelectedRow() : 0;
    if (SelectionMode() >= Several_Rows || SelectedRowsCount() == (keep != 0)) return;
    Select_Range(1, Rows(), false);
    if (auto* row = Row_At(keep)) row->selected = true;
    Tell(Change::Selection);
}

std::vector<int> Grid_Model::SelectedRowsReturn() const
{
    std::vector<int> rows;
    for (int row = 1; row <= Rows(); ++row)
        if (SelectedRowTest(row)) rows.push_back(row);
    return rows;
}

int Grid_Model::SelectedRowsCount() const
{
    return int(std::count_if(rows_.begin(), rows_.end(), [](const auto& row) { return row.selected; }));
}

QVariant Grid_Model::SelectionReturn() const
{
    QVariantList rows;
    for (const int row : SelectedRowsReturn()) rows.append(QVariant(Row_Values(Stored_Row(row))));
    return rows;
}

int Grid_Model::SelectedRow() const
{
    for (int row = 1; row <= Rows(); ++row)
        if (SelectedRowTest(row)) return row;
    return 0;
}

bool Grid_Model::SelectedRowTest(int Grid_Row) const
{
    const auto* row = Row_At(Grid_Row);
    return row && row->selected;
}

int Grid_Model::ActiveRow() const
{
    return Display_Row(active_stored_row_);
}

void Grid_Model::Set_Active(int Grid_Column, int Grid_Row)
{
    const int column = Grid_Column >= 1 && Grid_Column <= Columns() ? Grid_Column : 0;
    const int stored = column == 0 ? 0 : Stored_Row(Grid_Row);
    if (active_stored_row_ == stored && active_column_ == column) return;
    active_stored_row_ = stored;
    active_column_ = stored == 0 ? 0 : column;
    active_selection_start_ = active_selection_length_ = 0;
    Tell(Change::Active);
}

int Grid_Model::ActiveSelStart() const
{
    return std::min(active_selection_start_, int(ActiveText().size()));
}

int Grid_Model::ActiveSelLength() const
{
    return std::min(active_selection_length_, int(ActiveText().size()) - ActiveSelStart());
}

void Grid_Model::Set_ActiveSelection(int New_Start, int New_Length)
{
    active_selection_start_ = std::max(0, New_Start);
    active_selection_length_ = std::max(0, New_Length);
}

bool Grid_Model::Set_ActiveSelText(const QString& New_Text)
{
    const int start = ActiveSelStart();
    auto text = ActiveText();
    if (!Set_ActiveText(text.replace(start, ActiveSelLength(), New_Text))) return false;
    Set_ActiveSelection(start + int(New_Text.size()), 0);
    return true;
}
