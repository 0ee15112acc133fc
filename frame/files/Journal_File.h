#pragma once

#include "frame/files/Result.h"

#include <string>
#include <string_view>
#include <vector>

/// A file that only grows, for what must outlast a crash. Whoever writes it holds it locked, however the process ends, so
/// a journal that is not locked was left behind. Every call leaves the lines of earlier calls readable, whatever happens
/// in its middle.
class Journal_File {
public:
    /// A new journal in the folder, which is made where it is missing, for this user alone.
    static Result<Journal_File> Create(const std::string& folder);

    Journal_File(Journal_File&& other) noexcept;
    Journal_File& operator=(Journal_File&& other) noexcept;
    ~Journal_File(); ///< closes the file and leaves it

    const std::string& Path() const { return path_; }
    std::int64_t Size() const { return size_; }

    /// Adds the text and flushes it to the disk. After a failure the file ends where it did before.
    Result<void> Append(std::string_view text);

    /// The text takes the place of everything, in one step.
    Result<void> Rewrite(std::string_view text);

    void Remove(); ///< the work is done: the file goes away

    /// Takes over a journal that was left behind; fails while somebody holds it.
    static Result<Journal_File> Take_Over(const std::string& path);
    /// The whole contents, at most `most_bytes` of them.
    Result<std::string> Read(std::int64_t most_bytes) const;

private:
    Journal_File() = default;
    int descriptor_ = -1;
    std::string path_;
    std::int64_t size_ = 0;
};

/// The journals in the folder that nobody holds, the oldest first.
std::vector<std::string> Journals_Left_Behind(const std::string& folder);
