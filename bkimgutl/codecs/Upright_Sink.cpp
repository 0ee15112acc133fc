#include "bkimgutl/codecs/Upright_Sink.h"

#include <algorithm>
#include <cstring>

namespace {

struct Turn {
    bool reversed_across; ///< the stored row runs against its direction in the upright picture
    bool reversed_down;
    bool swapped; ///< stored rows are upright columns
};

constexpr Turn Turns[] = {{false, false, false}, {true, false, false}, {true, true, false}, {false, true, false},
                          {false, false, true},  {false, true, true},  {true, true, true},  {true, false, true}};

Turn Turn_Of(int orientation)
{
    return orientation >= 1 && orientation <= 8 ? Turns[orientation - 1] : Turns[0];
}

/// Rows that become columns are written some at a time, in runs.
constexpr int Most_Gathered = 16;

template <int Bytes>
void Copy_Column(std::uint8_t* to, std::ptrdiff_t to_step, const std::uint8_t* from, std::size_t from_step, int count)
{
    for (int i = 0; i < count; ++i, to += to_step, from += from_step) std::memcpy(to, from, Bytes);
}

} // namespace

int Upright_Sink::Axis::End_Of(int box) const
{
    return int(std::min<std::int64_t>(size, first + std::int64_t(box) * divisor));
}

Upright_Sink::Axis Upright_Sink::Axis_For(int size, int divisor, bool reversed)
{
    Axis axis;
    axis.size = size;
    axis.divisor = std::min(divisor, size);
    axis.boxes = int((std::int64_t(size) + axis.divisor - 1) / axis.divisor);
    // The short box stands at the right or lower end of the upright picture, which is the start of a reversed axis.
    axis.first = reversed ? size - (axis.boxes - 1) * axis.divisor : axis.divisor;
    return axis;
}

Result<Upright_Sink> Upright_Sink::Create(int width, int height, int channels, int orientation, int divisor)
{
    if (width < 1 || height < 1 || divisor < 1) return Failure("the picture has no size");
    const Turn turn = Turn_Of(orientation);
    const Axis across = Axis_For(width, divisor, turn.reversed_across);
    const Axis down = Axis_For(height, divisor, turn.reversed_down);
    auto bitmap = turn.swapped ? Bitmap::Create(down.boxes, across.boxes, channels)
                               : Bitmap::Create(across.boxes, down.boxes, channels);
    if (!bitmap) return tl::make_unexpected(bitmap.error());
    Upright_Sink sink(std::move(*bitmap));
    sink.channels_ = channels;
    sink.across_ = across;
    sink.down_ = down;
    sink.Place_Origin(orientation);
    return sink;
}

void Upright_Sink::Place_Origin(int orientation)
{
    const Turn turn = Turn_Of(orientation);
    const Mutable_Bitmap_View view = bitmap_.Change();
    step_across_ = turn.swapped ? view.step : channels_;
    step_down_ = turn.swapped ? channels_ : view.step;
    corner_ = view.Row(0);
    if (turn.reversed_across) {
        corner_ += step_across_ * (across_.boxes - 1);
        step_across_ = -step_across_;
    }
    if (turn.reversed_down) {
        corner_ += step_down_ * (down_.boxes - 1);
        step_down_ = -step_down_;
    }
}

std::uint8_t* Upright_Sink::Next_Row()
{
    if (!Reduces() && Keeps_Direction()) return corner_ + next_row_ * step_down_;
    const std::size_t row_bytes = std::size_t(across_.size) * std::size_t(channels_);
    gathered_rows_.resize(row_bytes * (Reduces() ? 1 : Most_Gathered));
    return gathered_rows_.data() + std::size_t(gathered_) * row_bytes;
}

void Upright_Sink::Row_Is_Written()
{
    if (Reduces()) {
        Add_To_Sums(0, next_row_, across_.size, gathered_rows_.data());
        Close_Rows(++next_row_);
        return;
    }
    ++next_row_;
    if (!Keeps_Direction() && ++gathered_ == Most_Gathered) Lay_Out();
}

void Upright_Sink::Lay_Out()
{
    const std::size_t pixel = std::size_t(channels_);
    const std::size_t row_bytes = std::size_t(across_.size) * pixel;
    std::uint8_t* to = corner_ + (next_row_ - gathered_) * step_down_;
    const std::uint8_t* from = gathered_rows_.data();
    for (int x = 0; x < across_.size; ++x, to += step_across_, from += pixel) {
        if (pixel == 1)
            Copy_Column<1>(to, step_down_, from, row_bytes, gathered_);
        else
            Copy_Column<3>(to, step_down_, from, row_bytes, gathered_);
    }
    gathered_ = 0;
}

void Upright_Sink::Put(int x, int y, int count, const std::uint8_t* pixels)
{
    if (!Reduces()) return Write(x, y, count, pixels);
    Add_To_Sums(x, y, count, pixels);
}

void Upright_Sink::Write(int x, int y, int count, const std::uint8_t* pixels)
{
    std::uint8_t* target = corner_ + x * step_across_ + y * step_down_;
    if (Keeps_Direction()) {
        std::memcpy(target, pixels, std::size_t(count) * std::size_t(channels_));
        return;
    }
    if (channels_ == 1) {
        for (int i = 0; i < count; ++i, target += step_across_) *target = pixels[i];
        return;
    }
    for (int i = 0; i < count; ++i, target += step_across_, pixels += 3) {
        target[0] = pixels[0];
        target[1] = pixels[1];
        target[2] = pixels[2];
    }
}

void Upright_Sink::Add_To_Sums(int x, int y, int count, const std::uint8_t* pixels)
{
    const std::size_t open = std::size_t(down_.Box_Of(y) - first_open_box_row_);
    while (sums_.size() <= open) sums_.emplace_back(std::size_t(across_.boxes) * std::size_t(channels_), 0);
    const int end = x + count;
    for (int box = across_.Box_Of(x); x < end; ++box) {
        const int box_end = std::min(across_.End_Of(box), end);
        std::uint64_t* sum = sums_[open].data() + std::size_t(box) * std::size_t(channels_);
        for (; x < box_end; ++x)
            for (int c = 0; c < channels_; ++c) sum[c] += *pixels++;
    }
}

void Upright_Sink::Write_Box_Row(int box_row)
{
    row_.resize(std::size_t(across_.boxes) * std::size_t(channels_));
    const std::uint64_t* sum = sums_.front().data();
    std::uint8_t* out = row_.data();
    for (int box = 0; box < across_.boxes; ++box) {
        const std::uint64_t area = std::uint64_t(across_.Length_Of(box)) * std::uint64_t(down_.Length_Of(box_row));
        for (int c = 0; c < channels_; ++c) *out++ = std::uint8_t((*sum++ + area / 2) / area);
    }
    Write(0, box_row, across_.boxes, row_.data());
}

void Upright_Sink::Close_Rows(int row)
{
    while (!sums_.empty() && down_.End_Of(first_open_box_row_) <= row) {
        Write_Box_Row(first_open_box_row_++);
        sums_.erase(sums_.begin());
    }
}

Bitmap Upright_Sink::Take() &&
{
    if (gathered_ > 0) Lay_Out();
    Close_Rows(down_.size);
    return std::move(bitmap_);
}
