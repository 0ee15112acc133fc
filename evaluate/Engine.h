#pragma once

#include "evaluate/Program_Code.h"
#include "evaluate/library/Library.h"
#include "evaluate/variant/Variant_Array.h"

#include <functional>
#include <memory>
#include <vector>

namespace Formula {

enum class Opcode : std::uint8_t;

/// A code record made ready for running, one for each record and at the same index: a dense number beside the token
/// word, and what its name meant at the first use.
struct Instruction {
    Opcode opcode;
    std::uint8_t count = 0;           ///< of elements, indices or arguments; of a test 1 when a jump follows it
    bool global = false;              ///< the variable stands in the main program
    bool is_literal = false;          ///< of an operand: its value is the record's
    std::int32_t number = 0;          ///< row of a variable or function; procedure; jump target, entry of a called one
    std::int32_t owner = -1;          ///< the procedure for which the variable was found; -1 not yet
    const Variant* operand = nullptr; ///< the record's
};

struct Block_Record {
    Token_Word word = Token::None;
    int target = 0; ///< where Exit goes
};

struct For_Record {
    QString counter;
    Variant value, limit, step;
    Instruction place{}; ///< of the counter, as in a code record
};

/// The frames share three stacks: locals, blocks and loops of the running call stand on top of them.
struct Call_Record {
    int procedure = Program_Code::Main;
    int return_address = 0;
    std::size_t first_local = 0, first_block = 0, first_loop = 0, first_reference = 0;
    Variant return_value;
};

/// Runs code records as a stack machine. The variables of the main program are those of its procedure record: frame 0
/// and the table are one, so that a host sees them during a run and after it.
class Engine : private Variable_Access {
public:
    Engine(Program_Code& code, Formula_Host_Services& services);
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;

    // Properties
    bool prompt_uninitialized = true;
    bool raise_errors = true;
    unsigned allowed_access = All_Access;
    std::int64_t instruction_limit;       ///< for one run
    std::function<void()> process_events; ///< after every instruction from the 10,000th of a run on

    void Code_Changed();                         ///< after a compile: counter 0, nothing resolved
    void Variables_Changed();                    ///< after variables of the main program were removed
    void Prepare(const Value_Table& predefined); ///< for a run from the beginning; the counter becomes 1
    bool Run(bool step_only);
    void Terminate();
    void Clear_Run_Stacks(); ///< behind a run: drops all frames but the first

    int Counter() const { return counter_; }
    int Current_Statement() const; ///< ordinal of the statement at the counter; 0 before a run, -1 behind the last
    const Evaluation_Error& Last_Error() const { return error_; }
    void Clear_Error() { error_ = {}; }
    Variant Take_Top(); ///< pops; Empty from an empty stack

    Evaluated<Variant> Read_By_Name(const QString& name); ///< as an instruction would: may prompt
    Variable_Cell* Find_Cell(int frame, QStringView name);
    int Current_Frame() const { return int(frames_.size()) - 1; }
    int Current_Procedure() const { return frames_.back().procedure; }
    Library_Context& Context() { return context_; }
    std::int64_t Memory_Limit() const { return context_.memory.Limit(); }
    void Set_Memory_Limit(std::int64_t bytes) { context_.memory.Set_Limit(bytes); } ///< from the next run on

private:
    /// Where the variables stand that the running call sees.
    struct Reach {
        int procedure;
        Variable_Record* globals;
        Variable_Cell* locals;

        /// Null until the instruction was resolved for this procedure.
        Variable_Cell* Cell_Of(const Instruction& instruction) const
        {
            if (instruction.owner != procedure) return nullptr;
            if (instruction.global) return globals + instruction.number;
            return locals + instruction.number;
        }
    };

    Evaluated<Variable_View> Find_Variable(const Variant& reference) override;

    static const Variant* At_Hand(const Reach& reach, const Instruction& operand);
    Error_Number Dispatch();
    Error_Number Run_Slow(Instruction& instruction);
    Error_Number Count_Slowly();
    void Finish() { counter_ = code_.Code_Count() + 1; }
    void Decode();
    Instruction Decoded(const Code_Record& record) const;
    void Set_Step_Range();

