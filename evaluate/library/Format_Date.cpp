#include "evaluate/library/Format_Pattern.h"
#include "evaluate/variant/Conversions.h"
#include "evaluate/variant/Dates.h"
#include "frame/files/Limits.h"

#include <QtCore/QVarLengthArray>

// A date pattern: runs of the letters c d w m q y h n s t, the halves of the day, and everything else as it stands. It is
// taken apart into steps once; a date is written by going through them.
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

/// A letter that means something, and the longest run of it.
struct Run_Row {
    char16_t letter;
    Date_Sign sign;
    int most;
};

constexpr Run_Row Runs[] = {
    {u'c', Date_Sign::General, 1}, {u'd', Date_Sign::Day, 6},  {u'w', Date_Sign::Week, 2}, {u'm', Date_Sign::Month, 4},
    {u'q', Date_Sign::Quarter, 1}, {u'y', Date_Sign::Year, 4}, {u'h', Date_Sign::Hour, 2}, {u'n', Date_Sign::Minute, 2},
    {u's', Date_Sign::Second, 2},  {u't', Date_Sign::Time, 5},
};

const Run_Row* Run_Of(const Pattern_Letter& letter)
{
    if (letter.is_literal) return nullptr;
    const auto low = letter.letter.toLower();
    const auto* row =
        std::find_if(std::begin(Runs), std::end(Runs), [&](const Run_Row& run) { return run.letter == low; });
    return row == std::end(Runs) ? nullptr : row;
}

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

/// A date on its way into a text. Most are short.
class Date_Writer {
public:
    Date_Writer(double days, const Week_Rule& rule) : days_(days), parts_(Parts_Of(days)), rule_(rule) {}

    void Write(const Date_Step& step)
    {
        switch (step.sign) {
        case Date_Sign::Literal: text_.append(step.letter); break;
        case Date_Sign::Half: Write_Half(Half_Names[step.count]); break;
        case Date_Sign::General: Add(Text_From_Date(days_)); break;
        case Date_Sign::Day: Write_Day(step.count); break;
        case Date_Sign::Week: Add(step.count == 1 ? Weekday_By(days_, rule_) : Week_Of_Year(days_, rule_)); break;
        case Date_Sign::Month: Write_Month(step.count); break;
        case Date_Sign::Quarter: Add((parts_.month + 2) / 3); break;
        case Date_Sign::Year: Write_Year(step.count); break;
        case Date_Sign::Hour: Add(parts_.hour, step.count); break;
        case Date_Sign::Half_Hour: Add((parts_.hour + 11) % 12 + 1, step.count); break;
        case Date_Sign::Minute: Add(parts_.minute, step.count); break;
        case Date_Sign::Second: Add(parts_.second, step.count); break;
        case Date_Sign::Time: Write_Time(step.count); break;
        }
    }

    qsizetype Size() const { return text_.size(); }
    QString Text() const { return QString(text_.data(), text_.size()); }

private:
    void Add(const char* latin)
    {
        for (; *latin; ++latin) text_.append(QLatin1Char(*latin));
    }

    void Add(const QString& text) { text_.append(text.data(), text.size()); }

    void Add(int value, int width = 1)
    {
        char16_t digits[12];
        int count = 0;
        for (int rest = value; rest > 0 || count == 0; rest /= 10) digits[count++] = char16_t(u'0' + rest % 10);
        while (count < width) digits[count++] = u'0';
        while (count > 0) text_.append(QChar(digits[--count]));
    }

    void Add_Short(const char* name)
    {
        for (int i = 0; i < 3; ++i) text_.append(QLatin1Char(name[i]));
    }

    void Write_Half(const Half_Name& name) { Add(parts_.hour < 12 ? name.before_noon : name.after_noon); }

    void Write_Day(int count)
    {
        const char* name = Day_Names[parts_.weekday - 1];
        switch (count) {
        case 3: Add_Short(name); break;
        case 4: Add(name); break;
        case 5: Write_Short_Date(); break;
        case 6: Write_Long_Date(name); break;
        default: Add(parts_.day, count); break;
        }
    }

    void Write_Short_Date()
    {
        Add(parts_.month);
        Add("/");
        Add(parts_.day);
        Add("/");
        Add(parts_.year);
    }

    void Write_Long_Date(const char* name)
    {
        Add(name);
        Add(", ");
        Add(Month_Names[parts_.month - 1]);
        Add(" ");
        Add(parts_.day);
        Add(", ");
        Add(parts_.year);
    }

    void Write_Month(int count)
    {
        const char* name = Month_Names[parts_.month - 1];
        if (count == 3)
            Add_Short(name);
        else if (count == 4)
            Add(name);
        else
            Add(parts_.month, count);
    }

    void Write_Year(int count)
    {
        if (count == 1)
            Add(Day_Of_Year(parts_));
        else if (count == 2)
            Add(parts_.year % 100, 2);
        else
            Add(parts_.year, 4);
    }

    // Only the full run means the time; fewer letters stand for themselves.
    void Write_Time(int count)
    {
        if (count < 5)
            for (; count > 0; --count) Add("t");
        else
            Add(Text_From_Time(parts_));
    }

    double days_;
    Date_Parts parts_;
    const Week_Rule& rule_;
    QVarLengthArray<QChar, 64> text_;
};

} // namespace

Date_Steps Date_Steps_Of(const Pattern_Letters& section)
{
    bool has_halves = false, after_hour = false;
    for (std::size_t i = 0; i < section.size() && !has_halves; ++i) has_halves = Half_At(section, i);
    Date_Steps steps;
    for (std::size_t i = 0; i < section.size();) {
        if (const auto* half = Half_At(section, i)) {
            steps.push_back({.sign = Date_Sign::Half, .count = std::uint8_t(half - Half_Names)});
            i += std::size_t(QLatin1StringView(half->pattern).size());
        } else if (const auto* run = Run_Of(section[i])) {
            Date_Step step{.sign = run->sign, .count = 1};
            while (step.count < run->most && i + std::size_t(step.count) < section.size() &&
                   Run_Of(section[i + std::size_t(step.count)]) == run)
                ++step.count;
            i += std::size_t(step.count);
            // Directly behind the hour it is the minute.
            if (after_hour && step.sign == Date_Sign::Month && step.count <= 2) step.sign = Date_Sign::Minute;
            after_hour = step.sign == Date_Sign::Hour;
            if (after_hour && has_halves) step.sign = Date_Sign::Half_Hour;
            steps.push_back(step);
        } else {
            steps.push_back({.sign = Date_Sign::Literal, .letter = section[i++].letter});
        }
    }
    return steps;
}

QString Formatted_Date(double days, const Date_Steps& steps, const Week_Rule& rule)
{
    Date_Writer writer(days, rule);
    for (const Date_Step& step : steps) {
        writer.Write(step);
        if (writer.Size() > Current_Limits().formula_string_characters)
            break; // one letter can become many: no more of it
    }
    return writer.Text();
}

} // namespace Formula
