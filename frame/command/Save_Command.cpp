#include "frame/command/Command_Line.h"
#include "frame/command/File_Jobs.h"
#include "frame/command/Stored_Pictures.h"

namespace {

struct Save_Job {
    Save_Options options;
    int rotation = 0;
    bool overwrite = false;
};

template <class Choice>
std::optional<Choice> Chosen(const Command_Line& line, const char* name,
                             std::initializer_list<std::pair<const char*, Choice>> choices)
{
    const QString option = QString::fromLatin1(name);
    if (!line.Has(option)) return choices.begin()->second;
    QStringList words;
    for (const auto& [word, choice] : choices) {
        if (line.Value(option) == QLatin1String(word)) return choice;
        words << QString::fromLatin1(word);
    }
    line.Complain(QStringLiteral("--%1 takes %2").arg(option, words.join(QStringLiteral(", "))));
    return {};
}

/// Nothing after a complaint.
std::optional<Save_Job> Job_From_Line(const Command_Line& line)
{
    Save_Job job;
    const auto scripts = Chosen<Save_Options::Scripts>(line, "scripts",
                                                       {{"with", Save_Options::Scripts::Save_With},
                                                        {"ignore", Save_Options::Scripts::Ignore},
                                                        {"run", Save_Options::Scripts::Run}});
    const auto target = Chosen<Save_Options::Target>(
        line, "to", {{"copy", Save_Options::Target::Auto_Copy}, {"original", Save_Options::Target::Original}});
    const auto quality = line.Number(QStringLiteral("quality"), Quality_Of_Parent, 0, 100);
    if (!scripts || !target || !quality) return {};
    const auto type = File_Type_From_Name(line.Value(QStringLiteral("type")));
    if (!type) {
        line.Complain(QStringLiteral("--type takes JPG or TIF"));
        return {};
    }
    const QString degrees = line.Value(QStringLiteral("rotate"));
    const auto rotation = degrees.isEmpty() ? std::optional(0) : Right_Angle(degrees);
    if (!rotation) {
        line.Complain(QStringLiteral("--rotate takes a multiple of 90"));
        return {};
    }
    job.options = {.Script_Option = *scripts,
                   .Save_Rotations_Flips = *rotation != 0,
                   .Save_Option = *target,
                   .Picture_Type = *type,
                   .JPEG_Quality = *quality};
    job.rotation = *rotation;
    job.overwrite = line.Has(QStringLiteral("overwrite"));
    return job;
}

} // namespace

Exit_Status Run_Save_Command(const QStringList& arguments)
{
    Command_Line line("save", Command_Line::Takes::Files);
    line.Add_Value(QStringLiteral("scripts"),
                   QStringLiteral("What becomes of the script: with (stored, as without this option), ignore, run."),
                   QStringLiteral("WHAT"));
    line.Add_Value(QStringLiteral("rotate"), QStringLiteral("Turn counterclockwise by a multiple of 90 degrees."),
                   QStringLiteral("DEGREES"));
    line.Add_Value(QStringLiteral("to"), QStringLiteral("copy (beside the file, as without this option) or original."),
                   QStringLiteral("WHERE"));
    line.Add_Value(QStringLiteral("type"), QStringLiteral("JPG or TIF; the file's own without it."),
                   QStringLiteral("TYPE"));
    line.Add_Value(QStringLiteral("quality"), QStringLiteral("JPEG quality, 0 to 100; the file's own without it."),
                   QStringLiteral("N"));
    line.Add_Flag(QStringLiteral("overwrite"), QStringLiteral("Write over existing files, originals included."));
    if (const auto end = line.Parse(arguments)) return *end;
    const auto job = Job_From_Line(line);
    if (!job) return Exit_Status::Wrong_Usage;
    return For_Each_File(line.Files(), [&](const QString& file) {
        return Change_Picture(file, job->overwrite, [&](Single_Picture& picture) {
            picture.Item().Rotate = job->rotation;
            return picture.Form().Save_Selected_As(job->options) == 1;
        });
    });
}
