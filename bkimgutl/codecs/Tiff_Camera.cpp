#include "bkimgutl/codecs/Tiff_Camera.h"

#include "frame/files/Limits.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <set>
#include <string>

namespace {

bool Points_To_Directory(std::uint16_t tag)
{
    return tag == Tiff_Tag::EXIF_Directory || tag == Tiff_Tag::GPS_Directory ||
           tag == Tiff_Tag::Interoperability_Directory;
}

tl::unexpected<Error> Too_Large(std::uint64_t most_bytes)
{
    return Failure("the camera data is larger than " + std::to_string(most_bytes) + " bytes");
}

class Branch_Reader {
public:
    Branch_Reader(const Tiff_Structure& structure, std::uint64_t most_bytes) : structure_(structure), left_(most_bytes)
    {}

    bool Overrun() const { return overrun_; }

    void Read_Child(const Tiff_Directory& parent, std::uint16_t tag, Tiff_Branch& into)
    {
        const std::uint64_t position = structure_.Number(parent, tag, 0);
        // Each directory once, and no more of them than the limit: the shape is foreign.
        if (position == 0 || int(visited_.size()) >= Current_Limits().tiff_directories) return;
        if (!visited_.insert(position).second) return;
        const auto directory = structure_.Read_Directory(position);
        if (!directory) return;
        Tiff_Branch child;
        for (const Tiff_Entry& entry : directory->entries) Take(entry, *directory, child);
        child.tag = tag;
        into.children.push_back(std::move(child));
    }

private:
    void Take(const Tiff_Entry& entry, const Tiff_Directory& directory, Tiff_Branch& into)
    {
        if (Points_To_Directory(entry.tag)) return Read_Child(directory, entry.tag, into);
        if (entry.size <= structure_.Size() && entry.size > left_) {
            overrun_ = true;
            return;
        }
        auto value = structure_.Value(entry, left_);
        if (!value) return;
        left_ -= value->size();
        if (entry.tag == Tiff_Tag::Maker_Note && !entry.inside) into.maker_note_position = entry.position;
        into.fields.push_back({.tag = entry.tag, .type = entry.type, .count = entry.count, .value = std::move(*value)});
    }

    const Tiff_Structure& structure_;
    std::uint64_t left_;
    bool overrun_ = false;
    std::set<std::uint64_t> visited_;
};

/// Types that only BigTIFF has become their 4-byte relatives where the values fit; what does not fit is left out.
void Make_Classic(Tiff_Branch& branch, const Tiff_Layout& layout)
{
    std::erase_if(branch.fields, [&layout](Tiff_Field& field) {
        if (field.type < Tiff_Type::Long8) return false;
        std::vector<std::byte> value(field.count * 4);
        for (std::size_t i = 0; i < field.count; ++i) {
            const std::uint64_t number = layout.Get(field.value.data() + i * 8, 8);
            if (number > std::numeric_limits<std::uint32_t>::max()) return true;
            layout.Put(value.data() + i * 4, 4, number);
        }
        field.type = Tiff_Type::Long;
        field.value = std::move(value);
        return false;
    });
    for (auto& child : branch.children) Make_Classic(child, layout);
}

const Tiff_Branch* Branch_With_Maker_Note(const Tiff_Branch& branch)
{
    if (branch.maker_note_position != 0) return &branch;
    for (const auto& child : branch.children)
        if (const Tiff_Branch* found = Branch_With_Maker_Note(child)) return found;
    return nullptr;
}

} // namespace

Result<Tiff_Branch> Camera_Branch(const Tiff_Structure& structure, const Tiff_Directory& directory,
                                  std::uint64_t most_bytes)
{
    Tiff_Branch branch;
    Branch_Reader reader(structure, most_bytes);
    reader.Read_Child(directory, Tiff_Tag::EXIF_Directory, branch);
    reader.Read_Child(directory, Tiff_Tag::GPS_Directory, branch);
    if (reader.Overrun()) return Too_Large(most_bytes);
    return branch;
}

