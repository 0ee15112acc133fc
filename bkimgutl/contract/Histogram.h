#pragma once

#include "bkimgutl/contract/Types.h"

/// Histograms and samples. Flags are false with the reason in Get_Last_Image_Error_String.

/// 256 counts of one component (one bit of the mask, CMYK planes included), or of red, green and blue summed (7).
/// sample_count takes the sum of the counts.
Flag Compute_Bitmap_Color_Component_Histogram_CPP(Bitmap_Handle bitmap, std::int32_t component_mask,
                                                  std::int32_t* table, std::int32_t* sample_count);

/// The same over the pixels whose byte in `mask` is not 0. The mask has width x height bytes, topmost row first.
Flag Compute_Masked_Area_Color_Component_Histogram_CPP(Bitmap_Handle bitmap, const std::uint8_t* mask,
                                                       std::int32_t component_mask, std::int32_t* table,
                                                       std::int32_t* sample_count);

/// Averages over a square of side `area_size` (1, 3 or 5) centred on (x, y), 0-based from the top left, clipped at the
/// picture's edges. Averages round to nearest, half to even; hue, saturation and value are those of the averaged colour.
Flag Compute_Area_Average_RGB_HSV_CPP(Bitmap_Handle bitmap, std::int32_t x, std::int32_t y, std::int32_t area_size,
                                      std::int32_t* red, std::int32_t* green, std::int32_t* blue, std::int32_t* hue,
                                      std::int32_t* saturation, std::int32_t* value);

struct Component_Range {
    std::int32_t minimum = 0;
    std::int32_t average = 0;
    std::int32_t maximum = 0;
};

/// For R, G, B, H, S, V in this order: minimum, average and maximum over the pixels whose mask byte is not 0. False when
/// the mask is empty.
Flag Compute_Masked_Area_RGB_HSV_Range_CPP(Bitmap_Handle bitmap, const std::uint8_t* mask, Component_Range ranges[6]);
