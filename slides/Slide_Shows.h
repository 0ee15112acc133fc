#pragma once

#include "catalogue/Catalogue_State.h"
#include "catalogue/Pick_Loop.h"
#include "frame/Program_State.h"
#include "slides/Slide_Show_File.h"

#include <QtCore/QStringList>

/// The slide show file of the main window: opening, saving, copying. The player forwards the questions of the catalogue
/// about the open file to it.
class Slide_Shows {
public:
    Slide_Shows(Catalogue_State& catalogue, Pick_Loop& pick, Program_State& program)
        : catalogue_(catalogue), pick_(pick), program_(program)
    {}

    /// Reads a show and picks its pictures; with an empty name a dialog asks. Without Append it is refused while a window
    /// works on a picture. A fault in the file keeps what stands before it, without a message. Sets Slide_Display_Interval
    /// to any number that the file holds, 0 and below included. True when the file was read.
    bool Open_Slide_Show(const QString& File_Name, bool Append, bool Pick_Pictures);

    /// True when saved.
    bool Save_Slide_Show(bool Selected_Only);

    /// Copies the pictures beside the new show. The open show stays what it is. True when copied.
    bool Copy_Slide_Show_As(bool Selected_Only);

    /// False when a modified show is open and the user wants to keep it.
    bool Confirm_Abandon_Slide_Show() const;

    const QString& Slide_Show_File_Name() const { return file_name_; } ///< empty when none is open
    bool Slide_Show_Modified() const { return modified_; }
    const QStringList& Sounds() const { return sounds_; }

    bool Is_File_Open() const { return !file_name_.isEmpty(); }
    void Set_File_Modified() { modified_ = Is_File_Open(); }
    void Forget_File()
    {
        file_name_.clear();
        modified_ = false;
    }

private:
    std::vector<Slide> Slides_To_Write(bool selected_only) const;
    User_Dialogs& Dialogs() const { return catalogue_.platform.dialogs; }

    Catalogue_State& catalogue_;
    Pick_Loop& pick_;
    Program_State& program_;
    QString file_name_;
    bool modified_ = false;
    QStringList sounds_;
};
