#include "dev/samples/Camera_Block.h"

#include <algorithm>

namespace {

using Bytes = std::vector<std::uint8_t>;

enum Type : std::uint16_t { Byte_Type = 1, Text_Type = 2, Short_Type = 3, Long_Type = 4, Ratio_Type = 5, Any_Type = 7 };

/// Collects the entries of one directory and lays them out behind each other.
class Directory {
public:
    explicit Directory(bool big_endian) : big_endian_(big_endian) {}

    void Short(std::uint16_t tag, int value) { Add(tag, Short_Type, 1, Number(std::uint32_t(value), 2)); }
    void Long(std::uint16_t tag, std::uint32_t value) { Add(tag, Long_Type, 1, Number(value, 4)); }
    void Ratio(std::uint16_t tag, std::pair<int, int> value)
    {
        Bytes bytes = Number(std::uint32_t(value.first), 4);
        const Bytes below = Number(std::uint32_t(value.second), 4);
        bytes.insert(bytes.end(), below.begin(), below.end());
        Add(tag, Ratio_Type, 1, bytes);
    }
    void Text(std::uint16_t tag, const std::string& text)
    {
        if (text.empty()) return;
        Bytes bytes(text.begin(), text.end());
        bytes.push_back(0);
        Add(tag, Text_Type, std::uint32_t(bytes.size()), bytes);
    }
    void Any(std::uint16_t tag, const Bytes& bytes)
    {
        if (!bytes.empty()) Add(tag, Any_Type, std::uint32_t(bytes.size()), bytes);
    }

    std::size_t Size() const
    {
        std::size_t size = 2 + entries_.size() * 12 + 4;
        for (const Entry& entry : entries_) size += Outside(entry);
        return size;
    }

    /// The directory as it stands at `offset`, with the offset of the one behind it.
    Bytes Laid_Out(std::uint32_t offset, std::uint32_t next)
    {
        std::stable_sort(entries_.begin(), entries_.end(),
                         [](const Entry& a, const Entry& b) { return a.tag < b.tag; });
        Bytes head = Number(std::uint32_t(entries_.size()), 2);
        Bytes values;
        const std::uint32_t values_at = offset + 2 + std::uint32_t(entries_.size()) * 12 + 4;
        for (const Entry& entry : entries_) {
            Append(head, Number(entry.tag, 2));
            Append(head, Number(entry.type, 2));
            Append(head, Number(entry.count, 4));
            Bytes value = entry.value;
            value.resize(std::max<std::size_t>(4, value.size() + value.size() % 2));
            if (entry.value.size() <= 4) {
                Append(head, value);
            } else {
                Append(head, Number(values_at + std::uint32_t(values.size()), 4));
                Append(values, value);
            }
        }
        Append(head, Number(next, 4));
        Append(head, values);
        return head;
    }

    Bytes Number(std::uint32_t value, int bytes) const
    {
        Bytes result;
        for (int i = 0; i < bytes; ++i)
            result.push_back(std::uint8_t(value >> (8 * (big_endian_ ? bytes - 1 - i : i))));
        return result;
    }

    static void Append(Bytes& target, const Bytes& more) { target.insert(target.end(), more.begin(), more.end()); }

private:
    struct Entry {
        std::uint16_t tag;
        std::uint16_t type;
        std::uint32_t count;
        Bytes value;
    };
    static std::size_t Outside(const Entry& entry)
    {
        return entry.value.size() <= 4 ? 0 : entry.value.size() + entry.value.size() % 2;
    }
    void Add(std::uint16_t tag, std::uint16_t type, std::uint32_t count, Bytes value)
    {
        entries_.push_back({tag, type, count, std::move(value)});
    }

    bool big_endian_;
    std::vector<Entry> entries_;
};

Directory Main_Directory(const Camera_Facts& facts)
{
    Directory main(facts.big_endian);
    main.Text(271, facts.make);
    main.Text(272, facts.model);
    if (facts.orientation != 0) main.Short(274, facts.orientation);
    if (facts.dpi) {
        main.Ratio(282, {*facts.dpi, 1});
        main.Ratio(283, {*facts.dpi, 1});
        main.Short(296, 2);
    }
    main.Text(305, facts.software);
    main.Text(306, facts.taken);
    return main;
}

Directory Exposure_Directory(const Camera_Facts& facts)
{
    Directory exposure(facts.big_endian);
    exposure.Ratio(33434, facts.exposure);
    exposure.Ratio(33437, facts.aperture);
    exposure.Short(34850, facts.program);
    exposure.Short(34855, facts.iso);
    exposure.Any(36864, {'0', '2', '3', '0'});
    exposure.Text(36867, facts.taken);
    exposure.Text(36868, facts.taken);
    exposure.Short(37383, facts.metering);
    exposure.Short(37385, facts.flash);
    exposure.Ratio(37386, facts.focal_length);
    exposure.Any(37500, facts.maker_note);
    exposure.Short(40961, 1);
    if (facts.width > 0) {
        exposure.Long(40962, std::uint32_t(facts.width));
        exposure.Long(40963, std::uint32_t(facts.height));
    }
    return exposure;
}

} // namespace

std::vector<std::uint8_t> Camera_Block(const Camera_Facts& facts)
{
    constexpr std::uint32_t main_at = 8;
    Directory main = Main_Directory(facts);
    Directory exposure = Exposure_Directory(facts);
    main.Long(34665, 0); // counted here, set below
    const auto exposure_at = main_at + std::uint32_t(main.Size());
    const auto thumbnail_at = exposure_at + std::uint32_t(exposure.Size());
    main = Main_Directory(facts);
    main.Long(34665, exposure_at);

    const char mark = facts.big_endian ? 'M' : 'I';
    Bytes block = {'E', 'x', 'i', 'f', 0, 0, std::uint8_t(mark), std::uint8_t(mark)};
    Directory::Append(block, main.Number(42, 2));
    Directory::Append(block, main.Number(main_at, 4));
    Directory::Append(block, main.Laid_Out(main_at, facts.thumbnail.empty() ? 0 : thumbnail_at));
    Directory::Append(block, exposure.Laid_Out(exposure_at, 0));
    if (facts.thumbnail.empty()) return block;
    Directory small(facts.big_endian);
    small.Short(259, 6);
    small.Long(513, 0);
    small.Long(514, 0);
    const auto stream_at = thumbnail_at + std::uint32_t(small.Size());
    small = Directory(facts.big_endian);
    small.Short(259, 6);
    small.Long(513, stream_at);
    small.Long(514, std::uint32_t(facts.thumbnail.size()));
    Directory::Append(block, small.Laid_Out(thumbnail_at, 0));
    Directory::Append(block, facts.thumbnail);
    return block;
}
