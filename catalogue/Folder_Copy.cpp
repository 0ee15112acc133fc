#include "catalogue/Folder_Copy.h"

#include "catalogue/File_Confirmation.h"
#include "frame/files/Copy_File.h"
#include "frame/files/Link_File.h"
#include "frame/files/Regular_File.h"
#include "frame/files/Rename_File.h"
#include "frame/text/Path_Utilities.h"

#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

namespace {

QString From_Bytes(const std::string& path)
{
    return Path_From_Bytes(QByteArray::fromStdString(path));
}

bool Is_Folder_Itself(const std::string& path)
{
    struct stat facts {};
    return stat(path.c_str(), &facts) == 0 && S_ISDIR(facts.st_mode);
}

} // namespace

struct Folder_Copy::Tree {
    std::string source;
    std::string target;
    std::vector<Tree_Entry> entries{};
    // What this run made, in its order.
    std::vector<std::pair<std::string, std::string>> folders{};               // source and target
    std::vector<std::pair<std::string, std::optional<File_Identity>>> done{}; // below the roots; none for links
};

Folder_Copy::Folder_Copy(Platform& platform, File_Following& following, const Options& options)
    : platform_(platform),
      following_(following),
      options_(options),
      progress_(platform.dialogs.Operation_Progress_Cancel_Dialog(options.caption, QStringLiteral("Copying"))),
      question_(platform.dialogs, QStringLiteral("Halvine - Copy File Overwrite"))
{}

bool Folder_Copy::List(Tree& tree)
{
    auto listing = List_Tree(tree.source, [this] { return progress_->Stop_Requested(); });
    if (!listing) {
        if (listing.error().number != ECANCELED) failures_.Add(From_Bytes(tree.source), listing.error());
        return false;
    }
    tree.entries = std::move(listing->entries);
    for (const std::string& folder : listing->unread)
        failures_.Add(From_Bytes(folder), QStringLiteral("the folder cannot be read"));
    return true;
}

bool Folder_Copy::Copy(const QString& source, const QString& target)
{
    Tree tree{.source = File_System_Bytes(source), .target = File_System_Bytes(target)};
    if (!List(tree)) return false;
    const bool complete = Copy_Entries(tree);
    Finish_Folders(tree);
    return complete;
}

bool Folder_Copy::Copy_Entries(Tree& tree)
{
    if (Make_Folder(tree, From_Bytes(tree.source), From_Bytes(tree.target)) != Outcome::Done) return true;
    const int total = int(tree.entries.size());
    for (int i = 0; i < total; ++i) {
        progress_->Show(QStringLiteral("Copying %1 of %2\n").arg(i + 1).arg(total) +
                            From_Bytes(tree.entries[std::size_t(i)].path),
                        i + 1, total);
        if (progress_->Stop_Requested() || Copy_Entry(tree, tree.entries[std::size_t(i)]) == Outcome::End) return false;
    }
    return true;
}

Folder_Copy::Outcome Folder_Copy::Copy_Entry(Tree& tree, const Tree_Entry& entry)
{
    const QString source = From_Bytes(tree.source + "/" + entry.path);
    const QString target = From_Bytes(tree.target + "/" + entry.path);
    switch (entry.kind) {
    case Tree_Entry::Kind::Folder: return Make_Folder(tree, source, target);
    case Tree_Entry::Kind::File:
    case Tree_Entry::Kind::Link: return Copy_File_Or_Link(tree, entry, source, target);
    case Tree_Entry::Kind::Other: failures_.Add(source, QStringLiteral("is not a regular file")); break;
    }
    return Outcome::Left;
}

/// Open for this run alone until everything is in it; its own mode comes at the end.
Folder_Copy::Outcome Folder_Copy::Make_Folder(Tree& tree, const QString& source, const QString& target)
{
    const std::string path = File_System_Bytes(target);
    if (mkdir(path.c_str(), 0700) == 0) {
        tree.folders.emplace_back(File_System_Bytes(source), path);
        return Outcome::Done;
    }
    const int number = errno;
    if (number == EEXIST && Is_Folder_Itself(path)) return Outcome::Done;
    failures_.Add(target, QString::fromStdString(System_Error_Text(number)));
    return Outcome::Left;
}

