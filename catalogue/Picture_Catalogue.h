#pragma once

#include "catalogue/Picture_Locks.h"
#include "imaging/Brennick_Image_Utilities.h"
#include "imaging/Script_Utilities.h"

#include <QtCore/QString>
#include <span>
#include <vector>

class QObject;

/// The members of the main window that working windows use. They hold picture keys and nothing else of a picture. A member
/// that takes a key which is not listed does nothing and returns its neutral value: an empty text, 0, -1 for
/// Return_Picture_Rotate and for the Recall members, false.
/// Bitmaps: a new one belongs to the caller; a record's own stays the record's (Bitmap_Is_Copy tells which).
/// Rotations are degrees counterclockwise, dates days as in Date_Utilities.h, colours 0 to 255.
class Picture_Catalogue {
public:
    virtual ~Picture_Catalogue() = default;

    // Records.
    /// By full name without regard to case. A file that is not listed is picked first when asked for.
    virtual int Return_Picture_Key(const QString& Picture_File_Name, bool Load_Picture_If_Missing) = 0;
    virtual QString Return_Picture_Description(int Picture_Key) const = 0;
    virtual double Return_Picture_File_Date(int Picture_Key) const = 0;
    virtual QString Return_Picture_File_Name(int Picture_Key) const = 0;
    virtual QString Return_Picture_Path(int Picture_Key) const = 0; ///< the full name
    virtual int Return_Picture_Rotate(int Picture_Key) const = 0;
    virtual float Return_Picture_Interval_In_Seconds(int Picture_Key) const = 0;
    virtual int Return_Picture_Horz_Pixels(int Picture_Key) const = 0;
    virtual int Return_Picture_Vert_Pixels(int Picture_Key) const = 0;
    virtual int Return_Picture_Pixel_Depth(int Picture_Key) const = 0;
    virtual int Return_Picture_Horz_Resolution(int Picture_Key) const = 0;
    virtual int Return_Picture_Vert_Resolution(int Picture_Key) const = 0;
    virtual void Set_Picture_Horz_Resolution(int Picture_Key, int New_Horizontal_Resolution) = 0;
    virtual void Set_Picture_Vert_Resolution(int Picture_Key, int New_Vertical_Resolution) = 0;

    // Pictures.
    virtual Bitmap_Handle Return_Picture_From_Index(int Picture_Index, int Rotate_Delta, int Scale_Divisor) = 0;
    virtual Bitmap_Handle Return_Picture(int Picture_Key, int Rotate_Delta, int Scale_Divisor) = 0;
    virtual Bitmap_Handle Return_Picture_Adjusted(int Picture_Key, int Rotate_Delta, int Scale_Divisor) = 0;
    virtual Bitmap_Handle Return_Thumbnail_Picture(int Picture_Key, int Rotate_Delta, bool& Bitmap_Is_Copy) = 0;
    virtual Bitmap_Handle Return_Thumbnail_Picture_Adjusted(int Picture_Key, int Rotate_Delta,
                                                            bool& Bitmap_Is_Copy) = 0;

    // Selection and locks.
    virtual int Return_Selected_Picture_Keys(std::vector<int>& Selected_Picture_Key, Select_Access access) = 0;
    virtual void Set_Picture_Key_Selected(int Picture_Key, bool Set_Selected) = 0;
    virtual void Set_Picture_Selected(int Picture_Index, bool Set_Selected) = 0; ///< 0 and false clear the selection
    virtual bool Test_Picture_Key_Selected(int Picture_Key) const = 0;
    virtual bool Test_Picture_Selected(int Picture_Index) const = 0;
    /// New_Enabled is accepted and not used.
    virtual void Set_Form_Enabled_Pictures_Locked(bool New_Enabled, bool New_Locked,
                                                  std::span<const int> Picture_Key_List,
                                                  std::uint32_t Picture_Lock) = 0;
    virtual bool Test_Picture_Key_Locked(int Picture_Key) const = 0;
    virtual bool Test_Picture_Locked(int Picture_Index) const = 0;
    virtual void Set_Form_Active(std::uint32_t Form_Active, bool New_Form_Active) = 0;

    virtual void Rotate_Picture(int Picture_Key, int Rotation_Angle) = 0;

