#include "slides/ui/Full_Screen_Show.h"

#include "slides/ui/Slide_Keys.h"

#include <QtGui/QMouseEvent>
#include <QtWidgets/QApplication>

namespace {

constexpr int Rest_Milliseconds = 1500;

} // namespace

Full_Screen_Show::Full_Screen_Show(QWidget& window, QWidget& control_window,
                                   std::function<void(Slide_Control_Code)> control)
    : window_(&window), control_window_(&control_window), control_(std::move(control))
{
    rest_.setSingleShot(true);
    rest_.setInterval(Rest_Milliseconds);
    connect(&rest_, &QTimer::timeout, this, &Full_Screen_Show::Rest);
}

Full_Screen_Show::~Full_Screen_Show()
{
    End();
}

void Full_Screen_Show::Begin()
{
    if (on_ || window_ == nullptr) return;
    on_ = true;
    state_before_ = window_->windowState();
    window_->setWindowState(state_before_ | Qt::WindowFullScreen);
    pointer_ = QCursor::pos();
    Show_Pointer(false);
    rest_.start(); // until then the control window says where the show is
    qApp->installEventFilter(this);
}

void Full_Screen_Show::End()
{
    if (!on_) return;
    on_ = false;
    rest_.stop();
    qApp->removeEventFilter(this);
    if (window_ == nullptr) return;
    Show_Pointer(true);
    window_->setWindowState(state_before_);
}

void Full_Screen_Show::Show_Pointer(bool shown)
{
    if (shown)
        window_->unsetCursor();
    else
        window_->setCursor(Qt::BlankCursor);
}

void Full_Screen_Show::Wake()
{
    if (control_window_ != nullptr) control_window_->show();
    rest_.start();
}

void Full_Screen_Show::Rest()
{
    Show_Pointer(false);
    if (control_window_ == nullptr) return;
    if (control_window_->geometry().contains(QCursor::pos()))
        rest_.start(); // somebody is about to press a button
    else
        control_window_->hide();
}

/// A show takes the keys before any shortcut of the window does; those that mean nothing to it do nothing.
bool Full_Screen_Show::Take_Key(QKeyEvent& event)
{
    if (event.type() == QEvent::ShortcutOverride) {
        event.accept();
        return true;
    }
    if (event.modifiers() == Qt::AltModifier && event.key() == Qt::Key_F4) return false; // closes the window
    if (const auto code = Slide_Key_Code(event)) control_(*code);
    return true;
}

bool Full_Screen_Show::eventFilter(QObject* watched, QEvent* event)
{
    const auto type = event->type();
    if (type == QEvent::MouseMove && static_cast<QMouseEvent*>(event)->globalPosition().toPoint() != pointer_) {
        pointer_ = static_cast<QMouseEvent*>(event)->globalPosition().toPoint();
        Show_Pointer(true);
        Wake();
    }
    const auto* widget = qobject_cast<QWidget*>(watched);
    const bool is_key = type == QEvent::KeyPress || type == QEvent::ShortcutOverride;
    // A message over the show keeps its own keys, and so does the control window.
    if (!is_key || widget == nullptr || QApplication::activeModalWidget() != nullptr)
        return QObject::eventFilter(watched, event);
    if (type == QEvent::KeyPress && (widget->window() == window_ || widget->window() == control_window_)) Wake();
    if (widget->window() != window_) return QObject::eventFilter(watched, event);
    return Take_Key(*static_cast<QKeyEvent*>(event)) || QObject::eventFilter(watched, event);
}
