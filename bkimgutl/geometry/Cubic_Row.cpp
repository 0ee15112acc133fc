#include "bkimgutl/geometry/Cubic_Row.h"

#ifndef HWY_WANT_AVX3_DL
#define HWY_WANT_AVX3_DL // for the sum of products in one instruction
#endif

#include "bkimgutl/geometry/Cubic_Table.h"
#include "bkimgutl/geometry/Rotation_Map.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

// A register holds a pixel per 32-bit lane while positions and weights are computed, and a pixel per block of 16 bytes
// while colours are. Group g, 0 to 3, takes pixels g, g + 4, g + 8, ..., one a block; so a pixel's weights already stand in
// its own block, and the four groups' results come together in order.
//
//     weights   p0 p1 p2 p3 | p4 p5 p6 p7 | ...        group 0   p0 | p4 | ...     group 1   p1 | p5 | ...
//
// First along the four rows of a pixel: bytes times weights in 1/16384, rounded down to 64 times the level; then down the
// column. All roundings together come to less than a fifth of a level.

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "bkimgutl/geometry/Cubic_Row.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace bkimgutl {
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

std::uint8_t Plain_Cubic(const std::uint8_t* corner, const Cubic_Line& line, const std::int16_t* across,
                         const std::int16_t* down)
{
    constexpr int half = 1 << (2 * Cubic_Table::weight_bits - 11);
    int sum = 0;
    for (int j = 0; j < 4; ++j) {
        const std::uint8_t* row = corner + j * line.source.step;
        int along = 0;
        for (int i = 0; i < 4; ++i) along += row[i * line.source.bytes_per_pixel] * across[i];
        sum += ((along + 512) >> 10) * down[j];
    }
    return std::uint8_t(std::clamp((sum + half) >> (2 * Cubic_Table::weight_bits - 10), 0, 255));
}

void Plain_Row(const Cubic_Line& line, int count, std::uint8_t* to)
{
    constexpr int drop = Rotation_Map::places - Cubic_Table::fraction_bits;
    constexpr int mask = (1 << Cubic_Table::fraction_bits) - 1;
    const Cubic_Table& table = The_Cubic_Table();
    const int size = line.source.bytes_per_pixel;
    for (int x = 0; x < count; ++x) {
        const auto u = (line.u + x * line.u_step + (std::int64_t(1) << (drop - 1))) >> drop;
        const auto v = (line.v + x * line.v_step + (std::int64_t(1) << (drop - 1))) >> drop;
        const auto column = (u >> Cubic_Table::fraction_bits) - 1;
        const auto row = (v >> Cubic_Table::fraction_bits) - 1;
        const std::uint8_t* corner = line.source.top + row * line.source.step + column * size;
        for (int c = 0; c < size; ++c)
            *to++ = Plain_Cubic(corner + c, line, table.weights[std::size_t(u & mask)].data(),
                                table.weights[std::size_t(v & mask)].data());
    }
}

#if HWY_TARGET == HWY_SCALAR || HWY_HAVE_SCALABLE

void Cubic_Grey_Row(const Cubic_Line& line, int count, std::uint8_t* to)
{
    Plain_Row(line, count, to);
}

void Cubic_Color_Row(const Cubic_Line& line, int count, std::uint8_t* to)
{
    Plain_Row(line, count, to);
}

#else

using Lane_Tag = hn::ScalableTag<std::int32_t>; // a pixel a lane
using Word_Tag = hn::ScalableTag<std::int16_t>;
using Byte_Tag = hn::ScalableTag<std::uint8_t>;
using Lanes = hn::Vec<Lane_Tag>;
using Words = hn::Vec<Word_Tag>;
using Bytes = hn::Vec<Byte_Tag>;

constexpr int batch = HWY_LANES(std::int32_t);
constexpr int places = 20; // binary places of positions inside a batch

HWY_ALIGN constexpr std::int32_t lane_numbers[16] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15};

// ---- positions and weights -------------------------------------------------------------------------------------------

/// Where the first of a batch lies, and from there how far the others are.
struct Batch_Place {
    const std::uint8_t* corner; ///< of the first pixel's sixteen
    Lanes u, v;                 ///< relative to the first pixel's whole position
};

