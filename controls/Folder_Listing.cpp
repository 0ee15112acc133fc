#include "controls/Folder_Listing.h"

#include "frame/text/Text_Utilities.h"
#include <QtCore/QCoreApplication>
#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>

// One pass over the folder; a file's facts are asked for only when its name fits, and nothing is opened, so that a pipe
// or a device cannot block.

namespace {

using Folder_Stream = std::unique_ptr<DIR, int (*)(DIR*)>;

Folder_Stream Open_Folder(const QString& folder)
{
    // The empty path is no folder: it does not mean the working directory.
    return {folder.isEmpty() ? nullptr : ::opendir(File_System_Bytes(folder).c_str()), &::closedir};
}

bool Is_Dot_Name(const char* name)
{
    return std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0;
}

QDateTime Local_Time(const struct statx_timestamp& time)
{
    return QDateTime::fromMSecsSinceEpoch(qint64(time.tv_sec) * 1000 + time.tv_nsec / 1'000'000);
}

/// Facts of what the name leads to; nothing for a broken or circular link.
std::optional<struct statx> Facts_At(int folder, const char* name)
{
    struct statx facts;
    if (::statx(folder, name, AT_STATX_SYNC_AS_STAT, STATX_BASIC_STATS | STATX_BTIME, &facts) != 0) return {};
    return facts;
}

Folder_Entry Entry_Of(QString name, const struct statx& facts)
{
    Folder_Entry entry{std::move(name), 0, Local_Time(facts.stx_mtime), {}};
    if (S_ISREG(facts.stx_mode)) entry.bytes = std::int64_t(facts.stx_size);
    entry.created = (facts.stx_mask & STATX_BTIME) != 0 ? Local_Time(facts.stx_btime) : entry.modified;
    return entry;
}

class Name_Filter {
public:
    explicit Name_Filter(const QString& patterns)
    {
        for (const auto& part : patterns.split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
            const auto pattern = part.trimmed();
            all_ |= pattern == QLatin1String("*.*") || pattern == QLatin1String("*");
            if (auto compiled = Like_Pattern::Compile(pattern, Like_Pattern::Compare::Text))
                patterns_.push_back(std::move(*compiled));
        }
    }
    bool Fits(const QString& name) const
    {
        return all_ || std::any_of(patterns_.begin(), patterns_.end(),
                                   [&](const auto& pattern) { return pattern.Matches(name); });
    }

private:
    std::vector<Like_Pattern> patterns_;
    bool all_ = false;
};

// The type in the entry saves the question for most of what is not wanted; a link or an unknown type must be asked.
bool May_Fit(const dirent& item, bool folders)
{
    if (item.d_type == DT_UNKNOWN || item.d_type == DT_LNK) return true;
    return item.d_type == (folders ? DT_DIR : DT_REG);
}

void Sort_By_Name(std::vector<Folder_Entry>& entries)
{
    std::vector<std::pair<QString, std::size_t>> order;
    order.reserve(entries.size());
    for (std::size_t i = 0; i < entries.size(); ++i) order.emplace_back(Case_Folded(entries[i].name), i);
    std::sort(order.begin(), order.end(), [&](const auto& left, const auto& right) {
        const int compared = left.first.compare(right.first);
        return compared != 0 ? compared < 0 : entries[left.second].name < entries[right.second].name;
    });
    std::vector<Folder_Entry> sorted;
    sorted.reserve(entries.size());
    for (const auto& place : order) sorted.push_back(std::move(entries[place.second]));
    entries = std::move(sorted);
}

Error Folder_Error(const QString& folder, int number)
{
    const auto reason = QString::fromLocal8Bit(std::strerror(number));
    const auto text = QCoreApplication::translate("Folder_Listing", "The folder \"%1\" cannot be read: %2");
    return {text.arg(folder, reason).toStdString(), number};
}

} // namespace

Result<std::vector<Folder_Entry>> List_Folder(const Folder_Question& question)
{
    const auto stream = Open_Folder(question.folder);
    if (!stream) return tl::make_unexpected(Folder_Error(question.folder, question.folder.isEmpty() ? ENOENT : errno));
    const Name_Filter filter(question.pattern);
    std::vector<Folder_Entry> entries;
    errno = 0;
    while (const dirent* item = ::readdir(stream.get())) {
        if (Is_Dot_Name(item->d_name) || (item->d_name[0] == '.' && !question.hidden)) continue;
        if (!May_Fit(*item, question.folders)) continue;
        auto name = Path_From_Bytes(item->d_name);
        if (!question.folders && !filter.Fits(name)) continue;
        const auto facts = Facts_At(::dirfd(stream.get()), item->d_name);
        errno = 0; // a vanished file is no error of the folder
        if (!facts || !(question.folders ? S_ISDIR(facts->stx_mode) : S_ISREG(facts->stx_mode))) continue;
        entries.push_back(Entry_Of(std::move(name), *facts));
    }
    if (errno != 0) return tl::make_unexpected(Folder_Error(question.folder, errno));
    Sort_By_Name(entries);
    return entries;
}

std::vector<Folder_Entry> List_Files(const QStringList& paths)
{
    std::vector<Folder_Entry> entries;
    for (const auto& path : paths) {
        const auto facts = Facts_At(AT_FDCWD, File_System_Bytes(path).c_str());
        if (facts && S_ISREG(facts->stx_mode)) entries.push_back(Entry_Of(path, *facts));
    }
    return entries;
}

QStringList Files_In_Place_Of_Folders(const QStringList& paths, const QString& pattern)
{
    QStringList files;
    for (const QString& path : paths) {
        const auto listed = List_Folder({.folder = path, .pattern = pattern});
        if (!listed) files << path; // a file, or what cannot be read
        for (const Folder_Entry& entry : listed.value_or(std::vector<Folder_Entry>{}))
            files << path + (path.endsWith(u'/') ? QString() : QStringLiteral("/")) + entry.name;
    }
    return files;
}

bool Has_Folders(const QString& folder, bool hidden)
{
    const auto stream = Open_Folder(folder);
    if (!stream) return false;
    while (const dirent* item = ::readdir(stream.get())) {
        if (Is_Dot_Name(item->d_name) || (item->d_name[0] == '.' && !hidden)) continue;
        if (!May_Fit(*item, true)) continue;
        if (item->d_type == DT_DIR) return true;
        const auto facts = Facts_At(::dirfd(stream.get()), item->d_name);
        if (facts && S_ISDIR(facts->stx_mode)) return true;
    }
    return false;
}

bool Is_Folder(const QString& path)
{
    const auto facts = path.isEmpty() ? std::nullopt : Facts_At(AT_FDCWD, File_System_Bytes(path).c_str());
    return facts && S_ISDIR(facts->stx_mode);
}

QString File_Type_Text(const QString& name)
{
    const auto extension = Extension_Part(name).toUpper();
    if (extension.isEmpty()) return QCoreApplication::translate("Folder_Listing", "File");
    return QCoreApplication::translate("Folder_Listing", "%1 File").arg(extension);
}

std::int64_t Kilobytes(std::int64_t bytes)
{
    return bytes / 1024 + (bytes % 1024 != 0);
}
