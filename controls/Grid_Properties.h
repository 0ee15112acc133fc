#pragma once

#include <QtCore/QString>
#include <QtCore/QVariant>
#include <array>
#include <cstdint>
#include <optional>

/// The control properties of a grid: their stored names, types and defaults are rows of one table.

/// A colour as it is stored: 0x00BBGGRR, or 0x80000000 + n for colour n of the system, which follows the theme.
using Stored_Color = std::uint32_t;
constexpr Stored_Color System_Color(unsigned number)
{
    return 0x80000000U + number;
}

enum class Grid_Property : int {
    Rows,
    Columns,
    ColumnHeadings,
    RowHeadings,
    HorzLines,
    VertLines,
    HorzLinesColor,
    VertLinesColor,
    BackColor,
    ForeColor,
    PanelColor,
    TextAlign,
    DataAlign,
    DataFormat,
    SelectionMode,
    AllowAddNew,
    AllowColumnControlUpdate,
    AllowColumnSizing,
    AllowColumnSort,
    AllowCopy,
    AllowExpression,
    AllowUpdate,
    AllowCellRowSelect,
    SortNullSmallest,
    ToolTipEnabled,
    ColumnInitialWidth,
    TabBehavior,
    AutoPaint,
    ScrollTrack,
    RowColorMode,
    RowColor,
    RowInitialHeight,
};
constexpr int Grid_Property_Count = int(Grid_Property::RowInitialHeight) + 1;

struct Grid_Property_Facts {
    enum class Type { Boolean, Integer, Long };
    Grid_Property property;
    const char* name; ///< as it is stored
    Type type;
    std::int64_t initial;
};
const Grid_Property_Facts& Facts_Of(Grid_Property property);
std::optional<Grid_Property> Grid_Property_From_Name(const QString& name); ///< exact names only

class Grid_Properties {
public:
    Grid_Properties(); ///< all at their defaults

    std::int64_t Value(Grid_Property property) const { return values_[std::size_t(property)]; }
    bool Is_On(Grid_Property property) const { return Value(property) != 0; }

    /// Whether the value changed. Values that the property cannot take are ignored: a SelectionMode outside 0 to 3, a
    /// number of rows or columns outside 0 to 10 000 000, a size below 0. Of a Boolean only zero or not counts.
    bool Set_Value(Grid_Property property, std::int64_t value);

    QVariantMap Stored() const; ///< every property under its stored name
    /// Missing names give the default; other names and values that are no numbers are passed over.
    void Read_Stored(const QVariantMap& store);

private:
    std::array<std::int64_t, Grid_Property_Count> values_{};
};
