#include "frame/Qt_Settings.h"

#include <QtCore/QUrl>

namespace {

constexpr int Failed = 5;
const QString Organization = QStringLiteral("Brennick");
const QString Application = QStringLiteral("Halvine");

/// Keys and names may hold "/" and "\", which would open a group of their own.
QString Encoded(const QString& text)
{
    return QString::fromLatin1(QUrl::toPercentEncoding(text));
}

QString Decoded(const QString& text)
{
    return QUrl::fromPercentEncoding(text.toLatin1());
}

QString Path_Of(const QString& key, const QString& name)
{
    return Encoded(key) + u'/' + Encoded(name);
}

QStringList Names_In(QSettings& settings, const QString& group)
{
    settings.beginGroup(group);
    const QStringList names = settings.childKeys();
    settings.endGroup();
    return names;
}

} // namespace

Qt_Settings::Qt_Settings()
    : user_(QSettings::IniFormat, QSettings::UserScope, Organization, Application),
      machine_(QSettings::IniFormat, QSettings::SystemScope, Organization, Application)
{
    user_.setFallbacksEnabled(false);
    machine_.setFallbacksEnabled(false);
}

QSettings& Qt_Settings::Scope_Of(const QString& group)
{
    return Names_In(user_, group).isEmpty() ? machine_ : user_;
}

QString Qt_Settings::Read_Value(const QString& key, const QString& name)
{
    return Scope_Of(Encoded(key)).value(Path_Of(key, name)).toString();
}

int Qt_Settings::Write_Value(const QString& key, const QString& name, const QString& value)
{
    user_.setValue(Path_Of(key, name), value);
    user_.sync();
    return user_.status() == QSettings::AccessError ? Failed : 0;
}

QStringList Qt_Settings::Value_Names(const QString& key)
{
    QStringList names;
    const QString group = Encoded(key);
    for (const QString& name : Names_In(Scope_Of(group), group)) names << Decoded(name);
    return names;
}
