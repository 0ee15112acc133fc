#include "bkimgutl/tone/Clip_Table.h"

#include <algorithm>
#include <cmath>

namespace {

struct Clip_End {
    int in = 0;
    int out = 0;
};

/// Walks from `first` in steps of `step` over the 256 levels.
Clip_End Clip_End_From(std::span<const std::int32_t, 256> histogram, int first, int step, double allowance)
{
    Clip_End end{first, first};
    double lost = 0; // exact: counts of a picture stay far below 2 ^ 53
    for (int i = first; i >= 0 && i < 256; i += step) {
        lost += histogram[std::size_t(i)];
        if (lost > allowance) break;
        end.in = i;
    }
    return end;
}

Clip_End Occupied_End_From(std::span<const std::int32_t, 256> histogram, int first, int step)
{
    for (int i = first; i >= 0 && i < 256; i += step)
        if (histogram[std::size_t(i)] != 0) return {i, i};
    return {first, first};
}

} // namespace

Clip_Range Clip_Range_Of(std::span<const std::int32_t, 256> histogram, std::int64_t sample_count, float shadow_clip,
                         float highlight_clip)
{
    const auto end = [&](float clip, int first, int step) {
        if (clip < 0) return Occupied_End_From(histogram, first, step);
        return Clip_End_From(histogram, first, step, std::nearbyint(double(clip) * double(sample_count)));
    };
    const Clip_End low = end(shadow_clip, 0, 1);
    const Clip_End high = end(highlight_clip, 255, -1);
    return {.in_low = low.in, .in_high = high.in, .out_low = low.out, .out_high = high.out};
}

Result<std::array<std::int32_t, 256>> Clip_Table(std::span<const std::int32_t, 256> histogram,
                                                 std::int64_t sample_count, float shadow_clip, float highlight_clip)
{
    if (!std::isfinite(shadow_clip) || !std::isfinite(highlight_clip))
        return Failure("a clip fraction is not a number");
    const Clip_Range range = Clip_Range_Of(histogram, sample_count, shadow_clip, highlight_clip);
    const int in_range = range.in_high - range.in_low, out_range = range.out_high - range.out_low;
    if (in_range == 0) return Failure("the picture has one level only, so its contrast cannot be stretched");

    std::array<std::int32_t, 256> table{};
    for (int x = range.in_low; x < 256; ++x)
        table[std::size_t(x)] =
            std::clamp(((x - range.in_low) * out_range + in_range / 2) / in_range + range.out_low, 0, 255);
    return table;
}
