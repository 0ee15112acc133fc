#include "bkimgutl/codecs/Tiff_Carry.h"

#include "bkimgutl/codecs/Image_Resources.h"
#include "bkimgutl/codecs/Tiff_Camera.h"
#include "bkimgutl/codecs/XMP_Thumbnails.h"

#include <algorithm>
#include <cstring>
#include <tiff.h>

namespace {

/// Tells how and where the pixels are stored, or about other pictures of the file.
constexpr std::uint16_t Storage_Tags[] = {
    TIFFTAG_SUBFILETYPE,
    TIFFTAG_OSUBFILETYPE,
    TIFFTAG_IMAGEWIDTH,
    TIFFTAG_IMAGELENGTH,
    TIFFTAG_COMPRESSION,
    TIFFTAG_FILLORDER,
    TIFFTAG_STRIPOFFSETS,
    TIFFTAG_ORIENTATION,
    TIFFTAG_ROWSPERSTRIP,
    TIFFTAG_STRIPBYTECOUNTS,
    TIFFTAG_PLANARCONFIG,
    TIFFTAG_FREEOFFSETS,
    TIFFTAG_FREEBYTECOUNTS,
    TIFFTAG_GROUP3OPTIONS,
    TIFFTAG_GROUP4OPTIONS,
    TIFFTAG_PREDICTOR,
    TIFFTAG_TILEWIDTH,
    TIFFTAG_TILELENGTH,
    TIFFTAG_TILEOFFSETS,
    TIFFTAG_TILEBYTECOUNTS,
    TIFFTAG_BADFAXLINES,
    TIFFTAG_CLEANFAXDATA,
    TIFFTAG_CONSECUTIVEBADFAXLINES,
    TIFFTAG_SUBIFD,
    TIFFTAG_JPEGTABLES,
    TIFFTAG_JPEGPROC,
    TIFFTAG_JPEGIFOFFSET,
    TIFFTAG_JPEGIFBYTECOUNT,
    TIFFTAG_JPEGRESTARTINTERVAL,
    TIFFTAG_JPEGLOSSLESSPREDICTORS,
    TIFFTAG_JPEGPOINTTRANSFORM,
    TIFFTAG_JPEGQTABLES,
    TIFFTAG_JPEGDCTABLES,
    TIFFTAG_JPEGACTABLES,
    TIFFTAG_YCBCRCOEFFICIENTS,
    TIFFTAG_YCBCRSUBSAMPLING,
    TIFFTAG_YCBCRPOSITIONING,
    TIFFTAG_IMAGEDEPTH,
    TIFFTAG_TILEDEPTH,
};

/// Tells what the samples of a pixel are.
constexpr std::uint16_t Color_Tags[] = {
    TIFFTAG_BITSPERSAMPLE,
    TIFFTAG_PHOTOMETRIC,
    TIFFTAG_THRESHHOLDING,
    TIFFTAG_CELLWIDTH,
    TIFFTAG_CELLLENGTH,
    TIFFTAG_SAMPLESPERPIXEL,
    TIFFTAG_MINSAMPLEVALUE,
    TIFFTAG_MAXSAMPLEVALUE,
    TIFFTAG_GRAYRESPONSEUNIT,
    TIFFTAG_GRAYRESPONSECURVE,
    TIFFTAG_PAGENUMBER,
    TIFFTAG_COLORRESPONSEUNIT,
    TIFFTAG_TRANSFERFUNCTION,
    TIFFTAG_COLORMAP,
    TIFFTAG_HALFTONEHINTS,
    TIFFTAG_INKSET,
    TIFFTAG_INKNAMES,
    TIFFTAG_NUMBEROFINKS,
    TIFFTAG_DOTRANGE,
    TIFFTAG_EXTRASAMPLES,
    TIFFTAG_SAMPLEFORMAT,
    TIFFTAG_SMINSAMPLEVALUE,
    TIFFTAG_SMAXSAMPLEVALUE,
    TIFFTAG_INDEXED,
    TIFFTAG_REFERENCEBLACKWHITE,
    TIFFTAG_MATTEING,
    TIFFTAG_DATATYPE,
};

bool Is_One_Of(std::span<const std::uint16_t> tags, std::uint16_t tag)
{
    return std::find(tags.begin(), tags.end(), tag) != tags.end();
}

/// Describes the stored pixels, other pictures of the file, or is set anew.
bool Belongs_To_Old_Pixels(const Tiff_Entry& entry)
{
    return Is_One_Of(Storage_Tags, entry.tag) || Is_One_Of(Color_Tags, entry.tag);
}

bool Points_To_Camera_Data(std::uint16_t tag)
{
    return tag == Tiff_Tag::EXIF_Directory || tag == Tiff_Tag::GPS_Directory;
}

/// A profile says at byte 16 for which colours it is.
bool Profile_Fits(std::span<const std::byte> profile, int channels)
{
    constexpr std::size_t at = 16;
    if (profile.size() < at + 4) return false;
    return std::memcmp(profile.data() + at, channels == 1 ? "GRAY" : "RGB ", 4) == 0;
}

std::uint16_t Compression_To_Keep(std::uint64_t parent)
{
    switch (parent) {
    case COMPRESSION_NONE:
    case COMPRESSION_LZW:
    case COMPRESSION_PACKBITS: return std::uint16_t(parent);
    default: return COMPRESSION_ADOBE_DEFLATE;
    }
}

Result<Tiff_Fields> Carried_Fields(const Tiff_Structure& parent, const Tiff_Directory& directory, int channels)
{
    std::uint64_t left = std::uint64_t(512) << 20;
    Tiff_Fields fields;
    for (const Tiff_Entry& entry : directory.entries) {
        // Directories of types of their own describe other pictures, whose data stays behind.
        const bool points = entry.type == Tiff_Type::IFD || entry.type == Tiff_Type::IFD8;
        const bool old = channels == 0 ? Is_One_Of(Storage_Tags, entry.tag) : Belongs_To_Old_Pixels(entry);
        if (old || Points_To_Camera_Data(entry.tag) || points) continue;
        if (Find_Field(fields, entry.tag) != nullptr) continue;
        if (entry.inside) {
            fields.push_back(Kept_Field(entry));
            continue;
        }
        if (!parent.Holds_Some_Of(entry)) continue; // there is nothing to carry
        auto value = parent.Value(entry, left);
        if (!value && entry.size <= parent.Size() && entry.size > left)
            return Failure("the file holds more data beside its picture than can be carried along");
        if (!value) return Failure(value.error().text + " and cannot be carried along");
        left -= value->size();
        if (entry.tag == Tiff_Tag::ICC_Profile && channels != 0 && !Profile_Fits(*value, channels)) continue;
        if (entry.tag == Tiff_Tag::Photoshop) Blank_Thumbnails(*value);
        if (entry.tag == Tiff_Tag::XMP) Blank_XMP_Thumbnails(*value);
        fields.push_back({.tag = entry.tag, .type = entry.type, .count = entry.count, .value = std::move(*value)});
    }
    return fields;
}

} // namespace

