#pragma once

#include "bkimgutl/core/Bitmap.h"

#include <cstdint>

/// Maps of levels through tables. Tables have 256 entries; entries outside 0..255 are limited.

/// component_mask  1 to 15: bits 1, 2, 4 send red, green, blue through their tables; bit 8 then adds to the channels what
///                 the luminance table changes in the pixel's luminance, limited to 0..255
/// A table whose bit is not set may be null. A grey picture takes the red table if bit 1 is set, then the luminance table.
struct Table_Map_Settings {
    std::int32_t component_mask = 7;
    const std::int32_t* red = nullptr;
    const std::int32_t* green = nullptr;
    const std::int32_t* blue = nullptr;
    const std::int32_t* luminance = nullptr;
};
Result<Bitmap> Table_Mapped(const Bitmap_View& source, const Table_Map_Settings& settings);

/// Saturation and value through their tables. Hue stays; a pixel without saturation has hue 0. A grey picture takes the
/// value table alone.
Result<Bitmap> Hsv_Table_Mapped(const Bitmap_View& source, const std::int32_t* saturation_table,
                                const std::int32_t* value_table);

/// Stretches the luminance between the clip points, see Clip_Table. Fails where the table fails.
Result<Bitmap> Contrast_Optimized(const Bitmap_View& source, float shadow_clip, float highlight_clip);
