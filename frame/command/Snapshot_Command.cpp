#include "catalogue/Snapshot_Names.h"
#include "frame/command/Command_Line.h"
#include "frame/command/File_Jobs.h"
#include "frame/command/Stored_Pictures.h"
#include "frame/command/Terminal.h"

#include <QtCore/QJsonArray>

namespace {

Exit_Status Save_Snapshots(const QStringList& arguments)
{
    Command_Line line("snapshot save", Command_Line::Takes::Files);
    if (const auto end = line.Parse(arguments)) return *end;
    return For_Each_File(line.Files(), [](const QString& file) {
        return Change_Picture(file, false, [](Single_Picture& picture) {
            return picture.Form().Snapshots().Save_Selected_As_Snapshots() == 1;
        });
    });
}

Exit_Status List_Snapshots(const QStringList& arguments)
{
    Command_Line line("snapshot list", Command_Line::Takes::Files);
    if (const auto end = line.Parse(arguments)) return *end;
    return For_Each_File(line.Files(), [&](const QString& file) -> Result<void> {
        QJsonArray list;
        for (const QString& snapshot : Snapshots_Of_File(Absolute_Path(file))) {
            list.append(snapshot);
            if (!line.Wants_Json()) Print_Line(snapshot);
        }
        if (line.Wants_Json()) Print_Json({{QStringLiteral("file"), file}, {QStringLiteral("snapshots"), list}});
        return {};
    });
}

Exit_Status Restore_Snapshot(const QStringList& arguments)
{
    Command_Line line("snapshot restore", Command_Line::Takes::Nothing_More);
    line.Add_Fixed(QStringLiteral("SNAPSHOT"));
    if (const auto end = line.Parse(arguments)) return *end;
    return For_Each_File({line.Fixed(0)}, [&](const QString& file) -> Result<void> {
        if (!Test_Snapshot_Name(Absolute_Path(file))) return Failure("is no snapshot");
        Recover_Folder_Of(file);
        QString kept_as, reason;
        if (!Restore_Snapshot_File(Absolute_Path(file), QDateTime::currentDateTime(), kept_as, reason))
            return Failure(reason.toStdString());
        const QString original = Snapshot_Base_Name(Absolute_Path(file));
        if (line.Wants_Json())
            Print_Json({{QStringLiteral("file"), original}, {QStringLiteral("kept_as"), kept_as}});
        else if (!kept_as.isEmpty())
            Print_Line(kept_as);
        return {};
    });
}

} // namespace

Exit_Status Run_Snapshot_Command(const QStringList& arguments)
{
    const QString action = arguments.value(0);
    if (action == u"save") return Save_Snapshots(arguments.mid(1));
    if (action == u"list") return List_Snapshots(arguments.mid(1));
    if (action == u"restore") return Restore_Snapshot(arguments.mid(1));
    Command_Line line("snapshot", Command_Line::Takes::Nothing_More);
    if (action == u"--help" || action == u"-h") return line.Parse({QStringLiteral("--help")}).value();
    return line.Complain(QStringLiteral("save, list or restore is missing"));
}
