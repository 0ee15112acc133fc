#include "bkimgutl/codecs/Jpeg_XMP.h"

#include "bkimgutl/codecs/XMP_Thumbnails.h"

#include <algorithm>
#include <array>
#include <md5.h>
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
constexpr std::size_t Longest_Part = 65400;

// Of the packet that XMP_Segments writes when the whole one is too long: the extended packet's number stands between the
// last two.
constexpr auto Wrapper_Start = "<?xpacket begin=\"\xEF\xBB\xBF\" id=\"W5M0MpCehiHzreSzNTczkc9d\"?>\n"sv;
constexpr auto Wrapper_End = "\n<?xpacket end=\"w\"?>"sv;
constexpr auto Pointer_Start = "<x:xmpmeta xmlns:x=\"adobe:ns:meta/\">"
                               "<rdf:RDF xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\">"
                               "<rdf:Description rdf:about=\"\" xmlns:xmpNote=\"http://ns.adobe.com/xmp/note/\""
                               " xmpNote:HasExtendedXMP=\""sv;
constexpr auto Pointer_End = "\"/></rdf:RDF></x:xmpmeta>"sv;

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

void Append_Long(std::string& bytes, std::size_t value)
{
    for (int shift = 24; shift >= 0; shift -= 8) bytes += char(value >> shift & 255);
}

Bytes Segment_Of(std::string_view data)
{
    const auto bytes = std::as_bytes(std::span(data));
    return Segment_Bytes(Marker_APP1, {bytes.begin(), bytes.end()});
}

/// In place of as many bytes.
void Put_Text(Bytes& bytes, std::size_t at, std::string_view text)
{
    const auto put = std::as_bytes(std::span(text));
    std::copy(put.begin(), put.end(), bytes.begin() + std::ptrdiff_t(at));
}

/// The number of an extended packet: its MD5 in capital hexadecimal digits.
std::string Number_Of(std::string_view extended)
{
    MD5_CTX context;
    std::array<std::uint8_t, MD5_DIGEST_LENGTH> digest{};
    MD5Init(&context);
    MD5Update(&context, reinterpret_cast<const std::uint8_t*>(extended.data()), extended.size());
    MD5Final(digest.data(), &context);
    std::string digits;
    for (const std::uint8_t byte : digest) {
        digits += "0123456789ABCDEF"[byte >> 4];
        digits += "0123456789ABCDEF"[byte & 15];
    }
    return digits;
}

std::string Wrapped(std::string_view inside)
{
    return std::string(Wrapper_Start).append(inside).append(Wrapper_End);
}

std::string Pointing_Packet(std::string_view number)
{
    return Wrapped(std::string(Pointer_Start).append(number).append(Pointer_End));
}

/// The packet without the processing instructions, the byte order mark and the padding around it.
std::string_view Unwrapped(std::string_view packet)
{
    constexpr auto byte_order_mark = "\xEF\xBB\xBF"sv;
    constexpr auto padding = " \t\r\n\0"sv;
    if (packet.starts_with(byte_order_mark)) packet.remove_prefix(byte_order_mark.size());
    const auto trim = [&] {
        packet.remove_prefix(std::min(packet.find_first_not_of(padding), packet.size()));
        packet = packet.substr(0, packet.find_last_not_of(padding) + 1);
    };
    trim();
    for (std::size_t end; packet.starts_with("<?"sv) && (end = packet.find("?>"sv)) != packet.npos; trim())
        packet.remove_prefix(end + 2);
    for (std::size_t start; packet.ends_with("?>"sv) && (start = packet.rfind("<?"sv)) != packet.npos; trim())
        packet = packet.substr(0, start);
    return packet;
}

/// A segment of an extended packet: the name, the length of the whole, the place of this part, the part.
struct Part {
    const Jpeg_Segment* segment;
    Bytes data;

    std::string_view Number() const { return Text_Of(data).substr(Extension_Head.size(), Name_Digits); }
    std::size_t Length_Of_Whole() const { return Long_At(data, Part_Head - 8); }
    std::size_t Place() const { return Long_At(data, Part_Head - 4); }
    std::string_view Text() const { return Text_Of(data).substr(Part_Head); }
};

/// In the order of their places.
std::string Joined(const std::vector<Part>& parts)
{
    std::string all;
    for (const Part& part : parts) all += part.Text();
    return all;
}

bool Is_Whole(const std::vector<Part>& parts)
{
    std::size_t end = 0;
    for (const Part& part : parts) {
        if (part.Place() != end) return false;
        end += part.Text().size();
    }
    return end == parts.front().Length_Of_Whole();
}

/// What a file's segments hold of XMP.
struct Found {
    std::vector<Part> packets{};                         ///< the first one counts
    std::map<std::string, std::vector<Part>> extended{}; ///< by their numbers, each in the order of the places
};

