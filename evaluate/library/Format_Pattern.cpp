#include "evaluate/library/Format_Pattern.h"

#include "evaluate/variant/Conversions.h"
#include "evaluate/variant/Dates.h"

#include <cmath>

namespace Formula {

namespace {

using Type = Variant_Type;

struct Named_Pattern {
    const char* name;
    const char* pattern;
};

constexpr Named_Pattern Named_Patterns[] = {
    {"General Date", "c"},
    {"Long Date", "dddd, mmmm d, yyyy"},
    {"Medium Date", "dd-mmm-yy"},
    {"Short Date", "m/d/yyyy"},
    {"Long Time", "h:nn:ss AM/PM"},
    {"Medium Time", "hh:nn AM/PM"},
    {"Short Time", "hh:nn"},
    {"Currency", "$#,##0.00;($#,##0.00)"},
    {"Fixed", "0.00"},
    {"Standard", "#,##0.00"},
    {"Percent", "0.00%"},
    {"Scientific", "0.00E+00"},
    {"Yes/No", "\"Yes\";\"Yes\";\"No\""},
    {"True/False", "\"True\";\"True\";\"False\""},
    {"On/Off", "\"On\";\"On\";\"Off\""},
};

bool Is_One_Of(QChar c, const char* letters)
{
    return QLatin1StringView(letters).contains(c);
}

// A value as the number that a number or date pattern wants; nothing for a text that is none.
std::optional<double> Number_For(const Variant& value, Pattern_Kind kind)
{
    if (kind == Pattern_Kind::Date && value.Is_String()) {
        const auto date = Date_From_Text(value.Text(), This_Year());
        if (date) return *date;
    }
    auto number = To_Double(value);
    if (!number && value.Is_String()) number = Date_From_Text(value.Text(), This_Year());
    return number ? std::optional(*number) : std::nullopt;
}

Evaluated<QString> With_Sections(const Variant& value, const std::vector<Pattern_Letters>& sections,
                                 const Week_Rule& rule)
{
    auto kind = Pattern_Kind::Number;
    for (const auto& section : sections) {
        kind = Kind_Of(section);
        if (kind != Pattern_Kind::Number) break;
    }
    if (value.Is_Null()) {
        if (kind == Pattern_Kind::Text) return Formatted_Text(QString(), sections);
        return sections.size() > 3 ? Formatted_Number(0, {sections[3]}) : QString();
    }
    const auto text = To_Text(value);
    if (!text) return Fails(text.error());
    if (kind == Pattern_Kind::Text) return Formatted_Text(*text, sections);
    const auto number = Number_For(value, kind);
    if (!number) return *text; // a text that is no number and no date stays as it is
    if (kind == Pattern_Kind::Number) return Formatted_Number(*number, sections);
    if (!Is_Date_In_Range(*number)) return Fails(Error_Number::Overflow);
    return Formatted_Date(*number, sections[0], rule);
}

} // namespace

std::vector<Pattern_Letters> Sections_Of(QStringView pattern)
{
    std::vector<Pattern_Letters> sections(1);
    bool is_quoted = false;
    for (qsizetype i = 0; i < pattern.size(); ++i) {
        const auto c = pattern[i];
        if (c == u'"') {
            is_quoted = !is_quoted;
        } else if (is_quoted) {
            sections.back().push_back({c, true});
        } else if (c == u'\\' && i + 1 < pattern.size()) {
            sections.back().push_back({pattern[++i], true});
        } else if (c == u';' && sections.size() < 4) {
            sections.emplace_back();
        } else {
            sections.back().push_back({c, false});
        }
    }
    return sections;
}

Pattern_Kind Kind_Of(const Pattern_Letters& section)
{
    for (const auto& [letter, is_literal] : section) {
        if (is_literal) continue;
        if (Is_One_Of(letter, "@&<>!")) return Pattern_Kind::Text;
        if (Is_One_Of(letter, "0#%")) return Pattern_Kind::Number;
        if (Is_One_Of(letter.toLower(), "cdwmqyhnst")) return Pattern_Kind::Date;
        if (letter.toLower() == u'a') return Pattern_Kind::Date;
    }
    return Pattern_Kind::Number;
}

Evaluated<QString> Formatted(const Variant& value, const QString& pattern, const Week_Rule& rule)
{
    if (value.Is_Array() || value.Is_Missing()) return Fails(Error_Number::Type_Mismatch);
    if (pattern.isEmpty()) return To_Display_Text(value);
    if (value.Is_Empty()) return QString(); // nothing, not zero
    if (pattern.compare(QLatin1StringView("General Number"), Qt::CaseInsensitive) == 0) {
        const auto number = value.Is_Null() ? std::nullopt : Number_For(value, Pattern_Kind::Number);
        return number ? Text_From_Double(*number) : To_Display_Text(value);
    }
    for (const auto& row : Named_Patterns)
        if (pattern.compare(QLatin1StringView(row.name), Qt::CaseInsensitive) == 0)
            return With_Sections(value, Sections_Of(QString::fromLatin1(row.pattern)), rule);
    return With_Sections(value, Sections_Of(pattern), rule);
}

} // namespace Formula
