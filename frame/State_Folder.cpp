#include "frame/State_Folder.h"

#include "frame/text/Path_Utilities.h"

#include <QtCore/QDir>

QString State_Folder()
{
    const QByteArray state = qgetenv("XDG_STATE_HOME");
    const bool is_usable = state.startsWith('/'); // others are to be ignored
    return (is_usable ? Path_From_Bytes(state) : QDir::homePath() + QStringLiteral("/.local/state")) +
           QStringLiteral("/halvine");
}
