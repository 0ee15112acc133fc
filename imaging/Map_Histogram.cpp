#include "bkimgutl/bkimgutl.h"
#include "imaging/Map_Drawing.h"

bool Map_View::Set_Map_Histogram(Bitmap_Handle bitmap, int component)
{
    std::int32_t samples = 0;
    histogram_component_ = component;
    const bool counted = Compute_Bitmap_Color_Component_Histogram_CPP(bitmap, component, histogram_.data(), &samples);
    sample_count_ = counted ? samples : 0;
    Resample();
    return counted;
}
