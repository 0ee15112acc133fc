#include "frame/files/Regular_File.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

File_Identity Identity_From(const struct stat& facts)
{
    return {.device = std::uint64_t(facts.st_dev),
            .inode = std::uint64_t(facts.st_ino),
            .size = facts.st_size,
            .modified_nanoseconds = std::int64_t(facts.st_mtim.tv_sec) * 1'000'000'000 + facts.st_mtim.tv_nsec};
}

} // namespace

std::string System_Error_Text(int number)
{
    char buffer[256];
    return strerror_r(number, buffer, sizeof buffer);
}

tl::unexpected<Error> System_Failure(const std::string& path, int number)
{
    return Failure(path + ": " + System_Error_Text(number), number);
}

std::string Final_Path(const std::string& path)
{
    if (char* real = realpath(path.c_str(), nullptr)) {
        std::string result = real;
        std::free(real);
        return result;
    }
    // A link whose file is not there yet: it is made where the link points to, and the link stays one.
    constexpr int Most_Links = 40;
    std::string result = path;
    for (int i = 0; i < Most_Links; ++i) {
        char target[PATH_MAX];
        const ssize_t length = readlink(result.c_str(), target, sizeof target);
        if (length <= 0 || std::size_t(length) >= sizeof target) break;
        const std::string next(target, std::size_t(length));
        result = next.front() == '/' ? next : result.substr(0, result.rfind('/') + 1) + next;
    }
    return result;
}

Result<File_Identity> Identity_Of(const std::string& path)
{
    struct stat facts {};
    if (stat(path.c_str(), &facts) != 0) return System_Failure(path, errno);
    return Identity_From(facts);
}

Result<Regular_File> Regular_File::Open(const std::string& path)
{
    // A FIFO without a writer would block an ordinary open for ever.
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0) return System_Failure(path, errno);
    struct stat facts {};
    if (fstat(descriptor, &facts) != 0) {
        const int number = errno;
        close(descriptor);
        return System_Failure(path, number);
    }
    if (!S_ISREG(facts.st_mode)) {
        close(descriptor);
        return Failure(path + (S_ISDIR(facts.st_mode) ? ": is a folder" : ": is not a regular file"));
    }
    return Regular_File(descriptor, Identity_From(facts), path);
}

Regular_File::Regular_File(int descriptor, File_Identity identity, std::string path)
    : descriptor_(descriptor), identity_(identity), path_(std::move(path))
{}

Regular_File::Regular_File(Regular_File&& other) noexcept
    : descriptor_(std::exchange(other.descriptor_, -1)), identity_(other.identity_), path_(std::move(other.path_))
{}

Regular_File& Regular_File::operator=(Regular_File&& other) noexcept
{
    std::swap(descriptor_, other.descriptor_);
    identity_ = other.identity_;
    path_ = std::move(other.path_);
    return *this;
}

Regular_File::~Regular_File()
{
    if (descriptor_ >= 0) close(descriptor_);
}

Result<std::size_t> Regular_File::Read_At(std::int64_t offset, std::span<std::byte> target) const
{
    std::size_t done = 0;
    while (done < target.size()) {
        const ssize_t got = pread(descriptor_, target.data() + done, target.size() - done, offset + off_t(done));
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return System_Failure(path_, errno);
        if (got == 0) break;
        done += std::size_t(got);
    }
    return done;
}

Result<std::vector<std::byte>> Regular_File::Read_All(std::int64_t most_bytes) const
{
    if (Size() > most_bytes) return Failure(path_ + ": is larger than " + std::to_string(most_bytes) + " bytes");
    std::vector<std::byte> bytes(std::size_t(std::max<std::int64_t>(Size(), 0)));
    const auto got = Read_At(0, bytes);
    if (!got) return tl::make_unexpected(got.error());
    bytes.resize(*got);
    return bytes;
}
