#pragma once

#include "catalogue/Template_List.h"
#include "frame/ui/Utility_Grid_Form.h"

#include <QtWidgets/QPushButton>

/// The list of custom templates, to delete some or to give them other names. Accepted on OK; closing or Cancel leaves
/// everything as it was.
class Template_Dialog : public Utility_Grid_Form {
    Q_OBJECT

public:
    enum class Purpose { Delete, Rename };

    /// platform    keeps the window's place; may be null
    Template_Dialog(Purpose purpose, const std::vector<Template_Name>& templates, const Platform* platform,
                    QWidget* parent);
    std::vector<Template_Name> Result() const { return list_.Result(); }
    void accept() override;

private:
    void Show_List();
    void Mark_Selected(bool marked);
    void Take_Name(int row, const QString& name, bool& cancel);
    QWidget* Make_Marks();
    Template_List list_;
    Purpose purpose_;
    QPushButton* mark_ = nullptr;
    QPushButton* unmark_ = nullptr;
    QPushButton* ok_ = nullptr;
};

/// Show the dialog and change `templates` to what came out of it. False, and nothing changed, when it was cancelled.
bool Custom_Template_Delete_Dialog(std::vector<Template_Name>& templates, const Platform* platform, QWidget* parent);
bool Custom_Template_Rename_Dialog(std::vector<Template_Name>& templates, const Platform* platform, QWidget* parent);
