#pragma once

#include "frame/Entry_Sequence.h"
#include "frame/Form_Placement.h"

#include <array>

/// The main window as its close sees it.
class Closing_Window {
public:
    virtual ~Closing_Window() = default;
    virtual bool Leave_Full_Views() = 0; ///< leaves the full-window or list view; true when one was showing
    virtual bool Pick_In_Progress() const = 0;
    virtual bool Is_Busy() const = 0;
    virtual bool Confirm_Abandon_Slide_Show() = 0; ///< each asks only when there is something to lose
    virtual bool Confirm_Abandon_Scripts() = 0;
    virtual bool Confirm_Abandon_Descriptions() = 0;
    virtual bool Confirm_Close_Of_Other_Windows() = 0; ///< last opened first; they close later, without a question
    virtual QString Explorer_Path() const = 0;
    virtual QString Pattern_Text() const = 0;
    virtual QString Alias_String() const = 0;
    virtual void Detach_Folder_Pane() = 0;
    virtual void Release_Pictures() = 0; ///< the current picture, the large view, the masks
    virtual bool Save_Configuration_On_Exit() const = 0;
    virtual const Placed_Form& Form() const = 0;
    virtual std::array<float, 2> Splitter_Positions() const = 0; ///< of the picture pane, then of the file pane
    virtual void Quit_Help() = 0;
    virtual void Unload_Other_Windows() = 0; ///< last opened first
};

inline const QString Main_Window_Placement = QStringLiteral("Halvine-Picture");

/// Closes the main window: asks about what would be lost, stores the settings, lets everything go. False when the window
/// stays open. A bitmap that is left over at the end is told by a beep.
bool Close_Main_Window(Closing_Window& window, Program_State& state, const Entry_Ports& ports);
