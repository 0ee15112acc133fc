#pragma once

#include <ctime>
#include <functional>
#include <string>
#include <vector>

/// Puts a folder in order after a crash, before it is listed.
struct Folder_Recovery {
    /// True when a whole picture stands under the path. Only "name~" files that are whole are put back.
    std::function<bool(const std::string& path)> is_whole;
    /// Takes a file away so that the user can still get it; false when it could not.
    std::function<bool(const std::string& path)> to_trash;
    std::time_t now = 0; ///< seconds

    /// A "name~" beside a missing or unreadable "name" is put back under its name (an unreadable one goes to the trash);
    /// a "name~", or "name~2" to "name~99", that is a second name of the same file is removed; hidden files of ours older than a day go to the
    /// trash. What a running save keeps, of this process or another, is left alone. Returns the names that were put back, with the folder.
    std::vector<std::string> Run(const std::string& folder) const;
};

/// ".NAME.halvine-XXXXXX".
bool Is_Hidden_Name_Of_Ours(const std::string& name);
