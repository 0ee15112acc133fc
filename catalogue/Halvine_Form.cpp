#include "catalogue/Halvine_Form.h"

#include "catalogue/Selection_For_Function.h"
#include "frame/text/Text_Utilities.h"

namespace {

const Picture_Item No_Picture;

const Picture_Item& Item_Or_None(const Catalogue_State& state, int key)
{
    const Picture_Item* item = state.pictures.Find(key);
    return item != nullptr ? *item : No_Picture;
}

} // namespace

Halvine_Form::Halvine_Form(Platform& platform, Catalogue_View* view, Slide_Show_Link* slide_show)
    : state_{.platform = platform, .view = &no_view_, .slide_show = &no_slide_show_, .keeper = &no_keeper_}
{
    Set_View(view);
    Set_Slide_Show(slide_show);
}

Halvine_Form::~Halvine_Form() = default;

void Halvine_Form::Set_View(Catalogue_View* view)
{
    state_.view = view != nullptr ? view : &no_view_;
}

void Halvine_Form::Set_Slide_Show(Slide_Show_Link* slide_show)
{
    state_.slide_show = slide_show != nullptr ? slide_show : &no_slide_show_;
}

void Halvine_Form::Set_Work_Keeper(Work_Keeper* keeper)
{
    state_.keeper = keeper != nullptr ? keeper : &no_keeper_;
}

void Halvine_Form::Pick_Files(std::span<const File_Entry> File_Entries, bool Append, bool Refresh_Selection)
{
    pick_.Pick_Files(File_Entries, Append, Refresh_Selection);
}

void Halvine_Form::Add_Picture_By_File_Name(const QString& File_Name)
{
    pick_.Add_Picture_By_File_Name(File_Name);
}

void Halvine_Form::Discard_Selected()
{
    pick_.Discard_Selected();
}

void Halvine_Form::Discard_All()
{
    pick_.Discard_All();
}

int Halvine_Form::Return_Picture_Key(const QString& Picture_File_Name, bool Load_Picture_If_Missing)
{
    int index = state_.pictures.Index_From_Name(Picture_File_Name);
    if (index == 0 && Load_Picture_If_Missing) {
        const int first_new = state_.pictures.Count() + 1;
        pick_.Add_Picture_By_File_Name(Picture_File_Name);
        index = state_.pictures.Index_From_Name(Picture_File_Name, first_new);
    }
    return index > 0 ? state_.pictures.Item(index).Picture_Key : 0;
}

QString Halvine_Form::Return_Picture_Description(int Picture_Key) const
{
    return Item_Or_None(state_, Picture_Key).Description;
}

double Halvine_Form::Return_Picture_File_Date(int Picture_Key) const
{
    return Item_Or_None(state_, Picture_Key).File_Date;
}

QString Halvine_Form::Return_Picture_File_Name(int Picture_Key) const
{
    return Item_Or_None(state_, Picture_Key).File_Name;
}

QString Halvine_Form::Return_Picture_Path(int Picture_Key) const
{
    return Item_Or_None(state_, Picture_Key).Full_Name();
}

int Halvine_Form::Return_Picture_Rotate(int Picture_Key) const
{
    const Picture_Item* item = state_.pictures.Find(Picture_Key);
    return item != nullptr ? item->Rotate : -1;
}

float Halvine_Form::Return_Picture_Interval_In_Seconds(int Picture_Key) const
{
    return Item_Or_None(state_, Picture_Key).Interval_In_Seconds;
}

int Halvine_Form::Return_Picture_Horz_Pixels(int Picture_Key) const
{
    return Item_Or_None(state_, Picture_Key).Horz_Pixels;
}

int Halvine_Form::Return_Picture_Vert_Pixels(int Picture_Key) const
{
    return Item_Or_None(state_, Picture_Key).Vert_Pixels;
}

int Halvine_Form::Return_Picture_Pixel_Depth(int Picture_Key) const
{
    return Item_Or_None(state_, Picture_Key).Pixel_Depth;
}

