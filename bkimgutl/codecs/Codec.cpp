#include "bkimgutl/codecs/Codec.h"

#include <array>

Image_File_Type Type_From_Signature(const Regular_File& file)
{
    std::array<std::byte, 4> first{};
    const auto got = file.Read_At(0, first);
    if (!got || *got < first.size()) return Image_File_Type::Unknown;
    const auto byte = [&](std::size_t i) { return std::to_integer<unsigned>(first[i]); };
    if (byte(0) == 0xFF && byte(1) == 0xD8 && byte(2) == 0xFF) return Image_File_Type::JPEG;
    if (byte(0) != byte(1) || (byte(0) != 'I' && byte(0) != 'M')) return Image_File_Type::Unknown;
    const unsigned number = byte(0) == 'I' ? byte(2) | byte(3) << 8 : byte(2) << 8 | byte(3);
    const bool plain_or_big = number == 42 || number == 43;
    return plain_or_big ? Image_File_Type::TIFF : Image_File_Type::Unknown;
}
