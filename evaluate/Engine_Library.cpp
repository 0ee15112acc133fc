// How the built-in functions are called.

#include "evaluate/Engine.h"

namespace Formula {

/// A function of fixed arity takes that many items whatever was written, the missing ones from what lies below.
Error_Number Engine::Call_Built_In(const Instruction& instruction)
{
    const Built_In* built_in = functions_[instruction.number].built_in;
    if (!built_in) return Error_Number::Execution_Engine; // Array outside of its place
    switch (built_in->style) {
    case Argument_Style::Fixed: return Run_Built_In(*built_in, std::size_t(built_in->maximum));
    case Argument_Style::Top_Only: return Run_Built_In(*built_in, 1);
    case Argument_Style::Varying:
    case Argument_Style::Niladic: break;
    }
    return Run_Built_In(*built_in, instruction.count);
}

Error_Number Engine::Run_Built_In(const Built_In& built_in, std::size_t count)
{
    if (!Is_Allowed(built_in.access, allowed_access)) return Error_Number::Permission_Denied;
    if (count > Depth()) return Error_Number::Stack_Underflow;
    Variant result;
    const Error_Number error = built_in.run(context_, std::span(top_ - count + 1, count), result);
    if (error != Error_Number::None) return error;
    if (const Error_Number full = context_.memory.Note(result); full != Error_Number::None) return full;
    Drop_Items(count);
    return Push(std::move(result));
}

Error_Number Engine::Push_Niladic(const Instruction& instruction)
{
    static const Built_In* const functions[] = {Find_Built_In("DATE"), Find_Built_In("NOW"), Find_Built_In("TIME"),
                                                Find_Built_In("TIMER")};
    return Run_Built_In(*functions[Id_Of(instruction.number) - Id_Of(Token::Date)], 0);
}

Error_Number Engine::Randomize_From(const Variant& operand)
{
    if (operand.Long() == 0) {
        if (!Is_Allowed(Access_Class::Clock, allowed_access)) return Error_Number::Permission_Denied;
        return Randomize(context_, nullptr);
    }
    const Variant seed = Pop_Unchecked(); // a literal stands before
    return Randomize(context_, &seed);
}

} // namespace Formula
