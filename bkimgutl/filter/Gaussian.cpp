#include "bkimgutl/filter/Gaussian.h"

#include "bkimgutl/core/Row_Loop.h"
#include "bkimgutl/filter/Scratch.h"
#include "bkimgutl/filter/Spread_Rows.h"
#include "bkimgutl/filter/Strip_Passes.h"
#include "bkimgutl/filter/Symmetric_Rows.h"
#include "bkimgutl/filter/Window_Rows.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double cut_off = 3.6; // standard deviations; what lies beyond is worth a twelfth of a level at most

/// The least deviation in steps of the reduced grid. What the grid takes for its mirror image then is worth a quarter of a
/// level at most, on stripes of the worst width.
constexpr double least_step_deviations = 1.25;

/// What a picture is reduced with before a cubic spline of `step` enlarges it. Variances add up, and so do fourth cumulants:
/// the spline's is -step^4 / 30, which a term of the Gram-Charlier series makes up for.
class Reducing_Kernel {
public:
    Reducing_Kernel(double deviation, int step)
        : deviation_(std::sqrt(deviation * deviation - step * step / 3.0)), excess_(std::pow(step / deviation_, 4) / 30)
    {}
    double Reach() const { return cut_off * deviation_; }
    double Weight(double distance) const
    {
        const double x = distance / deviation_, square = x * x;
        return std::exp(-0.5 * square) * (1 + excess_ / 24 * ((square - 6) * square + 3));
    }

private:
    double deviation_, excess_;
};

/// The four weights of a cubic spline `part` of a step behind its second sample.
std::vector<double> Spline_Weights(double part)
{
    const double rest = 1 - part;
    return {rest * rest * rest / 6, (4 - (6 - 3 * part) * part * part) / 6, (4 - (6 - 3 * rest) * rest * rest) / 6,
            part * part * part / 6};
}

/// The reduced grid of one direction: sample k stands at (k - 1) x step of the source, one beyond each edge and more where
/// the spline reaches.
struct Reduced_Grid {
    int source_length, step;

    int Length() const { return (source_length - 1) / step + 4; }
    Line_Taps Reducing(double deviation) const
    {
        const Reducing_Kernel kernel(deviation, step);
        const int reach = int(kernel.Reach());
        std::vector<double> inner;
        for (int i = -reach; i <= reach; ++i) inner.push_back(kernel.Weight(i));
        Taps normal{0, inner};
        Fold_Into_Edges(normal, 2 * reach + 1);

        Line_Taps line{source_length, {}, {normal.weights}};
        for (int k = 0; k < Length(); ++k) {
            const int first = (k - 1) * step - reach;
            Taps taps{first, inner};
            if (first >= 0 && first + 2 * reach < source_length) {
                line.outputs.push_back({first, 0});
            } else {
                Fold_Into_Edges(taps, source_length);
                line.Add(std::move(taps));
            }
        }
        return line;
    }
    Line_Taps Enlarging() const
    {
        Line_Taps line{Length(), {}, {}};
        for (int part = 0; part < step; ++part) line.recipes.push_back(Spline_Weights(double(part) / step));
        for (int i = 0; i < source_length; ++i) line.outputs.push_back({i / step, i % step});
        return line;
    }
};

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

void Blur_Directly(const Bitmap_View& source, double deviation, const Blur_Sink& sink)
{
    const int reach = int(cut_off * deviation);
    const auto columns = Symmetric_Weights::Gaussian(deviation, reach, 1);
    const auto rows = Symmetric_Weights::Gaussian(deviation, reach, 2);
    const int strips = (source.height + Strip_Rows - 1) / Strip_Rows;
    For_Rows(strips, source.Row_Bytes() * 2 * Strip_Rows, [&](int first, int end) {
        Between_Strip between(source, reach);
        std::int16_t* blurred = Scratch<struct Directly_Blurred_Row>(Padded_Samples(source.Row_Bytes()));
        for (int strip = first; strip < end; ++strip) {
            const int top = strip * Strip_Rows, count = std::min(Strip_Rows, source.height - top);
            Blur_Strip_Columns(source, top, count, columns, between);
            for (int i = 0; i < count; ++i) {
                Filter_Symmetric_Row(between.Row(i), source.Row_Bytes(), source.bytes_per_pixel, rows, blurred);
                sink({top + i, 0, source.Row_Bytes(), blurred});
            }
        }
    });
}

void Reduce(const Bitmap_View& source, const Two_Banks& banks, Word_Picture& reduced)
{
    const int strips = (reduced.Height() + Strip_Rows - 1) / Strip_Rows;
    const std::size_t cost = source.Row_Bytes() * std::size_t(source.height) / std::size_t(strips);
    For_Rows(strips, cost, [&](int first, int end) {
        for (int strip = first; strip < end; ++strip) {
            const int top = strip * Strip_Rows;
            Strip_Output<std::int16_t> output{top, std::min(Strip_Rows, reduced.Height() - top), {}};
            for (int i = 0; i < output.count; ++i) output.rows[i] = reduced.Row(top + i);
            Filter_Columns_Then_Rows(source, banks, output);
        }
    });
}

void Enlarge(const Word_Picture& reduced, const Spread_Plan& plan, const Blend_Bank& bank, const Bitmap_View& source,
             const Blur_Sink& sink)
{
    const Row_Maker maker{reduced.Height(), source.Row_Bytes(), [&](int first, int count, std::int16_t* const* out) {
                              const std::int16_t* in[Strip_Rows];
                              for (int i = 0; i < count; ++i) in[i] = reduced.Row(first + i);
                              Spread_Rows(plan, in, count, out);
                          }};
    constexpr int rows_per_task = 128; // so that what two tasks both make of the reduced rows is little
    const int tasks = (source.height + rows_per_task - 1) / rows_per_task;
    For_Rows(tasks, source.Row_Bytes() * 2 * rows_per_task, [&](int first, int end) {
        Filter_Rows_Then_Columns(maker, bank, first * rows_per_task, std::min(end * rows_per_task, source.height),
                                 [&](int y, const Blend_Job& job) {
                                     const std::size_t count = job.end - job.first;
                                     std::int16_t* blurred = Scratch<struct Blurred_Tile>(Padded_Samples(count));
                                     Blend_Columns(job, blurred);
                                     sink({y, job.first, count, blurred});
                                 });
    });
}

} // namespace

Result<void> Blur_Parts(const Bitmap_View& source, float radius, const Blur_Sink& sink)
{
    if (!(radius >= Least_Blur_Radius && radius <= Most_Blur_Radius)) // also what is no number
        return Failure("the blur radius is outside 1 to 25 pixels");
    const int step = int(double(radius) / least_step_deviations);
    if (step < 2) {
        Blur_Directly(source, double(radius), sink);
        return {};
    }
    const Reduced_Grid along_x{source.width, step}, along_y{source.height, step};
    auto reduced = Word_Picture::Create(along_x.Length(), along_y.Length(), source.bytes_per_pixel);
    if (!reduced) return tl::make_unexpected(reduced.error());
    Reduce(source,
           {Weight_Bank(along_y.Reducing(double(radius)), Column_Shape(15)),
            Weight_Bank(along_x.Reducing(double(radius)), Window_Row_Shape(15)), Blur_Bits, Blur_Bits},
           *reduced);
    Enlarge(*reduced, Plan_Spread(along_x.Enlarging(), source.bytes_per_pixel, 15), Blend_Bank(along_y.Enlarging()),
            source, sink);
    return {};
}
