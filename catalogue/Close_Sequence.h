#pragma once

#include "catalogue/Catalogue_Commands.h"

/// What the closing of the main window needs from the window and the program around it, in the order of use.
class Close_Steps {
public:
    virtual ~Close_Steps() = default;
    virtual bool Confirm_Abandon_Slide_Show() { return true; }
    virtual void Take_Path_And_Pattern() {} ///< from the folder pane into the program's defaults
    virtual void Take_Printer_Name() {}     ///< empty when the system has none
    virtual void Detach_Folder_Pane() {}
    virtual void Release_Pictures() {} ///< what the window itself keeps of them
    virtual void Save_Placement() {}   ///< window and splitters
    virtual void Write_Settings(bool /*with_extensions*/) {}
    virtual void Release_Resize_Lists() {}
    virtual void Quit_Help() {}
    virtual void Unload_Other_Windows() {} ///< last opened first
};

/// Decides whether the main window may close, and what happens on the way.
class Close_Sequence {
public:
    Close_Sequence(Halvine_Form& form, Catalogue_Commands& commands, Window_Host& host, Close_Steps& steps)
        : form_(form), commands_(commands), host_(host), steps_(steps)
    {}

    /// False: the window stays open. True: everything was asked, stored and released.
    bool Run();

private:
    bool May_Close();
    Halvine_Form& form_;
    Catalogue_Commands& commands_;
    Window_Host& host_;
    Close_Steps& steps_;
};
