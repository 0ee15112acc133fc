#pragma once

#include "frame/ui/Form_Frame.h"

#include <QtWidgets/QDialog>

/// The base of every dialog and working window. A derived window
///   - builds its widgets and its layout in its constructor and ends with resize() or adjustSize(): what it has then is
///     its design size, below which nobody can make it smaller;
///   - says in May_Close what has to be asked before it goes. Escape, the close button, close() and reject() all come
///     there; accept() does not, since the user said what he wanted.
/// Its place is restored at the first show and stored at the close, a note of when it was opened is kept, and the main
/// window closes it at the end of the program. Questions inside go through User_Dialogs. Icons come from Icon().
class Framed_Form : public QDialog {
    Q_OBJECT

public:
    /// Working windows have a frame with minimize and maximize and an entry in the task bar, dialogs have neither.
    enum class Kind { Dialog, Working_Window };

    /// platform      keeps the place; null: the window is centred over its owner and nothing is stored
    /// Value_Name    of the settings value with the place ("Halvine-Adjust"); empty: as with a null platform
    Framed_Form(const Platform* platform, const QString& Value_Name, QWidget* parent, Kind kind = Kind::Dialog);

    Form_Frame& Frame() { return *frame_; }

    /// Asks now for a close that comes later: after a yes, that close asks no more. False when the window has to stay.
    bool Agree_To_Close();
    void Withdraw_Agreement() { agreed_ = false; } ///< another window has to stay, so this one does too

    void reject() override;

protected:
    /// Asks what has to be asked. False keeps the window open. Called once for each try to close it.
    virtual bool May_Close() { return true; }

private:
    Form_Frame* frame_; // a child of this window
    bool agreed_ = false;
};
