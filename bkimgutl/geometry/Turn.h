#pragma once

#include "bkimgutl/core/Bitmap.h"

/// Exact turns and mirrors. The results know where their pixels came from, with the turn added.

/// One of the eight symmetries of the whole picture.
Result<Bitmap> Turned(const Bitmap& source, Pixel_Symmetry symmetry);

/// The same from view to view; `to` has the size that the symmetry gives. For decoders, which own no bitmap yet.
void Turn_Pixels(const Bitmap_View& from, Pixel_Symmetry symmetry, const Mutable_Bitmap_View& to);

constexpr Pixel_Symmetry Mirror_Left_To_Right{0, true};
constexpr Pixel_Symmetry Mirror_Top_To_Bottom{2, true};
