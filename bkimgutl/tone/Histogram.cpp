#include "bkimgutl/tone/Histogram.h"

#include "bkimgutl/contract/Types.h"
#include "bkimgutl/core/Color.h"
#include "bkimgutl/core/Row_Loop.h"
#include "bkimgutl/tone/Component_Row.h"

#include <bit>
#include <cstring>
#include <memory>
#include <mutex>
#include <vector>

// Neighbouring pixels are often equal, and two increments of one counter in a row wait for each other; so neighbours are
// counted in different tables, which are summed at the end. Each thread has its own.

namespace {

constexpr std::size_t tables = 8;

class Counter {
public:
    void Count(const std::uint8_t* bytes, std::size_t count)
    {
        std::size_t i = 0;
        for (; i + 8 <= count; i += 8) {
            std::uint64_t eight = 0;
            std::memcpy(&eight, bytes + i, 8);
            Count_Eight(eight);
        }
        for (; i < count; ++i) ++counts_[0][bytes[i]];
    }

    // Every third byte.
    void Count_Channel(const std::uint8_t* bytes, std::size_t count)
    {
        std::size_t i = 0;
        for (; i + 8 <= count; i += 8, bytes += 24)
            for (std::size_t k = 0; k < 8; ++k) ++counts_[k][bytes[3 * k]];
        for (; i < count; ++i, bytes += 3) ++counts_[0][*bytes];
    }

    void Count_Where(const std::uint8_t* bytes, const std::uint8_t* mask, std::size_t count)
    {
        for (std::size_t i = 0; i < count; ++i) counts_[i % tables][bytes[i]] += mask[i] != 0;
    }

    // Before 32 bits can overflow.
    void Move_To(Histogram_Counts& sums)
    {
        for (auto& table : counts_)
            for (std::size_t i = 0; i < 256; ++i) sums[i] += std::exchange(table[i], 0U);
    }

private:
    void Count_Eight(std::uint64_t eight)
    {
        for (std::size_t k = 0; k < 8; ++k, eight >>= 8) ++counts_[k][eight & 255];
    }

    // 16 more than needed, against tables whose counters lie a multiple of 4096 bytes apart; the gain measured was small.
    std::array<std::array<std::uint32_t, 256 + 16>, tables> counts_{};
};

// Rows of values of one component, and which of them count.
class Component_Rows {
public:
    Component_Rows(const Bitmap_View& picture, const std::uint8_t* mask, int component)
        : picture_(picture),
          mask_(mask),
          component_(component),
          values_(std::size_t(picture.width)),
          counted_(std::size_t(picture.width))
    {}

    void Count_Row(int y, Counter& counter)
    {
        const auto width = std::size_t(picture_.width);
        const std::uint8_t* row = picture_.Row(y);
        const std::uint8_t* mask = mask_ == nullptr ? nullptr : mask_ + std::size_t(y) * width;
        if (component_ >= Component_Cyan) return Count_Ink(row, mask, counter);
        if (picture_.Is_Grey()) return Count_Bytes(row, mask, counter);
        if (component_ == Component_RGB && mask == nullptr) return counter.Count(row, 3 * width);
        if (component_ == Component_Luminance) {
            Luminance_Row(row, picture_.width, values_.data());
            return Count_Bytes(values_.data(), mask, counter);
        }
        for (int channel = 0; channel < 3; ++channel)
            if ((component_ & Component_Blue >> channel) != 0) Count_Channel(row + channel, mask, counter);
    }

private:
    void Count_Bytes(const std::uint8_t* values, const std::uint8_t* mask, Counter& counter)
    {
        if (mask == nullptr)
            counter.Count(values, values_.size());
        else
            counter.Count_Where(values, mask, values_.size());
    }

    void Count_Channel(const std::uint8_t* first, const std::uint8_t* mask, Counter& counter)
    {
        if (mask == nullptr) return counter.Count_Channel(first, values_.size());
        for (std::size_t x = 0; x < values_.size(); ++x) values_[x] = first[3 * x];
        counter.Count_Where(values_.data(), mask, values_.size());
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
    (void)Current_CMYK_Tables(); // built here, not by the first thread to ask
    Histogram_Counts sums{};
    std::mutex mutex;
    For_Rows(picture.height, 4 * picture.Row_Bytes(), [&](int first, int end) {
        Component_Rows rows(picture, mask, component_mask);
        const auto counter = std::make_unique<Counter>();
        Histogram_Counts part{};
        for (int y = first; y < end; ++y) {
            rows.Count_Row(y, *counter);
            if ((y & 255) == 255) counter->Move_To(part);
        }
        counter->Move_To(part);
        const std::lock_guard lock(mutex);
        for (std::size_t i = 0; i < 256; ++i) sums[i] += part[i];
    });
    return sums;
}
