#include "bench/Harness.h"

#include "bkimgutl/geometry/Cubic_Table.h"
#include "bkimgutl/geometry/Rotate.h"
#include "bkimgutl/geometry/Rotation_Map.h"
#include "bkimgutl/geometry/Turn.h"

#include <cmath>
#include <opencv2/imgproc.hpp>
#include <vips/vips8>
#undef Rect // some versions of libvips define it, which hides cv::Rect

namespace {

vips::VImage Wrap(const cv::Mat& mat)
{
    return vips::VImage::new_from_memory(mat.data, mat.total() * mat.elemSize(), mat.cols, mat.rows, mat.channels(),
                                         VIPS_FORMAT_UCHAR);
}

void Evaluate(const vips::VImage& image)
{
    std::size_t size = 0;
    void* bytes = image.write_to_memory(&size);
    g_free(bytes);
}

struct Right_Angle {
    const char* name;
    Pixel_Symmetry symmetry;
    int opencv; ///< code of rotate, or of flip
    VipsAngle vips;
    double goal;
};

void Add_Turn(Bench_Suite& suite, const Right_Angle& turn)
{
    const Bench_Inputs& in = suite.Inputs();
    static cv::Mat out;
    suite.Add({.name = turn.name,
               .ours = {"Turned", [&in, turn] { (void)Turned(in.picture, turn.symmetry).value(); }},
               .peers = {{"libvips", [&in, turn] { Evaluate(Wrap(in.mat).rot(turn.vips)); }},
                         {"OpenCV", [&in, turn] { cv::rotate(in.mat, out, turn.opencv); }}},
               .goal = turn.goal,
               .allowed_error = 0,
               .check = [&in, turn] {
                   cv::Mat exact;
                   cv::rotate(in.mat, exact, turn.opencv);
                   return Compare(Bitmap_Of(exact).View(), Turned(in.picture, turn.symmetry)->View());
               }});
}

void Add_Flip(Bench_Suite& suite, const Right_Angle& flip)
{
    const Bench_Inputs& in = suite.Inputs();
    static cv::Mat out;
    suite.Add({.name = flip.name,
               .ours = {"Turned", [&in, flip] { (void)Turned(in.picture, flip.symmetry).value(); }},
               .peers = {{"OpenCV", [&in, flip] { cv::flip(in.mat, out, flip.opencv); }}},
               .goal = flip.goal,
               .allowed_error = 0,
               .check = [&in, flip] {
                   cv::Mat exact;
                   cv::flip(in.mat, exact, flip.opencv);
                   return Compare(Bitmap_Of(exact).View(), Turned(in.picture, flip.symmetry)->View());
               }});
}

constexpr float angle = 7.3F;

double Exact_Cubic(const Bitmap_View& from, double u, double v, int channel)
{
    const int column = int(std::floor(u));
    const int row = int(std::floor(v));
    const auto across = Cubic_Weights(u - column);
    const auto down = Cubic_Weights(v - row);
    double sum = 0;
    for (int j = 0; j < 4; ++j)
        for (int i = 0; i < 4; ++i)
            sum +=
                down[std::size_t(j)] * across[std::size_t(i)] * from.Row(row - 1 + j)[3 * (column - 1 + i) + channel];
    return std::min(std::max(sum, 0.0), 255.0);
}

// Every 7th row; the edges have tests of their own.
Bench_Error Rotation_Error(const Bitmap_View& from)
{
    const Bitmap rotated = std::move(Rotated(Bitmap_Of(Mat_Of(from)), angle, {}).value());
    const Rotation_Map map(from.width, from.height, double(angle));
    Bench_Error error;
    double sum = 0;
    double count = 0;
    for (int y = 0; y < map.height; y += 7) {
        for (int x = 0; x < map.width; ++x) {
            const double u = map.u0 + x * map.cosine - y * map.sine;
            const double v = map.v0 + x * map.sine + y * map.cosine;
            if (u < 3 || v < 3 || u > from.width - 7 || v > from.height - 7) continue;
            for (int c = 0; c < 3; ++c, ++count) {
                const int expected = int(std::lround(Exact_Cubic(from, u, v, c)));
                const int difference = std::abs(expected - rotated.View().Row(y)[3 * x + c]);
                error.most = std::max(error.most, difference);
                sum += difference;
            }
        }
    }
    error.mean = sum / count;
    return error;
}

void Warp(const cv::Mat& picture, int kind)
{
    static cv::Mat out;
    const Rotation_Map map(picture.cols, picture.rows, double(angle));
    cv::Mat m =
        cv::getRotationMatrix2D({float(picture.cols) / 2 - 0.5F, float(picture.rows) / 2 - 0.5F}, double(angle), 1);
    m.at<double>(0, 2) += (map.width - picture.cols) / 2.0;
    m.at<double>(1, 2) += (map.height - picture.rows) / 2.0;
    cv::warpAffine(picture, out, m, {map.width, map.height}, kind, cv::BORDER_CONSTANT, cv::Scalar::all(0));
}

void Add_Rotation(Bench_Suite& suite)
{
    const Bench_Inputs& in = suite.Inputs();
    suite.Add({.name = "rotate by 7.3 degrees, bicubic",
               .ours = {"Rotated", [&in] { (void)Rotated(in.picture, angle, {}).value(); }},
               .peers = {{"OpenCV bicubic", [&in] { Warp(in.mat, cv::INTER_CUBIC); }},
                         {"OpenCV bilinear", [&in] { Warp(in.mat, cv::INTER_LINEAR); }}},
               .goal = 0.18,
               .allowed_error = 1,
               .check = [&in] { return Rotation_Error(in.picture.View()); }});
}

void Add_Operations(Bench_Suite& suite)
{
    Add_Turn(suite, {"rotate by 90", {1, false}, cv::ROTATE_90_COUNTERCLOCKWISE, VIPS_ANGLE_D270, 0.12});
    Add_Turn(suite, {"rotate by 270", {3, false}, cv::ROTATE_90_CLOCKWISE, VIPS_ANGLE_D90, 0.12});
    Add_Turn(suite, {"rotate by 180", {2, false}, cv::ROTATE_180, VIPS_ANGLE_D180, 0});
    Add_Flip(suite, {"flip left to right", Mirror_Left_To_Right, 1, VIPS_ANGLE_D0, 0.30});
    Add_Flip(suite, {"flip top to bottom", Mirror_Top_To_Bottom, 0, VIPS_ANGLE_D0, 0.75});
    Add_Rotation(suite);
}

const Bench_Area geometry_area("geometry", Add_Operations);

} // namespace
