#pragma once

#include <array>
#include <cstdint>

/// Catmull and Rom's cubic at 1024 fractions of a pixel: the weights of the pixels at -1, 0, 1 and 2, in 1/16384. Each
/// row sums to exactly 16384, so that flat areas stay as they are.
struct Cubic_Table {
    static constexpr int fraction_bits = 10;
    static constexpr int weight_bits = 14;
    alignas(64) std::array<std::array<std::int16_t, 4>, 1 << fraction_bits> weights;
};

const Cubic_Table& The_Cubic_Table();

/// The same in real arithmetic, t in 0..1.
constexpr std::array<double, 4> Cubic_Weights(double t)
{
    return {((-0.5 * t + 1) * t - 0.5) * t, (1.5 * t - 2.5) * t * t + 1, ((-1.5 * t + 2) * t + 0.5) * t,
            (0.5 * t - 0.5) * t * t};
}
