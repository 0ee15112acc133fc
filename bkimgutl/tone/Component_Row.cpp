#include "bkimgutl/tone/Component_Row.h"

#include "bkimgutl/core/Color.h"

#ifndef HWY_WANT_AVX3_DL
#define HWY_WANT_AVX3_DL // pixels are split by byte permutes of whole registers
#endif
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "bkimgutl/tone/Component_Row.cpp"
#include <hwy/foreach_target.h>

#include "bkimgutl/core/Vector_Blocks-inl.h"

HWY_BEFORE_NAMESPACE();
namespace bkimgutl::HWY_NAMESPACE {

int Luminance_Blocks(const std::uint8_t* pixels, int width, std::uint8_t* luminance)
{
    const Bytes_Tag d;
    const int lanes = int(hn::Lanes(d));
    int x = 0;
    for (; x + lanes <= width; x += lanes) {
        Bytes blue, green, red;
        hn::LoadInterleaved3(d, pixels + 3 * std::ptrdiff_t(x), blue, green, red);
        const Words even = Luminance_Words(Even_Words(red), Even_Words(green), Even_Words(blue));
        const Words odd = Luminance_Words(Odd_Words(red), Odd_Words(green), Odd_Words(blue));
        hn::StoreU(Joined_Words(even, odd), d, luminance + x);
    }
    return x;
}

int Split_Blocks(const std::uint8_t* pixels, int width, std::uint8_t* channels)
{
    const Bytes_Tag d;
    const int lanes = int(hn::Lanes(d));
    int x = 0;
    for (; x + lanes <= width; x += lanes) {
        Bytes blue, green, red;
        hn::LoadInterleaved3(d, pixels + 3 * std::ptrdiff_t(x), blue, green, red);
        hn::StoreU(blue, d, channels + x);
        hn::StoreU(green, d, channels + width + x);
        hn::StoreU(red, d, channels + 2 * std::ptrdiff_t(width) + x);
    }
    return x;
}

} // namespace bkimgutl::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace bkimgutl {
HWY_EXPORT(Luminance_Blocks);
HWY_EXPORT(Split_Blocks);
} // namespace bkimgutl

void Luminance_Row(const std::uint8_t* pixels, int width, std::uint8_t* luminance)
{
    using namespace bkimgutl;
    for (int x = HWY_DYNAMIC_DISPATCH(Luminance_Blocks)(pixels, width, luminance); x < width; ++x) {
        const std::uint8_t* pixel = pixels + 3 * std::ptrdiff_t(x);
        luminance[x] = std::uint8_t(RGB_To_Luminance(pixel[2], pixel[1], pixel[0]));
    }
}

void Split_Row(const std::uint8_t* pixels, int width, std::uint8_t* channels)
{
    using namespace bkimgutl;
    for (int x = HWY_DYNAMIC_DISPATCH(Split_Blocks)(pixels, width, channels); x < width; ++x)
        for (int c = 0; c < 3; ++c) channels[std::ptrdiff_t(c) * width + x] = pixels[3 * std::ptrdiff_t(x) + c];
}

#endif
