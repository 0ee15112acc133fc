#include "frame/files/Folder_Tree_Walk.h"
#include "tests/support/Test_Folder.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

namespace fs = std::filesystem;

std::string Told(const Tree_Listing& listing)
{
    std::string text;
    for (const Tree_Entry& entry : listing.entries) {
        text += entry.path;
        text += entry.kind == Tree_Entry::Kind::Folder ? "/ " : entry.kind == Tree_Entry::Kind::Link ? "@ " : " ";
    }
    return text;
}

TEST(Folder_Tree_Walk, Files_Come_First_And_A_Folder_Before_What_It_Holds)
{
    const Test_Folder folder;
    fs::create_directories(folder.File("b/c"));
    fs::create_directories(folder.File("a"));
    Put_File(folder.File("z.jpg"), "z");
    Put_File(folder.File("b/1.jpg"), "1");
    Put_File(folder.File("b/.x.jpg.halvine-abc123"), "left over");
    fs::create_symlink("b", folder.File("loop"));
    fs::create_symlink("..", folder.File("b/c/up"));
    const auto listing = List_Tree(folder.Path());
    ASSERT_TRUE(listing);
    EXPECT_EQ("loop@ z.jpg a/ b/ b/1.jpg b/c/ b/c/up@ ", Told(*listing));
    EXPECT_TRUE(listing->unread.empty());
}

TEST(Folder_Tree_Walk, Can_Be_Stopped)
{
    const Test_Folder folder;
    Put_File(folder.File("a.jpg"), "a");
    const auto listing = List_Tree(folder.Path(), [] { return true; });
    ASSERT_FALSE(listing);
    EXPECT_EQ(ECANCELED, listing.error().number);
}

TEST(Folder_Tree_Walk, Tells_What_Lies_Too_Deep_Or_Cannot_Be_Read)
{
    const Test_Folder folder;
    std::string path = folder.Path();
    for (int i = 0; i < 70; ++i) {
        path += "/d";
        fs::create_directory(path);
    }
    const auto listing = List_Tree(folder.Path());
    ASSERT_TRUE(listing);
    EXPECT_EQ(64U, listing->entries.size());
    EXPECT_EQ(1U, listing->unread.size());
    EXPECT_FALSE(List_Tree(folder.File("missing")));
}

TEST(Folder_Tree_Walk, A_Folder_Takes_Mode_And_Times_Of_Another)
{
    const Test_Folder folder;
    fs::create_directory(folder.File("a"));
    fs::create_directory(folder.File("b"));
    chmod(folder.File("a").c_str(), 0711);
    const timespec times[2] = {{10, 0}, {20, 0}};
    utimensat(AT_FDCWD, folder.File("a").c_str(), times, 0);
    ASSERT_TRUE(Take_Folder_Facts(folder.File("a"), folder.File("b")));
    struct stat facts {};
    stat(folder.File("b").c_str(), &facts);
    EXPECT_EQ(0711U, facts.st_mode & 07777U);
    EXPECT_EQ(20, facts.st_mtim.tv_sec);
}

} // namespace
