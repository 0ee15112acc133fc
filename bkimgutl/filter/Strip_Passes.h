#pragma once

#include "bkimgutl/core/Bitmap_View.h"
#include "bkimgutl/core/Pixel_Memory.h"
#include "bkimgutl/filter/Blend_Columns.h"

#include <functional>

/// The two orders of the two passes, in strips whose intermediate samples stay in the cache. Reducing goes columns first,
/// since that leaves little for the rows; enlarging goes rows first.

constexpr int Strip_Rows = 16;

/// Samples of a row that vector code may run over, whole cache lines.
std::size_t Padded_Samples(std::size_t samples);

/// A picture of interleaved 16-bit samples between two stages of a filter. Samples are not initialised.
class Word_Picture {
public:
    static Result<Word_Picture> Create(int width, int height, int channels);
    int Height() const { return height_; }
    std::int16_t* Row(int y) { return Samples() + std::size_t(y) * stride_; }
    const std::int16_t* Row(int y) const { return Samples() + std::size_t(y) * stride_; }

private:
    std::int16_t* Samples() const { return reinterpret_cast<std::int16_t*>(memory_.Bytes()); }
    Pixel_Memory memory_;
    int height_ = 0;
    std::size_t stride_ = 0;
};

/// Both banks of a reduction and how many fractional bits the samples have between the passes and at the end.
struct Two_Banks {
    Weight_Bank columns; ///< along y, of Column_Shape
    Weight_Bank rows;    ///< along x, of Window_Row_Shape
    int bits_between = 6;
    int bits_after = 0;
};
Weight_Bank::Shape Column_Shape(int most_bits);

/// Output rows first .. first + count - 1 (count at most Strip_Rows), columns first.
template <class Sample>
struct Strip_Output {
    int first, count;
    Sample* rows[Strip_Rows];
};
void Filter_Columns_Then_Rows(const Bitmap_View& source, const Two_Banks& banks,
                              const Strip_Output<std::uint8_t>& output);
void Filter_Columns_Then_Rows(const Bitmap_View& source, const Two_Banks& banks,
                              const Strip_Output<std::int16_t>& output);

/// Rows that have been through the horizontal pass, as interleaved 16-bit samples.
struct Row_Maker {
    int height;          ///< how many there are
    std::size_t samples; ///< of a row
    /// Makes rows first .. first + count - 1; they are writable, and later readable, for 256 samples beyond.
    std::function<void(int first, int count, std::int16_t* const* out)> make;
};

/// A part of an output row: samples first .. end - 1 come from the rows and weights of the job.
using Tile_Sink = std::function<void(int y, const Blend_Job& job)>;

/// Rows first: hands output rows first .. end - 1 to the sink, in tiles that keep the rows which they need in the first
/// cache. `bank` looks at no more than Most_Blended_Rows rows together.
constexpr int Most_Blended_Rows = 16;
void Filter_Rows_Then_Columns(const Row_Maker& maker, const Blend_Bank& bank, int first, int end,
                              const Tile_Sink& sink);
