#include "controls/Explorer_Answer.h"

#include "controls/Folder_Listing.h"
#include "frame/text/Path_Utilities.h"
#include <QtCore/QCoreApplication>
#include <QtCore/QDir>

namespace {

using Kind = Explorer_Answer::Kind;

QString Whole_Path(const QString& folder, const QString& name)
{
    QString path = name.startsWith(QLatin1Char('/')) ? name : With_Trailing_Separator(folder) + name;
    if (name == u"~" || name.startsWith(QLatin1String("~/"))) path = QDir::homePath() + name.mid(1);
    // What ends with a separator can be nothing but a folder.
    const bool is_folder = path.endsWith(QLatin1Char('/'));
    return is_folder ? With_Trailing_Separator(QDir::cleanPath(path)) : QDir::cleanPath(path);
}

bool Is_File(const QString& path)
{
    return !List_Files({path}).empty();
}

/// The file that the path means, by itself or with an extension of the pattern; empty when there is none.
QString File_To_Open(const QString& path, const QString& pattern)
{
    if (Is_File(path)) return path;
    for (const QString& part : pattern.split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
        const QString with_extension = With_Default_Extension(path, Extension_Part(part.trimmed()));
        if (Is_File(with_extension)) return with_extension;
    }
    return {};
}

Explorer_Answer No_Folder(const QString& path)
{
    return {Kind::Refused, QCoreApplication::translate("Explorer_Answer", "There is no folder \"%1\".")
                               .arg(Without_Trailing_Separator(path))};
}

Explorer_Answer Answer_Of_Open(const QString& path, const QString& pattern)
{
    const QString file = File_To_Open(path, pattern);
    if (!file.isEmpty()) return {Kind::Taken, file};
    return {Kind::Refused, QCoreApplication::translate("Explorer_Answer", "There is no file \"%1\".").arg(path)};
}

Explorer_Answer Answer_Of_Save(const QString& path)
{
    const QString parent = Existing_Path(Folder_Part(path));
    if (!Is_Folder(parent) || path.endsWith(QLatin1Char('/')))
        return No_Folder(path.endsWith(QLatin1Char('/')) ? path : parent);
    const QString name = Name_Part(path);
    if (Is_Valid_File_Name(name)) return {Kind::Taken, With_Trailing_Separator(parent) + name};
    return {Kind::Refused, QCoreApplication::translate("Explorer_Answer", "A file cannot be named \"%1\".").arg(name)};
}

} // namespace

Explorer_Answer Answer_Of_Explorer(Explorer_Function function, const QString& folder, const QString& pattern,
                                   const QString& name)
{
    const QString typed = Whole_Path(folder, name.trimmed().isEmpty() ? QString() : name);
    const QString present = Existing_Path(typed);
    if (Is_Folder(present)) {
        const auto kind = function == Explorer_Function::Pick_Folder ? Kind::Taken : Kind::Folder;
        return {kind, Without_Trailing_Separator(present)};
    }
    if (function == Explorer_Function::Pick_Folder) return No_Folder(typed);
    const bool wild = name.contains(QLatin1Char('*')) || name.contains(QLatin1Char('?'));
    if (wild && !Is_File(present) && !name.contains(QLatin1Char('/'))) return {Kind::Pattern, name};
    return function == Explorer_Function::Open_File ? Answer_Of_Open(present, pattern) : Answer_Of_Save(typed);
}
