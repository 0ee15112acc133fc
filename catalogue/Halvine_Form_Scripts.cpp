// The script members of the main window: each pair builds or parses one item's text.

#include "catalogue/Halvine_Form.h"

bool Halvine_Form::Set_Picture_All_Script_Items(int Picture_Key, const QString& Picture_Script_Items_String)
{
    return scripts_.Set_All(Picture_Key, Picture_Script_Items_String);
}

QString Halvine_Form::Recall_Picture_All_Script_Items(int Picture_Key) const
{
    return scripts_.Recall_All(Picture_Key);
}

int Halvine_Form::Set_Picture_Script_Item(int Picture_Key, const QString& Picture_Script_Item_String,
                                          std::span<const int> Clear_Script_Items, int Script_Item_Index)
{
    return scripts_.Set_Item(Picture_Key, Picture_Script_Item_String, Clear_Script_Items, Script_Item_Index);
}

int Halvine_Form::Recall_Picture_Script_Item(int Picture_Key, int Picture_Script_Item_Type,
                                             QString& Picture_Script_Item_String) const
{
    return scripts_.Recall_Item(Picture_Key, Picture_Script_Item_Type, Picture_Script_Item_String);
}

int Halvine_Form::Set_Picture_Contrast_Optimize(int Picture_Key, float Picture_Shadow_Clip,
                                                float Picture_Highlight_Clip, int Picture_Contrast_Optimize_Mode,
                                                int Script_Item_Index)
{
    return scripts_.Set_Item(
        Picture_Key, Format_ConOpt_Item(Picture_Shadow_Clip, Picture_Highlight_Clip, Picture_Contrast_Optimize_Mode),
        Script_Item_Index);
}

int Halvine_Form::Recall_Picture_Contrast_Optimize(int Picture_Key, float& Picture_Shadow_Clip,
                                                   float& Picture_Highlight_Clip,
                                                   int& Picture_Contrast_Optimize_Mode) const
{
    return scripts_.Recall_Typed(Picture_Key, Script_Item_Kind::Contrast_Optimize, [&](const QString& text) {
        return Parse_ConOpt_Item(text, Picture_Shadow_Clip, Picture_Highlight_Clip, Picture_Contrast_Optimize_Mode);
    });
}

int Halvine_Form::Set_Picture_Saturation_Value_Adjust(int Picture_Key, float Picture_Saturation_Scale,
                                                      float Picture_Value_Scale, int Script_Item_Index)
{
    return scripts_.Set_Item(Picture_Key, Format_SatVal_Item(Picture_Saturation_Scale, Picture_Value_Scale),
                             Script_Item_Index);
}

int Halvine_Form::Recall_Picture_Saturation_Value_Adjust(int Picture_Key, float& Picture_Saturation_Scale,
                                                         float& Picture_Value_Scale) const
{
    return scripts_.Recall_Typed(Picture_Key, Script_Item_Kind::Saturation_Value, [&](const QString& text) {
        return Parse_SatVal_Item(text, Picture_Saturation_Scale, Picture_Value_Scale);
    });
}

int Halvine_Form::Set_Picture_Color_Balance(int Picture_Key, float Picture_Red_Scale, float Picture_Green_Scale,
                                            float Picture_Blue_Scale, int Script_Item_Index)
{
    return scripts_.Set_Item(
        Picture_Key, Format_ColBal_Item(Picture_Red_Scale, Picture_Green_Scale, Picture_Blue_Scale), Script_Item_Index);
}

int Halvine_Form::Recall_Picture_Color_Balance(int Picture_Key, float& Picture_Red_Scale, float& Picture_Green_Scale,
                                               float& Picture_Blue_Scale) const
{
    return scripts_.Recall_Typed(Picture_Key, Script_Item_Kind::Color_Balance, [&](const QString& text) {
        return Parse_ColBal_Item(text, Picture_Red_Scale, Picture_Green_Scale, Picture_Blue_Scale);
    });
}

int Halvine_Form::Set_Picture_Gamma(int Picture_Key, const Gamma_Channel& red, const Gamma_Channel& green,
                                    const Gamma_Channel& blue, int Script_Item_Index)
{
    return scripts_.Set_Item(Picture_Key, Format_Gamma_Item(red, green, blue), Script_Item_Index);
}

int Halvine_Form::Recall_Picture_Gamma(int Picture_Key, Gamma_Channel& red, Gamma_Channel& green,
                                       Gamma_Channel& blue) const
{
    return scripts_.Recall_Typed(Picture_Key, Script_Item_Kind::Gamma,
                                 [&](const QString& text) { return Parse_Gamma_Item(text, red, green, blue); });
}

int Halvine_Form::Set_Picture_Crop(int Picture_Key, int Picture_Crop_Left, int Picture_Crop_Top, int Picture_Crop_Right,
                                   int Picture_Crop_Bottom, int Script_Item_Index)
{
    return scripts_.Set_Item(
        Picture_Key, Format_Crop_Item(Picture_Crop_Left, Picture_Crop_Top, Picture_Crop_Right, Picture_Crop_Bottom),
        Script_Item_Index);
}

int Halvine_Form::Recall_Picture_Crop(int Picture_Key, int& Picture_Crop_Left, int& Picture_Crop_Top,
                                      int& Picture_Crop_Right, int& Picture_Crop_Bottom) const
{
    return scripts_.Recall_Typed(Picture_Key, Script_Item_Kind::Crop, [&](const QString& text) {
        return Parse_Crop_Item(text, Picture_Crop_Left, Picture_Crop_Top, Picture_Crop_Right, Picture_Crop_Bottom);
    });
}

int Halvine_Form::Set_Picture_Unsharp_Mask(int Picture_Key, const Unsharp_Fields& fields, int Script_Item_Index)
{
    return scripts_.Set_Item(Picture_Key, Format_Unsharp_Item(fields), Script_Item_Index);
}

int Halvine_Form::Recall_Picture_Unsharp_Mask(int Picture_Key, Unsharp_Fields& fields) const
{
    return scripts_.Recall_Typed(Picture_Key, Script_Item_Kind::Unsharp,
                                 [&](const QString& text) { return Parse_Unsharp_Item(text, fields); });
}

int Halvine_Form::Set_Picture_Blur(int Picture_Key, float Picture_Blur_Radius, int Picture_Blur_Weight,
                                   int Picture_Blur_Color_Component, int Script_Item_Index)
{
    return scripts_.Set_Item(Picture_Key,
                             Format_Blur_Item(Picture_Blur_Radius, Picture_Blur_Weight, Picture_Blur_Color_Component),
                             Script_Item_Index);
}

int Halvine_Form::Recall_Picture_Blur(int Picture_Key, float& Picture_Blur_Radius, int& Picture_Blur_Weight,
                                      int& Picture_Blur_Color_Component) const
{
    return scripts_.Recall_Typed(Picture_Key, Script_Item_Kind::Blur, [&](const QString& text) {
        return Parse_Blur_Item(text, Picture_Blur_Radius, Picture_Blur_Weight, Picture_Blur_Color_Component);
    });
}
