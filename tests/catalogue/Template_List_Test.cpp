#include "catalogue/Template_List.h"

#include <gtest/gtest.h>

namespace {

const std::vector<Template_Name> Three{{"Two up", "Custom-1"}, {"Four up", "Custom-2"}, {"Wide", "Custom-3"}};

TEST(Template_Lists, Lose_What_Was_Marked)
{
    Template_List list(Three);
    EXPECT_FALSE(list.Is_Changed());
    list.Mark(2, true);
    list.Mark(9, true);
    EXPECT_TRUE(list.Has_Marks());
    EXPECT_EQ((std::vector<Template_Name>{Three[0], Three[2]}), list.Result());
    list.Mark(2, false);
    EXPECT_FALSE(list.Is_Changed());
    EXPECT_EQ(Three, list.Result());
}

struct Name_Case {
    const char* name;
    int row;
    const char* wanted;
    const char* expected; // null: refused
};

class Template_Names : public testing::TestWithParam<Name_Case> {};

INSTANTIATE_TEST_SUITE_P(
    All, Template_Names,
    testing::Values(Name_Case{"another", 1, "Pair", "Pair"}, Name_Case{"blanks_at_the_ends_go", 1, "  Pair ", "Pair"},
                    Name_Case{"its_own_in_capitals", 1, "TWO UP", "TWO UP"},
                    Name_Case{"an_empty_one", 1, "   ", nullptr}, Name_Case{"that_of_another", 1, "wide", nullptr},
                    Name_Case{"of_no_row", 4, "x", nullptr}, Name_Case{"of_row_zero", 0, "x", nullptr}),
    [](const auto& row) { return row.param.name; });

TEST_P(Template_Names, Are_Taken_Or_Refused)
{
    Template_List list(Three);
    EXPECT_EQ(GetParam().expected != nullptr, list.Rename(GetParam().row, GetParam().wanted));
    std::vector<Template_Name> expected = Three;
    if (GetParam().expected != nullptr) expected[std::size_t(GetParam().row - 1)].name = GetParam().expected;
    EXPECT_EQ(expected, list.Result());
    EXPECT_EQ(GetParam().expected != nullptr, list.Is_Changed());
}

TEST(Template_Lists, May_Be_Empty)
{
    const Template_List list({});
    EXPECT_EQ(0, list.Count());
    EXPECT_TRUE(list.Result().empty());
}

} // namespace
