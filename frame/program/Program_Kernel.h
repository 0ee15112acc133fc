#pragma once

#include "frame/Entry_Sequence.h"
#include "imaging/Brennick_Image_Utilities.h"

/// The pixel library as the start and the close see it.
class Program_Kernel final : public Kernel_Setup {
public:
    void Set_CMYK_Parameters(const CMYK_Setting& setting) override
    {
        Set_CMYK_Parameters_CPP(setting.black_gamma, setting.black_start, setting.ink_limit);
    }
    void Set_Background_Color(const Background_Color& color) override
    {
        Set_All_Bitmaps_Background_Color_CPP(std::uint8_t(color.red), std::uint8_t(color.green),
                                             std::uint8_t(color.blue));
    }
    int Live_Bitmaps() const override { return Bitmap_Count(); }
};
