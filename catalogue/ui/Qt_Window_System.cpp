#include "catalogue/ui/Qt_Window_System.h"

#include <QtGui/QClipboard>
#include <QtGui/QFontDatabase>
#include <QtGui/QGuiApplication>
#include <QtGui/QImage>
#include <QtGui/QPainter>

Clipboard_Picture Qt_Window_System::Picture_Of_Clipboard(std::intptr_t)
{
    const QImage image = QGuiApplication::clipboard()->image();
    if (image.isNull()) return {};
    QImage flat(image.size(), QImage::Format_RGB32);
    if (flat.isNull()) return {};
    flat.fill(Qt::white);
    QPainter(&flat).drawImage(0, 0, image);
    const QImage rows = flat.convertToFormat(QImage::Format_BGR888);
    const auto row_bytes = std::size_t(rows.width()) * 3;
    Clipboard_Picture picture{.width = rows.width(), .height = rows.height()};
    picture.pixels.reserve(row_bytes * std::size_t(rows.height()));
    for (int y = 0; y < rows.height(); ++y)
        picture.pixels.insert(picture.pixels.end(), rows.constScanLine(y), rows.constScanLine(y) + row_bytes);
    return picture;
}

std::vector<std::string> Qt_Window_System::Scalable_Font_Names(std::intptr_t)
{
    std::vector<std::string> names;
    for (const QString& family : QFontDatabase::families())
        if (QFontDatabase::isSmoothlyScalable(family)) names.push_back(family.toStdString());
    return names;
}
