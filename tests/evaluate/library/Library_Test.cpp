#include "evaluate/variant/Variant_Array.h"
#include "tests/evaluate/library/Direct_Call.h"

#include <gtest/gtest.h>

using namespace Formula;

TEST(Built_In_Table, Says_What_Each_Function_Touches)
{
    const std::pair<const char*, Access_Class> rows[] = {
        {"LEFT", Access_Class::Pure},
        {"NOW", Access_Class::Clock},
        {"TIMER", Access_Class::Clock},
        {"DIR", Access_Class::Files},
        {"CURDIR", Access_Class::Files},
        {"FILELEN", Access_Class::Files},
        {"FILEDATETIME", Access_Class::Files},
        {"GETATTR", Access_Class::Files},
        {"ENVIRON", Access_Class::Environment},
        {"GETSETTING", Access_Class::Settings},
        {"GETALLSETTINGS", Access_Class::Settings},
        {"INPUTBOX", Access_Class::Dialog},
        {"MSGBOX", Access_Class::Dialog},
    };
    for (const auto& [name, access] : rows) {
        const auto* row = Find_Built_In(name);
        ASSERT_NE(row, nullptr) << name;
        EXPECT_EQ(row->access, access) << name;
    }
    for (const auto& row : Built_Ins()) EXPECT_NE(row.run, nullptr) << row.name;
    EXPECT_EQ(Find_Built_In("SHELL"), nullptr);
    EXPECT_EQ(Find_Built_In("YEAR"), nullptr);
}

TEST(Built_In_Table, A_Class_Is_Allowed_Only_When_Its_Bit_Is_Set)
{
    EXPECT_TRUE(Is_Allowed(Access_Class::Files, All_Access));
    EXPECT_FALSE(Is_Allowed(Access_Class::Files, unsigned(Access_Class::Pure) | unsigned(Access_Class::Clock)));
}

TEST(Boxes, Are_Asked_With_What_Was_Written)
{
    Direct_Call caller;
    caller.Shown("InputBox(\"Name?\")");
    caller.Shown("InputBox(\"Name?\", \"Title\", \"Ann\", 0, 0, \"help\", 7)");
    caller.Shown("MsgBox(\"Done\")");
    caller.Shown("MsgBox(\"Done\", vbYesNo + vbQuestion, \"Title\", \"help\", 7)");
    EXPECT_EQ((QStringList{QStringLiteral("Name?||"), QStringLiteral("Name?|Title|Ann"), QStringLiteral("Done||0"),
                           QStringLiteral("Done|Title|36")}),
              caller.questions);
}

