#include "bkimgutl/tone/Component_Row.h"

#include "bkimgutl/core/Color.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "bkimgutl/tone/Component_Row.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace bkimgutl {
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

#if HWY_TARGET == HWY_SCALAR
int Luminance_Blocks(const std::uint8_t*, int, std::uint8_t*)
{
    return 0;
}
#else
// A quarter of a register of bytes at a time, grown to 32 bits, where the sum is exact.
template <class Bytes, class D8>
HWY_INLINE auto Quarter_Luminance(D8 d8, Bytes blue, Bytes green, Bytes red)
{
    const hn::Rebind<std::uint32_t, D8> d32;
    auto sum = hn::Add(hn::Mul(hn::PromoteTo(d32, red), hn::Set(d32, 19660)), hn::Set(d32, 32768));
    sum = hn::Add(sum, hn::Mul(hn::PromoteTo(d32, green), hn::Set(d32, 38666)));
    sum = hn::Add(sum, hn::Mul(hn::PromoteTo(d32, blue), hn::Set(d32, 7209)));
    return hn::DemoteTo(d8, hn::BitCast(hn::RebindToSigned<decltype(d32)>(), hn::ShiftRight<16>(sum)));
}

int Luminance_Blocks(const std::uint8_t* pixels, int width, std::uint8_t* luminance)
{
    const hn::ScalableTag<std::uint8_t> whole;
    const hn::Rebind<std::uint8_t, hn::ScalableTag<std::uint32_t>> quarter;
    const int lanes = int(hn::Lanes(whole));
    const int step = int(hn::Lanes(quarter));
    HWY_ALIGN std::uint8_t planes[3][HWY_MAX_BYTES];
    int x = 0;
    for (; x + lanes <= width; x += lanes) {
        hn::Vec<decltype(whole)> blue, green, red;
        hn::LoadInterleaved3(whole, pixels + 3 * std::ptrdiff_t(x), blue, green, red);
        hn::Store(blue, whole, planes[0]);
        hn::Store(green, whole, planes[1]);
        hn::Store(red, whole, planes[2]);
        for (int i = 0; i < lanes; i += step)
            hn::StoreU(Quarter_Luminance(quarter, hn::LoadU(quarter, planes[0] + i), hn::LoadU(quarter, planes[1] + i),
                                         hn::LoadU(quarter, planes[2] + i)),
                       quarter, luminance + x + i);
    }
    return x;
}
#endif

} // namespace HWY_NAMESPACE
} // namespace bkimgutl
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace bkimgutl {
HWY_EXPORT(Luminance_Blocks);
} // namespace bkimgutl

void Luminance_Row(const std::uint8_t* pixels, int width, std::uint8_t* luminance)
{
    using namespace bkimgutl;
    for (int x = HWY_DYNAMIC_DISPATCH(Luminance_Blocks)(pixels, width, luminance); x < width; ++x) {
        const std::uint8_t* pixel = pixels + 3 * std::ptrdiff_t(x);
        luminance[x] = std::uint8_t(RGB_To_Luminance(pixel[2], pixel[1], pixel[0]));
    }
}

#endif
