#pragma once

#include "bkimgutl/core/Bitmap_View.h"

/// Copies rows, or parts of them, into a new picture for one task. A line of memory that is written in the usual way is
/// first read; for a picture too large for the caches that is a third of the traffic, and nothing comes of it. Such a
/// picture is written past the caches where the processor can. All is written when the object is gone.
class Row_Writer {
public:
    explicit Row_Writer(const Mutable_Bitmap_View& target);
    ~Row_Writer();
    Row_Writer(const Row_Writer&) = delete;
    Row_Writer& operator=(const Row_Writer&) = delete;

    /// Bytes of row y from `offset` on.
    void Copy_To_Row(int y, std::size_t offset, const std::uint8_t* from, std::size_t bytes);

private:
    Mutable_Bitmap_View target_;
    bool past_caches_;
};