Folder_Copy::Outcome Folder_Copy::Copy_File_Or_Link(Tree& tree, const Tree_Entry& entry, const QString& source,
                                                    const QString& target)
{
    const std::string from = File_System_Bytes(source);
    const std::string to = File_System_Bytes(target);
    const bool taken = Is_Name_Taken(to);
    if (taken) {
        if (following_.Is_In_Use(target)) {
            failures_.Add(target, QStringLiteral("locked by another function"));
            return Outcome::Left;
        }
        const auto answer = question_.Ask(target, source);
        if (answer != Overwrite_Question::Answer::Overwrite)
            return answer == Overwrite_Question::Answer::End ? Outcome::End : Outcome::Left;
    }
    const When_Taken when_taken = taken ? When_Taken::Replace : When_Taken::Refuse;
    std::optional<File_Identity> identity;
    Result<void> copied;
    if (entry.kind == Tree_Entry::Kind::Link) {
        const auto words = Words_For_Another_Place(from, tree.source);
        copied = words ? Make_Link(*words, to, when_taken) : tl::make_unexpected(words.error());
    } else {
        if (const auto now = Identity_Of(from)) identity = *now;
        copied = Copy_Whole_File(from, to, {.when_taken = when_taken, .verify = options_.verify, .stop_requested = [&] {
                                                return progress_->Stop_Requested();
                                            }});
    }
    if (!copied) {
        if (copied.error().number == ECANCELED) return Outcome::End;
        failures_.Add(source, copied.error());
        return Outcome::Left;
    }
    ++count_;
    tree.done.emplace_back(entry.path, identity);
    if (taken) following_.File_Replaced(target);
    return Outcome::Done;
}

/// The deepest first: a folder's time would change with what is put into it.
void Folder_Copy::Finish_Folders(Tree& tree)
{
    for (auto made = tree.folders.rbegin(); made != tree.folders.rend(); ++made)
        (void)Take_Folder_Facts(made->first, made->second); // the pictures are there; a date that is not harms nothing
}

/// What was written before a stop or a fault; nothing else stood there.
void Folder_Copy::Take_Back(const Tree& tree)
{
    for (const auto& [path, identity] : tree.done) unlink((tree.target + "/" + path).c_str());
    for (auto made = tree.folders.rbegin(); made != tree.folders.rend(); ++made) rmdir(made->second.c_str());
}

/// A file that was changed since it was copied, or came later, stays with its folder.
void Folder_Copy::Remove_Source(const Tree& tree)
{
    const auto failed = [this](const std::string& path) {
        failures_.Add(From_Bytes(path), QString::fromStdString(System_Error_Text(errno)));
    };
    for (const auto& [path, identity] : tree.done) {
        const std::string file = tree.source + "/" + path;
        const auto now = identity ? Identity_Of(file) : Result<File_Identity>();
        if (identity && (!now || *now != *identity))
            failures_.Add(From_Bytes(file), QStringLiteral("was changed while it was moved"));
        else if (unlink(file.c_str()) != 0)
            failed(file);
    }
    for (auto made = tree.folders.rbegin(); made != tree.folders.rend(); ++made)
        if (rmdir(made->first.c_str()) != 0) failed(made->first);
}

bool Folder_Copy::Move(const QString& source, const QString& target)
{
    Tree tree{.source = File_System_Bytes(source), .target = File_System_Bytes(target)};
    if (Is_Name_Taken(tree.target)) {
        failures_.Add(target, QString::fromStdString(System_Error_Text(EEXIST)));
        return false;
    }
    const bool complete = List(tree) && failures_.Count() == 0 && Copy_Entries(tree);
    if (!complete || failures_.Count() > 0) {
        Take_Back(tree);
        return false;
    }
    Finish_Folders(tree);
    Remove_Source(tree);
    return true;
}

void Folder_Copy::Tell_Failures() const
{
    const bool copy = !options_.verify;
    failures_.Tell(platform_.dialogs, copy ? QStringLiteral("copy") : QStringLiteral("move"),
                   copy ? QStringLiteral("copies") : QStringLiteral("moves"), QStringLiteral("files"));
}
