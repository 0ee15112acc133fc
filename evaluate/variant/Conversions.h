#pragma once

#include "evaluate/variant/Evaluate_Error.h"
#include "evaluate/variant/Variant.h"

#include <QtCore/QStringView>
#include <optional>

/// From one kind of value to another. Null fails with 94, an array or a text that is no number with 13, a value out of
/// range with 6. Rounding is half to even. Empty is 0, "" or False.
namespace Formula {

struct Date_Parts;

Evaluated<bool> To_Boolean(const Variant& value); ///< also from "True" and "False"
Evaluated<std::uint8_t> To_Byte(const Variant& value);
Evaluated<std::int16_t> To_Integer(const Variant& value);
Evaluated<std::int32_t> To_Long(const Variant& value);
Evaluated<float> To_Single(const Variant& value);
Evaluated<double> To_Double(const Variant& value); ///< a Date gives its days
Evaluated<double> To_Date(const Variant& value);   ///< days; a text is read as a date first, then as a number
Evaluated<QString> To_Text(const Variant& value);  ///< the default form, as CStr
/// To_Text, but Null gives "": what an embedding program shows.
Evaluated<QString> To_Display_Text(const Variant& value);

/// The number that a text holds: blanks around it, a sign before or behind it or parentheses, "$", "," between digits,
/// a point, an exponent with E or D, or &H and &O forms, which count as unsigned. 13 when it is no number, 6 when too
/// large.
Evaluated<double> Number_From_Text(QStringView text);
/// The same, but &H and &O forms of up to 32 (Long) or 16 (Integer) bits are taken bit by bit: "&HFFFFFFFF" is -1.
Evaluated<std::int32_t> Long_From_Text(QStringView text);
Evaluated<std::int16_t> Integer_From_Text(QStringView text);

QString Text_From_Double(double value);          ///< 15 significant digits, 1E-05 and 1E+15 forms
QString Text_From_Single(float value);           ///< 7 significant digits
QString Text_From_Date(double days);             ///< "1/2/2003 3:04:05 PM", without the part that is zero
QString Text_From_Time(const Date_Parts& parts); ///< "3:04:05 PM"

/// The reading of "Val": the number at the text's beginning, blanks skipped, 0 if there is none; 6 when too large, 13 when
/// "%" stands behind a fraction.
Evaluated<double> Val(QStringView text);

/// Half to even; the argument must be finite.
double Round_Half_Even(double value);

} // namespace Formula
