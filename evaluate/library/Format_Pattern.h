#pragma once

#include "evaluate/library/Weeks.h"
#include "evaluate/variant/Evaluate_Error.h"
#include "evaluate/variant/Variant.h"

#include <QtCore/QString>
#include <optional>
#include <vector>

/// The patterns of Format: what they hold and how they are carried out. English (US) whatever the locale.
namespace Formula {

/// One character of a pattern; a quoted or escaped one only ever stands for itself.
struct Pattern_Letter {
    QChar letter;
    bool is_literal = false;
};
using Pattern_Letters = std::vector<Pattern_Letter>;

/// The parts between ";", with quotes and backslashes resolved.
std::vector<Pattern_Letters> Sections_Of(QStringView pattern);

enum class Pattern_Kind { Number, Date, Text };
/// What kind of value a section asks for: by its first sign that means something; nothing without one.
std::optional<Pattern_Kind> Kind_Of(const Pattern_Letters& section);

/// What a step of a date pattern writes.
enum class Date_Sign : std::uint8_t {
    Literal, ///< its letter
    Half,    ///< of the day, by name
    General, ///< the default form of a date
    Day,
    Week, ///< or weekday
    Month,
    Quarter,
    Year,
    Hour,
    Half_Hour, ///< 1 to 12
    Minute,
    Second,
    Time,
};

/// One step of a date pattern: a run of a letter, the half of the day, or a letter that stands for itself.
struct Date_Step {
    Date_Sign sign = Date_Sign::Literal;
    std::uint8_t count = 1; ///< letters in the run; of Half the number of its spelling
    QChar letter = {};      ///< of Literal
};
using Date_Steps = std::vector<Date_Step>;

Date_Steps Date_Steps_Of(const Pattern_Letters& section);

QString Formatted_Number(double value, const std::vector<Pattern_Letters>& sections);
/// The date must be in range. Ends behind the first step that makes the text longer than a formula may have.
QString Formatted_Date(double days, const Date_Steps& steps, const Week_Rule& rule);
QString Formatted_Text(const QString& text, const std::vector<Pattern_Letters>& sections);

/// The most bytes that a letter of a pattern takes while it is carried out, the text that it becomes included.
inline constexpr int Bytes_A_Pattern_Letter = 60;

/// Format with its named patterns.
Evaluated<QString> Formatted(const Variant& value, const QString& pattern, const Week_Rule& rule);

/// Decimal digits of a number, at most 15, rounded half away from zero to a number of places.
struct Decimal_Digits {
    QByteArray digits; ///< without leading zeros; empty for 0
    int point = 0;     ///< places before the point; may be negative or beyond the digits
    bool is_negative = false;
};
Decimal_Digits Digits_Of(double value);
void Round_To_Places(Decimal_Digits& number, int places);

} // namespace Formula
