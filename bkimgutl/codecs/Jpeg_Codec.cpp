#include "bkimgutl/codecs/Codec.h"
#include "bkimgutl/codecs/Jpeg_Carry.h"
#include "bkimgutl/codecs/Jpeg_Encode.h"
#include "bkimgutl/codecs/Jpeg_Texts.h"
#include "bkimgutl/codecs/Jpeg_Transform.h"
#include "bkimgutl/codecs/Jpeg_XMP.h"
#include "bkimgutl/codecs/Save_Checks.h"
#include "bkimgutl/codecs/Stored_Text.h"
#include "frame/files/Limits.h"

#include <optional>

// A save first decides where the picture data comes from (see Pixels), then writes the new file in one pass: the head with
// what the parent gives along, and the data behind it.

namespace {

/// One save from a JPEG parent.
struct Parent_Save {
    const Save_Request& request;
    const Jpeg_Parent& parent;
    Jpeg_Coding coding;
    Pixel_Symmetry symmetry; ///< of the bitmap's pixels, from the parent's as stored

    Pixels Choose() const;
    /// Further pictures stand behind this one, which an index finds by counting bytes: the coded data keeps its length, and
    /// another orientation turns the picture.
    bool Must_Keep_Its_Length() const;
    Encode_Settings Settings() const;
};

Pixels Parent_Save::Choose() const
{
    if (request.bitmap == nullptr) return Pixels::As_Stored;
    const auto& origin = request.bitmap->Origin();
    const bool same = origin && !origin->damaged && origin->identity == parent.file.Identity();
    if (request.quality != Quality_Of_Parent || !same) return Pixels::Encoded;
    if (symmetry == Symmetry_Of_Orientation(parent.facts.orientation)) return Pixels::As_Stored;
    if (symmetry.Is_Identity()) return Pixels::Reoriented;
    if (Must_Keep_Its_Length()) return Pixels::Reoriented;
    // Elsewhere the stored pixels are turned, so that the picture stands upright in programs that know no orientation too.
    // An incomplete unit that would come to lie at the left or the top cannot: then they are encoded once more.
    return Can_Turn_Without_Loss(coding, parent.head.width, parent.head.height, symmetry) ? Pixels::Turned
                                                                                          : Pixels::Encoded;
}

bool Parent_Save::Must_Keep_Its_Length() const
{
    if (End_Of_Picture(parent.file, parent.head) >= parent.file.Size()) return false;
    const Jpeg_Segment* camera = parent.head.Find(Segment_Kind::EXIF);
    if (camera == nullptr) return false;
    const auto block = Read_Segment(parent.file, *camera);
    return block && Has_Orientation_In_EXIF_Block(*block);
}

Encode_Settings Parent_Save::Settings() const
{
    if (request.quality == Quality_Of_Parent) return {.quality = Usual_Quality, .like = &coding};
    return {.quality = request.quality < 0 ? Usual_Quality : request.quality, .like = nullptr};
}

Carry_Plan Plan_For(const Save_Request& request, Pixels pixels, Jpeg_Coding::Colors colors)
{
    return {.pixels = pixels,
            .colors = colors,
            .comment = request.comment,
            .script = request.script,
            .horizontal_dpi = request.horizontal_dpi,
            .vertical_dpi = request.vertical_dpi};
}

Result<void> Write_From_Jpeg(Replacement_File& target, const Save_Request& request)
{
    const auto parent = Jpeg_Parent::Open(request.parent);
    if (!parent) return tl::make_unexpected(parent.error());
    auto coding = Coding_Of(parent->file);
    if (!coding) return Failure(request.parent + ": " + coding.error().text);
    const auto origin = request.bitmap ? request.bitmap->Origin() : nullptr;
    const Parent_Save save{request, *parent, std::move(*coding), origin ? origin->symmetry : Pixel_Symmetry{}};
    const Bitmap_View pixels = request.bitmap ? request.bitmap->View() : Bitmap_View{};
    const Pixels source = save.Choose();
    const auto colors = source == Pixels::Encoded ? Colors_To_Store(pixels, save.Settings()) : save.coding.colors;
    Carry_Plan plan = Plan_For(request, source, colors);
    if (source == Pixels::Reoriented) plan.orientation = Orientation_Of_Symmetry(save.symmetry);
    if (auto head = Write_Carried(target, *parent, plan); !head) return head;
    if (source == Pixels::Turned) {
        if (auto turned = Write_Turned(target, parent->file, save.symmetry); !turned) return turned;
        return Write_What_Stands_Behind(target, *parent);
    }
    if (source == Pixels::Encoded) return Encode_Jpeg(target, pixels, save.Settings());
    return {};
}

/// What there is goes along whole, or the save fails: nothing is left out without a word. The caller brings the
/// description, unless it could not read it.
Result<Foreign_Data> Data_Of_Tiff(const Save_Request& request)
{
    const std::string& path = request.parent;
    const auto file = Regular_File::Open(path);
    if (!file) return tl::make_unexpected(file.error());
    const auto comment = TIFF_Codec().Read_Comment(*file);
    if (!comment && request.comment.empty())
        return Failure(path + ": the description cannot be carried along: " + comment.error().text);
    Foreign_Data data;
    struct Kind {
        const char* name;
        std::vector<std::byte>& bytes;
        Result<std::vector<std::byte>> (Codec::*read)(const Regular_File&) const;
    };
    for (const Kind& kind :
         {Kind{"camera data", data.exif, &Codec::Read_EXIF}, Kind{"colour profile", data.profile, &Codec::Read_Profile},
          Kind{"XMP data", data.xmp, &Codec::Read_XMP},
          Kind{"image resources", data.resources, &Codec::Read_Resources}}) {
        auto found = (TIFF_Codec().*kind.read)(*file);
        if (!found) return Failure(path + ": the " + kind.name + " cannot be carried along: " + found.error().text);
        kind.bytes = std::move(*found);
    }
    return data;
}

/// From a TIFF parent or from none.
Result<void> Write_From_Others(Replacement_File& target, const Save_Request& request, Image_File_Type parent_type)
{
    auto foreign = parent_type == Image_File_Type::TIFF ? Data_Of_Tiff(request) : Foreign_Data();
    if (!foreign) return tl::make_unexpected(foreign.error());
    const Bitmap_View pixels = request.bitmap->View();
    const Encode_Settings settings{.quality = request.quality < 0 ? Usual_Quality : request.quality, .like = nullptr};
    const Carry_Plan plan = Plan_For(request, Pixels::Encoded, Colors_To_Store(pixels, settings));
    if (auto head = Write_New_Head(target, std::move(*foreign), plan); !head) return head;
    return Encode_Jpeg(target, pixels, settings);
}

Result<Image_File_Type> Parent_Type(const Save_Request& request)
{
    if (request.parent.empty() || request.parent_type != Image_File_Type::Unknown) return request.parent_type;
    const auto file = Regular_File::Open(request.parent);
    if (!file) return tl::make_unexpected(file.error());
    const Image_File_Type type = Type_From_Signature(*file);
    if (type == Image_File_Type::Unknown) return Failure(request.parent + ": is neither a JPEG nor a TIFF file");
    return type;
}

std::optional<std::size_t> Parent_EXIF_Bytes(const Save_Request& request, Image_File_Type type)
{
    if (request.parent.empty()) return 0;
    const auto file = Regular_File::Open(request.parent);
    if (!file) return std::nullopt;
    const Codec& codec = type == Image_File_Type::TIFF ? TIFF_Codec() : JPEG_Codec();
    const auto block = codec.Read_EXIF(*file);
    return block ? std::optional(block->size()) : std::nullopt;
}

/// What the new file must give back when it is read.
struct Expectation {
    int width = 0;
    int height = 0;
    std::optional<std::size_t> exif_bytes; ///< what the parent's camera block should have left
};

Result<Expectation> Expected_From(const Save_Request& request, Image_File_Type parent_type)
{
    Expectation expected{.exif_bytes = Parent_EXIF_Bytes(request, parent_type)};
    if (request.bitmap != nullptr) {
        expected.width = request.bitmap->Width();
        expected.height = request.bitmap->Height();
        return expected;
    }
    if (parent_type != Image_File_Type::JPEG) return Failure("there are no pixels to save");
    const auto parent = Jpeg_Parent::Open(request.parent);
    if (!parent) return tl::make_unexpected(parent.error());
    expected.width = parent->facts.width;
    expected.height = parent->facts.height;
    return expected;
}

/// Reads back what the next reader will look for.
Result<void> Verify(const std::string& path, const Save_Request& request, const Expectation& expected)
{
    const auto file = Regular_File::Open(path);
    if (!file) return tl::make_unexpected(file.error());
    const auto head = Read_Jpeg_Head(*file);
    if (!head) return tl::make_unexpected(head.error());
    const auto facts = Facts_Of_Jpeg(*file, *head);
    const auto comment = Comment_Of_Jpeg(*file, *head);
    const auto script = Script_Of_Jpeg(*file, *head);
    const auto exif = EXIF_Of_Jpeg(*file, *head);
    const bool good = facts && facts->width == expected.width && facts->height == expected.height && comment &&
                      *comment == request.comment && script && *script == request.script && exif &&
                      (!expected.exif_bytes || exif->size() == *expected.exif_bytes);
    if (!good) return Failure("the file that was written does not read back as it should");
    return {};
}

Result<void> Save_Jpeg(Save_Request request)
{
    if (auto good = Check_Script(request); !good) return good;
    auto comment = Comment_To_Store(request, Longest_Segment_Data);
    if (!comment) return tl::make_unexpected(comment.error());
    request.comment = std::move(*comment);
    if (auto good = Check_Damage(request); !good) return good;
    if (request.quality > 100 || request.quality < Quality_Of_Parent) return Failure("the quality is not 0 to 100");
    const auto type = Parent_Type(request);
    if (!type) return tl::make_unexpected(type.error());
    const auto expected = Expected_From(request, *type);
    if (!expected) return tl::make_unexpected(expected.error());
    Replacement_Options options;
    options.take_attributes_from = Attributes_Source(request);
    options.verify = [&](const std::string& path) { return Verify(path, request, *expected); };
    auto target = Replacement_File::Open(request.target, std::move(options));
    if (!target) return tl::make_unexpected(target.error());
    const bool from_jpeg = !request.parent.empty() && *type == Image_File_Type::JPEG;
    auto written = from_jpeg ? Write_From_Jpeg(*target, request) : Write_From_Others(*target, request, *type);
    if (!written) return written;
    return target->Commit();
}

class Jpeg_Codec final : public Codec {
public:
    Result<Picture_Facts> Read_Facts(const Regular_File& file) const override { return With_Head(file, Facts_Of_Jpeg); }
    Result<std::string> Read_Comment(const Regular_File& file) const override
    {
        return With_Head(file, Comment_Of_Jpeg);
    }
    Result<std::string> Read_Script(const Regular_File& file) const override { return With_Head(file, Script_Of_Jpeg); }
    Result<std::vector<std::byte>> Read_EXIF(const Regular_File& file) const override
    {
        return With_Head(file, EXIF_Of_Jpeg);
    }
    Result<std::vector<std::byte>> Read_Profile(const Regular_File& file) const override
    {
        return With_Head(file, Profile_Of_Jpeg);
    }
    Result<std::vector<std::byte>> Read_XMP(const Regular_File& file) const override
    {
        return With_Head(file, XMP_Of_Jpeg);
    }
    Result<std::vector<std::byte>> Read_Resources(const Regular_File& file) const override
    {
        return With_Head(file, Resources_Of_Jpeg);
    }
    Result<Bitmap> Load(const Regular_File& file, int scale_divisor) const override
    {
        return Load_Jpeg(file, scale_divisor);
    }
    bool Is_Complete(const Regular_File& file) const override { return Has_End_Mark(file); }
    Result<void> Save(const Save_Request& request) const override { return Save_Jpeg(request); }

private:
    template <class Reader>
    static auto With_Head(const Regular_File& file, Reader reader)
        -> decltype(reader(file, std::declval<const Jpeg_Head&>()))
    {
        const auto head = Read_Jpeg_Head(file);
        if (!head) return tl::make_unexpected(head.error());
        return reader(file, *head);
    }
};

} // namespace

const Codec& JPEG_Codec()
{
    // Never destroyed: threads may still read files when a program exits.
    static const Jpeg_Codec* const codec = new Jpeg_Codec;
    return *codec;
}
