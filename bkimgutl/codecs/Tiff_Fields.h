#pragma once

#include "bkimgutl/codecs/Tiff_Structure.h"

#include <cstdint>
#include <string_view>

// The other direction: fields become the bytes of a directory.

/// A directory entry to be written.
struct Tiff_Field {
    std::uint16_t tag = 0;
    std::uint16_t type = 0;
    std::uint64_t count = 0;
    std::vector<std::byte> value{}; ///< in the byte order of the file; placed by the writer
    bool as_it_stands = false;      ///< no value: `field` is written as it is, an offset in it stays valid
    std::array<std::byte, 8> field{};
};

using Tiff_Fields = std::vector<Tiff_Field>;

Tiff_Field Short_Field(const Tiff_Layout& layout, std::uint16_t tag, std::uint16_t value);
/// An offset of the layout's width: Long or Long8.
Tiff_Field Offset_Field(const Tiff_Layout& layout, std::uint16_t tag, std::uint64_t position);
Tiff_Field Rational_Field(const Tiff_Layout& layout, std::uint16_t tag, std::uint32_t numerator,
                          std::uint32_t denominator);
Tiff_Field Bytes_Field(std::uint16_t tag, std::uint16_t type, std::span<const std::byte> value);
Tiff_Field Text_Field(std::uint16_t tag, std::string_view text); ///< ASCII with its closing zero
/// The entry as it stands, its value left where it is.
Tiff_Field Kept_Field(const Tiff_Entry& entry);

const Tiff_Field* Find_Field(const Tiff_Fields& fields, std::uint16_t tag);
/// Removes every field of that tag.
void Remove_Field(Tiff_Fields& fields, std::uint16_t tag);
/// Takes the place of all fields of its tag.
void Set_Field(Tiff_Fields& fields, Tiff_Field field);

/// The directory as it stands at `position` (an even one), its values right behind it; sorted by tag.
/// Fails when an offset does not fit into the layout.
Result<std::vector<std::byte>> Directory_Bytes(Tiff_Fields fields, const Tiff_Layout& layout, std::uint64_t position,
                                               std::uint64_t next);

/// What stands before the text in the value of Tiff_Tag::Image_Script, so that nobody else's tag of that number is taken
/// for ours.
constexpr std::string_view Tiff_Script_Head("HVScript\0", 9);
