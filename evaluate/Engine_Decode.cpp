// Code records are made ready for running once: an opcode for the switch, numbers instead of names.

#include "evaluate/Engine.h"
#include "evaluate/Quick_Operators.h"

namespace Formula {

namespace {

struct Opcode_Row {
    Token_Word word;
    Opcode opcode;
};

constexpr Opcode_Row Opcodes[] = {
    {Token::Power, Opcode::Power},
    {Token::Multiply, Opcode::Multiply},
    {Token::Divide, Opcode::Divide},
    {Token::Integer_Divide, Opcode::Integer_Divide},
    {Token::Modulo, Opcode::Modulo},
    {Token::Add, Opcode::Add},
    {Token::Subtract, Opcode::Subtract},
    {Token::Negate, Opcode::Negate},
    {Token::Concatenate, Opcode::Concatenate},
    {Token::Like, Opcode::Like},
    {Token::Equal, Opcode::Equal},
    {Token::Not_Equal, Opcode::Not_Equal},
    {Token::Less_Or_Equal, Opcode::Less_Or_Equal},
    {Token::Less, Opcode::Less},
    {Token::Greater_Or_Equal, Opcode::Greater_Or_Equal},
    {Token::Greater, Opcode::Greater},
    {Token::Not, Opcode::Not},
    {Token::And, Opcode::And},
    {Token::Or, Opcode::Or},
    {Token::Xor, Opcode::Xor},
    {Token::Eqv, Opcode::Eqv},
    {Token::Imp, Opcode::Imp},
    {Token::Call, Opcode::Call},
    {Token::Beep, Opcode::Beep},
    {Token::Erase, Opcode::Erase},
    {Token::Randomize, Opcode::Randomize},
    {Token::Re_Dim, Opcode::Re_Dim},
    {Token::Re_Dim_Preserve, Opcode::Re_Dim_Preserve},
    {Token::Variable_Read, Opcode::Read},
    {Token::Variable_Store, Opcode::Store},
    {Token::Set_Return_Value, Opcode::Set_Return_Value},
    {Token::Mid_Store, Opcode::Mid_Store},
    {Token::Mid_B_Store, Opcode::Mid_B_Store},
    {Token::Reference, Opcode::Reference},
    {Token::Jump, Opcode::Jump},
    {Token::Jump_If_True, Opcode::Jump_If_True},
    {Token::Jump_If_False, Opcode::Jump_If_False},
    {Token::For_Setup, Opcode::For_Setup},
    {Token::For_Test, Opcode::For_Test},
    {Token::For_Pop, Opcode::For_Pop},
    {Token::Procedure_Entry, Opcode::Procedure_Entry},
    {Token::Return, Opcode::Return},
    {Token::Push_Do, Opcode::Push_Block},
    {Token::Push_For, Opcode::Push_Block},
    {Token::Pop_Block, Opcode::Pop_Block},
    {Token::Exit_Block, Opcode::Exit_Block},
    {Token::Drop, Opcode::Drop},
    {Token::Stop, Opcode::Stop},
};

Opcode Opcode_Of(Token_Word word)
{
    switch (Class_Of(word)) {
    case Token_Class::Literal: return Opcode::Literal;
    case Token_Class::Niladic: return Opcode::Niladic;
    case Token_Class::Tessary: return Opcode::Push_Empty;
    case Token_Class::Function:
        if (word != Token::Call) return Opcode::Built_In;
        break;
    default: break;
    }
    // The last byte of these is a count.
    switch (word & ~0xFF) {
    case Token::Array_Assign: return Opcode::Array_Assign;
    case Token::Element_Read: return Opcode::Element_Read;
    case Token::Element_Store: return Opcode::Element_Store;
    default: break;
    }
    for (const Opcode_Row& row : Opcodes)
        if (row.word == word) return row.opcode;
    return Opcode::Unknown;
}

/// What the dispatch loop follows by a jump without a look at the stack.
bool Is_Test(Opcode opcode)
{
    return opcode == Opcode::For_Test || (opcode >= Opcode::Equal && opcode <= Opcode::Greater_Or_Equal);
}

/// One that leads nowhere stays by itself: the error is its own.
bool Is_Conditional_Jump(const Instruction& instruction)
{
    return (instruction.opcode == Opcode::Jump_If_False || instruction.opcode == Opcode::Jump_If_True) &&
           instruction.number >= 1;
}

/// A pair replaces the opcode of its first operand; the second one and the operator stay for who comes there another way.
void Mark_Sequences(std::vector<Instruction>& instructions)
{
    const auto is_operand = [](const Instruction& row) {
        return row.opcode == Opcode::Read || row.opcode == Opcode::Literal;
    };
    for (std::size_t i = 1; i + 1 < instructions.size(); ++i) {
        Instruction& row = instructions[i];
        row.is_literal = row.opcode == Opcode::Literal;
        if (Is_Test(row.opcode)) row.count = Is_Conditional_Jump(instructions[i + 1]);
        if (i + 2 < instructions.size() && is_operand(row) && is_operand(instructions[i + 1]) &&
            Has_Quick_Way(instructions[i + 2].opcode))
            row.opcode = Opcode::Pair;
    }
}

} // namespace

Instruction Engine::Decoded(const Code_Record& record) const
{
    Instruction instruction{.opcode = Opcode_Of(record.Token), .operand = &record.Operand};
    switch (instruction.opcode) {
    case Opcode::Built_In:
        instruction.number = Function_Row_Of(record.Token);
        instruction.count = std::uint8_t(record.Operand.Long());
        break;
    case Opcode::Call: {
        const int procedure = code_.Find_Procedure(record.Operand.Text());
        instruction.number = procedure < 0 ? -1 : code_.procedures[std::size_t(procedure)].Entry;
        break;
    }
    case Opcode::Procedure_Entry: instruction.number = code_.Find_Procedure(record.Operand.Text()); break;
    case Opcode::Array_Assign:
    case Opcode::Element_Read:
    case Opcode::Element_Store: instruction.count = std::uint8_t(Count_In(record.Token)); break;
    case Opcode::Jump:
    case Opcode::Jump_If_True:
    case Opcode::Jump_If_False:
    case Opcode::Push_Block:
    case Opcode::Pop_Block:
    case Opcode::Exit_Block: instruction.number = record.Operand.Long(); break;
    case Opcode::Niladic: instruction.number = record.Token; break;
    default: break;
    }
    return instruction;
}

void Engine::Decode()
{
    instructions_.clear();
    instructions_.reserve(code_.code.size());
    instructions_.push_back({.opcode = Opcode::Unknown});
    for (std::size_t i = 1; i < code_.code.size(); ++i) instructions_.push_back(Decoded(code_.code[i]));
    Mark_Sequences(instructions_);
}

} // namespace Formula
