#include "catalogue/ui/Elided_Label.h"

#include <QtWidgets/QtWidgets>

Elided_Label::Elided_Label(QWidget* parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
}

void Elided_Label::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    style()->drawItemText(&painter, contentsRect(), int(Qt::AlignVCenter | Qt::AlignLeft), palette(), isEnabled(),
                          fontMetrics().elidedText(text(), Qt::ElideMiddle, contentsRect().width()), foregroundRole());
}

void Elided_Label::resizeEvent(QResizeEvent* event)
{
    QLabel::resizeEvent(event);
    update();
}

bool Elided_Label::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip) return QLabel::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    if (Fits())
        QToolTip::hideText();
    else
        QToolTip::showText(help->globalPos(), Qt::convertFromPlainText(text(), Qt::WhiteSpaceNormal), this);
    return true;
}
