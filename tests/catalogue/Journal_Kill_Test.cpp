// A program that is killed at any instant loses nothing that was flushed.

#include "catalogue/Work_Journal.h"
#include "tests/catalogue/Catalogue_Fixture.h"
#include "tests/support/Test_Folder.h"

#include <atomic>
#include <csignal>
#include <filesystem>
#include <random>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// What the child tells its parent, who outlives it.
struct Told {
    std::atomic<int> changed; ///< number of the last change
    std::atomic<int> flushed; ///< the last one that stood on the disk for sure
};

class Journal_Kill : public Catalogue_Test {
protected:
    Journal_Kill()
    {
        void* memory = mmap(nullptr, sizeof(Told), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
        told = new (memory) Told{};
    }
    ~Journal_Kill() override { munmap(told, sizeof(Told)); }

    /// Changes one of two pictures after another, and looks for changes now and then, as the timer does.
    [[noreturn]] void Work_For_Ever(unsigned seed)
    {
        std::mt19937 random(seed);
        Work_Journal journal(form.State(), QString::fromStdString(state.Path()));
        for (int i = 1;; ++i) {
            form.Set_Picture_All_Script_Items(1, QString("Crop(%1,0,0,0)").arg(i));
            if (i % 50 == 0) Item(2).Rotate = i / 50 % 4 * 90;
            told->changed = i;
            if (random() % 4 == 0 && journal.Write_Changes()) told->flushed = i;
        }
    }

    Test_Folder state;
    Told* told = nullptr;
};

TEST_F(Journal_Kill, Loses_Only_What_Came_After_The_Last_Flush)
{
    Add("a.jpg", "Crop(0,0,0,0)");
    Add("b.jpg");
    constexpr int Kills = 200;
    const unsigned seed = 20260314;
    std::mt19937 random(seed);
    int flushed_runs = 0;
    for (int round = 0; round < Kills; ++round) {
        told->changed = told->flushed = 0;
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) Work_For_Ever(unsigned(round));
        const int flushes = int(random() % 4);
        for (int waits = 0; told->flushed < flushes && waits < 2'000; ++waits) usleep(100);
        usleep(random() % 3'000);
        kill(child, SIGKILL);
        int status = 0;
        ASSERT_EQ(child, waitpid(child, &status, 0));
        ASSERT_TRUE(WIFSIGNALED(status)) << "seed " << seed << " round " << round;
        int found = 0;
        for (const std::string& path : Journals_Left_Behind(state.Path())) {
            const Kept_Work work = Read_Journal_Text(QByteArray::fromStdString(Contents_Of(path)));
            for (const Kept_Picture& picture : work.pictures)
                if (picture.key == 1 && picture.script) found = picture.script->mid(5).section(u',', 0, 0).toInt();
        }
        ASSERT_GE(found, told->flushed) << "seed " << seed << " round " << round;
        ASSERT_LE(found, told->changed + 1) << "seed " << seed << " round " << round;
        if (told->flushed > 0) ++flushed_runs;
        for (const auto& entry : std::filesystem::directory_iterator(state.Path()))
            std::filesystem::remove(entry.path());
    }
    EXPECT_GT(flushed_runs, Kills / 10) << "too few children lived to flush: the test shows nothing";
}

} // namespace
