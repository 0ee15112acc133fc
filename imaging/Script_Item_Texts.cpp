#include "imaging/Script_Utilities.h"

#include "frame/text/Text_Utilities.h"

// Each kind's writer and reader, side by side.
//
// script := item { ";" item }
// item   := keyword "(" field { "," field } ")"
//
// Writers give exactly this; readers take any run of "(" and blank, of "," and blank, of ")" and blank where one bracket
// or comma stands, and do not look at what follows the item.

namespace {

/// Reads one item field by field. The first fault ends it: every later step then does nothing.
class Item_Reader {
public:
    /// The appended "0" lets the closing run end before the text does. A number that ends the item takes it as a digit.
    Item_Reader(const QString& item, const char* keyword) : text_(item + u'0')
    {
        const QString word = Scan_Alpha_Token(text_, position_);
        good_ = Equal_Without_Case(word, QString::fromLatin1(keyword)) &&
                Scan_Required_Set(QStringLiteral("( "), text_, position_);
    }

    Item_Reader& Single(float& field)
    {
        if (Begin_Field()) Store(Scan_Single_Token(text_, position_), field);
        return *this;
    }
    Item_Reader& Long(int& field)
    {
        if (Begin_Field()) Store(Scan_Long_Token(text_, position_), field);
        return *this;
    }
    Item_Reader& Channel(Gamma_Channel& field) { return Long(field.black).Single(field.gamma).Long(field.white); }

    Item_Reader& Contrast_Mode(int& field)
    {
        if (!Begin_Field()) return *this;
        const QString word = Scan_Alpha_Token(text_, position_);
        if (Equal_Without_Case(word, QStringLiteral("LUM")))
            field = Contrast_Mode_Luminance;
        else if (Equal_Without_Case(word, QStringLiteral("RGB")))
            field = Contrast_Mode_RGB;
        else
            good_ = false;
        return *this;
    }
    Item_Reader& Method(int& field)
    {
        if (!Begin_Field()) return *this;
        const QString word = Scan_Alphanumeric_Token(text_, position_);
        good_ = !word.isEmpty();
        if (good_) field = Interpolation_Method_From_String(word);
        return *this;
    }
    Item_Reader& Components(int& field)
    {
        if (!Begin_Field()) return *this;
        const QString word = Scan_Alpha_Token(text_, position_);
        good_ = !word.isEmpty();
        if (good_) field = Color_Components_From_String(word);
        return *this;
    }
    Item_Reader& Quoted(QString& field)
    {
        if (Begin_Field()) field = Scan_Quoted_Token(text_, position_);
        return *this;
    }

    Item_Reading End()
    {
        using State = Item_Reading::State;
        if (conversion_failed_) return {State::Conversion_Failure};
        return {good_ && Scan_Required_Set(QStringLiteral(") "), text_, position_) ? State::Complete
                                                                                   : State::Incomplete};
    }

private:
    bool Begin_Field()
    {
        if (!is_first_field_ && good_) good_ = Scan_Required_Set(QStringLiteral(", "), text_, position_);
        is_first_field_ = false;
        return good_;
    }
    template <class Number>
    void Store(const std::optional<Number>& number, Number& field)
    {
        if (number) {
            field = *number;
        } else {
            conversion_failed_ = true;
            good_ = false;
        }
    }

    QString text_;
    int position_ = 1;
    bool good_ = false;
    bool is_first_field_ = true;
    bool conversion_failed_ = false;
};

QString Text_Of(float value)
{
    return Text_Of_Single(value);
}
QString Text_Of(int value)
{
    return QString::number(value);
}
QString Text_Of(const QString& word)
{
    return word;
}
QString Text_Of(const Gamma_Channel& channel)
{
    return Text_Of(channel.black) + u',' + Text_Of(channel.gamma) + u',' + Text_Of(channel.white);
}

template <class... Fields>
QString Item_Text(const char* keyword, const Fields&... fields)
{
    return QString::fromLatin1(keyword) + u'(' + QStringList{Text_Of(fields)...}.join(u',') + u')';
}

} // namespace

// "ConOpt(" single "," single "," ( "LUM" | "RGB" ) ")"
QString Format_ConOpt_Item(float shadow_clip, float highlight_clip, int mode)
{
    const QString word = mode == Contrast_Mode_RGB ? QStringLiteral("RGB") : QStringLiteral("LUM");
    return Item_Text("ConOpt", shadow_clip, highlight_clip, word);
}

Item_Reading Parse_ConOpt_Item(const QString& item, float& shadow_clip, float& highlight_clip, int& mode)
{
    return Item_Reader(item, "ConOpt").Single(shadow_clip).Single(highlight_clip).Contrast_Mode(mode).End();
}

// "SatVal(" single "," single ")"
QString Format_SatVal_Item(float saturation_scale, float value_scale)
{
    return Item_Text("SatVal", saturation_scale, value_scale);
}

