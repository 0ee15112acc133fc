#include "rename/Rename_Files.h"

#include "frame/files/Rename_File.h"

#include <dirent.h>
#include <linux/magic.h>
#include <memory>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

namespace {

// Not in every version of the system's header.
constexpr long Exfat_Magic = 0x2011BAB0;
constexpr long Ntfs_Magic = 0x5346544e;
constexpr long Ntfs3_Magic = 0x7366746e;

/// File systems that other systems share refuse more than ours do.
std::string Refused_Characters_Of(const std::string& folder)
{
    struct statfs facts {};
    if (statfs(folder.c_str(), &facts) != 0) return {};
    const auto kind = long(facts.f_type);
    if (kind != MSDOS_SUPER_MAGIC && kind != Exfat_Magic && kind != Ntfs_Magic && kind != Ntfs3_Magic) return {};
    std::string refused = "\\:*?\"<>|";
    for (char c = 1; c < ' '; ++c) refused += c;
    return refused;
}

/// The name with the case of its letters turned over; nothing when it has no letters.
std::optional<std::string> Turned_Over(const std::string& name)
{
    std::string turned = name;
    for (char& c : turned) {
        if (c >= 'a' && c <= 'z')
            c = char(c - 'a' + 'A');
        else if (c >= 'A' && c <= 'Z')
            c = char(c - 'A' + 'a');
    }
    if (turned == name) return {};
    return turned;
}

/// One entry with letters tells: is it found under the other case too?
bool Ignores_Case(const Rename_Files& files, const std::string& folder)
{
    const auto close_folder = [](DIR* open) { closedir(open); };
    const std::unique_ptr<DIR, decltype(close_folder)> open(opendir(folder.c_str()), close_folder);
    if (!open) return false;
    while (const dirent* entry = readdir(open.get())) {
        const auto turned = Turned_Over(entry->d_name);
        if (!turned) continue;
        const auto found = files.Find(folder + entry->d_name);
        if (found) return files.Find(folder + *turned) == found;
    }
    return false;
}

} // namespace

std::optional<Rename_Files::Entry> System_Rename_Files::Find(const std::string& path) const
{
    struct stat facts {};
    if (lstat(path.c_str(), &facts) != 0) return {};
    return Entry{facts.st_dev, facts.st_ino};
}

Result<void> System_Rename_Files::Rename(const std::string& from, const std::string& to)
{
    return Rename_To_New_Name(from, to);
}

Result<void> System_Rename_Files::Flush(const std::string& folder)
{
    return Flush_Folder(folder);
}

Rename_Files::Folder_Rules System_Rename_Files::Rules_Of(const std::string& folder) const
{
    Folder_Rules rules;
    const long longest = pathconf(folder.c_str(), _PC_NAME_MAX);
    if (longest > 0) rules.longest_name = int(longest);
    rules.ignores_case = Ignores_Case(*this, folder);
    rules.refused_characters = Refused_Characters_Of(folder);
    return rules;
}
