#pragma once

#include "bkimgutl/codecs/Tiff_Fields.h"
#include "frame/files/Replacement_File.h"

// Every directory that we write stands in a tail at the end of its file: directory, values, mark. The header points to it.
// The next save of texts cuts the tail off and writes a new one, so a file does not grow with the number of saves.
//
//   header ... pictures, foreign directories, values ... | directory | values | mark: "HVTail", 0, 0, position

/// What stands in the file in front of the new tail, and the fields of its directory so far. Values that stood in an old
/// tail are carried in the fields; all others stay where they are.
struct Tiff_Base {
    std::uint64_t size = 0;
    Tiff_Fields fields{};
    std::uint64_t next = 0; ///< the second directory
};

/// True when every strip or tile says where it stands, and stands behind the header and before `end`. Of other files
/// decoders guess the sizes, so that what is shown may depend on what follows.
bool Coded_Data_Lies_Before(std::uint64_t end, const Tiff_Structure& structure, const Tiff_Directory& directory);

/// Cuts an old tail off in thought, if nothing but its own directory points into it.
Result<Tiff_Base> Base_Of(const Tiff_Structure& structure, const Tiff_Directory& directory);

/// The tail as it stands at `position`, an even one.
Result<std::vector<std::byte>> Tail_Bytes(Tiff_Fields fields, const Tiff_Layout& layout, std::uint64_t position,
                                          std::uint64_t next);

/// Copies the first `base.size` bytes of the file and appends a tail with the base's fields.
Result<void> Write_With_New_Tail(Replacement_File& target, const Tiff_Structure& source, const Tiff_Base& base);

/// The header of a file whose first directory stands at `position`.
std::vector<std::byte> Header_Bytes(const Tiff_Layout& layout, std::uint64_t position);
