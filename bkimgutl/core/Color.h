#pragma once

#include <cstdint>

// Colour conversions in integers. There is one of each: the application and the kernels use these.

/// Luminance 0..255 of channels 0..255.
constexpr int RGB_To_Luminance(int red, int green, int blue)
{
    return (19660 * red + 38666 * green + 7209 * blue + 32768) / 65536;
}

/// Hue 0..359, saturation and value 0..255. A colour without saturation leaves `hue` as it was passed in.
void RGB_To_HSV(int red, int green, int blue, int& hue, int& saturation, int& value);

/// Hue is brought into 0..359 by adding 360 and taking the remainder; saturation and value are limited to 0..255.
void HSV_To_RGB(int hue, int saturation, int value, int& red, int& green, int& blue);

/// Parameters of the CMYK split in force, see Set_CMYK_Parameters_CPP.
struct CMYK_Parameters {
    float black_gamma = 0.5F;
    std::int32_t black_start = 0;
    std::int32_t ink_limit = 765;
};

/// Tables of the CMYK split for the parameters in force.
struct CMYK_Tables {
    std::uint8_t black[256];
    std::int32_t removal[256];
};
const CMYK_Tables& Current_CMYK_Tables();
void Set_CMYK_Parameters(const CMYK_Parameters& parameters);

/// Planes of a colour as grey bytes (255 is no ink). False when a plane leaves 0..255.
struct CMYK_Planes {
    int cyan, magenta, yellow, black;
};
bool RGB_To_CMYK_Planes(int red, int green, int blue, const CMYK_Tables& tables, CMYK_Planes& planes);
