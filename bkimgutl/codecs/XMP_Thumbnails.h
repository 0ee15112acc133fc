#pragma once

#include <cstddef>
#include <span>

// Programs keep small pictures of a photograph inside of its XMP packet, as JPEG files in base64: elements or attributes
// named "image" of one name space. The packet is UTF-8.

/// Fills such pictures with spaces, in place, so that a packet of the old picture does not show what the new one no longer
/// holds. Where the end of one is missing it reaches to the end of the packet. Takes time in proportion to the length.
/// True when there was anything to fill.
bool Blank_XMP_Thumbnails(std::span<std::byte> packet);
