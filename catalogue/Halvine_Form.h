#pragma once

#include "catalogue/Catalogue_State.h"
#include "catalogue/File_Entry.h"
#include "catalogue/Pick_Loop.h"
#include "catalogue/Picture_Catalogue.h"
#include "catalogue/Picture_Pictures.h"
#include "catalogue/Picture_Saver.h"
#include "catalogue/Picture_Scripts.h"
#include "catalogue/Save_Selected_As.h"
#include "catalogue/Snapshot_Commands.h"

#include <array>

/// The main window without its widgets: the catalogue of the run, put together from its parts. It forwards and keeps no
/// logic of its own. A window gives it a view to draw with; hv and tests give none.
class Halvine_Form final : public Picture_Catalogue {
public:
    explicit Halvine_Form(Platform& platform, Catalogue_View* view = nullptr, Slide_Show_Link* slide_show = nullptr);
    Halvine_Form(const Halvine_Form&) = delete;
    Halvine_Form& operator=(const Halvine_Form&) = delete;
    ~Halvine_Form() override;

    /// The parts, for the windows and commands of the main window itself.
    Catalogue_State& State() { return state_; }
    const Catalogue_State& State() const { return state_; }
    Pick_Loop& Picking() { return pick_; }
    Picture_Saver& Saving() { return saver_; }
    Snapshot_Commands& Snapshots() { return snapshots_; }
    Picture_Pictures& Pictures() { return pictures_; }
    Picture_Scripts& Scripts() { return scripts_; }

    void Set_View(Catalogue_View* view);
    void Set_Slide_Show(Slide_Show_Link* slide_show);
    void Set_Work_Keeper(Work_Keeper* keeper);

    // Picking, for the folder pane, slide shows and searches.
    void Pick_Files(std::span<const File_Entry> File_Entries, bool Append, bool Refresh_Selection);
    void Add_Picture_By_File_Name(const QString& File_Name);
    void Discard_Selected();
    void Discard_All();
    int Save_Selected_As(const Save_Options& options)
    {
        return ::Save_Selected_As(state_, saver_, pick_, pictures_, options);
    }

    // Picture_Catalogue.
    int Return_Picture_Key(const QString& Picture_File_Name, bool Load_Picture_If_Missing) override;
    QString Return_Picture_Description(int Picture_Key) const override;
    double Return_Picture_File_Date(int Picture_Key) const override;
    QString Return_Picture_File_Name(int Picture_Key) const override;
    QString Return_Picture_Path(int Picture_Key) const override;
    int Return_Picture_Rotate(int Picture_Key) const override;
    float Return_Picture_Interval_In_Seconds(int Picture_Key) const override;
    int Return_Picture_Horz_Pixels(int Picture_Key) const override;
    int Return_Picture_Vert_Pixels(int Picture_Key) const override;
    int Return_Picture_Pixel_Depth(int Picture_Key) const override;
    int Return_Picture_Horz_Resolution(int Picture_Key) const override;
    int Return_Picture_Vert_Resolution(int Picture_Key) const override;
    void Set_Picture_Horz_Resolution(int Picture_Key, int New_Horizontal_Resolution) override;
    void Set_Picture_Vert_Resolution(int Picture_Key, int New_Vertical_Resolution) override;

    Bitmap_Handle Return_Picture_From_Index(int Picture_Index, int Rotate_Delta, int Scale_Divisor) override;
    Bitmap_Handle Return_Picture(int Picture_Key, int Rotate_Delta, int Scale_Divisor) override;
    Bitmap_Handle Return_Picture_Adjusted(int Picture_Key, int Rotate_Delta, int Scale_Divisor) override;
    Bitmap_Handle Return_Thumbnail_Picture(int Picture_Key, int Rotate_Delta, bool& Bitmap_Is_Copy) override;
    Bitmap_Handle Return_Thumbnail_Picture_Adjusted(int Picture_Key, int Rotate_Delta, bool& Bitmap_Is_Copy) override;

    int Return_Selected_Picture_Keys(std::vector<int>& Selected_Picture_Key, Select_Access access) override;
    void Set_Picture_Key_Selected(int Picture_Key, bool Set_Selected) override;
    void Set_Picture_Selected(int Picture_Index, bool Set_Selected) override;
    bool Test_Picture_Key_Selected(int Picture_Key) const override;
    bool Test_Picture_Selected(int Picture_Index) const override;
    void Set_Form_Enabled_Pictures_Locked(bool New_Enabled, bool New_Locked, std::span<const int> Picture_Key_List,
                                          std::uint32_t Picture_Lock) override;
    bool Test_Picture_Key_Locked(int Picture_Key) const override;
    bool Test_Picture_Locked(int Picture_Index) const override;
    void Set_Form_Active(std::uint32_t Form_Active, bool New_Form_Active) override;

    void Rotate_Picture(int Picture_Key, int Rotation_Angle) override;

