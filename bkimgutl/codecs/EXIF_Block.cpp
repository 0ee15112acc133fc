#include "bkimgutl/codecs/EXIF_Block.h"

#include "bkimgutl/codecs/Codec.h"
#include "frame/files/Limits.h"

#include <algorithm>
#include <cstring>

// "Exif" 0 0 | II or MM, 42, first directory | ... directories: count, entries of 12 bytes, offset of the next one ...
// Offsets inside count from the byte order mark, which stands at byte 6.

namespace {

constexpr std::size_t TIFF_At = EXIF_View::Head.size();
constexpr std::size_t Entry_Bytes = 12;

enum Tag : std::uint16_t {
    Tag_Strip_Offsets = 273,
    Tag_Orientation = 274,
    Tag_Strip_Byte_Counts = 279,
    Tag_Horizontal_Resolution = 282,
    Tag_Vertical_Resolution = 283,
    Tag_Resolution_Unit = 296,
    Tag_Thumbnail_Offset = 513,
    Tag_Thumbnail_Length = 514,
    Tag_EXIF_Directory = 34665,
    Tag_GPS_Directory = 34853,
    Tag_Interoperability_Directory = 40965,
};

std::size_t Bytes_Of_Type(std::uint16_t type)
{
    constexpr std::uint8_t bytes[] = {0, 1, 1, 2, 4, 8, 1, 1, 2, 4, 8, 4, 8, 4};
    return type < std::size(bytes) ? bytes[type] : 0;
}

struct Byte_Range {
    std::size_t from = 0;
    std::size_t bytes = 0;
    bool Overlaps(const Byte_Range& other) const
    {
        return from < other.from + other.bytes && other.from < from + bytes;
    }
};

/// What a directory itself and its values occupy.
void Add_Ranges(const EXIF_View& view, std::size_t directory, std::vector<Byte_Range>& ranges)
{
    if (directory == 0) return;
    const int count = view.Entry_Count(directory);
    ranges.push_back({directory, 2 + std::size_t(count) * Entry_Bytes + 4});
    for (int i = 0; i < count; ++i) {
        if (const auto entry = view.Entry(directory, i)) ranges.push_back({entry->value_at, entry->bytes});
    }
}

std::vector<Byte_Range> Occupied_Ranges(const EXIF_View& view, std::size_t thumbnail_directory)
{
    std::vector<Byte_Range> ranges{{0, TIFF_At + 8}};
    const std::size_t first = view.First_Directory();
    const std::size_t camera = view.Sub_Directory(first, Tag_EXIF_Directory);
    Add_Ranges(view, first, ranges);
    Add_Ranges(view, camera, ranges);
    Add_Ranges(view, view.Sub_Directory(first, Tag_GPS_Directory), ranges);
    Add_Ranges(view, view.Sub_Directory(camera, Tag_Interoperability_Directory), ranges);
    Add_Ranges(view, thumbnail_directory, ranges);
    return ranges;
}

/// The pieces of a thumbnail: a JPEG stream, or strips of plain pixels.
std::vector<Byte_Range> Thumbnail_Ranges(const EXIF_View& view, std::size_t directory)
{
    std::vector<Byte_Range> ranges;
    const auto add = [&](std::uint16_t offset_tag, std::uint16_t length_tag) {
        const auto offsets = view.Find(directory, offset_tag);
        const auto lengths = view.Find(directory, length_tag);
        if (!offsets || !lengths) return;
        for (std::uint32_t i = 0; i < std::min(offsets->count, lengths->count); ++i) {
            const auto offset = view.Number(*offsets, i);
            const auto length = view.Number(*lengths, i);
            if (!offset || !length || *offset >= view.Size() - TIFF_At) continue;
            const std::size_t from = TIFF_At + *offset;
            // A thumbnail that claims more than there is ends with the block.
            ranges.push_back({from, std::min<std::size_t>(*length, view.Size() - from)});
        }
    };
    add(Tag_Thumbnail_Offset, Tag_Thumbnail_Length);
    add(Tag_Strip_Offsets, Tag_Strip_Byte_Counts);
    return ranges;
}

void Put_Bytes(std::vector<std::byte>& block, const EXIF_View& view, std::size_t at, std::size_t bytes,
               std::uint32_t number)
{
    for (std::size_t i = 0; i < bytes; ++i) {
        const std::size_t shift = 8 * (view.Is_Big_Endian() ? bytes - 1 - i : i);
        block[at + i] = std::byte(shift < 32 ? number >> shift : 0);
    }
}

void Put_Number(std::vector<std::byte>& block, const EXIF_View& view, const EXIF_Entry& entry, std::uint32_t number)
{
    Put_Bytes(block, view, entry.value_at, Bytes_Of_Type(entry.type), number);
}

void Put_Ratio(std::vector<std::byte>& block, const EXIF_View& view, const EXIF_Entry& entry, std::uint32_t number)
{
    Put_Bytes(block, view, entry.value_at, 4, number);
    Put_Bytes(block, view, entry.value_at + 4, 4, 1);
}

/// The pixels become zeros and the directory is unlinked, so that no reader offers a broken thumbnail. Nothing is
/// touched that anything else in the block uses.
void Blank_Thumbnail(std::vector<std::byte>& block, const EXIF_View& view)
{
    const std::size_t first = view.First_Directory();
    const std::size_t directory = view.Next_Directory(first);
    if (directory == 0) return;
    const auto occupied = Occupied_Ranges(view, directory);
    const auto pieces = Thumbnail_Ranges(view, directory);
    for (const Byte_Range& piece : pieces) {
        const bool shared = std::any_of(occupied.begin(), occupied.end(),
                                        [&](const Byte_Range& range) { return range.Overlaps(piece); });
        if (!shared) std::fill_n(block.begin() + std::ptrdiff_t(piece.from), piece.bytes, std::byte(0));
    }
    if (!pieces.empty()) std::fill_n(block.begin() + std::ptrdiff_t(view.Next_Field(first)), 4, std::byte(0));
}

} // namespace

