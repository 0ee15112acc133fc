#include "bkimgutl/codecs/Stored_Text.h"

#include <cstdint>

namespace {

/// What Windows-1252 has at 0x80 to 0x9F.
constexpr std::uint16_t Upper_Controls[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

/// Length of the valid sequence at the start of `bytes`; 0 when there is none.
std::size_t Sequence_Length(std::string_view bytes)
{
    const auto byte = [&](std::size_t i) { return i < bytes.size() ? unsigned(std::uint8_t(bytes[i])) : 0U; };
    const auto follows = [&](std::size_t i) { return (byte(i) & 0xC0U) == 0x80U; };
    const unsigned first = byte(0);
    if (first < 0x80) return 1;
    if (first >= 0xC2 && first <= 0xDF) return follows(1) ? 2 : 0;
    if (first >= 0xE0 && first <= 0xEF) {
        const bool shortest = first != 0xE0 || byte(1) >= 0xA0;
        const bool no_surrogate = first != 0xED || byte(1) < 0xA0;
        return follows(1) && follows(2) && shortest && no_surrogate ? 3 : 0;
    }
    if (first >= 0xF0 && first <= 0xF4) {
        const bool shortest = first != 0xF0 || byte(1) >= 0x90;
        const bool in_range = first != 0xF4 || byte(1) < 0x90;
        return follows(1) && follows(2) && follows(3) && shortest && in_range ? 4 : 0;
    }
    return 0;
}

void Append_UTF8(std::string& text, unsigned code)
{
    if (code < 0x80) {
        text += char(code);
    } else if (code < 0x800) {
        text += char(0xC0 | code >> 6);
        text += char(0x80 | (code & 0x3F));
    } else {
        text += char(0xE0 | code >> 12);
        text += char(0x80 | (code >> 6 & 0x3F));
        text += char(0x80 | (code & 0x3F));
    }
}

} // namespace

bool Is_UTF8(std::string_view bytes)
{
    while (!bytes.empty()) {
        const std::size_t length = Sequence_Length(bytes);
        if (length == 0) return false;
        bytes.remove_prefix(length);
    }
    return true;
}

std::string UTF8_From_Stored(std::string_view bytes)
{
    if (Is_UTF8(bytes)) return std::string(bytes);
    std::string text;
    for (const char c : bytes) {
        const unsigned code = std::uint8_t(c);
        Append_UTF8(text, code >= 0x80 && code < 0xA0 ? Upper_Controls[code - 0x80] : code);
    }
    return text;
}
