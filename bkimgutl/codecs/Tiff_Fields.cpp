#include "bkimgutl/codecs/Tiff_Fields.h"

#include <algorithm>
#include <cstring>
#include <limits>

Tiff_Field Short_Field(const Tiff_Layout& layout, std::uint16_t tag, std::uint16_t value)
{
    Tiff_Field field{.tag = tag, .type = Tiff_Type::Short, .count = 1, .value = std::vector<std::byte>(2)};
    layout.Put(field.value.data(), 2, value);
    return field;
}

Tiff_Field Offset_Field(const Tiff_Layout& layout, std::uint16_t tag, std::uint64_t position)
{
    const auto type = layout.big ? Tiff_Type::IFD8 : Tiff_Type::Long;
    Tiff_Field field{.tag = tag, .type = type, .count = 1, .value = std::vector<std::byte>(layout.Field_Size())};
    layout.Put(field.value.data(), layout.Field_Size(), position);
    return field;
}

Tiff_Field Rational_Field(const Tiff_Layout& layout, std::uint16_t tag, std::uint32_t numerator,
                          std::uint32_t denominator)
{
    Tiff_Field field{.tag = tag, .type = Tiff_Type::Rational, .count = 1, .value = std::vector<std::byte>(8)};
    layout.Put(field.value.data(), 4, numerator);
    layout.Put(field.value.data() + 4, 4, denominator);
    return field;
}

Tiff_Field Bytes_Field(std::uint16_t tag, std::uint16_t type, std::span<const std::byte> value)
{
    return {.tag = tag, .type = type, .count = value.size(), .value = {value.begin(), value.end()}};
}

Tiff_Field Text_Field(std::uint16_t tag, std::string_view text)
{
    Tiff_Field field = Bytes_Field(tag, Tiff_Type::ASCII, std::as_bytes(std::span(text)));
    field.value.push_back(std::byte(0));
    ++field.count;
    return field;
}

Tiff_Field Kept_Field(const Tiff_Entry& entry)
{
    return {.tag = entry.tag, .type = entry.type, .count = entry.count, .as_it_stands = true, .field = entry.field};
}

const Tiff_Field* Find_Field(const Tiff_Fields& fields, std::uint16_t tag)
{
    const auto found =
        std::find_if(fields.begin(), fields.end(), [tag](const auto& field) { return field.tag == tag; });
    return found == fields.end() ? nullptr : &*found;
}

void Remove_Field(Tiff_Fields& fields, std::uint16_t tag)
{
    std::erase_if(fields, [tag](const Tiff_Field& field) { return field.tag == tag; });
}

void Set_Field(Tiff_Fields& fields, Tiff_Field field)
{
    Remove_Field(fields, field.tag);
    fields.push_back(std::move(field));
}

Result<std::vector<std::byte>> Directory_Bytes(Tiff_Fields fields, const Tiff_Layout& layout, std::uint64_t position,
                                               std::uint64_t next)
{
    if (fields.size() > 65535) return Failure("the TIFF directory has too many entries");
    std::stable_sort(fields.begin(), fields.end(), [](const auto& a, const auto& b) { return a.tag < b.tag; });
    std::vector<std::byte> bytes(layout.Directory_Size(fields.size()));
    layout.Put(bytes.data(), layout.Count_Size(), fields.size());
    std::size_t at = layout.Count_Size();
    for (const Tiff_Field& field : fields) {
        layout.Put(bytes.data() + at, 2, field.tag);
        layout.Put(bytes.data() + at + 2, 2, field.type);
        layout.Put(bytes.data() + at + 4, layout.Field_Size(), field.count);
        const std::size_t value_at = at + 4 + layout.Field_Size();
        if (field.as_it_stands) {
            std::copy_n(field.field.begin(), layout.Field_Size(), bytes.begin() + std::ptrdiff_t(value_at));
        } else if (field.value.size() <= layout.Field_Size()) {
            std::copy(field.value.begin(), field.value.end(), bytes.begin() + std::ptrdiff_t(value_at));
        } else {
            layout.Put(bytes.data() + value_at, layout.Field_Size(), position + bytes.size());
            bytes.insert(bytes.end(), field.value.begin(), field.value.end());
            if (bytes.size() % 2 != 0) bytes.push_back(std::byte(0));
        }
        at += layout.Entry_Size();
    }
    layout.Put(bytes.data() + at, layout.Field_Size(), next);
    if (!layout.big && position + bytes.size() > std::numeric_limits<std::uint32_t>::max())
        return Failure("the file would be larger than the 4 GiB of a TIFF file");
    return bytes;
}
