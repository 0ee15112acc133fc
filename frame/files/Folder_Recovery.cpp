#include "frame/files/Folder_Recovery.h"

#include "frame/files/Kept_Original.h"

#include <cctype>
#include <cerrno>
#include <cstdio>
#include <dirent.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr std::time_t Seconds_Of_A_Day = 24 * 60 * 60;

std::vector<std::string> Names_In(const std::string& folder)
{
    std::vector<std::string> names;
    const auto close_folder = [](DIR* open) { closedir(open); };
    const std::unique_ptr<DIR, decltype(close_folder)> open(opendir(folder.c_str()), close_folder);
    if (!open) return names;
    while (const dirent* entry = readdir(open.get())) names.emplace_back(entry->d_name);
    return names;
}

enum class Finding { Nothing, Stale_Link, Missing, Unreadable };

Finding Look_At(const std::string& name, const std::string& kept, const Folder_Recovery& recovery)
{
    struct stat kept_facts {};
    struct stat name_facts {};
    if (lstat(kept.c_str(), &kept_facts) != 0 || !S_ISREG(kept_facts.st_mode)) return Finding::Nothing;
    if (Is_Being_Saved(kept)) return Finding::Nothing;
    if (lstat(name.c_str(), &name_facts) != 0)
        return errno == ENOENT && recovery.is_whole(kept) ? Finding::Missing : Finding::Nothing;
    if (!S_ISREG(name_facts.st_mode)) return Finding::Nothing;
    if (kept_facts.st_ino == name_facts.st_ino && kept_facts.st_dev == name_facts.st_dev) return Finding::Stale_Link;
    return !recovery.is_whole(name) && recovery.is_whole(kept) ? Finding::Unreadable : Finding::Nothing;
}

/// The name that a file "NAME~" or "NAME~2" to "NAME~99" was kept for; empty for any other file. A numbered one was a
/// second name from its first instant on, and never the only one.
std::string Kept_For(const std::string& path, bool& is_numbered)
{
    std::size_t end = path.size();
    while (end > 0 && path.size() - end < 2 && std::isdigit(static_cast<unsigned char>(path[end - 1])) != 0) --end;
    is_numbered = end < path.size();
    return end > 1 && path[end - 1] == '~' && path[end - 2] != '/' ? path.substr(0, end - 1) : std::string();
}

void Clear_Numbered(const std::string& name, const std::string& kept, const Folder_Recovery& recovery)
{
    if (Look_At(name, kept, recovery) == Finding::Stale_Link) unlink(kept.c_str());
}

bool Put_Back(const std::string& name, const std::string& kept, const Folder_Recovery& recovery)
{
    switch (Look_At(name, kept, recovery)) {
    case Finding::Nothing: return false;
    case Finding::Stale_Link: unlink(kept.c_str()); return false;
    case Finding::Missing: break;
    case Finding::Unreadable:
        if (!recovery.to_trash(name)) return false;
        break;
    }
    return rename(kept.c_str(), name.c_str()) == 0;
}

} // namespace

bool Is_Hidden_Name_Of_Ours(const std::string& name)
{
    constexpr std::size_t Random_Letters = 6;
    const std::string mark = ".halvine-";
    if (name.empty() || name.front() != '.' || name.size() < mark.size() + Random_Letters + 1) return false;
    return name.compare(name.size() - Random_Letters - mark.size(), mark.size(), mark) == 0;
}

std::vector<std::string> Folder_Recovery::Run(const std::string& folder) const
{
    std::vector<std::string> put_back;
    const std::string prefix = folder.empty() || folder.back() == '/' ? folder : folder + "/";
    for (const std::string& entry : Names_In(folder.empty() ? "." : folder)) {
        const std::string path = prefix + entry;
        bool is_numbered = false;
        const std::string name = Kept_For(path, is_numbered);
        if (!name.empty() && is_numbered) {
            Clear_Numbered(name, path, *this);
        } else if (!name.empty()) {
            if (Put_Back(name, path, *this)) put_back.push_back(name);
        } else if (Is_Hidden_Name_Of_Ours(entry)) {
            struct stat facts {};
            if (lstat(path.c_str(), &facts) == 0 && S_ISREG(facts.st_mode) && now - facts.st_mtime > Seconds_Of_A_Day)
                (void)to_trash(path);
        }
    }
    return put_back;
}
