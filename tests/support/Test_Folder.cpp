#include "tests/support/Test_Folder.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

Test_Folder::Test_Folder()
{
    std::string pattern = (std::filesystem::temp_directory_path() / "halvine-test-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) std::abort();
    path_ = std::filesystem::canonical(pattern).string();
    chmod(path_.c_str(), 0777); // ordinary users of a child process work here too
}

Test_Folder::~Test_Folder()
{
    std::error_code ignored;
    std::filesystem::permissions(path_, std::filesystem::perms::owner_all, ignored);
    std::filesystem::remove_all(path_, ignored);
}

std::vector<std::string> Test_Folder::Names() const
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(path_))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

std::string Contents_Of(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::ostringstream contents;
    contents << file.rdbuf();
    return contents.str();
}

void Put_File(const std::string& path, const std::string& contents)
{
    std::ofstream(path, std::ios::binary | std::ios::trunc) << contents;
}

namespace support_detail {

int Fork()
{
    return int(fork());
}

void Become_Ordinary_User()
{
    constexpr uid_t Nobody = 65534;
    if (geteuid() != 0) return;
    if (setgid(Nobody) != 0 || setuid(Nobody) != 0) _exit(250);
}

void Leave(int answer)
{
    _exit(answer);
}

int Wait_For(int child)
{
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child || !WIFEXITED(status)) return -1;
    return WEXITSTATUS(status);
}

} // namespace support_detail
