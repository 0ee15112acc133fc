#include "evaluate/library/Format_Pattern.h"

#include <charconv>
#include <cmath>

// A number pattern: "0" a digit or 0, "#" a digit or nothing, "." the point, "," between digits groups by thousands,
// "," behind the digits divides by 1000, "%" multiplies by 100, "E+" "E-" a power of ten. Everything else is shown as
// it stands; digits beyond the pattern's come before its first place.
namespace Formula {

namespace {

/// What a section asks for, found by one look over it.
struct Number_Layout {
    int whole_places = 0, fraction_places = 0;
    int scale = 0; ///< power of ten from "%" and ","
    bool has_groups = false, has_exponent = false, has_places = false;
};

bool Is_Place(const Pattern_Letter& letter)
{
    return !letter.is_literal && (letter.letter == u'0' || letter.letter == u'#');
}

bool Is_Mark(const Pattern_Letter& letter, QChar mark)
{
    return !letter.is_literal && letter.letter == mark;
}

// "E+", "E-", "e+" or "e-" with a place behind it.
bool Is_Exponent_At(const Pattern_Letters& section, std::size_t i)
{
    return i + 2 < section.size() && !section[i].is_literal && section[i].letter.toUpper() == u'E' &&
           (Is_Mark(section[i + 1], u'+') || Is_Mark(section[i + 1], u'-')) && Is_Place(section[i + 2]);
}

Number_Layout Layout_Of(const Pattern_Letters& section)
{
    Number_Layout layout;
    bool in_fraction = false;
    int waiting_commas = 0;
    for (std::size_t i = 0; i < section.size(); ++i) {
        if (Is_Exponent_At(section, i)) {
            layout.has_exponent = true;
            for (i += 2; i + 1 < section.size() && Is_Place(section[i + 1]);) ++i;
        } else if (Is_Place(section[i])) {
            layout.has_places = true;
            ++(in_fraction ? layout.fraction_places : layout.whole_places);
            if (waiting_commas > 0 && !in_fraction) layout.has_groups = true;
            if (!in_fraction) waiting_commas = 0;
        } else if (Is_Mark(section[i], u'.') && !in_fraction) {
            in_fraction = layout.has_places = true;
        } else if (Is_Mark(section[i], u',') && !in_fraction && layout.whole_places > 0) {
            ++waiting_commas;
        } else if (Is_Mark(section[i], u'%')) {
            layout.scale += 2;
        }
    }
    layout.scale -= 3 * waiting_commas;
    return layout;
}

/// Writes the digits into a section from left to right.
class Number_Writer {
public:
    Number_Writer(const Pattern_Letters& section, const Number_Layout& layout, const Decimal_Digits& number,
                  int exponent)
        : section_(section),
          layout_(layout),
          number_(number),
          exponent_(exponent),
          places_left_(layout.whole_places),
          fraction_left_(layout.fraction_places)
    {}

    QString Written()
    {
        for (std::size_t i = 0; i < section_.size(); ++i) {
            if (Is_Exponent_At(section_, i))
                i = Write_Exponent(i);
            else if (Is_Place(section_[i]))
                Write_Place(section_[i].letter == u'0');
            else if (Is_Mark(section_[i], u'.') && !in_fraction_)
                Begin_Fraction();
            else if (!Is_Mark(section_[i], u','))
                text_ += section_[i].letter;
        }
        return text_;
    }

private:
    // The digit at a distance from the point: 1 is the last of the whole part, 0 the first of the fraction.
    QChar Digit(int distance) const
    {
        const int index = number_.point - distance;
        const bool is_known = index >= 0 && index < number_.digits.size();
        return is_known ? QChar(number_.digits[index]) : QChar(u'0');
    }

    void Write_Whole_Digit(int distance)
    {
        text_ += Digit(distance);
        if (layout_.has_groups && distance > 1 && (distance - 1) % 3 == 0) text_ += u',';
    }

    void Write_Surplus()
    {
        for (int distance = number_.point; distance > layout_.whole_places; --distance) Write_Whole_Digit(distance);
    }

    void Write_Place(bool is_zero)
    {
        if (in_fraction_) return Write_Fraction_Place(is_zero);
        if (places_left_ == layout_.whole_places) Write_Surplus();
        shows_zeros_ = shows_zeros_ || is_zero;
        if (number_.point >= places_left_ || shows_zeros_) Write_Whole_Digit(places_left_);
        --places_left_;
    }

