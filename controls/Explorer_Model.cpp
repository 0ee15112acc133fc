#include "controls/Explorer_Model.h"

#include "frame/text/Text_Utilities.h"
#include <QtCore/QCoreApplication>
#include <QtCore/QSet>

namespace {

struct Explorer_Column {
    const char* title;
    Grid_Data_Type type;
    const char* format;
    int width;
    bool right;
};
constexpr Explorer_Column File_Columns[] = {
    {QT_TRANSLATE_NOOP("Explorer_Model", "Name"), Grid_Data_Type::String, "", 160, false},
    {QT_TRANSLATE_NOOP("Explorer_Model", "Type"), Grid_Data_Type::String, "", 70, false},
    {QT_TRANSLATE_NOOP("Explorer_Model", "Last Modified"), Grid_Data_Type::Date, "General Date", 150, false},
    {QT_TRANSLATE_NOOP("Explorer_Model", "Size"), Grid_Data_Type::Long, "#,##0\"KB\"", 70, true},
};
constexpr Explorer_Column Folder_Columns[] = {
    {QT_TRANSLATE_NOOP("Explorer_Model", "Folder Name"), Grid_Data_Type::String, "", 160, false},
    {QT_TRANSLATE_NOOP("Explorer_Model", "Folder Created"), Grid_Data_Type::Date, "Short Date", 110, false},
    {QT_TRANSLATE_NOOP("Explorer_Model", "Files Modified"), Grid_Data_Type::Date, "General Date", 150, false},
};

Grid_Column_Record Record_Of(const Explorer_Column& column)
{
    Grid_Column_Record record;
    record.header_text = QCoreApplication::translate("Explorer_Model", column.title);
    record.data_type = int(column.type);
    if (*column.format) record.format[int(Grid_Data_Type::Any)] = QLatin1String(column.format);
    record.width = column.width;
    record.allow_update = false;
    const auto align = column.right ? Grid_Text_Align::Right : Grid_Text_Align::Left;
    record.text_align = int(align);
    record.header_text_align = align;
    return record;
}

} // namespace

void Explorer_Model::Initialize_Columns()
{
    if (columns_for_ == int(Mode)) return;
    columns_for_ = int(Mode);
    const bool files = Mode == Explorer_Grid_Mode::Files;
    const std::span<const Explorer_Column> columns =
        files ? std::span<const Explorer_Column>(File_Columns) : std::span<const Explorer_Column>(Folder_Columns);
    entries_.clear();
    grid_.Clear_Sort_Keys();
    grid_.Set_Rows(0);
    grid_.Set_Columns(int(columns.size()));
    for (std::size_t i = 0; i < columns.size(); ++i)
        grid_.Change_Column(int(i) + 1, [&](auto& record) { record = Record_Of(columns[i]); });
    grid_.Update();
}

void Explorer_Model::Set_Path(const QString& New_Path)
{
    explicit_ = false;
    if (New_Path == Path) return;
    PreviousPath = std::exchange(Path, New_Path);
}

Folder_Question Explorer_Model::Question() const
{
    auto pattern = Pattern;
    if (!PatternSeparator.isEmpty()) pattern.replace(PatternSeparator, QStringLiteral(";"));
    return {.folder = Path, .pattern = pattern, .folders = Mode == Explorer_Grid_Mode::Folders, .hidden = Hidden};
}

bool Explorer_Model::Refresh()
{
    explicit_ = false;
    Initialize_Columns();
    if (Before_Listing && !Path.isEmpty()) Before_Listing(Path);
    auto listed = List_Folder(Question());
    error_text_ = listed ? QString() : QString::fromStdString(listed.error().text);
    Fill(listed ? std::move(*listed) : std::vector<Folder_Entry>());
    return error_text_.isEmpty();
}

bool Explorer_Model::Is_Stale() const
{
    if (explicit_) return false;
    const auto listed = List_Folder(Question());
    return listed ? *listed != entries_ : error_text_.isEmpty();
}

void Explorer_Model::Show_Files(const QStringList& File_List)
{
    Mode = Explorer_Grid_Mode::Files;
    Initialize_Columns();
    explicit_ = true;
    error_text_.clear();
    Fill(List_Files(File_List));
}

std::vector<QString> Explorer_Model::Selected_Names() const
{
    std::vector<QString> names;
    for (const int row : grid_.SelectedRowsReturn()) names.push_back(Name_At(row));
    return names;
}

void Explorer_Model::Add_Row_Values(int Grid_Row, const Folder_Entry& entry)
{
    grid_.Set_CellValue(1, Grid_Row, entry.name);
    if (Mode == Explorer_Grid_Mode::Folders) {
        grid_.Set_CellValue(2, Grid_Row, entry.created);
        grid_.Set_CellValue(3, Grid_Row, entry.modified);
        return;
    }
    grid_.Set_CellValue(2, Grid_Row, File_Type_Text(entry.name));
    grid_.Set_CellValue(3, Grid_Row, entry.modified);
    grid_.Set_CellValue(4, Grid_Row, qlonglong(Kilobytes(entry.bytes)));
}

// All changes come to the view as one: painting waits until the rows are complete and in order.
void Explorer_Model::Fill(std::vector<Folder_Entry> entries)
{
    const auto names = Selected_Names();
    const QSet<QString> selected(names.begin(), names.end());
    const auto active_name = Name_At(grid_.ActiveRow());
    const int active_column = grid_.ActiveColumn();
    const bool painting = grid_.AutoPaint();
    grid_.Set_AutoPaint(false);
    grid_.Set_Rows(0);
    entries_ = std::move(entries);
    grid_.Set_Rows(int(entries_.size()));
    int active_row = 0;
    std::vector<int> selected_rows;
    for (int row = 1; row <= int(entries_.size()); ++row) {
        const auto& entry = entries_[std::size_t(row - 1)];
        Add_Row_Values(row, entry);
        if (selected.contains(entry.name)) selected_rows.push_back(row);
        if (entry.name == active_name) active_row = row;
    }
    grid_.Select_Rows(selected_rows);
    if (active_row > 0) grid_.Set_Active(active_column, active_row);
    if (!grid_.Sort_Keys().empty()) {
        const int last = grid_.Sort_Keys().back();
        grid_.SortColumn(last, grid_.Column(last).sort_order, true);
    }
    grid_.Update();
    grid_.Set_AutoPaint(painting);
}

QString Explorer_Model::Name_At(int Grid_Row) const
{
    const int stored = grid_.Stored_Row(Grid_Row);
    return stored >= 1 && stored <= int(entries_.size()) ? entries_[std::size_t(stored - 1)].name : QString();
}

QString Explorer_Model::Path_At(int Grid_Row) const
{
    const auto name = Name_At(Grid_Row);
    return name.isEmpty() || explicit_ ? name : With_Trailing_Separator(Path) + name;
}

QStringList Explorer_Model::Selected_Paths() const
{
    QStringList paths;
    for (const int row : grid_.SelectedRowsReturn()) paths += Path_At(row);
    paths.removeAll(QString());
    return paths;
}
