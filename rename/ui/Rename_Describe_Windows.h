#pragma once

#include "catalogue/Halvine_Form.h"
#include "evaluate/Platform_Host.h"
#include "frame/Program_State.h"
#include "rename/Rename_Dialogs.h"
#include "rename/Rename_Formula.h"

#include <QtCore/QCoreApplication>
#include <functional>

class Rename_Describe_Form;

/// Opens the rename and describe window in its modes, over the window that is active. Everything must outlive it.
class Rename_Describe_Windows final : public Rename_Describe_Dialogs {
    Q_DECLARE_TR_FUNCTIONS(Rename_Describe_Windows)

public:
    Rename_Describe_Windows(Halvine_Form& catalogue, Program_State& state);

    bool Rename_Dialog(const QString& Dialog_Caption, const std::vector<int>& Rename_Picture_Index,
                       QStringList& Rename_To_File_Name) override;
    void Rename_Pattern_Dialog() override;
    void Rename_Formula_Dialog() override;
    void File_Data_Formula_Dialog() override;
    bool Describe_Dialog(const std::vector<int>& Describe_Picture_Index, QStringList& Picture_Description) override;
    bool Slide_Time_Dialog(const std::vector<int>& Slide_Time_Picture_Index, std::vector<float>& Picture_Slide_Time,
                           float Default_Slide_Time) override;

    // For the forms.
    Halvine_Form& Catalogue() const { return catalogue_; }
    Program_State& State() const { return state_; }
    /// The formula with what it may read: a list cannot tell who wrote it, the settings can.
    Chosen_Formula Chosen(const Name_Value_Pair& formula) const;

    /// How a form is shown; waits for its end. A test does it in its own way.
    std::function<void(Rename_Describe_Form&)> Show_Form;

private:
    enum class Formula_Kind { Rename, Caption };
    void Edit_Formulas(const QString& caption, const QString& text, Name_Value_List& list, Formula_Kind kind);
    std::optional<Formula_Fault> Fault_Of(const Name_Value_Pair& row, const Name_Value_List& before,
                                          Formula_Kind kind) const;

    Halvine_Form& catalogue_;
    Program_State& state_;
    mutable Formula::Platform_Host host_;
};
