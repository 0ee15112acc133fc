#include "catalogue/Picture_Saver.h"

#include "catalogue/File_Confirmation.h"
#include "catalogue/Save_Qualifier.h"
#include "catalogue/Snapshot_Names.h"
#include "catalogue/Text_Item_Turning.h"
#include "frame/files/Copy_File.h"
#include "frame/files/Kept_Original.h"
#include "frame/files/Replacement_File.h"
#include "frame/text/Text_Utilities.h"

#include <unistd.h>

namespace {

constexpr int Warning_Damaged = 1;
constexpr int Warning_Reduced = 2;

QString Name_Of_Copy(const QString& name, const QString& suffix)
{
    return Path_Without_Extension(name) + QLatin1Char('-') + suffix + QLatin1Char('.') + Extension_Part(name);
}

} // namespace

struct Picture_Saver::Job {
    int key = 0;
    Bitmap_Handle bitmap = 0;
    QString target;
    bool in_place = true;
    bool texts_alone = false; // the coded data stays, and the pending rotation with it
    bool error_message = true;
    int type = 0;
    int quality = Quality_Of_Parent;
    Script_Item_Array items{}; // what the file shall hold
    std::vector<int> clear_types{};
    bool changed_meanwhile = false; // the file shows something else than the record
};

bool Picture_Saver::Save_Adjusted_Picture(int key, Bitmap_Handle bitmap, const QString& as_file_name,
                                          const QString& as_qualifier, std::span<const int> clear_types,
                                          bool error_message)
{
    Picture_Item* item = state_.pictures.Find(key);
    if (item == nullptr) return false;
    const QString target = as_file_name.isEmpty() ? item->Full_Name() : as_file_name;
    if (!Confirm_Writable(state_.platform.dialogs, target, QStringLiteral("overwrite"), true) || bitmap == 0)
        return false;
    const auto answer = Is_Same_File(target, item->Full_Name())
                            ? Ask_In_Place(*item, true, as_file_name.isEmpty() ? bitmap : 0)
                            : In_Place_Answer::Overwrite;
    item = state_.pictures.Find(key); // a question lets events run
    if (item == nullptr || answer == In_Place_Answer::Nothing) return false;
    if (answer == In_Place_Answer::Save_Copy) return Save_By_Dialog(*item, bitmap, {}, clear_types);

    Job job = In_Place_Job(*item, bitmap);
    job.target = target;
    job.in_place = as_file_name.isEmpty();
    job.error_message = error_message;
    job.clear_types.assign(clear_types.begin(), clear_types.end());
    job.items.Remove_Types(clear_types);
    if (job.in_place) Turn_Items(job.items, item->Rotate, {item->Horz_Pixels, item->Vert_Pixels});
    // The name of a save onto itself decides nothing: a TIFF called .jpg stays a TIFF.
    Parse_Save_Qualifier(job.in_place ? QString() : target, as_qualifier, job.type, job.quality);
    return Run(job);
}

Picture_Saver::Job Picture_Saver::In_Place_Job(Picture_Item& item, Bitmap_Handle bitmap) const
{
    Job job;
    job.key = item.Picture_Key;
    job.bitmap = bitmap;
    job.target = item.Full_Name();
    job.type = item.File_Type;
    job.items = item.Script_Items;
    return job;
}

bool Picture_Saver::Holds_Whole_Script(const Picture_Item& item)
{
    if (item.Script_Fault.isEmpty() || item.Script_Modified) return true;
    state_.platform.dialogs.Refuse(QStringLiteral("Error saving picture to ") + item.Full_Name() +
                                   QStringLiteral("\r\nits script would be cut: ") + item.Script_Fault);
    return false;
}

bool Picture_Saver::Run(Job& job)
{
    const Picture_Item* item = state_.pictures.Find(job.key);
    if (item == nullptr || !Holds_Whole_Script(*item)) return false;
    const std::string target = File_System_Bytes(job.target);
    const auto times = Times_Of(target);
    if (!job.in_place) {
        if (!Write(job, nullptr)) {
            Report_Failure(job, QStringLiteral("\r\n") + Last_Image_Error());
            return false;
        }
        After_Success(job);
        return true;
    }
    auto kept = Kept_Original::Keep(target);
    if (!kept) {
        Report_Failure(job, QStringLiteral("\r\n") + QString::fromStdString(kept.error().text));
        return false;
    }
    if (!Write(job, &*kept)) {
        const QString reason = Last_Image_Error();
        const QString kept_name = QString::fromStdString(kept->Name());
        QString tail = QStringLiteral("\r\n") + reason;
        if (!kept->Put_Back())
            tail = QStringLiteral("\r\nOriginal file is ") + kept_name + QStringLiteral("\r\nfailed save file is ") +
                   job.target + QStringLiteral(", ") + reason;
        Report_Failure(job, tail);
        return false;
    }
    if (times) (void)Set_Times(target, *times); // the picture is saved; a date that cannot be set harms nothing
    (void)kept->Drop();
    After_Success(job);
    return true;
}