HWY_INLINE Lanes Lane_Steps(std::int64_t step)
{
    HWY_ALIGN std::int32_t steps[batch];
    for (int i = 0; i < batch; ++i) steps[i] = std::int32_t((i * step) >> (Rotation_Map::places - places));
    return hn::Load(Lane_Tag(), steps);
}

HWY_INLINE Lanes Fraction(std::int64_t position)
{
    constexpr std::int64_t mask = (std::int64_t(1) << Rotation_Map::places) - 1;
    return hn::Set(Lane_Tag(), std::int32_t((position & mask) >> (Rotation_Map::places - places)));
}

HWY_INLINE Batch_Place Place_Of(const Cubic_Line& line, int x, Lanes u_steps, Lanes v_steps)
{
    const std::int64_t u = line.u + x * line.u_step;
    const std::int64_t v = line.v + x * line.v_step;
    const std::int64_t column = (u >> Rotation_Map::places) - 1;
    const std::int64_t row = (v >> Rotation_Map::places) - 1;
    return {line.source.top + row * line.source.step + column * line.source.bytes_per_pixel,
            hn::Add(Fraction(u), u_steps), hn::Add(Fraction(v), v_steps)};
}

HWY_INLINE Lanes Offsets(const Batch_Place& place, const Bitmap_View& source)
{
    const Lane_Tag d;
    return hn::Add(hn::Mul(hn::ShiftRight<places>(place.v), hn::Set(d, std::int32_t(source.step))),
                   hn::Mul(hn::ShiftRight<places>(place.u), hn::Set(d, source.bytes_per_pixel)));
}

/// A lane holds two neighbouring weights of its pixel, in 1/16384. Along the row: left of the position, then right.
struct Batch_Weights {
    Lanes left, right, upper, lower;
};

// Both fractions of a pixel stand in its lane. With p = t (1 - t), Catmull and Rom's cubic is -p (1 - t) / 2, 1 - t plus
// what makes the sum 1, t likewise, -p t / 2.
HWY_INLINE Batch_Weights Weights_Of(const Batch_Place& place)
{
    const Lane_Tag d;
    const Word_Tag d16;
    const auto across = hn::And(hn::ShiftRight<places - 15>(place.u), hn::Set(d, 0x7FFF));
    const auto down = hn::And(hn::ShiftLeft<31 - places>(place.v), hn::Set(d, 0x7FFF0000));
    const Words t = hn::BitCast(d16, hn::Or(across, down)); // in 1/32768
    const Words s = hn::Sub(hn::Set(d16, 0x7FFF), t);
    const Words p = hn::MulFixedPoint15(t, s);
    const Words two = hn::Set(d16, 2);
    const Words first = hn::Neg(hn::ShiftRight<2>(hn::Add(hn::MulFixedPoint15(p, s), two)));
    const Words last = hn::Neg(hn::ShiftRight<2>(hn::Add(hn::MulFixedPoint15(p, t), two)));
    const Words far = hn::ShiftRight<1>(t);
    const Words near = hn::Sub(hn::Set(d16, 16384), far);
    const Words second = hn::Sub(hn::Add(near, last), hn::Add(first, first));
    const Words third = hn::Sub(hn::Add(far, first), hn::Add(last, last));
    const auto low = [&](Words a, Words b) HWY_ATTR {
        return hn::BitCast(d, hn::OddEven(hn::BitCast(d16, hn::ShiftLeft<16>(hn::BitCast(d, b))), a));
    };
    const auto high = [&](Words a, Words b) HWY_ATTR {
        return hn::BitCast(d, hn::OddEven(b, hn::BitCast(d16, hn::ShiftRight<16>(hn::BitCast(d, a)))));
    };
    return {low(first, second), low(third, last), high(first, second), high(third, last)};
}

// ---- arithmetic ------------------------------------------------------------------------------------------------------

