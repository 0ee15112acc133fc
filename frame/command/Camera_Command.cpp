#include "catalogue/Camera_Information.h"
#include "frame/command/Command_Line.h"
#include "frame/command/File_Jobs.h"
#include "frame/command/Terminal.h"
#include "imaging/Brennick_Image_Utilities.h"

#include <QtCore/QJsonArray>

namespace {

void Print_Report(const QString& file, const std::optional<Camera_Record>& record, bool names_file)
{
    if (names_file) Print_Line(file + u':');
    QString report = record ? Camera_Report(*record) : No_Camera_Information;
    report.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    Print_Line(report.trimmed());
}

void Print_Object(const QString& file, const std::optional<Camera_Record>& record)
{
    QJsonArray lines;
    if (record)
        for (const QString& report_line : Camera_Report(*record).split(QStringLiteral("\r\n"), Qt::SkipEmptyParts))
            lines.append(report_line);
    Print_Json({{QStringLiteral("file"), file},
                {QStringLiteral("camera"), record ? Camera_Summary_Line(*record) : QString()},
                {QStringLiteral("report"), lines}});
}

} // namespace

Exit_Status Run_Camera_Command(const QStringList& arguments)
{
    Command_Line line("camera", Command_Line::Takes::Files);
    if (const auto end = line.Parse(arguments)) return *end;
    return For_Each_File(line.Files(), [&](const QString& file) -> Result<void> {
        const int type = File_Type_From_Signature(file);
        File_Dimensions facts; // a file that is damaged at its head is no picture without a camera
        if (type == 0 || !Get_Dimensions(file, type, facts)) return Image_Failure();
        const auto record = Camera_Record_Of_File(file, type);
        if (line.Wants_Json())
            Print_Object(file, record);
        else
            Print_Report(file, record, line.Files().size() > 1);
        return {};
    });
}
