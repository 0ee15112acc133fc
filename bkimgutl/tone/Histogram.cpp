#include "bkimgutl/tone/Histogram.h"

#include "bkimgutl/contract/Types.h"
#include "bkimgutl/core/Color.h"
#include "bkimgutl/core/Row_Loop.h"
#include "bkimgutl/tone/Component_Row.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

// Increments of counters in memory are what takes the time, one a cycle at best, so large pictures count pairs of
// neighbours: half as many increments. Neighbours are alike, so that of the counters of all pairs few are in use, and those
// stay in the first cache. Two increments of one counter in a row wait for each other: single values take turns in several
// tables, which are summed at the end, and a stretch of one pair, as in a flat sky, is counted at once. Each task has its own.

namespace {

constexpr std::size_t tables = 8, levels = 256, pairs = levels * levels;
constexpr std::size_t least_pixels_for_pairs = std::size_t(1) << 20; // fewer do not pay for clearing and adding up
constexpr std::size_t pixels_per_task = std::size_t(1) << 15;        // without pairs

constexpr std::size_t stretch = 16; // values that are looked at together, eight pairs

// Which of the two is the upper byte makes no difference to the sums.
std::size_t Pair_At(const std::uint8_t* bytes)
{
    std::uint16_t pair = 0;
    std::memcpy(&pair, bytes, 2);
    return pair;
}

bool Is_One_Pair(const std::uint8_t* bytes)
{
    std::uint64_t first = 0, second = 0;
    std::memcpy(&first, bytes, 8);
    std::memcpy(&second, bytes + 8, 8);
    return first == second && first == std::rotl(first, 16);
}

class Counter {
public:
    explicit Counter(bool takes_pairs) : pair_counts_(takes_pairs ? pairs : 0) {}

    /// `ahead` is where the pixels begin that will be asked for next, as many; null where there are none.
    void Count(const std::uint8_t* bytes, std::size_t count, const std::uint8_t* ahead)
    {
        counted_ += count;
        std::size_t i = pair_counts_.empty() ? Count_Eights(bytes, count) : Count_Pairs(bytes, count, ahead);
        for (; i < count; ++i) ++counts_[0][bytes[i]];
    }

    void Count_Where(const std::uint8_t* bytes, const std::uint8_t* mask, std::size_t count)
    {
        counted_ += count;
        for (std::size_t i = 0; i < count; ++i) counts_[i % tables][bytes[i]] += mask[i] != 0;
    }

    // Well before 32 bits can overflow.
    bool Is_Full() const { return counted_ >= std::size_t(1) << 30; }

    void Move_To(Histogram_Counts& sums)
    {
        for (auto& table : counts_)
            for (std::size_t i = 0; i < levels; ++i) sums[i] += std::exchange(table[i], 0U);
        for (std::size_t row = 0; row < pair_counts_.size(); row += levels)
            Add_Pairs(pair_counts_.data() + row, row / levels, sums);
        std::fill(pair_counts_.begin(), pair_counts_.end(), 0U);
        counted_ = 0;
    }

private:
    std::size_t Count_Eights(const std::uint8_t* bytes, std::size_t count)
    {
        std::size_t i = 0;
        for (; i + 8 <= count; i += 8)
            for (std::size_t k = 0; k < 8; ++k) ++counts_[k][bytes[i + k]];
        return i;
    }

    // Counting leaves memory idle, so the next row is fetched meanwhile.
    std::size_t Count_Pairs(const std::uint8_t* bytes, std::size_t count, const std::uint8_t* ahead)
    {
        std::uint32_t* counts = pair_counts_.data();
        std::size_t i = 0;
        for (; i + stretch <= count; i += stretch) {
            if (ahead != nullptr) __builtin_prefetch(ahead + 3 * i, 0, 2);
            if (Is_One_Pair(bytes + i))
                counts[Pair_At(bytes + i)] += stretch / 2;
            else
                for (std::size_t k = 0; k < stretch; k += 2) ++counts[Pair_At(bytes + i + k)];
        }
        return i;
    }

    // The counters of all pairs with the same upper byte.
    static void Add_Pairs(const std::uint32_t* counts, std::size_t upper, Histogram_Counts& sums)
    {
        std::uint64_t all = 0;
        for (std::size_t lower = 0; lower < levels; ++lower) {
            sums[lower] += counts[lower];
            all += counts[lower];
        }
        sums[upper] += all;
    }

