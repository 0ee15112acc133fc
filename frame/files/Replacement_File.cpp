#include "frame/files/Replacement_File.h"

#include "frame/files/Rename_File.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

void Copy_Extended_Attributes(int from, int to)
{
    const ssize_t size = flistxattr(from, nullptr, 0);
    if (size <= 0) return;
    std::vector<char> names(static_cast<std::size_t>(size));
    const ssize_t got = flistxattr(from, names.data(), names.size());
    for (ssize_t at = 0; at < got; at += ssize_t(std::string_view(names.data() + at).size()) + 1) {
        const char* name = names.data() + at;
        const ssize_t length = fgetxattr(from, name, nullptr, 0);
        if (length < 0) continue;
        std::vector<char> value(static_cast<std::size_t>(length));
        if (fgetxattr(from, name, value.data(), value.size()) == length)
            (void)fsetxattr(to, name, value.data(), value.size(), 0); // what this user may not set stays behind
    }
}

} // namespace

Result<void> Take_Attributes(const std::string& path, int to)
{
    const int from = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (from < 0) return errno == ENOENT ? Result<void>() : Result<void>(System_Failure(path, errno));
    struct stat facts {};
    if (fstat(from, &facts) == 0) {
        if (fchown(to, facts.st_uid, facts.st_gid) != 0) (void)!fchown(to, uid_t(-1), facts.st_gid);
        (void)fchmod(to, facts.st_mode & 07777);
        Copy_Extended_Attributes(from, to);
    }
    close(from);
    return {};
}

Result<File_Times> Times_Of(const std::string& path)
{
    struct stat facts {};
    if (stat(path.c_str(), &facts) != 0) return System_Failure(path, errno);
    return File_Times{.accessed = facts.st_atim, .modified = facts.st_mtim};
}

Result<void> Set_Times(const std::string& path, const File_Times& times)
{
    const timespec both[2] = {times.accessed, times.modified};
    if (utimensat(AT_FDCWD, path.c_str(), both, 0) != 0) return System_Failure(path, errno);
    return {};
}

Result<Replacement_File> Replacement_File::Open(const std::string& target, Replacement_Options options)
{
    Replacement_File file;
    file.target_ = Final_Path(target);
    file.options_ = std::move(options);
    struct stat facts {};
    if (stat(file.target_.c_str(), &facts) == 0 && !S_ISREG(facts.st_mode))
        return Failure(target + (S_ISDIR(facts.st_mode) ? ": is a folder" : ": is not a regular file"));
    if (file.options_.only_new && Is_Name_Taken(target)) return System_Failure(target, EEXIST);

    const std::string folder = Folder_Of_Path(file.target_);
    // The name's own part is cut so that the hidden name stays within 255 bytes.
    const std::string name = file.target_.substr(file.target_.rfind('/') + 1).substr(0, 200);
    std::string hidden = folder + "/." + name + ".halvine-XXXXXX";
    file.descriptor_ = mkostemp(hidden.data(), O_CLOEXEC);
    if (file.descriptor_ < 0) return System_Failure(target, errno);
    file.hidden_ = std::move(hidden);
    const mode_t mask = umask(0);
    umask(mask);
    (void)fchmod(file.descriptor_, 0666 & ~mask); // a new file's usual mode instead of mkostemp's private one
    return file;
}

Replacement_File::Replacement_File(Replacement_File&& other) noexcept
    : descriptor_(std::exchange(other.descriptor_, -1)),
      target_(std::move(other.target_)),
      hidden_(std::exchange(other.hidden_, {})),
      options_(std::move(other.options_))
{}

Replacement_File& Replacement_File::operator=(Replacement_File&& other) noexcept
{
    std::swap(descriptor_, other.descriptor_);
    std::swap(target_, other.target_);
    std::swap(hidden_, other.hidden_);
    std::swap(options_, other.options_);
    return *this;
}

Replacement_File::~Replacement_File()
{
    Discard();
}

void Replacement_File::Discard()
{
    if (descriptor_ >= 0) close(std::exchange(descriptor_, -1));
    if (!hidden_.empty()) unlink(std::exchange(hidden_, {}).c_str());
}

Result<void> Replacement_File::Write(std::span<const std::byte> bytes)
{
    while (!bytes.empty()) {
        const ssize_t written = write(descriptor_, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return System_Failure(target_, errno);
        bytes = bytes.subspan(std::size_t(written));
    }
    return {};
}

Result<void> Replacement_File::Commit()
{
    const auto give_up = [this](Error error) -> Result<void> {
        Discard();
        return tl::make_unexpected(std::move(error));
    };
    const std::string folder = Folder_Of_Path(target_); // here, since behind the renaming no memory may be missing
    const std::string& attributes = options_.take_attributes_from.empty() ? target_ : options_.take_attributes_from;
    if (auto taken = Take_Attributes(attributes, descriptor_); !taken) return give_up(taken.error());
    if (options_.times) {
        const timespec both[2] = {options_.times->accessed, options_.times->modified};
        if (futimens(descriptor_, both) != 0) return give_up(System_Failure(target_, errno).value());
    }
    if (fsync(descriptor_) != 0) return give_up(System_Failure(target_, errno).value());
    if (close(std::exchange(descriptor_, -1)) != 0) return give_up(System_Failure(target_, errno).value());
    if (options_.verify) {
        if (auto good = options_.verify(hidden_); !good) return give_up(good.error());
    }
    if (options_.only_new) {
        if (auto named = Rename_To_New_Name(hidden_, target_); !named) return give_up(named.error());
    } else if (rename(hidden_.c_str(), target_.c_str()) != 0) {
        return give_up(System_Failure(target_, errno).value());
    }
    hidden_.clear();
    auto flushed = Flush_Folder(folder);
    if (!flushed && options_.only_new) unlink(target_.c_str()); // it replaced nothing, so nothing is as it was
    return flushed;
}

Result<void> Write_Whole_File(const std::string& target, std::span<const std::byte> bytes, Replacement_Options options)
{
    auto file = Replacement_File::Open(target, std::move(options));
    if (!file) return tl::make_unexpected(file.error());
    if (auto written = file->Write(bytes); !written) return written;
    return file->Commit();
}
