#include "controls/Grid_Properties.h"

namespace {

using Type = Grid_Property_Facts::Type;
using P = Grid_Property;

constexpr Grid_Property_Facts Property_Table[] = {
    {P::Rows, "Rows", Type::Integer, 2},
    {P::Columns, "Columns", Type::Integer, 2},
    {P::ColumnHeadings, "ColumnHeadings", Type::Boolean, true},
    {P::RowHeadings, "RowHeadings", Type::Boolean, true},
    {P::HorzLines, "HorzLines", Type::Boolean, true},
    {P::VertLines, "VertLines", Type::Boolean, true},
    {P::HorzLinesColor, "HorzLinesColor", Type::Long, System_Color(16)},
    {P::VertLinesColor, "VertLinesColor", Type::Long, System_Color(16)},
    {P::BackColor, "BackColor", Type::Long, System_Color(5)},
    {P::ForeColor, "ForeColor", Type::Long, System_Color(8)},
    {P::PanelColor, "PanelColor", Type::Long, System_Color(15)},
    {P::TextAlign, "TextAlign", Type::Long, 0},
    {P::DataAlign, "DataAlign", Type::Boolean, false},
    {P::DataFormat, "DataFormat", Type::Boolean, false},
    {P::SelectionMode, "SelectionMode", Type::Long, 1},
    {P::AllowAddNew, "AllowAddNew", Type::Boolean, false},
    {P::AllowColumnControlUpdate, "AllowColumnControlUpdate", Type::Boolean, false},
    {P::AllowColumnSizing, "AllowColumnSizing", Type::Boolean, false},
    {P::AllowColumnSort, "AllowColumnSort", Type::Boolean, false},
    {P::AllowCopy, "AllowCopy", Type::Boolean, false},
    {P::AllowExpression, "AllowExpression", Type::Boolean, false},
    {P::AllowUpdate, "AllowUpdate", Type::Boolean, false},
    {P::AllowCellRowSelect, "AllowCellRowSelect", Type::Boolean, true},
    {P::SortNullSmallest, "SortNullSmallest", Type::Boolean, true},
    {P::ToolTipEnabled, "ToolTipEnabled", Type::Boolean, false},
    {P::ColumnInitialWidth, "ColumnInitialWidth", Type::Integer, 75},
    {P::TabBehavior, "TabBehavior", Type::Long, 0},
    {P::AutoPaint, "AutoPaint", Type::Boolean, false},
    {P::ScrollTrack, "ScrollTrack", Type::Boolean, false},
    {P::RowColorMode, "RowColorMode", Type::Long, 0},
    {P::RowColor, "RowColor", Type::Long, System_Color(5)},
    {P::RowInitialHeight, "RowInitialHeight", Type::Integer, 18},
};

constexpr bool Rows_Describe_Their_Values()
{
    for (int i = 0; i < Grid_Property_Count; ++i)
        if (int(Property_Table[i].property) != i) return false;
    return true;
}
static_assert(std::size(Property_Table) == Grid_Property_Count && Rows_Describe_Their_Values());

constexpr std::int64_t Most_Rows = 10'000'000;

bool Can_Take(Grid_Property property, std::int64_t value)
{
    switch (property) {
    case P::SelectionMode: return value >= 0 && value <= 3;
    case P::Rows:
    case P::Columns: return value >= 0 && value <= Most_Rows;
    case P::ColumnInitialWidth:
    case P::RowInitialHeight: return value >= 0 && value <= 32767;
    // clang-format off
    case P::ColumnHeadings: case P::RowHeadings: case P::HorzLines: case P::VertLines: case P::HorzLinesColor:
    case P::VertLinesColor: case P::BackColor: case P::ForeColor: case P::PanelColor: case P::TextAlign:
    case P::DataAlign: case P::DataFormat: case P::AllowAddNew: case P::AllowColumnControlUpdate:
    case P::AllowColumnSizing: case P::AllowColumnSort: case P::AllowCopy: case P::AllowExpression: case P::AllowUpdate:
    case P::AllowCellRowSelect: case P::SortNullSmallest: case P::ToolTipEnabled: case P::TabBehavior:
    case P::AutoPaint: case P::ScrollTrack: case P::RowColorMode: case P::RowColor:
        break;
        // clang-format on
    }
    return true;
}

} // namespace

const Grid_Property_Facts& Facts_Of(Grid_Property property)
{
    return Property_Table[std::size_t(property)];
}

std::optional<Grid_Property> Grid_Property_From_Name(const QString& name)
{
    for (const auto& facts : Property_Table)
        if (name == QLatin1String(facts.name)) return facts.property;
    return {};
}

Grid_Properties::Grid_Properties()
{
    for (const auto& facts : Property_Table) values_[std::size_t(facts.property)] = facts.initial;
}

bool Grid_Properties::Set_Value(Grid_Property property, std::int64_t value)
{
    if (!Can_Take(property, value)) return false;
    if (Facts_Of(property).type == Type::Boolean) value = value != 0;
    auto& kept = values_[std::size_t(property)];
    // A colour may come as a negative Long.
    if (Facts_Of(property).type == Type::Long && Facts_Of(property).initial > 0x7FFFFFFF) value &= 0xFFFFFFFF;
    return std::exchange(kept, value) != value;
}

QVariantMap Grid_Properties::Stored() const
{
    QVariantMap store;
    for (const auto& facts : Property_Table) {
        const auto value = Value(facts.property);
        store[QLatin1String(facts.name)] =
            facts.type == Type::Boolean ? QVariant(value != 0) : QVariant(qlonglong(value));
    }
    return store;
}

void Grid_Properties::Read_Stored(const QVariantMap& store)
{
    for (const auto& facts : Property_Table) {
        values_[std::size_t(facts.property)] = facts.initial;
        const auto stored = store.value(QLatin1String(facts.name));
        if (facts.type == Type::Boolean && stored.isValid()) {
            const auto text = stored.toString();
            bool is_number = false;
            const auto number = text.toDouble(&is_number);
            const bool is_word = text.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0 ||
                                 text.compare(QLatin1String("false"), Qt::CaseInsensitive) == 0;
            if (is_number || is_word) Set_Value(facts.property, is_number ? number != 0 : stored.toBool());
            continue;
        }
        bool is_number = false;
        const auto value = stored.toLongLong(&is_number);
        if (is_number) Set_Value(facts.property, value);
    }
}
