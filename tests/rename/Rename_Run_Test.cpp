#include "rename/Rename_Run.h"

#include "evaluate/System_Host.h"
#include "frame/text/Text_Utilities.h"
#include "tests/rename/Files_In_Memory.h"
#include "tests/rename/Rename_Reference.h"

#include <gtest/gtest.h>
#include <random>

namespace {

const std::string Folder = "/p/";

std::vector<Rename_Move> Swap_And_Chain()
{
    return {{Folder, "a", "b"}, {Folder, "b", "a"}, {Folder, "c", "d"}, {Folder, "d", "e"}};
}

Files_In_Memory Four_Files()
{
    Files_In_Memory files;
    for (int i = 0; i < 4; ++i) files.Put(Folder + char('a' + i), i + 1);
    return files;
}

TEST(Rename_Run, Renames_And_Takes_Back)
{
    Files_In_Memory files = Four_Files();
    const auto before = files.All();
    Journal_In_Memory journal;
    ASSERT_TRUE(Run_Plan(Rename_Plan(files, Swap_And_Chain()), files, journal));
    EXPECT_TRUE(journal.done);
    EXPECT_EQ(files.All(), (std::map<std::string, int>{{"/p/a", 2}, {"/p/b", 1}, {"/p/d", 3}, {"/p/e", 4}}));
    const auto record = *journal.record;
    ASSERT_TRUE(Run_Plan(Rename_Plan(files, Moves_Back(record, files)), files, journal));
    EXPECT_EQ(files.All(), before);
}

TEST(Rename_Run, A_Plan_With_A_Fault_Touches_Nothing)
{
    Files_In_Memory files = Four_Files();
    Journal_In_Memory journal;
    const auto done = Run_Plan(Rename_Plan(files, {{Folder, "a", "x"}, {Folder, "b", ""}}), files, journal);
    ASSERT_FALSE(done);
    EXPECT_EQ(done.error().text, "b: the new name is empty");
    EXPECT_EQ(files.calls, 0);
    EXPECT_FALSE(journal.record);
}

TEST(Rename_Run, Without_A_Journal_Nothing_Is_Renamed)
{
    Files_In_Memory files = Four_Files();
    Journal_In_Memory journal;
    journal.refuse_begin = true;
    EXPECT_FALSE(Run_Plan(Rename_Plan(files, Swap_And_Chain()), files, journal));
    EXPECT_EQ(files.calls, 0);
}

TEST(Rename_Run, A_Journal_That_Cannot_Be_Finished_Undoes_The_Rename)
{
    Files_In_Memory files = Four_Files();
    const auto before = files.All();
    Journal_In_Memory journal;
    journal.refuse_finish = true;
    EXPECT_FALSE(Run_Plan(Rename_Plan(files, Swap_And_Chain()), files, journal));
    EXPECT_EQ(files.All(), before);
    EXPECT_FALSE(journal.record);
}

TEST(Rename_Run, Names_That_Cannot_Be_Flushed_Are_Undone)
{
    Files_In_Memory files = Four_Files();
    const auto before = files.All();
    files.refuse_flush = true;
    Journal_In_Memory journal;
    const auto done = Run_Plan(Rename_Plan(files, Swap_And_Chain()), files, journal);
    ASSERT_FALSE(done);
    EXPECT_EQ(done.error().text, "/p/: cannot be flushed; no file was renamed");
    EXPECT_EQ(files.All(), before);
    EXPECT_FALSE(journal.record);
}

TEST(Rename_Run, Each_Failing_Step_Leaves_All_Names_As_They_Were)
{
    for (int step = 1; step <= 5; ++step) {
        Files_In_Memory files = Four_Files();
        const auto before = files.All();
        files.fails_at = step;
        Journal_In_Memory journal;
        const auto done = Run_Plan(Rename_Plan(files, Swap_And_Chain()), files, journal);
        ASSERT_FALSE(done) << step;
        EXPECT_NE(done.error().text.find("the disk has had enough; no file was renamed"), std::string::npos);
        EXPECT_EQ(files.All(), before) << step;
        EXPECT_FALSE(journal.record) << step;
    }
}

TEST(Rename_Run, When_Nothing_Can_Be_Undone_The_Text_Says_Where_Each_File_Is)
{
    Files_In_Memory files = Four_Files();
    files.fails_at = 3;
    files.fails_from_then_on = true;
    Journal_In_Memory journal;
    const auto done = Run_Plan(Rename_Plan(files, Swap_And_Chain()), files, journal);
    ASSERT_FALSE(done);
    EXPECT_NE(done.error().text.find("; /p/b is now /p/a; /p/a is now /p/.rename-1.halvine"), std::string::npos)
        << done.error().text;
    ASSERT_TRUE(journal.record) << "the next start can put it right";
    const auto before = Four_Files().All();
    files.fails_at = -1;
    ASSERT_TRUE(Put_Right(*journal.record, files));
    EXPECT_EQ(files.All(), before);
}

TEST(Rename_Run, An_Interruption_At_Each_Step_Is_Put_Right)
{
    for (int step = 1; step <= 6; ++step) {
        Files_In_Memory files = Four_Files();
        const auto before = files.All();
        files.switched_off_at = step;
        Journal_In_Memory journal;
        journal.refuse_finish = step == 6; // switched off behind the last step
        const Rename_Plan plan(files, Swap_And_Chain());
        try {
            (void)Run_Plan(plan, files, journal);
        } catch (const Files_In_Memory::Switched_Off&) {
        }
        files.switched_off_at = -1;
        ASSERT_TRUE(journal.record) << step;
        ASSERT_TRUE(Put_Right(*journal.record, files)) << step;
        EXPECT_EQ(files.All(), before) << step;
        ASSERT_TRUE(Put_Right(*journal.record, files)) << "a second time does nothing";
        EXPECT_EQ(files.All(), before) << step;
    }
}

TEST(Rename_Run, Files_That_Were_Numbered_Anew_By_Their_Disk_Are_Put_Right_By_Their_Names)
{
    for (std::size_t done = 0; done <= 2; ++done) {
        Files_In_Memory files = Four_Files();
        const Rename_Plan plan(files, {{Folder, "c", "d"}, {Folder, "d", "e"}});
        const Rename_Record record{plan.Moves(), plan.Steps()};
        for (std::size_t i = 0; i < done; ++i) ASSERT_TRUE(files.Rename(plan.Steps()[i].from, plan.Steps()[i].to));
        Files_In_Memory mounted_again;
        for (const auto& [path, file] : files.All()) mounted_again.Put(path, file + 10);
        ASSERT_TRUE(Put_Right(record, mounted_again)) << done;
        EXPECT_EQ(mounted_again.All(),
                  (std::map<std::string, int>{{"/p/a", 11}, {"/p/b", 12}, {"/p/c", 13}, {"/p/d", 14}}))
            << done;
    }
}

TEST(Rename_Run, A_Folder_That_Others_Changed_Keeps_No_Temporary_Names)
{
    Files_In_Memory files = Four_Files();
    const Rename_Plan plan(files, Swap_And_Chain());
    const Rename_Record record{plan.Moves(), plan.Steps()};
    ASSERT_TRUE(files.Rename("/p/a", "/p/.rename-1.halvine"));
    ASSERT_TRUE(files.Rename("/p/d", "/p/elsewhere"));
    const auto mended = Put_Right(record, files);
    ASSERT_FALSE(mended);
    EXPECT_EQ(files.At("/p/a"), 1);
    EXPECT_EQ(files.At("/p/elsewhere"), 4);
}

TEST(Rename_Run, A_File_Whose_Old_Name_Is_Taken_Goes_On_From_Its_Temporary_Name)
{
    Files_In_Memory files;
    files.Put("/p/.rename-1.halvine", 1);
    files.Put("/p/a", 2);
    const std::vector<Rename_Step> steps = Rename_Plan(Four_Files(), {{Folder, "a", "b"}, {Folder, "b", "a"}}).Steps();
    EXPECT_EQ(Leave_Temporary_Names({.moves = {}, .steps = steps}, files), "; /p/a is now /p/b; /p/b is now /p/a");
    EXPECT_EQ(files.All(), (std::map<std::string, int>{{"/p/a", 2}, {"/p/b", 1}}));
}

TEST(Rename_Run, A_File_Goes_On_When_Its_Old_Name_Is_Not_Known)
{
    Files_In_Memory files;
    files.Put("/p/.rename-1.halvine", 1);
    const Rename_Record part{.moves = {}, .steps = {{"/p/.rename-1.halvine", "/p/b", {1, 1}}}};
    EXPECT_EQ(Leave_Temporary_Names(part, files), "");
    EXPECT_EQ(files.All(), (std::map<std::string, int>{{"/p/b", 1}}));
    files.Put("/p/.rename-1.halvine", 2);
    EXPECT_EQ(Leave_Temporary_Names(part, files), "; what was to be /p/b is now /p/.rename-1.halvine");
}

TEST(Rename_Run, Files_That_Are_Gone_Do_Not_Bar_The_Way_Back)
{
    Files_In_Memory files;
    files.Put("/p/x", 1);
    const Rename_Record record{.moves = {{Folder, "a", "x"}, {Folder, "b", "y"}}, .steps = {}};
    EXPECT_EQ(Moves_Back(record, files), (std::vector<Rename_Move>{{Folder, "x", "a"}}));
}

/// A folder of files with names out of few letters, a job on them as a user would type it, and names of his own here and
/// there, so that swaps, rings, changes of case and collisions are common.
class Random_Rename {
public:
    explicit Random_Rename(unsigned seed) : random_(seed) {}