/// a0 b0 + a1 b1 + c0 d0 + c1 d1 + start in each lane.
HWY_INLINE Lanes Sum_Of_Four(Words a, Words b, Words c, Words e, Lanes start)
{
#if HWY_TARGET == HWY_AVX3_DL
    Lanes sum = start; // the compiler does not count the instruction to this target
    asm("vpdpwssd %2, %1, %0" : "+v"(sum.raw) : "v"(a.raw), "v"(b.raw));
    asm("vpdpwssd %2, %1, %0" : "+v"(sum.raw) : "v"(c.raw), "v"(e.raw));
    return sum;
#else
    const Lane_Tag d;
    Lanes rest = hn::Zero(d);
    const Lanes two = hn::ReorderWidenMulAccumulate(d, a, b, start, rest);
    const Lanes four = hn::ReorderWidenMulAccumulate(d, c, e, two, rest);
    return hn::RearrangeToOddPlusEven(four, rest);
#endif
}

/// Sums of two rows, 2^22 for the level 256, as neighbours in 1/64.
HWY_INLINE Words Row_Pair(Lanes upper, Lanes lower)
{
    const Word_Tag d16;
    return hn::OddEven(hn::BitCast(d16, hn::ShiftLeft<8>(lower)), hn::BitCast(d16, hn::ShiftRight<8>(upper)));
}

/// The four rows' sums weighed down the column and rounded; may be below 0 or above 255.
HWY_INLINE Lanes Down_The_Column(Lanes row0, Lanes row1, Lanes row2, Lanes row3, Words upper, Words lower)
{
    const Lanes half = hn::Set(Lane_Tag(), 1 << 19);
    return hn::ShiftRight<20>(Sum_Of_Four(Row_Pair(row0, row1), upper, Row_Pair(row2, row3), lower, half));
}

HWY_INLINE Words Limited(Words levels)
{
    const Word_Tag d16;
    return hn::Min(hn::Max(levels, hn::Zero(d16)), hn::Set(d16, 255));
}

// ---- grey ------------------------------------------------------------------------------------------------------------

#define LANE(a, b) a, 0x80, b, 0x80
#define FOUR_LANES(a, b) LANE(a, b), LANE(a + 4, b + 4), LANE(a + 8, b + 8), LANE(a + 12, b + 12)
HWY_ALIGN constexpr std::uint8_t grey_left[16] = {FOUR_LANES(0, 1)};
HWY_ALIGN constexpr std::uint8_t grey_right[16] = {FOUR_LANES(2, 3)};
#undef FOUR_LANES
#undef LANE

HWY_INLINE Bytes Four_Bytes_Each(const std::uint8_t* from, const std::int32_t* offsets)
{
    HWY_ALIGN std::int32_t found[batch];
    for (int i = 0; i < batch; ++i) std::memcpy(found + i, from + offsets[i], 4);
    return hn::BitCast(Byte_Tag(), hn::Load(Lane_Tag(), found));
}

HWY_INLINE Lanes Grey_Along(const std::uint8_t* from, const std::int32_t* offsets, const Batch_Weights& weights)
{
    const Byte_Tag d8;
    const Word_Tag d16;
    const Bytes pixels = Four_Bytes_Each(from, offsets);
    const auto picked = [&](const std::uint8_t* order) HWY_ATTR {
        return hn::BitCast(d16, hn::TableLookupBytes(pixels, hn::LoadDup128(d8, order)));
    };
    return Sum_Of_Four(picked(grey_left), hn::BitCast(d16, weights.left), picked(grey_right),
                       hn::BitCast(d16, weights.right), hn::Zero(Lane_Tag()));
}

HWY_INLINE void Grey_Batch(const Batch_Place& place, const std::int32_t* offsets, std::ptrdiff_t step, std::uint8_t* to)
{
    const Word_Tag d16;
    const Batch_Weights weights = Weights_Of(place);
    const std::uint8_t* corner = place.corner;
    const Lanes levels = Down_The_Column(
        Grey_Along(corner, offsets, weights), Grey_Along(corner + step, offsets, weights),
        Grey_Along(corner + 2 * step, offsets, weights), Grey_Along(corner + 3 * step, offsets, weights),
        hn::BitCast(d16, weights.upper), hn::BitCast(d16, weights.lower));
    const hn::Rebind<std::uint8_t, Lane_Tag> narrow;
    hn::StoreU(hn::DemoteTo(narrow, levels), narrow, to);
}