std::optional<EXIF_View> EXIF_View::Of(std::span<const std::byte> block)
{
    if (block.size() < TIFF_At + 8 || std::memcmp(block.data(), Head.data(), Head.size()) != 0) return std::nullopt;
    const auto first = std::to_integer<unsigned char>(block[TIFF_At]);
    if (block[TIFF_At] != block[TIFF_At + 1] || (first != 'I' && first != 'M')) return std::nullopt;
    const EXIF_View view(block, first == 'M');
    if (view.Short_At(TIFF_At + 2) != 42) return std::nullopt;
    return view;
}

std::uint16_t EXIF_View::Short_At(std::size_t at) const
{
    if (at + 2 > block_.size()) return 0;
    const unsigned a = std::to_integer<unsigned>(block_[at]);
    const unsigned b = std::to_integer<unsigned>(block_[at + 1]);
    return std::uint16_t(big_endian_ ? a << 8 | b : b << 8 | a);
}

std::uint32_t EXIF_View::Long_At(std::size_t at) const
{
    const std::uint32_t first = Short_At(at);
    const std::uint32_t second = Short_At(at + 2);
    return big_endian_ ? first << 16 | second : second << 16 | first;
}

std::size_t EXIF_View::Place_Of(std::uint32_t offset) const
{
    const std::uint64_t place = std::uint64_t(TIFF_At) + offset;
    return offset >= 8 && place + 2 <= block_.size() ? std::size_t(place) : 0;
}

std::size_t EXIF_View::First_Directory() const
{
    return Place_Of(Long_At(TIFF_At + 4));
}

int EXIF_View::Entry_Count(std::size_t directory) const
{
    if (directory == 0) return 0;
    const std::size_t fitting = (block_.size() - directory - 2) / Entry_Bytes;
    const std::size_t most = std::size_t(Current_Limits().tiff_directory_entries);
    return int(std::min({std::size_t(Short_At(directory)), fitting, most}));
}

std::size_t EXIF_View::Next_Field(std::size_t directory) const
{
    if (directory == 0) return 0;
    const std::size_t at = directory + 2 + std::size_t(Short_At(directory)) * Entry_Bytes;
    return at + 4 <= block_.size() ? at : 0;
}

std::size_t EXIF_View::Next_Directory(std::size_t directory) const
{
    const std::size_t at = Next_Field(directory);
    const std::size_t next = at == 0 ? 0 : Place_Of(Long_At(at));
    return next == directory ? 0 : next;
}

