// What the user does with the filmstrip: mouse, keys, drag and drop.

#include "catalogue/Picture_Texts.h"
#include "catalogue/ui/Bitmap_Image.h"
#include "catalogue/ui/Filmstrip_Widget.h"
#include "controls/Folder_Listing.h"
#include "frame/text/Text_Utilities.h"
#include "frame/text/Uri_List.h"

#include <QtWidgets/QtWidgets>

namespace {

Strip_Modifiers Modifiers_Of(Qt::KeyboardModifiers modifiers)
{
    return {.shift = modifiers.testFlag(Qt::ShiftModifier), .control = modifiers.testFlag(Qt::ControlModifier)};
}

std::optional<Strip_Key> Strip_Key_Of(int key)
{
    switch (key) {
    case Qt::Key_Left: return Strip_Key::Left;
    case Qt::Key_Right: return Strip_Key::Right;
    case Qt::Key_Up: return Strip_Key::Up;
    case Qt::Key_Down: return Strip_Key::Down;
    case Qt::Key_Home: return Strip_Key::Home;
    case Qt::Key_End: return Strip_Key::End;
    case Qt::Key_PageUp: return Strip_Key::Page_Up;
    case Qt::Key_PageDown: return Strip_Key::Page_Down;
    case Qt::Key_Space: return Strip_Key::Space;
    case Qt::Key_Return:
    case Qt::Key_Enter: return Strip_Key::Enter;
    default: return std::nullopt;
    }
}

const QString Uri_List_Type = QStringLiteral("text/uri-list");

/// Files and folders. What is no picture is told in the list of failures.
QStringList Dropped_Paths(const QMimeData& data)
{
    return Paths_Of_Uri_List(data.data(Uri_List_Type));
}

} // namespace

void Filmstrip_Widget::Carry_Out(const Strip_Action& action, bool later)
{
    if (action.cursor_index > 0) Set_Cursor(action.cursor_index);
    if (action.current_index > 0) {
        wanted_index_ = action.current_index;
        current_later_.stop();
        if (later)
            current_later_.start();
        else
            emit Current_Wanted(wanted_index_);
    }
    if (action.blows_up) emit Blow_Up_Wanted();
}

void Filmstrip_Widget::Press(int index, bool toggles)
{
    Carry_Out(Press_Cell(form_, index, Strip_Button::Left, {.control = toggles}), false);
}

void Filmstrip_Widget::mousePressEvent(QMouseEvent* event)
{
    pressed_index_ = 0;
    const int index = Index_At(event->pos());
    const bool left = event->button() == Qt::LeftButton;
    if (index == 0 || (!left && event->button() != Qt::RightButton)) return;
    press_point_ = event->pos();
    if (left && event->modifiers() == Qt::NoModifier && form_.Test_Picture_Selected(index)) {
        pressed_index_ = index; // the selection may be about to be dragged: the click counts at its release
        return;
    }
    const Strip_Button button = left ? Strip_Button::Left : Strip_Button::Right;
    Carry_Out(Press_Cell(form_, index, button, Modifiers_Of(event->modifiers())), false);
    if (left && form_.Test_Picture_Selected(index)) pressed_index_ = -index; // a drag may follow, a click is done
}

void Filmstrip_Widget::mouseMoveEvent(QMouseEvent* event)
{
    if (pressed_index_ == 0 || !event->buttons().testFlag(Qt::LeftButton)) return;
    if ((event->pos() - press_point_).manhattanLength() < QApplication::startDragDistance()) return;
    pressed_index_ = 0;
    Begin_Drag();
}

void Filmstrip_Widget::mouseReleaseEvent(QMouseEvent* event)
{
    const int index = std::exchange(pressed_index_, 0);
    if (index > 0 && event->button() == Qt::LeftButton)
        Carry_Out(Press_Cell(form_, index, Strip_Button::Left, {}), false);
}

void Filmstrip_Widget::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && event->modifiers() == Qt::NoModifier && Index_At(event->pos()) > 0)
        emit Blow_Up_Wanted();
    else
        mousePressEvent(event);
}

void Filmstrip_Widget::contextMenuEvent(QContextMenuEvent* event)
{
    if (event->reason() == QContextMenuEvent::Mouse) {
        if (Index_At(event->pos()) > 0) emit Popup_Wanted(event->globalPos());
        return;
    }
    const int index = Cursor_Index();
    if (index < 1) return;
    Carry_Out(Press_Cell(form_, index, Strip_Button::Right, {}), false);
    emit Popup_Wanted(viewport()->mapToGlobal(Cell_On_View(index).center()));
}

