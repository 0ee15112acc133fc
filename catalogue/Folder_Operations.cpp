#include "catalogue/Folder_Operations.h"

#include "catalogue/Folder_Copy.h"
#include "catalogue/Modifications.h"
#include "catalogue/Picture_Locks.h"
#include "frame/Folder_Name.h"
#include "frame/files/Regular_File.h"
#include "frame/files/Rename_File.h"
#include "frame/text/Path_Utilities.h"

#include <algorithm>
#include <cerrno>

namespace {

const QString Exists_Already = QStringLiteral("Folder with this name already exists:");

QString Parent_Of(const QString& folder)
{
    return Without_Trailing_Separator(Folder_Part(Without_Trailing_Separator(folder)));
}

QString Name_Of(const QString& folder)
{
    return Name_Part(Without_Trailing_Separator(folder));
}

} // namespace

bool Lies_Within(const QString& path, const QString& folder)
{
    const auto real = [](const QString& name) {
        return QString::fromStdString(Final_Path(File_System_Bytes(Without_Trailing_Separator(name))));
    };
    return With_Trailing_Separator(real(path)).startsWith(With_Trailing_Separator(real(folder)));
}

std::optional<QString> Folder_Operations::New_Folder(const QString& parent)
{
    return Make_New_Folder(state_.platform.dialogs, parent);
}

/// False, with the message, while a window works with pictures of the folder.
bool Folder_Operations::May_Touch(const QString& folder)
{
    const std::vector<int> indices = Indices_Below(state_, folder);
    const auto locked = std::count_if(indices.begin(), indices.end(),
                                      [&](int index) { return Is_Locked(state_.pictures.Item(index).Lock_Flags); });
    if (locked == 0) return true;
    state_.platform.dialogs.Refuse(QStringLiteral("%1 picture%2 locked by another function.")
                                       .arg(QString::number(locked), locked > 1 ? QStringLiteral("s") : QString()));
    return false;
}

std::optional<QString> Folder_Operations::Rename_Folder(const QString& folder)
{
    if (!May_Touch(folder)) return std::nullopt;
    const QString old_path = Without_Trailing_Separator(folder);
    const QString parent = Parent_Of(folder);
    const auto rename = [&](const QString& name) -> QString {
        int number = EINVAL;
        if (Is_Good_Folder_Name(name)) {
            const QString path = With_Trailing_Separator(parent) + name;
            if (path == old_path) return {};
            const auto renamed = Rename_To_New_Name(File_System_Bytes(old_path), File_System_Bytes(path));
            if (renamed) return {};
            number = renamed.error().number;
        }
        if (number == EEXIST) return Folder_Name_Refusal(Exists_Already + QLatin1Char('\r') + name, number);
        return Folder_Name_Refusal(QStringLiteral("You do not have permissions to rename folder,\r"
                                                  "or there is an error in the new folder name."),
                                   number);
    };
    const auto name = Ask_For_Folder_Name(
        state_.platform.dialogs,
        {.prompt = QStringLiteral("Rename folder ") + Name_Of(folder) + QStringLiteral(" contained in:\r") + parent,
         .title = QStringLiteral("Rename Folder"),
         .text = Name_Of(folder)},
        rename);
    if (!name) return std::nullopt;
    const QString new_path = With_Trailing_Separator(parent) + *name;
    following_.Folder_Moved(old_path, new_path);
    following_.Show_All();
    return new_path;
}

bool Folder_Operations::Copy_Folders(const QStringList& folders)
{
    if (folders.isEmpty() || folders.front().isEmpty()) return false;
    const QString caption = folders.size() == 1
                                ? QStringLiteral("Halvine - Copy Folder '%1' To").arg(Name_Of(folders.front()))
                                : QStringLiteral("Halvine - Copy Folders '%1', ... To").arg(Name_Of(folders.front()));
    const QStringList picked = state_.platform.dialogs.Pick(
        {.caption = caption, .folder = Parent_Of(folders.front()), .kind = Picker_Question::Kind::Folder});
    if (picked.isEmpty() || picked.front().isEmpty()) return false;
    return Copy_Into(folders, picked.front());
}

