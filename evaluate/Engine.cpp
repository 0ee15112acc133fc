#include "evaluate/Engine.h"

#include "evaluate/Opcode.h"
#include "frame/files/Limits.h"

#include <algorithm>

namespace Formula {

namespace {

constexpr std::size_t First_Stack_Room = 32;
constexpr std::size_t Most_Stack_Items = 1 << 20;

} // namespace

Engine::Engine(Program_Code& code, Formula_Host_Services& services)
    : instruction_limit(Current_Limits().formula_instructions),
      code_(code),
      services_(services),
      functions_(Function_Rows().data()),
      context_{services, *this},
      stack_(First_Stack_Room)
{
    top_ = stack_.data();
    last_ = top_ + stack_.size() - 1;
    Code_Changed();
}

void Engine::Code_Changed()
{
    counter_ = 0;
    Decode();
    frames_.resize(1);
    frames_[0] = {};
    Clear_Run_Stacks();
    error_ = {};
}

/// Rows have moved: names are looked up anew.
void Engine::Variables_Changed()
{
    for (Instruction& instruction : instructions_) instruction.owner = -1;
    for (For_Record& loop : loops_) loop.place.owner = -1;
}

/// Every variable starts Empty, in every procedure, statics included, but for what the host supplied.
void Engine::Prepare(const Value_Table& predefined)
{
    Clear_Run_Stacks();
    for (Procedure_Record& procedure : code_.procedures) procedure.Variables.Start();
    Variable_Table& variables = code_.procedures[Program_Code::Main].Variables;
    for (const auto& [name, value] : predefined.rows) {
        int row = variables.Find(name);
        if (row < 0) row = variables.Declare(name);
        variables.rows[std::size_t(row)].Value = value;
    }
    counter_ = 1;
    instructions_run_ = 0;
    context_.memory.Start();
    error_ = {};
}

void Engine::Clear_Run_Stacks()
{
    Drop_Items(Depth());
    frames_.resize(1);
    locals_.clear();
    references_.clear();
    loops_.clear();
    blocks_.assign(1, {}); // the main program's own, which leads nowhere
}

void Engine::Terminate()
{
    Finish();
}

int Engine::Current_Statement() const
{
    const auto& statements = code_.statements;
    if (counter_ > code_.Code_Count()) return -1;
    const auto behind = std::upper_bound(statements.begin(), statements.end(), counter_,
                                         [](int counter, const Statement_Record& row) { return counter < row.Code; });
    return int(behind - statements.begin());
}

/// The records of the statement at the counter, up to the one before the next statement that has code of its own.
void Engine::Set_Step_Range()
{
    const auto& statements = code_.statements;
    const auto behind = std::upper_bound(statements.begin(), statements.end(), counter_,
                                         [](int counter, const Statement_Record& row) { return counter < row.Code; });
    first_code_ = behind == statements.begin() ? 1 : (behind - 1)->Code;
    last_code_ = behind == statements.end() ? code_.Code_Count() : behind->Code - 1;
}

/// On an error nothing is reset: the counter stays on the failing record and the variables stay readable.
bool Engine::Run(bool step_only)
{
    first_code_ = 1;
    last_code_ = code_.Code_Count();
    if (step_only) Set_Step_Range();
    const Error_Number number = Dispatch();
    if (number == Error_Number::None) return true;
    const bool in_code = counter_ >= 1 && counter_ <= code_.Code_Count();
    error_ = {int(number), QString::fromUtf8(Error_Description(number)),
              in_code ? code_.code[std::size_t(counter_)].Position : 0};
    return false;
}

Error_Number Engine::Run_Slow(Instruction& instruction)
{
    const Variant& operand = *instruction.operand;
    switch (instruction.opcode) {
    case Opcode::Niladic: return Push_Niladic(instruction);
    case Opcode::Array_Assign: return Assign_Array(instruction, operand.Text());
    case Opcode::Element_Read: return Element(instruction, operand.Text(), false);
    case Opcode::Element_Store: return Element(instruction, operand.Text(), true);
    case Opcode::Mid_Store: return Replace_Mid(operand, false);
    case Opcode::Mid_B_Store: return Replace_Mid(operand, true);
    case Opcode::Reference: return Make_Reference(operand.Text());
    case Opcode::Push_Empty: return Push(Variant());
    case Opcode::For_Setup: return Set_Up_For();
    case Opcode::For_Pop:
        if (Loop_Left()) loops_.pop_back();
        return Error_Number::None;
    case Opcode::Push_Block: {
        const bool is_do = code_.code[std::size_t(counter_)].Token == Token::Push_Do;
        return Push_Block(is_do ? Token::Do : Token::For, instruction.number);
    }
    case Opcode::Pop_Block: Pop_Block(instruction.number); return Error_Number::None;
    case Opcode::Exit_Block: return Exit_Block(instruction.number);
    case Opcode::Beep:
        if (!Is_Allowed(Beep_Access, allowed_access)) return Error_Number::Permission_Denied;
        services_.Beep();
        return Error_Number::None;
    case Opcode::Randomize: return Randomize_From(operand);
    case Opcode::Re_Dim: return Re_Dim(instruction, operand.Text(), false);
    case Opcode::Re_Dim_Preserve: return Re_Dim(instruction, operand.Text(), true);
    case Opcode::Erase: return Erase(instruction, operand.Text());
    default: return Error_Number::Execution_Engine;
    }
}

Error_Number Engine::Grow_Stack()
{
    const std::size_t depth = Depth();
    if (stack_.size() >= Most_Stack_Items) return Error_Number::Out_Of_Stack_Space;
    stack_.resize(stack_.size() * 2);
    top_ = stack_.data() + depth;
    last_ = stack_.data() + stack_.size() - 1;
    return Error_Number::None;
}

Error_Number Engine::Push(Variant value)
{
    if (top_ == last_)
        if (const Error_Number error = Grow_Stack(); error != Error_Number::None) return error;
    *++top_ = std::move(value);
    return Error_Number::None;
}

Variant Engine::Pop_Unchecked()
{
    // A step that is repeated behind an error may find less than the compiler wrote.
    return Depth() > 0 ? std::move(*top_--) : Variant();
}

void Engine::Drop_Items(std::size_t count)
{
    for (; count > 0; --count) (top_--)->Clear();
}

Variant Engine::Take_Top()
{
    return Depth() > 0 ? Pop_Unchecked() : Variant();
}

} // namespace Formula
