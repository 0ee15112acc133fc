#pragma once

#include "frame/ports/User_Dialogs.h"

#include <QtCore/QSet>

/// Asks, for one run of a command, whether files are to be written over. Yes To All holds for the rest of the run, but not
/// for a file that the run itself has written: two pictures of one name would end as one.
class Overwrite_Question {
public:
    enum class Answer { Overwrite, Leave, End };

    /// `caption` is "Halvine - Copy File Overwrite" or one of its like.
    Overwrite_Question(User_Dialogs& dialogs, QString caption) : dialogs_(dialogs), caption_(std::move(caption)) {}

    Answer Ask(const QString& target, const QString& source);
    void Remember_Written(const QString& target) { written_.insert(target); }

private:
    User_Dialogs& dialogs_;
    QString caption_;
    QSet<QString> written_;
    bool all_ = false;
};
