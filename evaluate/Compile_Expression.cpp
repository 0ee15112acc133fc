// Expressions: operands, argument lists, calls.

#include "evaluate/Compiler.h"

namespace Formula {

// expression := operand { operator operand }, with a sign or Not before an operand. Every caller flushes behind it.
bool Compiler::Compile_Expression(Token_Word stop1, Token_Word stop2)
{
    for (;;) {
        Token_Word unary = Token::No_Unary;
        const int unary_position = token_.start;
        if (At({Token::Not, Token::Add, Token::Subtract})) {
            if (token_.word != Token::Add) unary = token_.word == Token::Not ? Token::Not : Token::Negate;
            if (!Expect_Next()) return false;
        }
        const Operand operand = Compile_Operand(stop1, stop2);
        if (operand != Operand::Taken) return operand == Operand::None;
        // Behind its operand, so that the operator that follows decides: -2^2 is -(2^2), and -a+b is (-a)+b.
        Push_Operator(unary, 1, unary_position);
        if (!Expect_Next()) return false;
        if (Expression_Ends(stop1, stop2)) return true;
        if (Class_Of(token_.word) != Token_Class::Operator)
            return Syntax_Error("Error in expression syntax or in compiler");
        if (token_.word == Token::Not) continue; // comes again as a sign of the next operand
        Push_Operator(token_.word, 2, token_.start);
        if (!Expect_Next()) return false;
    }
}

bool Compiler::Compile_Value(Token_Word stop1, Token_Word stop2)
{
    if (!Compile_Expression(stop1, stop2)) return false;
    Flush_Operators(Token::None);
    return true;
}

/// An expression between a marker and a flush to it: the operators before it go on waiting.
bool Compiler::Compile_Bracketed(Token_Word stop1, Token_Word stop2)
{
    Nesting level(*this);
    if (level.Too_Deep()) return false;
    Push_Operator(Token::Left_Paren, 0, token_.start);
    if (!Expect_Next() || !Compile_Expression(stop1, stop2)) return false;
    Flush_Operators(Token::Left_Paren);
    return true;
}

/// A colon and Else end an expression too, for the sake of statements on one line.
bool Compiler::Expression_Ends(Token_Word stop1, Token_Word stop2) const
{
    return At_Line_End() || At({Token::Right_Paren, Token::Colon, Token::Else}) ||
           (stop1 != Token::None && token_.word == stop1) || (stop2 != Token::None && token_.word == stop2);
}

Compiler::Operand Compiler::Compile_Operand(Token_Word stop1, Token_Word stop2)
{
    const auto taken = [](bool good) { return good ? Operand::Taken : Operand::Failed; };
    switch (Class_Of(token_.word)) {
    case Token_Class::Constant: {
        static constexpr Token_Word Literals[] = {Token::Boolean_Literal, Token::Long_Literal, Token::Double_Literal,
                                                  Token::String_Literal};
        Emit(Literals[Arity_Of(token_.word) - 1], token_.value);
        return Operand::Taken;
    }
    case Token_Class::Literal:
    case Token_Class::Niladic: Emit(token_.word, token_.value); return Operand::Taken;
    case Token_Class::Identifier: return taken(Compile_Name());
    case Token_Class::Function: {
        const Function_Row& row = Function_Rows()[std::size_t(Function_Row_Of(token_.word))];
        return taken(Compile_Builtin(token_.word, row.Descriptor()));
    }
    default: break;
    }
    switch (token_.word) {
    case Token::Left_Paren: return taken(Compile_Parenthesis());
    case Token::Tessary: return taken(Compile_Tessary());
    case Token::Brennick: return taken(Compile_Brennick());
    default: break;
    }
    const bool may_end = At_Line_End() || token_.word == Token::Right_Paren ||
                         (stop1 != Token::None && token_.word == stop1) ||
                         (stop2 != Token::None && token_.word == stop2);
    if (may_end) return Operand::None;
    return taken(Syntax_Error("Error in expression syntax or in compiler"));
}

bool Compiler::Compile_Parenthesis()
{
    if (!Compile_Bracketed(Token::None, Token::None)) return Syntax_Error("Error in expression syntax");
    return Require(Token::Right_Paren, "Expecting right paren");
}

// name := constant | variable | variable "(" index { "," index } ")" | call
bool Compiler::Compile_Name()
{
    if (Peek() == Token::Left_Paren) return Is_Variable(token_.name) ? Compile_Element_Read() : Compile_Call();
    if (const Variant* constant = Find_Constant(token_.name))
        Emit(Token::Literal, *constant);
    else
        Emit(Token::Variable_Read, Variant(token_.name));
    return true;
}

bool Compiler::Compile_Element_Read()
{
    const QString name = token_.name;
    const int position = token_.start;
    int count = 0;
    if (!Expect_Next() || !Compile_Indices(count)) return false;
    Emit(Token::Element_Read + count, Variant(name), position);
    return true;
}

/// From "(" to ")".
bool Compiler::Compile_Indices(int& count)
{
    if (Peek() == Token::Right_Paren) return Expect_Next();
    do {
        if (++count > 127) return Syntax_Error("Too many array indices (maximum of 127)");
        if (!Compile_Bracketed(Token::Comma, Token::None)) return false;
    } while (token_.word == Token::Comma);
    return Require(Token::Right_Paren, "Expecting right paren");
}

/// A function waits on the operator stack and is emitted behind its arguments by the operator or flush that follows.
bool Compiler::Compile_Builtin(Token_Word function, std::span<const Argument_Item> descriptor)
{
    const int position = token_.start;
    int count = 0;
    if (!Compile_Arguments(descriptor, count)) return false;
    Push_Operator(function, count, position);
    return true;
}

namespace {

bool Is_Required(Argument_Item item)
{
    return (item & 0xF00000) == 0x100000;
}

int Minimum_Of(std::span<const Argument_Item> descriptor)
{
    int count = 0;
    while (count < int(descriptor.size()) && Is_Required(descriptor[std::size_t(count)])) ++count;
    return count;
}

int Maximum_Of(std::span<const Argument_Item> descriptor)
{
    if (descriptor.empty()) return 0;
    const Argument_Item last = descriptor.back();
    const bool repeats = (last & 0xF000) == 0x1000;
    return int(descriptor.size()) + (repeats ? (last & 0xFFF) - 1 : 0);
}

} // namespace

/// Begins on the name; ends on the right paren, or on the name when no list follows and none is needed.
bool Compiler::Compile_Arguments(std::span<const Argument_Item> descriptor, int& count)
{
    count = 0;
    if (Peek() != Token::Left_Paren) {
        if (Minimum_Of(descriptor) < 1) return true;
        return Expect_Next() && Syntax_Error("Expecting left paren and parameter(s)");
    }
    return Expect_Next() && Compile_Argument_List(descriptor, count) && Check_Argument_Count(descriptor, count);
}

bool Compiler::Compile_Argument_List(std::span<const Argument_Item> descriptor, int& count)
{
    if (Peek() == Token::Right_Paren) return Expect_Next();
    for (;;) {
        const auto last = descriptor.empty() ? Argument::Optional : descriptor.back();
        const Argument_Item item = count < int(descriptor.size()) ? descriptor[std::size_t(count)] : last;
        if (!Compile_Argument(item)) return false;
        ++count;
        if (token_.word == Token::Right_Paren) return true;
        if (token_.word != Token::Comma) return Syntax_Error("Expecting comma and argument or right paren");
    }
}

/// Begins before the argument and ends behind it. Anything but a name where a name is passed fails without a report: the
/// message is that of the nearest parenthesis, call or statement around the function which has one.
bool Compiler::Compile_Argument(Argument_Item item)
{
    if (item != Argument::Reference_Name) return Compile_Bracketed(Token::Comma, Token::None);
    if (!Expect_Next()) return false;
    if (token_.word != Token::Identifier) return false;
    Emit(Token::Reference, Variant(token_.name));
    return Expect_Next();
}

/// Behind the list: fills in what the descriptor has a literal for. A written default of a procedure has the literal 0,
/// which is what a call passes then; the default itself never reaches the parameter.
bool Compiler::Check_Argument_Count(std::span<const Argument_Item> descriptor, int& count)
{
    const int written = count;
    for (std::size_t i = std::size_t(count); i < descriptor.size(); ++i) {
        if ((descriptor[i] & 0xFFF000) != Argument::Written_Default) continue;
        Emit(Token::Literal, Variant(std::int32_t(descriptor[i] & 0xFFF)));
        ++count;
    }
    if (written < Minimum_Of(descriptor)) return Syntax_Error("Too few parameters");
    return written <= Maximum_Of(descriptor) || Syntax_Error("Too many parameters");
}

std::vector<Argument_Item> Compiler::Procedure_Descriptor(int procedure) const
{
    const Procedure_Record& record = code_.procedures[std::size_t(procedure)];
    if (!record.Defined) return {Argument::Any_Number};
    std::vector<Argument_Item> items;
    for (const Argument_Record& argument : record.Arguments) items.push_back(argument.Flags);
    return items;
}

/// A procedure that nothing defines is no error here; hosts can ask for the list of those.
bool Compiler::Compile_Call()
{
    const QString name = token_.name;
    const int position = token_.start;
    const int procedure = code_.Find_Or_Add_Procedure(name);
    const std::vector<Argument_Item> descriptor = Procedure_Descriptor(procedure);
    int count = 0;
    if (!Compile_Arguments(descriptor, count)) return Syntax_Error("Error in Function call");
    Emit(Token::Long_Literal, Variant(std::int32_t(count)), position);
    Emit(Token::Call, Variant(name), position);
    Record_Statement(position);
    return true;
}

// Tessary.Lists | Tessary.List(id).Count | Tessary.List(id).Items | Tessary.List(id).Item(index)
bool Compiler::Compile_Tessary()
{
    if (!Advance_To(Token::Dot, "Expecting .Lists or .List") || !Expect_Next()) return false;
    if (token_.word == Token::Lists) {
        Emit(Token::Tessary_Lists, Variant());
        return true;
    }
    if (!Require(Token::List, "Expecting Lists or List") ||
        !Advance_To(Token::Left_Paren, "Expecting left paren and List_ID") ||
        !Compile_Bracketed(Token::None, Token::None) ||
        !Require(Token::Right_Paren, "Expecting right paren and .Count, .Item, or .Items") ||
        !Advance_To(Token::Dot, "Expecting .Count, .Item, or .Items") || !Expect_Next())
        return false;
    switch (token_.word) {
    case Token::Count: Emit(Token::Tessary_Count, Variant()); return true;
    case Token::Items: Emit(Token::Tessary_Items, Variant()); return true;
    case Token::Item: return Compile_Tessary_Item();
    default: return Syntax_Error("Expecting Count, Item, or Items");
    }
}

bool Compiler::Compile_Tessary_Item()
{
    const int position = token_.start;
    if (!Advance_To(Token::Left_Paren, "Expecting left paren and item index") ||
        !Compile_Bracketed(Token::None, Token::None) || !Require(Token::Right_Paren, "Expecting right paren"))
        return false;
    Emit(Token::Tessary_Item, Variant(), position);
    return true;
}

// Brennick.AbsoluteEXE(x) | Brennick.AbsoluteFilePath(x)
bool Compiler::Compile_Brennick()
{
    if (!Advance_To(Token::Dot, "Expecting .AbsoluteEXE or .AbsoluteFilePath") || !Expect_Next()) return false;
    static const Token_Word exe = Find_Keyword(u"ABSOLUTEEXE")->word;
    static const Token_Word path = Find_Keyword(u"ABSOLUTEFILEPATH")->word;
    if (!At({exe, path})) return Syntax_Error("Expecting AbsoluteEXE or AbsoluteFilePath");
    static constexpr Argument_Item one[] = {Argument::Repeated(1)};
    const int position = token_.start;
    const Token_Word function = token_.word;
    int count = 0;
    if (!Compile_Arguments(one, count)) return Syntax_Error("Error in method arguments");
    Push_Operator(function, count, position);
    return true;
}

} // namespace Formula
