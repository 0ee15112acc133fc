#pragma once

#include "catalogue/File_Failures.h"
#include "catalogue/File_Following.h"

#include <optional>

/// Makes, renames, copies, moves and deletes folders, with the catalogue following. All questions are asked here. Folders
/// are native paths, with or without a separator at their end.
class Folder_Operations {
public:
    Folder_Operations(Catalogue_State& state, Pick_Loop& pick, Picture_Pictures& pictures)
        : state_(state), following_(state, pick, pictures)
    {}

    /// Asks for names until one can be given or the user gives up. The folder's path, without a separator at its end.
    std::optional<QString> New_Folder(const QString& parent);
    std::optional<QString> Rename_Folder(const QString& folder);

    /// Asks where to; folders of one name are merged, with a question before a file is written over. False when nothing
    /// was copied.
    bool Copy_Folders(const QStringList& folders);
    bool Delete_Folder(const QString& folder); ///< to the recycle bin
    /// A folder was dragged onto another.
    bool Drop_Folder(const QString& source, const QString& target, bool copy);

private:
    bool May_Touch(const QString& folder);
    bool Copy_Into(const QStringList& folders, const QString& target);
    bool Move_Into(const QString& folder, const QString& target);

    Catalogue_State& state_;
    File_Following following_;
};

/// True when the path is the folder or lies below it, links followed.
bool Lies_Within(const QString& path, const QString& folder);
