#include "bkimgutl/filter/Weight_Bank.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace {

void Make_Sum_One(Taps& taps)
{
    const double sum = std::accumulate(taps.weights.begin(), taps.weights.end(), 0.0);
    for (double& weight : taps.weights) weight /= sum;
}

double Largest_Weight(std::span<const Taps> taps)
{
    double largest = 0;
    for (const Taps& one : taps)
        for (const double weight : one.weights) largest = std::max(largest, std::abs(weight));
    return largest;
}

int Most_Pairs(std::span<const Taps> taps)
{
    std::size_t pairs = 1;
    for (const Taps& one : taps) pairs = std::max(pairs, (std::size_t(one.first & 1) + one.weights.size() + 1) / 2);
    return int(pairs);
}

/// Rounds all weights down and raises those that lost most, until the sum is right.
void Round_Weights(const Taps& taps, int bits, std::int16_t* out)
{
    std::vector<std::pair<double, std::size_t>> losses;
    std::int64_t missing = std::int64_t(1) << bits;
    for (std::size_t i = 0; i < taps.weights.size(); ++i) {
        const double exact = std::ldexp(taps.weights[i], bits);
        const double below = std::floor(exact);
        out[i] = std::int16_t(below);
        missing -= std::int64_t(below);
        losses.emplace_back(below - exact, i);
    }
    const auto count = std::clamp<std::int64_t>(missing, 0, std::int64_t(losses.size()));
    std::nth_element(losses.begin(), losses.begin() + count, losses.end());
    for (std::int64_t i = 0; i < count; ++i) ++out[losses[std::size_t(i)].second];
}

} // namespace

Weight_Bank Weight_Bank::From_Taps(int source_length, std::span<const Taps> taps, int most_bits)
{
    Weight_Bank bank;
    bank.source_length = source_length;
    bank.pairs = Most_Pairs(taps);
    bank.bits = std::min({19, most_bits, int(std::floor(std::log2(32766.0 / Largest_Weight(taps))))});
    bank.starts.reserve(taps.size());
    bank.weights.assign(taps.size() * std::size_t(bank.pairs) * 2, 0);
    const int last_start = std::max(0, ((source_length + 1) & ~1) - 2 * bank.pairs);
    for (std::size_t i = 0; i < taps.size(); ++i) {
        const int start = std::min(taps[i].first & ~1, last_start);
        bank.starts.push_back(start);
        Round_Weights(taps[i], bank.bits,
                      bank.weights.data() + i * std::size_t(bank.pairs) * 2 + (taps[i].first - start));
    }
    return bank;
}

void Keep_Inside(Taps& taps, int length)
{
    const int skip = std::max(0, -taps.first);
    const int keep = std::min(int(taps.weights.size()), length - taps.first);
    taps.weights = std::vector<double>(taps.weights.begin() + skip, taps.weights.begin() + keep);
    taps.first += skip;
    Make_Sum_One(taps);
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
