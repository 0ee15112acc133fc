#include "bkimgutl/filter/Component_Filter.h"

#include "bkimgutl/contract/Types.h"
#include "bkimgutl/core/Color.h"
#include "bkimgutl/core/Row_Loop.h"
#include "bkimgutl/filter/Gaussian.h"
#include "bkimgutl/filter/Scratch.h"

#include <algorithm>
#include <atomic>
#include <bit>

namespace {

/// The channels, in memory order, that a plane's change goes to.
struct Targets {
    bool channel[3];
};

Targets Targets_Of(std::int32_t component)
{
    constexpr std::int32_t to_all = Component_Luminance | Component_Black;
    return {{(component & (to_all | Component_Blue | Component_Yellow)) != 0,
             (component & (to_all | Component_Green | Component_Magenta)) != 0,
             (component & (to_all | Component_Red | Component_Cyan)) != 0}};
}

int Plane_Level(const CMYK_Planes& planes, std::int32_t component)
{
    switch (component) {
    case Component_Cyan: return planes.cyan;
    case Component_Magenta: return planes.magenta;
    case Component_Yellow: return planes.yellow;
    default: return planes.black;
    }
}

/// False when a colour's split overflows.
bool Take_Plane_Row(const std::uint8_t* pixel, int width, std::int32_t component, const CMYK_Tables& tables,
                    std::uint8_t* out)
{
    bool fits = true;
    for (int x = 0; x < width; ++x, pixel += 3) {
        if (component == Component_Luminance) {
            out[x] = std::uint8_t(RGB_To_Luminance(pixel[2], pixel[1], pixel[0]));
        } else if (component <= Component_Blue) {
            out[x] = pixel[component == Component_Blue ? 0 : component == Component_Green ? 1 : 2];
        } else {
            CMYK_Planes planes{};
            fits = RGB_To_CMYK_Planes(pixel[2], pixel[1], pixel[0], tables, planes) && fits;
            out[x] = std::uint8_t(Plane_Level(planes, component));
        }
    }
    return fits;
}

Result<Bitmap> Plane_Of(const Bitmap_View& source, std::int32_t component)
{
    auto plane = Bitmap::Create(source.width, source.height, 1);
    if (!plane) return plane;
    const Mutable_Bitmap_View target = plane->Change();
    const CMYK_Tables& tables = Current_CMYK_Tables();
    std::atomic<bool> fits = true;
    For_Rows(source.height, source.Row_Bytes() * 4, [&](int first, int end) {
        for (int y = first; y < end; ++y)
            if (!Take_Plane_Row(source.Row(y), source.width, component, tables, target.Row(y))) fits = false;
    });
    if (!fits) return Failure("the CMYK split of a colour leaves 0 to 255");
    return plane;
}

/// Half to even: adding 1.5 x 2^23 leaves no room for a fraction.
std::uint8_t Rounded_Level(float level)
{
    constexpr float no_fraction = 12582912;
    return std::uint8_t(std::min(std::max(level, 0.0F), 255.0F) + no_fraction - no_fraction);
}

void Apply_Changes(const std::uint8_t* in, const float* change, Targets targets, std::size_t width, std::uint8_t* out)
{
    for (std::size_t x = 0; x < width; ++x, in += 3, out += 3)
        for (int c = 0; c < 3; ++c) out[c] = targets.channel[c] ? Rounded_Level(float(in[c]) + change[x]) : in[c];
}

void Add_Changes(const float* change, Targets targets, std::size_t width, float* sums)
{
    for (std::size_t x = 0; x < width; ++x, sums += 3)
        for (int c = 0; c < 3; ++c)
            if (targets.channel[c]) sums[c] += change[x];
}

/// The sums of several components' changes, three for each pixel.
class Change_Sums {
public:
    static Result<Change_Sums> Create(const Bitmap_View& source)
    {
        Change_Sums sums;
        sums.row_ = std::size_t(source.width) * 3;
        auto memory = Pixel_Memory::Allocate(sums.row_ * std::size_t(source.height) * sizeof(float));
        if (!memory) return tl::make_unexpected(memory.error());
        sums.memory_ = std::move(*memory);
        std::fill_n(sums.Row(0), sums.row_ * std::size_t(source.height), 0.0F);
        return sums;
    }
    float* Row(int y) { return reinterpret_cast<float*>(memory_.Bytes()) + std::size_t(y) * row_; }

private:
    Pixel_Memory memory_;
    std::size_t row_ = 0;
};

void Restore_Channels(const std::uint8_t* in, Targets targets, std::size_t count, std::uint8_t* out)
{
    for (std::size_t c = 0; c < 3; ++c)
        if (!targets.channel[c])
            for (std::size_t x = c; x < count; x += 3) out[x] = in[x];
}

/// A blur comes tile by tile, down all rows of a strip, so the processor does not foresee which part of a row is next: the
/// same part of the next tile, when the strip is done. What is fetched beyond it does no harm.
void Fetch_Next_Tile(const Blurred_Part& part, std::size_t row_bytes, const std::uint8_t* in)
{
    if (part.first + part.count >= row_bytes) return;
    for (std::size_t i = 0; i < part.count; i += 64) __builtin_prefetch(in + part.count + i, 0, 2);
}

Result<void> Filter_Channels(const Bitmap_View& source, float radius, Targets targets, const Component_Filter& filter,
                             const Mutable_Bitmap_View& target)
{
    return Blur_Parts(source, radius, [&](const Blurred_Part& part) {
        const std::uint8_t* in = source.Row(part.y) + part.first;
        std::uint8_t* out = target.Row(part.y) + part.first;
        Fetch_Next_Tile(part, source.Row_Bytes(), in);
        filter.samples(in, part.samples, part.count, out);
        if (!source.Is_Grey()) Restore_Channels(in, targets, part.count, out);
    });
}

/// Calls take(part, its changes) for one component.
template <class Take>
Result<void> For_Changes(const Bitmap_View& source, float radius, std::int32_t component,
                         const Component_Filter& filter, Take&& take)
{
    const auto plane = Plane_Of(source, component);
    if (!plane) return tl::make_unexpected(plane.error());
    const Bitmap_View view = plane->View();
    return Blur_Parts(view, radius, [&](const Blurred_Part& part) {
        float* changes = Scratch<struct Plane_Changes, float>(std::size_t(source.width));
        filter.changes(view.Row(part.y) + part.first, part.samples, part.count, changes);
        take(part, changes);
    });
}

Result<void> Filter_Plane(const Bitmap_View& source, float radius, std::int32_t component,
                          const Component_Filter& filter, const Mutable_Bitmap_View& target)
{
    return For_Changes(source, radius, component, filter, [&](const Blurred_Part& part, const float* changes) {
        Apply_Changes(source.Row(part.y) + 3 * part.first, changes, Targets_Of(component), part.count,
                      target.Row(part.y) + 3 * part.first);
    });
}

Result<void> Filter_Several(const Bitmap_View& source, float radius, std::int32_t components,
                            const Component_Filter& filter, const Mutable_Bitmap_View& target)
{
    auto sums = Change_Sums::Create(source);
    if (!sums) return tl::make_unexpected(sums.error());
    for (std::int32_t component = 1; component <= Component_Black; component *= 2) {
        if (!(components & component)) continue;
        const auto done =
            For_Changes(source, radius, component, filter, [&](const Blurred_Part& part, const float* changes) {
                Add_Changes(changes, Targets_Of(component), part.count, sums->Row(part.y) + 3 * part.first);
            });
        if (!done) return done;
    }
    For_Rows(source.height, source.Row_Bytes() * 6, [&](int first, int end) {
        for (int y = first; y < end; ++y)
            for (std::size_t i = 0; i < source.Row_Bytes(); ++i)
                target.Row(y)[i] = Rounded_Level(float(source.Row(y)[i]) + sums->Row(y)[i]);
    });
    return {};
}

} // namespace

Result<Bitmap> Component_Filtered(const Bitmap_View& source, float radius, std::int32_t components,
                                  const Component_Filter& filter)
{
    if (components < 1 || components > (Component_RGB | Component_Luminance | Component_CMYK))
        return Failure("component mask " + std::to_string(components) + " is outside 1 to 255");
    auto result = Bitmap::Create(source.width, source.height, source.bytes_per_pixel);
    if (!result) return result;
    const Mutable_Bitmap_View target = result->Change();
    Result<void> done;
    if (source.Is_Grey() || components <= Component_RGB)
        done = Filter_Channels(source, radius, Targets_Of(components), filter, target);
    else if (std::has_single_bit(std::uint32_t(components)))
        done = Filter_Plane(source, radius, components, filter, target);
    else
        done = Filter_Several(source, radius, components, filter, target);
    if (!done) return tl::make_unexpected(done.error());
    return result;
}
