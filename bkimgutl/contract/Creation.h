#pragma once

#include "bkimgutl/contract/Types.h"

#include <cstddef>

/// Bitmaps, copies and geometry. A function that creates returns a new bitmap that belongs to the caller, or 0 with the
/// reason in Get_Last_Image_Error_String; its source is never changed. Degrees are counterclockwise as seen.

/// All zero; 1 byte per pixel is grey. bytes_per_pixel 0 stands for 3; bits_per_sample must be 8.
Bitmap_Handle Create_Empty_Bitmap_CPP(std::int32_t width, std::int32_t height, std::int32_t bytes_per_pixel,
                                      std::int32_t bits_per_sample);
Bitmap_Handle Create_Bitmap_Copy_CPP(Bitmap_Handle source);

/// A 3-byte copy of a 1-byte picture; a 3-byte one is copied.
Bitmap_Handle Create_RGB_From_Grayscale_Bitmap_CPP(Bitmap_Handle source);

/// Each pixel becomes x_factor by y_factor pixels, both 1 and up.
Bitmap_Handle Create_Integrally_Scaled_Bitmap_CPP(Bitmap_Handle source, std::int32_t x_factor, std::int32_t y_factor);

/// left and top are 1-based, unlike all other coordinates. Fails when the rectangle is empty or leaves the picture.
Bitmap_Handle Create_Cropped_Bitmap_CPP(Bitmap_Handle source, std::int32_t left, std::int32_t top, std::int32_t width,
                                        std::int32_t height);

/// degrees 90, 180 or 270; exact.
Bitmap_Handle Create_Rectilinearly_Rotated_Bitmap_CPP(Bitmap_Handle source, std::int32_t degrees);

/// degrees 0 to 359.999. The result holds the whole turned picture; uncovered corners take the background colour.
Bitmap_Handle Create_Arbitrarily_Rotated_Bitmap_CPP(Bitmap_Handle source, float degrees);

/// True mirrors left to right, false top to bottom.
Bitmap_Handle Create_Flipped_Bitmap_CPP(Bitmap_Handle source, Flag first_kind);

/// Resampling with the filter of an Interpolation_Method number, 1 to 8; its support widens when the picture shrinks.
Bitmap_Handle Create_Scaled_Bitmap_CPP(Bitmap_Handle source, std::int32_t new_width, std::int32_t new_height,
                                       std::int32_t interpolation_method);

/// Perspective correction along rows: a quadrilateral with level top and bottom becomes a rectangle. Row y of the result
/// shows the source's row y; left runs linearly from top_left (top row) to bottom_left (bottom row), right likewise.
/// top_left .. bottom_right  source positions in pixels, 0 is the leftmost pixel, fractions allowed; right exceeds left
/// new_width, new_height     size of the result (height equals the source's)
/// offset                    with `expand`, the source x of the result's column 0 in the row with the wider segment
/// expand                    false: columns 0 and new_width - 1 are left and right of each row. True: the row with the
///                           wider segment keeps its scale, the segments of all rows stand in the same columns, and what
///                           lies outside the picture is background
/// interpolation_method      an Interpolation_Method number, 1 to 8
Bitmap_Handle Create_Horizontally_Distorted_Bitmap_CPP(Bitmap_Handle source, float top_left, float top_right,
                                                       float bottom_left, float bottom_right, std::int32_t new_width,
                                                       std::int32_t new_height, float offset, Flag expand,
                                                       std::int32_t interpolation_method);

/// Releases a bitmap; false when the handle is not alive.
Flag Delete_Bitmap_CPP(Bitmap_Handle bitmap);

/// Facts of a bitmap, as its header would tell; false on a bad handle.
struct Bitmap_Facts {
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::int32_t stride = 0;         ///< bytes of a row in memory, a multiple of 4
    std::int32_t bits_per_pixel = 0; ///< 8 or 24
};
Flag Get_Bitmap_Facts_CPP(Bitmap_Handle bitmap, Bitmap_Facts* facts);

/// Copies stride x height bytes out of or into the bitmap, in memory order: the bottom row comes first.
Flag Get_Bitmap_Bytes_CPP(Bitmap_Handle bitmap, std::uint8_t* bytes, std::size_t size);
Flag Put_Bitmap_Bytes_CPP(Bitmap_Handle bitmap, const std::uint8_t* bytes, std::size_t size);

/// Asks the pool to give idle memory back to the system.
void Release_Idle_Bitmap_Memory_CPP();

/// What a load found out about its source, for questions before an in-place save: bit 1 decoded with errors, bit 2 the
/// file holds more than the bitmap keeps. 0 also for bitmaps that do not come from a file, or were changed since.
std::int32_t Get_Bitmap_Source_Warnings_CPP(Bitmap_Handle bitmap);
