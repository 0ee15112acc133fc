#pragma once

#include "bkimgutl/core/Bitmap_View.h"
#include "bkimgutl/core/Pixel_Memory.h"
#include "bkimgutl/filter/Resample_Rows.h"

/// The two orders of the two passes, in strips whose intermediate samples stay in the cache. Reducing goes columns first,
/// since that leaves little for the rows; enlarging goes rows first.

/// A picture of 16-bit planes between two stages of a filter. Samples are not initialised.
class Plane_Picture {
public:
    static Result<Plane_Picture> Create(int width, int height, int channels);
    int Width() const { return width_; }
    int Height() const { return height_; }
    int Channels() const { return channels_; }
    std::size_t Plane() const { return plane_; } ///< samples from a plane of a row to the next
    std::int16_t* Row(int y) { return Samples() + std::size_t(y) * plane_ * std::size_t(channels_); }
    const std::int16_t* Row(int y) const { return Samples() + std::size_t(y) * plane_ * std::size_t(channels_); }

private:
    std::int16_t* Samples() const { return reinterpret_cast<std::int16_t*>(memory_.Bytes()); }
    Pixel_Memory memory_;
    int width_ = 0, height_ = 0, channels_ = 0;
    std::size_t plane_ = 0;
};

/// Both banks of a filter and how many fractional bits the samples have between the passes and at the end.
struct Two_Banks {
    Weight_Bank columns; ///< along y
    Weight_Bank rows;    ///< along x
    int bits_between = 6;
    int bits_after = 0;
};

/// Output rows first..end - 1 (at most Strip_Rows), columns first.
struct Strip_Output {
    int first, end;
    Row_Layout layout;
    void* rows[Strip_Rows];
    std::size_t plane;
};
void Filter_Columns_Then_Rows(const Bitmap_View& source, const Two_Banks& banks, const Strip_Output& output);

/// Rows that have been through the horizontal pass as interleaved 16-bit samples, made in blocks as they are asked for.
class Filtered_Rows {
public:
    /// The longest window of rows that may be looked at together.
    static constexpr int Most_Rows = Strip_Rows;

    Filtered_Rows(const Bitmap_View& source, const Weight_Bank& bank, int bits_after);
    Filtered_Rows(const Plane_Picture& source, const Weight_Bank& bank, int bits_before, int bits_after);

    /// Rows start .. start + count - 1; those beyond the last one repeat it. Valid until the next call.
    void Look_At(int start, int count, const std::int16_t** rows);

private:
    const std::int16_t* Row(int y);
    void Make_Block(int block);
    void Take_Planes(int y, Row_Job& job, int i);

    const Bitmap_View* bytes_ = nullptr;
    const Plane_Picture* planes_ = nullptr;
    const Weight_Bank& bank_;
    int shift_;
    int height_, channels_;
    std::size_t stride_;
    std::int16_t* made_; ///< two blocks of Strip_Rows rows
    int made_block_[2] = {-1, -1};
};
