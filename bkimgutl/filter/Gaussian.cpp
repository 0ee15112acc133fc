#include "bkimgutl/filter/Gaussian.h"

#include "bkimgutl/core/Row_Loop.h"
#include "bkimgutl/filter/Scratch.h"
#include "bkimgutl/filter/Strip_Passes.h"
#include "bkimgutl/filter/Symmetric_Rows.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double cut_off = 3.6; // standard deviations; what lies beyond is worth a twelfth of a level at most

/// Deviation of the two Gaussians in steps of the reduced grid, at least. The wave of two steps, which the grid takes for
/// its mirror image, comes through both with exp(-(pi x 0.85)^2), that is a tenth of a level.
constexpr double least_step_deviations = 0.85;

/// A Gaussian around `centre`, in samples.
Taps Gaussian_Taps(double centre, double deviation)
{
    Taps taps;
    taps.first = int(std::ceil(centre - cut_off * deviation));
    for (int i = taps.first; i <= centre + cut_off * deviation; ++i) {
        const double distance = (i - centre) / deviation;
        taps.weights.push_back(std::exp(-0.5 * distance * distance));
    }
    return taps;
}

/// The reduced grid of one direction: sample k stands at (k - margin) x step of the source, beyond both edges as far as the
/// second Gaussian reaches.
struct Reduced_Grid {
    int step, margin, length;

    Reduced_Grid(int source_length, int grid_step, double deviation)
        : step(grid_step),
          margin(int(std::ceil(cut_off * deviation / grid_step)) + 1),
          length((source_length - 1) / grid_step + 2 + 2 * margin)
    {}
    Weight_Bank Reducing(int source_length, double deviation) const
    {
        std::vector<Taps> taps;
        for (int k = 0; k < length; ++k) {
            taps.push_back(Gaussian_Taps(double(k - margin) * step, deviation));
            Fold_Into_Edges(taps.back(), source_length);
        }
        return Weight_Bank::From_Taps(source_length, taps, 15);
    }
    Weight_Bank Enlarging(int target_length, double deviation) const
    {
        std::vector<Taps> taps;
        for (int i = 0; i < target_length; ++i) {
            taps.push_back(Gaussian_Taps(double(i) / step + margin, deviation / step));
            Keep_Inside(taps.back(), length);
        }
        return Weight_Bank::From_Taps(length, taps, 15);
    }
};

std::size_t Row_Samples(const Bitmap_View& source)
{
    return (source.Row_Bytes() + 256 + 31) / 32 * 32;
}

/// A strip of rows between the passes, with the edge pixels repeated before and behind each row.
class Between_Strip {
public:
    Between_Strip(const Bitmap_View& source, int reach)
        : bytes_(source.Row_Bytes()),
          channels_(std::size_t(source.bytes_per_pixel)),
          reach_(std::size_t(reach)),
          stride_((margin + bytes_ + 256 + 31) / 32 * 32),
          samples_(Scratch<Between_Strip>(stride_ * Strip_Rows))
    {}
    std::int16_t* Row(int i) { return samples_ + margin + std::size_t(i) * stride_; }
    std::size_t Stride() const { return stride_; }
    void Repeat_Edges(int i)
    {
        std::int16_t* row = Row(i);
        std::int16_t* end = row + bytes_;
        for (std::size_t k = 0; k < reach_ * channels_; ++k) {
            *(row - 1 - k) = row[channels_ - 1 - k % channels_];
            end[k] = *(end - channels_ + k % channels_);
        }
    }

private:
    static constexpr std::size_t margin = 32; // at least most_reach pixels of three channels
    std::size_t bytes_, channels_, reach_, stride_;
    std::int16_t* samples_;
};

void Blur_Strip_Columns(const Bitmap_View& source, int first, int count, const Symmetric_Weights& weights,
                        Between_Strip& between)
{
    const std::uint8_t* rows[Strip_Rows + 2 * Symmetric_Weights::most_reach];
    for (int i = 0; i < count + 2 * weights.reach; ++i)
        rows[i] = source.Row(std::clamp(first - weights.reach + i, 0, source.height - 1));
    Filter_Symmetric_Columns({rows, count, source.Row_Bytes(), between.Row(0), between.Stride()}, weights);
    for (int i = 0; i < count; ++i) between.Repeat_Edges(i);
}

