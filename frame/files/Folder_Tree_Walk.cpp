#include "frame/files/Folder_Tree_Walk.h"

#include "frame/files/Folder_Recovery.h"
#include "frame/files/Limits.h"
#include "frame/files/Regular_File.h"
#include "frame/files/Replacement_File.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using Kind = Tree_Entry::Kind;

Kind Kind_Of(mode_t mode)
{
    if (S_ISDIR(mode)) return Kind::Folder;
    if (S_ISREG(mode)) return Kind::File;
    return S_ISLNK(mode) ? Kind::Link : Kind::Other;
}

/// The entries of one folder, files first, each by name; nothing when it cannot be read.
std::optional<std::vector<Tree_Entry>> Entries_Of(const std::string& root, const std::string& folder)
{
    const auto close_folder = [](DIR* open) { closedir(open); };
    const std::string whole = folder.empty() ? root : root + "/" + folder;
    const std::unique_ptr<DIR, decltype(close_folder)> open(opendir(whole.c_str()), close_folder);
    if (!open) return std::nullopt;
    std::vector<Tree_Entry> entries;
    while (const dirent* entry = readdir(open.get())) {
        const std::string name = entry->d_name;
        struct stat facts {};
        if (name == "." || name == ".." || Is_Hidden_Name_Of_Ours(name)) continue;
        if (lstat((whole + "/" + name).c_str(), &facts) != 0) continue; // gone meanwhile
        entries.push_back({Kind_Of(facts.st_mode), folder.empty() ? name : folder + "/" + name});
    }
    std::sort(entries.begin(), entries.end(), [](const Tree_Entry& a, const Tree_Entry& b) {
        return std::pair(a.kind == Kind::Folder, a.path) < std::pair(b.kind == Kind::Folder, b.path);
    });
    return entries;
}

} // namespace

Result<Tree_Listing> List_Tree(const std::string& root, const std::function<bool()>& stop_requested)
{
    Tree_Listing listing;
    auto top = Entries_Of(root, {});
    if (!top) return System_Failure(root, errno);
    // What is to do stands in reverse, so that the next entry is the last one.
    std::vector<Tree_Entry> to_do(top->rbegin(), top->rend());
    while (!to_do.empty()) {
        if (stop_requested && stop_requested()) return System_Failure(root, ECANCELED);
        const Tree_Entry entry = std::move(to_do.back());
        to_do.pop_back();
        listing.entries.push_back(entry);
        if (entry.kind != Kind::Folder) continue;
        const auto depth = std::count(entry.path.begin(), entry.path.end(), '/') + 2;
        const auto below = depth <= Current_Limits().folder_depth ? Entries_Of(root, entry.path) : std::nullopt;
        if (below)
            to_do.insert(to_do.end(), below->rbegin(), below->rend());
        else
            listing.unread.push_back(root + "/" + entry.path);
    }
    return listing;
}

Result<void> Take_Folder_Facts(const std::string& source, const std::string& target)
{
    const auto times = Times_Of(source);
    if (!times) return tl::make_unexpected(times.error());
    const int descriptor = open(target.c_str(), O_RDONLY | O_CLOEXEC | O_DIRECTORY);
    if (descriptor < 0) return System_Failure(target, errno);
    const auto taken = Take_Attributes(source, descriptor);
    close(descriptor);
    return taken ? Set_Times(target, *times) : taken;
}
