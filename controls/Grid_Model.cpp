#include "controls/Grid_Model.h"

#include <numeric>

Grid_Model::Grid_Model()
{
    Resize_Columns(Value(Grid_Property::Columns));
    Resize_Rows(Value(Grid_Property::Rows));
}

void Grid_Model::Set(Grid_Property property, std::int64_t value)
{
    if (!properties_.Set_Value(property, value)) return;
    const int selected_before = property == Grid_Property::Rows ? SelectedRowsCount() : 0;
    if (property == Grid_Property::Rows) Resize_Rows(Value(property));
    if (property == Grid_Property::Columns) Resize_Columns(Value(property));
    if (property == Grid_Property::SelectionMode) Cut_Selection_To_Mode();
    if (property == Grid_Property::AutoPaint) {
        if (AutoPaint()) Update();
        return;
    }
    Mark(Change::Layout);
    if (property == Grid_Property::Rows && SelectedRowsCount() != selected_before) Tell(Change::Selection);
}

void Grid_Model::Read_Properties(const QVariantMap& store)
{
    properties_.Read_Stored(store);
    for (auto& column : columns_) column.width = Value(Grid_Property::ColumnInitialWidth);
    for (auto& row : rows_) row.height = Value(Grid_Property::RowInitialHeight);
    Resize_Columns(Value(Grid_Property::Columns));
    Resize_Rows(Value(Grid_Property::Rows));
    Cut_Selection_To_Mode();
    Mark(Change::Layout);
}

const Grid_Column_Record& Grid_Model::Column(int Grid_Column) const
{
    static const Grid_Column_Record no_column;
    return Grid_Column >= 1 && Grid_Column <= Columns() ? columns_[std::size_t(Grid_Column - 1)] : no_column;
}

void Grid_Model::Change_Column(int Grid_Column, const std::function<void(Grid_Column_Record&)>& change)
{
    if (Grid_Column < 1 || Grid_Column > Columns()) return;
    change(columns_[std::size_t(Grid_Column - 1)]);
    Mark(Change::Layout);
}

Grid_Text_Align Grid_Model::ColumnTextAlign(int Grid_Column) const
{
    return Grid_Text_Align(Column(Grid_Column).text_align.value_or(Value(Grid_Property::TextAlign)));
}

std::vector<int> Grid_Model::Column_Widths(int available) const
{
    std::vector<int> widths;
    std::int64_t rest = available;
    std::int64_t shares = 0;
    for (const auto& column : columns_) {
        widths.push_back(column.width);
        if (column.width_proportional > 0)
            shares += column.width_proportional;
        else
            rest -= column.width;
    }
    // What is left goes column by column, so that the widths add up to it exactly.
    for (std::size_t i = 0; i < columns_.size() && rest > 0; ++i) {
        const std::int64_t share = columns_[i].width_proportional;
        if (share <= 0) continue;
        widths[i] = int(rest * share / shares);
        rest -= widths[i];
        shares -= share;
    }
    return widths;
}

Grid_Column_Record Grid_Model::New_Column() const
{
    Grid_Column_Record column;
    column.width = Value(Grid_Property::ColumnInitialWidth);
    return column;
}

void Grid_Model::Resize_Columns(int count)
{
    while (Columns() < count) columns_.push_back(New_Column());
    columns_.resize(std::size_t(count));
    for (auto& row : rows_)
        if (!row.cells.empty()) row.cells.resize(std::size_t(count));
    if (active_column_ > count) active_column_ = count;
}

void Grid_Model::InsertColumns(int Grid_Column, int Column_Count)
{
    if (Column_Count < 1 || Grid_Column < 1 || Grid_Column > Columns() + 1) return;
    const std::int64_t count = std::int64_t(Columns()) + Column_Count;
    if (!properties_.Set_Value(Grid_Property::Columns, count)) return;
    Own_All_Cells();
    columns_.insert(columns_.begin() + (Grid_Column - 1), std::size_t(Column_Count), New_Column());
    for (auto& row : rows_) {
        if (row.cells.empty()) continue;
        const auto old_count = row.cells.size();
        row.cells.resize(std::size_t(count));
        std::rotate(row.cells.begin() + (Grid_Column - 1), row.cells.begin() + std::ptrdiff_t(old_count),
                    row.cells.end());
    }
    for (auto& key : sort_keys_)
        if (key >= Grid_Column) key += Column_Count;
    if (active_column_ >= Grid_Column) active_column_ += Column_Count;
    Mark(Change::Layout);
}

