#pragma once

#include "bkimgutl/filter/Weight_Bank.h"

#include <cstddef>
#include <cstdint>
#include <vector>

/// Vector code of a horizontal pass that enlarges, on interleaved rows. The samples that neighbouring outputs need lie
/// within one register: tap by tap it is loaded, its lanes are put in place, and the products with the weights are added,
/// in 16-bit lanes, each product rounded to nearest.

/// What the pass does to every row alike, for the processor at hand.
struct Spread_Plan {
    int channels = 0, taps = 0;
    std::size_t samples = 0; ///< of an output row, in whole registers
    std::vector<std::int32_t>
        bases; ///< of each group of lanes: the source sample where the load of the first tap begins
    std::vector<std::uint16_t> places; ///< of each output sample: its lane, or two bytes, in that load
    std::vector<std::int16_t> weights; ///< of each register and tap, a lane each
};

/// line  whose outputs are no fewer than its source samples
/// bits  of the weights; below 15 the samples lose 15 - bits of their fractional bits, and a weight may be larger than 1
Spread_Plan Plan_Spread(const Line_Taps& line, int channels, int bits);

/// Rows of interleaved samples. They are readable for 64 samples and the taps' pixels beyond their end; outputs are
/// writable for 64.
void Spread_Rows(const Spread_Plan& plan, const std::int16_t* const* in, int row_count, std::int16_t* const* out);

/// Bytes as samples with `bits` fractional bits. `out` is writable for 64 samples beyond.
void Grow_Row(const std::uint8_t* in, std::size_t count, int bits, std::int16_t* out);
