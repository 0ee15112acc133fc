#include "catalogue/Camera_Information.h"

#include "frame/text/Text_Utilities.h"
#include "imaging/Brennick_Image_Utilities.h"

#include <QtCore/QStringList>

namespace {

QString Reciprocal(float seconds)
{
    return QStringLiteral("1/") + QString::number(Round_Half_Even(1 / double(seconds)));
}

QString Exposure_Program_Name(int code)
{
    static const QStringList names{
        QStringLiteral("Manual"),           QStringLiteral("Program"),      QStringLiteral("Aperture Priority"),
        QStringLiteral("Shutter Priority"), QStringLiteral("Slow Program"), QStringLiteral("High-Speed Program"),
        QStringLiteral("Portrait"),         QStringLiteral("Landscape")};
    return names.value(code - 1);
}

QString Metering_Mode_Name(int code)
{
    static const QStringList names{QStringLiteral("Average"), QStringLiteral("Center weighted Average"),
                                   QStringLiteral("Spot"), QStringLiteral("Multi-spot"),
                                   QStringLiteral("Multi-segment")};
    return names.value(code - 1);
}

QString White_Balance_Name(int code)
{
    switch (code) {
    case 0: return QStringLiteral("Auto");
    case 1: return QStringLiteral("Daylight");
    case 2: return QStringLiteral("Fluorescent");
    case 3: return QStringLiteral("Tungsten");
    case 10: return QStringLiteral("Flash");
    default: return {};
    }
}

/// Collects the lines of the report; each member leaves its line out when there is nothing to say.
class Report {
public:
    void Text(const QString& label, const QString& text)
    {
        if (!text.isEmpty()) lines_ << label + text;
    }
    void Above_Zero(const QString& label, int value)
    {
        if (value > 0) lines_ << label + QString::number(value);
    }
    void Above_Zero(const QString& label, float value, const QString& format, const QString& unit = {})
    {
        if (value > 0) lines_ << label + Format_Number(value, format) + unit;
    }
    void Not_Zero(const QString& label, float value, const QString& format, const QString& unit)
    {
        if (value != 0) lines_ << label + Format_Number(value, format) + unit;
    }
    void Line(const QString& line) { lines_ << line; }
    QString Joined() const { return lines_.join(QStringLiteral("\r\n")); }

private:
    QStringList lines_;
};

void Report_Dates(Report& report, const Camera_Record& record)
{
    if (record.Date_Time_Taken.isEmpty()) {
        report.Text(QStringLiteral("Date/Time: "), record.Date_Time);
        return;
    }
    report.Text(QStringLiteral("Date/Time Taken: "), record.Date_Time_Taken);
    report.Text(QStringLiteral("Date/Time Digitized: "), record.Date_Time_Digitized);
}

void Report_Light(Report& report, const Camera_Record& record)
{
    const QString steps = QStringLiteral("#0.0");
    report.Text(QStringLiteral("Exposure Program: "), Exposure_Program_Name(record.Exposure_Program));
    report.Not_Zero(QStringLiteral("Brightness Value: "), record.Brightness_Value, steps, QStringLiteral("ev"));
    report.Above_Zero(QStringLiteral("ISO Speed Rating: "), record.ISO_Speed);
    report.Text(QStringLiteral("White Balance: "), White_Balance_Name(record.Light_Source));
    if (record.Flash_Used) report.Line(QStringLiteral("Flash Used"));
    report.Text(QStringLiteral("Metering Mode: "), Metering_Mode_Name(record.Metering_Mode));
    report.Not_Zero(QStringLiteral("Exposure Bias: "), record.Exposure_Bias, steps, QStringLiteral("ev"));
}

void Report_Lens(Report& report, const Camera_Record& record)
{
    const QString f_format = QStringLiteral("#0.0");
    if (const float time = record.Time_In_Seconds(); time > 0) {
        QString line =
            QStringLiteral("Shutter Speed: ") + Format_Number(time, QStringLiteral("0.0##")) + QLatin1Char('s');
        if (time < 1) line += QStringLiteral(" (") + Reciprocal(time) + QLatin1Char(')');
        report.Line(line);
    }
    report.Above_Zero(QStringLiteral("Aperture: f/"), record.Aperture(), f_format);
    report.Above_Zero(QStringLiteral("Maximum Aperture: f/"), record.Maximum_Aperture(), f_format);
    report.Above_Zero(QStringLiteral("Subject Distance: "), record.Subject_Distance, QStringLiteral("###0.00"),
                      QStringLiteral("m"));
}

} // namespace

QString Camera_Summary_Line(const Camera_Record& record)
{
    QStringList parts;
    if (const float time = record.Time_In_Seconds(); time > 0)
        parts << (time <= 0.5 ? Reciprocal(time) : Format_Number(time, QStringLiteral("0.0"))) + QLatin1Char('s');
    if (const float aperture = record.Aperture(); aperture > 0)
        parts << QStringLiteral("f/") + Format_Number(aperture, QStringLiteral("#0.0"));
    if (record.Flash_Used) parts << QString(QChar(0xA4));
    return parts.join(QStringLiteral(", "));
}

QString Camera_Report(const Camera_Record& record)
{
    Report report;
    report.Text(QStringLiteral("Make: "), record.Make);
    report.Text(QStringLiteral("Model: "), record.Model);
    Report_Dates(report, record);
    if (record.Image_Width > 0 && record.Image_Height > 0)
        report.Line(QStringLiteral("Resolution (w x h): %1 x %2").arg(record.Image_Width).arg(record.Image_Height));
    Report_Light(report, record);
    Report_Lens(report, record);
    report.Above_Zero(QStringLiteral("Average JPEG Compression Ratio: "), record.Compressed_Bits_Per_Pixel,
                      QStringLiteral("#0.0"), QStringLiteral(" bits/pixel"));
    report.Above_Zero(QStringLiteral("EXIF version: "), record.EXIF_Version);
    report.Above_Zero(QStringLiteral("FlashPix version: "), record.FlashPix_Version);
    return report.Joined();
}

std::optional<Camera_Record> Camera_Record_Of_File(const QString& path, int type)
{
    const QByteArray block = Get_EXIF_Data(path, type);
    auto record = Parse_Camera_Record(std::as_bytes(std::span(block.constData(), std::size_t(block.size()))));
    if (!record) return record;
    File_Dimensions dimensions;
    if ((record->Image_Width <= 0 || record->Image_Height <= 0) && Get_Dimensions(path, type, dimensions)) {
        record->Image_Width = dimensions.width;
        record->Image_Height = dimensions.height;
    }
    return record;
}