    // The operand stack
    std::size_t Depth() const { return std::size_t(top_ - stack_.data()); }
    Error_Number Grow_Stack();
    Error_Number Push(Variant value);
    Variant Pop_Unchecked();
    void Drop_Items(std::size_t count);

    // Variables
    Variable_Cell* Resolve(Instruction& instruction, const QString& name);
    Reach Current_Reach()
    {
        const Call_Record& call = frames_.back();
        return {call.procedure, code_.procedures[Program_Code::Main].Variables.rows.data(),
                locals_.data() + call.first_local};
    }
    Error_Number Read(Instruction& instruction, const QString& name, Variant& value);
    Error_Number Read_Cell(Variable_Cell* cell, const QString& name, Variant& value);
    Variable_Cell* Prompted_Variable(const QString& name);
    bool May_Use_Dialogs() const;
    QString Ask_For(const QString& prompt, const QString& title);
    Error_Number Store(Instruction& instruction, const QString& name, Variant value);
    Error_Number Make_Reference(const QString& name);
    Variable_Cell* Referenced_Cell(const Variant& reference); ///< null when there is none

    /// For what hosts may turn off: then an unknown or empty variable reads as Empty, and stores are dropped.
    Error_Number If_Raised(Error_Number error) const { return raise_errors ? error : Error_Number::None; }

    // Arrays
    Error_Number Assign_Array(Instruction& instruction, const QString& name);
    Error_Number Element(Instruction& instruction, const QString& name, bool store);
    Error_Number Find_Element(const Variable_Cell& cell, int count, std::size_t& place);
    Error_Number Re_Dim(Instruction& instruction, const QString& name, bool preserve);
    Error_Number Pop_Bounds(std::vector<Array_Bound>& bounds);
    Error_Number Erase(Instruction& instruction, const QString& name);
    Error_Number Replace_Mid(const Variant& operand, bool bytes);

    // Loops and blocks
    Error_Number Set_Up_For();
    Error_Number Test_For();
    bool Quick_Test(const Reach& reach, bool& goes_on);
    Error_Number For_Goes_On(const For_Record& loop, Variant& result) const;
    bool Loop_Left() const { return loops_.size() > frames_.back().first_loop; }
    bool Block_Left() const { return blocks_.size() > frames_.back().first_block + 1; } ///< above the call's own
    Error_Number Push_Block(Token_Word word, int target);
    void Pop_Block(Token_Word word);
    Error_Number Exit_Block(Token_Word word);
    Error_Number Jump_To(int target);

    // Procedures
    Error_Number Enter_Procedure(const Instruction& instruction);
    Error_Number Ask_For_Arguments(const Procedure_Record& procedure);
    Error_Number Make_Frame(int procedure, int return_address);
    Error_Number Take_Arguments(const Procedure_Record& procedure, std::size_t items);
    Error_Number Take_Reference(const Variant& reference, Variant& value);
    Error_Number Leave_Procedure();
    Error_Number Copy_Back_References(const Procedure_Record& procedure, const Call_Record& frame);

    // Built-ins
    Error_Number Call_Built_In(const Instruction& instruction);
    Error_Number Run_Built_In(const Built_In& built_in, std::size_t count);
    Error_Number Push_Niladic(const Instruction& instruction);
    Error_Number Randomize_From(const Variant& operand);

    Program_Code& code_;
    Formula_Host_Services& services_;
    const Function_Row* functions_;
    Library_Context context_;
    std::vector<Instruction> instructions_;
    std::vector<Variant> stack_; ///< item 0 is not used
    Variant* top_ = nullptr;
    Variant* last_ = nullptr; ///< the last item there is room for
    std::vector<Call_Record> frames_;
    std::vector<Variable_Cell> locals_;
    std::vector<Block_Record> blocks_;
    std::vector<For_Record> loops_;
    std::vector<Variant> references_;
    Variant unknown_; ///< what stands for an unknown variable while errors are not raised
    int counter_ = 0;
    int first_code_ = 1, last_code_ = 0; ///< the range in which the main loop stays
    std::int64_t instructions_run_ = 0;
    Evaluation_Error error_;
};

} // namespace Formula
