#pragma once

#include "bkimgutl/codecs/Jpeg_Segments.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

// XMP in a JPEG file: a packet in one segment, and where that is too small an extended packet in further segments, which
// the first one names by a number of 32 digits. Elsewhere there is room for all of it in one packet.

/// The whole packet, the extended one worked into it; empty when the file has none. Fails when parts of the extended
/// packet are missing, or when With_Extended_XMP does.
Result<std::vector<std::byte>> XMP_Of_Jpeg(const Regular_File& file, const Jpeg_Head& head);

/// Whole segments, ready to write: the packet as it is where one holds it; else a short packet that names the extended one
/// in the segments behind it, which is the packet without what wraps it. Nothing for an empty packet; fails for one of
/// more than 64 MiB, which XMP_Of_Jpeg would not read back.
Result<std::vector<std::byte>> XMP_Segments(const std::vector<std::byte>& packet);

/// Puts what `extended` says into `packet`: all of it where XMP_Segments split it off; else its descriptions go in front of
/// the end of the packet's RDF element. Fails where that cannot be done without knowing more of XML.
Result<std::string> With_Extended_XMP(std::string packet, std::string_view extended);

/// Data of segments, to be written instead of what stands in the file; of the same length.
using Mended_Segments = std::map<const Jpeg_Segment*, std::vector<std::byte>>;

/// The segments of `head` that hold thumbnails in XMP, with these blanked; an extended packet gets another number then.
Result<Mended_Segments> XMP_Without_Thumbnails(const Regular_File& file, const Jpeg_Head& head);
