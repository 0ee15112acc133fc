#pragma once

#include "frame/ports/User_Dialogs.h"

#include <functional>

/// Names of folders, as the user is asked for them. Folders are native paths, with or without a separator at their end.

bool Is_Good_Folder_Name(const QString& name); ///< one that other systems can read too

/// Why a name was refused: what went wrong, what the system said about it (`number` is an errno value, or 0), and the rule.
QString Folder_Name_Refusal(const QString& what, int number);

/// Asks until a name is not refused; nothing when the user gives up. refusal(name) does what the name is for and gives the
/// empty text then, else the reason, with which the question comes again.
std::optional<QString> Ask_For_Folder_Name(User_Dialogs& dialogs, const Input_Question& first,
                                           const std::function<QString(const QString& name)>& refusal);

/// Asks for the name of a new folder and makes it. Its path, without a separator at its end.
std::optional<QString> Make_New_Folder(User_Dialogs& dialogs, const QString& parent);
