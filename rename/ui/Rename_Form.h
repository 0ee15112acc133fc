#pragma once

#include "evaluate/Platform_Host.h"
#include "frame/Program_State.h"
#include "rename/Rename_Preview.h"
#include "rename/ui/Rename_Describe_Form.h"

#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>

class Rename_Describe_Windows;

/// The mode that names a batch of pictures: shows a Rename_Job, and computes it anew at each key.
class Rename_Form final : public Rename_Describe_Form {
    Q_OBJECT

public:
    /// windows    open the lists of patterns and formulas; must outlive the form
    Rename_Form(Rename_Describe_Windows& windows, const QString& Dialog_Caption,
                const std::vector<int>& Rename_Picture_Index, QWidget* parent);

    QStringList Names() const; ///< of all rows, in order

private:
    // Building, in Rename_Form_Layout.cpp.
    void Make_Inputs();
    void Connect_Inputs();
    void Make_Grid();

    static std::vector<Rename_Row> Rows_Of(const Catalogue_State& state, const std::vector<int>& indices);
    Rename_Inputs Typed() const;
    std::optional<Chosen_Formula> Selected_Formula() const;
    void Take_Inputs();
    void Take_Pattern();
    void Show_Model();
    void Show_Rows();
    void Show_Mark(std::size_t row);
    void Fill_Lists();
    void Execute();

    Rename_Describe_Windows& windows_;
    Formula::Platform_Host host_;
    Rename_Job job_;
    Rename_Preview preview_;
    QLineEdit* Rename_Change_From_Text_;
    QLineEdit* Rename_Change_To_Text_;
    QComboBox* Rename_Pattern_Combo_;
    QComboBox* Rename_Formula_Combo_;
    QLineEdit* File_Type_Text_;
    QLineEdit* Start_Numbering_Text_;
    QCheckBox* Reserialize_Check_;
    QLineEdit* Reserialize_Interval_Text_;
    QPushButton* Define_Pattern_Command_;
    QPushButton* Define_Formula_Command_;
    QPushButton* Execute_Command_;
};
