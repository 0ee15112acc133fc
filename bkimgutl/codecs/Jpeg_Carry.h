#pragma once

#include "bkimgutl/codecs/Codec.h"
#include "bkimgutl/codecs/Jpeg_Load.h"
#include "bkimgutl/codecs/Jpeg_Segments.h"
#include "frame/files/Replacement_File.h"

#include <optional>
#include <vector>

// What a new JPEG file takes over from its parent: every application segment in its order and byte for byte, but for
// - comment and script, which are replaced,
// - the resolution in JFIF, when it is not what the new file is to have,
// - in the camera block, the orientation and the thumbnail, when the pixels are not the parent's as stored,
// - the thumbnails of JFIF, JFXX and the image resources in the same case,
// - Adobe's mark and the colour profile, when the new pixels are of another colour model.
//
//   start | JFIF, JFXX, camera block | comment, script | everything else of the parent | tables and picture data
//
// Our own segments stand that early because others (multi-picture indexes) point to places behind themselves.

enum class Pixels {
    As_Stored,  ///< the parent's coded data, copied
    Reoriented, ///< the same, but with another orientation
    Turned,     ///< the parent's, transformed without loss
    Encoded,    ///< new
};

struct Carry_Plan {
    Pixels pixels = Pixels::Encoded;
    int orientation = 1;                                     ///< of the new file; counts for all but As_Stored
    Jpeg_Coding::Colors colors = Jpeg_Coding::Colors::YCbCr; ///< of the new file
    std::string comment;
    std::string script;
    int horizontal_dpi = -1; ///< upright, below 1 for none
    int vertical_dpi = -1;
};

/// A parent that is a JPEG file, with its head and facts.
struct Jpeg_Parent {
    Regular_File file;
    Jpeg_Head head;
    Picture_Facts facts;

    static Result<Jpeg_Parent> Open(const std::string& path);
};

/// Writes everything from the start marker to the first table, which is also the end of the file if the picture data is
/// copied.
Result<void> Write_Carried(Replacement_File& target, const Jpeg_Parent& parent, const Carry_Plan& plan);

/// What a TIFF parent gives along; each may be empty.
struct Foreign_Data {
    std::vector<std::byte> exif{};
    std::vector<std::byte> profile{};
    std::vector<std::byte> xmp{};
    std::vector<std::byte> resources{};
};

/// The same without a JPEG parent.
Result<void> Write_New_Head(Replacement_File& target, Foreign_Data foreign, const Carry_Plan& plan);

/// Copies what stands in the parent's file behind its picture.
Result<void> Write_What_Stands_Behind(Replacement_File& target, const Jpeg_Parent& parent);
