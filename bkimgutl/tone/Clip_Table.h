#pragma once

#include "frame/files/Result.h"

#include <array>
#include <cstdint>
#include <span>

/// Where a stretch begins and ends.
struct Clip_Range {
    int in_low = 0;
    int in_high = 255;
    int out_low = 0;
    int out_high = 255;
};

/// Where the two sides of a stretch lie; the arguments are Clip_Table's.
Clip_Range Clip_Range_Of(std::span<const std::int32_t, 256> histogram, std::int64_t sample_count, float shadow_clip,
                         float highlight_clip);

/// Contrast stretch of one channel by its histogram.
/// sample_count       sum of the counts
/// shadow, highlight  fractions of the samples that may be lost at each end; a negative one leaves that end where it is
/// Fails when both ends fall on one level, and on fractions that are no finite number.
Result<std::array<std::int32_t, 256>> Clip_Table(std::span<const std::int32_t, 256> histogram,
                                                 std::int64_t sample_count, float shadow_clip, float highlight_clip);
