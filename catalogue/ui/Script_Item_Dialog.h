#pragma once

#include "catalogue/Script_Item_Deletion.h"
#include "controls/ui/bkcGrid.h"

#include <QtWidgets/QDialog>
#include <QtWidgets/QPushButton>

/// Steps through pictures with the items of their scripts; marked rows are deleted on "Delete".
class Script_Item_Dialog : public QDialog {
    Q_OBJECT

public:
    explicit Script_Item_Dialog(Script_Item_Deletion& model, QWidget* parent = nullptr);
    void reject() override;

private:
    void Show_Model();
    void Mark_Selected(bool marked);
    Script_Item_Deletion& model_;
    bkcGrid* grid_;
    QPushButton *mark_, *unmark_, *commit_, *previous_, *next_;
};
