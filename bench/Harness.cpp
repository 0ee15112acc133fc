#include "bench/Harness.h"

#include "bkimgutl/codecs/Codec.h"
#include "bkimgutl/core/Row_Loop.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <hwy/highway.h>
#include <malloc.h>
#include <oneapi/tbb/global_control.h>
#include <opencv2/core/utility.hpp>
#include <random>
#include <string_view>
#include <vips/vips.h>

// bkimgutl_bench [--only TEXT] [--rounds N] [--target NAME]
// bkimgutl_bench --pictures FOLDER
//   --only      operations whose name holds TEXT
//   --rounds    at least 7, also the default
//   --target    the best instructions that ours may use, such as AVX2; the peers choose for themselves
//   --pictures  measures nothing, but writes 24.jpg and 100.jpg, of so many megapixels, for hv_bench.sh

namespace {

constexpr int threads = 2;

struct Area {
    const char* name;
    void (*add)(Bench_Suite&);
};

std::vector<Area>& Areas()
{
    static std::vector<Area> areas;
    return areas;
}

double Now_Ms()
{
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

double Median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    const std::size_t half = values.size() / 2;
    return values.size() % 2 != 0 ? values[half] : (values[half - 1] + values[half]) / 2;
}

double Time_Ms(const std::function<void()>& run)
{
    const double start = Now_Ms();
    run();
    return Now_Ms() - start;
}

std::uint8_t Byte(double value)
{
    return std::uint8_t(std::clamp(std::lround(value), 0L, 255L));
}

void Paint_Row(std::uint8_t* row, int width, int y, double scale)
{
    std::minstd_rand random(unsigned(y) + 1);
    for (int x = 0; x < width; ++x) {
        const double u = x * scale;
        const double v = y * scale;
        const double sky = 200 - v * 0.03;
        const double texture = 25 * std::sin(u * 0.31) * std::cos(v * 0.27) + 12 * std::sin(u * 1.1 + v * 0.7);
        const double edge = (int(u / 170) + int(v / 130)) % 3 == 0 ? -60 : 10;
        const double noise = double(random() % 13) - 6;
        const double light =
            sky + texture + edge + noise - 0.000004 * ((u - 3000) * (u - 3000) + (v - 2000) * (v - 2000));
        row[3 * x] = Byte(light * 0.9 + 10 * std::sin(u * 0.002));
        row[3 * x + 1] = Byte(light * 0.8 + 30 * std::cos(v * 0.003) + double(random() % 5));
        row[3 * x + 2] = Byte(light + 20 * std::sin((u + v) * 0.0015) - double(random() % 5));
    }
}

Bitmap Painted(int width, int height)
{
    Bitmap bitmap = std::move(Bitmap::Create(width, height, 3).value());
    const auto view = bitmap.Change();
    For_Rows(height, std::size_t(width) * 300, [&](int first, int end) {
        for (int y = first; y < end; ++y) Paint_Row(view.Row(y), width, y, 6000.0 / width);
    });
    return bitmap;
}

struct Options {
    std::string only;
    std::string pictures;
    std::string target;
    int rounds = 7;
};

Options Read_Options(int count, char** words)
{
    Options options;
    for (int i = 1; i + 1 < count; i += 2) {
        if (std::string_view(words[i]) == "--only") options.only = words[i + 1];
        if (std::string_view(words[i]) == "--pictures") options.pictures = words[i + 1];
        if (std::string_view(words[i]) == "--target") options.target = words[i + 1];
        if (std::string_view(words[i]) == "--rounds") options.rounds = std::max(7, std::atoi(words[i + 1]));
    }
    return options;
}

/// False where the processor has no such instructions.
bool Limit_Target(const std::string& name)
{
    const auto supported = hwy::SupportedTargets();
    for (auto rest = supported; rest != 0; rest &= rest - 1) {
        const auto target = rest & -rest; // better ones have lower bits
        if (name != hwy::TargetName(target)) continue;
        hwy::SetSupportedTargetsForTest(supported & -target);
        return true;
    }
    return false;
}

bool Write_Picture(int width, int height, const std::string& path)
{
    const Bitmap picture = Painted(width, height);
    Save_Request request;
    request.bitmap = &picture;
    request.target = path;
    request.quality = 92;
    return JPEG_Codec().Save(request).has_value();
}

class Copy_Clock {
public:
    explicit Copy_Clock(const cv::Mat& from) : from_(from), to_(from.clone()) {}
    double Once()
    {
        return Time_Ms([&] {
            For_Rows(from_.rows, from_.step[0], [&](int first, int end) {
                std::memcpy(to_.ptr(first), from_.ptr(first), std::size_t(end - first) * from_.step[0]);
            });
        });
    }

private:
    cv::Mat from_;
    cv::Mat to_;
};

struct Figures {
    double copy_ms = 0;
    double ours_ms = 0;
    std::vector<double> peers_ms;
};

Figures Measure(const Operation& operation, int rounds, Copy_Clock& copy)
{
    std::vector<double> copies;
    std::vector<double> ours;
    std::vector<std::vector<double>> peers(operation.peers.size());
    for (int round = 0; round < rounds; ++round) {
        copies.push_back(copy.Once());
        ours.push_back(Time_Ms(operation.ours.run));
        for (std::size_t i = 0; i < peers.size(); ++i) peers[i].push_back(Time_Ms(operation.peers[i].run));
    }
    Figures figures{Median(copies), Median(ours), {}};
    for (auto& times : peers) figures.peers_ms.push_back(Median(times));
    return figures;
}

std::string Verdict(const Operation& operation, const Bench_Error& error, double ratio)
{
    if (error.most > operation.allowed_error) return "WRONG";
    if (operation.goal <= 0) return "";
    return ratio <= operation.goal ? "reached" : "missed";
}

/// False when the result is wrong.
bool Run(const Operation& operation, int rounds, Copy_Clock& copy)
{
    operation.ours.run();
    Bench_Error error;
    if (operation.check) error = operation.check();
    for (const auto& peer : operation.peers) peer.run();
    const Figures figures = Measure(operation, rounds, copy);
    const double ratio = operation.peers.empty() ? 0 : figures.ours_ms / figures.peers_ms[0];
    const std::string verdict = Verdict(operation, error, ratio);
    std::printf("| %s | %.2f | %.2f | ", operation.name.c_str(), figures.ours_ms, figures.ours_ms / figures.copy_ms);
    if (!operation.peers.empty())
        std::printf("%s %.2f | %.3f | ", operation.peers[0].name.c_str(), figures.peers_ms[0], ratio);
    else
        std::printf("- | - | ");
    if (operation.goal > 0)
        std::printf("%.3g %s | ", operation.goal, verdict.c_str());
    else
        std::printf("- %s | ", verdict.c_str());
    if (operation.check)
        std::printf("%d, %.4f |", error.most, error.mean);
    else
        std::printf("- |");
    for (std::size_t i = 1; i < operation.peers.size(); ++i)
        std::printf(" %s %.2f (%.3f)", operation.peers[i].name.c_str(), figures.peers_ms[i],
                    figures.ours_ms / figures.peers_ms[i]);
    std::printf("\n");
    std::fflush(stdout);
    return verdict != "WRONG";
}

} // namespace

