#include "bkimgutl/filter/Strip_Passes.h"

#include "bkimgutl/filter/Column_Sums.h"
#include "bkimgutl/filter/Scratch.h"
#include "bkimgutl/filter/Window_Rows.h"

#include <algorithm>

namespace {

/// Source rows that the windows of the outputs reach, from an even one on and even in number; those beyond the last row
/// repeat it, with weights of 0.
struct Row_Range {
    int first, count;
};

Row_Range Rows_Of(const Weight_Bank& bank, int first_output, int end_output)
{
    int least = bank.Start(first_output), most = least;
    for (int y = first_output + 1; y < end_output; ++y) {
        least = std::min(least, bank.Start(y));
        most = std::max(most, bank.Start(y));
    }
    return {least, most - least + bank.Window()};
}

template <class Sample>
void Filter_Columns(const Bitmap_View& source, const Two_Banks& banks, const Strip_Output<Sample>& output,
                    std::int16_t* out, std::size_t stride)
{
    const int end = output.first + output.count;
    const Row_Range range = Rows_Of(banks.columns, output.first, end);
    using Row = const std::uint8_t*;
    Row* rows = Scratch<struct Source_Rows, Row>(std::size_t(range.count));
    for (int i = 0; i < range.count; ++i) rows[i] = source.Row(std::min(range.first + i, source.height - 1));
    Sum_Columns({&banks.columns, rows, range.count, range.first, output.first, end, source.Row_Bytes(),
                 banks.columns.Bits() - banks.bits_between, out, stride});
}

template <class Sample>
void Columns_Then_Rows(const Bitmap_View& source, const Two_Banks& banks, const Strip_Output<Sample>& output)
{
    const std::size_t stride = Padded_Samples(source.Row_Bytes()), plane = Padded_Samples(std::size_t(source.width));
    const int channels = source.bytes_per_pixel, shift = banks.rows.Bits() + banks.bits_between - banks.bits_after;
    std::int16_t* between = Scratch<struct Between_Rows>(stride * Strip_Rows);
    std::int16_t* planes = Scratch<struct Between_Planes>(plane * std::size_t(channels));
    Filter_Columns(source, banks, output, between, stride);
    for (int i = 0; i < output.count; ++i) {
        Split_Planes(between + std::size_t(i) * stride, std::size_t(source.width), channels, planes, plane);
        Sum_Windows({&banks.rows, channels, planes, plane, shift}, output.rows[i]);
    }
}

/// The last rows that were made, in a ring.
class Made_Rows {
public:
    explicit Made_Rows(const Row_Maker& maker)
        : maker_(maker), stride_(Padded_Samples(maker.samples)), rows_(Scratch<Made_Rows>(stride_ * rows_kept))
    {}

    /// Whether rows first .. end - 1 can be held together.
    static bool Hold(int first, int end) { return (end - 1) / rows_at_once - first / rows_at_once < int(blocks_kept); }

    const std::int16_t* Row(int y)
    {
        const int block = y / rows_at_once;
        if (made_[block % blocks_kept] != block) Make(block);
        return rows_ + std::size_t(y % rows_kept) * stride_;
    }

private:
    static constexpr int rows_at_once = 4, blocks_kept = 6, rows_kept = rows_at_once * blocks_kept;

    void Make(int block)
    {
        const int first = block * rows_at_once, count = std::min(rows_at_once, maker_.height - first);
        std::int16_t* out[rows_at_once];
        for (int i = 0; i < count; ++i) out[i] = rows_ + std::size_t((first + i) % rows_kept) * stride_;
        maker_.make(first, count, out);
        made_[block % blocks_kept] = block;
    }

    const Row_Maker& maker_;
    std::size_t stride_;
    std::int16_t* rows_;
    int made_[blocks_kept] = {-1, -1, -1, -1, -1, -1};
};

constexpr int most_strip_outputs = 32;
constexpr std::size_t tile_samples = 1536; // whole pixels; with 12 rows no more than the first cache holds

/// Outputs from `first` on whose rows can be held together.
int Strip_End(const Blend_Bank& bank, int first, int end)
{
    int y = first + 1;
    while (y < std::min(end, first + most_strip_outputs) && Made_Rows::Hold(bank.Start(first), bank.End(y))) ++y;
    return y;
}

} // namespace

std::size_t Padded_Samples(std::size_t samples)
{
    constexpr std::size_t spare_samples = 256;
    return (samples + spare_samples + 31) / 32 * 32;
}

Weight_Bank::Shape Column_Shape(int most_bits)
{
    return {most_bits, 2, 2};
}

Result<Word_Picture> Word_Picture::Create(int width, int height, int channels)
{
    Word_Picture picture;
    picture.height_ = height;
    picture.stride_ = Padded_Samples(std::size_t(width) * std::size_t(channels));
    auto memory = Pixel_Memory::Allocate(picture.stride_ * std::size_t(height) * sizeof(std::int16_t));
    if (!memory) return tl::make_unexpected(memory.error());
    picture.memory_ = std::move(*memory);
    return picture;
}

void Filter_Columns_Then_Rows(const Bitmap_View& source, const Two_Banks& banks,
                              const Strip_Output<std::uint8_t>& output)
{
    Columns_Then_Rows(source, banks, output);
}

void Filter_Columns_Then_Rows(const Bitmap_View& source, const Two_Banks& banks,
                              const Strip_Output<std::int16_t>& output)
{
    Columns_Then_Rows(source, banks, output);
}

void Filter_Rows_Then_Columns(const Row_Maker& maker, const Blend_Bank& bank, int first, int end, const Tile_Sink& sink)
{
    Made_Rows made(maker);
    for (int strip = first, strip_end; strip < end; strip = strip_end) {
        strip_end = Strip_End(bank, strip, end);
        const std::int16_t* rows[Most_Blended_Rows * 2];
        const int first_row = bank.Start(strip);
        for (int y = strip; y < strip_end; ++y)
            for (int row = bank.Start(y); row < bank.End(y); ++row) rows[row - first_row] = made.Row(row);
        for (std::size_t x = 0; x < maker.samples; x += tile_samples)
            for (int y = strip; y < strip_end; ++y)
                sink(y, {rows + (bank.Start(y) - first_row), &bank.Weights(y), x,
                         std::min(x + tile_samples, maker.samples)});
    }
}