    bool Set_Picture_All_Script_Items(int Picture_Key, const QString& Picture_Script_Items_String) override;
    QString Recall_Picture_All_Script_Items(int Picture_Key) const override;
    int Set_Picture_Script_Item(int Picture_Key, const QString& Picture_Script_Item_String,
                                std::span<const int> Clear_Script_Items, int Script_Item_Index) override;
    int Recall_Picture_Script_Item(int Picture_Key, int Picture_Script_Item_Type,
                                   QString& Picture_Script_Item_String) const override;
    int Set_Picture_Contrast_Optimize(int Picture_Key, float Picture_Shadow_Clip, float Picture_Highlight_Clip,
                                      int Picture_Contrast_Optimize_Mode, int Script_Item_Index) override;
    int Recall_Picture_Contrast_Optimize(int Picture_Key, float& Picture_Shadow_Clip, float& Picture_Highlight_Clip,
                                         int& Picture_Contrast_Optimize_Mode) const override;
    int Set_Picture_Saturation_Value_Adjust(int Picture_Key, float Picture_Saturation_Scale, float Picture_Value_Scale,
                                            int Script_Item_Index) override;
    int Recall_Picture_Saturation_Value_Adjust(int Picture_Key, float& Picture_Saturation_Scale,
                                               float& Picture_Value_Scale) const override;
    int Set_Picture_Color_Balance(int Picture_Key, float Picture_Red_Scale, float Picture_Green_Scale,
                                  float Picture_Blue_Scale, int Script_Item_Index) override;
    int Recall_Picture_Color_Balance(int Picture_Key, float& Picture_Red_Scale, float& Picture_Green_Scale,
                                     float& Picture_Blue_Scale) const override;
    int Set_Picture_Gamma(int Picture_Key, const Gamma_Channel& red, const Gamma_Channel& green,
                          const Gamma_Channel& blue, int Script_Item_Index) override;
    int Recall_Picture_Gamma(int Picture_Key, Gamma_Channel& red, Gamma_Channel& green,
                             Gamma_Channel& blue) const override;
    int Set_Picture_Crop(int Picture_Key, int Picture_Crop_Left, int Picture_Crop_Top, int Picture_Crop_Right,
                         int Picture_Crop_Bottom, int Script_Item_Index) override;
    int Recall_Picture_Crop(int Picture_Key, int& Picture_Crop_Left, int& Picture_Crop_Top, int& Picture_Crop_Right,
                            int& Picture_Crop_Bottom) const override;
    int Set_Picture_Unsharp_Mask(int Picture_Key, const Unsharp_Fields& fields, int Script_Item_Index) override;
    int Recall_Picture_Unsharp_Mask(int Picture_Key, Unsharp_Fields& fields) const override;
    int Set_Picture_Blur(int Picture_Key, float Picture_Blur_Radius, int Picture_Blur_Weight,
                         int Picture_Blur_Color_Component, int Script_Item_Index) override;
    int Recall_Picture_Blur(int Picture_Key, float& Picture_Blur_Radius, int& Picture_Blur_Weight,
                            int& Picture_Blur_Color_Component) const override;

    bool Save_Adjusted_Picture(int Picture_Key, Bitmap_Handle Adjusted_Picture,
                               const QString& Save_Adjusted_As_File_Name, const QString& Save_Adjusted_As_Qualifier,
                               std::span<const int> Clear_Script_Items, bool Save_Adjusted_Error_Message) override;
    bool Save_Picture(int SaveAs_Method, int Picture_Key, Bitmap_Handle Picture_Bitmap,
                      const QString& Picture_Filename_Suffix, std::span<const int> Clear_Script_Items) override;

    QString Return_Explorer_Path() const override { return state_.view->Explorer_Path(); }
    void Refresh_Folder_Tree(const QString& Folder_Path) override;
    void Set_Pattern_String(const QString& Pattern_String) override { state_.view->Set_Tree_Pattern(Pattern_String); }
    void Set_Alias_String(const QString& Alias_String) override { state_.view->Set_Tree_Alias(Alias_String); }
    QString Return_Alias_String() const override { return state_.view->Tree_Alias(); }
    void Set_Drag_Source(QObject* New_Drag_Source) override { drag_source_ = New_Drag_Source; }
    QObject* Return_Drag_Source() const override { return drag_source_; }
    void Slide_Show_Control(int New_Slide_Show_Control, int New_Slide_Index) override;
    bool Slide_Show_Test_Slide_Selected(int Slide_Index) const override;
    void Set_Background_Color(int New_Background_Red, int New_Background_Green, int New_Background_Blue) override;
    void Recall_Background_Color(int& Background_Red, int& Background_Green, int& Background_Blue) const override;

private:
    Catalogue_View no_view_;
    Slide_Show_Link no_slide_show_;
    Work_Keeper no_keeper_;
    Catalogue_State state_;
    Picture_Pictures pictures_{state_};
    Picture_Scripts scripts_{state_};
    Pick_Loop pick_{state_, pictures_};
    Picture_Saver saver_{state_, pick_, pictures_};
    Snapshot_Commands snapshots_{state_, pick_};
    Active_Forms active_forms_;
    QObject* drag_source_ = nullptr;
    std::array<int, 3> background_{255, 255, 255};
};
