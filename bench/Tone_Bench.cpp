#include "bench/Harness.h"

#include "bkimgutl/core/Color.h"
#include "bkimgutl/tone/Table_Map.h"

#include <array>
#include <opencv2/imgproc.hpp>
#include <optional>
#include <vips/vips8>

namespace {

using Table = std::array<std::int32_t, 256>;

/// What ours and the peers work with; lives as long as the program.
struct Tone_Inputs {
    Table red, green, blue, saturation, value;
    // Not in braces: those would make a matrix of the three numbers.
    cv::Mat tables = cv::Mat(1, 256, CV_8UC3), hsv_tables = cv::Mat(1, 256, CV_8UC3), hsv, out;
    std::optional<Bitmap> result;

    Tone_Inputs()
    {
        for (int i = 0; i < 256; ++i) {
            const auto at = std::size_t(i);
            red[at] = 255 - i, green[at] = i * i / 255, blue[at] = std::min(255, i * 9 / 8);
            saturation[at] = cv::saturate_cast<std::uint8_t>(i * 1.1),
            value[at] = cv::saturate_cast<std::uint8_t>(i * 0.9);
            tables.at<cv::Vec3b>(i) = {std::uint8_t(blue[at]), std::uint8_t(green[at]), std::uint8_t(red[at])};
            hsv_tables.at<cv::Vec3b>(i) = {std::uint8_t(i), std::uint8_t(saturation[at]), std::uint8_t(value[at])};
        }
    }
};

void Map_With_Vips(const cv::Mat& picture, const cv::Mat& tables, cv::Mat& out)
{
    const auto image = [](const cv::Mat& mat) {
        return vips::VImage::new_from_memory(mat.data, mat.total() * 3, mat.cols, mat.rows, 3, VIPS_FORMAT_UCHAR);
    };
    out.create(picture.size(), CV_8UC3);
    const auto target =
        vips::VImage::new_from_memory(out.data, out.total() * 3, out.cols, out.rows, 3, VIPS_FORMAT_UCHAR);
    image(picture).maplut(image(tables)).write(target);
}

Operation Table_Operation(const Bench_Inputs& in, Tone_Inputs& tone)
{
    return {.name = "three-table map",
            .ours = {"Table_Mapped",
                     [&] {
                         tone.result = Table_Mapped(in.picture.View(),
                                                    {7, tone.red.data(), tone.green.data(), tone.blue.data(), nullptr})
                                           .value();
                     }},
            .peers = {{"libvips maplut", [&] { Map_With_Vips(in.mat, tone.tables, tone.out); }},
                      {"OpenCV LUT", [&] { cv::LUT(in.mat, tone.tables, tone.out); }}},
            .goal = 0.25,
            .allowed_error = 0,
            .check = [&] {
                cv::LUT(in.mat, tone.tables, tone.out);
                return Compare(Bitmap_Of(tone.out).View(), tone.result->View());
            }};
}

/// Pixel by pixel, with the conversions that define hue, saturation and value.
Bitmap Plainly_Hsv_Mapped(const Bitmap_View& from, const Tone_Inputs& tone)
{
    Bitmap mapped = std::move(Bitmap::Create(from.width, from.height, 3).value());
    const auto to = mapped.Change();
    for (int y = 0; y < from.height; ++y) {
        const std::uint8_t* in = from.Row(y);
        std::uint8_t* out = to.Row(y);
        for (int x = 0; x < from.width; ++x, in += 3, out += 3) {
            int hue = 0, saturation = 0, value = 0, red = 0, green = 0, blue = 0;
            RGB_To_HSV(in[2], in[1], in[0], hue, saturation, value);
            HSV_To_RGB(hue, tone.saturation[std::size_t(saturation)], tone.value[std::size_t(value)], red, green, blue);
            out[0] = std::uint8_t(blue), out[1] = std::uint8_t(green), out[2] = std::uint8_t(red);
        }
    }
    return mapped;
}

Operation Hsv_Operation(const Bench_Inputs& in, Tone_Inputs& tone)
{
    return {.name = "HSV saturation and value tables",
            .ours = {"Hsv_Table_Mapped",
                     [&] {
                         tone.result =
                             Hsv_Table_Mapped(in.picture.View(), tone.saturation.data(), tone.value.data()).value();
                     }},
            .peers = {{"OpenCV cvtColor, LUT, cvtColor",
                       [&] {
                           cv::cvtColor(in.mat, tone.hsv, cv::COLOR_BGR2HSV_FULL);
                           cv::LUT(tone.hsv, tone.hsv_tables, tone.hsv);
                           cv::cvtColor(tone.hsv, tone.out, cv::COLOR_HSV2BGR_FULL);
                       }}},
            .goal = 0.18,
            .allowed_error = 0,
            .check = [&] { return Compare(Plainly_Hsv_Mapped(in.picture.View(), tone).View(), tone.result->View()); }};
}

void Add_Operations(Bench_Suite& suite)
{
    static Tone_Inputs tone;
    suite.Add(Table_Operation(suite.Inputs(), tone));
    suite.Add(Hsv_Operation(suite.Inputs(), tone));
}

const Bench_Area tone_area("tone", Add_Operations);

} // namespace
