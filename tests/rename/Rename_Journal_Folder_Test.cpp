#include "rename/Rename_Journal_Folder.h"

#include "tests/support/Test_Folder.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <random>
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
        EXPECT_FALSE(journal.Last_Done()) << end_at;
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
    EXPECT_TRUE(journal.Last_Done());
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

TEST_F(Rename_Journal_Folder_Test, A_Damaged_Journal_Is_Passed_Over)
{
    Put("a");
    ASSERT_TRUE(Run({{"a", "b"}}));
    Put_File(journal_folder + "/rename-9-broken.journal", "B\nnames\nstep x");
    EXPECT_TRUE(journal.Put_Interrupted_Right(files).empty());
    EXPECT_EQ(Take_Back_Last_Rename(journal, files).value_or(-1), 1);
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
