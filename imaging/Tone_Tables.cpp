#include "imaging/Tone_Tables.h"

#include "bkimgutl/core/Color.h"
#include "frame/text/Number_Text.h"
#include "imaging/Brennick_Image_Utilities.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <vector>

namespace {

std::int32_t Limited_Level(double value)
{
    return Round_Half_Even(std::clamp(value, 0.0, 255.0));
}

/// First index, from `first` in steps of `step`, with a count; `missing` without any.
int First_Occupied(const Histogram_Counts& histogram, int first, int step, int missing)
{
    for (int i = first; i >= 0 && i < 256; i += step)
        if (histogram[std::size_t(i)] != 0) return i;
    return missing;
}

/// The last index, from `first` in steps of `step`, up to which no more than the allowance lies.
int Last_Within_Allowance(const Histogram_Counts& histogram, int first, int step, double allowance)
{
    std::int64_t cumulative = 0;
    int reached = first;
    for (int i = first; i >= 0 && i < 256; i += step) {
        cumulative += histogram[std::size_t(i)];
        if (double(cumulative) > allowance) break;
        reached = i;
    }
    return reached;
}

double Allowance(float clip, int sample_count)
{
    return std::nearbyint(double(clip) * double(sample_count));
}

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

void Build_Identity_Table(Tone_Table& table)
{
    for (int i = 0; i < 256; ++i) table[std::size_t(i)] = i;
}

void Build_Scale_Table(float scale, Tone_Table& table)
{
    for (int i = 0; i < 256; ++i) {
        const float product = scale * float(i);
        table[std::size_t(i)] = Limited_Level(double(product));
    }
}

bool Build_Gamma_Table(double gamma, Tone_Table& table)
{
    return Build_Black_Gamma_White_Table(0, gamma, 255, table);
}

bool Build_Black_Gamma_White_Table(int black, double gamma, int white, Tone_Table& table)
{
    if (gamma == 0 || !std::isfinite(gamma)) return false;
    const double exponent = 1 / gamma;
    for (int i = 0; i < 256; ++i) {
        std::int32_t& entry = table[std::size_t(i)];
        if (i <= black) {
            entry = 0;
        } else if (i >= white) {
            entry = 255;
        } else {
            // In 64 bits: a damaged item brings levels near the limits of 32.
            const std::int64_t product = (std::int64_t(i) - black) * 255;
            const double level = double(product) / double(std::int64_t(white) - black);
            entry = Limited_Level(std::pow(level / 255, exponent) * 255);
        }
    }
    return true;
}

Clip_Range Search_Clip_Range(const Histogram_Counts& histogram, int sample_count, float shadow_clip,
                             float highlight_clip)
{
    Clip_Range range;
    if (shadow_clip < 0)
        range.in_low = range.out_low = First_Occupied(histogram, 0, 1, 0);
    else
        range.in_low = Last_Within_Allowance(histogram, 0, 1, Allowance(shadow_clip, sample_count));
    if (highlight_clip < 0)
        range.in_high = range.out_high = First_Occupied(histogram, 255, -1, 255);
    else
        range.in_high = Last_Within_Allowance(histogram, 255, -1, Allowance(highlight_clip, sample_count));
    return range;
}

bool Build_Clip_Table(const Histogram_Counts& histogram, int sample_count, float shadow_clip, float highlight_clip,
                      Tone_Table& table)
{
    const Clip_Range range = Search_Clip_Range(histogram, sample_count, shadow_clip, highlight_clip);
    const int distance = range.in_high - range.in_low;
    if (distance == 0) return false;
    const int reach = range.out_high - range.out_low;
    table.fill(0);
    for (int x = range.in_low; x < 256; ++x)
        table[std::size_t(x)] =
            std::clamp(((x - range.in_low) * reach + distance / 2) / distance + range.out_low, 0, 255);
    return true;
}

void Find_Clip_Points(const Histogram_Counts& histogram, int sample_count, float shadow_clip, float highlight_clip,
                      int& low, int& high)
{
    const Clip_Range range = Search_Clip_Range(histogram, sample_count, shadow_clip, highlight_clip);
    low = range.in_low;
    high = range.in_high;
}

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