void Filmstrip_Widget::wheelEvent(QWheelEvent* event)
{
    constexpr int notch = 120;
    wheel_rest_ += event->angleDelta().y();
    const int rows = wheel_rest_ / notch;
    wheel_rest_ -= rows * notch;
    if (rows != 0) verticalScrollBar()->setValue(verticalScrollBar()->value() - rows);
    event->accept();
}

void Filmstrip_Widget::keyPressEvent(QKeyEvent* event)
{
    const auto key = Strip_Key_Of(event->key());
    if (!key || event->modifiers().testFlag(Qt::AltModifier)) {
        event->ignore();
        return;
    }
    layout_.Set_Count(form_.State().pictures.Count());
    Carry_Out(Press_Key(form_, layout_, Cursor_Index(), *key, Modifiers_Of(event->modifiers())), event->isAutoRepeat());
}

void Filmstrip_Widget::focusInEvent(QFocusEvent* event)
{
    QAbstractScrollArea::focusInEvent(event);
    Set_Thumbnail_Frame(Cursor_Index());
}

void Filmstrip_Widget::focusOutEvent(QFocusEvent* event)
{
    QAbstractScrollArea::focusOutEvent(event);
    Set_Thumbnail_Frame(Cursor_Index());
}

void Filmstrip_Widget::Begin_Drag()
{
    const Catalogue_State& state = form_.State();
    QStringList paths;
    for (const int index : state.selection.Selected_Indices()) paths << state.pictures.Item(index).Full_Name();
    if (paths.isEmpty()) return;
    auto* drag = new QDrag(this);
    auto* files = new QMimeData; // the drag's from here on
    files->setData(Uri_List_Type, Uri_List_Of(paths));
    drag->setMimeData(files);
    const Picture_Item& first = state.pictures.Item(state.selection.Selected_Indices().front());
    const QImage picture = Fitted_Image(budget_.Drawn(first), {64, 64});
    if (!picture.isNull()) drag->setPixmap(QPixmap::fromImage(picture));
    form_.Set_Drag_Source(this);
    drag->exec(Qt::CopyAction);
    form_.Set_Drag_Source(nullptr);
}

void Filmstrip_Widget::dragEnterEvent(QDragEnterEvent* event)
{
    if (form_.Return_Drag_Source() != this && !Dropped_Paths(*event->mimeData()).isEmpty()) {
        event->setDropAction(Qt::CopyAction);
        event->accept();
    }
}

void Filmstrip_Widget::dragMoveEvent(QDragMoveEvent* event)
{
    event->setDropAction(Qt::CopyAction);
    event->accept();
}

void Filmstrip_Widget::dropEvent(QDropEvent* event)
{
    const QStringList paths = Dropped_Paths(*event->mimeData());
    if (form_.Return_Drag_Source() == this || paths.isEmpty()) return;
    event->setDropAction(Qt::CopyAction);
    event->accept();
    // After the drop: reading takes its time, and the program that the files come from waits for the answer.
    QTimer::singleShot(0, this, [this, paths] {
        emit Files_Dropped(Files_In_Place_Of_Folders(paths, form_.State().Default_Extensions));
    });
}

bool Filmstrip_Widget::Show_Tooltip(const QHelpEvent& event)
{
    const int index = Index_At(event.pos());
    if (index == 0) {
        QToolTip::hideText();
        return false;
    }
    const Picture_Item& item = form_.State().pictures.Item(index);
    QStringList lines{Picture_Text(form_.State(), index)};
    lines << QStringLiteral("%1 x %2").arg(item.Horz_Pixels).arg(item.Vert_Pixels);
    if (!item.Camera_Summary.isEmpty()) lines << item.Camera_Summary;
    if (!item.Description.isEmpty()) lines << item.Description;
    const QString text =
        lines.join(QLatin1Char('\n')).toHtmlEscaped().replace(QLatin1Char('\n'), QStringLiteral("<br>"));
    QToolTip::showText(event.globalPos(), QStringLiteral("<p style='white-space:pre'>%1</p>").arg(text), this,
                       Cell_On_View(index));
    return true;
}

bool Filmstrip_Widget::viewportEvent(QEvent* event)
{
    if (event->type() == QEvent::ToolTip) return Show_Tooltip(*static_cast<QHelpEvent*>(event));
    return QAbstractScrollArea::viewportEvent(event);
}
