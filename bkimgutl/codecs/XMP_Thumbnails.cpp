#include "bkimgutl/codecs/XMP_Thumbnails.h"

#include <algorithm>
#include <set>
#include <string>
#include <string_view>

namespace {

using namespace std::string_view_literals;

constexpr auto Name_Space = "http://ns.adobe.com/xap/1.0/g/img/"sv;
constexpr auto Declaration = "xmlns:"sv;
constexpr auto Local_Name = ":image"sv;
constexpr auto White = " \t\r\n"sv;

bool Is_Of_A_Name(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' || c == '_' ||
           c == '.' || static_cast<signed char>(c) < 0;
}

/// The name that ends in front of `end`.
std::string_view Name_Before(std::string_view text, std::size_t end)
{
    std::size_t start = end;
    while (start > 0 && Is_Of_A_Name(text[start - 1])) --start;
    return text.substr(start, end - start);
}

std::string_view Without_White_Behind(std::string_view text)
{
    return text.substr(0, text.find_last_not_of(White) + 1);
}

/// What the packet calls the name space of the pictures.
std::set<std::string, std::less<>> Prefixes_In(std::string_view packet)
{
    std::set<std::string, std::less<>> prefixes;
    for (std::size_t at = packet.find(Name_Space); at != packet.npos; at = packet.find(Name_Space, at + 1)) {
        if (at == 0) continue;
        std::string_view before = Without_White_Behind(packet.substr(0, at - 1)); // in front of the quote
        if (!before.ends_with('=')) continue;
        before = Without_White_Behind(before.substr(0, before.size() - 1));
        const std::string_view prefix = Name_Before(before, before.size());
        if (before.substr(0, before.size() - prefix.size()).ends_with(Declaration)) prefixes.emplace(prefix);
    }
    return prefixes;
}

struct Range {
    std::size_t start;
    std::size_t end;
};

/// Of the element whose name ends in front of `at`; empty when it has no content.
Range Content_Of_Element(std::string_view packet, std::string_view prefix, std::size_t at)
{
    const std::size_t start = std::min(packet.find('>', at), packet.size() - 1) + 1;
    if (packet[start - 2] == '/') return {start, start};
    const std::string close = "</" + std::string(prefix).append(Local_Name);
    return {start, std::min(packet.find(close, start), packet.size())};
}

/// Of the attribute whose name ends in front of `at`; empty when it is none.
Range Value_Of_Attribute(std::string_view packet, std::size_t at)
{
    const auto skip = [&] { at = std::min(packet.find_first_not_of(White, at), packet.size()); };
    skip();
    if (!packet.substr(at).starts_with('=')) return {at, at};
    ++at;
    skip();
    if (at == packet.size() || (packet[at] != '"' && packet[at] != '\'')) return {at, at};
    return {at + 1, std::min(packet.find(packet[at], at + 1), packet.size())};
}

} // namespace

bool Blank_XMP_Thumbnails(std::span<std::byte> bytes)
{
    const std::string_view packet(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    const auto prefixes = Prefixes_In(packet);
    bool found = false;
    for (std::size_t at = 0; !prefixes.empty() && (at = packet.find(Local_Name, at)) != packet.npos;) {
        const std::string_view prefix = Name_Before(packet, at);
        const std::size_t name_at = at - prefix.size();
        at += Local_Name.size();
        if (prefixes.count(prefix) == 0 || name_at == 0 || (at < packet.size() && Is_Of_A_Name(packet[at]))) continue;
        const char before = packet[name_at - 1];
        if (before == '/') continue; // the end of an element
        const Range picture = before == '<' ? Content_Of_Element(packet, prefix, at) : Value_Of_Attribute(packet, at);
        const auto there = bytes.subspan(picture.start, picture.end - picture.start);
        const auto is_blank = [](std::byte byte) { return byte == std::byte(' '); };
        found = found || !std::all_of(there.begin(), there.end(), is_blank);
        std::fill(there.begin(), there.end(), std::byte(' '));
        at = picture.end;
    }
    return found;
}
