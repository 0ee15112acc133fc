#include "bkimgutl/codecs/Tiff_Structure.h"

#include "frame/files/Limits.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <string>

std::uint64_t Tiff_Layout::Get(const std::byte* from, std::size_t bytes) const
{
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < bytes; ++i) value = value << 8 | std::uint64_t(from[little_endian ? bytes - 1 - i : i]);
    return value;
}

void Tiff_Layout::Put(std::byte* to, std::size_t bytes, std::uint64_t value) const
{
    for (std::size_t i = 0; i < bytes; ++i, value >>= 8) to[little_endian ? i : bytes - 1 - i] = std::byte(value & 255);
}

std::size_t Tiff_Type_Size(std::uint16_t type)
{
    constexpr std::uint8_t sizes[] = {0, 1, 1, 2, 4, 8, 1, 1, 2, 4, 8, 4, 8, 4, 0, 0, 8, 8, 8};
    return type < std::size(sizes) ? sizes[type] : 0;
}

const Tiff_Entry* Tiff_Directory::Find(std::uint16_t tag) const
{
    const auto found =
        std::find_if(entries.begin(), entries.end(), [tag](const auto& entry) { return entry.tag == tag; });
    return found == entries.end() ? nullptr : &*found;
}

Result<Tiff_Structure> Tiff_Structure::Open(const Regular_File& file)
{
    Tiff_Structure structure;
    structure.file_ = &file;
    return With_Header(structure);
}

Result<Tiff_Structure> Tiff_Structure::Open(std::span<const std::byte> bytes)
{
    Tiff_Structure structure;
    structure.memory_ = bytes;
    return With_Header(structure);
}

Result<Tiff_Structure> Tiff_Structure::With_Header(Tiff_Structure structure)
{
    if (structure.Size() == 0) return Failure("the file is empty");
    std::byte head[16];
    if (!structure.Read(0, std::span(head, 8))) return Failure("the file is too short for a TIFF file");
    const bool little = head[0] == std::byte('I') && head[1] == std::byte('I');
    const bool motorola = head[0] == std::byte('M') && head[1] == std::byte('M');
    if (!little && !motorola) return Failure("the file is no TIFF file");
    structure.layout_.little_endian = little;
    const std::uint64_t version = structure.layout_.Get(head + 2, 2);
    if (version == 42) {
        structure.first_ = structure.layout_.Get(head + 4, 4);
        return structure;
    }
    if (version != 43) return Failure("the file is no TIFF file");
    structure.layout_.big = true;
    if (!structure.Read(0, head)) return Failure("the file is too short for a TIFF file");
    if (structure.layout_.Get(head + 4, 2) != 8 || structure.layout_.Get(head + 6, 2) != 0)
        return Failure("the TIFF header is damaged");
    structure.first_ = structure.layout_.Get(head + 8, 8);
    return structure;
}

std::uint64_t Tiff_Structure::Size() const
{
    return file_ ? std::uint64_t(std::max<std::int64_t>(file_->Size(), 0)) : memory_.size();
}

Result<void> Tiff_Structure::Read(std::uint64_t position, std::span<std::byte> target) const
{
    if (position > Size() || target.size() > Size() - position) return Failure("the file ends too early");
    if (!file_) {
        if (!target.empty()) std::memcpy(target.data(), memory_.data() + position, target.size());
        return {};
    }
    const auto got = file_->Read_At(std::int64_t(position), target);
    if (!got) return tl::make_unexpected(got.error());
    if (*got != target.size()) return Failure("the file ends too early");
    return {};
}

namespace {

Tiff_Entry Entry_From(const Tiff_Layout& layout, const std::byte* bytes, std::uint64_t position)
{
    Tiff_Entry entry;
    entry.tag = std::uint16_t(layout.Get(bytes, 2));
    entry.type = std::uint16_t(layout.Get(bytes + 2, 2));
    entry.count = layout.Get(bytes + 4, layout.Field_Size());
    const std::size_t field_at = 4 + layout.Field_Size();
    std::copy_n(bytes + field_at, layout.Field_Size(), entry.field.begin());
    const std::size_t unit = Tiff_Type_Size(entry.type);
    constexpr auto most = std::numeric_limits<std::uint64_t>::max();
    entry.size = unit != 0 && entry.count > most / unit ? most : entry.count * unit;
    entry.inside = entry.size <= layout.Field_Size();
    entry.position = entry.inside ? position + field_at : layout.Get(entry.field.data(), layout.Field_Size());
    return entry;
}

} // namespace

