#include "bkimgutl/filter/Strip_Passes.h"

#include "bkimgutl/filter/Scratch.h"

#include <algorithm>

namespace {

constexpr std::size_t spare_samples = 256; // what the vector code may touch behind a row

std::size_t Padded(std::size_t samples)
{
    return (samples + spare_samples + 31) / 32 * 32;
}

/// Source rows that the windows of the outputs reach, from an even one on and even in number; those beyond the last row
/// repeat it, with weights of 0.
struct Row_Range {
    int first, count;
};

Row_Range Rows_Of(const Weight_Bank& bank, int first_output, int end_output)
{
    const auto begin = bank.starts.begin();
    const auto [least, most] = std::minmax_element(begin + first_output, begin + end_output);
    return {*least, *most - *least + 2 * bank.pairs};
}

void Filter_Columns(const Bitmap_View& source, const Two_Banks& banks, const Strip_Output& output, std::int16_t* out,
                    std::size_t stride)
{
    const Row_Range range = Rows_Of(banks.columns, output.first, output.end);
    using Row = const std::uint8_t*;
    Row* rows = Scratch<struct Source_Rows, Row>(std::size_t(range.count));
    for (int i = 0; i < range.count; ++i) rows[i] = source.Row(std::min(range.first + i, source.height - 1));
    Filter_Byte_Columns({&banks.columns, rows, range.count, range.first, output.first, output.end, source.Row_Bytes(),
                         banks.columns.bits - banks.bits_between, out, stride});
}

} // namespace

Result<Plane_Picture> Plane_Picture::Create(int width, int height, int channels)
{
    Plane_Picture picture;
    picture.width_ = width, picture.height_ = height, picture.channels_ = channels;
    picture.plane_ = Padded(std::size_t(width));
    auto memory =
        Pixel_Memory::Allocate(picture.plane_ * std::size_t(channels) * std::size_t(height) * sizeof(std::int16_t));
    if (!memory) return tl::make_unexpected(memory.error());
    picture.memory_ = std::move(*memory);
    return picture;
}

void Filter_Columns_Then_Rows(const Bitmap_View& source, const Two_Banks& banks, const Strip_Output& output)
{
    const std::size_t stride = Padded(source.Row_Bytes()), plane = Padded(std::size_t(source.width));
    const int channels = source.bytes_per_pixel, count = output.end - output.first;
    std::int16_t* between = Scratch<struct Between_Rows>(stride * Strip_Rows);
    Filter_Columns(source, banks, output, between, stride);

    std::int16_t* planes = between;
    std::size_t plane_row = stride;
    if (channels == 3) {
        plane_row = 3 * plane;
        planes = Scratch<struct Between_Planes>(plane_row * Strip_Rows);
        for (int i = 0; i < count; ++i)
            Split_Planes(between + std::size_t(i) * stride, std::size_t(source.width), channels,
                         planes + std::size_t(i) * plane_row, plane);
    }
    Row_Job job{
        &banks.rows,   channels, count,       {}, plane, banks.rows.bits + banks.bits_between - banks.bits_after,
        output.layout, {},       output.plane};
    for (int i = 0; i < count; ++i) {
        job.in_rows[i] = planes + std::size_t(i) * plane_row;
        job.out_rows[i] = output.rows[i];
    }
    Filter_Rows(job);
}

Filtered_Rows::Filtered_Rows(const Bitmap_View& source, const Weight_Bank& bank, int bits_after)
    : bytes_(&source),
      bank_(bank),
      shift_(bank.bits - bits_after),
      height_(source.height),
      channels_(source.bytes_per_pixel),
      stride_(Padded(std::size_t(bank.Length()) * std::size_t(channels_))),
      made_(Scratch<Filtered_Rows>(stride_ * 2 * Strip_Rows))
{}

Filtered_Rows::Filtered_Rows(const Plane_Picture& source, const Weight_Bank& bank, int bits_before, int bits_after)
    : planes_(&source),
      bank_(bank),
      shift_(bank.bits + bits_before - bits_after),
      height_(source.Height()),
      channels_(source.Channels()),
      stride_(Padded(std::size_t(bank.Length()) * std::size_t(channels_))),
      made_(Scratch<Filtered_Rows>(stride_ * 2 * Strip_Rows))
{}

void Filtered_Rows::Take_Planes(int y, Row_Job& job, int i)
{
    if (planes_) {
        job.in_plane = planes_->Plane();
        job.in_rows[i] = planes_->Row(y);
        return;
    }
    const std::size_t plane = Padded(std::size_t(bytes_->width));
    std::int16_t* rows = Scratch<struct Byte_Planes>(plane * std::size_t(channels_) * Strip_Rows);
    std::int16_t* row = rows + std::size_t(i) * plane * std::size_t(channels_);
    Split_Planes(bytes_->Row(y), std::size_t(bytes_->width), channels_, row, plane);
    job.in_plane = plane;
    job.in_rows[i] = row;
}

void Filtered_Rows::Make_Block(int block)
{
    const int first = block * Strip_Rows;
    Row_Job job{&bank_, channels_, std::min(Strip_Rows, height_ - first), {}, 0, shift_, Row_Layout::Words, {}, 0};
    std::int16_t* out = made_ + std::size_t(block & 1) * Strip_Rows * stride_;
    for (int i = 0; i < job.row_count; ++i) {
        Take_Planes(first + i, job, i);
        job.out_rows[i] = out + std::size_t(i) * stride_;
    }
    Filter_Rows(job);
    made_block_[block & 1] = block;
}

const std::int16_t* Filtered_Rows::Row(int y)
{
    const int block = y / Strip_Rows;
    if (made_block_[block & 1] != block) Make_Block(block);
    return made_ + (std::size_t(block & 1) * Strip_Rows + std::size_t(y % Strip_Rows)) * stride_;
}

void Filtered_Rows::Look_At(int start, int count, const std::int16_t** rows)
{
    for (int i = 0; i < count; ++i) rows[i] = Row(std::min(start + i, height_ - 1));
}
