#include "bkimgutl/codecs/Image_Resources.h"

#include "bkimgutl/codecs/Jpeg_Segments.h"

#include <algorithm>
#include <optional>
#include <span>
#include <string_view>

namespace {

using namespace std::string_view_literals;

constexpr std::uint16_t IPTC_Resource = 0x0404;
constexpr std::uint16_t Thumbnail_Resources[] = {0x0409, 0x040C};
constexpr auto Usual_Signature = "8BIM"sv;
constexpr std::string_view Signatures[] = {Usual_Signature, "AgHg"sv, "DCSR"sv, "MeSa"sv, "PHUT"sv};

struct Resource {
    std::uint16_t number = 0;
    std::size_t data_at = 0;
    std::size_t bytes = 0;
    std::size_t end = 0; ///< behind the padding
};

std::size_t Number_At(std::span<const std::byte> all, std::size_t at, std::size_t bytes)
{
    std::size_t value = 0;
    for (std::size_t i = 0; i < bytes; ++i) value = value << 8 | std::to_integer<std::size_t>(all[at + i]);
    return value;
}

std::size_t Even(std::size_t bytes)
{
    return bytes + bytes % 2;
}

/// The resource at that place; none at the end and where damage begins.
std::optional<Resource> Resource_At(std::span<const std::byte> all, std::size_t at)
{
    constexpr std::size_t signature = 4, number = 2, size = 4;
    const std::size_t name_at = at + signature + number;
    if (name_at >= all.size()) return std::nullopt;
    const std::string_view mark(reinterpret_cast<const char*>(all.data()) + at, signature);
    if (std::find(std::begin(Signatures), std::end(Signatures), mark) == std::end(Signatures)) return std::nullopt;
    const std::size_t size_at = name_at + Even(1 + Number_At(all, name_at, 1));
    if (size_at + size > all.size()) return std::nullopt;
    const std::size_t data_at = size_at + size;
    const std::size_t bytes = Number_At(all, size_at, size);
    if (bytes > all.size() - data_at) return std::nullopt;
    return Resource{std::uint16_t(Number_At(all, at + signature, number)), data_at, bytes,
                    std::min(data_at + Even(bytes), all.size())};
}

template <class Visit>
void For_Each_Resource(std::span<const std::byte> all, Visit visit)
{
    std::size_t at = 0;
    while (const auto resource = Resource_At(all, at)) {
        visit(*resource);
        at = resource->end;
    }
}

bool Same_But_For_Zeros(std::span<const std::byte> one, std::span<const std::byte> other)
{
    if (one.size() < other.size()) std::swap(one, other);
    const auto rest = one.subspan(other.size());
    return std::equal(other.begin(), other.end(), one.begin()) &&
           std::all_of(rest.begin(), rest.end(), [](std::byte byte) { return byte == std::byte(0); });
}

Resource_Bytes Resource_Of(std::uint16_t number, std::span<const std::byte> data)
{
    Resource_Bytes resource;
    for (const char c : Usual_Signature) resource.push_back(std::byte(c));
    for (const std::size_t byte : {std::size_t(number) >> 8, std::size_t(number), std::size_t(0), std::size_t(0),
                                   data.size() >> 24, data.size() >> 16, data.size() >> 8, data.size()})
        resource.push_back(std::byte(byte & 255));
    resource.insert(resource.end(), data.begin(), data.end());
    resource.resize(Even(resource.size()));
    return resource;
}

/// Where the segment that begins at `start` ends: behind the last whole resource that fits.
std::size_t End_Of_Piece(std::span<const std::byte> all, std::size_t start, std::size_t most)
{
    if (all.size() - start <= most) return all.size();
    std::size_t end = start;
    while (const auto resource = Resource_At(all, end)) {
        if (resource->end - start > most) break;
        end = resource->end;
    }
    return end > start ? end : start + most;
}

} // namespace

Resource_Bytes IPTC_Of_Resources(const Resource_Bytes& resources)
{
    std::optional<Resource_Bytes> found;
    For_Each_Resource(resources, [&](const Resource& resource) {
        const auto data = std::span(resources).subspan(resource.data_at, resource.bytes);
        if (!found && resource.number == IPTC_Resource) found.emplace(data.begin(), data.end());
    });
    return found.value_or(Resource_Bytes());
}

Resource_Bytes Resources_With_IPTC(Resource_Bytes resources, const Resource_Bytes& iptc)
{
    if (iptc.empty() || Same_But_For_Zeros(IPTC_Of_Resources(resources), iptc)) return resources;
    const Resource_Bytes first = Resource_Of(IPTC_Resource, iptc);
    resources.insert(resources.begin(), first.begin(), first.end());
    return resources;
}

Resource_Bytes IPTC_In_Order(Resource_Bytes iptc)
{
    constexpr auto mark = std::byte(0x1C); // begins each entry of the record
    constexpr std::size_t word = 4;
    if (iptc.size() < word || iptc[0] == mark || iptc[word - 1] != mark) return iptc;
    for (auto at = iptc.begin(); iptc.end() - at >= std::ptrdiff_t(word); at += word) std::reverse(at, at + word);
    return iptc;
}

void Blank_Thumbnails(Resource_Bytes& resources)
{
    For_Each_Resource(resources, [&](const Resource& resource) {
        const auto& numbers = Thumbnail_Resources;
        if (std::find(std::begin(numbers), std::end(numbers), resource.number) == std::end(numbers)) return;
        std::fill_n(resources.begin() + std::ptrdiff_t(resource.data_at), resource.bytes, std::byte(0));
    });
}

Resource_Bytes Resource_Segments(const Resource_Bytes& resources)
{
    const auto head = std::as_bytes(std::span(Resources_Head));
    const std::span all(resources);
    Resource_Bytes segments;
    for (std::size_t start = 0; start < all.size();) {
        const std::size_t end = End_Of_Piece(all, start, Longest_Segment_Data - head.size());
        Resource_Bytes data(head.begin(), head.end());
        data.insert(data.end(), all.begin() + std::ptrdiff_t(start), all.begin() + std::ptrdiff_t(end));
        const auto bytes = Segment_Bytes(Marker_APP13, data);
        segments.insert(segments.end(), bytes.begin(), bytes.end());
        start = end;
    }
    return segments;
}
