#pragma once

#include <QtCore/QString>

/// Slide times and descriptions as a user types them.

QString Text_Of_Slide_Time(float seconds); ///< empty for 0, the default time
float Slide_Time_From_Text(const QString& text);

// Why a typed text cannot be taken; empty when it can.
QString Slide_Time_Refusal(const QString& text);
QString Description_Refusal(const QString& text);
