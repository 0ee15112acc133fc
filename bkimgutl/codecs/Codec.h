#pragma once

#include "bkimgutl/contract/Types.h"
#include "bkimgutl/core/Bitmap.h"
#include "frame/files/Regular_File.h"
#include "frame/files/Result.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

// What a codec offers to the contract's file functions. One implementation for JPEG, one for TIFF; Files.cpp in contract/
// picks by type. Errors name no file: the caller puts "PATH: " in front.

struct Picture_Facts {
    int width = 0; ///< upright
    int height = 0;
    int pixel_depth = 0;     ///< bits per pixel as stored
    int horizontal_dpi = -1; ///< upright; -1 when the file has none
    int vertical_dpi = -1;
    int orientation = 1; ///< as stored, 1..8
};

struct Save_Request {
    const Bitmap* bitmap = nullptr; ///< null for the parent's coded data as it stands; its type is the target's then
    std::string target{};
    std::string comment{}; ///< UTF-8
    std::string script{};
    std::string parent{}; ///< path, empty for none
    Image_File_Type parent_type = Image_File_Type::Unknown;
    int quality = Quality_Default;
    int horizontal_dpi = -1;
    int vertical_dpi = -1;
};

class Codec {
public:
    virtual ~Codec() = default;
    virtual Result<Picture_Facts> Read_Facts(const Regular_File& file) const = 0;
    virtual Result<std::string> Read_Comment(const Regular_File& file) const = 0; ///< raw bytes as stored
    virtual Result<std::string> Read_Script(const Regular_File& file) const = 0;
    virtual Result<std::vector<std::byte>> Read_EXIF(const Regular_File& file) const = 0; ///< with "Exif",0,0
    /// The ICC profile; empty when there is none. A profile travels along when a save changes the type of the file.
    virtual Result<std::vector<std::byte>> Read_Profile(const Regular_File&) const { return std::vector<std::byte>(); }
    /// The XMP packet, whole; empty when there is none. It travels along likewise.
    virtual Result<std::vector<std::byte>> Read_XMP(const Regular_File& file) const = 0;
    /// The image resources with the IPTC record, see Image_Resources.h; empty without any. They travel along likewise.
    virtual Result<std::vector<std::byte>> Read_Resources(const Regular_File& file) const = 0;
    virtual Result<Bitmap> Load(const Regular_File& file, int scale_divisor) const = 0; ///< upright, with its origin
    /// Whether all coded data seems to be there, as far as a look without decoding tells.
    virtual bool Is_Complete(const Regular_File& file) const = 0;
    /// Whether a save of the bitmap with that parent keeps all that the parent's picture holds.
    virtual bool Keeps_All(const Bitmap& bitmap, const Regular_File& parent) const
    {
        const auto& origin = bitmap.Origin();
        return origin != nullptr && origin->identity == parent.Identity() && !origin->reduced;
    }
    virtual Result<void> Save(const Save_Request& request) const = 0; ///< through Replacement_File
};

const Codec& JPEG_Codec();
const Codec& TIFF_Codec();

/// Signature of the first bytes: FF D8 FF is JPEG; "II" or "MM" with 42 or 43 is TIFF.
Image_File_Type Type_From_Signature(const Regular_File& file);

/// Estimates 0..100 from the quantisation tables of a JPEG; -1 when it is none.
int Estimated_Quality(const Regular_File& file);

/// For both codecs: sets tag 274 to `orientation` and blanks the embedded thumbnail in place in an EXIF block (with its
/// "Exif",0,0 head). The block keeps its length and everything else; a block that cannot be read stays as it is.
void Mend_EXIF_Block(std::vector<std::byte>& block, int orientation, bool blank_thumbnail);

/// Sets the resolution, pixels per inch along the stored sides, in place where such a block tells one. Below 1, which is no
/// resolution, what the camera said stays: the tags must be there.
void Put_Resolution_In_EXIF_Block(std::vector<std::byte>& block, int horizontal, int vertical);

/// Orientation 1..8 of an EXIF block, 1 when it has none or cannot be read.
int Orientation_Of_EXIF_Block(const std::vector<std::byte>& block);
/// Whether it has an orientation that can be set in place.
bool Has_Orientation_In_EXIF_Block(const std::vector<std::byte>& block);