void Blur_Directly(const Bitmap_View& source, double deviation, const Blurred_Row_Sink& sink)
{
    const int reach = int(cut_off * deviation);
    const auto columns = Symmetric_Weights::Gaussian(deviation, reach, 1);
    const auto rows = Symmetric_Weights::Gaussian(deviation, reach, 2);
    const int strips = (source.height + Strip_Rows - 1) / Strip_Rows;
    For_Rows(strips, source.Row_Bytes() * 2 * Strip_Rows, [&](int first, int end) {
        Between_Strip between(source, reach);
        std::int16_t* blurred = Scratch<struct Directly_Blurred_Row>(Row_Samples(source));
        for (int strip = first; strip < end; ++strip) {
            const int top = strip * Strip_Rows, count = std::min(Strip_Rows, source.height - top);
            Blur_Strip_Columns(source, top, count, columns, between);
            for (int i = 0; i < count; ++i) {
                Filter_Symmetric_Row(between.Row(i), source.Row_Bytes(), source.bytes_per_pixel, rows, blurred);
                sink(top + i, blurred);
            }
        }
    });
}

void Reduce(const Bitmap_View& source, const Two_Banks& banks, Plane_Picture& reduced)
{
    const int strips = (reduced.Height() + Strip_Rows - 1) / Strip_Rows;
    const std::size_t cost = source.Row_Bytes() * std::size_t(source.height) / std::size_t(strips);
    For_Rows(strips, cost, [&](int first, int end) {
        for (int strip = first; strip < end; ++strip) {
            Strip_Output output{strip * Strip_Rows,
                                std::min((strip + 1) * Strip_Rows, reduced.Height()),
                                Row_Layout::Word_Planes,
                                {},
                                reduced.Plane()};
            for (int y = output.first; y < output.end; ++y) output.rows[y - output.first] = reduced.Row(y);
            Filter_Columns_Then_Rows(source, banks, output);
        }
    });
}

void Enlarge(const Plane_Picture& reduced, const Two_Banks& banks, const Bitmap_View& source,
             const Blurred_Row_Sink& sink)
{
    constexpr int rows_per_task = 128; // so that what two tasks both make of the reduced rows is little
    const int tasks = (source.height + rows_per_task - 1) / rows_per_task;
    For_Rows(tasks, source.Row_Bytes() * 2 * rows_per_task, [&](int first, int end) {
        Filtered_Rows filtered(reduced, banks.rows, Blur_Bits, Blur_Bits);
        std::int16_t* blurred = Scratch<struct Blurred_Row>(Row_Samples(source));
        const std::int16_t* rows[Filtered_Rows::Most_Rows];
        const int pairs = banks.columns.pairs;
        for (int y = first * rows_per_task; y < std::min(end * rows_per_task, source.height); ++y) {
            filtered.Look_At(banks.columns.starts[std::size_t(y)], 2 * pairs, rows);
            Filter_Word_Columns({rows, banks.columns.Weights(y), pairs, source.Row_Bytes(), banks.columns.bits},
                                blurred);
            sink(y, blurred);
        }
    });
}

} // namespace

Result<void> Blur_Rows(const Bitmap_View& source, float radius, const Blurred_Row_Sink& sink)
{
    if (!(radius >= Least_Blur_Radius && radius <= Most_Blur_Radius)) // also what is no number
        return Failure("the blur radius is outside 1 to 25 pixels");
    const double part = double(radius) / std::sqrt(2.0); // each of two Gaussians
    const int step = int(part / least_step_deviations);
    if (step < 2) {
        Blur_Directly(source, double(radius), sink);
        return {};
    }
    const Reduced_Grid along_x(source.width, step, part), along_y(source.height, step, part);
    auto reduced = Plane_Picture::Create(along_x.length, along_y.length, source.bytes_per_pixel);
    if (!reduced) return tl::make_unexpected(reduced.error());
    Reduce(source, {along_y.Reducing(source.height, part), along_x.Reducing(source.width, part), Blur_Bits, Blur_Bits},
           *reduced);
    Enlarge(*reduced,
            {along_y.Enlarging(source.height, part), along_x.Enlarging(source.width, part), Blur_Bits, Blur_Bits},
            source, sink);
    return {};
}