    // Scripts. The Set members return the index of the item that they wrote, 0 for nothing; the Recall members the index
    // of the last item of their kind, -1 when the picture has none of its own: the outputs may then hold the values of
    // the prepared script in force.
    virtual bool Set_Picture_All_Script_Items(int Picture_Key, const QString& Picture_Script_Items_String) = 0;
    virtual QString Recall_Picture_All_Script_Items(int Picture_Key) const = 0;
    /// A list of exactly one 0 clears nothing.
    virtual int Set_Picture_Script_Item(int Picture_Key, const QString& Picture_Script_Item_String,
                                        std::span<const int> Clear_Script_Items, int Script_Item_Index) = 0;
    virtual int Recall_Picture_Script_Item(int Picture_Key, int Picture_Script_Item_Type,
                                           QString& Picture_Script_Item_String) const = 0;
    virtual int Set_Picture_Contrast_Optimize(int Picture_Key, float Picture_Shadow_Clip, float Picture_Highlight_Clip,
                                              int Picture_Contrast_Optimize_Mode, int Script_Item_Index) = 0;
    virtual int Recall_Picture_Contrast_Optimize(int Picture_Key, float& Picture_Shadow_Clip,
                                                 float& Picture_Highlight_Clip,
                                                 int& Picture_Contrast_Optimize_Mode) const = 0;
    virtual int Set_Picture_Saturation_Value_Adjust(int Picture_Key, float Picture_Saturation_Scale,
                                                    float Picture_Value_Scale, int Script_Item_Index) = 0;
    virtual int Recall_Picture_Saturation_Value_Adjust(int Picture_Key, float& Picture_Saturation_Scale,
                                                       float& Picture_Value_Scale) const = 0;
    virtual int Set_Picture_Color_Balance(int Picture_Key, float Picture_Red_Scale, float Picture_Green_Scale,
                                          float Picture_Blue_Scale, int Script_Item_Index) = 0;
    virtual int Recall_Picture_Color_Balance(int Picture_Key, float& Picture_Red_Scale, float& Picture_Green_Scale,
                                             float& Picture_Blue_Scale) const = 0;
    virtual int Set_Picture_Gamma(int Picture_Key, const Gamma_Channel& red, const Gamma_Channel& green,
                                  const Gamma_Channel& blue, int Script_Item_Index) = 0;
    virtual int Recall_Picture_Gamma(int Picture_Key, Gamma_Channel& red, Gamma_Channel& green,
                                     Gamma_Channel& blue) const = 0;
    virtual int Set_Picture_Crop(int Picture_Key, int Picture_Crop_Left, int Picture_Crop_Top, int Picture_Crop_Right,
                                 int Picture_Crop_Bottom, int Script_Item_Index) = 0;
    virtual int Recall_Picture_Crop(int Picture_Key, int& Picture_Crop_Left, int& Picture_Crop_Top,
                                    int& Picture_Crop_Right, int& Picture_Crop_Bottom) const = 0;
    virtual int Set_Picture_Unsharp_Mask(int Picture_Key, const Unsharp_Fields& fields, int Script_Item_Index) = 0;
    virtual int Recall_Picture_Unsharp_Mask(int Picture_Key, Unsharp_Fields& fields) const = 0;
    virtual int Set_Picture_Blur(int Picture_Key, float Picture_Blur_Radius, int Picture_Blur_Weight,
                                 int Picture_Blur_Color_Component, int Script_Item_Index) = 0;
    virtual int Recall_Picture_Blur(int Picture_Key, float& Picture_Blur_Radius, int& Picture_Blur_Weight,
                                    int& Picture_Blur_Color_Component) const = 0;

    // Saving. Adjusted_Picture stays the caller's; 0 writes nothing. True when saved.
    virtual bool Save_Adjusted_Picture(int Picture_Key, Bitmap_Handle Adjusted_Picture,
                                       const QString& Save_Adjusted_As_File_Name,
                                       const QString& Save_Adjusted_As_Qualifier,
                                       std::span<const int> Clear_Script_Items, bool Save_Adjusted_Error_Message) = 0;
    virtual bool Save_Picture(int SaveAs_Method, int Picture_Key, Bitmap_Handle Picture_Bitmap,
                              const QString& Picture_Filename_Suffix, std::span<const int> Clear_Script_Items) = 0;

    // Small state of the main window.
    virtual QString Return_Explorer_Path() const = 0;
    virtual void Refresh_Folder_Tree(const QString& Folder_Path) = 0;
    virtual void Set_Pattern_String(const QString& Pattern_String) = 0;
    virtual void Set_Alias_String(const QString& Alias_String) = 0;
    virtual QString Return_Alias_String() const = 0;
    virtual void Set_Drag_Source(QObject* New_Drag_Source) = 0;
    virtual QObject* Return_Drag_Source() const = 0;
    virtual void Slide_Show_Control(int New_Slide_Show_Control, int New_Slide_Index) = 0;
    virtual bool Slide_Show_Test_Slide_Selected(int Slide_Index) const = 0;
    virtual void Set_Background_Color(int New_Background_Red, int New_Background_Green, int New_Background_Blue) = 0;
    virtual void Recall_Background_Color(int& Background_Red, int& Background_Green, int& Background_Blue) const = 0;
};
