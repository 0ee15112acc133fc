#include "rename/ui/Rename_Form.h"

#include "rename/Rename_Rows.h"
#include "rename/ui/Rename_Describe_Windows.h"

#include <QtCore/QSignalBlocker>

namespace {

constexpr int New_Name_Column = 2;
constexpr int User_Name_Column = 3;
constexpr int Picture_Column = 4;
constexpr Stored_Color Twice_Color = 0xA0D8FF;    // a light orange
constexpr Stored_Color Unusable_Color = 0xB0B0FF; // a light red
constexpr Stored_Color Marked_Text = 0;           // black, legible on both in dark palettes too

std::optional<Stored_Color> Color_Of_Mark(Rename_Preview::Mark mark)
{
    switch (mark) {
    case Rename_Preview::Mark::None: break;
    case Rename_Preview::Mark::Twice: return Twice_Color;
    case Rename_Preview::Mark::Unusable: return Unusable_Color;
    }
    return {};
}

} // namespace

Rename_Form::Rename_Form(Rename_Describe_Windows& windows, const QString& Dialog_Caption,
                         const std::vector<int>& Rename_Picture_Index, QWidget* parent)
    : Rename_Describe_Form(windows.Catalogue(), With_Pictures::Yes, parent),
      windows_(windows),
      host_(windows.Catalogue().State().platform),
      job_(host_, Rows_Of(windows.Catalogue().State(), Rename_Picture_Index))
{
    setWindowTitle(Dialog_Caption);
    Make_Inputs();
    Make_Grid();
    Set_Pictures(Rename_Picture_Index);
    Fill_Lists();
    for (int row = 1; row <= int(Rename_Picture_Index.size()); ++row)
        Grid().Content().Set_CellValue(Picture_Column, row, Rename_Picture_Index[std::size_t(row) - 1]);
    Rename_Change_From_Text_->setText(Common_Beginning(job_.Rows()));
    Connect_Inputs();
    Take_Inputs();
    Rename_Change_To_Text_->setFocus();
}

std::vector<Rename_Row> Rename_Form::Rows_Of(const Catalogue_State& state, const std::vector<int>& indices)
{
    std::vector<Rename_Row> rows;
    for (const int index : indices) rows.push_back(Row_Of_Picture(state.pictures.Item(index)));
    return rows;
}

void Rename_Form::Fill_Lists()
{
    const auto fill = [](QComboBox& combo, const Name_Value_List& list) {
        const QSignalBlocker blocker(combo);
        const QString chosen = combo.currentText();
        combo.clear();
        for (int i = 0; i <= list.Count(); ++i) combo.addItem(list[i].Name);
        combo.setCurrentIndex(std::max(combo.findText(chosen), 0));
    };
    fill(*Rename_Pattern_Combo_, windows_.State().Rename_Patterns);
    fill(*Rename_Formula_Combo_, windows_.State().Rename_Formulas);
}

std::optional<Chosen_Formula> Rename_Form::Selected_Formula() const
{
    const int index = Rename_Formula_Combo_->currentIndex();
    if (index <= 0) return {};
    return windows_.Chosen(windows_.State().Rename_Formulas[index]);
}

Rename_Inputs Rename_Form::Typed() const
{
    return {.change_from = Rename_Change_From_Text_->text(),
            .change_to = Rename_Change_To_Text_->text(),
            .pattern_mode = Rename_Pattern_Combo_->currentIndex() > 0,
            .formula = Selected_Formula(),
            .file_type = File_Type_Text_->text(),
            .start_numbering = Start_Numbering_Text_->text(),
            .reserialize = Reserialize_Check_->isChecked(),
            .reserialize_interval = Reserialize_Interval_Text_->text()};
}

void Rename_Form::Take_Inputs()
{
    job_.Set_Inputs(Typed());
    Show_Model();
    if (const auto& fault = job_.Update_Fault()) Ports().dialogs.Refuse(Formula_Fault_Message(*fault));
}

void Rename_Form::Take_Pattern()
{
    const int index = Rename_Pattern_Combo_->currentIndex();
    const QSignalBlocker blocker(Rename_Change_From_Text_);
    Rename_Change_From_Text_->setText(index > 0 ? windows_.State().Rename_Patterns[index].Value
                                                : Common_Beginning(job_.Rows()));
    Take_Inputs();
}

void Rename_Form::Show_Model()
{
    if (Start_Numbering_Text_->text() != job_.Inputs().start_numbering) {
        const QSignalBlocker blocker(Start_Numbering_Text_);
        Start_Numbering_Text_->setText(job_.Inputs().start_numbering);
    }
    Start_Numbering_Text_->setEnabled(job_.Start_Numbering_Enabled());
    Reserialize_Check_->setEnabled(job_.Start_Numbering_Enabled());
    Reserialize_Interval_Text_->setEnabled(job_.Start_Numbering_Enabled() && Reserialize_Check_->isChecked());
    Show_Fault(job_.Fault(), job_.Inputs().formula.value_or(Chosen_Formula{}));
    if (!job_.Fault()) Show_Rows();
    Execute_Command_->setEnabled(!job_.Fault() && preview_.Has_New_Names());
}

void Rename_Form::Show_Rows()
{
    const std::vector<Rename_Preview::Mark> before = std::move(preview_.marks);
    preview_ = Preview_Of(job_.Rows());
    for (std::size_t i = 0; i < job_.Rows().size(); ++i) {
        Grid().Content().Set_CellValue(New_Name_Column, int(i) + 1, job_.Rows()[i].new_name);
        const bool was_marked = i < before.size() && before[i] != Rename_Preview::Mark::None;
        if (was_marked || preview_.marks[i] != Rename_Preview::Mark::None) Show_Mark(i);
    }
    Grid().Update();
    const QString hint = preview_.Hint(job_.Inputs());
    Status().setText(hint.isEmpty() ? preview_.Status() : hint);
}

/// On the cell whose name counts.
void Rename_Form::Show_Mark(std::size_t row)
{
    Grid_Model& content = Grid().Content();
    const auto color = Color_Of_Mark(preview_.marks[row]);
    const int marked = job_.Rows()[row].user_name.isEmpty() ? New_Name_Column : User_Name_Column;
    for (const int column : {New_Name_Column, User_Name_Column}) {
        const auto wanted = column == marked ? color : std::nullopt;
        content.Set_CellBackColor(column, int(row) + 1, wanted);
        content.Set_CellForeColor(column, int(row) + 1, wanted ? std::optional(Marked_Text) : std::nullopt);
    }
}

void Rename_Form::Execute()
{
    if (!Finish_Edit()) return;
    const std::int64_t duplicates = job_.Duplicate_Count();
    if (duplicates > 0) {
        const Message_Answer answer = Ports().dialogs.Ask({.text = Duplicates_Message(duplicates),
                                                           .buttons = Message_Buttons::Ok_Cancel,
                                                           .standard = Message_Answer::Cancel,
                                                           .icon = Message_Icon::Exclamation,
                                                           .title = Duplicates_Title});
        if (answer != Message_Answer::Ok) return;
    }
    accept();
}

QStringList Rename_Form::Names() const
{
    QStringList names;
    for (const Rename_Row& row : job_.Rows()) names << row.Final_Name();
    return names;
}
