#include "rename/Rename_Plan.h"

#include "tests/rename/Files_In_Memory.h"

#include <gtest/gtest.h>

namespace {

const std::string Folder = "/home/anna/Pictures/";

struct Plan_Case {
    const char* name;
    std::vector<std::string> there;
    std::vector<std::pair<std::string, std::string>> moves;
    std::vector<std::string> expected; ///< faults, or steps as "from > to"
    bool ignores_case = false;
};

class Plan : public testing::TestWithParam<Plan_Case> {};

std::string Shown(const std::string& path)
{
    return path.substr(Folder.size());
}

TEST_P(Plan, Has_These_Faults_Or_Steps)
{
    Files_In_Memory files;
    files.ignores_case = GetParam().ignores_case;
    int number = 0;
    for (const std::string& name : GetParam().there) files.Put(Folder + name, ++number);
    std::vector<Rename_Move> moves;
    for (const auto& [from, to] : GetParam().moves) moves.push_back({Folder, from, to});
    const Rename_Plan plan(files, moves);
    std::vector<std::string> told;
    for (const Rename_Fault& fault : plan.Faults()) told.push_back(fault.Text());
    for (const Rename_Step& step : plan.Steps()) told.push_back(Shown(step.from) + " > " + Shown(step.to));
    EXPECT_EQ(told, GetParam().expected);
    EXPECT_EQ(files.calls, 0) << "a plan touches nothing";
}

using namespace std::string_literals;

INSTANTIATE_TEST_SUITE_P(
    All, Plan,
    testing::Values(
        Plan_Case{"a_free_name", {"a"}, {{"a", "b"}}, {"a > b"}},
        Plan_Case{"the_same_name_is_no_step", {"a"}, {{"a", "a"}}, {}},
        Plan_Case{"a_chain_begins_at_its_free_end",
                  {"a", "b", "c"},
                  {{"a", "b"}, {"b", "c"}, {"c", "d"}},
                  {"c > d", "b > c", "a > b"}},
        Plan_Case{"a_chain_in_the_other_order", {"a", "b"}, {{"b", "c"}, {"a", "b"}}, {"b > c", "a > b"}},
        Plan_Case{"a_swap_goes_by_way_of_a_third_name",
                  {"a", "b"},
                  {{"a", "b"}, {"b", "a"}},
                  {"a > .rename-1.halvine", "b > a", ".rename-1.halvine > b"}},
        Plan_Case{"a_ring_of_three",
                  {"a", "b", "c"},
                  {{"a", "b"}, {"b", "c"}, {"c", "a"}},
                  {"a > .rename-1.halvine", "c > a", "b > c", ".rename-1.halvine > b"}},
        Plan_Case{"the_third_name_is_one_that_is_free",
                  {"a", "b", ".rename-1.halvine"},
                  {{"a", "b"}, {"b", "a"}},
                  {"a > .rename-2.halvine", "b > a", ".rename-2.halvine > b"}},
        Plan_Case{"another_case_is_another_name", {"a.jpg"}, {{"a.jpg", "A.jpg"}}, {"a.jpg > A.jpg"}},
        Plan_Case{"where_case_is_nothing_it_takes_two_steps",
                  {"a.jpg"},
                  {{"a.jpg", "A.jpg"}},
                  {"a.jpg > .rename-1.halvine", ".rename-1.halvine > A.jpg"},
                  true},
        Plan_Case{"a_name_that_is_taken", {"a", "b"}, {{"a", "b"}}, {"a: the name \"b\" is taken by another file"}},
        Plan_Case{"a_name_that_stays_taken",
                  {"a", "b"},
                  {{"a", "b"}, {"b", "b"}},
                  {"a: the name \"b\" is taken by another file"}},
        Plan_Case{"a_name_that_is_taken_in_another_case",
                  {"a", "b"},
                  {{"a", "B"}},
                  {"a: the name \"B\" is taken by another file"},
                  true},
        Plan_Case{"two_files_with_one_name",
                  {"a", "b", "c"},
                  {{"a", "x"}, {"b", "x"}, {"c", "x"}},
                  {"b: \"x\" is the new name of a too", "c: \"x\" is the new name of a too"}},
        Plan_Case{"two_files_with_one_name_in_two_cases",
                  {"a", "b"},
                  {{"a", "x"}, {"b", "X"}},
                  {"b: \"X\" is the new name of a too"},
                  true},
        Plan_Case{"a_file_that_is_named_twice", {"a"}, {{"a", "x"}, {"a", "y"}}, {"a: stands in the list twice"}},
        Plan_Case{"a_file_that_is_gone", {}, {{"a", "x"}}, {"a: there is no such file any more"}},
        Plan_Case{"an_empty_name", {"a"}, {{"a", ""}}, {"a: the new name is empty"}},
        Plan_Case{"a_name_in_another_folder", {"a"}, {{"a", "x/y"}}, {"a: \"x/y\" would leave the folder"}},
        Plan_Case{"the_folder_itself", {"a"}, {{"a", "."}}, {"a: \".\" would leave the folder"}},
        Plan_Case{"the_folder_above", {"a"}, {{"a", ".."}}, {"a: \"..\" would leave the folder"}},
        Plan_Case{"a_zero_byte", {"a"}, {{"a", "x\0y"s}}, {"a: the new name holds a zero byte"}},
        Plan_Case{"a_name_that_is_too_long",
                  {"a"},
                  {{"a", std::string(41, 'x')}},
                  {"a: the new name has 41 bytes; the folder takes 40"}},
        Plan_Case{"the_longest_name", {"a"}, {{"a", std::string(40, 'x')}}, {"a > " + std::string(40, 'x')}},
        Plan_Case{"a_character_that_the_disk_refuses",
                  {"a"},
                  {{"a", "what?"}},
                  {"a: \"what?\" holds a character that the file system does not take: ?"}},
        Plan_Case{"a_name_of_a_kept_original",
                  {"a"},
                  {{"a", "b~"}},
                  {"a: \"b~\" is a name that saves keep their files under"}},
        Plan_Case{"a_hidden_name_of_a_save",
                  {"a"},
                  {{"a", ".b.halvine-abcdef"}},
                  {"a: \".b.halvine-abcdef\" is a name that saves keep their files under"}},
        Plan_Case{"a_name_by_way_of_which_files_go",
                  {"a"},
                  {{"a", ".rename-1.halvine"}},
                  {"a: \".rename-1.halvine\" is a name that renames keep for themselves"}},
        Plan_Case{"every_fault_is_told",
                  {"a", "b"},
                  {{"b", "/"}, {"a", ""}},
                  {"b: \"/\" would leave the folder", "a: the new name is empty"}},
        Plan_Case{"one_fault_and_nothing_is_done", {"a", "b"}, {{"a", "x"}, {"b", ""}}, {"b: the new name is empty"}},
        Plan_Case{"bytes_that_are_no_utf_8", {"a\xff"}, {{"a\xff", "b\xfe\xff"}}, {"a\xff > b\xfe\xff"}}),
    [](const auto& row) { return row.param.name; });

TEST(Plan, Tells_Which_Fault_A_Person_May_Decide_About)
{
    Files_In_Memory files;
    files.Put(Folder + "a", 1);
    files.Put(Folder + "b", 2);
    const Rename_Plan plan(files, {{Folder, "a", "b"}});
    ASSERT_EQ(plan.Faults().size(), 1U);
    EXPECT_TRUE(plan.Faults()[0].target_is_taken);
    EXPECT_FALSE(Rename_Plan(files, {{Folder, "a", ""}}).Faults()[0].target_is_taken);
}

TEST(Plan, A_File_That_Is_Given_Up_Frees_Its_Own_Name_Alone)
{
    Files_In_Memory files;
    for (const char* name : {"a", "b", "x", "y"}) files.Put(Folder + name, name[0]);
    const std::vector<Rename_Move> moves{{Folder, "a", "x"}, {Folder, "b", "y"}};
    const Rename_Plan plan(files, moves, {Folder + "x"});
    ASSERT_EQ(plan.Faults().size(), 1U);
    EXPECT_EQ(plan.Faults()[0].move, 1U);
    EXPECT_TRUE(Rename_Plan(files, moves, {Folder + "x", Folder + "y"}).Faults().empty());
}

TEST(Plan, Equal_Names_In_Two_Folders_Are_No_Collision)
{
    Files_In_Memory files;
    files.Put("/a/1", 1);
    files.Put("/b/1", 2);
    EXPECT_EQ(Rename_Plan(files, {{"/a/", "1", "x"}, {"/b/", "1", "x"}}).Steps().size(), 2U);
}

TEST(Copies, Into_One_Folder_Are_Checked_Together)
{
    Files_In_Memory files;
    files.Put("/a/1", 1);
    files.Put("/b/1", 2);
    files.Put("/out/taken", 3);
    EXPECT_TRUE(Check_Copies(files, {{"/a/", "1", "x"}, {"/b/", "1", "y"}}, "/out/").empty());
    const auto faults = Check_Copies(
        files, {{"/a/", "1", "x"}, {"/b/", "1", "x"}, {"/a/", "1", "taken"}, {"/a/", "2", "z"}, {"/a/", "1", "?"}},
        "/out/");
    ASSERT_EQ(faults.size(), 4U);
    EXPECT_EQ(faults[0].Text(), "1: \"x\" is the new name of 1 too");
    EXPECT_TRUE(faults[1].target_is_taken);
    EXPECT_EQ(faults[2].Text(), "2: there is no such file any more");
    EXPECT_EQ(faults[3].move, 4U);
}

} // namespace
