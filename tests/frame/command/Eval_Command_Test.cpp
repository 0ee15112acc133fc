// hv eval as other programs call it: the real binary, its two outputs and its status.

#include "Project_Folders.h"

#include <QtCore/QDir>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <gtest/gtest.h>

namespace {

QString Q(const char* text)
{
    return QString::fromUtf8(text);
}

struct Eval_Case {
    const char* name;
    QStringList arguments;
    const char* out;
    const char* messages = "";
    int status = 0;
};

struct Answer {
    QString out;
    QString messages;
    int status = -1;
};

Answer Evaluate(const QStringList& arguments,
                const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment())
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(HALVINE_BINARY_DIR "/bin/hv"), QStringList{QStringLiteral("eval")} + arguments);
    process.closeWriteChannel();
    EXPECT_TRUE(process.waitForFinished(60'000));
    return {QString::fromUtf8(process.readAllStandardOutput()), QString::fromUtf8(process.readAllStandardError()),
            process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1};
}

class Hv_Eval : public testing::TestWithParam<Eval_Case> {};

TEST_P(Hv_Eval, Answers)
{
    const Answer answer = Evaluate(GetParam().arguments);
    EXPECT_EQ(std::string(GetParam().out), answer.out.toStdString());
    EXPECT_EQ(std::string(GetParam().messages), answer.messages.toStdString());
    EXPECT_EQ(GetParam().status, answer.status);
}

INSTANTIATE_TEST_SUITE_P(
    All, Hv_Eval,
    testing::Values(
        Eval_Case{"prints_the_value", {"1 + 2 * 3"}, "7\n"},
        Eval_Case{"prints_a_text_as_it_stands", {"UCase(\"ab\") & \"-\" & 1.5"}, "AB-1.5\n"},
        Eval_Case{"prints_null", {"--null", "x", "x"}, "Null\n"},
        Eval_Case{"prints_empty_as_an_empty_line", {"Tessary.Lists"}, "\n"},
        Eval_Case{
            "tells_where_an_error_is", {"1 / 0"}, "", "hv: error 11: Division by zero (at character position 3)\n", 1},
        Eval_Case{"tells_where_a_text_is_no_formula",
                  {"1 + ?"},
                  "",
                  "hv: error 1: Unexpected end of program (at character position 5)\n",
                  1},
        Eval_Case{"prints_an_array_an_element_a_line", {"Split(\"a,b,c\", \",\")"}, "a\nb\nc\n"},
        Eval_Case{"takes_a_text_variable", {"-v", "Who=Anna", "\"for \" & Who"}, "for Anna\n"},
        Eval_Case{"takes_a_number", {"-n", "x=2.5", "x * 2"}, "5\n"},
        Eval_Case{"takes_a_whole_number_as_a_long", {"-n", "x=5", "TypeName(x)"}, "Long\n"},
        Eval_Case{"takes_a_number_with_a_point_as_a_double", {"-n", "x=5.0", "TypeName(x)"}, "Double\n"},
        Eval_Case{"takes_a_large_whole_number_as_a_double", {"-n", "x=3000000000", "TypeName(x)"}, "Double\n"},
        Eval_Case{"asks_nobody_for_an_unknown_variable",
                  {"Nobody & 1"},
                  "",
                  "hv: error 32774: Unknown variable (at character position 1)\n",
                  1},
        Eval_Case{"prints_an_empty_value_of_a_program", {"--program", "=Tessary.Lists"}, "\n"},
        Eval_Case{"prints_a_byte_as_json", {"--json", "CByte(3)"}, "{\"type\":\"Byte\",\"value\":3}\n"},
        Eval_Case{
            "prints_a_small_integer_as_json", {"--json", "-i", "x=5", "x"}, "{\"type\":\"Integer\",\"value\":5}\n"},
        Eval_Case{"takes_a_small_integer_that_widens", {"-i", "x=32767", "x + 1"}, "32768\n"},
        Eval_Case{"takes_a_date", {"-d", "Day=2026-03-14", "Format(Day, \"yyyymmdd\")"}, "20260314\n"},
        Eval_Case{"takes_null", {"--null", "x", "IsNull(x)"}, "True\n"},
        Eval_Case{"gives_the_formula_of_a_program", {"--program", "=20 + 22\nx = 1"}, "42\n"},
        Eval_Case{"prints_nothing_of_a_program_without_formula", {"--program", "x = 1"}, ""},
        Eval_Case{"prints_a_variable_after_the_run", {"--program", "--print", "x", "x = 1 + 1"}, "2\n"},
        Eval_Case{"lets_a_message_box_print_its_prompt", {"MsgBox(\"ready\")"}, "1\n", "hv: ready\n"},
        Eval_Case{"answers_an_input_box_with_nothing", {"\"<\" & InputBox(\"name?\") & \">\""}, "<>\n"},
        Eval_Case{"prints_what_it_can_beside_an_unknown_variable",
                  {"--program", "--print", "y", "--print", "x", "x = 2"},
                  "2\n",
                  "hv: y: Unknown variable\n",
                  1},
        Eval_Case{"prints_a_number_as_json", {"--json", "1.5 + 1"}, "{\"type\":\"Double\",\"value\":2.5}\n"},
        Eval_Case{"prints_no_minus_before_zero", {"--json", "Round(-0.4)"}, "{\"type\":\"Double\",\"value\":0}\n"},
        Eval_Case{"prints_a_text_as_json",
                  {"--json", "\"a\"\"b\" & vbTab"},
                  "{\"type\":\"String\",\"value\":\"a\\\"b\\t\"}\n"},
        Eval_Case{"prints_null_as_json", {"--json", "--null", "x", "x"}, "{\"type\":\"Null\",\"value\":null}\n"},
        Eval_Case{"prints_a_boolean_as_json", {"1 = 1", "--json"}, "{\"type\":\"Boolean\",\"value\":true}\n"},
        Eval_Case{"prints_a_date_as_json", {"--json", "#1/2/2003#"}, "{\"type\":\"Date\",\"value\":\"1/2/2003\"}\n"},
        Eval_Case{"prints_an_array_as_json",
                  {"--json", "Split(\"a b\")"},
                  "{\"type\":\"Variant()\",\"value\":[\"a\",\"b\"]}\n"},
        Eval_Case{"prints_variables_as_json",
                  {"--json", "--program", "--print", "x", "=7\nx = 1"},
                  "{\"type\":\"Long\",\"value\":7}\n{\"name\":\"x\",\"type\":\"Empty\",\"value\":\"\"}\n"},
        Eval_Case{"a_formula_that_begins_with_a_sign", {"-3 + 1"}, "-2\n"},
        Eval_Case{"a_formula_that_looks_like_an_option",
                  {"--", "--json"},
                  "",
                  "hv: error 1: Error in expression syntax or in compiler (at character position 2)\n",
                  1},
        Eval_Case{"a_value_behind_an_equal_sign", {"--program", "--print=x", "x = 1 + 1"}, "2\n"},
        Eval_Case{"an_empty_formula", {""}, "\n"},
        Eval_Case{"a_scalar_for_an_array_of_the_program",
                  {"--program", "-v", "a=5", "Dim a()\nx = a(1)"},
                  "",
                  "hv: error 13: Type mismatch (at character position 13)\n",
                  1}),
    [](const auto& row) { return row.param.name; });

struct Refusal_Case {
    const char* name;
    QStringList arguments;
    const char* reason;
};

class Hv_Eval_Refusals : public testing::TestWithParam<Refusal_Case> {};

TEST_P(Hv_Eval_Refusals, Do_Nothing_And_Say_Why)
{
    const Answer answer = Evaluate(GetParam().arguments);
    EXPECT_EQ(2, answer.status);
    EXPECT_EQ("", answer.out.toStdString());
    EXPECT_EQ(std::string("hv: ") + GetParam().reason + " (see hv eval --help)\n", answer.messages.toStdString());
}

INSTANTIATE_TEST_SUITE_P(
    All, Hv_Eval_Refusals,
    testing::Values(
        Refusal_Case{"nothing_to_evaluate", {}, "either a formula or -f FILE is needed"},
        Refusal_Case{"two_formulas", {"1", "2"}, "more than one formula"},
        Refusal_Case{"nothing_behind_the_end_of_the_options", {"--"}, "either a formula or -f FILE is needed"},
        Refusal_Case{"an_option_behind_their_end", {"--", "1", "--json"}, "more than one formula"},
        Refusal_Case{"a_value_for_what_takes_none", {"--json=1", "1"}, "unknown option --json=1"},
        Refusal_Case{"a_formula_and_a_file", {"-f", "x", "1"}, "either a formula or -f FILE is needed"},
        Refusal_Case{"an_unknown_option", {"--bogus", "1"}, "unknown option --bogus"},
        Refusal_Case{"an_option_without_its_value", {"1", "--print"}, "--print needs a value"},
        Refusal_Case{"a_variable_without_a_value", {"-v", "x", "1"}, "-v needs NAME=VALUE"},
        Refusal_Case{"a_variable_without_a_name", {"-n", "=3", "1"}, "-n needs NAME=VALUE"},
        Refusal_Case{"a_name_no_formula_can_say", {"-v", "1st=a", "1"}, "-v: \"1st\" is no name for a variable"},
        Refusal_Case{"the_name_of_a_function", {"-v", "left=a", "1"}, "-v: \"left\" is no name for a variable"},
        Refusal_Case{"null_under_such_a_name", {"--null", "a b", "1"}, "--null: \"a b\" is no name for a variable"},
        Refusal_Case{"a_number_that_is_none", {"-n", "x=many", "x"}, "-n x: \"many\": Type mismatch"},
        Refusal_Case{"an_integer_that_is_too_large", {"-i", "x=32768", "x"}, "-i x: \"32768\": Overflow"},
        Refusal_Case{"a_date_that_is_none", {"-d", "x=2026-02-30", "x"}, "-d x: \"2026-02-30\": Type mismatch"},
        Refusal_Case{"access_that_nobody_gives",
                     {"--allow-formula", "files,dialogs", "1"},
                     "--allow-formula knows files, environment and settings, not \"files,dialogs\""}),
    [](const auto& row) { return row.param.name; });

class Formula_File : public testing::Test {
protected:
    Answer Evaluate_File(const char* text, const QStringList& options = {})
    {
        QFile file(folder_.filePath(QStringLiteral("formula.txt")));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        file.close();
        return Evaluate(options + QStringList{QStringLiteral("-f"), file.fileName()}, environment);
    }

    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    QTemporaryDir folder_;
};

TEST_F(Formula_File, May_Compute)
{
    EXPECT_EQ(QStringLiteral("ab\n"), Evaluate_File("Left(\"abc\", 2)").out);
}

TEST_F(Formula_File, May_Not_Look_Around_Until_It_Is_Allowed)
{
    for (const char* text : {"CurDir()", "Environ(\"HOME\")", "Dir(\"*\")"}) {
        const Answer answer = Evaluate_File(text);
        EXPECT_EQ(1, answer.status) << text;
        EXPECT_TRUE(answer.messages.contains(QStringLiteral("error 70: Permission denied")))
            << text << ": " << answer.messages.toStdString();
    }
    EXPECT_EQ(0, Evaluate_File("CurDir()", {QStringLiteral("--allow-formula"), QStringLiteral("files")}).status);
    EXPECT_EQ(1, Evaluate_File("CurDir()", {QStringLiteral("--allow-formula"), QStringLiteral("environment")}).status);
}

TEST_F(Formula_File, May_Do_All_That_Several_Options_Allow)
{
    const Answer answer = Evaluate_File("Len(CurDir() & Environ(\"HOME\")) >= 0",
                                        {Q("--allow-formula"), Q("files"), Q("--allow-formula=environment")});
    EXPECT_EQ("True\n", answer.out.toStdString()) << answer.messages.toStdString();
}

TEST_F(Formula_File, That_Can_Not_Be_Read_Is_Named_With_The_Reason)
{
    const QString path = folder_.filePath(Q("none.txt"));
    const Answer missing = Evaluate({Q("-f"), path});
    EXPECT_EQ(1, missing.status);
    EXPECT_EQ("hv: " + path.toStdString() + ": No such file or directory\n", missing.messages.toStdString());
    EXPECT_EQ(1, Evaluate({Q("-f"), folder_.path()}).status);
    QFile large(path);
    ASSERT_TRUE(large.open(QIODevice::WriteOnly));
    ASSERT_TRUE(large.resize((64 << 20) + 1));
    EXPECT_EQ("hv: " + path.toStdString() + ": is larger than 67108864 bytes\n",
              Evaluate({Q("-f"), path}).messages.toStdString());
}

TEST(Hv_Eval_Help, Is_Given_Before_Anything_Else)
{
    for (const char* option : {"-h", "--help"}) {
        const Answer answer = Evaluate({Q("1 / 0"), Q(option)});
        EXPECT_EQ(0, answer.status);
        EXPECT_TRUE(answer.out.startsWith(Q("Usage: hv eval [OPTIONS] TEXT\n"))) << answer.out.toStdString();
        EXPECT_EQ(answer.out, Evaluate({Q(option)}).out) << "nothing else is needed";
    }
}

TEST_F(Formula_File, May_Not_Open_Boxes)
{
    EXPECT_EQ(1, Evaluate_File("MsgBox(\"hello\")").status);
}

/// With settings as the program keeps them, in a configuration folder of the test's own.
class Formula_Settings : public Formula_File {
protected:
    void SetUp() override
    {
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), folder_.path());
        ASSERT_TRUE(QDir(folder_.path()).mkpath(QStringLiteral("Brennick")));
        QFile file(Settings_Path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(Stored);
    }
    QString Settings_Path() const { return folder_.filePath(QStringLiteral("Brennick/Halvine.ini")); }

    const QStringList allow_settings = {QStringLiteral("--allow-formula"), QStringLiteral("settings")};
    // Keys are stored percent-encoded, since a slash would open a group; the encoding's own sign is encoded once more.
    static constexpr const char* Stored = "[Formulas%252FTrips%252FPlaces]\nHome=Lake Side\nWork=Harbour\n"
                                          "[Other%252FTrips]\nHome=Secret\n";
};

