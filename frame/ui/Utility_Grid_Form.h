#pragma once

#include "controls/ui/bkcGrid.h"
#include "frame/ui/Framed_Form.h"

/// The base of the dialogs around a list in a grid, read-only unless a dialog says otherwise. All of them keep their place
/// in one value. A derived window adds its rows and buttons, and ends with resize().
class Utility_Grid_Form : public Framed_Form {
    Q_OBJECT

public:
    bkcGrid& Utility_bkcGrid() { return *grid_; }

protected:
    struct Column {
        QString header;
        int width = 0; ///< pixels; 0: what the others leave
    };
    /// platform    keeps the place; may be null
    /// grid_name   how the grid is read out
    Utility_Grid_Form(const Platform* platform, const QString& grid_name, const std::vector<Column>& columns,
                      QWidget* parent);
    Grid_Model& Content() { return grid_->Content(); }
    void Mark_Row(int Grid_Row, bool marked); ///< shows a row that is going to be deleted

private:
    bkcGrid* grid_;
};
