#pragma once

#include "frame/Form_Placement.h"

#include <QtCore/QRect>

/// Lengths of windows are twips in the logic and logical pixels in widgets, at every scale of the screen.
constexpr int Twips_Per_Pixel = 15;

inline int Pixels_From_Twips(int twips)
{
    return (twips + Twips_Per_Pixel / 2) / Twips_Per_Pixel;
}

inline QSize Pixels_From_Twips(QSize twips)
{
    return {Pixels_From_Twips(twips.width()), Pixels_From_Twips(twips.height())};
}

inline QSize Twips_From_Pixels(QSize pixels)
{
    return pixels * Twips_Per_Pixel;
}
