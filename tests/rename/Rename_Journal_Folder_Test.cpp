#include "rename/Rename_Journal_Folder.h"

#include "tests/support/Test_Folder.h"

#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <random>
#include <set>
#include <sys/stat.h>
#include <unistd.h>

namespace {

class Rename_Journal_Folder_Test : public testing::Test {
protected:
    void Put(const std::string& name) { Put_File(folder.File(name), "picture " + name); }
    std::string What(const std::string& name) const { return Contents_Of(folder.File(name)); }
    std::vector<std::string> Journals() const { return Test_Names(journal_folder); }
    static std::vector<std::string> Test_Names(const std::string& path)
    {
        std::vector<std::string> names;
        if (std::filesystem::exists(path))
            for (const auto& entry : std::filesystem::directory_iterator(path))
                names.push_back(entry.path().filename());
        return names;
    }
    std::vector<Rename_Move> Moves(const std::vector<std::pair<std::string, std::string>>& names) const
    {
        std::vector<Rename_Move> moves;
        for (const auto& [from, to] : names) moves.push_back({folder.Path() + "/", from, to});
        return moves;
    }
    Result<void> Run(const std::vector<std::pair<std::string, std::string>>& names)
    {
        return Run_Plan(Rename_Plan(files, Moves(names)), files, journal);
    }

