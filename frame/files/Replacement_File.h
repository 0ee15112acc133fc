#pragma once

#include "frame/files/Regular_File.h"
#include "frame/files/Result.h"

#include <cstddef>
#include <ctime>
#include <functional>
#include <optional>
#include <span>
#include <string>

/// Access and modification time, in nanoseconds.
struct File_Times {
    timespec accessed{};
    timespec modified{};
};

Result<File_Times> Times_Of(const std::string& path);
Result<void> Set_Times(const std::string& path, const File_Times& times);

/// Gives an open file or folder the mode, the owner where permitted, and the extended attributes, which carry the access
/// list too, of what stands under the path. What this user may not set stays behind; a path that is missing gives nothing.
Result<void> Take_Attributes(const std::string& path, int to);

struct Replacement_Options {
    /// The new file takes mode, owner, ACL and extended attributes of the file that it replaces, or of this one when
    /// given (the "~" name, or the parent of a copy).
    std::string take_attributes_from;
    /// Set on the new file when given; otherwise it has the time of its making.
    std::optional<File_Times> times;
    /// Called on the finished hidden file, by its path, before it takes the target's name; a failure is a failed save.
    std::function<Result<void>(const std::string& hidden_path)> verify;
    /// The target's name must be free, also at the end: nothing is replaced. Otherwise the number is EEXIST.
    bool only_new = false;
};

/// The one way to write a file: a fresh file with a hidden name (".NAME.halvine-XXXXXX") in the target's folder is
/// filled, flushed, verified, and only then takes the target's name with a rename. At every instant the target's name
/// holds the old file or the new one, whole. Symbolic links are followed to the file itself; folders and special files
/// are refused.
class Replacement_File {
public:
    static Result<Replacement_File> Open(const std::string& target, Replacement_Options options = {});

    Replacement_File(Replacement_File&& other) noexcept;
    Replacement_File& operator=(Replacement_File&& other) noexcept;
    ~Replacement_File(); ///< removes the hidden file unless it was committed

    Result<void> Write(std::span<const std::byte> bytes);

    /// For codecs that seek: open for reading and writing, positioned by whoever uses it; not to be closed.
    int Descriptor() const { return descriptor_; }

    /// Attributes, times, fsync, verify, rename over the target, fsync of the folder. On failure the hidden file is
    /// gone and the target stands as it was; when only the last step failed, a file that replaced another stands there,
    /// whole, and may not outlive a power cut.
    Result<void> Commit();

private:
    Replacement_File() = default;
    void Discard();
    int descriptor_ = -1;
    std::string target_;
    std::string hidden_;
    Replacement_Options options_;
};

/// Writes a whole small file in one call.
Result<void> Write_Whole_File(const std::string& target, std::span<const std::byte> bytes,
                              Replacement_Options options = {});
