#include "rename/Rename_Journal_Folder.h"

#include "frame/State_Folder.h"
#include "frame/files/Limits.h"
#include "frame/files/Regular_File.h"
#include "frame/text/Path_Utilities.h"

#include <QtCore/QDir>
#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace {

constexpr char Begun = 'B';
constexpr char Done = 'D';
constexpr char Unclear = 'U'; // could not be put right: told once, and kept for whoever wants to look
constexpr std::size_t Most_Kept = 20;

const QString Journal_Names = QStringLiteral("rename-*.journal");

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

std::optional<Rename_Record> Read_Record(const std::string& path)
{
    const auto file = Regular_File::Open(path);
    if (!file) return {};
    const auto bytes = file->Read_All(Current_Limits().document_bytes);
    if (!bytes || bytes->size() < 2) return {};
    const QByteArray text(reinterpret_cast<const char*>(bytes->data()), qsizetype(bytes->size()));
    return Record_From_Text(text.mid(2)); // behind the state and its line end
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

/// Puts one rename right and tells about it.
std::string Mend(const std::string& path, const Rename_Record& record, Rename_Files& files)
{
    const auto mended = Put_Right(record, files);
    if (mended) {
        unlink(path.c_str());
        return "A rename was interrupted; its files have their old names again";
    }
    const int descriptor = open(path.c_str(), O_RDWR | O_CLOEXEC);
    if (descriptor >= 0) (void)Write_State(descriptor, Unclear, path);
    if (descriptor >= 0) close(descriptor);
    return mended.error().text;
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
    const std::string name = New_Name();
    const std::string unfinished = folder_ + "new-" + name;
    descriptor_ = open(unfinished.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (descriptor_ < 0) return System_Failure(unfinished, errno);
    // Only a whole and locked journal gets the name by which others find it.
    Result<void> written = Write_All(descriptor_, QByteArray(1, Begun) + '\n' + Text_Of_Record(record), unfinished);
    if (written && (flock(descriptor_, LOCK_EX | LOCK_NB) != 0 || fsync(descriptor_) != 0))
        written = System_Failure(unfinished, errno);
    path_ = folder_ + "rename-" + name;
    if (written && rename(unfinished.c_str(), path_.c_str()) != 0) written = System_Failure(path_, errno);
    if (written) return {};
    unlink(unfinished.c_str());
    Close();
    return written;
}

Result<void> Rename_Journal_Folder::Finish()
{
    if (descriptor_ < 0) return Failure("no rename has begun");
    if (auto written = Write_State(descriptor_, Done, path_); !written) return written;
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

std::vector<std::string> Rename_Journal_Folder::Names() const
{
    const QDir folder(Path_From_Bytes(QByteArray::fromStdString(folder_)));
    std::vector<std::string> names;
    for (const QString& name : folder.entryList({Journal_Names}, QDir::Files, QDir::Name))
        names.push_back(name.toStdString());
    return names;
}

void Rename_Journal_Folder::Prune()
{
    std::vector<std::string> names = Names();
    std::erase_if(names, [this](const std::string& name) { return State_Of(folder_ + name) == Begun; });
    for (std::size_t i = 0; i + Most_Kept < names.size(); ++i) unlink((folder_ + names[i]).c_str());
}

std::vector<std::string> Rename_Journal_Folder::Put_Interrupted_Right(Rename_Files& files)
{
    std::vector<std::string> told;
    for (const std::string& name : Names()) {
        const std::string path = folder_ + name;
        if (State_Of(path) != Begun) continue;
        const int descriptor = open(path.c_str(), O_RDWR | O_CLOEXEC);
        if (descriptor < 0) continue;
        // It may have come to its end before the lock was free: the state counts under the lock.
        const bool is_interrupted = flock(descriptor, LOCK_EX | LOCK_NB) == 0 && State_Of(path) == Begun;
        if (const auto record = is_interrupted ? Read_Record(path) : std::nullopt)
            told.push_back(Mend(path, *record, files));
        close(descriptor);
    }
    return told;
}

std::optional<Rename_Journal_Folder::Kept> Rename_Journal_Folder::Last_Done() const
{
    const std::vector<std::string> names = Names();
    for (std::size_t i = names.size(); i-- > 0;) {
        const std::string path = folder_ + names[i];
        if (State_Of(path) != Done) continue;
        if (auto record = Read_Record(path)) return Kept{path, std::move(*record)};
    }
    return {};
}

void Rename_Journal_Folder::Drop(const Kept& kept)
{
    unlink(kept.path.c_str());
}

Result<int> Take_Back_Last_Rename(Rename_Journal_Folder& journal, Rename_Files& files)
{
    const auto last = journal.Last_Done();
    if (!last) return 0;
    const Rename_Plan plan(files, Moves_Back(last->record, files));
    if (const auto done = Run_Plan(plan, files, journal); !done) return tl::make_unexpected(done.error());
    // The way back is itself a rename that was done: neither is left to be taken back.
    if (!plan.Steps().empty())
        if (const auto back = journal.Last_Done()) journal.Drop(*back);
    journal.Drop(*last);
    return int(plan.Moves().size());
}

std::string Standard_Journal_Folder()
{
    return File_System_Bytes(State_Folder()) + "/renames/";
}
