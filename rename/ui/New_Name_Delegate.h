#pragma once

#include "controls/ui/Grid_Table_Model.h"

/// Draws the new names with the part that is not in the present name, which stands in the column before, in bold and in
/// the colour of links. A cell with a colour of its own keeps that. Where the user wrote a name of his own into the column
/// behind it, the new name is not used and is grey.
class New_Name_Delegate : public Grid_Cell_Delegate {
    Q_OBJECT

public:
    using Grid_Cell_Delegate::Grid_Cell_Delegate;

protected:
    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    void Paint_Unused(QPainter* painter, QStyleOptionViewItem cell, const QModelIndex& index) const;
};
