#include "catalogue/Picture_Pictures.h"

#include "catalogue/Camera_Information.h"
#include "frame/text/Date_Utilities.h"
#include "frame/text/Text_Utilities.h"
#include "imaging/Script_Interpreter.h"

#include <algorithm>

namespace {

constexpr int First_Divisor = 8;
constexpr int Cell_Side_Pixels = 1920 / 15;

QString Text_Of(const std::string& text)
{
    return QString::fromUtf8(text.data(), qsizetype(text.size()));
}

void Give_Thumbnail(Picture_Item& item, Owned_Bitmap bitmap)
{
    item.Thumbnail_Bitmap = std::move(bitmap);
    item.Thumbnail_Rotate = item.Rotate;
    item.Thumbnail_Flip = item.Flip;
}

void Flip_In_Place(Owned_Bitmap& bitmap, int flips)
{
    for (const int flip : {Flip_Left_To_Right, Flip_Top_To_Bottom})
        if ((flips & flip) != 0) bitmap.Reset(Flip_Bitmap(bitmap.Get(), flip));
}

/// Flips come after the rotation: to turn on, the old ones are taken back first. Empty when the library fails.
Owned_Bitmap Brought_In_Line(Picture_Item& item)
{
    Owned_Bitmap bitmap = std::move(item.Thumbnail_Bitmap);
    const int angle = Normal_Rotation(item.Rotate - item.Thumbnail_Rotate);
    if (angle == 0) {
        Flip_In_Place(bitmap, item.Thumbnail_Flip ^ item.Flip);
        return bitmap;
    }
    Flip_In_Place(bitmap, item.Thumbnail_Flip);
    bitmap.Reset(angle % 90 == 0 ? Rotate_Bitmap(bitmap.Get(), angle) : 0);
    Flip_In_Place(bitmap, item.Flip);
    return bitmap;
}

/// What can be split before a fault stays; the fault itself is kept for the save that would lose the rest.
void Take_Script(Picture_Item& item, const Picture_Contents& contents)
{
    item.Script_Items.Clear();
    item.Script_Modified = false;
    item.Script_Fault = Text_Of(contents.script_error);
    if (item.Script_Fault.isEmpty() && !contents.script.empty())
        item.Script_Fault = Script_Status_Text(Parse_Script_Items(Text_Of(contents.script), item.Script_Items));
}

void Take_Facts(Picture_Item& item, const Picture_Contents& contents)
{
    item.File_Type = contents.type;
    item.Horz_Pixels = contents.width;
    item.Vert_Pixels = contents.height;
    item.Pixel_Depth = contents.pixel_depth;
    item.Horz_Resolution = contents.horizontal_dpi;
    item.Vert_Resolution = contents.vertical_dpi;
    item.Description = Text_Of(contents.comment);
    item.Description_Modified = false;
    Take_Script(item, contents);
    const auto camera = Parse_Camera_Record(contents.exif);
    item.Camera_Summary = camera ? Camera_Summary_Line(*camera) : QString();
    item.Identity = contents.identity;
    const auto modified = QDateTime::fromMSecsSinceEpoch(contents.identity.modified_nanoseconds / 1'000'000);
    item.File_Date = Normalize_Date(Date_From_Date_Time(modified), true);
    item.File_Size_KB = Size_In_KB(contents.identity.size);
}

void Note_Warnings(Picture_Item& item, Bitmap_Handle full_size)
{
    item.Source_Warnings = Get_Bitmap_Source_Warnings_CPP(full_size);
}

} // namespace

