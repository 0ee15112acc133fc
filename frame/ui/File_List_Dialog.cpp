#include "frame/ui/File_List_Dialog.h"

#include <QtWidgets/QtWidgets>

File_List_Dialog::File_List_Dialog(const Platform* platform, const QString& Dialog_Caption,
                                   const QStringList& File_Name, bool Cancel_Enabled, QWidget* parent)
    : Utility_Grid_Form(platform, tr("Files"), {{tr("File Name")}}, parent)
{
    setWindowTitle(Dialog_Caption.isEmpty() ? QStringLiteral("Halvine") : Dialog_Caption);
    Utility_bkcGrid().setTextElideMode(Qt::ElideMiddle); // paths differ at their ends
    // A list may hold a hundred thousand names.
    Content().Set_Sourced_Rows(int(File_Name.size()), [File_Name](int, int row) { return File_Name.value(row - 1); });
    Utility_bkcGrid().Update();
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok);
    if (Cancel_Enabled) buttons->addButton(QDialogButtonBox::Cancel);
    auto* copy = buttons->addButton(tr("&Copy List"), QDialogButtonBox::ActionRole);
    connect(copy, &QPushButton::clicked, this,
            [File_Name] { QGuiApplication::clipboard()->setText(File_Name.join(u'\n')); });
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* column = new QVBoxLayout(this);
    const auto count = File_Name.size();
    column->addWidget(new QLabel(count == 1 ? tr("1 file") : tr("%1 files").arg(count)));
    column->addWidget(&Utility_bkcGrid(), 1);
    column->addWidget(buttons);
    buttons->button(QDialogButtonBox::Ok)->setFocus();
    resize(520, 340);
}
