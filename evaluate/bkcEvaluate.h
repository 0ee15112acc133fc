#pragma once

#include "evaluate/Engine.h"
#include "evaluate/Program_Code.h"

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <functional>

namespace Formula {

/// One formula job: compiles an expression or a program, is given variables, runs, and is read.
///
///     bkcEvaluate evaluator(host);
///     evaluator.Set_PromptUninitialized(false);
///     if (!evaluator.Expression(text)) ... evaluator.Error(...)
///     for each item: evaluator.Set_Variable("FileName", ...); evaluator.Value();
///
/// Names are compared without regard to case. Positions in a text, ordinals of statements and indices of variables count
/// from 1. Nothing is thrown: what may raise to the host returns a value or the number of the error. One thread only;
/// while events are processed the host may call nothing but ExecutionTerminate.
class bkcEvaluate {
public:
    /// The host must outlive the object.
    explicit bkcEvaluate(Formula_Host_Services& host);

    // Searches, see the functions of the same names without "c_". 0 when nothing is found or the pattern is wrong.
    int c_FirstLikeBegin(const QString& Test_String, const QString& Find_Pattern, int Start_Position = 1);
    int c_FirstLikeEnd(const QString& Test_String, const QString& Find_Pattern, int Start_Position = 1);
    int c_LastLikeBegin(const QString& Test_String, const QString& Find_Pattern, int Start_Position = 0);
    int c_LastLikeEnd(const QString& Test_String, const QString& Find_Pattern, int Start_Position = 0);
    bool c_IsArray(const Variant& Test_Reference); ///< of the variable behind a reference value
    bool c_IsEmpty(const Variant& Test_Reference);
    int c_Label_Get(const QString& Label_Name) const;               ///< code address, 0 if unknown
    void c_Label_Let(const QString& Label_Name, int Label_Address); ///< address 0 leaves an existing one alone

    // Compiling; true if no error
    bool Expression(const QString& Expression_Text); ///< one expression; what follows it is not read
    bool Program(const QString& Program_Text);

    // Running. An empty text runs what is compiled.
    bool Execute(const QString& Source_Text = {});
    bool ExecuteStep();                                    ///< one statement; from the beginning if no run is under way
    void ExecutionTerminate();                             ///< ends the run at the next instruction
    Variant Value(const QString& Source_Text = {});        ///< of an expression; Empty on failure
    Variant ProgramValue(const QString& Source_Text = {}); ///< of the formula of a program; Empty on failure

    /// True if an error is pending; otherwise the arguments are left alone. 1 and 2 come from the compiler.
    bool Error(int& Error_Code, QString& Error_Description, int& Error_Position) const;
    const Evaluation_Error& Last_Error() const { return error_; } ///< code 0: none

    // Properties
    bool PromptUninitialized() const { return engine_.prompt_uninitialized; }
    void Set_PromptUninitialized(bool New_PromptUninitialized)
    {
        engine_.prompt_uninitialized = New_PromptUninitialized;
    }
    bool RaiseErrors() const { return engine_.raise_errors; }
    void Set_RaiseErrors(bool New_RaiseErrors) { engine_.raise_errors = New_RaiseErrors; }
    unsigned AllowedAccess() const { return engine_.allowed_access; } ///< bits of Access_Class; all at first
    void Set_AllowedAccess(unsigned New_AllowedAccess) { engine_.allowed_access = New_AllowedAccess; }
    std::int64_t InstructionLimit() const { return engine_.instruction_limit; } ///< of one run
    void Set_InstructionLimit(std::int64_t New_Limit) { engine_.instruction_limit = New_Limit; }
    std::int64_t MemoryLimit() const { return engine_.Memory_Limit(); } ///< bytes that a run may hold
    void Set_MemoryLimit(std::int64_t New_Limit) { engine_.Set_Memory_Limit(New_Limit); }
    /// What processes pending events: called after every instruction from the 10,000th of a run on.
    void Set_ProcessEvents(std::function<void()> Process_Events) { engine_.process_events = std::move(Process_Events); }

    // Variables of the main program
    Evaluated<bool> AddVariable(const QString& Variable_Name, const Variant& Variable_Value);
    Evaluated<bool> Set_Variable(const QString& Variable_Name, const Variant& Variable_Value)
    {
        return AddVariable(Variable_Name, Variable_Value);
    }
    void RemoveVariable(const QString& Variable_Name); ///< an empty name: all variables, constants, predefined values
    void RemoveVariable(int Variable_Index);
    Evaluated<Variant> Variable(const QString& Variable_Name) const;
    Evaluated<Variant> Variable(int Variable_Index) const;
    Evaluated<Variant> VariableValue(const QString& Variable_Name); ///< as a running formula reads it; may ask the user
    int VariableCount() const;
    QString VariableName(int Variable_Index) const; ///< 0 is "@Main"; empty out of range

    // Variables of the call that runs, or in which an error stopped
    Evaluated<Variant> LocalVariable(const QString& Variable_Name);
    Evaluated<Variant> LocalVariable(int Variable_Index);
    int LocalVariableCount() const;
    QString LocalVariableName(int Variable_Index) const;

    // What was compiled
    int SourceStatement() const; ///< ordinal of the statement at the counter; 0 before a run, -1 behind the last
    int SourceStatementBegin(int Statement_Ordinal) const; ///< position in the text; -1 out of range
    int SourceStatementCount() const;
    QString ProgramPublic() const; ///< each name between two blanks
    int Undefined(QStringList& Undefined_Identifiers) const;
    const Program_Code& Code() const { return code_; }

private:
    template <class Compile>
    bool Compile_With(const QString& text, Compile compile);
    bool Run_All();
    Evaluated<Variant> Value_Of(const Variable_Cell* cell) const;
    const Variable_Table& Main_Variables() const { return code_.procedures[Program_Code::Main].Variables; }
    const Variable_Table& Local_Variables() const;

    Program_Code code_;
    Value_Table predefined_;
    Engine engine_;
    Evaluation_Error error_;
    bool compiled_ = true; ///< false after a failed compile: there is nothing to run
};

} // namespace Formula
