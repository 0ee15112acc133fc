#pragma once

#include "catalogue/File_Entry.h"
#include "frame/files/Result.h"
#include "frame/ports/Platform.h"
#include "frame/text/Date_Utilities.h"

#include <QtCore/QStringList>
#include <functional>
#include <optional>
#include <vector>

/// Search over a folder and all folders below it, by name or by description.
enum class Search_Kind { Names, Descriptions };

struct Search_Request {
    Search_Kind kind = Search_Kind::Names;
    QString folder{};
    QString patterns{};             ///< of file names, parted by ";"; empty means "*.*", an empty part finds nothing
    QString criteria{};             ///< with the wildcards of Like_Pattern, without regard to case
    double from_date = Date_Of_Now; ///< days; day 2 means no bound
    double to_date = Date_Of_Now;   ///< days; day 2 means a thousand years from now
};

struct Search_Progress {
    QString folder{}; ///< the one being read
    int folders = 0;  ///< read so far, this one included
    int files = 0;    ///< looked at so far
    int found = 0;
};

struct Search_Result {
    std::vector<File_Entry> files{}; ///< a folder's own files by name, pattern after pattern, then those of its folders
    QStringList unread{};            ///< folders that could not be read
    bool stopped = false;
};

/// Called for each folder and each file; false stops the search, which keeps what was found.
using Search_Watcher = std::function<bool(const Search_Progress&)>;

/// Hidden files and folders are passed over. Links are followed, but a folder is read once, whatever leads to it, and none
/// deeper than the limit of folders. Descriptions are read from the head of a file; pixels are never looked at. Fails when
/// the criteria are no pattern or the folder cannot be read.
Result<Search_Result> Search_Files(const Search_Request& request, const Search_Watcher& watcher = {});

/// Asks for the criteria and searches behind a progress window. Nothing when the user gave up.
std::optional<Search_Result> Ask_And_Search(Platform& platform, Search_Kind kind, const QString& folder,
                                            const QString& patterns);