Result<Found> Find_XMP(const Regular_File& file, const Jpeg_Head& head)
{
    Found found;
    std::size_t left = Most_Extended + Longest_Segment_Data;
    for (const Jpeg_Segment& segment : head.segments) {
        if (segment.marker != Marker_APP1 || segment.bytes < Packet_Head.size()) continue;
        auto data = Read_Segment(file, segment);
        if (!data) return tl::make_unexpected(data.error());
        const std::string_view text = Text_Of(*data);
        const bool is_packet = text.starts_with(Packet_Head);
        const bool is_part = data->size() >= Part_Head && text.starts_with(Extension_Head);
        if (!is_packet && !is_part) continue;
        const std::size_t bytes = data->size() - (is_packet ? Packet_Head.size() : Part_Head);
        if (bytes > left) return Failure("has XMP packets of more than " + std::to_string(Most_Extended) + " bytes");
        left -= bytes;
        Part part{&segment, std::move(*data)};
        if (is_packet)
            found.packets.push_back(std::move(part));
        else
            found.extended[std::string(part.Number())].push_back(std::move(part));
    }
    for (auto& [number, parts] : found.extended)
        std::stable_sort(parts.begin(), parts.end(),
                         [](const Part& one, const Part& other) { return one.Place() < other.Place(); });
    return found;
}

/// The extended packet that the packet names; empty without one. A name alone says nothing: programs remove what they do
/// not know and leave the name.
Result<std::string> Extended_Packet(const Found& found, std::string_view packet)
{
    for (const auto& [number, parts] : found.extended) {
        if (packet.find(number) == packet.npos) continue;
        if (!Is_Whole(parts)) return Failure("has a damaged extended XMP packet");
        return Joined(parts);
    }
    return std::string();
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

Result<std::string> With_Extended_XMP(std::string packet, std::string_view extended)
{
    if (packet == Pointing_Packet(Number_Of(extended))) return Wrapped(extended);
    const auto descriptions = Descriptions_In(extended);
    std::size_t end = packet.rfind("</rdf:RDF>");
    if (!descriptions || end == std::string::npos)
        return Failure("has an extended XMP packet that cannot be joined with the first one");
    packet.insert(end, *descriptions);
    Remove_Pointer(packet);
    return packet;
}

Result<Bytes> XMP_Of_Jpeg(const Regular_File& file, const Jpeg_Head& head)
{
    const auto found = Find_XMP(file, head);
    if (!found) return tl::make_unexpected(found.error());
    if (found->packets.empty()) return Bytes();
    std::string packet(Text_Of(found->packets.front().data).substr(Packet_Head.size()));
    const auto extended = Extended_Packet(*found, packet);
    if (!extended) return tl::make_unexpected(extended.error());
    if (!extended->empty()) {
        auto joined = With_Extended_XMP(std::move(packet), *extended);
        if (!joined) return tl::make_unexpected(joined.error());
        packet = std::move(*joined);
    }
    const auto bytes = std::as_bytes(std::span(packet));
    return Bytes(bytes.begin(), bytes.end());
}

namespace {

/// Blanks the thumbnails of an extended packet; true when it had any. The parts then have the number of what they hold now.
bool Blank_Thumbnails(std::vector<Part>& parts)
{
    std::string all = Joined(parts);
    if (!Blank_XMP_Thumbnails(std::as_writable_bytes(std::span(all)))) return false;
    const std::string number = Number_Of(all);
    std::string_view rest = all;
    for (Part& part : parts) {
        const std::size_t bytes = part.Text().size();
        Put_Text(part.data, Extension_Head.size(), number);
        Put_Text(part.data, Part_Head, rest.substr(0, bytes));
        rest.remove_prefix(bytes);
    }
    return true;
}

/// True when the packet named it.
bool Name_Other_Number(Part& packet, std::string_view number, std::string_view other)
{
    const std::size_t at = Text_Of(packet.data).find(number);
    if (at != std::string_view::npos) Put_Text(packet.data, at, other);
    return at != std::string_view::npos;
}

} // namespace

Result<Mended_Segments> XMP_Without_Thumbnails(const Regular_File& file, const Jpeg_Head& head)
{
    auto found = Find_XMP(file, head);
    if (!found) return tl::make_unexpected(found.error());
    Mended_Segments mended;
    for (auto& [number, parts] : found->extended) {
        if (!Blank_Thumbnails(parts)) continue;
        for (const Part& part : parts) mended[part.segment] = part.data;
        for (Part& packet : found->packets)
            if (Name_Other_Number(packet, number, parts.front().Number())) mended[packet.segment] = packet.data;
    }
    for (Part& packet : found->packets)
        if (Blank_XMP_Thumbnails(std::span(packet.data).subspan(Packet_Head.size())))
            mended[packet.segment] = packet.data;
    return mended;
}

Result<Bytes> XMP_Segments(const Bytes& packet)
{
    if (packet.empty()) return Bytes();
    if (packet.size() <= Longest_Segment_Data - Packet_Head.size())
        return Segment_Of(std::string(Packet_Head).append(Text_Of(packet)));
    const std::string_view extended = Unwrapped(Text_Of(packet));
    if (extended.size() > Most_Extended)
        return Failure("the XMP packet of " + std::to_string(extended.size()) +
                       " bytes does not fit into a JPEG file, " + std::to_string(Most_Extended) + " are the limit");
    if (extended.empty()) return Bytes();
    const std::string number = Number_Of(extended);
    Bytes segments = Segment_Of(std::string(Packet_Head) + Pointing_Packet(number));
    for (std::size_t at = 0; at < extended.size(); at += Longest_Part) {
        std::string data = std::string(Extension_Head) + number;
        Append_Long(data, extended.size());
        Append_Long(data, at);
        const Bytes segment = Segment_Of(data.append(extended.substr(at, Longest_Part)));
        segments.insert(segments.end(), segment.begin(), segment.end());
    }
    return segments;
}
