#pragma once

#include "frame/files/Regular_File.h"
#include "frame/files/Result.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

// The head of a JPEG file: the marker segments in front of its first scan. Only markers, lengths and the first bytes of
// each segment are read; the contents stay in the file until somebody asks.

enum class Segment_Kind {
    JFIF,      ///< version, resolution
    JFXX,      ///< a thumbnail beside JFIF
    EXIF,      ///< camera block
    Profile,   ///< a part of an ICC profile
    Resources, ///< a part of the image resources, see Image_Resources.h
    Adobe,     ///< says which colours are stored
    Script,    ///< our own, see Jpeg_Texts.h
    Comment,
    Foreign, ///< any other application segment
    Coding,  ///< tables, frame header and the like
};

struct Jpeg_Segment {
    std::uint8_t marker = 0;
    Segment_Kind kind = Segment_Kind::Coding;
    std::int64_t at = 0;               ///< of the 0xFF in front of the marker
    std::int64_t data_at = 0;          ///< behind the length
    std::uint32_t bytes = 0;           ///< of the data
    std::array<std::byte, 32> first{}; ///< the data's first bytes, as far as it reaches

    std::int64_t End() const { return data_at + bytes; }
    unsigned Byte(std::size_t i) const { return std::to_integer<unsigned>(first[i]); }
    unsigned Short(std::size_t i) const { return Byte(i) << 8 | Byte(i + 1); }
};

struct Jpeg_Head {
    std::vector<Jpeg_Segment> segments; ///< in the file's order
    std::int64_t scan_at = 0;           ///< of the 0xFF of the first scan
    int width = 0;                      ///< as stored
    int height = 0;
    int precision = 0; ///< bits per sample
    int components = 0;
    int process = 0;         ///< the low half of the frame's marker: which of the ways of coding
    bool arithmetic = false; ///< coded in the arithmetic way instead of Huffman's

    /// The first segment of a kind, or null.
    const Jpeg_Segment* Find(Segment_Kind kind) const;
};

/// Fails when the file is no JPEG, ends early, has no frame header, or more segments than any real picture.
Result<Jpeg_Head> Read_Jpeg_Head(const Regular_File& file);

/// The data of a segment; fails when the file has shrunk meanwhile.
Result<std::vector<std::byte>> Read_Segment(const Regular_File& file, const Jpeg_Segment& segment);

/// True when an end mark stands behind the beginning of the first scan. A file without one may have been cut off.
bool Has_End_Mark(const Regular_File& file);

/// Where the end mark of the picture ends; the size of the file when there is none. What stands behind belongs to others:
/// further pictures, films, padding.
std::int64_t End_Of_Picture(const Regular_File& file, const Jpeg_Head& head);

/// Marker, length and data as they stand in a file. At most 65533 bytes of data.
std::vector<std::byte> Segment_Bytes(std::uint8_t marker, const std::vector<std::byte>& data);

constexpr std::size_t Longest_Segment_Data = 65533;
constexpr std::string_view Resources_Head("Photoshop 3.0\0", 14);
constexpr std::uint8_t Marker_SOI = 0xD8, Marker_EOI = 0xD9, Marker_SOS = 0xDA, Marker_APP0 = 0xE0, Marker_APP1 = 0xE1,
                       Marker_APP2 = 0xE2, Marker_APP10 = 0xEA, Marker_APP13 = 0xED, Marker_APP14 = 0xEE,
                       Marker_COM = 0xFE;
