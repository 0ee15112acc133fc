#include "frame/files/Copy_File.h"
#include "frame/files/Replacement_File.h"
#include "tests/support/Failing_Calls.h"
#include "tests/support/Test_Folder.h"

#include <array>
#include <cerrno>
#include <filesystem>
#include <gtest/gtest.h>
#include <string_view>
#include <sys/stat.h>
#include <sys/xattr.h>

namespace {

using Names = std::vector<std::string>;

class Copying : public testing::Test {
protected:
    Copying() { Put_File(source, "a picture"); }
    ~Copying() override { Failing_Calls::Refuse_Nothing(); }
    Test_Folder folder;
    std::string source = folder.File("a.jpg");
    std::string copy = folder.File("b.jpg");
};

TEST_F(Copying, Keeps_Contents_Mode_And_Times)
{
    ASSERT_EQ(0, chmod(source.c_str(), 0604));
    ASSERT_TRUE(Set_Times(source, {.accessed = {10, 0}, .modified = {20, 30}}));
    ASSERT_TRUE(Copy_Whole_File(source, copy));
    EXPECT_EQ("a picture", Contents_Of(copy));
    struct stat facts {};
    ASSERT_EQ(0, stat(copy.c_str(), &facts));
    EXPECT_EQ(0604U, facts.st_mode & 07777U);
    EXPECT_EQ(20, facts.st_mtim.tv_sec);
    EXPECT_EQ(30, facts.st_mtim.tv_nsec);
}

TEST_F(Copying, Keeps_Extended_Attributes_Where_The_File_System_Has_Them)
{
    const bool has_attributes = setxattr(source.c_str(), "user.rating", "5", 1, 0) == 0;
    ASSERT_TRUE(Copy_Whole_File(source, copy));
    std::array<char, 8> value{};
    EXPECT_EQ(has_attributes ? 1 : -1, getxattr(copy.c_str(), "user.rating", value.data(), value.size()));
}

TEST_F(Copying, Keeps_The_Access_List_Where_The_File_System_Has_One)
{
    // Owner rw, user 12 r, group none, mask r, others none: each entry is tag, permissions, id.
    constexpr std::string_view List("\2\0\0\0"
                                    "\1\0\6\0\xff\xff\xff\xff"
                                    "\2\0\4\0\14\0\0\0"
                                    "\4\0\0\0\xff\xff\xff\xff"
                                    "\20\0\4\0\xff\xff\xff\xff"
                                    "\40\0\0\0\xff\xff\xff\xff",
                                    44);
    constexpr const char* Name = "system.posix_acl_access";
    const bool has_lists = setxattr(source.c_str(), Name, List.data(), List.size(), 0) == 0;
    ASSERT_TRUE(Copy_Whole_File(source, copy));
    std::string value(64, '\0');
    const ssize_t length = getxattr(copy.c_str(), Name, value.data(), value.size());
    if (has_lists) {
        EXPECT_EQ(List, value.substr(0, std::size_t(std::max<ssize_t>(length, 0))));
    } else {
        EXPECT_EQ(-1, length);
    }
}

TEST_F(Copying, Something_Missing_Leaves_The_Target_Alone)
{
    EXPECT_FALSE(Copy_Whole_File(folder.File("missing.jpg"), source));
    EXPECT_EQ("a picture", Contents_Of(source));
}

TEST_F(Copying, Replaces_Or_Refuses_A_Taken_Name_As_Asked)
{
    Put_File(copy, "another");
    const auto refused = Copy_Whole_File(source, copy, {.when_taken = When_Taken::Refuse});
    ASSERT_FALSE(refused);
    EXPECT_EQ(EEXIST, refused.error().number);
    EXPECT_EQ("another", Contents_Of(copy));
    ASSERT_TRUE(Copy_Whole_File(source, copy));
    EXPECT_EQ("a picture", Contents_Of(copy));
    EXPECT_EQ((Names{"a.jpg", "b.jpg"}), folder.Names());
}

TEST_F(Copying, A_Name_Taken_While_It_Copies_Is_Refused_Too)
{
    const auto take_the_name = [this] {
        Put_File(copy, "quicker");
        return false;
    };
    const auto refused =
        Copy_Whole_File(source, copy, {.when_taken = When_Taken::Refuse, .stop_requested = take_the_name});
    ASSERT_FALSE(refused);
    EXPECT_EQ(EEXIST, refused.error().number);
    EXPECT_EQ("quicker", Contents_Of(copy));
    EXPECT_EQ((Names{"a.jpg", "b.jpg"}), folder.Names());
}

TEST_F(Copying, A_Dangling_Link_Counts_As_Taken)
{
    std::filesystem::create_symlink("nowhere.jpg", copy);
    EXPECT_FALSE(Copy_Whole_File(source, copy, {.when_taken = When_Taken::Refuse}));
    EXPECT_TRUE(std::filesystem::is_symlink(copy));
}

TEST_F(Copying, A_File_Is_Not_Copied_Onto_Itself_Or_Another_Of_Its_Names)
{
    std::filesystem::create_hard_link(source, copy);
    for (const std::string& target : {source, copy}) {
        const auto copied = Copy_Whole_File(source, target);
        ASSERT_FALSE(copied);
        EXPECT_EQ(EINVAL, copied.error().number);
    }
    EXPECT_EQ("a picture", Contents_Of(source));
}

TEST_F(Copying, Stopped_In_The_Middle_Leaves_Nothing)
{
    Put_File(source, std::string(5 << 20, 'x'));
    int pieces = 0;
    const auto copied = Copy_Whole_File(source, copy, {.stop_requested = [&] { return ++pieces > 2; }});
    ASSERT_FALSE(copied);
    EXPECT_EQ(ECANCELED, copied.error().number);
    EXPECT_EQ(Names{"a.jpg"}, folder.Names());
}

TEST_F(Copying, A_Source_That_Changes_Meanwhile_Fails)
{
    int pieces = 0;
    const auto change = [&] {
        if (++pieces == 2) Put_File(source, "changed behind the reader's back");
        return false;
    };
    EXPECT_FALSE(Copy_Whole_File(source, copy, {.stop_requested = change}));
    EXPECT_EQ(Names{"a.jpg"}, folder.Names());
}

TEST_F(Copying, A_Full_Disk_In_The_Middle_Leaves_No_Half_File)
{
    Put_File(source, std::string(5 << 20, 'x'));
    Failing_Calls::Refuse_From(3, "write", ENOSPC);
    const auto copied = Copy_Whole_File(source, copy);
    ASSERT_FALSE(copied);
    EXPECT_EQ(ENOSPC, copied.error().number);
    EXPECT_EQ(Names{"a.jpg"}, folder.Names());
}

TEST_F(Copying, Every_Failing_Call_Leaves_The_Old_Target_Or_The_Whole_New_One)
{
    for (int n = 1; n < 200; ++n) {
        Put_File(copy, "old");
        bool copied = false;
        bool reached = false;
        std::string name;
        {
            const Failing_Calls plan(n, EIO);
            copied = bool(Copy_Whole_File(source, copy, {.verify = true}));
            reached = plan.Was_Reached();
            name = plan.Name();
        }
        if (!reached) {
            EXPECT_TRUE(copied);
            EXPECT_GT(n, 10);
            return;
        }
        const std::string contents = Contents_Of(copy);
        EXPECT_TRUE(contents == "old" || contents == "a picture") << name << ": " << contents;
        if (copied) {
            EXPECT_EQ("a picture", contents) << name;
        }
        EXPECT_EQ((Names{"a.jpg", "b.jpg"}), folder.Names()) << name;
    }
    FAIL() << "a copy does not come to an end";
}

TEST_F(Copying, A_Folder_Is_No_File_To_Copy)
{
    std::filesystem::create_directory(folder.File("folder"));
    EXPECT_FALSE(Copy_Whole_File(folder.File("folder"), copy));
    EXPECT_FALSE(Copy_Whole_File(source, folder.File("folder")));
}

} // namespace
