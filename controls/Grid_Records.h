#pragma once

#include "controls/Grid_Properties.h"
#include <QtCore/QMap>
#include <QtCore/QStringList>
#include <QtCore/QVariant>
#include <memory>
#include <vector>

/// What a grid keeps for each column, row and cell.

/// The kinds of value, by the numbers that ColumnDataType and ColumnFormat use.
enum class Grid_Data_Type : int {
    Any = 0,
    Null = 1,
    Integer = 2,
    Long = 3,
    Single = 4,
    Double = 5,
    Currency = 6,
    Date = 7,
    String = 8,
    Boolean = 11,
    Byte = 17,
};
Grid_Data_Type Data_Type_Of(const QVariant& value); ///< Null for an invalid or empty-pointer value

enum class Grid_Column_Control : int { Text = 0, Check = 1, List = 2 };
enum class Grid_Text_Align : int { Left = 0, Right = 1, Center = 2 };
/// What a cell of a column with images shows. A value that has no image shows its text in each case.
enum class Grid_Render_Mode : int { Image_And_Text = 0, Text = 1, Image = 2 };
/// Bits of CellAttribute.
enum Grid_Cell_Attribute : int {
    Cell_Bold = 1,
    Cell_Italic = 2,
    Cell_Underlined = 4,
    Cell_Struck_Out = 8,
    Cell_Locked = 16
};
enum class Grid_Sort_Order : int { Descending = -1, Own = 0, Ascending = 1 }; ///< Own: dates newest first, others up

struct Grid_Column_Record {
    Grid_Column_Control control = Grid_Column_Control::Text;
    QVariant data;           ///< the choices of a List column, a QStringList
    QVariant data_images;    ///< a QStringList of image names, one for each choice; the view knows their pictures
    QVariant data_tool_tips; ///< a QStringList, one for each choice
    int data_type = 0;
    bool allow_sizing = true;
    bool allow_update = true;
    std::optional<Stored_Color> back_color; ///< unset: the grid's
    std::optional<Stored_Color> fore_color;
    QString field;
    int field_size = 0;        ///< characters that the editor takes; 0 is no limit
    QMap<int, QString> format; ///< by data type; type 0 stands for all that have none of their own
    std::optional<Stored_Color> header_fore_color;
    QString header_text;
    Grid_Text_Align header_text_align = Grid_Text_Align::Left;
    int render_mode = 0;           ///< a Grid_Render_Mode
    int sort_order = 0;            ///< a Grid_Sort_Order
    std::optional<int> text_align; ///< a Grid_Text_Align; unset: the grid's TextAlign
    int width = 75;                ///< pixels; 0 hides the column
    int width_proportional = 0;    ///< share of what is left over; 0 keeps the width
};

struct Grid_Cell {
    /// What few cells have; made when it is first set.
    struct Extra {
        QVariant previous_value;
        std::optional<Stored_Color> back_color;
        std::optional<Stored_Color> fore_color;
        bool hidden = false;
        int attribute = 0; ///< bits of Grid_Cell_Attribute
    };
    QVariant value{}; ///< an invalid value is Null
    std::unique_ptr<Extra> extra{};
};

struct Grid_Row_Record {
    int height = 18; ///< pixels; 0 hides the row
    std::optional<Stored_Color> back_color{};
    std::optional<Stored_Color> fore_color{};
    bool changed = false;
    bool selected = false;
    std::vector<Grid_Cell> cells{}; ///< one for each column, or none as long as nothing was written to the row
};