TEST_F(Formula_Settings, A_Typed_Formula_Reads_Them)
{
    EXPECT_EQ("Lake Side\n",
              Evaluate({Q("GetSetting(\"Trips\", \"Places\", \"Home\")")}, environment).out.toStdString());
    EXPECT_EQ("blue\n",
              Evaluate({Q("GetSetting(\"Trips\", \"Places\", \"Car\", \"blue\")")}, environment).out.toStdString());
    EXPECT_EQ("Home\nWork\nLake Side\nHarbour\n",
              Evaluate({Q("GetAllSettings(\"Trips\", \"Places\")")}, environment).out.toStdString());
}

TEST_F(Formula_Settings, A_Formula_From_A_File_Reads_Them_When_Allowed)
{
    const char* const formula = "GetSetting(\"Trips\", \"Places\", \"Home\", \"blue\")";
    EXPECT_EQ("Lake Side\n", Evaluate_File(formula, allow_settings).out.toStdString());
    EXPECT_EQ("Home\nWork\nLake Side\nHarbour\n",
              Evaluate_File("GetAllSettings(\"Trips\", \"Places\")", allow_settings).out.toStdString());
    const Answer refused = Evaluate_File(formula);
    EXPECT_EQ(1, refused.status);
    EXPECT_TRUE(refused.messages.contains(Q("error 70: Permission denied"))) << refused.messages.toStdString();
}

TEST_F(Formula_Settings, Only_Those_For_Formulas_Are_Within_Reach)
{
    EXPECT_EQ("blue\n", Evaluate({Q("GetSetting(\"..\", \"Other/Trips\", \"Home\", \"blue\")")}, environment).out);
    EXPECT_EQ("blue\n", Evaluate({Q("GetSetting(\"Other\", \"Trips\", \"Home\", \"blue\")")}, environment).out);
}

TEST_F(Formula_Settings, Stay_As_They_Are)
{
    EXPECT_EQ(0, Evaluate({Q("GetSetting(\"Trips\", \"Places\", \"Home\")")}, environment).status);
    QFile file(Settings_Path());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(Stored, file.readAll().toStdString());
    EXPECT_EQ(QStringList{Q("Halvine.ini")},
              QDir(folder_.filePath(Q("Brennick"))).entryList(QDir::Files | QDir::Hidden))
        << "nothing beside it";
}

} // namespace
