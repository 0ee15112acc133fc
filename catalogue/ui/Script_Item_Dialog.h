#pragma once

#include "catalogue/Script_Item_Deletion.h"
#include "frame/ui/Utility_Grid_Form.h"

#include <QtWidgets/QPushButton>

/// Steps through pictures with the items of their scripts; marked rows are deleted on "Delete".
class Script_Item_Dialog : public Utility_Grid_Form {
    Q_OBJECT

public:
    Script_Item_Dialog(Script_Item_Deletion& model, const Platform* platform, QWidget* parent);

private:
    bool May_Close() override { return model_.May_Leave(); }
    void Show_Model();
    void Mark_Selected(bool marked);
    Script_Item_Deletion& model_;
    QPushButton *mark_, *unmark_, *commit_, *previous_, *next_;
};
