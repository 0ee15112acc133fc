#pragma once

#include "bkimgutl/codecs/Tiff_Fields.h"

// Camera data: the directories under a picture's own one (EXIF, GPS, interoperability), taken out of one structure as
// values and put together in another. Values stay byte for byte. A maker note may hold offsets from the beginning of its
// file that nobody can mend, so it keeps its position wherever the new place has room for that.

/// A directory with the directories below it.
struct Tiff_Branch {
    Tiff_Fields fields; ///< without the ones that point to children
    std::vector<Tiff_Branch> children;
    std::uint16_t tag = 0;                 ///< that points to it, of a child
    std::uint64_t maker_note_position = 0; ///< where the maker note stood; 0 without one
};

/// The EXIF and GPS directories below `directory`; one that cannot be read is left out. Fails when the values are larger
/// than `most_bytes` together. `fields` stays empty.
Result<Tiff_Branch> Camera_Branch(const Tiff_Structure& structure, const Tiff_Directory& directory,
                                  std::uint64_t most_bytes);

/// Sum of the sizes of all values below, for the comparison after a save.
std::uint64_t Branch_Payload(const Tiff_Branch& branch);

/// Puts directories into a run of bytes that starts at position 0 of its structure.
class Tiff_Assembly {
public:
    /// Bytes 0 to `start` are somebody else's.
    Tiff_Assembly(const Tiff_Layout& layout, std::size_t start) : layout_(layout), bytes_(start) {}

    /// Keeps the place of the maker note of `branch` free, when it is free and the note ends before `most_position`.
    void Reserve_Maker_Note(const Tiff_Branch& branch, std::uint64_t most_position);
    /// Places the children of a branch and returns the fields that point to them.
    Result<Tiff_Fields> Place_Children(const Tiff_Branch& branch);
    /// Places a directory and returns its position.
    Result<std::uint64_t> Place(Tiff_Fields fields, std::uint64_t maker_note_position = 0);

    std::vector<std::byte> Finish() &&;

private:
    std::uint64_t Room_For(std::size_t size) const;
    Tiff_Layout layout_;
    std::vector<std::byte> bytes_;
    std::uint64_t reserved_ = 0; ///< where note_ will stand
    std::vector<std::byte> note_;
};

/// "Exif", 0, 0 and a classic TIFF structure with the camera tags and camera directories of the file's first page.
/// Empty when it has none; fails beyond `most_bytes`.
Result<std::vector<std::byte>> Camera_Block_Of_Tiff(const Tiff_Structure& structure, std::uint64_t most_bytes);
