// A program that is killed at any instant loses nothing that was flushed, and no more than a second of work.

#include "catalogue/Catalogue_Commands.h"
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

    /// One command over all pictures, each of which takes some time. No event is processed meanwhile.
    [[noreturn]] void Run_Long_Command()
    {
        struct Slow_View : Recording_View {
            void Draw_Thumbnail(int) override
            {
                clock->now = clock->now.addMSecs(Milliseconds_A_Picture);
                ++told->changed;
            }
            Scripted_Clock* clock = nullptr;
            Told* told = nullptr;
        } slow;
        slow.clock = &platform.clock;
        slow.told = told;
        Work_Journal journal(form.State(), QString::fromStdString(state.Path()));
        journal.Write_Changes();
        form.Set_Work_Keeper(&journal);
        form.Set_View(&slow);
        Window_Host host;
        Catalogue_Commands(form, host).Run({Menu::Rotate, 101});
        told->flushed = 1; // the command has ended
        for (;;) pause();
    }

    Kept_Work Left_Behind() const
    {
        for (const std::string& path : Journals_Left_Behind(state.Path()))
            return Read_Journal_Text(QByteArray::fromStdString(Contents_Of(path)));
        return {};
    }
    void Kill_And_Await(pid_t child)
    {
        kill(child, SIGKILL);
        int status = 0;
        ASSERT_EQ(child, waitpid(child, &status, 0));
        ASSERT_TRUE(WIFSIGNALED(status));
    }
    void Empty_Folder() const
    {
        for (const auto& entry : std::filesystem::directory_iterator(state.Path()))
            std::filesystem::remove(entry.path());
    }

    static constexpr int Milliseconds_A_Picture = 20;
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
        Kill_And_Await(child);
        int found = 0;
        for (const Kept_Picture& picture : Left_Behind().pictures)
            if (picture.key == 1 && picture.script) found = picture.script->mid(5).section(u',', 0, 0).toInt();
        ASSERT_GE(found, told->flushed) << "seed " << seed << " round " << round;
        ASSERT_LE(found, told->changed + 1) << "seed " << seed << " round " << round;
        if (told->flushed > 0) ++flushed_runs;
        Empty_Folder();
    }
    EXPECT_GT(flushed_runs, Kills / 10) << "too few children lived to flush: the test shows nothing";
}

TEST_F(Journal_Kill, In_The_Middle_Of_A_Long_Command_Loses_Its_Last_Second_At_Most)
{
    constexpr int Pictures = 1'000, Kills = 100, Pictures_A_Second = 1'000 / Milliseconds_A_Picture;
    for (int i = 1; i <= Pictures; ++i) form.Set_Picture_Key_Selected(Add(QStringLiteral("%1.jpg").arg(i)), true);
    const unsigned seed = 20260315;
    std::mt19937 random(seed);
    int in_the_middle = 0;
    for (int round = 0; round < Kills; ++round) {
        told->changed = told->flushed = 0;
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) Run_Long_Command();
        const int least = int(random() % Pictures);
        for (int waits = 0; told->changed < least && waits < 100'000; ++waits) usleep(20);
        Kill_And_Await(child);
        if (told->changed > Pictures_A_Second && told->flushed == 0) ++in_the_middle;
        const Kept_Work work = Left_Behind();
        const auto kept = std::count_if(work.pictures.begin(), work.pictures.end(),
                                        [](const Kept_Picture& one) { return one.rotate != 0; });
        ASSERT_EQ(std::size_t(Pictures), work.pictures.size()) << "seed " << seed << " round " << round;
        ASSERT_GE(kept, told->changed - Pictures_A_Second) << "seed " << seed << " round " << round;
        Empty_Folder();
    }
    EXPECT_GT(in_the_middle, Kills / 4) << "too few kills came in time: the test shows nothing";
}

} // namespace
