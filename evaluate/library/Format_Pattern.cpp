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

/// A pattern taken apart, since a formula formats row after row with the same one.
struct Prepared_Pattern {
    QString pattern;
    bool is_general_number = false;
    std::vector<Pattern_Letters> sections;
    Pattern_Kind kind = Pattern_Kind::Number;
    Date_Steps date; ///< of the first section, when the kind is Date
};

Prepared_Pattern Prepared(const QString& pattern)
{
    Prepared_Pattern prepared;
    prepared.pattern = pattern;
    prepared.is_general_number = pattern.compare(QLatin1StringView("General Number"), Qt::CaseInsensitive) == 0;
    QString meant = pattern;
    for (const auto& row : Named_Patterns)
        if (pattern.compare(QLatin1StringView(row.name), Qt::CaseInsensitive) == 0)
            meant = QString::fromLatin1(row.pattern);
    prepared.sections = Sections_Of(meant);
    // The first section that tells; in "0.00;;;Nil" the last is no date.
    for (const auto& section : prepared.sections) {
        if (const auto kind = Kind_Of(section)) {
            prepared.kind = *kind;
            break;
        }
    }
    if (prepared.kind == Pattern_Kind::Date) prepared.date = Date_Steps_Of(prepared.sections[0]);
    return prepared;
}

constexpr qsizetype Longest_Remembered = 256;

/// The last few patterns; a formula seldom holds more.
const Prepared_Pattern& Remembered_Pattern(const QString& pattern)
{
    constexpr std::size_t most = 8;
    thread_local std::vector<Prepared_Pattern> remembered;
    thread_local std::size_t next = 0;
    for (const auto& known : remembered)
        if (known.pattern == pattern) return known;
    if (remembered.size() < most) return remembered.emplace_back(Prepared(pattern));
    next = (next + 1) % most;
    return remembered[next] = Prepared(pattern);
}

Evaluated<QString> With_Sections(const Variant& value, const Prepared_Pattern& pattern, const Week_Rule& rule)
{
    const auto& sections = pattern.sections;
    if (value.Is_Null()) {
        if (pattern.kind == Pattern_Kind::Text) return Formatted_Text(QString(), sections);
        return sections.size() > 3 ? Formatted_Number(0, {sections[3]}) : QString();
    }
    if (pattern.kind == Pattern_Kind::Text) {
        const auto text = To_Text(value);
        if (!text) return Fails(text.error());
        return Formatted_Text(*text, sections);
    }
    const auto number = Number_For(value, pattern.kind);
    if (!number) return To_Text(value); // a text that is no number and no date stays as it is
    if (pattern.kind == Pattern_Kind::Number) return Formatted_Number(*number, sections);
    if (!Is_Date_In_Range(*number)) return Fails(Error_Number::Overflow);
    return Formatted_Date(*number, pattern.date, rule);
}

Evaluated<QString> With_Pattern(const Variant& value, const Prepared_Pattern& pattern, const Week_Rule& rule)
{
    if (!pattern.is_general_number) return With_Sections(value, pattern, rule);
    const auto number = value.Is_Null() ? std::nullopt : Number_For(value, Pattern_Kind::Number);
    return number ? Text_From_Double(*number) : To_Display_Text(value);
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

std::optional<Pattern_Kind> Kind_Of(const Pattern_Letters& section)
{
    for (const auto& [letter, is_literal] : section) {
        if (is_literal) continue;
        if (Is_One_Of(letter, "@&<>!")) return Pattern_Kind::Text;
        if (Is_One_Of(letter, "0#%")) return Pattern_Kind::Number;
        if (Is_One_Of(letter.toLower(), "cdwmqyhnst")) return Pattern_Kind::Date;
        if (letter.toLower() == u'a') return Pattern_Kind::Date;
    }
    return std::nullopt;
}

Evaluated<QString> Formatted(const Variant& value, const QString& pattern, const Week_Rule& rule)
{
    if (value.Is_Array() || value.Is_Missing()) return Fails(Error_Number::Type_Mismatch);
    if (pattern.isEmpty()) return To_Display_Text(value);
    if (value.Is_Empty()) return QString(); // nothing, not zero
    if (pattern.size() > Longest_Remembered) return With_Pattern(value, Prepared(pattern), rule);
    return With_Pattern(value, Remembered_Pattern(pattern), rule);
}

} // namespace Formula
