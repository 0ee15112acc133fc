#include "evaluate/bkcEvaluate.h"

#include "evaluate/variant/Variant_Array.h"
#include "tests/evaluate/engine/Scripted_Services.h"

#include <gtest/gtest.h>

using namespace Formula;

namespace {

QString operator""_q(const char* text, std::size_t size)
{
    return QString::fromUtf8(text, qsizetype(size));
}

Variant Text(const char* text)
{
    return Variant(QString::fromUtf8(text));
}

Variant Whole(int number)
{
    return Variant(std::int32_t(number));
}

class Evaluator : public testing::Test {
protected:
    Evaluator() { evaluator.Set_PromptUninitialized(false); }

    std::string Error_Now() const
    {
        int code = 0, position = 0;
        QString text;
        if (!evaluator.Error(code, text, position)) return "none";
        return std::to_string(code) + " " + text.toStdString() + " at " + std::to_string(position);
    }

    Scripted_Services services;
    bkcEvaluate evaluator{services};
};

TEST_F(Evaluator, Value_Before_Any_Compile_Is_Empty)
{
    EXPECT_TRUE(evaluator.Value().Is_Empty());
    EXPECT_EQ("none", Error_Now());
}

TEST_F(Evaluator, Error_After_Success_Leaves_Its_Arguments_Alone)
{
    evaluator.Value("1"_q);
    int code = 77, position = 78;
    QString text = "untouched"_q;
    EXPECT_FALSE(evaluator.Error(code, text, position));
    EXPECT_EQ(77, code);
    EXPECT_EQ(78, position);
    EXPECT_EQ("untouched", text.toStdString());
}

TEST_F(Evaluator, An_Expression_Records_No_Statement)
{
    EXPECT_TRUE(evaluator.Expression("1 + 2"_q));
    EXPECT_EQ(0, evaluator.SourceStatementCount());
}

TEST_F(Evaluator, Compiling_Runs_Nothing)
{
    EXPECT_TRUE(evaluator.Expression("1/0"_q));
    EXPECT_EQ("none", Error_Now());
    EXPECT_TRUE(evaluator.Value().Is_Empty());
    EXPECT_EQ("11 Division by zero at 2", Error_Now());
}

TEST_F(Evaluator, Hosts_Set_Variables_And_Run_Again)
{
    ASSERT_TRUE(evaluator.Expression("a & \"-\" & B"_q));
    for (int i = 1; i <= 3; ++i) {
        evaluator.Set_Variable("A"_q, Whole(i));
        evaluator.Set_Variable("b"_q, Text("x"));
        EXPECT_EQ(QString::number(i) + "-x"_q, evaluator.Value().Text());
    }
}

TEST_F(Evaluator, A_Failed_Compile_Leaves_Nothing_To_Run)
{
    EXPECT_FALSE(evaluator.Expression("1 +* 2"_q));
    EXPECT_EQ("1 Error in expression syntax or in compiler at 4", Error_Now());
    EXPECT_TRUE(evaluator.Value().Is_Empty());
    EXPECT_EQ("1 Error in expression syntax or in compiler at 4", Error_Now());
    EXPECT_FALSE(evaluator.Execute());
    EXPECT_FALSE(evaluator.ExecuteStep());
    EXPECT_EQ("1 Error in expression syntax or in compiler at 4", Error_Now());
    EXPECT_EQ(3, evaluator.Value("3"_q).Long());
}

TEST_F(Evaluator, Predefined_Values_Survive_A_Compile)
{
    evaluator.Set_Variable("a"_q, Whole(5));
    EXPECT_EQ(6, evaluator.Value("a + 1"_q).Long());
    EXPECT_EQ(7, evaluator.ProgramValue("=a + 2"_q).Long());
}

TEST_F(Evaluator, A_Program_Starts_With_The_Predefined_Values_In_Each_Run)
{
    evaluator.Set_Variable("a"_q, Whole(5));
    ASSERT_TRUE(evaluator.Program("a = a + 1"_q));
    ASSERT_TRUE(evaluator.Execute());
    EXPECT_EQ(6, evaluator.Variable("a"_q)->Long());
    ASSERT_TRUE(evaluator.Execute());
    EXPECT_EQ(6, evaluator.Variable("a"_q)->Long());
}

TEST_F(Evaluator, A_Program_May_Declare_What_The_Host_Supplied)
{
    evaluator.Set_Variable("a"_q, Whole(5));
    EXPECT_TRUE(evaluator.Execute("Dim a\nb = a"_q));
    EXPECT_EQ(5, evaluator.Variable("b"_q)->Long());
    EXPECT_FALSE(evaluator.Program("Dim a\nDim a"_q));
}

TEST_F(Evaluator, An_Empty_Clears_The_Variable_But_Not_What_Is_Supplied)
{
    evaluator.Set_Variable("a"_q, Whole(5));
    evaluator.Set_Variable("a"_q, Variant());
    EXPECT_TRUE(evaluator.Variable("a"_q)->Is_Empty());
    EXPECT_EQ(5, evaluator.Value("a"_q).Long());
}

TEST_F(Evaluator, An_Array_Takes_No_Scalar_From_The_Host)
{
    evaluator.Program("Dim a()"_q);
    EXPECT_EQ(Error_Number::Invalid_Array_Assignment, evaluator.AddVariable("a"_q, Whole(1)).error());
    evaluator.Set_RaiseErrors(false);
    EXPECT_FALSE(*evaluator.AddVariable("a"_q, Whole(1)));
}

TEST_F(Evaluator, Static_Variables_Are_Cleared_By_The_Next_Run)
{
    ASSERT_TRUE(
        evaluator.Program("x = f()\nEnd\nFunction f()\nStatic s\nx = IsEmpty(s)\ns = 1\nf = x\nEnd Function"_q));
    ASSERT_TRUE(evaluator.Execute());
    EXPECT_TRUE(evaluator.Variable("x"_q)->Boolean());
    ASSERT_TRUE(evaluator.Execute());
    EXPECT_TRUE(evaluator.Variable("x"_q)->Boolean());
}

TEST_F(Evaluator, Without_Raising_Errors_Unknown_Names_Are_Empty)
{
    evaluator.Set_RaiseErrors(false);
    EXPECT_FALSE(evaluator.RaiseErrors());
    EXPECT_TRUE(evaluator.Value("x & \"\""_q).Text().isEmpty());
    EXPECT_TRUE(evaluator.Execute("Dim a\nb = a & \"!\""_q));
    EXPECT_EQ("!", evaluator.Variable("b"_q)->Text().toStdString());
    EXPECT_TRUE(evaluator.Variable("nobody"_q)->Is_Empty());
    EXPECT_FALSE(evaluator.Execute("x = 1 + Left(\"a\")"_q)) << "a missing operand raises all the same";
}

TEST_F(Evaluator, Without_Raising_Errors_Functions_Find_An_Unknown_Name_Empty)
{
    const auto reference = Make_List({Whole(0), Text("nobody")});
    EXPECT_FALSE(evaluator.c_IsEmpty(reference));
    evaluator.Set_RaiseErrors(false);
    EXPECT_TRUE(evaluator.c_IsEmpty(reference));
    EXPECT_FALSE(evaluator.c_IsArray(reference));
    EXPECT_TRUE(evaluator.Value("IsEmpty(nobody)"_q).Boolean());
    EXPECT_FALSE(evaluator.Value("IsArray(nobody)"_q).Boolean());
    for (const char* formula : {"LBound(nobody)", "UBound(nobody)", "ASort(nobody)", "Match(1, nobody)"}) {
        EXPECT_TRUE(evaluator.Value(QString::fromLatin1(formula)).Is_Empty());
        EXPECT_EQ("32771 Array index invalid at 1", Error_Now()) << formula;
    }
    EXPECT_EQ(0, evaluator.VariableCount()) << "nothing came to be";
    EXPECT_FALSE(evaluator.Execute("x = f(nobody)\nEnd\nFunction f(n)\nEnd Function"_q));
    EXPECT_EQ(32778, evaluator.Last_Error().Code) << "an argument must be there all the same";
}

TEST_F(Evaluator, Without_Raising_Errors_Arrays_That_Are_Not_There_Read_Empty_And_Take_Nothing)
{
    constexpr const char* programs[][2] = {
        {"ReDim a(3)\nx = \"on\"", "Unknown variable"},
        {"ReDim Preserve a(1 To 3, 2)\nx = \"on\"", "Unknown variable"},
        {"Erase a\nx = \"on\"", "Unknown variable"},
        {"Dim a()\na(1) = 5\nx = \"on\"", "Uninitialized variable"},
        {"Dim a()\nx = a(1, 2) & \"on\"", "Uninitialized variable"},
    };
    for (const auto& [program, error] : programs) {
        evaluator.Set_RaiseErrors(true);
        EXPECT_FALSE(evaluator.Execute(QString::fromLatin1(program)));
        EXPECT_EQ(QString::fromLatin1(error), evaluator.Last_Error().Description) << program;
        evaluator.Set_RaiseErrors(false);
        EXPECT_TRUE(evaluator.Execute(QString::fromLatin1(program))) << program << Error_Now();
        EXPECT_EQ("on", evaluator.Variable("x"_q)->Text().toStdString());
        EXPECT_FALSE(evaluator.Variable("a"_q) && evaluator.Variable("a"_q)->Is_Array()) << program;
    }
}

TEST_F(Evaluator, Without_Raising_Errors_A_Name_That_The_Host_Removed_Is_No_Array)
{
    ASSERT_TRUE(evaluator.Program("a = Array(1, 2)\nx = a(0) & \"on\"\na(1) = 7"_q));
    evaluator.RemoveVariable("a"_q);
    EXPECT_FALSE(evaluator.Execute());
    EXPECT_EQ("32774 Unknown variable at 1", Error_Now());
    evaluator.Set_RaiseErrors(false);
    EXPECT_TRUE(evaluator.Execute()) << Error_Now();
    EXPECT_EQ("on", evaluator.Variable("x"_q)->Text().toStdString());
}

TEST_F(Evaluator, Without_Raising_Errors_An_Array_Is_Read_And_Replaced_Whole)
{
    evaluator.Set_RaiseErrors(false);
    ASSERT_TRUE(evaluator.Execute("a = Array(1, 2)\nx = Join(a, \"+\")\na = 5"_q)) << Error_Now();
    EXPECT_EQ("1+2", evaluator.Variable("x"_q)->Text().toStdString());
    EXPECT_EQ(5, evaluator.Variable("a"_q)->Long());
}

TEST_F(Evaluator, Asks_For_Unknown_Variables)
{
    evaluator.Set_PromptUninitialized(true);
    EXPECT_TRUE(evaluator.PromptUninitialized());
    services.answers = {"7"_q};
    EXPECT_EQ("7!", evaluator.Value("Size & \"!\""_q).Text().toStdString());
    EXPECT_EQ((QStringList{"Supply Value For Size|Size"_q}), services.asked);
    services.answers = {"8"_q};
    EXPECT_EQ("8!", evaluator.Value().Text().toStdString()) << "the next run asks again";
}

TEST_F(Evaluator, Asks_Again_For_What_Was_Asked_Once_Also_With_Prompts_Off)
{
    evaluator.Set_PromptUninitialized(true);
    services.answers = {"7"_q};
    EXPECT_EQ("7", evaluator.Value("Size"_q).Text().toStdString());
    evaluator.Set_PromptUninitialized(false);
    services.answers = {"8"_q};
    EXPECT_EQ("8", evaluator.Value().Text().toStdString());
    EXPECT_EQ((QStringList{"Supply Value For Size|Size"_q, "Supply Value For Size|Size"_q}), services.asked);
    evaluator.Set_AllowedAccess(unsigned(Access_Class::Pure));
    evaluator.Value();
    EXPECT_EQ("32775 Uninitialized variable at 1", Error_Now()) << "without dialogs nothing is asked";
}

TEST_F(Evaluator, Asks_For_The_Arguments_Of_A_Procedure_It_Runs_Into)
{
    services.answers = {"1"_q, "2"_q};
    ASSERT_TRUE(evaluator.Execute("Function f(ByVal First, ByVal Second)\nx = First & Second\nEnd Function"_q));
    EXPECT_EQ((QStringList{"Supply Value For Argument 1|First"_q, "Supply Value For Argument 2|Second"_q}),
              services.asked);
    EXPECT_EQ("12", evaluator.Variable("x"_q)->Text().toStdString());
}

TEST_F(Evaluator, Removes_Variables_By_Name_And_Index)
{
    evaluator.Set_Variable("b"_q, Whole(2));
    evaluator.Set_Variable("a"_q, Whole(1));
    evaluator.Set_Variable("c"_q, Whole(3));
    EXPECT_EQ("a", evaluator.VariableName(1).toStdString());
    evaluator.RemoveVariable(1);
    EXPECT_EQ(2, evaluator.VariableCount());
    evaluator.RemoveVariable("C"_q);
    EXPECT_EQ(1, evaluator.VariableCount());
    evaluator.Value("c"_q);
    EXPECT_EQ("32774 Unknown variable at 1", Error_Now());
    for (const int nobody : {0, -1, 2}) evaluator.RemoveVariable(nobody);
    EXPECT_EQ(1, evaluator.VariableCount());
    ASSERT_TRUE(evaluator.Program("Const five = 5"_q));
    evaluator.RemoveVariable(QString());
    EXPECT_EQ(0, evaluator.VariableCount());
    EXPECT_TRUE(evaluator.Code().procedures[Program_Code::Main].Constants.rows.empty());
    evaluator.Value("b"_q);
    EXPECT_EQ("32774 Unknown variable at 1", Error_Now());
}

TEST_F(Evaluator, Removing_A_Variable_Moves_The_Others_Under_A_Compiled_Formula)
{
    evaluator.Set_Variable("a"_q, Whole(1));
    evaluator.Set_Variable("b"_q, Whole(2));
    ASSERT_TRUE(evaluator.Expression("b"_q));
    EXPECT_EQ(2, evaluator.Value().Long());
    evaluator.RemoveVariable("a"_q);
    EXPECT_EQ(2, evaluator.Value().Long());
    evaluator.RemoveVariable("b"_q);
    EXPECT_TRUE(evaluator.Value().Is_Empty());
    EXPECT_EQ("32774 Unknown variable at 1", Error_Now());
}

TEST_F(Evaluator, Lists_Variables_In_The_Order_Of_Their_Names)
{
    ASSERT_TRUE(evaluator.Execute("c = 3\nA = 1\nb = 2"_q));
    EXPECT_EQ(3, evaluator.VariableCount());
    EXPECT_EQ("@Main", evaluator.VariableName(0).toStdString());
    EXPECT_EQ("A", evaluator.VariableName(1).toStdString());
    EXPECT_EQ("c", evaluator.VariableName(3).toStdString());
    EXPECT_EQ("", evaluator.VariableName(4).toStdString());
    EXPECT_EQ(2, evaluator.Variable(2)->Long());
    EXPECT_EQ(Error_Number::Unknown_Variable, evaluator.Variable(4).error());
    EXPECT_EQ(Error_Number::Unknown_Variable, evaluator.Variable("d"_q).error());
}

TEST_F(Evaluator, VariableValue_Goes_Through_The_Lookup_Of_A_Run)
{
    evaluator.Execute("Dim a\nb = 2"_q);
    EXPECT_EQ(2, evaluator.VariableValue("b"_q)->Long());
    EXPECT_EQ(Error_Number::Uninitialized_Variable, evaluator.VariableValue("a"_q).error());
    EXPECT_EQ(Error_Number::Unknown_Variable, evaluator.VariableValue("z"_q).error());
    evaluator.Set_PromptUninitialized(true);
    services.answers = {"9"_q};
    EXPECT_EQ("9", evaluator.VariableValue("z"_q)->Text().toStdString());
}

TEST_F(Evaluator, Steps_Through_Statements)
{
    ASSERT_TRUE(evaluator.Program("x = 1\ny = 2\nWhile y < 4\ny = y + 1\nWend"_q));
    EXPECT_EQ(5, evaluator.SourceStatementCount());
    EXPECT_EQ(0, evaluator.SourceStatement());
    std::vector<int> visited;
    for (int step = 0; step < 50; ++step) {
        ASSERT_TRUE(evaluator.ExecuteStep()) << Error_Now();
        visited.push_back(evaluator.SourceStatement());
        if (visited.back() == -1) break;
    }
    EXPECT_EQ((std::vector<int>{2, 3, 4, 5, 3, 4, 5, 3, 5, -1}), visited);
    EXPECT_EQ(4, evaluator.Variable("y"_q)->Long());
    EXPECT_EQ(1, evaluator.SourceStatementBegin(1));
    EXPECT_EQ(7, evaluator.SourceStatementBegin(2));
    EXPECT_EQ(-1, evaluator.SourceStatementBegin(0));
    EXPECT_EQ(35, evaluator.SourceStatementBegin(5));
    EXPECT_EQ(-1, evaluator.SourceStatementBegin(6));
}

TEST_F(Evaluator, Locals_Of_The_Call_That_Failed_Can_Be_Read)
{
    EXPECT_FALSE(evaluator.Execute("x = f(3)\nEnd\nFunction f(ByVal n)\nDim m\nm = n + 1\nf = m / 0\nEnd Function"_q));
    EXPECT_EQ(2, evaluator.LocalVariableCount());
    EXPECT_EQ("m", evaluator.LocalVariableName(1).toStdString());
    EXPECT_EQ("n", evaluator.LocalVariableName(2).toStdString());
    EXPECT_EQ("", evaluator.LocalVariableName(3).toStdString());
    EXPECT_EQ(4, evaluator.LocalVariable("M"_q)->Long());
    EXPECT_EQ(3, evaluator.LocalVariable(2)->Long());
    EXPECT_EQ(Error_Number::Unknown_Variable, evaluator.LocalVariable("x"_q).error());
    evaluator.Set_RaiseErrors(false);
    EXPECT_TRUE(evaluator.LocalVariable("x"_q)->Is_Empty());
}

TEST_F(Evaluator, A_Run_That_Ended_Inside_A_Call_Stands_In_The_Main_Program)
{
    const QString text = "x = f(1)\nEnd\nFunction f(ByVal n)\nWhile True\nEnd\nWend\nEnd Function"_q;
    ASSERT_TRUE(evaluator.Execute(text));
    EXPECT_EQ("x", evaluator.LocalVariableName(1).toStdString());
    ASSERT_TRUE(evaluator.Program(text));
    for (int step = 0; step < 9 && evaluator.SourceStatement() != -1; ++step) ASSERT_TRUE(evaluator.ExecuteStep());
    EXPECT_EQ("x", evaluator.LocalVariableName(1).toStdString());
}

TEST_F(Evaluator, Terminate_Leaves_Nothing_To_Step)
{
    evaluator.Program("x = 1\ny = 2"_q);
    evaluator.ExecuteStep();
    evaluator.ExecutionTerminate();
    EXPECT_EQ(-1, evaluator.SourceStatement());
    EXPECT_TRUE(evaluator.ExecuteStep());
    EXPECT_TRUE(evaluator.Variable("y"_q)->Is_Empty());
}

TEST_F(Evaluator, A_Step_Is_Repeated_Behind_An_Error)
{
    evaluator.Program("Dim a()\nReDim a(5 To 1)"_q);
    for (int step = 0; step < 20; ++step) evaluator.ExecuteStep();
    EXPECT_EQ("32769 Stack underflow at 9", Error_Now());
}

TEST_F(Evaluator, A_Step_Goes_On_Once_The_Host_Supplied_What_Was_Missing)
{
    evaluator.Program("x = q + 1"_q);
    EXPECT_FALSE(evaluator.ExecuteStep());
    EXPECT_EQ("32774 Unknown variable at 5", Error_Now());
    evaluator.Set_Variable("q"_q, Whole(5));
    EXPECT_TRUE(evaluator.ExecuteStep());
    EXPECT_EQ("none", Error_Now());
    EXPECT_EQ(6, evaluator.Variable("x"_q)->Long());
}

TEST_F(Evaluator, Lists_Public_And_Undefined_Procedures)
{
    ASSERT_TRUE(evaluator.Program(
        "x = Zoo(1)\nEnd\nFunction b()\nEnd Function\nPrivate Sub c()\nEnd Sub\nPublic Sub A()\nCall Missing()\nEnd Sub"_q));
    EXPECT_EQ(" A  b ", evaluator.ProgramPublic().toStdString());
    QStringList names = {"left from before"_q};
    EXPECT_EQ(2, evaluator.Undefined(names));
    EXPECT_EQ((QStringList{"Missing"_q, "Zoo"_q}), names);
    ASSERT_TRUE(evaluator.Program("x = 1"_q));
    EXPECT_EQ(0, evaluator.Undefined(names));
    EXPECT_TRUE(names.isEmpty());
    EXPECT_EQ("", evaluator.ProgramPublic().toStdString());
}

TEST_F(Evaluator, Labels_Are_Read_And_Set)
{
    evaluator.Program("x = 1\nhere:\ny = 2"_q);
    EXPECT_EQ(3, evaluator.c_Label_Get("HERE"_q));
    EXPECT_EQ(0, evaluator.c_Label_Get("nowhere"_q));
    evaluator.c_Label_Let("here"_q, 0);
    EXPECT_EQ(3, evaluator.c_Label_Get("here"_q));
    evaluator.c_Label_Let("here"_q, 1);
    EXPECT_EQ(1, evaluator.c_Label_Get("here"_q));
    evaluator.c_Label_Let("there"_q, 0);
    EXPECT_EQ(0, evaluator.c_Label_Get("there"_q));
}

TEST_F(Evaluator, Tests_References)
{
    evaluator.Execute("Dim e\na = Array(1)\nb = 2"_q);
    const auto reference = [](const char* name) { return Make_List({Whole(0), Text(name)}); };
    EXPECT_TRUE(evaluator.c_IsArray(reference("a")));
    EXPECT_FALSE(evaluator.c_IsArray(reference("b")));
    EXPECT_TRUE(evaluator.c_IsEmpty(reference("e")));
    EXPECT_FALSE(evaluator.c_IsEmpty(reference("b")));
    EXPECT_FALSE(evaluator.c_IsArray(Whole(1)));
}

TEST_F(Evaluator, Searches_Like_The_Functions)
{
    EXPECT_EQ(2, evaluator.c_FirstLikeBegin("aB1b2"_q, "b#"_q));
    EXPECT_EQ(3, evaluator.c_FirstLikeEnd("aB1b2"_q, "b#"_q));
    EXPECT_EQ(4, evaluator.c_LastLikeBegin("aB1b2"_q, "b#"_q));
    EXPECT_EQ(5, evaluator.c_LastLikeEnd("aB1b2"_q, "b#"_q));
    EXPECT_EQ(0, evaluator.c_FirstLikeBegin("abc"_q, "#"_q));
    EXPECT_EQ(0, evaluator.c_FirstLikeBegin("abc"_q, "["_q));
}

struct Access_Case {
    const char* name;
    Access_Class access;
    const char* formula;
};

class Access : public testing::TestWithParam<Access_Case> {};

TEST_P(Access, Is_Refused_At_The_Position_Of_The_Function)
{
    Scripted_Services services;
    bkcEvaluate evaluator(services);
    EXPECT_EQ(All_Access, evaluator.AllowedAccess());
    evaluator.Set_AllowedAccess(All_Access & ~unsigned(GetParam().access));
    evaluator.Value("\"\" & "_q + QString::fromLatin1(GetParam().formula));
    EXPECT_EQ(70, evaluator.Last_Error().Code);
    EXPECT_EQ("Permission denied", evaluator.Last_Error().Description.toStdString());
    EXPECT_EQ(6, evaluator.Last_Error().Position);
    evaluator.Set_AllowedAccess(All_Access);
    evaluator.Value();
    EXPECT_NE(70, evaluator.Last_Error().Code);
}

INSTANTIATE_TEST_SUITE_P(
    All, Access,
    testing::Values(Access_Case{"dir", Access_Class::Files, "Dir(\"/*\")"},
                    Access_Case{"curdir", Access_Class::Files, "CurDir"},
                    Access_Case{"filelen", Access_Class::Files, "FileLen(\"/x\")"},
                    Access_Case{"filedatetime", Access_Class::Files, "FileDateTime(\"/x\")"},
                    Access_Case{"getattr", Access_Class::Files, "GetAttr(\"/x\")"},
                    Access_Case{"environ", Access_Class::Environment, "Environ(\"HOME\")"},
                    Access_Case{"getsetting", Access_Class::Settings, "GetSetting(\"a\", \"b\", \"c\")"},
                    Access_Case{"inputbox", Access_Class::Dialog, "InputBox(\"a\")"},
                    Access_Case{"msgbox", Access_Class::Dialog, "MsgBox(\"a\")"},
                    Access_Case{"now", Access_Class::Clock, "Now"}, Access_Case{"date", Access_Class::Clock, "Date"},
                    Access_Case{"time", Access_Class::Clock, "Time"},
                    Access_Case{"timer", Access_Class::Clock, "Timer"}),
    [](const auto& row) { return row.param.name; });

TEST_F(Evaluator, Refuses_Beep_Randomize_And_Questions_Without_Their_Access)
{
    evaluator.Set_PromptUninitialized(true);
    evaluator.Set_AllowedAccess(unsigned(Access_Class::Pure));
    EXPECT_FALSE(evaluator.Execute("x = 1\nBeep"_q));
    EXPECT_EQ("70 Permission denied at 7", Error_Now());
    EXPECT_EQ(0, services.beeps);
    EXPECT_FALSE(evaluator.Execute("Randomize"_q));
    EXPECT_EQ("70 Permission denied at 1", Error_Now());
    EXPECT_TRUE(evaluator.Execute("Randomize 3"_q));
    evaluator.Value("x"_q);
    EXPECT_EQ("32774 Unknown variable at 1", Error_Now());
    EXPECT_TRUE(evaluator.Execute("Sub f(ByVal a)\nEnd Sub"_q));
    EXPECT_TRUE(services.asked.isEmpty());
    evaluator.Set_AllowedAccess(All_Access);
    EXPECT_TRUE(evaluator.Execute("Beep"_q));
    EXPECT_EQ(1, services.beeps);
}

TEST_F(Evaluator, The_Rename_Formula)
{
    ASSERT_TRUE(evaluator.Expression("ChangeTo & \"-\" & Format(FileDate, \"yyyymmdd\")  & \"-\" & FileSerial"_q));
    evaluator.Set_Variable("ChangeTo"_q, Text("trip"));
    evaluator.Set_Variable("FileDate"_q, Variant(Date_Value{38000.5}));
    evaluator.Set_Variable("FileSerial"_q, Text("012"));
    EXPECT_EQ("trip-20040114-012", evaluator.Value().Text().toStdString());
}

} // namespace
