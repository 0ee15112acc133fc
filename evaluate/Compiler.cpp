#include "evaluate/Compiler.h"

#include "frame/files/Limits.h"

#include <algorithm>

namespace Formula {

Compiler::Compiler(Program_Code& code, const QString& source) : code_(code), scanner_(source)
{
    if (source.size() > Current_Limits().formula_string_characters)
        Report_Error(2, QStringLiteral("Compiler error allocating memory"), 1);
}

bool Compiler::Nesting::Too_Deep()
{
    if (compiler_.nesting_ <= Current_Limits().formula_nesting) return false;
    compiler_.Report_Error(2, QStringLiteral("Compiler error allocating memory"), compiler_.token_.start);
    return true;
}

bool Compiler::Next_Token()
{
    if (peeked_) {
        token_ = std::move(next_);
        scanner_.Set_Position(next_position_);
        peeked_ = false;
    } else {
        token_ = scanner_.Next();
    }
    if (token_.word == Token::None && scanner_.Failed())
        Report_Error(scanner_.Failed()->Code, scanner_.Failed()->Description, scanner_.Failed()->Position);
    return token_.word != Token::None;
}

/// The token behind the current one. It is kept, so that no token is cut out of the text more than once.
Token_Word Compiler::Peek()
{
    if (!peeked_) {
        const int position = scanner_.Position();
        next_ = scanner_.Next();
        next_position_ = scanner_.Position();
        scanner_.Set_Position(position);
        peeked_ = true;
    }
    return next_.word;
}

bool Compiler::Expect_Next()
{
    return Next_Token() || Syntax_Error("Unexpected end of program");
}

bool Compiler::Require(Token_Word wanted, const char* message)
{
    return token_.word == wanted || Syntax_Error(message);
}

/// What the message asks for is missing too when no token can begin behind the wanted one.
bool Compiler::Take(Token_Word wanted, const char* message)
{
    return (token_.word == wanted && Next_Token()) || Syntax_Error(message);
}

bool Compiler::Advance_To(Token_Word wanted, const char* message)
{
    return Expect_Next() && Require(wanted, message);
}

bool Compiler::Advance_To_Name(const char* message)
{
    return Advance_To(Token::Identifier, message);
}

bool Compiler::At(std::initializer_list<Token_Word> words) const
{
    return std::find(words.begin(), words.end(), token_.word) != words.end();
}

void Compiler::Skip_Line_Ends()
{
    while (token_.word == Token::End_Of_Line) Next_Token();
}

/// Keeps the first error of a compile: what follows from it would only mislead.
bool Compiler::Report_Error(int code, const QString& text, int position)
{
    if (error_.Code == 0) error_ = {code, text, position};
    return false;
}

void Compiler::Emit(Token_Word token, const Variant& operand, int position)
{
    if (token == Token::No_Unary) return;
    code_.code.push_back({.Token = token, .Operand = operand, .Position = position});
}

void Compiler::Emit_Long(int number)
{
    Emit(Token::Long_Literal, Variant(number));
}

void Compiler::Emit_Jump(Token_Word token, int label, int position)
{
    Emit(token, Variant(), position);
    code_.code.back().Label = label;
}

void Compiler::Push_Operator(Token_Word token, int count, int position)
{
    if (token == Token::No_Unary) return;
    if (token != Token::Left_Paren) {
        // "Not greater than" makes every operator left associative, ^ included: 2^3^2 is 64. A sign or a Not comes this
        // way too, behind its operand, and so takes along an operator of its own or higher precedence that waits before
        // it: 2 - -3 is -(2 - 3).
        while (!operators_.empty() && Precedence_Of(token) <= Precedence_Of(operators_.back().token)) Pop_Operator();
    }
    operators_.push_back({token, count, position});
}

void Compiler::Pop_Operator()
{
    const Waiting_Operator top = operators_.back();
    operators_.pop_back();
    Emit(top.token, Variant(top.count), top.position);
}

/// Down to the marker, which goes too, or with Token::None all.
void Compiler::Flush_Operators(Token_Word until)
{
    while (!operators_.empty() && operators_.back().token != until) Pop_Operator();
    if (until != Token::None && !operators_.empty()) operators_.pop_back();
}

void Compiler::Record_Statement(int position)
{
    code_.statements.push_back({position, Next_Address()});
}

/// Labels of our own begin with "@", which no name in a text can. The number is the one of the labels so far or of the
/// code; where both have met, the next free one.
int Compiler::New_Label(int number)
{
    const auto name = [&] { return u'@' + QString::number(number); };
    while (code_.labels.Find(name()) != Name_Index::Not_Found) ++number;
    return code_.labels.Find_Or_Add(name());
}

void Compiler::Define_Label(int label)
{
    code_.labels.rows[std::size_t(label)].Address = Next_Address();
}

/// A label that nobody defined has the address 0; only a jump that is taken there is an error.
void Compiler::Resolve_Jumps()
{
    for (Code_Record& record : code_.code)
        if (record.Label >= 0) record.Operand = Variant(code_.labels.rows[std::size_t(record.Label)].Address);
}

bool Compiler::Is_Variable(QStringView name)
{
    return Current().Variables.Find(name) >= 0 || Main_Variables().Find(name) >= 0;
}

const Variant* Compiler::Find_Constant(QStringView name)
{
    for (const int procedure : {current_, int(Program_Code::Main)}) {
        const Value_Table& constants = code_.procedures[std::size_t(procedure)].Constants;
        if (const int row = constants.Find(name); row >= 0) return &constants.rows[std::size_t(row)].second;
    }
    return nullptr;
}

int Compiler::Declare(Variable_Table& variables, const QString& name)
{
    if (variables.Has_Room()) return variables.Declare(name);
    Report_Error(2, QStringLiteral("Error allocating variable"), token_.start);
    return -1;
}

/// A name that is known nowhere becomes a variable of the main program, also from within a procedure: it is global.
bool Compiler::Declare_If_Unknown(const QString& name)
{
    return Is_Variable(name) || Declare(Main_Variables(), name) >= 0;
}

bool Compiler::Declare_Array_If_Unknown(const QString& name)
{
    if (!Declare_If_Unknown(name)) return false;
    const int local = Current().Variables.Find(name);
    Variable_Table& table = local >= 0 ? Current().Variables : Main_Variables();
    table.Declare_Array(table.Find(name));
    return true;
}

/// An argument that must be a name leaves the message to what stands around it. Where nothing does, it is the call's.
bool Compiler::Explained(bool good)
{
    return good || Syntax_Error("Error in Function call");
}

bool Compiler::Compile_Single_Expression()
{
    if (error_.Code != 0) return false;
    return Explained(Expect_Next() && Compile_Value(Token::None, Token::None));
}

bool Compiler::Compile_Program()
{
    if (error_.Code != 0 || !Collect_Headers()) return false;
    scanner_.Set_Position(1);
    peeked_ = false;
    current_ = Program_Code::Main;
    if (!Explained(Compile_Statements_Of_Program())) return false;
    Emit(Token::Stop, Variant());
    Resolve_Jumps();
    return true;
}

/// So that calls may precede definitions. A place that is no token ends the search; the second pass reports it.
bool Compiler::Collect_Headers()
{
    token_ = {};
    while (token_.word != Token::End_Of_Source) {
        const Token_Word next = Peek();
        if ((next == Token::Function || next == Token::Sub) && !At({Token::Exit, Token::End})) {
            if (!At({Token::Private, Token::Public})) Next_Token();
            int procedure = 0;
            if (!Compile_Header(procedure)) return false;
        } else if (!Next_Token()) {
            return error_.Code == 0;
        }
    }
    return true;
}

bool Compiler::Compile_Statements_Of_Program()
{
    if (!Expect_Next()) return false;
    Skip_Line_Ends();
    if (token_.word == Token::Equal && !Compile_Value_Formula()) return false;
    while (token_.word != Token::End_Of_Source) {
        if (!Compile_Statement()) return false;
        if (token_.word == Token::End_Of_Line && !Expect_Next()) return false;
    }
    return true;
}

/// A text that begins with "=" has a value, which is a variable that no name in a text can equal.
bool Compiler::Compile_Value_Formula()
{
    const QString name = QStringLiteral("=Value");
    if (!Expect_Next() || !Compile_Value(Token::None, Token::None)) return false;
    if (!Declare_If_Unknown(name)) return false;
    Emit(Token::Variable_Store, Variant(name));
    Emit(Token::Stop, Variant());
    return true;
}

} // namespace Formula
