#include "frame/files/Journal_File.h"

#include "frame/files/Regular_File.h"
#include "frame/files/Rename_File.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {

constexpr std::string_view Beginning = "work-"; // other parts of the program keep files of their own there
constexpr std::string_view Ending = ".journal";
constexpr std::string_view Unfinished = ".journal-new";

/// Each folder on the way; one that is there already is no error.
Result<void> Make_Folders(const std::string& folder)
{
    for (std::size_t at = folder.find('/', 1);; at = folder.find('/', at + 1)) {
        const std::string part = folder.substr(0, at);
        if (mkdir(part.c_str(), 0700) != 0 && errno != EEXIST) return System_Failure(part, errno);
        if (at == std::string::npos) return {};
    }
}

/// Nobody else can hold a file of this instant. Where nothing can be locked the journal goes on without, and is offered to
/// nobody.
void Lock(int descriptor)
{
    (void)flock(descriptor, LOCK_EX | LOCK_NB);
}

std::string Name_While_Rewritten(const std::string& path)
{
    return path.substr(0, path.size() - Ending.size()) + std::string(Unfinished);
}

Result<void> Write_All(int descriptor, std::string_view text, const std::string& path)
{
    while (!text.empty()) {
        const ssize_t written = write(descriptor, text.data(), text.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return System_Failure(path, errno);
        text.remove_prefix(std::size_t(written));
    }
    return {};
}

Result<void> Write_And_Flush(int descriptor, std::string_view text, const std::string& path)
{
    if (auto written = Write_All(descriptor, text, path); !written) return written;
    if (fdatasync(descriptor) != 0) return System_Failure(path, errno);
    return {};
}

bool Is_Name_Of_A_Journal(std::string_view name)
{
    return name.starts_with(Beginning) && name.ends_with(Ending);
}

} // namespace

Result<Journal_File> Journal_File::Create(const std::string& folder)
{
    if (auto made = Make_Folders(folder); !made) return tl::make_unexpected(made.error());
    std::string path = folder + "/" + std::string(Beginning) + "XXXXXX" + std::string(Ending);
    Journal_File journal;
    journal.descriptor_ = mkostemps(path.data(), int(Ending.size()), O_CLOEXEC | O_APPEND);
    if (journal.descriptor_ < 0) return System_Failure(path, errno);
    Lock(journal.descriptor_);
    journal.path_ = std::move(path);
    if (auto flushed = Flush_Folder(folder); !flushed) {
        journal.Remove();
        return tl::make_unexpected(flushed.error());
    }
    return journal;
}

Journal_File::Journal_File(Journal_File&& other) noexcept
    : descriptor_(std::exchange(other.descriptor_, -1)), path_(std::move(other.path_)), size_(other.size_)
{}

Journal_File& Journal_File::operator=(Journal_File&& other) noexcept
{
    std::swap(descriptor_, other.descriptor_);
    std::swap(path_, other.path_);
    std::swap(size_, other.size_);
    return *this;
}

Journal_File::~Journal_File()
{
    if (descriptor_ >= 0) close(descriptor_);
}

Result<void> Journal_File::Append(std::string_view text)
{
    auto written = Write_And_Flush(descriptor_, text, path_);
    if (written)
        size_ += std::int64_t(text.size());
    else if (ftruncate(descriptor_, size_) != 0) // half a line would hide all that comes behind it
        return System_Failure(path_, errno);
    return written;
}

Result<void> Journal_File::Rewrite(std::string_view text)
{
    const std::string fresh = Name_While_Rewritten(path_);
    const int descriptor = open(fresh.c_str(), O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC | O_APPEND, 0600);
    if (descriptor < 0) return System_Failure(fresh, errno);
    Lock(descriptor); // before it has the name under which others look
    auto written = Write_And_Flush(descriptor, text, fresh);
    if (written && rename(fresh.c_str(), path_.c_str()) != 0) written = System_Failure(path_, errno);
    if (!written) {
        close(descriptor);
        unlink(fresh.c_str());
        return written;
    }
    close(std::exchange(descriptor_, descriptor));
    size_ = std::int64_t(text.size());
    return Flush_Folder(Folder_Of_Path(path_));
}

void Journal_File::Remove()
{
    unlink(path_.c_str());
    unlink(Name_While_Rewritten(path_).c_str()); // of a run that was killed while it rewrote
    if (descriptor_ >= 0) close(std::exchange(descriptor_, -1));
}

Result<Journal_File> Journal_File::Take_Over(const std::string& path)
{
    Journal_File journal;
    journal.descriptor_ = open(path.c_str(), O_RDWR | O_CLOEXEC | O_APPEND | O_NONBLOCK | O_NOFOLLOW);
    if (journal.descriptor_ < 0) return System_Failure(path, errno);
    struct stat facts {};
    struct stat named {};
    if (fstat(journal.descriptor_, &facts) != 0 || !S_ISREG(facts.st_mode)) return System_Failure(path, EINVAL);
    if (flock(journal.descriptor_, LOCK_EX | LOCK_NB) != 0) return System_Failure(path, errno);
    // Its holder may have put another in its place, or removed it, before the lock was had.
    if (stat(path.c_str(), &named) != 0 || named.st_ino != facts.st_ino) return System_Failure(path, EBUSY);
    journal.path_ = path;
    journal.size_ = facts.st_size;
    return journal;
}

Result<std::string> Journal_File::Read(std::int64_t most_bytes) const
{
    std::string text(std::size_t(std::min(size_, most_bytes)), '\0');
    std::size_t done = 0;
    while (done < text.size()) {
        const ssize_t got = pread(descriptor_, text.data() + done, text.size() - done, off_t(done));
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return System_Failure(path_, errno);
        if (got == 0) break;
        done += std::size_t(got);
    }
    text.resize(done);
    return text;
}

std::vector<std::string> Journals_Left_Behind(const std::string& folder)
{
    const auto close_folder = [](DIR* open) { closedir(open); };
    const std::unique_ptr<DIR, decltype(close_folder)> open(opendir(folder.c_str()), close_folder);
    std::vector<std::pair<std::int64_t, std::string>> found;
    while (const dirent* entry = open ? readdir(open.get()) : nullptr) {
        if (!Is_Name_Of_A_Journal(entry->d_name)) continue;
        const std::string path = folder + "/" + entry->d_name;
        struct stat facts {};
        if (lstat(path.c_str(), &facts) == 0 && Journal_File::Take_Over(path))
            found.emplace_back(std::int64_t(facts.st_mtim.tv_sec) * 1'000'000'000 + facts.st_mtim.tv_nsec, path);
    }
    std::sort(found.begin(), found.end());
    std::vector<std::string> paths;
    for (auto& [time, path] : found) paths.push_back(std::move(path));
    return paths;
}
