#include "catalogue/Save_Selected_As.h"

#include "catalogue/File_Confirmation.h"
#include "catalogue/Save_Qualifier.h"
#include "catalogue/Selection_For_Function.h"
#include "catalogue/Text_Item_Turning.h"
#include "frame/files/Kept_Original.h"
#include "frame/text/Text_Utilities.h"
#include "imaging/Script_Interpreter.h"

namespace {

using Scripts = Save_Options::Scripts;
using Target = Save_Options::Target;

enum class Outcome { Saved, Skipped, Stopped };

class Series {
public:
    Series(Catalogue_State& state, Picture_Saver& saver, Picture_Pictures& pictures, const Save_Options& options)
        : state_(state), saver_(saver), pictures_(pictures), options_(options)
    {}
    Outcome Save(int key);

private:
    struct One {
        QString target;
        int type = 0;
        int quality = Quality_Of_Parent;
        int rotation = 0;
        Owned_Bitmap bitmap{};
        QString script{};
        bool in_place = false;        // over the picture's own file
        bool is_copy_instead = false; // the user kept the original and named a copy
        bool texts_alone = false;     // the coded data goes as it is
        bool looks_the_same = false;  // as the record, which so keeps its thumbnail
    };
    Outcome Ask_For_Target(const Picture_Item& item, One& one);
    void Name_Target(const Picture_Item& item, One& one);
    void Load(Picture_Item& item, One& one);
    Outcome Confirm(Picture_Item& item, One& one);
    Outcome Ask_For_Copy(const Picture_Item& item, One& one);
    bool Write(const Picture_Item& item, const One& one);
    void Bring_Record_In_Line(int key, const One& one);

    Catalogue_State& state_;
    Picture_Saver& saver_;
    Picture_Pictures& pictures_;
    const Save_Options& options_;
};

Outcome Series::Save(int key)
{
    Picture_Item* item = state_.pictures.Find(key);
    if (item == nullptr) return Outcome::Skipped;
    One one{.target = {},
            .type = options_.Picture_Type != 0 ? options_.Picture_Type : item->File_Type,
            .quality = options_.JPEG_Quality,
            .rotation = options_.Save_Rotations_Flips ? item->Rotate : 0};
    if (options_.Save_Option == Target::Prompted_Copy) {
        if (const Outcome outcome = Ask_For_Target(*item, one); outcome != Outcome::Saved) return outcome;
    } else {
        Name_Target(*item, one);
    }
    item = state_.pictures.Find(key); // a question lets events run
    if (item == nullptr) return Outcome::Skipped;
    if (options_.Script_Option == Scripts::Save_With && !saver_.Holds_Whole_Script(*item)) return Outcome::Skipped;
    Load(*item, one);
    if (!one.bitmap && !one.texts_alone) return Outcome::Skipped;
    if (const Outcome outcome = Confirm(*item, one); outcome != Outcome::Saved) return outcome;
    if ((item = state_.pictures.Find(key)) == nullptr || !Write(*item, one)) return Outcome::Skipped;
    Bring_Record_In_Line(key, one);
    return Outcome::Saved;
}

Outcome Series::Ask_For_Target(const Picture_Item& item, One& one)
{
    User_Dialogs& dialogs = state_.platform.dialogs;
    const QString proposed = Base_Name_Part(item.File_Name) + QStringLiteral("-.") + Extension_Part(item.File_Name);
    const QStringList picked = dialogs.Pick({.caption = QStringLiteral("Halvine - Save Picture As"),
                                             .folder = item.Path,
                                             .name = proposed,
                                             .pattern = state_.Default_Extensions});
    if (picked.isEmpty() || picked.front().isEmpty())
        return dialogs.Confirm(QStringLiteral("Do you wish to continue?")) ? Outcome::Skipped : Outcome::Stopped;
    const Qualified_Name name = Split_Qualifier(picked.front());
    one.target = name.name;
    Parse_Save_Qualifier(name.name, name.qualifier, one.type, one.quality);
    one.in_place = Is_Same_File(one.target, item.Full_Name());
    return Confirm_Overwrite(dialogs, one.target) ? Outcome::Saved : Outcome::Skipped;
}

void Series::Name_Target(const Picture_Item& item, One& one)
{
    QString suffix;
    if (options_.Save_Option == Target::Auto_Copy)
        suffix = options_.Script_Option == Scripts::Run ? QStringLiteral("-rs") : QStringLiteral("-hv");
    QString extension = Extension_Part(item.File_Name);
    if (one.type != item.File_Type)
        extension = one.type == int(Image_File_Type::JPEG) ? QStringLiteral("jpg") : QStringLiteral("tif");
    one.target = item.Path + Base_Name_Part(item.File_Name) + suffix;
    if (!extension.isEmpty()) one.target += QLatin1Char('.') + extension;
    one.in_place = one.target == item.Full_Name();
}

void Series::Load(Picture_Item& item, One& one)
{
    if (options_.Script_Option == Scripts::Run) {
        one.bitmap.Reset(pictures_.Load_Adjusted(item, 0, 1));
        return;
    }
    // Flips are not applied here.
    one.texts_alone = Normal_Rotation(one.rotation) == 0 && one.type == item.File_Type && one.quality < 0;
    const auto identity = Identity_Of(File_System_Bytes(item.Full_Name()));
    one.looks_the_same = one.texts_alone && identity && *identity == item.Identity;
    if (!one.texts_alone) {
        one.bitmap.Reset(Load_Bitmap(item.Full_Name(), item.File_Type, 1, Normal_Rotation(one.rotation)));
        if (one.bitmap) item.Source_Warnings = Get_Bitmap_Source_Warnings_CPP(one.bitmap.Get());
    }
    if (options_.Script_Option != Scripts::Save_With) return;
    Script_Item_Array items = state_.Items_In_Force(item);
    Turn_Items(items, one.rotation, {item.Horz_Pixels, item.Vert_Pixels});
    one.script = Join_Script_Items(items);
}

Outcome Series::Confirm(Picture_Item& item, One& one)
{
    User_Dialogs& dialogs = state_.platform.dialogs;
    if (!one.in_place) {
        const bool asked = options_.Save_Option == Target::Prompted_Copy;
        return asked || Confirm_Overwrite(dialogs, one.target) ? Outcome::Saved : Outcome::Skipped;
    }
    if (!Confirm_Writable(dialogs, one.target, QStringLiteral("overwrite"), true)) return Outcome::Skipped;
    const bool may_keep_all = one.type == item.File_Type && one.quality < 0;
    switch (saver_.Ask_In_Place(item, !one.texts_alone, may_keep_all ? one.bitmap.Get() : 0)) {
    case In_Place_Answer::Overwrite: return Outcome::Saved;
    case In_Place_Answer::Save_Copy: return Ask_For_Copy(item, one);
    case In_Place_Answer::Nothing: break;
    }
    return Outcome::Skipped;
}

Outcome Series::Ask_For_Copy(const Picture_Item& item, One& one)
{
    const Outcome outcome = Ask_For_Target(item, one);
    if (outcome == Outcome::Saved && one.in_place) return Outcome::Skipped; // the same file again is no copy
    one.is_copy_instead = true;
    return outcome;
}

bool Series::Write(const Picture_Item& item, const One& one)
{
    File_Contents contents{.comment = item.Description,
                           .script = one.script,
                           .parent = item.Full_Name(),
                           .quality = one.quality,
                           .horizontal_dpi = item.Horz_Resolution,
                           .vertical_dpi = item.Vert_Resolution};
    const auto save = [&] {
        return one.texts_alone ? Save_Texts_Of_File(one.target, contents)
                               : Save_Bitmap(one.bitmap.Get(), one.target, one.type, contents);
    };
    if (!one.in_place) return save();
    auto kept = Kept_Original::Keep(File_System_Bytes(item.Full_Name()));
    if (!kept) return false;
    contents.parent = Path_From_Bytes(QByteArray::fromStdString(kept->Name()));
    if (!save()) return false; // the original is put back
    (void)kept->Drop();
    return true;
}

void Series::Bring_Record_In_Line(int key, const One& one)
{
    Picture_Item* item = state_.pictures.Find(key);
    const bool is_copy = options_.Save_Option != Target::Original && !one.in_place;
    if (item == nullptr || is_copy || one.is_copy_instead) return;
    item->Description_Modified = false;
    if (options_.Script_Option != Scripts::Ignore) item->Script_Modified = false;
    if (!one.in_place) return; // another type: the record goes on with its own file
    const int flip = item->Flip;
    if (options_.Script_Option == Scripts::Run || options_.Save_Rotations_Flips) {
        Turn_Items(item->Script_Items, item->Rotate, {item->Horz_Pixels, item->Vert_Pixels});
        item->Rotate = item->Flip = 0;
    }
    File_Dimensions facts;
    bool size_changed = false;
    if (Get_Dimensions(one.target, one.type, facts)) {
        size_changed = facts.width != item->Horz_Pixels || facts.height != item->Vert_Pixels;
        item->Horz_Pixels = facts.width;
        item->Vert_Pixels = facts.height;
        item->Pixel_Depth = facts.pixel_depth;
    }
    item->Source_Warnings = -1;
    if (one.looks_the_same && !size_changed && flip == item->Flip) return Picture_Pictures::Read_File_Facts(*item);
    pictures_.Reload_Picture_Thumbnail(state_.pictures.Index_From_Key(key), size_changed);
}

} // namespace

