#include "frame/files/Rename_File.h"
#include "tests/support/Failing_Calls.h"
#include "tests/support/Test_Folder.h"

#include <cerrno>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

using Names = std::vector<std::string>;

/// What a file system may lack.
struct Lack {
    std::string name;
    bool careful_rename;
    bool links;
};

class Renaming : public testing::TestWithParam<Lack> {
protected:
    Renaming()
    {
        Put_File(from, "a");
        if (!GetParam().careful_rename) Failing_Calls::Refuse_Always("renameat2", EINVAL);
        if (!GetParam().links) Failing_Calls::Refuse_Always("link", EPERM);
    }
    ~Renaming() override { Failing_Calls::Refuse_Nothing(); }
    Test_Folder folder;
    std::string from = folder.File("a.jpg");
    std::string to = folder.File("b.jpg");
};

TEST_P(Renaming, Gives_A_File_Its_New_Name)
{
    ASSERT_TRUE(Rename_To_New_Name(from, to));
    EXPECT_EQ(Names{"b.jpg"}, folder.Names());
    EXPECT_EQ("a", Contents_Of(to));
}

TEST_P(Renaming, Never_Replaces_A_File)
{
    Put_File(to, "b");
    const auto renamed = Rename_To_New_Name(from, to);
    ASSERT_FALSE(renamed);
    EXPECT_EQ(EEXIST, renamed.error().number);
    EXPECT_NE(std::string::npos, renamed.error().text.find("b.jpg"));
    EXPECT_EQ("a", Contents_Of(from));
    EXPECT_EQ("b", Contents_Of(to));
}

TEST_P(Renaming, Never_Replaces_Another_Name_Of_The_Same_File)
{
    Failing_Calls::Refuse_Nothing();
    std::filesystem::create_hard_link(from, to);
    if (!GetParam().careful_rename) Failing_Calls::Refuse_Always("renameat2", EINVAL);
    EXPECT_FALSE(Rename_To_New_Name(from, to));
    EXPECT_EQ((Names{"a.jpg", "b.jpg"}), folder.Names());
}

TEST_P(Renaming, Gives_A_Folder_Its_New_Name_But_Never_Replaces_One)
{
    const std::string one = folder.File("one");
    const std::string two = folder.File("two");
    std::filesystem::create_directory(one);
    Put_File(one + "/a.jpg", "a");
    std::filesystem::create_directory(two);
    const auto refused = Rename_To_New_Name(one, two);
    ASSERT_FALSE(refused);
    EXPECT_EQ(EEXIST, refused.error().number);
    ASSERT_TRUE(Rename_To_New_Name(one, folder.File("three")));
    EXPECT_EQ("a", Contents_Of(folder.File("three") + "/a.jpg"));
    EXPECT_FALSE(Is_Name_Taken(one));
}

TEST_P(Renaming, Something_Missing_Makes_Nothing)
{
    EXPECT_FALSE(Rename_To_New_Name(folder.File("missing.jpg"), to));
    EXPECT_EQ(Names{"a.jpg"}, folder.Names());
}

TEST_P(Renaming, A_Failure_Leaves_The_File_Alone_Under_Its_First_Name)
{
    for (const char* call : {"rename", "unlink"}) {
        Failing_Calls::Refuse_Once(call, EIO);
        if (!Rename_To_New_Name(from, to)) {
            EXPECT_EQ(Names{"a.jpg"}, folder.Names()) << call;
            EXPECT_EQ("a", Contents_Of(from)) << call;
        } else {
            ASSERT_TRUE(Rename_To_New_Name(to, from)); // the way does not need the call
        }
        Failing_Calls::Refuse_Nothing();
        if (!GetParam().careful_rename) Failing_Calls::Refuse_Always("renameat2", EINVAL);
        if (!GetParam().links) Failing_Calls::Refuse_Always("link", EPERM);
    }
}

INSTANTIATE_TEST_SUITE_P(All, Renaming,
                         testing::Values(Lack{"usual", true, true}, Lack{"without_careful_rename", false, true},
                                         Lack{"without_careful_rename_and_links", false, false}),
                         [](const auto& row) { return row.param.name; });

TEST(Rename_File, A_Name_That_Is_Taken_By_Another_Is_Not_Renamed_Plainly)
{
    const Test_Folder folder;
    const std::string name = folder.File("a.jpg");
    Put_File(name, "a");
    Failing_Calls::Refuse_Always("renameat2", EEXIST);
    EXPECT_FALSE(Rename_To_New_Name(name, folder.File("b.jpg")))
        << "only the file itself under another spelling is renamed plainly";
    EXPECT_EQ(Names{"a.jpg"}, folder.Names());
    Failing_Calls::Refuse_Nothing();
}

TEST(Rename_File, Knows_The_Folder_Of_A_Path)
{
    EXPECT_EQ("/a/b", Folder_Of_Path("/a/b/c.jpg"));
    EXPECT_EQ("/", Folder_Of_Path("/c.jpg"));
    EXPECT_EQ(".", Folder_Of_Path("c.jpg"));
}

TEST(Rename_File, A_Dangling_Link_Takes_Its_Name)
{
    const Test_Folder folder;
    std::filesystem::create_symlink("nowhere", folder.File("link"));
    EXPECT_TRUE(Is_Name_Taken(folder.File("link")));
    EXPECT_FALSE(Is_Name_Taken(folder.File("nowhere")));
}

} // namespace
