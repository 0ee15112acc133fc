#include "bench/Harness.h"

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
    vips_free(bytes);
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

void Add_Operations(Bench_Suite& suite)
{
    Add_Turn(suite, {"rotate by 90", {1, false}, cv::ROTATE_90_COUNTERCLOCKWISE, VIPS_ANGLE_D270, 0.12});
    Add_Turn(suite, {"rotate by 270", {3, false}, cv::ROTATE_90_CLOCKWISE, VIPS_ANGLE_D90, 0.12});
    Add_Turn(suite, {"rotate by 180", {2, false}, cv::ROTATE_180, VIPS_ANGLE_D180, 0});
    Add_Flip(suite, {"flip left to right", Mirror_Left_To_Right, 1, VIPS_ANGLE_D0, 0.30});
    Add_Flip(suite, {"flip top to bottom", Mirror_Top_To_Bottom, 0, VIPS_ANGLE_D0, 0.75});
}

const Bench_Area geometry_area("geometry", Add_Operations);

} // namespace
