// Procedures: headers and bodies.

#include "evaluate/Compiler.h"

#include "frame/files/Limits.h"

namespace Formula {

// header := [ Private | Public ] ( Function | Sub ) name "(" [ argument { "," argument } ] ")"
// Ends on the right paren. A header is parsed twice, once in each pass; the second time replaces what the first left.
bool Compiler::Compile_Header(int& procedure)
{
    Token_Word visibility = Token::Public;
    if (At({Token::Private, Token::Public})) {
        visibility = token_.word;
        if (!Expect_Next()) return false;
    }
    const char* const no_name = "Expecting Function or Sub and identifier";
    const Token_Word kind = token_.word;
    if (!At({Token::Function, Token::Sub})) return Syntax_Error(no_name);
    if (!Advance_To_Name(no_name)) return false;
    procedure = code_.Find_Or_Add_Procedure(token_.name);
    Procedure_Record& record = code_.procedures[std::size_t(procedure)];
    record.Visibility = visibility;
    record.Kind = kind;
    record.Defined = true;
    record.Arguments.clear();
    record.Constants.Clear();
    record.Variables.Clear();
    if (!Advance_To(Token::Left_Paren, "Expecting left paren and argument list or right paren")) return false;
    if (Peek() == Token::Right_Paren) return Expect_Next();
    bool optional_seen = false;
    do {
        if (!Expect_Next() || !Compile_Header_Argument(procedure, optional_seen)) return false;
    } while (token_.word == Token::Comma);
    return Require(Token::Right_Paren, "Expecting comma and argument or right paren");
}

// argument := [ Optional ] [ ByVal | ByRef ] name [ "=" constant ]
bool Compiler::Compile_Header_Argument(int procedure, bool& optional_seen)
{
    Argument_Record argument{.Name = {}, .Flags = Argument::Reference_Name, .Default = Variant(std::int32_t(1))};
    const bool optional = token_.word == Token::Optional;
    if (optional && !Expect_Next()) return false;
    if (!optional && optional_seen)
        return Syntax_Error("All arguments following first optional argument must be optional");
    optional_seen = optional;
    const bool by_value = token_.word == Token::By_Val;
    if (by_value) argument.Flags = optional ? Argument::Optional : Argument::Required;
    if (optional && !by_value)
        return Syntax_Error("ByRef arguments (arguments not explicitly ByVal) may not be optional");
    if (At({Token::By_Val, Token::By_Ref}) && !Expect_Next()) return false;
    if (!Require(Token::Identifier, "Expected argument name")) return false;
    argument.Name = token_.name;
    Procedure_Record& record = code_.procedures[std::size_t(procedure)];
    if (int(record.Arguments.size()) >= Current_Limits().formula_arguments) return Too_Much(token_.start);
    if (record.Variables.Find(argument.Name) >= 0) return Syntax_Error("Variable already declared");
    if (!Expect_Next() || !Compile_Argument_Default(argument)) return false;
    if (Declare(record.Variables, argument.Name) < 0) return false;
    record.Arguments.push_back(argument);
    return true;
}

bool Compiler::Compile_Argument_Default(Argument_Record& argument)
{
    if (token_.word != Token::Equal) return true;
    if (argument.Flags != Argument::Optional) return Syntax_Error("Only Optional arguments can have default values");
    if (!Expect_Next()) return false;
    const Token_Class kind = Class_Of(token_.word);
    if (kind != Token_Class::Constant && kind != Token_Class::Literal)
        return Syntax_Error("Expecting constant value as default");
    argument.Flags = Argument::Written_Default;
    argument.Default = token_.value;
    return Expect_Next();
}

bool Compiler::Compile_Procedure()
{
    int procedure = 0;
    const int position = token_.start;
    if (!Compile_Header(procedure) || !Expect_Next()) return false;
    if (!Require(Token::End_Of_Line, "Function or Sub statement syntax error")) return false;
    // References into the table do not live across statements, which may add procedures to it.
    const auto record = [&]() -> Procedure_Record& { return code_.procedures[std::size_t(procedure)]; };
    current_ = procedure;
    record().Entry = Next_Address();
    Emit(Token::Procedure_Entry, Variant(record().Name), position);
    if (!Compile_Statements_Until({Token::End, Token::End_Of_Source})) return false;
    if (!Compile_Procedure_End(record().Kind)) return false;
    current_ = Program_Code::Main; // also at the end of one that stands inside another
    record().Exit = Next_Address();
    Emit(Token::Return, Variant());
    Emit(Token::Stop, Variant());
    return Expect_Next();
}

bool Compiler::Compile_Procedure_End(Token_Word kind)
{
    const char* const message = "Expecting End and Function or Sub (as appropriate)";
    if (!Require(Token::End, message)) return false;
    return Advance_To(kind, message);
}

} // namespace Formula
