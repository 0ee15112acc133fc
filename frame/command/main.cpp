// hv: Halvine without windows, for scripts and pipelines.

#include "frame/command/Command.h"
#include "frame/command/Terminal.h"
#include "frame/text/Path_Utilities.h"

#include <QtCore/QCoreApplication>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <langinfo.h>

namespace {

/// File names are bytes in UTF-8 whatever the terminal says.
void Use_Utf8()
{
    const char* const locale = std::setlocale(LC_CTYPE, "");
    if (locale == nullptr || std::strcmp(nl_langinfo(CODESET), "UTF-8") != 0) setenv("LC_ALL", "C.UTF-8", 1);
}

void Print_Overview()
{
    Print_Line(QStringLiteral("Usage: hv COMMAND [OPTIONS] FILE...\n\nCommands:"));
    for (const Command& command : Command_Table())
        Print_Line(
            QStringLiteral("  %1  %2").arg(QLatin1String(command.name), -10).arg(QLatin1String(command.summary)));
    Print_Line(QStringLiteral("\nhv COMMAND --help tells more; hv --version tells the version."));
}

Exit_Status Run(const QStringList& arguments)
{
    const QString name = arguments.value(0);
    if (name == u"--help" || name == u"-h" || name == u"help") {
        Print_Overview();
        return Exit_Status::All_Done;
    }
    if (name == u"--version") {
        Print_Line(QStringLiteral("hv " HALVINE_VERSION));
        return Exit_Status::All_Done;
    }
    if (const Command* const command = Find_Command(name)) return command->run(arguments.mid(1));
    Print_Message({}, name.isEmpty() ? QStringLiteral("no command was given (see hv --help)")
                                     : QStringLiteral("no such command: %1 (see hv --help)").arg(name));
    return Exit_Status::Wrong_Usage;
}

} // namespace

int main(int argc, char** argv)
{
    Use_Utf8();
    const QCoreApplication application(argc, argv);
    Catch_Interrupts();
    QStringList arguments;
    for (int i = 1; i < argc; ++i) arguments << Path_From_Bytes(argv[i]);
    const Exit_Status status = Run(arguments);
    if (!Finish_Output()) return int(Exit_Status::Some_Failed);
    return int(status);
}
