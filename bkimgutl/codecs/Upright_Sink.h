#pragma once

#include "bkimgutl/core/Bitmap.h"

#include <cstdint>
#include <optional>
#include <vector>

/// Takes the rows of a picture as they are stored, upper rows first, and makes the upright bitmap of them, reduced on the
/// way. Only a band of sums, or of rows that become columns, is kept besides the result.
///
///   stored rows -> boxes of divisor x divisor (aligned to the upright picture's top left) -> turned into place
///
/// Boxes are averaged exactly, rounded to nearest; the last ones are smaller where the size is no multiple.
class Upright_Sink {
public:
    /// width, height  of the stored picture
    /// channels       1 or 3 bytes a pixel; 3 are blue, green, red
    /// orientation    1 to 8 as in tag 274; any other number counts as 1
    /// divisor        1 and up
    static Result<Upright_Sink> Create(int width, int height, int channels, int orientation, int divisor);

    int Channels() const { return channels_; }

    /// For whole rows: where the next one is to be written by the caller, all its pixels. That is the bitmap itself where
    /// nothing is turned or reduced.
    std::uint8_t* Next_Row();
    void Row_Is_Written();

    /// For parts of rows, and not mixed with whole ones: pixels x .. x + count - 1 of stored row y. Each pixel comes once; rows of the same box come before `Close_Rows` of
    /// their last one.
    void Put(int x, int y, int count, const std::uint8_t* pixels);
    /// All stored rows above `row` have been put.
    void Close_Rows(int row);

    Bitmap Take() &&;

private:
    struct Axis {
        int divisor = 1;
        int first = 1; ///< length of the first box
        int size = 0;  ///< stored
        int boxes = 0;
        int Box_Of(int place) const { return place < first ? 0 : 1 + (place - first) / divisor; }
        int End_Of(int box) const;
        int Length_Of(int box) const { return End_Of(box) - (box == 0 ? 0 : End_Of(box - 1)); }
    };
    explicit Upright_Sink(Bitmap bitmap) : bitmap_(std::move(bitmap)) {}
    static Axis Axis_For(int size, int divisor, bool reversed);
    void Place_Origin(int orientation);
    bool Reduces() const { return across_.divisor != 1 || down_.divisor != 1; }
    bool Keeps_Direction() const { return step_across_ == channels_; }
    void Lay_Out();
    void Write(int x, int y, int count, const std::uint8_t* pixels);
    void Add_To_Sums(int x, int y, int count, const std::uint8_t* pixels);
    void Write_Box_Row(int box_row);

    Bitmap bitmap_;
    int channels_ = 1;
    Axis across_;
    Axis down_;
    std::uint8_t* corner_ = nullptr; ///< of stored pixel or box (0, 0) in the bitmap
    std::ptrdiff_t step_across_ = 0; ///< bytes in the bitmap for a step along the stored row
    std::ptrdiff_t step_down_ = 0;
    int first_open_box_row_ = 0;
    std::vector<std::vector<std::uint64_t>> sums_; ///< box rows from first_open_box_row_ on
    std::vector<std::uint8_t> row_;
    int next_row_ = 0; ///< stored, of the next whole one
    int gathered_ = 0; ///< whole rows in front of it that wait in gathered_rows_
    std::vector<std::uint8_t> gathered_rows_;
};
