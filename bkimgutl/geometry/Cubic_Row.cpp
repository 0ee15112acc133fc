#include "bkimgutl/geometry/Cubic_Row.h"

#include "bkimgutl/geometry/Cubic_Table.h"

#include <algorithm>
#include <cstring>

// A colour pixel takes four loads of four pixels. Bytes grow to 16 bits as 128 times their level; a product with a weight
// in 1/16384, halved by the rounding high multiply, is 64 times the level. Down the columns first, then along the row,
// which leaves 32 times the level. The roundings on the way come to less than a tenth of a level.

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "bkimgutl/geometry/Cubic_Row.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace bkimgutl {
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

struct Cubic_Place {
    const std::uint8_t* corner; ///< the pixel one left of and one above the position
    const std::int16_t* across;
    const std::int16_t* down;
};

HWY_INLINE Cubic_Place Place_At(const Bitmap_View& source, const Cubic_Table& table, std::int64_t u, std::int64_t v)
{
    constexpr int drop = 32 - Cubic_Table::fraction_bits;
    constexpr int mask = (1 << Cubic_Table::fraction_bits) - 1;
    const auto fine_u = (u + (std::int64_t(1) << (drop - 1))) >> drop;
    const auto fine_v = (v + (std::int64_t(1) << (drop - 1))) >> drop;
    const auto column = (fine_u >> Cubic_Table::fraction_bits) - 1;
    const auto row = (fine_v >> Cubic_Table::fraction_bits) - 1;
    return {source.top + row * source.step + column * source.bytes_per_pixel,
            table.weights[std::size_t(fine_u & mask)].data(), table.weights[std::size_t(fine_v & mask)].data()};
}

HWY_INLINE std::uint8_t Plain_Cubic(const Cubic_Place& place, std::ptrdiff_t step, int pixel_step)
{
    constexpr int half = 1 << (2 * Cubic_Table::weight_bits - 11);
    int sum = 0;
    for (int j = 0; j < 4; ++j) {
        const std::uint8_t* row = place.corner + j * step;
        int line = 0;
        for (int i = 0; i < 4; ++i) line += row[i * pixel_step] * place.across[i];
        sum += ((line + 512) >> 10) * place.down[j];
    }
    return std::uint8_t(std::clamp((sum + half) >> (2 * Cubic_Table::weight_bits - 10), 0, 255));
}

void Cubic_Plain_Row(const Bitmap_View& source, std::int64_t u, std::int64_t v, std::int64_t u_step,
                     std::int64_t v_step, int count, std::uint8_t* to)
{
    const Cubic_Table& table = The_Cubic_Table();
    const int size = source.bytes_per_pixel;
    for (int x = 0; x < count; ++x, u += u_step, v += v_step) {
        Cubic_Place place = Place_At(source, table, u, v);
        for (int c = 0; c < size; ++c, ++place.corner) *to++ = Plain_Cubic(place, source.step, size);
    }
}

#if HWY_TARGET == HWY_SCALAR

void Cubic_Color_Row(const Bitmap_View& source, std::int64_t u, std::int64_t v, std::int64_t u_step,
                     std::int64_t v_step, int count, std::uint8_t* to)
{
    Cubic_Plain_Row(source, u, v, u_step, v_step, count, to);
}

#else

using Bytes_Tag = hn::FixedTag<std::uint8_t, 16>;
using Lane_Tag = hn::FixedTag<std::int16_t, 8>; // two pixels of (blue, green, red, nothing)

// Bytes of pixels 0 and 1, or 2 and 3, each in the high half of its 16 bits; shifted right by one they are 128 x level.
HWY_ALIGN constexpr std::uint8_t left_pair[16] = {0x80, 0, 0x80, 1, 0x80, 2, 0x80, 0x80,
                                                  0x80, 3, 0x80, 4, 0x80, 5, 0x80, 0x80};
HWY_ALIGN constexpr std::uint8_t right_pair[16] = {0x80, 6, 0x80, 7,  0x80, 8,  0x80, 0x80,
                                                   0x80, 9, 0x80, 10, 0x80, 11, 0x80, 0x80};