bool Folder_Operations::Copy_Into(const QStringList& folders, const QString& target)
{
    for (const QString& folder : folders) {
        const QString copy = With_Trailing_Separator(target) + Name_Of(folder);
        if (!Lies_Within(target, folder) && !Lies_Within(copy, folder)) continue;
        state_.platform.dialogs.Refuse(QStringLiteral("Cannot copy %1 to %2 as a child of itself.")
                                           .arg(Without_Trailing_Separator(folder), target));
        return false;
    }
    Folder_Copy copying(state_.platform, following_,
                        {.caption = QStringLiteral("Halvine - Copy Folders"), .verify = false});
    for (const QString& folder : folders)
        if (!copying.Copy(Without_Trailing_Separator(folder), With_Trailing_Separator(target) + Name_Of(folder))) break;
    following_.Show_All();
    copying.Tell_Failures();
    return copying.Count() > 0;
}

bool Folder_Operations::Delete_Folder(const QString& folder)
{
    if (!May_Touch(folder)) return false;
    const std::vector<int> indices = Indices_Below(state_, folder);
    const QString path = Without_Trailing_Separator(folder);
    if (!Confirm_Abandon_Scripts(state_, indices) || !Confirm_Abandon_Descriptions(state_, indices) ||
        !state_.platform.dialogs.Confirm(QStringLiteral("Moving folder %1 with everything in it to the recycle bin.\r\n"
                                                        "Are you sure?")
                                             .arg(path)))
        return false;
    QString reason;
    if (!state_.platform.shell.Move_To_Trash(path, &reason)) {
        state_.platform.dialogs.Refuse(QStringLiteral("%1: %2").arg(path, reason));
        return false;
    }
    following_.Folder_Removed(path);
    following_.Show_All();
    return true;
}

bool Folder_Operations::Drop_Folder(const QString& source, const QString& target, bool copy)
{
    const QString from = Without_Trailing_Separator(source);
    if (Lies_Within(target, source)) {
        state_.platform.dialogs.Refuse(
            QStringLiteral("Attempt to put folder %1 into itself or one of its subfolders.").arg(from));
        return false;
    }
    if (!copy && Without_Trailing_Separator(target) == Parent_Of(source)) return false; // it stands there already
    // A drag may slip: what moves many files at once is asked for.
    const QString what = copy ? QStringLiteral("Copy") : QStringLiteral("Move");
    const auto answer = state_.platform.dialogs.Commitment_Dialog(
        QStringLiteral("Halvine - %1 Folder").arg(what),
        QStringLiteral("%1 folder %2\r\nto %3").arg(what, from, Without_Trailing_Separator(target)));
    if (answer != Response_Code::Yes) return false;
    return copy ? Copy_Into({from}, target) : Move_Into(from, target);
}

bool Folder_Operations::Move_Into(const QString& folder, const QString& target)
{
    if (!May_Touch(folder)) return false;
    User_Dialogs& dialogs = state_.platform.dialogs;
    const QString new_path = With_Trailing_Separator(target) + Name_Of(folder);
    const auto renamed = Rename_To_New_Name(File_System_Bytes(folder), File_System_Bytes(new_path));
    if (!renamed && renamed.error().number == EEXIST) {
        dialogs.Refuse(Exists_Already + QStringLiteral("\r\n") + new_path);
        return false;
    }
    if (!renamed && renamed.error().number != EXDEV) {
        dialogs.Refuse(QString::fromStdString(renamed.error().text));
        return false;
    }
    if (!renamed) {
        Folder_Copy copying(state_.platform, following_,
                            {.caption = QStringLiteral("Halvine - Move Folder"), .verify = true});
        const bool moved = copying.Move(folder, new_path);
        copying.Tell_Failures();
        if (!moved) return false;
    }
    following_.Folder_Moved(folder, new_path);
    following_.Show_All();
    return true;
}
