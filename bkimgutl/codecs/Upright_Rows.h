#pragma once

#include "bkimgutl/core/Bitmap_View.h"
#include "bkimgutl/core/Pixel_Origin.h"

#include <cstdint>
#include <span>
#include <vector>

/// Takes the rows of a picture as stored, from the top, and lays them upright into a bitmap. Some rows are gathered first
/// so that rows that become columns are written in runs.
class Upright_Rows {
public:
    /// `width` and `height` are those of the stored picture; the target has them swapped where the symmetry does.
    Upright_Rows(Mutable_Bitmap_View target, Pixel_Symmetry symmetry, int width, int height);

    /// Where the next row is to be written by the caller, Row_Bytes() long; at least one is free.
    std::uint8_t* Next_Row();
    void Row_Is_Written();
    void Finish(); ///< lays out what is still gathered

private:
    void Lay_Out();
    std::uint8_t* Place_Of(int x, int y) const;

    Mutable_Bitmap_View target_;
    Pixel_Symmetry symmetry_;
    int width_;
    int height_;
    int first_ = 0; ///< stored row of the first gathered one
    int gathered_ = 0;
    std::vector<std::uint8_t> rows_; ///< unused for pictures that are upright already
};

/// Reduces rows by a whole number in each direction; each result is the mean of the pixels there are in its box, rounded
/// to nearest. Sizes are rounded up, so the last box of a row or column may be smaller.
class Box_Rows {
public:
    Box_Rows(int width, int bytes_per_pixel, int divisor);
    void Add(const std::uint8_t* row);
    bool Is_Full() const { return rows_ == divisor_; }
    bool Is_Empty() const { return rows_ == 0; }
    void Take(std::uint8_t* reduced); ///< the mean of the rows since the last one

private:
    int width_;
    int samples_;
    int divisor_;
    int rows_ = 0;
    std::vector<std::uint64_t> sums_;
};
