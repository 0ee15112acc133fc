#pragma once

#include "frame/files/Result.h"

#include <functional>
#include <string>
#include <vector>

/// What stands below a folder, for copies and moves of whole folders.
struct Tree_Entry {
    enum class Kind { Folder, File, Link, Other } kind = Kind::File; ///< Other: a pipe, a device
    std::string path;                                                ///< below the root, without a leading "/"
};

struct Tree_Listing {
    std::vector<Tree_Entry> entries; ///< files before the folders beside them, a folder before what it holds; by name
    std::vector<std::string> unread; ///< folders that could not be read, or lie too deep; whole paths
};

/// Links are listed and never followed, so no loop is walked. What an interrupted save left (".NAME.halvine-XXXXXX") is
/// not listed. Stops early, with number ECANCELED, when the call answers true. Fails when the root cannot be read.
Result<Tree_Listing> List_Tree(const std::string& root, const std::function<bool()>& stop_requested = {});

/// Gives a folder the mode, owner where permitted, extended attributes and times of another.
Result<void> Take_Folder_Facts(const std::string& source, const std::string& target);
