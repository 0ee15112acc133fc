#pragma once

#include "catalogue/Halvine_Form.h"
#include "controls/ui/bkcGrid.h"
#include "controls/ui/bkcSplit.h"
#include "frame/ui/Framed_Form.h"
#include "rename/Rename_Formula.h"
#include "rename/ui/Picture_Pane.h"

#include <QtWidgets/QFrame>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

/// What the modes of the window share: a grid, the picture of its row beside it, a frame for the fault of a formula, and
/// a row of buttons. Each mode is a form of its own; all keep one place in the settings.
class Rename_Describe_Form : public Framed_Form {
    Q_OBJECT

public:
    bkcGrid& Grid() { return *grid_; }
    bool Is_Accepted() const { return result() == QDialog::Accepted; }

protected:
    enum class With_Pictures { No, Yes };
    Rename_Describe_Form(Halvine_Form& catalogue, With_Pictures with_pictures, QWidget* parent);

    struct Column {
        QString title;
        int share; ///< of the width; 0 is hidden
        bool editable;
    };
    /// With one editable column Enter goes from each row to the next, and Tab out of the rows; with several Tab goes from
    /// cell to cell.
    void Set_Columns(std::initializer_list<Column> columns);
    void Set_Row_Count(int count);
    void Set_Pictures(const std::vector<int>& indices); ///< of the rows
    QVBoxLayout& Above() { return *above_; }            ///< for controls above the grid
    QLabel& Status() { return *status_; }
    /// Ctrl+Enter presses it too; Enter belongs to the field that is being typed into.
    QPushButton& Add_Execute_Button(const QString& caption);
    void Add_Cancel();

    /// The fault as one line, and the formula with the characters from the fault's position to the end selected. Nothing
    /// hides the frame.
    void Show_Fault(const std::optional<Formula_Fault>& fault, const Chosen_Formula& formula);

    /// An edit that is open is stored first; false when it was refused and the editor stays.
    bool Finish_Edit() { return grid_->EditCellExit(); }
    Halvine_Form& Catalogue() { return catalogue_; }
    Platform& Ports() { return catalogue_.State().platform; }

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QFrame* Make_Fault_Frame();
    QPushButton& Add_Button(const QString& caption, const char* object_name);
    Halvine_Form& catalogue_;
    bkcGrid* grid_;
    Picture_Pane* pane_ = nullptr;
    QVBoxLayout* above_;
    QLabel* status_;
    QFrame* Formula_Error_Frame_;
    QLabel* Formula_Error_Label_;
    QLineEdit* Formula_Error_Text_;
    QHBoxLayout* buttons_;
    std::vector<int> keys_; // of the rows' pictures
};
