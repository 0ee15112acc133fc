#include "catalogue/Close_Sequence.h"

#include "catalogue/Modifications.h"

bool Close_Sequence::May_Close()
{
    const bool left_full_window = host_.Leave_Full_Window_View();
    const bool left_list = !left_full_window && host_.Leave_Picture_List();
    if (left_full_window || left_list) return false;
    Catalogue_State& state = form_.State();
    if (form_.Picking().Pick_In_Progress()) {
        state.platform.dialogs.Refuse(
            QStringLiteral("Please stop the picture pick currently in progress before exiting."));
        return false;
    }
    if (commands_.Is_Busy()) return false;
    return steps_.Confirm_Abandon_Slide_Show() && Confirm_Abandon_Scripts(state, true) &&
           Confirm_Abandon_Descriptions(state, true);
}

bool Close_Sequence::Run()
{
    if (!May_Close()) return false;
    Catalogue_State& state = form_.State();
    const bool with_extensions = commands_.Save_Configuration_On_Exit;
    steps_.Take_Path_And_Pattern();
    steps_.Take_Printer_Name();
    steps_.Detach_Folder_Pane();
    form_.Pictures().Drop_Current_Picture();
    steps_.Release_Pictures();
    if (with_extensions) steps_.Save_Placement();
    steps_.Write_Settings(with_extensions); // the lists, the path and the printer are stored at every exit
    steps_.Release_Resize_Lists();
    steps_.Quit_Help();
    steps_.Unload_Other_Windows();
    state.selection.Clear();
    state.pictures.Clear();
    if (Bitmap_Count() > 0) state.platform.shell.Beep(); // a bitmap was forgotten
    return true;
}
