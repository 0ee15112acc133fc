#pragma once

#include "slides/Slide_Player.h"

#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <QtWidgets/QWidget>

/// Gives a window the whole screen for a slide show: neither pointer nor control window over it while the mouse rests, and
/// the keys of a show in place of all others.
class Full_Screen_Show : public QObject {
    Q_OBJECT

public:
    /// control_window  comes back for a while when the mouse moves or a key is pressed
    /// control         gets what the keys ask for
    Full_Screen_Show(QWidget& window, QWidget& control_window, std::function<void(Slide_Control_Code)> control);
    ~Full_Screen_Show() override;

    void Begin();
    void End(); ///< the window gets its state of before Begin back
    bool Is_On() const { return on_; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool Take_Key(QKeyEvent& event);
    void Show_Pointer(bool shown);
    void Wake();
    void Rest();

    QPointer<QWidget> window_;
    QPointer<QWidget> control_window_;
    std::function<void(Slide_Control_Code)> control_;
    Qt::WindowStates state_before_;
    QTimer rest_; // of the mouse
    QPoint pointer_;
    bool on_ = false;
};
