// A move under every kind of misfortune: the whole picture stands under one of its names, or under both.

#include "frame/files/Move_File.h"
#include "tests/support/Failing_Calls.h"
#include "tests/support/Test_Folder.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <random>
#include <sched.h>
#include <set>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

class Move_Safety : public testing::Test {
protected:
    Move_Safety()
    {
        fs::create_directory(folder.File("from"));
        fs::create_directory(folder.File("to"));
    }
    ~Move_Safety() override { Failing_Calls::Refuse_Nothing(); }

    /// For each call of a move in turn, it fails. `old` stands under the target before; empty: nothing does.
    void Fail_Every_Call(int error_number, bool across, const std::string& old)
    {
        for (int n = 1; n < 300; ++n) {
            fs::remove_all(folder.File("to"));
            fs::create_directory(folder.File("to"));
            Put_File(source, picture);
            if (!old.empty()) Put_File(target, old);
            bool moved = false;
            bool reached = false;
            std::string call;
            if (across) {
                Failing_Calls::Refuse_Once("renameat2", EXDEV);
                Failing_Calls::Refuse_Once("rename", EXDEV);
            }
            {
                const Failing_Calls plan(n, error_number);
                moved = bool(Move_Whole_File(source, target, old.empty() ? When_Taken::Refuse : When_Taken::Replace));
                reached = plan.Was_Reached();
                call = plan.Name();
            }
            Failing_Calls::Refuse_Nothing();
            SCOPED_TRACE(testing::Message() << "call " << n << ", " << call);
            const std::string at_source = Contents_Of(source);
            const std::string at_target = Contents_Of(target);
            EXPECT_EQ(moved ? "" : picture, at_source);
            EXPECT_TRUE(at_target == old || at_target == picture) << at_target.size();
            if (moved) {
                EXPECT_EQ(picture, at_target);
            }
            for (const char* place : {"from", "to"})
                for (const auto& entry : fs::directory_iterator(folder.File(place)))
                    EXPECT_EQ("a.jpg", entry.path().filename()) << place;
            if (!reached) {
                EXPECT_TRUE(moved);
                EXPECT_GT(n, across ? 12 : 2);
                return;
            }
        }
        FAIL() << "a move does not come to an end";
    }

    Test_Folder folder;
    std::string source = folder.File("from") + "/a.jpg";
    std::string target = folder.File("to") + "/a.jpg";
    std::string picture = std::string(300'000, 'p') + "end";
};

/// Moves the picture to and fro, by a rename and by a copy in turn, until it is killed. Runs in a child process.
[[noreturn]] void Move_For_Ever(const std::string& one, const std::string& two, int ready, int first)
{
    if (write(ready, "x", 1) != 1) _exit(1);
    for (int i = first;; ++i) {
        if (i % 4 < 3) {
            Failing_Calls::Refuse_Once("renameat2", EXDEV);
            Failing_Calls::Refuse_Once("rename", EXDEV);
        }
        const bool there = access(one.c_str(), F_OK) == 0;
        (void)Move_Whole_File(there ? one : two, there ? two : one, When_Taken::Replace);
        Failing_Calls::Refuse_Nothing();
    }
}

TEST_F(Move_Safety, A_Process_Killed_At_Any_Instant_Leaves_The_Whole_Picture)
{
    const char* told = std::getenv("HALVINE_TEST_KILLS");
    const int kills = told != nullptr && std::atoi(told) > 0 ? std::atoi(told) : 1000;
    const unsigned seed = 20260314;
    std::mt19937 random(seed);
    std::set<std::string> seen; // which names held it
    Put_File(source, picture);
    for (int round = 0; round < kills; ++round) {
        int ready[2];
        ASSERT_EQ(0, pipe(ready));
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) Move_For_Ever(source, target, ready[1], round);
        close(ready[1]);
        char byte = 0;
        ASSERT_EQ(1, read(ready[0], &byte, 1));
        close(ready[0]);
        usleep(random() % 3'000);
        kill(child, SIGKILL);
        int status = 0;
        ASSERT_EQ(child, waitpid(child, &status, 0));
        ASSERT_TRUE(WIFSIGNALED(status)) << "seed " << seed << " round " << round;
        std::string held;
        for (const std::string& name : {source, target}) {
            if (!fs::exists(name)) continue;
            ASSERT_EQ(picture, Contents_Of(name)) << name << ", seed " << seed << " round " << round;
            held += name == source ? "from " : "to ";
        }
        ASSERT_NE("", held) << "seed " << seed << " round " << round;
        seen.insert(held);
        for (const char* place : {"from", "to"}) // as the next listing would
            for (const auto& entry : fs::directory_iterator(folder.File(place)))
                if (entry.path().filename() != "a.jpg") fs::remove(entry.path());
    }
    EXPECT_GE(seen.size(), 2U) << "no move came through: the test shows nothing";
}

TEST_F(Move_Safety, Every_Failing_Call_Within_One_File_System)
{
    Fail_Every_Call(EIO, false, {});
    Fail_Every_Call(EACCES, false, "another picture");
}

TEST_F(Move_Safety, Every_Failing_Call_Across_File_Systems)
{
    Fail_Every_Call(EIO, true, {});
    Fail_Every_Call(ENOSPC, true, "another picture");
}

TEST_F(Move_Safety, Into_A_Full_File_System_Leaves_The_Picture_And_No_Half_One)
{
    Put_File(source, picture);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        if (unshare(geteuid() == 0 ? CLONE_NEWNS : CLONE_NEWUSER | CLONE_NEWNS) != 0) _exit(77);
        if (mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0) _exit(77);
        if (mount("tmpfs", folder.File("to").c_str(), "tmpfs", 0, "size=65536") != 0) _exit(77);
        const auto moved = Move_Whole_File(source, target);
        const bool whole = Contents_Of(source) == picture && fs::is_empty(folder.File("to"));
        if (moved || !whole || moved.error().number != ENOSPC) _exit(1);
        Put_File(source, "small");
        _exit(Move_Whole_File(source, target) && Contents_Of(target) == "small" && !fs::exists(source) ? 0 : 2);
    }
    int status = 0;
    ASSERT_EQ(child, waitpid(child, &status, 0));
    ASSERT_TRUE(WIFEXITED(status));
    if (WEXITSTATUS(status) == 77) GTEST_SKIP() << "this machine mounts nothing for a test";
    EXPECT_EQ(0, WEXITSTATUS(status)) << "1 moved or lost, 2 a real move across file systems failed";
}

} // namespace
