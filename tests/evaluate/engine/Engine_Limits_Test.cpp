// What keeps a hostile formula from taking the machine, and what a host sees while a formula runs.

#include "tests/evaluate/engine/Case_File.h"
#include "tests/evaluate/engine/Scripted_Services.h"

#include <gtest/gtest.h>

using namespace Formula;

namespace {

class Engine_Limits : public testing::Test {
protected:
    QString Error_Of(const QString& program)
    {
        evaluator.Execute(program);
        return evaluator.Last_Error().Description;
    }

    Scripted_Services services;
    bkcEvaluate evaluator{services};
};

TEST_F(Engine_Limits, Parentheses_Nest_So_Deep_And_No_Deeper)
{
    const auto nested = [](int depth) { return QString(depth, u'(') + u'1' + QString(depth, u')'); };
    EXPECT_EQ("Long 1", Shown(evaluator.Value(nested(1000))).toStdString());
    for (const int depth : {1001, 1'000'000}) {
        EXPECT_TRUE(evaluator.Value(nested(depth)).Is_Empty());
        EXPECT_EQ(2, evaluator.Last_Error().Code);
        EXPECT_EQ(1001, evaluator.Last_Error().Position);
        EXPECT_EQ("Compiler error allocating memory", evaluator.Last_Error().Description.toStdString());
    }
}

TEST_F(Engine_Limits, Arguments_Nest_So_Deep_And_No_Deeper)
{
    const auto nested = [](int depth) { return QStringLiteral("Trim(").repeated(depth) + u'1' + QString(depth, u')'); };
    EXPECT_EQ("String 1", Shown(evaluator.Value(nested(1000))).toStdString());
    for (const int depth : {1001, 100'000}) {
        EXPECT_TRUE(evaluator.Value(nested(depth)).Is_Empty());
        EXPECT_EQ(2, evaluator.Last_Error().Code);
    }
}

TEST_F(Engine_Limits, Statements_Nest_So_Deep_And_No_Deeper)
{
    const auto nested = [](int depth) {
        return QStringLiteral("If 1=1 Then\n").repeated(depth) + QStringLiteral("x = 1\n") +
               QStringLiteral("End If\n").repeated(depth);
    };
    EXPECT_EQ("", Error_Of(nested(1000)).toStdString());
    EXPECT_EQ("Compiler error allocating memory", Error_Of(nested(1001)).toStdString());
    EXPECT_EQ("Compiler error allocating memory",
              Error_Of(QStringLiteral("If 1=1 Then\n").repeated(100'000)).toStdString());
    EXPECT_EQ("Compiler error allocating memory",
              Error_Of(QStringLiteral("If 1=1 Then ").repeated(100'000)).toStdString());
    EXPECT_EQ("Compiler error allocating memory", Error_Of(QStringLiteral("Do\n").repeated(100'000)).toStdString());
}

TEST_F(Engine_Limits, Calls_Nest_So_Deep_And_No_Deeper)
{
    const QString program = QStringLiteral("x = f(%1)\nEnd\nFunction f(ByVal n)\nIf n > 1 Then f = f(n - 1) Else f = "
                                           "1\nEnd Function");
    EXPECT_EQ("", Error_Of(program.arg(10'000)).toStdString());
    EXPECT_EQ("Out of stack space", Error_Of(program.arg(10'001)).toStdString());
}

TEST_F(Engine_Limits, A_Run_Ends_After_So_Many_Instructions)
{
    evaluator.Set_InstructionLimit(1000);
    EXPECT_EQ("Expression too complex", Error_Of(QStringLiteral("Do\nLoop")).toStdString());
    EXPECT_EQ("Expression too complex", Error_Of(QStringLiteral("again:\nGoTo again")).toStdString());
    EXPECT_TRUE(evaluator.Execute(QStringLiteral("x = 1")));
}

/// Instructions that the engine runs together are counted, and stopped at, one by one.
TEST_F(Engine_Limits, The_Limit_Stops_At_Any_Instruction)
{
    ASSERT_TRUE(
        evaluator.Program(QStringLiteral("a = 3\nb = 4.5\nc = a + b\nd = 2 * a - 1 < b\nIf a > 2 Then e = a Mod 2\n"
                                         "If a = b Then e = 7\nf = 1 + c * 2")));
    const int count = evaluator.Code().Code_Count();
    for (int limit = 1; limit < count; ++limit) {
        evaluator.Set_InstructionLimit(limit);
        if (evaluator.Execute()) break;
        EXPECT_EQ("Expression too complex", evaluator.Last_Error().Description.toStdString());
        const int position = evaluator.Last_Error().Position;
        if (limit < 18) { // up to the first jump the records run in their order
            EXPECT_EQ(evaluator.Code().code[std::size_t(limit + 1)].Position, position) << limit;
        }
    }
    EXPECT_EQ("Double 16", Shown(evaluator.Variable(QStringLiteral("f")).value_or(Variant())).toStdString());
}

TEST_F(Engine_Limits, Each_Turn_Of_A_Loop_Counts_Its_Instructions)
{
    // 4 for the two assignments, 8 up to the first turn, 6 for each turn, 3 behind the last.
    const QString program = QStringLiteral("i = 0\nx = 0\nFor i = 1 To 3000\nx = x + i\nNext");
    const int count = 4 + 8 + 6 * 3000 + 3;
    evaluator.Set_InstructionLimit(count);
    EXPECT_EQ("", Error_Of(program).toStdString());
    evaluator.Set_InstructionLimit(count - 1);
    EXPECT_EQ("Expression too complex", Error_Of(program).toStdString());
    int calls = 0;
    evaluator.Set_ProcessEvents([&] { ++calls; });
    evaluator.Set_InstructionLimit(count);
    EXPECT_EQ("", Error_Of(program).toStdString());
    EXPECT_EQ(count - 9'999, calls) << "from the 10,000th instruction on after every one";
}

TEST_F(Engine_Limits, Loops_Left_By_GoTo_End_In_An_Error)
{
    EXPECT_EQ("Out of stack space",
              Error_Of(QStringLiteral("i = 0\nagain:\nFor i = 1 To 2\nGoTo again\nNext")).toStdString());
}

TEST_F(Engine_Limits, Operands_Left_On_The_Stack_End_In_An_Error)
{
    EXPECT_EQ("Out of stack space",
              Error_Of(QStringLiteral("again:\nx = Tessary.List(1).Count\nGoTo again")).toStdString());
}

TEST_F(Engine_Limits, A_Text_That_Grows_Without_End)
{
    EXPECT_EQ("Out of string space", Error_Of(QStringLiteral("s = \"abcdefgh\"\nDo\ns = s & s\nLoop")).toStdString());
}

QString Numbered(const char* line, int count)
{
    QString text;
    for (int i = 0; i < count; ++i) text += QString::fromLatin1(line).arg(i);
    return text;
}

TEST_F(Engine_Limits, So_Many_Names_And_No_More)
{
    EXPECT_EQ("", Error_Of(Numbered("v%1 = 1\n", 100'000)).toStdString());
    EXPECT_EQ("Error allocating variable", Error_Of(Numbered("v%1 = 1\n", 100'001)).toStdString());
    EXPECT_EQ(2, evaluator.Last_Error().Code);
    EXPECT_EQ("Error allocating variable", Error_Of(Numbered("Dim v%1\n", 100'001)).toStdString());
    EXPECT_EQ("Error allocating variable", Error_Of(Numbered("v%1 = Array(1)\n", 100'001)).toStdString());
    EXPECT_EQ("Error allocating constant", Error_Of(Numbered("Const c%1 = 1\n", 100'001)).toStdString());
    EXPECT_EQ(2, evaluator.Last_Error().Code);
}

TEST_F(Engine_Limits, A_Host_Supplies_So_Many_Variables_And_No_More)
{
    for (int i = 0; i < 100'000; ++i)
        ASSERT_TRUE(evaluator.AddVariable(QStringLiteral("v%1").arg(i), Variant(i)).value_or(false));
    EXPECT_TRUE(evaluator.AddVariable(QStringLiteral("V5"), Variant(7)).value_or(false)) << "a name that is there";
    const auto one_more = evaluator.AddVariable(QStringLiteral("w"), Variant(7));
    ASSERT_FALSE(one_more);
    EXPECT_EQ("Resource allocation error", Error_Description(one_more.error()));
    evaluator.Set_RaiseErrors(false);
    EXPECT_FALSE(evaluator.AddVariable(QStringLiteral("w"), Variant(7)).value_or(true));
}

TEST_F(Engine_Limits, The_Variables_Of_All_Calls_Are_Bounded)
{
    EXPECT_EQ("Out of stack space", Error_Of(QStringLiteral("f()\nEnd\nSub f()\n") + Numbered("Dim v%1\n", 2000) +
                                             QStringLiteral("f()\nEnd Sub"))
                                        .toStdString());
}

TEST_F(Engine_Limits, Events_Are_Processed_From_Instruction_Ten_Thousand_On)
{
    int calls = 0;
    evaluator.Set_ProcessEvents([&] { ++calls; });
    ASSERT_TRUE(evaluator.Execute(QStringLiteral("x = 1\nx = 2")));
    EXPECT_EQ(0, calls);
    // Each turn of the loop is one jump; the program is Do, and 10,004 of them.
    evaluator.Set_InstructionLimit(10'004);
    EXPECT_FALSE(evaluator.Execute(QStringLiteral("Do\nLoop")));
    EXPECT_EQ(6, calls) << "after the instructions 10,000 to 10,005";
}

TEST_F(Engine_Limits, The_Host_Ends_A_Run_While_Events_Are_Processed)
{
    int calls = 0;
    evaluator.Set_ProcessEvents([&] {
        if (++calls == 3) evaluator.ExecutionTerminate();
    });
    EXPECT_TRUE(evaluator.Execute(QStringLiteral("x = 0\nDo\nx = x + 1\nLoop")));
    EXPECT_EQ(3, calls);
    EXPECT_EQ(-1, evaluator.SourceStatement());
    EXPECT_TRUE(evaluator.Execute(QStringLiteral("x = 1"))) << "the next run starts anew";
}

TEST_F(Engine_Limits, Each_Run_Begins_With_The_Dimensions_That_Were_Declared)
{
    ASSERT_TRUE(evaluator.Program(QStringLiteral("a = 5\nReDim a(3)")));
    EXPECT_TRUE(evaluator.Execute());
    EXPECT_TRUE(evaluator.Execute()) << evaluator.Last_Error().Description.toStdString();
    ASSERT_TRUE(evaluator.Program(QStringLiteral("Dim a()\na = 5")));
    for (int run = 1; run <= 2; ++run) {
        EXPECT_FALSE(evaluator.Execute());
        EXPECT_EQ("Invalid array assignment", evaluator.Last_Error().Description.toStdString()) << "run " << run;
    }
}

TEST_F(Engine_Limits, The_Engine_Has_A_Text_For_Each_Of_Its_Numbers)
{
    const std::pair<int, const char*> texts[] = {
        {32769, "Stack underflow"},          {32770, "Not an array"},           {32771, "Array index invalid"},
        {32772, "Invalid array assignment"}, {32773, "Unknown constant"},       {32774, "Unknown variable"},
        {32775, "Uninitialized variable"},   {32776, "Undimensioned variable"}, {32777, "Resource allocation error"},
        {32778, "Execution engine error"}};
    for (const auto& [number, text] : texts) EXPECT_EQ(text, Error_Description(Error_Number(number)));
}

TEST_F(Engine_Limits, A_Megabyte_Of_Names_Labels_And_Statements_Compiles)
{
    QString text;
    for (int i = 0; text.size() < (1 << 20); ++i) text += QStringLiteral("v%1 = %1\nl%1:\n").arg(i);
    EXPECT_TRUE(evaluator.Program(text));
    EXPECT_GT(evaluator.VariableCount(), 30'000);
}

} // namespace
