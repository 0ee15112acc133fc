#include "bkimgutl/codecs/Jpeg_Segments.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace {

constexpr std::size_t Most_Segments = 20'000;
constexpr std::int64_t Most_Garbage = 65'536; ///< between two segments

/// Reads single bytes through a window, since segments are short and stand side by side.
class Byte_Window {
public:
    explicit Byte_Window(const Regular_File& file) : file_(file) {}

    /// Copies what there is; the number of bytes is smaller only at the end of the file.
    std::size_t Copy(std::int64_t at, std::byte* target, std::size_t bytes)
    {
        if (at < start_ || at + std::int64_t(bytes) > start_ + std::int64_t(filled_)) {
            const auto got = file_.Read_At(at, window_);
            start_ = at;
            filled_ = got ? *got : 0;
        }
        const std::size_t offset = std::size_t(at - start_);
        const std::size_t there = std::min(bytes, filled_ - std::min(filled_, offset));
        std::memcpy(target, window_.data() + offset, there);
        return there;
    }

    int Byte(std::int64_t at)
    {
        std::byte byte{};
        return Copy(at, &byte, 1) == 1 ? std::to_integer<int>(byte) : -1;
    }

private:
    const Regular_File& file_;
    std::array<std::byte, 8192> window_{};
    std::int64_t start_ = 0;
    std::size_t filled_ = 0;
};

bool Starts_With(const Jpeg_Segment& segment, std::string_view text)
{
    return segment.bytes >= text.size() && std::memcmp(segment.first.data(), text.data(), text.size()) == 0;
}

Segment_Kind Kind_Of(const Jpeg_Segment& segment)
{
    using namespace std::string_view_literals;
    struct Signature {
        std::uint8_t marker;
        std::string_view text;
        std::uint32_t least_bytes;
        Segment_Kind kind;
    };
    static constexpr Signature signatures[] = {
        {Marker_APP0, "JFIF\0"sv, 14, Segment_Kind::JFIF},
        {Marker_APP0, "JFXX\0"sv, 6, Segment_Kind::JFXX},
        {Marker_APP1, "Exif\0\0"sv, 6, Segment_Kind::EXIF},
        {Marker_APP2, "ICC_PROFILE\0"sv, 14, Segment_Kind::Profile},
        {Marker_APP10, "Halvine script\0"sv, 17, Segment_Kind::Script},
        {Marker_APP13, Resources_Head, 14, Segment_Kind::Resources},
        {Marker_APP14, "Adobe"sv, 12, Segment_Kind::Adobe},
    };
    if (segment.marker == Marker_COM) return Segment_Kind::Comment;
    for (const Signature& signature : signatures) {
        if (segment.marker == signature.marker && segment.bytes >= signature.least_bytes &&
            Starts_With(segment, signature.text))
            return signature.kind;
    }
    return segment.marker >= Marker_APP0 && segment.marker <= 0xEF ? Segment_Kind::Foreign : Segment_Kind::Coding;
}

bool Stands_Alone(int marker)
{
    return marker == 0x01 || (marker >= 0xD0 && marker <= 0xD7);
}

bool Is_Frame_Header(int marker)
{
    return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}

/// Position of the 0xFF in front of the next marker at or behind `at`; fill bytes and a little garbage are passed over.
std::int64_t Next_Marker(Byte_Window& window, std::int64_t at)
{
    for (const std::int64_t end = at + Most_Garbage; at < end; ++at) {
        const int first = window.Byte(at);
        if (first < 0) return -1;
        if (first != 0xFF) continue;
        const int second = window.Byte(at + 1);
        if (second > 0 && second != 0xFF) return at;
    }
    return -1;
}

void Take_Frame(Jpeg_Head& head, const Jpeg_Segment& segment)
{
    head.precision = int(segment.Byte(0));
    head.height = int(segment.Short(1));
    head.width = int(segment.Short(3));
    head.components = int(segment.Byte(5));
    head.process = segment.marker & 0x0F;
    head.arithmetic = segment.marker >= 0xC9;
}

/// One segment behind its marker at `at`; false when the file ends inside.
bool Read_One(Byte_Window& window, const Regular_File& file, std::int64_t at, int marker, Jpeg_Segment& segment)
{
    std::byte length[2];
    if (window.Copy(at + 2, length, 2) != 2) return false;
    const unsigned bytes = std::to_integer<unsigned>(length[0]) << 8 | std::to_integer<unsigned>(length[1]);
    if (bytes < 2) return false;
    segment.marker = std::uint8_t(marker);
    segment.at = at;
    segment.data_at = at + 4;
    segment.bytes = bytes - 2;
    if (segment.End() > file.Size()) return false;
    window.Copy(segment.data_at, segment.first.data(), std::min<std::size_t>(segment.first.size(), segment.bytes));
    segment.kind = Kind_Of(segment);
    return true;
}

