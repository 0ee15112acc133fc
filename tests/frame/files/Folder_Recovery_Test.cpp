#include "frame/files/Folder_Recovery.h"
#include "frame/files/Kept_Original.h"
#include "frame/files/Replacement_File.h"
#include "tests/support/Failing_Calls.h"
#include "tests/support/Test_Folder.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

using Names = std::vector<std::string>;

/// A "picture" is whole when it begins with "whole".
class Recovery : public testing::Test {
protected:
    Names Recover()
    {
        const Folder_Recovery recovery{
            .is_whole = [](const std::string& path) { return Contents_Of(path).starts_with("whole"); },
            .to_trash =
                [this](const std::string& path) {
                    trashed.push_back(std::filesystem::path(path).filename().string());
                    return trash_works && std::filesystem::remove(path);
                },
            .now = 1'000'000};
        Names names;
        for (const std::string& path : recovery.Run(folder.Path()))
            names.push_back(std::filesystem::path(path).filename().string());
        return names;
    }
    Test_Folder folder;
    Names trashed;
    bool trash_works = true;
};

TEST_F(Recovery, A_Lost_Name_Gets_Its_File_Back)
{
    Put_File(folder.File("a.jpg~"), "whole");
    EXPECT_EQ(Names{"a.jpg"}, Recover());
    EXPECT_EQ(Names{"a.jpg"}, folder.Names());
}

TEST_F(Recovery, A_Damaged_File_Goes_To_The_Trash_And_The_Kept_One_Takes_Its_Name)
{
    Put_File(folder.File("a.jpg"), "torn");
    Put_File(folder.File("a.jpg~"), "whole");
    EXPECT_EQ(Names{"a.jpg"}, Recover());
    EXPECT_EQ("whole", Contents_Of(folder.File("a.jpg")));
    EXPECT_EQ(Names{"a.jpg"}, trashed);
}

TEST_F(Recovery, Without_A_Trash_The_Damaged_File_Stays)
{
    trash_works = false;
    Put_File(folder.File("a.jpg"), "torn");
    Put_File(folder.File("a.jpg~"), "whole");
    EXPECT_EQ(Names{}, Recover());
    EXPECT_EQ("torn", Contents_Of(folder.File("a.jpg")));
}

TEST_F(Recovery, A_Backup_Beside_A_Whole_Picture_Is_Left_Alone)
{
    Put_File(folder.File("a.jpg"), "whole and new");
    Put_File(folder.File("a.jpg~"), "whole and old");
    EXPECT_EQ(Names{}, Recover());
    EXPECT_EQ((Names{"a.jpg", "a.jpg~"}), folder.Names());
}

TEST_F(Recovery, A_Backup_That_Is_No_Picture_Is_Left_Alone)
{
    Put_File(folder.File("notes.txt~"), "text");
    EXPECT_EQ(Names{}, Recover());
    EXPECT_EQ(Names{"notes.txt~"}, folder.Names());
}

TEST_F(Recovery, A_Numbered_Second_Name_Is_Removed_And_Other_Numbered_Files_Are_Left_Alone)
{
    Put_File(folder.File("a.jpg"), "whole");
    Put_File(folder.File("a.jpg~"), "whole: somebody's backup");
    std::filesystem::create_hard_link(folder.File("a.jpg"), folder.File("a.jpg~2"));
    Put_File(folder.File("a.jpg~3"), "whole: another");
    Put_File(folder.File("b.jpg~2"), "whole, and its name is not there");
    EXPECT_EQ(Names{}, Recover());
    EXPECT_EQ((Names{"a.jpg", "a.jpg~", "a.jpg~3", "b.jpg~2"}), folder.Names());
}

TEST_F(Recovery, A_Second_Name_Of_The_Same_File_Is_Removed)
{
    Put_File(folder.File("a.jpg"), "whole");
    std::filesystem::create_hard_link(folder.File("a.jpg"), folder.File("a.jpg~"));
    EXPECT_EQ(Names{}, Recover());
    EXPECT_EQ(Names{"a.jpg"}, folder.Names());
}

TEST_F(Recovery, Hidden_Files_Of_Ours_Go_To_The_Trash_After_A_Day)
{
    const std::string old_one = ".a.jpg.halvine-Ab12Cd";
    const std::string fresh = ".b.jpg.halvine-Ab12Cd";
    for (const std::string& name : {old_one, fresh, std::string(".profile")}) Put_File(folder.File(name), "x");
    ASSERT_TRUE(Set_Times(folder.File(old_one), {{900'000, 0}, {900'000, 0}}));
    ASSERT_TRUE(Set_Times(folder.File(fresh), {{999'000, 0}, {999'000, 0}}));
    ASSERT_TRUE(Set_Times(folder.File(".profile"), {{1, 0}, {1, 0}}));
    Recover();
    EXPECT_EQ(Names{old_one}, trashed);
}

TEST_F(Recovery, What_A_Running_Save_Keeps_Is_Left_Alone)
{
    Put_File(folder.File("a.jpg"), "whole");
    {
        const auto kept = Kept_Original::Keep(folder.File("a.jpg"));
        ASSERT_TRUE(kept);
        EXPECT_EQ(Names{}, Recover());
        EXPECT_EQ((Names{"a.jpg", "a.jpg~"}), folder.Names());
    }
    EXPECT_EQ(Names{"a.jpg"}, folder.Names());
}

TEST_F(Recovery, What_A_Running_Save_Has_Renamed_Is_Left_Alone)
{
    Put_File(folder.File("a.jpg"), "whole");
    Failing_Calls::Refuse_Always("link", EPERM);
    const auto kept = Kept_Original::Keep(folder.File("a.jpg"));
    Failing_Calls::Refuse_Nothing();
    ASSERT_TRUE(kept);
    EXPECT_EQ(Names{}, Recover());
    EXPECT_EQ(Names{"a.jpg~"}, folder.Names());
}

TEST_F(Recovery, What_A_Killed_Save_Kept_Comes_Back)
{
    Put_File(folder.File("a.jpg"), "whole");
    const int answer = In_A_Child([&] {
        Failing_Calls::Refuse_Always("link", EPERM);
        auto kept = Kept_Original::Keep(folder.File("a.jpg"));
        _exit(kept ? 3 : 4); // without putting anything back
        return 0;
    });
    EXPECT_EQ(3, answer);
    EXPECT_EQ(Names{"a.jpg~"}, folder.Names());
    EXPECT_EQ(Names{"a.jpg"}, Recover());
}

TEST_F(Recovery, A_Folder_That_Is_Not_There_Gives_Nothing)
{
    std::filesystem::remove_all(folder.Path());
    EXPECT_EQ(Names{}, Recover());
}

} // namespace
