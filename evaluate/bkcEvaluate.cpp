#include "evaluate/bkcEvaluate.h"

#include "evaluate/Compiler.h"
#include "evaluate/variant/Like.h"

#include <algorithm>

namespace Formula {

bkcEvaluate::bkcEvaluate(Formula_Host_Services& host) : engine_(code_, host) {}

int bkcEvaluate::c_FirstLikeBegin(const QString& Test_String, const QString& Find_Pattern, int Start_Position)
{
    const auto place = First_Like(Test_String, Find_Pattern, Start_Position);
    return place ? int(place->begin) : 0;
}

int bkcEvaluate::c_FirstLikeEnd(const QString& Test_String, const QString& Find_Pattern, int Start_Position)
{
    const auto place = First_Like(Test_String, Find_Pattern, Start_Position);
    return place ? int(place->end) : 0;
}

int bkcEvaluate::c_LastLikeBegin(const QString& Test_String, const QString& Find_Pattern, int Start_Position)
{
    const auto place = Last_Like(Test_String, Find_Pattern, Start_Position);
    return place ? int(place->begin) : 0;
}

int bkcEvaluate::c_LastLikeEnd(const QString& Test_String, const QString& Find_Pattern, int Start_Position)
{
    const auto place = Last_Like(Test_String, Find_Pattern, Start_Position);
    return place ? int(place->end) : 0;
}

bool bkcEvaluate::c_IsArray(const Variant& Test_Reference)
{
    const auto variable = engine_.Context().variables.Find_Variable(Test_Reference);
    return variable && variable->value->Is_Array();
}

bool bkcEvaluate::c_IsEmpty(const Variant& Test_Reference)
{
    const auto variable = engine_.Context().variables.Find_Variable(Test_Reference);
    return variable && variable->value->Is_Empty();
}

int bkcEvaluate::c_Label_Get(const QString& Label_Name) const
{
    const int label = code_.labels.Find(Label_Name);
    return label < 0 ? 0 : code_.labels.rows[std::size_t(label)].Address;
}

void bkcEvaluate::c_Label_Let(const QString& Label_Name, int Label_Address)
{
    const int label = code_.labels.Find_Or_Add(Label_Name);
    if (Label_Address > 0) code_.labels.rows[std::size_t(label)].Address = Label_Address;
}

/// A compile starts from nothing but what the host supplied.
template <class Compile>
bool bkcEvaluate::Compile_With(const QString& text, Compile compile)
{
    code_ = Program_Code();
    Variable_Table& variables = code_.procedures[Program_Code::Main].Variables;
    for (const auto& [name, value] : predefined_.rows) {
        Variable_Record& variable = variables.rows[std::size_t(variables.Declare(name))];
        variable.Value = value;
        variable.By_Host = true;
    }
    Compiler compiler(code_, text);
    compiled_ = compile(compiler);
    error_ = compiler.Error();
    engine_.Code_Changed();
    return compiled_;
}

bool bkcEvaluate::Expression(const QString& Expression_Text)
{
    return Compile_With(Expression_Text, [](Compiler& compiler) { return compiler.Compile_Single_Expression(); });
}

bool bkcEvaluate::Program(const QString& Program_Text)
{
    return Compile_With(Program_Text, [](Compiler& compiler) { return compiler.Compile_Program(); });
}

bool bkcEvaluate::Run_All()
{
    if (!compiled_) return false;
    engine_.Prepare(predefined_);
    const bool good = engine_.Run(false);
    error_ = engine_.Last_Error();
    return good;
}

bool bkcEvaluate::Execute(const QString& Source_Text)
{
    if (!Source_Text.isEmpty() && !Program(Source_Text)) return false;
    if (!Run_All()) return false;
    engine_.Clear_Run_Stacks();
    return true;
}

bool bkcEvaluate::ExecuteStep()
{
    if (!compiled_) return false;
    if (engine_.Counter() < 1) engine_.Prepare(predefined_);
    engine_.Clear_Error();
    const bool good = engine_.Run(true);
    error_ = engine_.Last_Error();
    if (good && engine_.Current_Statement() == -1) engine_.Clear_Run_Stacks();
    return good;
}

void bkcEvaluate::ExecutionTerminate()
{
    engine_.Terminate();
}

Variant bkcEvaluate::Value(const QString& Source_Text)
{
    if (!Source_Text.isEmpty() && !Expression(Source_Text)) return {};
    if (!Run_All()) return {};
    Variant value = engine_.Take_Top();
    engine_.Clear_Run_Stacks();
    return value;
}

Variant bkcEvaluate::ProgramValue(const QString& Source_Text)
{
    if (!Execute(Source_Text)) return {};
    const int row = Main_Variables().Find(u"=Value");
    return row < 0 ? Variant() : Main_Variables().rows[std::size_t(row)].Value;
}

bool bkcEvaluate::Error(int& Error_Code, QString& Error_Description, int& Error_Position) const
{
    if (error_.Code == 0) return false;
    Error_Code = error_.Code;
    Error_Description = error_.Description;
    Error_Position = error_.Position;
    return true;
}

/// An array takes no scalar. An Empty clears the variable, but what was supplied for the next run stays supplied.
Evaluated<bool> bkcEvaluate::AddVariable(const QString& Variable_Name, const Variant& Variable_Value)
{
    Variable_Table& variables = code_.procedures[Program_Code::Main].Variables;
    int row = variables.Find(Variable_Name);
    if (row < 0) {
        if (!variables.Has_Room()) {
            if (engine_.raise_errors) return Fails(Error_Number::Resource_Allocation);
            return false;
        }
        row = variables.Declare(Variable_Name);
    }
    Variable_Record& variable = variables.rows[std::size_t(row)];
    if (variable.Dimensions > 0) {
        if (engine_.raise_errors) return Fails(Error_Number::Invalid_Array_Assignment);
        return false;
    }
    variable.Value = Variable_Value;
    if (!Variable_Value.Is_Empty()) predefined_.Store(Variable_Name, Variable_Value);
    return true;
}

void bkcEvaluate::RemoveVariable(const QString& Variable_Name)
{
    Procedure_Record& main = code_.procedures[Program_Code::Main];
    if (Variable_Name.isEmpty()) {
        main.Variables.Clear();
        main.Constants.Clear();
        predefined_.Clear();
    } else {
        if (const int row = main.Variables.Find(Variable_Name); row >= 0) main.Variables.Remove(row);
        predefined_.Remove(Variable_Name);
    }
    engine_.Variables_Changed();
}

void bkcEvaluate::RemoveVariable(int Variable_Index)
{
    const QString name = Variable_Index > 0 ? VariableName(Variable_Index) : QString();
    if (!name.isEmpty()) RemoveVariable(name);
}

Evaluated<Variant> bkcEvaluate::Value_Of(const Variable_Cell* cell) const
{
    if (cell) return cell->Value;
    if (engine_.raise_errors) return Fails(Error_Number::Unknown_Variable);
    return Variant();
}

Evaluated<Variant> bkcEvaluate::Variable(const QString& Variable_Name) const
{
    const int row = Main_Variables().Find(Variable_Name);
    return Value_Of(row < 0 ? nullptr : &Main_Variables().rows[std::size_t(row)]);
}

Evaluated<Variant> bkcEvaluate::Variable(int Variable_Index) const
{
    const int row = Main_Variables().Row_In_Order(Variable_Index);
    return Value_Of(row < 0 ? nullptr : &Main_Variables().rows[std::size_t(row)]);
}

Evaluated<Variant> bkcEvaluate::VariableValue(const QString& Variable_Name)
{
    return engine_.Read_By_Name(Variable_Name);
}

int bkcEvaluate::VariableCount() const
{
    return int(Main_Variables().rows.size());
}

QString bkcEvaluate::VariableName(int Variable_Index) const
{
    if (Variable_Index == 0) return code_.procedures[Program_Code::Main].Name;
    const int row = Main_Variables().Row_In_Order(Variable_Index);
    return row < 0 ? QString() : Main_Variables().rows[std::size_t(row)].Name;
}

const Variable_Table& bkcEvaluate::Local_Variables() const
{
    return code_.procedures[std::size_t(engine_.Current_Procedure())].Variables;
}

Evaluated<Variant> bkcEvaluate::LocalVariable(const QString& Variable_Name)
{
    if (Local_Variables().Find(Variable_Name) < 0) return Value_Of(nullptr);
    return Value_Of(engine_.Find_Cell(engine_.Current_Frame(), Variable_Name));
}

Evaluated<Variant> bkcEvaluate::LocalVariable(int Variable_Index)
{
    return LocalVariable(LocalVariableName(Variable_Index));
}

int bkcEvaluate::LocalVariableCount() const
{
    return int(Local_Variables().rows.size());
}

QString bkcEvaluate::LocalVariableName(int Variable_Index) const
{
    const int row = Local_Variables().Row_In_Order(Variable_Index);
    return row < 0 ? QString() : Local_Variables().rows[std::size_t(row)].Name;
}

int bkcEvaluate::SourceStatement() const
{
    return engine_.Current_Statement();
}

int bkcEvaluate::SourceStatementBegin(int Statement_Ordinal) const
{
    if (Statement_Ordinal < 1 || Statement_Ordinal > SourceStatementCount()) return -1;
    return code_.statements[std::size_t(Statement_Ordinal - 1)].Position;
}

int bkcEvaluate::SourceStatementCount() const
{
    return int(code_.statements.size());
}

QString bkcEvaluate::ProgramPublic() const
{
    QString names;
    for (const int i : code_.Procedures_In_Order()) {
        const Procedure_Record& procedure = code_.procedures[std::size_t(i)];
        if (procedure.Defined && procedure.Visibility == Token::Public) names += u' ' + procedure.Name + u' ';
    }
    return names;
}

int bkcEvaluate::Undefined(QStringList& Undefined_Identifiers) const
{
    Undefined_Identifiers.clear();
    for (const int i : code_.Procedures_In_Order())
        if (code_.procedures[std::size_t(i)].Entry < 0) Undefined_Identifiers += code_.procedures[std::size_t(i)].Name;
    return int(Undefined_Identifiers.size());
}

} // namespace Formula
