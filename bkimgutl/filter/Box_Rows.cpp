#include "bkimgutl/filter/Box_Rows.h"

#include "bkimgutl/filter/Scratch.h"

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

using Two_Pixels_Tag = hn::Full128<std::uint16_t>;
using Pixel_Tag = hn::Half<Two_Pixels_Tag>;

/// The sums of the blocks of a line where they fit 16 bits: two pixels a register, then both halves. A fourth number is
/// written behind the last block.
void Block_Sums(const Box_Line& line, std::uint16_t* out)
{
    const Two_Pixels_Tag d;
    const std::size_t ahead_step = line.ahead.size() / std::size_t(line.count);
    std::size_t fetched = 0;
    for (int x = 0; x < line.count; ++x, out += 3) {
        const std::uint16_t* in = line.sums + 3 * std::ptrdiff_t(line.starts[x]);
        const int columns = line.starts[x + 1] - line.starts[x];
        auto sum = hn::Zero(d);
        int i = 0;
        for (; i + 2 <= columns; i += 2, in += 6) sum = hn::Add(sum, hn::LoadU(d, in));
        sum = hn::Add(sum, hn::ShiftRightLanes<3>(d, sum));
        if (i < columns) sum = hn::Add(sum, hn::LoadU(d, in));
        hn::StoreU(hn::LowerHalf(sum), Pixel_Tag(), out);
        // Summing the rows waits for memory, which has nothing to do here.
        for (; fetched < ahead_step * std::size_t(x); fetched += 64)
            __builtin_prefetch(line.ahead.data() + fetched, 0, 2);
    }
}

/// sum / n + 1 / 2 rounded down, n being the rows times the columns whose share 1 / columns stands for each sum. The quarter
/// added to the sum keeps the quotient above a whole number that it should reach by more than single precision can lose, and
/// below one that it should not.
void Quotients(const std::uint16_t* sums, const float* shares, int row_count, std::size_t count, std::uint8_t* out)
{
    const hn::ScalableTag<float> d;
    const hn::RebindToSigned<decltype(d)> di;
    const hn::Rebind<std::uint16_t, decltype(d)> d16;
    const hn::Rebind<std::uint8_t, decltype(d)> d8;
    const std::size_t lanes = hn::Lanes(d);
    const auto row_share = hn::Set(d, 1.0F / float(row_count));
    const auto quotients = [&](std::size_t x, std::uint8_t* to) HWY_ATTR {
        const auto sum = hn::ConvertTo(d, hn::PromoteTo(di, hn::LoadU(d16, sums + x)));
        const auto share = hn::Mul(hn::LoadU(d, shares + x), row_share);
        const auto mean = hn::MulAdd(hn::Add(sum, hn::Set(d, 0.25F)), share, hn::Set(d, 0.5F));
        hn::StoreU(hn::DemoteTo(d8, hn::ConvertTo(di, mean)), d8, to);
    };
    std::size_t x = 0;
    for (; x + lanes <= count; x += lanes) quotients(x, out + x);
    if (x == count) return;
    std::uint8_t rest[HWY_MAX_BYTES / 4];
    quotients(x, rest);
    std::memcpy(out + x, rest, count - x);
}

} // namespace bkimgutl::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace bkimgutl {
HWY_EXPORT(Row_Sums);
HWY_EXPORT(Block_Sums);
HWY_EXPORT(Quotients);
} // namespace bkimgutl

using namespace bkimgutl;

namespace {

void Plain_Means(const Box_Line& line, std::uint8_t* out)
{
    for (int x = 0; x < line.count; ++x) {
        const int first = line.starts[x], end = line.starts[x + 1];
        const std::uint32_t pixels = std::uint32_t(end - first) * std::uint32_t(line.row_count);
        for (int c = 0; c < line.channels; ++c) {
            std::uint32_t sum = 0;
            for (int i = first; i < end; ++i) sum += line.sums[std::ptrdiff_t(i) * line.channels + c];
            *out++ = std::uint8_t((2 * sum + pixels) / (2 * pixels));
        }
    }
}

} // namespace

void Box_Row_Sums(const std::uint8_t* const* rows, int row_count, std::size_t bytes, std::uint16_t* out)
{
    HWY_DYNAMIC_DISPATCH(Row_Sums)(rows, row_count, bytes, out);
}

void Box_Means(const Box_Line& line, std::uint8_t* out)
{
    constexpr int most_short_pixels = 65535 / 255;
    if (line.channels != 3 || line.most_columns * line.row_count > most_short_pixels) return Plain_Means(line, out);
    constexpr std::size_t room = 64; // vector code runs over the end
    const std::size_t count = 3 * std::size_t(line.count);
    std::uint16_t* sums = Scratch<struct Box_Line, std::uint16_t>(count + room);
    HWY_DYNAMIC_DISPATCH(Block_Sums)(line, sums);
    HWY_DYNAMIC_DISPATCH(Quotients)(sums, line.shares, line.row_count, count, out);
}
#endif
