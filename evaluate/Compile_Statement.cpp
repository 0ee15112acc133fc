// Statements but for the blocks: assignments, calls, declarations, jumps.

#include "evaluate/Compiler.h"

namespace Formula {

bool Compiler::Compile_Statement()
{
    Skip_Line_Ends();
    if (token_.word == Token::None) return Syntax_Error("Unexpected end of program");
    if (token_.word == Token::End_Of_Source) return true;
    Record_Statement(token_.start);
    return Dispatch_Statement();
}

bool Compiler::Dispatch_Statement()
{
    static const Token_Word mid = Find_Keyword(u"MID")->word;
    static const Token_Word mid_b = Find_Keyword(u"MIDB")->word;
    switch (Class_Of(token_.word)) {
    case Token_Class::Identifier: return Compile_Name_Statement();
    case Token_Class::Statement: return Dispatch_Keyword();
    case Token_Class::Function:
        if (token_.word == mid) return Compile_Mid(Token::Mid_Store);
        if (token_.word == mid_b) return Compile_Mid(Token::Mid_B_Store);
        return Syntax_Error("Unknown statement");
    case Token_Class::Constant:
    case Token_Class::Niladic:
    case Token_Class::Method: return Syntax_Error("Unknown statement");
    default: return Syntax_Error("Unknown statement type"); // the colon parts no statements either
    }
}

bool Compiler::Dispatch_Keyword()
{
    switch (token_.word) {
    case Token::Beep: Emit(Token::Beep, Variant()); return Expect_Next();
    case Token::Call_Keyword: return Advance_To_Name("Expecting Function or Sub name") && Compile_Call_Statement();
    case Token::Const: return Compile_Const();
    case Token::Dim: return Compile_Dim(0);
    case Token::Static: return Compile_Dim(Variable_Flag::Static);
    case Token::Do: return Compile_Do();
    case Token::Erase: return Compile_Erase();
    case Token::For: return Compile_For();
    case Token::Go_To: return Compile_Go_To();
    case Token::End: Emit(Token::Stop, Variant()); return Expect_Next();
    case Token::Exit: return Compile_Exit();
    case Token::Function:
    case Token::Sub: return Compile_Procedure();
    case Token::If: return Compile_If();
    case Token::Option: return Compile_Option();
    case Token::Private:
    case Token::Public: return Compile_Visibility();
    case Token::Randomize: return Compile_Randomize();
    case Token::Re_Dim: return Compile_Re_Dim();
    case Token::While: return Compile_While();
    case Token::Case:
    case Token::Else:
    case Token::Else_If:
    case Token::Loop:
    case Token::Next:
    case Token::Wend: return Report_Error(2, QStringLiteral("Compiler error"), token_.start);
    default: return Syntax_Error("Unknown statement"); // SELECT, and words that are only parts of statements
    }
}

/// With One_Line a line end stops the statements too, so that what follows on the next line is not part of them.
bool Compiler::Compile_Statements_Until(std::initializer_list<Token_Word> stops, Block_Kind kind)
{
    Nesting level(*this);
    if (level.Too_Deep()) return false;
    for (;;) {
        if (kind == Block_Kind::Block) Skip_Line_Ends();
        if (token_.word == Token::None) return Syntax_Error("Unexpected end of program");
        if (token_.word == Token::End_Of_Source || At(stops)) return true;
        if (kind == Block_Kind::One_Line && token_.word == Token::End_Of_Line) return true;
        if (!Compile_Statement()) return false;
    }
}

bool Compiler::Compile_Name_Statement()
{
    const Token_Word next = Peek();
    if (code_.Find_Procedure(token_.name) > Program_Code::Main)
        return next == Token::Equal ? Compile_Return_Value() : Compile_Call_Statement();
    if (next == Token::Colon) return Compile_Label();
    if (next == Token::Left_Paren)
        return Is_Variable(token_.name) ? Compile_Element_Assignment() : Compile_Call_Statement();
    return Compile_Assignment();
}

/// The parentheses must be written, also around nothing.
bool Compiler::Compile_Call_Statement()
{
    const int position = token_.start;
    if (!Compile_Call()) return false;
    if (token_.word != Token::Right_Paren) return Expect_Next() && Syntax_Error("Expecting right paren");
    Emit(Token::Drop, Variant(), position);
    return Expect_Next();
}

// name "=" expression | name "=" Array "(" ... ")"
bool Compiler::Compile_Assignment()
{
    const QString name = token_.name;
    const int position = token_.start;
    if (!Expect_Next() || !Take(Token::Equal, "Expecting equal sign and expression")) return false;
    if (token_.word == Array_Function()) return Compile_Array_Assignment(name, position);
    if (!Compile_Value(Token::None, Token::None)) return false;
    if (!Declare_If_Unknown(name)) return false;
    Emit(Token::Variable_Store, Variant(name), position);
    return true;
}

bool Compiler::Compile_Array_Assignment(const QString& name, int position)
{
    if (!Advance_To(Token::Left_Paren, "Expecting left paren and parameter(s)")) return false;
    int count = 0;
    if (Peek() == Token::Right_Paren) {
        Next_Token();
    } else {
        do {
            if (++count > 255) return Syntax_Error("Too many array elements (maximum of 255)");
            if (!Compile_Bracketed(Token::Comma, Token::None)) return false;
        } while (token_.word == Token::Comma);
        if (!Require(Token::Right_Paren, "Expecting comma and argument or right paren")) return false;
    }
    if (!Declare_Array_If_Unknown(name)) return false;
    Emit(Token::Array_Assign + count, Variant(name), position);
    return Expect_Next();
}

bool Compiler::Compile_Element_Assignment()
{
    const QString name = token_.name;
    const int position = token_.start;
    int count = 0;
    if (!Expect_Next() || !Compile_Indices(count) || !Expect_Next() ||
        !Take(Token::Equal, "Expecting equal sign and expression") || !Compile_Value(Token::None, Token::None))
        return false;
    Emit(Token::Element_Store + count, Variant(name), position);
    return true;
}

bool Compiler::Compile_Return_Value()
{
    const QString name = token_.name;
    const int position = token_.start;
    const int procedure = code_.Find_Procedure(name);
    if (code_.procedures[std::size_t(procedure)].Kind == Token::Sub) return Syntax_Error("Subs may not return values");
    if (!Expect_Next() || !Expect_Next() || !Compile_Value(Token::None, Token::None)) return false;
    Emit(Token::Set_Return_Value, Variant(name), position);
    return true;
}

// Mid "(" variable "," start [ "," length ] ")" "=" expression
bool Compiler::Compile_Mid(Token_Word store)
{
    const int position = token_.start;
    const char* const message = "Error in Mid statement syntax";
    if (!Advance_To(Token::Left_Paren, message) || !Advance_To_Name(message)) return false;
    Emit(Token::Reference, Variant(token_.name));
    int count = 1;
    if (!Advance_To(Token::Comma, message)) return false;
    while (token_.word == Token::Comma && count < 3) {
        ++count;
        if (!Compile_Bracketed(Token::Comma, Token::None)) return false;
    }
    if (!Require(Token::Right_Paren, "Expecting right paren and equal sign") || !Expect_Next() ||
        !Take(Token::Equal, "Expecting equal sign and expression") || !Compile_Value(Token::None, Token::None))
        return false;
    Emit(store, Variant(std::int32_t(count)), position);
    return true;
}

bool Compiler::Compile_Label()
{
    Define_Label(code_.labels.Find_Or_Add(token_.name));
    return Expect_Next() && Take(Token::Colon, "Expecting colon");
}

bool Compiler::Compile_Go_To()
{
    const int position = token_.start;
    if (!Advance_To_Name("Expecting GoTo label name")) return false;
    Emit(Token::Jump, Variant(token_.name), position);
    code_.code.back().Label = code_.labels.Find_Or_Add(token_.name);
    return Expect_Next();
}

/// Only a literal is a value here: no named constant, no True, nothing with a sign.
bool Compiler::Compile_Const()
{
    if (!Advance_To_Name("Expecting constant name")) return false;
    const QString name = token_.name;
    if (Current().Constants.Find(name) >= 0) return Syntax_Error("Constant already declared");
    if (!Expect_Next() || !Take(Token::Equal, "Expecting equal sign and value")) return false;
    if (Class_Of(token_.word) != Token_Class::Literal) return Syntax_Error("Expecting value for constant");
    if (!Current().Constants.Has_Room())
        return Report_Error(2, QStringLiteral("Error allocating constant"), token_.start);
    Current().Constants.Store(name, token_.value);
    return Expect_Next();
}

/// Declares, without code. The parentheses of an array hold nothing: its bounds are the business of ReDim.
bool Compiler::Compile_Dim(int flags)
{
    do {
        if (!Advance_To_Name("Expecting variable name")) return false;
        Variable_Table& variables = Current().Variables;
        int row = variables.Find(token_.name);
        // What the host supplied may be declared by the program once more.
        if (row >= 0 && !variables.rows[std::size_t(row)].By_Host) return Syntax_Error("Variable already declared");
        if (row < 0) row = Declare(variables, token_.name);
        if (row < 0) return false;
        variables.rows[std::size_t(row)].Flags |= flags;
        variables.rows[std::size_t(row)].By_Host = false;
        if (!Expect_Next()) return false;
        if (token_.word == Token::Left_Paren) {
            variables.Declare_Array(row);
            if (!Advance_To(Token::Right_Paren, "Expecting right paren") || !Expect_Next()) return false;
        }
    } while (token_.word == Token::Comma);
    return At_Line_End() || Syntax_Error("Expecting comma or end of line");
}

// ReDim [ Preserve ] name "(" bound [ To bound ] { "," bound [ To bound ] } ")"
bool Compiler::Compile_Re_Dim()
{
    const int position = token_.start;
    if (!Expect_Next()) return false;
    const bool preserve = token_.word == Token::Preserve;
    if (preserve && !Expect_Next()) return false;
    if (!Require(Token::Identifier, "Expecting array identifier")) return false;
    const QString name = token_.name;
    if (!Advance_To(Token::Left_Paren, "Expecting left paren and array dimension")) return false;
    int dimensions = 0;
    if (!Compile_Bounds(dimensions)) return false;
    Emit_Long(dimensions);
    Emit(preserve ? Token::Re_Dim_Preserve : Token::Re_Dim, Variant(name), position);
    return Expect_Next();
}

bool Compiler::Compile_Bounds(int& dimensions)
{
    const char* const wrong_count = "Arrays may have a minimum of one and a maximum of three dimensions";
    if (Peek() == Token::Right_Paren) {
        Next_Token();
        return Syntax_Error(wrong_count);
    }
    do {
        if (++dimensions > 3) return Syntax_Error(wrong_count);
        if (!Compile_Bracketed(Token::Comma, Token::To)) return false;
        const bool both = token_.word == Token::To;
        if (both && !Compile_Bracketed(Token::Comma, Token::None)) return false;
        Emit_Long(both ? 2 : 1);
        if (!At({Token::Comma, Token::Right_Paren}))
            return Syntax_Error(both ? "Expecting right paren" : "Expecting comma and bound or right paren");
    } while (token_.word == Token::Comma);
    return true;
}

bool Compiler::Compile_Erase()
{
    const int position = token_.start;
    do {
        if (!Advance_To_Name("Expecting array variable name")) return false;
        Emit(Token::Erase, Variant(token_.name), position);
        if (!Expect_Next()) return false;
    } while (token_.word == Token::Comma);
    return At_Line_End() || Syntax_Error("Expecting comma or end of line");
}

bool Compiler::Compile_Option()
{
    if (!Advance_To(Token::Base, "Expecting Base") || !Expect_Next()) return false;
    const bool whole = token_.word == Token::Number_Literal && token_.value.Type() == Variant_Type::Long;
    const int base = whole ? token_.value.Long() : -1;
    if (base != 0 && base != 1) return Syntax_Error("Expecting 0 or 1");
    code_.option_base = base;
    return Expect_Next();
}

/// The seed can only be a literal.
bool Compiler::Compile_Randomize()
{
    const int position = token_.start;
    if (!Expect_Next()) return false;
    const bool seeded = token_.word == Token::Number_Literal;
    if (seeded) {
        Emit(token_.word, token_.value);
        if (!Expect_Next()) return false;
    }
    Emit(Token::Randomize, Variant(std::int32_t(seeded)), position);
    return true;
}

bool Compiler::Compile_Exit()
{
    const int position = token_.start;
    if (!Expect_Next()) return false;
    if (!At({Token::Do, Token::For, Token::Function, Token::Sub}))
        return Syntax_Error("Expecting Exit and Do, For, Function, or Sub");
    Emit(Token::Exit_Block, Variant(std::int32_t(token_.word)), position);
    return Expect_Next();
}

bool Compiler::Compile_Visibility()
{
    const Token_Word next = Peek();
    if (next == Token::Function || next == Token::Sub) return Compile_Procedure();
    Next_Token();
    return Syntax_Error("Private or Public applies olny to Function or Sub");
}

} // namespace Formula
