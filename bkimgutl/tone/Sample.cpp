#include "bkimgutl/tone/Sample.h"

#include "bkimgutl/core/Color.h"
#include "bkimgutl/core/Row_Loop.h"

#include <algorithm>
#include <mutex>

namespace {

int Half_To_Even(std::int64_t sum, std::int64_t count)
{
    const std::int64_t whole = sum / count;
    const std::int64_t twice = 2 * (sum % count);
    const bool up = twice > count || (twice == count && whole % 2 != 0);
    return int(whole + (up ? 1 : 0));
}

std::array<int, 3> Color_At(const Bitmap_View& picture, int x, int y) // red, green, blue
{
    const std::uint8_t* pixel = picture.Row(y) + std::ptrdiff_t(x) * picture.bytes_per_pixel;
    if (picture.Is_Grey()) return {pixel[0], pixel[0], pixel[0]};
    return {pixel[2], pixel[1], pixel[0]};
}

struct Range_Sums {
    std::array<int, 6> minimum{255, 255, 255, 359, 255, 255};
    std::array<int, 6> maximum{};
    std::array<std::int64_t, 6> sum{};
    std::int64_t count = 0;

    void Add(const std::array<int, 3>& color)
    {
        int hue = 0;
        int saturation = 0;
        int value = 0;
        RGB_To_HSV(color[0], color[1], color[2], hue, saturation, value);
        const std::array<int, 6> all{color[0], color[1], color[2], hue, saturation, value};
        for (std::size_t i = 0; i < 6; ++i) {
            minimum[i] = std::min(minimum[i], all[i]);
            maximum[i] = std::max(maximum[i], all[i]);
            sum[i] += all[i];
        }
        ++count;
    }

    void Add(const Range_Sums& other)
    {
        for (std::size_t i = 0; i < 6; ++i) {
            minimum[i] = std::min(minimum[i], other.minimum[i]);
            maximum[i] = std::max(maximum[i], other.maximum[i]);
            sum[i] += other.sum[i];
        }
        count += other.count;
    }
};

} // namespace

Result<Color_Sample> Area_Average(const Bitmap_View& picture, int x, int y, int area_size)
{
    if (area_size != 1 && area_size != 3 && area_size != 5) return Failure("the side of a sample is 1, 3 or 5 pixels");
    if (x < 0 || y < 0 || x >= picture.width || y >= picture.height)
        return Failure("the sample lies outside the picture");
    const int reach = area_size / 2;
    std::array<std::int64_t, 3> sums{};
    std::int64_t count = 0;
    for (int row = std::max(0, y - reach); row <= std::min(picture.height - 1, y + reach); ++row) {
        for (int column = std::max(0, x - reach); column <= std::min(picture.width - 1, x + reach); ++column, ++count) {
            const auto color = Color_At(picture, column, row);
            for (std::size_t i = 0; i < 3; ++i) sums[i] += color[i];
        }
    }
    Color_Sample sample;
    sample.red = Half_To_Even(sums[0], count);
    sample.green = Half_To_Even(sums[1], count);
    sample.blue = Half_To_Even(sums[2], count);
    RGB_To_HSV(sample.red, sample.green, sample.blue, sample.hue, sample.saturation, sample.value);
    return sample;
}

Result<std::array<Sample_Range, 6>> Color_Ranges(const Bitmap_View& picture, const std::uint8_t* mask)
{
    Range_Sums all;
    std::mutex mutex;
    For_Rows(picture.height, 16 * picture.Row_Bytes(), [&](int first, int end) {
        Range_Sums part;
        for (int y = first; y < end; ++y) {
            const std::uint8_t* selected = mask + std::size_t(y) * std::size_t(picture.width);
            for (int x = 0; x < picture.width; ++x)
                if (selected[x] != 0) part.Add(Color_At(picture, x, y));
        }
        const std::lock_guard lock(mutex);
        all.Add(part);
    });
    if (all.count == 0) return Failure("the selection is empty");
    std::array<Sample_Range, 6> ranges;
    for (std::size_t i = 0; i < 6; ++i)
        ranges[i] = {all.minimum[i], Half_To_Even(all.sum[i], all.count), all.maximum[i]};
    return ranges;
}
