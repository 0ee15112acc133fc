#include "bkimgutl/filter/Weight_Bank.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace {

int Rounded_Up(int value, int multiple)
{
    return (value + multiple - 1) / multiple * multiple;
}

} // namespace

std::size_t Line_Taps::Most_Weights() const
{
    std::size_t most = 0;
    for (const auto& weights : recipes) most = std::max(most, weights.size());
    return most;
}

double Line_Taps::Largest_Weight() const
{
    double largest = 0;
    for (const auto& weights : recipes)
        for (const double weight : weights) largest = std::max(largest, std::abs(weight));
    return largest;
}

/// Rounds all weights down and raises those that lost most, until the sum is right.
void Round_Weights(const std::vector<double>& weights, int bits, std::int32_t* out)
{
    std::vector<std::pair<double, std::size_t>> losses;
    std::int64_t missing = std::int64_t(1) << bits;
    for (std::size_t i = 0; i < weights.size(); ++i) {
        const double exact = std::ldexp(weights[i], bits);
        const double below = std::floor(exact);
        out[i] = std::int32_t(below);
        missing -= std::int64_t(below);
        losses.emplace_back(below - exact, i);
    }
    const auto count = std::clamp<std::int64_t>(missing, 0, std::int64_t(losses.size()));
    std::nth_element(losses.begin(), losses.begin() + count, losses.end());
    for (std::int64_t i = 0; i < count; ++i) ++out[losses[std::size_t(i)].second];
}

Weight_Bank::Weight_Bank(const Line_Taps& line, const Shape& shape)
    : source_length_(line.source_length),
      length_(int(line.outputs.size())),
      bits_(std::min({19, shape.most_bits, int(std::floor(std::log2(32766.0 / line.Largest_Weight())))}))
{
    const auto offset = [&](const Line_Taps::Place& place) { return place.first % shape.start_multiple; };
    const int multiple = std::lcm(shape.start_multiple, shape.window_multiple);
    std::size_t most = 0;
    for (const auto& place : line.outputs)
        most = std::max(most, std::size_t(offset(place)) + line.recipes[std::size_t(place.recipe)].size());
    window_ = Rounded_Up(int(most), multiple);

    const int last_start = std::max(0, Rounded_Up(source_length_, multiple) - window_);
    // A recipe is rounded once for each place that it may have in a window; windows moved away from the end are few.
    constexpr std::uint32_t none = ~0U;
    std::vector<std::uint32_t> known(line.recipes.size() * std::size_t(shape.start_multiple), none);
    places_.reserve(line.outputs.size() + Spare_Outputs);
    for (const auto& place : line.outputs) {
        const int start = std::min(place.first - offset(place), last_start), into = place.first - start;
        std::uint32_t own = none;
        std::uint32_t& weights =
            into < shape.start_multiple ? known[std::size_t(place.recipe * shape.start_multiple + into)] : own;
        if (weights == none) weights = Add_Row(line.recipes[std::size_t(place.recipe)], into);
        places_.push_back({start, weights});
    }
    places_.insert(places_.end(), Spare_Outputs, Place(places_.back()));
}

std::uint32_t Weight_Bank::Add_Row(const std::vector<double>& recipe, int into)
{
    std::vector<std::int32_t> rounded(recipe.size());
    Round_Weights(recipe, bits_, rounded.data());
    const std::size_t begin = weights_.size();
    weights_.resize(begin + std::size_t(window_), 0);
    std::copy(rounded.begin(), rounded.end(), weights_.begin() + std::ptrdiff_t(begin) + into);
    return std::uint32_t(begin);
}

void Make_Sum_One(Taps& taps)
{
    const double sum = std::accumulate(taps.weights.begin(), taps.weights.end(), 0.0);
    for (double& weight : taps.weights) weight /= sum;
}

void Fold_Into_Edges(Taps& taps, int length)
{
    const int end = taps.first + int(taps.weights.size());
    const int first = std::clamp(taps.first, 0, length - 1);
    const int last = std::clamp(end - 1, 0, length - 1);
    std::vector<double> folded(std::size_t(last - first + 1));
    for (int i = taps.first; i < end; ++i)
        folded[std::size_t(std::clamp(i, first, last) - first)] += taps.weights[std::size_t(i - taps.first)];
    taps = {first, std::move(folded)};
    Make_Sum_One(taps);
}
