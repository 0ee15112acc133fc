#include "catalogue/ui/Script_Item_Dialog.h"

#include <QtWidgets/QtWidgets>

Script_Item_Dialog::Script_Item_Dialog(Script_Item_Deletion& model, const Platform* platform, QWidget* parent)
    : Utility_Grid_Form(platform, tr("Script items"), {{tr("Type"), 140}, {tr("Script")}}, parent),
      model_(model),
      mark_(new QPushButton(tr("&Mark For Deletion"))),
      unmark_(new QPushButton(tr("&Unmark"))),
      commit_(new QPushButton(tr("&Delete Marked"))),
      previous_(new QPushButton(tr("&Previous"))),
      next_(new QPushButton(tr("&Next")))
{
    resize(640, 360);
    auto* close = new QPushButton(tr("&Close"));
    auto* buttons = new QHBoxLayout;
    for (QPushButton* button : {mark_, unmark_, commit_}) buttons->addWidget(button);
    buttons->addStretch();
    for (QPushButton* button : {previous_, next_, close}) buttons->addWidget(button);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(&Utility_bkcGrid());
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
    for (const int row : Content().SelectedRowsReturn()) model_.Mark(Content().Stored_Row(row), marked);
    Show_Model();
}

void Script_Item_Dialog::Show_Model()
{
    setWindowTitle(model_.Caption());
    const auto rows = model_.Rows();
    Grid_Model& content = Content();
    content.Set_Rows(int(rows.size()));
    for (int row = 1; row <= int(rows.size()); ++row) {
        const auto& item = rows[std::size_t(row) - 1];
        content.Set_CellValue(1, row, item.type);
        content.Set_CellValue(2, row, item.script);
        Mark_Row(row, item.marked);
    }
    Utility_bkcGrid().Update();
    mark_->setEnabled(!rows.empty());
    unmark_->setEnabled(model_.Has_Marks());
    commit_->setEnabled(model_.Has_Marks());
    previous_->setEnabled(model_.Position() > 1);
    next_->setEnabled(model_.Position() < model_.Count());
}
