#include "tests/evaluate/engine/Case_File.h"
#include "tests/evaluate/engine/Scripted_Services.h"

#include <gtest/gtest.h>

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
INSTANTIATE_TEST_SUITE_P(Programs, Formula_Cases, testing::ValuesIn(Read_Formula_Cases("evaluate/engine/programs.txt")),
                         Name_Of);
INSTANTIATE_TEST_SUITE_P(Refusals, Formula_Cases,
                         testing::ValuesIn(Read_Formula_Cases("evaluate/compiler/refusals.txt")), Name_Of);
