#pragma once

#include "frame/ports/Platform.h"

#include <QtCore/QStringList>

/// Files or folders that were used last, newest first, each once. Kept in the settings, one value a path.
class Recent_List {
public:
    static constexpr int Most_Paths = 6;

    /// Value_Name: what the values are called, followed by a number: "Recent-Show" gives "Recent-Show-1" and so on. A
    /// settings store that cannot be written costs nothing but the memory of the next run.
    Recent_List(Settings_Map& settings, QString Value_Name);

    const QStringList& Paths() const { return paths_; }
    void Add(const QString& path); ///< to the front; an empty one is passed over

private:
    QString Value_Name(int number) const;
    Settings_Map& settings_;
    QString value_name_;
    QStringList paths_;
};