    // 16 more than needed, against tables whose counters lie a multiple of 4096 bytes apart; the gain measured was small.
    std::array<std::array<std::uint32_t, levels + 16>, tables> counts_{};
    std::vector<std::uint32_t> pair_counts_;
    std::size_t counted_ = 0;
};

// Rows of values of one component, and which of them count.
class Component_Rows {
public:
    Component_Rows(const Bitmap_View& picture, const std::uint8_t* mask, int component)
        : picture_(picture),
          mask_(mask),
          component_(component),
          values_(std::size_t(picture.width)),
          counted_(std::size_t(picture.width)),
          channels_(3 * std::size_t(picture.width))
    {}

    /// `next` is the row that will be counted after this one, or y itself.
    void Count_Row(int y, int next, Counter& counter)
    {
        ahead_ = next != y && !picture_.Is_Grey() ? picture_.Row(next) : nullptr;
        const auto width = std::size_t(picture_.width);
        const std::uint8_t* row = picture_.Row(y);
        const std::uint8_t* mask = mask_ == nullptr ? nullptr : mask_ + std::size_t(y) * width;
        if (component_ >= Component_Cyan) return Count_Ink(row, mask, counter);
        if (picture_.Is_Grey()) return Count_Bytes(row, mask, counter);
        if (component_ == Component_Luminance) {
            Luminance_Row(row, picture_.width, values_.data());
            return Count_Bytes(values_.data(), mask, counter);
        }
        Split_Row(row, picture_.width, channels_.data());
        for (std::size_t channel = 0; channel < 3; ++channel)
            if ((component_ & Component_Blue >> channel) != 0)
                Count_Bytes(channels_.data() + channel * width, mask, counter);
    }

private:
    void Count_Bytes(const std::uint8_t* values, const std::uint8_t* mask, Counter& counter)
    {
        if (mask == nullptr)
            counter.Count(values, values_.size(), std::exchange(ahead_, nullptr)); // once is enough
        else
            counter.Count_Where(values, mask, values_.size());
    }

    void Count_Ink(const std::uint8_t* row, const std::uint8_t* mask, Counter& counter)
    {
        const bool grey = picture_.Is_Grey();
        for (std::size_t x = 0; x < values_.size(); ++x, row += picture_.bytes_per_pixel) {
            CMYK_Planes planes{};
            const bool has_value = RGB_To_CMYK_Planes(row[grey ? 0 : 2], row[grey ? 0 : 1], row[0], tables_, planes);
            counted_[x] = has_value && (mask == nullptr || mask[x] != 0);
            values_[x] = std::uint8_t(Plane(planes));
        }
        counter.Count_Where(values_.data(), counted_.data(), values_.size());
    }

    int Plane(const CMYK_Planes& planes) const
    {
        switch (component_) {
        case Component_Cyan: return planes.cyan;
        case Component_Magenta: return planes.magenta;
        case Component_Yellow: return planes.yellow;
        default: return planes.black;
        }
    }

    const Bitmap_View picture_;
    const std::uint8_t* const mask_;
    const int component_;
    const CMYK_Tables& tables_ = Current_CMYK_Tables();
    std::vector<std::uint8_t> values_;
    std::vector<std::uint8_t> counted_;
    std::vector<std::uint8_t> channels_; // blue, then green, then red
    const std::uint8_t* ahead_ = nullptr;
};

bool Is_One_Component(int component_mask)
{
    return component_mask == Component_RGB || (component_mask >= Component_Red && component_mask <= Component_Black &&
                                               std::has_single_bit(unsigned(component_mask)));
}

} // namespace

Result<Histogram_Counts> Component_Histogram(const Bitmap_View& picture, const std::uint8_t* mask, int component_mask)
{
    if (!Is_One_Component(component_mask))
        return Failure("a histogram has no component " + std::to_string(component_mask));
    Histogram_Counts sums{};
    std::mutex mutex;
    const std::size_t width = std::size_t(picture.width), pixels = width * std::size_t(picture.height);
    const bool takes_pairs = mask == nullptr && pixels >= least_pixels_for_pairs;
    const int band = int((takes_pairs ? least_pixels_for_pairs : pixels_per_task) / width) + 1;
    For_Rows((picture.height + band - 1) / band, 4 * picture.Row_Bytes() * std::size_t(band), [&](int first, int end) {
        Component_Rows rows(picture, mask, component_mask);
        const auto counter = std::make_unique<Counter>(takes_pairs);
        Histogram_Counts part{};
        const int last = std::min(end * band, picture.height) - 1;
        for (int y = first * band; y <= last; ++y) {
            rows.Count_Row(y, std::min(y + 1, last), *counter);
            if (counter->Is_Full()) counter->Move_To(part);
        }
        counter->Move_To(part);
        const std::lock_guard lock(mutex);
        for (std::size_t i = 0; i < 256; ++i) sums[i] += part[i];
    });
    return sums;
}
