#include "evaluate/System_Host.h"

#include "frame/text/Path_Utilities.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

namespace Formula {

namespace {

enum File_Attribute { Read_Only = 1, Hidden = 2, Folder = 16 };

Host_File_Facts Facts_Of(const QFileInfo& info)
{
    int attributes = info.isWritable() ? 0 : Read_Only;
    if (info.isHidden()) attributes |= Hidden;
    if (info.isDir()) attributes |= Folder;
    return {.name = info.fileName(), .size = info.size(), .modified = info.lastModified(), .attributes = attributes};
}

QString Key_Of(const QString& application, const QString& section)
{
    return QStringLiteral("Formulas/") + application + u'/' + section;
}

} // namespace

QString System_Host::Environment_Value(const QString& name)
{
    return qEnvironmentVariable(name.toUtf8().constData());
}

QString System_Host::Current_Folder(const QString&)
{
    return QDir::currentPath();
}

std::optional<std::vector<Host_File_Facts>> System_Host::Folder_Entries(const QString& folder)
{
    const QDir directory(Existing_Path(folder));
    if (!directory.exists()) return std::nullopt;
    std::vector<Host_File_Facts> entries;
    const auto all = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
    for (const QFileInfo& info : directory.entryInfoList(all, QDir::Name)) entries.push_back(Facts_Of(info));
    return entries;
}

std::optional<Host_File_Facts> System_Host::File_Facts(const QString& path)
{
    const QFileInfo info(Existing_Path(path));
    if (!info.exists()) return std::nullopt;
    return Facts_Of(info);
}

std::optional<QString> System_Host::Setting(const QString& application, const QString& section, const QString& key)
{
    if (!settings_) return std::nullopt;
    const QString name = Key_Of(application, section);
    if (!settings_->Value_Names(name).contains(key)) return std::nullopt;
    return settings_->Read_Value(name, key);
}

std::vector<std::pair<QString, QString>> System_Host::All_Settings(const QString& application, const QString& section)
{
    std::vector<std::pair<QString, QString>> values;
    if (!settings_) return values;
    const QString name = Key_Of(application, section);
    for (const QString& key : settings_->Value_Names(name)) values.emplace_back(key, settings_->Read_Value(name, key));
    return values;
}

} // namespace Formula
