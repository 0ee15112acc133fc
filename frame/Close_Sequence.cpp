#include "frame/Close_Sequence.h"

#include "frame/Settings_Store.h"

#include <QtCore/QCoreApplication>

namespace {

bool May_Close(Closing_Window& window, User_Dialogs& dialogs)
{
    if (window.Leave_Full_Views()) return false;
    if (window.Pick_In_Progress()) {
        dialogs.Refuse(QCoreApplication::translate(
            "Close_Sequence", "Please stop the picture pick currently in progress before exiting."));
        return false;
    }
    if (window.Is_Busy()) return false;
    return window.Confirm_Abandon_Slide_Show() && window.Confirm_Abandon_Scripts() &&
           window.Confirm_Abandon_Descriptions() && window.Confirm_Close_Of_Other_Windows();
}

void Take_Settings(const Closing_Window& window, Program_State& state, const Printer_Binding& printer)
{
    state.Default_Path = window.Explorer_Path();
    state.Default_Extensions = window.Pattern_Text();
    state.Default_Printer_Name = printer.Device_Name();
}

void Store_Settings(const Closing_Window& window, const Program_State& state, const QString& alias,
                    Settings_Map& settings)
{
    const bool with_extensions = window.Save_Configuration_On_Exit();
    if (with_extensions)
        Save_Form_Placement(settings, window.Form(), Main_Window_Placement, window.Splitter_Positions());
    Write_Settings_String(state, settings, alias, with_extensions);
}

} // namespace

bool Close_Main_Window(Closing_Window& window, Program_State& state, const Entry_Ports& ports)
{
    if (!May_Close(window, ports.platform.dialogs)) return false;
    Take_Settings(window, state, ports.printer);
    const QString alias = window.Alias_String(); // the pane that knows it is about to go
    window.Detach_Folder_Pane();
    window.Release_Pictures();
    ports.printer.Clear();
    Store_Settings(window, state, alias, ports.platform.settings);
    window.Quit_Help();
    window.Unload_Other_Windows();
    if (ports.kernel.Live_Bitmaps() > 0) ports.platform.shell.Beep();
    return true;
}
