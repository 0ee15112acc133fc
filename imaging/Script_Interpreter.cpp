#include "imaging/Script_Interpreter.h"

#include "frame/text/Number_Text.h"
#include "imaging/Script_Utilities.h"
#include "imaging/Tone_Tables.h"

#include <limits>

namespace {

Text_Item_Renderer* text_renderer = nullptr;

constexpr int To_Int(std::int64_t value)
{
    constexpr std::int64_t low = std::numeric_limits<int>::min(), high = std::numeric_limits<int>::max();
    return int(value < low ? low : value > high ? high : value);
}

Bitmap_Handle Map_Channels(Bitmap_Handle source, const Tone_Table& red, const Tone_Table& green, const Tone_Table& blue)
{
    return Count_Bitmap(Create_RGB_Luminance_Table_Mapped_Bitmap_CPP(source, Component_RGB, red.data(), green.data(),
                                                                     blue.data(), nullptr));
}

bool Build_Component_Clip_Table(Bitmap_Handle source, int component, float shadow_clip, float highlight_clip,
                                Tone_Table& table)
{
    Histogram_Counts histogram{};
    std::int32_t sample_count = 0;
    return Compute_Bitmap_Color_Component_Histogram_CPP(source, component, histogram.data(), &sample_count) &&
           Build_Clip_Table(histogram, sample_count, shadow_clip, highlight_clip, table);
}

// The readers' answers other than a number that is none are not looked at: a damaged item acts with what was read.

Bitmap_Handle Optimize_Contrast(Bitmap_Handle source, const QString& item, const Script_Run&)
{
    float shadow_clip = 0, highlight_clip = 0;
    int mode = 0;
    if (Parse_ConOpt_Item(item, shadow_clip, highlight_clip, mode).Is_Conversion_Failure()) return 0;
    if (mode == Contrast_Mode_Luminance)
        return Count_Bitmap(Create_Contrast_Optimized_Bitmap_CPP(source, shadow_clip, highlight_clip));
    if (mode != Contrast_Mode_RGB) return 0;
    Tone_Table red, green, blue;
    if (!Build_Component_Clip_Table(source, Component_Red, shadow_clip, highlight_clip, red)) return 0;
    if (!Build_Component_Clip_Table(source, Component_Green, shadow_clip, highlight_clip, green)) return 0;
    if (!Build_Component_Clip_Table(source, Component_Blue, shadow_clip, highlight_clip, blue)) return 0;
    return Map_Channels(source, red, green, blue);
}

bool Is_Useful_HSV_Scale(float scale)
{
    return scale >= 0.1F && scale <= 9.9F;
}

Bitmap_Handle Scale_Saturation_Value(Bitmap_Handle source, const QString& item, const Script_Run&)
{
    float saturation_scale = 0, value_scale = 0;
    if (Parse_SatVal_Item(item, saturation_scale, value_scale).Is_Conversion_Failure()) return 0;
    if (!Is_Useful_HSV_Scale(saturation_scale) || !Is_Useful_HSV_Scale(value_scale)) return 0;
    Tone_Table saturation, value;
    Build_Scale_Table(saturation_scale, saturation);
    Build_Scale_Table(value_scale, value);
    return Count_Bitmap(Create_HSV_Table_Mapped_Bitmap_CPP(source, saturation.data(), value.data()));
}

Bitmap_Handle Balance_Color(Bitmap_Handle source, const QString& item, const Script_Run&)
{
    float red_scale = 0, green_scale = 0, blue_scale = 0;
    if (Parse_ColBal_Item(item, red_scale, green_scale, blue_scale).Is_Conversion_Failure()) return 0;
    Tone_Table red, green, blue;
    Build_Scale_Table(red_scale, red);
    Build_Scale_Table(green_scale, green);
    Build_Scale_Table(blue_scale, blue);
    return Map_Channels(source, red, green, blue);
}

bool Build_Channel_Table(const Gamma_Channel& channel, Tone_Table& table)
{
    return Build_Black_Gamma_White_Table(channel.black, double(channel.gamma), channel.white, table);
}

Bitmap_Handle Apply_Gamma(Bitmap_Handle source, const QString& item, const Script_Run&)
{
    Gamma_Channel red, green, blue;
    if (Parse_Gamma_Item(item, red, green, blue).Is_Conversion_Failure()) return 0;
    Tone_Table red_table, green_table, blue_table;
    if (!Build_Channel_Table(red, red_table)) return 0;
    if (!Build_Channel_Table(green, green_table)) return 0;
    if (!Build_Channel_Table(blue, blue_table)) return 0;
    return Map_Channels(source, red_table, green_table, blue_table);
}

int Reduced_Margin(int margin, const Script_Run& run)
{
    const int divisor = std::max(run.divisor, 1);
    if (run.margin_division == Margin_Division::Truncated) return margin / divisor;
    return Round_Half_Even(double(margin) / double(divisor));
}

Bitmap_Handle Crop(Bitmap_Handle source, const QString& item, const Script_Run& run)
{
    int margins[4] = {};
    auto& [left, top, right, bottom] = margins;
    if (Parse_Crop_Item(item, left, top, right, bottom).Is_Conversion_Failure()) return 0;
    for (int& margin : margins) margin = Reduced_Margin(margin, run);
    Rotate_Crop_Margins(left, top, right, bottom, run.rotation);
    const Pixel_Size size = Size_Of_Bitmap(source);
    const int width = To_Int(std::int64_t(size.width) - (std::int64_t(left) + right));
    const int height = To_Int(std::int64_t(size.height) - (std::int64_t(bottom) + top));
    if (left == std::numeric_limits<int>::max() || top == std::numeric_limits<int>::max()) return 0;
    return Crop_Bitmap(source, left, top, width, height);
}

Bitmap_Handle Scale(Bitmap_Handle source, const QString& item, const Script_Run&)
{
    int width = 0, height = 0, method = 0, horizontal_dpi = 0, vertical_dpi = 0;
    if (Parse_Scale_Item(item, width, height, method, horizontal_dpi, vertical_dpi).Is_Conversion_Failure()) return 0;
    return Count_Bitmap(Create_Scaled_Bitmap_CPP(source, width, height, method));
}

Bitmap_Handle Sharpen(Bitmap_Handle source, const QString& item, const Script_Run&)
{
    Unsharp_Fields fields;
    if (Parse_Unsharp_Item(item, fields).Is_Conversion_Failure()) return 0;
    return Count_Bitmap(Create_Unsharp_Masked_Bitmap_CPP(source, fields.lighten_amount, fields.darken_amount,
                                                         fields.radius, fields.lighten_threshold,
                                                         fields.darken_threshold, fields.component));
}

Bitmap_Handle Blur(Bitmap_Handle source, const QString& item, const Script_Run&)
{
    float radius = 0;
    int weight_percent = 0, component = 0;
    if (Parse_Blur_Item(item, radius, weight_percent, component).Is_Conversion_Failure()) return 0;
    return Count_Bitmap(Create_Blurred_Bitmap_CPP(source, radius, weight_percent, component));
}

Bitmap_Handle Draw_Text(Bitmap_Handle source, const QString& item, const Script_Run& run)
{
    QString body;
    Parse_Text_Item(item, body);
    if (text_renderer == nullptr || body.isEmpty()) return 0;
    Owned_Bitmap copy(Copy_Bitmap(source));
    if (!copy) return 0;
    const int divisor = std::max(run.divisor, 1);
    return text_renderer->Render(copy.Get(), body, divisor, Normal_Rotation(run.rotation)) ? copy.Release() : 0;
}

bool Is_Stopped(const Script_Run& run)
{
    return run.stop != nullptr && *run.stop;
}

} // namespace