Item_Reading Parse_SatVal_Item(const QString& item, float& saturation_scale, float& value_scale)
{
    return Item_Reader(item, "SatVal").Single(saturation_scale).Single(value_scale).End();
}

// "ColBal(" single "," single "," single ")"
QString Format_ColBal_Item(float red_scale, float green_scale, float blue_scale)
{
    return Item_Text("ColBal", red_scale, green_scale, blue_scale);
}

Item_Reading Parse_ColBal_Item(const QString& item, float& red_scale, float& green_scale, float& blue_scale)
{
    return Item_Reader(item, "ColBal").Single(red_scale).Single(green_scale).Single(blue_scale).End();
}

// "Gamma(" channel "," channel "," channel ")"; channel := long "," single "," long
QString Format_Gamma_Item(const Gamma_Channel& red, const Gamma_Channel& green, const Gamma_Channel& blue)
{
    return Item_Text("Gamma", red, green, blue);
}

Item_Reading Parse_Gamma_Item(const QString& item, Gamma_Channel& red, Gamma_Channel& green, Gamma_Channel& blue)
{
    return Item_Reader(item, "Gamma").Channel(red).Channel(green).Channel(blue).End();
}

// "Crop(" long "," long "," long "," long ")"
QString Format_Crop_Item(int left, int top, int right, int bottom)
{
    return Item_Text("Crop", left, top, right, bottom);
}

Item_Reading Parse_Crop_Item(const QString& item, int& left, int& top, int& right, int& bottom)
{
    return Item_Reader(item, "Crop").Long(left).Long(top).Long(right).Long(bottom).End();
}

// "Scale(" long "," long "," method "," long "," long ")"
QString Format_Scale_Item(int width, int height, int method, int horizontal_dpi, int vertical_dpi)
{
    return Item_Text("Scale", width, height, Interpolation_Method_To_String(method), horizontal_dpi, vertical_dpi);
}

Item_Reading Parse_Scale_Item(const QString& item, int& width, int& height, int& method, int& horizontal_dpi,
                              int& vertical_dpi)
{
    return Item_Reader(item, "Scale")
        .Long(width)
        .Long(height)
        .Method(method)
        .Long(horizontal_dpi)
        .Long(vertical_dpi)
        .End();
}

// "Unsharp(" single "," single "," single "," long "," long "," letters ")"
QString Format_Unsharp_Item(const Unsharp_Fields& fields)
{
    return Item_Text("Unsharp", fields.lighten_amount, fields.darken_amount, fields.radius, fields.lighten_threshold,
                     fields.darken_threshold, Color_Components_To_String(fields.component));
}

Item_Reading Parse_Unsharp_Item(const QString& item, Unsharp_Fields& fields)
{
    return Item_Reader(item, "Unsharp")
        .Single(fields.lighten_amount)
        .Single(fields.darken_amount)
        .Single(fields.radius)
        .Long(fields.lighten_threshold)
        .Long(fields.darken_threshold)
        .Components(fields.component)
        .End();
}

// "Blur(" single "," long "," letters ")"
QString Format_Blur_Item(float radius, int weight_percent, int component)
{
    return Item_Text("Blur", radius, weight_percent, Color_Components_To_String(component));
}

Item_Reading Parse_Blur_Item(const QString& item, float& radius, int& weight_percent, int& component)
{
    return Item_Reader(item, "Blur").Single(radius).Long(weight_percent).Components(component).End();
}

// "Text(" quote body quote ")"
QString Format_Text_Item(const QString& body)
{
    return QStringLiteral("Text(\"") + body + QStringLiteral("\")");
}

Item_Reading Parse_Text_Item(const QString& item, QString& body)
{
    return Item_Reader(item, "Text").Quoted(body).End();
}

Item_Reading Check_Item(const QString& item)
{
    int a = 0, b = 0, c = 0, d = 0, e = 0;
    float x = 0, y = 0, z = 0;
    Gamma_Channel red, green, blue;
    Unsharp_Fields unsharp;
    QString body;
    switch (Script_Item_Kind(Script_Item_Type_From_String(item))) {
    case Script_Item_Kind::Cleared: break;
    case Script_Item_Kind::Contrast_Optimize: return Parse_ConOpt_Item(item, x, y, a);
    case Script_Item_Kind::Saturation_Value: return Parse_SatVal_Item(item, x, y);
    case Script_Item_Kind::Color_Balance: return Parse_ColBal_Item(item, x, y, z);
    case Script_Item_Kind::Gamma: return Parse_Gamma_Item(item, red, green, blue);
    case Script_Item_Kind::Crop: return Parse_Crop_Item(item, a, b, c, d);
    case Script_Item_Kind::Scale: return Parse_Scale_Item(item, a, b, c, d, e);
    case Script_Item_Kind::Unsharp: return Parse_Unsharp_Item(item, unsharp);
    case Script_Item_Kind::Blur: return Parse_Blur_Item(item, x, a, b);
    case Script_Item_Kind::Text: return Parse_Text_Item(item, body);
    }
    return {};
}