int Save_Options_Quality(const QString& text)
{
    const QString trimmed = text.trimmed();
    const auto number = Is_Whole_Number(trimmed) ? Long_From_Text(trimmed) : std::nullopt;
    return number && *number <= 100 ? *number : Quality_Of_Parent;
}

int Save_Selected_As(Catalogue_State& state, Picture_Saver& saver, Pick_Loop& pick, Picture_Pictures& pictures,
                     const Save_Options& options)
{
    if (pick.Pick_In_Progress()) return 0;
    const bool to_original = options.Save_Option == Target::Original;
    std::vector<int> keys;
    for (const int index :
         Pictures_For_Function(state, {.mode = Selection_Mode::Selected_With_Message,
                                      .access = to_original ? Select_Access::Exclusive : Select_Access::Shared}))
        keys.push_back(state.pictures.Item(index).Picture_Key);
    if (keys.empty() || (to_original && !Confirm_Overwrite_Originals(state.platform.dialogs))) return 0;

    const int total = int(keys.size());
    const auto progress = state.platform.dialogs.Operation_Progress_Cancel_Dialog(
        QStringLiteral("Halvine - Save Selected As"), QStringLiteral("Saving 0 of %1").arg(total));
    Series series(state, saver, pictures, options);
    int saved = 0;
    for (int i = 0; i < total; ++i) {
        const auto code = progress->Operation_Progress_Cancel_Dialog_Update(
            QStringLiteral("Saving %1 of %2").arg(i + 1).arg(total), i + 1, total);
        if (code == Response_Code::Cancel) break;
        const Outcome outcome = series.Save(keys[std::size_t(i)]);
        if (outcome == Outcome::Stopped) break;
        if (outcome == Outcome::Saved) ++saved;
        if (i + 1 < total) state.platform.events.Process_Pending_Events();
    }
    state.view->Draw_All_Thumbnails();
    return saved;
}
