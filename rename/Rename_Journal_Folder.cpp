#include "rename/Rename_Journal_Folder.h"

#include "frame/State_Folder.h"
#include "frame/files/Limits.h"
#include "frame/files/Regular_File.h"
#include "frame/files/Rename_File.h"
#include "frame/text/Path_Utilities.h"

#include <QtCore/QDir>
#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr char Begun = 'B';
constexpr char Done = 'D';
constexpr std::size_t Most_Kept = 20; // of each kind
constexpr std::time_t Stale_Seconds = 24 * 60 * 60;

const QString Journals = QStringLiteral("rename-*.journal");
const QString Journals_Set_Aside = QStringLiteral("set-aside-rename-*.journal");
const QString Unfinished_Journals = QStringLiteral("new-*.journal");

/// A journal of ten thousand files is long; its state is one byte.
char State_Of(const std::string& path)
{
    char state = 0;
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) return 0;
    if (pread(descriptor, &state, 1, 0) != 1) state = 0;
    close(descriptor);
    return state;
}

/// The state and the record behind it. What is damaged stands in the record's fault.
struct Journal_Reading {
    char state = 0;
    Record_Reading reading;
};

Journal_Reading Read_Journal(const std::string& path)
{
    const auto file = Regular_File::Open(path);
    const auto bytes = file ? file->Read_All(Current_Limits().document_bytes) : tl::make_unexpected(file.error());
    if (!bytes) return {.state = 0, .reading = {.record = {}, .fault = bytes.error().text}};
    const QByteArray text(reinterpret_cast<const char*>(bytes->data()), qsizetype(bytes->size()));
    Journal_Reading journal{.state = text.isEmpty() ? '\0' : text[0], .reading = Record_From_Text(text.mid(2))};
    const bool has_state = (journal.state == Begun || journal.state == Done) && text.size() > 1 && text[1] == '\n';
    if (!has_state && journal.reading.Is_Whole()) journal.reading.fault = "its beginning was changed";
    return journal;
}

Result<void> Write_All(int descriptor, const QByteArray& bytes, const std::string& path)
{
    for (qsizetype at = 0; at < bytes.size();) {
        const ssize_t written = write(descriptor, bytes.constData() + at, std::size_t(bytes.size() - at));
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return System_Failure(path, errno);
        at += written;
    }
    return {};
}

/// In place: the file is neither longer nor shorter afterwards, so a full disk is no hindrance.
Result<void> Write_State(int descriptor, char state, const std::string& path)
{
    if (pwrite(descriptor, &state, 1, 0) != 1 || fsync(descriptor) != 0) return System_Failure(path, errno);
    return {};
}

std::string Damage_Text(const std::string& beginning, const std::string& fault, const std::string& kept_as)
{
    return beginning + " is damaged: " + fault + "; it is kept as " + kept_as;
}

/// Names sort by time.
std::string New_Name()
{
    static int counter = 0;
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    char name[64];
    std::snprintf(name, sizeof name, "%016lld-%d-%06d.journal",
                  static_cast<long long>(std::chrono::duration_cast<std::chrono::microseconds>(now).count()), getpid(),
                  ++counter);
    return name;
}

} // namespace

Rename_Journal_Folder::Rename_Journal_Folder(std::string folder) : folder_(std::move(folder))
{
    if (!folder_.empty() && folder_.back() != '/') folder_ += '/';
}

Rename_Journal_Folder::~Rename_Journal_Folder()
{
    Close();
}

void Rename_Journal_Folder::Close()
{
    if (descriptor_ >= 0) close(descriptor_);
    descriptor_ = -1;
    path_.clear();
}

