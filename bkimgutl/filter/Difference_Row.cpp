#include "bkimgutl/filter/Difference_Row.h"

#ifndef HWY_WANT_AVX3_DL
#define HWY_WANT_AVX3_DL
#endif
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "bkimgutl/filter/Difference_Row.cpp"
#include <hwy/foreach_target.h>

#include "bkimgutl/core/Vector_Blocks-inl.h"

HWY_BEFORE_NAMESPACE();
namespace bkimgutl::HWY_NAMESPACE {

using Floats_Tag = hn::ScalableTag<float>;
using Ints_Tag = hn::RebindToSigned<Floats_Tag>;
using Floats = hn::Vec<Floats_Tag>;
using Ints = hn::Vec<Ints_Tag>;

HWY_INLINE Ints Levels(const std::uint8_t* in)
{
    return hn::PromoteTo(Ints_Tag(), hn::LoadU(hn::Rebind<std::uint8_t, Ints_Tag>(), in));
}
HWY_INLINE Ints Samples(const std::int16_t* in)
{
    return hn::PromoteTo(Ints_Tag(), hn::LoadU(hn::Rebind<std::int16_t, Ints_Tag>(), in));
}
HWY_INLINE void Store_Levels(Ints v, std::uint8_t* out)
{
    const hn::Rebind<std::uint8_t, Ints_Tag> d;
    hn::StoreU(hn::DemoteTo(d, v), d, out); // limits
}

/// Calls row(x, source, blurred, out) for whole registers, and for the rest on copies.
template <class Row>
HWY_INLINE void For_Lanes(const std::uint8_t* source, const std::int16_t* blurred, std::size_t count, std::uint8_t* out,
                          Row&& row)
{
    const std::size_t lanes = hn::Lanes(Ints_Tag());
    std::size_t x = 0;
    for (; x + lanes <= count; x += lanes) row(source + x, blurred + x, out + x);
    if (x == count) return;
    std::uint8_t levels[HWY_MAX_BYTES / 4] = {}, result[HWY_MAX_BYTES / 4];
    std::int16_t samples[HWY_MAX_BYTES / 4] = {};
    std::memcpy(levels, source + x, count - x);
    std::memcpy(samples, blurred + x, (count - x) * sizeof(std::int16_t));
    row(levels, samples, result);
    std::memcpy(out + x, result, count - x);
}

/// The sum of both parts in 1 / 12800 level is an exact integer, and its quotient in single precision lies on the same side
/// of every half as the true one, or on it: so it rounds half to even as the true one does.
void Mix_Blur(const std::uint8_t* source, const std::int16_t* blurred, std::size_t count, int weight_percent,
              std::uint8_t* out)
{
    const Floats_Tag d;
    const Ints_Tag di;
    const Ints by_source = hn::Set(di, (100 - weight_percent) * 128), by_blur = hn::Set(di, weight_percent);
    For_Lanes(source, blurred, count, out,
              [&](const std::uint8_t* s, const std::int16_t* b, std::uint8_t* to) HWY_ATTR {
                  const Ints sum = hn::Add(hn::Mul(Levels(s), by_source), hn::Mul(Samples(b), by_blur));
                  Store_Levels(hn::NearestInt(hn::Mul(hn::ConvertTo(d, sum), hn::Set(d, 1.0F / 12800))), to);
              });
}

/// The blur alone: half to even in 1 / 128 level.
void Round_Blur(const std::uint8_t*, const std::int16_t* blurred, std::size_t count, std::uint8_t* out)
{
    const hn::ScalableTag<std::int16_t> d;
    const hn::Rebind<std::uint8_t, decltype(d)> d8;
    const std::size_t lanes = hn::Lanes(d);
    const auto round = [&](const std::int16_t* in, std::uint8_t* to) HWY_ATTR {
        const auto v = hn::LoadU(d, in);
        const auto odd = hn::And(hn::ShiftRight<7>(v), hn::Set(d, 1));
        const auto sum = hn::SaturatedAdd(v, hn::Add(odd, hn::Set(d, 63)));
        hn::StoreU(hn::DemoteTo(d8, hn::ShiftRight<7>(sum)), d8, to);
    };
    std::size_t x = 0;
    for (; x + lanes <= count; x += lanes) round(blurred + x, out + x);
    if (x == count) return;
    std::int16_t rest[HWY_MAX_BYTES / 2] = {};
    std::uint8_t result[HWY_MAX_BYTES / 2];
    std::memcpy(rest, blurred + x, (count - x) * sizeof(std::int16_t));
    round(rest, result);
    std::memcpy(out + x, result, count - x);
}

/// The change of a sample and all sums stay far below what single precision holds. Where both amounts are the same and
/// there is no threshold, nothing need be chosen.
template <bool plain>
HWY_INLINE void Sharpen_Lanes(const std::uint8_t* source, const std::int16_t* blurred, std::size_t count,
                              const Sharpening& s, std::uint8_t* out)
{
    const Floats_Tag d;
    const Floats lighten = hn::Set(d, s.lighten_amount / 128), darken = hn::Set(d, s.darken_amount / 128);
    const Floats above = hn::Set(d, s.lighten_threshold * 128), below = hn::Set(d, -s.darken_threshold * 128);
    For_Lanes(
        source, blurred, count, out, [&](const std::uint8_t* in, const std::int16_t* b, std::uint8_t* to) HWY_ATTR {
            const Ints level = Levels(in);
            const Floats parts = hn::ConvertTo(d, hn::Sub(hn::ShiftLeft<7>(level), Samples(b)));
            const Floats amount =
                plain ? lighten
                      : hn::IfThenElse(hn::Gt(parts, above), lighten, hn::IfThenElseZero(hn::Lt(parts, below), darken));
            Store_Levels(hn::NearestInt(hn::MulAdd(amount, parts, hn::ConvertTo(d, level))), to);
        });
}

void Sharpen(const std::uint8_t* source, const std::int16_t* blurred, std::size_t count, const Sharpening& s,
             std::uint8_t* out)
{
    if (s.lighten_amount == s.darken_amount && s.lighten_threshold == 0 && s.darken_threshold == 0)
        Sharpen_Lanes<true>(source, blurred, count, s, out);
    else
        Sharpen_Lanes<false>(source, blurred, count, s, out);
}

} // namespace bkimgutl::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace bkimgutl {
HWY_EXPORT(Mix_Blur);
HWY_EXPORT(Round_Blur);
HWY_EXPORT(Sharpen);
} // namespace bkimgutl

using namespace bkimgutl;

void Mix_Blur_Row(const std::uint8_t* source, const std::int16_t* blurred, std::size_t count, int weight_percent,
                  std::uint8_t* out)
{
    if (weight_percent == 100)
        HWY_DYNAMIC_DISPATCH(Round_Blur)(source, blurred, count, out);
    else
        HWY_DYNAMIC_DISPATCH(Mix_Blur)(source, blurred, count, weight_percent, out);
}

void Sharpen_Row(const std::uint8_t* source, const std::int16_t* blurred, std::size_t count,
                 const Sharpening& sharpening, std::uint8_t* out)
{
    HWY_DYNAMIC_DISPATCH(Sharpen)(source, blurred, count, sharpening, out);
}
#endif
