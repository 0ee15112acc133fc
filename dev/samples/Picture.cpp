#include "dev/samples/Picture.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

struct Color {
    double red = 0, green = 0, blue = 0;
};

Color Mixed(const Color& a, const Color& b, double part)
{
    return {a.red + (b.red - a.red) * part, a.green + (b.green - a.green) * part, a.blue + (b.blue - a.blue) * part};
}

double Clamped(double value)
{
    return std::clamp(value, 0.0, 1.0);
}

/// 0 to 1, the same for the same point and seed on every machine.
double Hash(int x, int y, unsigned seed)
{
    std::uint32_t h = std::uint32_t(x) * 374761393U + std::uint32_t(y) * 668265263U + seed * 2246822519U;
    h = (h ^ h >> 13) * 1274126177U;
    h ^= h >> 16;
    return double(h & 0xFFFFFF) / double(0xFFFFFF);
}

/// Smooth noise with details of size 1, in 0 to 1.
double Smooth_Noise(double x, double y, unsigned seed)
{
    const int left = int(std::floor(x));
    const int top = int(std::floor(y));
    const auto ease = [](double t) { return t * t * (3 - 2 * t); };
    const double dx = ease(x - left);
    const double dy = ease(y - top);
    const double above = Hash(left, top, seed) * (1 - dx) + Hash(left + 1, top, seed) * dx;
    const double below = Hash(left, top + 1, seed) * (1 - dx) + Hash(left + 1, top + 1, seed) * dx;
    return above * (1 - dy) + below * dy;
}

/// Noise with details of many sizes, in 0 to 1.
double Texture(double x, double y, unsigned seed)
{
    double sum = 0;
    double weight = 0.5;
    for (int octave = 0; octave < 5; ++octave, weight /= 2) {
        sum += weight * Smooth_Noise(x, y, seed + unsigned(octave));
        x *= 2.03;
        y *= 2.03;
    }
    return sum / 0.96875;
}

/// What a lens and a sensor add: darker corners and noise that grows in the shadows.
std::uint8_t Exposed(double value, double vignette, double noise)
{
    const double lit = Clamped(value * vignette);
    const double grain = (noise - 0.5) * (0.05 - 0.03 * lit);
    return std::uint8_t(std::lround(255 * Clamped(lit + grain)));
}

/// Renders scene(u, v) with u and v in 0 to 1 from the top left.
template <class Scene>
Sample_Picture Render(int width, int height, unsigned seed, Scene scene)
{
    Sample_Picture picture{.width = width, .height = height, .channels = 3, .bytes = {}};
    picture.bytes.resize(std::size_t(width) * std::size_t(height) * 3);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const double u = (x + 0.5) / width;
            const double v = (y + 0.5) / height;
            const double from_center = (u - 0.5) * (u - 0.5) + (v - 0.5) * (v - 0.5);
            const double vignette = 1.05 - 0.7 * from_center;
            const Color color = scene(u, v);
            std::uint8_t* pixel = picture.Pixel(x, y);
            pixel[0] = Exposed(color.red, vignette, Hash(x, y, seed + 101));
            pixel[1] = Exposed(color.green, vignette, Hash(x, y, seed + 102));
            pixel[2] = Exposed(color.blue, vignette, Hash(x, y, seed + 103));
        }
    }
    return picture;
}

Color Sky(double u, double v, unsigned seed)
{
    const Color base = Mixed({0.30, 0.52, 0.86}, {0.80, 0.88, 0.96}, Clamped(v * 2));
    const double cloud = Clamped((Texture(u * 5, v * 11, seed) - 0.5) * 4);
    return Mixed(base, {0.97, 0.97, 0.98}, cloud);
}

Color Leaves(double u, double v, unsigned seed)
{
    const double light = Texture(u * 60, v * 60, seed);
    return Mixed({0.05, 0.14, 0.04}, {0.45, 0.66, 0.18}, Clamped(light * 1.6 - 0.3));
}

Color Grass(double u, double v, unsigned seed)
{
    const double blades = Texture(u * 220, v * 30, seed);
    const Color base = Mixed({0.32, 0.47, 0.16}, {0.50, 0.64, 0.23}, v);
    const Color color = Mixed({0.14, 0.25, 0.06}, base, Clamped(blades * 1.8 - 0.2));
    const bool flower = Hash(int(u * 300), int(v * 200), seed + 7) > 0.992;
    return flower ? Color{0.93, 0.82, 0.25} : color;
}

} // namespace

