#pragma once

#include "bkimgutl/filter/Weight_Bank.h"

#include <cstddef>
#include <cstdint>

/// Vector code of a horizontal pass for any ratio, best for reductions: a window of samples lies in a register, is
/// multiplied by its weights, and the products of many windows are added up crosswise.

/// Interleaved samples to planes; `in` is readable for 192 samples beyond the last, planes are writable for 64.
void Split_Planes(const std::int16_t* in, std::size_t pixels, int channels, std::int16_t* out, std::size_t plane);
void Split_Planes(const std::uint8_t* in, std::size_t pixels, int channels, std::int16_t* out, std::size_t plane);

/// What the banks of the rows must look like for the processor at hand.
Weight_Bank::Shape Window_Row_Shape(int most_bits);

/// One row. Sums are rounded to nearest after the shift, and limited; what comes out is interleaved.
struct Window_Row {
    const Weight_Bank* bank;
    int channels;               ///< 1 or 3
    const std::int16_t* planes; ///< readable for 64 samples beyond the source's length
    std::size_t plane;          ///< samples from a plane to the next
    int shift;
};
void Sum_Windows(const Window_Row& row, std::uint8_t* out);
void Sum_Windows(const Window_Row& row, std::int16_t* out);
