#pragma once

#include "frame/files/Result.h"
#include <QtCore/QDateTime>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <functional>
#include <vector>

/// The files or folders of one folder. Names are kept so that File_System_Bytes gives the bytes on disk again, also when
/// they are no valid UTF-8. Pipes, sockets and devices are left out; a link counts as what it leads to, and a link that
/// leads nowhere or in a circle is left out.
struct Folder_Entry {
    QString name;           ///< without folder; the whole path in lists of found files
    std::int64_t bytes = 0; ///< 0 for a folder
    QDateTime modified;     ///< local time
    QDateTime created;      ///< the birth time where the file system knows it, else `modified`
    bool operator==(const Folder_Entry&) const = default;
};

struct Folder_Question {
    QString folder{};
    QString pattern = QStringLiteral("*.*"); ///< a ";" list, without regard to case; files only
    bool folders = false;                    ///< list the folders instead of the files
    bool hidden = false;                     ///< names that begin with a dot too
};

/// Sorted by name without regard to case. The error names folder and reason.
Result<std::vector<Folder_Entry>> List_Folder(const Folder_Question& question);

/// Facts of files given by path; files that are gone or not regular are left out, in the order given.
std::vector<Folder_Entry> List_Files(const QStringList& paths);

/// What stands in the place of paths that were dropped or handed over: a file stays as it is, a folder gives way to those
/// of its files that match the pattern, sorted by name, hidden ones left out. A folder that cannot be read stays too, for
/// whoever reads the files to tell of it.
QStringList Files_In_Place_Of_Folders(const QStringList& paths, const QString& pattern);

bool Has_Folders(const QString& folder, bool hidden); ///< false when it cannot be read

bool Is_Folder(const QString& path); ///< links count as what they lead to

QString File_Type_Text(const QString& name); ///< "JPG File", or "File" without an extension
std::int64_t Kilobytes(std::int64_t bytes);  ///< rounded up
