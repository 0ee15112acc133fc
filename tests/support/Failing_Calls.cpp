#include "tests/support/Failing_Calls.h"

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

namespace {

struct Refusal {
    const char* name = "";
    int error_number = 0;
    int passes = 0; // so many calls work before
    bool once = false;
};

struct Plan {
    bool active = false;
    int fail_at = 0;
    int calls = 0;
    int error_number = 0;
    const char* failed = "";
    Refusal refusals[4] = {};
};
Plan plan; // one thread at a time makes a plan

bool Must_Fail(const char* name)
{
    for (Refusal& refusal : plan.refusals) {
        if (std::strcmp(refusal.name, name) != 0 || refusal.passes-- > 0) continue;
        refusal.passes = 0;
        errno = refusal.error_number;
        if (refusal.once) refusal = {};
        return true;
    }
    if (!plan.active || ++plan.calls != plan.fail_at) return false;
    plan.failed = name;
    errno = plan.error_number;
    return true;
}

template <class Function>
Function Real(const char* name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

/// Opening for reading a device or a library is nobody's save.
bool Counts(int flags)
{
    return (flags & O_DIRECTORY) != 0 || (flags & O_CLOEXEC) != 0 || (flags & (O_WRONLY | O_RDWR)) != 0;
}

} // namespace

Failing_Calls::Failing_Calls(int n, int error_number)
{
    plan.fail_at = n;
    plan.error_number = error_number;
    plan.calls = 0;
    plan.failed = "";
    plan.active = true;
}

Failing_Calls::~Failing_Calls()
{
    plan.active = false;
}

bool Failing_Calls::Was_Reached() const
{
    return plan.calls >= plan.fail_at;
}

std::string Failing_Calls::Name() const
{
    return plan.failed;
}

int Failing_Calls::Calls_So_Far()
{
    return plan.calls;
}

void Failing_Calls::Refuse_From(int n, const char* name, int error_number)
{
    for (Refusal& refusal : plan.refusals) {
        if (*refusal.name != 0 && std::strcmp(refusal.name, name) != 0) continue;
        refusal = {name, error_number, n - 1, false};
        return;
    }
}

void Failing_Calls::Refuse_Once(const char* name, int error_number)
{
    Refuse_From(1, name, error_number);
    for (Refusal& refusal : plan.refusals)
        if (std::strcmp(refusal.name, name) == 0) refusal.once = true;
}

void Failing_Calls::Refuse_Nothing()
{
    for (Refusal& refusal : plan.refusals) refusal = {};
}

extern "C" {

int open(const char* path, int flags, ...)
{
    va_list list;
    va_start(list, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? mode_t(va_arg(list, unsigned)) : 0;
    va_end(list);
    if (Counts(flags) && Must_Fail("open")) return -1;
    return Real<int (*)(const char*, int, ...)>("open")(path, flags, mode);
}

int open64(const char* path, int flags, ...)
{
    va_list list;
    va_start(list, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? mode_t(va_arg(list, unsigned)) : 0;
    va_end(list);
    if (Counts(flags) && Must_Fail("open")) return -1;
    return Real<int (*)(const char*, int, ...)>("open64")(path, flags, mode);
}

int mkostemp(char* pattern, int flags)
{
    if (Must_Fail("mkostemp")) return -1;
    return Real<int (*)(char*, int)>("mkostemp")(pattern, flags);
}

int mkostemps(char* pattern, int ending, int flags)
{
    if (Must_Fail("mkostemps")) return -1;
    return Real<int (*)(char*, int, int)>("mkostemps")(pattern, ending, flags);
}

ssize_t write(int descriptor, const void* bytes, size_t count)
{
    if (descriptor > 2 && Must_Fail("write")) return -1;
    return Real<ssize_t (*)(int, const void*, size_t)>("write")(descriptor, bytes, count);
}

ssize_t pwrite(int descriptor, const void* bytes, size_t count, off_t at)
{
    if (Must_Fail("pwrite")) return -1;
    return Real<ssize_t (*)(int, const void*, size_t, off_t)>("pwrite")(descriptor, bytes, count, at);
}

ssize_t pread(int descriptor, void* bytes, size_t count, off_t at)
{
    if (Must_Fail("pread")) return -1;
    return Real<ssize_t (*)(int, void*, size_t, off_t)>("pread")(descriptor, bytes, count, at);
}

int ftruncate(int descriptor, off_t size) noexcept
{
    if (Must_Fail("ftruncate")) return -1;
    return Real<int (*)(int, off_t)>("ftruncate")(descriptor, size);
}

int fsync(int descriptor)
{
    if (Must_Fail("fsync")) return -1;
    return Real<int (*)(int)>("fsync")(descriptor);
}

int fdatasync(int descriptor)
{
    if (Must_Fail("fdatasync")) return -1;
    return Real<int (*)(int)>("fdatasync")(descriptor);
}

int rename(const char* from, const char* to) noexcept
{
    if (Must_Fail("rename")) return -1;
    return Real<int (*)(const char*, const char*)>("rename")(from, to);
}

int renameat2(int from_folder, const char* from, int to_folder, const char* to, unsigned flags) noexcept
{
    if (Must_Fail("renameat2")) return -1;
    return Real<int (*)(int, const char*, int, const char*, unsigned)>("renameat2")(from_folder, from, to_folder, to,
                                                                                    flags);
}

int symlink(const char* words, const char* path) noexcept
{
    if (Must_Fail("symlink")) return -1;
    return Real<int (*)(const char*, const char*)>("symlink")(words, path);
}

int mkdir(const char* path, mode_t mode) noexcept
{
    if (Must_Fail("mkdir")) return -1;
    return Real<int (*)(const char*, mode_t)>("mkdir")(path, mode);
}

int rmdir(const char* path) noexcept
{
    if (Must_Fail("rmdir")) return -1;
    return Real<int (*)(const char*)>("rmdir")(path);
}

int link(const char* from, const char* to) noexcept
{
    if (Must_Fail("link")) return -1;
    return Real<int (*)(const char*, const char*)>("link")(from, to);
}

int unlink(const char* path) noexcept
{
    if (Must_Fail("unlink")) return -1;
    return Real<int (*)(const char*)>("unlink")(path);
}

int futimens(int descriptor, const struct timespec times[2]) noexcept
{
    if (Must_Fail("futimens")) return -1;
    return Real<int (*)(int, const struct timespec*)>("futimens")(descriptor, times);
}

int utimensat(int folder, const char* path, const struct timespec times[2], int flags) noexcept
{
    if (Must_Fail("utimensat")) return -1;
    return Real<int (*)(int, const char*, const struct timespec*, int)>("utimensat")(folder, path, times, flags);
}

int fchmod(int descriptor, mode_t mode) noexcept
{
    if (Must_Fail("fchmod")) return -1;
    return Real<int (*)(int, mode_t)>("fchmod")(descriptor, mode);
}

int close(int descriptor)
{
    const bool fails = Must_Fail("close");
    const int number = errno;
    const int outcome = Real<int (*)(int)>("close")(descriptor); // the descriptor is gone even when close fails
    errno = number;
    return fails ? -1 : outcome;
}

} // extern "C"
