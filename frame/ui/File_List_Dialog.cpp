#include "frame/ui/File_List_Dialog.h"

#include <QtCore/QStringListModel>
#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QListView>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

File_List_Dialog::File_List_Dialog(const Platform* platform, const QString& Dialog_Caption,
                                   const QStringList& File_Name, bool Cancel_Enabled, QWidget* parent)
    : Framed_Form(platform, QStringLiteral("Halvine-Grid"), parent)
{
    setWindowTitle(Dialog_Caption.isEmpty() ? QStringLiteral("Halvine") : Dialog_Caption);
    auto* list = new QListView;
    list->setModel(new QStringListModel(File_Name, list));
    list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    list->setUniformItemSizes(true); // a list may hold a hundred thousand names
    list->setAlternatingRowColors(true);
    list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    list->setTextElideMode(Qt::ElideMiddle);
    list->setAccessibleName(Dialog_Caption);
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
    column->addWidget(list, 1);
    column->addWidget(buttons);
    resize(520, 340);
}
