#include "frame/text/Pattern_Match.h"

#include <gtest/gtest.h>

namespace {

struct Like_Case {
    const char* name;
    const char* text;
    const char* pattern;
    bool binary;
    bool expected;
};

class Like_Rule : public testing::TestWithParam<Like_Case> {};

TEST_P(Like_Rule, Answers)
{
    const auto& row = GetParam();
    const auto compare = row.binary ? Like_Pattern::Compare::Binary : Like_Pattern::Compare::Text;
    EXPECT_EQ(Like(QString::fromUtf8(row.text), QString::fromUtf8(row.pattern), compare), row.expected);
}

INSTANTIATE_TEST_SUITE_P(All, Like_Rule,
                         testing::Values(Like_Case{"empty_and_empty", "", "", false, true},
                                         Like_Case{"run_fits_nothing", "", "*", false, true},
                                         Like_Case{"text_without_pattern", "a", "", false, false},
                                         Like_Case{"run_in_the_middle", "IMG_0012.jpg", "img*.JPG", false, true},
                                         Like_Case{"binary_tells_case_apart", "IMG", "img", true, false},
                                         Like_Case{"question_needs_one", "ab", "a?b", false, false},
                                         Like_Case{"digit", "a7", "a#", false, true},
                                         Like_Case{"digit_only", "ax", "a#", false, false},
                                         Like_Case{"list", "b", "[abc]", false, true},
                                         Like_Case{"range", "m", "[a-z]", true, true},
                                         Like_Case{"range_without_case", "M", "[a-z]", false, true},
                                         Like_Case{"negated", "d", "[!abc]", false, true},
                                         Like_Case{"negated_refuses", "b", "[!abc]", false, false},
                                         Like_Case{"bang_alone_is_itself", "!", "[!]", false, true},
                                         Like_Case{"dash_at_the_end_is_itself", "-", "[a-]", false, true},
                                         Like_Case{"dash_at_the_front_is_itself", "-", "[-a]", false, true},
                                         Like_Case{"star_in_a_list", "*", "[*]", false, true},
                                         Like_Case{"empty_list_is_nothing", "ab", "a[]b", false, true},
                                         Like_Case{"open_list_is_malformed", "[", "[", false, false},
                                         Like_Case{"closing_alone_is_itself", "]", "]", false, true},
                                         Like_Case{"backward_range_is_malformed", "b", "[c-a]", false, false},
                                         Like_Case{"several_runs", "abcabcabd", "*abc*abd", false, true},
                                         Like_Case{"run_backtracks", "aab", "*ab", false, true}),
                         [](const auto& row) { return row.param.name; });

TEST(Like_Rule_Cost, Stays_Text_Times_Pattern)
{
    // A matcher that tries every split would not end here.
    EXPECT_FALSE(Like(QString(20000, u'a'), QStringLiteral("a*").repeated(60) + u'b'));
}

using Part = Like_Pattern::Part;

Part First(const char* text, const char* pattern, int position = 1)
{
    return Like_Pattern::Compile(QString::fromLatin1(pattern), Like_Pattern::Compare::Text)
        ->First_In(QString::fromLatin1(text), position);
}

Part Last(const char* text, const char* pattern, int position = 0)
{
    return Like_Pattern::Compile(QString::fromLatin1(pattern), Like_Pattern::Compare::Text)
        ->Last_In(QString::fromLatin1(text), position);
}

TEST(First_Part, Ends_First_And_Is_Shortest)
{
    EXPECT_EQ(First("xxabcabc", "a*c"), (Part{3, 5}));
    EXPECT_EQ(First("aab", "a*b"), (Part{2, 3}));
    EXPECT_EQ(First("a12b34", "##"), (Part{2, 3}));
    EXPECT_EQ(First("a12b34", "##", 3), (Part{5, 6}));
    EXPECT_EQ(First("abc", "x"), (Part{0, 0}));
    EXPECT_EQ(First("abc", "*"), (Part{1, 1}));
    EXPECT_EQ(First("", "*"), (Part{0, 0}));
}

TEST(Last_Part, Begins_Last_And_Is_Shortest)
{
    EXPECT_EQ(Last("xxabcabc", "a*c"), (Part{6, 8}));
    EXPECT_EQ(Last("abb", "a*b"), (Part{1, 2}));
    EXPECT_EQ(Last("a12b34", "##", 4), (Part{2, 3}));
    EXPECT_EQ(Last("abc", "x"), (Part{0, 0}));
}

} // namespace
