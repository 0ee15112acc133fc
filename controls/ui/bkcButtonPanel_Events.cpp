#include "controls/ui/bkcButtonPanel.h"

#include "controls/ui/bkcGrid.h"

// Clicks, keys and the rearranging by drag.

namespace {

const QString Drag_Format = QStringLiteral("application/x-halvine-panel-button");

/// The panel, so that no other takes the button, and the button.
QByteArray Drag_Payload(const bkcButtonPanel* panel, std::optional<int> Button_ID = {})
{
    const auto of_panel = QByteArray::number(quintptr(panel)) + ':';
    return Button_ID ? of_panel + QByteArray::number(*Button_ID) : of_panel;
}

} // namespace

void bkcButtonPanel::Click_Button(int Button, int Shift, int Button_ID)
{
    const auto click = model_.Press(Button, Shift, Button_ID);
    Changed(); // the tool button turned itself over: show what the model says
    if (click.Button_ID == 0) return;
    Give_Focus_To(Button_ID);
    emit Click(click.Button, click.Shift, click.State, click.Button_ID);
}

void bkcButtonPanel::Give_Focus_To(int Button_ID)
{
    auto* widget = widgets_.value(Button_ID);
    if (!widget) return;
    if (auto* before = widgets_.value(focus_button_)) before->setFocusPolicy(Qt::NoFocus);
    focus_button_ = Button_ID;
    widget->setFocusPolicy(Qt::TabFocus);
}

bool bkcButtonPanel::eventFilter(QObject* watched, QEvent* event)
{
    auto* widget = qobject_cast<QToolButton*>(watched);
    if (!widget) return QAbstractScrollArea::eventFilter(watched, event);
    const int Button_ID = widget->property("Button_ID").toInt();
    switch (event->type()) {
    case QEvent::KeyPress: return Button_Key(static_cast<QKeyEvent*>(event), Button_ID);
    case QEvent::MouseButtonPress:
    case QEvent::MouseMove:
    case QEvent::MouseButtonRelease: return Button_Mouse(static_cast<QMouseEvent*>(event), Button_ID, *widget);
    default: return QAbstractScrollArea::eventFilter(watched, event);
    }
}

bool bkcButtonPanel::Button_Mouse(QMouseEvent* event, int Button_ID, const QWidget& widget)
{
    shift_ = Shift_Of(event->modifiers());
    const bool inside = widget.rect().contains(event->position().toPoint());
    if (event->type() == QEvent::MouseButtonPress) {
        press_point_ = event->globalPosition().toPoint();
        drag_button_ = event->button() == Qt::LeftButton ? Button_ID : 0;
        return event->button() != Qt::LeftButton;
    }
    if (event->type() == QEvent::MouseButtonRelease) {
        drag_button_ = 0;
        if (event->button() == Qt::LeftButton) return false;
        if (inside) Click_Button(Button_Of(event->button()), std::exchange(shift_, 0), Button_ID);
        return true;
    }
    const auto way = (event->globalPosition().toPoint() - press_point_).manhattanLength();
    if (!model_.Properties.AllowRearrange || drag_button_ == 0 || way < QApplication::startDragDistance()) return false;
    Begin_Drag(std::exchange(drag_button_, 0));
    return true;
}

// Arrows walk over the buttons as they stand; hidden and disabled ones are passed.
bool bkcButtonPanel::Button_Key(QKeyEvent* event, int Button_ID)
{
    shift_ = Shift_Of(event->modifiers());
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        Click_Button(1, std::exchange(shift_, 0), Button_ID);
        return true;
    }
    int step = 0;
    if (event->key() == Qt::Key_Right || event->key() == Qt::Key_Down) step = 1;
    if (event->key() == Qt::Key_Left || event->key() == Qt::Key_Up) step = -1;
    if (step == 0) return false;
    const auto& buttons = model_.Buttons();
    const int count = int(buttons.size());
    int place = 0;
    while (place < count && (buttons[std::size_t(place)].spacer || buttons[std::size_t(place)].id != Button_ID))
        ++place;
    for (place += step; place >= 0 && place < count; place += step) {
        const auto& button = buttons[std::size_t(place)];
        if (button.spacer || !button.visible || !button.enabled) continue;
        Give_Focus_To(button.id);
        auto* widget = widgets_.value(button.id);
        widget->setFocus(Qt::TabFocusReason);
        return true;
    }
    return true;
}

