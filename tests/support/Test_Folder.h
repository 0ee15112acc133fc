#pragma once

#include <string>
#include <vector>

/// A fresh folder that goes away with its test.
class Test_Folder {
public:
    Test_Folder();
    ~Test_Folder();
    Test_Folder(const Test_Folder&) = delete;
    Test_Folder& operator=(const Test_Folder&) = delete;

    const std::string& Path() const { return path_; } ///< without a separator at its end
    std::string File(const std::string& name) const { return path_ + "/" + name; }
    std::vector<std::string> Names() const; ///< of everything in it, sorted

private:
    std::string path_;
};

std::string Contents_Of(const std::string& path); ///< empty when unreadable
void Put_File(const std::string& path, const std::string& contents);

/// Runs `work` in a child process as an ordinary user, to whom permissions mean something, and returns what it answers
/// (0 to 255), or -1 when the child did not end by itself.
template <class Work>
int As_Ordinary_User(Work work);

namespace support_detail {
int Fork(); // 0 in the child
void Become_Ordinary_User();
[[noreturn]] void Leave(int answer);
int Wait_For(int child);
} // namespace support_detail

/// The same as the user that runs the tests.
template <class Work>
int In_A_Child(Work work)
{
    const int child = support_detail::Fork();
    if (child == 0) support_detail::Leave(work());
    return support_detail::Wait_For(child);
}

template <class Work>
int As_Ordinary_User(Work work)
{
    const int child = support_detail::Fork();
    if (child == 0) {
        support_detail::Become_Ordinary_User();
        support_detail::Leave(work());
    }
    return support_detail::Wait_For(child);
}
