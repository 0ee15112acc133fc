#include "frame/ui/Icon_Set.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtGui/QGuiApplication>
#include <QtGui/QIconEngine>
#include <QtGui/QPainter>
#include <QtGui/QPalette>
#include <QtGui/QPixmapCache>
#include <QtSvg/QSvgRenderer>

// Resources of a static library are there once they are asked for, by a call outside of any namespace.
static void Load_Resources()
{
    Q_INIT_RESOURCE(icons);
}

namespace {

struct Accent {
    const char* drawn;   ///< as it stands in the files
    const char* on_dark; ///< what it becomes where text is light
};

constexpr Accent Accents[] = {
    {"#1f6fd6", "#6db3ff"}, // blue
    {"#c77700", "#ffbf47"}, // amber
    {"#d13a2f", "#ff7d70"}, // red
};

constexpr int Light_Text = 128; // lightness from which text is light on dark

QString File_Of(const QString& id)
{
    Load_Resources();
    return QStringLiteral(":/icons/") + id + QStringLiteral(".svg");
}

/// Draws the file at whatever size is wanted. Pixmaps are kept in Qt's cache, by colour as well, so that a change of the
/// palette needs no word to anyone.
class Drawn_Icon : public QIconEngine {
public:
    explicit Drawn_Icon(QString id, QString id_when_on = {}) : id_(std::move(id)), id_when_on_(std::move(id_when_on)) {}
    QIconEngine* clone() const override { return new Drawn_Icon(id_, id_when_on_); }
    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override;

private:
    const QString& Id(QIcon::State state) const
    {
        return state == QIcon::On && !id_when_on_.isEmpty() ? id_when_on_ : id_;
    }
    QString id_;
    QString id_when_on_; // empty: the same
};

QColor Text_Color(QIcon::Mode mode)
{
    const QPalette palette = QGuiApplication::palette();
    const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
    return palette.color(group, mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::WindowText);
}

void Drawn_Icon::paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state)
{
    QSvgRenderer renderer(Icon_Drawing(Id(state), Text_Color(mode), mode != QIcon::Disabled));
    const int side = std::min(rect.width(), rect.height());
    QRect square(0, 0, side, side);
    square.moveCenter(rect.center());
    renderer.render(painter, square);
}

QPixmap Drawn_Icon::pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state)
{
    const QString key = QStringLiteral("halvine:%1:%2x%3:%4:%5")
                            .arg(Id(state))
                            .arg(size.width())
                            .arg(size.height())
                            .arg(Text_Color(mode).rgba())
                            .arg(int(mode));
    QPixmap result;
    if (QPixmapCache::find(key, &result)) return result;
    result = QPixmap(size);
    result.fill(Qt::transparent);
    QPainter painter(&result);
    paint(&painter, QRect(QPoint(0, 0), size), mode, state);
    painter.end();
    QPixmapCache::insert(key, result);
    return result;
}

} // namespace

QByteArray Icon_Drawing(const QString& id, const QColor& text, bool enabled)
{
    QFile file(File_Of(id));
    if (!file.open(QIODevice::ReadOnly)) return {};
    QByteArray drawing = file.readAll();
    const QByteArray stroke = text.name().toLatin1();
    drawing.replace("currentColor", stroke);
    for (const Accent& accent : Accents) {
        if (!enabled)
            drawing.replace(accent.drawn, stroke);
        else if (text.lightness() >= Light_Text)
            drawing.replace(accent.drawn, accent.on_dark);
    }
    return drawing;
}

QIcon Icon(const QString& id)
{
    return QFile::exists(File_Of(id)) ? QIcon(new Drawn_Icon(id)) : QIcon();
}

QIcon Program_Icon()
{
    return Icon(QStringLiteral("IDI_HALVINE"));
}

QIcon Folder_Icon()
{
    return QIcon(new Drawn_Icon(QStringLiteral("IDI_FOLDER"), QStringLiteral("IDI_FOLDER_OPEN")));
}

QStringList Icon_Ids()
{
    Load_Resources();
    QStringList ids = QDir(QStringLiteral(":/icons")).entryList({QStringLiteral("*.svg")}, QDir::Files, QDir::Name);
    for (QString& id : ids) id.chop(4);
    return ids;
}
