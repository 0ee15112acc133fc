#pragma once

#include "bkimgutl/core/Bitmap.h"
#include "frame/files/Regular_File.h"
#include "frame/files/Result.h"

/// The first page of a TIFF file, upright and reduced by `divisor` (1 and up) in each direction. With divisor 1 the bitmap
/// has its origin. Parts that cannot be decoded are black and the origin says "damaged"; a file of which nothing can be
/// decoded is a failure.
Result<Bitmap> Load_Tiff(const Regular_File& file, int divisor);
