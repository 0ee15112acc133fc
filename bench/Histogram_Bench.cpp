#include "bench/Harness.h"

#include "bkimgutl/contract/Types.h"
#include "bkimgutl/core/Color.h"
#include "bkimgutl/tone/Histogram.h"

#include <algorithm>
#include <cstdlib>
#include <opencv2/imgproc.hpp>
#include <vips/vips8>
#undef Rect // some versions of libvips define it, which hides cv::Rect

namespace {

void Count_With_OpenCV(const cv::Mat& mat, int channel)
{
    const int bins = 256;
    const float range[] = {0, 256};
    const float* ranges = range;
    cv::Mat histogram;
    cv::calcHist(&mat, 1, &channel, cv::Mat(), histogram, 1, &bins, &ranges);
}

void Count_Grey_With_OpenCV(const cv::Mat& mat)
{
    static cv::Mat grey;
    cv::cvtColor(mat, grey, cv::COLOR_BGR2GRAY);
    Count_With_OpenCV(grey, 0);
}

void Count_With_Vips(const cv::Mat& mat)
{
    const auto image = vips::VImage::new_from_memory(mat.data, mat.total() * mat.elemSize(), mat.cols, mat.rows,
                                                     mat.channels(), VIPS_FORMAT_UCHAR);
    std::size_t size = 0;
    void* bytes = image.hist_find().write_to_memory(&size);
    g_free(bytes);
}

/// The largest difference of a bin, 0 if all is well.
Bench_Error Count_Error(const Bitmap_View& view, int component)
{
    Histogram_Counts expected{};
    for (int y = 0; y < view.height; ++y) {
        const std::uint8_t* p = view.Row(y);
        for (int x = 0; x < view.width; ++x, p += 3) {
            if (component == Component_Luminance) ++expected[std::size_t(RGB_To_Luminance(p[2], p[1], p[0]))];
            if ((component & Component_Red) != 0) ++expected[p[2]];
            if ((component & Component_Green) != 0) ++expected[p[1]];
            if ((component & Component_Blue) != 0) ++expected[p[0]];
        }
    }
    return {*Component_Histogram(view, nullptr, component) == expected ? 0 : 1, 0};
}

void Add(Bench_Suite& suite, const char* name, int component, double goal, std::vector<Contender> peers)
{
    const Bench_Inputs& in = suite.Inputs();
    suite.Add({.name = name,
               .ours = {"Component_Histogram",
                        [&in, component] { (void)Component_Histogram(in.picture.View(), nullptr, component).value(); }},
               .peers = std::move(peers),
               .goal = goal,
               .allowed_error = 0,
               .check = [&in, component] { return Count_Error(in.picture.View(), component); }});
}

void Add_Operations(Bench_Suite& suite)
{
    const Bench_Inputs& in = suite.Inputs();
    Add(suite, "histogram of luminance", Component_Luminance, 0.40,
        {{"OpenCV", [&in] { Count_Grey_With_OpenCV(in.mat); }}});
    Add(suite, "histogram of red", Component_Red, 0, {{"OpenCV", [&in] { Count_With_OpenCV(in.mat, 2); }}});
    Add(suite, "histogram of three channels", Component_RGB, 0.60,
        {{"libvips", [&in] { Count_With_Vips(in.mat); }}, {"OpenCV, three calls", [&in] {
                                                               for (int channel = 0; channel < 3; ++channel)
                                                                   Count_With_OpenCV(in.mat, channel);
                                                           }}});
}

const Bench_Area histogram_area("histogram", Add_Operations);

} // namespace