std::optional<EXIF_Entry> EXIF_View::Entry(std::size_t directory, int index) const
{
    if (index < 0 || index >= Entry_Count(directory)) return std::nullopt;
    const std::size_t at = directory + 2 + std::size_t(index) * Entry_Bytes;
    EXIF_Entry entry{.tag = Short_At(at), .type = Short_At(at + 2), .count = Long_At(at + 4)};
    const std::uint64_t bytes = std::uint64_t(entry.count) * Bytes_Of_Type(entry.type);
    if (bytes == 0) return std::nullopt;
    const std::uint64_t value_at = bytes <= 4 ? at + 8 : std::uint64_t(TIFF_At) + Long_At(at + 8);
    if (value_at + bytes > block_.size()) return std::nullopt;
    entry.value_at = std::size_t(value_at);
    entry.bytes = std::size_t(bytes);
    return entry;
}

std::optional<EXIF_Entry> EXIF_View::Find(std::size_t directory, std::uint16_t tag) const
{
    const int count = Entry_Count(directory);
    for (int i = 0; i < count; ++i) {
        const auto entry = Entry(directory, i);
        if (entry && entry->tag == tag) return entry;
    }
    return std::nullopt;
}

std::optional<std::uint32_t> EXIF_View::Number(const EXIF_Entry& entry, std::uint32_t index) const
{
    if (index >= entry.count) return std::nullopt;
    switch (entry.type) {
    case 1: return std::to_integer<std::uint32_t>(block_[entry.value_at + index]);
    case 3: return Short_At(entry.value_at + std::size_t(index) * 2);
    case 4:
    case 13: return Long_At(entry.value_at + std::size_t(index) * 4);
    default: return std::nullopt;
    }
}

std::size_t EXIF_View::Sub_Directory(std::size_t directory, std::uint16_t tag) const
{
    const auto entry = Find(directory, tag);
    const auto offset = entry ? Number(*entry) : std::nullopt;
    return offset ? Place_Of(*offset) : 0;
}

std::optional<double> EXIF_View::Ratio(const EXIF_Entry& entry) const
{
    if (entry.type != 5) return std::nullopt;
    const std::uint32_t denominator = Long_At(entry.value_at + 4);
    if (denominator == 0) return std::nullopt;
    return double(Long_At(entry.value_at)) / denominator;
}

void Mend_EXIF_Block(std::vector<std::byte>& block, int orientation, bool blank_thumbnail)
{
    const auto view = EXIF_View::Of(block);
    if (!view) return;
    const auto entry = view->Find(view->First_Directory(), Tag_Orientation);
    if (entry && view->Number(*entry)) Put_Number(block, *view, *entry, std::uint32_t(orientation));
    if (blank_thumbnail) Blank_Thumbnail(block, *view);
}

void Put_Resolution_In_EXIF_Block(std::vector<std::byte>& block, int horizontal, int vertical)
{
    const auto view = EXIF_View::Of(block);
    if (!view || horizontal < 1 || vertical < 1) return;
    constexpr std::uint32_t inch = 2;
    constexpr std::uint16_t ratio_type = 5;
    const std::size_t directory = view->First_Directory();
    const auto unit = view->Find(directory, Tag_Resolution_Unit);
    if (unit && view->Number(*unit)) Put_Number(block, *view, *unit, inch);
    for (const auto& [tag, value] :
         {std::pair{Tag_Horizontal_Resolution, horizontal}, {Tag_Vertical_Resolution, vertical}})
        if (const auto entry = view->Find(directory, tag); entry && entry->type == ratio_type)
            Put_Ratio(block, *view, *entry, std::uint32_t(value));
}

namespace {

std::optional<std::uint32_t> Stored_Orientation(const std::vector<std::byte>& block)
{
    const auto view = EXIF_View::Of(block);
    if (!view) return std::nullopt;
    const auto entry = view->Find(view->First_Directory(), Tag_Orientation);
    return entry ? view->Number(*entry) : std::nullopt;
}

} // namespace

int Orientation_Of_EXIF_Block(const std::vector<std::byte>& block)
{
    const auto number = Stored_Orientation(block);
    return number && *number >= 1 && *number <= 8 ? int(*number) : 1;
}

bool Has_Orientation_In_EXIF_Block(const std::vector<std::byte>& block)
{
    return Stored_Orientation(block).has_value();
}
