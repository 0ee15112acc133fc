#include "bench/Harness.h"

#include "bkimgutl/filter/Blur.h"
#include "bkimgutl/filter/Scale.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <opencv2/imgproc.hpp>
#include <optional>
#include <stdexcept>
#include <thread>
#include <zimg.h>

namespace {

/// zimg works on planes: the picture is split, two threads filter the upper and the lower half, and the planes are merged.
class Zimg_Scaler {
public:
    Zimg_Scaler(const cv::Mat& source, cv::Size to, zimg_resample_filter_e filter, double parameter)
        : source_(source), result_(to, CV_8UC3)
    {
        for (int i = 0; i < 3; ++i) in_.push_back(Plane(source.size())), out_.push_back(Plane(to));
        const int middle = to.height / 2 & ~15;
        halves_[0] = Half_Of(0, middle, filter, parameter);
        halves_[1] = Half_Of(middle, to.height, filter, parameter);
    }
    ~Zimg_Scaler()
    {
        for (Half& half : halves_) zimg_filter_graph_free(half.graph);
    }
    Zimg_Scaler(const Zimg_Scaler&) = delete;
    Zimg_Scaler& operator=(const Zimg_Scaler&) = delete;

    void Run()
    {
        cv::split(source_, in_);
        std::thread helper([this] { Filter(halves_[1]); });
        Filter(halves_[0]);
        helper.join();
        cv::merge(out_, result_);
    }

private:
    struct Half {
        zimg_filter_graph* graph = nullptr;
        int top = 0;
        cv::Mat scratch;
    };

    static cv::Mat Plane(cv::Size size) // rows on 64-byte boundaries, with room for vector code around
    {
        return cv::Mat(size.height + 64, (size.width + 63) / 64 * 64 + 64, CV_8U,
                       cv::Scalar(0))(cv::Rect(cv::Point(), size));
    }

    Half Half_Of(int top, int end, zimg_resample_filter_e filter, double parameter) const
    {
        zimg_image_format from, to;
        zimg_image_format_default(&from, ZIMG_API_VERSION);
        zimg_image_format_default(&to, ZIMG_API_VERSION);
        from.pixel_type = to.pixel_type = ZIMG_PIXEL_BYTE;
        from.pixel_range = to.pixel_range = ZIMG_RANGE_FULL;
        from.width = unsigned(source_.cols), from.height = unsigned(source_.rows);
        to.width = unsigned(result_.cols), to.height = unsigned(end - top);
        const double ratio = double(source_.rows) / result_.rows;
        from.active_region = {0, top * ratio, double(source_.cols), (end - top) * ratio};
        zimg_graph_builder_params settings;
        zimg_graph_builder_params_default(&settings, ZIMG_API_VERSION);
        settings.resample_filter = filter, settings.filter_param_a = parameter;
        settings.cpu_type = ZIMG_CPU_AUTO_64B;
        Half half{zimg_filter_graph_build(&from, &to, &settings), top, {}};
        if (!half.graph) throw std::runtime_error("zimg refuses the conversion");
        std::size_t size = 0;
        zimg_filter_graph_get_tmp_size(half.graph, &size);
        half.scratch = cv::Mat(1, int(size) + 65536, CV_8U);
        return half;
    }

    void Filter(Half& half)
    {
        for (std::size_t i = 0; i < 3; ++i) {
            zimg_image_buffer_const in{};
            zimg_image_buffer out{};
            in.version = out.version = ZIMG_API_VERSION;
            in.plane[0] = {in_[i].data, std::ptrdiff_t(in_[i].step), ZIMG_BUFFER_MAX};
            out.plane[0] = {out_[i].ptr(half.top), std::ptrdiff_t(out_[i].step), ZIMG_BUFFER_MAX};
            zimg_filter_graph_process(half.graph, &in, &out, cv::alignPtr(half.scratch.data, 64), nullptr, nullptr,
                                      nullptr, nullptr);
        }
    }

