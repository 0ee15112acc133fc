#pragma once

#include "rename/Name_Value_Rows.h"
#include "rename/ui/Rename_Describe_Form.h"

#include <functional>

/// The mode that edits a list of named patterns or formulas. The first row, "(none)", is there for all lists and cannot be
/// edited; the last one is for a new entry.
class Name_List_Form final : public Rename_Describe_Form {
    Q_OBJECT

public:
    struct Look {
        QString caption, text; ///< of the window, and what it tells above the grid
        QString name_column, value_column;
        /// The fault of a formula in a row; null for patterns.
        std::function<std::optional<Formula_Fault>(const Name_Value_Pair& row)> check{};
    };
    Name_List_Form(Halvine_Form& catalogue, Look look, const Name_Value_List& list, QWidget* parent);

    Name_Value_List List() const;

private:
    Name_Value_Pair Row(int row) const;
    void Allow_Edits_Of(int row);
    void Check_Row(int row);
    Look look_;
};
