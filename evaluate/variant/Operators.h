#pragma once

#include "evaluate/variant/Evaluate_Error.h"
#include "evaluate/variant/Variant.h"

#include <QtCore/QStringView>

/// The operators of the formula language. All of them work in place: the result replaces the left operand, or the only
/// one. When one fails, the left operand keeps its value. Null makes the result Null unless the routine says otherwise;
/// an array is a type mismatch (13).
namespace Formula {

enum class Compare_Mode : int {
    Binary = 0,
    Text = 1
}; ///< Text: without regard to case, by Unicode simple case folding

// A result that does not fit its type widens: Byte, Integer, Long, Double; Single and Date become Double. Two strings
// added are joined; any other string counts as its number. An Empty counts as 0; added, it leaves the other as it is.
Error_Number Add(Variant& left, const Variant& right);
Error_Number Subtract(Variant& left, const Variant& right); ///< Date - Date is a Double
Error_Number Multiply(Variant& left, const Variant& right);
Error_Number Divide(Variant& left, const Variant& right); ///< 11 by zero, 6 for zero by zero
/// Both operands are rounded half to even to whole numbers; the quotient is cut towards zero. 11 by zero.
Error_Number Integer_Divide(Variant& left, const Variant& right);
Error_Number Modulo(Variant& left, const Variant& right); ///< takes the sign of the left operand
Error_Number Power(Variant& left, const Variant& right);  ///< a Double; 5 for a negative base with a fraction
Error_Number Negate(Variant& value);

/// Joins the default forms; Null and Empty count as "". 14 when the result is too long.
Error_Number Concatenate(Variant& left, const Variant& right);

// Boolean on Booleans, otherwise bit by bit on whole numbers. Null means "not known": And with 0 is 0, Or with a
// number other than 0 is that number.
Error_Number Not(Variant& value);
Error_Number And(Variant& left, const Variant& right);
Error_Number Or(Variant& left, const Variant& right);
Error_Number Xor(Variant& left, const Variant& right);
Error_Number Eqv(Variant& left, const Variant& right);
Error_Number Imp(Variant& left, const Variant& right);

// The result is a Boolean. A number is below any string; Empty is 0 beside a number and "" beside a string.
Error_Number Equal(Variant& left, const Variant& right, Compare_Mode mode = Compare_Mode::Binary);
Error_Number Not_Equal(Variant& left, const Variant& right, Compare_Mode mode = Compare_Mode::Binary);
Error_Number Less(Variant& left, const Variant& right, Compare_Mode mode = Compare_Mode::Binary);
Error_Number Less_Or_Equal(Variant& left, const Variant& right, Compare_Mode mode = Compare_Mode::Binary);
Error_Number Greater(Variant& left, const Variant& right, Compare_Mode mode = Compare_Mode::Binary);
Error_Number Greater_Or_Equal(Variant& left, const Variant& right, Compare_Mode mode = Compare_Mode::Binary);

/// 93 for a pattern that is not well formed.
Error_Number Like(Variant& left, const Variant& right, Compare_Mode mode = Compare_Mode::Binary);

/// -1, 0 or 1 as the comparison operators see it. Null is below everything but Null, so that sorting has an order.
Evaluated<int> Compare(const Variant& left, const Variant& right, Compare_Mode mode = Compare_Mode::Binary);

/// -1, 0 or 1 for two texts.
int Compare_Text(QStringView left, QStringView right, Compare_Mode mode);

/// The test of a jump: whether the value equals (by =) the Boolean that is waited for. 1 is neither; Null never.
Evaluated<bool> Equals_Boolean(const Variant& value, bool wanted);

} // namespace Formula