Sample_Picture Meadow(int width, int height, unsigned seed)
{
    return Render(width, height, seed, [seed](double u, double v) {
        const double horizon = 0.55 + 0.04 * std::sin(u * 9 + seed);
        const double crowns = horizon - 0.22 * Texture(u * 6, 0.5, seed + 30);
        if (v < crowns) return Sky(u, v, seed);
        if (v < horizon) return Leaves(u, v, seed + 10);
        return Grass(u, (v - horizon) / (1 - horizon), seed + 20);
    });
}

Sample_Picture Portrait(int width, int height, unsigned seed)
{
    return Render(width, height, seed, [seed](double u, double v) {
        const double x = (u - 0.5) / 0.27;
        const double y = (v - 0.42) / 0.30;
        const double inside = x * x + y * y;
        const double hair = x * x + (y + 0.25) * (y + 0.25);
        const double eye = std::min(std::hypot(x + 0.38, y + 0.1), std::hypot(x - 0.38, y + 0.1));
        const Color back = Mixed({0.20, 0.28, 0.16}, {0.58, 0.62, 0.40}, Smooth_Noise(u * 5, v * 5, seed));
        const Color skin = Mixed({0.60, 0.40, 0.31}, {0.93, 0.75, 0.64}, Clamped(0.75 - 0.3 * x - 0.2 * inside));
        if (eye < 0.07) return Color{0.10, 0.07, 0.06};
        if (eye < 0.11) return Color{0.92, 0.91, 0.90};
        if (inside < 1) return Mixed(skin, {0.75, 0.30, 0.28}, Clamped(1.2 - 9 * std::hypot(x * 0.55, y - 0.52)));
        if (hair < 1.35 && y < 0.4) return Mixed({0.12, 0.07, 0.04}, {0.38, 0.24, 0.13}, Texture(u * 150, v * 9, seed));
        if (v > 0.74 + 0.3 * (u - 0.5) * (u - 0.5)) return Mixed({0.14, 0.20, 0.42}, {0.25, 0.33, 0.60}, v);
        return back;
    });
}

Sample_Picture Night_Town(int width, int height, unsigned seed)
{
    return Render(width, height, seed, [seed](double u, double v) {
        const double roof = 0.35 + 0.35 * Hash(int(u * 14), 0, seed);
        const Color sky = Mixed({0.01, 0.02, 0.06}, {0.13, 0.09, 0.16}, v);
        if (v < roof) return Hash(int(u * 500), int(v * 330), seed + 1) > 0.998 ? Color{0.8, 0.8, 0.85} : sky;
        if (v > 0.9) return Mixed({0.05, 0.05, 0.06}, {0.85, 0.55, 0.2}, Clamped(Texture(u * 30, 1, seed) * 2 - 1));
        const bool window = std::fmod(u * 70, 1) > 0.4 && std::fmod(v * 45, 1) > 0.5;
        const bool lit = Hash(int(u * 70), int(v * 45), seed + 2) > 0.62;
        return window && lit ? Color{0.98, 0.84, 0.48} : Color{0.06, 0.06, 0.08};
    });
}

Sample_Picture To_Grey(const Sample_Picture& picture)
{
    Sample_Picture grey{.width = picture.width, .height = picture.height, .channels = 1, .bytes = {}};
    for (std::size_t i = 0; i + 2 < picture.bytes.size(); i += 3)
        grey.bytes.push_back(
            std::uint8_t((picture.bytes[i] * 77 + picture.bytes[i + 1] * 151 + picture.bytes[i + 2] * 28) >> 8));
    return grey;
}

Sample_Picture Stored_With_Orientation(const Sample_Picture& picture, int orientation)
{
    const bool swaps = orientation >= 5;
    Sample_Picture stored = picture;
    if (swaps) std::swap(stored.width, stored.height);
    const int last_x = picture.width - 1;
    const int last_y = picture.height - 1;
    for (int row = 0; row < stored.height; ++row) {
        for (int column = 0; column < stored.width; ++column) {
            // The orientation says where the stored first row and first column stand in the picture as seen.
            int x = swaps ? row : column;
            int y = swaps ? column : row;
            if (orientation == 2 || orientation == 3 || orientation == 6 || orientation == 7) x = last_x - x;
            if (orientation == 3 || orientation == 4 || orientation == 7 || orientation == 8) y = last_y - y;
            std::copy_n(picture.Pixel(x, y), picture.channels, stored.Pixel(column, row));
        }
    }
    return stored;
}
