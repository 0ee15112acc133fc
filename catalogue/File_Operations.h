#pragma once

#include "catalogue/File_Failures.h"
#include "catalogue/File_Following.h"
#include "catalogue/Overwrite_Question.h"
#include "catalogue/Picture_Locks.h"

/// Deletes, copies and moves the files of pictures, with the catalogue following each step. All questions are asked here.
/// Each returns how many files it did. Files whose pictures a window works with stay where they are.
class File_Operations {
public:
    File_Operations(Catalogue_State& state, Pick_Loop& pick, Picture_Pictures& pictures)
        : state_(state), following_(state, pick, pictures)
    {}

    int Delete_Selected();
    int Copy_Selected(const QString& folder);
    int Move_Selected(const QString& folder);

    // The same for files of the folder pane or of another program, picked or not.
    int Delete_Files(const QStringList& files);
    int Copy_Files(const QStringList& files, const QString& folder);
    int Move_Files(const QStringList& files, const QString& folder);

private:
    struct Transfer;
    enum class Outcome { Done, Left, End };
    QStringList Selected_Files(Select_Access access) const;
    int Transfer_Files(const QStringList& files, const QString& folder, bool move);
    Outcome Transfer_File(Transfer& transfer, const QString& source);
    Outcome Carry_Over(Transfer& transfer, const QString& source, const QString& target, bool replace);
    bool Confirm_Delete(int count, const QStringList& files);

    Catalogue_State& state_;
    File_Following following_;
};
