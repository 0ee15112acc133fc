#pragma once

#include "bkimgutl/filter/Weight_Bank.h"

#include <cstddef>
#include <cstdint>
#include <vector>

/// Vector code of a vertical pass on 16-bit rows, for enlarging: products with the weights are rounded to nearest and added
/// in 16-bit lanes.

/// The weights of every output row.
class Blend_Bank {
public:
    explicit Blend_Bank(const Line_Taps& line);
    int Length() const { return int(outputs_.size()); }
    int Most_Rows() const { return most_rows_; }
    int Start(int output) const { return outputs_[std::size_t(output)].first; }
    int End(int output) const { return Start(output) + Weights(output).count; }

    struct Row_Weights {
        std::vector<std::int32_t> pairs; ///< each weight in 1 / 32768, in both halves
        int count = 0;
        int whole = 0; ///< the row that counts once more by itself: its weight lies too near to 1 for 16 bits
        bool has_whole = false;
    };
    const Row_Weights& Weights(int output) const { return recipes_[std::size_t(outputs_[std::size_t(output)].recipe)]; }

private:
    int most_rows_;
    std::vector<Line_Taps::Place> outputs_;
    std::vector<Row_Weights> recipes_;
};

/// Samples first .. end - 1 of an output row, from rows[0 .. weights.count). Rows are readable for 128 samples beyond.
struct Blend_Job {
    const std::int16_t* const* rows;
    const Blend_Bank::Row_Weights* weights;
    std::size_t first, end;
};
void Blend_Columns(const Blend_Job& job, std::int16_t* out);           ///< writable for 128 samples beyond
void Blend_Columns(const Blend_Job& job, int bits, std::uint8_t* out); ///< rounded; bits  fractional ones of the rows
