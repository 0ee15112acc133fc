#include "catalogue/Picture_Pictures.h"

#include "catalogue/Camera_Information.h"
#include "catalogue/File_Entry.h"
#include "frame/text/Text_Utilities.h"
#include "imaging/Script_Interpreter.h"

#include <algorithm>

namespace {

constexpr int First_Divisor = 8;
constexpr int Cell_Side_Twips = 1920;
constexpr int Twips_Per_Pixel = 15;

/// The smallest power-of-two reduction that still fills a cell, or 1 for a small picture.
int Divisor_That_Fills_A_Cell(Pixel_Size at_first_divisor)
{
    std::int64_t side = std::int64_t(std::max(at_first_divisor.width, at_first_divisor.height)) * Twips_Per_Pixel;
    int divisor = First_Divisor;
    while (side < Cell_Side_Twips && divisor >= 2) {
        side *= 2;
        divisor /= 2;
    }
    return divisor;
}

} // namespace

Bitmap_Handle Picture_Pictures::Load(Picture_Item& item, int rotate_delta, int scale_divisor)
{
    const int rotation = Normal_Rotation(item.Rotate + rotate_delta);
    const Bitmap_Handle bitmap =
        Load_Picture_Bitmap(item.Full_Name(), item.File_Type, scale_divisor, rotation, item.Flip);
    if (bitmap != 0 && scale_divisor == 1) item.Source_Warnings = Get_Bitmap_Source_Warnings_CPP(bitmap);
    return bitmap;
}

Bitmap_Handle Picture_Pictures::Load_Adjusted(Picture_Item& item, int rotate_delta, int scale_divisor)
{
    const Bitmap_Handle bitmap = Load(item, rotate_delta, scale_divisor);
    if (bitmap == 0) return 0;
    return Apply_Script_Items_To_Own(bitmap, state_.Items_In_Force(item),
                                     {.divisor = scale_divisor, .rotation = item.Rotate + rotate_delta});
}

bool Picture_Pictures::Ensure_Thumbnail(Picture_Item& item) const
{
    if (!item.Thumbnail_Bitmap) item.Thumbnail_Bitmap = Load_Thumbnail(item);
    return bool(item.Thumbnail_Bitmap);
}

Bitmap_Handle Picture_Pictures::Thumbnail(Picture_Item& item, int rotate_delta, bool& is_copy) const
{
    is_copy = rotate_delta != 0;
    if (!is_copy) {
        Ensure_Thumbnail(item);
        return item.Thumbnail_Bitmap.Get();
    }
    return Load_Picture_Bitmap(item.Full_Name(), item.File_Type, item.Scale_Divisor,
                               Normal_Rotation(item.Rotate + rotate_delta), item.Flip);
}

Bitmap_Handle Picture_Pictures::Thumbnail_Adjusted(Picture_Item& item, int rotate_delta, bool& is_copy) const
{
    Bitmap_Handle bitmap = Thumbnail(item, rotate_delta, is_copy);
    if (bitmap == 0) return 0;
    const int rotation = item.Rotate + rotate_delta;
    if (!is_copy) return Adjusted_Thumbnail(bitmap, state_.Items_In_Force(item), item.Scale_Divisor, rotation, is_copy);
    return Apply_Script_Items_To_Own(
        bitmap, state_.Items_In_Force(item),
        {.divisor = item.Scale_Divisor, .rotation = rotation, .margin_division = Margin_Division::Truncated});
}

Owned_Bitmap Picture_Pictures::Load_Thumbnail(const Picture_Item& item) const
{
    if (!state_.view->Shows_Thumbnails()) return {};
    return Owned_Bitmap(
        Load_Picture_Bitmap(item.Full_Name(), item.File_Type, item.Scale_Divisor, item.Rotate, item.Flip));
}

void Picture_Pictures::Read_File_Facts(Picture_Item& item)
{
    const File_Entry entry = Entry_Of_File(item.Full_Name());
    item.File_Date = Normalize_Date(entry.File_Date, true);
    item.File_Size_KB = entry.File_Size_KB;
    if (const auto identity = Identity_Of(File_System_Bytes(item.Full_Name()))) item.Identity = *identity;
}

void Picture_Pictures::Make_Thumbnail(Picture_Item& item)
{
    item.Scale_Divisor = First_Divisor;
    item.Thumbnail_Bitmap = Load_Thumbnail(item);
    if (!item.Thumbnail_Bitmap) return;
    const int divisor = Divisor_That_Fills_A_Cell(Size_Of_Bitmap(item.Thumbnail_Bitmap.Get()));
    if (divisor == First_Divisor) return;
    item.Scale_Divisor = divisor;
    item.Thumbnail_Bitmap.Reset(); // before the next one: at no time two bitmaps of one picture
    item.Thumbnail_Bitmap = Load_Thumbnail(item);
}

