#include "tests/evaluate/engine/Case_File.h"
#include "tests/evaluate/engine/Scripted_Services.h"

#include <gtest/gtest.h>
#include <set>

using namespace Formula;

class Formula_Cases : public testing::TestWithParam<Formula_Case> {
protected:
    QString Result_Of(bkcEvaluate& evaluator, const QString& name, const Variant& value)
    {
        const Evaluation_Error& error = evaluator.Last_Error();
        if (error.Code != 0) return Shown(error, GetParam().source);
        if (name.isEmpty()) return Shown(value);
        return Shown(evaluator.Variable(name).value_or(Variant()));
    }
};

TEST_P(Formula_Cases, Give_What_They_Say)
{
    const Formula_Case& row = GetParam();
    Scripted_Services services;
    services.answers.assign(row.answers.begin(), row.answers.end());
    bkcEvaluate evaluator(services);
    evaluator.Set_PromptUninitialized(!row.answers.isEmpty());
    const Variant value = row.program ? evaluator.ProgramValue(row.source) : evaluator.Value(row.source);
    ASSERT_FALSE(row.expected.empty()) << "a case that expects nothing";
    for (const auto& [name, result] : row.expected)
        EXPECT_EQ(result.trimmed().toStdString(), Result_Of(evaluator, name, value).trimmed().toStdString())
            << name.toStdString();
    EXPECT_TRUE(services.answers.empty()) << "answers that nobody asked for";
}

namespace {

std::string Name_Of(const testing::TestParamInfo<Formula_Case>& row)
{
    std::string name = std::to_string(row.index) + "_";
    for (const QChar c : row.param.name) name += c.unicode() < 128 && c.isLetterOrNumber() ? c.toLatin1() : '_';
    return name.substr(0, 100);
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Expressions, Formula_Cases,
                         testing::ValuesIn(Read_Formula_Cases("evaluate/engine/expressions.txt")), Name_Of);
INSTANTIATE_TEST_SUITE_P(Documented, Formula_Cases,
                         testing::ValuesIn(Read_Formula_Cases("evaluate/engine/documented.txt")), Name_Of);
INSTANTIATE_TEST_SUITE_P(Programs, Formula_Cases, testing::ValuesIn(Read_Formula_Cases("evaluate/engine/programs.txt")),
                         Name_Of);
INSTANTIATE_TEST_SUITE_P(Refusals, Formula_Cases,
                         testing::ValuesIn(Read_Formula_Cases("evaluate/compiler/refusals.txt")), Name_Of);

/// Users and hosts know the words of the compiler: each of them is what some row expects, letter by letter.
TEST(Compiler_Messages, Each_Stands_In_A_Row)
{
    std::set<std::string> expected;
    for (const char* file : {"evaluate/compiler/refusals.txt", "evaluate/engine/expressions.txt"})
        for (const Formula_Case& row : Read_Formula_Cases(file))
            for (const auto& [name, result] : row.expected)
                expected.insert(result.section(QStringLiteral(" @"), 0, 0).section(u' ', 2).trimmed().toStdString());
    for (const char* message : {
             ": missing string delimiter",
             "All arguments following first optional argument must be optional",
             "Arrays may have a minimum of one and a maximum of three dimensions",
             "ByRef arguments (arguments not explicitly ByVal) may not be optional",
             "Compiler error",
             "Constant already declared",
             "Do statement syntax error",
             "Error in Function call",
             "Error in Mid statement syntax",
             "Error in expression syntax",
             "Error in expression syntax or in compiler",
             "Error in method arguments",
             "Expected argument name",
             "Expecting .AbsoluteEXE or .AbsoluteFilePath",
             "Expecting .Count, .Item, or .Items",
             "Expecting .Lists or .List",
             "Expecting 0 or 1",
             "Expecting AbsoluteEXE or AbsoluteFilePath",
             "Expecting Base",
             "Expecting Count, Item, or Items",
             "Expecting Do and While, Until, or statements",
             "Expecting Else and statements",
             "Expecting End If",
             "Expecting End If and other statements",
             "Expecting End and Function or Sub (as appropriate)",
             "Expecting Exit and Do, For, Function, or Sub",
             "Expecting For and counter variable",
             "Expecting Function or Sub and identifier",
             "Expecting Function or Sub name",
             "Expecting GoTo label name",
             "Expecting If or ElseIf and expression",
             "Expecting Lists or List",
             "Expecting Loop and While, Until, or other statements",
             "Expecting Next and counter variable or other statements",
             "Expecting Then and statements",
             "Expecting To and expression",
             "Expecting Wend and other statements",
             "Expecting While and conditional expression",
             "Expecting array identifier",
             "Expecting array variable name",
             "Expecting colon",
             "Expecting comma and argument or right paren",
             "Expecting comma and bound or right paren",
             "Expecting comma or end of line",
             "Expecting constant name",
             "Expecting constant value as default",
             "Expecting counter variable",
             "Expecting equal sign and expression",
             "Expecting equal sign and value",
             "Expecting left paren and List_ID",
             "Expecting left paren and argument list or right paren",
             "Expecting left paren and array dimension",
             "Expecting left paren and item index",
             "Expecting left paren and parameter(s)",
             "Expecting right paren",
             "Expecting right paren and .Count, .Item, or .Items",
             "Expecting right paren and equal sign",
             "Expecting value for constant",
             "Expecting variable",
             "Expecting variable name",
             "For statement syntax error",
             "Function or Sub statement syntax error",
             "Only Optional arguments can have default values",
             "Private or Public applies olny to Function or Sub",
             "Subs may not return values",
             "Too few parameters",
             "Too many array elements (maximum of 255)",
             "Too many array indices (maximum of 127)",
             "Too many parameters",
             "Unexpected end of program",
             "Unknown statement",
             "Unknown statement type",
             "Variable already declared",
             "While statement syntax error",
         })
        EXPECT_TRUE(expected.contains(message)) << message;
}
