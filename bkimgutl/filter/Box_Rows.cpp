#include "bkimgutl/filter/Box_Rows.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "bkimgutl/filter/Box_Rows.cpp"
#include <hwy/foreach_target.h>

#include "bkimgutl/core/Vector_Blocks-inl.h"

HWY_BEFORE_NAMESPACE();
namespace bkimgutl::HWY_NAMESPACE {

template <std::size_t registers>
HWY_INLINE void Sum_Rows_At(const std::uint8_t* const* rows, int row_count, std::size_t x, std::uint16_t* out)
{
    const Words_Tag d;
    const hn::Rebind<std::uint8_t, Words_Tag> d8;
    const std::size_t lanes = hn::Lanes(d);
    const auto levels = [&](int row, std::size_t i)
                            HWY_ATTR { return hn::PromoteTo(d, hn::LoadU(d8, rows[row] + x + i * lanes)); };
    Words sum0 = levels(0, 0), sum1 = levels(0, registers > 1 ? 1 : 0);
    for (int row = 1; row < row_count; ++row) {
        sum0 = hn::Add(sum0, levels(row, 0));
        if (registers > 1) sum1 = hn::Add(sum1, levels(row, 1));
    }
    hn::StoreU(sum0, d, out + x);
    if (registers > 1) hn::StoreU(sum1, d, out + x + lanes);
}

void Row_Sums(const std::uint8_t* const* rows, int row_count, std::size_t bytes, std::uint16_t* out)
{
    const std::size_t lanes = hn::Lanes(Words_Tag());
    std::size_t x = 0;
    for (; x + 2 * lanes <= bytes; x += 2 * lanes) Sum_Rows_At<2>(rows, row_count, x, out);
    for (; x + lanes <= bytes; x += lanes) Sum_Rows_At<1>(rows, row_count, x, out);
    for (; x < bytes; ++x) {
        out[x] = 0;
        for (int row = 0; row < row_count; ++row) out[x] = std::uint16_t(out[x] + rows[row][x]);
    }
}

using Pixel_Tag = hn::Full128<std::uint32_t>;
using Pixel = hn::Vec<Pixel_Tag>;

HWY_INLINE Pixel Sums_At(const std::uint16_t* in)
{
    return hn::PromoteTo(Pixel_Tag(), hn::LoadU(hn::Rebind<std::uint16_t, Pixel_Tag>(), in));
}

/// (2 sum + n) / (2 n) rounded down. The half added to the numerator keeps the quotient of a multiple of n above the whole
/// number by more than single precision can lose, and that of any other sum below the next.
HWY_INLINE hn::Vec<hn::Rebind<std::int32_t, Pixel_Tag>> Mean(Pixel sum, float pixels)
{
    const hn::Rebind<float, Pixel_Tag> df;
    const hn::Rebind<std::int32_t, Pixel_Tag> di;
    const auto twice = hn::ConvertTo(df, hn::BitCast(di, hn::Add(sum, sum)));
    return hn::ConvertTo(di, hn::Mul(hn::Add(twice, hn::Set(df, pixels + 0.5F)), hn::Set(df, 0.5F / pixels)));
}

using Two_Pixels_Tag = hn::Full128<std::uint16_t>;

/// The sum of the pixels first .. end - 1 where it fits 16 bits: two pixels a register, then both halves.
HWY_INLINE Pixel Short_Block_Sum(const std::uint16_t* in, int pixels)
{
    const Two_Pixels_Tag d;
    auto sum = hn::Zero(d);
    int i = 0;
    for (; i + 2 <= pixels; i += 2, in += 6) sum = hn::Add(sum, hn::LoadU(d, in));
    sum = hn::Add(sum, hn::ShiftRightLanes<3>(d, sum));
    if (i < pixels) sum = hn::Add(sum, hn::LoadU(d, in));
    return hn::PromoteTo(Pixel_Tag(), hn::LowerHalf(sum));
}

HWY_INLINE Pixel Block_Sum(const std::uint16_t* in, int pixels)
{
    Pixel sum = Sums_At(in);
    for (int i = 1; i < pixels; ++i) sum = hn::Add(sum, Sums_At(in + 3 * std::ptrdiff_t(i)));
    return sum;
}

/// Writes a fourth byte behind the pixel.
HWY_INLINE void Color_Mean(const Box_Line& line, int x, std::uint8_t* out)
{
    constexpr int most_short_pixels = 65535 / 255;
    const hn::Rebind<std::uint8_t, Pixel_Tag> d8;
    const int first = line.starts[x], columns = line.starts[x + 1] - first, pixels = columns * line.row_count;
    const std::uint16_t* in = line.sums + 3 * std::ptrdiff_t(first);
    const Pixel sum = pixels <= most_short_pixels ? Short_Block_Sum(in, columns) : Block_Sum(in, columns);
    hn::StoreU(hn::DemoteTo(d8, Mean(sum, float(pixels))), d8, out);
}

void Color_Means(const Box_Line& line, std::uint8_t* out)
{
    const std::size_t ahead_step = line.ahead.size() / std::size_t(line.count);
    std::size_t fetched = 0;
    for (int x = 0; x + 1 < line.count; ++x) {
        Color_Mean(line, x, out + 3 * std::ptrdiff_t(x));
        // Summing the rows waits for memory, which has nothing to do here.
        for (; fetched < ahead_step * std::size_t(x); fetched += 64)
            __builtin_prefetch(line.ahead.data() + fetched, 0, 2);
    }
    std::uint8_t last[4];
    Color_Mean(line, line.count - 1, last);
    std::memcpy(out + 3 * std::ptrdiff_t(line.count - 1), last, 3);
}

} // namespace bkimgutl::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace bkimgutl {
HWY_EXPORT(Row_Sums);
HWY_EXPORT(Color_Means);
} // namespace bkimgutl

using namespace bkimgutl;

namespace {

void Grey_Means(const Box_Line& line, std::uint8_t* out)
{
    for (int x = 0; x < line.count; ++x) {
        const int first = line.starts[x], end = line.starts[x + 1];
        const std::uint32_t pixels = std::uint32_t(end - first) * std::uint32_t(line.row_count);
        std::uint32_t sum = 0;
        for (int i = first; i < end; ++i) sum += line.sums[i];
        out[x] = std::uint8_t((2 * sum + pixels) / (2 * pixels));
    }
}

} // namespace

void Box_Row_Sums(const std::uint8_t* const* rows, int row_count, std::size_t bytes, std::uint16_t* out)
{
    HWY_DYNAMIC_DISPATCH(Row_Sums)(rows, row_count, bytes, out);
}

void Box_Means(const Box_Line& line, std::uint8_t* out)
{
    if (line.channels == 3)
        HWY_DYNAMIC_DISPATCH(Color_Means)(line, out);
    else
        Grey_Means(line, out);
}
#endif