void Install_Text_Item_Renderer(Text_Item_Renderer* renderer)
{
    text_renderer = renderer;
}

int Normal_Rotation(int degrees)
{
    return ((degrees % 360) + 360) % 360;
}

void Rotate_Crop_Margins(int& left, int& top, int& right, int& bottom, int degrees)
{
    const int old_left = left, old_top = top, old_right = right, old_bottom = bottom;
    const auto take = [&](int new_left, int new_top, int new_right, int new_bottom) {
        left = new_left;
        top = new_top;
        right = new_right;
        bottom = new_bottom;
    };
    switch (Normal_Rotation(degrees)) {
    case 90: take(old_top, old_right, old_bottom, old_left); break;
    case 180: take(old_right, old_bottom, old_left, old_top); break;
    case 270: take(old_bottom, old_left, old_top, old_right); break;
    default: break;
    }
}

Bitmap_Handle Apply_Script_Item(Bitmap_Handle source, const Script_Item& item, const Script_Run& run)
{
    const QString& text = item.Script_Item_String;
    switch (Script_Item_Kind(item.Script_Item_Type)) {
    case Script_Item_Kind::Cleared: return 0;
    case Script_Item_Kind::Contrast_Optimize: return Optimize_Contrast(source, text, run);
    case Script_Item_Kind::Saturation_Value: return Scale_Saturation_Value(source, text, run);
    case Script_Item_Kind::Color_Balance: return Balance_Color(source, text, run);
    case Script_Item_Kind::Gamma: return Apply_Gamma(source, text, run);
    case Script_Item_Kind::Crop: return Crop(source, text, run);
    case Script_Item_Kind::Scale: return Scale(source, text, run);
    case Script_Item_Kind::Unsharp: return Sharpen(source, text, run);
    case Script_Item_Kind::Blur: return Blur(source, text, run);
    case Script_Item_Kind::Text: return Draw_Text(source, text, run);
    }
    return 0;
}

