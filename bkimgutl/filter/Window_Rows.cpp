#include "bkimgutl/filter/Window_Rows.h"

#include <algorithm>

#ifndef HWY_WANT_AVX3_DL
#define HWY_WANT_AVX3_DL // for the sum of products in one instruction
#endif
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "bkimgutl/filter/Window_Rows.cpp"
#include <hwy/foreach_target.h>

#include "bkimgutl/filter/Sample_Vectors-inl.h"

HWY_BEFORE_NAMESPACE();
namespace bkimgutl::HWY_NAMESPACE {

HWY_INLINE Ints Window_Products(const Weight_Bank& bank, const std::int16_t* plane, int x)
{
    const Shorts_Tag d;
    const std::int16_t* in = plane + bank.Start(x);
    const std::int16_t* weights = bank.Weights(x);
    Ints sum = Add_Products(hn::Zero(Ints_Tag()), hn::LoadU(d, in), hn::LoadU(d, weights));
    const int lanes = int(hn::Lanes(d));
    for (int i = lanes; i < bank.Window(); i += lanes)
        sum = Add_Products(sum, hn::LoadU(d, in + i), hn::LoadU(d, weights + i));
    return sum;
}

/// In every block of four lanes, lane i takes the sum of the block of v<i>.
HWY_INLINE Ints Block_Sums(Ints v0, Ints v1, Ints v2, Ints v3)
{
    const Ints_Tag d;
    const hn::Repartition<std::int64_t, Ints_Tag> d64;
    const auto crossed = [&](Ints a, Ints b)
                             HWY_ATTR { return hn::Add(hn::InterleaveLower(d, a, b), hn::InterleaveUpper(d, a, b)); };
    const auto a = hn::BitCast(d64, crossed(v0, v1)), b = hn::BitCast(d64, crossed(v2, v3));
    return hn::Add(hn::BitCast(d, hn::InterleaveLower(d64, a, b)), hn::BitCast(d, hn::InterleaveUpper(d64, a, b)));
}

HWY_INLINE Ints Four_Windows(const Weight_Bank& bank, const std::int16_t* plane, int x)
{
    return Block_Sums(Window_Products(bank, plane, x), Window_Products(bank, plane, x + 1),
                      Window_Products(bank, plane, x + 2), Window_Products(bank, plane, x + 3));
}

/// The sums of as many windows as a register has lanes.
HWY_INLINE Ints Window_Sums(const Weight_Bank& bank, const std::int16_t* plane, int x)
{
#if HWY_MAX_BYTES == 64
    const hn::Half<Ints_Tag> half;
    const auto folded = [&](int first) HWY_ATTR {
        const Ints sums = Four_Windows(bank, plane, first);
        return hn::Add(hn::LowerHalf(half, sums), hn::UpperHalf(half, sums));
    };
    const auto joined = [&](int first) HWY_ATTR {
        const auto a = folded(first), b = folded(first + 4);
        return hn::Add(hn::ConcatLowerLower(half, b, a), hn::ConcatUpperUpper(half, b, a));
    };
    return hn::Combine(Ints_Tag(), joined(x + 8), joined(x));
#elif HWY_MAX_BYTES == 32
    const Ints_Tag d;
    const Ints a = Four_Windows(bank, plane, x), b = Four_Windows(bank, plane, x + 4);
    return hn::Add(hn::ConcatLowerLower(d, b, a), hn::ConcatUpperUpper(d, b, a));
#else
    return Four_Windows(bank, plane, x);
#endif
}

template <class Sample>
HWY_INLINE auto Sums_At(const Window_Row& row, int channel, int x)
{
    const Ints_Tag d;
    const Ints sums = Window_Sums(*row.bank, row.planes + std::size_t(channel) * row.plane, x);
    const Ints rounded = hn::ShiftRightSame(hn::Add(sums, hn::Set(d, (1 << row.shift) >> 1)), row.shift);
    return hn::DemoteTo(hn::Rebind<Sample, Ints_Tag>(), rounded);
}

HWY_INLINE void Store_Pixels(const Window_Row& row, int x, std::uint8_t* out)
{
    const hn::Rebind<std::uint8_t, Ints_Tag> d;
    if (row.channels == 3)
        hn::StoreInterleaved3(Sums_At<std::uint8_t>(row, 0, x), Sums_At<std::uint8_t>(row, 1, x),
                              Sums_At<std::uint8_t>(row, 2, x), d, out);
    else
        hn::StoreU(Sums_At<std::uint8_t>(row, 0, x), d, out);
}

HWY_INLINE void Store_Pixels(const Window_Row& row, int x, std::int16_t* out)
{
    const hn::Rebind<std::int16_t, Ints_Tag> d;
    const hn::Rebind<std::uint16_t, Ints_Tag> du;
    const auto at = [&](int channel) HWY_ATTR { return hn::BitCast(du, Sums_At<std::int16_t>(row, channel, x)); };
    if (row.channels == 3)
        hn::StoreInterleaved3(at(0), at(1), at(2), du, reinterpret_cast<std::uint16_t*>(out));
    else
        hn::StoreU(Sums_At<std::int16_t>(row, 0, x), d, out);
}

template <class Sample>
HWY_INLINE void Windows_To(const Window_Row& row, Sample* out)
{
    const int lanes = int(hn::Lanes(Ints_Tag())), length = row.bank->Length();
    const std::ptrdiff_t channels = row.channels;
    int x = 0;
    for (; x + lanes <= length; x += lanes) Store_Pixels(row, x, out + x * channels);
    if (x == length) return;
    HWY_ALIGN Sample rest[3 * HWY_MAX_BYTES / 4];
    Store_Pixels(row, x, rest);
    std::copy(rest, rest + (length - x) * channels, out + x * channels);
}

void Windows_To_Bytes(const Window_Row& row, std::uint8_t* out)
{
    Windows_To(row, out);
}

void Windows_To_Words(const Window_Row& row, std::int16_t* out)
{
    Windows_To(row, out);
}

int Window_Multiple()
{
    return int(hn::Lanes(Shorts_Tag()));
}

// ---------------------------------------------------------------------------------------------------------------------
// Planes

void Split_Words(const std::int16_t* in, std::size_t pixels, std::int16_t* out, std::size_t plane)
{
    const Words_Tag d;
    const auto* from = reinterpret_cast<const std::uint16_t*>(in);
    auto* to = reinterpret_cast<std::uint16_t*>(out);
    for (std::size_t x = 0; x < pixels; x += hn::Lanes(d)) {
        Words a, b, c;
        hn::LoadInterleaved3(d, from + 3 * x, a, b, c);
        hn::StoreU(a, d, to + x);
        hn::StoreU(b, d, to + plane + x);
        hn::StoreU(c, d, to + 2 * plane + x);
    }
}

HWY_INLINE void Split_Block(const std::uint8_t* in, std::int16_t* out, std::size_t plane)
{
    const Bytes_Tag d;
    const Shorts_Tag d16;
    const std::size_t lanes = hn::Lanes(d16);
    Bytes a, b, c;
    hn::LoadInterleaved3(d, in, a, b, c);
    const auto store = [&](Bytes v, std::int16_t* to) HWY_ATTR {
        hn::StoreU(hn::PromoteTo(d16, hn::LowerHalf(v)), d16, to);
        hn::StoreU(hn::PromoteTo(d16, hn::UpperHalf(hn::Half<Bytes_Tag>(), v)), d16, to + lanes);
    };
    store(a, out), store(b, out + plane), store(c, out + 2 * plane);
}

void Split_Bytes(const std::uint8_t* in, std::size_t pixels, std::int16_t* out, std::size_t plane)
{
    const std::size_t lanes = hn::Lanes(Bytes_Tag());
    std::size_t x = 0;
    for (; x + lanes <= pixels; x += lanes) Split_Block(in + 3 * x, out + x, plane);
    if (x == pixels) return;
    HWY_ALIGN std::uint8_t rest[3 * HWY_MAX_BYTES] = {};
    std::memcpy(rest, in + 3 * x, 3 * (pixels - x));
    Split_Block(rest, out + x, plane);
}

} // namespace bkimgutl::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace bkimgutl {
HWY_EXPORT(Split_Words);
HWY_EXPORT(Split_Bytes);
HWY_EXPORT(Windows_To_Bytes);
HWY_EXPORT(Windows_To_Words);
HWY_EXPORT(Window_Multiple);
} // namespace bkimgutl

using namespace bkimgutl;

Weight_Bank::Shape Window_Row_Shape(int most_bits)
{
    return {most_bits, 1, HWY_DYNAMIC_DISPATCH(Window_Multiple)()};
}

void Sum_Windows(const Window_Row& row, std::uint8_t* out)
{
    HWY_DYNAMIC_DISPATCH(Windows_To_Bytes)(row, out);
}

void Sum_Windows(const Window_Row& row, std::int16_t* out)
{
    HWY_DYNAMIC_DISPATCH(Windows_To_Words)(row, out);
}

void Split_Planes(const std::int16_t* in, std::size_t pixels, int channels, std::int16_t* out, std::size_t plane)
{
    if (channels == 3)
        HWY_DYNAMIC_DISPATCH(Split_Words)(in, pixels, out, plane);
    else
        std::copy(in, in + pixels, out);
}

void Split_Planes(const std::uint8_t* in, std::size_t pixels, int channels, std::int16_t* out, std::size_t plane)
{
    if (channels == 3)
        HWY_DYNAMIC_DISPATCH(Split_Bytes)(in, pixels, out, plane);
    else
        std::copy(in, in + pixels, out);
}
#endif
