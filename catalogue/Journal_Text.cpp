#include "catalogue/Journal_Text.h"

#include "frame/text/Path_Utilities.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <cmath>
#include <map>

namespace {

constexpr qsizetype Sum_Digits = 8;

QByteArray Check_Sum(const QByteArray& bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha1).toHex().left(Sum_Digits);
}

QByteArray Line(const QJsonObject& object)
{
    const QByteArray bytes = QJsonDocument(object).toJson(QJsonDocument::Compact);
    return Check_Sum(bytes) + ' ' + bytes + '\n';
}

/// Paths are bytes; JSON holds text. What is not plain in a path is written in percent form.
QString Path_Text(const QString& path)
{
    return QString::fromLatin1(QByteArray::fromStdString(File_System_Bytes(path)).toPercentEncoding("/ "));
}

QString Path_Of_Text(const QString& text)
{
    return Path_From_Bytes(QByteArray::fromPercentEncoding(text.toLatin1()));
}

/// JSON numbers are doubles, which do not hold all of 64 bits.
QString Number_Text(auto number)
{
    return QString::number(number);
}

std::optional<QString> Text_Or_None(const QJsonValue& value)
{
    return value.isString() ? std::optional(value.toString()) : std::nullopt;
}

std::optional<Kept_Picture> Picture_Of(const QJsonObject& object)
{
    Kept_Picture picture{.key = object["key"].toInt(),
                         .file = Path_Of_Text(object["file"].toString()),
                         .rotate = object["rotate"].toInt(),
                         .flip = object["flip"].toInt(),
                         .seconds = float(object["seconds"].toDouble()),
                         .script = Text_Or_None(object["script"]),
                         .description = Text_Or_None(object["description"]),
                         .inode = object["inode"].toString().toULongLong(),
                         .size = object["size"].toString().toLongLong(),
                         .modified_nanoseconds = object["modified"].toString().toLongLong()};
    const bool is_good = picture.key > 0 && !picture.file.isEmpty() && picture.rotate >= 0 && picture.rotate < 360 &&
                         picture.flip >= 0 && picture.flip <= 3 && std::isfinite(picture.seconds) &&
                         picture.seconds >= 0;
    return is_good ? std::optional(picture) : std::nullopt;
}

/// False when the line is damaged.
bool Take_Line(const QByteArray& line, std::map<int, Kept_Picture>& pictures)
{
    const QByteArray bytes = line.mid(Sum_Digits + 1);
    if (line.size() < Sum_Digits + 2 || line[Sum_Digits] != ' ' || line.left(Sum_Digits) != Check_Sum(bytes))
        return false;
    const QJsonObject object = QJsonDocument::fromJson(bytes).object();
    if (const int dropped = object["dropped"].toInt(); dropped > 0) {
        pictures.erase(dropped);
        return true;
    }
    const auto picture = Picture_Of(object);
    if (picture) pictures.insert_or_assign(picture->key, *picture);
    return picture.has_value();
}

} // namespace

QByteArray Journal_Head()
{
    return QByteArrayLiteral("hvJournal 1\n");
}

QByteArray Journal_Line(const Kept_Picture& picture)
{
    QJsonObject object{{"key", picture.key}, {"file", Path_Text(picture.file)}};
    if (picture.rotate != 0) object["rotate"] = picture.rotate;
    if (picture.flip != 0) object["flip"] = picture.flip;
    if (picture.seconds != 0) object["seconds"] = double(picture.seconds);
    if (picture.script) object["script"] = *picture.script;
    if (picture.description) object["description"] = *picture.description;
    object["inode"] = Number_Text(picture.inode);
    object["size"] = Number_Text(picture.size);
    object["modified"] = Number_Text(picture.modified_nanoseconds);
    return Line(object);
}

QByteArray Journal_Line_Of_Dropped(int key)
{
    return Line({{"dropped", key}});
}

Kept_Work Read_Journal_Text(const QByteArray& text)
{
    Kept_Work work;
    std::map<int, Kept_Picture> pictures;
    if (!text.startsWith(Journal_Head())) {
        work.is_damaged = true;
        return work;
    }
    for (qsizetype at = Journal_Head().size(); at < text.size();) {
        const qsizetype end = text.indexOf('\n', at);
        if (end < 0 || !Take_Line(text.mid(at, end - at), pictures)) {
            work.is_damaged = true;
            break;
        }
        at = end + 1;
    }
    for (auto& [key, picture] : pictures) work.pictures.push_back(std::move(picture));
    return work;
}
