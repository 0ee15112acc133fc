#pragma once

#include "bkimgutl/contract/Types.h"

/// Tone and filter functions. Each returns a new bitmap of the source's size and depth that belongs to the caller, or 0
/// with the reason in Get_Last_Image_Error_String. Tables have 256 entries of 0 to 255 (others are limited).
/// Luminance is (19660 R + 38666 G + 7209 B + 32768) / 65536 everywhere.

/// Luminance contrast stretch. The clips are fractions of all pixels, negative switches that side off. Each pixel's
/// luminance goes through the table and the change is added to its three channels, so that colour differences stay.
Bitmap_Handle Create_Contrast_Optimized_Bitmap_CPP(Bitmap_Handle source, float shadow_clip, float highlight_clip);

/// Each channel whose bit is set goes through its table; bit 8 then moves the channels by what the luminance table does
/// to the pixel's luminance. A grey picture takes the red table (and the luminance table).
/// component_mask  7 or 15; tables of channels whose bit is not set, and a luminance table without bit 8, may be null
Bitmap_Handle Create_RGB_Luminance_Table_Mapped_Bitmap_CPP(Bitmap_Handle source, std::int32_t component_mask,
                                                           const std::int32_t* red_table,
                                                           const std::int32_t* green_table,
                                                           const std::int32_t* blue_table,
                                                           const std::int32_t* luminance_table);

/// To HSV, saturation and value through their tables, back to RGB. On a grey picture only the value table acts.
Bitmap_Handle Create_HSV_Table_Mapped_Bitmap_CPP(Bitmap_Handle source, const std::int32_t* saturation_table,
                                                 const std::int32_t* value_table);

/// d = pixel - blur(pixel). d above lighten_threshold adds lighten_amount x d; d below -darken_threshold adds
/// darken_amount x d. Rounded half to even, limited to 0..255.
/// radius          standard deviation of the blur in pixels, 1 to 25
/// component_mask  1, 2, 4 act on channels; 8 on luminance (the change goes to all three channels); 16 to 128 on planes
///                 of the CMYK split, whose change goes to the channels that the plane's ink takes away
Bitmap_Handle Create_Unsharp_Masked_Bitmap_CPP(Bitmap_Handle source, float lighten_amount, float darken_amount,
                                               float radius, std::int32_t lighten_threshold,
                                               std::int32_t darken_threshold, std::int32_t component_mask);

/// Gaussian blur with `radius` (1 to 25) as standard deviation, mixed by `weight_percent` (0 copy to 100 blur only).
/// Outside pixels repeat the nearest edge pixel.
Bitmap_Handle Create_Blurred_Bitmap_CPP(Bitmap_Handle source, float radius, std::int32_t weight_percent,
                                        std::int32_t component_mask);

/// Channel mixer. `fields` are 19 values: mixed red, green, blue and luminance as (red, green, blue, scale) percentages,
/// -200 to 200; the percentage of mixed luminance in the result, 0 to 100; how the luminance is blended with each channel
/// (0 normal, 1 lighten, 2 darken); and whether the result is grey.
Bitmap_Handle Create_Color_Mixed_Bitmap_CPP(Bitmap_Handle source, const std::int32_t* fields);
