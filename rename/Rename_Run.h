#pragma once

#include "rename/Rename_Record.h"

/// Where a rename is remembered while it runs and afterwards.
class Rename_Journal {
public:
    virtual ~Rename_Journal() = default;
    virtual Result<void> Begin(const Rename_Record& record) = 0; ///< on disk when it returns
    virtual Result<void> Finish() = 0;                           ///< what was begun is done, and can be taken back
    virtual void Forget() = 0;                                   ///< what was begun is undone
};

/// Carries a plan without faults out. After a failure every file has its old name again, and the text says why; where a
/// file could not get it back the text says where that file is, and the journal keeps what was begun.
Result<void> Run_Plan(const Rename_Plan& plan, Rename_Files& files, Rename_Journal& journal);

/// A rename that was interrupted: every file gets its old name back. Nothing to do is success. Fails, with the files
/// named, when the folder shows no state that the rename went through; only temporary names are undone then.
Result<void> Put_Right(const Rename_Record& record, Rename_Files& files);

/// The second best, where only a part of a rename is known or the folder has changed: no file keeps a name that was meant
/// for an instant, and nothing else is touched. Tells which files stand where the rename brought them, as
/// "; /p/a is now /p/b" for each.
std::string Leave_Temporary_Names(const Rename_Record& part, Rename_Files& files);

/// The way back of a rename that was done. Files that are gone are left out.
std::vector<Rename_Move> Moves_Back(const Rename_Record& record, const Rename_Files& files);
