#include "bkimgutl/geometry/Turn.h"

#include "bkimgutl/core/Row_Loop.h"
#include "bkimgutl/core/Row_Writer.h"
#include "bkimgutl/geometry/Turn_Rows.h"

#include <algorithm>

// A view that starts at the bottom row and steps upwards is a picture flipped top to bottom, for nothing. With it three
// kernels make all eight symmetries: copy rows, reverse rows, transpose.

namespace {

template <class View>
View Upside_Down(View view)
{
    view.top = view.Row(view.height - 1);
    view.step = -view.step;
    return view;
}

// Threads take whole bands, so that squares do not break at their borders.
void Transpose(const Bitmap_View& from, const Mutable_Bitmap_View& to)
{
    const int bands = (to.height + Transpose_Band - 1) / Transpose_Band;
    For_Rows(bands, 2 * to.Row_Bytes() * Transpose_Band, [&](int first, int end) {
        for (int band = first; band < end; ++band)
            Transpose_Rows(from, to, band * Transpose_Band, std::min(to.height, (band + 1) * Transpose_Band));
    });
}

void Reverse(const Bitmap_View& from, const Mutable_Bitmap_View& to)
{
    For_Rows(to.height, 2 * to.Row_Bytes(), [&](int first, int end) {
        for (int y = first; y < end; ++y) Reverse_Row(from.Row(y), from.width, from.bytes_per_pixel, to.Row(y));
    });
}

void Copy(const Bitmap_View& from, const Mutable_Bitmap_View& to)
{
    For_Rows(to.height, 2 * to.Row_Bytes(), [&](int first, int end) {
        Row_Writer writer(to);
        for (int y = first; y < end; ++y) writer.Copy_To_Row(y, 0, from.Row(y), to.Row_Bytes());
    });
}

std::shared_ptr<const Pixel_Origin> Turned_Origin(const std::shared_ptr<const Pixel_Origin>& origin,
                                                  Pixel_Symmetry symmetry)
{
    if (origin == nullptr || symmetry.Is_Identity()) return origin;
    auto turned = std::make_shared<Pixel_Origin>(*origin);
    turned->symmetry = Then(origin->symmetry, symmetry);
    return turned;
}

} // namespace

void Turn_Pixels(const Bitmap_View& from, Pixel_Symmetry symmetry, const Mutable_Bitmap_View& to)
{
    switch (symmetry.quarter_turns + (symmetry.mirrored ? 4 : 0)) {
    case 0: return Copy(from, to);
    case 1: return Transpose(from, Upside_Down(to));
    case 2: return Reverse(from, Upside_Down(to));
    case 3: return Transpose(Upside_Down(from), to);
    case 4: return Reverse(from, to);
    case 5: return Transpose(from, to);
    case 6: return Copy(from, Upside_Down(to));
    case 7: return Transpose(Upside_Down(from), Upside_Down(to));
    }
}

Result<Bitmap> Turned(const Bitmap& source, Pixel_Symmetry symmetry)
{
    const bool swaps = symmetry.Swaps_Sides();
    auto turned = Bitmap::Create(swaps ? source.Height() : source.Width(), swaps ? source.Width() : source.Height(),
                                 source.Bytes_Per_Pixel());
    if (!turned) return turned;
    Turn_Pixels(source.View(), symmetry, turned->Change());
    turned->Set_Origin(Turned_Origin(source.Origin(), symmetry));
    return turned;
}
