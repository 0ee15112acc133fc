#pragma once

#include "bkimgutl/codecs/Codec.h"
#include "bkimgutl/codecs/Tiff_Fields.h"

// What a new TIFF file with new pixels takes over from its parent: every tag but those that describe how the old pixels
// were stored, byte for byte, and the camera directories.
//
//   header, camera data | strips | directory and its values
//
// The camera data stands in front because a JPEG file's camera block is a TIFF structure with its header: laid over the
// beginning of the new file all offsets in it stay true, those of a maker note too.

struct Tiff_Carried {
    Tiff_Layout layout;
    std::vector<std::byte> head{}; ///< of the file, the header included; may be empty
    Tiff_Fields fields{};          ///< of the new directory; offsets in them are true
    std::uint16_t compression = 8;
    std::uint64_t camera_payload = 0; ///< see Branch_Payload
};

constexpr std::uint64_t Most_Camera_Bytes = std::uint64_t(64) << 20;

/// `channels` of the new picture, 1 or 3: a colour profile for other colours stays behind. 0 when the new picture has the
/// parent's own samples: then all that tells about colours goes along too.
Result<Tiff_Carried> Carried_From_Tiff(const Tiff_Structure& parent, const Tiff_Directory& directory, int channels);
Result<Tiff_Carried> Carried_From_Jpeg(const Regular_File& parent, int channels);
