#include "bkimgutl/filter/Spread_Rows.h"

#include "bkimgutl/core/Row_Loop.h"

#include <algorithm>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "bkimgutl/filter/Spread_Rows.cpp"
#include <hwy/foreach_target.h>

#include "bkimgutl/filter/Sample_Vectors-inl.h"

// A group of lanes shares a load: the whole register where its 16-bit lanes can be put in any order at once, else 16 bytes.
#undef SPREAD_WHOLE_REGISTERS
#if HWY_TARGET == HWY_AVX3
#define SPREAD_WHOLE_REGISTERS 1
#else
#define SPREAD_WHOLE_REGISTERS 0
#endif

HWY_BEFORE_NAMESPACE();
namespace bkimgutl::HWY_NAMESPACE {

#if SPREAD_WHOLE_REGISTERS
HWY_INLINE Shorts Placed(const std::int16_t* in, const std::int32_t* bases, Shorts places)
{
    return Shorts{_mm512_permutexvar_epi16(places.raw, hn::LoadU(Shorts_Tag(), in + bases[0]).raw)};
}
#else
HWY_INLINE Shorts Placed(const std::int16_t* in, const std::int32_t* bases, Shorts places)
{
    const hn::Full128<std::int16_t> block;
#if HWY_MAX_BYTES == 32
    const Shorts loaded = hn::Combine(Shorts_Tag(), hn::LoadU(block, in + bases[1]), hn::LoadU(block, in + bases[0]));
#else
    const Shorts loaded = hn::LoadU(block, in + bases[0]);
#endif
    return hn::TableLookupBytes(loaded, places);
}
#endif

std::size_t Spread_Group()
{
    return SPREAD_WHOLE_REGISTERS ? hn::Lanes(Shorts_Tag()) : 8;
}

std::size_t Spread_Lanes()
{
    return hn::Lanes(Shorts_Tag());
}

/// The rows share the loads of places and weights.
template <int rows>
HWY_INLINE void Spread_Together(const Spread_Plan& plan, const std::int16_t* const* in, std::int16_t* const* out)
{
    const Shorts_Tag d;
    const std::size_t lanes = Spread_Lanes(), groups = lanes / Spread_Group();
    const std::int32_t* bases = plan.bases.data();
    const std::int16_t* weights = plan.weights.data();
    for (std::size_t x = 0; x < plan.samples; x += lanes, bases += groups) {
        const Shorts places = hn::BitCast(d, hn::LoadU(hn::RebindToUnsigned<Shorts_Tag>(), plan.places.data() + x));
        Shorts sum0 = hn::Zero(d), sum1 = sum0, sum2 = sum0, sum3 = sum0;
        for (int offset = 0; offset < plan.taps * plan.channels; offset += plan.channels, weights += lanes) {
            const Shorts weight = hn::LoadU(d, weights);
            const auto product = [&](int row) HWY_ATTR {
                return hn::MulFixedPoint15(Placed(in[row] + offset, bases, places), weight);
            };
            sum0 = hn::Add(sum0, product(0));
            if (rows == 4) {
                sum1 = hn::Add(sum1, product(1));
                sum2 = hn::Add(sum2, product(2));
                sum3 = hn::Add(sum3, product(3));
            }
        }
        hn::StoreU(sum0, d, out[0] + x);
        if (rows == 4) {
            hn::StoreU(sum1, d, out[1] + x);
            hn::StoreU(sum2, d, out[2] + x);
            hn::StoreU(sum3, d, out[3] + x);
        }
    }
}

void Spread_All(const Spread_Plan& plan, const std::int16_t* const* in, int row_count, std::int16_t* const* out)
{
    int row = 0;
    for (; row + 4 <= row_count; row += 4) Spread_Together<4>(plan, in + row, out + row);
    for (; row < row_count; ++row) Spread_Together<1>(plan, in + row, out + row);
}

void Grow(const std::uint8_t* in, std::size_t count, int bits, std::int16_t* out)
{
    const Shorts_Tag d;
    const std::size_t lanes = hn::Lanes(d);
    std::size_t x = 0;
    for (; x + lanes <= count; x += lanes) hn::StoreU(hn::ShiftLeftSame(Load_Samples(in + x), bits), d, out + x);
    for (; x < count; ++x) out[x] = std::int16_t(in[x] << bits);
}

} // namespace bkimgutl::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace bkimgutl {
HWY_EXPORT(Spread_Group);
HWY_EXPORT(Spread_Lanes);
HWY_EXPORT(Spread_All);
HWY_EXPORT(Grow);
} // namespace bkimgutl

