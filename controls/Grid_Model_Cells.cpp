#include "controls/Grid_Model.h"
#include "controls/Value_Format.h"
#include "frame/text/Text_Utilities.h"
#include <limits>

namespace {

constexpr qsizetype Most_Text = 32767; // of one edited value

/// The value that a user's text means in a column, or nothing.
std::optional<QVariant> Number_From_User(const QString& text, int data_type)
{
    const auto number = Double_From_Text(text.trimmed());
    if (!number) return {};
    const auto fits = [&](double low, double high) { return *number >= low && *number <= high; };
    switch (Grid_Data_Type(data_type)) {
    case Grid_Data_Type::Byte: return fits(0, 255) ? std::optional<QVariant>(Round_Half_Even(*number)) : std::nullopt;
    case Grid_Data_Type::Integer:
        return fits(-32768, 32767) ? std::optional<QVariant>(Round_Half_Even(*number)) : std::nullopt;
    case Grid_Data_Type::Long:
        return fits(std::numeric_limits<int>::min(), std::numeric_limits<int>::max())
                   ? std::optional<QVariant>(Round_Half_Even(*number))
                   : std::nullopt;
    case Grid_Data_Type::Single: return QVariant(float(*number));
    default: return QVariant(*number);
    }
}

std::optional<QVariant> Date_From_User(const QString& text)
{
    for (const auto* format : {"M/d/yyyy h:mm:ss AP", "M/d/yyyy h:mm AP", "M/d/yyyy H:mm:ss", "M/d/yyyy H:mm",
                               "M/d/yyyy", "yyyy-MM-dd HH:mm:ss", "yyyy-MM-dd", "d-MMM-yyyy"}) {
        const auto when = QLocale::c().toDateTime(text.trimmed(), QLatin1String(format));
        if (when.isValid()) return QVariant(when);
    }
    return {};
}

std::optional<QVariant> Boolean_From_User(const QString& text)
{
    for (const auto* word : {"true", "yes", "on", "1", "-1"})
        if (text.trimmed().compare(QLatin1String(word), Qt::CaseInsensitive) == 0) return QVariant(true);
    for (const auto* word : {"false", "no", "off", "0"})
        if (text.trimmed().compare(QLatin1String(word), Qt::CaseInsensitive) == 0) return QVariant(false);
    return {};
}

std::optional<QVariant> Value_From_User(const QString& text, const Grid_Column_Record& column)
{
    const auto type = Grid_Data_Type(column.data_type);
    const bool is_text = type == Grid_Data_Type::Any || type == Grid_Data_Type::String;
    if (text.isEmpty() && !is_text) return QVariant();
    switch (type) {
    case Grid_Data_Type::Any:
    case Grid_Data_Type::Null:
    case Grid_Data_Type::String: return QVariant(text);
    case Grid_Data_Type::Date: return Date_From_User(text);
    case Grid_Data_Type::Boolean: return Boolean_From_User(text);
    case Grid_Data_Type::Byte:
    case Grid_Data_Type::Integer:
    case Grid_Data_Type::Long:
    case Grid_Data_Type::Single:
    case Grid_Data_Type::Double:
    case Grid_Data_Type::Currency: return Number_From_User(text, column.data_type);
    }
    return QVariant(text); // a type of the host's own is text here
}

bool Is_Number(Grid_Data_Type type)
{
    switch (type) {
    case Grid_Data_Type::Integer:
    case Grid_Data_Type::Long:
    case Grid_Data_Type::Single:
    case Grid_Data_Type::Double:
    case Grid_Data_Type::Currency:
    case Grid_Data_Type::Byte: return true;
    case Grid_Data_Type::Any:
    case Grid_Data_Type::Null:
    case Grid_Data_Type::Date:
    case Grid_Data_Type::String:
    case Grid_Data_Type::Boolean: break;
    }
    return false;
}

QString Usual_Format(Grid_Data_Type type)
{
    if (type == Grid_Data_Type::Boolean) return QStringLiteral("Yes/No");
    if (!Is_Number(type)) return {};
    const bool whole = type == Grid_Data_Type::Integer || type == Grid_Data_Type::Long || type == Grid_Data_Type::Byte;
    return whole ? QStringLiteral("#,##0") : QStringLiteral("Standard");
}

/// The kind that counts in a column: a number in a date column is a date.
Grid_Data_Type Shown_Type(const QVariant& value, const Grid_Column_Record& column)
{
    const auto type = Data_Type_Of(value);
    const bool is_text = type == Grid_Data_Type::String || type == Grid_Data_Type::Null;
    return column.data_type == int(Grid_Data_Type::Date) && !is_text ? Grid_Data_Type::Date : type;
}

bool Choice_Allowed(const QString& text, const Grid_Column_Record& column, bool free_text)
{
    return column.control != Grid_Column_Control::List || free_text || column.data.toStringList().contains(text);
}

} // namespace

