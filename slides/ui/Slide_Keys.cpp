#include "slides/ui/Slide_Keys.h"

#include <QtGui/QKeyEvent>

std::optional<Slide_Control_Code> Slide_Key_Code(const QKeyEvent& event)
{
    if ((event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0) return {};
    switch (event.key()) {
    case Qt::Key_Space: return Slide_Control_Code::Pause;
    case Qt::Key_Left:
    case Qt::Key_Up:
    case Qt::Key_PageUp: return Slide_Control_Code::Previous;
    case Qt::Key_Right:
    case Qt::Key_Down:
    case Qt::Key_PageDown: return Slide_Control_Code::Next;
    case Qt::Key_Return:
    case Qt::Key_Enter: return Slide_Control_Code::Select;
    case Qt::Key_Delete: return Slide_Control_Code::Remove;
    case Qt::Key_Escape:
    case Qt::Key_F11: return Slide_Control_Code::Stop;
    default: return {};
    }
}
