#include "frame/program/Recent_Menu.h"

namespace {

constexpr int Widest_Path_Pixels = 420;

} // namespace

Recent_Menu::Recent_Menu(QMenu& menu, const Recent_List& recent, std::function<void(const QString& path)> open)
    : QObject(&menu), menu_(menu), recent_(recent), open_(std::move(open))
{
    menu_.setToolTipsVisible(true);
    connect(&menu_, &QMenu::aboutToShow, this, &Recent_Menu::Fill);
}

void Recent_Menu::Fill()
{
    qDeleteAll(items_);
    items_.clear();
    if (recent_.Paths().isEmpty()) return;
    items_ << menu_.addSeparator();
    int number = 0;
    for (const QString& path : recent_.Paths()) {
        QString shown = menu_.fontMetrics().elidedText(path, Qt::ElideMiddle, Widest_Path_Pixels);
        shown.replace(QLatin1Char('&'), QLatin1String("&&"));
        QAction* item = menu_.addAction(QStringLiteral("&%1 %2").arg(QString::number(++number), shown));
        item->setEnabled(QFileInfo::exists(path));
        item->setToolTip(path);
        connect(item, &QAction::triggered, this, [this, path] { open_(path); });
        items_ << item;
    }
}
