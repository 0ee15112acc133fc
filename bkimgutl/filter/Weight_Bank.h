#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

/// Weights in double precision of one output sample: source[first], source[first + 1], ...; they sum to 1.
struct Taps {
    int first = 0;
    std::vector<double> weights;
};

/// What every sample of a line is made of. Outputs whose weights are the same share one recipe, so that a picture scaled by
/// a simple ratio needs few.
struct Line_Taps {
    struct Place {
        int first;  ///< source sample of the first weight
        int recipe; ///< whose weights
    };
    int source_length = 0;
    std::vector<Place> outputs;
    std::vector<std::vector<double>> recipes;

    /// Adds an output with a recipe of its own.
    void Add(Taps taps)
    {
        outputs.push_back({taps.first, int(recipes.size())});
        recipes.push_back(std::move(taps.weights));
    }
    std::size_t Most_Weights() const;
    double Largest_Weight() const;
};

/// The weights in 1 / (1 << bits), rounded so that they too sum to 1.
void Round_Weights(const std::vector<double>& weights, int bits, std::int32_t* out);

/// What an integer filter along a line needs: for every output sample a window of source samples, and a weight for each.
/// The weights of a window sum to exactly 1 << bits, so that flat areas stay as they are. A window may pass the end of the
/// source by less than `window_multiple`; the weights there are 0.
class Weight_Bank {
public:
    struct Shape {
        int most_bits;       ///< limit for Bits, which is otherwise as high as 16-bit weights allow, at most 19
        int start_multiple;  ///< windows begin at a multiple of it,
        int window_multiple; ///< and their length is a multiple of it and of start_multiple
    };
    Weight_Bank(const Line_Taps& line, const Shape& shape);

    int Source_Length() const { return source_length_; }
    int Length() const { return length_; }
    int Window() const { return window_; }
    int Bits() const { return bits_; }
    int Start(int output) const { return places_[std::size_t(output)].start; }
    const std::int16_t* Weights(int output) const { return weights_.data() + places_[std::size_t(output)].weights; }

    /// How many outputs beyond Length() may be asked for; they repeat the last one.
    static constexpr int Spare_Outputs = 16;

private:
    struct Place {
        std::int32_t start;
        std::uint32_t weights; ///< where they begin
    };
    std::uint32_t Add_Row(const std::vector<double>& recipe, int into);

    int source_length_, length_, window_ = 0, bits_ = 0;
    std::vector<Place> places_;
    std::vector<std::int16_t> weights_;
};

void Make_Sum_One(Taps& taps);

/// Adds the weights of the taps outside 0..length - 1 to the nearest edge, and makes the sum 1.
void Fold_Into_Edges(Taps& taps, int length);
