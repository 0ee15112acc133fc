#pragma once

#include <QtCore/QString>
#include <QtCore/QVariant>

/// A value as text, English (US) whatever the locale. Null is the empty text.
/// Formats: "" (shortest text), "General Date" (m/d/yyyy h:nn:ss AM/PM; the time alone on day 0, the day alone at
/// midnight), "Short Date" (m/d/yyyy), "Medium Date" (dd-mmm-yy), "Long Date" (Saturday, March 14, 2026), "Short Time"
/// (hh:nn), "Medium Time" (hh:nn AM/PM), "Long Time" (h:nn:ss AM/PM), "Yes/No", "True/False", "On/Off", "Percent"
/// (0.00%), "Fixed" (0.00), "Standard" (#,##0.00), "General Number", and number pictures out of "#", "0", ".", ",", "%"
/// with literal text in double quotes or behind a backslash, such as #,##0"KB". Names count without regard to case.
/// A text stays as it is under every format.
/// A date is a QDateTime, a QDate, or under a date format a number of days since 30 December 1899.
QString Format_Value(const QVariant& value, const QString& format);
