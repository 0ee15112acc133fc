#include "frame/files/Regular_File.h"
#include "tests/support/Test_Folder.h"

#include <cerrno>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

TEST(Regular_File, Reads_A_Part_And_The_Whole)
{
    const Test_Folder folder;
    Put_File(folder.File("a"), "0123456789");
    const auto file = Regular_File::Open(folder.File("a"));
    ASSERT_TRUE(file);
    EXPECT_EQ(10, file->Size());
    std::byte part[4];
    EXPECT_EQ(3U, file->Read_At(7, part).value());
    EXPECT_EQ('7', char(part[0]));
    EXPECT_EQ(10U, file->Read_All(10).value().size());
    EXPECT_FALSE(file->Read_All(9)) << "larger than the limit";
}

TEST(Regular_File, Opening_A_Pipe_A_Folder_Or_A_Device_Never_Blocks)
{
    const Test_Folder folder;
    ASSERT_EQ(0, mkfifo(folder.File("pipe").c_str(), 0600));
    EXPECT_NE(std::string::npos, Regular_File::Open(folder.File("pipe")).error().text.find("not a regular file"));
    EXPECT_NE(std::string::npos, Regular_File::Open(folder.Path()).error().text.find("is a folder"));
    EXPECT_FALSE(Regular_File::Open("/dev/zero"));
    EXPECT_EQ(ENOENT, Regular_File::Open(folder.File("missing")).error().number);
}

TEST(Regular_File, Identity_Stays_Under_Another_Name_And_Changes_With_The_Contents)
{
    const Test_Folder folder;
    Put_File(folder.File("a"), "one");
    const auto before = Identity_Of(folder.File("a"));
    std::filesystem::rename(folder.File("a"), folder.File("b"));
    EXPECT_EQ(before.value(), Identity_Of(folder.File("b")).value());
    Put_File(folder.File("b"), "other");
    EXPECT_NE(before.value(), Identity_Of(folder.File("b")).value());
}

} // namespace
