#include "bkimgutl/core/Color.h"

#include <algorithm>
#include <cmath>

void RGB_To_HSV(int red, int green, int blue, int& hue, int& saturation, int& value)
{
    const int most = std::max({red, green, blue});
    const int range = most - std::min({red, green, blue});
    value = most;
    saturation = most < 1 ? 0 : (range * 255 + most / 2) / most;
    if (saturation == 0) return;

    const auto sixtieths = [range](int difference) {
        const int half = range / 2;
        return (difference * 60 + (difference < 0 ? -half : half)) / range;
    };
    if (red == most)
        hue = sixtieths(green - blue);
    else if (green == most)
        hue = sixtieths(blue - red) + 120;
    else
        hue = sixtieths(red - green) + 240;
    if (hue < 0) hue += 360;
    if (hue == 360) hue = 0;
}

void HSV_To_RGB(int hue, int saturation, int value, int& red, int& green, int& blue)
{
    hue = (hue % 360 + 360) % 360; // the remainder first: adding to the largest integers would overflow
    saturation = std::clamp(saturation, 0, 255);
    value = std::clamp(value, 0, 255);
    red = green = blue = value;
    if (saturation == 0) return;

    const int step = ((hue % 60) * saturation + 30) / 60;
    const auto scale = [value](int part) { return std::clamp((part * value + 127) / 255, 0, 255); };
    const int low = scale(255 - saturation);
    const int rising = scale(255 - saturation + step);
    const int falling = scale(255 - step);
    switch (hue / 60) {
    case 0: green = rising, blue = low; break;
    case 1: red = falling, blue = low; break;
    case 2: red = low, blue = rising; break;
    case 3: red = low, green = falling; break;
    case 4: red = rising, green = low; break;
    default: green = low, blue = falling; break;
    }
}

namespace {

void Build_Black_Table(float gamma, int start, std::uint8_t (&table)[256])
{
    for (int i = 0; i < 256; ++i) {
        const double level = std::nearbyint(std::pow(i / 255.0, 1.0 / double(gamma)) * 255.0);
        table[i] = level > 0 ? std::uint8_t(std::min(level, 255.0)) : std::uint8_t(0); // not a number counts as 0
    }
    start = std::clamp(start, 0, 255);
    for (int i = 255; i > start; --i) // downwards, since every entry takes from one at or below it
        table[i] = table[255 - ((255 - i) * 255) / (255 - start)];
    std::fill(table, table + start + 1, std::uint8_t(0));
}

void Build_Removal_Table(int ink_limit, std::int32_t (&table)[256])
{
    const std::int64_t first = ink_limit / 4;
    for (std::int64_t i = 0; i < 256; ++i)
        table[i] = i <= first ? 0 : std::int32_t(std::min<std::int64_t>((i - first) * 2, 1 << 20));
}

CMYK_Tables Tables_For(CMYK_Parameters parameters)
{
    if (parameters.ink_limit == 0) {
        parameters.black_gamma = 0.5F;
        parameters.ink_limit = 765;
    }
    CMYK_Tables tables;
    Build_Black_Table(parameters.black_gamma, parameters.black_start, tables.black);
    Build_Removal_Table(parameters.ink_limit, tables.removal);
    return tables;
}

/// Built before anybody asks, so that threads only read them.
CMYK_Tables& The_Tables()
{
    static CMYK_Tables tables = Tables_For({});
    return tables;
}

bool Is_Byte(int value)
{
    return value >= 0 && value <= 255;
}

} // namespace

const CMYK_Tables& Current_CMYK_Tables()
{
    return The_Tables();
}

void Set_CMYK_Parameters(const CMYK_Parameters& parameters)
{
    The_Tables() = Tables_For(parameters);
}

bool RGB_To_CMYK_Planes(int red, int green, int blue, const CMYK_Tables& tables, CMYK_Planes& planes)
{
    const int cyan = 255 - red, magenta = 255 - green, yellow = 255 - blue;
    const int black = tables.black[std::min({cyan, magenta, yellow})];
    const int rest = (cyan + magenta + yellow - 2 * black) / 4;
    if (!Is_Byte(rest)) return false;
    const int removed = black + tables.removal[rest];
    planes = {255 - (cyan - removed), 255 - (magenta - removed), 255 - (yellow - removed), 255 - removed};
    return Is_Byte(planes.cyan) && Is_Byte(planes.magenta) && Is_Byte(planes.yellow) && Is_Byte(planes.black);
}
