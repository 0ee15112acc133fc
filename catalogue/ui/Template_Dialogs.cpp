#include "catalogue/ui/Template_Dialogs.h"

#include <QtWidgets/QtWidgets>

namespace {

bool Ask(Template_Dialog::Purpose purpose, std::vector<Template_Name>& templates, const Platform* platform,
         QWidget* parent)
{
    Template_Dialog dialog(purpose, templates, platform, parent);
    if (dialog.exec() != QDialog::Accepted) return false;
    templates = dialog.Result();
    return true;
}

} // namespace

Template_Dialog::Template_Dialog(Purpose purpose, const std::vector<Template_Name>& templates, const Platform* platform,
                                 QWidget* parent)
    : Utility_Grid_Form(platform, tr("Templates"), {{tr("Template Name")}, {tr("Template ID"), 200}}, parent),
      list_(templates),
      purpose_(purpose)
{
    const bool renames = purpose == Purpose::Rename;
    setWindowTitle(renames ? tr("Halvine - Rename Templates") : tr("Halvine - Delete Templates"));
    Content().Set_SelectionMode(renames ? 1 : 2);
    Content().Set(Grid_Property::AllowUpdate, renames);
    Content().Set_ColumnAllowUpdate(2, false);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    ok_ = buttons->button(QDialogButtonBox::Ok);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(&Utility_bkcGrid(), 1);
    if (!renames) layout->addWidget(Make_Marks());
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &Template_Dialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &Template_Dialog::reject);
    connect(&Utility_bkcGrid(), &bkcGrid::BeforeCellChange, this,
            [this](int, int row, const QString& name, bool& cancel) { Take_Name(row, name, cancel); });
    connect(&Utility_bkcGrid(), &bkcGrid::SelChange, this, [this] {
        if (mark_ != nullptr) mark_->setEnabled(Content().SelectedRowsCount() > 0);
    });
    Show_List();
    resize(520, 320);
}

QWidget* Template_Dialog::Make_Marks()
{
    auto* row = new QWidget;
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    mark_ = new QPushButton(tr("&Mark For Deletion"));
    unmark_ = new QPushButton(tr("&Unmark"));
    layout->addWidget(mark_);
    layout->addWidget(unmark_);
    layout->addStretch();
    connect(mark_, &QPushButton::clicked, this, [this] { Mark_Selected(true); });
    connect(unmark_, &QPushButton::clicked, this, [this] { Mark_Selected(false); });
    return row;
}

void Template_Dialog::Mark_Selected(bool marked)
{
    for (const int row : Content().SelectedRowsReturn()) list_.Mark(Content().Stored_Row(row), marked);
    Show_List();
}

void Template_Dialog::Take_Name(int row, const QString& name, bool& cancel)
{
    cancel = !list_.Rename(Content().Stored_Row(row), name);
}

void Template_Dialog::Show_List()
{
    Grid_Model& content = Content();
    content.Set_Rows(list_.Count());
    for (int row = 1; row <= list_.Count(); ++row) {
        content.Set_CellValue(1, row, list_.Row(row).name);
        content.Set_CellValue(2, row, list_.Row(row).id);
        Mark_Row(row, list_.Is_Marked(row));
    }
    Utility_bkcGrid().Update();
    ok_->setEnabled(purpose_ == Purpose::Rename || list_.Has_Marks()); // a name may still be in the editor
    if (purpose_ == Purpose::Rename) return;
    mark_->setEnabled(content.SelectedRowsCount() > 0);
    unmark_->setEnabled(list_.Has_Marks());
}

void Template_Dialog::accept()
{
    if (Utility_bkcGrid().EditCellExit()) Utility_Grid_Form::accept(); // a name that is refused keeps the dialog
}

bool Custom_Template_Delete_Dialog(std::vector<Template_Name>& templates, const Platform* platform, QWidget* parent)
{
    return Ask(Template_Dialog::Purpose::Delete, templates, platform, parent);
}

bool Custom_Template_Rename_Dialog(std::vector<Template_Name>& templates, const Platform* platform, QWidget* parent)
{
    return Ask(Template_Dialog::Purpose::Rename, templates, platform, parent);
}
