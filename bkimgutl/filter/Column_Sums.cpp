#include "bkimgutl/filter/Column_Sums.h"

#include "bkimgutl/filter/Scratch.h"

#include <algorithm>

#ifndef HWY_WANT_AVX3_DL
#define HWY_WANT_AVX3_DL // for the sum of products in one instruction
#endif
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "bkimgutl/filter/Column_Sums.cpp"
#include <hwy/foreach_target.h>

#include "bkimgutl/filter/Sample_Vectors-inl.h"

HWY_BEFORE_NAMESPACE();
namespace bkimgutl::HWY_NAMESPACE {

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

// A tile of columns is brought into pairs of rows once, (a0 b0 a1 b1 ...) as 16-bit samples, and stays in the first cache
// while all outputs that use it are summed.

constexpr std::size_t tile_vectors = 4;

struct Pair_Tile {
    const std::int16_t* pairs;
    std::size_t pair_stride; // samples of one pair of rows
};

HWY_INLINE void Fill_Tile(const Column_Sum_Job& job, std::size_t column, std::int16_t* pairs, std::size_t tile)
{
    const Shorts_Tag d;
    const std::size_t lanes = hn::Lanes(d);
    const std::size_t inside = std::min(tile, job.bytes - column);
    HWY_ALIGN std::uint8_t ends[2][tile_vectors * HWY_MAX_BYTES / 2] = {};
    for (int row = 0; row < job.row_count; row += 2) {
        const std::uint8_t* a = job.rows[row] + column;
        const std::uint8_t* b = job.rows[row + 1] + column;
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

/// All of a tile at once: as many sums as hide how long a product takes.
HWY_INLINE void Sum_Tile(const Pair_Tile& tile, const std::int16_t* weights, int pairs, int shift, std::int16_t* out)
{
    const Shorts_Tag d;
    const std::size_t lanes = hn::Lanes(d);
    const Ints half = hn::Set(Ints_Tag(), (1 << shift) >> 1);
    Ints sum0 = half, sum1 = half, sum2 = half, sum3 = half, sum4 = half, sum5 = half, sum6 = half, sum7 = half;
    const std::int16_t* place = tile.pairs;
    for (int pair = 0; pair < pairs; ++pair, place += tile.pair_stride) {
        const Shorts weight = Weight_Pair(weights + 2 * pair);
        sum0 = Add_Products(sum0, hn::Load(d, place), weight);
        sum1 = Add_Products(sum1, hn::Load(d, place + lanes), weight);
        sum2 = Add_Products(sum2, hn::Load(d, place + 2 * lanes), weight);
        sum3 = Add_Products(sum3, hn::Load(d, place + 3 * lanes), weight);
        sum4 = Add_Products(sum4, hn::Load(d, place + 4 * lanes), weight);
        sum5 = Add_Products(sum5, hn::Load(d, place + 5 * lanes), weight);
        sum6 = Add_Products(sum6, hn::Load(d, place + 6 * lanes), weight);
        sum7 = Add_Products(sum7, hn::Load(d, place + 7 * lanes), weight);
    }
    Store_Samples(Shifted(sum0, sum1, shift), out);
    Store_Samples(Shifted(sum2, sum3, shift), out + lanes);
    Store_Samples(Shifted(sum4, sum5, shift), out + 2 * lanes);
    Store_Samples(Shifted(sum6, sum7, shift), out + 3 * lanes);
}

/// The rows lie too far apart, and a tile takes too little of each, for the processor to see what comes next. So while the
/// tiles of a run are summed the next run is fetched, some rows at each tile, into the second cache; beyond a row's end that
/// does no harm.
constexpr std::size_t run_bytes = 1024;

HWY_INLINE void Fetch_Ahead(const Column_Sum_Job& job, std::size_t column, std::size_t tile)
{
    const std::size_t run = column / run_bytes * run_bytes, tiles = run_bytes / tile, turn = (column - run) / tile;
    const std::size_t rows = std::size_t(job.row_count);
    for (std::size_t row = rows * turn / tiles; row < rows * (turn + 1) / tiles; ++row)
        for (std::size_t line = 0; line < run_bytes; line += 64)
            __builtin_prefetch(job.rows[row] + run + run_bytes + line, 0, 2);
}

void Column_Tiles(const Column_Sum_Job& job)
{
    const std::size_t tile = tile_vectors * hn::Lanes(Shorts_Tag());
    std::int16_t* pairs = Scratch<struct Column_Tile>(std::size_t(job.row_count) * tile);
    for (std::size_t column = 0; column < job.bytes; column += tile) {
        Fetch_Ahead(job, column, tile);
        Fill_Tile(job, column, pairs, tile);
        for (int y = job.first_output; y < job.end_output; ++y) {
            const std::size_t first = std::size_t(job.bank->Start(y) - job.first_row) / 2;
            Sum_Tile({pairs + first * 2 * tile, 2 * tile}, job.bank->Weights(y), job.bank->Window() / 2, job.shift,
                     job.out + std::size_t(y - job.first_output) * job.out_stride + column);
        }
    }
}

} // namespace bkimgutl::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace bkimgutl {
HWY_EXPORT(Column_Tiles);
} // namespace bkimgutl

using namespace bkimgutl;

void Sum_Columns(const Column_Sum_Job& job)
{
    HWY_DYNAMIC_DISPATCH(Column_Tiles)(job);
}
#endif
