#include "frame/command/Command_Line.h"
#include "frame/command/File_Jobs.h"
#include "frame/command/Stored_Pictures.h"

Exit_Status Run_Describe_Command(const QStringList& arguments)
{
    Command_Line line("describe", Command_Line::Takes::Files);
    line.Add_Fixed(QStringLiteral("TEXT"));
    line.Add_Flag(QStringLiteral("overwrite"),
                  QStringLiteral("Write over read-only files, and files with several names."));
    if (const auto end = line.Parse(arguments)) return *end;
    return For_Each_File(line.Files(), [&](const QString& file) {
        return Store_Texts(file, {.description = line.Fixed(0)}, line.Has(QStringLiteral("overwrite")));
    });
}
