#include "bkimgutl/codecs/Image_Resources.h"
#include "bkimgutl/codecs/Save_Checks.h"
#include "bkimgutl/codecs/Tiff_Camera.h"
#include "bkimgutl/codecs/Tiff_Carry.h"
#include "bkimgutl/codecs/Tiff_Handle.h"
#include "bkimgutl/codecs/Tiff_Loader.h"
#include "bkimgutl/codecs/Tiff_Samples.h"
#include "bkimgutl/codecs/Tiff_Tail.h"
#include "bkimgutl/codecs/Tiff_Texts.h"
#include "frame/files/Limits.h"

#include <algorithm>
#include <unistd.h>
#include <utility>

// A save first decides where the picture data comes from. While the bitmap still holds the pixels of a TIFF parent as its
// orientation tag shows them, the parent is copied as it stands, whatever it holds, and only gets a new first directory
// with the new texts. Turned by right angles, its samples are written again with all their bits; where they cannot be moved,
// or further pages must stay, the copy gets another orientation. Otherwise the pixels are written anew. Everything else of
// the parent is carried along.

namespace {

/// A file with its first directory.
struct Opened {
    const Regular_File& file;
    Tiff_Structure structure;
    Tiff_Directory directory;
};

Result<Opened> Opened_From(const Regular_File& file)
{
    auto structure = Tiff_Structure::Open(file);
    if (!structure) return tl::make_unexpected(structure.error());
    auto directory = structure->First_Directory();
    if (!directory) return tl::make_unexpected(directory.error());
    return Opened{file, std::move(*structure), std::move(*directory)};
}

/// Tags of text end at a zero byte.
Result<void> Check_Zero_Bytes(const Save_Request& request)
{
    for (const auto& [text, name] : {std::pair{&request.comment, "description"}, {&request.script, "script"}})
        if (text->find('\0') != std::string::npos) return Failure(std::string("the ") + name + " contains a zero byte");
    return {};
}

/// Where the pixels of the new file come from.
enum class Pixel_Way {
    Parent,         ///< it is copied as it stands
    Parent_By_Tag,  ///< likewise, and another orientation turns it
    Parent_Samples, ///< its samples are turned and written again, with all their bits
    Bitmap,         ///< 8 bits a channel
};

/// The bitmap holds all there is, so that nothing is gained by the samples as they are stored.
bool Is_Like_A_Bitmap(const Tiff_Kind& kind)
{
    const bool plain = kind.colors == Tiff_Colors::RGB || (kind.colors == Tiff_Colors::Grey && !kind.white_is_zero);
    return plain && kind.bits == 8 && !kind.Holds_More();
}

Pixel_Way Way_Of_Turned_Pixels(const Opened& parent)
{
    const auto handle = Tiff_Handle::Open_To_Read(parent.file);
    if (!handle) return Pixel_Way::Bitmap;
    const auto kind = Kind_Of(handle->Get());
    if (!kind) return Pixel_Way::Bitmap;
    if (Has_Further_Pages(parent.structure, parent.directory)) return Pixel_Way::Parent_By_Tag; // they must stay
    if (Is_Like_A_Bitmap(*kind)) return Pixel_Way::Bitmap;
    if (Can_Move_Samples(*kind)) return Pixel_Way::Parent_Samples;
    return kind->Holds_More() ? Pixel_Way::Parent_By_Tag : Pixel_Way::Bitmap;
}

Pixel_Way Way_Of_Pixels(const Bitmap* bitmap, const Opened& parent, const Picture_Facts& facts)
{
    if (bitmap == nullptr) return Pixel_Way::Parent;
    const auto& origin = bitmap->Origin();
    const bool are_parents = origin && !origin->damaged && origin->identity == parent.file.Identity() &&
                             Coded_Data_Lies_Before(parent.structure.Size(), parent.structure, parent.directory);
    if (!are_parents) return Pixel_Way::Bitmap;
    if (origin->symmetry == Symmetry_Of_Orientation(facts.orientation)) return Pixel_Way::Parent;
    return Way_Of_Turned_Pixels(parent);
}

/// The facts of the parent when its orientation were another one.
Picture_Facts With_Orientation(Picture_Facts facts, int orientation)
{
    const bool swapped = Symmetry_Of_Orientation(facts.orientation).Swaps_Sides();
    if (swapped != Symmetry_Of_Orientation(orientation).Swaps_Sides()) {
        std::swap(facts.width, facts.height);
        std::swap(facts.horizontal_dpi, facts.vertical_dpi);
    }
    facts.orientation = orientation;
    return facts;
}

/// What the new file must give back when it is read.
struct Expectation {
    Picture_Facts facts;
    std::string comment;
    std::string script;
    std::uint64_t camera_payload = 0;
    bool comment_may_be_kept = false; ///< one that is too long for us to read stays
};

Result<std::uint64_t> Camera_Payload(const Opened& opened)
{
    const auto branch = Camera_Branch(opened.structure, opened.directory, Most_Camera_Bytes);
    if (!branch) return tl::make_unexpected(branch.error());
    return Branch_Payload(*branch);
}

Result<void> Verify(const std::string& path, const Expectation& expected)
{
    const auto file = Regular_File::Open(path);
    if (!file) return tl::make_unexpected(file.error());
    const auto opened = Opened_From(*file);
    if (!opened) return tl::make_unexpected(opened.error());
    const auto facts = Facts_Of_Tiff(opened->structure, opened->directory);
    const auto comment = Comment_Of_Tiff(opened->structure, opened->directory);
    const auto script = Script_Of_Tiff(opened->structure, opened->directory);
    const auto payload = Camera_Payload(*opened);
    const bool good = facts && facts->width == expected.facts.width && facts->height == expected.facts.height &&
                      facts->horizontal_dpi == expected.facts.horizontal_dpi &&
                      facts->vertical_dpi == expected.facts.vertical_dpi &&
                      (comment ? *comment == expected.comment : expected.comment_may_be_kept) && script &&
                      *script == expected.script && payload && *payload == expected.camera_payload;
    if (!good) return Failure("the file that was written does not read back as it should");
    return {};
}

/// The resolution of a request, both sides -1 for none.
std::pair<int, int> Resolution_Of(const Save_Request& request)
{
    const int horizontal = std::clamp(request.horizontal_dpi, 0, Largest_Tiff_Resolution);
    const int vertical = std::clamp(request.vertical_dpi, 0, Largest_Tiff_Resolution);
    if (horizontal == 0 && vertical == 0) return {-1, -1};
    return {horizontal == 0 ? vertical : horizontal, vertical == 0 ? horizontal : vertical};
}

/// `size` of the parent's picture as it stands is needed only where the request brings no pixels.
Expectation Expected_From(const Save_Request& request, const Opened* parent, const Picture_Facts& size = {})
{
    const auto [horizontal, vertical] = Resolution_Of(request);
    Expectation expected;
    expected.facts = {.width = request.bitmap ? request.bitmap->Width() : size.width,
                      .height = request.bitmap ? request.bitmap->Height() : size.height,
                      .horizontal_dpi = horizontal,
                      .vertical_dpi = vertical};
    expected.comment = request.comment;
    expected.script = request.script;
    if (parent)
        expected.comment_may_be_kept =
            request.comment.empty() && !Comment_Of_Tiff(parent->structure, parent->directory);
    return expected;
}

/// Copies the parent and changes what its first directory says. `facts` are those that the new file shall have.
Result<void> Write_Texts_Alone(Replacement_File& target, const Save_Request& request, const Opened& parent,
                               const Picture_Facts& facts)
{
    auto base = Base_Of(parent.structure, parent.directory);
    if (!base) return tl::make_unexpected(base.error());
    if (auto set = Set_Texts(base->fields, &parent.structure, &parent.directory, request.comment, request.script); !set)
        return set;
    if (parent.structure.Number(parent.directory, Tiff_Tag::Orientation, 1) != std::uint64_t(facts.orientation))
        Set_Field(base->fields,
                  Short_Field(parent.structure.Layout(), Tiff_Tag::Orientation, std::uint16_t(facts.orientation)));
    auto [horizontal, vertical] = Resolution_Of(request);
    // An unchanged resolution keeps its unit and its fractions.
    if (horizontal != facts.horizontal_dpi || vertical != facts.vertical_dpi) {
        if (Symmetry_Of_Orientation(facts.orientation).Swaps_Sides()) std::swap(horizontal, vertical);
        Set_Resolution(base->fields, parent.structure.Layout(), horizontal, vertical);
    }
    return Write_With_New_Tail(target, parent.structure, *base);
}

void Swap_Resolution(Tiff_Fields& fields)
{
    for (Tiff_Field& field : fields) {
        if (field.tag == Tiff_Tag::X_Resolution)
            field.tag = Tiff_Tag::Y_Resolution;
        else if (field.tag == Tiff_Tag::Y_Resolution)
            field.tag = Tiff_Tag::X_Resolution;
    }
}

/// Writes the pixels anew with everything that is carried along.
Result<void> Write_Anew(Replacement_File& target, const Tiff_Rows& rows, Tiff_Carried carried)
{
    const int descriptor = target.Descriptor();
    if (carried.head.size() % 2 != 0) carried.head.push_back(std::byte(0));
    if (auto head = target.Write(carried.head); !head) return head;
    auto pixels = Encode_Tiff_Strips(descriptor, carried.layout, rows, carried.compression);
    if (!pixels) return tl::make_unexpected(pixels.error());
    const off_t end = lseek(descriptor, 0, SEEK_END);
    if (end < 0) return Failure(System_Error_Text(errno), errno);
    const auto padding = std::size_t(end % 2);
    const std::byte zero[1] = {};
    if (auto padded = target.Write(std::span(zero, padding)); !padded) return padded;

    const std::uint64_t position = std::uint64_t(end) + padding;
    for (Tiff_Field& field : *pixels) Set_Field(carried.fields, std::move(field));
    const auto tail = Tail_Bytes(std::move(carried.fields), carried.layout, position, 0);
    if (!tail) return tl::make_unexpected(tail.error());
    if (auto written = target.Write(*tail); !written) return written;
    if (lseek(descriptor, 0, SEEK_SET) != 0) return Failure(System_Error_Text(errno), errno);
    return target.Write(Header_Bytes(carried.layout, position));
}

Result<void> Take_Texts(Tiff_Carried& carried, const Save_Request& request, const Opened* parent)
{
    if (auto set = Set_Texts(carried.fields, parent ? &parent->structure : nullptr,
                             parent ? &parent->directory : nullptr, request.comment, request.script);
        !set)
        return set;
    const auto [horizontal, vertical] = Resolution_Of(request);
    const auto facts = parent ? Facts_Of_Tiff(parent->structure, parent->directory) : Result<Picture_Facts>();
    if (!parent || !facts || horizontal != facts->horizontal_dpi || vertical != facts->vertical_dpi)
        Set_Resolution(carried.fields, carried.layout, horizontal, vertical);
    else if (Symmetry_Of_Orientation(facts->orientation).Swaps_Sides())
        Swap_Resolution(carried.fields);
    return {};
}

Result<Replacement_File> Open_Target(const Save_Request& request, const Expectation& expected)
{
    Replacement_Options options;
    options.take_attributes_from = Attributes_Source(request);
    options.verify = [&expected](const std::string& path) { return Verify(path, expected); };
    return Replacement_File::Open(request.target, std::move(options));
}

Result<void> Write_And_Commit(const Save_Request& request, const Opened* parent, const Tiff_Rows& rows,
                              Tiff_Carried carried)
{
    Expectation expected = Expected_From(request, parent);
    expected.camera_payload = carried.camera_payload;
    if (auto taken = Take_Texts(carried, request, parent); !taken) return taken;
    auto target = Open_Target(request, expected);
    if (!target) return tl::make_unexpected(target.error());
    if (auto written = Write_Anew(*target, rows, std::move(carried)); !written) return written;
    return target->Commit();
}

Result<void> Save_Bitmap_Pixels(const Save_Request& request, const Opened* parent, Tiff_Carried carried)
{
    const Bitmap_View pixels = request.bitmap->View();
    for (Tiff_Field& field : Color_Fields_Of_Bitmap(carried.layout, pixels))
        Set_Field(carried.fields, std::move(field));
    return Write_And_Commit(request, parent, Rows_Of_Bitmap(pixels), std::move(carried));
}

Result<void> Save_Turned_Samples(const Save_Request& request, const Opened& parent)
{
    auto carried = Carried_From_Tiff(parent.structure, parent.directory, /*channels=*/0);
    if (!carried) return Failure(request.parent + ": " + carried.error().text);
    const auto samples = Tiff_Samples::Read(parent.file);
    if (!samples) return Failure(request.parent + ": " + samples.error().text);
    const Tiff_Rows rows = samples->Turned(request.bitmap->Origin()->symmetry);
    return Write_And_Commit(request, &parent, rows, std::move(*carried));
}

Result<void> Save_Parent_As_It_Stands(const Save_Request& request, const Opened& parent, const Picture_Facts& facts)
{
    Expectation expected = Expected_From(request, &parent, facts);
    const auto payload = Camera_Payload(parent);
    if (!payload) return tl::make_unexpected(payload.error());
    expected.camera_payload = *payload;
    auto target = Open_Target(request, expected);
    if (!target) return tl::make_unexpected(target.error());
    if (auto written = Write_Texts_Alone(*target, request, parent, facts); !written) return written;
    return target->Commit();
}

Result<void> Save_From_Tiff(const Save_Request& request, const Regular_File& file)
{
    const auto parent = Opened_From(file);
    if (!parent) return Failure(request.parent + ": " + parent.error().text);
    const auto facts = Facts_Of_Tiff(parent->structure, parent->directory);
    if (!facts) return Failure(request.parent + ": " + facts.error().text);
    switch (Way_Of_Pixels(request.bitmap, *parent, *facts)) {
    case Pixel_Way::Parent: return Save_Parent_As_It_Stands(request, *parent, *facts);
    case Pixel_Way::Parent_By_Tag: {
        const int orientation = Orientation_Of_Symmetry(request.bitmap->Origin()->symmetry);
        return Save_Parent_As_It_Stands(request, *parent, With_Orientation(*facts, orientation));
    }
    case Pixel_Way::Parent_Samples: return Save_Turned_Samples(request, *parent);
    case Pixel_Way::Bitmap: break;
    }
    auto carried = Carried_From_Tiff(parent->structure, parent->directory, request.bitmap->Bytes_Per_Pixel());
    if (!carried) return Failure(request.parent + ": " + carried.error().text);
    return Save_Bitmap_Pixels(request, &*parent, std::move(*carried));
}

Result<void> Save_Tiff(Save_Request request)
{
    if (auto good = Check_Script(request); !good) return good;
    auto comment = Comment_To_Store(request, Longest_Comment());
    if (!comment) return tl::make_unexpected(comment.error());
    request.comment = std::move(*comment);
    if (request.quality > 100 || request.quality < Quality_Of_Parent) return Failure("the quality is not 0 to 100");
    if (auto good = Check_Zero_Bytes(request); !good) return good;
    if (auto good = Check_Damage(request); !good) return good;
    if (request.parent.empty() && request.bitmap != nullptr) return Save_Bitmap_Pixels(request, nullptr, {});
    const auto file = Regular_File::Open(request.parent);
    if (!file) return tl::make_unexpected(file.error());
    const auto type =
        request.parent_type == Image_File_Type::Unknown ? Type_From_Signature(*file) : request.parent_type;
    if (type == Image_File_Type::TIFF) return Save_From_Tiff(request, *file);
    if (request.bitmap == nullptr) return Failure("there are no pixels to save");
    if (type != Image_File_Type::JPEG) return Failure(request.parent + ": is neither a JPEG nor a TIFF file");
    auto carried = Carried_From_Jpeg(*file, request.bitmap->Bytes_Per_Pixel());
    if (!carried) return Failure(request.parent + ": " + carried.error().text);
    return Save_Bitmap_Pixels(request, nullptr, std::move(*carried));
}

class Tiff_Codec final : public Codec {
public:
    Result<Picture_Facts> Read_Facts(const Regular_File& file) const override
    {
        return With_First(file, Facts_Of_Tiff);
    }
    Result<std::string> Read_Comment(const Regular_File& file) const override
    {
        return With_First(file, Comment_Of_Tiff);
    }
    Result<std::string> Read_Script(const Regular_File& file) const override
    {
        return With_First(file, Script_Of_Tiff);
    }
    Result<std::vector<std::byte>> Read_EXIF(const Regular_File& file) const override
    {
        const auto structure = Tiff_Structure::Open(file);
        if (!structure) return tl::make_unexpected(structure.error());
        return Camera_Block_Of_Tiff(*structure, std::uint64_t(Current_Limits().exif_bytes));
    }
    Result<std::vector<std::byte>> Read_Profile(const Regular_File& file) const override
    {
        return Value_Of(file, Tiff_Tag::ICC_Profile);
    }
    Result<std::vector<std::byte>> Read_XMP(const Regular_File& file) const override
    {
        return Value_Of(file, Tiff_Tag::XMP);
    }
    Result<std::vector<std::byte>> Read_Resources(const Regular_File& file) const override
    {
        auto iptc = Value_Of(file, Tiff_Tag::IPTC);
        if (!iptc) return iptc;
        auto resources = Value_Of(file, Tiff_Tag::Photoshop);
        if (!resources) return resources;
        return Resources_With_IPTC(std::move(*resources), IPTC_In_Order(std::move(*iptc)));
    }
    Result<Bitmap> Load(const Regular_File& file, int scale_divisor) const override
    {
        return Load_Tiff(file, scale_divisor);
    }
    bool Is_Complete(const Regular_File& file) const override
    {
        const auto opened = Opened_From(file);
        return opened && Coded_Data_Lies_Before(std::uint64_t(file.Size()), opened->structure, opened->directory);
    }
    bool Keeps_All(const Bitmap& bitmap, const Regular_File& parent) const override
    {
        if (Codec::Keeps_All(bitmap, parent)) return true;
        const auto opened = Opened_From(parent);
        const auto facts = opened ? Facts_Of_Tiff(opened->structure, opened->directory) : Result<Picture_Facts>();
        return opened && facts && Way_Of_Pixels(&bitmap, *opened, *facts) != Pixel_Way::Bitmap;
    }
    Result<void> Save(const Save_Request& request) const override { return Save_Tiff(request); }

private:
    /// Empty where there is none.
    static Result<std::vector<std::byte>> Value_Of(const Regular_File& file, std::uint16_t tag)
    {
        return With_First(file, [tag](const Tiff_Structure& structure, const Tiff_Directory& directory) {
            const Tiff_Entry* entry = directory.Find(tag);
            return entry && structure.Holds_Some_Of(*entry) ? structure.Value(*entry, Most_Camera_Bytes)
                                                            : Result<std::vector<std::byte>>(std::vector<std::byte>());
        });
    }
    template <class Reader>
    static auto With_First(const Regular_File& file, Reader reader)
        -> decltype(reader(std::declval<const Tiff_Structure&>(), std::declval<const Tiff_Directory&>()))
    {
        const auto opened = Opened_From(file);
        if (!opened) return tl::make_unexpected(opened.error());
        return reader(opened->structure, opened->directory);
    }
};

} // namespace

const Codec& TIFF_Codec()
{
    // Never destroyed: threads may still read files when a program exits.
    static const Tiff_Codec* const codec = new Tiff_Codec;
    return *codec;
}
