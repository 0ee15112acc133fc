#include "catalogue/Search.h"

#include "frame/files/Limits.h"
#include "frame/text/Text_Utilities.h"
#include "imaging/Brennick_Image_Utilities.h"

#include <QtCore/QElapsedTimer>
#include <dirent.h>
#include <memory>
#include <set>
#include <sys/stat.h>

namespace {

constexpr qint64 Milliseconds_Between_Shows = 50;
constexpr int Years_To_Come = 1000;

QDateTime Modified(const struct stat& facts)
{
    return QDateTime::fromMSecsSinceEpoch(qint64(facts.st_mtim.tv_sec) * 1000 + facts.st_mtim.tv_nsec / 1'000'000);
}

class Folder_Walk {
public:
    Folder_Walk(const Search_Request& request, Like_Pattern criteria, const Search_Watcher& watcher);
    Result<Search_Result> Run();

private:
    struct Place {
        QString path; // with its trailing separator
        int depth = 0;
    };
    struct Listing {
        QStringList files, folders;
    };
    bool Is_New(const QString& folder);
    bool List(const QString& folder, Listing& listing) const;
    void Read_Folder(const Place& place, std::vector<Place>& to_do);
    void Look_At_Files(const QString& folder, QStringList files);
    void Look_At(const QString& path, const QString& name);
    bool May_Go_On();

    const Search_Request& request_;
    Like_Pattern criteria_;
    const Search_Watcher& watcher_;
    QStringList patterns_;
    double from_ = 0, to_ = 0;
    std::set<std::pair<std::uint64_t, std::uint64_t>> seen_; // device and inode
    Search_Progress progress_;
    Search_Result result_;
};

Folder_Walk::Folder_Walk(const Search_Request& request, Like_Pattern criteria, const Search_Watcher& watcher)
    : request_(request), criteria_(std::move(criteria)), watcher_(watcher)
{
    patterns_ = (request.patterns.isEmpty() ? QStringLiteral("*.*") : request.patterns).split(u';', Qt::SkipEmptyParts);
    const QDateTime end = QDateTime::currentDateTime().addYears(Years_To_Come);
    from_ = request.from_date == Date_Of_Now ? -std::numeric_limits<double>::infinity() : request.from_date;
    to_ = request.to_date == Date_Of_Now ? Date_From_Date_Time(end) : request.to_date;
}

bool Folder_Walk::May_Go_On()
{
    if (!result_.stopped && watcher_) {
        progress_.found = int(result_.files.size());
        result_.stopped = !watcher_(progress_);
    }
    return !result_.stopped;
}

bool Folder_Walk::Is_New(const QString& folder)
{
    struct stat facts {};
    if (stat(File_System_Bytes(folder).c_str(), &facts) != 0) return true; // listing it tells the reason
    return seen_.emplace(facts.st_dev, facts.st_ino).second;
}

bool Folder_Walk::List(const QString& folder, Listing& listing) const
{
    const std::string path = File_System_Bytes(folder);
    const std::unique_ptr<DIR, int (*)(DIR*)> handle(opendir(path.c_str()), &closedir);
    if (!handle) return false;
    while (const dirent* entry = readdir(handle.get())) {
        if (entry->d_name[0] == '.') continue;
        unsigned char type = entry->d_type;
        if (type == DT_LNK || type == DT_UNKNOWN) {
            struct stat facts {};
            if (stat((path + entry->d_name).c_str(), &facts) != 0) continue;
            type = S_ISDIR(facts.st_mode) ? DT_DIR : S_ISREG(facts.st_mode) ? DT_REG : DT_UNKNOWN;
        }
        const QString name = Path_From_Bytes(QByteArray(entry->d_name));
        if (type == DT_DIR) listing.folders << name;
        if (type == DT_REG) listing.files << name;
    }
    listing.files.sort();
    listing.folders.sort();
    return true;
}

void Folder_Walk::Look_At(const QString& path, const QString& name)
{
    if (request_.kind == Search_Kind::Names && !criteria_.Matches(name)) return;
    struct stat facts {};
    if (stat(File_System_Bytes(path).c_str(), &facts) != 0) return;
    const double date = Normalize_Date(Date_From_Date_Time(Modified(facts)), /*keep_time=*/true);
    if (date < from_ || date > to_) return;
    if (request_.kind == Search_Kind::Descriptions && !criteria_.Matches(Get_Comment(path, 0))) return;
    File_Entry entry;
    entry.Path_Name = path;
    entry.File_Date = date;
    entry.File_Size_KB = int((facts.st_size + 512) / 1024);
    result_.files.push_back(entry);
}

/// A file that fits several patterns is found with the first of them.
void Folder_Walk::Look_At_Files(const QString& folder, QStringList files)
{
    for (const QString& pattern : patterns_) {
        QStringList others;
        for (const QString& name : files) {
            if (!Fits_File_Pattern(name, pattern)) {
                others << name;
                continue;
            }
            ++progress_.files;
            if (!May_Go_On()) return;
            Look_At(folder + name, name);
        }
        files = others;
    }
}

void Folder_Walk::Read_Folder(const Place& place, std::vector<Place>& to_do)
{
    if (!Is_New(place.path)) return;
    progress_.folder = place.path;
    ++progress_.folders;
    if (!May_Go_On()) return;
    Listing listing;
    if (!List(place.path, listing)) {
        result_.unread << place.path;
        return;
    }
    Look_At_Files(place.path, listing.files);
    if (place.depth >= Current_Limits().folder_depth) return;
    for (auto name = listing.folders.crbegin(); name != listing.folders.crend(); ++name)
        to_do.push_back({place.path + *name + u'/', place.depth + 1});
}

Result<Search_Result> Folder_Walk::Run()
{
    std::vector<Place> to_do{{With_Trailing_Separator(request_.folder), 1}};
    while (!to_do.empty() && !result_.stopped) {
        const Place place = to_do.back();
        to_do.pop_back();
        Read_Folder(place, to_do);
        if (progress_.folders == 1 && !result_.unread.isEmpty())
            return Failure(request_.folder.toStdString() + ": the folder cannot be read");
    }
    return std::move(result_);
}

/// Empty when the user gave up.
QString Ask_For_Criteria(User_Dialogs& dialogs, Search_Kind kind, const QString& folder)
{
    const QString what = kind == Search_Kind::Names ? QStringLiteral("Search for files in folder: ")
                                                    : QStringLiteral("Search for descriptions in folder: ");
    Input_Question question{.prompt = what + folder +
                                      QStringLiteral("\rand its subfolders.\rEnter search criteria, including "
                                                     "wildcards."),
                            .title = QStringLiteral("Search Criteria"),
                            .text = {}};
    const QString hint = QStringLiteral("\rOr press [Esc] or click cancel.");
    for (;;) {
        const auto answer = dialogs.Input(question);
        if (!answer) return {};
        if (!answer->isEmpty() && Like_Pattern::Compile(*answer, Like_Pattern::Compare::Text)) return *answer;
        if (!question.prompt.endsWith(hint)) question.prompt += hint;
        question.text = *answer;
    }
}

} // namespace

