#include "frame/files/Kept_Original.h"

#include "frame/files/Regular_File.h"

#include <cerrno>
#include <cstdio>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {

bool Same_File(const std::string& left, const std::string& right)
{
    struct stat a {};
    struct stat b {};
    return lstat(left.c_str(), &a) == 0 && lstat(right.c_str(), &b) == 0 && a.st_dev == b.st_dev &&
           a.st_ino == b.st_ino;
}

/// File systems without links say so in these ways.
bool Has_No_Links(int number)
{
    return number == EPERM || number == EOPNOTSUPP || number == ENOSYS || number == EMLINK;
}

} // namespace

Result<Kept_Original> Kept_Original::Keep(const std::string& path)
{
    const std::string real = Final_Path(path);
    // A backup of another program may have the "~" name already; it is left alone.
    constexpr int Most_Kept = 99;
    int number = 0;
    for (int i = 1; i <= Most_Kept; ++i) {
        std::string kept = real + (i == 1 ? "~" : "~" + std::to_string(i));
        if (link(real.c_str(), kept.c_str()) == 0 || (errno == EEXIST && Same_File(real, kept)))
            return Kept_Original(real, std::move(kept), false);
        number = errno;
        if (number != EEXIST) break;
    }
    if (Has_No_Links(number)) {
        std::string kept = real + "~";
        struct stat facts {};
        if (lstat(kept.c_str(), &facts) == 0) return Failure(kept + ": exists already", EEXIST);
        if (rename(real.c_str(), kept.c_str()) == 0) return Kept_Original(real, std::move(kept), true);
        number = errno;
    }
    return Failure(path + ": " + System_Error_Text(number), number);
}

Kept_Original::Kept_Original(std::string path, std::string kept, bool renamed)
    : path_(std::move(path)), kept_(std::move(kept)), renamed_(renamed)
{}

Kept_Original::Kept_Original(Kept_Original&& other) noexcept
    : path_(std::move(other.path_)),
      kept_(std::move(other.kept_)),
      renamed_(other.renamed_),
      active_(std::exchange(other.active_, false))
{}

Kept_Original::~Kept_Original()
{
    if (active_) (void)Put_Back();
}

Result<void> Kept_Original::Drop()
{
    active_ = false;
    if (unlink(kept_.c_str()) == 0 || errno == ENOENT) return {};
    const int number = errno;
    return Failure(kept_ + ": " + System_Error_Text(number), number);
}

Result<void> Kept_Original::Put_Back()
{
    active_ = false;
    if (!renamed_ && Same_File(path_, kept_)) return Drop();
    // One step for "delete the failed file" and "rename back": at no instant the name holds nothing.
    if (rename(kept_.c_str(), path_.c_str()) == 0) return {};
    const int number = errno;
    return Failure(kept_ + ": " + System_Error_Text(number), number);
}

void Clear_Stale_Keep(const std::string& path)
{
    const std::string real = Final_Path(path);
    const std::string kept = real + "~";
    if (Same_File(real, kept)) unlink(kept.c_str());
}

int Count_Of_Names(const std::string& path)
{
    struct stat facts {};
    return stat(path.c_str(), &facts) == 0 ? int(facts.st_nlink) : 0;
}
