#include "frame/files/Move_File.h"

#include "frame/files/Link_File.h"
#include "frame/files/Regular_File.h"
#include "frame/files/Rename_File.h"

#include <cerrno>
#include <cstdio>
#include <sys/stat.h>
#include <unistd.h>

namespace {

struct Source {
    std::string path;
    struct stat facts {};
    bool Is_Link() const { return S_ISLNK(facts.st_mode); }
    bool Is_Folder() const { return S_ISDIR(facts.st_mode); }
};

Result<void> Failed(const std::string& path, int number)
{
    return System_Failure(path, number);
}

/// The folders hold the new state from now on. A rename that cannot be flushed has happened all the same.
Result<void> Moved(const std::string& source, const std::string& target)
{
    (void)Flush_Folder(Folder_Of_Path(target));
    if (Folder_Of_Path(source) != Folder_Of_Path(target)) (void)Flush_Folder(Folder_Of_Path(source));
    return {};
}

/// One file under both names: rename would leave both and say that it worked.
bool Is_Second_Name(const Source& source, const std::string& target)
{
    struct stat there {};
    return lstat(target.c_str(), &there) == 0 && there.st_dev == source.facts.st_dev &&
           there.st_ino == source.facts.st_ino && source.facts.st_nlink > 1 && !source.Is_Folder();
}

Result<void> May_Replace(const Source& source, const std::string& target)
{
    struct stat there {};
    if (stat(target.c_str(), &there) != 0) return {};
    if (source.Is_Folder() || S_ISDIR(there.st_mode)) return Failed(target, EEXIST);
    if (!S_ISREG(there.st_mode)) return Failure(target + ": is not a regular file", EEXIST);
    return {};
}

/// The source goes away after its copy is safe. When it cannot, a copy that replaced nothing is taken back.
Result<void> Remove_Source(const Source& source, const std::string& target, bool replaced)
{
    struct stat now {};
    const bool same = lstat(source.path.c_str(), &now) == 0 && now.st_ino == source.facts.st_ino &&
                      now.st_dev == source.facts.st_dev && now.st_size == source.facts.st_size &&
                      now.st_mtim.tv_sec == source.facts.st_mtim.tv_sec &&
                      now.st_mtim.tv_nsec == source.facts.st_mtim.tv_nsec;
    if (same && unlink(source.path.c_str()) == 0) return Moved(source.path, target);
    const int number = same ? errno : EBUSY;
    if (!replaced) unlink(target.c_str());
    return Failed(source.path, number);
}

/// A link is made anew, for its own words may lead elsewhere from another folder.
Result<void> Move_Link(const Source& source, const std::string& target, bool replaced)
{
    const auto words = Words_For_Another_Place(source.path, target);
    if (!words) return tl::make_unexpected(words.error());
    if (auto made = Make_Link(*words, target, replaced ? When_Taken::Replace : When_Taken::Refuse); !made) return made;
    return Remove_Source(source, target, replaced);
}

/// A file whose folder refuses to let it go is found out before it is copied.
Result<void> Move_By_Copy(const Source& source, const std::string& target, bool replaced,
                          const std::function<bool()>& stop_requested)
{
    if (access(Folder_Of_Path(source.path).c_str(), W_OK | X_OK) != 0) return Failed(source.path, errno);
    const Copy_Options options{.when_taken = replaced ? When_Taken::Replace : When_Taken::Refuse,
                               .verify = true,
                               .stop_requested = stop_requested};
    if (auto copied = Copy_Whole_File(source.path, target, options); !copied) return copied;
    return Remove_Source(source, target, replaced);
}

} // namespace

Result<void> Move_Whole_File(const std::string& source_path, const std::string& asked_target, When_Taken when_taken,
                             const std::function<bool()>& stop_requested)
{
    Source source{.path = source_path};
    if (lstat(source_path.c_str(), &source.facts) != 0) return Failed(source_path, errno);
    if (source_path == asked_target) return {};
    const bool replaces = when_taken == When_Taken::Replace && Is_Name_Taken(asked_target);
    const std::string target = replaces ? Final_Path(asked_target) : asked_target;
    if (replaces) {
        if (target == source_path) return Failure(asked_target + ": is the file itself", EINVAL);
        if (auto may = May_Replace(source, target); !may) return may;
        if (Is_Second_Name(source, target))
            return unlink(source_path.c_str()) == 0 ? Moved(source_path, target) : Failed(source_path, errno);
    }
    if (source.Is_Link() && Folder_Of_Path(source_path) != Folder_Of_Path(target))
        return Move_Link(source, target, replaces);
    const auto renamed = !replaces                                          ? Rename_To_New_Name(source_path, target)
                         : rename(source_path.c_str(), target.c_str()) == 0 ? Result<void>()
                                                                            : Failed(source_path, errno);
    if (renamed) return Moved(source_path, target);
    if (renamed.error().number != EXDEV || source.Is_Folder()) return renamed;
    return Move_By_Copy(source, target, replaces, stop_requested);
}