// A megabyte is left for values. The engine looks at a result when it is there; these refuse to make it.
TEST(Built_In_Memory, What_Grows_A_Text_Or_Makes_A_List_Asks_For_Room_Before)
{
    Direct_Call caller;
    std::int64_t heap = 0;
    caller.context.memory = Formula_Memory(1 << 20, [&heap] { return heap; });
    const auto set = [&](const char* name, Variant value) { caller.variables[QString::fromLatin1(name)] = value; };
    set("text", Variant(QString(400'000, u'x')));
    set("list", Make_List(std::vector<Variant>(2, Variant(QString(300'000, u'x')))));
    set("many", Make_List(std::vector<Variant>(30'000, Variant(QString(u'x')))));
    const std::pair<const char*, const char*> rows[] = {
        {"Len(Space(500000))", "Long 500000"},
        {"Space(600000)", "error 14"},
        {"String(600000, \"x\")", "error 14"},
        {"String(600000, 65)", "error 14"},
        {"Quoted(@text, \"x\")", "error 14"},
        {"Len(Quoted(@text, \"y\"))", "Long 400000"},
        {"Replace(@text, \"x\", \"yy\")", "error 14"},
        {"Len(Replace(@text, \"x\", \"y\"))", "Long 400000"},
        {"Join(@list, \"\")", "error 14"},
        {"Join(@many, @text)", "error 14"},
        {"StrConv(@text, 64)", "error 14"},
        {"Len(StrConv(@text, 1))", "Long 400000"},
        {"Format(5, @text)", "error 14"},
        {"Split(@text, \"x\")", "error 7"},
        {"Len(Join(Split(@text, \"y\"), \"\"))", "Long 400000"},
        {"Filter(@many, \"x\")", "error 7"},
    };
    for (const auto& [call, result] : rows) EXPECT_EQ(result, caller.Shown(call).substr(0, 40)) << call;
}

// Any built-in answers any arguments with a value or an error, whatever their kinds.
TEST(Built_In_Table, No_Function_Falls_Over_Strange_Arguments)
{
    Direct_Call caller;
    const char* values[] = {"Null",  "Empty",      "\"\"", "\"x\"",   "-1",       "0",
                            "1E300", "2147483647", "True", "Array()", "#1/1/100#"};
    for (const auto& row : Built_Ins()) {
        if (row.references) continue; // the compiler lets nothing but a name through
        for (const auto* first : values)
            for (const auto* rest : values) {
                std::string call(row.name);
                for (int i = 0; i < row.maximum; ++i)
                    call += (i == 0 ? "(" : ", ") + std::string(i == 0 ? first : rest);
                caller.Shown(row.maximum > 0 ? call + ")" : call);
            }
    }
}

TEST(Randomize, The_Same_Number_After_The_Same_Start_Gives_The_Same_Sequence)
{
    Direct_Call first, second;
    const Variant number(std::int32_t(42));
    ASSERT_EQ(Randomize(first.context, &number), Error_Number::None);
    ASSERT_EQ(Randomize(second.context, &number), Error_Number::None);
    EXPECT_EQ(first.Shown("Rnd()"), second.Shown("Rnd()"));
    // 42 as a double is 40450000 00000000: 0x4045 is folded into the middle, the low byte of the seed stays 0.
    Direct_Call third;
    ASSERT_EQ(Randomize(third.context, &number), Error_Number::None);
    EXPECT_EQ(third.context.random.seed, 0x404500u);
    third.context.random.seed = 0x123456;
    ASSERT_EQ(Randomize(third.context, &number), Error_Number::None);
    EXPECT_EQ(third.context.random.seed, 0x404556u) << "the low byte stays";
    ASSERT_EQ(Randomize(third.context, nullptr), Error_Number::None);
    const Variant text(QStringLiteral("x"));
    EXPECT_EQ(Randomize(third.context, &text), Error_Number::Type_Mismatch);
}

struct Middle_Case {
    const char* name;
    const char* text;
    int start, length; ///< a negative length is left out
    const char* value;
    const char* expected;
    bool of_bytes = false;
};

class Middle_Statement : public testing::TestWithParam<Middle_Case> {};

TEST_P(Middle_Statement, Replaces_In_Place)
{
    const auto& row = GetParam();
    Variant text(QString::fromUtf8(row.text));
    const Variant start(std::int32_t(row.start)), length(std::int32_t(row.length)), value(QString::fromUtf8(row.value));
    const auto* limit = row.length < 0 ? nullptr : &length;
    const auto problem =
        row.of_bytes ? Replace_Middle_Bytes(text, start, limit, value) : Replace_Middle(text, start, limit, value);
    const auto shown =
        problem == Error_Number::None ? text.Text().toStdString() : "error " + std::to_string(int(problem));
    EXPECT_EQ(shown, row.expected);
}

INSTANTIATE_TEST_SUITE_P(All, Middle_Statement,
                         testing::Values(Middle_Case{"plain", "abcdef", 2, -1, "XY", "aXYdef"},
                                         Middle_Case{"never_grows", "abc", 2, -1, "XYZ", "aXY"},
                                         Middle_Case{"length_limits", "abcdef", 2, 1, "XY", "aXcdef"},
                                         Middle_Case{"length_beyond_value", "abcdef", 2, 9, "X", "aXcdef"},
                                         Middle_Case{"start_zero", "abc", 0, -1, "X", "error 5"},
                                         Middle_Case{"start_behind_the_end", "abc", 4, -1, "X", "error 5"},
                                         Middle_Case{"empty_value", "abc", 1, -1, "", "abc"},
                                         Middle_Case{"bytes", "abc", 3, 2, "X", "aXc", true},
                                         Middle_Case{"bytes_of_the_whole_value", "abcdef", 3, -1, "XY", "aXYdef",
                                                     true}),
                         [](const auto& row) { return row.param.name; });

TEST(Date_Parts, Are_Taken_From_A_Date)
{
    const std::pair<Date_Part, int> rows[] = {{Date_Part::Year, 2003}, {Date_Part::Month, 1},  {Date_Part::Day, 2},
                                              {Date_Part::Hour, 15},   {Date_Part::Minute, 4}, {Date_Part::Second, 5},
                                              {Date_Part::Weekday, 5}};
    for (const auto& [part, expected] : rows) {
        Variant value(QStringLiteral("1/2/2003 15:04:05"));
        ASSERT_EQ(Take_Date_Part(value, part), Error_Number::None);
        EXPECT_EQ(value.Integer(), expected);
    }
}
