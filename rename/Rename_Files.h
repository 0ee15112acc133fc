#pragma once

#include "frame/files/Result.h"

#include <cstdint>
#include <optional>
#include <string>

/// What a rename asks of the file system. Paths and names are bytes, as the disk holds them.
class Rename_Files {
public:
    virtual ~Rename_Files() = default;

    /// Tells one file from another, whatever its name.
    struct Entry {
        std::uint64_t device = 0, inode = 0;
        bool operator==(const Entry&) const = default;
    };
    virtual std::optional<Entry> Find(const std::string& path) const = 0; ///< links are not followed

    /// In one step, never in the place of another file.
    virtual Result<void> Rename(const std::string& from, const std::string& to) = 0;

    /// What was renamed in the folder outlasts a power cut.
    virtual Result<void> Flush(const std::string& folder) = 0;

    /// Which names a folder can hold. `folder` ends with "/".
    struct Folder_Rules {
        int longest_name = 255;           ///< bytes
        bool ignores_case = false;        ///< "a.jpg" and "A.JPG" are one file
        std::string refused_characters{}; ///< besides "/" and NUL
        bool operator==(const Folder_Rules&) const = default;
    };
    virtual Folder_Rules Rules_Of(const std::string& folder) const = 0;
};

class System_Rename_Files final : public Rename_Files {
public:
    std::optional<Entry> Find(const std::string& path) const override;
    Result<void> Rename(const std::string& from, const std::string& to) override;
    Result<void> Flush(const std::string& folder) override;
    Folder_Rules Rules_Of(const std::string& folder) const override;
};
