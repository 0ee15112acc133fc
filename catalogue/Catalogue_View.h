#pragma once

#include <QtCore/QString>

/// What the catalogue asks of the window that shows it. Every member may stay as it is: without a window nothing is drawn.
/// Indices are 1-based.
class Catalogue_View {
public:
    virtual ~Catalogue_View() = default;

    // The filmstrip. Records have no thumbnails where nothing shows them, which spares their decoding.
    virtual bool Shows_Thumbnails() const { return true; }
    virtual int Thumbnails_Per_Row() const { return 6; }
    virtual int Thumbnail_Rows() const { return 4; } ///< rows that fit
    virtual void Set_Top_Row(int) {}                 ///< 0-based first visible row
    virtual void Draw_Thumbnail(int /*index*/) {}    ///< one cell with its frame
    virtual void Draw_All_Thumbnails() {}
    virtual void Set_Thumbnail_Frame(int /*index*/, bool /*selected*/) {}
    virtual void Clear_Strip() {} ///< before a pick into an empty list
    virtual void Update_Scroll_Range() {}
    virtual void Scroll_To_Index(int /*index*/) {}
    virtual void Update_Status() {}
    virtual void Show_Current_Picture() {} ///< it changed, or there is none any more

    // The progress of a pick: only shown for lists of a row or more. Between Begin and End the pick button reads
    // "Stop pick".
    virtual void Begin_Pick_Progress() {}
    virtual void Show_Pick_Progress(const QString& /*label*/, int /*done*/, int /*total*/) {}
    virtual void Repaint_Pick_Progress() {}
    virtual void End_Pick_Progress() {}

    // The folder pane.
    virtual QString Explorer_Path() const { return {}; }
    virtual void Refresh_Folder_Tree(const QString& /*folder*/) {}
    virtual void Set_Tree_Pattern(const QString&) {}
    virtual void Set_Tree_Alias(const QString&) {}
    virtual QString Tree_Alias() const { return {}; }
};

/// What the catalogue asks of the slide show, which knows the catalogue and not the other way round.
class Slide_Show_Link {
public:
    virtual ~Slide_Show_Link() = default;
    virtual bool Is_Running() const { return false; }
    virtual void Stop() {}
    virtual void Pictures_Removed() {} ///< some records of the catalogue have ended
    virtual bool Is_File_Open() const { return false; }
    virtual QString File_Name() const { return {}; } ///< of the open show; empty when none is open
    virtual void Set_File_Modified() {}
    virtual void Forget_File() {}
    virtual bool Confirm_Abandon() { return true; } ///< false when the open show is modified and to be kept
    virtual void Control(int /*code*/, int /*slide*/) {}
    virtual int Picture_Key_Of_Slide(int /*slide*/) const { return 0; }
};
