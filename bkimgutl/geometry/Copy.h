#pragma once

#include "bkimgutl/core/Bitmap.h"

/// All pixels; remembers where they came from.
Result<Bitmap> Copied(const Bitmap& source);

/// Three equal channels for each grey byte; a colour picture is copied.
Result<Bitmap> Colored(const Bitmap& source);

/// Each pixel becomes x_factor by y_factor pixels; both are 1 and up.
Result<Bitmap> Replicated(const Bitmap_View& source, int x_factor, int y_factor);

/// left and top are 0-based. Fails when the rectangle is empty or leaves the picture.
Result<Bitmap> Cropped(const Bitmap_View& source, std::int64_t left, std::int64_t top, std::int64_t width,
                       std::int64_t height);
