#include "catalogue/ui/Script_Item_Dialog.h"

#include <QtWidgets/QtWidgets>

Script_Item_Dialog::Script_Item_Dialog(Script_Item_Deletion& model, const Platform* platform, QWidget* parent)
    : Framed_Form(platform, QStringLiteral("Halvine-Grid"), parent),
      model_(model),
      grid_(new bkcGrid),
      mark_(new QPushButton(tr("&Mark For Deletion"))),
      unmark_(new QPushButton(tr("&Unmark"))),
      commit_(new QPushButton(tr("&Delete Marked"))),
      previous_(new QPushButton(tr("&Previous"))),
      next_(new QPushButton(tr("&Next")))
{
    resize(640, 360);
    grid_->setAccessibleName(tr("Script items"));
    Grid_Model& content = grid_->Content();
    content.Set_Columns(2);
    content.Set_SelectionMode(2);
    content.Set(Grid_Property::AllowUpdate, 0);
    content.Change_Column(1, [](Grid_Column_Record& column) {
        column.header_text = tr("Type");
        column.width = 140;
    });
    content.Change_Column(2, [](Grid_Column_Record& column) {
        column.header_text = tr("Script");
        column.width_proportional = 1;
    });
    auto* close = new QPushButton(tr("&Close"));
    auto* buttons = new QHBoxLayout;
    for (QPushButton* button : {mark_, unmark_, commit_}) buttons->addWidget(button);
    buttons->addStretch();
    for (QPushButton* button : {previous_, next_, close}) buttons->addWidget(button);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(grid_);
    layout->addLayout(buttons);
    connect(mark_, &QPushButton::clicked, this, [this] { Mark_Selected(true); });
    connect(unmark_, &QPushButton::clicked, this, [this] { Mark_Selected(false); });
    connect(commit_, &QPushButton::clicked, this, [this] { model_.Commit(), Show_Model(); });
    connect(previous_, &QPushButton::clicked, this, [this] { model_.Step(-1), Show_Model(); });
    connect(next_, &QPushButton::clicked, this, [this] { model_.Step(1), Show_Model(); });
    connect(close, &QPushButton::clicked, this, &Script_Item_Dialog::reject);
    Show_Model();
}

void Script_Item_Dialog::Mark_Selected(bool marked)
{
    for (const int row : grid_->Content().SelectedRowsReturn()) model_.Mark(grid_->Content().Stored_Row(row), marked);
    Show_Model();
}

void Script_Item_Dialog::Show_Model()
{
    setWindowTitle(model_.Caption());
    const auto rows = model_.Rows();
    Grid_Model& content = grid_->Content();
    content.Set_Rows(int(rows.size()));
    for (int row = 1; row <= int(rows.size()); ++row) {
        const auto& item = rows[std::size_t(row) - 1];
        content.Set_CellValue(1, row, item.type);
        content.Set_CellValue(2, row, item.script);
        content.Set_RowBackColor(row, item.marked ? std::optional<Stored_Color>(0xC0C0FF) : std::nullopt);
        content.Set_RowForeColor(row, item.marked ? std::optional<Stored_Color>(0) : std::nullopt);
    }
    grid_->Update();
    mark_->setEnabled(!rows.empty());
    unmark_->setEnabled(model_.Has_Marks());
    commit_->setEnabled(model_.Has_Marks());
    previous_->setEnabled(model_.Position() > 1);
    next_->setEnabled(model_.Position() < model_.Count());
}
