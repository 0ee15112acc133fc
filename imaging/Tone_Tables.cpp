#include "imaging/Tone_Tables.h"

#include "frame/text/Number_Text.h"

#include <algorithm>
#include <cmath>

namespace {

std::int32_t Limited_Level(double value)
{
    return Round_Half_Even(std::clamp(value, 0.0, 255.0));
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
    return Clip_Range_Of(histogram, sample_count, shadow_clip, highlight_clip);
}

bool Build_Clip_Table(const Histogram_Counts& histogram, int sample_count, float shadow_clip, float highlight_clip,
                      Tone_Table& table)
{
    const auto built = Clip_Table(histogram, sample_count, shadow_clip, highlight_clip); // as the kernels stretch
    if (built) table = *built;
    return built.has_value();
}

void Find_Clip_Points(const Histogram_Counts& histogram, int sample_count, float shadow_clip, float highlight_clip,
                      int& low, int& high)
{
    const Clip_Range range = Search_Clip_Range(histogram, sample_count, shadow_clip, highlight_clip);
    low = range.in_low;
    high = range.in_high;
}
