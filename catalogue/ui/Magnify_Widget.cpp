#include "catalogue/ui/Magnify_Widget.h"

#include "catalogue/ui/Bitmap_Image.h"

#include <QtWidgets/QtWidgets>

Magnify_Widget::Magnify_Widget(const QIcon& zoom_in, const QIcon& zoom_out, QWidget* parent)
    : QWidget(parent), toggle_(new QToolButton(this)), zoom_in_(zoom_in), zoom_out_(zoom_out)
{
    setObjectName(QStringLiteral("Magnify_Picture"));
    setAccessibleName(tr("Large view"));
    setMinimumSize(120, 120);
    setFocusPolicy(Qt::ClickFocus);
    toggle_->setObjectName(QStringLiteral("Zoom_Toggle"));
    toggle_->setIconSize({20, 20});
    connect(toggle_, &QToolButton::clicked, this, [this] { emit Full_Window_Wanted(!full_window_); });
    Set_Full_Window(false);
}

void Magnify_Widget::Set_Bitmap(Bitmap_Handle bitmap, const QString& name, bool take)
{
    bitmap_ = bitmap;
    taken_.Reset(take ? bitmap : 0);
    name_ = name;
    rotation_ = 0;
    setAccessibleDescription(name);
    Make_Image();
}

void Magnify_Widget::Rotate_View(int degrees)
{
    rotation_ = (rotation_ + degrees) % 360;
    Make_Image();
}

void Magnify_Widget::Set_Full_Window(bool on)
{
    full_window_ = on;
    toggle_->setVisible(!(on && back_color_.isValid()));
    toggle_->setIcon(on ? zoom_out_ : zoom_in_);
    toggle_->setToolTip(on ? tr("Back to the normal view (Enter or Esc)") : tr("Show in the full window (Enter)"));
    toggle_->setAccessibleName(toggle_->toolTip());
}

void Magnify_Widget::Set_Back_Color(const QColor& color)
{
    back_color_ = color;
    toggle_->setVisible(!(full_window_ && color.isValid())); // nothing but the picture in a show
    update();
}

void Magnify_Widget::Make_Image()
{
    QSize box = size() * devicePixelRatioF();
    if (rotation_ % 180 != 0) box.transpose();
    image_ = Fitted_Image(bitmap_, box);
    if (rotation_ != 0 && !image_.isNull()) image_ = image_.transformed(QTransform().rotate(-rotation_));
    image_.setDevicePixelRatio(devicePixelRatioF());
    update();
}

void Magnify_Widget::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), back_color_.isValid() ? back_color_ : palette().color(QPalette::Window));
    if (image_.isNull()) {
        if (back_color_.isValid()) painter.setPen(back_color_.lightness() < 128 ? Qt::white : Qt::black);
        if (!name_.isEmpty()) painter.drawText(rect(), Qt::AlignCenter, tr("%1 can't be read any more.").arg(name_));
        return;
    }
    QRectF place(QPointF(), image_.deviceIndependentSize());
    place.moveCenter(QRectF(rect()).center());
    painter.drawImage(place.topLeft().toPoint(), image_);
}

void Magnify_Widget::resizeEvent(QResizeEvent*)
{
    toggle_->move(width() - toggle_->sizeHint().width() - 2, 2);
    Make_Image();
}

void Magnify_Widget::mouseDoubleClickEvent(QMouseEvent*)
{
    emit Full_Window_Wanted(!full_window_);
}

void Magnify_Widget::keyPressEvent(QKeyEvent* event)
{
    const int key = event->key();
    if (full_window_ && (key == Qt::Key_Escape || key == Qt::Key_Return || key == Qt::Key_Enter))
        emit Full_Window_Wanted(false);
    else
        QWidget::keyPressEvent(event);
}