// ---- colour ----------------------------------------------------------------------------------------------------------

// Four pixels of a row as (blue, blue), (green, green), (red, red): the left two, the right two.
HWY_ALIGN constexpr std::uint8_t color_left[16] = {0, 0x80, 3, 0x80, 1,    0x80, 4,    0x80,
                                                   2, 0x80, 5, 0x80, 0x80, 0x80, 0x80, 0x80};
HWY_ALIGN constexpr std::uint8_t color_right[16] = {6, 0x80, 9,  0x80, 7,    0x80, 10,   0x80,
                                                    8, 0x80, 11, 0x80, 0x80, 0x80, 0x80, 0x80};
// Three low bytes of eight words, twice: the first two pixels of twelve bytes, the last two.
HWY_ALIGN constexpr std::uint8_t first_two[16] = {0,    2,    4,    8,    10,   12,   0x80, 0x80,
                                                  0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80};
HWY_ALIGN constexpr std::uint8_t last_two[16] = {0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0,    2,
                                                 4,    8,    10,   12,   0x80, 0x80, 0x80, 0x80};

// Sixteen bytes for each block, from offsets 0, 4, 8 and 12.
HWY_INLINE Bytes Sixteen_Bytes_Each(const std::uint8_t* from, const std::int32_t* offsets)
{
    const hn::FixedTag<std::uint8_t, 16> block;
#if HWY_MAX_BYTES == 64
    const auto at = [&](int number) HWY_ATTR { return hn::LoadU(block, from + offsets[number]).raw; };
    __m512i all = _mm512_castsi128_si512(at(0));
    all = _mm512_mask_broadcast_i32x4(all, 0x00F0, at(4)); // a load that leaves the other blocks as they are
    all = _mm512_mask_broadcast_i32x4(all, 0x0F00, at(8));
    return Bytes{_mm512_mask_broadcast_i32x4(all, 0xF000, at(12))};
#elif HWY_MAX_BYTES == 32
    return hn::Combine(Byte_Tag(), hn::LoadU(block, from + offsets[4]), hn::LoadU(block, from + offsets[0]));
#else
    return hn::LoadU(block, from + offsets[0]);
#endif
}

struct Group_Weights {
    Words left, right, upper, lower;
};

template <int Group>
HWY_INLINE Group_Weights Weights_Of_Group(const Batch_Weights& weights)
{
    const auto spread = [](Lanes lanes) HWY_ATTR { return hn::BitCast(Word_Tag(), hn::Broadcast<Group>(lanes)); };
    return {spread(weights.left), spread(weights.right), spread(weights.upper), spread(weights.lower)};
}

HWY_INLINE Lanes Color_Along(const std::uint8_t* from, const std::int32_t* offsets, const Group_Weights& weights)
{
    const Byte_Tag d8;
    const Word_Tag d16;
    const Bytes pixels = Sixteen_Bytes_Each(from, offsets);
    const auto picked = [&](const std::uint8_t* order) HWY_ATTR {
        return hn::BitCast(d16, hn::TableLookupBytes(pixels, hn::LoadDup128(d8, order)));
    };
    return Sum_Of_Four(picked(color_left), weights.left, picked(color_right), weights.right, hn::Zero(Lane_Tag()));
}

template <int Group>
HWY_INLINE Lanes Color_Group(const Batch_Place& place, const std::int32_t* offsets, std::ptrdiff_t step,
                             const Batch_Weights& batch_weights)
{
    const Group_Weights weights = Weights_Of_Group<Group>(batch_weights);
    const std::uint8_t* corner = place.corner;
    offsets += Group;
    return Down_The_Column(Color_Along(corner, offsets, weights), Color_Along(corner + step, offsets, weights),
                           Color_Along(corner + 2 * step, offsets, weights),
                           Color_Along(corner + 3 * step, offsets, weights), weights.upper, weights.lower);
}