Result<Tiff_Carried> Carried_From_Tiff(const Tiff_Structure& parent, const Tiff_Directory& directory, int channels)
{
    Tiff_Carried carried{.layout = parent.Layout()};
    carried.compression = Compression_To_Keep(parent.Number(directory, TIFFTAG_COMPRESSION, COMPRESSION_NONE));
    auto fields = Carried_Fields(parent, directory, channels);
    if (!fields) return tl::make_unexpected(fields.error());
    carried.fields = std::move(*fields);
    const auto camera = Camera_Branch(parent, directory, Most_Camera_Bytes);
    if (!camera) return tl::make_unexpected(camera.error());
    carried.camera_payload = Branch_Payload(*camera);
    Tiff_Assembly assembly(carried.layout, carried.layout.Header_Size());
    constexpr std::uint64_t most_position = 65536; // farther out, free space in front would bloat the file
    assembly.Reserve_Maker_Note(*camera, most_position);
    const auto pointers = assembly.Place_Children(*camera);
    if (!pointers) return tl::make_unexpected(pointers.error());
    carried.fields.insert(carried.fields.end(), pointers->begin(), pointers->end());
    carried.head = std::move(assembly).Finish();
    return carried;
}

namespace {

Error Not_Carried(const Error& error)
{
    return {error.text + ", which cannot be carried along"};
}

/// Profile, XMP and image resources, which JPEG files keep in segments.
Result<void> Take_Segments(const Regular_File& parent, int channels, Tiff_Fields& fields)
{
    const auto profile = JPEG_Codec().Read_Profile(parent);
    if (!profile) return tl::make_unexpected(Not_Carried(profile.error()));
    if (Profile_Fits(*profile, channels))
        Set_Field(fields, Bytes_Field(Tiff_Tag::ICC_Profile, Tiff_Type::Undefined, *profile));
    auto xmp = JPEG_Codec().Read_XMP(parent);
    if (!xmp) return tl::make_unexpected(Not_Carried(xmp.error()));
    Blank_XMP_Thumbnails(*xmp);
    if (!xmp->empty()) Set_Field(fields, Bytes_Field(Tiff_Tag::XMP, Tiff_Type::Byte, *xmp));
    auto resources = JPEG_Codec().Read_Resources(parent);
    if (!resources) return tl::make_unexpected(Not_Carried(resources.error()));
    Blank_Thumbnails(*resources);
    if (!resources->empty()) Set_Field(fields, Bytes_Field(Tiff_Tag::Photoshop, Tiff_Type::Byte, *resources));
    if (const auto iptc = IPTC_Of_Resources(*resources); !iptc.empty())
        Set_Field(fields, Bytes_Field(Tiff_Tag::IPTC, Tiff_Type::Undefined, iptc));
    return {};
}

/// Lays the camera block over the beginning of the file.
void Take_Block(std::vector<std::byte> block, Tiff_Carried& carried)
{
    constexpr std::size_t mark = 6; // "Exif", 0, 0
    if (block.size() <= mark) return;
    Mend_EXIF_Block(block, 1, /*blank_thumbnail=*/true);
    block.erase(block.begin(), block.begin() + mark);
    const auto structure = Tiff_Structure::Open(std::span<const std::byte>(block));
    if (!structure || structure->Layout().big) return;
    const auto directory = structure->First_Directory();
    if (!directory) return;
    carried.layout = structure->Layout();
    for (const Tiff_Entry& entry : directory->entries) {
        const bool lost = entry.size > block.size() || entry.position > block.size() - entry.size;
        if (Belongs_To_Old_Pixels(entry) || entry.tag == Tiff_Tag::Image_Description || lost) continue;
        if (Find_Field(carried.fields, entry.tag) == nullptr) carried.fields.push_back(Kept_Field(entry));
    }
    const auto camera = Camera_Branch(*structure, *directory, Most_Camera_Bytes);
    if (camera) carried.camera_payload = Branch_Payload(*camera);
    carried.head = std::move(block);
}

} // namespace

Result<Tiff_Carried> Carried_From_Jpeg(const Regular_File& parent, int channels)
{
    Tiff_Carried carried;
    auto block = JPEG_Codec().Read_EXIF(parent);
    if (!block) return tl::make_unexpected(block.error());
    Take_Block(std::move(*block), carried);
    if (auto taken = Take_Segments(parent, channels, carried.fields); !taken) return tl::make_unexpected(taken.error());
    return carried;
}
