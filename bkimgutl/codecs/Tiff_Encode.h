#pragma once

#include "bkimgutl/codecs/Tiff_Fields.h"
#include "bkimgutl/core/Bitmap_View.h"

/// Writes the pixels in strips behind what the file holds so far (at least its header is written anew), and returns the
/// fields that describe them. `compression` is one without loss: none, LZW, deflate or PackBits.
Result<Tiff_Fields> Encode_Tiff_Strips(int descriptor, const Tiff_Layout& layout, const Bitmap_View& pixels,
                                       std::uint16_t compression);
