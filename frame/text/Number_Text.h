#pragma once

#include <QtCore/QString>
#include <optional>

/// Numbers as text, always with a point, whatever the locale.

/// A number in a format of "#", "0" and one ".", such as "0.0##", "#0.0", "###0.00", "0": "0" is a digit that is always
/// shown, "#" one that is shown when needed. Rounds the shortest decimal text of the number half away from zero, so that
/// 0.25 in "#0.0" is 0.3 as one would do on paper. Not a number and infinity give "0" in the format. A Single is rounded by
/// its own shortest text: 1 / 400 in "0.0##" is 0.003, though the nearest Single lies below 0.0025.
QString Format_Number(double value, const QString& format);
QString Format_Number(float value, const QString& format);

/// The shortest decimal text of at most seven significant digits, without an exponent: 0.005F is "0.005", 1 is "1".
QString Text_Of_Single(float value);

/// The whole text as a number: optional sign, digits with at most one point. No exponent, no blanks. Nothing when it is
/// no number or does not fit.
std::optional<float> Single_From_Text(const QString& text);
std::optional<int> Long_From_Text(const QString& text);
std::optional<double> Double_From_Text(const QString& text);

/// Half to even, as every conversion of the program; values that do not fit are limited to the range of int.
int Round_Half_Even(double value);
