#include "catalogue/Snapshot_Commands.h"

#include "catalogue/File_Confirmation.h"
#include "catalogue/Selection_For_Function.h"
#include "catalogue/Snapshot_Names.h"
#include "catalogue/Text_Item_Turning.h"
#include "frame/files/Copy_File.h"
#include "frame/files/Rename_File.h"
#include "frame/files/Replacement_File.h"
#include "frame/text/Text_Utilities.h"
#include "imaging/Script_Interpreter.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

namespace {

std::vector<int> Selected_Keys(const Catalogue_State& state)
{
    std::vector<int> keys;
    for (const int index : Pictures_For_Function(state, {.mode = Selection_Mode::Selected_With_Message}))
        keys.push_back(state.pictures.Item(index).Picture_Key);
    return keys;
}

/// Never over an existing file.
bool Rename_To_Free_Name(const QString& from, const QString& to, QString& reason)
{
    const auto renamed = Rename_To_New_Name(File_System_Bytes(from), File_System_Bytes(to));
    if (!renamed) reason = QString::fromStdString(renamed.error().text);
    return bool(renamed);
}

bool Save_Turned(const QString& target, const Picture_Item& item, int rotation, const File_Contents& contents)
{
    const Owned_Bitmap bitmap(Load_Bitmap(item.Full_Name(), item.File_Type, 1, rotation));
    return bitmap && Save_Bitmap(bitmap.Get(), target, item.File_Type, contents);
}

} // namespace

QStringList Snapshots_Of_File(const QString& file_name)
{
    QStringList found;
    const QString folder = Folder_Part(file_name);
    const QString original = Snapshot_Base_Name(file_name);
    const QDir entries(folder.isEmpty() ? QStringLiteral(".") : folder);
    for (const QString& name : entries.entryList({QStringLiteral("~*")}, QDir::Files | QDir::Hidden, QDir::Name))
        if (Test_Snapshot_Name(name) && Equal_Without_Case(Snapshot_Base_Name(folder + name), original))
            found << folder + name;
    if (Test_Snapshot_Name(file_name) && QFileInfo::exists(original)) found << original;
    return found;
}

bool Restore_Snapshot_File(const QString& snapshot, const QDateTime& now, QString& kept_as, QString& reason)
{
    kept_as.clear();
    if (!Test_Snapshot_Name(snapshot)) {
        reason = Name_Part(snapshot) + QStringLiteral(" is no snapshot, nothing was restored.");
        return false;
    }
    const QString original = Snapshot_Base_Name(snapshot);
    if (QFileInfo::exists(original)) {
        const QString name = Free_Snapshot_Name(original, now);
        if (!Rename_To_Free_Name(original, name, reason)) return false;
        kept_as = name;
    }
    const auto copied = Copy_Whole_File(File_System_Bytes(snapshot), File_System_Bytes(original));
    if (copied) return true;
    reason = QString::fromStdString(copied.error().text);
    QString second_reason;
    if (!kept_as.isEmpty() && Rename_To_Free_Name(kept_as, original, second_reason)) kept_as.clear();
    return false;
}

int Snapshot_Commands::Save_Selected_As_Snapshots()
{
    const std::vector<int> keys = Selected_Keys(state_);
    if (keys.empty() || pick_.Pick_In_Progress()) return 0;
    const int total = int(keys.size());
    const auto progress = state_.platform.dialogs.Operation_Progress_Cancel_Dialog(
        QStringLiteral("Halvine - Save Selected As Snapshots"), QStringLiteral("Saving 0 of %1").arg(total));
    int saved = 0;
    for (int i = 0; i < total; ++i) {
        const auto code = progress->Operation_Progress_Cancel_Dialog_Update(
            QStringLiteral("Saving %1 of %2").arg(i + 1).arg(total), i + 1, total);
        if (code == Response_Code::Cancel) break;
        if (Save_As_Snapshot(keys[std::size_t(i)])) ++saved;
    }
    return saved;
}

bool Snapshot_Commands::Save_As_Snapshot(int key)
{
    const Picture_Item* item = state_.pictures.Find(key);
    if (item == nullptr) return false;
    const QString source = item->Full_Name();
    const QString target = Snapshot_Name(source, state_.platform.clock.Now());
    if (!Confirm_Writable(state_.platform.dialogs, target, QStringLiteral("overwrite"), true)) return false;
    if ((item = state_.pictures.Find(key)) == nullptr) return false;
    Script_Item_Array items = item->Script_Items;
    Turn_Items(items, item->Rotate, {item->Horz_Pixels, item->Vert_Pixels});
    const int rotation = Normal_Rotation(item->Rotate);
    const auto times = Times_Of(File_System_Bytes(source));
    const File_Contents contents{.comment = item->Description,
                                 .script = Join_Script_Items(items),
                                 .parent = source,
                                 .quality = Quality_Of_Parent,
                                 .horizontal_dpi = item->Horz_Resolution,
                                 .vertical_dpi = item->Vert_Resolution};
    const bool saved =
        rotation == 0 ? Save_Texts_Of_File(target, contents) : Save_Turned(target, *item, rotation, contents);
    if (saved && times) (void)Set_Times(File_System_Bytes(target), *times);
    if (!saved)
        state_.platform.dialogs.Refuse(QStringLiteral("Error saving picture to ") + target + QStringLiteral("\r\n") +
                                       Last_Image_Error());
    return saved;
}

void Snapshot_Commands::Load_Snapshots_Of_Selected()
{
    const std::vector<int> keys = Selected_Keys(state_);
    if (keys.empty() || pick_.Pick_In_Progress()) return;
    const int total = int(keys.size());
    std::vector<File_Entry> entries;
    {
        const auto progress = state_.platform.dialogs.Operation_Progress_Cancel_Dialog(
            QStringLiteral("Halvine - Load Snapshots Of Selected"), QStringLiteral("Loading 0 of %1").arg(total));
        for (int i = 0; i < total; ++i) {
            const auto code = progress->Operation_Progress_Cancel_Dialog_Update(
                QStringLiteral("Loading %1 of %2").arg(i + 1).arg(total), i + 1, total);
            if (code == Response_Code::Cancel) break;
            const Picture_Item* item = state_.pictures.Find(keys[std::size_t(i)]);
            if (item == nullptr) continue;
            for (const QString& name : Snapshots_Of_File(item->Full_Name())) entries.push_back(Entry_Of_File(name));
        }
    }
    pick_.Pick_Files(entries, true, false);
}

bool Snapshot_Commands::Restore_From_Selected_Snapshot()
{
    const std::vector<int> keys = Selected_Keys(state_);
    if (keys.empty() || pick_.Pick_In_Progress()) return false;
    const QString snapshot = state_.pictures.Find(keys.front())->Full_Name();
    const QString original = Snapshot_Base_Name(snapshot);
    QString kept_as;
    QString reason;
    const bool restored = Restore_Snapshot_File(snapshot, state_.platform.clock.Now(), kept_as, reason);
    if (!kept_as.isEmpty())
        for (const int index : state_.pictures.Indices_From_Name(original))
            state_.pictures.Set_Name(index, Folder_Part(kept_as), Name_Part(kept_as));
    if (restored)
        pick_.Add_Picture_By_File_Name(original);
    else
        state_.platform.dialogs.Refuse(reason);
    return restored;
}
