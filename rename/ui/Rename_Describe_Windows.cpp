#include "rename/ui/Rename_Describe_Windows.h"

#include "evaluate/Formula_Consent.h"
#include "frame/text/Number_Text.h"
#include "rename/Typed_Values.h"
#include "rename/ui/Name_List_Form.h"
#include "rename/ui/Rename_Form.h"
#include "rename/ui/Value_Form.h"

#include <QtWidgets/QApplication>

namespace {

QWidget* Owner()
{
    return QApplication::activeModalWidget() != nullptr ? QApplication::activeModalWidget()
                                                        : QApplication::activeWindow();
}

/// A command is running, but who types sees no hourglass.
void Run_Form(Rename_Describe_Form& form, Shell& shell)
{
    const bool is_busy = QGuiApplication::overrideCursor() != nullptr;
    if (is_busy) shell.Show_Busy_Pointer(false);
    form.exec();
    if (is_busy) shell.Show_Busy_Pointer(true);
}

} // namespace

Rename_Describe_Windows::Rename_Describe_Windows(Halvine_Form& catalogue, Program_State& state)
    : Show_Form([this](Rename_Describe_Form& form) { Run_Form(form, catalogue_.State().platform.shell); }),
      catalogue_(catalogue),
      state_(state),
      host_(catalogue.State().platform)
{}

Chosen_Formula Rename_Describe_Windows::Chosen(const Name_Value_Pair& formula) const
{
    const Platform& platform = catalogue_.State().platform;
    const Formula::Formula_Consent consent(platform.dialogs, platform.settings);
    return {.name = formula.Name,
            .text = formula.Value,
            .allowed_access = consent.Allowed_Access(formula.Name, formula.Value)};
}

bool Rename_Describe_Windows::Rename_Dialog(const QString& Dialog_Caption, const std::vector<int>& Rename_Picture_Index,
                                            QStringList& Rename_To_File_Name)
{
    Rename_Form form(*this, Dialog_Caption, Rename_Picture_Index, Owner());
    Show_Form(form);
    if (form.Is_Accepted()) Rename_To_File_Name = form.Names();
    return form.Is_Accepted();
}

void Rename_Describe_Windows::Rename_Pattern_Dialog()
{
    Name_List_Form form(catalogue_,
                        {.caption = tr("Halvine - Rename Patterns"),
                         .text = tr("Enter Rename Pattern Name And Pattern Using Wildcards * ? # [ ]"),
                         .name_column = tr("Pattern Name"),
                         .value_column = tr("'Change Part Of File Name' Pattern")},
                        state_.Rename_Patterns, Owner());
    Show_Form(form);
    if (form.Is_Accepted()) state_.Rename_Patterns = form.List();
}

void Rename_Describe_Windows::Rename_Formula_Dialog()
{
    Edit_Formulas(tr("Halvine - Rename Formulas"), tr("Enter Rename Formula Using VBA Expression Syntax"),
                  state_.Rename_Formulas, Formula_Kind::Rename);
}

void Rename_Describe_Windows::File_Data_Formula_Dialog()
{
    Edit_Formulas(tr("Halvine - File Data Formulas"), tr("Enter File Data Formula Using VBA Expression Syntax"),
                  state_.File_Data_Formulas, Formula_Kind::Caption);
}

std::optional<Formula_Fault> Rename_Describe_Windows::Fault_Of(const Name_Value_Pair& row,
                                                               const Name_Value_List& before, Formula_Kind kind) const
{
    // What is being typed may read what a typed formula may. A row that merely stood in the list may have come with a
    // file, and must not read more than it was allowed just because the user looks at it.
    Chosen_Formula formula = Chosen(row);
    if (!Stands_In(before, row)) formula.allowed_access = Formula::Typed_Access;
    if (kind == Formula_Kind::Rename) return Check_Rename_Formula(host_, formula);
    const QString blank = QStringLiteral(" ");
    return Caption_Of(host_, formula,
                      {.folder = blank, .root = blank, .extension = blank, .date = 2.0, .description = blank})
        .fault;
}

void Rename_Describe_Windows::Edit_Formulas(const QString& caption, const QString& text, Name_Value_List& list,
                                            Formula_Kind kind)
{
    Name_List_Form form(
        catalogue_,
        {.caption = caption,
         .text = text,
         .name_column = tr("Formula Name"),
         .value_column = tr("'Change This Part To' Formula"),
         .check = [this, kind, &list](const Name_Value_Pair& row) { return Fault_Of(row, list, kind); }},
        list, Owner());
    Show_Form(form);
    if (!form.Is_Accepted()) return;
    const Name_Value_List before = list;
    list = form.List();
    const Platform& platform = catalogue_.State().platform;
    Formula::Formula_Consent consent(platform.dialogs, platform.settings);
    for (const Name_Value_Pair& row : New_Rows(before, list)) consent.Remember_Typed(row.Name, row.Value);
}

bool Rename_Describe_Windows::Describe_Dialog(const std::vector<int>& Describe_Picture_Index,
                                              QStringList& Picture_Description)
{
    Value_Form form(catalogue_,
                    {.caption = tr("Describe"),
                     .button = tr("Describe"),
                     .value_column = tr("Description"),
                     .refusal = Description_Refusal},
                    Describe_Picture_Index, Picture_Description, Owner());
    Show_Form(form);
    if (form.Is_Accepted()) Picture_Description = form.Values();
    return form.Is_Accepted();
}

bool Rename_Describe_Windows::Slide_Time_Dialog(const std::vector<int>& Slide_Time_Picture_Index,
                                                std::vector<float>& Picture_Slide_Time, float Default_Slide_Time)
{
    QStringList texts;
    for (const float seconds : Picture_Slide_Time) texts << Text_Of_Slide_Time(seconds);
    Value_Form form(
        catalogue_,
        {.caption = tr("Slide Times"),
         .button = tr("Set Times"),
         .value_column = tr("Slide Time(sec)"),
         .status = tr("A blank cell is the default time, %1 seconds").arg(Text_Of_Single(Default_Slide_Time)),
         .refusal = Slide_Time_Refusal},
        Slide_Time_Picture_Index, texts, Owner());
    Show_Form(form);
    if (!form.Is_Accepted()) return false;
    texts = form.Values();
    for (std::size_t i = 0; i < Picture_Slide_Time.size(); ++i)
        Picture_Slide_Time[i] = Slide_Time_From_Text(texts[qsizetype(i)]);
    return true;
}
