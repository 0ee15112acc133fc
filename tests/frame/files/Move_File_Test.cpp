#include "frame/files/Move_File.h"
#include "frame/files/Replacement_File.h"
#include "tests/support/Failing_Calls.h"
#include "tests/support/Test_Folder.h"

#include <cerrno>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

namespace fs = std::filesystem;

class Moving : public testing::TestWithParam<bool> {
protected:
    Moving()
    {
        fs::create_directory(folder.File("from"));
        fs::create_directory(folder.File("to"));
        chmod(folder.File("to").c_str(), 0777);
        Put_File(source, "a picture");
    }
    ~Moving() override { Failing_Calls::Refuse_Nothing(); }
    Result<void> Move(When_Taken when_taken = When_Taken::Refuse)
    {
        if (GetParam()) { // as into another file system: the first try says so
            Failing_Calls::Refuse_Once("renameat2", EXDEV);
            Failing_Calls::Refuse_Once("rename", EXDEV);
        }
        auto moved = Move_Whole_File(source, target, when_taken);
        Failing_Calls::Refuse_Nothing();
        return moved;
    }
    std::size_t Count_In(const char* name) const
    {
        return std::size_t(std::distance(fs::directory_iterator(folder.File(name)), fs::directory_iterator()));
    }
    Test_Folder folder;
    std::string source = folder.File("from") + "/a.jpg";
    std::string target = folder.File("to") + "/a.jpg";
};

TEST_P(Moving, Takes_The_File_With_Its_Mode_And_Times)
{
    ASSERT_EQ(0, chmod(source.c_str(), 0604));
    ASSERT_TRUE(Set_Times(source, {.accessed = {10, 0}, .modified = {20, 30}}));
    ASSERT_TRUE(Move());
    EXPECT_EQ("a picture", Contents_Of(target));
    EXPECT_FALSE(fs::exists(source));
    EXPECT_EQ(0U, Count_In("from"));
    EXPECT_EQ(1U, Count_In("to"));
    struct stat facts {};
    ASSERT_EQ(0, stat(target.c_str(), &facts));
    EXPECT_EQ(0604U, facts.st_mode & 07777U);
    EXPECT_EQ(20, facts.st_mtim.tv_sec);
    EXPECT_EQ(30, facts.st_mtim.tv_nsec);
}

TEST_P(Moving, Never_Replaces_Unless_It_Is_Asked_To)
{
    Put_File(target, "another");
    const auto refused = Move();
    ASSERT_FALSE(refused);
    EXPECT_EQ(EEXIST, refused.error().number);
    EXPECT_EQ("another", Contents_Of(target));
    EXPECT_EQ("a picture", Contents_Of(source));
    ASSERT_TRUE(Move(When_Taken::Replace));
    EXPECT_EQ("a picture", Contents_Of(target));
    EXPECT_FALSE(fs::exists(source));
}

TEST_P(Moving, Onto_Another_Name_Of_The_Same_File_Leaves_One_Name)
{
    fs::create_hard_link(source, target);
    ASSERT_TRUE(Move(When_Taken::Replace));
    EXPECT_EQ("a picture", Contents_Of(target));
    EXPECT_FALSE(fs::exists(source));
}

TEST_P(Moving, Onto_A_Link_That_Leads_To_The_File_Itself_Is_Refused)
{
    fs::create_symlink(source, target);
    EXPECT_FALSE(Move(When_Taken::Replace));
    EXPECT_EQ("a picture", Contents_Of(source));
}

TEST_P(Moving, To_Where_It_Stands_Changes_Nothing)
{
    EXPECT_TRUE(Move_Whole_File(source, source, When_Taken::Replace));
    EXPECT_EQ("a picture", Contents_Of(source));
}

