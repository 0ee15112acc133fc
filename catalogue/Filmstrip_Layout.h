#pragma once

/// Where the cells of the filmstrip stand and which of them are on view. Lengths in twips; indices 1-based, rows 0-based.
class Filmstrip_Layout {
public:
    static constexpr int Cell_Side = 1920;

    struct Scroll_Range {
        int maximum = 0; ///< the minimum is 0
        int small_change = 1;
        int large_change = 1;
        bool operator==(const Scroll_Range&) const = default;
    };
    struct Place {
        int x = 0;
        int y = 0;
        bool operator==(const Place&) const = default;
    };
    /// The part of a cell that a thumbnail fills, centred in it.
    struct Fitted {
        int x = 0;
        int y = 0;
        int width = 0;
        int height = 0;
        bool operator==(const Fitted&) const = default;
    };

    /// gap between cells; columns and rows that fit, each at least 1.
    void Set_View(int gap, int columns, int rows);
    void Set_Count(int count); ///< pictures in the list

    int Columns() const { return columns_; }
    int Rows() const { return rows_; }
    int Top_Row() const { return top_row_; }
    void Set_Top_Row(int row); ///< limited to what there is to scroll

    Place Cell_Place(int index) const; ///< from the strip's origin, not scrolled
    bool Is_On_View(int index) const;
    Scroll_Range Range() const;
    void Scroll_To_Index(int index);

    /// The picture at a point of the view; 0 for a miss (a gap, or behind the last picture).
    int Index_At(int x, int y) const;

    /// For a thumbnail of this size in pixels.
    static Fitted Fitted_Thumbnail(int width, int height);

private:
    int Total_Rows() const { return (count_ + columns_ - 1) / columns_; }
    int gap_ = 0;
    int columns_ = 1;
    int rows_ = 1;
    int count_ = 0;
    int top_row_ = 0;
};
