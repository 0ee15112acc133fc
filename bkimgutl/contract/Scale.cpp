#include "bkimgutl/filter/Scale.h"
#include "bkimgutl/contract/Creating.h"
#include "bkimgutl/contract/Creation.h"

Bitmap_Handle Create_Scaled_Bitmap_CPP(Bitmap_Handle source, std::int32_t new_width, std::int32_t new_height,
                                       std::int32_t interpolation_method)
{
    return Created_From(source, [&](const Bitmap_View& view) {
        return Scaled(view, new_width, new_height, Interpolation_Method(interpolation_method));
    });
}
