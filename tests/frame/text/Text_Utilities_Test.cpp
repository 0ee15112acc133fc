#include "frame/text/Text_Utilities.h"

#include <gtest/gtest.h>

namespace {

QString Q(const char* text)
{
    return QString::fromUtf8(text);
}

struct Keyword_Case {
    const char* name;
    const char* text;
    const char* keyword;
    int position;
    bool comment;
    bool enabled;
};

class Keyword : public testing::TestWithParam<Keyword_Case> {};

TEST_P(Keyword, Is_Read)
{
    const auto& row = GetParam();
    int position = 1;
    bool comment = true, enabled = false;
    QString keyword;
    Read_Keyword(Q(row.text), position, comment, enabled, keyword);
    EXPECT_EQ(keyword, Q(row.keyword));
    EXPECT_EQ(position, row.position);
    EXPECT_EQ(comment, row.comment);
    EXPECT_EQ(enabled, row.enabled);
}

INSTANTIATE_TEST_SUITE_P(All, Keyword,
                         testing::Values(Keyword_Case{"stops_after_three_characters", "ABCD:1", "ABC", 4, false, true},
                                         Keyword_Case{"stops_at_another_character", "AB:1", "AB", 3, false, true},
                                         Keyword_Case{"may_hold_ampersand_and_digits", "&a9 ", "&a9", 4, false, true},
                                         Keyword_Case{"comment_mark_passes_blanks", "~  SDI", "SDI", 7, true, true},
                                         Keyword_Case{"minus_disables", "- SDI:2", "SDI", 6, false, false},
                                         Keyword_Case{"plus_enables", "+SDI", "SDI", 5, false, true},
                                         Keyword_Case{"marks_combine", "~-SDI", "SDI", 6, true, false},
                                         Keyword_Case{"nothing_there", ";", "", 1, false, true},
                                         Keyword_Case{"empty_text", "", "", 1, false, true},
                                         Keyword_Case{"letters_are_those_of_ascii", "ÄB", "", 1, false, true}),
                         [](const auto& row) { return row.param.name; });

TEST(Skip_To_Next_Record, Passes_What_The_Keyword_Left)
{
    int position = 4;
    Skip_To_Next_Record(Q("ABCD:1,NXT"), position);
    EXPECT_EQ(position, 8);
}

TEST(Skip_To_Next_Record, Passes_Separators_Inside_Quotes)
{
    int position = 1;
    Skip_To_Next_Record(Q(" : 'a;b' -1.5 <c,d> ; X"), position);
    EXPECT_EQ(position, 22);
}

TEST(Skip_To_Next_Record, Ends_With_The_Text)
{
    int position = 1;
    Skip_To_Next_Record(Q("'open"), position);
    EXPECT_EQ(position, 6);
}

TEST(Skip_Colon, Passes_One_Colon_And_Blanks)
{
    int position = 1;
    Skip_Colon(Q(" \t: \r:x"), position);
    EXPECT_EQ(position, 6);
}

TEST(Skip_Value, Tells_Whether_There_Was_One)
{
    int position = 1;
    EXPECT_TRUE(Skip_Value(Q("'a'-1"), position));
    EXPECT_EQ(position, 4);
    EXPECT_TRUE(Skip_Value(Q("'a'-1"), position));
    EXPECT_FALSE(Skip_Value(Q("'a'-1"), position));
    EXPECT_EQ(position, 6);
}

struct Quoted_Case {
    const char* name;
    const char* text;
    const char* value;
    int position;
};

class Quoted : public testing::TestWithParam<Quoted_Case> {};

TEST_P(Quoted, Is_Read)
{
    int position = 1;
    QString value = Q("old");
    Read_Quoted_String(Q(GetParam().text), position, value, true);
    EXPECT_EQ(value, Q(GetParam().value));
    EXPECT_EQ(position, GetParam().position);
}

INSTANTIATE_TEST_SUITE_P(All, Quoted,
                         testing::Values(Quoted_Case{"doubled_single_quote", "'it''s'", "it's", 8},
                                         Quoted_Case{"doubled_angle", "<a>>b>", "a>b", 7},
                                         Quoted_Case{"doubled_double_quote", "\"a\"\"b\";", "a\"b", 7},
                                         Quoted_Case{"behind_a_colon", " : 'a',", "a", 7},
                                         Quoted_Case{"other_quotes_inside", "'<\">'", "<\">", 6},
                                         Quoted_Case{"empty", "''", "", 3},
                                         Quoted_Case{"unquoted_is_empty_and_stays", "abc", "", 1},
                                         Quoted_Case{"never_closed_takes_the_rest", "'abc", "abc", 5},
                                         Quoted_Case{"empty_text", "", "", 1}),
                         [](const auto& row) { return row.param.name; });

TEST(Read_Number, Leaves_The_Value_Alone_Outside_The_Range)
{
    int position = 1;
    double value = 0.25;
    Read_Number(Q("1.5"), position, value, 0, 1);
    EXPECT_EQ(value, 0.25);
    EXPECT_EQ(position, 4);
}

TEST(Read_Number, Takes_The_Limits_Themselves)
{
    for (const auto& [text, expected] : {std::pair{"0", 0.0}, {"1", 1.0}, {"+.5", 0.5}}) {
        int position = 1;
        double value = 7;
        Read_Number(Q(text), position, value, 0, 1);
        EXPECT_EQ(value, expected) << text;
    }
}

TEST(Read_Number, Leaves_The_Value_Alone_When_The_Text_Is_No_Number)
{
    for (const char* text : {"1.2.3", "--1", "-", "1-2", "", "x"}) {
        int position = 1;
        double value = 0.25;
        Read_Number(Q(text), position, value, -10, 10);
        EXPECT_EQ(value, 0.25) << text;
    }
}

TEST(Read_Number, Rounds_A_Fraction_Half_To_Even_Where_A_Whole_Number_Is_Wanted)
{
    for (const auto& [text, expected] : {std::pair{"2.5", 2}, {"3.5", 4}, {"2.6", 3}, {"-0.5", 0}}) {
        int position = 1, value = 7;
        Read_Number(Q(text), position, value, -10, 10);
        EXPECT_EQ(value, expected) << text;
    }
}

TEST(Read_Number, Reads_Behind_A_Colon)
{
    int position = 1, value = 0;
    Read_Number(Q(" :-12;"), position, value, -100, 100, true);
    EXPECT_EQ(value, -12);
    EXPECT_EQ(position, 6);
}

struct Test_Case {
    const char* text;
    bool whole, signed_whole, decimal, percentage;
};

class Number_Tests : public testing::TestWithParam<Test_Case> {};

TEST_P(Number_Tests, Answer)
{
    const auto& row = GetParam();
    EXPECT_EQ(Is_Whole_Number(Q(row.text)), row.whole) << row.text;
    EXPECT_EQ(Is_Signed_Whole_Number(Q(row.text)), row.signed_whole) << row.text;
    EXPECT_EQ(Is_Signed_Decimal(Q(row.text)), row.decimal) << row.text;
    EXPECT_EQ(Is_Percentage(Q(row.text)), row.percentage) << row.text;
}

INSTANTIATE_TEST_SUITE_P(
    All, Number_Tests,
    testing::Values(Test_Case{"", false, false, false, false}, Test_Case{"12", true, true, true, true},
                    Test_Case{"-12", false, true, true, false}, Test_Case{"+12", false, true, true, false},
                    Test_Case{"1-2", false, false, false, false}, Test_Case{"-", false, false, false, false},
                    Test_Case{".", false, false, false, false}, Test_Case{"1.5", false, false, true, true},
                    Test_Case{"1.5.2", false, false, false, false}, Test_Case{"12%", false, false, false, true},
                    Test_Case{"1.5%", false, false, false, true}, Test_Case{"%", false, false, false, false},
                    Test_Case{"5%%", false, false, false, false}, Test_Case{"٣", false, false, false, false}));

TEST(Quote, Doubles_The_Character_Only)
{
    EXPECT_EQ(Quote_Single(Q("it's")), Q("it''s"));
    EXPECT_EQ(Quote_Double(Q("\"\"")), Q("\"\"\"\""));
    EXPECT_EQ(Quote_With(Q("a>b"), u'>'), Q("a>>b"));
}

TEST(Quote, Comes_Back_From_The_Reader)
{
    for (const char* text : {"", "plain", "it's", "''", "a;b,c", "tail'"}) {
        int position = 1;
        QString value;
        Read_Quoted_String(u'\'' + Quote_Single(Q(text)) + u'\'', position, value);
        EXPECT_EQ(value, Q(text));
    }
}

TEST(Scan_Set_Span, Finds_The_First_Character_Outside_The_Set)
{
    EXPECT_EQ(Scan_Set_Span(Q("aab"), Q("a"), 1), 3);
    EXPECT_EQ(Scan_Set_Span(Q("aab"), Q("a"), -5), 3);
    EXPECT_EQ(Scan_Set_Span(Q("aab"), Q("A"), 1), 1) << "compared exactly";
    EXPECT_EQ(Scan_Set_Span(Q("aaa"), Q("a"), 2), 0) << "the rest is in the set";
    EXPECT_EQ(Scan_Set_Span(Q("aab"), Q(""), 1), 0) << "empty set";
    EXPECT_EQ(Scan_Set_Span(Q("aab"), Q("a"), 9), 0);
}

TEST(Decode_Text, Takes_Valid_Utf8_And_Falls_Back_To_Windows_1252)
{
    EXPECT_EQ(Decode_Text("Gr\xC3\xBC\xC3\x9F"), Q("Grüß"));
    EXPECT_EQ(Decode_Text("Gr\xFC\xDF"), Q("Grüß"));
    EXPECT_EQ(Decode_Text("\x80\x93x\x94"), Q("€“x”"));
    EXPECT_EQ(Decode_Text("ends in \xC3"), Q("ends in Ã"));
    EXPECT_EQ(Decode_Text(""), QString());
}

TEST(Case, Folds_Without_The_Locale)
{
    EXPECT_TRUE(Equal_Without_Case(Q("IMG_Ä.JPG"), Q("img_ä.jpg")));
    EXPECT_FALSE(Equal_Without_Case(Q("a"), Q("ab")));
    EXPECT_LT(Compare_Without_Case(Q("a"), Q("B")), 0);
    EXPECT_GT(Compare_Without_Case(Q("ab"), Q("A")), 0);
    EXPECT_EQ(Case_Folded(Q("ÀB")), Q("àb"));
}

} // namespace