Result<Tiff_Directory> Tiff_Structure::Read_Directory(std::uint64_t position) const
{
    std::byte count_bytes[8];
    if (position < layout_.Header_Size() || !Read(position, std::span(count_bytes, layout_.Count_Size())))
        return Failure("the TIFF directory lies outside the file");
    const std::uint64_t count = layout_.Get(count_bytes, layout_.Count_Size());
    if (count == 0) return Failure("the TIFF directory is empty");
    if (count > std::uint64_t(Current_Limits().tiff_directory_entries))
        return Failure("the TIFF directory has " + std::to_string(count) + " entries, more than the limit of " +
                       std::to_string(Current_Limits().tiff_directory_entries));
    const std::size_t size = layout_.Directory_Size(count) - layout_.Count_Size();
    std::vector<std::byte> bytes(size);
    const std::uint64_t start = position + layout_.Count_Size();
    if (!Read(start, bytes)) {
        // Some writers leave out the four or eight bytes of "no further directory" at the end of the file.
        if (!Read(start, std::span(bytes).first(size - layout_.Field_Size())))
            return Failure("the TIFF directory ends outside the file");
        std::fill(bytes.end() - std::ptrdiff_t(layout_.Field_Size()), bytes.end(), std::byte(0));
    }
    Tiff_Directory directory;
    directory.position = position;
    for (std::uint64_t i = 0; i < count; ++i)
        directory.entries.push_back(
            Entry_From(layout_, bytes.data() + i * layout_.Entry_Size(), start + i * layout_.Entry_Size()));
    directory.next = layout_.Get(bytes.data() + count * layout_.Entry_Size(), layout_.Field_Size());
    return directory;
}

Result<std::vector<std::byte>> Tiff_Structure::Value(const Tiff_Entry& entry, std::uint64_t most_bytes) const
{
    const std::string name = "the value of tag " + std::to_string(entry.tag);
    if (Tiff_Type_Size(entry.type) == 0) return Failure(name + " has an unknown type");
    if (entry.size > Size() || entry.position > Size() - entry.size) return Failure(name + " lies outside the file");
    if (entry.size > most_bytes) return Failure(name + " is longer than " + std::to_string(most_bytes) + " bytes");
    std::vector<std::byte> value(entry.size);
    if (auto read = Read(entry.position, value); !read) return tl::make_unexpected(read.error());
    return value;
}

Result<std::vector<std::uint64_t>> Tiff_Structure::Numbers(const Tiff_Entry& entry, std::uint64_t most_values) const
{
    const bool integer = entry.type == Tiff_Type::Byte || entry.type == Tiff_Type::Short ||
                         entry.type == Tiff_Type::Long || entry.type == Tiff_Type::IFD ||
                         entry.type == Tiff_Type::Long8 || entry.type == Tiff_Type::IFD8;
    if (!integer || entry.count > most_values)
        return Failure("the value of tag " + std::to_string(entry.tag) + " is of no use");
    const std::size_t unit = Tiff_Type_Size(entry.type);
    const auto bytes = Value(entry, most_values * unit);
    if (!bytes) return tl::make_unexpected(bytes.error());
    std::vector<std::uint64_t> numbers(entry.count);
    for (std::size_t i = 0; i < numbers.size(); ++i) numbers[i] = layout_.Get(bytes->data() + i * unit, unit);
    return numbers;
}

std::uint64_t Tiff_Structure::Number(const Tiff_Directory& directory, std::uint16_t tag, std::uint64_t otherwise) const
{
    const Tiff_Entry* entry = directory.Find(tag);
    if (entry == nullptr || entry->count == 0) return otherwise;
    Tiff_Entry first = *entry; // only the first value is of interest, however many there are
    const auto unit = Tiff_Type_Size(first.type);
    first.count = 1;
    first.size = unit;
    const auto numbers = Numbers(first, 1);
    return numbers ? numbers->front() : otherwise;
}
