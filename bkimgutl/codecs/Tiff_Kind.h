#pragma once

#include "bkimgutl/codecs/Tiff_Structure.h"
#include "frame/files/Result.h"

#include <cstdint>
#include <vector>

struct tiff;

/// How samples become colours.
enum class Tiff_Colors { Grey, Palette, RGB, CMYK };

/// What kind of picture the first page is, as the TIFF library sees it, checked against what we can decode.
struct Tiff_Kind {
    int width = 0;
    int height = 0;
    int samples = 1;
    int bits = 8;
    int orientation = 1;
    Tiff_Colors colors = Tiff_Colors::Grey;
    bool white_is_zero = false;
    int alpha = -1;          ///< number of the alpha sample, -1 without one
    bool associated = false; ///< colours are multiplied by alpha already
    bool extra_samples = false;
    bool separate = false; ///< each sample in a plane of its own
    bool tiled = false;
    bool samples_as_told = true;       ///< decoded samples are of the colours that the tags tell
    bool by_library = false;           ///< of a kind that the library's own conversion to RGBA handles
    std::vector<std::uint8_t> palette; ///< blue, green, red for each index

    int Color_Samples() const { return colors == Tiff_Colors::RGB ? 3 : colors == Tiff_Colors::CMYK ? 4 : 1; }
    /// 1 for grey results, 3 for coloured ones.
    int Channels() const;
    /// The file holds more than a bitmap of 8 bits a channel can.
    bool Holds_More() const { return bits > 8 || extra_samples || colors == Tiff_Colors::CMYK || by_library; }
};

/// Refuses hostile counts before the TIFF library opens the file: strips or tiles, samples, sizes of the picture.
Result<void> Check_Tiff_Limits(const Tiff_Structure& structure, const Tiff_Directory& directory);

/// Strips or tiles, of all planes, that a picture of these sides has; 0 without sides.
std::uint64_t Tiff_Piece_Count(const Tiff_Structure& structure, const Tiff_Directory& directory);

/// True when full pages follow the first; reduced copies and masks of it do not count.
bool Has_Further_Pages(const Tiff_Structure& structure, const Tiff_Directory& first);

/// The kind of the current directory; a kind that cannot be shown fails with its reason. JPEG coded colours are set to
/// come out as RGB.
Result<Tiff_Kind> Kind_Of(tiff* handle);
