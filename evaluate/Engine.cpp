#include "evaluate/Engine.h"

#include "evaluate/Opcode.h"
#include "evaluate/variant/Operators.h"
#include "frame/files/Limits.h"

#include <algorithm>
#include <cmath>

namespace Formula {

namespace {

constexpr std::int64_t First_Event_Instruction = 10'000;
constexpr std::size_t First_Stack_Room = 32;
constexpr std::size_t Most_Stack_Items = 1 << 20;

using Binary_Operator = Error_Number (*)(Variant&, const Variant&);

template <Error_Number (*compare)(Variant&, const Variant&, Compare_Mode)>
Error_Number Binary(Variant& left, const Variant& right)
{
    return compare(left, right, Compare_Mode::Binary);
}

bool Both(const Variant* top, Variant_Type type)
{
    return top[-1].Type() == type && top[0].Type() == type;
}

/// Both operands Long and the result too, or one Double and the result finite: most arithmetic there is.
template <class Long_Way, class Double_Way>
bool Quick_Arithmetic(Variant* top, Long_Way long_way, Double_Way double_way)
{
    if (Both(top, Variant_Type::Long)) {
        std::int32_t result = 0;
        if (long_way(top[-1].Long(), top[0].Long(), &result)) return false;
        top[-1].Set_Long(result);
        return true;
    }
    const auto real = [](const Variant& value) { return value.Type() == Variant_Type::Double; };
    const auto whole = [](const Variant& value) { return value.Type() == Variant_Type::Long; };
    if (!(real(top[-1]) && (real(top[0]) || whole(top[0]))) && !(whole(top[-1]) && real(top[0]))) return false;
    const auto number = [&](const Variant& value) { return real(value) ? value.Double() : double(value.Long()); };
    const double result = double_way(number(top[-1]), number(top[0]));
    if (!std::isfinite(result)) return false;
    top[-1].Set_Double(result);
    return true;
}

template <class Test>
bool Quick_Comparison(Variant* top, Test test)
{
    if (Both(top, Variant_Type::Long))
        top[-1].Set_Boolean(test(top[-1].Long(), top[0].Long()));
    else if (Both(top, Variant_Type::Double))
        top[-1].Set_Boolean(test(top[-1].Double(), top[0].Double()));
    else
        return false;
    return true;
}

Error_Number General_Binary(Opcode opcode, Variant* top)
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
    const Error_Number error = operators[std::size_t(opcode) - std::size_t(Opcode::Add)](top[-1], top[0]);
    top[0].Clear();
    return error;
}

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
    for (Procedure_Record& procedure : code_.procedures)
        for (Variable_Record& variable : procedure.Variables.rows) variable.Value.Clear();
    Variable_Table& variables = code_.procedures[Program_Code::Main].Variables;
    for (const auto& [name, value] : predefined.rows) {
        int row = variables.Find(name);
        if (row < 0) row = variables.Declare(name, 0, 0);
        variables.rows[std::size_t(row)].Value = value;
    }
    counter_ = 1;
    instructions_run_ = 0;
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

/// The events of the host are processed after every instruction once a run has become long; a run that has become too
/// long ends.
Error_Number Engine::Count_Slowly()
{
    if (process_events && instructions_run_ >= First_Event_Instruction) process_events();
    return instructions_run_ > instruction_limit ? Error_Number::Expression_Too_Complex : Error_Number::None;
}

// The loop keeps the top of the stack and the counter in registers; what runs outside it sees them in the members. Above
// the top no item owns anything, so a push may simply build a value there.
// NOLINTBEGIN(cppcoreguidelines-macro-usage)
#define HV_NEED(items)                                                                                                 \
    if (top - bottom < (items)) {                                                                                      \
        error = Error_Number::Stack_Underflow;                                                                         \
        break;                                                                                                         \
    }
#define HV_ARITHMETIC(long_way, double_way)                                                                            \
    HV_NEED(2)                                                                                                         \
    if (!Quick_Arithmetic(top, long_way, double_way)) error = General_Binary(instruction.opcode, top);                 \
    --top;                                                                                                             \
    break;
#define HV_COMPARISON(test)                                                                                            \
    HV_NEED(2)                                                                                                         \
    if (!Quick_Comparison(top, [](auto a, auto b) { return a test b; }))                                               \
        error = General_Binary(instruction.opcode, top);                                                               \
    --top;                                                                                                             \
    break;
#define HV_OUTSIDE(call)                                                                                               \
    top_ = top;                                                                                                        \
    counter_ = pc;                                                                                                     \
    error = call;                                                                                                      \
    top = top_;                                                                                                        \
    bottom = stack_.data();                                                                                            \
    last = last_;                                                                                                      \
    pc = counter_;
// NOLINTEND(cppcoreguidelines-macro-usage)

Error_Number Engine::Dispatch()
{
    Instruction* const code = instructions_.data();
    const Code_Record* const records = code_.code.data();
    Variant *top = top_, *bottom = stack_.data(), *last = last_;
    int pc = counter_;
    const int first = first_code_, final_code = last_code_;
    const bool events = bool(process_events);
    const auto until_check = [&]() -> std::int64_t {
        const std::int64_t limit = instruction_limit + 1 - instructions_run_;
        const std::int64_t event = std::max<std::int64_t>(1, First_Event_Instruction - instructions_run_);
        return std::max<std::int64_t>(1, events ? std::min(limit, event) : limit);
    };
    std::int64_t span = until_check(), left = span;
    Error_Number error = Error_Number::None;

    for (;;) {
        if (pc < first || pc > final_code) break;
        Instruction& instruction = code[pc];
        switch (instruction.opcode) {
        case Opcode::Literal:
            if (top == last) {
                HV_OUTSIDE(Grow_Stack())
                if (error != Error_Number::None) break;
            }
            std::construct_at(++top, records[pc].Operand);
            break;
        case Opcode::Read: {
            if (top == last) {
                HV_OUTSIDE(Grow_Stack())
                if (error != Error_Number::None) break;
            }
            const Variable_Cell* cell = instruction.owner == frames_.back().procedure ? Cell_Of(instruction) : nullptr;
            if (cell && cell->Dimensions == 0 && !cell->Value.Is_Empty()) {
                std::construct_at(++top, cell->Value);
            } else {
                Variant value;
                HV_OUTSIDE(Read(code[pc], records[pc].Operand.Text(), value))
                if (error == Error_Number::None) std::construct_at(++top, std::move(value));
            }
            break;
        }
        case Opcode::Store: {
            HV_NEED(1)
            Variable_Cell* cell = instruction.owner == frames_.back().procedure ? Cell_Of(instruction) : nullptr;
            if (cell && cell->Dimensions == 0) {
                if (top->Type() == Variant_Type::Long)
                    cell->Value.Set_Long(top->Long());
                else if (top->Type() == Variant_Type::Double)
                    cell->Value.Set_Double(top->Double());
                else
                    cell->Value = std::move(*top);
            } else {
                error = Store(instruction, records[pc].Operand.Text(), std::move(*top));
            }
            --top;
            break;
        }
        case Opcode::Add:
            HV_ARITHMETIC([](auto a, auto b, auto* r) { return __builtin_add_overflow(a, b, r); },
                          [](double a, double b) { return a + b; })
        case Opcode::Subtract:
            HV_ARITHMETIC([](auto a, auto b, auto* r) { return __builtin_sub_overflow(a, b, r); },
                          [](double a, double b) { return a - b; })
        case Opcode::Multiply:
            HV_ARITHMETIC([](auto a, auto b, auto* r) { return __builtin_mul_overflow(a, b, r); },
                          [](double a, double b) { return a * b; })
        case Opcode::Equal: HV_COMPARISON(==)
        case Opcode::Not_Equal: HV_COMPARISON(!=)
        case Opcode::Less: HV_COMPARISON(<)
        case Opcode::Less_Or_Equal: HV_COMPARISON(<=)
        case Opcode::Greater: HV_COMPARISON(>)
        case Opcode::Greater_Or_Equal: HV_COMPARISON(>=)
        case Opcode::Modulo:
            HV_NEED(2)
            if (Both(top, Variant_Type::Long) && top[0].Long() > 0)
                top[-1].Set_Long(top[-1].Long() % top[0].Long());
            else
                error = General_Binary(instruction.opcode, top);
            --top;
            break;
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
            error = General_Binary(instruction.opcode, top);
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
        case Opcode::Jump:
            if (instruction.number >= 1)
                pc = instruction.number - 1;
            else
                error = Error_Number::Execution_Engine;
            break;
        case Opcode::Jump_If_True:
        case Opcode::Jump_If_False: {
            HV_NEED(1)
            const bool wanted = instruction.opcode == Opcode::Jump_If_True;
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
            if (!jumps) break;
            if (instruction.number >= 1)
                pc = instruction.number - 1;
            else
                error = Error_Number::Execution_Engine;
            break;
        }
        case Opcode::For_Test: HV_OUTSIDE(Test_For()) break;
        case Opcode::Drop:
            HV_NEED(1)
            (top--)->Clear();
            break;
        case Opcode::Built_In: HV_OUTSIDE(Call_Built_In(instruction)) break;
        case Opcode::Stop: pc = code_.Code_Count(); break;
        default: HV_OUTSIDE(Run_Slow(instruction)) break;
        }
        if (error != Error_Number::None) [[unlikely]]
            break;
        ++pc;
        if (--left == 0) [[unlikely]] {
            instructions_run_ += span;
            HV_OUTSIDE(Count_Slowly())
            if (error != Error_Number::None) {
                --pc; // the error belongs to the instruction that was one too many
                break;
            }
            span = left = until_check();
        }
    }
    instructions_run_ += span - left;
    top_ = top;
    counter_ = pc;
    return error;
}

#undef HV_NEED
#undef HV_ARITHMETIC
#undef HV_COMPARISON
#undef HV_OUTSIDE

Error_Number Engine::Run_Slow(const Instruction& instruction)
{
    const Variant& operand = code_.code[std::size_t(counter_)].Operand;
    Instruction& own = instructions_[std::size_t(counter_)];
    switch (instruction.opcode) {
    case Opcode::Niladic: return Push_Niladic(instruction);
    case Opcode::Array_Assign: return Assign_Array(own, operand.Text());
    case Opcode::Element_Read: return Element(own, operand.Text(), false);
    case Opcode::Element_Store: return Element(own, operand.Text(), true);
    case Opcode::Set_Return_Value:
        if (frames_.size() < 2) return Error_Number::Execution_Engine;
        if (Depth() < 1) return Error_Number::Stack_Underflow;
        frames_.back().return_value = Pop_Unchecked();
        return Error_Number::None;
    case Opcode::Mid_Store: return Replace_Mid(operand, false);
    case Opcode::Mid_B_Store: return Replace_Mid(operand, true);
    case Opcode::Reference: return Make_Reference(operand.Text());
    case Opcode::Push_Empty: return Push(Variant());
    case Opcode::For_Setup: return Set_Up_For();
    case Opcode::For_Pop:
        if (Loop_Left()) loops_.pop_back();
        return Error_Number::None;
    case Opcode::Procedure_Entry: return Enter_Procedure(instruction);
    case Opcode::Return: return Leave_Procedure();
    case Opcode::Push_Block: {
        const bool is_do = code_.code[std::size_t(counter_)].Token == Token::Push_Do;
        return Push_Block(is_do ? Token::Do : Token::For, instruction.number);
    }
    case Opcode::Pop_Block: Pop_Block(instruction.number); return Error_Number::None;
    case Opcode::Exit_Block: return Exit_Block(instruction.number);
    case Opcode::Call: return Call(instruction);
    case Opcode::Beep:
        if (!Is_Allowed(Beep_Access, allowed_access)) return Error_Number::Permission_Denied;
        services_.Beep();
        return Error_Number::None;
    case Opcode::Randomize: return Randomize_From(operand);
    case Opcode::Re_Dim: return Re_Dim(own, operand.Text(), false);
    case Opcode::Re_Dim_Preserve: return Re_Dim(own, operand.Text(), true);
    case Opcode::Erase: return Erase(own, operand.Text());
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
