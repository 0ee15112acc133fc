#pragma once

#include "bkimgutl/core/Bitmap_View.h"
#include "bkimgutl/core/Pixel_Memory.h"
#include "bkimgutl/core/Pixel_Origin.h"
#include "frame/files/Result.h"

#include <cstdint>
#include <memory>

/// An owned picture of 1 byte (grey) or 3 bytes (blue, green, red) per pixel. Rows lie bottom-up in memory: the first row
/// in memory is the bottom row of the picture; each is padded to a multiple of 4 bytes, and the padding is 0.
/// Inside the library rows are addressed from the top: Row(0) is the topmost one.
class Bitmap {
public:
    /// Pixels are not initialised but for the padding. Fails on a size below 1 x 1, on another depth than 1 or 3, and
    /// beyond the limits on pixels and on live bitmap bytes.
    static Result<Bitmap> Create(std::int64_t width, std::int64_t height, int bytes_per_pixel);

    Bitmap(Bitmap&&) noexcept = default;
    Bitmap& operator=(Bitmap&&) noexcept = default;

    int Width() const { return width_; }
    int Height() const { return height_; }
    int Bytes_Per_Pixel() const { return bytes_per_pixel_; }
    std::size_t Stride() const { return stride_; }

    Bitmap_View View() const;

    /// Writable pixels. The bitmap forgets where it came from.
    Mutable_Bitmap_View Change();

    /// Where the pixels came from, or null. Kept by exact copies, right-angle turns and flips of the whole.
    const std::shared_ptr<const Pixel_Origin>& Origin() const { return origin_; }
    void Set_Origin(std::shared_ptr<const Pixel_Origin> origin) { origin_ = std::move(origin); }

private:
    Bitmap() = default;
    Pixel_Memory memory_;
    int width_ = 0;
    int height_ = 0;
    int bytes_per_pixel_ = 0;
    std::size_t stride_ = 0;
    std::shared_ptr<const Pixel_Origin> origin_;
};
