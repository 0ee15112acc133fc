// An EXIF block is a TIFF structure: a header, a directory of 12-byte entries at 8, and a second directory that entry
// 34665 of the first points to. Values of up to 4 bytes stand in their entry, others at the offset that stands there. All
// offsets come from the file: each is checked in 64 bits against the block before a byte is read.

#include "catalogue/Camera_Record.h"

#include "frame/files/Limits.h"
#include "frame/text/Text_Utilities.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace {

constexpr std::uint16_t Tag_Sub_Directory = 34665;
constexpr std::int64_t Entry_Size = 12;

struct Entry {
    std::uint16_t tag = 0;
    std::uint16_t type = 0;
    std::uint32_t count = 0;
    std::int64_t at = 0;     ///< of the value
    std::int64_t length = 0; ///< bytes of the value
};

class Exif_Block {
public:
    Exif_Block(std::span<const std::byte> bytes, bool little_endian) : bytes_(bytes), little_(little_endian) {}

    bool Holds(std::int64_t at, std::int64_t length) const
    {
        return at >= 0 && length >= 0 && at <= std::int64_t(bytes_.size()) - length;
    }
    std::uint32_t Number(std::int64_t at, int size) const
    {
        std::uint32_t value = 0;
        for (int i = 0; i < size; ++i) {
            const auto byte = std::uint32_t(bytes_[std::size_t(at + i)]);
            value |= byte << (8 * (little_ ? i : size - 1 - i));
        }
        return value;
    }
    std::uint64_t Long_Number(std::int64_t at) const
    {
        const std::uint64_t first = Number(at, 4);
        const std::uint64_t second = Number(at + 4, 4);
        return little_ ? first | second << 32 : first << 32 | second;
    }
    QByteArray Bytes(std::int64_t at, std::int64_t length) const
    {
        return {reinterpret_cast<const char*>(bytes_.data()) + at, qsizetype(length)};
    }

    std::optional<Entry> Read_Entry(std::int64_t at) const;

    /// First value of the entry as a number; nothing for texts and for ratios without a meaning.
    std::optional<double> Value(const Entry& entry) const;

private:
    double Ratio(std::int64_t at, bool with_sign) const;

    std::span<const std::byte> bytes_;
    bool little_;
};

std::optional<Entry> Exif_Block::Read_Entry(std::int64_t at) const
{
    static constexpr std::array<int, 13> size_of_type{0, 1, 1, 2, 4, 8, 1, 1, 2, 4, 8, 4, 8};
    if (!Holds(at, Entry_Size)) return std::nullopt;
    Entry entry{
        .tag = std::uint16_t(Number(at, 2)), .type = std::uint16_t(Number(at + 2, 2)), .count = Number(at + 4, 4)};
    if (entry.type < 1 || entry.type >= size_of_type.size()) return std::nullopt;
    entry.length = std::int64_t(entry.count) * size_of_type[entry.type];
    entry.at = entry.length <= 4 ? at + 8 : std::int64_t(Number(at + 8, 4));
    if (entry.length == 0 || !Holds(entry.at, entry.length)) return std::nullopt;
    return entry;
}

double Exif_Block::Ratio(std::int64_t at, bool with_sign) const
{
    const std::uint32_t numerator = Number(at, 4);
    const std::uint32_t denominator = Number(at + 4, 4);
    if (denominator == 0) return 0;
    if (with_sign) return double(std::int32_t(numerator)) / double(std::int32_t(denominator));
    return double(numerator) / double(denominator);
}

std::optional<double> Exif_Block::Value(const Entry& entry) const
{
    switch (entry.type) {
    case 1: return Number(entry.at, 1);
    case 3: return Number(entry.at, 2);
    case 4: return Number(entry.at, 4);
    case 5: return Ratio(entry.at, false);
    case 6: return std::int8_t(Number(entry.at, 1));
    case 8: return std::int16_t(Number(entry.at, 2));
    case 9: return std::int32_t(Number(entry.at, 4));
    case 10: return Ratio(entry.at, true);
    case 11: {
        const std::uint32_t bits = Number(entry.at, 4);
        float value = 0;
        std::memcpy(&value, &bits, sizeof value);
        return double(value);
    }
    case 12: {
        const std::uint64_t bits = Long_Number(entry.at);
        double value = 0;
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }
    default: return std::nullopt;
    }
}

QString Text_Of(const Exif_Block& block, const Entry& entry)
{
    constexpr std::array<std::uint16_t, 4> of_bytes{1, 2, 6, 7};
    if (std::find(of_bytes.begin(), of_bytes.end(), entry.type) == of_bytes.end()) return {};
    QByteArray bytes = block.Bytes(entry.at, entry.length);
    if (entry.tag == 37510) bytes = bytes.mid(8); // a user comment begins with the name of its character code
    if (const auto end = bytes.indexOf('\0'); end >= 0) bytes.truncate(end);
    return Decode_Text(bytes).trimmed();
}

float Single_Of(const Exif_Block& block, const Entry& entry)
{
    const double value = block.Value(entry).value_or(0);
    return std::isfinite(value) ? float(std::clamp(value, -1e30, 1e30)) : 0.0F;
}

int Whole_Of(const Exif_Block& block, const Entry& entry)
{
    return Round_Half_Even(Single_Of(block, entry));
}

int Exact_Whole_Of(const Exif_Block& block, const Entry& entry)
{
    const double value = block.Value(entry).value_or(0);
    return std::isfinite(value) ? Round_Half_Even(std::clamp(value, -2147483648.0, 2147483647.0)) : 0;
}

/// Versions are four digits as text, "0220".
int Version_Of(const Exif_Block& block, const Entry& entry)
{
    if (entry.type != 7 && entry.type != 2) return Exact_Whole_Of(block, entry);
    return Long_From_Text(Text_Of(block, entry)).value_or(0);
}

