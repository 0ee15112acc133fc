#pragma once

#include <QtCore/QJsonObject>
#include <QtCore/QString>

/// Standard output and standard error. Paths come out with the bytes that they have on the disk.

void Print_Line(const QString& line);
void Print_Json(const QJsonObject& object); ///< one object a line

/// "hv: FILE: reason", or "hv: reason" without a file. A reason that begins with the file names it once.
void Print_Message(const QString& file, const QString& reason);

/// Whether everything printed so far reached standard output; a message tells why not.
bool Finish_Output();

/// Line ends become blanks, for outputs of one line a file.
QString On_One_Line(QString text);

/// A line on the terminal behind standard error, once the work has taken a second. Does nothing without a terminal.
class Progress_Line {
public:
    Progress_Line();
    ~Progress_Line(); ///< takes the line away
    Progress_Line(const Progress_Line&) = delete;
    Progress_Line& operator=(const Progress_Line&) = delete;
    void Show(int done, int total, const QString& text);

private:
    qint64 began_ = 0;
    bool has_terminal_ = false;
    bool is_shown_ = false;
};

/// Ctrl-C is remembered: the file in work is finished, the rest is left. A second Ctrl-C ends the program at once; the
/// files of both kinds are whole.
void Catch_Interrupts();
bool Is_Interrupted();
