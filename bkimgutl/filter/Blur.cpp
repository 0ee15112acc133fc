#include "bkimgutl/filter/Blur.h"

#include "bkimgutl/filter/Component_Filter.h"
#include "bkimgutl/filter/Difference_Row.h"

#include <string>

namespace {

constexpr float most_amount = 5;

bool Is_Amount(float amount)
{
    return amount >= 0 && amount <= most_amount; // false for what is no number
}

bool Is_Level(std::int32_t level)
{
    return level >= 0 && level <= 255;
}

} // namespace

Result<Bitmap> Blurred(const Bitmap_View& source, const Blur_Settings& settings)
{
    const int weight = settings.weight_percent;
    if (weight < 0 || weight > 100)
        return Failure("the blur weight " + std::to_string(weight) + " is outside 0 to 100 percent");
    const Component_Filter filter{
        [weight](const std::uint8_t* plane, const std::int16_t* blurred, std::size_t count, std::uint8_t* out) {
            Mix_Blur_Row(plane, blurred, count, weight, out);
        },
        [weight](const std::uint8_t* plane, const std::int16_t* blurred, std::size_t count, float* change) {
            for (std::size_t i = 0; i < count; ++i) change[i] = float(weight * (blurred[i] - plane[i] * 128)) / 12800;
        }};
    return Component_Filtered(source, settings.radius, settings.components, filter);
}

Result<Bitmap> Unsharp_Masked(const Bitmap_View& source, const Unsharp_Settings& settings)
{
    if (!Is_Amount(settings.lighten_amount) || !Is_Amount(settings.darken_amount))
        return Failure("an unsharp amount is outside 0 to 5");
    if (!Is_Level(settings.lighten_threshold) || !Is_Level(settings.darken_threshold))
        return Failure("an unsharp threshold is outside 0 to 255");
    const Sharpening sharpening{settings.lighten_amount, settings.darken_amount, float(settings.lighten_threshold),
                                float(settings.darken_threshold)};
    const Component_Filter filter{
        [sharpening](const std::uint8_t* plane, const std::int16_t* blurred, std::size_t count, std::uint8_t* out) {
            Sharpen_Row(plane, blurred, count, sharpening, out);
        },
        [sharpening](const std::uint8_t* plane, const std::int16_t* blurred, std::size_t count, float* change) {
            for (std::size_t i = 0; i < count; ++i) {
                const float d = float(plane[i] * 128 - blurred[i]) / 128;
                const float amount = d > sharpening.lighten_threshold   ? sharpening.lighten_amount
                                     : d < -sharpening.darken_threshold ? sharpening.darken_amount
                                                                        : 0.0F;
                change[i] = amount * d;
            }
        }};
    return Component_Filtered(source, settings.radius, settings.components, filter);
}
