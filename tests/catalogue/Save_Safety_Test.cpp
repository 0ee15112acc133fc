// A save onto the original under every kind of misfortune: the picture under its name is always whole.

#include "tests/catalogue/Picture_Fixture.h"
#include "tests/support/Failing_Calls.h"

#include <cerrno>
#include <csignal>
#include <filesystem>
#include <random>
#include <sched.h>
#include <set>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

const std::vector<int> Clear_Nothing{0};

class Save_Safety : public Picture_Test {
protected:
    ~Save_Safety() override { Failing_Calls::Refuse_Nothing(); }

    /// One whole save of new pixels onto the original, from the loaded record on.
    bool Save(int key) { return form.Save_Adjusted_Picture(key, new_pixels.Get(), {}, {}, Clear_Nothing, true); }

    /// For each call of a save in turn: it fails, and the name holds the old or the new picture.
    void Fail_Every_Call(int error_number)
    {
        for (int n = 1; n < 500; ++n) {
            form.Discard_All();
            for (const std::string& name : folder.Names()) std::filesystem::remove(folder.File(name));
            Put_File(File("a.jpg"), old_contents);
            const int key = Pick(Path("a.jpg"));
            platform.dialogs.asked.clear();
            bool saved = false;
            bool reached = false;
            std::string call;
            {
                const Failing_Calls plan(n, error_number);
                saved = Save(key);
                reached = plan.Was_Reached();
                call = plan.Name();
            }
            SCOPED_TRACE(testing::Message() << "call " << n << ", " << call);
            File_Dimensions facts;
            ASSERT_TRUE(Get_Dimensions(Path("a.jpg"), 0, facts));
            EXPECT_TRUE(bool(Owned_Bitmap(Load_Bitmap(Path("a.jpg"), 0, 1, 0))));
            EXPECT_EQ(saved ? 80 : 160, facts.width) << "failed and changed, or saved and unchanged";
            if (!saved && !platform.dialogs.asked.empty()) {
                EXPECT_TRUE(Last_Message().startsWith("Error saving picture to " + Path("a.jpg")) ||
                            Last_Message().contains("was changed by another"))
                    << Last_Message().toStdString();
            }
            if (!reached) {
                EXPECT_TRUE(saved) << Last_Message().toStdString() << "; " << Names().join(' ').toStdString();
                EXPECT_GT(n, 10);
                return;
            }
        }
        FAIL() << "a save does not come to an end";
    }

    Owned_Bitmap new_pixels = Drawn_Bitmap(80, 50, 9);
    QString path = Make("a.jpg");
    std::string old_contents = Contents_Of(File("a.jpg"));
};

// The first test of its program: a child of fork has no threads, so the kernel must not have started any before.

/// Saves again and again, with ever changing texts and pixels, until it is killed. Runs in a child process; `first` sets
/// what it begins with, for few children live to make many saves.
[[noreturn]] void Save_For_Ever(const QString& path, int ready, int first)
{
    Scripted_Platform platform;
    platform.dialogs.answers.assign(100000, Message_Answer::Yes);
    Halvine_Form form(platform.platform);
    form.Add_Picture_By_File_Name(path);
    const Owned_Bitmap pixels = Drawn_Bitmap(160, 96, 3);
    if (write(ready, "x", 1) != 1) _exit(1);
    for (int i = first;; ++i) {
        form.Set_Picture_All_Script_Items(1, QString("Crop(%1,0,0,0)").arg(i % 7));
        if (i % 2 == 0)
            form.Saving().Save_Texts(1);
        else
            form.Save_Adjusted_Picture(1, pixels.Get(), {}, {}, Clear_Nothing, false);
    }
}

/// Under the sanitizers a child takes ten times as long.
#ifdef __SANITIZE_ADDRESS__
constexpr int Kills_Untold = 100;
constexpr unsigned Longest_Life_Microseconds = 40'000;
#else
constexpr int Kills_Untold = 2000;
constexpr unsigned Longest_Life_Microseconds = 4'000;
#endif

TEST_F(Save_Safety, A_Process_Killed_At_Any_Instant_Leaves_A_Whole_Picture)
{
    const int told = qEnvironmentVariableIntValue("HALVINE_TEST_KILLS");
    const int kills = told > 0 ? told : Kills_Untold;
    const unsigned seed = 20260314;
    std::mt19937 random(seed);
    std::set<std::string> seen;
    for (int round = 0; round < kills; ++round) {
        int ready[2];
        ASSERT_EQ(0, pipe(ready));
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) Save_For_Ever(path, ready[1], round);
        close(ready[1]); // a child that dies early ends the wait
        char byte = 0;
        ASSERT_EQ(1, read(ready[0], &byte, 1));
        close(ready[0]);
        usleep(random() % Longest_Life_Microseconds);
        kill(child, SIGKILL);
        int status = 0;
        ASSERT_EQ(child, waitpid(child, &status, 0));
        ASSERT_TRUE(WIFSIGNALED(status)) << "seed " << seed << " round " << round;
        const std::string contents = Contents_Of(File("a.jpg"));
        seen.insert(contents);
        ASSERT_GT(contents.size(), 100U) << "seed " << seed << " round " << round;
        ASSERT_EQ("\xFF\xD8", contents.substr(0, 2));
        ASSERT_EQ("\xFF\xD9", contents.substr(contents.size() - 2)) << "seed " << seed << " round " << round;
        for (const std::string& name : folder.Names())
            if (name != "a.jpg") std::filesystem::remove(folder.File(name)); // as the next listing would
        if (round % 20 == 0) {
            // In a child too: loading may start threads, and the next fork must find none.
            const int answer = In_A_Child([&] { return Owned_Bitmap(Load_Bitmap(path, 0, 1, 0)) ? 0 : 1; });
            ASSERT_EQ(0, answer) << "seed " << seed << " round " << round;
        }
    }
    EXPECT_GT(seen.size(), 3U) << "no save came through: the test shows nothing";
}

