#include "frame/text/Path_Utilities.h"

#include "frame/files/Limits.h"
#include "frame/text/Pattern_Match.h"
#include "frame/text/Text_Utilities.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

namespace {

bool Is_Native(const QString& path)
{
    return path.contains(u'/');
}

bool Is_Separator_Of(const QString& path, QChar c)
{
    return Is_Native(path) ? c == u'/' : c == u'\\' || c == u':';
}

/// Characters up to and including the last separator.
qsizetype Folder_Length(const QString& path)
{
    const bool native = Is_Native(path);
    for (auto length = path.size(); length > 0; --length) {
        const QChar c = path[length - 1];
        if (native ? c == u'/' : c == u'\\' || c == u':') return length;
    }
    return 0;
}

/// 0-based place of the extension's point, or the path's size.
qsizetype Extension_Point(const QString& path)
{
    const auto point = path.lastIndexOf(u'.');
    return point >= Folder_Length(path) ? point : path.size();
}

/// The entry of `folder` that equals `name` without regard to case, first by name; empty when there is none.
QString Entry_Without_Case(const QString& folder, const QString& name)
{
    for (const QString& entry : QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System, QDir::Name))
        if (Equal_Without_Case(entry, name)) return entry;
    return {};
}

QString Path_Without_Case(const QString& native_path)
{
    QString found = native_path.startsWith(u'/') ? QStringLiteral("/") : QString();
    const QStringList parts = native_path.split(u'/', Qt::SkipEmptyParts);
    for (const QString& part : parts) {
        QString entry = part;
        if (!QFileInfo::exists(found + part))
            entry = Entry_Without_Case(found.isEmpty() ? QStringLiteral(".") : found, part);
        if (entry.isEmpty()) return {};
        if (!found.isEmpty() && !found.endsWith(u'/')) found += u'/';
        found += entry + u'/';
    }
    return Without_Trailing_Separator(found);
}

} // namespace

int Find_Separator(const QString& text, int start)
{
    for (int position = std::max(start, 1); position <= text.size(); ++position) {
        const QChar c = text[position - 1];
        if (c == u'/' || c == u'\\' || c == u':') return position;
    }
    return 0;
}

QString Folder_Part(const QString& path)
{
    return path.left(Folder_Length(path));
}

QString Name_Part(const QString& path)
{
    return path.mid(Folder_Length(path));
}

QString Extension_Part(const QString& path)
{
    return path.mid(Extension_Point(path) + 1);
}

QString Base_Name_Part(const QString& path)
{
    return Name_Part(Path_Without_Extension(path));
}

QString Path_Without_Extension(const QString& path)
{
    return path.left(Extension_Point(path));
}

QString With_Trailing_Separator(const QString& path)
{
    if (path.isEmpty() || Is_Separator_Of(path, path.back())) return path;
    return path + (path.contains(u'\\') && !Is_Native(path) ? u'\\' : u'/');
}

QString Without_Trailing_Separator(const QString& path)
{
    if (path.size() < 2) return path;
    const QChar last = path.back();
    return last != u':' && Is_Separator_Of(path, last) ? path.chopped(1) : path;
}

QString With_Default_Extension(const QString& path, const QString& extension)
{
    if (Extension_Point(path) < path.size() || Name_Part(path).isEmpty()) return path;
    return path + u'.' + extension;
}

QString Common_Path(const QString& left, const QString& right)
{
    qsizetype length = 0;
    while (length < left.size() && length < right.size() && left[length].toCaseFolded() == right[length].toCaseFolded())
        ++length;
    return left.left(length);
}

QString Document_Path(const QString& native_path)
{
    return QString(native_path).replace(u'/', u'\\');
}

QString Native_Path(const QString& path)
{
    return QString(path).replace(u'\\', u'/');
}

QString Existing_Path(const QString& path)
{
    if (path.isEmpty() || QFileInfo::exists(path)) return path;
    const QString native = Native_Path(path);
    if (QFileInfo::exists(native)) return native;
    const QString folded = Path_Without_Case(native);
    return folded.isEmpty() ? native : folded;
}

Result<int> Test_File_Exists(const QString& file_name, bool raise_error)
{
    if (file_name.isEmpty()) {
        if (raise_error) return Failure("No file name was given");
        return 0;
    }
    return QFileInfo(Existing_Path(file_name)).isFile() ? 1 : 0;
}

// A byte that is no UTF-8 becomes a low surrogate of its own, U+DC80 to U+DCFF, which valid text never has.

std::string File_System_Bytes(const QString& path)
{
    QByteArray bytes;
    qsizetype done = 0;
    for (qsizetype i = 0; i < path.size(); ++i) {
        const bool is_byte = path[i].unicode() >= 0xDC80 && path[i].unicode() <= 0xDCFF;
        if (!is_byte || (i > 0 && path[i - 1].isHighSurrogate())) continue;
        bytes += QStringView(path).mid(done, i - done).toUtf8();
        bytes += char(path[i].unicode() & 0xFF);
        done = i + 1;
    }
    bytes += QStringView(path).mid(done).toUtf8();
    return bytes.toStdString();
}

QString Path_From_Bytes(const QByteArray& bytes)
{
    QString path = QString::fromUtf8(bytes);
    if (path.toUtf8() == bytes) return path;
    path.clear();
    for (qsizetype i = 0; i < bytes.size();) {
        const auto lead = static_cast<unsigned char>(bytes[i]);
        const int length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        const QByteArray sequence = bytes.mid(i, length);
        const QString character = QString::fromUtf8(sequence);
        if (character.toUtf8() == sequence) {
            path += character;
            i += length;
        } else {
            path += QChar(char16_t(0xDC00 | lead));
            ++i;
        }
    }
    return path;
}

bool Is_Valid_File_Name(const QString& name)
{
    if (name.isEmpty() || name == u"." || name == u"..") return false;
    if (name.contains(u'/') || name.contains(QChar(u'\0'))) return false;
    return File_System_Bytes(name).size() <= std::size_t(Current_Limits().file_name_bytes);
}

bool Fits_File_Pattern(const QString& name, const QString& patterns)
{
    const QStringList parts = patterns.split(u';', Qt::SkipEmptyParts);
    return std::any_of(parts.begin(), parts.end(), [&name](const QString& part) {
        const QString pattern = part.trimmed();
        return pattern == u"*.*" || Like(name, pattern);
    });
}
