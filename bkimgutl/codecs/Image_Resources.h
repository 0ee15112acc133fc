#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

// Image resources: numbered blocks of data that picture editors store in a file, the IPTC record (caption, keywords, author
// and so on) among them. A JPEG file keeps them in APP13 segments behind "Photoshop 3.0" 0, a TIFF file in tag 34377, where
// a tag of its own, 33723, holds the IPTC record as well:
//
//   "8BIM" | number (2) | name: length, characters, even in all | bytes of the data (4) | data, even in all
//
// The bytes are other programs' and go along as they stand. Damage ends what is understood of them, not what is carried.

using Resource_Bytes = std::vector<std::byte>;

/// The IPTC record among the resources; empty without one.
Resource_Bytes IPTC_Of_Resources(const Resource_Bytes& resources);

/// The resources with that IPTC record in front, where readers find it first; as they are when they hold it already or
/// when it is empty. Padding with zeros is no difference.
Resource_Bytes Resources_With_IPTC(Resource_Bytes resources, const Resource_Bytes& iptc);

/// The record as tag 33723 holds it. Some writers take it for numbers of 4 bytes and swap each of them.
Resource_Bytes IPTC_In_Order(Resource_Bytes iptc);

/// Fills the embedded thumbnails with zeros, in place: they show a picture that the new file does not hold.
void Blank_Thumbnails(Resource_Bytes& resources);

/// Whole APP13 segments. A resource stays within one where it fits.
Resource_Bytes Resource_Segments(const Resource_Bytes& resources);