    cv::Mat source_, result_;
    std::vector<cv::Mat> in_, out_;
    Half halves_[2];
};

/// The result of the last run of ours, and room for the peers'.
std::optional<Bitmap> result;
cv::Mat peer_out, peer_blur;

std::vector<std::vector<std::pair<int, double>>> Exact_Weights(int from, int to, Interpolation_Method method)
{
    std::vector<std::vector<std::pair<int, double>>> all;
    const double ratio = double(from) / to, widening = std::max(ratio, 1.0);
    for (int i = 0; i < to; ++i) {
        const double centre = (i + 0.5) * ratio - 0.5, reach = Interpolation_Support(method) * widening;
        std::vector<std::pair<int, double>> taps;
        double sum = 0;
        for (int j = std::max(0, int(std::ceil(centre - reach))); j <= std::min(from - 1.0, centre + reach); ++j) {
            taps.emplace_back(j, Interpolation_Weight(method, (j - centre) / widening));
            sum += taps.back().second;
        }
        for (auto& tap : taps) tap.second /= sum;
        all.push_back(std::move(taps));
    }
    return all;
}

/// The mean of each block in whole numbers, halves upwards. A pixel belongs to the block that holds its centre.
cv::Mat Exact_Means(const cv::Mat& source, cv::Size to)
{
    const auto start = [](std::int64_t i, std::int64_t from, std::int64_t count) {
        return int((2 * i * from + count) / (2 * count));
    };
    cv::Mat out(to, CV_8UC3);
    for (int y = 0; y < to.height; ++y) {
        const int top = start(y, source.rows, to.height), bottom = start(y + 1, source.rows, to.height);
        for (int x = 0; x < to.width; ++x) {
            const int left = start(x, source.cols, to.width), right = start(x + 1, source.cols, to.width);
            const int pixels = (right - left) * (bottom - top);
            for (int c = 0; c < 3; ++c) {
                int sum = 0;
                for (int v = top; v < bottom; ++v)
                    for (int u = left; u < right; ++u) sum += source.ptr(v)[3 * u + c];
                out.ptr(y)[3 * x + c] = std::uint8_t((2 * sum + pixels) / (2 * pixels));
            }
        }
    }
    return out;
}

cv::Mat Exactly_Scaled(const cv::Mat& source, cv::Size to, Interpolation_Method method)
{
    const auto rows = Exact_Weights(source.rows, to.height, method),
               columns = Exact_Weights(source.cols, to.width, method);
    cv::Mat out(to, CV_8UC3);
    std::vector<double> line(std::size_t(source.cols) * 3);
    for (int y = 0; y < to.height; ++y) {
        std::fill(line.begin(), line.end(), 0.0);
        for (const auto& [from, weight] : rows[std::size_t(y)]) {
            const std::uint8_t* row = source.ptr(from);
            for (std::size_t i = 0; i < line.size(); ++i) line[i] += weight * row[i];
        }
        for (int x = 0; x < to.width; ++x)
            for (int c = 0; c < 3; ++c) {
                double sum = 0;
                for (const auto& [from, weight] : columns[std::size_t(x)])
                    sum += weight * line[std::size_t(from) * 3 + std::size_t(c)];
                out.ptr(y)[3 * x + c] = cv::saturate_cast<std::uint8_t>(sum);
            }
    }
    return out;
}

struct Scale_Row {
    Interpolation_Method method;
    const char* name;
    cv::Size to;
    bool enlarging;
    double goal;
};

void Add_Scaling(Bench_Suite& suite, const Scale_Row& row)
{
    const Bench_Inputs& in = suite.Inputs();
    const cv::Mat& mat = row.enlarging ? in.small_mat : in.mat;
    const Bitmap& picture = row.enlarging ? in.small : in.picture;
    std::vector<Contender> peers;
    if (row.method == Interpolation_Method::Box) {
        peers.push_back(
            {"OpenCV INTER_AREA", [&mat, row] { cv::resize(mat, peer_out, row.to, 0, 0, cv::INTER_AREA); }});
    } else {
        const bool lanczos = row.method == Interpolation_Method::Lanczos3;
        const auto zimg = std::make_shared<Zimg_Scaler>(
            mat, row.to, lanczos ? ZIMG_RESIZE_LANCZOS : ZIMG_RESIZE_BILINEAR, lanczos ? 3 : NAN);
        peers.push_back({"zimg with split and merge", [zimg] { zimg->Run(); }});
    }
    suite.Add({.name = std::string(row.name) + " " + std::to_string(mat.cols) + " to " + std::to_string(row.to.width),
               .ours = {"Scaled",
                        [&picture, row] {
                            result = Scaled(picture.View(), row.to.width, row.to.height, row.method).value();
                        }},
               .peers = std::move(peers),
               .goal = row.goal,
               .allowed_error = row.method == Interpolation_Method::Box ? 0 : 1,
               .check = [&mat, row] {
                   const cv::Mat exact = row.method == Interpolation_Method::Box
                                             ? Exact_Means(mat, row.to)
                                             : Exactly_Scaled(mat, row.to, row.method);
                   return Compare(Bitmap_Of(exact).View(), result->View());
               }});
}

constexpr int rows_between = 37; // the blurs are compared on every 37th row, since the reference takes seconds

/// Row y of the blur in double precision, weights up to 8 standard deviations away.
std::vector<double> Exactly_Blurred_Row(const cv::Mat& source, int y, double sigma)
{
    const int reach = int(std::ceil(8 * sigma));
    std::vector<double> weights;
    double sum = 0;
    for (int i = -reach; i <= reach; ++i) {
        weights.push_back(std::exp(-0.5 * i * i / (sigma * sigma)));
        sum += weights.back();
    }
    std::vector<double> column(std::size_t(source.cols + 2 * reach) * 3), row(std::size_t(source.cols) * 3);
    for (int i = -reach; i <= reach; ++i) {
        const std::uint8_t* from = source.ptr(std::clamp(y + i, 0, source.rows - 1));
        const double weight = weights[std::size_t(i + reach)] / sum;
        for (int x = -reach; x < source.cols + reach; ++x)
            for (int c = 0; c < 3; ++c)
                column[std::size_t((x + reach) * 3 + c)] += weight * from[std::clamp(x, 0, source.cols - 1) * 3 + c];
    }
    for (std::size_t i = 0; i < weights.size(); ++i)
        for (std::size_t x = 0; x < row.size(); ++x) row[x] += weights[i] / sum * column[x + 3 * i];
    return row;
}

/// Compares rows of `result` with level(source, blur) of the exact blur.
template <class Level>
Bench_Error Compare_With_Blur(const cv::Mat& source, double sigma, Level&& level)
{
    const int rows = (source.rows + rows_between - 1) / rows_between;
    cv::Mat expected(rows, source.cols, CV_8UC3), actual(rows, source.cols, CV_8UC3);
    for (int i = 0; i < rows; ++i) {
        const int y = i * rows_between;
        const auto blurred = Exactly_Blurred_Row(source, y, sigma);
        for (std::size_t x = 0; x < blurred.size(); ++x)
            expected.ptr(i)[x] = cv::saturate_cast<std::uint8_t>(level(double(source.ptr(y)[x]), blurred[x]));
        std::copy_n(result->View().Row(y), blurred.size(), actual.ptr(i));
    }
    return Compare(Bitmap_Of(expected).View(), Bitmap_Of(actual).View());
}

void Add_Blur(Bench_Suite& suite, double sigma, double goal)
{
    const Bench_Inputs& in = suite.Inputs();
    suite.Add({.name = cv::format("blur, sigma %g", sigma),
               .ours = {"Blurred",
                        [&in, sigma] {
                            result = Blurred(in.picture.View(), {float(sigma), 100, 7}).value();
                        }},
               .peers = {{"OpenCV GaussianBlur", [&in, sigma] { cv::GaussianBlur(in.mat, peer_out, {}, sigma); }}},
               .goal = goal,
               .allowed_error = 1,
               .check = [&in, sigma] {
                   return Compare_With_Blur(in.mat, sigma, [](double, double blurred) { return blurred; });
               }});
}

void Add_Unsharp(Bench_Suite& suite, double sigma, double goal)
{
    const Bench_Inputs& in = suite.Inputs();
    suite.Add({.name = cv::format("unsharp, sigma %g", sigma),
               .ours = {"Unsharp_Masked",
                        [&in, sigma] {
                            result = Unsharp_Masked(in.picture.View(), {0.75F, 0.75F, float(sigma), 0, 0, 7}).value();
                        }},
               .peers = {{"OpenCV GaussianBlur, addWeighted",
                          [&in, sigma] {
                              cv::GaussianBlur(in.mat, peer_blur, {}, sigma);
                              cv::addWeighted(in.mat, 1.75, peer_blur, -0.75, 0, peer_out);
                          }}},
               .goal = goal,
               .allowed_error = 1,
               .check = [&in, sigma] {
                   return Compare_With_Blur(
                       in.mat, sigma, [](double level, double blurred) { return level + 0.75 * (level - blurred); });
               }});
}

void Add_Operations(Bench_Suite& suite)
{
    for (const Scale_Row& row : {Scale_Row{Interpolation_Method::Lanczos3, "Lanczos 3", {1500, 1000}, false, 0.40},
                                 Scale_Row{Interpolation_Method::Lanczos3, "Lanczos 3", {2000, 1333}, false, 0.40},
                                 Scale_Row{Interpolation_Method::Lanczos3, "Lanczos 3", {6000, 4000}, true, 0.45},
                                 Scale_Row{Interpolation_Method::Triangle, "triangle", {1500, 1000}, false, 0.40},
                                 Scale_Row{Interpolation_Method::Triangle, "triangle", {2000, 1333}, false, 0.40},
                                 Scale_Row{Interpolation_Method::Box, "box", {1500, 1000}, false, 0.30},
                                 Scale_Row{Interpolation_Method::Box, "box", {2000, 1333}, false, 0.13}})
        Add_Scaling(suite, row);
    Add_Blur(suite, 1.5, 0.35);
    Add_Blur(suite, 5, 0.15);
    Add_Blur(suite, 12, 0.055);
    Add_Unsharp(suite, 1.5, 0.28);
    Add_Unsharp(suite, 5, 0.14);
}

const Bench_Area filter_area("filter", Add_Operations);

} // namespace