Grid_Cell* Grid_Model::Cell_At(int Grid_Column, int Grid_Row)
{
    if (!Has_Cell(Grid_Column, Grid_Row)) return nullptr;
    Own_Cells(Stored_Row(Grid_Row));
    return &Row_At(Grid_Row)->cells[std::size_t(Grid_Column - 1)];
}

const Grid_Cell* Grid_Model::Cell_At(int Grid_Column, int Grid_Row) const
{
    if (!Has_Cell(Grid_Column, Grid_Row)) return nullptr;
    const auto& cells = Row_At(Grid_Row)->cells;
    return cells.empty() ? nullptr : &cells[std::size_t(Grid_Column - 1)];
}

bool Grid_Model::Has_Cell(int Grid_Column, int Grid_Row) const
{
    return Stored_Row(Grid_Row) != 0 && Grid_Column >= 1 && Grid_Column <= Columns();
}

Grid_Cell::Extra* Grid_Model::Extra_At(int Grid_Column, int Grid_Row)
{
    auto* cell = Cell_At(Grid_Column, Grid_Row);
    if (!cell) return nullptr;
    if (!cell->extra) cell->extra = std::make_unique<Grid_Cell::Extra>();
    return cell->extra.get();
}

QVariant Grid_Model::CellValue(int Grid_Column, int Grid_Row) const
{
    return Has_Cell(Grid_Column, Grid_Row) ? Stored_Value(Stored_Row(Grid_Row), Grid_Column) : QVariant();
}

void Grid_Model::Set_CellValue(int Grid_Column, int Grid_Row, const QVariant& New_Value)
{
    auto* cell = Cell_At(Grid_Column, Grid_Row);
    if (!cell) return;
    cell->value = New_Value;
    Mark(Change::Content);
}

// The format of the value's own type wins.
QString Grid_Model::CellText(int Grid_Column, int Grid_Row) const
{
    const auto value = CellValue(Grid_Column, Grid_Row);
    const auto& column = Column(Grid_Column);
    const auto type = Shown_Type(value, column);
    auto format = column.format.value(int(type), column.format.value(int(Grid_Data_Type::Any)));
    if (format.isEmpty() && type == Grid_Data_Type::Date) format = QStringLiteral("General Date");
    if (format.isEmpty() && Is_On(Grid_Property::DataFormat)) format = Usual_Format(type);
    return Format_Value(value, format);
}

Grid_Text_Align Grid_Model::CellAlign(int Grid_Column, int Grid_Row) const
{
    const auto& column = Column(Grid_Column);
    if (Is_On(Grid_Property::DataAlign)) {
        const auto type = Shown_Type(CellValue(Grid_Column, Grid_Row), column);
        if (type == Grid_Data_Type::Date || Is_Number(type)) return Grid_Text_Align::Right;
        if (type == Grid_Data_Type::Boolean) return Grid_Text_Align::Center;
    }
    return ColumnTextAlign(Grid_Column);
}

QString Grid_Model::Cell_Image(int Grid_Column, int Grid_Row) const
{
    const auto& column = Column(Grid_Column);
    const auto names = column.data_images.toStringList();
    if (names.isEmpty() || Grid_Render_Mode(column.render_mode) == Grid_Render_Mode::Text) return {};
    return names.value(column.data.toStringList().indexOf(CellText(Grid_Column, Grid_Row)));
}

QVariant Grid_Model::CellPreviousValue(int Grid_Column, int Grid_Row) const
{
    const auto* cell = Cell_At(Grid_Column, Grid_Row);
    return cell && cell->extra ? cell->extra->previous_value : QVariant();
}

std::optional<Stored_Color> Grid_Model::CellBackColor(int Grid_Column, int Grid_Row) const
{
    const auto* cell = Cell_At(Grid_Column, Grid_Row);
    return cell && cell->extra ? cell->extra->back_color : std::nullopt;
}

void Grid_Model::Set_CellBackColor(int Grid_Column, int Grid_Row, std::optional<Stored_Color> New_Color)
{
    if (auto* extra = Extra_At(Grid_Column, Grid_Row)) {
        extra->back_color = New_Color;
        Mark(Change::Content);
    }
}

std::optional<Stored_Color> Grid_Model::CellForeColor(int Grid_Column, int Grid_Row) const
{
    const auto* cell = Cell_At(Grid_Column, Grid_Row);
    return cell && cell->extra ? cell->extra->fore_color : std::nullopt;
}

