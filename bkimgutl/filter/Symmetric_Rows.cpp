#include "bkimgutl/filter/Symmetric_Rows.h"

#include "bkimgutl/filter/Scratch.h"

#include <algorithm>
#include <cmath>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "bkimgutl/filter/Symmetric_Rows.cpp"
#include <hwy/foreach_target.h>

#include "bkimgutl/core/Vector_Blocks-inl.h"
#include <hwy/cache_control.h>

HWY_BEFORE_NAMESPACE();
namespace bkimgutl::HWY_NAMESPACE {

using Shorts_Tag = hn::ScalableTag<std::int16_t>;
using Shorts = hn::Vec<Shorts_Tag>;

/// Each weight in all lanes of a register.
struct Wide_Weights {
    int reach;
    HWY_ALIGN std::int16_t weights[1 + Symmetric_Weights::most_reach][HWY_MAX_BYTES / 2];

    explicit Wide_Weights(const Symmetric_Weights& narrow) : reach(narrow.reach)
    {
        for (int k = 0; k <= reach; ++k)
            for (std::int16_t& weight : weights[k]) weight = narrow.weights[k];
    }
};

/// Two registers of outputs. `step` is the distance of neighbours; a sum of two samples fills 16 bits.
HWY_INLINE void Sum_Neighbours(const std::int16_t* in, std::ptrdiff_t step, const Wide_Weights& wide, std::int16_t* out)
{
    const Shorts_Tag d;
    const std::size_t lanes = hn::Lanes(d);
    const Shorts centre = hn::Load(d, wide.weights[0]);
    Shorts sum0 = hn::MulFixedPoint15(hn::LoadU(d, in), centre);
    Shorts sum1 = hn::MulFixedPoint15(hn::LoadU(d, in + lanes), centre);
    const std::int16_t* before = in;
    const std::int16_t* after = in;
    for (int k = 1; k <= wide.reach; ++k) {
        before -= step;
        after += step;
        const Shorts weight = hn::Load(d, wide.weights[k]);
        const Shorts both0 = hn::Add(hn::LoadU(d, before), hn::LoadU(d, after));
        const Shorts both1 = hn::Add(hn::LoadU(d, before + lanes), hn::LoadU(d, after + lanes));
        sum0 = hn::Add(sum0, hn::MulFixedPoint15(both0, weight));
        sum1 = hn::Add(sum1, hn::MulFixedPoint15(both1, weight));
    }
    hn::StoreU(sum0, d, out);
    hn::StoreU(sum1, d, out + lanes);
}

// A tile of columns grows to 16 bits once, and stays in the first cache while all outputs that use it are summed.
constexpr std::size_t tile_vectors = 6;

HWY_INLINE void Grow_Tile(const Symmetric_Columns& job, int row_count, std::size_t column, std::int16_t* tile,
                          std::size_t width)
{
    const Shorts_Tag d;
    const hn::Rebind<std::uint8_t, Shorts_Tag> d8;
    const std::size_t lanes = hn::Lanes(d), inside = std::min(width, job.bytes - column);
    HWY_ALIGN std::uint8_t end[tile_vectors * HWY_MAX_BYTES / 2] = {};
    for (int row = 0; row < row_count; ++row) {
        const std::uint8_t* from = job.rows[row] + column;
        // The rows lie too far apart for the processor to see what comes next.
        for (std::size_t line = 0; line < width; line += 64) hwy::Prefetch(from + width + line);
        if (inside < width) {
            std::memcpy(end, from, inside);
            from = end;
        }
        for (std::size_t i = 0; i < width; i += lanes, tile += lanes)
            hn::Store(hn::ShiftLeft<Symmetric_Bits>(hn::PromoteTo(d, hn::LoadU(d8, from + i))), d, tile);
    }
}

void Symmetric_Tiles(const Symmetric_Columns& job, const Symmetric_Weights& weights)
{
    const Wide_Weights wide(weights);
    const std::size_t lanes = hn::Lanes(Shorts_Tag()), width = tile_vectors * lanes;
    const int row_count = job.count + 2 * wide.reach;
    std::int16_t* tile = Scratch<struct Symmetric_Tile>(std::size_t(row_count) * width);
    for (std::size_t column = 0; column < job.bytes; column += width) {
        Grow_Tile(job, row_count, column, tile, width);
        for (int y = 0; y < job.count; ++y) {
            const std::int16_t* centre = tile + std::size_t(y + wide.reach) * width;
            std::int16_t* out = job.out + std::size_t(y) * job.out_stride + column;
            for (std::size_t x = 0; x < width; x += 2 * lanes)
                Sum_Neighbours(centre + x, std::ptrdiff_t(width), wide, out + x);
        }
    }
}

void Symmetric_Row(const std::int16_t* in, std::size_t count, int channels, const Symmetric_Weights& weights,
                   std::int16_t* out)
{
    const Wide_Weights wide(weights);
    const std::size_t step = 2 * hn::Lanes(Shorts_Tag());
    for (std::size_t x = 0; x < count; x += step) Sum_Neighbours(in + x, channels, wide, out + x);
}

} // namespace bkimgutl::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace bkimgutl {
HWY_EXPORT(Symmetric_Tiles);
HWY_EXPORT(Symmetric_Row);
} // namespace bkimgutl

using namespace bkimgutl;

Symmetric_Weights Symmetric_Weights::Gaussian(double deviation, int reach, int scale)
{
    double exact[most_reach + 1] = {1};
    double sum = 1;
    for (int k = 1; k <= reach; ++k) {
        exact[k] = std::exp(-0.5 * k * k / (deviation * deviation));
        sum += 2 * exact[k];
    }
    Symmetric_Weights result;
    result.reach = reach;
    int centre = 32768 * scale;
    for (int k = 1; k <= reach; ++k) {
        result.weights[k] = std::int16_t(std::lround(exact[k] / sum * scale * 32768));
        centre -= 2 * result.weights[k];
    }
    result.weights[0] = std::int16_t(centre);
    return result;
}

void Filter_Symmetric_Columns(const Symmetric_Columns& job, const Symmetric_Weights& weights)
{
    HWY_DYNAMIC_DISPATCH(Symmetric_Tiles)(job, weights);
}

void Filter_Symmetric_Row(const std::int16_t* in, std::size_t count, int channels, const Symmetric_Weights& weights,
                          std::int16_t* out)
{
    HWY_DYNAMIC_DISPATCH(Symmetric_Row)(in, count, channels, weights, out);
}
#endif
