#pragma once

#include "frame/Program_State.h"
#include "frame/ports/User_Dialogs.h"

/// The commands for configuration files. Both ask for the file, beginning with the last one of the run; `folder` is where
/// the picker starts without one. The settings take effect at the next start, the lists at their next use.

/// True when a file was read to its end. One that cannot be opened ends the command in silence; one that is damaged is told.
bool Read_Configuration_File(Program_State& state, User_Dialogs& dialogs, const QString& folder);

/// True when written; a failure is told.
bool Write_Configuration_File(Program_State& state, User_Dialogs& dialogs, const QString& folder);