Result<void> Check_Frame(const Jpeg_Head& head)
{
    if (head.components == 0) return Failure("has no picture in front of its data");
    if (head.width == 0 || head.height == 0) return Failure("has a width or height of 0");
    return {};
}

} // namespace

const Jpeg_Segment* Jpeg_Head::Find(Segment_Kind kind) const
{
    const auto found = std::find_if(segments.begin(), segments.end(),
                                    [kind](const Jpeg_Segment& segment) { return segment.kind == kind; });
    return found == segments.end() ? nullptr : &*found;
}

Result<Jpeg_Head> Read_Jpeg_Head(const Regular_File& file)
{
    Byte_Window window(file);
    if (window.Byte(0) != 0xFF || window.Byte(1) != Marker_SOI)
        return Failure(file.Size() == 0 ? "is empty" : "is not a JPEG file");
    Jpeg_Head head;
    for (std::int64_t at = 2;;) {
        at = Next_Marker(window, at);
        if (at < 0) return Failure("ends before its picture data, or is damaged");
        const int marker = window.Byte(at + 1);
        if (Stands_Alone(marker) || marker == Marker_SOI) {
            at += 2;
            continue;
        }
        if (marker == Marker_EOI) return Failure("holds no picture data");
        Jpeg_Segment segment;
        if (!Read_One(window, file, at, marker, segment)) return Failure("ends inside its header, or is damaged");
        if (marker == Marker_SOS) {
            head.scan_at = at;
            break;
        }
        if (Is_Frame_Header(marker) && segment.bytes >= 6) Take_Frame(head, segment);
        if (head.segments.size() >= Most_Segments) return Failure("has too many segments");
        at = segment.End();
        head.segments.push_back(segment);
    }
    if (auto good = Check_Frame(head); !good) return tl::make_unexpected(good.error());
    return head;
}

Result<std::vector<std::byte>> Read_Segment(const Regular_File& file, const Jpeg_Segment& segment)
{
    std::vector<std::byte> data(segment.bytes);
    const auto got = file.Read_At(segment.data_at, data);
    if (!got) return tl::make_unexpected(got.error());
    if (*got != data.size()) return Failure("has become shorter while it was read");
    return data;
}

std::int64_t End_Of_Picture(const Regular_File& file, const Jpeg_Head& head)
{
    Byte_Window window(file);
    constexpr int stuffed = 0x00, first_restart = 0xD0, last_restart = 0xD7;
    for (std::int64_t at = head.scan_at;;) {
        const int byte = window.Byte(at);
        if (byte < 0) return file.Size();
        if (byte != 0xFF) {
            ++at;
            continue;
        }
        const int marker = window.Byte(at + 1);
        if (marker == Marker_EOI) return at + 2;
        if (marker == 0xFF) {
            ++at; // a fill byte
        } else if (marker == stuffed || (marker >= first_restart && marker <= last_restart)) {
            at += 2;
        } else {
            const int high = window.Byte(at + 2);
            const int low = window.Byte(at + 3);
            if (high < 0 || low < 0) return file.Size();
            at += 2 + std::max(2, high << 8 | low); // tables, and the heads of further scans
        }
    }
}

std::vector<std::byte> Segment_Bytes(std::uint8_t marker, const std::vector<std::byte>& data)
{
    const std::size_t length = data.size() + 2;
    const std::byte head[] = {std::byte(0xFF), std::byte(marker), std::byte(length >> 8), std::byte(length)};
    std::vector<std::byte> bytes(sizeof head + data.size());
    std::copy(data.begin(), data.end(), std::copy(std::begin(head), std::end(head), bytes.begin()));
    return bytes;
}

bool Has_End_Mark(const Regular_File& file)
{
    const auto head = Read_Jpeg_Head(file);
    if (!head) return false;
    // From the end, where it nearly always stands; a step overlaps the next one by a byte.
    constexpr std::int64_t step = 1 << 16;
    std::vector<std::byte> bytes(step + 1);
    const std::byte mark[] = {std::byte(0xFF), std::byte(Marker_EOI)};
    for (std::int64_t end = file.Size(); end > head->scan_at;) {
        const std::int64_t start = std::max(end - step, head->scan_at);
        const auto wanted = std::span(bytes).first(std::size_t(std::min(end + 1, file.Size()) - start));
        const auto got = file.Read_At(start, wanted);
        if (!got || *got != wanted.size()) return false;
        if (std::search(wanted.begin(), wanted.end(), std::begin(mark), std::end(mark)) != wanted.end()) return true;
        end = start;
    }
    return false;
}
