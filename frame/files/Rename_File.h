#pragma once

#include "frame/files/Result.h"

#include <string>

/// Names of files and folders, changed so that nothing is ever written over by the way. Paths are native.

/// Something stands under the path: a file, a folder, a link that leads nowhere.
bool Is_Name_Taken(const std::string& path);

/// The folder that a path's last name stands in: "." for a bare name, "/" for one in the root.
std::string Folder_Of_Path(const std::string& path);

/// Gives a file or folder another name, in one step, never in the place of another one. The new name may stand in another
/// folder of the same file system. Names that differ by case only may be exchanged on a file system that does not tell
/// them apart. On a file system without this step, a file goes by way of a second name, so that a crash leaves it under
/// both, and a folder by way of an empty file or folder that reserves the name.
/// Errors: number EEXIST when the name is taken, EXDEV when the folders stand in different file systems; the source stands
/// where it was.
Result<void> Rename_To_New_Name(const std::string& from, const std::string& to);

/// Makes a change of names in the folder outlast a power cut. Some file systems have no way to do so; that is no error.
Result<void> Flush_Folder(const std::string& folder);