bool Picture_Saver::Write(Job& job, Kept_Original* kept)
{
    const Picture_Item* item = state_.pictures.Find(job.key);
    if (item == nullptr) return false;
    const QString parent =
        kept != nullptr ? Path_From_Bytes(QByteArray::fromStdString(kept->Name())) : item->Full_Name();
    const File_Contents contents{.comment = item->Description,
                                 .script = Join_Script_Items(job.items),
                                 .parent = parent,
                                 .quality = job.quality,
                                 .horizontal_dpi = item->Horz_Resolution,
                                 .vertical_dpi = item->Vert_Resolution};
    if (job.texts_alone) return Save_Texts_Of_File(job.target, contents);
    return Save_Bitmap(job.bitmap, job.target, job.type, contents);
}

void Picture_Saver::Report_Failure(const Job& job, const QString& tail)
{
    if (job.error_message)
        state_.platform.dialogs.Refuse(QStringLiteral("Error saving picture to ") + job.target + tail);
}

void Picture_Saver::After_Success(const Job& job)
{
    if (Picture_Item* item = state_.pictures.Find(job.key); item != nullptr && job.in_place) {
        if (!job.texts_alone) item->Rotate = item->Flip = 0;
        item->Script_Items = job.items;
        item->Description_Modified = false;
    }
    if (job.texts_alone) return Take_New_Texts(job);
    const Pixel_Size saved = Size_Of_Bitmap(job.bitmap);
    const std::vector<int> shown = state_.pictures.Indices_From_Name(job.target);
    for (const int index : shown) {
        Picture_Item& item = state_.pictures.Item(index);
        const bool size_changed = item.Horz_Pixels != saved.width || item.Vert_Pixels != saved.height;
        item.File_Type = job.type;
        File_Dimensions facts;
        if (Get_Dimensions(job.target, job.type, facts)) {
            item.Horz_Pixels = facts.width;
            item.Vert_Pixels = facts.height;
            item.Pixel_Depth = facts.pixel_depth;
        }
        item.Source_Warnings = -1;
        item.Script_Items.Remove_Types(job.clear_types);
        pictures_.Reload_Picture_Thumbnail(index, size_changed);
    }
    if (shown.empty()) pick_.Add_Picture_By_File_Name(job.target);
}

/// Every record of the file is the file's again; what it shows has not changed.
void Picture_Saver::Take_New_Texts(const Job& job)
{
    for (const int index : state_.pictures.Indices_From_Name(job.target))
        if (job.changed_meanwhile)
            pictures_.Reload_Picture_Thumbnail(index, true);
        else
            Picture_Pictures::Read_File_Facts(state_.pictures.Item(index));
}

bool Picture_Saver::Save_Texts(int key)
{
    Picture_Item* item = state_.pictures.Find(key);
    if (item == nullptr) return false;
    if (!Confirm_Writable(state_.platform.dialogs, item->Full_Name(), QStringLiteral("overwrite"), true)) return false;
    if ((item = state_.pictures.Find(key)) == nullptr || !Confirm_In_Place(*item, false)) return false;
    if ((item = state_.pictures.Find(key)) == nullptr) return false; // a question lets events run
    Job job = In_Place_Job(*item, 0);
    job.texts_alone = true;
    const auto identity = Identity_Of(File_System_Bytes(job.target));
    job.changed_meanwhile = identity && *identity != item->Identity;
    if (!Run(job)) return false;
    if ((item = state_.pictures.Find(key)) == nullptr) return true;
    item->Script_Modified = false;
    item->Script_Fault.clear(); // the file holds what the record does
    return true;
}

bool Picture_Saver::Save_Rotation_And_Flips(int key)
{
    Picture_Item* item = state_.pictures.Find(key);
    if (item == nullptr) return false;
    if (item->Rotate == 0 && item->Flip == 0) return true;
    const Owned_Bitmap bitmap(pictures_.Load(*item, 0, 1));
    if (!bitmap) {
        Report_Failure(In_Place_Job(*item, 0), QStringLiteral("\r\n") + Last_Load_Error());
        return false;
    }
    return Save_Adjusted_Picture(key, bitmap.Get(), {}, {}, {}, true);
}

bool Picture_Saver::Save_Picture(int method, int key, Bitmap_Handle bitmap, const QString& suffix,
                                 std::span<const int> clear_types)
{
    const Picture_Item* item = state_.pictures.Find(key);
    if (item == nullptr) return false;
    const QString name = item->Full_Name();
    switch (Save_Method(method)) {
    case Save_Method::Snapshot_Then_Overwrite: return Save_After_Snapshot(*item, bitmap, clear_types);
    case Save_Method::Overwrite_After_Question:
        return Confirm_Overwrite_Originals(state_.platform.dialogs) &&
               Save_Adjusted_Picture(key, bitmap, {}, {}, clear_types, true);
    case Save_Method::Automatic_Copy: {
        const QString target = Name_Of_Copy(name, suffix);
        return Confirm_Overwrite(state_.platform.dialogs, target) &&
               Save_Adjusted_Picture(key, bitmap, target, {}, clear_types, true);
    }
    case Save_Method::Copy_By_Dialog: return Save_By_Dialog(*item, bitmap, suffix, clear_types);
    }
    return Save_Adjusted_Picture(key, bitmap, name, {}, clear_types, true);
}

