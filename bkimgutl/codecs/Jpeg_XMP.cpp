#include "bkimgutl/codecs/Jpeg_XMP.h"

#include "frame/files/Limits.h"

#include <algorithm>
#include <map>
#include <optional>
#include <string_view>

namespace {

using namespace std::string_view_literals;
using Bytes = std::vector<std::byte>;

constexpr auto Packet_Head = "http://ns.adobe.com/xap/1.0/\0"sv;
constexpr auto Extension_Head = "http://ns.adobe.com/xmp/extension/\0"sv;
constexpr std::size_t Name_Digits = 32;
constexpr std::size_t Part_Head =
    Extension_Head.size() + Name_Digits + 8; ///< then the whole's length, the part's place
constexpr std::size_t Most_Extended = std::size_t(64) << 20;

std::string_view Text_Of(const Bytes& bytes)
{
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

std::size_t Long_At(const Bytes& bytes, std::size_t at)
{
    std::size_t value = 0;
    for (std::size_t i = 0; i < 4; ++i) value = value << 8 | std::to_integer<std::size_t>(bytes[at + i]);
    return value;
}

/// The parts of one extended packet by their places.
struct Extended {
    std::size_t bytes = 0;
    std::map<std::size_t, Bytes> parts{};
};

std::optional<std::string> Joined(const Extended& extended)
{
    std::string all;
    for (const auto& [place, part] : extended.parts) {
        if (place != all.size()) return std::nullopt;
        all += Text_Of(part).substr(Part_Head);
    }
    return all.size() == extended.bytes ? std::optional(std::move(all)) : std::nullopt;
}

std::optional<std::string> Extended_Packet(const Regular_File& file, const Jpeg_Head& head, std::string_view packet)
{
    Extended extended;
    std::size_t read = 0;
    for (const Jpeg_Segment& segment : head.segments) {
        if (segment.marker != Marker_APP1 || segment.bytes < Part_Head) continue;
        auto data = Read_Segment(file, segment);
        if (!data) return std::nullopt;
        const std::string_view text = Text_Of(*data);
        const bool named = text.starts_with(Extension_Head) &&
                           packet.find(text.substr(Extension_Head.size(), Name_Digits)) != std::string_view::npos;
        if (!named || (read += data->size()) > Most_Extended) continue;
        extended.bytes = Long_At(*data, Part_Head - 8);
        extended.parts.emplace(Long_At(*data, Part_Head - 4), std::move(*data));
    }
    return extended.parts.empty() ? std::nullopt : Joined(extended);
}

/// What stands between the tags of the RDF element, if its start tag says nothing but what rdf means: other names that it
/// declares would be missing elsewhere.
std::optional<std::string_view> Descriptions_In(std::string_view extended)
{
    const std::size_t start = extended.find("<rdf:RDF"sv);
    const std::size_t end = extended.rfind("</rdf:RDF>"sv);
    const std::size_t inside = extended.find('>', std::min(start, extended.size()));
    if (start == std::string_view::npos || end == std::string_view::npos || inside >= end) return std::nullopt;
    const std::string_view before = extended.substr(0, inside);
    std::size_t declared = 0;
    for (std::size_t at = before.find("xmlns:"sv); at != std::string_view::npos; at = before.find("xmlns:"sv, at + 1)) {
        const std::string_view name = before.substr(at + 6);
        if (!name.starts_with("rdf="sv) && !name.starts_with("x="sv)) return std::nullopt;
        ++declared;
    }
    if (declared == 0) return std::nullopt;
    return extended.substr(inside + 1, end - inside - 1);
}

/// The pointer to the extended packet, with the space in front of it when it is an attribute.
void Remove_Pointer(std::string& packet)
{
    constexpr auto name = "xmpNote:HasExtendedXMP"sv;
    const std::size_t at = packet.find(name);
    if (at == std::string::npos || at == 0) return;
    if (packet[at - 1] == '<') {
        const std::string close = "</" + std::string(name) + ">";
        const std::size_t end = packet.find(close, at);
        if (end != std::string::npos) packet.erase(at - 1, end + close.size() - at + 1);
        return;
    }
    const std::size_t quote = packet.find_first_of("\"'", at);
    const std::size_t end = quote == std::string::npos ? quote : packet.find(packet[quote], quote + 1);
    if (end != std::string::npos) packet.erase(at - 1, end + 2 - at);
}

} // namespace

std::string With_Extended_XMP(std::string packet, std::string_view extended)
{
    const auto descriptions = Descriptions_In(extended);
    std::size_t end = packet.rfind("</rdf:RDF>");
    if (!descriptions || end == std::string::npos) return packet;
    packet.insert(end, *descriptions);
    Remove_Pointer(packet);
    return packet;
}

Result<Bytes> XMP_Of_Jpeg(const Regular_File& file, const Jpeg_Head& head)
{
    for (const Jpeg_Segment& segment : head.segments) {
        if (segment.marker != Marker_APP1 || segment.bytes < Packet_Head.size()) continue;
        const auto data = Read_Segment(file, segment);
        if (!data) return tl::make_unexpected(data.error());
        if (!Text_Of(*data).starts_with(Packet_Head)) continue;
        std::string packet(Text_Of(*data).substr(Packet_Head.size()));
        if (const auto extended = Extended_Packet(file, head, packet))
            packet = With_Extended_XMP(std::move(packet), *extended);
        const auto bytes = std::as_bytes(std::span(packet));
        return Bytes(bytes.begin(), bytes.end());
    }
    return Bytes();
}

Bytes XMP_Segment_Data(Bytes packet)
{
    if (packet.empty() || packet.size() > Longest_Segment_Data - Packet_Head.size()) return {};
    const auto head = std::as_bytes(std::span(Packet_Head));
    packet.insert(packet.begin(), head.begin(), head.end());
    return packet;
}
