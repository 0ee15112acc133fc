// A table of 256 bytes that a whole vector of bytes looks up at once.

#if defined(BKIMGUTL_TONE_BYTE_TABLE_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef BKIMGUTL_TONE_BYTE_TABLE_INL_H_
#undef BKIMGUTL_TONE_BYTE_TABLE_INL_H_
#else
#define BKIMGUTL_TONE_BYTE_TABLE_INL_H_
#endif

#include "bkimgutl/core/Vector_Blocks-inl.h"

HWY_BEFORE_NAMESPACE();
namespace bkimgutl::HWY_NAMESPACE {

#if HWY_TARGET == HWY_AVX3_DL

/// Four registers hold the table; two permutations look up the halves and the index's top bit chooses.
class Byte_Table {
public:
    explicit Byte_Table(const std::uint8_t* table)
        : part0_(_mm512_loadu_si512(table)),
          part1_(_mm512_loadu_si512(table + 64)),
          part2_(_mm512_loadu_si512(table + 128)),
          part3_(_mm512_loadu_si512(table + 192))
    {}
    HWY_INLINE Bytes operator()(Bytes index) const
    {
        const __m512i low = _mm512_permutex2var_epi8(part0_, index.raw, part1_);
        const __m512i high = _mm512_permutex2var_epi8(part2_, index.raw, part3_);
        return Bytes{_mm512_mask_blend_epi8(_mm512_movepi8_mask(index.raw), low, high)};
    }

private:
    __m512i part0_, part1_, part2_, part3_;
};

#elif HWY_TARGET == HWY_AVX3 || HWY_TARGET == HWY_AVX2 || HWY_TARGET == HWY_SSE4 || HWY_TARGET == HWY_SSSE3

/// Sixteen rows of sixteen entries, each but the first of a half exclusive-or the row before. The lookup takes the low four
/// bits of an index, or gives 0 where its top bit is set; so with 16 less from row to row every row up to the index's own
/// contributes, and together they are the entry. The upper half is looked up with the top bit turned.
class Byte_Table {
public:
    explicit Byte_Table(const std::uint8_t* table)
    {
        for (std::size_t i = 0; i < 256; ++i)
            steps_[i] = i % 128 < 16 ? table[i] : std::uint8_t(table[i] ^ table[i - 16]);
    }
    HWY_INLINE Bytes operator()(Bytes index) const
    {
        const Bytes_Tag d;
        return hn::Xor(Half(index, steps_), Half(hn::Xor(index, hn::Set(d, 0x80)), steps_ + 128));
    }

private:
    static HWY_INLINE Bytes Half(Bytes index, const std::uint8_t* steps)
    {
        const Bytes_Tag d;
        const hn::RebindToSigned<Bytes_Tag> di;
        auto place = hn::BitCast(di, index);
        Bytes found = hn::TableLookupBytesOr0(hn::LoadDup128(d, steps), index);
        for (int row = 1; row < 8; ++row) {
            place = hn::SaturatedSub(place, hn::Set(di, 16)); // indices without the top bit set it for good
            found = hn::Xor(found, hn::TableLookupBytesOr0(hn::LoadDup128(d, steps + row * 16), hn::BitCast(d, place)));
        }
        return found;
    }
    HWY_ALIGN std::uint8_t steps_[256];
};

#else

/// Sixteen rows of sixteen entries; an index outside a row gets its top bit set by the saturating sum, and gives 0 there.
class Byte_Table {
public:
    explicit Byte_Table(const std::uint8_t* table) : table_(table) {}
    HWY_INLINE Bytes operator()(Bytes index) const
    {
        const Bytes_Tag d;
        const Bytes bias = hn::Set(d, 0x70);
        Bytes found = hn::Zero(d);
        for (int row = 0; row < 16; ++row) {
            const Bytes place = hn::SaturatedAdd(hn::Xor(index, hn::Set(d, std::uint8_t(row * 16))), bias);
            found = hn::Or(found, hn::TableLookupBytesOr0(hn::LoadDup128(d, table_ + row * 16), place));
        }
        return found;
    }

private:
    const std::uint8_t* table_;
};

#endif

} // namespace bkimgutl::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