/// A snapshot of a picture that was not overwritten after all is nobody's wish: it goes away again.
bool Picture_Saver::Save_After_Snapshot(const Picture_Item& item, Bitmap_Handle bitmap,
                                        std::span<const int> clear_types)
{
    const int key = item.Picture_Key;
    const QString name = item.Full_Name();
    const std::string snapshot = File_System_Bytes(Free_Snapshot_Name(name, state_.platform.clock.Now()));
    const auto copied = Copy_Whole_File(File_System_Bytes(name), snapshot, {.when_taken = When_Taken::Refuse});
    if (!copied) {
        state_.platform.dialogs.Refuse(QString::fromStdString(copied.error().text));
        return false;
    }
    const auto before = Identity_Of(File_System_Bytes(name));
    const bool saved = Save_Adjusted_Picture(key, bitmap, {}, {}, clear_types, true);
    const auto after = Identity_Of(File_System_Bytes(name));
    if (before && after && *before == *after) unlink(snapshot.c_str());
    return saved;
}

bool Picture_Saver::Save_By_Dialog(const Picture_Item& item, Bitmap_Handle bitmap, const QString& suffix,
                                   std::span<const int> clear_types)
{
    const int key = item.Picture_Key;
    const QStringList picked = state_.platform.dialogs.Pick({.caption = QStringLiteral("Halvine - Save As"),
                                                             .folder = item.Path,
                                                             .name = Name_Of_Copy(item.File_Name, suffix),
                                                             .pattern = state_.Default_Extensions});
    if (picked.isEmpty() || picked.front().isEmpty()) return false;
    const Qualified_Name target = Split_Qualifier(picked.front());
    return Confirm_Overwrite(state_.platform.dialogs, target.name) &&
           Save_Adjusted_Picture(key, bitmap, target.name, target.qualifier, clear_types, true);
}

In_Place_Answer Picture_Saver::Ask_In_Place(Picture_Item& item, bool pixels_change, Bitmap_Handle bitmap)
{
    User_Dialogs& dialogs = state_.platform.dialogs;
    const QString name = item.Full_Name();
    if (pixels_change && item.Source_Warnings < 0) {
        // The bitmap may come from anywhere: only the file itself can tell what a save would lose.
        const Owned_Bitmap stored(Load_Bitmap(name, item.File_Type, 1, 0));
        if (stored) item.Source_Warnings = Get_Bitmap_Source_Warnings_CPP(stored.Get());
    }
    // Texts alone leave the coded data as it is, and so lose nothing of it.
    const int warnings = pixels_change ? std::max(item.Source_Warnings, 0) : 0;
    if ((warnings & Warning_Damaged) != 0) {
        dialogs.Refuse(name +
                       QStringLiteral(" was read with errors and can't be saved over itself, save a copy instead."));
        return In_Place_Answer::Nothing;
    }
    if (!Confirm_Identity(item)) return In_Place_Answer::Nothing;
    if ((warnings & Warning_Reduced) == 0) return In_Place_Answer::Overwrite;
    if (bitmap != 0 && Test_Save_Keeps_All_CPP(bitmap, item.File_Type, File_System_Bytes(name)) != 0)
        return In_Place_Answer::Overwrite;
    const Message question{.text =
                               name + QStringLiteral(" holds more than is kept by a save (more than 8 bits, several "
                                                     "pages or transparency), do you wish to overwrite?\r\nTo save "
                                                     "a copy instead, click 'No'."),
                           .buttons = Message_Buttons::Yes_No_Cancel,
                           .standard = Message_Answer::No,
                           .icon = Message_Icon::Question};
    const Message_Answer answer = dialogs.Ask(question);
    if (answer == Message_Answer::Yes) return In_Place_Answer::Overwrite;
    return answer == Message_Answer::No ? In_Place_Answer::Save_Copy : In_Place_Answer::Nothing;
}

/// The file under the picture's name is the one that was read, and has no other name; or the user does not mind.
bool Picture_Saver::Confirm_Identity(const Picture_Item& item)
{
    User_Dialogs& dialogs = state_.platform.dialogs;
    const QString name = item.Full_Name();
    const std::string path = File_System_Bytes(name);
    Clear_Stale_Keep(path);
    const auto identity = Identity_Of(path);
    if (!identity) return true; // the save itself tells what is wrong
    if (item.Identity.size >= 0 && *identity != item.Identity &&
        !dialogs.Confirm(name + QStringLiteral(" was changed by another program meanwhile, do you wish to overwrite?")))
        return false;
    if (Count_Of_Names(path) <= 1 || several_names_allowed_.contains(identity->inode)) return true;
    if (!dialogs.Confirm(name + QStringLiteral(" is stored under several names (hard links), only this one will get "
                                               "the new picture, do you wish to continue?")))
        return false;
    several_names_allowed_.insert(identity->inode);
    return true;
}