std::uint64_t Branch_Payload(const Tiff_Branch& branch)
{
    std::uint64_t sum = 0;
    for (const Tiff_Field& field : branch.fields) sum += field.value.size();
    for (const auto& child : branch.children) sum += Branch_Payload(child);
    return sum;
}

void Tiff_Assembly::Reserve_Maker_Note(const Tiff_Branch& branch, std::uint64_t most_position)
{
    const Tiff_Branch* owner = Branch_With_Maker_Note(branch);
    const Tiff_Field* note = owner ? Find_Field(owner->fields, Tiff_Tag::Maker_Note) : nullptr;
    if (note == nullptr || owner->maker_note_position < bytes_.size()) return;
    if (note->value.size() > most_position || owner->maker_note_position > most_position - note->value.size()) return;
    reserved_ = owner->maker_note_position;
    note_ = note->value;
}

std::uint64_t Tiff_Assembly::Room_For(std::size_t size) const
{
    const std::uint64_t position = bytes_.size() + bytes_.size() % 2;
    const std::uint64_t reserved_end = reserved_ + note_.size();
    const bool meets_reserved = !note_.empty() && position < reserved_end && position + size > reserved_;
    return meets_reserved ? reserved_end + reserved_end % 2 : position;
}

Result<std::uint64_t> Tiff_Assembly::Place(Tiff_Fields fields, std::uint64_t maker_note_position)
{
    for (Tiff_Field& field : fields) {
        if (note_.empty() || maker_note_position != reserved_ || field.tag != Tiff_Tag::Maker_Note) continue;
        field.as_it_stands = true;
        layout_.Put(field.field.data(), layout_.Field_Size(), reserved_);
    }
    const auto measured = Directory_Bytes(fields, layout_, 0, 0);
    if (!measured) return tl::make_unexpected(measured.error());
    const std::uint64_t position = Room_For(measured->size());
    const auto encoded = Directory_Bytes(std::move(fields), layout_, position, 0);
    if (!encoded) return tl::make_unexpected(encoded.error());
    bytes_.resize(position);
    bytes_.insert(bytes_.end(), encoded->begin(), encoded->end());
    return position;
}

Result<Tiff_Fields> Tiff_Assembly::Place_Children(const Tiff_Branch& branch)
{
    Tiff_Fields pointers;
    for (const auto& child : branch.children) {
        auto below = Place_Children(child); // two levels at most, see Branch_Reader
        if (!below) return below;
        Tiff_Fields fields = child.fields;
        fields.insert(fields.end(), below->begin(), below->end());
        if (fields.empty()) continue;
        const auto position = Place(std::move(fields), child.maker_note_position);
        if (!position) return tl::make_unexpected(position.error());
        pointers.push_back(Offset_Field(layout_, child.tag, *position));
    }
    return pointers;
}

std::vector<std::byte> Tiff_Assembly::Finish() &&
{
    if (!note_.empty()) {
        bytes_.resize(std::max<std::size_t>(bytes_.size(), reserved_ + note_.size()));
        std::copy(note_.begin(), note_.end(), bytes_.begin() + std::ptrdiff_t(reserved_));
    }
    return std::move(bytes_);
}

