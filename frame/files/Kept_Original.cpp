#include "frame/files/Kept_Original.h"

#include "frame/files/Regular_File.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>
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

constexpr int Most_Kept = 99;

std::string Kept_Name(const std::string& real, int number)
{
    return real + (number == 1 ? "~" : "~" + std::to_string(number));
}

int Open_For_Lock(const std::string& path)
{
    return open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
}

/// -1 where the file cannot be locked: then the save goes on without, for the lock only keeps tidying hands away. One who
/// looks whether it is locked holds it for an instant, so a refusal is tried again a few times.
int Locked(const std::string& path)
{
    constexpr int Tries = 10;
    constexpr int Microseconds_Between = 500;
    const int descriptor = Open_For_Lock(path);
    for (int i = 0; descriptor >= 0 && i < Tries; ++i) {
        if (flock(descriptor, LOCK_SH | LOCK_NB) == 0) return descriptor;
        if (errno != EWOULDBLOCK) break;
        usleep(Microseconds_Between);
    }
    if (descriptor >= 0) close(descriptor);
    return -1;
}

} // namespace

Result<Kept_Original> Kept_Original::Keep(const std::string& path)
{
    const std::string real = Final_Path(path);
    // Before the "~" name appears: at no instant it stands there unguarded.
    Kept_Original result(real, Locked(real));
    // A backup of another program may have the "~" name already; it is left alone.
    int number = 0;
    for (int i = 1; i <= Most_Kept; ++i) {
        std::string kept = Kept_Name(real, i);
        if (link(real.c_str(), kept.c_str()) == 0 || (errno == EEXIST && Same_File(real, kept)))
            return std::move(result).As(std::move(kept), false);
        number = errno;
        if (number != EEXIST) break;
    }
    if (Has_No_Links(number)) {
        std::string kept = real + "~";
        struct stat facts {};
        if (lstat(kept.c_str(), &facts) == 0) return Failure(kept + ": exists already", EEXIST);
        if (rename(real.c_str(), kept.c_str()) == 0) return std::move(result).As(std::move(kept), true);
        number = errno;
    }
    return Failure(path + ": " + System_Error_Text(number), number);
}

Kept_Original Kept_Original::As(std::string kept, bool renamed) &&
{
    kept_ = std::move(kept);
    renamed_ = renamed;
    active_ = true;
    return std::move(*this);
}

Kept_Original::Kept_Original(Kept_Original&& other) noexcept
    : path_(std::move(other.path_)),
      kept_(std::move(other.kept_)),
      lock_(std::exchange(other.lock_, -1)),
      renamed_(other.renamed_),
      active_(std::exchange(other.active_, false))
{}

Kept_Original::~Kept_Original()
{
    if (active_) (void)Put_Back();
    Unlock();
}

void Kept_Original::Unlock()
{
    if (lock_ >= 0) close(std::exchange(lock_, -1));
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
    for (int i = 1; i <= Most_Kept; ++i) {
        const std::string kept = Kept_Name(real, i);
        if (Same_File(real, kept) && !Is_Being_Saved(kept)) unlink(kept.c_str());
    }
}

bool Is_Being_Saved(const std::string& kept)
{
    const int descriptor = Open_For_Lock(kept);
    if (descriptor < 0) return false;
    const bool locked = flock(descriptor, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    close(descriptor); // gives an exclusive lock back too
    return locked;
}

int Count_Of_Names(const std::string& path)
{
    struct stat facts {};
    return stat(path.c_str(), &facts) == 0 ? int(facts.st_nlink) : 0;
}
