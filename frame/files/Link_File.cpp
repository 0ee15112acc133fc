#include "frame/files/Link_File.h"

#include "frame/files/Regular_File.h"
#include "frame/files/Rename_File.h"

#include <cerrno>
#include <climits>
#include <cstdio>
#include <sys/stat.h>
#include <unistd.h>

Result<std::string> Words_Of_Link(const std::string& path)
{
    char words[PATH_MAX];
    const ssize_t length = readlink(path.c_str(), words, sizeof words);
    if (length < 0) return System_Failure(path, errno);
    if (length == 0 || std::size_t(length) >= sizeof words) return System_Failure(path, ENAMETOOLONG);
    return std::string(words, std::size_t(length));
}

Result<void> Make_Link(const std::string& words, const std::string& path, When_Taken when_taken)
{
    struct stat there {};
    if (lstat(path.c_str(), &there) == 0 && (when_taken == When_Taken::Refuse || S_ISDIR(there.st_mode)))
        return System_Failure(path, EEXIST);
    const std::string hidden = Folder_Of_Path(path) + "/." + std::to_string(getpid()) + ".halvine-LinkTo";
    unlink(hidden.c_str());
    if (symlink(words.c_str(), hidden.c_str()) != 0) return System_Failure(path, errno);
    Result<void> named;
    if (when_taken == When_Taken::Refuse)
        named = Rename_To_New_Name(hidden, path);
    else if (rename(hidden.c_str(), path.c_str()) != 0)
        named = System_Failure(path, errno);
    if (!named) unlink(hidden.c_str());
    return named;
}

Result<std::string> Words_For_Another_Place(const std::string& path, const std::string& root)
{
    auto words = Words_Of_Link(path);
    if (!words || words->front() == '/') return words;
    const std::string leads_to = Final_Path(path);
    struct stat there {};
    if (leads_to.front() != '/' || stat(leads_to.c_str(), &there) != 0) return words;
    const std::string inside = Final_Path(root) + "/";
    return leads_to.compare(0, inside.size(), inside) == 0 ? words : leads_to;
}
