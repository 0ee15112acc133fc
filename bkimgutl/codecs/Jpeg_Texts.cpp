#include "bkimgutl/codecs/Jpeg_Texts.h"

#include "bkimgutl/codecs/EXIF_Block.h"
#include "bkimgutl/codecs/Save_Checks.h"
#include "frame/files/Limits.h"

#include <algorithm>
#include <cmath>
#include <span>

namespace {

using namespace std::string_view_literals;

/// A text or block spread over numbered segments: a signature, the number of the part from 1, the number of parts, data.
struct Numbered_Parts {
    Segment_Kind kind;
    std::uint8_t marker;
    std::string_view signature;
    std::string_view name; ///< for messages
    std::size_t most_bytes;
};

constexpr std::size_t Most_Profile_Bytes = 255 * (Longest_Segment_Data - 14);

Numbered_Parts Script_Parts()
{
    return {Segment_Kind::Script, Marker_APP10, "Halvine script\0"sv, "script"sv,
            std::size_t(Current_Limits().script_bytes)};
}

Numbered_Parts Profile_Parts()
{
    return {Segment_Kind::Profile, Marker_APP2, "ICC_PROFILE\0"sv, "colour profile"sv, Most_Profile_Bytes};
}

/// The segments of the parts in the order of their numbers; fails unless each number stands there once.
Result<std::vector<const Jpeg_Segment*>> Ordered_Parts(const Jpeg_Head& head, const Numbered_Parts& parts)
{
    std::vector<const Jpeg_Segment*> ordered;
    const std::size_t number_at = parts.signature.size();
    for (const Jpeg_Segment& segment : head.segments) {
        if (segment.kind != parts.kind) continue;
        const unsigned number = segment.Byte(number_at);
        const unsigned count = segment.Byte(number_at + 1);
        if (ordered.empty()) ordered.resize(count);
        if (number == 0 || number > count || count != ordered.size() || ordered[number - 1] != nullptr)
            return Failure("has a damaged " + std::string(parts.name));
        ordered[number - 1] = &segment;
    }
    if (std::find(ordered.begin(), ordered.end(), nullptr) != ordered.end())
        return Failure("has an incomplete " + std::string(parts.name));
    return ordered;
}

Result<std::vector<std::byte>> Joined_Parts(const Regular_File& file, const Jpeg_Head& head,
                                            const Numbered_Parts& parts)
{
    const auto ordered = Ordered_Parts(head, parts);
    if (!ordered) return tl::make_unexpected(ordered.error());
    const std::ptrdiff_t head_bytes = std::ptrdiff_t(parts.signature.size()) + 2;
    std::vector<std::byte> joined;
    for (const Jpeg_Segment* segment : *ordered) {
        const auto data = Read_Segment(file, *segment);
        if (!data) return data;
        joined.insert(joined.end(), data->begin() + head_bytes, data->end());
        if (joined.size() > parts.most_bytes)
            return Failure("has a " + std::string(parts.name) + " of more than " + std::to_string(parts.most_bytes) +
                           " bytes");
    }
    return joined;
}

std::vector<std::byte> Split_Into_Parts(std::span<const std::byte> whole, const Numbered_Parts& parts)
{
    const std::size_t most = Longest_Segment_Data - parts.signature.size() - 2;
    const std::size_t count = (whole.size() + most - 1) / most;
    std::vector<std::byte> segments;
    for (std::size_t part = 0; part < count; ++part) {
        const auto piece = whole.subspan(part * most, std::min(most, whole.size() - part * most));
        std::vector<std::byte> data;
        for (const char c : parts.signature) data.push_back(std::byte(c));
        data.push_back(std::byte(part + 1));
        data.push_back(std::byte(count));
        data.insert(data.end(), piece.begin(), piece.end());
        const auto bytes = Segment_Bytes(parts.marker, data);
        segments.insert(segments.end(), bytes.begin(), bytes.end());
    }
    return segments;
}

constexpr int Largest_Resolution = 65535;

int Resolution_From(double value)
{
    return value >= 1 && value <= Largest_Resolution ? int(std::lround(value)) : -1;
}

void Take_JFIF_Resolution(const Jpeg_Segment& segment, Picture_Facts& facts)
{
    const unsigned unit = segment.Byte(7); // 1 is per inch, 2 per centimetre, 0 only a ratio
    if (unit != 1 && unit != 2) return;
    const double to_inch = unit == 2 ? 2.54 : 1;
    facts.horizontal_dpi = Resolution_From(segment.Short(8) * to_inch);
    facts.vertical_dpi = Resolution_From(segment.Short(10) * to_inch);
}

void Take_EXIF_Resolution(const EXIF_View& view, Picture_Facts& facts)
{
    const std::size_t directory = view.First_Directory();
    const auto unit_entry = view.Find(directory, 296);
    const auto unit = unit_entry ? view.Number(*unit_entry).value_or(2) : 2; // per inch unless it says otherwise
    if (unit != 2 && unit != 3) return;
    const double to_inch = unit == 3 ? 2.54 : 1;
    const auto read = [&](std::uint16_t tag) {
        const auto entry = view.Find(directory, tag);
        return entry ? Resolution_From(view.Ratio(*entry).value_or(0) * to_inch) : -1;
    };
    facts.horizontal_dpi = read(282);
    facts.vertical_dpi = read(283);
}

} // namespace

