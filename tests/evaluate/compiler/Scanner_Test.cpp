#include "evaluate/Keyword_Table.h"
#include "evaluate/Scanner.h"

#include <gtest/gtest.h>
#include <set>

using namespace Formula;

namespace {

struct Scanner_Case {
    const char* name;
    const char* source;
    std::vector<Token_Word> words;
};

std::vector<Token_Word> Words_Of(const QString& source)
{
    Scanner scanner(source);
    std::vector<Token_Word> words;
    for (;;) {
        const Token_Word word = scanner.Next().word;
        words.push_back(word);
        if (word == Token::None || word == Token::End_Of_Source || words.size() > 100) return words;
    }
}

class Scanner_Words : public testing::TestWithParam<Scanner_Case> {};

TEST_P(Scanner_Words, Are_Cut_Out_Of_The_Text)
{
    EXPECT_EQ(GetParam().words, Words_Of(QString::fromUtf8(GetParam().source)));
}

constexpr Token_Word Name = Token::Identifier, Number = Token::Number_Literal, Text = Token::String_Literal,
                     Line = Token::End_Of_Line, End = Token::End_Of_Source;

INSTANTIATE_TEST_SUITE_P(
    All, Scanner_Words,
    testing::Values(
        Scanner_Case{"nothing", "", {End}}, Scanner_Case{"blanks_only", " \t ", {End}},
        Scanner_Case{"control_characters_are_blanks", "\x01\x02 x", {Name, End}},
        Scanner_Case{
            "arithmetic",
            "+ - * / \\ ^",
            {Token::Add, Token::Subtract, Token::Multiply, Token::Divide, Token::Integer_Divide, Token::Power, End}},
        Scanner_Case{"comparison",
                     "= <> <= < >= >",
                     {Token::Equal, Token::Not_Equal, Token::Less_Or_Equal, Token::Less, Token::Greater_Or_Equal,
                      Token::Greater, End}},
        Scanner_Case{"comparison_apart", "< > < =", {Token::Less, Token::Greater, Token::Less, Token::Equal, End}},
        Scanner_Case{"punctuation",
                     ":,().",
                     {Token::Colon, Token::Comma, Token::Left_Paren, Token::Right_Paren, Token::Dot, End}},
        Scanner_Case{"ampersand_joins", "a&b", {Name, Token::Concatenate, Name, End}},
        Scanner_Case{"ampersand_with_h_is_a_number", "a&h1", {Name, Number, End}},
        Scanner_Case{"ampersand_with_o_is_a_number", "a&O1", {Name, Number, End}},
        Scanner_Case{"a_run_of_line_ends_is_one", "a\r\n\n\r\rb", {Name, Line, Name, End}},
        Scanner_Case{"blanks_part_line_ends", "a\n \nb", {Name, Line, Line, Name, End}},
        Scanner_Case{"a_remark_ends_with_its_line", "a ' b c\nd", {Name, Line, Name, End}},
        Scanner_Case{"a_remark_at_the_end", "a ' b", {Name, End}},
        Scanner_Case{"a_continued_line", "a _ b\nc", {Name, Name, End}},
        Scanner_Case{"a_continuation_at_the_end", "a _", {Name, End}},
        Scanner_Case{"no_name_begins_with_an_underscore", "_a", {End}},
        Scanner_Case{"names", "abc a1 a_b1 Z", {Name, Name, Name, Name, End}},
        Scanner_Case{"only_plain_letters_begin_a_name", "\xc4\xb1", {Token::None}},
        Scanner_Case{"a_letter_with_an_accent_ends_a_name", "a\xc3\xa9", {Name, Token::None}},
        Scanner_Case{
            "numbers", "1 1.5 1. 1E5 1.5D-2 &HFF &O17", {Number, Number, Number, Number, Number, Number, Number, End}},
        Scanner_Case{"a_number_ends_at_a_letter", "1x", {Number, Name, End}},
        Scanner_Case{"a_second_point_is_a_token", "1.5.2", {Number, Token::Dot, Number, End}},
        Scanner_Case{"octal_ends_at_eight", "&O78", {Number, Number, End}},
        Scanner_Case{"octal_ends_at_nine", "&O79", {Number, Number, End}},
        Scanner_Case{"texts", "\"a\" \"\" \"a\"\"b\"", {Text, Text, Text, End}},
        Scanner_Case{"a_text_without_an_end", "\"a", {Token::None}},
        Scanner_Case{"a_text_over_two_lines", "\"a\nb\"", {Text, End}},
        Scanner_Case{"dates", "#1/2/2003# #1/2/2003", {Token::Date_Literal, Token::Date_Literal, End}},
        Scanner_Case{"a_wrong_date", "#x#", {Token::None}}, Scanner_Case{"a_question_mark", "?", {Token::None}},
        Scanner_Case{"a_dollar_sign", "a$", {Name, Token::None}},
        Scanner_Case{"keywords_in_any_case", "IF if iF tHeN", {Token::If, Token::If, Token::If, Token::Then, End}},
        Scanner_Case{
            "operators_with_names",
            "mod Like NOT and or xor eqv imp",
            {Token::Modulo, Token::Like, Token::Not, Token::And, Token::Or, Token::Xor, Token::Eqv, Token::Imp, End}},
        Scanner_Case{
            "niladic_functions", "Date Now Time Timer", {Token::Date, Token::Now, Token::Time, Token::Timer, End}},
        Scanner_Case{"parts_of_a_date_are_no_keywords",
                     "Day Hour Minute Month Second Weekday Year",
                     {Name, Name, Name, Name, Name, Name, Name, End}},
        Scanner_Case{"a_keyword_inside_a_name", "iffy_end", {Name, End}},
        Scanner_Case{"method_words",
                     "Tessary Lists List Count Items Item Brennick",
                     {Token::Tessary, Token::Lists, Token::List, Token::Count, Token::Items, Token::Item,
                      Token::Brennick, End}}),
    [](const auto& row) { return row.param.name; });

struct Keyword_Case {
    const char* text;
    Token_Word word;
};

class Statement_Keywords : public testing::TestWithParam<Keyword_Case> {};

TEST_P(Statement_Keywords, Have_The_Words_That_Hosts_Know)
{
    const Keyword* keyword = Find_Keyword(QString::fromLatin1(GetParam().text));
    ASSERT_TRUE(keyword);
    EXPECT_EQ(GetParam().word, keyword->word);
}

INSTANTIATE_TEST_SUITE_P(
    All, Statement_Keywords,
    testing::Values(Keyword_Case{"BASE", 0xEC7000}, Keyword_Case{"BEEP", 0xED7000}, Keyword_Case{"BYREF", 0xEE7000},
                    Keyword_Case{"BYVAL", 0xEF7000}, Keyword_Case{"CALL", 0xF07000}, Keyword_Case{"CASE", 0xF17000},
                    Keyword_Case{"CONST", 0xF27000}, Keyword_Case{"DIM", 0xF37000}, Keyword_Case{"DO", 0xF47000},
                    Keyword_Case{"ERASE", 0xF57000}, Keyword_Case{"FOR", 0xF67000}, Keyword_Case{"GOTO", 0xF77000},
                    Keyword_Case{"ELSE", 0xF87000}, Keyword_Case{"ELSEIF", 0xF97000}, Keyword_Case{"END", 0xFA7000},
                    Keyword_Case{"EXIT", 0xFB7000}, Keyword_Case{"FUNCTION", 0xFC7000}, Keyword_Case{"IF", 0xFE7000},
                    Keyword_Case{"LOOP", 0x1007000}, Keyword_Case{"NEXT", 0x1017000}, Keyword_Case{"OPTION", 0x1027000},
                    Keyword_Case{"OPTIONAL", 0x1037000}, Keyword_Case{"PRESERVE", 0x1047000},
                    Keyword_Case{"PRIVATE", 0x1057000}, Keyword_Case{"PUBLIC", 0x1067000},
                    Keyword_Case{"RANDOMIZE", 0x1077000}, Keyword_Case{"REDIM", 0x1087000},
                    Keyword_Case{"SELECT", 0x10A7000}, Keyword_Case{"STATIC", 0x10B7000},
                    Keyword_Case{"STEP", 0x10C7000}, Keyword_Case{"SUB", 0x10D7000}, Keyword_Case{"THEN", 0x10E7000},
                    Keyword_Case{"TO", 0x10F7000}, Keyword_Case{"UNTIL", 0x1107000}, Keyword_Case{"WEND", 0x1117000},
                    Keyword_Case{"WHILE", 0x1127000}, Keyword_Case{"DATE", 0x603500}, Keyword_Case{"NOW", 0x613500},
                    Keyword_Case{"TIME", 0x623500}, Keyword_Case{"TIMER", 0x633500}, Keyword_Case{"NOT", 0x745446},
                    Keyword_Case{"AND", 0x75543C}, Keyword_Case{"OR", 0x765432}, Keyword_Case{"MOD", 0x685178},
                    Keyword_Case{"LIKE", 0x6D525A}, Keyword_Case{"XOR", 0x775428}, Keyword_Case{"EQV", 0x77541E},
                    Keyword_Case{"IMP", 0x775414}),
    [](const auto& row) { return row.param.text; });

struct Symbol_Case {
    const char* text;
    Token_Word word;
};

/// Hosts show these numbers in listings of compiled code.
TEST(Symbols, Have_The_Words_That_Hosts_Know)
{
    const Symbol_Case symbols[] = {
        {"^", 0x645196},
        {"*", 0x65518C},
        {"/", 0x66518C},
        {"\\", 0x675182},
        {"+", 0x69516E},
        {"-", 0x6A516E},
        {"&", 0x6C5264},
        {"=", 0x6E5350},
        {"<>", 0x6F5350},
        {"<=", 0x705350},
        {"<", 0x715350},
        {">=", 0x725350},
        {">", 0x735350},
        {":", 0x1138000},
        {",", 0x1148000},
        {"(", 0x115800A},
        {")", 0x1168000},
        {".", 0x1178000},
        {"\n", 0x1218000},
        {"", 0x1228000},
        {"?", 0},
        {"$", 0},
        {"a", 0x520000},
        {"1", 0x552200},
        {"\"a\"", 0x582400},
        {"#1/2/2003#", 0x592500},
    };
    for (const Symbol_Case& row : symbols)
        EXPECT_EQ(row.word, Words_Of(QString::fromLatin1(row.text)).front()) << row.text;
}

TEST(Keyword_Table, Knows_No_Parts_Of_Dates)
{
    for (const char* name : {"DAY", "HOUR", "MINUTE", "MONTH", "SECOND", "WEEKDAY", "YEAR", "NULL", "EMPTY", "AS"})
        EXPECT_FALSE(Find_Keyword(QString::fromLatin1(name))) << name;
    for (const char* name : {"TESSARY", "LISTS", "LIST", "COUNT", "ITEMS", "ITEM", "BRENNICK"}) {
        const Keyword* keyword = Find_Keyword(QString::fromLatin1(name));
        ASSERT_TRUE(keyword) << name;
        EXPECT_EQ(Token_Class::Method, Class_Of(keyword->word)) << name;
    }
}

TEST(Keyword_Table, Gives_Every_Function_A_Word_Of_Its_Own)
{
    std::set<Token_Word> words;
    for (const Built_In& built_in : Built_Ins()) {
        const Keyword* keyword =
            Find_Keyword(QString::fromLatin1(built_in.name.data(), qsizetype(built_in.name.size())));
        ASSERT_TRUE(keyword) << built_in.name;
        EXPECT_TRUE(words.insert(keyword->word).second) << built_in.name;
        if (built_in.style == Argument_Style::Niladic) continue;
        EXPECT_EQ(200, Precedence_Of(keyword->word)) << built_in.name;
        EXPECT_EQ(Token_Class::Function, Class_Of(keyword->word)) << built_in.name;
        EXPECT_EQ(built_in.style == Argument_Style::Fixed ? built_in.maximum : 15, Arity_Of(keyword->word))
            << built_in.name;
        EXPECT_LT(Id_Of(keyword->word), 0xE9) << built_in.name;
    }
}

TEST(Keyword_Table, Gives_Every_Constant_A_Word_Of_Its_Own)
{
    std::set<Token_Word> words;
    for (const Named_Constant& constant : Whole_Number_Constants()) {
        const Keyword* keyword =
            Find_Keyword(QString::fromLatin1(constant.name.data(), qsizetype(constant.name.size())));
        ASSERT_TRUE(keyword) << constant.name;
        EXPECT_EQ(constant.value, keyword->number) << constant.name;
        EXPECT_TRUE(words.insert(keyword->word).second) << constant.name;
        EXPECT_LT(Id_Of(keyword->word), 0x52) << constant.name;
    }
}

TEST(Scanner, Keeps_The_Name_As_Written_And_The_Start)
{
    Scanner scanner(QStringLiteral("  FileName & 12"));
    const Scanned_Token name = scanner.Next();
    EXPECT_EQ("FileName", name.name.toStdString());
    EXPECT_EQ(3, name.start);
    EXPECT_EQ(12, scanner.Next().start);
    EXPECT_EQ(12, scanner.Next().value.Long());
}

TEST(Name_Index, Finds_Names_In_Any_Case_Among_Many)
{
    Name_Index index;
    for (int i = 0; i < 1000; ++i) index.Insert(QStringLiteral("Name%1").arg(i), i);
    for (int i = 0; i < 1000; ++i) EXPECT_EQ(i, index.Find(QStringLiteral("nAME%1").arg(i)));
    EXPECT_EQ(Name_Index::Not_Found, index.Find(u"Name1000"));
    EXPECT_EQ(Name_Index::Not_Found, Name_Index().Find(u"x"));
}

} // namespace
