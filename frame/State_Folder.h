#pragma once

#include <QtCore/QString>

/// Where the program keeps what must outlast a crash but is no setting: "$XDG_STATE_HOME/halvine", or
/// ".local/state/halvine" at home. Nothing is made.
QString State_Folder();
