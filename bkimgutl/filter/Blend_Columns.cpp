#include "bkimgutl/filter/Blend_Columns.h"

#include <algorithm>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "bkimgutl/filter/Blend_Columns.cpp"
#include <hwy/foreach_target.h>

#include "bkimgutl/filter/Sample_Vectors-inl.h"

HWY_BEFORE_NAMESPACE();
namespace bkimgutl::HWY_NAMESPACE {

/// Four registers of outputs.
template <class Sample>
HWY_INLINE void Blend_At(const Blend_Job& job, std::size_t x, int bits, Sample* out)
{
    const Shorts_Tag d;
    const std::size_t lanes = hn::Lanes(d);
    const auto& weights = *job.weights;
    Shorts sum0 = hn::Set(d, std::int16_t((1 << bits) >> 1)), sum1 = sum0, sum2 = sum0, sum3 = sum0;
    if (weights.has_whole) {
        const std::int16_t* in = job.rows[weights.whole] + x;
        sum0 = hn::Add(sum0, hn::LoadU(d, in));
        sum1 = hn::Add(sum1, hn::LoadU(d, in + lanes));
        sum2 = hn::Add(sum2, hn::LoadU(d, in + 2 * lanes));
        sum3 = hn::Add(sum3, hn::LoadU(d, in + 3 * lanes));
    }
    for (int row = 0; row < weights.count; ++row) {
        const std::int16_t* in = job.rows[row] + x;
        const Shorts weight = hn::BitCast(d, hn::Set(Ints_Tag(), weights.pairs[std::size_t(row)]));
        sum0 = hn::Add(sum0, hn::MulFixedPoint15(hn::LoadU(d, in), weight));
        sum1 = hn::Add(sum1, hn::MulFixedPoint15(hn::LoadU(d, in + lanes), weight));
        sum2 = hn::Add(sum2, hn::MulFixedPoint15(hn::LoadU(d, in + 2 * lanes), weight));
        sum3 = hn::Add(sum3, hn::MulFixedPoint15(hn::LoadU(d, in + 3 * lanes), weight));
    }
    Store_Samples(hn::ShiftRightSame(sum0, bits), out);
    Store_Samples(hn::ShiftRightSame(sum1, bits), out + lanes);
    Store_Samples(hn::ShiftRightSame(sum2, bits), out + 2 * lanes);
    Store_Samples(hn::ShiftRightSame(sum3, bits), out + 3 * lanes);
}

void Blend_To_Words(const Blend_Job& job, std::int16_t* out)
{
    const std::size_t step = 4 * hn::Lanes(Shorts_Tag());
    for (std::size_t x = job.first; x < job.end; x += step, out += step) Blend_At(job, x, 0, out);
}

void Blend_To_Bytes(const Blend_Job& job, int bits, std::uint8_t* out)
{
    const std::size_t step = 4 * hn::Lanes(Shorts_Tag());
    std::size_t x = job.first;
    for (; x + step <= job.end; x += step, out += step) Blend_At(job, x, bits, out);
    if (x == job.end) return;
    HWY_ALIGN std::uint8_t rest[2 * HWY_MAX_BYTES];
    Blend_At(job, x, bits, rest);
    std::memcpy(out, rest, job.end - x);
}

} // namespace bkimgutl::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace bkimgutl {
HWY_EXPORT(Blend_To_Words);
HWY_EXPORT(Blend_To_Bytes);
} // namespace bkimgutl

using namespace bkimgutl;

namespace {

Blend_Bank::Row_Weights Row_Weights_Of(const std::vector<double>& recipe)
{
    std::vector<std::int32_t> rounded(recipe.size());
    Round_Weights(recipe, 15, rounded.data());
    Blend_Bank::Row_Weights row;
    row.count = int(recipe.size());
    for (int i = 0; i < row.count; ++i) {
        std::int32_t& weight = rounded[std::size_t(i)];
        if (weight > 32767) {
            row.whole = i;
            row.has_whole = true;
            weight -= 32768;
        }
        row.pairs.push_back(std::int32_t(std::uint32_t(weight & 0xFFFF) * 0x10001U));
    }
    return row;
}

} // namespace

Blend_Bank::Blend_Bank(const Line_Taps& line) : most_rows_(int(line.Most_Weights())), outputs_(line.outputs)
{
    for (const auto& recipe : line.recipes) recipes_.push_back(Row_Weights_Of(recipe));
}

void Blend_Columns(const Blend_Job& job, std::int16_t* out)
{
    HWY_DYNAMIC_DISPATCH(Blend_To_Words)(job, out);
}

void Blend_Columns(const Blend_Job& job, int bits, std::uint8_t* out)
{
    HWY_DYNAMIC_DISPATCH(Blend_To_Bytes)(job, bits, out);
}
#endif