HWY_ALIGN constexpr std::uint8_t left_weights[16] = {0, 1, 0, 1, 0, 1, 0, 1, 2, 3, 2, 3, 2, 3, 2, 3};
HWY_ALIGN constexpr std::uint8_t right_weights[16] = {4, 5, 4, 5, 4, 5, 4, 5, 6, 7, 6, 7, 6, 7, 6, 7};

using Lanes = hn::Vec<Lane_Tag>;
using Bytes = hn::Vec<Bytes_Tag>;

HWY_INLINE Lanes Levels(Bytes pixels, Bytes order)
{
    const hn::FixedTag<std::uint16_t, 8> d;
    return hn::BitCast(Lane_Tag(), hn::ShiftRight<1>(hn::BitCast(d, hn::TableLookupBytes(pixels, order))));
}

HWY_INLINE Lanes Color_At(const Cubic_Place& place, std::ptrdiff_t step)
{
    const Bytes_Tag d8;
    const Lane_Tag d;
    const auto left = hn::Load(d8, left_pair);
    const auto right = hn::Load(d8, right_pair);
    auto left_sum = hn::Zero(d);
    auto right_sum = hn::Zero(d);
    for (int j = 0; j < 4; ++j) {
        const auto pixels = hn::LoadU(d8, place.corner + j * step);
        const auto weight = hn::Set(d, place.down[j]);
        left_sum = hn::Add(left_sum, hn::MulFixedPoint15(Levels(pixels, left), weight));
        right_sum = hn::Add(right_sum, hn::MulFixedPoint15(Levels(pixels, right), weight));
    }
    const hn::FixedTag<std::uint64_t, 2> d64;
    std::uint64_t across = 0;
    std::memcpy(&across, place.across, sizeof across);
    const auto weights = hn::BitCast(d8, hn::Set(d64, across));
    const auto left_weight = hn::BitCast(d, hn::TableLookupBytes(weights, hn::Load(d8, left_weights)));
    const auto right_weight = hn::BitCast(d, hn::TableLookupBytes(weights, hn::Load(d8, right_weights)));
    const auto sum = hn::Add(hn::MulFixedPoint15(left_sum, left_weight), hn::MulFixedPoint15(right_sum, right_weight));
    return hn::Add(sum, hn::BitCast(d, hn::ShiftRightBytes<8>(d8, hn::BitCast(d8, sum))));
}

// Four bytes of which three count.
HWY_INLINE void Store_Color(Lanes color, std::uint8_t* to)
{
    const Lane_Tag d;
    const auto rounded = hn::ShiftRight<5>(hn::Add(color, hn::Set(d, 16)));
    const auto bytes = hn::DemoteTo(hn::FixedTag<std::uint8_t, 8>(), rounded);
    const hn::FixedTag<std::uint32_t, 2> d32;
    const std::uint32_t four = hn::GetLane(hn::BitCast(d32, bytes));
    std::memcpy(to, &four, 4);
}

void Cubic_Color_Row(const Bitmap_View& source, std::int64_t u, std::int64_t v, std::int64_t u_step,
                     std::int64_t v_step, int count, std::uint8_t* to)
{
    const Cubic_Table& table = The_Cubic_Table();
    for (int x = 0; x + 1 < count; ++x, u += u_step, v += v_step, to += 3)
        Store_Color(Color_At(Place_At(source, table, u, v), source.step), to);
    if (count < 1) return;
    std::uint8_t last[4];
    Store_Color(Color_At(Place_At(source, table, u, v), source.step), last);
    std::memcpy(to, last, 3);
}

#endif // HWY_SCALAR

} // namespace HWY_NAMESPACE
} // namespace bkimgutl
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace bkimgutl {
HWY_EXPORT(Cubic_Plain_Row);
HWY_EXPORT(Cubic_Color_Row);
} // namespace bkimgutl

void Cubic_Row(const Bitmap_View& source, std::int64_t u, std::int64_t v, std::int64_t u_step, std::int64_t v_step,
               int count, std::uint8_t* to)
{
    using namespace bkimgutl;
    if (source.Is_Grey())
        HWY_DYNAMIC_DISPATCH(Cubic_Plain_Row)(source, u, v, u_step, v_step, count, to);
    else
        HWY_DYNAMIC_DISPATCH(Cubic_Color_Row)(source, u, v, u_step, v_step, count, to);
}

#endif
