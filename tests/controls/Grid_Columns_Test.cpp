#include "tests/controls/Grid_Fixture.h"

#include <gtest/gtest.h>

namespace {

struct Property_Row {
    const char* name;
    std::int64_t initial;
    bool boolean = false;
};
constexpr Property_Row Stored_Properties[] = {
    {"Rows", 2},
    {"Columns", 2},
    {"ColumnHeadings", true, true},
    {"RowHeadings", true, true},
    {"HorzLines", true, true},
    {"VertLines", true, true},
    {"HorzLinesColor", 0x80000010},
    {"VertLinesColor", 0x80000010},
    {"BackColor", 0x80000005},
    {"ForeColor", 0x80000008},
    {"PanelColor", 0x8000000F},
    {"TextAlign", 0},
    {"DataAlign", false, true},
    {"DataFormat", false, true},
    {"SelectionMode", 1},
    {"AllowAddNew", false, true},
    {"AllowColumnControlUpdate", false, true},
    {"AllowColumnSizing", false, true},
    {"AllowColumnSort", false, true},
    {"AllowCopy", false, true},
    {"AllowExpression", false, true},
    {"AllowUpdate", false, true},
    {"AllowCellRowSelect", true, true},
    {"SortNullSmallest", true, true},
    {"ToolTipEnabled", false, true},
    {"ColumnInitialWidth", 75},
    {"TabBehavior", 0},
    {"AutoPaint", false, true},
    {"ScrollTrack", false, true},
    {"RowColorMode", 0},
    {"RowColor", 0x80000005},
    {"RowInitialHeight", 18},
};

TEST(Grid_Properties, Start_At_Their_Stored_Defaults)
{
    const auto store = Grid_Model().Write_Properties();
    EXPECT_EQ(int(std::size(Stored_Properties)), store.size());
    for (const auto& row : Stored_Properties) {
        ASSERT_TRUE(store.contains(row.name)) << row.name;
        EXPECT_EQ(row.initial, store[row.name].toLongLong()) << row.name;
        EXPECT_EQ(row.boolean, store[row.name].typeId() == QMetaType::Bool) << row.name;
    }
}

TEST(Grid_Properties, A_Store_That_Is_Read_Counts_For_The_Columns_And_Rows_That_Are_There)
{
    Grid_Model grid;
    grid.Read_Properties({{"ColumnInitialWidth", 120}, {"RowInitialHeight", 30}, {"TextAlign", 1}, {"Columns", 3}});
    for (int column = 1; column <= 3; ++column) {
        EXPECT_EQ(120, grid.ColumnWidth(column));
        EXPECT_EQ(Grid_Text_Align::Right, grid.ColumnTextAlign(column));
    }
    EXPECT_EQ(30, grid.RowHeight(2));
}

TEST(Grid_Properties, Reading_What_Was_Written_Gives_The_Same)
{
    Grid_Model grid;
    for (int i = 0; i < Grid_Property_Count; ++i) grid.Set(Grid_Property(i), i % 2 + 1);
    Grid_Model other;
    other.Read_Properties(grid.Write_Properties());
    EXPECT_EQ(grid.Write_Properties(), other.Write_Properties());
    EXPECT_EQ(grid.Rows(), other.Rows());
}

TEST(Grid_Properties, A_Selection_Mode_Of_Seven_Keeps_The_Old_Mode)
{
    Grid_Model grid;
    grid.Set_SelectionMode(2);
    grid.Set_SelectionMode(7);
    grid.Set_SelectionMode(-1);
    EXPECT_EQ(2, grid.SelectionMode());
}

TEST(Grid_Properties, Damaged_Values_Give_The_Defaults)
{
    Grid_Model grid;
    grid.Read_Properties({{"Rows", "many"}, {"Columns", -4}, {"SelectionMode", 9}, {"AutoPaint", "perhaps"}});
    EXPECT_EQ(2, grid.Rows());
    EXPECT_EQ(2, grid.Columns());
    EXPECT_EQ(1, grid.SelectionMode());
    EXPECT_FALSE(grid.AutoPaint());
}

TEST(Grid_Columns_Test, Inserting_And_Deleting_Moves_Cells_And_Keys)
{
    auto grid = Numbered(2);
    grid.SortColumn(2, 1);
    grid.InsertColumns(1, 2);
    EXPECT_EQ(4, grid.Columns());
    EXPECT_EQ(QVariant(1), grid.CellValue(3, 1));
    EXPECT_EQ(std::vector<int>{4}, grid.Sort_Keys());
    grid.DeleteColumns(2, 99);
    EXPECT_EQ(1, grid.Columns());
    EXPECT_TRUE(grid.Sort_Keys().empty());
}

// Each writes one property of the first column and tells whether it reads back; the second column keeps its own.
template <class Value>
void Expect_Round_Trip(Value (Grid_Columns::*get)(int) const, void (Grid_Columns::*set)(int, Value), Value value)
{
    Grid_Model grid;
    const Value before = (grid.*get)(2);
    (grid.*set)(1, value);
    EXPECT_TRUE((grid.*get)(1) == value);
    EXPECT_TRUE((grid.*get)(2) == before);
    (grid.*set)(3, value); // there is no such column
    EXPECT_TRUE((grid.*get)(3) == before);
}
template <class Value>
void Expect_Round_Trip(Value (Grid_Columns::*get)(int) const, void (Grid_Columns::*set)(int, const Value&), Value value)
{
    Grid_Model grid;
    (grid.*set)(1, value);
    EXPECT_TRUE((grid.*get)(1) == value);
    EXPECT_TRUE((grid.*get)(2) == Value());
}

TEST(Grid_Columns_Test, Every_Property_Is_Read_As_It_Was_Written)
{
    using C = Grid_Columns;
    using Color = std::optional<Stored_Color>;
    Expect_Round_Trip(&C::ColumnControl, &C::Set_ColumnControl, Grid_Column_Control::List);
    Expect_Round_Trip(&C::ColumnData, &C::Set_ColumnData, QVariant(QStringList{"a", "b"}));
    Expect_Round_Trip(&C::ColumnDataImages, &C::Set_ColumnDataImages, QVariant(QStringList{"x"}));
    Expect_Round_Trip(&C::ColumnDataToolTips, &C::Set_ColumnDataToolTips, QVariant(QStringList{"tip"}));
    Expect_Round_Trip(&C::ColumnDataType, &C::Set_ColumnDataType, 7);
    Expect_Round_Trip(&C::ColumnAllowSizing, &C::Set_ColumnAllowSizing, false);
    Expect_Round_Trip(&C::ColumnAllowUpdate, &C::Set_ColumnAllowUpdate, false);
    Expect_Round_Trip(&C::ColumnBackColor, &C::Set_ColumnBackColor, Color(255));
    Expect_Round_Trip(&C::ColumnField, &C::Set_ColumnField, QString("Name"));
    Expect_Round_Trip(&C::ColumnFieldSize, &C::Set_ColumnFieldSize, 40);
    Expect_Round_Trip(&C::ColumnForeColor, &C::Set_ColumnForeColor, Color(0xFF00));
    Expect_Round_Trip(&C::ColumnHeaderForeColor, &C::Set_ColumnHeaderForeColor, Color(1));
    Expect_Round_Trip(&C::ColumnHeaderText, &C::Set_ColumnHeaderText, QString("New Name"));
    Expect_Round_Trip(&C::ColumnHeaderTextAlign, &C::Set_ColumnHeaderTextAlign, Grid_Text_Align::Center);
    Expect_Round_Trip(&C::ColumnRenderMode, &C::Set_ColumnRenderMode, 2);
    Expect_Round_Trip(&C::ColumnSortOrder, &C::Set_ColumnSortOrder, -1);
    Expect_Round_Trip(&C::ColumnWidth, &C::Set_ColumnWidth, 200);
    Expect_Round_Trip(&C::ColumnWidthProportional, &C::Set_ColumnWidthProportional, 3);
}

TEST(Grid_Columns_Test, A_Format_Belongs_To_A_Data_Type)
{
    Grid_Model grid;
    grid.Set_ColumnFormat(1, 3, "#,##0");
    EXPECT_EQ("#,##0", grid.ColumnFormat(1, 3));
    EXPECT_EQ("", grid.ColumnFormat(1, 7));
    grid.Set_CellValue(1, 1, 1234);
    EXPECT_EQ("1,234", grid.CellText(1, 1));
    grid.Set_ColumnFormat(1, 3, "");
    EXPECT_EQ("1234", grid.CellText(1, 1));
}

TEST(Grid_Columns_Test, Align_As_The_Grid_Unless_They_Have_An_Alignment_Of_Their_Own)
{
    Grid_Model grid;
    grid.Set_ColumnTextAlign(1, int(Grid_Text_Align::Center));
    grid.Set(Grid_Property::TextAlign, int(Grid_Text_Align::Right));
    EXPECT_EQ(Grid_Text_Align::Center, grid.CellAlign(1, 1));
    EXPECT_EQ(Grid_Text_Align::Right, grid.CellAlign(2, 1));
    EXPECT_EQ(Grid_Text_Align::Right, grid.ColumnTextAlign(2));
}

TEST(Grid_Columns_Test, Proportional_Columns_Share_What_Is_Left_To_The_Last_Pixel)
{
    Grid_Model grid;
    grid.Set_Columns(3);
    grid.Change_Column(2, [](auto& column) { column.width_proportional = 1; });
    grid.Change_Column(3, [](auto& column) { column.width_proportional = 2; });
    EXPECT_EQ((std::vector<int>{75, 33, 67}), grid.Column_Widths(175));
    EXPECT_EQ((std::vector<int>{75, 75, 75}), grid.Column_Widths(10)) << "nothing is left";
}

} // namespace
