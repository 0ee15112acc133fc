#pragma once

#include "rename/Rename_Run.h"

/// The journals of renames, a file each, in a folder of their own. A file begins with one character that tells its state;
/// changing that one byte is what finishes a rename. While a rename runs its file is locked, and the lock ends with the
/// process, however that ends: others can tell a running rename from an interrupted one.
/// A journal that is of no use any more, because it is damaged or what it tells cannot be put right, is told about once
/// and set aside under another name in the folder, for whoever wants to look.
class Rename_Journal_Folder final : public Rename_Journal {
public:
    /// The folder is made when it is needed.
    explicit Rename_Journal_Folder(std::string folder);
    ~Rename_Journal_Folder() override;
    Rename_Journal_Folder(const Rename_Journal_Folder&) = delete;
    Rename_Journal_Folder& operator=(const Rename_Journal_Folder&) = delete;

    Result<void> Begin(const Rename_Record& record) override;
    Result<void> Finish() override;
    void Forget() override;

    /// Puts every interrupted rename right. One text for each that was: what was done, or why it could not be. Of a
    /// damaged journal the temporary names that it still tells are undone.
    std::vector<std::string> Put_Interrupted_Right(Rename_Files& files);

    /// The last rename that was done and not taken back. Fails, once, when its journal is damaged: the one before it is
    /// never taken for it unsaid.
    struct Kept {
        std::string path; ///< of the journal
        Rename_Record record;
    };
    Result<std::optional<Kept>> Last_Done();
    void Drop(const Kept& kept); ///< it was taken back
    void Drop_Last_Finished();   ///< nor is the way back a rename to be taken back

private:
    std::vector<std::string> Names(const QString& pattern) const; ///< the oldest first
    std::string Mend(const std::string& name, Rename_Files& files);
    std::string Set_Aside(const std::string& name);
    void Prune();
    void Close();

    std::string folder_;
    std::string path_;     ///< of the rename that runs
    std::string finished_; ///< the last one that ran
    int descriptor_ = -1;
};

/// Takes the last rename back. The number of files that got their old name again, 0 when there is no rename to take back.
Result<int> Take_Back_Last_Rename(Rename_Journal_Folder& journal, Rename_Files& files);

/// In the folder for the state of programs: "~/.local/state/halvine/renames", XDG_STATE_HOME before.
std::string Standard_Journal_Folder();
