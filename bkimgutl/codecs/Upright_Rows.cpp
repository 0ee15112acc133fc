#include "bkimgutl/codecs/Upright_Rows.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr int Most_Gathered = 16;

template <int Bytes>
void Copy_Column(std::uint8_t* to, std::ptrdiff_t to_step, const std::uint8_t* from, std::size_t from_step, int count)
{
    for (int i = 0; i < count; ++i, to += to_step, from += from_step) std::memcpy(to, from, Bytes);
}

} // namespace

Upright_Rows::Upright_Rows(Mutable_Bitmap_View target, Pixel_Symmetry symmetry, int width, int height)
    : target_(target), symmetry_(symmetry), width_(width), height_(height)
{
    if (!symmetry_.Is_Identity())
        rows_.resize(std::size_t(width) * std::size_t(target.bytes_per_pixel) * Most_Gathered);
}

std::uint8_t* Upright_Rows::Next_Row()
{
    if (symmetry_.Is_Identity()) return target_.Row(first_);
    return rows_.data() + std::size_t(gathered_) * std::size_t(width_) * std::size_t(target_.bytes_per_pixel);
}

void Upright_Rows::Row_Is_Written()
{
    if (symmetry_.Is_Identity()) {
        ++first_;
    } else if (++gathered_ == Most_Gathered) {
        Lay_Out();
    }
}

void Upright_Rows::Finish()
{
    if (gathered_ > 0) Lay_Out();
}

std::uint8_t* Upright_Rows::Place_Of(int x, int y) const
{
    int width = width_;
    int height = height_;
    if (symmetry_.mirrored) x = width - 1 - x;
    for (int turn = 0; turn < symmetry_.quarter_turns; ++turn) {
        const int old_x = x;
        x = y;
        y = width - 1 - old_x;
        std::swap(width, height);
    }
    return target_.Row(y) + std::ptrdiff_t(x) * target_.bytes_per_pixel;
}

void Upright_Rows::Lay_Out()
{
    // The map is affine, so two neighbours say how far to step.
    const std::ptrdiff_t down = gathered_ > 1 ? Place_Of(0, first_ + 1) - Place_Of(0, first_) : 0;
    const std::size_t pixel = std::size_t(target_.bytes_per_pixel);
    const std::size_t row_bytes = std::size_t(width_) * pixel;
    for (int x = 0; x < width_; ++x) {
        const std::uint8_t* from = rows_.data() + std::size_t(x) * pixel;
        if (pixel == 1)
            Copy_Column<1>(Place_Of(x, first_), down, from, row_bytes, gathered_);
        else
            Copy_Column<3>(Place_Of(x, first_), down, from, row_bytes, gathered_);
    }
    first_ += gathered_;
    gathered_ = 0;
}

Box_Rows::Box_Rows(int width, int bytes_per_pixel, int divisor)
    : width_(width),
      samples_(bytes_per_pixel),
      divisor_(divisor),
      sums_(std::size_t((width + std::int64_t(divisor) - 1) / divisor) * std::size_t(bytes_per_pixel))
{}

void Box_Rows::Add(const std::uint8_t* row)
{
    std::uint64_t* sum = sums_.data();
    for (int x = 0; x < width_; x += divisor_, sum += samples_) {
        const int end = x + std::min(divisor_, width_ - x);
        for (int i = x * samples_; i < end * samples_; i += samples_) {
            for (int s = 0; s < samples_; ++s) sum[s] += row[i + s];
        }
        if (end == width_) break; // x + divisor might leave the range of int
    }
    ++rows_;
}

void Box_Rows::Take(std::uint8_t* reduced)
{
    const std::size_t samples = std::size_t(samples_);
    const std::size_t columns = sums_.size() / samples;
    for (std::size_t column = 0; column < columns; ++column) {
        const std::int64_t there = std::int64_t(width_) - std::int64_t(column) * divisor_;
        const auto pixels = std::uint64_t(std::min<std::int64_t>(divisor_, there)) * std::uint64_t(rows_);
        for (std::size_t s = column * samples; s < (column + 1) * samples; ++s)
            reduced[s] = std::uint8_t((sums_[s] + pixels / 2) / pixels);
    }
    std::fill(sums_.begin(), sums_.end(), 0);
    rows_ = 0;
}
