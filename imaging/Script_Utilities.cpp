#include "imaging/Script_Utilities.h"

#include "frame/text/Text_Utilities.h"

#include <array>

namespace {

const QString& Alpha_Set()
{
    static const QString set = QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");
    return set;
}

const QString& Alphanumeric_Set()
{
    static const QString set = QStringLiteral("0123456789") + Alpha_Set();
    return set;
}

/// The run of characters of `set` at `position`; one that reaches the end of the text counts like any other.
QString Run_At(const QString& set, const QString& source, int position)
{
    if (position > source.size()) return {};
    const int behind = Scan_Set_Span(source, set, position);
    return source.mid(position - 1, (behind == 0 ? int(source.size()) + 1 : behind) - position);
}

QString Take_Run(const QString& set, const QString& source, int& position)
{
    const QString run = Run_At(set, source, position);
    position += int(run.size());
    return run;
}

struct Kind_Row {
    const char* keyword;
    const char* label;
};
/// Row i describes type i + 1. The labels of SatVal and Unsharp differ from their keywords; both are in use.
constexpr std::array<Kind_Row, 9> Kind_Table{{
    {"ConOpt", "Contrast Optimize"},
    {"SatVal", "Saturation"},
    {"ColBal", "Color Balance"},
    {"Gamma", "Gamma"},
    {"Crop", "Crop"},
    {"Scale", "Scale"},
    {"Unsharp", "Sharpen"},
    {"Blur", "Blur"},
    {"Text", "Text"},
}};

struct Method_Row {
    const char* word;
    const char* label;
};
constexpr std::array<Method_Row, 8> Method_Table{{
    {"Box", "Box"},
    {"Triangle", "Triangle"},
    {"Bell", "Bell"},
    {"Hermite", "Hermite"},
    {"BSpline", "B-Spline"},
    {"Lanczos2", "Lanczos2"},
    {"Lanczos3", "Lanczos3"},
    {"Mitchell", "Mitchell"},
}};

constexpr char16_t Component_Letters[] = u"RGBLCMYK";

template <std::size_t Size, class Row>
int Index_In(const std::array<Row, Size>& table, const char* Row::*name, const QString& word)
{
    for (std::size_t i = 0; i < Size; ++i)
        if (Equal_Without_Case(word, QString::fromLatin1(table[i].*name))) return int(i) + 1;
    return 0;
}

template <std::size_t Size, class Row>
QString Name_In(const std::array<Row, Size>& table, const char* Row::*name, int index)
{
    return index >= 1 && index <= int(Size) ? QString::fromLatin1(table[std::size_t(index - 1)].*name) : QString();
}

} // namespace

QString Scan_Alpha_Token(const QString& source, int& position)
{
    return Take_Run(Alpha_Set(), source, position);
}

QString Scan_Alphanumeric_Token(const QString& source, int& position)
{
    return Take_Run(Alphanumeric_Set(), source, position);
}

std::optional<float> Scan_Single_Token(const QString& source, int& position)
{
    const QString run = Run_At(QStringLiteral("0123456789.+-"), source, position);
    if (run.isEmpty()) return Missing_Single;
    const auto number = Single_From_Text(run);
    if (number) position += int(run.size());
    return number;
}

std::optional<int> Scan_Long_Token(const QString& source, int& position)
{
    const QString run = Run_At(QStringLiteral("0123456789+-"), source, position);
    if (run.isEmpty()) return Missing_Long;
    const auto number = Long_From_Text(run);
    if (number) position += int(run.size());
    return number;
}

bool Scan_Required_Set(const QString& char_set, const QString& source, int& position)
{
    return !Take_Run(char_set, source, position).isEmpty();
}

QString Scan_Quoted_Token(const QString& source, int& position)
{
    if (position >= source.size() || source[position - 1] != u'"') return {};
    ++position;
    const auto closing = source.indexOf(u'"', position - 1);
    if (closing < 0) return {};
    const QString token = source.mid(position - 1, closing - (position - 1));
    position = int(closing) + 2;
    return token;
}

int Script_Item_Type_From_String(const QString& item)
{
    int position = 1;
    return Index_In(Kind_Table, &Kind_Row::keyword, Scan_Alpha_Token(item, position));
}

QString Script_Item_Type_Label(int type)
{
    return Name_In(Kind_Table, &Kind_Row::label, type);
}

QString Color_Components_To_String(int mask)
{
    QString letters;
    for (int bit = 0; bit < 8; ++bit)
        if (mask & (1 << bit)) letters += Component_Letters[bit];
    return letters;
}

int Color_Components_From_String(const QString& letters)
{
    int mask = 0;
    for (int bit = 0; bit < 8; ++bit)
        if (letters.contains(QChar(Component_Letters[bit]), Qt::CaseInsensitive)) mask |= 1 << bit;
    return mask;
}

QString Interpolation_Method_To_String(int index)
{
    return Name_In(Method_Table, &Method_Row::word, index);
}

int Interpolation_Method_From_String(const QString& word)
{
    return Index_In(Method_Table, &Method_Row::word, word);
}

QString Interpolation_Method_Label(int index)
{
    return Name_In(Method_Table, &Method_Row::label, index);
}