TEST_F(Save_Safety, Every_Failing_Call_Leaves_A_Whole_Picture)
{
    Fail_Every_Call(EIO);
}

TEST_F(Save_Safety, Every_Failing_Call_Leaves_A_Whole_Picture_On_A_File_System_Without_Links)
{
    Failing_Calls::Refuse_Always("link", EPERM);
    Fail_Every_Call(ENOSPC);
}

TEST_F(Save_Safety, Every_Failing_Call_Of_A_Save_As_A_Copy_Leaves_The_Old_Copy_Or_The_New_One)
{
    const int key = Pick(path);
    form.Set_Picture_Key_Selected(key, true);
    form.Set_Picture_All_Script_Items(key, "Crop(1,2,3,4)");
    const std::string old_copy = Contents_Of(File(Make("a-hv.jpg", 80, 50).section('/', -1)));
    for (int n = 1; n < 300; ++n) {
        Put_File(File("a-hv.jpg"), old_copy);
        platform.dialogs.answers = {Message_Answer::Yes};
        int saved = 0;
        bool reached = false;
        std::string call;
        {
            const Failing_Calls plan(n, EIO);
            saved = form.Save_Selected_As(
                {.Script_Option = Save_Options::Scripts::Save_With, .Save_Option = Save_Options::Target::Auto_Copy});
            reached = plan.Was_Reached();
            call = plan.Name();
        }
        SCOPED_TRACE(testing::Message() << "call " << n << ", " << call);
        const std::string copy = Contents_Of(File("a-hv.jpg"));
        EXPECT_EQ(old_contents, Contents_Of(File("a.jpg")));
        EXPECT_TRUE(copy == old_copy || (copy.starts_with("\xFF\xD8") && copy.ends_with("\xFF\xD9")));
        EXPECT_TRUE(saved == 0 || copy != old_copy);
        EXPECT_EQ((QStringList{"a-hv.jpg", "a.jpg"}), Names());
        if (!reached) {
            EXPECT_EQ(1, saved);
            EXPECT_GT(n, 6);
            return;
        }
    }
    FAIL() << "a save does not come to an end";
}

TEST_F(Save_Safety, A_Full_File_System_Gives_The_Message_And_Keeps_The_Picture)
{
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        if (unshare(geteuid() == 0 ? CLONE_NEWNS : CLONE_NEWUSER | CLONE_NEWNS) != 0) _exit(77);
        if (mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0) _exit(77);
        const std::string place = folder.Path();
        const std::string size = "size=" + std::to_string((old_contents.size() / 4096 + 1) * 4096 + 4096);
        if (mount("tmpfs", place.c_str(), "tmpfs", 0, size.c_str()) != 0) _exit(77);
        Put_File(File("a.jpg"), old_contents);
        const int key = Pick(path);
        const Owned_Bitmap large = Drawn_Bitmap(1600, 1200, 5);
        const bool saved = form.Save_Adjusted_Picture(key, large.Get(), {}, {}, Clear_Nothing, true);
        const bool whole = Contents_Of(File("a.jpg")) == old_contents && folder.Names().size() == 1;
        const bool told = Last_Message().startsWith("Error saving picture to " + path);
        _exit(saved ? 1 : !whole ? 2 : !told ? 3 : 0);
    }
    int status = 0;
    ASSERT_EQ(child, waitpid(child, &status, 0));
    ASSERT_TRUE(WIFEXITED(status));
    if (WEXITSTATUS(status) == 77) GTEST_SKIP() << "this machine mounts nothing for a test";
    EXPECT_EQ(0, WEXITSTATUS(status)) << "1 saved, 2 the picture changed, 3 another message";
}

TEST_F(Save_Safety, A_Read_Only_Folder_Gives_The_Message_And_Keeps_The_Picture)
{
    const int key = Pick(path);
    chmod(folder.Path().c_str(), 0555);
    chmod(File("a.jpg").c_str(), 0666);
    const int answer = As_Ordinary_User([&] {
        const bool saved = Save(key);
        return !saved && Last_Message().startsWith("Error saving picture to " + path) ? 0 : 1;
    });
    EXPECT_EQ(0, answer);
    EXPECT_EQ(old_contents, Contents_Of(File("a.jpg")));
}

} // namespace
