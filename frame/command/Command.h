#pragma once

#include <QtCore/QStringList>
#include <span>

/// Exit statuses; other programs rely on them.
enum class Exit_Status : int {
    All_Done = 0,
    Some_Failed = 1, ///< the other inputs were done
    Wrong_Usage = 2, ///< nothing was done
};

/// A sub-command. `run` gets the arguments behind the command's name.
struct Command {
    const char* name;
    const char* usage;   ///< what follows "hv NAME"
    const char* summary; ///< one line
    Exit_Status (*run)(const QStringList& arguments);
};

std::span<const Command> Command_Table();
const Command* Find_Command(const QString& name);

// One file each; Command_Table.cpp has the row.
Exit_Status Run_Camera_Command(const QStringList& arguments);
Exit_Status Run_Describe_Command(const QStringList& arguments);
Exit_Status Run_Eval_Command(const QStringList& arguments);
Exit_Status Run_Flip_Command(const QStringList& arguments);
Exit_Status Run_Histogram_Command(const QStringList& arguments);
Exit_Status Run_Info_Command(const QStringList& arguments);
Exit_Status Run_Rename_Command(const QStringList& arguments);
Exit_Status Run_Render_Command(const QStringList& arguments);
Exit_Status Run_Rotate_Command(const QStringList& arguments);
Exit_Status Run_Save_Command(const QStringList& arguments);
Exit_Status Run_Script_Command(const QStringList& arguments);
Exit_Status Run_Search_Command(const QStringList& arguments);
Exit_Status Run_Slides_Command(const QStringList& arguments);
Exit_Status Run_Snapshot_Command(const QStringList& arguments);
