#pragma once

#include "frame/files/Copy_File.h"

/// Moves a file to another name, in one step where both stand in one file system; otherwise it is copied, the copy is
/// flushed and compared, and only then the source goes away: at every instant the whole file stands under one of the names
/// or under both. A symbolic link is moved itself and leads to the same file afterwards.
/// A folder is moved only within its file system; elsewhere the number is EXDEV.
/// Errors: number EEXIST when the target is taken and may not be replaced, ECANCELED when it was stopped. After every
/// error the source stands where it was; when it could not be removed after the copy, the copy is taken back unless it
/// replaced a file.
Result<void> Move_Whole_File(const std::string& source, const std::string& target,
                             When_Taken when_taken = When_Taken::Refuse,
                             const std::function<bool()>& stop_requested = {});
