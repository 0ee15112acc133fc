#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include "frame/text/Date_Utilities.h"
#include "frame/text/Number_Text.h"
#include "frame/text/Path_Utilities.h"
#include "frame/text/Pattern_Match.h"

/// Token readers of the settings language, number tests, quoting, decoding.
/// All positions are 1-based, in UTF-16 units, and passed by reference: a reader leaves the position behind what it
/// took. A position beyond the end reads as an empty rest; one below 1 counts as 1.

/// Passes characters at or below the blank.
void Skip_Blanks(const QString& text, int& position);

/// Skip_Blanks, one ":" if there is one, Skip_Blanks.
void Skip_Colon(const QString& text, int& position);

/// Reads the marks "~" (comment), "-" and "+" (enabled), each followed by blanks, then at most 3 characters out of "&",
/// letters and digits of ASCII. The reader stops at the first other character, or after the third.
void Read_Keyword(const QString& text, int& position, bool& comment, bool& enabled, QString& keyword);

/// Reads 'x', "x" or <x>; the closing character doubled stands for one such character. Anything else at the position
/// gives an empty value and leaves the position where Skip_Colon left it. Without a closing character the value is the
/// whole rest.
void Read_Quoted_String(const QString& text, int& position, QString& value, bool skip_colon_first = false);

/// Collects a run of "-", "+", "." and digits. `value` takes the number when it converts and lies in minimum..maximum,
/// and is left alone otherwise; the run is passed in both cases.
void Read_Number(const QString& text, int& position, double& value, double minimum, double maximum,
                 bool skip_colon_first = false);
void Read_Number(const QString& text, int& position, int& value, int minimum, int maximum,
                 bool skip_colon_first = false); ///< fractions round half to even

/// Passes a quoted or numeric value; true when there was one.
bool Skip_Value(const QString& text, int& position);

/// Skip_Colon, then passes values and whatever else stands there until behind the next "," or ";", or to the end.
void Skip_To_Next_Record(const QString& text, int& position);

/// 1-based position of the first character at or behind `start` (below 1 counts as 1) that is not in `char_set`,
/// compared exactly. 0 when the whole rest is in the set, or when the set is empty.
int Scan_Set_Span(const QString& source, const QString& char_set, int start);

// Number tests; all are false on the empty string. Digits are those of ASCII.
bool Is_Whole_Number(const QString& text);        ///< digits only
bool Is_Signed_Whole_Number(const QString& text); ///< "-" or "+" first if any, then at least one digit
bool Is_Signed_Decimal(const QString& text);      ///< sign first if any, digits with at most one "."
bool Is_Percentage(const QString& text);          ///< digits with at most one ".", at most one "%" at the end

/// Doubles each quote character inside `text`; no delimiter is added around it.
QString Quote_Single(const QString& text);
QString Quote_Double(const QString& text);
QString Quote_With(const QString& text, QChar quote);

/// Bytes of a file or of a picture's text: UTF-8 when all bytes are valid UTF-8, otherwise Windows-1252.
QString Decode_Text(const QByteArray& bytes);

/// The character that Windows-1252 has at a byte; the five bytes without one stand for themselves.
QChar Character_Of_Windows_1252(unsigned char byte);

/// Simple case folding of Unicode, unit by unit, whatever the locale: equal folded texts are equal "without regard to
/// case". The length never changes.
QString Case_Folded(const QString& text);
bool Equal_Without_Case(const QString& left, const QString& right);
int Compare_Without_Case(const QString& left, const QString& right); ///< below 0, 0, above 0
