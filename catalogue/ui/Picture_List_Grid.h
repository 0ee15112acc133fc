#pragma once

#include "catalogue/Halvine_Form.h"
#include "controls/ui/bkcGrid.h"

#include <vector>

/// The picture list ("Thumbnail List..."). A row is made of its record when it is shown, so that a hundred thousand of them
/// open at once; rows of pictures that went meanwhile are empty.
class Picture_List_Grid final : public bkcGrid {
    Q_OBJECT

public:
    explicit Picture_List_Grid(const Catalogue_State& state, QWidget* parent = nullptr);

    /// The pictures as they are now, in the order of the filmstrip, with the rows of the selected ones selected.
    void Fill();

    /// The key of the picture in a row of the display; 0 without such a row.
    int Key_At(int Grid_Row) const;

    /// Brings the rows' selection to the pictures, in display order.
    void Take_Selection(Halvine_Form& form) const;

private:
    const Catalogue_State& state_;
    std::vector<int> keys_; // by stored row
};
