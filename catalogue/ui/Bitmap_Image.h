#pragma once

#include "imaging/Brennick_Image_Utilities.h"

#include <QtGui/QImage>

class QPainter;

/// The pixels of a bitmap as an image, without a copy: rows run bottom-up, so that the image is upside down. It must not
/// outlive the bitmap. Null on a bad handle.
QImage Upside_Down_Image(Bitmap_Handle bitmap);

/// Draws the bitmap upright into the rectangle.
void Draw_Bitmap(QPainter& painter, const QRectF& target, Bitmap_Handle bitmap);

/// An upright image of its own.
QImage Image_Of_Bitmap(Bitmap_Handle bitmap);

/// The bitmap scaled to fit into `box` (device pixels), never enlarged; an image of its own.
QImage Fitted_Image(Bitmap_Handle bitmap, QSize box);