void Grid_Model::DeleteColumns(int Grid_Column, int Column_Count)
{
    if (Grid_Column < 1 || Grid_Column > Columns() || Column_Count < 1) return;
    Column_Count = std::min(Column_Count, Columns() - Grid_Column + 1);
    Own_All_Cells();
    const auto first = Grid_Column - 1;
    columns_.erase(columns_.begin() + first, columns_.begin() + first + Column_Count);
    for (auto& row : rows_)
        if (!row.cells.empty()) row.cells.erase(row.cells.begin() + first, row.cells.begin() + first + Column_Count);
    properties_.Set_Value(Grid_Property::Columns, Columns());
    std::erase_if(sort_keys_, [&](int key) { return key >= Grid_Column && key < Grid_Column + Column_Count; });
    for (auto& key : sort_keys_)
        if (key > Grid_Column) key -= Column_Count;
    if (active_column_ >= Grid_Column + Column_Count)
        active_column_ -= Column_Count;
    else if (active_column_ >= Grid_Column)
        active_column_ = std::min(Grid_Column, Columns());
    Mark(Change::Layout);
}

void Grid_Model::Mark(Change change)
{
    if (AutoPaint()) return Tell(change);
    changed_ = true;
    layout_changed_ |= change == Change::Layout;
}

void Grid_Model::Tell(Change change) const
{
    if (On_Change) On_Change(change);
}

void Grid_Model::Update()
{
    if (sort_pending_) Sort_Now();
    if (!std::exchange(changed_, false)) return;
    Tell(std::exchange(layout_changed_, false) ? Change::Layout : Change::Content);
}

int Grid_Model::Sort_Direction(int Grid_Column) const
{
    const auto& column = Column(Grid_Column);
    if (column.sort_order != 0) return column.sort_order > 0 ? 1 : -1;
    return column.data_type == int(Grid_Data_Type::Date) ? -1 : 1;
}

void Grid_Model::SortColumn(int Column_To_Sort, int Sort_Order, bool Append)
{
    if (Column_To_Sort >= 1 && Column_To_Sort <= Columns())
        columns_[std::size_t(Column_To_Sort - 1)].sort_order = (Sort_Order > 0) - (Sort_Order < 0);
    if (!Append) sort_keys_.clear();
    const bool present = std::find(sort_keys_.begin(), sort_keys_.end(), Column_To_Sort) != sort_keys_.end();
    if (!present) sort_keys_.push_back(Column_To_Sort);
    if (Rows() == 0 || Columns() == 0) return;
    sort_pending_ = true;
    changed_ = true;
    if (AutoPaint()) Update();
}

bool Grid_Model::Header_Click(int Grid_Column, bool Append)
{
    if (!Is_On(Grid_Property::AllowColumnSort) || Grid_Column < 1 || Grid_Column > Columns()) return false;
    const bool again = std::find(sort_keys_.begin(), sort_keys_.end(), Grid_Column) != sort_keys_.end();
    SortColumn(Grid_Column, again ? -Sort_Direction(Grid_Column) : Column(Grid_Column).sort_order, Append);
    return true;
}

void Grid_Model::Sort_Now()
{
    sort_pending_ = false;
    const bool in_range =
        std::all_of(sort_keys_.begin(), sort_keys_.end(), [&](int key) { return key >= 1 && key <= Columns(); });
    if (Rows() < 2 || sort_keys_.empty() || !in_range) return;
    std::vector<Grid_Sort_Key> keys;
    for (const int key : sort_keys_) keys.push_back({key, Sort_Direction(key)});
    row_map_ = Sorted_Row_Map(Rows(), keys, Is_On(Grid_Property::SortNullSmallest),
                              [this](int row, int column) { return Stored_Value(row + 1, column); });
    Refresh_Display_Map();
}
