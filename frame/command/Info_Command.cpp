#include "catalogue/Camera_Information.h"
#include "frame/command/Command_Line.h"
#include "frame/command/File_Jobs.h"
#include "frame/command/Terminal.h"
#include "frame/files/Replacement_File.h"
#include "frame/text/Text_Utilities.h"
#include "imaging/Brennick_Image_Utilities.h"

namespace {

struct Picture_Facts {
    int type = 0;
    File_Dimensions dimensions;
    QString description;
    QString script;
    QString camera;
    QDateTime date;
    qint64 size_kb = 0;
};

QString Type_Name(int type)
{
    return type == 1 ? QStringLiteral("JPEG") : QStringLiteral("TIFF");
}

Result<Picture_Facts> Facts_Of(const QString& file)
{
    const auto identity = Identity_Of(File_System_Bytes(file));
    if (!identity) return tl::make_unexpected(identity.error());
    Picture_Facts facts;
    facts.type = File_Type_From_Signature(file);
    if (facts.type == 0) return Image_Failure();
    if (!Get_Dimensions(file, facts.type, facts.dimensions)) return Image_Failure();
    facts.description = Get_Comment(file, facts.type);
    facts.script = Get_Image_Script(file, facts.type);
    if (const auto camera = Camera_Record_Of_File(file, facts.type)) facts.camera = Camera_Summary_Line(*camera);
    facts.date = QDateTime::fromMSecsSinceEpoch(identity->modified_nanoseconds / 1'000'000);
    facts.size_kb = (identity->size + 512) / 1024;
    return facts;
}

QString Iso_Date(const QDateTime& date)
{
    return date.toOffsetFromUtc(date.offsetFromUtc()).toString(Qt::ISODate);
}

void Print_Object(const QString& file, const Picture_Facts& facts)
{
    Print_Json({{QStringLiteral("file"), file},
                {QStringLiteral("type"), Type_Name(facts.type)},
                {QStringLiteral("width"), facts.dimensions.width},
                {QStringLiteral("height"), facts.dimensions.height},
                {QStringLiteral("depth"), facts.dimensions.pixel_depth},
                {QStringLiteral("horizontal_dpi"), facts.dimensions.horizontal_dpi},
                {QStringLiteral("vertical_dpi"), facts.dimensions.vertical_dpi},
                {QStringLiteral("description"), facts.description},
                {QStringLiteral("script"), facts.script},
                {QStringLiteral("camera"), facts.camera},
                {QStringLiteral("date"), Iso_Date(facts.date)},
                {QStringLiteral("size_kb"), facts.size_kb}});
}

void Print_Paragraph(const QString& file, const Picture_Facts& facts)
{
    const auto& [width, height, depth, horizontal_dpi, vertical_dpi] = facts.dimensions;
    QString picture =
        QStringLiteral("  %1, %2 x %3 pixels, %4 bits").arg(Type_Name(facts.type)).arg(width).arg(height).arg(depth);
    if (horizontal_dpi > 0) picture += QStringLiteral(", %1 x %2 dpi").arg(horizontal_dpi).arg(vertical_dpi);
    Print_Line(file);
    Print_Line(picture);
    Print_Line(QStringLiteral("  %1, %2 KB").arg(Iso_Date(facts.date)).arg(facts.size_kb));
    const auto print_text = [](const char* label, const QString& text) {
        if (!text.isEmpty()) Print_Line(QStringLiteral("  %1: %2").arg(QLatin1String(label), On_One_Line(text)));
    };
    print_text("Description", facts.description);
    print_text("Script", facts.script);
    print_text("Camera", facts.camera);
}

} // namespace

Exit_Status Run_Info_Command(const QStringList& arguments)
{
    Command_Line line("info", Command_Line::Takes::Files);
    if (const auto end = line.Parse(arguments)) return *end;
    bool is_first = true;
    return For_Each_File(line.Files(), [&](const QString& file) -> Result<void> {
        const auto facts = Facts_Of(file);
        if (!facts) return tl::make_unexpected(facts.error());
        if (line.Wants_Json()) {
            Print_Object(file, *facts);
        } else {
            if (!std::exchange(is_first, false)) Print_Line({});
            Print_Paragraph(file, *facts);
        }
        return {};
    });
}
