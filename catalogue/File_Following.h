#pragma once

#include "catalogue/Pick_Loop.h"

/// Keeps the records in step with what commands do to files and folders. Names are compared letter by letter: two files
/// whose names differ by case are two files.

/// The records that show this very file.
std::vector<int> Indices_Of_File(const Catalogue_State& state, const QString& file_name);

/// The records that show files in the folder or below it.
std::vector<int> Indices_Below(const Catalogue_State& state, const QString& folder);

/// A window works with one of them.
bool Any_Is_Locked(const Catalogue_State& state, std::span<const int> indices);

class File_Following {
public:
    File_Following(Catalogue_State& state, Pick_Loop& pick, Picture_Pictures& pictures)
        : state_(state), pick_(pick), pictures_(pictures)
    {}

    /// The file has a new name; what stood under that name before is gone, and so are its records.
    void File_Moved(const QString& from, const QString& to);
    /// All at once: files may have exchanged their names.
    void Files_Renamed(std::span<const std::pair<QString, QString>> from_to);
    void Folder_Moved(const QString& from, const QString& to);
    void File_Removed(const QString& file_name) { Remove(Indices_Of_File(state_, file_name)); }
    void Folder_Removed(const QString& folder) { Remove(Indices_Below(state_, folder)); }
    /// Another picture stands under the name: its records are those of the new file.
    void File_Replaced(const QString& file_name);

    /// A window works with a picture of the file.
    bool Is_In_Use(const QString& file_name) const { return Any_Is_Locked(state_, Indices_Of_File(state_, file_name)); }

    void Show_All(); ///< after a command: thumbnails, labels and captions as they are now

private:
    void Remove(const std::vector<int>& indices);
    void Rename(const std::vector<int>& indices, const QString& folder, const QString& name);
    void Names_Changed();

    Catalogue_State& state_;
    Pick_Loop& pick_;
    Picture_Pictures& pictures_;
};
