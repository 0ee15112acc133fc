#pragma once

#include "imaging/Script_Items.h"

#include <QtCore/QString>
#include <optional>

/// The text of script items: scanners, one writer and one reader for each kind. Positions are 1-based and advance only on
/// success. A Single is a 32-bit float, a Long a 32-bit integer. Keywords, mode and method words are compared without
/// regard to case; numbers have a point and no exponent.

constexpr float Missing_Single = -2147483648.0F; ///< what a reader stores where a Single should stand and does not
constexpr int Missing_Long = -2147483647;        ///< the same for a Long

QString Scan_Alpha_Token(const QString& source, int& position);
QString Scan_Alphanumeric_Token(const QString& source, int& position);

/// An empty run gives the missing value and leaves the position; a run that is no number gives nothing.
std::optional<float> Scan_Single_Token(const QString& source, int& position);
std::optional<int> Scan_Long_Token(const QString& source, int& position);

/// True when at least one character of the set stands at the position; passes the whole run.
bool Scan_Required_Set(const QString& char_set, const QString& source, int& position);

/// What stands between two double quotes; there is no escape. Without a closing quote the text is empty and the position
/// stands behind the opening one.
QString Scan_Quoted_Token(const QString& source, int& position);

int Script_Item_Type_From_String(const QString& item); ///< 1 to 9 by the keyword at the start, else 0
QString Script_Item_Type_Label(int type);              ///< "Contrast Optimize" and so on; empty for other numbers

QString Color_Components_To_String(int mask); ///< letters in the order RGBLCMYK
int Color_Components_From_String(const QString& letters);
QString Interpolation_Method_To_String(int index); ///< empty outside 1 to 8
int Interpolation_Method_From_String(const QString& word);
QString Interpolation_Method_Label(int index); ///< as shown to the user: "B-Spline"

/// How far a reader came. It converts to true only when the whole item was read. Fields read before a fault are stored
/// in the outputs, the others keep their values.
struct Item_Reading {
    enum class State { Complete, Incomplete, Conversion_Failure } state = State::Incomplete;
    explicit operator bool() const { return state == State::Complete; }
    bool Is_Conversion_Failure() const { return state == State::Conversion_Failure; }
};

constexpr int Contrast_Mode_Luminance = 1;
constexpr int Contrast_Mode_RGB = 2;

/// Clips are fractions of the samples, 0 to 0.02; -1 switches a side off. Mode 1 is "LUM", 2 is "RGB".
QString Format_ConOpt_Item(float shadow_clip, float highlight_clip, int mode);
Item_Reading Parse_ConOpt_Item(const QString& item, float& shadow_clip, float& highlight_clip, int& mode);

/// Multipliers, 1 is neutral.
QString Format_SatVal_Item(float saturation_scale, float value_scale);
Item_Reading Parse_SatVal_Item(const QString& item, float& saturation_scale, float& value_scale);

QString Format_ColBal_Item(float red_scale, float green_scale, float blue_scale);
Item_Reading Parse_ColBal_Item(const QString& item, float& red_scale, float& green_scale, float& blue_scale);

/// Levels 0 to 255 that become black and white, and the gamma between them; 0, 1, 255 is neutral.
struct Gamma_Channel {
    int black = 0;
    float gamma = 0;
    int white = 0;
    bool operator==(const Gamma_Channel&) const = default;
};
QString Format_Gamma_Item(const Gamma_Channel& red, const Gamma_Channel& green, const Gamma_Channel& blue);
Item_Reading Parse_Gamma_Item(const QString& item, Gamma_Channel& red, Gamma_Channel& green, Gamma_Channel& blue);

/// Margins in pixels of the full-size, unrotated picture.
QString Format_Crop_Item(int left, int top, int right, int bottom);
Item_Reading Parse_Crop_Item(const QString& item, int& left, int& top, int& right, int& bottom);

/// Size in pixels, method 1 to 8, dots per inch (-1 when none).
QString Format_Scale_Item(int width, int height, int method, int horizontal_dpi, int vertical_dpi);
Item_Reading Parse_Scale_Item(const QString& item, int& width, int& height, int& method, int& horizontal_dpi,
                              int& vertical_dpi);

/// Amounts are fractions 0 to 5, radius 1 to 25 pixels, thresholds 0 to 255 levels, component a bit set.
struct Unsharp_Fields {
    float lighten_amount = 0;
    float darken_amount = 0;
    float radius = 0;
    int lighten_threshold = 0;
    int darken_threshold = 0;
    int component = 0;
    bool operator==(const Unsharp_Fields&) const = default;
};
QString Format_Unsharp_Item(const Unsharp_Fields& fields);
Item_Reading Parse_Unsharp_Item(const QString& item, Unsharp_Fields& fields);

/// Radius 1 to 25 pixels, weight 0 to 100 percent, component a bit set.
QString Format_Blur_Item(float radius, int weight_percent, int component);
Item_Reading Parse_Blur_Item(const QString& item, float& radius, int& weight_percent, int& component);

/// The body is not escaped: it must not hold a double quote.
QString Format_Text_Item(const QString& body);
Item_Reading Parse_Text_Item(const QString& item, QString& body);

/// How far the reader of the item's own kind comes; for checks. An unknown kind is incomplete.
Item_Reading Check_Item(const QString& item);
