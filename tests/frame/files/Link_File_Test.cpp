#include "frame/files/Link_File.h"
#include "tests/support/Test_Folder.h"

#include <cerrno>
#include <filesystem>
#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

class Linking : public testing::Test {
protected:
    Linking()
    {
        fs::create_directory(folder.File("root"));
        Put_File(folder.File("root/inside.jpg"), "inside");
        Put_File(folder.File("outside.jpg"), "outside");
    }
    std::string Words(const std::string& words)
    {
        const std::string link = folder.File("root/link.jpg");
        fs::remove(link);
        fs::create_symlink(words, link);
        return Words_For_Another_Place(link, folder.File("root")).value();
    }
    Test_Folder folder;
};

TEST_F(Linking, Words_Stay_Where_They_Lead_To_Something_That_Comes_Along)
{
    EXPECT_EQ("inside.jpg", Words("inside.jpg"));
    EXPECT_EQ("/etc/hostname", Words("/etc/hostname"));
    EXPECT_EQ("../nowhere.jpg", Words("../nowhere.jpg"));
}

TEST_F(Linking, Words_That_Would_Lead_Elsewhere_Become_The_Way_From_The_Root)
{
    EXPECT_EQ(folder.File("outside.jpg"), Words("../outside.jpg"));
}

TEST_F(Linking, A_Link_Replaces_Only_When_Asked_And_Never_A_Folder)
{
    const std::string taken = folder.File("outside.jpg");
    const auto refused = Make_Link("inside.jpg", taken, When_Taken::Refuse);
    ASSERT_FALSE(refused);
    EXPECT_EQ(EEXIST, refused.error().number);
    EXPECT_FALSE(Make_Link("inside.jpg", folder.File("root"), When_Taken::Replace));
    ASSERT_TRUE(Make_Link("root/inside.jpg", taken, When_Taken::Replace));
    EXPECT_EQ("inside", Contents_Of(taken));
    EXPECT_EQ("root/inside.jpg", Words_Of_Link(taken).value());
    EXPECT_EQ((std::vector<std::string>{"outside.jpg", "root"}), folder.Names());
}

TEST_F(Linking, A_File_Has_No_Words)
{
    EXPECT_FALSE(Words_Of_Link(folder.File("outside.jpg")));
}

} // namespace
