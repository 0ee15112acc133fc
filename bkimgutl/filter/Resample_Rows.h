#pragma once

#include "bkimgutl/filter/Weight_Bank.h"

#include <cstddef>
#include <cstdint>

/// Vector code of the separable filters. Samples between two passes are 16-bit integers with some fractional bits. Sums are
/// rounded to nearest after a shift to the right, and limited to what the output holds.

constexpr int Strip_Rows = 16; ///< rows that the horizontal pass takes at once

/// Vertical pass on bytes. rows[i] is source row first_row + i (first_row even), as many as the windows of the outputs
/// reach; rows are 2 at a time, so that there is an even number of them.
struct Byte_Column_Job {
    const Weight_Bank* bank;
    const std::uint8_t* const* rows;
    int row_count;
    int first_row;
    int first_output, end_output;
    std::size_t bytes; ///< of a row; rows need not be readable beyond
    int shift;
    std::int16_t* out; ///< rows of `out_stride` samples, which is at least bytes + 128
    std::size_t out_stride;
};
void Filter_Byte_Columns(const Byte_Column_Job& job);

/// Vertical pass on 16-bit rows for one output row: rows[0 .. 2 x pairs). All rows are readable, and `out` of words is
/// writable, for 128 samples beyond `count`.
struct Word_Column_Job {
    const std::int16_t* const* rows;
    const std::int16_t* weights;
    int pairs;
    std::size_t count;
    int shift;
};
void Filter_Word_Columns(const Word_Column_Job& job, std::int16_t* out);
void Filter_Word_Columns(const Word_Column_Job& job, std::uint8_t* out);

enum class Row_Layout {
    Bytes,       ///< interleaved bytes
    Words,       ///< interleaved 16-bit samples
    Word_Planes, ///< a run of 16-bit samples for each channel, `out_plane` apart
};

/// Horizontal pass on up to 16 rows of 16-bit planes. A plane is readable for 64 samples beyond the source's length.
struct Row_Job {
    const Weight_Bank* bank;
    int channels;                            ///< 1 or 3
    int row_count;                           ///< 1 to Strip_Rows
    const std::int16_t* in_rows[Strip_Rows]; ///< the first plane of each row
    std::size_t in_plane;                    ///< samples from a plane to the next
    int shift;
    Row_Layout layout;
    void* out_rows[Strip_Rows];
    std::size_t out_plane;
};
void Filter_Rows(const Row_Job& job);

/// Interleaved samples to planes; `in` words are readable for 192 samples beyond, planes writable for 64.
void Split_Planes(const std::int16_t* in, std::size_t pixels, int channels, std::int16_t* out, std::size_t plane);
void Split_Planes(const std::uint8_t* in, std::size_t pixels, int channels, std::int16_t* out, std::size_t plane);