Bench_Area::Bench_Area(const char* name, void (*add)(Bench_Suite&))
{
    Areas().push_back({name, add});
}

cv::Mat Mat_Of(const Bitmap_View& view)
{
    cv::Mat mat(view.height, view.width, view.Is_Grey() ? CV_8UC1 : CV_8UC3);
    for (int y = 0; y < view.height; ++y) std::memcpy(mat.ptr(y), view.Row(y), view.Row_Bytes());
    return mat;
}

Bitmap Bitmap_Of(const cv::Mat& mat)
{
    Bitmap bitmap = std::move(Bitmap::Create(mat.cols, mat.rows, mat.channels()).value());
    const auto view = bitmap.Change();
    for (int y = 0; y < mat.rows; ++y) std::memcpy(view.Row(y), mat.ptr(y), view.Row_Bytes());
    return bitmap;
}

Bench_Error Compare(const Bitmap_View& expected, const Bitmap_View& actual, int margin)
{
    if (expected.width != actual.width || expected.height != actual.height ||
        expected.bytes_per_pixel != actual.bytes_per_pixel)
        return {256, 256};
    Bench_Error error;
    double sum = 0;
    double count = 0;
    const std::size_t skip = std::size_t(margin) * std::size_t(expected.bytes_per_pixel);
    for (int y = margin; y < expected.height - margin; ++y) {
        for (std::size_t i = skip; i + skip < expected.Row_Bytes(); ++i) {
            const int difference = std::abs(int(expected.Row(y)[i]) - int(actual.Row(y)[i]));
            error.most = std::max(error.most, difference);
            sum += difference;
            count += 1;
        }
    }
    error.mean = count > 0 ? sum / count : 0;
    return error;
}

int main(int count, char** words)
{
    // Freed memory stays in the process: no peer pays for page faults that we are spared.
    mallopt(M_MMAP_THRESHOLD, 1 << 30);
    mallopt(M_TRIM_THRESHOLD, 2000 << 20);
    if (VIPS_INIT(words[0]) != 0) return 1;
    vips_concurrency_set(threads);
    vips_cache_set_max(0);
    cv::setNumThreads(threads);
    const oneapi::tbb::global_control limit(oneapi::tbb::global_control::max_allowed_parallelism, threads);
    const Options options = Read_Options(count, words);
    if (!options.target.empty() && !Limit_Target(options.target)) {
        std::fprintf(stderr, "no target %s here\n", options.target.c_str());
        return 1;
    }
    if (!options.pictures.empty()) {
        const bool written = Write_Picture(6000, 4000, options.pictures + "/24.jpg") &&
                             Write_Picture(12000, 8334, options.pictures + "/100.jpg");
        return written ? 0 : 1;
    }
    Bench_Inputs inputs{Painted(6000, 4000), {}, Painted(1500, 1000), {}};
    inputs.mat = Mat_Of(inputs.picture.View());
    inputs.small_mat = Mat_Of(inputs.small.View());
    Bench_Suite suite(inputs);
    for (const Area& area : Areas()) area.add(suite);
    Copy_Clock copy(inputs.mat);
    std::printf("| operation | ours, ms | by copy | peer, ms | ratio | goal | largest, mean error | other peers |\n"
                "|---|---|---|---|---|---|---|---|\n");
    bool right = true;
    for (const Operation& operation : suite.Operations())
        if (operation.name.find(options.only) != std::string::npos)
            right = Run(operation, options.rounds, copy) && right;
    return right ? 0 : 1;
}
