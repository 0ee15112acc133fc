#include "bkimgutl/tone/Map_Row.h"

#ifndef HWY_WANT_AVX3_DL
#define HWY_WANT_AVX3_DL // byte permutes of whole registers are what table maps live on
#endif
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "bkimgutl/tone/Map_Row.cpp"
#include <hwy/foreach_target.h>

#include "bkimgutl/core/Vector_Blocks-inl.h"
#include "bkimgutl/tone/Byte_Table-inl.h"

HWY_BEFORE_NAMESPACE();
namespace bkimgutl::HWY_NAMESPACE {

void Map_Bytes(const std::uint8_t* in, std::uint8_t* out, std::size_t bytes, const Byte_Map& map)
{
    const Bytes_Tag d;
    const Byte_Table table(map.level);
    For_Blocks(in, out, bytes, hn::Lanes(d), [&](const std::uint8_t* from, std::uint8_t* to) HWY_ATTR {
        hn::StoreU(table(hn::LoadU(d, from)), d, to);
    });
}

void Map_Three_Channels(const std::uint8_t* in, std::uint8_t* out, std::size_t pixels, const Channel_Maps& maps)
{
    const Bytes_Tag d;
    const Byte_Table blue(maps.channel[0].level), green(maps.channel[1].level), red(maps.channel[2].level);
    const std::size_t lanes = hn::Lanes(d);
#if HWY_TARGET == HWY_AVX3_DL
    // The pixels stay interleaved: which channel a byte belongs to depends only on its place in three registers.
    constexpr std::uint64_t every_third = 0x9249249249249249; // bits 0, 3, ... 63
    For_Blocks(in, out, pixels * 3, lanes * 3, [&](const std::uint8_t* from, std::uint8_t* to) HWY_ATTR {
        const auto map = [&](int part, __mmask64 greens, __mmask64 reds) HWY_ATTR {
            const Bytes source = hn::LoadU(d, from + 64 * part);
            __m512i mapped = blue(source).raw;
            mapped = _mm512_mask_mov_epi8(mapped, greens, green(source).raw);
            mapped = _mm512_mask_mov_epi8(mapped, reds, red(source).raw);
            hn::StoreU(Bytes{mapped}, d, to + 64 * part);
        };
        map(0, every_third << 1, every_third << 2);
        map(1, every_third, every_third << 1);
        map(2, every_third << 2, every_third);
    });
#else
    For_Blocks(in, out, pixels * 3, lanes * 3, [&](const std::uint8_t* from, std::uint8_t* to) HWY_ATTR {
        Bytes b, g, r;
        hn::LoadInterleaved3(d, from, b, g, r);
        hn::StoreInterleaved3(blue(b), green(g), red(r), d, to);
    });
#endif
}

struct Split_Bytes {
    Words even, odd;
    HWY_INLINE explicit Split_Bytes(Bytes v) : even(Even_Words(v)), odd(Odd_Words(v)) {}
};

void Map_With_Luminance(const std::uint8_t* in, std::uint8_t* out, std::size_t pixels, const Channel_Maps& maps)
{
    const Bytes_Tag d;
    const Byte_Table blue(maps.channel[0].level), green(maps.channel[1].level), red(maps.channel[2].level);
    const Byte_Table luminance(maps.luminance.level);
    For_Blocks(in, out, pixels * 3, hn::Lanes(d) * 3, [&](const std::uint8_t* from, std::uint8_t* to) HWY_ATTR {
        Bytes b, g, r;
        hn::LoadInterleaved3(d, from, b, g, r);
        b = blue(b), g = green(g), r = red(r);
        const Split_Bytes bs(b), gs(g), rs(r);
        const Bytes before =
            Joined_Words(Luminance_Words(rs.even, gs.even, bs.even), Luminance_Words(rs.odd, gs.odd, bs.odd));
        const Bytes after = luminance(before);
        // One of the two is 0, so that saturating steps up and down are the limited sum.
        const Bytes up = hn::SaturatedSub(after, before), down = hn::SaturatedSub(before, after);
        const auto moved = [&](Bytes v) HWY_ATTR { return hn::SaturatedSub(hn::SaturatedAdd(v, up), down); };
        hn::StoreInterleaved3(moved(b), moved(g), moved(r), d, to);
    });
}

void Map_Color_Row(const std::uint8_t* in, std::uint8_t* out, std::size_t pixels, const Channel_Maps& maps)
{
    if (maps.has_luminance)
        Map_With_Luminance(in, out, pixels, maps);
    else
        Map_Three_Channels(in, out, pixels, maps);
}

/// dividend / divisor, rounded down, from 65536 / divisor rounded down: the estimate is at most 1 too small.
HWY_INLINE Words Quotient(Words dividend, Words divisor, Words reciprocal)
{
    const Words_Tag d;
    const Words estimate = hn::MulHigh(dividend, reciprocal);
    const Words rest = hn::Sub(dividend, hn::Mul(estimate, divisor));
    return hn::Add(estimate, hn::IfThenZeroElse(hn::Lt(rest, divisor), hn::Set(d, 1)));
}

/// (part * value + 127) / 255
HWY_INLINE Words Scaled_To_Value(Words part, Words value)
{
    const Words_Tag d;
    const Words sum = hn::Add(hn::Mul(part, value), hn::Set(d, 127));
    return hn::ShiftRight<7>(hn::MulHigh(sum, hn::Set(d, 0x8081)));
}

/// (range * 255 + most / 2) / most; 0 for most = 0, whose reciprocal is 0 and whose dividend is 0.
HWY_INLINE Words Saturation_Words(Words range, Words most, Words reciprocal)
{
    const Words dividend = hn::Add(hn::Sub(hn::ShiftLeft<8>(range), range), hn::ShiftRight<1>(most));
    return Quotient(dividend, hn::Max(most, hn::Set(Words_Tag(), 1)), reciprocal);
}

/// How far the middle channel stands above the lowest, in sixtieths of the range, as the hue has it in its sector.
HWY_INLINE Words Sixtieths_Words(Words step, Words range, Words reciprocal)
{
    const Words dividend = hn::Add(hn::Mul(step, hn::Set(Words_Tag(), 60)), hn::ShiftRight<1>(range));
    return Quotient(dividend, hn::Max(range, hn::Set(Words_Tag(), 1)), reciprocal);
}

struct Low_And_Middle {
    Words low, middle;
};

/// The new lowest and middle channel. In odd sectors the hue runs downwards, and a half is rounded down instead of up:
/// floor((60 - g) S + 30) / 60) taken from S is the sum below with 29 for 30.
HWY_INLINE Low_And_Middle From_Hsv(Words saturation, Words value, Words sixtieths, Words odd_sector)
{
    const Words_Tag d;
    const Words sum = hn::Sub(hn::Add(hn::Mul(sixtieths, saturation), hn::Set(d, 30)), odd_sector);
    const Words step = hn::ShiftRight<5>(hn::MulHigh(sum, hn::Set(d, 34953))); // sum / 60 for every sum below 2^15
    const Words rest = hn::Sub(hn::Set(d, 255), saturation);
    return {Scaled_To_Value(rest, value), Scaled_To_Value(hn::Add(rest, step), value)};
}

struct Hsv_Lookup {
    Byte_Table saturation, value, reciprocal_low, reciprocal_high;
    explicit Hsv_Lookup(const Hsv_Maps& maps)
        : saturation(maps.saturation.level),
          value(maps.value.level),
          reciprocal_low(maps.reciprocal_low.level),
          reciprocal_high(maps.reciprocal_high.level)
    {}
};

struct Reciprocals {
    Words even, odd;
    HWY_INLINE Reciprocals(const Hsv_Lookup& lookup, Bytes v)
    {
        const Bytes low = lookup.reciprocal_low(v), high = lookup.reciprocal_high(v);
        even = hn::Or(Even_Words(low), hn::ShiftLeft<8>(hn::BitCast(Words_Tag(), high)));
        const Words high_mask = hn::Set(Words_Tag(), 0xFF00);
        odd = hn::Or(Odd_Words(low), hn::And(hn::BitCast(Words_Tag(), high), high_mask));
    }
};

/// The hue of a pixel is its order of channels (the sector) and the place of the middle one between the other two, so the
/// way there and back needs no branch: order the channels, compute the new lowest, middle and highest, put them back.
HWY_INLINE void Map_Hsv_Block(const Hsv_Lookup& lookup, Bytes& b, Bytes& g, Bytes& r)
{
    const Bytes_Tag d;
    const Bytes more = hn::Max(g, b), less = hn::Min(g, b);
    const Bytes most = hn::Max(r, more), least = hn::Min(r, less);
    const Bytes middle = hn::Max(less, hn::Min(r, more));
    const Bytes range = hn::Sub(most, least), step = hn::Sub(middle, least);

    const Split_Bytes range_words(range), most_words(most), step_words(step);
    const Reciprocals by_most(lookup, most), by_range(lookup, range);
    const Bytes saturation =
        lookup.saturation(Joined_Words(Saturation_Words(range_words.even, most_words.even, by_most.even),
                                       Saturation_Words(range_words.odd, most_words.odd, by_most.odd)));
    const Bytes value = lookup.value(most);

    // r > g, g > b, b > r: two of them hold in even sectors, one in odd ones; where two channels are equal it is all one.
    const auto above = [&](Bytes x, Bytes y) HWY_ATTR { return hn::SaturatedSub(x, y); };
    const auto one = hn::Set(d, 1);
    const auto flag = [&](Bytes x, Bytes y) HWY_ATTR { return hn::Min(above(x, y), one); };
    const Bytes odd_sector = hn::Xor(flag(r, g), hn::Xor(flag(g, b), flag(b, r)));

    const Split_Bytes s(saturation), v(value), odd(odd_sector);
    const Low_And_Middle even_part =
        From_Hsv(s.even, v.even, Sixtieths_Words(step_words.even, range_words.even, by_range.even), odd.even);
    const Low_And_Middle odd_part =
        From_Hsv(s.odd, v.odd, Sixtieths_Words(step_words.odd, range_words.odd, by_range.odd), odd.odd);
    const Bytes new_low = Joined_Words(even_part.low, odd_part.low);
    const Bytes new_middle = Joined_Words(even_part.middle, odd_part.middle);

    // Without saturation the hue is 0: red is the highest, the others are the lowest.
    const auto other = [&](Bytes x) HWY_ATTR {
        return hn::IfThenElse(hn::Eq(x, least), new_low, hn::IfThenElse(hn::Eq(x, most), value, new_middle));
    };
    const Bytes new_red = hn::IfThenElse(hn::Eq(r, most), value, hn::IfThenElse(hn::Eq(r, least), new_low, new_middle));
    b = other(b), g = other(g), r = new_red;
}

void Map_Hsv_Row(const std::uint8_t* in, std::uint8_t* out, std::size_t pixels, const Hsv_Maps& maps)
{
    const Bytes_Tag d;
    const Hsv_Lookup lookup(maps);
    For_Blocks(in, out, pixels * 3, hn::Lanes(d) * 3, [&](const std::uint8_t* from, std::uint8_t* to) HWY_ATTR {
        Bytes b, g, r;
        hn::LoadInterleaved3(d, from, b, g, r);
        Map_Hsv_Block(lookup, b, g, r);
        hn::StoreInterleaved3(b, g, r, d, to);
    });
}

} // namespace bkimgutl::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace bkimgutl {
HWY_EXPORT(Map_Bytes);
HWY_EXPORT(Map_Color_Row);
HWY_EXPORT(Map_Hsv_Row);
} // namespace bkimgutl

void Map_Bytes(const std::uint8_t* in, std::uint8_t* out, std::size_t bytes, const Byte_Map& map)
{
    using namespace bkimgutl;
    HWY_DYNAMIC_DISPATCH(Map_Bytes)(in, out, bytes, map);
}

void Map_Color_Row(const std::uint8_t* in, std::uint8_t* out, std::size_t pixels, const Channel_Maps& maps)
{
    using namespace bkimgutl;
    HWY_DYNAMIC_DISPATCH(Map_Color_Row)(in, out, pixels, maps);
}

void Map_Hsv_Row(const std::uint8_t* in, std::uint8_t* out, std::size_t pixels, const Hsv_Maps& maps)
{
    using namespace bkimgutl;
    HWY_DYNAMIC_DISPATCH(Map_Hsv_Row)(in, out, pixels, maps);
}
#endif