void Picture_Pictures::Read_Facts(Picture_Item& item)
{
    const QString name = item.Full_Name();
    File_Dimensions facts;
    if (Get_Dimensions(name, item.File_Type, facts)) {
        item.Horz_Pixels = facts.width;
        item.Vert_Pixels = facts.height;
        item.Pixel_Depth = facts.pixel_depth;
        item.Horz_Resolution = facts.horizontal_dpi;
        item.Vert_Resolution = facts.vertical_dpi;
    }
    item.Description = Get_Comment(name, item.File_Type);
    item.Description_Modified = false;
    item.Script_Items.Clear();
    item.Script_Modified = false;
    item.Script_Fault.clear();
    if (!Image_Script_Is_Readable(name, item.File_Type))
        item.Script_Fault = Last_Image_Error();
    else if (const QString script = Get_Image_Script(name, item.File_Type); !script.isEmpty())
        // What could be split before a fault stays.
        item.Script_Fault = Script_Status_Text(Parse_Script_Items(script, item.Script_Items));
    const auto camera = Camera_Record_Of_File(name, item.File_Type);
    item.Camera_Summary = camera ? Camera_Summary_Line(*camera) : QString();
    if (const auto identity = Identity_Of(File_System_Bytes(name))) item.Identity = *identity;
}

void Picture_Pictures::Reload_Picture_Thumbnail(int index, bool size_changed)
{
    if (!state_.pictures.Is_Index(index)) return;
    Picture_Item& item = state_.pictures.Item(index);
    item.Thumbnail_Bitmap.Reset();
    if (size_changed)
        Make_Thumbnail(item);
    else
        item.Thumbnail_Bitmap = Load_Thumbnail(item);
    Read_File_Facts(item);
    state_.view->Draw_Thumbnail(index);
    Refresh_Current_Picture(item.Picture_Key);
}

void Picture_Pictures::Rotate_Picture(int key, int angle)
{
    Picture_Item* item = state_.pictures.Find(key);
    if (item == nullptr) return;
    item->Rotate = Normal_Rotation(item->Rotate + angle);
    // Flips come after the rotation: a picture that is mirrored once turns the other way round as seen.
    const bool mirrored = item->Flip == Flip_Left_To_Right || item->Flip == Flip_Top_To_Bottom;
    const int seen_angle = Normal_Rotation(mirrored ? -angle : angle);
    if (seen_angle != 0 && item->Thumbnail_Bitmap) { // one that was given up is read again when it is needed
        Owned_Bitmap turned(seen_angle % 90 == 0 ? Rotate_Bitmap(item->Thumbnail_Bitmap.Get(), seen_angle) : 0);
        item->Thumbnail_Bitmap = turned ? std::move(turned) : Load_Thumbnail(*item);
    }
    state_.view->Draw_Thumbnail(state_.pictures.Index_From_Key(key));
    Refresh_Current_Picture(key);
    if (state_.slide_show->Is_File_Open()) state_.slide_show->Set_File_Modified();
}

void Picture_Pictures::Set_Current_Picture(int index)
{
    Drop_Current_Picture();
    if (state_.pictures.Is_Index(index)) {
        Picture_Item& item = state_.pictures.Item(index);
        state_.current_picture_key = item.Picture_Key;
        state_.Current_Picture_Bitmap = Take_Ahead(item);
        if (!state_.Current_Picture_Bitmap) state_.Current_Picture_Bitmap.Reset(Load(item, 0, 1));
    }
    state_.view->Show_Current_Picture();
    current_adjusted_.Reset();
}

Picture_Pictures::Ahead_Facts Picture_Pictures::Facts_Now(const Picture_Item& item) const
{
    Ahead_Facts facts{.key = item.Picture_Key, .rotate = item.Rotate, .flip = item.Flip};
    if (const auto identity = Identity_Of(File_System_Bytes(item.Full_Name()))) facts.identity = *identity;
    facts.script = Join_Script_Items(state_.Items_In_Force(item));
    return facts;
}

void Picture_Pictures::Load_Ahead(int key)
{
    Picture_Item* item = state_.pictures.Find(key);
    const Ahead_Facts facts = item != nullptr ? Facts_Now(*item) : Ahead_Facts();
    if (item != nullptr && ahead_ && facts == ahead_facts_) return;
    ahead_adjusted_.Reset(); // before the next one: at no time two of them
    ahead_.Reset();
    ahead_facts_ = facts;
    if (item == nullptr) return;
    ahead_.Reset(Load(*item, 0, 1));
    if (!ahead_) return;
    const Bitmap_Handle adjusted =
        Apply_Script_Items(ahead_.Get(), state_.Items_In_Force(*item), {.divisor = 1, .rotation = item->Rotate});
    if (adjusted != ahead_.Get()) ahead_adjusted_.Reset(adjusted);
}

Owned_Bitmap Picture_Pictures::Take_Ahead(const Picture_Item& item)
{
    if (!ahead_ || ahead_facts_.key != item.Picture_Key || !(ahead_facts_ == Facts_Now(item))) return {};
    current_adjusted_ = std::move(ahead_adjusted_);
    return std::move(ahead_);
}

void Picture_Pictures::Drop_Current_Picture()
{
    state_.current_picture_key = 0;
    state_.Current_Picture_Bitmap.Reset();
    current_adjusted_.Reset();
}

void Picture_Pictures::Refresh_Current_Picture(int key)
{
    if (key == state_.current_picture_key) Set_Current_Picture(state_.pictures.Index_From_Key(key));
}
