// The loop that runs instructions.

#include "evaluate/Engine.h"
#include "evaluate/Quick_Operators.h"
#include "evaluate/variant/Operators.h"

#include <algorithm>

namespace Formula {

namespace {

constexpr std::int64_t First_Event_Instruction = 10'000;

using Binary_Operator = Error_Number (*)(Variant&, const Variant&);

template <Error_Number (*compare)(Variant&, const Variant&, Compare_Mode)>
Error_Number Binary(Variant& left, const Variant& right)
{
    return compare(left, right, Compare_Mode::Binary);
}

/// Before texts are joined. What is no text becomes a short one.
Error_Number Room_For_Joined(Opcode opcode, const Variant& left, const Variant& right, Formula_Memory& memory)
{
    const bool joins =
        opcode == Opcode::Concatenate || (opcode == Opcode::Add && left.Is_String() && right.Is_String());
    if (!joins) return Error_Number::None;
    const auto length = [](const Variant& value) { return value.Is_String() ? value.Text().size() : 0; };
    return memory.Room_For_Text(length(left) + length(right));
}

Error_Number General_Binary(Opcode opcode, Variant* top, Formula_Memory& memory)
{
    static constexpr Binary_Operator operators[] = {Add,
                                                    Subtract,
                                                    Multiply,
                                                    Divide,
                                                    Integer_Divide,
                                                    Modulo,
                                                    Power,
                                                    Concatenate,
                                                    Binary<Like>,
                                                    Binary<Equal>,
                                                    Binary<Not_Equal>,
                                                    Binary<Less>,
                                                    Binary<Less_Or_Equal>,
                                                    Binary<Greater>,
                                                    Binary<Greater_Or_Equal>,
                                                    And,
                                                    Or,
                                                    Xor,
                                                    Eqv,
                                                    Imp};
    static_assert(std::size(operators) == std::size_t(Opcode::Imp) - std::size_t(Opcode::Add) + 1);
    Error_Number error = Room_For_Joined(opcode, top[-1], top[0], memory);
    if (error == Error_Number::None) error = operators[std::size_t(opcode) - std::size_t(Opcode::Add)](top[-1], top[0]);
    top[0].Clear();
    return error == Error_Number::None ? memory.Note(top[-1]) : error;
}

} // namespace

/// The events of the host are processed after every instruction once a run has become long; a run that has become too
/// long ends.
Error_Number Engine::Count_Slowly()
{
    if (process_events && instructions_run_ >= First_Event_Instruction) process_events();
    return instructions_run_ > instruction_limit ? Error_Number::Expression_Too_Complex : Error_Number::None;
}

/// The value of a literal, or of a variable that was found before and has one; else null.
inline const Variant* Engine::At_Hand(const Reach& reach, const Instruction& operand)
{
    if (operand.is_literal) return operand.operand;
    const Variable_Cell* cell = reach.Cell_Of(operand);
    return cell && cell->Dimensions == 0 && !cell->Value.Is_Empty() ? &cell->Value : nullptr;
}

/// The same as the general way for what nearly all loops are made of: Longs, and a counter that was found before.
inline bool Engine::Quick_Test(const Reach& reach, bool& goes_on)
{
    if (!Loop_Left()) return false;
    For_Record& loop = loops_.back();
    const auto is_long = [](const Variant& value) { return value.Type() == Variant_Type::Long; };
    if (!is_long(loop.value) || !is_long(loop.step) || !is_long(loop.limit)) return false;
    Variable_Cell* counter = reach.Cell_Of(loop.place);
    std::int32_t next = 0;
    if (!counter || counter->Dimensions != 0 || __builtin_add_overflow(loop.value.Long(), loop.step.Long(), &next))
        return false;
    loop.value.Set_Long(next);
    counter->Value.Set_Long(next);
    goes_on = loop.step.Long() > 0 ? next <= loop.limit.Long() : next < 0 && next >= loop.limit.Long();
    return true;
}

// The loop keeps the top of the stack, the place in the code and the reach of names in registers; what runs outside it sees
// them in the members. Above the top no item owns anything, so a push may simply build a value there.
// NOLINTBEGIN(cppcoreguidelines-macro-usage)
#define HV_NEED(items)                                                                                                 \
    if (top - bottom < (items)) {                                                                                      \
        error = Error_Number::Stack_Underflow;                                                                         \
        break;                                                                                                         \
    }
#define HV_ROOM                                                                                                        \
    if (top == last) [[unlikely]] {                                                                                    \
        HV_OUTSIDE(Grow_Stack())                                                                                       \
        if (error != Error_Number::None) break;                                                                        \
    }
// A test is nearly always followed by its jump, which is run and counted along unless somebody has to be told between.
#define HV_PUSH_TEST(holds)                                                                                            \
    if (at->count != 0 && left > 2 && at < behind) {                                                                   \
        ++at;                                                                                                          \
        --left;                                                                                                        \
        if ((holds) == (at->opcode == Opcode::Jump_If_True)) at = code + at->number - 1;                               \
    } else {                                                                                                           \
        std::construct_at(++top, holds);                                                                               \
    }
#define HV_BINARY(operation)                                                                                           \
    case operation: {                                                                                                  \
        HV_NEED(2)                                                                                                     \
        bool holds = false;                                                                                            \
        const Quick way = Quick_Binary(operation, top[-1], top[0], top - 1, holds);                                    \
        if (way == Quick::Test) {                                                                                      \
            top -= 2;                                                                                                  \
            HV_PUSH_TEST(holds)                                                                                        \
            break;                                                                                                     \
        }                                                                                                              \
        if (way == Quick::None) error = General_Binary(operation, top, context_.memory);                               \
        --top;                                                                                                         \
        break;                                                                                                         \
    }
#define HV_JUMP                                                                                                        \
    if (at->number >= 1)                                                                                               \
        at = code + at->number - 1;                                                                                    \
    else                                                                                                               \
        error = Error_Number::Execution_Engine;
#define HV_OUTSIDE(call)                                                                                               \
    top_ = top;                                                                                                        \
    counter_ = int(at - code);                                                                                         \
    error = call;                                                                                                      \
    top = top_;                                                                                                        \
    bottom = stack_.data();                                                                                            \
    last = last_;                                                                                                      \
    at = code + counter_;                                                                                              \
    reach = Current_Reach();
// NOLINTEND(cppcoreguidelines-macro-usage)

Error_Number Engine::Dispatch()
{
    if (last_code_ < first_code_) return Error_Number::None; // no program
    Instruction* const code = instructions_.data();
    Variant *top = top_, *bottom = stack_.data(), *last = last_;
    Instruction* at = code + counter_;
    const Instruction* const behind = code + last_code_;
    const auto first_address = reinterpret_cast<std::uintptr_t>(code + first_code_);
    const auto range = reinterpret_cast<std::uintptr_t>(behind) - first_address; // one comparison tells both ends
    Reach reach = Current_Reach();
    const bool events = bool(process_events);
    const auto until_check = [&]() -> std::int64_t {
        const std::int64_t limit = instruction_limit + 1 - instructions_run_;
        const std::int64_t event = std::max<std::int64_t>(1, First_Event_Instruction - instructions_run_);
        return std::max<std::int64_t>(1, events ? std::min(limit, event) : limit);
    };
    std::int64_t span = until_check(), left = span;
    Error_Number error = Error_Number::None;

    for (;;) {
        if (reinterpret_cast<std::uintptr_t>(at) - first_address > range) break;
        switch (at->opcode) {
        case Opcode::Pair: {
            // Two operands that are at hand and their operator, run and counted along like the jump behind a test.
            const Variant *one = nullptr, *other = nullptr;
            if (left > 4 && behind - at >= 2 && last - top >= 2 && (one = At_Hand(reach, at[0])) &&
                (other = At_Hand(reach, at[1]))) {
                at += 2;
                left -= 2;
                bool holds = false;
                const Quick way = Quick_Binary(at->opcode, *one, *other, top + 1, holds);
                if (way == Quick::Test) {
                    HV_PUSH_TEST(holds)
                    break;
                }
                ++top;
                if (way == Quick::Value) break;
                std::construct_at(top, *one);
                std::construct_at(top + 1, *other);
                error = General_Binary(at->opcode, top + 1, context_.memory);
                break;
            }
            if (at->is_literal) {
                HV_ROOM
                std::construct_at(++top, *at->operand);
                break;
            }
            [[fallthrough]];
        }
        case Opcode::Read: {
            HV_ROOM
            if (const Variant* value = At_Hand(reach, *at)) {
                std::construct_at(++top, *value);
            } else {
                Variant read;
                HV_OUTSIDE(Read(*at, at->operand->Text(), read))
                if (error == Error_Number::None) std::construct_at(++top, std::move(read));
            }
            break;
        }
        case Opcode::Literal:
            HV_ROOM
            std::construct_at(++top, *at->operand);
            break;
        case Opcode::Store: {
            HV_NEED(1)
            Variable_Cell* cell = reach.Cell_Of(*at);
            if (cell && cell->Dimensions == 0 && top->Is_Plain())
                cell->Value.Set_Plain(*top);
            else if (cell && cell->Dimensions == 0)
                cell->Value = std::move(*top);
            else
                error = Store(*at, at->operand->Text(), std::move(*top));
            --top;
            break;
        }
            HV_BINARY(Opcode::Add)
            HV_BINARY(Opcode::Subtract)
            HV_BINARY(Opcode::Multiply)
            HV_BINARY(Opcode::Modulo)
            HV_BINARY(Opcode::Equal)
            HV_BINARY(Opcode::Not_Equal)
            HV_BINARY(Opcode::Less)
            HV_BINARY(Opcode::Less_Or_Equal)
            HV_BINARY(Opcode::Greater)
            HV_BINARY(Opcode::Greater_Or_Equal)
        case Opcode::Divide:
        case Opcode::Integer_Divide:
        case Opcode::Power:
        case Opcode::Concatenate:
        case Opcode::Like:
        case Opcode::And:
        case Opcode::Or:
        case Opcode::Xor:
        case Opcode::Eqv:
        case Opcode::Imp:
            HV_NEED(2)
            error = General_Binary(at->opcode, top, context_.memory);
            --top;
            break;
        case Opcode::Not:
            HV_NEED(1)
            error = Not(*top);
            break;
        case Opcode::Negate:
            HV_NEED(1)
            error = Negate(*top);
            break;
        case Opcode::Jump: HV_JUMP break;
        case Opcode::Jump_If_True:
        case Opcode::Jump_If_False: {
            HV_NEED(1)
            const bool wanted = at->opcode == Opcode::Jump_If_True;
            bool jumps = false;
            if (top->Type() == Variant_Type::Boolean) {
                jumps = top->Boolean() == wanted;
            } else if (const Evaluated<bool> equal = Equals_Boolean(*top, wanted)) {
                jumps = *equal;
            } else {
                error = equal.error();
                break;
            }
            (top--)->Clear();
            if (jumps) {
                HV_JUMP
            }
            break;
        }
        case Opcode::For_Test:
            if (bool goes_on = false; top != last && Quick_Test(reach, goes_on)) {
                HV_PUSH_TEST(goes_on)
            } else {
                HV_OUTSIDE(Test_For())
            }
            break;
        case Opcode::Drop:
            HV_NEED(1)
            (top--)->Clear();
            break;
        case Opcode::Set_Return_Value:
            if (frames_.size() < 2) {
                error = Error_Number::Execution_Engine;
                break;
            }
            HV_NEED(1)
            frames_.back().return_value = std::move(*top--);
            break;
        case Opcode::Call:
            if (at->number < 1) {
                error = Error_Number::Execution_Engine;
                break;
            }
            HV_ROOM
            std::construct_at(++top, std::int32_t(at - code + 1));
            at = code + at->number - 1;
            break;
        case Opcode::Procedure_Entry: HV_OUTSIDE(Enter_Procedure(*at)) break;
        case Opcode::Return: HV_OUTSIDE(Leave_Procedure()) break;
        case Opcode::Built_In: HV_OUTSIDE(Call_Built_In(*at)) break;
        case Opcode::Stop: at = code + code_.Code_Count(); break;
        case Opcode::Niladic:
        case Opcode::Array_Assign:
        case Opcode::Element_Read:
        case Opcode::Element_Store:
        case Opcode::Mid_Store:
        case Opcode::Mid_B_Store:
        case Opcode::Reference:
        case Opcode::Push_Empty:
        case Opcode::For_Setup:
        case Opcode::For_Pop:
        case Opcode::Push_Block:
        case Opcode::Pop_Block:
        case Opcode::Exit_Block:
        case Opcode::Beep:
        case Opcode::Randomize:
        case Opcode::Re_Dim:
        case Opcode::Re_Dim_Preserve:
        case Opcode::Erase:
        case Opcode::Unknown: HV_OUTSIDE(Run_Slow(*at)) break;
        default: __builtin_unreachable(); // spares the dispatch a comparison
        }
        if (error != Error_Number::None) [[unlikely]]
            break;
        ++at;
        if (--left == 0) [[unlikely]] {
            instructions_run_ += span;
            HV_OUTSIDE(Count_Slowly())
            if (error != Error_Number::None) {
                --at; // the error belongs to the instruction that was one too many
                break;
            }
            span = left = until_check();
        }
    }
    instructions_run_ += span - left;
    top_ = top;
    counter_ = int(at - code);
    return error;
}

#undef HV_NEED
#undef HV_ROOM
#undef HV_PUSH_TEST
#undef HV_BINARY
#undef HV_JUMP
#undef HV_OUTSIDE

} // namespace Formula
