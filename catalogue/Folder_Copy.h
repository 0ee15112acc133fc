#pragma once

#include "catalogue/File_Failures.h"
#include "catalogue/File_Following.h"
#include "catalogue/Overwrite_Question.h"
#include "frame/files/Folder_Tree_Walk.h"

#include <memory>

/// Copies whole folders, or moves them into another file system, in a progress window with Stop. Links are taken along as
/// links and never followed. Files in the way are asked about once for the whole run.
class Folder_Copy {
public:
    struct Options {
        QString caption;     ///< of the progress window
        bool verify = false; ///< copies are read again and compared
    };
    Folder_Copy(Platform& platform, File_Following& following, const Options& options);

    /// `target` may be there already: what it holds stays, but for files that are to be written over. False when the user
    /// stopped it; what was copied stays.
    bool Copy(const QString& source, const QString& target);

    /// Copies everything to `target`, which must not be there, and only then removes the source. Otherwise the copy is
    /// taken back and false returned; parts of the source that could not be removed are told.
    bool Move(const QString& source, const QString& target);

    int Count() const { return count_; } ///< files and links that were copied
    void Tell_Failures() const;

private:
    struct Tree;
    enum class Outcome { Done, Left, End };
    bool List(Tree& tree);
    bool Copy_Entries(Tree& tree);
    Outcome Copy_Entry(Tree& tree, const Tree_Entry& entry);
    Outcome Make_Folder(Tree& tree, const QString& source, const QString& target);
    Outcome Copy_File_Or_Link(Tree& tree, const Tree_Entry& entry, const QString& source, const QString& target);
    void Finish_Folders(Tree& tree);
    void Take_Back(const Tree& tree);
    void Remove_Source(const Tree& tree);

    Platform& platform_;
    File_Following& following_;
    Options options_;
    std::unique_ptr<Progress_Window> progress_;
    Overwrite_Question question_;
    File_Failures failures_;
    int count_ = 0;
};
