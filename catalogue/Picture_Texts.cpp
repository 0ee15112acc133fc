#include "catalogue/Picture_Texts.h"

#include "frame/text/Text_Utilities.h"

#include <QtCore/QCoreApplication>

namespace {

QString Counted(int count, int selected, const QString& word)
{
    QString text = QString::number(count) + QLatin1Char(' ') + word;
    if (count != 1) text += QLatin1Char('s');
    if (selected > 0) text += QStringLiteral(", %1 selected").arg(selected);
    return text;
}

/// "14-Mar-26 03:09 PM"
QString Date_And_Time(double date)
{
    const QDateTime time = Date_Time_From_Date(date);
    return Medium_Date(time) + QLatin1Char(' ') + Medium_Time(time);
}

} // namespace

QString Picture_Status_Text(int count, int selected)
{
    return Counted(count, selected, QStringLiteral("picture"));
}

QString File_Status_Text(int count, int selected, bool folders)
{
    return Counted(count, selected, folders ? QStringLiteral("folder") : QStringLiteral("file"));
}

QString Picture_Text(const Catalogue_State& state, int index)
{
    if (!state.pictures.Is_Index(index)) return {};
    const Picture_Item& item = state.pictures.Item(index);
    QString mark;
    if (const int position = state.selection.Position_Of_Key(item.Picture_Key); position > 0)
        mark = QString::number(position);
    if (item.Rotate != 0) mark += QLatin1Char('*');
    if (!mark.isEmpty()) mark = QLatin1Char('(') + mark + QStringLiteral(") ");
    return mark + item.File_Name + QStringLiteral(" (") + Date_And_Time(item.File_Date) + QStringLiteral(", ") +
           QString::number(item.File_Size_KB) + QStringLiteral("KB)");
}

QString Window_Caption(const QString& short_version, const QString& long_version, const QString& slide_show_file,
                       const QString& picture_name)
{
    QString caption =
        QStringLiteral("Halvine v") + short_version + QStringLiteral(" (") + long_version + QLatin1Char(')');
    if (!slide_show_file.isEmpty()) caption += QStringLiteral(" - ") + Base_Name_Part(slide_show_file);
    if (!picture_name.isEmpty()) caption += QStringLiteral(" - ") + picture_name;
    return caption;
}

QString Spoken_Picture_Text(const Catalogue_State& state, int index)
{
    if (!state.pictures.Is_Index(index)) return {};
    const Picture_Item& item = state.pictures.Item(index);
    QStringList parts{item.File_Name, Date_And_Time(item.File_Date)};
    if (!item.Description.isEmpty()) parts << item.Description;
    if (!item.Camera_Summary.isEmpty()) parts << item.Camera_Summary;
    if (state.selection.Test_Key(item.Picture_Key)) parts << QCoreApplication::translate("Picture_Texts", "selected");
    return parts.join(QStringLiteral(", "));
}
