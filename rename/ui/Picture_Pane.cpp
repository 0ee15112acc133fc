#include "rename/ui/Picture_Pane.h"

#include "catalogue/ui/Bitmap_Image.h"

#include <QtCore/QTimer>
#include <QtGui/QPainter>

namespace {

constexpr int Wanted_Side = 480; // pixels: what a pane shows well
constexpr int Largest_Divisor = 8;

} // namespace

Picture_Pane::Picture_Pane(Picture_Catalogue& catalogue, QWidget* parent)
    : QWidget(parent), catalogue_(catalogue), load_later_(new QTimer(this))
{
    setMinimumSize(120, 120);
    setAccessibleName(tr("Picture of the row"));
    load_later_->setSingleShot(true);
    connect(load_later_, &QTimer::timeout, this, &Picture_Pane::Load);
}

void Picture_Pane::Show_Picture(int Picture_Key)
{
    if (Picture_Key == key_) return;
    key_ = Picture_Key;
    load_later_->start(0);
}

void Picture_Pane::Load()
{
    const int side = std::max(catalogue_.Return_Picture_Horz_Pixels(key_), catalogue_.Return_Picture_Vert_Pixels(key_));
    int divisor = Largest_Divisor;
    while (divisor > 1 && side / divisor < Wanted_Side) divisor /= 2;
    const Owned_Bitmap bitmap(catalogue_.Return_Picture_Adjusted(key_, 0, divisor));
    image_ = bitmap ? Image_Of_Bitmap(bitmap.Get()) : QImage();
    setAccessibleDescription(catalogue_.Return_Picture_File_Name(key_));
    update();
}

void Picture_Pane::paintEvent(QPaintEvent*)
{
    if (image_.isNull()) return;
    QPainter painter(this);
    const QSize size = image_.size().scaled(this->size().boundedTo(image_.size()), Qt::KeepAspectRatio);
    QRect place(QPoint(), size);
    place.moveCenter(rect().center());
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(place, image_);
}
