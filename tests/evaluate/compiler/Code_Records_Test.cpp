// The code that texts compile to, as hosts display it: the word in hexadecimal, and the operand.

#include "evaluate/Compiler.h"
#include "evaluate/variant/Conversions.h"

#include <gtest/gtest.h>

using namespace Formula;

namespace {

/// Built-in functions by their names.
QString Word_Shown(Token_Word word)
{
    if (Class_Of(word) != Token_Class::Function || word == Token::Call) return QString::number(word, 16).toUpper();
    const auto name = Function_Rows()[std::size_t(Function_Row_Of(word))].built_in->name;
    return QString::fromLatin1(name.data(), qsizetype(name.size()));
}

QString Listing(const Program_Code& code)
{
    QStringList rows;
    for (int i = 1; i <= code.Code_Count(); ++i) {
        const Code_Record& record = code.code[std::size_t(i)];
        const QString operand = To_Display_Text(record.Operand).value_or(QString());
        rows += Word_Shown(record.Token) + (operand.isEmpty() ? QString() : u':' + operand);
    }
    return rows.join(u' ');
}

struct Code_Case {
    const char* name;
    const char* source;
    const char* listing;
};

class Expression_Code : public testing::TestWithParam<Code_Case> {};

TEST_P(Expression_Code, Is_Postfix)
{
    Program_Code code;
    Compiler compiler(code, QString::fromUtf8(GetParam().source));
    ASSERT_TRUE(compiler.Compile_Single_Expression());
    EXPECT_EQ(GetParam().listing, Listing(code).toStdString());
}

INSTANTIATE_TEST_SUITE_P(
    All, Expression_Code,
    testing::Values(
        Code_Case{"nothing", "", ""}, Code_Case{"a_number", "1", "552200:1"}, Code_Case{"a_text", "\"a\"", "582400:a"},
        Code_Case{"a_boolean", "True", "542200:True"}, Code_Case{"a_named_long", "vbMonday", "562200:2"},
        Code_Case{"a_named_text", "vbTab & \"\"", "582400:\t 582400 6C5264:2"},
        Code_Case{"a_named_double", "Pi", "572300:3.14159265358979"}, Code_Case{"a_variable", "x", "124A100:x"},
        Code_Case{"left_associative", "1-2-3", "552200:1 552200:2 6A516E:2 552200:3 6A516E:2"},
        Code_Case{"precedence", "1+2*3", "552200:1 552200:2 552200:3 65518C:2 69516E:2"},
        Code_Case{"a_sign_behind_its_operand", "-2^2", "552200:2 552200:2 645196:2 6B516E:1"},
        Code_Case{"a_plus_sign_leaves_nothing", "+2", "552200:2"},
        Code_Case{"a_sign_takes_the_waiting_minus", "2 - -3", "552200:2 552200:3 6A516E:2 6B516E:1"},
        Code_Case{"parentheses", "(1+2)*3", "552200:1 552200:2 69516E:2 552200:3 65518C:2"},
        Code_Case{"a_function_behind_its_arguments", "Mid(x, 1)", "124A100:x 552200:1 MID:2"},
        Code_Case{"a_filled_argument", "Max(1)", "552200:1 532000:126 MAX:2"},
        Code_Case{"a_call", "f(1, 2)", "552200:1 552200:2 562200:2 E96FC8:f"},
        Code_Case{"a_reference", "IsEmpty(x)", "12CA800:x ISEMPTY:1"}, Code_Case{"a_niladic_function", "Now", "613500"},
        Code_Case{"tessary", "Tessary.List(1).Item(2)", "552200:1 552200:2 131B000"}),
    [](const auto& row) { return row.param.name; });

class Program_Listing : public testing::TestWithParam<Code_Case> {};

TEST_P(Program_Listing, Has_Addresses_For_Its_Labels)
{
    Program_Code code;
    Compiler compiler(code, QString::fromUtf8(GetParam().source));
    ASSERT_TRUE(compiler.Compile_Program()) << compiler.Error().Description.toStdString();
    EXPECT_EQ(GetParam().listing, Listing(code).toStdString());
}

INSTANTIATE_TEST_SUITE_P(
    All, Program_Listing,
    testing::Values(
        Code_Case{"nothing", "", "13FC000"}, Code_Case{"an_assignment", "x=1", "552200:1 125A200:x 13FC000"},
        Code_Case{"the_value", "=1", "552200:1 125A200:=Value 13FC000 13FC000"},
        Code_Case{"an_array", "a=Array(1,2)", "552200:1 552200:2 126A302:a 13FC000"},
        Code_Case{"an_element", "a=Array(1)\na(0)=a(0)",
                  "552200:1 126A301:a 552200:0 552200:0 127A401:a 128A501:a 13FC000"},
        Code_Case{"if_on_one_line", "If True Then Beep Else End",
                  "542200:True 135C000:5 ED7000 133C000:5 13FC000 13FC000"},
        Code_Case{"while_wend", "While True\nWend", "542200:True 135C000:4 133C000:1 13FC000"},
        Code_Case{"do_loop", "Do\nLoop", "13BC100:3 133C000:2 13CC000:16019456 13FC000"},
        Code_Case{"do_until_loop", "Do Until True\nLoop",
                  "13BC100:5 542200:True 134C000:5 133C000:2 13CC000:16019456 13FC000"},
        Code_Case{"for_next", "For i=1 To 2\nNext",
                  "13BC200:11 582400:i 552200:1 552200:2 562200:1 136C000 137C000 135C000:11 137C000 134C000:9 "
                  "13CC000:16150528 138C000 13FC000"},
        Code_Case{"redim", "ReDim Preserve a(1, 2 To 3)",
                  "552200:1 562200:1 552200:2 552200:3 562200:2 562200:2 1097000:a 13FC000"},
        Code_Case{"a_function", "Function f()\nf=1\nEnd Function",
                  "139C000:f 552200:1 129A600:f 13AC000 13FC000 13FC000"},
        Code_Case{"a_default_that_a_call_leaves_out", "x=f()\nEnd\nFunction f(Optional ByVal n=7)\nEnd Function",
                  "532000:0 562200:1 E96FC8:f 125A200:x 13FC000 139C000:f 13AC000 13FC000 13FC000"},
        Code_Case{"a_call_statement", "Call f()\nSub f()\nEnd Sub",
                  "562200:0 E96FC8:f 13EC000 139C000:f 13AC000 13FC000 13FC000"},
        Code_Case{"a_jump_to_nowhere", "GoTo x", "133C000:0 13FC000"},
        Code_Case{"the_mid_statement", "Mid(s,1,2)=3", "12CA800:s 552200:1 552200:2 552200:3 12AA700:3 13FC000"},
        Code_Case{"erase", "Erase a, b", "F57000:a F57000:b 13FC000"},
        Code_Case{"randomize", "Randomize\nRandomize 5", "1077000:0 552200:5 1077000:1 13FC000"},
        Code_Case{"exit_do", "Exit Do", "13DC000:16019456 13FC000"},
        Code_Case{"declarations_leave_no_code", "Dim a\nStatic b\nConst c=1\nOption Base 1", "13FC000"}),
    [](const auto& row) { return row.param.name; });

TEST(Compiler, Keeps_The_First_Error_Only)
{
    Program_Code code;
    Compiler compiler(code, QStringLiteral("x = * 1\ny = \"abc"));
    EXPECT_FALSE(compiler.Compile_Program());
    EXPECT_EQ(": missing string delimiter", compiler.Error().Description.toStdString())
        << "the headers are looked for first, and every token is read for that";
}

TEST(Compiler, Records_A_Statement_For_Each_Loop_End_And_Call)
{
    Program_Code code;
    Compiler compiler(code, QStringLiteral("While False\nWend\nx = f() + 1"));
    ASSERT_TRUE(compiler.Compile_Program());
    std::vector<int> positions;
    for (const Statement_Record& statement : code.statements) positions.push_back(statement.Position);
    EXPECT_EQ((std::vector<int>{1, 13, 18, 22}), positions);
}

} // namespace
