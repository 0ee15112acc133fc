#pragma once

#include "frame/files/Result.h"

#include <string>
#include <utility>

/// Keeps the file under `path` as "path~" while a new one is written under its name. The "~" name is a hard link, so that
/// the name itself holds the file at every instant; where the file system has no links the file is renamed. Symbolic
/// links are followed to the file itself. Going out of scope without Drop puts the file back.
/// While it lives, the kept file is locked: another process that puts the folder in order leaves the "~" name alone. The
/// lock ends with the process, however that ends.
class Kept_Original {
public:
    static Result<Kept_Original> Keep(const std::string& path);

    Kept_Original(Kept_Original&& other) noexcept;
    Kept_Original& operator=(Kept_Original&&) = delete;
    ~Kept_Original();

    const std::string& Name() const { return kept_; } ///< the "~" name
    bool Was_Renamed() const { return renamed_; }     ///< nothing stands under the name itself

    /// The new file is good: the "~" name goes away. An error leaves it, and harms nothing.
    Result<void> Drop();

    /// The save failed: the file stands under its own name again and the "~" name is gone.
    Result<void> Put_Back();

private:
    Kept_Original(std::string path, int lock) : path_(std::move(path)), lock_(lock) {} // nothing kept yet
    Kept_Original As(std::string kept, bool renamed) &&;
    void Unlock();
    std::string path_;
    std::string kept_;
    int lock_ = -1; // a descriptor of the kept file, -1 where it could not be locked
    bool renamed_ = false;
    bool active_ = false;
};

/// Removes "~" names of the same file ("name~", "name~2" and so on), which an interrupted save left behind. Nothing is lost: the file stands under its
/// own name. A "~" name that a running save keeps is left alone.
void Clear_Stale_Keep(const std::string& path);

/// True while a Kept_Original of any process holds the file under the "~" name `kept`.
bool Is_Being_Saved(const std::string& kept);

/// How many names the file has; 0 when it is missing. Symbolic links are followed.
int Count_Of_Names(const std::string& path);
