#pragma once

#include <cstdint>

/// A bitmap of the library; 0 means failure. A handle that was released, or was never given out, is refused.
using Bitmap_Handle = std::int32_t;

/// 16-bit truth value of the contract: 0 is false, anything else true. Functions answer -1 for true.
using Flag = std::int16_t;
constexpr Flag Flag_True = -1;
constexpr Flag Flag_False = 0;

/// File types, as records keep them.
enum class Image_File_Type : std::int32_t {
    Unknown = 0, ///< as an argument: find out from the signature
    JPEG = 1,
    TIFF = 2,
};

/// Bits of a component mask. Script texts and histograms use the same bits.
enum Component : std::int32_t {
    Component_Red = 1,
    Component_Green = 2,
    Component_Blue = 4,
    Component_RGB = 7,
    Component_Luminance = 8,
    Component_Cyan = 16,
    Component_Magenta = 32,
    Component_Yellow = 64,
    Component_Black = 128,
    Component_CMYK = 240,
};

/// Resampling filters by number, 1 to 8.
enum class Interpolation_Method : std::int32_t {
    None = 0,
    Box = 1,
    Triangle = 2,
    Bell = 3,
    Hermite = 4,
    B_Spline = 5,
    Lanczos2 = 6,
    Lanczos3 = 7,
    Mitchell = 8,
};

/// Special values of the quality argument of Save_Bitmap_To_File besides 0 to 100.
constexpr std::int32_t Quality_Default = -1;
constexpr std::int32_t Quality_Of_Parent = -2;
