#include "catalogue/Filmstrip_Layout.h"

#include <algorithm>
#include <cmath>

void Filmstrip_Layout::Set_View(int gap, int columns, int rows)
{
    gap_ = gap;
    columns_ = std::max(columns, 1);
    rows_ = std::max(rows, 1);
    Set_Top_Row(top_row_);
}

void Filmstrip_Layout::Set_Count(int count)
{
    count_ = std::max(count, 0);
    Set_Top_Row(top_row_);
}

void Filmstrip_Layout::Set_Top_Row(int row)
{
    top_row_ = std::clamp(row, 0, std::max(0, Total_Rows() - rows_));
}

Filmstrip_Layout::Place Filmstrip_Layout::Cell_Place(int index) const
{
    const int column = (index - 1) % columns_;
    const int row = (index - 1) / columns_;
    return {column * (gap_ + Cell_Side) + gap_ / 2, row * (gap_ + Cell_Side) + gap_ / 2};
}

bool Filmstrip_Layout::Is_On_View(int index) const
{
    const int place = index - top_row_ * columns_;
    return place >= 1 && place <= rows_ * columns_;
}

Filmstrip_Layout::Scroll_Range Filmstrip_Layout::Range() const
{
    if (Total_Rows() <= rows_) return {};
    return {.maximum = Total_Rows() - rows_, .small_change = 1, .large_change = std::max(rows_ - 1, 1)};
}

void Filmstrip_Layout::Scroll_To_Index(int index)
{
    // Rows of this rule count from the index itself, so the last picture of a row brings the next row into view.
    const int place = index - top_row_ * columns_;
    if (place < 1)
        Set_Top_Row(index / columns_);
    else if (place > rows_ * columns_)
        Set_Top_Row(index / columns_ - rows_ + 1);
    if (!Is_On_View(index)) Set_Top_Row((index - 1) / columns_);
}

int Filmstrip_Layout::Index_At(int x, int y) const
{
    const int pitch = gap_ + Cell_Side;
    const int inside_x = x - gap_ / 2;
    const int inside_y = y - gap_ / 2;
    if (inside_x < 0 || inside_y < 0 || inside_x % pitch >= Cell_Side || inside_y % pitch >= Cell_Side) return 0;
    const int column = inside_x / pitch;
    const int row = inside_y / pitch;
    if (column >= columns_ || row >= rows_) return 0;
    const int index = (top_row_ + row) * columns_ + column + 1;
    return index <= count_ ? index : 0;
}

Filmstrip_Layout::Fitted Filmstrip_Layout::Fitted_Thumbnail(int width, int height)
{
    if (width < 1 || height < 1) return {};
    const double width_share = height > width ? double(width) / height : 1.0;
    const double height_share = width > height ? double(height) / width : 1.0;
    const int fitted_width = int(std::nearbyint(Cell_Side * width_share));
    const int fitted_height = int(std::nearbyint(Cell_Side * height_share));
    return {(Cell_Side - fitted_width) / 2, (Cell_Side - fitted_height) / 2, fitted_width, fitted_height};
}
