#pragma once

#include "frame/ports/Platform.h"

#include <QtCore/QStringList>

/// Puts a folder in order before its pictures are listed or written: what a crash left under a "~" name gets its own name
/// back, a damaged picture beside it and our forgotten hidden files go to the trash. Saves that run now, in this program
/// or another, are left alone. Costs one look at the folder's names; pictures are opened only where a "~" name stands.
/// folder   with or without its trailing separator; empty is the current one
/// Returns the full names that came back, for a list or a message.
QStringList Recover_Folder(Platform& platform, const QString& folder);
