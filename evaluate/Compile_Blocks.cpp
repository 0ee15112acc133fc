// The statements that hold statements: If, While, Do, For. Each jump goes to a label; labels get their addresses when the
// code is complete.

#include "evaluate/Compiler.h"

namespace Formula {

// If expression Then statements { ElseIf expression Then statements } [ Else statements ] End If
// If expression Then statements [ Else statements ]                                        on one line
// On one line an End belongs to no If: it ends the statements, and then stands for itself.
bool Compiler::Compile_If()
{
    const int end_label = New_Label();
    Block_Kind kind = Block_Kind::Block;
    if (!Compile_Branch(end_label, kind, true)) return false;
    while (kind == Block_Kind::Block && token_.word == Token::Else_If)
        if (!Compile_Branch(end_label, kind, false)) return false;
    if (token_.word == Token::Else && !Compile_Else(kind)) return false;
    if (kind == Block_Kind::Block) {
        const char* const message = "Expecting End If and other statements";
        if (!Require(Token::End, message) || !Advance_To(Token::If, "Expecting End If") || !Take(message)) return false;
    }
    Define_Label(end_label);
    return true;
}

/// The first branch tells which form it is: a line end behind Then begins a block.
bool Compiler::Compile_Branch(int end_label, Block_Kind& kind, bool first)
{
    const int next_branch = New_Label();
    if (!Take("Expecting If or ElseIf and expression")) return false;
    if (!Compile_Value(Token::Then, Token::None)) return Syntax_Error("Error in expression syntax");
    Emit_Jump(Token::Jump_If_False, next_branch);
    if (!Take(Token::Then, "Expecting Then and statements")) return false;
    if (first) kind = token_.word == Token::End_Of_Line ? Block_Kind::Block : Block_Kind::One_Line;
    if (!Compile_Statements_Until({Token::Else_If, Token::Else, Token::End}, kind)) return false;
    Emit_Jump(Token::Jump, end_label);
    Define_Label(next_branch);
    return true;
}

bool Compiler::Compile_Else(Block_Kind kind)
{
    if (!Take("Expecting Else and statements")) return false;
    return Compile_Statements_Until({Token::End}, kind);
}

// While expression <line end> statements Wend
// No block stands for it at run time, so no Exit leaves it by name.
bool Compiler::Compile_While()
{
    const int top = New_Label(Next_Address());
    const int exit = New_Label();
    Define_Label(top);
    if (!Take("Expecting While and conditional expression")) return false;
    if (!Compile_Value(Token::None, Token::None)) return false;
    Emit_Jump(Token::Jump_If_False, exit);
    if (!Require(Token::End_Of_Line, "While statement syntax error")) return false;
    if (!Compile_Statements_Until({Token::Wend})) return false;
    const int position = token_.start;
    if (!Take(Token::Wend, "Expecting Wend and other statements")) return false;
    Record_Statement(position);
    Emit_Jump(Token::Jump, top, position);
    Define_Label(exit);
    return true;
}

// Do [ While expression | Until expression ] <line end> statements Loop [ While expression | Until expression ]
bool Compiler::Compile_Do()
{
    const int exit = New_Label();
    Emit_Jump(Token::Push_Do, exit);
    const int top = New_Label(Next_Address());
    Define_Label(top); // behind the push, which a turn must not repeat
    if (!Take("Expecting Do and While, Until, or statements")) return false;
    bool found = false;
    if (!Compile_Do_Condition(Token::Jump_If_False, Token::Jump_If_True, exit, found)) return false;
    if (!Require(Token::End_Of_Line, "Do statement syntax error")) return false;
    if (!Compile_Statements_Until({Token::Loop})) return false;
    const int position = token_.start;
    if (!Take(Token::Loop, "Expecting Loop and While, Until, or other statements")) return false;
    Record_Statement(position);
    if (!Compile_Do_Condition(Token::Jump_If_True, Token::Jump_If_False, top, found)) return false;
    if (!found) Emit_Jump(Token::Jump, top);
    Define_Label(exit);
    Emit(Token::Pop_Block, Variant(std::int32_t(Token::Do)));
    return true;
}

bool Compiler::Compile_Do_Condition(Token_Word jump_on_while, Token_Word jump_on_until, int label, bool& found)
{
    found = At({Token::While, Token::Until});
    if (!found) return true;
    const Token_Word jump = token_.word == Token::While ? jump_on_while : jump_on_until;
    if (!Expect_Next() || !Compile_Value(Token::None, Token::None)) return false;
    Emit_Jump(jump, label);
    return true;
}

// For counter "=" expression To expression [ Step expression ] <line end> statements Next [ counter ]
// The name behind Next is read over: it is not compared with the counter.
bool Compiler::Compile_For()
{
    const int top = New_Label(Next_Address());
    const int exit = New_Label();
    Emit_Jump(Token::Push_For, exit);
    if (!Compile_For_Head()) return false;
    Emit(Token::For_Setup, Variant());
    if (!Require(Token::End_Of_Line, "For statement syntax error")) return false;
    Emit(Token::For_Test, Variant());
    Emit_Jump(Token::Jump_If_False, exit);
    Define_Label(top);
    if (!Compile_Statements_Until({Token::Next})) return false;
    const int position = token_.start;
    if (!Take(Token::Next, "Expecting Next and counter variable or other statements")) return false;
    Record_Statement(position);
    Emit(Token::For_Test, Variant(), position);
    Emit_Jump(Token::Jump_If_True, top, position);
    Define_Label(exit);
    Emit(Token::Pop_Block, Variant(std::int32_t(Token::For)), position);
    Emit(Token::For_Pop, Variant(), position);
    return token_.word != Token::Identifier || Expect_Next();
}

bool Compiler::Compile_For_Head()
{
    if (!Take("Expecting For and counter variable")) return false;
    if (At_Line_End()) return Syntax_Error("Expecting counter variable");
    if (!Require(Token::Identifier, "Expecting variable")) return false;
    Emit(Token::String_Literal, Variant(token_.name));
    if (!Expect_Next() || !Take(Token::Equal, "Expecting equal sign and expression") ||
        !Compile_Value(Token::To, Token::None) || !Take(Token::To, "Expecting To and expression") ||
        !Compile_Value(Token::Step, Token::None))
        return false;
    if (token_.word != Token::Step) {
        Emit_Long(1);
        return true;
    }
    return Expect_Next() && Compile_Value(Token::None, Token::None);
}

} // namespace Formula
