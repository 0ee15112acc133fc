#pragma once

#include "frame/files/Result.h"

#include <functional>
#include <string>

/// What a copy or a move does when its target's name is taken by another file. A folder is never replaced.
enum class When_Taken { Refuse, Replace };

struct Copy_Options {
    When_Taken when_taken = When_Taken::Replace;
    /// The copy is read again and compared with the source before it takes its name. A move across file systems asks for it.
    bool verify = false;
    /// Asked again and again; true ends the copy with the number ECANCELED, and nothing is left of it.
    std::function<bool()> stop_requested{};
};

/// A copy of a regular file with its mode, owner where permitted, access list, extended attributes and times, written like
/// every file: whole, flushed, or not at all. Links are followed on both sides, but a link that leads nowhere counts as
/// taken. A source that changes while it is copied fails.
/// Errors: number EEXIST when the target is taken and may not be replaced, EINVAL when both are the same file.
Result<void> Copy_Whole_File(const std::string& source, const std::string& target, const Copy_Options& options = {});