    Test_Folder folder;
    Test_Folder state;
    std::string journal_folder = state.File("renames");
    System_Rename_Files files;
    Rename_Journal_Folder journal{journal_folder};
};

/// Ends the process at its n-th rename, as a power cut would.
class Files_That_End final : public Rename_Files {
public:
    explicit Files_That_End(int at) : at_(at) {}
    std::optional<Entry> Find(const std::string& path) const override { return files_.Find(path); }
    Result<void> Rename(const std::string& from, const std::string& to) override
    {
        if (--at_ == 0) _exit(7);
        return files_.Rename(from, to);
    }
    Result<void> Flush(const std::string& path) override { return files_.Flush(path); }
    Folder_Rules Rules_Of(const std::string& path) const override { return files_.Rules_Of(path); }

private:
    System_Rename_Files files_;
    int at_;
};

TEST_F(Rename_Journal_Folder_Test, A_Swap_Is_Taken_Back_After_A_Restart)
{
    Put("a.jpg");
    Put("b.jpg");
    ASSERT_TRUE(Run({{"a.jpg", "b.jpg"}, {"b.jpg", "a.jpg"}}));
    EXPECT_EQ(What("a.jpg"), "picture b.jpg");
    Rename_Journal_Folder after_restart(journal_folder);
    const auto back = Take_Back_Last_Rename(after_restart, files);
    ASSERT_TRUE(back) << back.error().text;
    EXPECT_EQ(*back, 2);
    EXPECT_EQ(What("a.jpg"), "picture a.jpg");
    EXPECT_EQ(What("b.jpg"), "picture b.jpg");
    EXPECT_EQ(Take_Back_Last_Rename(after_restart, files).value_or(-1), 0) << "nothing is left to take back";
    EXPECT_TRUE(Journals().empty());
}

TEST_F(Rename_Journal_Folder_Test, Several_Renames_Are_Taken_Back_One_After_The_Other)
{
    Put("a");
    ASSERT_TRUE(Run({{"a", "b"}}));
    ASSERT_TRUE(Run({{"b", "c"}}));
    EXPECT_EQ(Take_Back_Last_Rename(journal, files).value_or(-1), 1);
    EXPECT_EQ(What("b"), "picture a");
    EXPECT_EQ(Take_Back_Last_Rename(journal, files).value_or(-1), 1);
    EXPECT_EQ(What("a"), "picture a");
}

TEST_F(Rename_Journal_Folder_Test, A_Way_Back_Onto_A_Name_That_Is_Taken_Changes_Nothing)
{
    Put("a");
    ASSERT_TRUE(Run({{"a", "b"}}));
    Put("a");
    const auto back = Take_Back_Last_Rename(journal, files);
    ASSERT_FALSE(back);
    EXPECT_NE(back.error().text.find("taken"), std::string::npos) << back.error().text;
    EXPECT_EQ(folder.Names(), (std::vector<std::string>{"a", "b"}));
    std::filesystem::remove(folder.File("a"));
    EXPECT_EQ(Take_Back_Last_Rename(journal, files).value_or(-1), 1) << "it can be tried again";
}

TEST_F(Rename_Journal_Folder_Test, Names_That_Are_No_Utf_8_Go_And_Come_Back)
{
    Put("K\xf6ln.jpg");
    ASSERT_TRUE(Run({{"K\xf6ln.jpg", "M\xfcnchen.jpg"}}));
    EXPECT_EQ(folder.Names(), std::vector<std::string>{"M\xfcnchen.jpg"});
    EXPECT_EQ(Take_Back_Last_Rename(journal, files).value_or(-1), 1);
    EXPECT_EQ(folder.Names(), std::vector<std::string>{"K\xf6ln.jpg"});
}

TEST_F(Rename_Journal_Folder_Test, A_Process_That_Ends_In_The_Middle_Is_Put_Right_By_The_Next)
{
    for (int end_at = 1; end_at <= 4; ++end_at) {
        Put("a");
        Put("b");
        Put("c");
        const int answer = In_A_Child([&] {
            Files_That_End ending(end_at);
            Rename_Journal_Folder child_journal(journal_folder);
            (void)Run_Plan(Rename_Plan(ending, Moves({{"a", "b"}, {"b", "a"}, {"c", "d"}})), ending, child_journal);
            return 0;
        });
        ASSERT_EQ(answer, 7) << end_at;
        const auto told = journal.Put_Interrupted_Right(files);
        ASSERT_EQ(told.size(), 1U) << end_at;
        EXPECT_EQ(folder.Names(), (std::vector<std::string>{"a", "b", "c"})) << end_at;
        EXPECT_EQ(What("a"), "picture a") << end_at;
        EXPECT_EQ(What("b"), "picture b") << end_at;
        EXPECT_TRUE(journal.Put_Interrupted_Right(files).empty()) << end_at;
        EXPECT_FALSE(journal.Last_Done().value()) << end_at;
    }
}

TEST_F(Rename_Journal_Folder_Test, A_Running_Rename_Is_Left_Alone)
{
    Put("a");
    const Rename_Plan plan(files, Moves({{"a", "b"}}));
    Rename_Journal_Folder running(journal_folder);
    ASSERT_TRUE(running.Begin({plan.Moves(), plan.Steps()}));
    ASSERT_TRUE(files.Rename(folder.File("a"), folder.File("b")));
    EXPECT_TRUE(journal.Put_Interrupted_Right(files).empty());
    EXPECT_EQ(folder.Names(), std::vector<std::string>{"b"});
    ASSERT_TRUE(running.Finish());
    EXPECT_TRUE(journal.Last_Done().value());
}

TEST_F(Rename_Journal_Folder_Test, What_Cannot_Be_Put_Right_Is_Told_Once)
{
    Put("a");
    const Rename_Plan plan(files, Moves({{"a", "b"}}));
    {
        Rename_Journal_Folder ended(journal_folder);
        ASSERT_TRUE(ended.Begin({plan.Moves(), plan.Steps()}));
    }
    std::filesystem::remove(folder.File("a"));
    ASSERT_EQ(journal.Put_Interrupted_Right(files).size(), 1U);
    EXPECT_TRUE(journal.Put_Interrupted_Right(files).empty());
}

TEST_F(Rename_Journal_Folder_Test, Without_A_Place_For_The_Journal_Nothing_Is_Renamed)
{
    Put("a");
    Rename_Journal_Folder nowhere("/proc/no/such/place");
    const auto done = Run_Plan(Rename_Plan(files, Moves({{"a", "b"}})), files, nowhere);
    ASSERT_FALSE(done);
    EXPECT_NE(done.error().text.find("/proc/no/such/place"), std::string::npos);
    EXPECT_EQ(folder.Names(), std::vector<std::string>{"a"});
}

/// A journal of a rename that was interrupted with its first file under a temporary name, as bytes.
class Damaged_Journal_Test : public Rename_Journal_Folder_Test {
protected:
    void SetUp() override
    {
        for (const char* name : {"a", "b", "x"}) Put(name);
        ASSERT_TRUE(Run({{"x", "y"}})); // a rename before, which can be taken back
        const Rename_Plan plan(files, Moves({{"a", "b"}, {"b", "a"}}));
        steps = plan.Steps();
        whole = "B\n" + Text_Of_Record({plan.Moves(), steps}).toStdString();
    }
    void Interrupt()
    {
        if (!files.Find(steps[0].to)) {
            ASSERT_TRUE(files.Rename(steps[0].from, steps[0].to));
        }
    }
    /// The second run of the same check; `told` by the first one.
    void Expect_Told_Once(const std::vector<std::string>& told)
    {
        ASSERT_EQ(told.size(), 1U);
        EXPECT_NE(told[0].find(" is damaged: "), std::string::npos) << told[0];
        EXPECT_NE(told[0].find(aside), std::string::npos) << told[0];
        EXPECT_TRUE(journal.Put_Interrupted_Right(files).empty()) << "told once";
    }
    /// Every picture is there, whatever its name.
    void Expect_All_There()
    {
        std::set<std::string> contents;
        for (const std::string& name : folder.Names()) contents.insert(What(name));
        EXPECT_EQ(contents, (std::set<std::string>{"picture a", "picture b", "picture x"}));
    }

