#include "tests/controls/Grid_Fixture.h"

#include <gtest/gtest.h>

namespace {

TEST(Grid_Rows, Resizing_Keeps_What_Fits)
{
    auto grid = Numbered(4);
    grid.Set_Rows(2);
    grid.Set_Rows(3);
    grid.Set_Columns(3);
    EXPECT_EQ(QVariant(2), grid.CellValue(1, 2));
    EXPECT_FALSE(grid.CellValue(1, 3).isValid());
    EXPECT_EQ(QVariant("row 1"), grid.CellValue(2, 1));
}

TEST(Grid_Rows, A_Number_Of_Rows_Below_Zero_Or_Absurd_Is_Ignored)
{
    auto grid = Numbered(4);
    grid.Set_Rows(-1);
    grid.Set(Grid_Property::Rows, std::int64_t(1) << 40);
    grid.InsertRows(1, 2'000'000'000);
    EXPECT_EQ(4, grid.Rows());
}

TEST(Grid_Rows, Inserted_And_Deleted_Rows_Follow_The_Display_Order)
{
    auto grid = Numbered(3);
    grid.SortColumn(1, -1);
    grid.Update();
    grid.InsertRows(2, 1); // 3 - 2 1
    EXPECT_EQ(QVariant(3), grid.CellValue(1, 1));
    EXPECT_FALSE(grid.CellValue(1, 2).isValid());
    grid.DeleteRows(1, 2); // 2 1
    EXPECT_EQ(2, grid.Rows());
    EXPECT_EQ(QVariant(2), grid.CellValue(1, 1));
    EXPECT_EQ(QVariant(1), grid.CellValue(1, 2));
    for (int row = 1; row <= 2; ++row) EXPECT_EQ(row, grid.Display_Row(grid.Stored_Row(row)));
}

TEST(Grid_Rows, A_Copied_Row_Takes_Values_Alone)
{
    auto grid = Numbered(2);
    grid.Set_CellBackColor(1, 1, 255);
    grid.RowCopy(1, 2);
    grid.RowCopy(1, 99);
    EXPECT_EQ(QVariant(1), grid.CellValue(1, 2));
    EXPECT_EQ(std::nullopt, grid.CellBackColor(1, 2));
}

TEST(Grid_Cells, Text_Is_The_Value_In_The_Format_Of_Its_Type)
{
    Grid_Model grid;
    grid.Change_Column(1, [](auto& column) { column.format[0] = "#,##0\"KB\""; });
    grid.Change_Column(2, [](auto& column) { column.data_type = 7; });
    grid.Set_CellValue(1, 1, 12345);
    grid.Set_CellValue(1, 2, "text");
    grid.Set_CellValue(2, 1, QDateTime(QDate(2026, 3, 14), QTime(15, 9, 26)));
    EXPECT_EQ("12,345KB", grid.CellText(1, 1).toStdString());
    EXPECT_EQ("text", grid.CellText(1, 2).toStdString());
    EXPECT_EQ("3/14/2026 3:09:26 PM", grid.CellText(2, 1).toStdString());
    EXPECT_EQ("", grid.CellText(2, 2).toStdString());
}

TEST(Grid_Cells, An_Edit_Keeps_The_Value_Before_It)
{
    auto grid = Numbered(2);
    EXPECT_FALSE(grid.Edit_Cell(2, 1, "no")) << "AllowUpdate is off by default";
    grid.Set(Grid_Property::AllowUpdate, true);
    EXPECT_TRUE(grid.Edit_Cell(2, 1, "new"));
    EXPECT_EQ(QVariant("new"), grid.CellValue(2, 1));
    EXPECT_EQ(QVariant("row 1"), grid.CellPreviousValue(2, 1));
    EXPECT_TRUE(grid.RowChanged(1));
    EXPECT_FALSE(grid.RowChanged(2));
}

struct Edit_Case {
    const char* name;
    int data_type;
    const char* text;
    bool accepted;
};
class Grid_Edit : public testing::TestWithParam<Edit_Case> {};
INSTANTIATE_TEST_SUITE_P(All, Grid_Edit,
                         testing::Values(Edit_Case{"a_number", 5, "1.5", true}, Edit_Case{"no_number", 5, "abc", false},
                                         Edit_Case{"an_integer_too_large", 2, "40000", false},
                                         Edit_Case{"a_byte_below_zero", 17, "-1", false},
                                         Edit_Case{"a_date", 7, "3/14/2026", true},
                                         Edit_Case{"no_date", 7, "13/13/2026", false},
                                         Edit_Case{"a_word_for_true", 11, "Yes", true},
                                         Edit_Case{"no_boolean", 11, "maybe", false},
                                         Edit_Case{"empty_is_null_in_a_number_column", 3, "", true},
                                         Edit_Case{"any_text_in_a_text_column", 8, "=1+1", true}),
                         [](const auto& row) { return row.param.name; });

TEST_P(Grid_Edit, Is_Taken_Only_As_A_Value_Of_The_Column)
{
    Grid_Model grid;
    grid.Set(Grid_Property::AllowUpdate, true);
    grid.Change_Column(1, [](auto& column) { column.data_type = GetParam().data_type; });
    grid.Set_CellValue(1, 1, "before");
    EXPECT_EQ(GetParam().accepted, grid.Edit_Cell(1, 1, GetParam().text));
    if (!GetParam().accepted) {
        EXPECT_EQ(QVariant("before"), grid.CellValue(1, 1));
    }
}

TEST(Grid_Cells, A_List_Column_Takes_Its_Choices_Alone)
{
    Grid_Model grid;
    grid.Set(Grid_Property::AllowUpdate, true);
    grid.Change_Column(1, [](auto& column) {
        column.control = Grid_Column_Control::List;
        column.data = QStringList{"red", "green"};
    });
    EXPECT_FALSE(grid.Edit_Cell(1, 1, "blue"));
    EXPECT_TRUE(grid.Edit_Cell(1, 1, "red"));
    grid.Set(Grid_Property::AllowColumnControlUpdate, true);
    EXPECT_TRUE(grid.Edit_Cell(1, 1, "blue"));
}

TEST(Grid_Cells, Indexes_Outside_Read_As_Nothing_And_Write_Nothing)
{
    auto grid = Numbered(2);
    for (const auto& [column, row] : {std::pair(0, 1), {1, 0}, {3, 1}, {1, 3}, {-1, -1}}) {
        grid.Set_CellValue(column, row, 9);
        grid.Set_CellHidden(column, row, true);
        EXPECT_FALSE(grid.CellValue(column, row).isValid());
        EXPECT_EQ("", grid.CellText(column, row).toStdString());
        EXPECT_FALSE(grid.CellHidden(column, row));
    }
}

TEST(Grid_Cells, The_Whole_Content_Goes_Out_In_Display_Order)
{
    auto grid = Numbered(2);
    grid.SortColumn(1, -1);
    grid.Update();
    const auto expected = QVariantList{QVariantList{2, "row 2"}, QVariantList{1, "row 1"}};
    EXPECT_EQ(QVariant(expected), grid.GridData());
    Grid_Model other;
    other.Set_GridData(grid.GridData());
    EXPECT_EQ(grid.GridData(), other.GridData());
}

/// Two columns whose values are asked for, with the requests counted.
class Grid_Sourced : public testing::Test {
protected:
    Grid_Sourced()
    {
        grid.Set_Sourced_Rows(3, [this](int column, int stored_row) {
            ++asked;
            return QVariant(10 * stored_row + column);
        });
    }
    int asked = 0;
    Grid_Model grid;
};

TEST_F(Grid_Sourced, Asks_For_What_Is_Needed_Alone)
{
    EXPECT_EQ(3, grid.Rows());
    EXPECT_EQ(0, asked);
    EXPECT_EQ(QVariant(21), grid.CellValue(1, 2));
    EXPECT_EQ("32", grid.CellText(2, 3).toStdString());
    EXPECT_EQ(2, asked);
    EXPECT_FALSE(grid.CellValue(3, 1).isValid());
    EXPECT_FALSE(grid.CellHidden(1, 1));
    EXPECT_EQ(2, asked);
}

TEST_F(Grid_Sourced, Sorts_Selects_And_Goes_Out_Like_Any_Other)
{
    grid.SortColumn(1, -1);
    grid.Update();
    grid.SelectRow(1);
    EXPECT_EQ(3, grid.Stored_Row(1));
    EXPECT_EQ(QVariant(QVariantList{QVariantList{31, 32}}), grid.SelectionReturn());
    EXPECT_EQ(QVariant(QVariantList{QVariantList{31, 32}, QVariantList{21, 22}, QVariantList{11, 12}}),
              grid.GridData());
}

TEST_F(Grid_Sourced, A_Row_That_Is_Written_To_Has_Values_Of_Its_Own)
{
    grid.Set_CellValue(1, 2, 5);
    grid.RowCopy(1, 3);
    EXPECT_EQ(QVariant(QVariantList{QVariantList{11, 12}, QVariantList{5, 22}, QVariantList{11, 12}}), grid.GridData());
}

TEST_F(Grid_Sourced, Values_Stay_With_Their_Rows_And_Columns_When_Others_Come_And_Go)
{
    grid.DeleteRows(1, 1);
    grid.InsertColumns(1, 1);
    grid.DeleteColumns(2, 1);
    grid.InsertRows(1, 1);
    EXPECT_EQ(QVariant(QVariantList{QVariantList{QVariant(), QVariant()}, QVariantList{QVariant(), 22},
                                    QVariantList{QVariant(), 32}}),
              grid.GridData());
}

TEST_F(Grid_Sourced, Values_Move_Along_With_An_Inserted_Column)
{
    grid.InsertColumns(1, 1);
    EXPECT_EQ(QVariant(), grid.CellValue(1, 3));
    EXPECT_EQ(QVariant(31), grid.CellValue(2, 3));
}

TEST_F(Grid_Sourced, Values_Move_Up_To_A_Deleted_Column)
{
    grid.DeleteColumns(1, 1);
    EXPECT_EQ(QVariant(32), grid.CellValue(1, 3));
}

TEST_F(Grid_Sourced, Rows_That_Are_Added_Are_Empty)
{
    grid.InsertRows(1, 1);
    EXPECT_EQ(QVariant(), grid.CellValue(1, 1));
    EXPECT_EQ(QVariant(31), grid.CellValue(1, 4));
    grid.Set_Sourced_Rows(1, [](int, int) { return QVariant(7); });
    grid.Set_Rows(2);
    EXPECT_EQ(QVariant(7), grid.CellValue(1, 1));
    EXPECT_EQ(QVariant(), grid.CellValue(1, 2));
}

TEST_F(Grid_Sourced, Is_Asked_No_More_When_Its_Rows_Went)
{
    grid.Set_Rows(0);
    grid.Set_Rows(2);
    EXPECT_FALSE(grid.CellValue(1, 1).isValid());
    EXPECT_EQ(0, asked);
}

TEST_F(Grid_Sourced, New_Rows_Stand_In_The_Order_Of_Their_Storage_With_None_Selected)
{
    int told = 0;
    grid.SortColumn(1, -1);
    grid.Update();
    grid.SelectRow(1);
    grid.On_Change = [&](Grid_Model::Change change) { told += change == Grid_Model::Change::Selection; };
    grid.Set_Sourced_Rows(2, [](int, int stored_row) { return QVariant(stored_row); });
    EXPECT_EQ(1, told);
    EXPECT_EQ(0, grid.SelectedRowsCount());
    EXPECT_TRUE(grid.Sort_Keys().empty());
    EXPECT_EQ(QVariant(QVariantList{QVariantList{1, 1}, QVariantList{2, 2}}), grid.GridData());
}

TEST(Grid_Cells, Copied_Text_Needs_The_Right_To_Copy)
{
    auto grid = Numbered(2);
    grid.SelectRow(2);
    EXPECT_TRUE(grid.Copied_Text().isEmpty());
    grid.Set(Grid_Property::AllowCopy, true);
    EXPECT_EQ("2\trow 2\n", grid.Copied_Text().toStdString());
}

TEST(Grid_Changes, Are_Told_At_Update_Unless_Auto_Paint_Is_On)
{
    auto grid = Numbered(2);
    grid.Update();
    int told = 0;
    grid.On_Change = [&](Grid_Model::Change) { ++told; };
    grid.Set_CellValue(1, 1, 5);
    grid.Set_CellValue(1, 2, 5);
    EXPECT_EQ(0, told);
    grid.Update();
    EXPECT_EQ(1, told);
    grid.Update();
    EXPECT_EQ(1, told) << "nothing changed since";
    grid.Set_AutoPaint(true);
    grid.Set_CellValue(1, 1, 6);
    EXPECT_EQ(2, told);
}

struct Kind_Case {
    const char* name;
    QVariant value;
    int data_type;
    Grid_Text_Align align; // with DataAlign
    const char* text;      // with DataFormat
};

class Grid_Kinds : public testing::TestWithParam<Kind_Case> {};

INSTANTIATE_TEST_SUITE_P(
    All, Grid_Kinds,
    testing::Values(Kind_Case{"whole_numbers_are_grouped", 1234567, 0, Grid_Text_Align::Right, "1,234,567"},
                    Kind_Case{"fractions_have_two_digits", 1234.5, 0, Grid_Text_Align::Right, "1,234.50"},
                    Kind_Case{"booleans_are_words", true, 0, Grid_Text_Align::Center, "Yes"},
                    Kind_Case{"dates_are_general", QDateTime(QDate(2026, 3, 14), QTime(15, 9, 26)), 0,
                              Grid_Text_Align::Right, "3/14/2026 3:09:26 PM"},
                    Kind_Case{"a_number_in_a_date_column_is_a_date", 2.0, 7, Grid_Text_Align::Right, "1/1/1900"},
                    Kind_Case{"texts_go_by_the_column", "a", 0, Grid_Text_Align::Left, "a"},
                    Kind_Case{"null_is_empty", QVariant(), 0, Grid_Text_Align::Left, ""}),
    [](const auto& row) { return row.param.name; });

TEST_P(Grid_Kinds, Decide_The_Place_And_The_Format_Where_The_Grid_Says_So)
{
    Grid_Model grid;
    grid.Change_Column(1, [](auto& column) { column.data_type = GetParam().data_type; });
    grid.Set_CellValue(1, 1, GetParam().value);
    EXPECT_EQ(Grid_Text_Align::Left, grid.CellAlign(1, 1));
    grid.Set(Grid_Property::DataAlign, true);
    grid.Set(Grid_Property::DataFormat, true);
    EXPECT_EQ(GetParam().align, grid.CellAlign(1, 1));
    EXPECT_EQ(GetParam().text, grid.CellText(1, 1).toStdString());
}

TEST(Grid_Cells, A_Columns_Own_Format_Goes_Before_The_Usual_One)
{
    Grid_Model grid;
    grid.Set(Grid_Property::DataFormat, true);
    grid.Change_Column(1, [](auto& column) { column.format[0] = "0.0"; });
    grid.Set_CellValue(1, 1, 1234);
    EXPECT_EQ("1234.0", grid.CellText(1, 1).toStdString());
}

TEST(Grid_Cells, A_Locked_Cell_Cannot_Be_Edited)
{
    auto grid = Numbered(2);
    grid.Set(Grid_Property::AllowUpdate, true);
    grid.Set_CellAttribute(2, 1, Cell_Locked | Cell_Bold);
    EXPECT_FALSE(grid.Edit_Cell(2, 1, "x"));
    EXPECT_TRUE(grid.Edit_Cell(2, 2, "x"));
    EXPECT_EQ(Cell_Locked | Cell_Bold, grid.CellAttribute(2, 1));
}

TEST(Grid_Cells, Have_The_Image_Of_Their_Choice_Unless_The_Column_Shows_Text_Alone)
{
    auto grid = Numbered(2);
    const auto show = [&](Grid_Render_Mode mode) {
        grid.Change_Column(2, [mode](auto& column) {
            column.data = QStringList{"row 1", "row 2", "row 3"};
            column.data_images = QStringList{"one", "two"};
            column.render_mode = int(mode);
        });
    };
    show(Grid_Render_Mode::Image_And_Text);
    EXPECT_EQ("two", grid.Cell_Image(2, 2).toStdString());
    EXPECT_EQ("", grid.Cell_Image(1, 2).toStdString());
    show(Grid_Render_Mode::Text);
    EXPECT_EQ("", grid.Cell_Image(2, 2).toStdString());
    show(Grid_Render_Mode::Image);
    grid.Set_CellValue(2, 2, "row 3"); // a choice without an image
    EXPECT_EQ("", grid.Cell_Image(2, 2).toStdString());
    grid.Set_CellValue(2, 2, "elsewhere");
    EXPECT_EQ("", grid.Cell_Image(2, 2).toStdString());
}

TEST(Grid_Active, Its_Selected_Text_Lies_Within_The_Cell_And_Can_Be_Replaced)
{
    auto grid = Numbered(2);
    EXPECT_FALSE(grid.Set_ActiveText("no cell has the focus"));
    grid.Set_Active(2, 1);
    EXPECT_EQ(0, grid.ActiveSelLength());
    grid.Set_ActiveSelection(4, 100);
    EXPECT_EQ(1, grid.ActiveSelLength());
    EXPECT_EQ("1", grid.ActiveSelText().toStdString());
    EXPECT_TRUE(grid.Set_ActiveSelText("one"));
    EXPECT_EQ("row one", grid.ActiveText().toStdString());
    EXPECT_EQ(7, grid.ActiveSelStart());
    EXPECT_EQ(0, grid.ActiveSelLength());
    grid.Set_ActiveSelection(-3, -1);
    EXPECT_EQ(0, grid.ActiveSelStart());
    EXPECT_TRUE(grid.Set_ActiveSelText("the "));
    EXPECT_EQ("the row one", grid.ActiveText().toStdString());
    grid.Set_Active(2, 2);
    EXPECT_EQ(0, grid.ActiveSelStart()) << "another cell, nothing selected";
}

TEST(Grid_Active, Its_Text_Must_Be_A_Value_Of_The_Column)
{
    auto grid = Numbered(2);
    grid.Change_Column(1, [](auto& column) { column.data_type = int(Grid_Data_Type::Long); });
    grid.Set_Active(1, 1);
    EXPECT_FALSE(grid.Set_ActiveText("many"));
    EXPECT_EQ(QVariant(1), grid.ActiveValue());
    EXPECT_TRUE(grid.Set_ActiveText("12"));
    EXPECT_EQ(12, grid.ActiveValue().toInt());
}

} // namespace
