// The examples of the reference for users: in a block "formula" each line is an expression, in a block "program" all lines
// are one program. What they give stands in their remarks: "' gives 3", "' gives x: 3", "' fails: Division by zero".

#include "Project_Folders.h"
#include "evaluate/bkcEvaluate.h"
#include "evaluate/variant/Conversions.h"
#include "tests/evaluate/engine/Scripted_Services.h"

#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <gtest/gtest.h>

using namespace Formula;

namespace {

QString Display(const Variant& value)
{
    return To_Display_Text(value).value_or(QString());
}

struct Examples {
    QStringList formulas, programs;
};

Examples Read_Examples()
{
    QFile file(QStringLiteral(HALVINE_SOURCE_DIR "/docs/formulas.md"));
    if (!file.open(QIODevice::ReadOnly)) return {};
    Examples examples;
    static const QRegularExpression block(QStringLiteral("```(formula|program)\n(.*?)```"),
                                          QRegularExpression::DotMatchesEverythingOption);
    for (auto it = block.globalMatch(QString::fromUtf8(file.readAll())); it.hasNext();) {
        const auto match = it.next();
        if (match.captured(1) == u"formula")
            examples.formulas += match.captured(2).split(u'\n', Qt::SkipEmptyParts);
        else
            examples.programs += match.captured(2);
    }
    return examples;
}

TEST(Formula_Examples, Formulas_Give_What_The_Reference_Says)
{
    const QStringList formulas = Read_Examples().formulas;
    EXPECT_GT(formulas.size(), 20);
    static const QRegularExpression remark(QStringLiteral("^(.*?) *' (gives|fails:) ?(.*)$"));
    for (const QString& line : formulas) {
        const auto match = remark.match(line);
        ASSERT_TRUE(match.hasMatch()) << line.toStdString();
        Scripted_Services services;
        bkcEvaluate evaluator(services);
        evaluator.Set_PromptUninitialized(false);
        const Variant value = evaluator.Value(match.captured(1));
        const QString result = evaluator.Last_Error().Code == 0
                                   ? QStringLiteral("gives ") + Display(value)
                                   : QStringLiteral("fails: ") + evaluator.Last_Error().Description;
        EXPECT_EQ((match.captured(2) + u' ' + match.captured(3)).toStdString(), result.toStdString())
            << line.toStdString();
    }
}

TEST(Formula_Examples, Programs_Give_What_The_Reference_Says)
{
    const QStringList programs = Read_Examples().programs;
    EXPECT_GT(programs.size(), 4);
    static const QRegularExpression remark(QStringLiteral("' gives (\\w+): (.*)"));
    for (const QString& program : programs) {
        Scripted_Services services;
        bkcEvaluate evaluator(services);
        evaluator.Set_PromptUninitialized(false);
        evaluator.Execute(program);
        EXPECT_EQ("", evaluator.Last_Error().Description.toStdString()) << program.toStdString();
        for (auto it = remark.globalMatch(program); it.hasNext();) {
            const auto match = it.next();
            const auto value = evaluator.Variable(match.captured(1));
            ASSERT_TRUE(value) << program.toStdString();
            EXPECT_EQ(match.captured(2).toStdString(), Display(*value).toStdString()) << program.toStdString();
        }
    }
}

} // namespace
