#include "bkimgutl/filter/Resample_Rows.h"

#include "bkimgutl/filter/Scratch.h"

#include <algorithm>

#ifndef HWY_WANT_AVX3_DL
#define HWY_WANT_AVX3_DL // for the sum of products in one instruction
#endif
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "bkimgutl/filter/Resample_Rows.cpp"
#include <hwy/foreach_target.h>

#include "bkimgutl/core/Vector_Blocks-inl.h"
#include <hwy/cache_control.h>

HWY_BEFORE_NAMESPACE();
namespace bkimgutl::HWY_NAMESPACE {

using Shorts_Tag = hn::ScalableTag<std::int16_t>;
using Ints_Tag = hn::ScalableTag<std::int32_t>;
using Shorts = hn::Vec<Shorts_Tag>;
using Ints = hn::Vec<Ints_Tag>;

/// sum + a[2i] * b[2i] + a[2i + 1] * b[2i + 1]
HWY_INLINE Ints Add_Products(Ints sum, Shorts a, Shorts b)
{
#if HWY_TARGET == HWY_AVX3_DL
    asm("vpdpwssd %2, %1, %0" : "+v"(sum.raw) : "v"(b.raw), "vm"(a.raw));
    return sum;
#elif HWY_ARCH_X86
    Ints unused = hn::Zero(Ints_Tag());
    return hn::ReorderWidenMulAccumulate(Ints_Tag(), a, b, sum, unused);
#else
    const Ints_Tag d;
    const Ints wide_a = hn::BitCast(d, a), wide_b = hn::BitCast(d, b);
    const Ints low =
        hn::Mul(hn::ShiftRight<16>(hn::ShiftLeft<16>(wide_a)), hn::ShiftRight<16>(hn::ShiftLeft<16>(wide_b)));
    return hn::Add(sum, hn::Add(low, hn::Mul(hn::ShiftRight<16>(wide_a), hn::ShiftRight<16>(wide_b))));
#endif
}

HWY_INLINE Shorts Weight_Pair(const std::int16_t* weights)
{
    std::int32_t pair;
    std::memcpy(&pair, weights, sizeof pair);
    return hn::BitCast(Shorts_Tag(), hn::Set(Ints_Tag(), pair));
}

HWY_INLINE Shorts Shifted(Ints low, Ints high, int shift)
{
    return hn::ReorderDemote2To(Shorts_Tag(), hn::ShiftRightSame(low, shift), hn::ShiftRightSame(high, shift));
}

HWY_INLINE void Store_Samples(Shorts v, std::int16_t* out)
{
    hn::StoreU(v, Shorts_Tag(), out);
}
HWY_INLINE void Store_Samples(Shorts v, std::uint8_t* out)
{
    const hn::Rebind<std::uint8_t, Shorts_Tag> d;
    hn::StoreU(hn::DemoteTo(d, v), d, out);
}

HWY_INLINE Shorts Load_Samples(const std::uint8_t* in)
{
    return hn::PromoteTo(Shorts_Tag(), hn::LoadU(hn::Rebind<std::uint8_t, Shorts_Tag>(), in));
}
HWY_INLINE Shorts Load_Samples(const std::int16_t* in)
{
    return hn::LoadU(Shorts_Tag(), in);
}

// ---------------------------------------------------------------------------------------------------------------------
// Vertical pass on bytes. A tile of columns is brought into pairs of rows once, (a0 b0 a1 b1 ...) as 16-bit samples, and
// stays in the first cache while all outputs that use it are summed.

constexpr std::size_t tile_vectors = 6;

struct Pair_Tile {
    const std::int16_t* pairs;
    std::size_t pair_stride; // samples of one pair of rows
};

HWY_INLINE void Fill_Tile(const Byte_Column_Job& job, std::size_t column, std::int16_t* pairs, std::size_t tile)
{
    const Shorts_Tag d;
    const std::size_t lanes = hn::Lanes(d);
    const std::size_t inside = std::min(tile, job.bytes - column);
    HWY_ALIGN std::uint8_t ends[2][tile_vectors * HWY_MAX_BYTES / 2] = {};
    for (int row = 0; row < job.row_count; row += 2) {
        const std::uint8_t* a = job.rows[row] + column;
        const std::uint8_t* b = job.rows[row + 1] + column;
        // The rows lie too far apart for the processor to see what comes next; a prefetch beyond a row's end does no harm.
        for (std::size_t line = 0; line < tile; line += 64) {
            hwy::Prefetch(a + tile + line);
            hwy::Prefetch(b + tile + line);
        }
        if (inside < tile) {
            std::memcpy(ends[0], a, inside);
            std::memcpy(ends[1], b, inside);
            a = ends[0], b = ends[1];
        }
        for (std::size_t i = 0; i < tile; i += lanes, pairs += 2 * lanes) {
            const Shorts va = Load_Samples(a + i), vb = Load_Samples(b + i);
            hn::Store(hn::InterleaveLower(d, va, vb), d, pairs);
            hn::Store(hn::InterleaveUpper(d, va, vb), d, pairs + lanes);
        }
    }
}

HWY_INLINE void Sum_Tile(const Pair_Tile& tile, const std::int16_t* weights, int pairs, int shift, std::int16_t* out)
{
    const Shorts_Tag d;
    const std::size_t lanes = hn::Lanes(d);
    const Ints half = hn::Set(Ints_Tag(), (1 << shift) >> 1);
    for (std::size_t i = 0; i < tile_vectors; i += 2) {
        const std::int16_t* place = tile.pairs + i * 2 * lanes;
        Ints sum0 = half, sum1 = half, sum2 = half, sum3 = half;
        for (int pair = 0; pair < pairs; ++pair, place += tile.pair_stride) {
            const Shorts weight = Weight_Pair(weights + 2 * pair);
            sum0 = Add_Products(sum0, hn::Load(d, place), weight);
            sum1 = Add_Products(sum1, hn::Load(d, place + lanes), weight);
            sum2 = Add_Products(sum2, hn::Load(d, place + 2 * lanes), weight);
            sum3 = Add_Products(sum3, hn::Load(d, place + 3 * lanes), weight);
        }
        Store_Samples(Shifted(sum0, sum1, shift), out + i * lanes);
        Store_Samples(Shifted(sum2, sum3, shift), out + (i + 1) * lanes);
    }
}

void Byte_Columns(const Byte_Column_Job& job)
{
    const std::size_t tile = tile_vectors * hn::Lanes(Shorts_Tag());
    std::int16_t* pairs = Scratch<struct Column_Tile>(std::size_t(job.row_count) * tile);
    for (std::size_t column = 0; column < job.bytes; column += tile) {
        Fill_Tile(job, column, pairs, tile);
        for (int y = job.first_output; y < job.end_output; ++y) {
            const std::size_t first = std::size_t(job.bank->starts[std::size_t(y)] - job.first_row) / 2;
            Sum_Tile({pairs + first * 2 * tile, 2 * tile}, job.bank->Weights(y), job.bank->pairs, job.shift,
                     job.out + std::size_t(y - job.first_output) * job.out_stride + column);
        }
    }
}

// ---------------------------------------------------------------------------------------------------------------------
// Vertical pass on 16-bit rows

template <class Sample>
HWY_INLINE void Word_Columns_At(const Word_Column_Job& job, std::size_t x, Sample* out)
{
    const Shorts_Tag d;
    const std::size_t lanes = hn::Lanes(d);
    const Ints half = hn::Set(Ints_Tag(), (1 << job.shift) >> 1);
    Ints sum0 = half, sum1 = half, sum2 = half, sum3 = half;
    for (int pair = 0; pair < job.pairs; ++pair) {
        const Shorts weight = Weight_Pair(job.weights + 2 * pair);
        const std::int16_t* a = job.rows[2 * pair] + x;
        const std::int16_t* b = job.rows[2 * pair + 1] + x;
        const Shorts a0 = hn::LoadU(d, a), b0 = hn::LoadU(d, b);
        const Shorts a1 = hn::LoadU(d, a + lanes), b1 = hn::LoadU(d, b + lanes);
        sum0 = Add_Products(sum0, hn::InterleaveLower(d, a0, b0), weight);
        sum1 = Add_Products(sum1, hn::InterleaveUpper(d, a0, b0), weight);
        sum2 = Add_Products(sum2, hn::InterleaveLower(d, a1, b1), weight);
        sum3 = Add_Products(sum3, hn::InterleaveUpper(d, a1, b1), weight);
    }
    Store_Samples(Shifted(sum0, sum1, job.shift), out);
    Store_Samples(Shifted(sum2, sum3, job.shift), out + lanes);
}

void Word_Columns_To_Words(const Word_Column_Job& job, std::int16_t* out)
{
    const std::size_t step = 2 * hn::Lanes(Shorts_Tag());
    for (std::size_t x = 0; x < job.count; x += step) Word_Columns_At(job, x, out + x);
}

void Word_Columns_To_Bytes(const Word_Column_Job& job, std::uint8_t* out)
{
    const std::size_t step = 2 * hn::Lanes(Shorts_Tag());
    std::size_t x = 0;
    for (; x + step <= job.count; x += step) Word_Columns_At(job, x, out + x);
    if (x == job.count) return;
    HWY_ALIGN std::uint8_t rest[HWY_MAX_BYTES];
    Word_Columns_At(job, x, rest);
    std::memcpy(out + x, rest, job.count - x);
}

// ---------------------------------------------------------------------------------------------------------------------
// Horizontal pass. Lanes are rows: a window of columns is turned into vectors of one pair of samples from each row, so that
// the sums need no shuffles; what comes out is packed and turned back. A register holds blocks of 16 bytes, and block b of
// the i-th of four registers belongs to row 4 b + i.

constexpr std::size_t most_lanes = HWY_MAX_BYTES / 4;

HWY_INLINE void Transpose_4x4(Ints& v0, Ints& v1, Ints& v2, Ints& v3)
{
    const Ints_Tag d;
    const hn::Repartition<std::int64_t, Ints_Tag> d64;
    const auto low01 = hn::BitCast(d64, hn::InterleaveLower(d, v0, v1)),
               high01 = hn::BitCast(d64, hn::InterleaveUpper(d, v0, v1));
    const auto low23 = hn::BitCast(d64, hn::InterleaveLower(d, v2, v3)),
               high23 = hn::BitCast(d64, hn::InterleaveUpper(d, v2, v3));
    v0 = hn::BitCast(d, hn::InterleaveLower(d64, low01, low23));
    v1 = hn::BitCast(d, hn::InterleaveUpper(d64, low01, low23));
    v2 = hn::BitCast(d, hn::InterleaveLower(d64, high01, high23));
    v3 = hn::BitCast(d, hn::InterleaveUpper(d64, high01, high23));
}

/// 16 bytes at `offset` samples of rows i, 4 + i, ...
HWY_INLINE Ints Row_Blocks(const std::int16_t* const* rows, std::size_t i, std::size_t offset)
{
    const hn::Full128<std::int32_t> d128;
    const auto block = [&](std::size_t b) HWY_ATTR {
        return hn::LoadU(d128, reinterpret_cast<const std::int32_t*>(rows[4 * b + i] + offset));
    };
#if HWY_MAX_BYTES == 64
    const hn::Full256<std::int32_t> d256;
    return hn::Combine(Ints_Tag(), hn::Combine(d256, block(3), block(2)), hn::Combine(d256, block(1), block(0)));
#elif HWY_MAX_BYTES == 32
    return hn::Combine(Ints_Tag(), block(1), block(0));
#else
    return block(0);
#endif
}

/// What a tile of outputs reads: pairs first_pair.. of every channel, in groups of four pairs.
struct Window {
    int first_output, end_output;
    std::size_t first_pair, pair_count;
};

HWY_INLINE void Turn_Window(const Row_Job& job, const std::int16_t* const* rows, const Window& window,
                            std::int32_t* turned)
{
    const Ints_Tag d;
    const std::size_t lanes = hn::Lanes(d);
    for (int channel = 0; channel < job.channels; ++channel) {
        const std::size_t offset = std::size_t(channel) * job.in_plane + window.first_pair * 2;
        for (std::size_t pair = 0; pair < window.pair_count; pair += 4, turned += 4 * lanes) {
            Ints v0 = Row_Blocks(rows, 0, offset + pair * 2), v1 = Row_Blocks(rows, 1, offset + pair * 2);
            Ints v2 = Row_Blocks(rows, 2, offset + pair * 2), v3 = Row_Blocks(rows, 3, offset + pair * 2);
            Transpose_4x4(v0, v1, v2, v3);
            hn::Store(v0, d, turned);
            hn::Store(v1, d, turned + lanes);
            hn::Store(v2, d, turned + 2 * lanes);
            hn::Store(v3, d, turned + 3 * lanes);
        }
    }
}

/// sums[(x x x_step + channel x channel_step) x lanes] takes the sum of output x for each row.
template <int channels>
HWY_INLINE void Sum_Window(const Row_Job& job, const Window& window, const std::int32_t* turned, std::int32_t* sums,
                           std::size_t x_step, std::size_t channel_step)
{
    const Ints_Tag d;
    const Shorts_Tag d16;
    const std::size_t lanes = hn::Lanes(d);
    const std::size_t plane = (window.pair_count + 3) / 4 * 4 * lanes;
    const Ints half = hn::Set(d, (1 << job.shift) >> 1);
    const int pairs = job.bank->pairs;
    for (int x = window.first_output; x < window.end_output; ++x, sums += x_step * lanes) {
        const std::int16_t* weights = job.bank->Weights(x);
        const std::int32_t* place =
            turned + (std::size_t(job.bank->starts[std::size_t(x)]) / 2 - window.first_pair) * lanes;
        Ints sum0 = half, sum1 = half, sum2 = half;
        for (int pair = 0; pair < pairs; ++pair, place += lanes) {
            const Shorts weight = Weight_Pair(weights + 2 * pair);
            sum0 = Add_Products(sum0, hn::BitCast(d16, hn::Load(d, place)), weight);
            if (channels == 3) {
                sum1 = Add_Products(sum1, hn::BitCast(d16, hn::Load(d, place + plane)), weight);
                sum2 = Add_Products(sum2, hn::BitCast(d16, hn::Load(d, place + 2 * plane)), weight);
            }
        }
        hn::Store(hn::ShiftRightSame(sum0, job.shift), d, sums);
        if (channels == 3) {
            hn::Store(hn::ShiftRightSame(sum1, job.shift), d, sums + channel_step * lanes);
            hn::Store(hn::ShiftRightSame(sum2, job.shift), d, sums + 2 * channel_step * lanes);
        }
    }
}

/// Four sums as bytes, or two as 16-bit samples, of each row in one lane.
HWY_INLINE Ints Packed(const std::int32_t* sums, std::uint8_t)
{
    const Ints_Tag d;
    const std::size_t lanes = hn::Lanes(d);
    const auto level = [&](std::size_t i) HWY_ATTR {
        return hn::Min(hn::Max(hn::Load(d, sums + i * lanes), hn::Zero(d)), hn::Set(d, 255));
    };
    return hn::Or(hn::Or(level(0), hn::ShiftLeft<8>(level(1))),
                  hn::Or(hn::ShiftLeft<16>(level(2)), hn::ShiftLeft<24>(level(3))));
}
HWY_INLINE Ints Packed(const std::int32_t* sums, std::int16_t)
{
    const Ints_Tag d;
    const auto level = [&](std::size_t i) HWY_ATTR {
        const Ints v = hn::Load(d, sums + i * hn::Lanes(d));
        return hn::Min(hn::Max(v, hn::Set(d, -32768)), hn::Set(d, 32767));
    };
    return hn::Or(hn::And(level(0), hn::Set(d, 0xFFFF)), hn::ShiftLeft<16>(level(1)));
}

struct Out_Rows {
    void* const* rows;
    std::size_t row_count;
    std::size_t offset; // bytes
};

/// Turns 16 bytes of each row back, and writes `count` samples of them.
template <class Sample>
HWY_INLINE void Write_Samples(const std::int32_t* sums, const Out_Rows& out, std::size_t count)
{
    const Ints_Tag d;
    const std::size_t lanes = hn::Lanes(d);
    constexpr std::size_t per_lane = 4 / sizeof(Sample), per_block = 16 / sizeof(Sample);
    HWY_ALIGN std::uint8_t turned[4][HWY_MAX_BYTES];
    for (std::size_t j = 0; j < count; j += per_block, sums += per_block * lanes) {
        Ints v0 = Packed(sums, Sample()), v1 = Packed(sums + per_lane * lanes, Sample());
        Ints v2 = Packed(sums + 2 * per_lane * lanes, Sample()), v3 = Packed(sums + 3 * per_lane * lanes, Sample());
        Transpose_4x4(v0, v1, v2, v3);
        hn::Store(v0, d, reinterpret_cast<std::int32_t*>(turned[0]));
        hn::Store(v1, d, reinterpret_cast<std::int32_t*>(turned[1]));
        hn::Store(v2, d, reinterpret_cast<std::int32_t*>(turned[2]));
        hn::Store(v3, d, reinterpret_cast<std::int32_t*>(turned[3]));
        const std::size_t bytes = std::min(per_block, count - j) * sizeof(Sample);
        for (std::size_t row = 0; row < out.row_count; ++row) {
            std::uint8_t* to = static_cast<std::uint8_t*>(out.rows[row]) + out.offset + j * sizeof(Sample);
            const std::uint8_t* from = turned[row & 3] + 16 * (row >> 2);
            if (bytes == 16)
                std::memcpy(to, from, 16);
            else
                std::memcpy(to, from, bytes);
        }
    }
}

HWY_INLINE void Write_Window(const Row_Job& job, const Window& window, const std::int32_t* sums, Out_Rows out,
                             std::size_t tile)
{
    const std::size_t x = std::size_t(window.first_output),
                      count = std::size_t(window.end_output - window.first_output);
    const std::size_t channels = std::size_t(job.channels);
    if (job.layout == Row_Layout::Bytes) {
        out.offset = x * channels;
        Write_Samples<std::uint8_t>(sums, out, count * channels);
    } else if (job.layout == Row_Layout::Words) {
        out.offset = x * channels * 2;
        Write_Samples<std::int16_t>(sums, out, count * channels);
    } else {
        for (std::size_t channel = 0; channel < channels; ++channel) {
            out.offset = (channel * job.out_plane + x) * 2;
            Write_Samples<std::int16_t>(sums + channel * tile * hn::Lanes(Ints_Tag()), out, count);
        }
    }
}

Window Window_Of(const Row_Job& job, int first_output, int end_output)
{
    const auto& starts = job.bank->starts;
    const auto [least, most] = std::minmax(starts[std::size_t(first_output)], starts[std::size_t(end_output - 1)]);
    return {first_output, end_output, std::size_t(least) / 2,
            std::size_t(most - least) / 2 + std::size_t(job.bank->pairs)};
}

/// Outputs done at once: as many as keep the window in the first cache, a multiple of 16.
int Tile_Outputs(const Weight_Bank& bank)
{
    const double pairs_per_output = 0.5 * bank.source_length / bank.Length();
    return std::clamp(int(96 / (pairs_per_output + 0.01)) & ~15, 16, 64);
}

void Filter_Rows_Of_Strip(const Row_Job& job)
{
    const std::size_t lanes = hn::Lanes(Ints_Tag());
    const int tile = Tile_Outputs(*job.bank);
    const bool planes = job.layout == Row_Layout::Word_Planes;
    const std::size_t x_step = planes ? 1 : std::size_t(job.channels), channel_step = planes ? std::size_t(tile) : 1;
    std::int32_t* sums = Scratch<struct Row_Sums, std::int32_t>(64 * 3 * most_lanes);
    for (std::size_t first_row = 0; first_row < std::size_t(job.row_count); first_row += lanes) {
        const std::int16_t* rows[most_lanes];
        for (std::size_t i = 0; i < lanes; ++i)
            rows[i] = job.in_rows[std::min(first_row + i, std::size_t(job.row_count) - 1)];
        const Out_Rows out{job.out_rows + first_row, std::min(lanes, std::size_t(job.row_count) - first_row), 0};
        for (int x = 0; x < job.bank->Length(); x += tile) {
            const Window window = Window_Of(job, x, std::min(x + tile, job.bank->Length()));
            std::int32_t* turned = Scratch<struct Row_Window, std::int32_t>((window.pair_count + 4) * 3 * lanes);
            Turn_Window(job, rows, window, turned);
            if (job.channels == 3)
                Sum_Window<3>(job, window, turned, sums, x_step, channel_step);
            else
                Sum_Window<1>(job, window, turned, sums, x_step, channel_step);
            Write_Window(job, window, sums, out, std::size_t(tile));
        }
    }
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
HWY_EXPORT(Byte_Columns);
HWY_EXPORT(Word_Columns_To_Words);
HWY_EXPORT(Word_Columns_To_Bytes);
HWY_EXPORT(Filter_Rows_Of_Strip);
HWY_EXPORT(Split_Words);
HWY_EXPORT(Split_Bytes);
} // namespace bkimgutl

using namespace bkimgutl;

void Filter_Byte_Columns(const Byte_Column_Job& job)
{
    HWY_DYNAMIC_DISPATCH(Byte_Columns)(job);
}

void Filter_Word_Columns(const Word_Column_Job& job, std::int16_t* out)
{
    HWY_DYNAMIC_DISPATCH(Word_Columns_To_Words)(job, out);
}

void Filter_Word_Columns(const Word_Column_Job& job, std::uint8_t* out)
{
    HWY_DYNAMIC_DISPATCH(Word_Columns_To_Bytes)(job, out);
}

void Filter_Rows(const Row_Job& job)
{
    HWY_DYNAMIC_DISPATCH(Filter_Rows_Of_Strip)(job);
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
