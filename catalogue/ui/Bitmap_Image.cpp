#include "catalogue/ui/Bitmap_Image.h"

#include "bkimgutl/core/Handle_Table.h"

#include <QtGui/QPainter>

QImage Upside_Down_Image(Bitmap_Handle bitmap)
{
    const auto found = Find_Bitmap(bitmap);
    if (!found) return {};
    const Bitmap_View view = (*found)->View();
    const auto format = view.bytes_per_pixel == 1 ? QImage::Format_Grayscale8 : QImage::Format_BGR888;
    return QImage(view.Row(view.height - 1), view.width, view.height, qsizetype((*found)->Stride()), format);
}

void Draw_Bitmap(QPainter& painter, const QRectF& target, Bitmap_Handle bitmap)
{
    const QImage image = Upside_Down_Image(bitmap);
    if (image.isNull()) return;
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.translate(0, target.top() + target.bottom());
    painter.scale(1, -1);
    painter.drawImage(target, image);
    painter.restore();
}

QImage Image_Of_Bitmap(Bitmap_Handle bitmap)
{
    return Upside_Down_Image(bitmap).mirrored();
}

QImage Fitted_Image(Bitmap_Handle bitmap, QSize box)
{
    const Pixel_Size size = Size_Of_Bitmap(bitmap);
    const QSize full(size.width, size.height);
    if (full.isEmpty() || box.isEmpty()) return {};
    const QSize target = full.scaled(box, Qt::KeepAspectRatio).expandedTo({1, 1});
    if (target.width() >= full.width()) return Image_Of_Bitmap(bitmap);
    const Owned_Bitmap scaled(Count_Bitmap(
        Create_Scaled_Bitmap_CPP(bitmap, target.width(), target.height(), int(Interpolation_Method::Triangle))));
    return scaled ? Image_Of_Bitmap(scaled.Get()) : QImage();
}
