// What the separable filters share: 16-bit samples in registers, their products with weights, and their way back to bytes.
// Included once for every processor target.

#if defined(BKIMGUTL_FILTER_SAMPLE_VECTORS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef BKIMGUTL_FILTER_SAMPLE_VECTORS_INL_H_
#undef BKIMGUTL_FILTER_SAMPLE_VECTORS_INL_H_
#else
#define BKIMGUTL_FILTER_SAMPLE_VECTORS_INL_H_
#endif

#include "bkimgutl/core/Vector_Blocks-inl.h"

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

} // namespace bkimgutl::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
