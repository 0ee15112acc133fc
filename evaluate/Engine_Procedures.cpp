// Calls, loops and blocks.

#include "evaluate/Engine.h"
#include "evaluate/variant/Operators.h"
#include "evaluate/variant/Variant_Array.h"
#include "frame/files/Limits.h"

namespace Formula {

namespace {

constexpr std::size_t Most_Blocks = 1 << 20;
constexpr std::size_t Most_Locals = 1 << 20; // of all calls together

bool Is_By_Reference(const Argument_Record& argument)
{
    return (argument.Flags & 0xF0000) == 0x10000;
}

} // namespace

Error_Number Engine::Jump_To(int target)
{
    if (target < 1) return Error_Number::Execution_Engine;
    counter_ = target - 1;
    return Error_Number::None;
}

/// On the stack: the arguments, their count, the return address. When the main program has run on into the procedure
/// there are none of these, and the user supplies the arguments.
Error_Number Engine::Enter_Procedure(const Instruction& instruction)
{
    const Procedure_Record& procedure = code_.procedures[std::size_t(instruction.number)];
    if (Depth() < 2)
        if (const Error_Number error = Ask_For_Arguments(procedure); error != Error_Number::None) return error;
    if (counter_ > code_.Code_Count()) return Error_Number::None; // ended by the host while it was asked
    if (top_[0].Type() != Variant_Type::Long || top_[-1].Type() != Variant_Type::Long) {
        Drop_Items(2);
        return Error_Number::Execution_Engine;
    }
    const std::int32_t return_address = top_[0].Long(), count = top_[-1].Long();
    top_ -= 2;
    if (const Error_Number error = Make_Frame(instruction.number, return_address); error != Error_Number::None)
        return error;
    if (count < 0 || std::size_t(count) > Depth()) return Error_Number::Stack_Underflow;
    const Error_Number error = Take_Arguments(procedure, std::size_t(count));
    Drop_Items(std::size_t(count));
    return error;
}

/// Up to the first empty answer. The return address is the last record, so that the return ends the run.
Error_Number Engine::Ask_For_Arguments(const Procedure_Record& procedure)
{
    std::int32_t count = 0;
    for (const Argument_Record& argument : procedure.Arguments) {
        if (!May_Use_Dialogs()) break;
        const QString answer =
            Ask_For(argument.Name, QStringLiteral("Supply Value For Argument ") + QString::number(count + 1));
        if (answer.isEmpty()) break;
        if (const Error_Number error = Push(Variant(answer)); error != Error_Number::None) return error;
        ++count;
    }
    if (const Error_Number error = Push(Variant(count)); error != Error_Number::None) return error;
    return Push(Variant(std::int32_t(code_.Code_Count())));
}

Error_Number Engine::Make_Frame(int procedure, int return_address)
{
    if (int(frames_.size()) > Current_Limits().formula_calls) return Error_Number::Out_Of_Stack_Space;
    const Procedure_Record& record = code_.procedures[std::size_t(procedure)];
    if (locals_.size() + record.Variables.rows.size() > Most_Locals) return Error_Number::Out_Of_Stack_Space;
    Call_Record& call = frames_.emplace_back();
    call.procedure = procedure;
    call.return_address = return_address;
    call.first_local = locals_.size();
    call.first_block = blocks_.size();
    call.first_loop = loops_.size();
    call.first_reference = references_.size();
    blocks_.push_back({Token::Function, record.Exit});
    // The variables of the main program stay where they are: its frame and its table are one.
    if (procedure != Program_Code::Main)
        for (const Variable_Record& variable : record.Variables.rows) locals_.push_back(variable);
    return Error_Number::None;
}

/// The items are the topmost ones. An argument that is not among them takes the default; that is 1 unless another one
/// was written.
Error_Number Engine::Take_Arguments(const Procedure_Record& procedure, std::size_t items)
{
    const std::size_t first_local = frames_.back().first_local;
    for (std::size_t i = 0; i < procedure.Arguments.size(); ++i) {
        const Argument_Record& argument = procedure.Arguments[i];
        Variant value = i < items ? std::move(*(top_ - items + 1 + i)) : argument.Default;
        if (Is_By_Reference(argument)) {
            references_.push_back(value);
            if (const Error_Number error = Take_Reference(references_.back(), value); error != Error_Number::None)
                return error;
        }
        locals_[first_local + i].Value = std::move(value); // the arguments are the first variables of a procedure
    }
    return Error_Number::None;
}

/// What the user supplied, and a default, are no references: a procedure that the main program runs on into needs ByVal
/// with each of its arguments.
Error_Number Engine::Take_Reference(const Variant& reference, Variant& value)
{
    const Variable_Cell* variable = Referenced_Cell(reference);
    if (!variable) return Error_Number::Execution_Engine;
    value = variable->Value;
    return Error_Number::None;
}

Error_Number Engine::Leave_Procedure()
{
    if (frames_.size() < 2) return Error_Number::Execution_Engine;
    Call_Record& call = frames_.back();
    Procedure_Record& procedure = code_.procedures[std::size_t(call.procedure)];
    for (std::size_t i = 0; i < procedure.Variables.rows.size(); ++i)
        if (procedure.Variables.rows[i].Flags & Variable_Flag::Static)
            procedure.Variables.rows[i].Value = locals_[call.first_local + i].Value;
    if (references_.size() > call.first_reference)
        if (const Error_Number error = Copy_Back_References(procedure, call); error != Error_Number::None) return error;
    locals_.resize(call.first_local);
    blocks_.resize(call.first_block);
    loops_.resize(call.first_loop);
    references_.resize(call.first_reference);
    const int return_address = call.return_address;
    Variant value = std::move(call.return_value);
    frames_.pop_back();
    if (const Error_Number error = Push(std::move(value)); error != Error_Number::None) return error;
    return Jump_To(return_address);
}

Error_Number Engine::Copy_Back_References(const Procedure_Record& procedure, const Call_Record& frame)
{
    std::size_t next = frame.first_reference;
    for (std::size_t i = 0; i < procedure.Arguments.size() && next < references_.size(); ++i) {
        if (!Is_By_Reference(procedure.Arguments[i])) continue;
        const Variant& reference = references_[next++];
        Variable_Cell* target = Referenced_Cell(reference);
        if (!target) return Error_Number::Execution_Engine;
        target->Value = locals_[frame.first_local + i].Value;
    }
    return Error_Number::None;
}

/// From the top: step, limit, start, name of the counter. The value starts one step early, since each test adds one.
Error_Number Engine::Set_Up_For()
{
    if (Depth() < 4) return Error_Number::Stack_Underflow;
    if (loops_.size() >= Most_Blocks) return Error_Number::Out_Of_Stack_Space;
    For_Record loop;
    loop.step = Pop_Unchecked();
    loop.limit = Pop_Unchecked();
    loop.value = Pop_Unchecked();
    const Variant counter = Pop_Unchecked();
    if (!counter.Is_String()) return Error_Number::Stack_Underflow; // an expression left nothing where one was due
    loop.counter = counter.Text();
    if (const Error_Number error = Subtract(loop.value, loop.step); error != Error_Number::None) return error;
    loops_.push_back(std::move(loop));
    return Error_Number::None;
}

Error_Number Engine::Test_For()
{
    if (!Loop_Left()) return Error_Number::None; // and nothing on the stack: the jump behind will notice
    For_Record& loop = loops_.back();
    if (const Error_Number error = Add(loop.value, loop.step); error != Error_Number::None) return error;
    Variable_Cell* counter = Resolve(loop.place, loop.counter);
    if (!counter || (counter->Dimensions != 0 && raise_errors)) return Error_Number::Execution_Engine;
    counter->Value = loop.value;
    Variant result;
    if (const Error_Number error = For_Goes_On(loop, result); error != Error_Number::None) return error;
    return Push(std::move(result));
}

/// With a step that is not above 0 the value is asked, not the step: a loop counts down only while its counter is
/// negative, and For i = 3 To 1 Step -1 never enters its body. Formulas rely on it.
Error_Number Engine::For_Goes_On(const For_Record& loop, Variant& result) const
{
    const Variant zero(std::int32_t(0));
    const auto holds = [](const Variant& test) { return test.Type() == Variant_Type::Boolean && test.Boolean(); };
    Variant test = loop.step;
    if (const Error_Number error = Greater(test, zero); error != Error_Number::None) return error;
    result = loop.value;
    if (holds(test)) return Less_Or_Equal(result, loop.limit);
    test = loop.value;
    if (const Error_Number error = Less(test, zero); error != Error_Number::None) return error;
    if (holds(test)) return Greater_Or_Equal(result, loop.limit);
    result = Variant(false);
    return Error_Number::None;
}

Error_Number Engine::Push_Block(Token_Word word, int target)
{
    if (blocks_.size() >= Most_Blocks) return Error_Number::Out_Of_Stack_Space;
    blocks_.push_back({word, target});
    return Error_Number::None;
}

void Engine::Pop_Block(Token_Word word)
{
    if (Block_Left() && blocks_.back().word == word) blocks_.pop_back();
}

/// The search takes down what it passes, the wanted loop's own block and record included; without such a block it ends at
/// the call's own, and the procedure is left: Exit Do outside of a loop leaves the procedure. The main program has no way
/// out of that kind. The code at the target takes a block and a record down once more, as at the end of any loop: with
/// loops of one kind in each other these are the outer loop's, whose Next then finds no record. Formulas are told to put
/// such an inner loop into a procedure, where a call has blocks and records of its own.
Error_Number Engine::Exit_Block(Token_Word word)
{
    for (; Block_Left(); blocks_.pop_back()) {
        const Token_Word found = blocks_.back().word;
        if (found == Token::For && Loop_Left()) loops_.pop_back();
        if (found == word) break;
    }
    const int target = blocks_.back().target;
    if (Block_Left()) blocks_.pop_back();
    return Jump_To(target);
}

} // namespace Formula
