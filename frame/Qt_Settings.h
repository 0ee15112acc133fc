#pragma once

#include "frame/ports/Platform.h"

#include <QtCore/QSettings>

/// The settings in a file of the user's ("Brennick/Halvine.ini" in the configuration folder), with the machine's file of
/// the same name behind it for a key that the user's has nothing of.
class Qt_Settings final : public Settings_Map {
public:
    Qt_Settings();
    QString Read_Value(const QString& key, const QString& name) override;
    int Write_Value(const QString& key, const QString& name, const QString& value) override;
    QStringList Value_Names(const QString& key) override;

private:
    QSettings& Scope_Of(const QString& group);
    QSettings user_;
    QSettings machine_;
};
