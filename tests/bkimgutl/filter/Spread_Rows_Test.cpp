#include "bkimgutl/filter/Spread_Rows.h"

#include "tests/bkimgutl/Reference_Pictures.h"

#include <random>

namespace {

/// A line whose windows often begin where the one before does, and sometimes several samples further on.
Line_Taps Uneven_Line(int outputs, unsigned seed)
{
    std::mt19937 random(seed);
    Line_Taps line;
    int first = 0;
    for (int i = 0; i < outputs; ++i) {
        Taps taps{first, std::vector<double>(1 + random() % 4)};
        double sum = 0;
        for (double& weight : taps.weights) sum += weight = double(random() % 1000) - 100;
        if (std::abs(sum) < 500) taps.weights[0] += sum < 0 ? -1000 : 1000, sum += sum < 0 ? -1000 : 1000;
        for (double& weight : taps.weights) weight /= sum * 1.3;
        line.source_length = std::max(line.source_length, first + int(taps.weights.size()));
        line.Add(std::move(taps));
        if (random() % 3 == 0) first += 1 + int(random() % 4 == 0) * 2;
    }
    return line;
}

using Samples = std::vector<std::int16_t>;

/// Each product rounded to nearest, as the lanes have it.
Samples Spread_Reference(const Line_Taps& line, int channels, int bits, const Samples& in)
{
    Samples out;
    for (const auto& place : line.outputs) {
        const auto& recipe = line.recipes[std::size_t(place.recipe)];
        std::vector<std::int32_t> weights(recipe.size());
        Round_Weights(recipe, bits, weights.data());
        for (int c = 0; c < channels; ++c) {
            int sum = 0;
            for (std::size_t tap = 0; tap < weights.size(); ++tap) {
                const std::size_t at = (std::size_t(place.first) + tap) * std::size_t(channels) + std::size_t(c);
                sum += (in[at] * weights[tap] + (1 << 14)) >> 15;
            }
            out.push_back(std::int16_t(sum));
        }
    }
    return out;
}

TEST(Spread_Rows, Agree_With_The_Reference_However_Windows_Advance)
{
    for (const int channels : {1, 3})
        for (const int outputs : {1, 2, 7, 16, 33, 100, 257}) {
            const Line_Taps line = Uneven_Line(outputs, unsigned(outputs));
            std::mt19937 random(7);
            std::vector<Samples> in(5, Samples(std::size_t(line.source_length * channels + 256)));
            for (auto& row : in)
                for (auto& sample : row) sample = std::int16_t(random() % 16384);
            For_Every_Target([&] {
                const Spread_Plan plan = Plan_Spread(line, channels, 14);
                std::vector<Samples> out(in.size(), Samples(std::size_t(outputs * channels + 64)));
                std::vector<const std::int16_t*> from;
                std::vector<std::int16_t*> to;
                for (std::size_t i = 0; i < in.size(); ++i) {
                    from.push_back(in[i].data());
                    to.push_back(out[i].data());
                }
                Spread_Rows(plan, from.data(), int(in.size()), to.data());
                for (std::size_t i = 0; i < in.size(); ++i) {
                    out[i].resize(std::size_t(outputs * channels));
                    EXPECT_EQ(Spread_Reference(line, channels, 14, in[i]), out[i]) << outputs << " outputs, row " << i;
                }
            });
        }
}

} // namespace
