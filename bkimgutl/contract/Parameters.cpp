#include "bkimgutl/contract/Files.h"
#include "bkimgutl/core/Background_Color.h"
#include "bkimgutl/core/Color.h"

void Set_All_Bitmaps_Background_Color_CPP(std::uint8_t red, std::uint8_t green, std::uint8_t blue)
{
    Set_Background_Color({.red = red, .green = green, .blue = blue});
}

void Set_CMYK_Parameters_CPP(float black_gamma, std::int32_t black_start, std::int32_t ink_limit)
{
    Set_CMYK_Parameters({.black_gamma = black_gamma, .black_start = black_start, .ink_limit = ink_limit});
}
