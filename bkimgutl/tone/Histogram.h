#pragma once

#include "bkimgutl/core/Bitmap_View.h"
#include "frame/files/Result.h"

#include <array>
#include <cstdint>

using Histogram_Counts = std::array<std::uint64_t, 256>;

/// Counts one component over the pixels whose mask byte is not 0.
/// mask            width x height bytes, topmost row first; null is the whole picture
/// component_mask  one bit of Component, or 7 for red, green and blue together. Every component of a grey picture but the
///                 CMYK planes is its grey, counted once. Pixels whose CMYK split has no value (an ink limit or a gamma
///                 drives a plane out of 0 to 255) are not counted.
Result<Histogram_Counts> Component_Histogram(const Bitmap_View& picture, const std::uint8_t* mask, int component_mask);
