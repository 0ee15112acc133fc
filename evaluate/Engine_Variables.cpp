// Variables by name: the current call first, then the main program.

#include "evaluate/Engine.h"
#include "evaluate/variant/Variant_Array.h"

namespace Formula {

/// A name means the same for every run of an instruction in the same procedure, so it is looked up once for each. A jump
/// from a procedure into the main program brings another procedure to the same instruction.
Variable_Cell* Engine::Resolve(Instruction& instruction, const QString& name)
{
    const Reach reach = Current_Reach();
    if (Variable_Cell* cell = reach.Cell_Of(instruction)) return cell;
    const int procedure = reach.procedure;
    int row = procedure == Program_Code::Main ? -1 : code_.procedures[std::size_t(procedure)].Variables.Find(name);
    instruction.global = row < 0;
    if (row < 0) row = code_.procedures[Program_Code::Main].Variables.Find(name);
    if (row < 0) return nullptr;
    instruction.number = row;
    instruction.owner = procedure;
    return reach.Cell_Of(instruction);
}

Variable_Cell* Engine::Find_Cell(int frame, QStringView name)
{
    if (frame > 0 && frame < int(frames_.size())) {
        const Call_Record& call = frames_[std::size_t(frame)];
        const int row = code_.procedures[std::size_t(call.procedure)].Variables.Find(name);
        if (row >= 0) return &locals_[call.first_local + std::size_t(row)];
    }
    Variable_Table& main = code_.procedures[Program_Code::Main].Variables;
    const int row = main.Find(name);
    return row < 0 ? nullptr : &main.rows[std::size_t(row)];
}

Error_Number Engine::Read(Instruction& instruction, const QString& name, Variant& value)
{
    return Read_Cell(Resolve(instruction, name), name, value);
}

Error_Number Engine::Read_Cell(Variable_Cell* cell, const QString& name, Variant& value)
{
    if (!cell && Current_Frame() == 0 && prompt_uninitialized && May_Use_Dialogs()) cell = Prompted_Variable(name);
    if (!cell) return If_Raised(Error_Number::Unknown_Variable);
    if (cell->Dimensions != 0 && raise_errors) return Error_Number::Invalid_Array_Assignment;
    if (cell->Value.Is_Empty()) {
        // What the user supplied once is asked for again in the next run, whatever the host says of prompts by then.
        if ((cell->Flags & Variable_Flag::Prompted) && May_Use_Dialogs())
            cell = Prompted_Variable(name);
        else if (raise_errors)
            return Error_Number::Uninitialized_Variable;
    }
    value = cell->Value;
    return Error_Number::None;
}

/// A formula that may not use dialogs must not ask in this way either.
bool Engine::May_Use_Dialogs() const
{
    return Is_Allowed(Access_Class::Dialog, allowed_access);
}

QString Engine::Ask_For(const QString& prompt, const QString& title)
{
    return services_.Input_Box({.prompt = prompt, .title = title, .text = {}});
}

/// Asks first: a host that answers may look at the variables meanwhile.
Variable_Cell* Engine::Prompted_Variable(const QString& name)
{
    const QString answer = Ask_For(name, QStringLiteral("Supply Value For ") + name.trimmed());
    Variable_Table& variables = code_.procedures[Program_Code::Main].Variables;
    int row = variables.Find(name);
    if (row < 0) row = variables.Declare(name, Variable_Flag::Prompted);
    Variable_Record& variable = variables.rows[std::size_t(row)];
    variable.Value = Variant(answer);
    return &variable;
}

Error_Number Engine::Store(Instruction& instruction, const QString& name, Variant value)
{
    Variable_Cell* cell = Resolve(instruction, name);
    if (!cell) return If_Raised(Error_Number::Unknown_Variable);
    if (cell->Dimensions != 0 && raise_errors) return Error_Number::Invalid_Array_Assignment;
    cell->Value = std::move(value);
    return Error_Number::None;
}

Evaluated<Variant> Engine::Read_By_Name(const QString& name)
{
    Variant value;
    const Error_Number error = Read_Cell(Find_Cell(Current_Frame(), name), name, value);
    if (error != Error_Number::None) return Fails(error);
    return value;
}

/// A reference is an array of two elements, the frame's index and the variable's name.
Error_Number Engine::Make_Reference(const QString& name)
{
    return Push(Make_List({Variant(std::int32_t(Current_Frame())), Variant(name)}));
}

Variable_Cell* Engine::Referenced_Cell(const Variant& reference)
{
    if (!reference.Is_Array() || reference.Array().elements.size() != 2) return nullptr;
    const auto& parts = reference.Array().elements;
    if (parts[0].Type() != Variant_Type::Long || !parts[1].Is_String()) return nullptr;
    return Find_Cell(parts[0].Long(), parts[1].Text());
}

/// For built-ins: like any other read, one of an unknown name finds Empty when errors are not raised.
Evaluated<Variable_View> Engine::Find_Variable(const Variant& reference)
{
    if (Variable_Cell* cell = Referenced_Cell(reference)) return Variable_View{&cell->Value, cell->Dimensions};
    if (raise_errors) return Fails(Error_Number::Unknown_Variable);
    unknown_.Clear();
    return Variable_View{&unknown_, 0};
}

} // namespace Formula
