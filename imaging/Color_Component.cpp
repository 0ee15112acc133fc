#include "bkimgutl/core/Color.h"
#include "imaging/Brennick_Image_Utilities.h"
#include "imaging/Tone_Tables.h"

#include <bit>
#include <vector>

namespace {

/// The byte of one pixel's component; outside 0 to 255 when its ink plane leaves the range.
int Component_Of_Pixel(const std::uint8_t* blue_green_red, int component, const CMYK_Tables& inks)
{
    const int blue = blue_green_red[0], green = blue_green_red[1], red = blue_green_red[2];
    if (component == Component_Red) return red;
    if (component == Component_Green) return green;
    if (component == Component_Blue) return blue;
    if (component == Component_Luminance) return RGB_To_Luminance(red, green, blue);
    CMYK_Planes planes{};
    if (!RGB_To_CMYK_Planes(red, green, blue, inks, planes)) return -1;
    if (component == Component_Cyan) return planes.cyan;
    if (component == Component_Magenta) return planes.magenta;
    return component == Component_Yellow ? planes.yellow : planes.black;
}

bool Extract_Row(const std::uint8_t* source, int bytes_per_pixel, int width, int component, std::uint8_t* target)
{
    for (int x = 0; x < width; ++x) {
        const std::uint8_t* pixel = source + std::ptrdiff_t(x) * bytes_per_pixel;
        const std::uint8_t grey[3] = {pixel[0], pixel[0], pixel[0]};
        const int level = Component_Of_Pixel(bytes_per_pixel == 1 ? grey : pixel, component, Current_CMYK_Tables());
        if (level < 0 || level > 255) return false;
        target[x] = std::uint8_t(level);
    }
    return true;
}

} // namespace

Bitmap_Handle Extract_Color_Component(Bitmap_Handle source, int component)
{
    Bitmap_Facts facts;
    const bool is_one_bit = component > 0 && component <= Component_Black && std::has_single_bit(unsigned(component));
    if (!is_one_bit || !Get_Bitmap_Facts_CPP(source, &facts)) return 0;
    Owned_Bitmap plane(Count_Bitmap(Create_Empty_Bitmap_CPP(facts.width, facts.height, 1, 8)));
    Bitmap_Facts plane_facts;
    if (!plane || !Get_Bitmap_Facts_CPP(plane.Get(), &plane_facts)) return 0;

    std::vector<std::uint8_t> pixels(std::size_t(facts.stride) * std::size_t(facts.height));
    std::vector<std::uint8_t> levels(std::size_t(plane_facts.stride) * std::size_t(facts.height));
    if (!Get_Bitmap_Bytes_CPP(source, pixels.data(), pixels.size())) return 0;
    for (int y = 0; y < facts.height; ++y)
        if (!Extract_Row(pixels.data() + std::size_t(y) * std::size_t(facts.stride), facts.bits_per_pixel / 8,
                         facts.width, component, levels.data() + std::size_t(y) * std::size_t(plane_facts.stride)))
            return 0;
    if (!Put_Bitmap_Bytes_CPP(plane.Get(), levels.data(), levels.size())) return 0;
    return plane.Release();
}
