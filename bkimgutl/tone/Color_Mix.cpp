#include "bkimgutl/tone/Color_Mix.h"

#include "bkimgutl/core/Color.h"
#include "bkimgutl/core/Row_Loop.h"

#include <algorithm>

namespace {

/// A level in units of 1 / 10000, as the products of two percentages come.
constexpr int unit = 10000;

/// The sum over one channel for each of its levels, so that a pixel costs three additions.
struct Mix_Tables {
    std::int32_t red[256], green[256], blue[256];

    explicit Mix_Tables(const Mix_Row& row)
    {
        for (int i = 0; i < 256; ++i)
            red[i] = row.red * row.scale * i, green[i] = row.green * row.scale * i, blue[i] = row.blue * row.scale * i;
    }
    int At(const std::uint8_t* bgr) const
    {
        return std::clamp(red[bgr[2]] + green[bgr[1]] + blue[bgr[0]], 0, 255 * unit);
    }
};

/// Half to even; 0 and up.
int Rounded(std::int64_t value, std::int64_t divisor)
{
    const std::int64_t whole = value / divisor, twice = value % divisor * 2;
    return int(whole + (twice > divisor || (twice == divisor && whole % 2 == 1)));
}

class Mixer {
public:
    explicit Mixer(const Color_Mix& mix)
        : mix_(mix), red_(mix.red), green_(mix.green), blue_(mix.blue), luminance_(mix.luminance)
    {}

    void Mix(const std::uint8_t* in, std::uint8_t* out) const
    {
        const int luminance = mix_.luminance_percent > 0 ? luminance_.At(in) : 0;
        const int mixed[3] = {Blended(blue_.At(in), luminance), Blended(green_.At(in), luminance),
                              Blended(red_.At(in), luminance)};
        for (int c = 0; c < 3; ++c) out[c] = std::uint8_t(mixed[c]);
        if (mix_.to_grey) out[0] = out[1] = out[2] = std::uint8_t(RGB_To_Luminance(mixed[2], mixed[1], mixed[0]));
    }

private:
    int Blended(int channel, int luminance) const
    {
        if (mix_.luminance_percent == 0) return Rounded(channel, unit);
        int other = luminance;
        if (mix_.blend == Luminance_Blend::Lighten) other = std::max(channel, luminance);
        if (mix_.blend == Luminance_Blend::Darken) other = std::min(channel, luminance);
        const std::int64_t sum =
            std::int64_t(channel) * (100 - mix_.luminance_percent) + std::int64_t(other) * mix_.luminance_percent;
        return Rounded(sum, std::int64_t(unit) * 100);
    }

    const Color_Mix& mix_;
    Mix_Tables red_, green_, blue_, luminance_;
};

void Mix_One_Row(const Mixer& mixer, const Bitmap_View& source, const std::uint8_t* in, std::uint8_t* out)
{
    if (!source.Is_Grey()) {
        for (int x = 0; x < source.width; ++x) mixer.Mix(in + 3 * x, out + 3 * x);
        return;
    }
    for (int x = 0; x < source.width; ++x) {
        const std::uint8_t grey[3] = {in[x], in[x], in[x]};
        std::uint8_t mixed[3];
        mixer.Mix(grey, mixed);
        out[x] = std::uint8_t(RGB_To_Luminance(mixed[2], mixed[1], mixed[0]));
    }
}

} // namespace

Result<Color_Mix> Color_Mix::From_Fields(std::span<const std::int32_t, 19> fields)
{
    for (std::size_t i = 0; i < 16; ++i)
        if (fields[i] < -200 || fields[i] > 200)
            return Failure("field " + std::to_string(i + 1) + " of the colour mix, " + std::to_string(fields[i]) +
                           ", is outside -200 to 200 percent");
    if (fields[16] < 0 || fields[16] > 100)
        return Failure("the share of mixed luminance, " + std::to_string(fields[16]) + ", is outside 0 to 100 percent");
    if (fields[17] < 0 || fields[17] > 2)
        return Failure("the luminance blend " + std::to_string(fields[17]) + " is outside 0 to 2");
    const auto row = [&](std::size_t first) {
        return Mix_Row{fields[first], fields[first + 1], fields[first + 2], fields[first + 3]};
    };
    return Color_Mix{row(0), row(4), row(8), row(12), fields[16], Luminance_Blend(fields[17]), fields[18] != 0};
}

Result<Bitmap> Color_Mixed(const Bitmap_View& source, const Color_Mix& mix)
{
    auto result = Bitmap::Create(source.width, source.height, source.bytes_per_pixel);
    if (!result) return result;
    const Mutable_Bitmap_View target = result->Change();
    const Mixer mixer(mix);
    For_Rows(source.height, source.Row_Bytes() * 8, [&](int first, int end) {
        for (int y = first; y < end; ++y) Mix_One_Row(mixer, source, source.Row(y), target.Row(y));
    });
    return result;
}
