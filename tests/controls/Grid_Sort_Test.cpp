#include "controls/Grid_Model.h"

#include <gtest/gtest.h>
#include <numeric>
#include <random>

namespace {

const QVariant Null;

std::vector<int> Sorted(const std::vector<QVariant>& values, int direction, bool null_smallest)
{
    return Sorted_Row_Map(int(values.size()), {{1, direction}}, null_smallest,
                          [&](int row, int) { return values[std::size_t(row)]; });
}

struct Sort_Case {
    const char* name;
    std::vector<QVariant> values;
    int direction;
    bool null_smallest;
    std::vector<int> expected;
};
class Grid_Sort : public testing::TestWithParam<Sort_Case> {};

INSTANTIATE_TEST_SUITE_P(All, Grid_Sort,
                         testing::Values(Sort_Case{"an_empty_grid_sorts_as_nothing", {}, 1, true, {}},
                                         Sort_Case{"one_row_stays", {5}, 1, true, {0}},
                                         Sort_Case{"numbers_rise", {3, 1, 2}, 1, true, {1, 2, 0}},
                                         Sort_Case{"numbers_fall", {3, 1, 2}, -1, true, {0, 2, 1}},
                                         Sort_Case{"null_goes_first_when_smallest", {3, Null, 2}, 1, true, {1, 2, 0}},
                                         Sort_Case{"null_goes_last_when_falling", {3, Null, 4}, -1, true, {2, 0, 1}},
                                         Sort_Case{
                                             "null_goes_last_when_not_smallest", {3, Null, 2}, 1, false, {2, 0, 1}},
                                         Sort_Case{"texts_sort_without_case", {"b", "A", "C"}, 1, true, {1, 0, 2}},
                                         Sort_Case{"numbers_stand_before_texts", {"1", 2, "0"}, 1, true, {1, 2, 0}},
                                         Sort_Case{"two_nulls_keep_their_order", {Null, 1, Null}, 1, true, {0, 2, 1}},
                                         Sort_Case{"true_is_minus_one", {0, true, -2}, 1, true, {2, 1, 0}}),
                         [](const auto& row) { return row.param.name; });

TEST_P(Grid_Sort, Gives_The_Map)
{
    EXPECT_EQ(GetParam().expected, Sorted(GetParam().values, GetParam().direction, GetParam().null_smallest));
}

TEST(Grid_Sort_Law, Many_Rows_Come_Out_In_Order_And_Complete)
{
    std::mt19937 random(7);
    std::vector<QVariant> values;
    for (int i = 0; i < 2000; ++i) values.push_back(int(random() % 500));
    const auto map = Sorted(values, 1, true);
    for (std::size_t i = 1; i < map.size(); ++i)
        EXPECT_LE(values[std::size_t(map[i - 1])].toInt(), values[std::size_t(map[i])].toInt());
    auto rows = map;
    std::sort(rows.begin(), rows.end());
    for (int i = 0; i < 2000; ++i) EXPECT_EQ(i, rows[std::size_t(i)]);
}

/// The sort as it is promised, without any haste: the values themselves are compared at each step.
std::vector<int> Plainly_Sorted(const std::vector<QVariant>& first, const std::vector<QVariant>& second)
{
    const auto order = [&](int moving, int other) {
        for (const auto* values : {&first, &second}) {
            const QVariant& left = (*values)[std::size_t(moving)];
            const QVariant& right = (*values)[std::size_t(other)];
            const int sign = values == &first ? 1 : -1;
            if (const int compared = Compare_Values(left, right)) return compared * sign;
            if (left.isValid() != right.isValid()) return left.isValid() ? sign : -sign;
        }
        return 0;
    };
    std::vector<int> map(first.size());
    std::iota(map.begin(), map.end(), 0);
    const int count = int(map.size());
    int gap = 1;
    while (gap <= (count + 1) / 3) gap = 3 * gap + 1;
    for (; gap >= 1; gap /= 3)
        for (int i = gap; i < count; ++i)
            for (int at = i; at >= gap && order(map[std::size_t(at)], map[std::size_t(at - gap)]) < 0; at -= gap)
                std::swap(map[std::size_t(at)], map[std::size_t(at - gap)]);
    return map;
}

TEST(Grid_Sort_Law, Agrees_With_A_Plain_Sort_Of_Mixed_Values_And_Two_Keys_Down_To_The_Order_Of_Equal_Rows)
{
    std::mt19937 random(11);
    const auto text = [&] {
        const QString tail(int(random() % 5), QChar(char16_t(u'a' + random() % 3)));
        return QStringLiteral("Img_%1%2").arg(random() % 3).arg(tail);
    };
    for (const int count : {2, 3, 40, 700}) {
        std::vector<QVariant> first, second;
        for (int i = 0; i < count; ++i) {
            const auto kind = random() % 8;
            first.push_back(kind == 0 ? QVariant() : kind == 1 ? QVariant(int(random() % 5)) : QVariant(text()));
            second.push_back(random() % 4 == 0 ? QVariant() : QVariant(int(random() % 4)));
        }
        const auto map = Sorted_Row_Map(count, {{1, 1}, {2, -1}}, true, [&](int row, int column) {
            return (column == 1 ? first : second)[std::size_t(row)];
        });
        EXPECT_EQ(Plainly_Sorted(first, second), map) << count;
    }
}

TEST(Grid_Sort_Keys, A_Second_Key_Orders_Rows_That_Are_Equal_In_The_First)
{
    Grid_Model grid;
    grid.Set_GridData(QVariantList{QVariantList{"b", 1}, QVariantList{"a", 2}, QVariantList{"a", 1}});
    grid.SortColumn(1, 1);
    grid.SortColumn(2, -1, true);
    grid.Update();
    EXPECT_EQ((std::vector<int>{2, 3, 1}),
              (std::vector<int>{grid.Stored_Row(1), grid.Stored_Row(2), grid.Stored_Row(3)}));
    EXPECT_EQ(3, grid.Display_Row(1));
}

TEST(Grid_Sort_Keys, A_Date_Column_Without_Order_Is_Newest_First)
{
    Grid_Model grid;
    grid.Set_Rows(2);
    grid.Change_Column(1, [](auto& column) { column.data_type = 7; });
    grid.Set_CellValue(1, 1, QDateTime(QDate(2020, 1, 1), QTime(1, 0)));
    grid.Set_CellValue(1, 2, QDateTime(QDate(2024, 1, 1), QTime(1, 0)));
    grid.SortColumn(1, 0);
    grid.Update();
    EXPECT_EQ(2, grid.Stored_Row(1));
}

TEST(Grid_Sort_Keys, Without_Auto_Paint_The_Sort_Waits_For_Update)
{
    Grid_Model grid;
    grid.Set_GridData(QVariantList{QVariantList{2}, QVariantList{1}});
    grid.SortColumn(1, 1);
    EXPECT_EQ(1, grid.Stored_Row(1));
    EXPECT_TRUE(grid.Needs_Update());
    grid.Update();
    EXPECT_EQ(2, grid.Stored_Row(1));
    grid.Set_AutoPaint(true);
    grid.SortColumn(1, -1);
    EXPECT_EQ(1, grid.Stored_Row(1));
}

TEST(Grid_Sort_Keys, A_Key_Out_Of_Range_Stops_The_Sort)
{
    Grid_Model grid;
    grid.Set_GridData(QVariantList{QVariantList{2}, QVariantList{1}});
    grid.SortColumn(1, 1);
    grid.SortColumn(9, 1, true);
    grid.Update();
    EXPECT_EQ(1, grid.Stored_Row(1));
}

TEST(Grid_Sort_Keys, A_Header_Click_Turns_The_Order_Over_The_Second_Time)
{
    Grid_Model grid;
    grid.Set_GridData(QVariantList{QVariantList{2}, QVariantList{1}});
    EXPECT_FALSE(grid.Header_Click(1, false)) << "sorting is off by default";
    grid.Set(Grid_Property::AllowColumnSort, true);
    EXPECT_TRUE(grid.Header_Click(1, false));
    EXPECT_EQ(1, grid.Sort_Direction(1));
    grid.Header_Click(1, false);
    EXPECT_EQ(-1, grid.Sort_Direction(1));
    EXPECT_EQ(std::vector<int>{1}, grid.Sort_Keys());
}

} // namespace
