#include "bkimgutl/contract/Creation.h"

#include "bkimgutl/contract/Creating.h"
#include "bkimgutl/core/Pixel_Memory.h"
#include "bkimgutl/geometry/Copy.h"
#include "bkimgutl/geometry/Distort.h"
#include "bkimgutl/geometry/Rotate.h"
#include "bkimgutl/geometry/Turn.h"

#include <cstring>

namespace {

Result<Bitmap> Cleared(std::int32_t width, std::int32_t height, std::int32_t bytes_per_pixel)
{
    auto bitmap = Bitmap::Create(width, height, bytes_per_pixel);
    if (!bitmap) return bitmap;
    const auto view = bitmap->Change();
    for (int y = 0; y < height; ++y) std::memset(view.Row(y), 0, view.Row_Bytes());
    return bitmap;
}

// Memory order: the bottom row, which is the last of the view, comes first.
std::uint8_t* First_Byte(const Mutable_Bitmap_View& view)
{
    return view.Row(view.height - 1);
}

} // namespace

Bitmap_Handle Create_Empty_Bitmap_CPP(std::int32_t width, std::int32_t height, std::int32_t bytes_per_pixel,
                                      std::int32_t bits_per_sample)
{
    if (bits_per_sample != 8) return Fail({"a bitmap has 8 bits per sample"});
    return Adopt_Or_Fail(Cleared(width, height, bytes_per_pixel == 0 ? 3 : bytes_per_pixel));
}

Bitmap_Handle Create_Bitmap_Copy_CPP(Bitmap_Handle source)
{
    return Created_From(source, [](const Bitmap& bitmap) { return Copied(bitmap); });
}

Bitmap_Handle Create_RGB_From_Grayscale_Bitmap_CPP(Bitmap_Handle source)
{
    return Created_From(source, [](const Bitmap& bitmap) { return Colored(bitmap); });
}

Bitmap_Handle Create_Integrally_Scaled_Bitmap_CPP(Bitmap_Handle source, std::int32_t x_factor, std::int32_t y_factor)
{
    return Created_From(source, [&](const Bitmap& bitmap) { return Replicated(bitmap.View(), x_factor, y_factor); });
}

Bitmap_Handle Create_Cropped_Bitmap_CPP(Bitmap_Handle source, std::int32_t left, std::int32_t top, std::int32_t width,
                                        std::int32_t height)
{
    return Created_From(source, [&](const Bitmap& bitmap) {
        return Cropped(bitmap.View(), std::int64_t(left) - 1, std::int64_t(top) - 1, width, height);
    });
}

Bitmap_Handle Create_Rectilinearly_Rotated_Bitmap_CPP(Bitmap_Handle source, std::int32_t degrees)
{
    if (degrees != 90 && degrees != 180 && degrees != 270)
        return Fail({"a right-angle rotation is 90, 180 or 270 degrees, not " + std::to_string(degrees)});
    return Created_From(source, [&](const Bitmap& bitmap) { return Turned(bitmap, {degrees / 90, false}); });
}

Bitmap_Handle Create_Arbitrarily_Rotated_Bitmap_CPP(Bitmap_Handle source, float degrees)
{
    return Created_From(source,
                        [&](const Bitmap& bitmap) { return Rotated(bitmap, degrees, Current_Background_Color()); });
}

Bitmap_Handle Create_Flipped_Bitmap_CPP(Bitmap_Handle source, Flag first_kind)
{
    return Created_From(source, [&](const Bitmap& bitmap) {
        return Turned(bitmap, first_kind != Flag_False ? Mirror_Left_To_Right : Mirror_Top_To_Bottom);
    });
}

Bitmap_Handle Create_Horizontally_Distorted_Bitmap_CPP(Bitmap_Handle source, float top_left, float top_right,
                                                       float bottom_left, float bottom_right, std::int32_t new_width,
                                                       std::int32_t new_height, float offset, Flag expand,
                                                       std::int32_t interpolation_method)
{
    return Created_From(source, [&](const Bitmap& bitmap) -> Result<Bitmap> {
        if (new_height != bitmap.Height()) return Failure("a horizontal distortion keeps the height");
        return Horizontally_Distorted(bitmap.View(),
                                      {.top_left = double(top_left),
                                       .top_right = double(top_right),
                                       .bottom_left = double(bottom_left),
                                       .bottom_right = double(bottom_right),
                                       .width = new_width,
                                       .offset = double(offset),
                                       .expand = expand != Flag_False,
                                       .method = Interpolation_Method(interpolation_method)},
                                      Current_Background_Color());
    });
}

Flag Delete_Bitmap_CPP(Bitmap_Handle bitmap)
{
    return Release(bitmap) ? Flag_True : Fail_Flag({"invalid bitmap handle"});
}

Flag Get_Bitmap_Facts_CPP(Bitmap_Handle bitmap, Bitmap_Facts* facts)
{
    const auto found = Find_Bitmap(bitmap);
    if (!found) return Fail_Flag(found.error());
    if (facts == nullptr) return Fail_Flag({"no place for the facts of a bitmap"});
    const Bitmap& source = **found;
    *facts = {source.Width(), source.Height(), std::int32_t(source.Stride()), source.Bytes_Per_Pixel() * 8};
    return Flag_True;
}

Flag Get_Bitmap_Bytes_CPP(Bitmap_Handle bitmap, std::uint8_t* bytes, std::size_t size)
{
    const auto found = Find_Bitmap(bitmap);
    if (!found) return Fail_Flag(found.error());
    const Bitmap& source = **found;
    if (bytes == nullptr || size != source.Stride() * std::size_t(source.Height()))
        return Fail_Flag({"the array does not have the size of the bitmap"});
    std::memcpy(bytes, source.View().Row(source.Height() - 1), size);
    return Flag_True;
}

Flag Put_Bitmap_Bytes_CPP(Bitmap_Handle bitmap, const std::uint8_t* bytes, std::size_t size)
{
    const auto found = Find_Bitmap_To_Change(bitmap);
    if (!found) return Fail_Flag(found.error());
    Bitmap& target = **found;
    if (bytes == nullptr || size != target.Stride() * std::size_t(target.Height()))
        return Fail_Flag({"the array does not have the size of the bitmap"});
    const auto view = target.Change();
    std::uint8_t* first = First_Byte(view);
    for (std::size_t y = 0; y < std::size_t(view.height); ++y) // the padding stays 0, whatever the array holds there
        std::memcpy(first + y * target.Stride(), bytes + y * target.Stride(), view.Row_Bytes());
    return Flag_True;
}

void Release_Idle_Bitmap_Memory_CPP()
{
    Release_Idle_Pixel_Memory();
}

std::int32_t Get_Bitmap_Source_Warnings_CPP(Bitmap_Handle bitmap)
{
    const auto found = Find_Bitmap(bitmap);
    if (!found || (*found)->Origin() == nullptr) return 0;
    const Pixel_Origin& origin = *(*found)->Origin();
    return (origin.damaged ? 1 : 0) | (origin.reduced ? 2 : 0);
}
