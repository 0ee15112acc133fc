#include "bkimgutl/core/Bitmap.h"

#include "frame/files/Limits.h"

#include <cstring>
#include <limits>

namespace {

// Contract functions hand the stride and the sides out as 32-bit integers.
constexpr std::int64_t longest_row_bytes = std::numeric_limits<std::int32_t>::max() - 3;

std::string Size_Text(std::int64_t width, std::int64_t height)
{
    return std::to_string(width) + " x " + std::to_string(height);
}

std::string Complaint_About_Size(std::int64_t width, std::int64_t height, int bytes_per_pixel)
{
    if (bytes_per_pixel != 1 && bytes_per_pixel != 3)
        return "a bitmap has 1 or 3 bytes per pixel, not " + std::to_string(bytes_per_pixel);
    if (width < 1 || height < 1) return "a picture of " + Size_Text(width, height) + " pixels has no area";
    const std::int64_t most = Current_Limits().bitmap_pixels;
    if (width > longest_row_bytes / bytes_per_pixel || height > std::numeric_limits<std::int32_t>::max() ||
        width > most / height)
        return "a picture of " + Size_Text(width, height) + " pixels is beyond the limit of " + std::to_string(most) +
               " pixels";
    return {};
}

} // namespace

Result<Bitmap> Bitmap::Create(std::int64_t width, std::int64_t height, int bytes_per_pixel)
{
    if (auto complaint = Complaint_About_Size(width, height, bytes_per_pixel); !complaint.empty())
        return Failure(std::move(complaint));
    const std::size_t row_bytes = std::size_t(width) * std::size_t(bytes_per_pixel);
    const std::size_t stride = (row_bytes + 3) & ~std::size_t(3);
    auto memory = Pixel_Memory::Allocate(stride * std::size_t(height));
    if (!memory) return tl::make_unexpected(memory.error());
    Bitmap bitmap;
    bitmap.memory_ = std::move(*memory);
    bitmap.width_ = int(width);
    bitmap.height_ = int(height);
    bitmap.bytes_per_pixel_ = bytes_per_pixel;
    bitmap.stride_ = stride;
    if (stride > row_bytes)
        for (std::size_t y = 0; y < std::size_t(height); ++y)
            std::memset(bitmap.memory_.Bytes() + y * stride + row_bytes, 0, stride - row_bytes);
    return bitmap;
}

Bitmap_View Bitmap::View() const
{
    return {memory_.Bytes() + std::size_t(height_ - 1) * stride_, -std::ptrdiff_t(stride_), width_, height_,
            bytes_per_pixel_};
}

Mutable_Bitmap_View Bitmap::Change()
{
    origin_.reset();
    return {memory_.Bytes() + std::size_t(height_ - 1) * stride_, -std::ptrdiff_t(stride_), width_, height_,
            bytes_per_pixel_};
}
