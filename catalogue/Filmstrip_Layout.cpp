#include "catalogue/Filmstrip_Layout.h"

#include <algorithm>
#include <cstdint>

void Filmstrip_Layout::Set_View_Size(int width, int height)
{
    columns_ = std::max(width / Pitch, 1);
    rows_ = std::max(height / Pitch, 1);
    Set_Top_Row(top_row_);
}

void Filmstrip_Layout::Set_Count(int count)
{
    count_ = std::max(count, 0);
    Set_Top_Row(top_row_);
}

int Filmstrip_Layout::Last_Top_Row() const
{
    return std::max(Total_Rows() - rows_, 0);
}

void Filmstrip_Layout::Set_Top_Row(int row)
{
    top_row_ = std::clamp(row, 0, Last_Top_Row());
}

Scroll_Range Filmstrip_Layout::Range() const
{
    if (Total_Rows() <= rows_) return {};
    return {.maximum = Last_Top_Row(), .large_change = std::max(rows_ - 1, 1), .value = top_row_};
}

bool Filmstrip_Layout::Scroll_To_Index(int index)
{
    if (index < 1 || index > count_ || On_View(index)) return false;
    const int row = Row_Of(index);
    const int before = top_row_;
    Set_Top_Row(row < top_row_ ? row : row - rows_ + 1);
    return top_row_ != before;
}

bool Filmstrip_Layout::On_View(int index) const
{
    const int place = index - top_row_ * columns_;
    return index <= count_ && place >= 1 && place <= rows_ * columns_;
}

Twips_Rectangle Filmstrip_Layout::Cell(int index) const
{
    const int column = (index - 1) % columns_;
    return {column * Pitch + Thumbnail_Gap / 2, Row_Of(index) * Pitch + Thumbnail_Gap / 2, Cell_Side, Cell_Side};
}

Twips_Rectangle Filmstrip_Layout::Frame(int index) const
{
    const Twips_Rectangle cell = Cell(index);
    return {cell.left - 3 * Pixel, cell.top - 3 * Pixel, cell.width + 5 * Pixel, cell.height + 5 * Pixel};
}

Twips_Rectangle Filmstrip_Layout::Picture_Place(const Twips_Rectangle& cell, int picture_width, int picture_height)
{
    if (picture_width < 1 || picture_height < 1) return {cell.left, cell.top, 0, 0};
    float width_share = 1.0F;
    float height_share = 1.0F;
    if (picture_width > picture_height) height_share = float(picture_height) / float(picture_width);
    if (picture_height > picture_width) width_share = float(picture_width) / float(picture_height);
    const int width = std::max(int(float(cell.width) * width_share), 1);
    const int height = std::max(int(float(cell.height) * height_share), 1);
    return {cell.left + (cell.width - width) / 2, cell.top + (cell.height - height) / 2, width, height};
}

int Filmstrip_Layout::Index_At(int x, int y) const
{
    if (x < 0 || y < 0) return 0;
    const int column = x / Pitch;
    if (column >= columns_) return 0;
    const std::int64_t index = std::int64_t(y / Pitch) * columns_ + column + 1;
    if (index > count_) return 0;
    const Twips_Rectangle cell = Cell(int(index));
    const bool inside = x >= cell.left && x < cell.left + cell.width && y >= cell.top && y < cell.top + cell.height;
    return inside ? int(index) : 0;
}

std::pair<int, int> Filmstrip_Layout::Indices_Between(int top, int height) const
{
    const int first_row = std::max(top, 0) / Pitch;
    const int last_row = (top + height - 1) / Pitch;
    if (height < 1 || top + height <= 0 || first_row >= Total_Rows()) return {1, 0};
    return {first_row * columns_ + 1, int(std::min<std::int64_t>(std::int64_t(last_row + 1) * columns_, count_))};
}
