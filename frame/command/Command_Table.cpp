#include "frame/command/Command.h"

namespace {

constexpr Command Commands[] = {
    {"info", "FILE...", "Show size, resolution, texts and camera of pictures", &Run_Info_Command},
    {"camera", "FILE...", "Show the camera report of pictures", &Run_Camera_Command},
    {"script", "get FILE... | set TEXT FILE... | clear FILE... | check TEXT", "Read, store and check image scripts",
     &Run_Script_Command},
    {"describe", "TEXT FILE...", "Store the description of pictures", &Run_Describe_Command},
    {"render", "FILE... -o OUT", "Write pictures as they are meant to be seen", &Run_Render_Command},
    {"save", "FILE...", "Save pictures, or copies, with or without their scripts", &Run_Save_Command},
    {"rotate", "DEGREES FILE...", "Turn the stored pixels counterclockwise", &Run_Rotate_Command},
    {"flip", "h|v FILE...", "Mirror the stored pixels left to right (h) or top to bottom (v)", &Run_Flip_Command},
    {"snapshot", "save FILE... | list FILE... | restore SNAPSHOT", "Keep, list and restore dated copies",
     &Run_Snapshot_Command},
    {"eval", "TEXT", "Print the value of a formula", &Run_Eval_Command},
    {"rename", "--from TEXT --to TEXT FILE... | --take-back", "Rename or copy pictures by rules, patterns and formulas",
     &Run_Rename_Command},
    {"slides", "list FILE.hvs | make FILE.hvs PICTURE... | copy FILE.hvs TARGET.hvs", "List, make and copy slide shows",
     &Run_Slides_Command},
    {"search", "names|descriptions PATTERN FOLDER", "Find pictures in a folder and those below it",
     &Run_Search_Command},
    {"histogram", "FILE", "Count the levels of a picture as rendered", &Run_Histogram_Command},
};

} // namespace

std::span<const Command> Command_Table()
{
    return Commands;
}

const Command* Find_Command(const QString& name)
{
    for (const Command& command : Commands)
        if (name == QLatin1String(command.name)) return &command;
    return nullptr;
}