Result<void> Rename_Journal_Folder::Begin(const Rename_Record& record)
{
    Close();
    if (!QDir().mkpath(Path_From_Bytes(QByteArray::fromStdString(folder_))))
        return Failure(folder_ + ": the folder for the journal of renames cannot be made");
    const QByteArray text = QByteArray(1, Begun) + '\n' + Text_Of_Record(record);
    if (text.size() > Current_Limits().document_bytes)
        return Failure(folder_ + ": the journal of a rename of " + std::to_string(record.moves.size()) +
                       " files is too long; rename fewer at a time");
    const std::string name = New_Name();
    const std::string unfinished = folder_ + "new-" + name;
    descriptor_ = open(unfinished.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (descriptor_ < 0) return System_Failure(unfinished, errno);
    // Only a whole and locked journal gets the name by which others find it.
    Result<void> written = Write_All(descriptor_, text, unfinished);
    if (written && (flock(descriptor_, LOCK_EX | LOCK_NB) != 0 || fsync(descriptor_) != 0))
        written = System_Failure(unfinished, errno);
    path_ = folder_ + "rename-" + name;
    if (written && rename(unfinished.c_str(), path_.c_str()) != 0) written = System_Failure(path_, errno);
    if (written) written = Flush_Folder(folder_);
    if (written) return {};
    unlink(unfinished.c_str());
    unlink(path_.c_str());
    Close();
    return written;
}

Result<void> Rename_Journal_Folder::Finish()
{
    if (descriptor_ < 0) return Failure("no rename has begun");
    if (auto written = Write_State(descriptor_, Done, path_); !written) return written;
    finished_ = path_;
    Close();
    Prune();
    return {};
}

void Rename_Journal_Folder::Forget()
{
    if (descriptor_ < 0) return;
    // Where the file cannot go, what it tells is still true: nothing of it was done.
    unlink(path_.c_str());
    Close();
}

std::vector<std::string> Rename_Journal_Folder::Names(const QString& pattern) const
{
    const QDir folder(Path_From_Bytes(QByteArray::fromStdString(folder_)));
    std::vector<std::string> names;
    for (const QString& name : folder.entryList({pattern}, QDir::Files, QDir::Name))
        names.push_back(name.toStdString());
    return names;
}

void Rename_Journal_Folder::Prune()
{
    std::vector<std::string> done = Names(Journals);
    std::erase_if(done, [this](const std::string& name) { return State_Of(folder_ + name) != Done; });
    for (const auto& names : {done, Names(Journals_Set_Aside)})
        for (std::size_t i = 0; i + Most_Kept < names.size(); ++i) unlink((folder_ + names[i]).c_str());
    for (const std::string& name : Names(Unfinished_Journals)) { // of a process that ended before its rename began
        struct stat facts {};
        const std::string path = folder_ + name;
        if (stat(path.c_str(), &facts) == 0 && facts.st_mtime < std::time(nullptr) - Stale_Seconds)
            unlink(path.c_str());
    }
}

/// Tells where the journal is from now on. A folder that nothing can be changed in keeps it where it is.
std::string Rename_Journal_Folder::Set_Aside(const std::string& name)
{
    const std::string aside = "set-aside-" + name;
    const bool is_aside = rename((folder_ + name).c_str(), (folder_ + aside).c_str()) == 0;
    return folder_ + (is_aside ? aside : name);
}

/// Puts one rename right and tells about it.
std::string Rename_Journal_Folder::Mend(const std::string& name, Rename_Files& files)
{
    const auto [state, reading] = Read_Journal(folder_ + name);
    if (!reading.Is_Whole()) {
        const std::string astray = Leave_Temporary_Names(reading.record, files);
        return Damage_Text("The journal of a rename that may have been interrupted", reading.fault, Set_Aside(name)) +
               astray;
    }
    const auto mended = Put_Right(reading.record, files);
    if (!mended) return mended.error().text + "; the journal of that rename is " + Set_Aside(name);
    unlink((folder_ + name).c_str());
    return "A rename was interrupted; its files have their old names again";
}

std::vector<std::string> Rename_Journal_Folder::Put_Interrupted_Right(Rename_Files& files)
{
    std::vector<std::string> told;
    for (const std::string& name : Names(Journals)) {
        const std::string path = folder_ + name;
        if (State_Of(path) == Done) continue;
        const int descriptor = open(path.c_str(), O_RDWR | O_CLOEXEC);
        // It may have come to its end before the lock was free: the state counts under the lock.
        const bool is_running = descriptor >= 0 && flock(descriptor, LOCK_EX | LOCK_NB) != 0;
        if (!is_running && State_Of(path) != Done && access(path.c_str(), F_OK) == 0) told.push_back(Mend(name, files));
        if (descriptor >= 0) close(descriptor);
    }
    return told;
}

Result<std::optional<Rename_Journal_Folder::Kept>> Rename_Journal_Folder::Last_Done()
{
    const std::vector<std::string> names = Names(Journals);
    for (std::size_t i = names.size(); i-- > 0;) {
        const std::string path = folder_ + names[i];
        if (State_Of(path) != Done) continue;
        auto [state, reading] = Read_Journal(path);
        if (reading.Is_Whole()) return Kept{path, std::move(reading.record)};
        return Failure(
            Damage_Text("The last rename cannot be taken back, for its journal", reading.fault, Set_Aside(names[i])) +
            "; the rename before it is the next to be taken back");
    }
    return std::nullopt;
}

void Rename_Journal_Folder::Drop(const Kept& kept)
{
    unlink(kept.path.c_str());
}

void Rename_Journal_Folder::Drop_Last_Finished()
{
    unlink(finished_.c_str());
    finished_.clear();
}

Result<int> Take_Back_Last_Rename(Rename_Journal_Folder& journal, Rename_Files& files)
{
    const auto last = journal.Last_Done();
    if (!last) return tl::make_unexpected(last.error());
    if (!*last) return 0;
    const auto moves = Moves_Back((*last)->record, files);
    if (moves.empty()) {
        journal.Drop(**last);
        return Failure("None of the files of the last rename is there any more");
    }
    const Rename_Plan plan(files, moves);
    if (const auto done = Run_Plan(plan, files, journal); !done) return tl::make_unexpected(done.error());
    journal.Drop_Last_Finished();
    journal.Drop(**last);
    return int(plan.Moves().size());
}

std::string Standard_Journal_Folder()
{
    return File_System_Bytes(State_Folder()) + "/renames/";
}
