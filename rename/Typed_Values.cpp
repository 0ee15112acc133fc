#include "rename/Typed_Values.h"

#include "frame/files/Limits.h"
#include "frame/text/Number_Text.h"

namespace {

constexpr float Longest_Time = 3600; // seconds

} // namespace

QString Text_Of_Slide_Time(float seconds)
{
    return seconds > 0 ? Text_Of_Single(seconds) : QString();
}

float Slide_Time_From_Text(const QString& text)
{
    return Single_From_Text(text.trimmed()).value_or(0.0F);
}

QString Slide_Time_Refusal(const QString& text)
{
    if (text.trimmed().isEmpty()) return {};
    const auto seconds = Single_From_Text(text.trimmed());
    if (seconds && *seconds >= 0 && *seconds <= Longest_Time) return {};
    return QStringLiteral("\"%1\" is no time in seconds. A blank cell is the default time.").arg(text);
}

QString Description_Refusal(const QString& text)
{
    const qsizetype bytes = text.toUtf8().size();
    const int most = Current_Limits().comment_bytes;
    if (bytes <= most) return {};
    return QStringLiteral("The description has %1 bytes; a file takes %2.").arg(bytes).arg(most);
}
