#include "evaluate/variant/Dates.h"

#include <optional>
#include <vector>

// text   := date [ time ] | time [ date ]
// date   := item { separator item }, two or three items of which one may be the name of a month
// time   := number ":" number [ ":" number ] [ half ] | number half, half := "AM" | "PM" | "A" | "P"
namespace Formula {

namespace {

enum class Kind { Number, Month, Half, Colon, Slash, Comma };

struct Token {
    Kind kind = Kind::Number;
    int value = 0;  ///< a number, a month from 1, or 0 and 12 for the halves of the day
    int digits = 0; ///< of a number
};

using Tokens = std::vector<Token>;

bool Is_Name(QStringView word, const char* name, bool may_be_short)
{
    const QLatin1StringView full(name);
    return word.compare(full, Qt::CaseInsensitive) == 0 ||
           (may_be_short && word.compare(full.left(3), Qt::CaseInsensitive) == 0);
}

std::optional<Token> Word_Token(QStringView word)
{
    for (int month = 1; month <= 12; ++month)
        if (Is_Name(word, Month_Names[month - 1], true)) return Token{Kind::Month, month, 0};
    if (Is_Name(word, "AM", false) || Is_Name(word, "A", false)) return Token{Kind::Half, 0, 0};
    if (Is_Name(word, "PM", false) || Is_Name(word, "P", false)) return Token{Kind::Half, 12, 0};
    return std::nullopt; // a weekday too: a date with its day's name is not read
}

std::optional<Token> Number_Token(QStringView digits)
{
    if (digits.size() > 4) return std::nullopt;
    return Token{Kind::Number, digits.toInt(), int(digits.size())};
}

std::optional<Token> Mark_Token(QChar c)
{
    if (c == u':') return Token{Kind::Colon, 0, 0};
    if (c == u'/' || c == u'-') return Token{Kind::Slash, 0, 0};
    if (c == u',') return Token{Kind::Comma, 0, 0};
    return std::nullopt;
}

bool Is_Digit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

std::optional<Tokens> Tokens_Of(QStringView text)
{
    Tokens tokens;
    for (qsizetype place = 0; place < text.size();) {
        if (tokens.size() > 16) return std::nullopt; // no date is that long
        const auto begin = place;
        std::optional<Token> token;
        if (text[place].isSpace()) {
            ++place;
            continue;
        }
        if (Is_Digit(text[place])) {
            while (place < text.size() && Is_Digit(text[place])) ++place;
            token = Number_Token(text.mid(begin, place - begin));
        } else if (text[place].isLetter()) {
            while (place < text.size() && text[place].isLetter()) ++place;
            token = Word_Token(text.mid(begin, place - begin));
            if (token && token->kind == Kind::Month && place < text.size() && text[place] == u'.') ++place;
        } else {
            token = Mark_Token(text[place++]);
        }
        if (!token) return std::nullopt;
        tokens.push_back(*token);
    }
    return tokens;
}

bool Is_Kind(const Tokens& tokens, std::size_t place, Kind kind)
{
    return place < tokens.size() && tokens[place].kind == kind;
}

/// A time of day and the tokens that made it.
struct Time_Run {
    std::size_t begin = 0, end = 0;
    int seconds = 0;
};

// Where a time begins: a number before ":" or before a half of the day.
std::optional<std::size_t> Time_Begin(const Tokens& tokens)
{
    for (std::size_t i = 0; i + 1 < tokens.size(); ++i)
        if (tokens[i].kind == Kind::Number &&
            (Is_Kind(tokens, i + 1, Kind::Colon) || Is_Kind(tokens, i + 1, Kind::Half)))
            return i;
    return std::nullopt;
}

std::optional<int> Hour_With_Half(int hour, std::optional<int> half)
{
    if (!half) return hour;
    if (hour > 12) return *half == 12 ? std::optional(hour) : std::nullopt;
    return hour % 12 + *half;
}

std::optional<Time_Run> Time_At(const Tokens& tokens, std::size_t begin)
{
    int values[3] = {tokens[begin].value, 0, 0};
    auto place = begin + 1;
    for (int part = 1; part < 3 && Is_Kind(tokens, place, Kind::Colon); ++part) {
        if (!Is_Kind(tokens, place + 1, Kind::Number)) return std::nullopt;
        values[part] = tokens[place + 1].value;
        place += 2;
    }
    std::optional<int> half;
    if (Is_Kind(tokens, place, Kind::Half)) half = tokens[place++].value;
    const auto hour = Hour_With_Half(values[0], half);
    if (!hour || *hour > 23 || values[1] > 59 || values[2] > 59) return std::nullopt;
    return Time_Run{begin, place, *hour * 3600 + values[1] * 60 + values[2]};
}

/// The items of a date in the order in which they stand.
struct Date_Items {
    std::vector<Token> numbers;
    int month = 0; ///< from a name; 0 without
};

std::optional<Date_Items> Items_Of(const Tokens& tokens)
{
    Date_Items items;
    bool has_comma = false, after_mark = true;
    for (const auto& token : tokens) {
        const bool is_mark = token.kind == Kind::Slash || token.kind == Kind::Comma;
        if (is_mark ? after_mark : token.kind != Kind::Number && token.kind != Kind::Month) return std::nullopt;
        after_mark = is_mark;
        has_comma = has_comma || token.kind == Kind::Comma;
        if (token.kind == Kind::Number) items.numbers.push_back(token);
        if (token.kind == Kind::Month) {
            if (items.month) return std::nullopt;
            items.month = token.value;
        }
    }
    // "1,200" is a number: a comma makes a date only beside a month's name.
    if (after_mark || items.numbers.empty() || (has_comma && !items.month)) return std::nullopt;
    return items;
}

bool Is_Year_Like(const Token& token)
{
    return token.digits >= 3;
}

std::optional<std::int64_t> Calendar_Day(const Token& year, int month, int day)
{
    const int full = year.digits <= 2 ? Full_Year(year.value) : year.value;
    if (full < 100 || month < 1 || month > 12 || day < 1 || day > Days_In_Month(full, month)) return std::nullopt;
    const auto number = Day_Number(full, month, day);
    return number ? std::optional(*number) : std::nullopt;
}

using Day = std::optional<std::int64_t>;

Day First_Of(std::initializer_list<Day> readings)
{
    for (const auto& reading : readings)
        if (reading) return reading;
    return std::nullopt;
}

Day Day_With_Month_Name(const Date_Items& items, int this_year)
{
    const auto& first = items.numbers[0];
    if (items.numbers.size() == 1) {
        const Token year{Kind::Number, this_year, 4};
        const auto day = Is_Year_Like(first) ? Day() : Calendar_Day(year, items.month, first.value);
        return First_Of({day, Calendar_Day(first, items.month, 1)});
    }
    const auto& second = items.numbers[1];
    const auto year_last = Is_Year_Like(first) ? Day() : Calendar_Day(second, items.month, first.value);
    const auto year_first = Is_Year_Like(second) ? Day() : Calendar_Day(first, items.month, second.value);
    return First_Of({year_last, year_first});
}

Day Day_Of_Two(const Token& first, const Token& second, int this_year)
{
    const Token year{Kind::Number, this_year, 4};
    if (Is_Year_Like(first)) return Calendar_Day(first, second.value, 1);
    if (Is_Year_Like(second)) return Calendar_Day(second, first.value, 1);
    return First_Of({Calendar_Day(year, first.value, second.value), Calendar_Day(year, second.value, first.value),
                     Calendar_Day(second, first.value, 1)});
}

Day Day_Of_Three(const Token& first, const Token& second, const Token& third)
{
    if (Is_Year_Like(first))
        return First_Of(
            {Calendar_Day(first, second.value, third.value), Calendar_Day(first, third.value, second.value)});
    return First_Of({Calendar_Day(third, first.value, second.value), Calendar_Day(third, second.value, first.value),
                     Is_Year_Like(third) ? Day() : Calendar_Day(first, second.value, third.value)});
}

Day Day_Of(const Date_Items& items, int this_year)
{
    const auto& numbers = items.numbers;
    if (items.month) return numbers.size() <= 2 ? Day_With_Month_Name(items, this_year) : Day();
    if (numbers.size() == 2) return Day_Of_Two(numbers[0], numbers[1], this_year);
    if (numbers.size() == 3) return Day_Of_Three(numbers[0], numbers[1], numbers[2]);
    return std::nullopt;
}

std::optional<double> Read(QStringView text, int this_year)
{
    auto tokens = Tokens_Of(text);
    if (!tokens || tokens->empty()) return std::nullopt;
    int seconds = 0;
    if (const auto begin = Time_Begin(*tokens)) {
        const auto time = Time_At(*tokens, *begin);
        if (!time || (time->begin > 0 && time->end < tokens->size())) return std::nullopt;
        seconds = time->seconds;
        tokens->erase(tokens->begin() + std::ptrdiff_t(time->begin), tokens->begin() + std::ptrdiff_t(time->end));
        if (tokens->empty()) return seconds / 86400.0;
    }
    const auto items = Items_Of(*tokens);
    if (!items) return std::nullopt;
    const auto day = Day_Of(*items, this_year);
    if (!day) return std::nullopt;
    const auto date = Date_From(*day, seconds);
    return date ? std::optional(*date) : std::nullopt;
}

} // namespace

Evaluated<double> Date_From_Text(QStringView text, int this_year)
{
    const auto date = Read(text, this_year);
    if (!date) return Fails(Error_Number::Type_Mismatch);
    return *date;
}

} // namespace Formula
