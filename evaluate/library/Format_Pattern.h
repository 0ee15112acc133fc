#pragma once

#include "evaluate/library/Weeks.h"
#include "evaluate/variant/Evaluate_Error.h"
#include "evaluate/variant/Variant.h"

#include <QtCore/QString>
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
/// What kind of value a section asks for: by its first sign that means something.
Pattern_Kind Kind_Of(const Pattern_Letters& section);

QString Formatted_Number(double value, const std::vector<Pattern_Letters>& sections);
QString Formatted_Date(double days, const Pattern_Letters& section, const Week_Rule& rule);
QString Formatted_Text(const QString& text, const std::vector<Pattern_Letters>& sections);

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
