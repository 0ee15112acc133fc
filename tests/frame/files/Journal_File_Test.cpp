#include "frame/files/Journal_File.h"
#include "tests/support/Failing_Calls.h"
#include "tests/support/Test_Folder.h"

#include <cerrno>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

class Journal : public testing::Test {
protected:
    ~Journal() override { Failing_Calls::Refuse_Nothing(); }
    Journal_File Made() { return Journal_File::Create(Place()).value(); }
    std::string Place() const { return folder.File("state/halvine"); }
    std::size_t Files() const { return std::size_t(std::distance(std::filesystem::directory_iterator(Place()), {})); }
    Test_Folder folder;
};

TEST_F(Journal, Makes_Its_Folder_For_This_User_Alone_And_Grows)
{
    Journal_File journal = Made();
    ASSERT_TRUE(journal.Append("one\n"));
    ASSERT_TRUE(journal.Append("two\n"));
    EXPECT_EQ("one\ntwo\n", Contents_Of(journal.Path()));
    EXPECT_EQ(8, journal.Size());
    struct stat facts {};
    ASSERT_EQ(0, stat(Place().c_str(), &facts));
    EXPECT_EQ(0700U, facts.st_mode & 07777U);
    ASSERT_EQ(0, stat(journal.Path().c_str(), &facts));
    EXPECT_EQ(0600U, facts.st_mode & 07777U);
    journal.Remove();
    EXPECT_EQ(0U, Files());
}

TEST_F(Journal, Is_Left_Behind_When_Its_Holder_Goes_Without_Removing_It)
{
    std::string path;
    {
        Journal_File journal = Made();
        path = journal.Path();
        ASSERT_TRUE(journal.Append("kept\n"));
        EXPECT_TRUE(Journals_Left_Behind(Place()).empty()) << "its holder lives";
        EXPECT_FALSE(Journal_File::Take_Over(path));
    }
    EXPECT_EQ(std::vector{path}, Journals_Left_Behind(Place()));
    const auto taken = Journal_File::Take_Over(path);
    ASSERT_TRUE(taken);
    EXPECT_EQ("kept\n", taken->Read(100).value());
    EXPECT_EQ("ke", taken->Read(2).value());
    EXPECT_FALSE(Journal_File::Take_Over(path)) << "two cannot have it";
}

TEST_F(Journal, Two_Programs_Have_Two)
{
    Journal_File first = Made();
    Journal_File second = Made();
    EXPECT_NE(first.Path(), second.Path());
}

TEST_F(Journal, Rewritten_It_Stays_Held)
{
    Journal_File journal = Made();
    ASSERT_TRUE(journal.Append("long and outdated\n"));
    ASSERT_TRUE(journal.Rewrite("short\n"));
    EXPECT_EQ("short\n", Contents_Of(journal.Path()));
    EXPECT_TRUE(Journals_Left_Behind(Place()).empty());
    ASSERT_TRUE(journal.Append("more\n"));
    EXPECT_EQ("short\nmore\n", Contents_Of(journal.Path()));
    EXPECT_EQ(1U, Files());
}

TEST_F(Journal, Half_A_Line_Does_Not_Stay)
{
    Journal_File journal = Made();
    ASSERT_TRUE(journal.Append("one\n"));
    Failing_Calls::Refuse_Once("fdatasync", ENOSPC);
    EXPECT_FALSE(journal.Append("two\n"));
    EXPECT_EQ("one\n", Contents_Of(journal.Path()));
    ASSERT_TRUE(journal.Append("three\n"));
    EXPECT_EQ("one\nthree\n", Contents_Of(journal.Path()));
}

TEST_F(Journal, Every_Failing_Call_Leaves_What_Was_Written_Before)
{
    for (int n = 1; n < 100; ++n) {
        bool reached = false;
        std::string name;
        std::string contents;
        {
            Journal_File journal = Made();
            ASSERT_TRUE(journal.Append("old\n"));
            {
                const Failing_Calls plan(n, EIO);
                (void)journal.Append("more\n");
                (void)journal.Rewrite("new\n");
                reached = plan.Was_Reached();
                name = plan.Name();
            }
            contents = Contents_Of(journal.Path());
            journal.Remove();
        }
        EXPECT_TRUE(contents == "old\n" || contents == "old\nmore\n" || contents == "new\n")
            << name << ": " << contents;
        EXPECT_EQ(0U, Files()) << name;
        if (!reached) {
            EXPECT_EQ("new\n", contents);
            EXPECT_GT(n, 5);
            return;
        }
    }
    FAIL() << "a journal does not come to an end";
}

TEST_F(Journal, Where_No_Folder_Can_Be_Made_There_Is_None)
{
    Put_File(folder.File("state"), "a file");
    const auto journal = Journal_File::Create(Place());
    ASSERT_FALSE(journal);
    EXPECT_NE(std::string::npos, journal.error().text.find("state"));
    EXPECT_TRUE(Journals_Left_Behind(Place()).empty());
}

TEST_F(Journal, Only_Its_Own_Kind_Of_File_Is_Taken_Over)
{
    std::filesystem::create_directories(Place());
    Put_File(Place() + "/notes.txt", "x");
    Put_File(Place() + "/rename-1.journal", "x");
    std::filesystem::create_directory(Place() + "/work-folder.journal");
    std::filesystem::create_symlink("../notes.txt", Place() + "/work-link.journal");
    ASSERT_EQ(0, mkfifo((Place() + "/work-pipe.journal").c_str(), 0600));
    EXPECT_TRUE(Journals_Left_Behind(Place()).empty());
}

} // namespace
