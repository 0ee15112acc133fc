#pragma once

#include <cstdint>
#include <span>
#include <vector>

/// Weights in double precision of one output sample: source[first], source[first + 1], ...; they sum to 1.
struct Taps {
    int first = 0;
    std::vector<double> weights;
};

/// What an integer filter along a line needs: for every output sample a window of 2 x pairs source samples that begins at
/// an even place, and a weight for each. The weights of a window sum to exactly 1 << bits, so that flat areas stay as they
/// are. A window may pass the end of the source by less than its length; the weights there are 0.
struct Weight_Bank {
    int source_length = 0;
    int pairs = 0;
    int bits = 0;
    std::vector<std::int32_t> starts;
    std::vector<std::int16_t> weights;

    int Length() const { return int(starts.size()); }
    const std::int16_t* Weights(int output) const
    {
        return weights.data() + std::size_t(output) * std::size_t(pairs) * 2;
    }

    /// most_bits  limit for `bits`, which is otherwise as high as 16-bit weights allow, at most 19
    static Weight_Bank From_Taps(int source_length, std::span<const Taps> taps, int most_bits);
};

/// Drops the taps outside 0..length - 1, and makes the sum 1.
void Keep_Inside(Taps& taps, int length);

/// Adds the weights of the taps outside 0..length - 1 to the nearest edge, and makes the sum 1.
void Fold_Into_Edges(Taps& taps, int length);
