#include "evaluate/variant/Conversions.h"

#include <QtCore/QByteArray>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>

// number  := { sign | "(" | "$" | blank } digits [ "." digits ] [ ("E" | "D") [ sign ] digits ] { sign | ")" | blank }
// radix   := "&" ("H" | "O") digits
namespace Formula {

namespace {

bool Is_Digit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

// A decimal number in plain letters to a double. Too small is 0, too large an overflow.
Evaluated<double> Double_From_Digits(const QByteArray& digits, qint64 decimal_magnitude)
{
    double value = 0;
    const auto [end, problem] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (problem == std::errc::result_out_of_range) {
        if (decimal_magnitude > 0) return Fails(Error_Number::Overflow);
        return 0.0;
    }
    if (problem != std::errc()) return Fails(Error_Number::Type_Mismatch);
    if (!std::isfinite(value)) return Fails(Error_Number::Overflow);
    return value;
}

/// The digits, point and exponent of a number, collected in the form that from_chars reads.
struct Decimal {
    QByteArray letters;
    qint64 magnitude = 0; ///< places of the whole part after leading zeros, minus zeros behind the point, plus exponent
    bool has_digits = false;
};

// Takes an exponent if a whole one stands here; `place` stays where it is otherwise.
void Take_Exponent(QStringView text, qsizetype& place, Decimal& decimal)
{
    if (place >= text.size()) return;
    const auto letter = text[place].toUpper();
    if (letter != u'E' && letter != u'D') return;
    auto next = place + 1;
    const bool is_signed = next < text.size() && (text[next] == u'+' || text[next] == u'-');
    const bool is_negative = is_signed && text[next] == u'-';
    if (is_signed) ++next;
    if (next >= text.size() || !Is_Digit(text[next])) return;
    qint64 exponent = 0;
    for (; next < text.size() && Is_Digit(text[next]); ++next)
        exponent = std::min<qint64>(exponent * 10 + text[next].digitValue(), 1'000'000'000);
    decimal.letters += 'e' + QByteArray::number(is_negative ? -exponent : exponent);
    decimal.magnitude += is_negative ? -exponent : exponent;
    place = next;
}

Decimal Take_Decimal(QStringView text, qsizetype& place, bool with_commas)
{
    Decimal decimal;
    bool is_fraction = false, is_significant = false;
    for (; place < text.size(); ++place) {
        const auto c = text[place];
        if (Is_Digit(c)) {
            decimal.has_digits = true;
            is_significant = is_significant || c != u'0';
            if (is_significant && !is_fraction) ++decimal.magnitude;
            if (!is_significant && is_fraction) --decimal.magnitude;
            decimal.letters += char(c.unicode());
        } else if (c == u'.' && !is_fraction) {
            is_fraction = true;
            decimal.letters += '.';
        } else if (!(c == u',' && with_commas && decimal.has_digits && !is_fraction)) {
            break;
        }
    }
    if (decimal.has_digits) Take_Exponent(text, place, decimal);
    return decimal;
}

struct Radix_Number {
    std::uint64_t value = 0;
    bool is_complete = false; ///< nothing stood behind its digits
    bool is_too_large = false;
    bool has_long_mark = false; ///< "&" behind the digits
};

// "&H" and "&O" forms; nothing when the text does not begin with one. Without digits it is not complete.
std::optional<Radix_Number> Radix_From_Text(QStringView text)
{
    if (text.size() < 2 || text[0] != u'&') return std::nullopt;
    const auto letter = text[1].toUpper();
    if (letter != u'H' && letter != u'O') return std::nullopt;
    const int radix = letter == u'H' ? 16 : 8;
    Radix_Number number;
    qsizetype place = 2;
    for (; place < text.size(); ++place) {
        const auto c = text[place].toUpper().unicode();
        const int digit = c >= '0' && c <= '9' ? c - '0' : c >= 'A' && c <= 'F' ? c - 'A' + 10 : 99;
        if (digit >= radix) break;
        number.is_too_large = number.is_too_large || number.value > (~std::uint64_t(0) >> 8);
        number.value = number.value * std::uint64_t(radix) + std::uint64_t(digit);
    }
    number.has_long_mark = place < text.size() && text[place] == u'&';
    number.is_complete = place > 2 && place == text.size();
    return number;
}

template <class Whole, class Bits>
Evaluated<Whole> Whole_From_Text(QStringView text)
{
    if (const auto radix = Radix_From_Text(text.trimmed())) {
        if (!radix->is_complete) return Fails(Error_Number::Type_Mismatch);
        if (radix->is_too_large || radix->value > std::numeric_limits<Bits>::max())
            return Fails(Error_Number::Overflow);
        return Whole(Bits(radix->value));
    }
    const auto number = Number_From_Text(text);
    if (!number) return Fails(number.error());
    const double whole = Round_Half_Even(*number);
    if (whole < double(std::numeric_limits<Whole>::min()) || whole > double(std::numeric_limits<Whole>::max()))
        return Fails(Error_Number::Overflow);
    return Whole(whole);
}

/// What may stand once before or behind a number.
struct Number_Marks {
    int signs = 0, currency = 0, open = 0, closed = 0;
    bool is_negative = false;
};

void Take_Leading_Marks(QStringView text, qsizetype& place, Number_Marks& marks)
{
    for (; place < text.size(); ++place) {
        const auto c = text[place];
        if (c == u'+' || c == u'-') {
            ++marks.signs;
            marks.is_negative = c == u'-';
        } else if (c == u'$') {
            ++marks.currency;
        } else if (c == u'(') {
            ++marks.open;
        } else if (!c.isSpace()) {
            return;
        }
    }
}

void Take_Trailing_Marks(QStringView text, qsizetype& place, Number_Marks& marks)
{
    for (; place < text.size(); ++place) {
        const auto c = text[place];
        if (c == u'+' || c == u'-') {
            ++marks.signs;
            marks.is_negative = marks.is_negative || c == u'-';
        } else if (c == u')') {
            ++marks.closed;
        } else if (!c.isSpace()) {
            return;
        }
    }
}

} // namespace

Evaluated<double> Number_From_Text(QStringView text)
{
    if (const auto radix = Radix_From_Text(text.trimmed())) {
        if (!radix->is_complete) return Fails(Error_Number::Type_Mismatch);
        if (radix->is_too_large) return Fails(Error_Number::Overflow);
        return double(radix->value);
    }
    qsizetype place = 0;
    Number_Marks marks;
    Take_Leading_Marks(text, place, marks);
    const auto decimal = Take_Decimal(text, place, true);
    Take_Trailing_Marks(text, place, marks);
    const bool is_sound = decimal.has_digits && place == text.size() && marks.open == marks.closed &&
                          marks.signs + marks.open <= 1 && marks.currency <= 1;
    if (!is_sound) return Fails(Error_Number::Type_Mismatch);
    const auto value = Double_From_Digits(decimal.letters, decimal.magnitude);
    if (!value) return value;
    return marks.is_negative || marks.open ? -*value : *value;
}

Evaluated<std::int32_t> Long_From_Text(QStringView text)
{
    return Whole_From_Text<std::int32_t, std::uint32_t>(text);
}

Evaluated<std::int16_t> Integer_From_Text(QStringView text)
{
    return Whole_From_Text<std::int16_t, std::uint16_t>(text);
}

Evaluated<double> Val(QStringView text)
{
    QString packed; // blanks may stand anywhere, even between digits
    for (const auto c : text)
        if (c != u' ' && c != u'\t' && c != u'\n' && c != u'\r') packed += c;
    if (const auto radix = Radix_From_Text(packed)) {
        if (radix->is_too_large || radix->value > 0xFFFF'FFFF) return Fails(Error_Number::Overflow);
        // Up to four hexadecimal digits are the 16 bits of an Integer, unless "&" behind them asks for a Long.
        if (radix->value <= 0xFFFF && !radix->has_long_mark) return double(std::int16_t(radix->value));
        return double(std::int32_t(std::uint32_t(radix->value)));
    }
    const QStringView view = packed;
    qsizetype place = 0;
    const bool is_signed = !view.isEmpty() && (view[0] == u'-' || view[0] == u'+');
    if (is_signed) ++place;
    const auto decimal = Take_Decimal(view, place, false);
    if (!decimal.has_digits) return 0.0;
    const auto value = Double_From_Digits(decimal.letters, decimal.magnitude);
    if (!value) return value;
    // "%" behind a number once made it an Integer, and still refuses a fraction before it.
    const bool is_integer = place < view.size() && view[place] == u'%';
    if (is_integer && *value != std::trunc(*value)) return Fails(Error_Number::Type_Mismatch);
    return is_signed && view[0] == u'-' ? -*value : *value;
}

} // namespace Formula
