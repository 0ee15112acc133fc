#pragma once

#include "bkimgutl/codecs/Jpeg_Segments.h"

#include <string>
#include <vector>

// XMP in a JPEG file: a packet in one segment, and where that is too small an extended packet in further segments, which
// the first one names by a number of 32 digits. Elsewhere there is room for all of it in one packet.

/// The whole packet, the extended one worked into it; empty when the file has none. An extended packet that is incomplete,
/// or not written in the usual form, is left out.
Result<std::vector<std::byte>> XMP_Of_Jpeg(const Regular_File& file, const Jpeg_Head& head);

/// The packet as a segment's data; empty when it is empty or too long for one.
std::vector<std::byte> XMP_Segment_Data(std::vector<std::byte> packet);

/// Puts what `extended` says into `packet`: its descriptions go in front of the end of the packet's RDF element. Returns
/// the packet as it is where that cannot be done without knowing more of XML.
std::string With_Extended_XMP(std::string packet, std::string_view extended);
