#include "bkimgutl/codecs/Tiff_Tail.h"

#include "bkimgutl/codecs/Tiff_Kind.h"
#include "frame/files/Limits.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr std::string_view Mark("HVTail\0\0", 8);
constexpr std::size_t Mark_Size = 16;

/// Where the old tail starts; the file's size when there is none.
std::uint64_t Start_Of_Tail(const Tiff_Structure& structure, const Tiff_Directory& directory)
{
    std::byte mark[Mark_Size];
    const std::uint64_t size = structure.Size();
    if (size < Mark_Size || !structure.Read(size - Mark_Size, mark)) return size;
    if (std::memcmp(mark, Mark.data(), Mark.size()) != 0) return size;
    const std::uint64_t position = structure.Layout().Get(mark + Mark.size(), 8);
    return position == directory.position ? position : size;
}

bool Holds_Positions(const Tiff_Entry& entry)
{
    switch (entry.tag) {
    case Tiff_Tag::Strip_Offsets:
    case Tiff_Tag::Tile_Offsets:
    case Tiff_Tag::Sub_Directories:
    case Tiff_Tag::EXIF_Directory:
    case Tiff_Tag::GPS_Directory:
    case Tiff_Tag::Interoperability_Directory: return true;
    default: return entry.type == Tiff_Type::IFD || entry.type == Tiff_Type::IFD8;
    }
}

/// True when the file can do without everything from `start` on but the directory's own values.
bool Can_Be_Cut(const Tiff_Structure& structure, const Tiff_Directory& directory, std::uint64_t start)
{
    if (directory.next >= start || !Coded_Data_Lies_Before(start, structure, directory)) return false;
    return std::none_of(directory.entries.begin(), directory.entries.end(), [&](const Tiff_Entry& entry) {
        if (!Holds_Positions(entry)) return false;
        const auto positions = structure.Numbers(entry, std::uint64_t(Current_Limits().tiff_strips));
        if (!positions) return true;
        return std::any_of(positions->begin(), positions->end(), [start](std::uint64_t at) { return at >= start; });
    });
}

} // namespace

bool Coded_Data_Lies_Before(std::uint64_t end, const Tiff_Structure& structure, const Tiff_Directory& directory)
{
    // What a value takes from the header, colours of a palette for example, would change with the header.
    const std::uint64_t header = structure.Layout().Header_Size();
    if (std::any_of(directory.entries.begin(), directory.entries.end(),
                    [header](const Tiff_Entry& entry) { return !entry.inside && entry.position < header; }))
        return false;
    const bool tiled = directory.Find(Tiff_Tag::Tile_Offsets) != nullptr;
    // Readers take the sizes of one for those of the other, whichever comes last, and a save sorts the entries.
    if (directory.Find(tiled ? Tiff_Tag::Strip_Byte_Counts : Tiff_Tag::Tile_Byte_Counts) != nullptr) return false;
    const Tiff_Entry* at = directory.Find(tiled ? Tiff_Tag::Tile_Offsets : Tiff_Tag::Strip_Offsets);
    const Tiff_Entry* sizes = directory.Find(tiled ? Tiff_Tag::Tile_Byte_Counts : Tiff_Tag::Strip_Byte_Counts);
    if (at == nullptr || sizes == nullptr || at->count != sizes->count) return false;
    if (at->count != Tiff_Piece_Count(structure, directory)) return false;
    const auto most = std::uint64_t(Current_Limits().tiff_strips);
    const auto starts = structure.Numbers(*at, most), lengths = structure.Numbers(*sizes, most);
    if (!starts || !lengths) return false;
    for (std::size_t i = 0; i < starts->size(); ++i) {
        const std::uint64_t start = starts->at(i), length = lengths->at(i);
        if (start < header || start > end || length > end - start || length == 0) return false;
    }
    return true;
}

Result<Tiff_Base> Base_Of(const Tiff_Structure& structure, const Tiff_Directory& directory)
{
    std::uint64_t start = Start_Of_Tail(structure, directory);
    if (start < structure.Size() && !Can_Be_Cut(structure, directory, start)) start = structure.Size();
    Tiff_Base base{.size = start, .next = directory.next};
    for (const Tiff_Entry& entry : directory.entries) {
        const bool in_tail = !entry.inside && entry.size <= structure.Size() &&
                             entry.position <= structure.Size() - entry.size && entry.position + entry.size > start;
        if (!in_tail) {
            base.fields.push_back(Kept_Field(entry));
            continue;
        }
        auto value = structure.Value(entry, structure.Size());
        if (!value) return tl::make_unexpected(value.error());
        base.fields.push_back({.tag = entry.tag, .type = entry.type, .count = entry.count, .value = std::move(*value)});
    }
    return base;
}

Result<std::vector<std::byte>> Tail_Bytes(Tiff_Fields fields, const Tiff_Layout& layout, std::uint64_t position,
                                          std::uint64_t next)
{
    auto bytes = Directory_Bytes(std::move(fields), layout, position, next);
    if (!bytes) return bytes;
    const std::size_t at = bytes->size();
    bytes->resize(at + Mark_Size);
    std::memcpy(bytes->data() + at, Mark.data(), Mark.size());
    layout.Put(bytes->data() + at + Mark.size(), 8, position);
    return bytes;
}

std::vector<std::byte> Header_Bytes(const Tiff_Layout& layout, std::uint64_t position)
{
    std::vector<std::byte> header(layout.Header_Size());
    header[0] = header[1] = std::byte(layout.little_endian ? 'I' : 'M');
    layout.Put(header.data() + 2, 2, layout.big ? 43 : 42);
    if (layout.big) layout.Put(header.data() + 4, 2, 8);
    layout.Put(header.data() + header.size() - layout.Field_Size(), layout.Field_Size(), position);
    return header;
}

Result<void> Write_With_New_Tail(Replacement_File& target, const Tiff_Structure& source, const Tiff_Base& base)
{
    const std::uint64_t position = base.size + base.size % 2;
    const auto tail = Tail_Bytes(base.fields, source.Layout(), position, base.next);
    if (!tail) return tl::make_unexpected(tail.error());
    if (auto header = target.Write(Header_Bytes(source.Layout(), position)); !header) return header;
    std::vector<std::byte> block(1 << 20);
    for (std::uint64_t at = source.Layout().Header_Size(); at < base.size;) {
        const auto part = std::span(block).first(std::min<std::uint64_t>(block.size(), base.size - at));
        if (auto read = source.Read(at, part); !read) return read;
        if (auto written = target.Write(part); !written) return written;
        at += part.size();
    }
    const std::byte padding[1] = {};
    if (auto padded = target.Write(std::span(padding, position - base.size)); !padded) return padded;
    return target.Write(*tail);
}