TEST_P(Moving, A_Relative_Link_Leads_To_The_Same_File_Afterwards)
{
    const std::string link = folder.File("from") + "/link.jpg";
    fs::create_symlink("a.jpg", link);
    ASSERT_TRUE(Move_Whole_File(link, folder.File("to") + "/link.jpg"));
    EXPECT_TRUE(fs::is_symlink(folder.File("to") + "/link.jpg"));
    EXPECT_EQ("a picture", Contents_Of(folder.File("to") + "/link.jpg"));
    EXPECT_FALSE(fs::is_symlink(link));
    EXPECT_EQ("a picture", Contents_Of(source));
}

TEST_P(Moving, Never_Replaces_A_Folder)
{
    fs::create_directory(target);
    EXPECT_FALSE(Move(When_Taken::Replace));
    EXPECT_EQ("a picture", Contents_Of(source));
    EXPECT_TRUE(fs::is_directory(target));
}

TEST_P(Moving, Out_Of_A_Folder_That_Lets_Nothing_Go_Leaves_No_Second_File)
{
    ASSERT_EQ(0, chmod(folder.File("from").c_str(), 0555));
    ASSERT_EQ(0, chmod(source.c_str(), 0666));
    EXPECT_EQ(0, As_Ordinary_User([this] { return Move() ? 1 : 0; }));
    chmod(folder.File("from").c_str(), 0755);
    EXPECT_EQ("a picture", Contents_Of(source));
    EXPECT_EQ(0U, Count_In("to"));
}

TEST_P(Moving, Into_A_Folder_That_Takes_Nothing_Leaves_The_File)
{
    ASSERT_EQ(0, chmod(folder.File("to").c_str(), 0555));
    ASSERT_EQ(0, chmod(folder.File("from").c_str(), 0777));
    EXPECT_EQ(0, As_Ordinary_User([this] { return Move() ? 1 : 0; }));
    EXPECT_EQ("a picture", Contents_Of(source));
    EXPECT_EQ(0U, Count_In("to"));
}

INSTANTIATE_TEST_SUITE_P(All, Moving, testing::Bool(),
                         [](const auto& row) { return row.param ? "across_file_systems" : "within_one_file_system"; });

TEST(Move_File, A_Copy_Whose_Source_Cannot_Go_Is_Taken_Back)
{
    const Test_Folder folder;
    Put_File(folder.File("a.jpg"), "a picture");
    Failing_Calls::Refuse_Once("renameat2", EXDEV);
    Failing_Calls::Refuse_Once("unlink", EBUSY);
    EXPECT_FALSE(Move_Whole_File(folder.File("a.jpg"), folder.File("b.jpg")));
    Failing_Calls::Refuse_Nothing();
    EXPECT_EQ(std::vector<std::string>{"a.jpg"}, folder.Names());
}

TEST(Move_File, A_Folder_Is_Not_Taken_Across_File_Systems)
{
    const Test_Folder folder;
    fs::create_directory(folder.File("one"));
    Failing_Calls::Refuse_Once("renameat2", EXDEV);
    const auto moved = Move_Whole_File(folder.File("one"), folder.File("two"));
    Failing_Calls::Refuse_Nothing();
    ASSERT_FALSE(moved);
    EXPECT_EQ(EXDEV, moved.error().number);
    EXPECT_TRUE(Move_Whole_File(folder.File("one"), folder.File("two")));
}

TEST(Move_File, Stopped_While_It_Copies_Leaves_The_Source_Alone)
{
    const Test_Folder folder;
    Put_File(folder.File("a.jpg"), std::string(5 << 20, 'x'));
    Failing_Calls::Refuse_Once("renameat2", EXDEV);
    int pieces = 0;
    const auto moved =
        Move_Whole_File(folder.File("a.jpg"), folder.File("b.jpg"), When_Taken::Refuse, [&] { return ++pieces > 2; });
    Failing_Calls::Refuse_Nothing();
    ASSERT_FALSE(moved);
    EXPECT_EQ(ECANCELED, moved.error().number);
    EXPECT_EQ(std::vector<std::string>{"a.jpg"}, folder.Names());
}

} // namespace
