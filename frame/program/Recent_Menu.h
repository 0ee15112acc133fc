#pragma once

#include "frame/Recent_List.h"

#include <QtWidgets/QMenu>
#include <functional>

/// Items for recent files or folders at the end of a menu. They are made anew each time the menu opens; what is no longer
/// there is greyed.
class Recent_Menu : public QObject {
    Q_OBJECT

public:
    /// Both must outlive this. The menu's own items must be in it already.
    Recent_Menu(QMenu& menu, const Recent_List& recent, std::function<void(const QString& path)> open);

private:
    void Fill();

    QMenu& menu_;
    const Recent_List& recent_;
    std::function<void(const QString& path)> open_;
    QList<QAction*> items_; // with their separator
};
