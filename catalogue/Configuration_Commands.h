#pragma once

#include "frame/Program_State.h"
#include "frame/ports/Platform.h"

/// The commands for configuration files. Both ask for the file, beginning with the last one of the run; `folder` is where
/// the picker starts without one. The settings take effect at the next start, the lists at their next use.

/// True when a file was read to its end and taken. One that cannot be opened ends the command in silence; one that is
/// damaged is told. Before anything is taken the user is asked about each formula that reads more than the facts of the
/// pictures; Cancel takes nothing, and the answers stay in the settings.
bool Read_Configuration_File(Program_State& state, User_Dialogs& dialogs, Settings_Map& settings,
                             const QString& folder);

/// True when written; a failure is told.
bool Write_Configuration_File(Program_State& state, User_Dialogs& dialogs, const QString& folder);