HWY_INLINE void Color_Batch(const Batch_Place& place, const std::int32_t* offsets, std::ptrdiff_t step,
                            std::uint8_t* to)
{
    const Byte_Tag d8;
    const Word_Tag d16;
    const Batch_Weights weights = Weights_Of(place);
    const Words two = Limited(hn::ReorderDemote2To(d16, Color_Group<0>(place, offsets, step, weights),
                                                   Color_Group<1>(place, offsets, step, weights)));
    const Words more = Limited(hn::ReorderDemote2To(d16, Color_Group<2>(place, offsets, step, weights),
                                                    Color_Group<3>(place, offsets, step, weights)));
    HWY_ALIGN std::uint8_t colors[HWY_MAX_BYTES];
    hn::Store(hn::Or(hn::TableLookupBytes(hn::BitCast(d8, two), hn::LoadDup128(d8, first_two)),
                     hn::TableLookupBytes(hn::BitCast(d8, more), hn::LoadDup128(d8, last_two))),
              d8, colors);
    constexpr int last_block = batch / 4 - 1;
    for (int block = 0; block < last_block; ++block) std::memcpy(to + 12 * block, colors + 16 * block, 16);
    std::memcpy(to + 12 * last_block, colors + 16 * last_block, 12);
}

// ---- rows ------------------------------------------------------------------------------------------------------------

// Pixels of the last batch beyond the end are computed from where its first one is, and left out.
template <class Batch>
HWY_INLINE void Row_In_Batches(const Cubic_Line& line, int count, std::uint8_t* to, Batch&& one)
{
    const Lane_Tag d;
    const int size = line.source.bytes_per_pixel;
    const Lanes u_steps = Lane_Steps(line.u_step);
    const Lanes v_steps = Lane_Steps(line.v_step);
    HWY_ALIGN std::int32_t offsets[batch];
    int x = 0;
    for (; x + batch <= count; x += batch) {
        const Batch_Place place = Place_Of(line, x, u_steps, v_steps);
        hn::Store(Offsets(place, line.source), d, offsets);
        one(place, offsets, to + std::ptrdiff_t(size) * x);
    }
    if (x == count) return;
    const Batch_Place place = Place_Of(line, x, u_steps, v_steps);
    const auto counts = hn::Lt(hn::Load(d, lane_numbers), hn::Set(d, count - x));
    hn::Store(hn::IfThenElseZero(counts, Offsets(place, line.source)), d, offsets);
    std::uint8_t last[3 * batch];
    one(place, offsets, last);
    std::memcpy(to + std::ptrdiff_t(size) * x, last, std::size_t(size) * std::size_t(count - x));
}

// Offsets inside a batch must fit 32 bits.
bool Is_Too_Wide(const Cubic_Line& line)
{
    return std::abs(line.source.step) > (std::ptrdiff_t(1) << 25);
}

void Cubic_Grey_Row(const Cubic_Line& line, int count, std::uint8_t* to)
{
    if (Is_Too_Wide(line)) return Plain_Row(line, count, to);
    Row_In_Batches(line, count, to,
                   [&](const Batch_Place& place, const std::int32_t* offsets, std::uint8_t* at)
                       HWY_ATTR { Grey_Batch(place, offsets, line.source.step, at); });
}

void Cubic_Color_Row(const Cubic_Line& line, int count, std::uint8_t* to)
{
    if (Is_Too_Wide(line)) return Plain_Row(line, count, to);
    Row_In_Batches(line, count, to,
                   [&](const Batch_Place& place, const std::int32_t* offsets, std::uint8_t* at)
                       HWY_ATTR { Color_Batch(place, offsets, line.source.step, at); });
}

#endif // HWY_SCALAR || HWY_HAVE_SCALABLE

} // namespace HWY_NAMESPACE
} // namespace bkimgutl
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace bkimgutl {
HWY_EXPORT(Cubic_Grey_Row);
HWY_EXPORT(Cubic_Color_Row);
} // namespace bkimgutl

void Cubic_Row(const Cubic_Line& line, int count, std::uint8_t* to)
{
    using namespace bkimgutl;
    if (count < 1) return;
    if (line.source.Is_Grey())
        HWY_DYNAMIC_DISPATCH(Cubic_Grey_Row)(line, count, to);
    else
        HWY_DYNAMIC_DISPATCH(Cubic_Color_Row)(line, count, to);
}

#endif
