#pragma once

#include "imaging/Brennick_Image_Utilities.h"

#include <QtCore/QString>
#include <optional>

/// "640,480": two whole numbers of at least 1 with ",", ";", "/" or blanks between them. Nothing otherwise.
std::optional<Pixel_Size> New_Image_Size(const QString& text);

/// A new white picture of 24 bits; 0 when it does not fit into the limits.
Bitmap_Handle New_White_Bitmap(Pixel_Size size);
