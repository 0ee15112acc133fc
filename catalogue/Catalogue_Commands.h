#pragma once

#include "catalogue/Command_Table.h"
#include "catalogue/File_Operations.h"
#include "catalogue/Folder_Operations.h"
#include "catalogue/Halvine_Form.h"
#include "catalogue/Search.h"
#include "catalogue/Window_Host.h"

#include <functional>
#include <map>

/// The handlers of the main window's commands. A command that comes in while another one runs is refused in silence, but
/// for Exit, which the close sequence judges, and the Stop button of a pick.
class Catalogue_Commands {
public:
    Catalogue_Commands(Halvine_Form& form, Window_Host& host)
        : form_(form),
          host_(host),
          files_(form.State(), form.Picking(), form.Pictures()),
          folders_(form.State(), form.Picking(), form.Pictures())
    {}

    /// Leaves the full-window and list views, then carries the command out if its rule allows it. False when there is no
    /// such command, or it cannot act now.
    bool Run(Command_Id id);

    /// The same for what stands in no table, such as a drop, or an item of a list of recent files.
    bool Run_Unlisted(const std::function<void()>& work);

    /// A click on the panel. Button: 1 left, 2 right; Shift: 1 shift, 2 control.
    void Press_Panel(int button_id, int button, int shift);

    /// 1-based; the prepared script becomes the one in force, or none when it is in force already.
    void Choose_Prepared_Script(int number);

    /// Files from elsewhere, such as a drop: picked behind the present pictures, or in their place.
    void Pick_Paths(const QStringList& paths, bool append, bool refresh_selection);

    /// The files of a drop on the filmstrip, picked behind the present pictures. None are refused in words.
    void Pick_Dropped(const QStringList& paths);

    // Wishes of the folder pane. Like commands they are refused while another one runs.
    void New_Folder_In(const QString& parent);
    void Rename_Folder(const QString& folder);
    void Copy_Folder(const QString& folder);
    void Delete_Folder(const QString& folder);
    void Delete_Files(const QStringList& files);
    /// Files and folders were dropped on a folder of the tree.
    void Drop_Files(const QStringList& paths, const QString& folder, bool copy);
    void Drop_Folder(const QString& source, const QString& target, bool copy);

    /// Working windows and other areas bring the commands that stand without a handler here.
    void Set_Handler(Command_Id id, std::function<void()> handler) { brought_[id] = std::move(handler); }
    bool Is_Here(const Command& command) const;

    /// The state of a check item whose handler was brought. Asked whenever the menus are brought up to date.
    void Set_Check(Command_Id id, std::function<bool()> check) { checks_[id] = std::move(check); }
    bool Is_Checked(Command_Id id) const;

    /// Gets the folder of the first file of each pick.
    void Set_Picked_From(std::function<void(const QString& folder)> call) { picked_from_ = std::move(call); }

    Command_Facts Facts() const;
    bool Is_Busy() const { return running_ > 0; }

    bool Save_Configuration_On_Exit = true; ///< check item

    // The commands, as the table names them.
    void Pick_Selected() { Pick(false, true); }
    void Pick_Append_Selected() { Pick(true, false); }
    void Discard_Selected();
    void Discard_All();
    void Copy_Selected();
    void Move_Selected();
    void Delete_Selected();
    void Save_Selected_As();
    void New_Folder() { Make_Folder(form_.Return_Explorer_Path()); }
    void Rename_Selected_Folder();
    void Copy_Selected_Folders();
    void Open_Configuration_File() { host_.Open_Configuration_File(); }
    void Save_Configuration_File() { host_.Save_Configuration_File(); }
    void Refresh_Folders() { host_.Refresh_Folders(); }
    void Search_File_Names() { Search(Search_Kind::Names); }
    void Search_Descriptions() { Search(Search_Kind::Descriptions); }
    void Toggle_Save_On_Exit() { Save_Configuration_On_Exit = !Save_Configuration_On_Exit; }
    void Exit() { host_.Close_Window(); }

    void Select_None();
    void Select_All();
    void Invert_Selection();

    // Degrees run counterclockwise.
    void Rotate_Clockwise() { Rotate_Selected(270); }
    void Rotate_Counterclockwise() { Rotate_Selected(90); }
    void Rotate_Half() { Rotate_Selected(180); }
    void Flip_Horizontal() { Flip_Selected(Flip_Left_To_Right); }
    void Flip_Vertical() { Flip_Selected(Flip_Top_To_Bottom); }
    void Save_Selected_Rotations() { Save_Rotations(false); }
    void Save_All_Rotations() { Save_Rotations(true); }

    void Clear_Selected_Scripts() { Clear_Scripts(false); }
    void Clear_All_Scripts() { Clear_Scripts(true); }
    void Copy_Selected_Script();
    void Paste_Copied_Into_Selected() { Paste_Copied(false); }
    void Paste_Copied_Into_All() { Paste_Copied(true); }
    void Paste_Prepared_Into_Selected() { Paste_Prepared(false); }
    void Paste_Prepared_Into_All() { Paste_Prepared(true); }
    void Delete_Script_Items();
    void Save_Selected_Scripts() { Save_Scripts(false); }
    void Save_All_Scripts() { Save_Scripts(true); }

    void Rotate_Blowup_Clockwise() { host_.Rotate_Blowup(270); }
    void Rotate_Blowup_Counterclockwise() { host_.Rotate_Blowup(90); }
    void Camera_Information();
    void Thumbnail_List();
    void Save_Clipboard_Image();
    void Convert_Grayscale_Image();
    void Create_Empty_Image();
    void Load_Snapshots();
    void Save_Snapshots();
    void Restore_Snapshot();
    void Set_Background_Color();

private:
    void Carry_Out(const std::function<void()>& work);
    void Make_Folder(const QString& parent);
    void Rename_Pane_Folder(const QString& folder);
    void Pick(bool append, bool refresh_selection);
    void Search(Search_Kind kind);
    void Rotate_Selected(int degrees);
    void Flip_Selected(int flip);
    void Save_Rotations(bool all);
    void Clear_Scripts(bool all);
    void Paste_Copied(bool all);
    void Paste_Prepared(bool all);
    void Paste(const Script_Item_Array& items, bool all);
    void Save_Scripts(bool all);
    void Save_Series(const QString& caption, const std::vector<int>& keys, const std::function<bool(int key)>& save);
    std::vector<int> Keys_For(bool all, Select_Access access) const;
    std::vector<int> Turn_Candidates(int& locked) const;
    void Scripts_Changed();
    void Save_New_Image(Bitmap_Handle bitmap, const QString& caption, const QString& folder, const QString& name);
    User_Dialogs& Dialogs() const { return form_.State().platform.dialogs; }

    Halvine_Form& form_;
    Window_Host& host_;
    File_Operations files_;
    Folder_Operations folders_;
    std::map<Command_Id, std::function<void()>> brought_;
    std::map<Command_Id, std::function<bool()>> checks_;
    std::function<void(const QString& folder)> picked_from_;
    int running_ = 0;
    bool left_list_ = false; // this command has just closed the list view
};
