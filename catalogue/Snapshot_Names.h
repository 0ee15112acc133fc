#pragma once

#include <QtCore/QDateTime>
#include <QtCore/QString>

/// A snapshot is a copy of a file in its folder, named "~" + base name + "-yyyymmdd-hhnnss" + extension.

/// A snapshot of a snapshot is named after the original.
QString Snapshot_Name(const QString& File_Name, const QDateTime& now);

/// The same with the first second from now on whose name is not taken.
QString Free_Snapshot_Name(const QString& File_Name, const QDateTime& now);

/// Folder and name of the original; a file that is no snapshot keeps its name.
QString Snapshot_Base_Name(const QString& File_Name);

/// Folder and pattern of all snapshots of a file.
QString Snapshot_Pattern(const QString& File_Name);

/// True when the name begins with "~" and its base name ends in "-########-######".
bool Test_Snapshot_Name(const QString& File_Name);