/// An unlimited distance is written as the largest numerator; it has no number.
float Distance_Of(const Exif_Block& block, const Entry& entry)
{
    const bool unlimited = entry.type == 5 && block.Number(entry.at, 4) == 0xFFFFFFFFU;
    return unlimited ? 0.0F : Single_Of(block, entry);
}

bool Take_Text(Camera_Record& record, const Exif_Block& block, const Entry& entry)
{
    struct Row {
        std::uint16_t tag;
        QString Camera_Record::*field;
    };
    static constexpr Row rows[] = {
        {270, &Camera_Record::Image_Description},
        {271, &Camera_Record::Make},
        {272, &Camera_Record::Model},
        {305, &Camera_Record::Software},
        {306, &Camera_Record::Date_Time},
        {36867, &Camera_Record::Date_Time_Taken},
        {36868, &Camera_Record::Date_Time_Digitized},
        {37510, &Camera_Record::User_Comment},
    };
    const auto* row = std::find_if(std::begin(rows), std::end(rows), [&](const Row& r) { return r.tag == entry.tag; });
    if (row == std::end(rows)) return false;
    record.*(row->field) = Text_Of(block, entry);
    return true;
}

bool Take_Single(Camera_Record& record, const Exif_Block& block, const Entry& entry)
{
    struct Row {
        std::uint16_t tag;
        float Camera_Record::*field;
    };
    static constexpr Row rows[] = {
        {33434, &Camera_Record::Exposure_Time},
        {33437, &Camera_Record::F_Number},
        {37122, &Camera_Record::Compressed_Bits_Per_Pixel},
        {37377, &Camera_Record::Shutter_Speed_Value},
        {37378, &Camera_Record::Aperture_Value},
        {37379, &Camera_Record::Brightness_Value},
        {37380, &Camera_Record::Exposure_Bias},
        {37381, &Camera_Record::Maximum_Aperture_Value},
        {37386, &Camera_Record::Focal_Length},
    };
    const auto* row = std::find_if(std::begin(rows), std::end(rows), [&](const Row& r) { return r.tag == entry.tag; });
    if (row == std::end(rows)) return false;
    record.*(row->field) = Single_Of(block, entry);
    return true;
}

void Take_Whole(Camera_Record& record, const Exif_Block& block, const Entry& entry)
{
    switch (entry.tag) {
    case 34850: record.Exposure_Program = Whole_Of(block, entry); break;
    case 34855: record.ISO_Speed = Exact_Whole_Of(block, entry); break;
    case 36864: record.EXIF_Version = Version_Of(block, entry); break;
    case 37382: record.Subject_Distance = Distance_Of(block, entry); break;
    case 37383: record.Metering_Mode = Whole_Of(block, entry); break;
    case 37384: record.Light_Source = Whole_Of(block, entry); break;
    case 37385: record.Flash_Used = (Exact_Whole_Of(block, entry) & 1) != 0; break;
    case 40960: record.FlashPix_Version = Version_Of(block, entry); break;
    case 40962: record.Image_Width = Exact_Whole_Of(block, entry); break;
    case 40963: record.Image_Height = Exact_Whole_Of(block, entry); break;
    default: break;
    }
}

/// Takes the entries of one directory; returns the offset of the sub-directory, or 0.
std::int64_t Take_Directory(Camera_Record& record, const Exif_Block& block, std::int64_t at)
{
    if (!block.Holds(at, 2)) return 0;
    const int count = std::min(int(block.Number(at, 2)), Current_Limits().tiff_directory_entries);
    std::int64_t sub_directory = 0;
    for (int i = 0; i < count; ++i) {
        const auto entry = block.Read_Entry(at + 2 + i * Entry_Size);
        if (!entry) continue;
        if (entry->tag == Tag_Sub_Directory && entry->type == 4)
            sub_directory = block.Number(entry->at, 4);
        else if (!Take_Text(record, block, *entry) && !Take_Single(record, block, *entry))
            Take_Whole(record, block, *entry);
    }
    return sub_directory;
}

float F_Number_Of_Apex(float value)
{
    return value > 0 ? float(std::exp2(std::min(double(value), 60.0) / 2)) : 0.0F;
}

} // namespace

float Camera_Record::Time_In_Seconds() const
{
    if (Exposure_Time > 0) return Exposure_Time;
    return Shutter_Speed_Value != 0 ? float(std::exp2(-std::clamp(double(Shutter_Speed_Value), -60.0, 60.0))) : 0.0F;
}

float Camera_Record::Aperture() const
{
    return F_Number > 0 ? F_Number : F_Number_Of_Apex(Aperture_Value);
}

float Camera_Record::Maximum_Aperture() const
{
    return F_Number_Of_Apex(Maximum_Aperture_Value);
}

std::optional<Camera_Record> Parse_Camera_Record(std::span<const std::byte> block)
{
    static constexpr char head[] = {'E', 'x', 'i', 'f', 0, 0};
    if (block.size() >= sizeof head && std::memcmp(block.data(), head, sizeof head) == 0)
        block = block.subspan(sizeof head);
    if (block.size() < 8) return std::nullopt;
    const bool little = std::memcmp(block.data(), "II", 2) == 0;
    if (!little && std::memcmp(block.data(), "MM", 2) != 0) return std::nullopt;
    const Exif_Block tiff(block, little);
    if (tiff.Number(2, 2) != 42 || tiff.Number(4, 4) != 8) return std::nullopt;
    Camera_Record record;
    if (const std::int64_t sub_directory = Take_Directory(record, tiff, 8); sub_directory > 0)
        Take_Directory(record, tiff, sub_directory);
    return record;
}
