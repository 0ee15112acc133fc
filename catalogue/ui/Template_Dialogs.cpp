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
    : Framed_Form(platform, QStringLiteral("Halvine-Grid"), parent),
      list_(templates),
      purpose_(purpose),
      grid_(new bkcGrid)
{
    const bool renames = purpose == Purpose::Rename;
    setWindowTitle(renames ? tr("Halvine - Rename Templates") : tr("Halvine - Delete Templates"));
    grid_->setAccessibleName(tr("Templates"));
    Grid_Model& content = grid_->Content();
    content.Set_Columns(2);
    content.Set_SelectionMode(renames ? 1 : 2);
    content.Set(Grid_Property::AllowUpdate, renames);
    content.Change_Column(1, [](Grid_Column_Record& column) {
        column.header_text = tr("Template Name");
        column.width_proportional = 1;
    });
    content.Change_Column(2, [](Grid_Column_Record& column) {
        column.header_text = tr("Template ID");
        column.width = 200;
        column.allow_update = false;
    });
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    ok_ = buttons->button(QDialogButtonBox::Ok);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(grid_, 1);
    if (!renames) layout->addWidget(Make_Marks());
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &Template_Dialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &Template_Dialog::reject);
    connect(grid_, &bkcGrid::BeforeCellChange, this,
            [this](int, int row, const QString& name, bool& cancel) { Take_Name(row, name, cancel); });
    connect(grid_, &bkcGrid::SelChange, this, [this] {
        if (mark_ != nullptr) mark_->setEnabled(grid_->Content().SelectedRowsCount() > 0);
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
    for (const int row : grid_->Content().SelectedRowsReturn()) list_.Mark(grid_->Content().Stored_Row(row), marked);
    Show_List();
}

void Template_Dialog::Take_Name(int row, const QString& name, bool& cancel)
{
    cancel = !list_.Rename(grid_->Content().Stored_Row(row), name);
}

void Template_Dialog::Show_List()
{
    Grid_Model& content = grid_->Content();
    content.Set_Rows(list_.Count());
    for (int row = 1; row <= list_.Count(); ++row) {
        const int strike = list_.Is_Marked(row) ? Cell_Struck_Out : 0;
        content.Set_CellValue(1, row, list_.Row(row).name);
        content.Set_CellValue(2, row, list_.Row(row).id);
        for (const int column : {1, 2}) content.Set_CellAttribute(column, row, strike);
    }
    grid_->Update();
    ok_->setEnabled(purpose_ == Purpose::Rename || list_.Has_Marks()); // a name may still be in the editor
    if (purpose_ == Purpose::Rename) return;
    mark_->setEnabled(content.SelectedRowsCount() > 0);
    unmark_->setEnabled(list_.Has_Marks());
}

void Template_Dialog::accept()
{
    if (grid_->EditCellExit()) Framed_Form::accept(); // a name that is refused keeps the dialog
}

bool Custom_Template_Delete_Dialog(std::vector<Template_Name>& templates, const Platform* platform, QWidget* parent)
{
    return Ask(Template_Dialog::Purpose::Delete, templates, platform, parent);
}

bool Custom_Template_Rename_Dialog(std::vector<Template_Name>& templates, const Platform* platform, QWidget* parent)
{
    return Ask(Template_Dialog::Purpose::Rename, templates, platform, parent);
}
