#pragma once

#include "bkimgutl/filter/Weight_Bank.h"

#include <cstddef>
#include <cstdint>

/// Vector code of a vertical pass on bytes, for reductions. Samples behind it are 16-bit integers with some fractional
/// bits: sums rounded to nearest after a shift to the right, and limited.

/// rows[i] is source row first_row + i (first_row even), as many as the windows of the outputs reach; windows begin at even
/// rows and have an even length, so that there is an even number of them.
struct Column_Sum_Job {
    const Weight_Bank* bank;
    const std::uint8_t* const* rows; ///< need not be readable beyond `bytes`
    int row_count;
    int first_row;
    int first_output, end_output;
    std::size_t bytes; ///< of a row
    int shift;
    std::int16_t* out; ///< rows of `out_stride` samples, which is at least bytes + 256
    std::size_t out_stride;
};
void Sum_Columns(const Column_Sum_Job& job);
