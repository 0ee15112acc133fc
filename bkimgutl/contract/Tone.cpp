#include "bkimgutl/contract/Tone.h"

#include "bkimgutl/contract/Creating.h"
#include "bkimgutl/filter/Blur.h"
#include "bkimgutl/tone/Color_Mix.h"
#include "bkimgutl/tone/Table_Map.h"

Bitmap_Handle Create_Contrast_Optimized_Bitmap_CPP(Bitmap_Handle source, float shadow_clip, float highlight_clip)
{
    return Created_From(source,
                        [&](const Bitmap_View& view) { return Contrast_Optimized(view, shadow_clip, highlight_clip); });
}

Bitmap_Handle Create_RGB_Luminance_Table_Mapped_Bitmap_CPP(Bitmap_Handle source, std::int32_t component_mask,
                                                           const std::int32_t* red_table,
                                                           const std::int32_t* green_table,
                                                           const std::int32_t* blue_table,
                                                           const std::int32_t* luminance_table)
{
    return Created_From(source, [&](const Bitmap_View& view) {
        return Table_Mapped(view, {component_mask, red_table, green_table, blue_table, luminance_table});
    });
}

Bitmap_Handle Create_HSV_Table_Mapped_Bitmap_CPP(Bitmap_Handle source, const std::int32_t* saturation_table,
                                                 const std::int32_t* value_table)
{
    return Created_From(source,
                        [&](const Bitmap_View& view) { return Hsv_Table_Mapped(view, saturation_table, value_table); });
}

Bitmap_Handle Create_Unsharp_Masked_Bitmap_CPP(Bitmap_Handle source, float lighten_amount, float darken_amount,
                                               float radius, std::int32_t lighten_threshold,
                                               std::int32_t darken_threshold, std::int32_t component_mask)
{
    return Created_From(source, [&](const Bitmap_View& view) {
        return Unsharp_Masked(
            view, {lighten_amount, darken_amount, radius, lighten_threshold, darken_threshold, component_mask});
    });
}

Bitmap_Handle Create_Blurred_Bitmap_CPP(Bitmap_Handle source, float radius, std::int32_t weight_percent,
                                        std::int32_t component_mask)
{
    return Created_From(source, [&](const Bitmap_View& view) {
        return Blurred(view, {radius, weight_percent, component_mask});
    });
}

Bitmap_Handle Create_Color_Mixed_Bitmap_CPP(Bitmap_Handle source, const std::int32_t* fields)
{
    return Created_From(source, [&](const Bitmap_View& view) -> Result<Bitmap> {
        if (!fields) return Failure("the fields of the colour mix are missing");
        const auto mix = Color_Mix::From_Fields(std::span<const std::int32_t, 19>(fields, 19));
        if (!mix) return tl::make_unexpected(mix.error());
        return Color_Mixed(view, *mix);
    });
}
