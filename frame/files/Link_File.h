#pragma once

#include "frame/files/Copy_File.h"

#include <string>

/// Symbolic links, which copies and moves of folders take along as links.

/// What stands in the link.
Result<std::string> Words_Of_Link(const std::string& path);

/// A new link, in one step also where it replaces something. A folder is never replaced.
Result<void> Make_Link(const std::string& words, const std::string& path, When_Taken when_taken);

/// The words for a copy of the link `path` elsewhere. They stay when they name the way from the root, lead nowhere, or lead
/// to something inside `root`, which is copied too; otherwise the way from the root takes their place.
Result<std::string> Words_For_Another_Place(const std::string& path, const std::string& root);
