#pragma once

#include "bkimgutl/core/Bitmap.h"

#include <cstdint>
#include <functional>

/// What a filter on top of a blur does with `count` samples of a plane and their blur, which is in units of 1 / 128 level.
struct Component_Filter {
    /// The new samples, rounded and limited; for planes that are the picture's own channels.
    std::function<void(const std::uint8_t* plane, const std::int16_t* blurred, std::size_t count, std::uint8_t* out)>
        samples;
    /// The change of each sample in levels, for planes whose change goes to channels.
    std::function<void(const std::uint8_t* plane, const std::int16_t* blurred, std::size_t count, float* change)>
        changes;
};

/// Applies the filter to the chosen components (a bit set of Component, not empty) of a picture.
///   red, green, blue        the channel itself
///   luminance, black        the change goes to all three channels
///   cyan, magenta, yellow   the change goes to red, to green, to blue
/// Changes of several components add up and are rounded once. A grey picture has one plane, which any component means.
/// Fails on a bad mask or radius, on a colour whose CMYK split overflows, and without memory.
Result<Bitmap> Component_Filtered(const Bitmap_View& source, float radius, std::int32_t components,
                                  const Component_Filter& filter);