namespace {

/// Tags of the first directory that a camera block has in its own first directory, or that some programs put there: they
/// tell about the picture, not about its pixels.
struct Tag_Range {
    std::uint16_t first, last;
};
constexpr Tag_Range Camera_Tags[] = {
    {269, 269},     // name of the document
    {271, 272},     // make, model
    {274, 274},     // orientation
    {282, 283},     // resolution
    {285, 285},     // name of the page
    {296, 296},     // unit of the resolution
    {305, 306},     // software, date and time
    {315, 316},     // artist, host computer
    {18246, 18246}, // rating in stars
    {18249, 18249}, // rating in percent
    {33432, 33437}, // copyright, exposure time, F number
    {34850, 34852}, // exposure program
    {34855, 34867}, // sensitivity, time zone, self-timer
    {36867, 36882}, // dates taken and digitized, time zones
    {37121, 37399}, // exposure, light, lens, subject
    {40091, 40095}, // title, comment, author, keywords and subject of a desktop's file properties
    {50341, 50341}, // how to print
};

bool Is_Camera_Tag(std::uint16_t tag)
{
    return std::any_of(std::begin(Camera_Tags), std::end(Camera_Tags),
                       [tag](const Tag_Range& range) { return tag >= range.first && tag <= range.last; });
}

/// Orientation and resolution, which nearly every TIFF file has, say nothing of a camera.
bool Tells_Of_A_Camera(const Tiff_Branch& root)
{
    constexpr std::uint16_t plain[] = {Tiff_Tag::Orientation, Tiff_Tag::X_Resolution, Tiff_Tag::Y_Resolution,
                                       Tiff_Tag::Resolution_Unit};
    return !root.children.empty() || std::any_of(root.fields.begin(), root.fields.end(), [&](const auto& field) {
        return std::find(std::begin(plain), std::end(plain), field.tag) == std::end(plain);
    });
}

/// The directory of the camera tags stands at 8, as readers of EXIF blocks expect; its children behind it.
Result<std::vector<std::byte>> Classic_Structure(Tiff_Branch root, const Tiff_Layout& layout, std::uint64_t most_bytes)
{
    Tiff_Fields first = root.fields;
    for (const auto& child : root.children) first.push_back(Offset_Field(layout, child.tag, 0));
    const auto measured = Directory_Bytes(first, layout, 8, 0);
    if (!measured) return measured;
    Tiff_Assembly assembly(layout, 8 + measured->size());
    assembly.Reserve_Maker_Note(root, most_bytes);
    const auto pointers = assembly.Place_Children(root);
    if (!pointers) return tl::make_unexpected(pointers.error());
    for (const auto& child : root.children) Remove_Field(first, child.tag);
    first.insert(first.end(), pointers->begin(), pointers->end());
    const auto directory = Directory_Bytes(std::move(first), layout, 8, 0);
    if (!directory) return directory;
    auto bytes = std::move(assembly).Finish();
    std::copy(directory->begin(), directory->end(), bytes.begin() + 8);
    bytes[0] = bytes[1] = std::byte(layout.little_endian ? 'I' : 'M');
    layout.Put(bytes.data() + 2, 2, 42);
    layout.Put(bytes.data() + 4, 4, 8);
    return bytes;
}

} // namespace

Result<std::vector<std::byte>> Camera_Block_Of_Tiff(const Tiff_Structure& structure, std::uint64_t most_bytes)
{
    const auto directory = structure.First_Directory();
    if (!directory) return tl::make_unexpected(directory.error());
    auto root = Camera_Branch(structure, *directory, most_bytes);
    if (!root) return tl::make_unexpected(root.error());
    for (const Tiff_Entry& entry : directory->entries) {
        if (!Is_Camera_Tag(entry.tag) || Find_Field(root->fields, entry.tag) != nullptr) continue;
        auto value = structure.Value(entry, most_bytes);
        if (!value && entry.size <= structure.Size() && entry.size > most_bytes) return Too_Large(most_bytes);
        if (value)
            root->fields.push_back(
                {.tag = entry.tag, .type = entry.type, .count = entry.count, .value = std::move(*value)});
    }
    if (!Tells_Of_A_Camera(*root)) return std::vector<std::byte>();
    const Tiff_Layout layout{.little_endian = structure.Layout().little_endian, .big = false};
    Make_Classic(*root, layout);
    constexpr std::string_view head("Exif\0\0", 6);
    auto bytes = Classic_Structure(*root, layout, most_bytes - head.size());
    // The room that is left free for a maker note may be just what is missing.
    if (bytes && bytes->size() + head.size() > most_bytes) bytes = Classic_Structure(std::move(*root), layout, 0);
    if (!bytes) return bytes;
    if (bytes->size() + head.size() > most_bytes) return Too_Large(most_bytes);
    std::vector<std::byte> block(head.size() + bytes->size());
    std::memcpy(block.data(), head.data(), head.size());
    std::copy(bytes->begin(), bytes->end(), block.begin() + std::ptrdiff_t(head.size()));
    return block;
}