    Files_In_Memory files;
    std::vector<Rename_Row> rows;
    Rename_Inputs inputs;

    void Make()
    {
        files = {};
        files.ignores_case = Number(3) == 0;
        rows.clear();
        const int count = Number(7) + 1;
        for (int i = 1; i <= count; ++i) {
            const QString name = File_Name();
            const std::string path = Folder + name.toStdString();
            if (files.At(path) != 0) continue;
            files.Put(path, i);
            if (Number(5) != 0) rows.push_back({.folder = "/p/", .file_name = name});
        }
        inputs = {.change_from = Pick({"a", "A", "b", "1", "ab"}), .change_to = Pick({"a", "b", "B", "", "?", "x/"})};
        inputs.pattern_mode = Number(3) == 0;
        if (inputs.pattern_mode) inputs.change_from = Pick({"?", "[ab]", "*1", "*"});
        inputs.reserialize = Number(3) == 0;
    }
    QString Own_Name() { return Number(3) == 0 ? rows[std::size_t(Number(int(rows.size())))].file_name : File_Name(); }
    int Number(int below) { return int(random_() % unsigned(below)); }

private:
    QString Pick(const QStringList& texts) { return texts[Number(int(texts.size()))]; }
    QString File_Name() { return Pick({"a", "b", "A"}) + Pick({"", "1", "2", "01", "b"}) + Pick({"", ".j"}); }
    std::mt19937 random_;
};

/// What a rename must have left behind, whatever happened to it.
void Expect_Renamed(const Random_Rename& random, const std::map<std::string, int>& before,
                    const std::vector<Rename_Move>& moves)
{
    std::map<std::string, int> expected = before;
    for (const Rename_Move& move : moves) expected.erase(move.folder + move.old_name);
    for (const Rename_Move& move : moves) {
        ASSERT_EQ(expected.count(move.folder + move.new_name), 0U) << "a file was written over";
        expected[move.folder + move.new_name] = before.at(move.folder + move.old_name);
    }
    ASSERT_EQ(random.files.All(), expected);
}

struct Tally {
    int refused = 0, rings = 0, undone = 0, interrupted = 0, taken_back = 0;
};

void Check_Random_Rename(Random_Rename& random, Formula::System_Host& host, Tally& tally)
{
    random.Make();
    if (random.rows.empty()) return;
    Rename_Job job(host, random.rows);
    random.inputs.start_numbering = job.Inputs().start_numbering;
    job.Set_Inputs(random.inputs);
    QStringList names;
    for (const Rename_Row& row : job.Rows()) names << row.new_name;
    ASSERT_EQ(names, Reference_Names(random.rows, random.inputs, {}, nullptr).names);
    const bool shift_names = random.Number(5) == 0; // each takes the name of the next one
    for (std::size_t i = 0; i < job.Rows().size(); ++i)
        if (shift_names || random.Number(3) == 0)
            job.Set_User_Name(i, shift_names ? random.rows[(i + 1) % random.rows.size()].file_name : random.Own_Name());

    std::vector<Rename_Move> moves;
    for (const Rename_Row& row : job.Rows())
        moves.push_back({Folder, File_System_Bytes(row.file_name), File_System_Bytes(row.Final_Name())});
    const auto before = random.files.All();
    Journal_In_Memory journal;
    const Rename_Plan plan(random.files, moves);
    tally.refused += plan.Faults().empty() ? 0 : 1;
    tally.rings += plan.Steps().size() > plan.Moves().size() ? 1 : 0;
    const int what = random.Number(4);
    if (what == 1) random.files.fails_at = random.Number(6) + 1;
    if (what == 2) random.files.switched_off_at = random.Number(6) + 1;
    bool done = false;
    try {
        done = Run_Plan(plan, random.files, journal).has_value();
    } catch (const Files_In_Memory::Switched_Off&) {
        ASSERT_TRUE(Put_Right(*journal.record, random.files));
        ++tally.interrupted;
    }
    tally.undone += !done && plan.Faults().empty() && what == 1 ? 1 : 0;
    random.files.fails_at = random.files.switched_off_at = -1;
    if (!done) {
        ASSERT_EQ(random.files.All(), before);
        return;
    }
    ASSERT_NO_FATAL_FAILURE(Expect_Renamed(random, before, plan.Moves()));
    if (!journal.record) return; // nothing changed its name
    const Rename_Plan back(random.files, Moves_Back(*journal.record, random.files));
    ASSERT_TRUE(Run_Plan(back, random.files, journal));
    ASSERT_EQ(random.files.All(), before);
    ++tally.taken_back;
}

TEST(Rename_Run, Loses_Nothing_In_100000_Random_Renames)
{
    Formula::System_Host host;
    Tally tally;
    for (unsigned seed = 1; seed <= 100'000; ++seed) {
        Random_Rename random(seed);
        ASSERT_NO_FATAL_FAILURE(Check_Random_Rename(random, host, tally)) << "seed " << seed;
    }
    EXPECT_GT(tally.refused, 10'000) << "every way is gone often";
    EXPECT_GT(tally.rings, 1'000);
    EXPECT_GT(tally.undone, 1'000);
    EXPECT_GT(tally.interrupted, 1'000);
    EXPECT_GT(tally.taken_back, 10'000);
}

} // namespace
