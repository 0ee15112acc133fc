#include "tests/bkimgutl/Reference_Pictures.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <hwy/targets.h>
#include <random>

namespace {

Bitmap New_Bitmap(int width, int height, int bytes_per_pixel)
{
    auto bitmap = Bitmap::Create(width, height, bytes_per_pixel);
    if (!bitmap) {
        ADD_FAILURE() << bitmap.error().text;
        std::abort();
    }
    return std::move(*bitmap);
}

std::uint8_t Byte(double value)
{
    return std::uint8_t(std::clamp(std::lround(value), 0L, 255L));
}

} // namespace

Bitmap Random_Picture(int width, int height, int bytes_per_pixel, unsigned seed)
{
    Bitmap bitmap = New_Bitmap(width, height, bytes_per_pixel);
    const auto view = bitmap.Change();
    std::mt19937 random(seed);
    for (int y = 0; y < height; ++y)
        for (std::size_t x = 0; x < view.Row_Bytes(); ++x) view.Row(y)[x] = std::uint8_t(random() >> 11);
    return bitmap;
}

Bitmap Photograph_Like_Picture(int width, int height, int bytes_per_pixel, unsigned seed)
{
    Bitmap bitmap = New_Bitmap(width, height, bytes_per_pixel);
    const auto view = bitmap.Change();
    std::mt19937 random(seed);
    const double phase = double(seed % 17);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const double noise = double(random() % 9) - 4;
            const double edge = (x / 23 + y / 31) % 2 == 0 ? 40 : -40;
            for (int c = 0; c < bytes_per_pixel; ++c)
                view.Row(y)[x * bytes_per_pixel + c] =
                    Byte(128 + 70 * std::sin(x * 0.05 + c + phase) * std::cos(y * 0.04 - c) + edge + noise);
        }
    }
    return bitmap;
}

Bitmap Plain_Picture(int width, int height, int bytes_per_pixel, int red, int green, int blue)
{
    Bitmap bitmap = New_Bitmap(width, height, bytes_per_pixel);
    const auto view = bitmap.Change();
    const int colors[3] = {bytes_per_pixel == 1 ? red : blue, green, red};
    for (int y = 0; y < height; ++y)
        for (std::size_t x = 0; x < view.Row_Bytes(); ++x)
            view.Row(y)[x] = std::uint8_t(colors[x % std::size_t(bytes_per_pixel)]);
    return bitmap;
}

std::vector<Picture_Size> Edge_Case_Sizes()
{
    return {{1, 1},   {1, 2},   {2, 1},   {1, 67},  {67, 1},  {3, 5},    {5, 3},   {15, 17},  {16, 16},
            {17, 15}, {31, 33}, {64, 64}, {65, 63}, {66, 70}, {127, 41}, {129, 7}, {200, 131}};
}

void For_Edge_Case_Pictures(const std::function<void(const Bitmap&)>& body)
{
    unsigned seed = 1;
    for (const Picture_Size& size : Edge_Case_Sizes()) {
        for (const int bytes_per_pixel : {1, 3}) {
            SCOPED_TRACE(testing::Message() << size.width << " x " << size.height << " x " << bytes_per_pixel);
            body(Random_Picture(size.width, size.height, bytes_per_pixel, seed++));
        }
    }
}

void For_Every_Target(const std::function<void()>& body)
{
    const auto all = hwy::SupportedTargets();
    for (auto rest = all; rest != 0; rest &= rest - 1) {
        const auto target = rest & -rest;
        SCOPED_TRACE(hwy::TargetName(target));
        hwy::SetSupportedTargetsForTest(target);
        hwy::GetChosenTarget().Update(target);
        body();
    }
    hwy::SetSupportedTargetsForTest(0);
    hwy::GetChosenTarget().Update(hwy::SupportedTargets());
}

std::vector<std::uint8_t> Row_Bytes(const Bitmap_View& view, int y)
{
    return {view.Row(y), view.Row(y) + view.Row_Bytes()};
}

testing::AssertionResult Same_Pixels(const Bitmap_View& expected, const Bitmap_View& actual)
{
    return Pixels_Within(0, expected, actual);
}

testing::AssertionResult Pixels_Within(int most, const Bitmap_View& expected, const Bitmap_View& actual)
{
    if (expected.width != actual.width || expected.height != actual.height ||
        expected.bytes_per_pixel != actual.bytes_per_pixel)
        return testing::AssertionFailure()
               << "expected " << expected.width << " x " << expected.height << " x " << expected.bytes_per_pixel
               << ", got " << actual.width << " x " << actual.height << " x " << actual.bytes_per_pixel;
    for (int y = 0; y < expected.height; ++y) {
        for (std::size_t i = 0; i < expected.Row_Bytes(); ++i) {
            const int wanted = expected.Row(y)[i];
            const int got = actual.Row(y)[i];
            if (std::abs(wanted - got) > most)
                return testing::AssertionFailure()
                       << "pixel (" << i / std::size_t(expected.bytes_per_pixel) << ", " << y << ") byte "
                       << i % std::size_t(expected.bytes_per_pixel) << ": expected " << wanted << ", got " << got;
        }
    }
    return testing::AssertionSuccess();
}

testing::AssertionResult Padding_Is_Zero(const Bitmap& bitmap)
{
    const Bitmap_View view = bitmap.View();
    for (int y = 0; y < view.height; ++y)
        for (std::size_t i = view.Row_Bytes(); i < bitmap.Stride(); ++i)
            if (view.Row(y)[i] != 0) return testing::AssertionFailure() << "row " << y << ", byte " << i;
    return testing::AssertionSuccess();
}