    void Write_Fraction_Place(bool is_zero)
    {
        const int done = layout_.fraction_places - fraction_left_--;
        const bool has_more = number_.digits.size() - number_.point > done && !number_.digits.isEmpty();
        if (is_zero || has_more) text_ += Digit(-done);
    }

    void Begin_Fraction()
    {
        if (layout_.whole_places == 0) Write_Surplus();
        in_fraction_ = true;
        text_ += u'.';
    }

    std::size_t Write_Exponent(std::size_t i)
    {
        text_ += section_[i].letter;
        const bool always_signed = Is_Mark(section_[i + 1], u'+');
        if (exponent_ < 0)
            text_ += u'-';
        else if (always_signed)
            text_ += u'+';
        std::size_t places = 0;
        for (i += 2; i < section_.size() && Is_Place(section_[i]); ++i) places += section_[i].letter == u'0';
        text_ += QString::number(std::abs(exponent_)).rightJustified(qsizetype(places), u'0');
        return i - 1;
    }

    const Pattern_Letters& section_;
    const Number_Layout& layout_;
    const Decimal_Digits& number_;
    int exponent_;
    int places_left_, fraction_left_;
    bool in_fraction_ = false, shows_zeros_ = false;
    QString text_;
};

// Moves the point so that the whole part fills its places; what was moved is the power of ten.
int Take_Exponent(Decimal_Digits& number, const Number_Layout& layout)
{
    if (number.digits.isEmpty()) return 0;
    const int before = number.point;
    number.point = layout.whole_places;
    Round_To_Places(number, layout.fraction_places);
    const int carried = number.point - layout.whole_places; // 9.99 that became 10.0
    number.point = layout.whole_places;
    return before - layout.whole_places + carried;
}

QString With_Section(double value, const Pattern_Letters& section, bool shows_sign)
{
    const auto layout = Layout_Of(section);
    auto number = Digits_Of(value);
    if (!number.digits.isEmpty()) number.point += layout.scale;
    int exponent = 0;
    if (layout.has_exponent)
        exponent = Take_Exponent(number, layout);
    else
        Round_To_Places(number, layout.fraction_places);
    const bool is_minus = shows_sign && number.is_negative && layout.has_places;
    return (is_minus ? QStringLiteral("-") : QString()) + Number_Writer(section, layout, number, exponent).Written();
}

} // namespace

Decimal_Digits Digits_Of(double value)
{
    Decimal_Digits number;
    if (value == 0 || !std::isfinite(value)) return number;
    number.is_negative = value < 0;
    char buffer[40];
    const auto end =
        std::to_chars(buffer, buffer + sizeof buffer, std::fabs(value), std::chars_format::scientific, 14).ptr;
    const QByteArray text(buffer, end - buffer); // d.dddddddddddddde+xx
    const auto mark = text.indexOf('e');
    number.digits = text.left(1) + text.mid(2, mark - 2);
    number.point = text.mid(mark + 1).toInt() + 1;
    while (number.digits.endsWith('0')) number.digits.chop(1);
    return number;
}

void Round_To_Places(Decimal_Digits& number, int places)
{
    const int keep = number.point + places;
    if (keep >= number.digits.size()) return;
    const bool is_up = keep >= 0 && number.digits[keep] >= '5';
    number.digits.truncate(std::max(keep, 0));
    if (is_up) {
        int i = keep - 1;
        while (i >= 0 && number.digits[i] == '9') number.digits[i--] = '0';
        if (i >= 0) {
            number.digits[i] = char(number.digits[i] + 1);
        } else {
            number.digits.prepend('1');
            ++number.point;
        }
    }
    while (number.digits.endsWith('0')) number.digits.chop(1);
    if (number.digits.isEmpty()) number = {};
}

// One section serves all; the second is for negative numbers, the third for zero. An empty one leaves it to the first.
QString Formatted_Number(double value, const std::vector<Pattern_Letters>& sections)
{
    const auto is_there = [&](std::size_t i) { return i < sections.size() && !sections[i].empty(); };
    if (value < 0 && is_there(1)) return With_Section(value, sections[1], false);
    if (value == 0 && is_there(2)) return With_Section(value, sections[2], false);
    return With_Section(value, sections[0], true);
}

} // namespace Formula