int Halvine_Form::Return_Picture_Horz_Resolution(int Picture_Key) const
{
    const Picture_Item* item = state_.pictures.Find(Picture_Key);
    return item != nullptr ? item->Horz_Resolution : 0;
}

int Halvine_Form::Return_Picture_Vert_Resolution(int Picture_Key) const
{
    const Picture_Item* item = state_.pictures.Find(Picture_Key);
    return item != nullptr ? item->Vert_Resolution : 0;
}

void Halvine_Form::Set_Picture_Horz_Resolution(int Picture_Key, int New_Horizontal_Resolution)
{
    if (Picture_Item* item = state_.pictures.Find(Picture_Key)) item->Horz_Resolution = New_Horizontal_Resolution;
}

void Halvine_Form::Set_Picture_Vert_Resolution(int Picture_Key, int New_Vertical_Resolution)
{
    if (Picture_Item* item = state_.pictures.Find(Picture_Key)) item->Vert_Resolution = New_Vertical_Resolution;
}

Bitmap_Handle Halvine_Form::Return_Picture_From_Index(int Picture_Index, int Rotate_Delta, int Scale_Divisor)
{
    if (!state_.pictures.Is_Index(Picture_Index)) return 0;
    return pictures_.Load(state_.pictures.Item(Picture_Index), Rotate_Delta, Scale_Divisor);
}

Bitmap_Handle Halvine_Form::Return_Picture(int Picture_Key, int Rotate_Delta, int Scale_Divisor)
{
    return Return_Picture_From_Index(state_.pictures.Index_From_Key(Picture_Key), Rotate_Delta, Scale_Divisor);
}

Bitmap_Handle Halvine_Form::Return_Picture_Adjusted(int Picture_Key, int Rotate_Delta, int Scale_Divisor)
{
    Picture_Item* item = state_.pictures.Find(Picture_Key);
    return item != nullptr ? pictures_.Load_Adjusted(*item, Rotate_Delta, Scale_Divisor) : 0;
}

Bitmap_Handle Halvine_Form::Return_Thumbnail_Picture(int Picture_Key, int Rotate_Delta, bool& Bitmap_Is_Copy)
{
    Bitmap_Is_Copy = false;
    Picture_Item* item = state_.pictures.Find(Picture_Key);
    return item != nullptr ? pictures_.Thumbnail(*item, Rotate_Delta, Bitmap_Is_Copy) : 0;
}

Bitmap_Handle Halvine_Form::Return_Thumbnail_Picture_Adjusted(int Picture_Key, int Rotate_Delta, bool& Bitmap_Is_Copy)
{
    Bitmap_Is_Copy = false;
    Picture_Item* item = state_.pictures.Find(Picture_Key);
    return item != nullptr ? pictures_.Thumbnail_Adjusted(*item, Rotate_Delta, Bitmap_Is_Copy) : 0;
}

int Halvine_Form::Return_Selected_Picture_Keys(std::vector<int>& Selected_Picture_Key, Select_Access access)
{
    Selected_Picture_Key.clear();
    for (const int index :
         Pictures_For_Function(state_, {.mode = Selection_Mode::Selected_With_Message, .access = access}))
        Selected_Picture_Key.push_back(state_.pictures.Item(index).Picture_Key);
    return int(Selected_Picture_Key.size());
}

void Halvine_Form::Set_Picture_Key_Selected(int Picture_Key, bool Set_Selected)
{
    const int index = state_.pictures.Index_From_Key(Picture_Key);
    if (index < 1) return;
    Set_Picture_Selected(index, Set_Selected);
    state_.view->Draw_All_Thumbnails();
    state_.view->Update_Status();
}

void Halvine_Form::Set_Picture_Selected(int Picture_Index, bool Set_Selected)
{
    if (Picture_Index == 0 && !Set_Selected) {
        for (const int index : state_.selection.Selected_Indices()) state_.view->Set_Thumbnail_Frame(index, false);
        state_.selection.Clear();
    } else if (state_.selection.Set_Index(Picture_Index, Set_Selected)) {
        state_.view->Set_Thumbnail_Frame(Picture_Index, Set_Selected);
    }
}

