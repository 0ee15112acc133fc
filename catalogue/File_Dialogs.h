#pragma once

#include "frame/ports/User_Dialogs.h"

/// The pickers of document files. They start at the default name, or without one in `folder` with the pattern
/// "*.EXTENSION"; an answer without an extension gets it, unless it ends in ".". False, with File_Name unchanged, when
/// the user gave up.

/// True when the file exists.
bool Open_File_Dialog(User_Dialogs& dialogs, const QString& folder, const QString& Default_Name,
                      const QString& Extension, const QString& Caption, QString& File_Name);

/// Asks before a read-only file is written, and before any other file than the default is written over.
bool Save_File_Dialog(User_Dialogs& dialogs, const QString& folder, const QString& Default_Name,
                      const QString& Extension, const QString& Caption, QString& File_Name);
