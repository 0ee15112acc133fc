#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

/// Vector code of the box reduction: plain integer sums and one division, so that the mean of a block is exact.

/// The most source pixels of one block that Box_Means divides exactly, and the most rows whose sums fit 16 bits.
constexpr int Most_Box_Pixels = 4096, Most_Box_Rows = 256;

/// out[i] is the sum of rows[0 .. row_count)[i]. `out` is writable for 64 samples beyond `bytes`; rows need not be readable
/// beyond. row_count  1 to Most_Box_Rows
void Box_Row_Sums(const std::uint8_t* const* rows, int row_count, std::size_t bytes, std::uint16_t* out);

/// Output pixel x is the mean of the pixels starts[x] .. starts[x + 1] - 1 of the sums of `row_count` rows, rounded to
/// nearest, halves upwards. `sums` is readable for 8 samples beyond the last pixel.
struct Box_Line {
    const std::uint16_t* sums;
    const std::int32_t* starts; ///< count + 1 places
    const float* shares;        ///< 1 by the columns of its block for each sample; readable for a register beyond
    int most_columns;           ///< of a block
    int count;
    int channels; ///< 1 or 3
    int row_count;
    std::span<const std::uint8_t> ahead; ///< what to bring into the cache meanwhile; need not be readable
};
void Box_Means(const Box_Line& line, std::uint8_t* out);
