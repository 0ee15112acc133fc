#include "catalogue/Snapshot_Names.h"

#include "frame/text/Text_Utilities.h"

#include <QtCore/QFileInfo>

namespace {

constexpr int Stamp_Length = 16; // -yyyymmdd-hhnnss

/// The base name of the original.
QString Original_Base(const QString& file_name)
{
    const QString base = Base_Name_Part(file_name);
    return Test_Snapshot_Name(file_name) ? base.mid(1, base.size() - 1 - Stamp_Length) : base;
}

QString Dot_Extension(const QString& file_name)
{
    const QString extension = Extension_Part(file_name);
    return extension.isEmpty() ? extension : QLatin1Char('.') + extension;
}

} // namespace

QString Snapshot_Name(const QString& File_Name, const QDateTime& now)
{
    return Folder_Part(File_Name) + QLatin1Char('~') + Original_Base(File_Name) +
           now.toString(QStringLiteral("-yyyyMMdd-HHmmss")) + Dot_Extension(File_Name);
}

QString Free_Snapshot_Name(const QString& File_Name, const QDateTime& now)
{
    QDateTime stamp = now;
    while (QFileInfo::exists(Snapshot_Name(File_Name, stamp))) stamp = stamp.addSecs(1);
    return Snapshot_Name(File_Name, stamp);
}

QString Snapshot_Base_Name(const QString& File_Name)
{
    return Folder_Part(File_Name) + Original_Base(File_Name) + Dot_Extension(File_Name);
}

QString Snapshot_Pattern(const QString& File_Name)
{
    return Folder_Part(File_Name) + QLatin1Char('~') + Original_Base(File_Name) + QStringLiteral("-*") +
           Dot_Extension(File_Name);
}

bool Test_Snapshot_Name(const QString& File_Name)
{
    const QString base = Base_Name_Part(File_Name);
    return base.startsWith(QLatin1Char('~')) && Like(base.right(Stamp_Length), QStringLiteral("-########-######"));
}