Result<std::string> Comment_Of_Jpeg(const Regular_File& file, const Jpeg_Head& head)
{
    std::string comment;
    for (const Jpeg_Segment& segment : head.segments) {
        if (segment.kind != Segment_Kind::Comment) continue;
        const auto data = Read_Segment(file, segment);
        if (!data) return tl::make_unexpected(data.error());
        std::string text(reinterpret_cast<const char*>(data->data()), data->size());
        text.erase(text.find_last_not_of('\0') + 1); // some programs store the terminating zero
        if (!comment.empty() && !text.empty()) comment += '\n';
        comment += text;
        // Enough for any reader to see that it does not fit; the rest of a hostile file stays unread.
        if (comment.size() > Longest_Comment()) break;
    }
    return comment;
}

Result<std::string> Script_Of_Jpeg(const Regular_File& file, const Jpeg_Head& head)
{
    const auto joined = Joined_Parts(file, head, Script_Parts());
    if (!joined) return tl::make_unexpected(joined.error());
    return std::string(reinterpret_cast<const char*>(joined->data()), joined->size());
}

Result<std::vector<std::byte>> EXIF_Of_Jpeg(const Regular_File& file, const Jpeg_Head& head)
{
    const Jpeg_Segment* segment = head.Find(Segment_Kind::EXIF);
    return segment == nullptr ? std::vector<std::byte>() : Read_Segment(file, *segment);
}

Result<std::vector<std::byte>> Profile_Of_Jpeg(const Regular_File& file, const Jpeg_Head& head)
{
    return Joined_Parts(file, head, Profile_Parts());
}

Result<std::vector<std::byte>> Resources_Of_Jpeg(const Regular_File& file, const Jpeg_Head& head)
{
    constexpr std::size_t most_bytes = std::size_t(64) << 20;
    std::vector<std::byte> resources;
    for (const Jpeg_Segment& segment : head.segments) {
        if (segment.kind != Segment_Kind::Resources) continue;
        const auto data = Read_Segment(file, segment);
        if (!data) return data;
        resources.insert(resources.end(), data->begin() + std::ptrdiff_t(Resources_Head.size()), data->end());
        if (resources.size() > most_bytes)
            return Failure("has image resources of more than " + std::to_string(most_bytes) + " bytes");
    }
    return resources;
}

Result<Picture_Facts> Facts_Of_Jpeg(const Regular_File& file, const Jpeg_Head& head)
{
    Picture_Facts facts{.width = head.width, .height = head.height, .pixel_depth = head.precision * head.components};
    const auto block = EXIF_Of_Jpeg(file, head);
    if (!block) return tl::make_unexpected(block.error());
    facts.orientation = Orientation_Of_EXIF_Block(*block);
    if (const Jpeg_Segment* jfif = head.Find(Segment_Kind::JFIF)) Take_JFIF_Resolution(*jfif, facts);
    if (facts.horizontal_dpi < 1 && facts.vertical_dpi < 1) {
        if (const auto view = EXIF_View::Of(*block)) Take_EXIF_Resolution(*view, facts);
    }
    if (facts.orientation >= 5) { // these four lie on their side
        std::swap(facts.width, facts.height);
        std::swap(facts.horizontal_dpi, facts.vertical_dpi);
    }
    return facts;
}

std::vector<std::byte> Comment_Segments(std::string_view comment)
{
    if (comment.empty()) return {};
    const auto bytes = std::as_bytes(std::span(comment));
    return Segment_Bytes(Marker_COM, {bytes.begin(), bytes.end()});
}

std::vector<std::byte> Script_Segments(std::string_view script)
{
    return Split_Into_Parts(std::as_bytes(std::span(script)), Script_Parts());
}

Result<std::vector<std::byte>> Profile_Segments(const std::vector<std::byte>& profile)
{
    if (profile.size() > Most_Profile_Bytes)
        return Failure("the colour profile of " + std::to_string(profile.size()) +
                       " bytes does not fit into a JPEG file, " + std::to_string(Most_Profile_Bytes) +
                       " are the limit");
    return Split_Into_Parts(profile, Profile_Parts());
}