bool Halvine_Form::Test_Picture_Key_Selected(int Picture_Key) const
{
    return state_.selection.Test_Key(Picture_Key);
}

bool Halvine_Form::Test_Picture_Selected(int Picture_Index) const
{
    return state_.selection.Test_Index(Picture_Index);
}

void Halvine_Form::Set_Form_Enabled_Pictures_Locked(bool /*New_Enabled*/, bool New_Locked,
                                                    std::span<const int> Picture_Key_List, std::uint32_t Picture_Lock)
{
    for (const int key : Picture_Key_List)
        if (Picture_Item* item = state_.pictures.Find(key))
            item->Lock_Flags = With_Lock(item->Lock_Flags, Picture_Lock, New_Locked);
}

bool Halvine_Form::Test_Picture_Key_Locked(int Picture_Key) const
{
    return Is_Locked(Item_Or_None(state_, Picture_Key).Lock_Flags);
}

bool Halvine_Form::Test_Picture_Locked(int Picture_Index) const
{
    return state_.pictures.Is_Index(Picture_Index) && Is_Locked(state_.pictures.Item(Picture_Index).Lock_Flags);
}

void Halvine_Form::Set_Form_Active(std::uint32_t Form_Active, bool New_Form_Active)
{
    if (!active_forms_.Set(Form_Active, New_Form_Active)) return;
    for (int index = 1; index <= state_.pictures.Count(); ++index)
        state_.pictures.Item(index).Lock_Flags &= No_Lock_Mask; // no lock outlives the windows
}

void Halvine_Form::Rotate_Picture(int Picture_Key, int Rotation_Angle)
{
    pictures_.Rotate_Picture(Picture_Key, Rotation_Angle);
}

bool Halvine_Form::Save_Adjusted_Picture(int Picture_Key, Bitmap_Handle Adjusted_Picture,
                                         const QString& Save_Adjusted_As_File_Name,
                                         const QString& Save_Adjusted_As_Qualifier,
                                         std::span<const int> Clear_Script_Items, bool Save_Adjusted_Error_Message)
{
    return saver_.Save_Adjusted_Picture(Picture_Key, Adjusted_Picture, Save_Adjusted_As_File_Name,
                                        Save_Adjusted_As_Qualifier, Clear_Script_Items, Save_Adjusted_Error_Message);
}

bool Halvine_Form::Save_Picture(int SaveAs_Method, int Picture_Key, Bitmap_Handle Picture_Bitmap,
                                const QString& Picture_Filename_Suffix, std::span<const int> Clear_Script_Items)
{
    return saver_.Save_Picture(SaveAs_Method, Picture_Key, Picture_Bitmap, Picture_Filename_Suffix, Clear_Script_Items);
}

void Halvine_Form::Refresh_Folder_Tree(const QString& Folder_Path)
{
    state_.view->Refresh_Folder_Tree(Without_Trailing_Separator(Folder_Path));
}

void Halvine_Form::Slide_Show_Control(int New_Slide_Show_Control, int New_Slide_Index)
{
    state_.slide_show->Control(New_Slide_Show_Control, New_Slide_Index);
}

bool Halvine_Form::Slide_Show_Test_Slide_Selected(int Slide_Index) const
{
    return state_.selection.Test_Key(state_.slide_show->Picture_Key_Of_Slide(Slide_Index));
}

void Halvine_Form::Set_Background_Color(int New_Background_Red, int New_Background_Green, int New_Background_Blue)
{
    background_ = {New_Background_Red, New_Background_Green, New_Background_Blue};
    for (int& part : background_) part = std::clamp(part, 0, 255);
    Set_All_Bitmaps_Background_Color_CPP(std::uint8_t(background_[0]), std::uint8_t(background_[1]),
                                         std::uint8_t(background_[2]));
}

void Halvine_Form::Recall_Background_Color(int& Background_Red, int& Background_Green, int& Background_Blue) const
{
    Background_Red = background_[0];
    Background_Green = background_[1];
    Background_Blue = background_[2];
}
