// What the vector code of several folders shares: blocks of pixels with their row end, splitting bytes into 16-bit lanes,
// luminance. Included once for every processor target.

#if defined(BKIMGUTL_CORE_VECTOR_BLOCKS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef BKIMGUTL_CORE_VECTOR_BLOCKS_INL_H_
#undef BKIMGUTL_CORE_VECTOR_BLOCKS_INL_H_
#else
#define BKIMGUTL_CORE_VECTOR_BLOCKS_INL_H_
#endif

#include <hwy/highway.h>

#include <cstdint>
#include <cstring>

HWY_BEFORE_NAMESPACE();
namespace bkimgutl::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

using Bytes_Tag = hn::ScalableTag<std::uint8_t>;
using Words_Tag = hn::ScalableTag<std::uint16_t>;
using Bytes = hn::Vec<Bytes_Tag>;
using Words = hn::Vec<Words_Tag>;

/// Calls block(in, out) for whole blocks of `block_bytes`, and for the rest of the row on a copy, so that the arithmetic
/// never meets a row's end. in and out may be the same.
template <class Block>
HWY_INLINE void For_Blocks(const std::uint8_t* in, std::uint8_t* out, std::size_t bytes, std::size_t block_bytes,
                           Block&& block)
{
    std::size_t done = 0;
    for (; done + block_bytes <= bytes; done += block_bytes) block(in + done, out + done);
    if (done == bytes) return;
    HWY_ALIGN std::uint8_t rest[3 * HWY_MAX_BYTES] = {};
    HWY_ALIGN std::uint8_t result[3 * HWY_MAX_BYTES];
    std::memcpy(rest, in + done, bytes - done);
    block(rest, result);
    std::memcpy(out + done, result, bytes - done);
}

// Bytes as two vectors of 16-bit lanes, without shuffles: even places, odd places.
HWY_INLINE Words Even_Words(Bytes v)
{
    return hn::And(hn::BitCast(Words_Tag(), v), hn::Set(Words_Tag(), 255));
}
HWY_INLINE Words Odd_Words(Bytes v)
{
    return hn::ShiftRight<8>(hn::BitCast(Words_Tag(), v));
}
HWY_INLINE Bytes Joined_Words(Words even, Words odd) // both 0..255
{
    return hn::BitCast(Bytes_Tag(), hn::Or(even, hn::ShiftLeft<8>(odd)));
}

HWY_INLINE Words One_Where_Less(Words a, Words b)
{
    const Words_Tag d;
    return hn::IfThenElseZero(hn::Lt(a, b), hn::Set(d, 1));
}

/// (19660 R + 38666 G + 7209 B + 32768) >> 16 in 16-bit lanes: the high halves of the products, and what the low halves
/// carry over.
HWY_INLINE Words Luminance_Words(Words red, Words green, Words blue)
{
    const Words_Tag d;
    const auto by_red = hn::Set(d, 19660), by_green = hn::Set(d, 38666), by_blue = hn::Set(d, 7209);
    const Words low_red = hn::Mul(red, by_red);
    const Words low_green = hn::Mul(green, by_green);
    const Words low_blue = hn::Mul(blue, by_blue);
    const Words sum1 = hn::Add(low_red, low_green);
    const Words sum2 = hn::Add(sum1, low_blue);
    const Words sum3 = hn::Add(sum2, hn::Set(d, 32768));
    Words high = hn::Add(hn::MulHigh(red, by_red), hn::Add(hn::MulHigh(green, by_green), hn::MulHigh(blue, by_blue)));
    high = hn::Add(high, One_Where_Less(sum1, low_green));
    high = hn::Add(high, One_Where_Less(sum2, low_blue));
    return hn::Add(high, hn::ShiftRight<15>(hn::AndNot(sum3, sum2)));
}

} // namespace bkimgutl::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
