#pragma once

#include "frame/ports/User_Dialogs.h"

/// Questions before a file is written over.

/// True when `path` may be written: missing, or writable, or made writable after a Yes. A folder is refused. `verb` stands
/// in the question ("overwrite"). Without `ask` a read-only file is refused in silence.
bool Confirm_Writable(User_Dialogs& dialogs, const QString& path, const QString& verb, bool ask);

/// True when nothing stands under the name, or the user wants it overwritten.
bool Confirm_Overwrite(User_Dialogs& dialogs, const QString& path);

/// Before pictures are saved over themselves.
bool Confirm_Overwrite_Originals(User_Dialogs& dialogs);

/// True when both names lead to one file, through links too; also when they are equal and nothing stands there.
bool Is_Same_File(const QString& left, const QString& right);
