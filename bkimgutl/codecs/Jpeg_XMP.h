#pragma once

#include "bkimgutl/codecs/Jpeg_Segments.h"

#include <string>
#include <vector>

// XMP in a JPEG file: a packet in one segment, and where that is too small an extended packet in further segments, which
// the first one names by a number of 32 digits. Elsewhere there is room for all of it in one packet.

/// The whole packet, the extended one worked into it; empty when the file has none. An extended packet that is incomplete,
/// or not written in the usual form, is left out.
Result<std::vector<std::byte>> XMP_Of_Jpeg(const Regular_File& file, const Jpeg_Head& head);

/// Whole segments, ready to write: the packet as it is where one holds it; else a short packet that names the extended one
/// in the segments behind it, which is the packet without what wraps it. Nothing for an empty packet; fails for one of
/// more than 64 MiB, which XMP_Of_Jpeg would not read back.
Result<std::vector<std::byte>> XMP_Segments(const std::vector<std::byte>& packet);

/// Puts what `extended` says into `packet`: all of it where XMP_Segments split it off; else its descriptions go in front of
/// the end of the packet's RDF element. Returns the packet as it is where that cannot be done without knowing more of XML.
std::string With_Extended_XMP(std::string packet, std::string_view extended);