bool May_Run_Aside(const Script_Item_Array& items)
{
    for (int index = 1; index <= items.Count(); ++index)
        if (items.Item(index).Script_Item_Type == int(Script_Item_Kind::Text)) return false;
    return true;
}

Bitmap_Handle Apply_Script_Items(Bitmap_Handle start, const Script_Item_Array& items, const Script_Run& run)
{
    Bitmap_Handle current = start;
    for (int index = 1; index <= items.Count() && !Is_Stopped(run); ++index) {
        const Bitmap_Handle next = Apply_Script_Item(current, items.Item(index), run);
        if (next == 0) continue;
        if (current != start) Delete_Bitmap(current);
        current = next;
    }
    return current;
}

Bitmap_Handle Apply_Script_Items_To_Own(Bitmap_Handle start, const Script_Item_Array& items, const Script_Run& run)
{
    Bitmap_Handle current = start;
    for (int index = 1; index <= items.Count() && !Is_Stopped(run); ++index) {
        const Bitmap_Handle next = Apply_Script_Item(current, items.Item(index), run);
        if (next == 0) continue;
        Delete_Bitmap(current);
        current = next;
    }
    return current;
}

Bitmap_Handle Load_Picture_Bitmap(const QString& path, int type, int scale_divisor, int rotation, int flip_bits)
{
    const int file_type = type == 0 ? File_Type_From_Signature(path) : type;
    Owned_Bitmap picture(Load_Bitmap(path, file_type, scale_divisor, Normal_Rotation(rotation)));
    for (const int mode : {1, 2})
        if (picture && (flip_bits & mode) != 0)
            if (const Bitmap_Handle flipped = Flip_Bitmap(picture.Get(), mode)) picture.Reset(flipped);
    return picture.Release();
}

Bitmap_Handle Load_Adjusted_Picture(const Picture_Source& source, const Script_Item_Array& items)
{
    const Bitmap_Handle loaded =
        Load_Picture_Bitmap(source.path, source.type, source.scale_divisor, source.rotation, source.flip_bits);
    if (loaded == 0) return 0;
    return Apply_Script_Items_To_Own(
        loaded, items,
        {.divisor = source.scale_divisor, .rotation = source.rotation, .margin_division = Margin_Division::Rounded});
}

Bitmap_Handle Adjusted_Thumbnail(Bitmap_Handle thumbnail, const Script_Item_Array& items, int thumbnail_divisor,
                                 int rotation, bool& bitmap_is_copy)
{
    const Bitmap_Handle result = Apply_Script_Items(
        thumbnail, items,
        {.divisor = thumbnail_divisor, .rotation = rotation, .margin_division = Margin_Division::Truncated});
    bitmap_is_copy = result != thumbnail;
    return result;
}
