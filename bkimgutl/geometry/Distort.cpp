#include "bkimgutl/geometry/Distort.h"

#include "bkimgutl/core/Color.h"
#include "bkimgutl/core/Row_Loop.h"
#include "bkimgutl/filter/Scale.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace {

constexpr double most_shrinking = 64;

// The filter in steps of 1/4096, straight lines between; the sine of a Lanczos filter for each tap would take seconds.
class Filter_Table {
public:
    explicit Filter_Table(Interpolation_Method method) : method_(method), support_(Interpolation_Support(method))
    {
        const int count = int(support_ * steps) + 2;
        for (int i = 0; i < count; ++i) values_.push_back(Interpolation_Weight(method, double(i) / steps));
    }

    double Support() const { return support_; }

    double operator()(double distance) const
    {
        // The box jumps, and which side an edge falls on is the filter's own business.
        if (method_ == Interpolation_Method::Box) return Interpolation_Weight(method_, distance);
        const double place = std::abs(distance) * steps;
        const auto i = std::size_t(place);
        if (i + 1 >= values_.size()) return 0;
        return values_[i] + (values_[i + 1] - values_[i]) * (place - double(i));
    }

private:
    static constexpr int steps = 4096;
    Interpolation_Method method_;
    double support_;
    std::vector<double> values_;
};

/// Column x of the result shows position start + x * step of the source's row.
struct Row_Line {
    double start = 0;
    double step = 1;
};

Row_Line Line_Of_Row(const Horizontal_Distortion& d, int y, int height)
{
    const double t = height > 1 ? double(y) / (height - 1) : 0;
    const double left = d.top_left + (d.bottom_left - d.top_left) * t;
    const double right = d.top_right + (d.bottom_right - d.top_right) * t;
    if (!d.expand) return {left, (right - left) / std::max(1, d.width - 1)};
    const bool top_is_wider = d.top_right - d.top_left >= d.bottom_right - d.bottom_left;
    const double wide_left = top_is_wider ? d.top_left : d.bottom_left;
    const double wide_right = top_is_wider ? d.top_right : d.bottom_right;
    const double step = (right - left) / (wide_right - wide_left);
    return {left - (wide_left - d.offset) * step, step};
}

using Color = std::array<double, 3>;

class Row_Sampler {
public:
    Row_Sampler(const Filter_Table& filter, const std::uint8_t* row, const Bitmap_View& source)
        : filter_(filter), row_(row), width_(source.width), size_(source.bytes_per_pixel)
    {}

    // Taps outside are left out and the rest weighs more, so that edges do not darken.
    Color At(double position, double widening) const
    {
        const double centre = std::clamp(position, 0.0, double(width_ - 1));
        const double reach = filter_.Support() * widening;
        const int first = std::max(0, int(std::ceil(centre - reach)));
        const int last = std::min(width_ - 1, int(std::floor(centre + reach)));
        Color color{};
        double sum = 0;
        for (int i = first; i <= last; ++i) {
            const double weight = filter_((i - centre) / widening);
            sum += weight;
            for (int c = 0; c < size_; ++c) color[std::size_t(c)] += weight * row_[i * size_ + c];
        }
        for (int c = 0; c < size_; ++c) color[std::size_t(c)] = std::clamp(color[std::size_t(c)] / sum, 0.0, 255.0);
        return color;
    }

private:
    const Filter_Table& filter_;
    const std::uint8_t* row_;
    int width_;
    int size_;
};

void Distort_Row(const Row_Sampler& sampler, Row_Line line, int source_width, bool expand, const Color& background,
                 std::uint8_t* to, int width, int size)
{
    const double widening = std::max(1.0, line.step);
    for (int x = 0; x < width; ++x, to += size) {
        const double position = line.start + x * line.step;
        // Within half a pixel of the picture's edge the picture fades into the background.
        const double cover = expand ? std::clamp(std::min(position + 1, source_width - position), 0.0, 1.0) : 1.0;
        const Color color = cover > 0 ? sampler.At(position, widening) : Color{};
        for (int c = 0; c < size; ++c) {
            const auto i = std::size_t(c);
            to[c] = std::uint8_t(std::lround(color[i] * cover + background[i] * (1 - cover)));
        }
    }
}

std::string Complaint(const Horizontal_Distortion& d)
{
    for (const double value : {d.top_left, d.top_right, d.bottom_left, d.bottom_right, d.offset})
        if (!(std::abs(value) < 1e9)) return "a position of the quadrilateral is no position in a picture";
    const double top = d.top_right - d.top_left;
    const double bottom = d.bottom_right - d.bottom_left;
    if (!(top > 0 && bottom > 0)) return "a right position of the quadrilateral does not exceed its left one";
    if (d.width < 1) return "the new width is below 1";
    const double shrinking = d.expand ? 1 : std::max(top, bottom) / std::max(1, d.width - 1);
    if (shrinking > most_shrinking) return "the quadrilateral is too wide for the new width";
    if (Interpolation_Support(d.method) == 0)
        return "interpolation method " + std::to_string(int(d.method)) + " is outside 1 to 8";
    return {};
}

} // namespace

Result<Bitmap> Horizontally_Distorted(const Bitmap_View& source, const Horizontal_Distortion& distortion,
                                      const Background_Color& background)
{
    if (auto complaint = Complaint(distortion); !complaint.empty()) return Failure(std::move(complaint));
    auto result = Bitmap::Create(distortion.width, source.height, source.bytes_per_pixel);
    if (!result) return result;
    const auto to = result->Change();
    const Filter_Table filter(distortion.method);
    const int grey = RGB_To_Luminance(background.red, background.green, background.blue);
    const Color behind{double(source.Is_Grey() ? grey : background.blue), double(background.green),
                       double(background.red)};
    For_Rows(to.height, 64 * to.Row_Bytes(), [&](int first, int end) {
        for (int y = first; y < end; ++y)
            Distort_Row(Row_Sampler(filter, source.Row(y), source), Line_Of_Row(distortion, y, source.height),
                        source.width, distortion.expand, behind, to.Row(y), to.width, to.bytes_per_pixel);
    });
    return result;
}