Bitmap_Handle Picture_Pictures::Load(Picture_Item& item, int rotate_delta, int scale_divisor)
{
    const int rotation = Normal_Rotation(item.Rotate + rotate_delta);
    const Bitmap_Handle bitmap =
        Load_Picture_Bitmap(item.Full_Name(), item.File_Type, scale_divisor, rotation, item.Flip);
    if (bitmap != 0 && scale_divisor == 1) Note_Warnings(item, bitmap);
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
    if (item.Thumbnail_Bitmap && !item.Thumbnail_Is_In_Line()) Give_Thumbnail(item, Brought_In_Line(item));
    if (!item.Thumbnail_Bitmap) Give_Thumbnail(item, Load_Thumbnail(item));
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
    Give_Thumbnail(item, Load_Thumbnail(item));
    if (!item.Thumbnail_Bitmap) return;
    const Pixel_Size size = Size_Of_Bitmap(item.Thumbnail_Bitmap.Get());
    const int divisor = Divisor_That_Keeps(std::max(size.width, size.height), Cell_Side_Pixels);
    if (divisor == First_Divisor) return;
    item.Scale_Divisor = divisor;
    item.Thumbnail_Bitmap.Reset(); // before the next one: at no time two bitmaps of one picture
    Give_Thumbnail(item, Load_Thumbnail(item));
}

Picture_Request Picture_Pictures::Request_For(const File_Entry& entry) const
{
    return {.path = File_System_Bytes(entry.Path_Name),
            .rotation = entry.Rotate,
            .least_side = state_.view->Shows_Thumbnails() ? Cell_Side_Pixels : 0};
}

bool Picture_Pictures::Take_Contents(Picture_Item& item, Picture_Contents contents) const
{
    Give_Thumbnail(item, Owned_Bitmap(Count_Bitmap(contents.bitmap)));
    if (!contents.error.empty()) return false;
    item.Scale_Divisor = contents.scale_divisor;
    Take_Facts(item, contents);
    return true;
}

void Picture_Pictures::Reload_Picture_Thumbnail(int index, bool size_changed)
{
    if (!state_.pictures.Is_Index(index)) return;
    Picture_Item& item = state_.pictures.Item(index);
    item.Thumbnail_Bitmap.Reset();
    if (size_changed)
        Make_Thumbnail(item);
    else
        Give_Thumbnail(item, Load_Thumbnail(item));
    Read_File_Facts(item);
    state_.view->Draw_Thumbnail(index);
    Refresh_Current_Picture(item.Picture_Key);
}

void Picture_Pictures::Read_New_File(int index)
{
    if (!state_.pictures.Is_Index(index)) return;
    Picture_Item& item = state_.pictures.Item(index);
    item.Rotate = item.Flip = 0;
    item.Source_Warnings = -1;
    ::Load_Ahead file({Request_For(Entry_Of_File(item.Full_Name()))}, 0);
    (void)Take_Contents(item, file.Take()); // a file that cannot be read keeps its record, without a thumbnail
    state_.view->Draw_Thumbnail(index);
    Refresh_Current_Picture(item.Picture_Key);
}

void Picture_Pictures::Rotate_Picture(int key, int angle)
{
    Picture_Item* item = state_.pictures.Find(key);
    if (item == nullptr) return;
    item->Rotate = Normal_Rotation(item->Rotate + angle);
    Show_Turned(key);
}

void Picture_Pictures::Show_Turned(int key)
{
    state_.view->Draw_Thumbnail(state_.pictures.Index_From_Key(key));
    Refresh_Current_Picture(key);
    if (state_.slide_show->Is_File_Open()) state_.slide_show->Set_File_Modified();
    state_.keeper->Keep_If_Due();
}

void Picture_Pictures::Set_Current_Picture(int index)
{
    Drop_Current_Picture();
    state_.keeper->Keep_Now(); // reading a large one takes seconds
    if (state_.pictures.Is_Index(index)) {
        Picture_Item& item = state_.pictures.Item(index);
        state_.current_picture_key = item.Picture_Key;
        Next_Picture::Bitmaps read = next_.Take(item);
        state_.Current_Picture_Bitmap = std::move(read.picture);
        current_adjusted_ = std::move(read.adjusted);
        if (state_.Current_Picture_Bitmap)
            Note_Warnings(item, state_.Current_Picture_Bitmap.Get());
        else
            state_.Current_Picture_Bitmap.Reset(Load(item, 0, 1));
    }
    state_.view->Show_Current_Picture();
    current_adjusted_.Reset();
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
