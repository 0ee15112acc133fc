#include "rename/Rename_Formula.h"

#include "evaluate/variant/Conversions.h"

using namespace Formula;

namespace {

// The names that formulas know the facts by.
const QString Change_To = QStringLiteral("ChangeTo");
const QString File_Path = QStringLiteral("FilePath");
const QString File_Name = QStringLiteral("FileName");
const QString File_Ext = QStringLiteral("FileExt");
const QString File_Date = QStringLiteral("FileDate");
const QString File_H_Pix = QStringLiteral("FileHPix");
const QString File_Serial = QStringLiteral("FileSerial");
const QString File_Descr = QStringLiteral("FileDescr");

constexpr double Sample_Date = 2.0;
constexpr std::int16_t Sample_Number = 2;

void Prepare(bkcEvaluate& evaluator, const Chosen_Formula& formula)
{
    evaluator.Set_PromptUninitialized(false);
    evaluator.Set_AllowedAccess(formula.allowed_access);
    evaluator.Expression(formula.text);
}

std::optional<Formula_Fault> Fault_Of(const bkcEvaluate& evaluator)
{
    Formula_Fault fault;
    if (!evaluator.Error(fault.code, fault.description, fault.position)) return {};
    return fault;
}

void Set(bkcEvaluate& evaluator, const QString& name, const QString& text)
{
    (void)evaluator.Set_Variable(name, Variant(text));
}

void Set_Place(bkcEvaluate& evaluator, const QString& folder, const QString& root, const QString& extension)
{
    Set(evaluator, File_Path, folder);
    Set(evaluator, File_Name, root);
    Set(evaluator, File_Ext, extension);
}

} // namespace

QString Formula_Fault_Line(const Formula_Fault& fault, const QString& formula_name)
{
    return fault.description + QStringLiteral(" (Formula ") + formula_name + QStringLiteral(", Character Position ") +
           QString::number(fault.position) + u')';
}

QString Formula_Fault_Message(const Formula_Fault& fault)
{
    return fault.description + QStringLiteral("\n(At Character Position ") + QString::number(fault.position) + u')';
}

std::optional<Formula_Fault> Check_Rename_Formula(Formula_Host_Services& host, const Chosen_Formula& formula)
{
    bkcEvaluate evaluator(host);
    Prepare(evaluator, formula);
    if (auto fault = Fault_Of(evaluator)) return fault;
    const QString blank = QStringLiteral(" ");
    Set_Place(evaluator, blank, blank, blank);
    Set(evaluator, Change_To, blank);
    (void)evaluator.Set_Variable(File_Date, Variant(Date_Value{Sample_Date}));
    (void)evaluator.Set_Variable(File_H_Pix, Variant(Sample_Number));
    (void)evaluator.Set_Variable(File_Serial, Variant(Sample_Number));
    (void)evaluator.Value();
    return Fault_Of(evaluator);
}

Rename_Formula::Rename_Formula(Formula_Host_Services& host, const Chosen_Formula& formula, const QString& change_to)
    : evaluator_(host)
{
    Prepare(evaluator_, formula);
    compile_fault_ = Fault_Of(evaluator_);
    Set(evaluator_, Change_To, change_to);
}

QString Rename_Formula::New_Root(const Rename_Formula_Facts& facts)
{
    Set_Place(evaluator_, facts.folder, facts.root, facts.extension);
    (void)evaluator_.Set_Variable(File_Date, Variant(Date_Value{facts.date}));
    // Set twice under one name, as formulas have always known it: what they see is the height.
    (void)evaluator_.Set_Variable(File_H_Pix, Variant(std::int32_t(facts.horz_pixels)));
    (void)evaluator_.Set_Variable(File_H_Pix, Variant(std::int32_t(facts.vert_pixels)));
    Set(evaluator_, File_Serial, facts.serial);
    const Variant value = evaluator_.Value();
    if (evaluator_.Last_Error().Code != 0) return {};
    return To_Text(value).value_or(QString());
}

Caption Caption_Of(Formula_Host_Services& host, const Chosen_Formula& formula, const Caption_Facts& facts)
{
    if (formula.text.isEmpty()) return {};
    bkcEvaluate evaluator(host);
    Prepare(evaluator, formula);
    if (auto fault = Fault_Of(evaluator)) return {.text = {}, .fault = std::move(fault)};
    Set_Place(evaluator, facts.folder, facts.root, facts.extension);
    (void)evaluator.Set_Variable(File_Date, Variant(Date_Value{facts.date}));
    Set(evaluator, File_Descr, facts.description);
    const Variant value = evaluator.Value();
    if (auto fault = Fault_Of(evaluator)) return {.text = {}, .fault = std::move(fault)};
    return {.text = To_Display_Text(value).value_or(QString()), .fault = {}};
}
