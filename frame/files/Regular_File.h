#pragma once

#include "frame/files/Result.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// What identifies the contents of a file: the same file under another name, or one moved aside, keeps it; any program
/// that writes into it changes it.
struct File_Identity {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::int64_t size = -1;
    std::int64_t modified_nanoseconds = 0;
    bool operator==(const File_Identity&) const = default;
};

/// A regular file, open for reading. Opening never blocks: a FIFO, a device or a folder is refused with its reason.
/// Paths are native, in UTF-8 or whatever bytes the file system holds.
class Regular_File {
public:
    static Result<Regular_File> Open(const std::string& path);

    Regular_File(Regular_File&& other) noexcept;
    Regular_File& operator=(Regular_File&& other) noexcept;
    ~Regular_File();

    int Descriptor() const { return descriptor_; }
    std::int64_t Size() const { return identity_.size; }
    const File_Identity& Identity() const { return identity_; }

    /// Fills `target` from `offset` on; returns how many bytes there were (fewer only at the end of the file).
    Result<std::size_t> Read_At(std::int64_t offset, std::span<std::byte> target) const;

    /// The whole contents. Fails when the file is larger than `most_bytes`.
    Result<std::vector<std::byte>> Read_All(std::int64_t most_bytes) const;

private:
    Regular_File(int descriptor, File_Identity identity, std::string path);
    int descriptor_ = -1;
    File_Identity identity_;
    std::string path_;
};

/// The identity of what stands under `path` now, links followed.
Result<File_Identity> Identity_Of(const std::string& path);

/// The file that a chain of symbolic links ends at, whether it is there or not; the path itself where it is no link.
std::string Final_Path(const std::string& path);

/// The text of an errno value, for messages.
std::string System_Error_Text(int number);

/// The file and what the system says about it.
tl::unexpected<Error> System_Failure(const std::string& path, int number);
