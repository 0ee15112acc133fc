#pragma once

#include "frame/files/Result.h"
#include "frame/ports/User_Dialogs.h"

/// What a command over many files could not do, told once at its end.
class File_Failures {
public:
    void Add(const QString& file, const QString& reason);
    void Add(const QString& file, const Error& error);
    int Count() const { return int(lines_.size()); }

    /// "Halvine was unable to move 3 of the selected pictures." with the offer of a list of failed moves; nothing without
    /// a failure. `verb` is "move", `plural` is "moves", `things` is "selected pictures".
    void Tell(User_Dialogs& dialogs, const QString& verb, const QString& plural,
              const QString& things = QStringLiteral("selected pictures")) const;

private:
    QStringList lines_;
};
