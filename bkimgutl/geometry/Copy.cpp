#include "bkimgutl/geometry/Copy.h"

#include "bkimgutl/core/Row_Loop.h"
#include "bkimgutl/core/Row_Writer.h"

#include <cstring>

namespace {

void Copy_Rows(const Bitmap_View& from, const Mutable_Bitmap_View& to)
{
    For_Rows(to.height, 2 * to.Row_Bytes(), [&](int first, int end) {
        Row_Writer writer(to);
        for (int y = first; y < end; ++y) writer.Copy_To_Row(y, 0, from.Row(y), to.Row_Bytes());
    });
}

void Color_Row(const std::uint8_t* grey, int width, std::uint8_t* color)
{
    for (int x = 0; x < width; ++x, color += 3) color[0] = color[1] = color[2] = grey[x];
}

void Widen_Row(const std::uint8_t* from, int width, int bytes_per_pixel, int factor, std::uint8_t* to)
{
    for (int x = 0; x < width; ++x, from += bytes_per_pixel)
        for (int i = 0; i < factor; ++i)
            for (int c = 0; c < bytes_per_pixel; ++c) *to++ = from[c];
}

} // namespace

Result<Bitmap> Copied(const Bitmap& source)
{
    auto copy = Bitmap::Create(source.Width(), source.Height(), source.Bytes_Per_Pixel());
    if (!copy) return copy;
    Copy_Rows(source.View(), copy->Change());
    copy->Set_Origin(source.Origin());
    return copy;
}

Result<Bitmap> Colored(const Bitmap& source)
{
    const Bitmap_View from = source.View();
    if (!from.Is_Grey()) return Copied(source);
    auto color = Bitmap::Create(from.width, from.height, 3);
    if (!color) return color;
    const auto to = color->Change();
    For_Rows(to.height, 2 * to.Row_Bytes(), [&](int first, int end) {
        for (int y = first; y < end; ++y) Color_Row(from.Row(y), from.width, to.Row(y));
    });
    return color;
}

Result<Bitmap> Replicated(const Bitmap_View& source, int x_factor, int y_factor)
{
    if (x_factor < 1 || y_factor < 1) return Failure("a scale factor is below 1");
    auto large = Bitmap::Create(std::int64_t(source.width) * x_factor, std::int64_t(source.height) * y_factor,
                                source.bytes_per_pixel);
    if (!large) return large;
    const auto to = large->Change();
    For_Rows(source.height, to.Row_Bytes() * std::size_t(y_factor), [&](int first, int end) {
        for (int y = first; y < end; ++y) {
            const int top = y * y_factor;
            Widen_Row(source.Row(y), source.width, source.bytes_per_pixel, x_factor, to.Row(top));
            for (int i = 1; i < y_factor; ++i) std::memcpy(to.Row(top + i), to.Row(top), to.Row_Bytes());
        }
    });
    return large;
}

Result<Bitmap> Cropped(const Bitmap_View& source, std::int64_t left, std::int64_t top, std::int64_t width,
                       std::int64_t height)
{
    if (width < 1 || height < 1) return Failure("the rectangle to cut out is empty");
    if (left < 0 || top < 0 || width > source.width - left || height > source.height - top)
        return Failure("the rectangle to cut out leaves the picture");
    auto part = Bitmap::Create(width, height, source.bytes_per_pixel);
    if (!part) return part;
    Bitmap_View from = source;
    from.top = source.Row(int(top)) + left * source.bytes_per_pixel;
    Copy_Rows(from, part->Change());
    return part;
}
