#pragma once

#include <utility>

/// Where the cells of the filmstrip stand. Lengths are twips (15 to the logical pixel), from the upper left corner of the
/// strip; indices are 1-based, rows and columns 0-based.

struct Twips_Rectangle {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    bool operator==(const Twips_Rectangle&) const = default;
};

struct Scroll_Range {
    int minimum = 0;
    int maximum = 0;
    int small_change = 1;
    int large_change = 1;
    int value = 0;
    bool operator==(const Scroll_Range&) const = default;
};

class Filmstrip_Layout {
public:
    static constexpr int Pixel = 15;
    static constexpr int Cell_Side = 1920;
    /// Between cells: wide enough for the frames of two neighbours.
    static constexpr int Thumbnail_Gap = 8 * Pixel;
    static constexpr int Pitch = Cell_Side + Thumbnail_Gap;

    void Set_View_Size(int width, int height);
    void Set_Count(int count); ///< limits Top_Row too

    int Count() const { return count_; }
    int Thumbnails_Per_Row() const { return columns_; } ///< at least 1
    int Thumbnail_Rows() const { return rows_; }        ///< whole rows that fit, at least 1
    int Total_Rows() const { return (count_ + columns_ - 1) / columns_; }
    int Content_Height() const { return Total_Rows() * Pitch; }

    int Top_Row() const { return top_row_; }
    int Last_Top_Row() const;
    void Set_Top_Row(int row); ///< limited to 0 to Last_Top_Row
    Scroll_Range Range() const;
    bool Scroll_To_Index(int index); ///< brings the picture on view; true when that moved the strip

    int Row_Of(int index) const { return (index - 1) / columns_; }
    bool On_View(int index) const;

    Twips_Rectangle Cell(int index) const;  ///< unscrolled
    Twips_Rectangle Frame(int index) const; ///< the outline around the cell, unscrolled

    /// Centred in the cell, its longer side as long as the cell's; an empty picture has an empty place.
    static Twips_Rectangle Picture_Place(const Twips_Rectangle& cell, int picture_width, int picture_height);

    int Index_At(int x, int y) const; ///< unscrolled; 0 in the gaps and behind the last picture

    /// First and last index of the rows that `top` and `height` of the unscrolled strip touch; {1, 0} when none.
    std::pair<int, int> Indices_Between(int top, int height) const;

private:
    int count_ = 0;
    int columns_ = 1;
    int rows_ = 1;
    int top_row_ = 0;
};
