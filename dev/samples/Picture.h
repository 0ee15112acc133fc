#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

/// A picture from the top, left to right, without padding; R,G,B or one grey byte a pixel.
struct Sample_Picture {
    int width = 0;
    int height = 0;
    int channels = 3;
    std::vector<std::uint8_t> bytes;

    std::uint8_t* Pixel(int x, int y)
    {
        return bytes.data() + (std::size_t(y) * std::size_t(width) + std::size_t(x)) * std::size_t(channels);
    }
    const std::uint8_t* Pixel(int x, int y) const { return const_cast<Sample_Picture*>(this)->Pixel(x, y); }
};

/// A meadow with trees below a sky: gradients, leaf-like texture, noise as of a sensor, darker corners.
Sample_Picture Meadow(int width, int height, unsigned seed);

/// A face-like oval with skin-like colours before a blurred background.
Sample_Picture Portrait(int width, int height, unsigned seed);

/// Streets and lit windows at night: large dark areas and small bright ones.
Sample_Picture Night_Town(int width, int height, unsigned seed);

Sample_Picture To_Grey(const Sample_Picture& picture);

/// The pixels as an upright viewer would have to turn them for an EXIF orientation: `picture` is what is seen, the result
/// is what is stored with `orientation` 1 to 8.
Sample_Picture Stored_With_Orientation(const Sample_Picture& picture, int orientation);