void Grid_Model::Set_CellForeColor(int Grid_Column, int Grid_Row, std::optional<Stored_Color> New_Color)
{
    if (auto* extra = Extra_At(Grid_Column, Grid_Row)) {
        extra->fore_color = New_Color;
        Mark(Change::Content);
    }
}

bool Grid_Model::CellHidden(int Grid_Column, int Grid_Row) const
{
    const auto* cell = Cell_At(Grid_Column, Grid_Row);
    return cell && cell->extra && cell->extra->hidden;
}

void Grid_Model::Set_CellHidden(int Grid_Column, int Grid_Row, bool New_Hidden)
{
    if (auto* extra = Extra_At(Grid_Column, Grid_Row)) {
        extra->hidden = New_Hidden;
        Mark(Change::Content);
    }
}

int Grid_Model::CellAttribute(int Grid_Column, int Grid_Row) const
{
    const auto* cell = Cell_At(Grid_Column, Grid_Row);
    return cell && cell->extra ? cell->extra->attribute : 0;
}

void Grid_Model::Set_CellAttribute(int Grid_Column, int Grid_Row, int New_Attribute)
{
    if (auto* extra = Extra_At(Grid_Column, Grid_Row)) {
        extra->attribute = New_Attribute;
        Mark(Change::Content);
    }
}

bool Grid_Model::Cell_Editable(int Grid_Column, int Grid_Row) const
{
    return Is_On(Grid_Property::AllowUpdate) && Has_Cell(Grid_Column, Grid_Row) && Column(Grid_Column).allow_update &&
           !CellHidden(Grid_Column, Grid_Row) && (CellAttribute(Grid_Column, Grid_Row) & Cell_Locked) == 0;
}

bool Grid_Model::Edit_Cell(int Grid_Column, int Grid_Row, const QString& text)
{
    if (!Cell_Editable(Grid_Column, Grid_Row)) return false;
    const auto& column = Column(Grid_Column);
    const auto most = column.field_size > 0 ? qsizetype(column.field_size) : Most_Text;
    if (text.size() > most || !Choice_Allowed(text, column, Is_On(Grid_Property::AllowColumnControlUpdate)))
        return false;
    const auto value = Value_From_User(text, column);
    if (!value) return false;
    Extra_At(Grid_Column, Grid_Row)->previous_value = CellValue(Grid_Column, Grid_Row);
    Row_At(Grid_Row)->changed = true;
    Set_CellValue(Grid_Column, Grid_Row, *value);
    return true;
}

bool Grid_Model::Set_ActiveText(const QString& New_Text)
{
    const auto value = ActiveRow() == 0 ? std::nullopt : Value_From_User(New_Text, Column(ActiveColumn()));
    if (value) Set_ActiveValue(*value);
    return value.has_value();
}

QVariantList Grid_Model::Row_Values(int stored_row) const
{
    QVariantList values;
    values.reserve(Columns());
    for (int column = 1; column <= Columns(); ++column) values.append(Stored_Value(stored_row, column));
    return values;
}

QVariant Grid_Model::GridData() const
{
    QVariantList rows;
    for (const int stored : row_map_) rows.append(QVariant(Row_Values(stored + 1)));
    return rows;
}

void Grid_Model::Set_GridData(const QVariant& New_Data)
{
    const auto data = New_Data.toList();
    qsizetype columns = 0;
    for (const auto& row : data) columns = std::max(columns, row.toList().size());
    source_ = nullptr;
    Resize_Rows(0);
    if (columns > 0) properties_.Set_Value(Grid_Property::Columns, columns);
    Resize_Columns(Value(Grid_Property::Columns));
    properties_.Set_Value(Grid_Property::Rows, data.size());
    Resize_Rows(Value(Grid_Property::Rows));
    active_column_ = 0;
    for (int row = 0; row < Rows(); ++row) {
        const auto values = data[row].toList();
        Own_Cells(row + 1);
        for (int i = 0; i < values.size(); ++i) rows_[std::size_t(row)].cells[std::size_t(i)].value = values[i];
    }
    sort_keys_.clear();
    sort_pending_ = false;
    Mark(Change::Layout);
    Tell(Change::Selection);
}

QString Grid_Model::Copied_Text() const
{
    if (!Is_On(Grid_Property::AllowCopy)) return {};
    QStringList lines;
    for (const int row : SelectedRowsReturn()) {
        QStringList texts;
        for (int column = 1; column <= Columns(); ++column)
            texts += CellHidden(column, row) ? QString() : CellText(column, row);
        lines += texts.join(QLatin1Char('\t'));
    }
    if (lines.isEmpty()) return ActiveText(); // without a selected row the cell with the focus
    return lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}
