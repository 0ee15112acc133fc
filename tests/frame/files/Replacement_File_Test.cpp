#include "frame/files/Replacement_File.h"
#include "tests/support/Failing_Calls.h"
#include "tests/support/Test_Folder.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <string_view>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace {

std::span<const std::byte> Bytes(std::string_view text)
{
    return std::as_bytes(std::span(text));
}

class Replacement : public testing::Test {
protected:
    Replacement() { Put_File(target, "old"); }
    Test_Folder folder;
    std::string target = folder.File("picture.jpg");
};

TEST_F(Replacement, Puts_The_New_Contents_Under_The_Name_And_Leaves_Nothing_Else)
{
    ASSERT_TRUE(Write_Whole_File(target, Bytes("new")));
    EXPECT_EQ("new", Contents_Of(target));
    EXPECT_EQ(std::vector<std::string>{"picture.jpg"}, folder.Names());
}

TEST_F(Replacement, Without_A_Commit_Changes_Nothing)
{
    {
        auto file = Replacement_File::Open(target);
        ASSERT_TRUE(file);
        ASSERT_TRUE(file->Write(Bytes("half")));
    }
    EXPECT_EQ("old", Contents_Of(target));
    EXPECT_EQ(std::vector<std::string>{"picture.jpg"}, folder.Names());
}

TEST_F(Replacement, Every_Failing_Call_Leaves_The_Old_File_Or_The_Whole_New_One)
{
    for (int n = 1;; ++n) {
        Put_File(target, "old");
        bool reached = false;
        bool written = false;
        std::string name;
        {
            const Failing_Calls plan(n, EIO);
            written = bool(Write_Whole_File(target, Bytes("new")));
            reached = plan.Was_Reached();
            name = plan.Name();
        }
        if (!reached) {
            EXPECT_TRUE(written);
            EXPECT_GT(n, 6) << "open, mode, write, flush, close, rename, flush of the folder";
            break;
        }
        const std::string contents = Contents_Of(target);
        EXPECT_TRUE(contents == "old" || contents == "new") << name << ": " << contents;
        if (written) {
            EXPECT_EQ("new", contents) << name;
        }
        if (name == "write" || name == "rename" || name == "close" || name == "mkostemp") {
            EXPECT_FALSE(written && contents == "old") << name;
        }
        EXPECT_EQ(std::vector<std::string>{"picture.jpg"}, folder.Names()) << name;
    }
}

TEST_F(Replacement, A_Failed_Verification_Is_A_Failed_Save)
{
    const auto written =
        Write_Whole_File(target, Bytes("new"),
                         {.take_attributes_from = {}, .times = {}, .verify = [](const std::string&) -> Result<void> {
                              return Failure("reads back differently");
                          }});
    ASSERT_FALSE(written);
    EXPECT_EQ("reads back differently", written.error().text);
    EXPECT_EQ("old", Contents_Of(target));
}

TEST_F(Replacement, Keeps_Mode_And_Extended_Attributes)
{
    ASSERT_EQ(0, chmod(target.c_str(), 0640));
    const bool has_attributes = setxattr(target.c_str(), "user.rating", "5", 1, 0) == 0;
    ASSERT_TRUE(Write_Whole_File(target, Bytes("new")));
    struct stat facts {};
    ASSERT_EQ(0, stat(target.c_str(), &facts));
    EXPECT_EQ(0640U, facts.st_mode & 07777U);
    char value[8] = {};
    if (has_attributes) {
        EXPECT_EQ(1, getxattr(target.c_str(), "user.rating", value, sizeof value));
    }
}

TEST_F(Replacement, Sets_The_Times_That_Are_Asked_For)
{
    const File_Times times{.accessed = {1000, 5}, .modified = {2000, 7}};
    ASSERT_TRUE(Write_Whole_File(target, Bytes("new"), {.take_attributes_from = {}, .times = times, .verify = {}}));
    const auto now = Times_Of(target);
    ASSERT_TRUE(now);
    EXPECT_EQ(2000, now->modified.tv_sec);
    EXPECT_EQ(7, now->modified.tv_nsec);
}

TEST_F(Replacement, Goes_Through_A_Symbolic_Link_To_The_File_Itself)
{
    std::filesystem::create_symlink("picture.jpg", folder.File("link.jpg"));
    ASSERT_TRUE(Write_Whole_File(folder.File("link.jpg"), Bytes("new")));
    EXPECT_TRUE(std::filesystem::is_symlink(folder.File("link.jpg")));
    EXPECT_EQ("new", Contents_Of(target));
}

TEST_F(Replacement, Goes_Through_A_Symbolic_Link_To_A_File_That_Is_Not_There_Yet)
{
    std::filesystem::create_symlink("later.jpg", folder.File("link.jpg"));
    ASSERT_TRUE(Write_Whole_File(folder.File("link.jpg"), Bytes("new")));
    EXPECT_TRUE(std::filesystem::is_symlink(folder.File("link.jpg")));
    EXPECT_EQ("new", Contents_Of(folder.File("later.jpg")));
}

TEST_F(Replacement, Refuses_A_Folder_And_A_Pipe)
{
    std::filesystem::create_directory(folder.File("folder.jpg"));
    ASSERT_EQ(0, mkfifo(folder.File("pipe.jpg").c_str(), 0600));
    EXPECT_FALSE(Write_Whole_File(folder.File("folder.jpg"), Bytes("new")));
    EXPECT_FALSE(Write_Whole_File(folder.File("pipe.jpg"), Bytes("new")));
}

TEST_F(Replacement, Takes_The_Longest_Name_A_Folder_Can_Hold)
{
    const std::string longest = folder.File(std::string(251, 'x') + ".jpg");
    ASSERT_TRUE(Write_Whole_File(longest, Bytes("new")));
    EXPECT_EQ("new", Contents_Of(longest));
}

TEST_F(Replacement, In_A_Folder_That_Is_Read_Only_Fails_And_Changes_Nothing)
{
    ASSERT_EQ(0, chmod(folder.Path().c_str(), 0555));
    const int answer = As_Ordinary_User([this] {
        const auto written = Write_Whole_File(target, Bytes("new"));
        return !written && written.error().number == EACCES ? 0 : 1;
    });
    EXPECT_EQ(0, answer);
    EXPECT_EQ("old", Contents_Of(target));
}

} // namespace
