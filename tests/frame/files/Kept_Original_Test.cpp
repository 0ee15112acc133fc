#include "frame/files/Kept_Original.h"
#include "tests/support/Failing_Calls.h"
#include "tests/support/Test_Folder.h"

#include <cerrno>
#include <filesystem>
#include <gtest/gtest.h>

namespace {

using Names = std::vector<std::string>;

class Keeping : public testing::Test {
protected:
    Keeping() { Put_File(path, "old"); }
    ~Keeping() override { Failing_Calls::Refuse_Nothing(); }
    Test_Folder folder;
    std::string path = folder.File("a.jpg");
};

TEST_F(Keeping, The_Name_Itself_Still_Holds_The_File)
{
    auto kept = Kept_Original::Keep(path);
    ASSERT_TRUE(kept);
    EXPECT_EQ(path + "~", kept->Name());
    EXPECT_FALSE(kept->Was_Renamed());
    EXPECT_EQ("old", Contents_Of(path));
    EXPECT_TRUE(kept->Drop());
    EXPECT_EQ(Names{"a.jpg"}, folder.Names());
}

TEST_F(Keeping, Without_Links_The_File_Is_Renamed_And_Put_Back)
{
    Failing_Calls::Refuse_Always("link", EPERM);
    auto kept = Kept_Original::Keep(path);
    ASSERT_TRUE(kept);
    EXPECT_TRUE(kept->Was_Renamed());
    EXPECT_EQ(Names{"a.jpg~"}, folder.Names());
    EXPECT_TRUE(kept->Put_Back());
    EXPECT_EQ(Names{"a.jpg"}, folder.Names());
    EXPECT_EQ("old", Contents_Of(path));
}

TEST_F(Keeping, Without_Links_A_Failed_New_File_Gives_Way_To_The_Old_One)
{
    Failing_Calls::Refuse_Always("link", EOPNOTSUPP);
    auto kept = Kept_Original::Keep(path);
    ASSERT_TRUE(kept);
    Put_File(path, "half of a ne");
    EXPECT_TRUE(kept->Put_Back());
    EXPECT_EQ("old", Contents_Of(path));
    EXPECT_EQ(Names{"a.jpg"}, folder.Names());
}

TEST_F(Keeping, Forgotten_It_Puts_The_File_Back)
{
    Failing_Calls::Refuse_Always("link", EPERM);
    {
        const auto kept = Kept_Original::Keep(path);
        ASSERT_TRUE(kept);
    }
    EXPECT_EQ(Names{"a.jpg"}, folder.Names());
}

TEST_F(Keeping, A_Backup_Of_Another_Program_Keeps_Its_Name_And_Contents)
{
    Put_File(path + "~", "somebody's backup");
    auto kept = Kept_Original::Keep(path);
    ASSERT_TRUE(kept);
    EXPECT_EQ(path + "~2", kept->Name());
    EXPECT_TRUE(kept->Drop());
    EXPECT_EQ("somebody's backup", Contents_Of(path + "~"));
}

TEST_F(Keeping, Without_Links_A_Taken_Name_Is_Never_Overwritten)
{
    Failing_Calls::Refuse_Always("link", EPERM);
    Put_File(path + "~", "somebody's backup");
    EXPECT_FALSE(Kept_Original::Keep(path));
    EXPECT_EQ("somebody's backup", Contents_Of(path + "~"));
    EXPECT_EQ("old", Contents_Of(path));
}

TEST_F(Keeping, A_Second_Name_From_An_Interrupted_Save_Is_Used_Again)
{
    std::filesystem::create_hard_link(path, path + "~");
    auto kept = Kept_Original::Keep(path);
    ASSERT_TRUE(kept);
    EXPECT_EQ(path + "~", kept->Name());
}

TEST_F(Keeping, A_Stale_Second_Name_Is_Cleared_But_Nothing_Else)
{
    std::filesystem::create_hard_link(path, path + "~");
    EXPECT_EQ(2, Count_Of_Names(path));
    Clear_Stale_Keep(path);
    EXPECT_EQ(1, Count_Of_Names(path));
    Put_File(path + "~", "another");
    Clear_Stale_Keep(path);
    EXPECT_EQ("another", Contents_Of(path + "~"));
}

TEST_F(Keeping, A_Stale_Second_Name_Beside_Somebodys_Backup_Is_Cleared_Too)
{
    Put_File(path + "~", "somebody's backup");
    std::filesystem::create_hard_link(path, path + "~2");
    Clear_Stale_Keep(path);
    EXPECT_EQ((Names{"a.jpg", "a.jpg~"}), folder.Names());
}

TEST_F(Keeping, The_Second_Name_Of_A_Running_Save_Is_Not_Stale)
{
    auto kept = Kept_Original::Keep(path);
    ASSERT_TRUE(kept);
    EXPECT_TRUE(Is_Being_Saved(kept->Name()));
    Clear_Stale_Keep(path);
    EXPECT_EQ((Names{"a.jpg", "a.jpg~"}), folder.Names());
    EXPECT_TRUE(kept->Drop());
}

TEST_F(Keeping, A_File_That_Cannot_Be_Put_Back_Stays_Under_Its_Second_Name)
{
    Failing_Calls::Refuse_Always("link", EPERM);
    auto kept = Kept_Original::Keep(path);
    ASSERT_TRUE(kept);
    Failing_Calls::Refuse_Always("rename", EIO);
    EXPECT_FALSE(kept->Put_Back());
    EXPECT_EQ("old", Contents_Of(path + "~"));
}

TEST_F(Keeping, A_Missing_File_Cannot_Be_Kept)
{
    EXPECT_FALSE(Kept_Original::Keep(folder.File("missing.jpg")));
    EXPECT_EQ(0, Count_Of_Names(folder.File("missing.jpg")));
}

TEST_F(Keeping, A_Symbolic_Link_Keeps_The_File_It_Leads_To)
{
    std::filesystem::create_symlink("a.jpg", folder.File("link.jpg"));
    auto kept = Kept_Original::Keep(folder.File("link.jpg"));
    ASSERT_TRUE(kept);
    EXPECT_EQ(path + "~", kept->Name());
    EXPECT_TRUE(kept->Drop());
}

} // namespace
