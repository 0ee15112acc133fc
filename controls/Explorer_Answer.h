#pragma once

#include <QtCore/QString>

/// What a picker of files and folders is for. Hosts pass these numbers.
enum class Explorer_Function : int { Open_File = 0, Save_File = 1, Pick_Folder = 2 };

/// What the user's OK comes to: a file or folder is taken, another folder or other files are to be shown, or it has to be
/// told why neither can be.
struct Explorer_Answer {
    enum class Kind { Taken, Folder, Pattern, Refused };
    Kind kind = Kind::Refused;
    QString text{}; ///< the whole path, the pattern, or the message
};

/// name       a name, or a path from `folder`, from "/" or from "~"; the empty name is the folder itself
/// pattern    "*.hvs;*.txt": a file to be opened may be named without its extension
/// A file to be opened must exist, as must the folder of one to be saved; whether that may be overwritten is not asked
/// here, and its name may carry a save qualifier ("sea.jpg:80").
Explorer_Answer Answer_Of_Explorer(Explorer_Function function, const QString& folder, const QString& pattern,
                                   const QString& name);
