#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

// A look into an EXIF block without taking it apart: entries are found, read and changed where they stand. All offsets
// are checked against the block in 64 bits; what does not fit is treated as not there.

/// One entry of a directory.
struct EXIF_Entry {
    std::uint16_t tag = 0;
    std::uint16_t type = 0;
    std::uint32_t count = 0;
    std::size_t value_at = 0; ///< where the value stands, from the start of the block
    std::size_t bytes = 0;    ///< of the whole value
};

class EXIF_View {
public:
    static constexpr std::array<unsigned char, 6> Head = {'E', 'x', 'i', 'f', 0, 0};

    /// Nothing unless the block starts with the head and a TIFF header with a byte order and 42.
    static std::optional<EXIF_View> Of(std::span<const std::byte> block);

    /// Where the first directory starts, from the start of the block; 0 when it lies outside.
    std::size_t First_Directory() const;
    /// The directory behind this one; 0 for none.
    std::size_t Next_Directory(std::size_t directory) const;
    /// Where the offset of the next directory stands; 0 when the directory is cut off.
    std::size_t Next_Field(std::size_t directory) const;

    int Entry_Count(std::size_t directory) const;
    /// Entry number `index`; nothing when its value lies outside of the block.
    std::optional<EXIF_Entry> Entry(std::size_t directory, int index) const;
    std::optional<EXIF_Entry> Find(std::size_t directory, std::uint16_t tag) const;

    /// Element `index` of a byte, short or long value; nothing for other types.
    std::optional<std::uint32_t> Number(const EXIF_Entry& entry, std::uint32_t index = 0) const;
    /// The directory that a pointer entry names; 0 when there is none or it lies outside.
    std::size_t Sub_Directory(std::size_t directory, std::uint16_t tag) const;
    /// Numerator by denominator; nothing for other types and for a zero denominator.
    std::optional<double> Ratio(const EXIF_Entry& entry) const;

    std::uint16_t Short_At(std::size_t at) const;
    std::uint32_t Long_At(std::size_t at) const;
    bool Is_Big_Endian() const { return big_endian_; }
    std::size_t Size() const { return block_.size(); }

private:
    EXIF_View(std::span<const std::byte> block, bool big_endian) : block_(block), big_endian_(big_endian) {}
    std::size_t Place_Of(std::uint32_t offset) const;
    std::span<const std::byte> block_;
    bool big_endian_ = false;
};
