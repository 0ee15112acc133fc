#pragma once

#include "frame/files/Regular_File.h"
#include "frame/files/Result.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

// Reads the directories of a TIFF structure, classic or big, from a file or from an EXIF block in memory. Nothing is
// allocated by a number from the file before the number is checked: entries against the limits, sizes against the bytes
// that are there.

namespace Tiff_Tag {
enum Number : std::uint16_t {
    New_Subfile_Type = 254,
    Image_Width = 256,
    Image_Length = 257,
    Bits_Per_Sample = 258,
    Compression = 259,
    Image_Description = 270,
    Make = 271,
    Model = 272,
    Strip_Offsets = 273,
    Orientation = 274,
    Samples_Per_Pixel = 277,
    Rows_Per_Strip = 278,
    Strip_Byte_Counts = 279,
    X_Resolution = 282,
    Y_Resolution = 283,
    Resolution_Unit = 296,
    Software = 305,
    Date_Time = 306,
    Artist = 315,
    Tile_Offsets = 324,
    Tile_Byte_Counts = 325,
    Sub_Directories = 330,
    XMP = 700,
    Copyright = 33432,
    IPTC = 33723,
    Photoshop = 34377,
    EXIF_Directory = 34665,
    ICC_Profile = 34675,
    GPS_Directory = 34853,
    Maker_Note = 37500,
    Interoperability_Directory = 40965,
    Image_Script = 65157, ///< ours; its value starts with Tiff_Script_Head
};
}

namespace Tiff_Type {
enum Number : std::uint16_t {
    Byte = 1,
    ASCII = 2,
    Short = 3,
    Long = 4,
    Rational = 5,
    Undefined = 7,
    IFD = 13,
    Long8 = 16,
    SLong8 = 17,
    IFD8 = 18,
};
}

/// Byte order and width of offsets.
struct Tiff_Layout {
    bool little_endian = true;
    bool big = false; ///< BigTIFF: 8-byte counts and offsets

    std::size_t Header_Size() const { return big ? 16 : 8; }
    std::size_t Entry_Size() const { return big ? 20 : 12; }
    std::size_t Field_Size() const { return big ? 8 : 4; } ///< of an entry's value field
    std::size_t Count_Size() const { return big ? 8 : 2; } ///< of a directory's number of entries
    std::size_t Directory_Size(std::size_t entries) const
    {
        return Count_Size() + entries * Entry_Size() + Field_Size();
    }
    std::uint64_t Get(const std::byte* from, std::size_t bytes) const;
    void Put(std::byte* to, std::size_t bytes, std::uint64_t value) const;
};

/// Bytes of one value of a type; 0 for a type that nobody defined.
std::size_t Tiff_Type_Size(std::uint16_t type);

struct Tiff_Entry {
    std::uint16_t tag = 0;
    std::uint16_t type = 0;
    std::uint64_t count = 0;
    std::uint64_t position = 0;       ///< of the first byte of the value, wherever it stands
    std::uint64_t size = 0;           ///< bytes of the value; 0 for unknown types, UINT64_MAX when it overflows
    bool inside = true;               ///< the value stands in the entry itself
    std::array<std::byte, 8> field{}; ///< the value field as it stands
};

struct Tiff_Directory {
    std::uint64_t position = 0;
    std::uint64_t next = 0;
    std::vector<Tiff_Entry> entries;
    const Tiff_Entry* Find(std::uint16_t tag) const; ///< the first one, or null
};

class Tiff_Structure {
public:
    /// Reads the header. The file or the bytes must outlive the structure.
    static Result<Tiff_Structure> Open(const Regular_File& file);
    static Result<Tiff_Structure> Open(std::span<const std::byte> bytes);

    const Tiff_Layout& Layout() const { return layout_; }
    std::uint64_t First_Position() const { return first_; }
    std::uint64_t Size() const;

    Result<void> Read(std::uint64_t position, std::span<std::byte> target) const; ///< all of it, or a failure
    Result<Tiff_Directory> Read_Directory(std::uint64_t position) const;
    Result<Tiff_Directory> First_Directory() const { return Read_Directory(first_); }

    /// False when the value begins behind the end of the file: no byte of it is there.
    bool Holds_Some_Of(const Tiff_Entry& entry) const { return entry.position < Size(); }
    /// The value as it stands. Fails when it leaves the file or is longer than `most_bytes`.
    Result<std::vector<std::byte>> Value(const Tiff_Entry& entry, std::uint64_t most_bytes) const;
    /// All values of an entry of an unsigned integer type.
    Result<std::vector<std::uint64_t>> Numbers(const Tiff_Entry& entry, std::uint64_t most_values) const;
    /// The first value of a tag, or `otherwise` when the directory has none.
    std::uint64_t Number(const Tiff_Directory& directory, std::uint16_t tag, std::uint64_t otherwise) const;

private:
    Tiff_Structure() = default;
    static Result<Tiff_Structure> With_Header(Tiff_Structure structure);
    const Regular_File* file_ = nullptr;
    std::span<const std::byte> memory_;
    Tiff_Layout layout_;
    std::uint64_t first_ = 0;
};
