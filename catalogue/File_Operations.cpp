#include "catalogue/File_Operations.h"

#include "catalogue/File_Confirmation.h"
#include "catalogue/Modifications.h"
#include "catalogue/Selection_For_Function.h"
#include "frame/files/Move_File.h"
#include "frame/files/Rename_File.h"
#include "frame/text/Path_Utilities.h"

#include <cerrno>

namespace {
const QString Locked = QStringLiteral("locked by another function");
}

struct File_Operations::Transfer {
    bool move = false;
    QString folder; // with its trailing separator
    Overwrite_Question question;
    Progress_Window& progress;
    File_Failures failures{};
};

QStringList File_Operations::Selected_Files(Select_Access access) const
{
    QStringList files;
    for (const int index :
         Pictures_For_Function(state_, {.mode = Selection_Mode::Selected_With_Message, .access = access}))
        files << state_.pictures.Item(index).Full_Name();
    files.removeDuplicates(); // a file may have been picked twice
    return files;
}

bool File_Operations::Confirm_Delete(int count, const QStringList& files)
{
    User_Dialogs& dialogs = state_.platform.dialogs;
    const QString prompt = QStringLiteral("Moving %1 pictures to the recycle bin.\r\n"
                                          "Do you wish to see a list of files to be recycled?")
                               .arg(count);
    switch (dialogs.Delete_File_List_Cancel_Dialog(QStringLiteral("Halvine - Delete File Confirm"), prompt)) {
    case Response_Code::Yes: return true;
    case Response_Code::No: return dialogs.Confirm_File_List(QStringLiteral("Halvine recycle files"), files);
    case Response_Code::None:
    case Response_Code::Yes_To_All:
    case Response_Code::Cancel: break;
    }
    return false;
}

int File_Operations::Delete_Selected()
{
    return Delete_Files(Selected_Files(Select_Access::Exclusive));
}

int File_Operations::Delete_Files(const QStringList& files)
{
    std::vector<int> shown;
    for (const QString& file : files)
        for (const int index : Indices_Of_File(state_, file)) shown.push_back(index);
    if (files.isEmpty() || !Confirm_Abandon_Scripts(state_, shown) || !Confirm_Abandon_Descriptions(state_, shown) ||
        !Confirm_Delete(int(files.size()), files))
        return 0;
    File_Failures failures;
    int done = 0;
    for (const QString& file : files) {
        QString reason;
        if (following_.Is_In_Use(file)) {
            failures.Add(file, Locked);
        } else if (state_.platform.shell.Move_To_Trash(file, &reason)) {
            following_.File_Removed(file);
            ++done;
        } else {
            failures.Add(file, reason);
        }
        state_.keeper->Keep_If_Due();
    }
    following_.Show_All();
    failures.Tell(state_.platform.dialogs, QStringLiteral("delete"), QStringLiteral("deletions"));
    return done;
}

int File_Operations::Copy_Selected(const QString& folder)
{
    return Copy_Files(Selected_Files(Select_Access::Shared), folder);
}

int File_Operations::Move_Selected(const QString& folder)
{
    return Move_Files(Selected_Files(Select_Access::Exclusive), folder);
}

int File_Operations::Copy_Files(const QStringList& files, const QString& folder)
{
    return Transfer_Files(files, folder, false);
}

int File_Operations::Move_Files(const QStringList& files, const QString& folder)
{
    return Transfer_Files(files, folder, true);
}

int File_Operations::Transfer_Files(const QStringList& files, const QString& folder, bool move)
{
    if (files.isEmpty() || folder.isEmpty()) return 0;
    const int total = int(files.size());
    const QString doing = move ? QStringLiteral("Moving %1 of %2") : QStringLiteral("Copying %1 of %2");
    const QString what = move ? QStringLiteral("Move") : QStringLiteral("Copy");
    const auto progress = state_.platform.dialogs.Operation_Progress_Cancel_Dialog(
        QStringLiteral("Halvine - %1 Selected to Folder").arg(what), doing.arg(0).arg(total));
    Transfer transfer{.move = move,
                      .folder = With_Trailing_Separator(folder),
                      .question = {state_.platform.dialogs, QStringLiteral("Halvine - %1 File Overwrite").arg(what)},
                      .progress = *progress};
    int done = 0;
    for (int i = 0; i < total; ++i) {
        const auto code = progress->Operation_Progress_Cancel_Dialog_Update(doing.arg(i + 1).arg(total), i + 1, total);
        if (code == Response_Code::Cancel) break;
        const Outcome outcome = Transfer_File(transfer, files[i]);
        if (outcome == Outcome::End) break;
        if (outcome == Outcome::Done) ++done;
    }
    following_.Show_All();
    transfer.failures.Tell(state_.platform.dialogs, what.toLower(),
                           move ? QStringLiteral("moves") : QStringLiteral("copies"));
    return done;
}

File_Operations::Outcome File_Operations::Transfer_File(Transfer& transfer, const QString& source)
{
    const QString target = transfer.folder + Name_Part(source);
    if (transfer.move && source == target) return Outcome::Left; // it stands there already
    const auto fail = [&](const QString& reason) {
        transfer.failures.Add(source, reason);
        return Outcome::Left;
    };
    if (transfer.move && following_.Is_In_Use(source)) return fail(Locked);
    const bool taken = Is_Name_Taken(File_System_Bytes(target));
    if (taken) {
        if (!transfer.move && Is_Same_File(source, target)) return fail(QStringLiteral("is in this folder already"));
        if (following_.Is_In_Use(target)) return fail(target + u' ' + Locked);
        switch (transfer.question.Ask(target, source)) {
        case Overwrite_Question::Answer::Overwrite: break;
        case Overwrite_Question::Answer::Leave: return Outcome::Left;
        case Overwrite_Question::Answer::End: return Outcome::End;
        }
    }
    return Carry_Over(transfer, source, target, taken);
}

File_Operations::Outcome File_Operations::Carry_Over(Transfer& transfer, const QString& source, const QString& target,
                                                     bool replace)
{
    const std::string from = File_System_Bytes(source);
    const std::string to = File_System_Bytes(target);
    const When_Taken when_taken = replace ? When_Taken::Replace : When_Taken::Refuse;
    const auto stop = [&] { return transfer.progress.Stop_Requested(); };
    const auto carried = transfer.move ? Move_Whole_File(from, to, when_taken, stop)
                                       : Copy_Whole_File(from, to, {.when_taken = when_taken, .stop_requested = stop});
    if (!carried) {
        if (carried.error().number == ECANCELED) return Outcome::End;
        transfer.failures.Add(source, carried.error());
        return Outcome::Left;
    }
    transfer.question.Remember_Written(target);
    if (transfer.move)
        following_.File_Moved(source, target);
    else if (replace)
        following_.File_Replaced(target);
    return Outcome::Done;
}
