#include "frame/files/Rename_File.h"

#include "frame/files/Regular_File.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// A folder that does not tell the case of names shows one file under both. It has one name, so a plain rename is safe.
bool Is_One_Entry(const std::string& from, const std::string& to)
{
    struct stat a {};
    struct stat b {};
    if (Folder_Of_Path(from) != Folder_Of_Path(to)) return false;
    if (lstat(from.c_str(), &a) != 0 || lstat(to.c_str(), &b) != 0) return false;
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino && (S_ISDIR(a.st_mode) || a.st_nlink == 1);
}

/// The kernel or the file system does not know the step "rename unless taken".
bool Is_Unknown_Step(int number)
{
    return number == EINVAL || number == ENOSYS || number == EOPNOTSUPP;
}

/// File systems without links say so in these ways.
bool Has_No_Links(int number)
{
    return number == EPERM || number == EOPNOTSUPP || number == ENOSYS || number == EMLINK;
}

int Reserve(const std::string& name, bool folder)
{
    if (folder) return mkdir(name.c_str(), 0700) == 0 ? 0 : errno;
    const int descriptor = open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (descriptor < 0) return errno;
    close(descriptor);
    return 0;
}

/// The name is reserved first by one who fails when it is taken, then the rename replaces what reserves it.
int Rename_Over_A_Reserved_Name(const std::string& from, const std::string& to, bool folder)
{
    if (const int number = Reserve(to, folder); number != 0) return number;
    if (rename(from.c_str(), to.c_str()) == 0) return 0;
    const int number = errno;
    if (folder)
        rmdir(to.c_str()); // fails when something was put there meanwhile
    else
        unlink(to.c_str());
    return number;
}

int Rename_Step_By_Step(const std::string& from, const std::string& to)
{
    struct stat facts {};
    if (lstat(from.c_str(), &facts) != 0) return errno;
    if (S_ISDIR(facts.st_mode)) return Rename_Over_A_Reserved_Name(from, to, true);
    if (link(from.c_str(), to.c_str()) != 0)
        return Has_No_Links(errno) ? Rename_Over_A_Reserved_Name(from, to, false) : errno;
    if (unlink(from.c_str()) == 0) return 0;
    const int number = errno;
    unlink(to.c_str()); // the first name stayed
    return number;
}

} // namespace

bool Is_Name_Taken(const std::string& path)
{
    struct stat facts {};
    return lstat(path.c_str(), &facts) == 0;
}

std::string Folder_Of_Path(const std::string& path)
{
    const auto slash = path.rfind('/');
    if (slash == std::string::npos) return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

Result<void> Rename_To_New_Name(const std::string& from, const std::string& to)
{
    int number = renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0 ? 0 : errno;
    if (number == EEXIST && from != to && Is_One_Entry(from, to))
        number = rename(from.c_str(), to.c_str()) == 0 ? 0 : errno;
    else if (Is_Unknown_Step(number))
        number = Rename_Step_By_Step(from, to);
    if (number == 0) return {};
    return System_Failure(number == EEXIST ? to : from, number);
}

Result<void> Flush_Folder(const std::string& folder)
{
    const int descriptor = open(folder.c_str(), O_RDONLY | O_CLOEXEC | O_DIRECTORY);
    if (descriptor < 0) return System_Failure(folder, errno);
    const int outcome = fsync(descriptor);
    const int number = errno;
    close(descriptor);
    // Some file systems have no way to flush a folder; the rename is as safe there as it can be.
    if (outcome != 0 && number != EINVAL && number != ENOTSUP) return System_Failure(folder, number);
    return {};
}