    std::vector<Rename_Step> steps;
    std::string whole; ///< text of the journal
    const std::string path = journal_folder + "/rename-9.journal";
    const std::string aside = journal_folder + "/set-aside-rename-9.journal";
};

TEST_F(Damaged_Journal_Test, Cut_At_Any_Byte_Is_Told_Once_And_Loses_Nothing)
{
    const std::size_t behind_first_step = whole.find("step", whole.find("step") + 1);
    for (std::size_t length = 0; length < whole.size(); ++length) {
        Interrupt();
        Put_File(path, whole.substr(0, length));
        Expect_Told_Once(journal.Put_Interrupted_Right(files));
        EXPECT_EQ(Contents_Of(aside), whole.substr(0, length)) << "for whoever wants to look";
        Expect_All_There();
        if (length >= behind_first_step) {
            EXPECT_EQ(What("a"), "picture a") << "the temporary name is undone, cut at " << length;
        }
    }
    EXPECT_EQ(Take_Back_Last_Rename(journal, files).value_or(-1), 1);
    EXPECT_EQ(What("x"), "picture x") << "the rename before it is taken back all the same";
}

TEST_F(Damaged_Journal_Test, With_Any_Byte_Changed_Is_Told_Once_And_Loses_Nothing)
{
    for (std::size_t at = 0; at < whole.size(); ++at) {
        Interrupt();
        std::string damaged = whole;
        damaged[at] = char(damaged[at] ^ 0x05);
        Put_File(path, damaged);
        Expect_Told_Once(journal.Put_Interrupted_Right(files));
        Expect_All_There();
    }
    EXPECT_EQ(Take_Back_Last_Rename(journal, files).value_or(-1), 1);
}

TEST_F(Damaged_Journal_Test, Tells_What_Is_Damaged_And_Where_The_Files_Are)
{
    Interrupt();
    Put_File(folder.File("a"), "another picture");
    std::string damaged = whole;
    damaged[damaged.find("step") + 1] = 'T';
    Put_File(path, damaged);
    const auto told = journal.Put_Interrupted_Right(files);
    ASSERT_EQ(told.size(), 1U);
    EXPECT_EQ(told[0],
              "The journal of a rename that may have been interrupted is damaged: line 4 was changed; it is kept as " +
                  aside + "; what was to be " + folder.File("b") + " is now " + folder.File(".rename-1.halvine"));
    Put_File(path, whole.substr(0, whole.size() - 3));
    const auto again = journal.Put_Interrupted_Right(files);
    ASSERT_EQ(again.size(), 1U);
    EXPECT_TRUE(again[0].ends_with("; " + folder.File("a") + " is now " + folder.File(".rename-1.halvine")))
        << again[0];
}

TEST_F(Damaged_Journal_Test, Of_The_Last_Rename_Is_Told_And_The_One_Before_Is_The_Next)
{
    std::string damaged = whole;
    damaged[0] = 'D';
    damaged[damaged.size() - 3] ^= 1;
    Put_File(path, damaged);
    EXPECT_TRUE(journal.Put_Interrupted_Right(files).empty()) << "it was done, and nobody asked for it";
    const auto back = Take_Back_Last_Rename(journal, files);
    ASSERT_FALSE(back);
    EXPECT_EQ(back.error().text,
              "The last rename cannot be taken back, for its journal is damaged: line 7 was changed; "
              "it is kept as " +
                  aside + "; the rename before it is the next to be taken back");
    EXPECT_EQ(What("y"), "picture x") << "not taken back unsaid";
    EXPECT_EQ(Take_Back_Last_Rename(journal, files).value_or(-1), 1);
    EXPECT_EQ(What("x"), "picture x");
}

TEST_F(Damaged_Journal_Test, Those_Set_Aside_Are_Pruned)
{
    for (int i = 0; i < 25; ++i) {
        Put_File(journal_folder + "/rename-9" + std::to_string(i + 10) + ".journal", "B");
        EXPECT_EQ(journal.Put_Interrupted_Right(files).size(), 1U);
    }
    ASSERT_TRUE(Run({{"y", "x"}}));
    EXPECT_EQ(Journals().size(), 20U + 2U);
}

TEST_F(Rename_Journal_Folder_Test, One_That_Could_Not_Be_Read_Again_Is_Not_Begun)
{
    const Rename_Move longest{std::string(255, '\xff'), std::string(255, '\xfe'), std::string(255, '\xfd')};
    const auto begun = journal.Begin({.moves = std::vector<Rename_Move>(30'000, longest), .steps = {}});
    ASSERT_FALSE(begun);
    EXPECT_EQ(begun.error().text, journal_folder +
                                      "/: the journal of a rename of 30000 files is too long; rename fewer "
                                      "at a time");
    EXPECT_TRUE(Journals().empty());
}

TEST_F(Rename_Journal_Folder_Test, One_That_Was_Never_Begun_Is_Removed_After_A_Day)
{
    Put("a");
    ASSERT_TRUE(Run({{"a", "b"}}));
    for (const char* name : {"/new-1.journal", "/new-2.journal"}) Put_File(journal_folder + name, "B\nnames");
    const timespec two_days_ago{std::time(nullptr) - 2 * 24 * 60 * 60, 0};
    const timespec times[2] = {two_days_ago, two_days_ago};
    ASSERT_EQ(utimensat(AT_FDCWD, (journal_folder + "/new-1.journal").c_str(), times, 0), 0);
    ASSERT_TRUE(Run({{"b", "c"}}));
    EXPECT_FALSE(std::filesystem::exists(journal_folder + "/new-1.journal"));
    EXPECT_TRUE(std::filesystem::exists(journal_folder + "/new-2.journal"));
}

TEST_F(Rename_Journal_Folder_Test, Twenty_Renames_Are_Kept)
{
    Put("0");
    for (int i = 0; i < 25; ++i) ASSERT_TRUE(Run({{std::to_string(i), std::to_string(i + 1)}}));
    EXPECT_EQ(Journals().size(), 20U);
}

TEST_F(Rename_Journal_Folder_Test, However_Many_Renames_Follow_One_That_Was_Interrupted_Is_Put_Right)
{
    Put("a");
    Put("0");
    const Rename_Plan plan(files, Moves({{"a", "b"}}));
    {
        Rename_Journal_Folder ended(journal_folder);
        ASSERT_TRUE(ended.Begin({plan.Moves(), plan.Steps()}));
        ASSERT_TRUE(files.Rename(folder.File("a"), folder.File("b")));
    }
    for (int i = 0; i < 25; ++i) ASSERT_TRUE(Run({{std::to_string(i), std::to_string(i + 1)}}));
    EXPECT_EQ(journal.Put_Interrupted_Right(files).size(), 1U);
    EXPECT_EQ(What("a"), "picture a");
}

TEST_F(Rename_Journal_Folder_Test, Random_Renames_On_The_Real_Disk_Lose_Nothing)
{
    std::mt19937 random(6);
    for (int round = 0; round < 300; ++round) {
        Test_Folder pictures;
        std::vector<std::string> names;
        for (int i = 0; i < 5; ++i) names.push_back(std::string(1, char('a' + i)));
        for (const std::string& name : names) Put_File(pictures.File(name), name);
        std::vector<std::string> targets = names;
        targets.push_back("f");
        std::shuffle(targets.begin(), targets.end(), random);
        std::vector<Rename_Move> moves;
        for (std::size_t i = 0; i < names.size(); ++i) moves.push_back({pictures.Path() + "/", names[i], targets[i]});
        ASSERT_TRUE(Run_Plan(Rename_Plan(files, moves), files, journal));
        for (std::size_t i = 0; i < names.size(); ++i) ASSERT_EQ(Contents_Of(pictures.File(targets[i])), names[i]);
        ASSERT_EQ(pictures.Names().size(), names.size());
        ASSERT_TRUE(Take_Back_Last_Rename(journal, files));
        ASSERT_EQ(pictures.Names(), names);
        for (const std::string& name : names) ASSERT_EQ(Contents_Of(pictures.File(name)), name);
    }
}

TEST(System_Rename_Files, Folder_Rules_Of_An_Ordinary_Disk)
{
    Test_Folder folder;
    Put_File(folder.File("a.jpg"), "x");
    const auto rules = System_Rename_Files().Rules_Of(folder.Path() + "/");
    EXPECT_EQ(rules.longest_name, 255);
    EXPECT_FALSE(rules.ignores_case);
}

} // namespace
