#pragma once

#include <cstddef>
#include <cstdint>

/// Vector code of the table maps, one row at a time; the best version for the processor is chosen at run time.

struct Byte_Map {
    alignas(64) std::uint8_t level[256];
};

/// Tables of the three channels in memory order (blue, green, red) and of the luminance.
struct Channel_Maps {
    Byte_Map channel[3];
    Byte_Map luminance;
    bool has_luminance = false;
};

/// Saturation and value, and 65536 / n as bytes for the divisions on the way to HSV.
struct Hsv_Maps {
    Byte_Map saturation;
    Byte_Map value;
    Byte_Map reciprocal_low;
    Byte_Map reciprocal_high;
};

/// in and out may be the same row.
void Map_Bytes(const std::uint8_t* in, std::uint8_t* out, std::size_t bytes, const Byte_Map& map);
void Map_Color_Row(const std::uint8_t* in, std::uint8_t* out, std::size_t pixels, const Channel_Maps& maps);
void Map_Hsv_Row(const std::uint8_t* in, std::uint8_t* out, std::size_t pixels, const Hsv_Maps& maps);
