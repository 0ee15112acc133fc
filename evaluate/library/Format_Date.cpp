#include "evaluate/library/Format_Pattern.h"
#include "evaluate/variant/Conversions.h"
#include "evaluate/variant/Dates.h"

#include <algorithm>

// A date pattern: runs of the letters c d w m q y h n s t, the halves of the day, and everything else as it stands.
namespace Formula {

namespace {

/// How a pattern names the half of the day.
struct Half_Name {
    const char* pattern;
    const char* before_noon;
    const char* after_noon;
};

constexpr Half_Name Half_Names[] = {
    {"AM/PM", "AM", "PM"}, {"am/pm", "am", "pm"}, {"A/P", "A", "P"}, {"a/p", "a", "p"}, {"AMPM", "AM", "PM"},
};

bool Stands_At(const Pattern_Letters& section, std::size_t place, QLatin1StringView text, Qt::CaseSensitivity sense)
{
    if (place + std::size_t(text.size()) > section.size()) return false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const auto& [letter, is_literal] = section[place + std::size_t(i)];
        const bool is_same =
            sense == Qt::CaseSensitive ? letter == text[i] : letter.toLower() == QChar(text[i]).toLower();
        if (is_literal || !is_same) return false;
    }
    return true;
}

// The exact spelling first, so that "am/pm" stays small; then any other.
const Half_Name* Half_At(const Pattern_Letters& section, std::size_t place)
{
    if (section[place].letter != u'a' && section[place].letter != u'A') return nullptr;
    for (const auto sense : {Qt::CaseSensitive, Qt::CaseInsensitive})
        for (const auto& row : Half_Names)
            if (Stands_At(section, place, QLatin1StringView(row.pattern), sense)) return &row;
    return nullptr;
}

QString Padded(int value, int width)
{
    QChar digits[12];
    int count = 0;
    for (int rest = value; rest > 0 || count == 0; rest /= 10) digits[count++] = QChar(u'0' + rest % 10);
    while (count < width) digits[count++] = u'0';
    std::reverse(digits, digits + count);
    return QString(digits, count);
}

QString Short_Date(const Date_Parts& parts)
{
    return QStringLiteral("%1/%2/%3").arg(parts.month).arg(parts.day).arg(parts.year);
}

QString Long_Date(const Date_Parts& parts)
{
    return QStringLiteral("%1, %2 %3, %4")
        .arg(QLatin1StringView(Day_Names[parts.weekday - 1]), QLatin1StringView(Month_Names[parts.month - 1]))
        .arg(parts.day)
        .arg(parts.year);
}

class Date_Writer {
public:
    Date_Writer(double days, const Pattern_Letters& section, const Week_Rule& rule)
        : days_(days), parts_(Parts_Of(days)), section_(section), rule_(rule)
    {
        for (std::size_t i = 0; i < section.size(); ++i) has_halves_ = has_halves_ || Half_At(section, i);
    }

    QString Written()
    {
        text_.reserve(qsizetype(section_.size()) + 16);
        for (std::size_t i = 0; i < section_.size();) {
            const auto& [letter, is_literal] = section_[i];
            const auto low = letter.toLower();
            if (const auto* half = Half_At(section_, i)) {
                text_ += QLatin1StringView(parts_.hour < 12 ? half->before_noon : half->after_noon);
                i += std::size_t(QLatin1StringView(half->pattern).size());
            } else if (!is_literal && QLatin1StringView("cdwmqyhnst").contains(low)) {
                i += Write_Run(low, i);
            } else {
                text_ += letter;
                ++i;
            }
        }
        return text_;
    }

private:
    std::size_t Write_Run(QChar letter, std::size_t place)
    {
        const auto most = letter == u'd'                     ? 6u
                          : letter == u't'                   ? 5u
                          : letter == u'm' || letter == u'y' ? 4u
                          : letter == u'c' || letter == u'q' ? 1u
                                                             : 2u;
        std::size_t count = 0;
        while (count < most && place + count < section_.size() && !section_[place + count].is_literal &&
               section_[place + count].letter.toLower() == letter)
            ++count;
        text_ += Run_Text(letter, int(count));
        after_hour_ = letter == u'h';
        return count;
    }

    QString Run_Text(QChar letter, int count) const
    {
        switch (letter.unicode()) {
        case u'c': return Text_From_Date(days_);
        case u'd': return Day_Text(count);
        case u'w': return QString::number(count == 1 ? Weekday_By(days_, rule_) : Week_Of_Year(days_, rule_));
        // Directly behind the hour it is the minute.
        case u'm': return after_hour_ && count <= 2 ? Padded(parts_.minute, count) : Month_Text(count);
        case u'q': return QString::number((parts_.month + 2) / 3);
        case u'y': return Year_Text(count);
        case u'h': return Padded(has_halves_ ? (parts_.hour + 11) % 12 + 1 : parts_.hour, count);
        case u'n': return Padded(parts_.minute, count);
        case u's': return Padded(parts_.second, count);
        default: return Time_Text(count);
        }
    }

    QString Day_Text(int count) const
    {
        const auto name = QString::fromLatin1(Day_Names[parts_.weekday - 1]);
        switch (count) {
        case 3: return name.left(3);
        case 4: return name;
        case 5: return Short_Date(parts_);
        case 6: return Long_Date(parts_);
        default: return Padded(parts_.day, count);
        }
    }

    QString Month_Text(int count) const
    {
        const auto name = QString::fromLatin1(Month_Names[parts_.month - 1]);
        return count == 4 ? name : count == 3 ? name.left(3) : Padded(parts_.month, count);
    }

    QString Year_Text(int count) const
    {
        if (count == 1) return QString::number(Day_Of_Year(parts_));
        return count == 2 ? Padded(parts_.year % 100, 2) : Padded(parts_.year, 4);
    }

    // Only the full run means the time; fewer letters stand for themselves.
    QString Time_Text(int count) const
    {
        if (count < 5) return QString(count, u't');
        return QString::asprintf("%d:%02d:%02d %s", (parts_.hour + 11) % 12 + 1, parts_.minute, parts_.second,
                                 parts_.hour < 12 ? "AM" : "PM");
    }

    double days_;
    Date_Parts parts_;
    const Pattern_Letters& section_;
    const Week_Rule& rule_;
    bool has_halves_ = false, after_hour_ = false;
    QString text_;
};

} // namespace

QString Formatted_Date(double days, const Pattern_Letters& section, const Week_Rule& rule)
{
    return Date_Writer(days, section, rule).Written();
}

} // namespace Formula
