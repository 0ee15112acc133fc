#include "controls/Grid_Model.h"
#include "tests/controls/Click.h"

#include <gtest/gtest.h>

namespace {

struct Selection_Case {
    const char* name;
    int mode;
    std::vector<Click> clicks;
    std::vector<int> selected;
};
class Grid_Selection : public testing::TestWithParam<Selection_Case> {};

INSTANTIATE_TEST_SUITE_P(
    All, Grid_Selection,
    testing::Values(
        Selection_Case{"mode_0_selects_no_rows", 0, {{2}}, {}},
        Selection_Case{"mode_1_keeps_one_row", 1, {{2}, {4}}, {4}},
        Selection_Case{"mode_1_knows_no_ranges", 1, {{2}, {4, Shift}}, {4}},
        Selection_Case{"mode_2_a_plain_click_is_the_only_row", 2, {{2}, {3, Control}, {5}}, {5}},
        Selection_Case{"mode_2_control_adds_and_takes_out", 2, {{2}, {4, Control}, {2, Control}}, {4}},
        Selection_Case{"mode_2_shift_selects_from_the_anchor", 2, {{4}, {2, Shift}}, {2, 3, 4}},
        Selection_Case{"mode_2_a_second_shift_begins_at_the_same_anchor", 2, {{3}, {5, Shift}, {2, Shift}}, {2, 3}},
        Selection_Case{
            "mode_2_shift_with_control_adds_the_range", 2, {{1}, {4, Control}, {5, Shift | Control}}, {1, 4, 5}},
        Selection_Case{"mode_2_a_click_below_the_rows_clears", 2, {{2}, {0}}, {}},
        Selection_Case{"the_right_button_keeps_a_selection_it_belongs_to", 2, {{2}, {3, Shift}, {2, 0, Right}}, {2, 3}},
        Selection_Case{"the_right_button_moves_to_another_row", 2, {{2}, {5, 0, Right}}, {5}},
        Selection_Case{"mode_3_each_click_toggles", 3, {{2}, {4}, {2}}, {4}},
        Selection_Case{"shift_without_anchor_selects_the_row", 2, {{3, Shift}}, {3}}),
    [](const auto& row) { return row.param.name; });

TEST_P(Grid_Selection, Follows_The_Clicks)
{
    Grid_Model grid;
    grid.Set_Rows(5);
    grid.Set_SelectionMode(GetParam().mode);
    for (const auto& click : GetParam().clicks) grid.SelectRowClick(click.button, click.shift, click.target);
    EXPECT_EQ(GetParam().selected, grid.SelectedRowsReturn());
    EXPECT_EQ(int(GetParam().selected.size()), grid.SelectedRowsCount());
}

TEST(Grid_Selection_State, Belongs_To_The_Row_And_Follows_A_Sort)
{
    Grid_Model grid;
    grid.Set_GridData(QVariantList{QVariantList{1}, QVariantList{2}, QVariantList{3}});
    grid.SelectRow(1);
    grid.Set_Active(1, 1);
    grid.SortColumn(1, -1);
    grid.Update();
    EXPECT_EQ(3, grid.SelectedRow());
    EXPECT_EQ(3, grid.ActiveRow());
    EXPECT_EQ(QVariant(1), grid.ActiveValue());
    EXPECT_EQ(QVariant(QVariantList{QVariantList{1}}), grid.SelectionReturn());
}

TEST(Grid_Selection_State, Deleting_The_Selected_Rows_Leaves_The_Others)
{
    Grid_Model grid;
    grid.Set_SelectionMode(2);
    grid.Set_GridData(QVariantList{QVariantList{1}, QVariantList{2}, QVariantList{3}});
    grid.SelectRow(1);
    grid.SelectRow(3);
    grid.Set_Active(1, 3);
    grid.DeleteSelectedRows();
    EXPECT_EQ(1, grid.Rows());
    EXPECT_EQ(QVariant(2), grid.CellValue(1, 1));
    EXPECT_EQ(0, grid.ActiveRow()) << "the active row is gone";
    EXPECT_EQ(0, grid.SelectedRowsCount());
}

TEST(Grid_Selection_State, A_Stricter_Mode_Cuts_The_Selection)
{
    Grid_Model grid;
    grid.Set_SelectionMode(2);
    grid.Select_All();
    grid.Set_SelectionMode(1);
    EXPECT_EQ(std::vector<int>{1}, grid.SelectedRowsReturn());
    grid.Set_SelectionMode(0);
    EXPECT_EQ(0, grid.SelectedRowsCount());
}

} // namespace