Result<Search_Result> Search_Files(const Search_Request& request, const Search_Watcher& watcher)
{
    auto criteria = Like_Pattern::Compile(request.criteria, Like_Pattern::Compare::Text);
    if (!criteria) return Failure("The search criteria are no pattern: " + request.criteria.toStdString());
    return Folder_Walk(request, std::move(*criteria), watcher).Run();
}

std::optional<Search_Result> Ask_And_Search(Platform& platform, Search_Kind kind, const QString& folder,
                                            const QString& patterns)
{
    const QString criteria = Ask_For_Criteria(platform.dialogs, kind, folder);
    if (criteria.isEmpty()) return {};
    const auto window = platform.dialogs.Operation_Progress_Cancel_Dialog(QStringLiteral("Search Criteria"), criteria);
    QElapsedTimer since_show;
    const auto watcher = [&](const Search_Progress& progress) {
        if (since_show.isValid() && since_show.elapsed() < Milliseconds_Between_Shows) return true;
        since_show.start();
        window->Show(QStringLiteral("%1 of %2: %3").arg(progress.found).arg(progress.files).arg(progress.folder),
                     progress.files, 0);
        return !window->Stop_Requested();
    };
    auto result = Search_Files({.kind = kind, .folder = folder, .patterns = patterns, .criteria = criteria}, watcher);
    if (result) return std::move(*result);
    platform.dialogs.Refuse(QString::fromStdString(result.error().text));
    return {};
}
