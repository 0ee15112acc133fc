#pragma once

#include "bkimgutl/codecs/Codec.h"
#include "bkimgutl/codecs/Jpeg_Segments.h"

#include <string>
#include <string_view>
#include <vector>

// What a JPEG file says beside its pixels.
//
// The comment stands in COM segments; the texts of several are joined by line breaks, so that a save, which writes one,
// loses none. The script stands in APP10 segments of our own:
//
//   "Halvine script" 0 | part, from 1 | number of parts | up to 65516 bytes of the text
//
// An ICC profile is put together from its APP2 segments in the same way.

Result<std::string> Comment_Of_Jpeg(const Regular_File& file, const Jpeg_Head& head);

/// Empty without one; fails when parts are missing or contradict each other.
Result<std::string> Script_Of_Jpeg(const Regular_File& file, const Jpeg_Head& head);

Result<std::vector<std::byte>> EXIF_Of_Jpeg(const Regular_File& file, const Jpeg_Head& head);
Result<std::vector<std::byte>> Profile_Of_Jpeg(const Regular_File& file, const Jpeg_Head& head);
/// The image resources, put together from their segments in the file's order; empty without any.
Result<std::vector<std::byte>> Resources_Of_Jpeg(const Regular_File& file, const Jpeg_Head& head);

/// Size and resolution upright; the resolution is JFIF's, or else EXIF's.
Result<Picture_Facts> Facts_Of_Jpeg(const Regular_File& file, const Jpeg_Head& head);

/// Whole segments, ready to write. Both texts must be within the limits; a profile of more than 255 parts fails.
std::vector<std::byte> Comment_Segments(std::string_view comment);
std::vector<std::byte> Script_Segments(std::string_view script);
Result<std::vector<std::byte>> Profile_Segments(const std::vector<std::byte>& profile);
