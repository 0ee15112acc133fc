#pragma once

#include <QtCore/QVariant>
#include <functional>
#include <vector>

/// Sorting of a grid: works on stored rows and gives the map from display position to stored row.

struct Grid_Sort_Key {
    int column = 1;    ///< 1-based
    int direction = 1; ///< +1 or -1
};

/// Text-mode comparison of two values: numbers, dates and Booleans by value and before every text, texts without regard
/// to case. Nothing is greater or smaller than Null: then the answer is 0.
int Compare_Values(const QVariant& left, const QVariant& right);

/// value_of(row, column): 0-based stored row, 1-based column. The result has row_count entries, 0-based. With fewer than
/// two rows it is the identity. Null stands before every other value in an ascending column when null_smallest is set.
/// It is a Shell sort with gaps ..., 13, 4, 1 below a third of the rows: rows that are equal in all keys keep their order
/// within a pass only.
std::vector<int> Sorted_Row_Map(int row_count, const std::vector<Grid_Sort_Key>& keys, bool null_smallest,
                                const std::function<QVariant(int row, int column)>& value_of);