void bkcButtonPanel::Begin_Drag(int Button_ID)
{
    auto* widget = widgets_.value(Button_ID);
    if (!widget) return;
    widget->setDown(false);
    auto* payload = new QMimeData;
    payload->setData(Drag_Format, Drag_Payload(this, Button_ID));
    auto* drag = new QDrag(this); // owned by Qt once it runs
    drag->setMimeData(payload);
    drag->setPixmap(button_drag_icon_.isNull() ? widget->grab() : button_drag_icon_);
    drag->exec(Qt::MoveAction);
    drop_mark_->hide();
}

QPoint bkcButtonPanel::On_Panel(QPoint viewport_point) const
{
    return viewport_point + QPoint(Scroll_Offset_X(), Scroll_Offset_Y());
}

void bkcButtonPanel::Show_Drop_Mark(int Before_ID)
{
    Panel_Rectangle place;
    const auto size = viewport()->size();
    const auto ids = model_.Get_ID_List();
    const int id = Before_ID != 0 ? Before_ID : ids.empty() ? 0 : ids.back();
    if (!model_.Get_Button_Rectangle(id, size.width(), size.height(), place)) return;
    const QPoint corner(Scroll_Offset_X(), Scroll_Offset_Y());
    const bool columns = model_.ScrollState() == 2;
    QRect mark = columns ? QRect(place.left, place.top - 1, place.Width(), 2)
                         : QRect(place.left - 1, place.top, 2, place.Height());
    if (Before_ID == 0) mark.translate(columns ? 0 : place.Width(), columns ? place.Height() : 0);
    drop_mark_->setGeometry(mark.translated(-corner));
    drop_mark_->show();
    drop_mark_->raise();
}

void bkcButtonPanel::dragEnterEvent(QDragEnterEvent* event)
{
    const auto* payload = event->mimeData();
    event->setAccepted(model_.Properties.AllowRearrange && payload->data(Drag_Format).startsWith(Drag_Payload(this)));
}

void bkcButtonPanel::dragMoveEvent(QDragMoveEvent* event)
{
    if (model_.ScrollState() == 3) Scroll_Towards(event->position().toPoint());
    const auto point = On_Panel(event->position().toPoint());
    Show_Drop_Mark(model_.Drop_Before(point.x(), point.y(), viewport()->width(), viewport()->height()));
    event->accept();
}

// A drag that hangs at the edge brings the next row on view.
void bkcButtonPanel::Scroll_Towards(QPoint viewport_point)
{
    constexpr int edge = 12;
    auto* bar = verticalScrollBar();
    if (viewport_point.y() < edge) bar->setValue(bar->value() - bar->singleStep());
    if (viewport_point.y() >= viewport()->height() - edge) bar->setValue(bar->value() + bar->singleStep());
}

void bkcButtonPanel::dragLeaveEvent(QDragLeaveEvent*)
{
    drop_mark_->hide();
}

void bkcButtonPanel::dropEvent(QDropEvent* event)
{
    drop_mark_->hide();
    const auto point = On_Panel(event->position().toPoint());
    const int before = model_.Drop_Before(point.x(), point.y(), viewport()->width(), viewport()->height());
    const int id = event->mimeData()->data(Drag_Format).mid(Drag_Payload(this).size()).toInt();
    event->setDropAction(Qt::MoveAction);
    event->accept();
    if (!model_.Rearrange(id, before)) return;
    Changed();
    emit Rearranged(id, before);
}

void bkcButtonPanel::resizeEvent(QResizeEvent* event)
{
    QAbstractScrollArea::resizeEvent(event);
    Show_Scroll_Bars();
    Place_Buttons();
}

void bkcButtonPanel::scrollContentsBy(int, int)
{
    Place_Buttons();
}

void bkcButtonPanel::changeEvent(QEvent* event)
{
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange) Place_Caption();
}
