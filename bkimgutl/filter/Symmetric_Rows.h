#pragma once

#include <cstddef>
#include <cstdint>

/// Vector code of a short symmetric filter: out = w[0] x centre + the sum over k of w[k] x (before[k] + after[k]). Each
/// product is rounded to nearest, which over both passes comes to a few hundredths of a level.

struct Symmetric_Weights {
    static constexpr int most_reach = 8;
    int reach = 0;
    std::int16_t weights[1 + most_reach] = {}; ///< of the centre and the neighbours 1, 2, ... reach, in 1 / 32768

    /// Of a Gaussian, times `scale`, 1 or 2. deviation  1 and up; reach  0 to most_reach
    static Symmetric_Weights Gaussian(double deviation, int reach, int scale);
};

/// Between the passes samples are in 1 / 64 level.
constexpr int Symmetric_Bits = 6;

/// Vertical pass. rows[0 .. count + 2 x reach) are the first output's first neighbour and those below it; they need not be
/// readable beyond `bytes`.
struct Symmetric_Columns {
    const std::uint8_t* const* rows;
    int count;
    std::size_t bytes;
    std::int16_t* out; ///< rows of `out_stride` samples, which is at least bytes + 256
    std::size_t out_stride;
};
void Filter_Symmetric_Columns(const Symmetric_Columns& job, const Symmetric_Weights& weights);

/// Horizontal pass on one row of interleaved samples; out is in 1 / 128 level, from weights of scale 2. `in` is readable
/// for reach x channels samples before, and both are accessible for that and 64 more behind.
void Filter_Symmetric_Row(const std::int16_t* in, std::size_t count, int channels, const Symmetric_Weights& weights,
                          std::int16_t* out);
