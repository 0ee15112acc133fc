#include "catalogue/File_Confirmation.h"
#include "frame/command/Command_Line.h"
#include "frame/command/File_Jobs.h"
#include "frame/command/Stored_Pictures.h"
#include "frame/files/Regular_File.h"
#include "frame/text/Text_Utilities.h"
#include "imaging/Script_Interpreter.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QHash>

namespace {

struct Render_Job {
    QString out;
    bool out_is_folder = false;
    int divisor = 1;
    int rotation = 0;
    std::optional<Script_Item_Array> items{}; ///< nothing: the file's own
    int type = 0;                             ///< 0: by the name of the new file, else the source's
    int quality = Quality_Of_Parent;
    bool overwrite = false;
};

/// What a run wrote, and from which file: two pictures of one name must not end as one.
using Written_Files = QHash<QString, QString>;

QString Output_Path(const Render_Job& job, const QString& file)
{
    if (!job.out_is_folder) return job.out;
    QString name = Name_Part(Absolute_Path(file));
    if (job.type != 0 && File_Type_From_Name(Extension_Part(name)) != job.type)
        name = Base_Name_Part(name) + (job.type == 1 ? QStringLiteral(".jpg") : QStringLiteral(".tif"));
    return With_Trailing_Separator(job.out) + name;
}

int Output_Type(const Render_Job& job, const QString& target, int source_type)
{
    if (job.type != 0) return job.type;
    const auto named = File_Type_From_Name(Extension_Part(target));
    return named && *named != 0 ? *named : source_type;
}

Result<void> Check_Target(const Render_Job& job, const QString& file, const QString& target, Bitmap_Handle loaded)
{
    const std::string name = target.toStdString();
    if (QFileInfo(target).isDir()) return Failure(name + " is a folder");
    if (!Identity_Of(File_System_Bytes(target))) return {};
    if (!job.overwrite) return Failure(name + " already exists; --overwrite writes over it");
    const bool is_damaged = (Get_Bitmap_Source_Warnings_CPP(loaded) & 1) != 0;
    if (is_damaged && Is_Same_File(file, target)) return Failure("was read with errors and is not written over");
    return {};
}

/// Dots per inch go along; a turn by 90 degrees swaps them.
File_Contents Contents_For(const Render_Job& job, const QString& file, int type)
{
    File_Dimensions facts;
    Get_Dimensions(file, type, facts);
    if (job.rotation % 180 != 0) std::swap(facts.horizontal_dpi, facts.vertical_dpi);
    return {.comment = Get_Comment(file, type),
            .script = {},
            .parent = file,
            .quality = job.quality,
            .horizontal_dpi = facts.horizontal_dpi,
            .vertical_dpi = facts.vertical_dpi};
}

Result<void> Render(const Render_Job& job, const QString& file, Written_Files& written)
{
    auto items = job.items ? Result<Script_Item_Array>(*job.items) : Stored_Items(file);
    if (!items) return tl::make_unexpected(items.error());
    const int type = File_Type_From_Signature(file);
    if (type == 0) return Image_Failure();
    Owned_Bitmap picture(Load_Picture_Bitmap(file, type, job.divisor, job.rotation, 0));
    if (!picture) return Failure(Last_Load_Error().toStdString());
    const QString target = Output_Path(job, file);
    if (const QString source = written.value(target, file); source != file)
        return Failure((target + QStringLiteral(" was just written from ") + source).toStdString());
    Recover_Folder_Of(target);
    if (const auto allowed = Check_Target(job, file, target, picture.Get()); !allowed) return allowed;
    picture.Reset(
        Apply_Script_Items_To_Own(picture.Release(), *items, {.divisor = job.divisor, .rotation = job.rotation}));
    if (!Save_Bitmap(picture.Get(), target, Output_Type(job, target, type), Contents_For(job, file, type)))
        return Image_Failure();
    written.insert(target, file);
    return {};
}

void Add_Options(Command_Line& line)
{
    line.Add_Value(QStringLiteral("o"), QStringLiteral("The new file, or a folder for several."),
                   QStringLiteral("OUT"));
    line.Add_Value(QStringLiteral("divisor"), QStringLiteral("Reduce by N in each direction."), QStringLiteral("N"));
    line.Add_Value(QStringLiteral("rotate"), QStringLiteral("Turn counterclockwise by a multiple of 90 degrees."),
                   QStringLiteral("DEGREES"));
    line.Add_Value(QStringLiteral("script"), QStringLiteral("Run this script instead of the stored one."),
                   QStringLiteral("TEXT"));
    line.Add_Flag(QStringLiteral("no-script"), QStringLiteral("Run no script."));
    line.Add_Value(QStringLiteral("prepared"),
                   QStringLiteral("Run a prepared script: Contrast Optimize, People, Buildings/Machines."),
                   QStringLiteral("NAME"));
    line.Add_Value(QStringLiteral("type"), QStringLiteral("JPG or TIF; by the name of the new file without it."),
                   QStringLiteral("TYPE"));
    line.Add_Value(QStringLiteral("quality"), QStringLiteral("JPEG quality, 0 to 100; the file's own without it."),
                   QStringLiteral("N"));
    line.Add_Flag(QStringLiteral("overwrite"), QStringLiteral("Write over existing files."));
}

/// The items that the command line names; false after a complaint.
bool Read_Items(const Command_Line& line, Render_Job& job)
{
    const QString script = QStringLiteral("script"), no_script = QStringLiteral("no-script"),
                  prepared = QStringLiteral("prepared");
    if (int(line.Has(script)) + int(line.Has(no_script)) + int(line.Has(prepared)) > 1) {
        line.Complain(QStringLiteral("--script, --no-script and --prepared exclude each other"));
        return false;
    }
    if (line.Has(no_script)) job.items.emplace();
    if (line.Has(script)) {
        const Script_Status status = Parse_Script_Items(line.Value(script), job.items.emplace());
        if (status == Script_Status::Complete) return true;
        line.Complain(Script_Status_Text(status));
        return false;
    }
    if (!line.Has(prepared)) return true;
    for (const Script_Set& set : Prepared_Script_Sets())
        if (Equal_Without_Case(set.name, line.Value(prepared))) job.items = set.Script_Items;
    if (!job.items) line.Complain(QStringLiteral("no such prepared script: %1").arg(line.Value(prepared)));
    return job.items.has_value();
}

bool Read_Target(const Command_Line& line, Render_Job& job)
{
    job.out = line.Value(QStringLiteral("o"));
    job.overwrite = line.Has(QStringLiteral("overwrite"));
    job.out_is_folder = job.out.endsWith(u'/') || QFileInfo(job.out).isDir() || line.Files().size() > 1;
    if (job.out.isEmpty())
        line.Complain(QStringLiteral("-o OUT is missing"));
    else if (job.out_is_folder && !QDir().mkpath(job.out))
        line.Complain(QStringLiteral("%1 is no folder").arg(job.out));
    else
        return true;
    return false;
}

std::optional<Render_Job> Job_From_Line(const Command_Line& line)
{
    Render_Job job;
    const auto divisor = line.Number(QStringLiteral("divisor"), 1, 1, 1 << 16);
    const auto quality = line.Number(QStringLiteral("quality"), Quality_Of_Parent, 0, 100);
    if (!divisor || !quality || !Read_Items(line, job)) return {};
    const QString degrees = line.Value(QStringLiteral("rotate"));
    const auto rotation = degrees.isEmpty() ? std::optional(0) : Right_Angle(degrees);
    const auto type = File_Type_From_Name(line.Value(QStringLiteral("type")));
    if (!rotation || !type) {
        line.Complain(!type ? QStringLiteral("--type takes JPG or TIF")
                            : QStringLiteral("--rotate takes a multiple of 90"));
        return {};
    }
    job.divisor = *divisor;
    job.quality = *quality;
    job.rotation = *rotation;
    job.type = *type;
    return Read_Target(line, job) ? std::optional(std::move(job)) : std::nullopt;
}

} // namespace

Exit_Status Run_Render_Command(const QStringList& arguments)
{
    Command_Line line("render", Command_Line::Takes::Files);
    Add_Options(line);
    if (const auto end = line.Parse(arguments)) return *end;
    const auto job = Job_From_Line(line);
    if (!job) return Exit_Status::Wrong_Usage;
    Written_Files written;
    return For_Each_File(line.Files(), [&](const QString& file) { return Render(*job, file, written); });
}