using namespace bkimgutl;

namespace {

/// Where the window of each output begins. It never advances by more than one sample, as the lanes of a group require; so
/// a window may begin before the first tap, and the longest counts.
std::vector<std::int32_t> Window_Starts(const Line_Taps& line, int& taps)
{
    std::vector<std::int32_t> starts;
    taps = 0;
    for (const auto& place : line.outputs) {
        starts.push_back(starts.empty() ? place.first : std::min(place.first, starts.back() + 1));
        taps = std::max(taps, place.first - starts.back() + int(line.recipes[std::size_t(place.recipe)].size()));
    }
    return starts;
}

struct Spread_Line {
    const Line_Taps& line;
    std::vector<std::int32_t> starts;
    std::vector<std::int16_t> weights; // of each recipe, `taps` each
    std::size_t group, lanes;
    std::size_t Pixel(std::size_t sample, int channels) const
    {
        return std::min(sample / std::size_t(channels), starts.size() - 1);
    }
};

void Place_Group(const Spread_Line& spread, std::size_t group, Spread_Plan& plan)
{
    const std::size_t begin = group * spread.group;
    const auto place = [&](std::size_t sample) {
        const std::int32_t start = spread.starts[spread.Pixel(sample, plan.channels)];
        return start * plan.channels + std::int32_t(sample % std::size_t(plan.channels));
    };
    std::int32_t least = place(begin); // not always the first: outputs of the same source pixel begin again at blue
    for (std::size_t sample = begin + 1; sample < begin + spread.group; ++sample)
        least = std::min(least, place(sample));
    for (std::size_t sample = begin; sample < begin + spread.group; ++sample) {
        const int lane = place(sample) - least;
        plan.places[sample] = std::uint16_t(spread.group == 8 ? 2 * lane | (2 * lane + 1) << 8 : lane);
    }
    plan.bases[group] = least;
}

void Place_Weights(const Spread_Line& spread, std::size_t sample, Spread_Plan& plan)
{
    const std::size_t x = spread.Pixel(sample, plan.channels), taps = std::size_t(plan.taps);
    const auto& place = spread.line.outputs[x];
    const int lag = place.first - spread.starts[x];
    std::int16_t* to = plan.weights.data() + sample / spread.lanes * spread.lanes * taps + sample % spread.lanes;
    const std::int16_t* from = spread.weights.data() + std::size_t(place.recipe) * taps;
    for (int tap = lag; tap < plan.taps; ++tap) to[std::size_t(tap) * spread.lanes] = from[tap - lag];
}

} // namespace

Spread_Plan Plan_Spread(const Line_Taps& line, int channels, int bits)
{
    Spread_Plan plan;
    plan.channels = channels;
    Spread_Line spread{line,
                       Window_Starts(line, plan.taps),
                       {},
                       HWY_DYNAMIC_DISPATCH(Spread_Group)(),
                       HWY_DYNAMIC_DISPATCH(Spread_Lanes)()};
    const std::size_t taps = std::size_t(plan.taps);
    std::vector<std::int32_t> rounded(taps);
    for (const auto& recipe : line.recipes) {
        std::fill(rounded.begin(), rounded.end(), 0);
        Round_Weights(recipe, bits, rounded.data());
        for (const std::int32_t weight : rounded) spread.weights.push_back(std::int16_t(weight));
    }
    plan.samples = (line.outputs.size() * std::size_t(channels) + spread.lanes - 1) / spread.lanes * spread.lanes;
    plan.bases.resize(plan.samples / spread.group);
    plan.places.resize(plan.samples);
    plan.weights.resize(plan.samples * taps);
    For_Rows(int(plan.samples / spread.lanes), spread.lanes * taps * 16, [&](int first, int end) {
        for (std::size_t sample = std::size_t(first) * spread.lanes; sample < std::size_t(end) * spread.lanes;
             ++sample) {
            if (sample % spread.group == 0) Place_Group(spread, sample / spread.group, plan);
            Place_Weights(spread, sample, plan);
        }
    });
    return plan;
}

void Spread_Rows(const Spread_Plan& plan, const std::int16_t* const* in, int row_count, std::int16_t* const* out)
{
    HWY_DYNAMIC_DISPATCH(Spread_All)(plan, in, row_count, out);
}

void Grow_Row(const std::uint8_t* in, std::size_t count, int bits, std::int16_t* out)
{
    HWY_DYNAMIC_DISPATCH(Grow)(in, count, bits, out);
}
#endif
