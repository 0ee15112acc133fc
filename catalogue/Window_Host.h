#pragma once

#include "catalogue/File_Entry.h"
#include "catalogue/Save_Selected_As.h"

#include <array>
#include <optional>
#include <span>
#include <vector>

/// What the commands ask of the window around them. Every member may stay as it is: nobody answers then.
class Window_Host {
public:
    virtual ~Window_Host() = default;

    // Views over the normal layout. Leaving tells whether there was one to leave.
    virtual bool Leave_Full_Window_View() { return false; }
    virtual bool Leave_Picture_List() { return false; }
    virtual void Show_Picture_List() {}
    virtual void Rotate_Blowup(int /*degrees*/) {} ///< the view alone turns, counterclockwise

    // The folder pane. Paths in the order shown.
    virtual int File_Row_Count() const { return 0; }
    virtual QStringList Selected_File_Paths() const { return {}; }
    virtual QStringList All_File_Paths() const { return {}; }
    virtual bool Shows_Found_Files() const { return false; } ///< the grid lists the result of a search
    virtual void Go_To_Folder(const QString& /*folder*/) {}
    virtual void Refresh_Folders() {}
    virtual void Show_File_Changes() {} ///< a command changed files: the pane reads them again
    /// For commands on folders: those that are selected in a grid of folders, or else the pane's folder.
    virtual QStringList Selected_Folders() const { return {}; }
    virtual QString File_Pattern() const { return {}; } ///< of the files that the pane lists
    virtual void List_Found_Files(const QStringList& /*paths*/) {}

    // Dialogs that take more than a question. Nothing when cancelled.
    virtual std::optional<Save_Options> Ask_Save_Options() { return std::nullopt; }
    virtual std::optional<std::array<int, 3>> Ask_Color(std::array<int, 3> /*red_green_blue*/) { return std::nullopt; }
    virtual void Edit_Script_Items(std::span<const int> /*keys*/) {}

    virtual void Open_Configuration_File() {}
    virtual void Save_Configuration_File() {}

    virtual Bitmap_Handle Clipboard_Bitmap() { return 0; } ///< a new bitmap, 0 when there is no picture
    virtual void Close_Window() {}                         ///< soon, from the event loop
};
