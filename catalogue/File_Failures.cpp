#include "catalogue/File_Failures.h"

#include "frame/files/Regular_File.h"

void File_Failures::Add(const QString& file, const QString& reason)
{
    lines_ << file + QStringLiteral(": ") + reason;
}

void File_Failures::Add(const QString& file, const Error& error)
{
    // The error's own text may name the other of two files.
    if (error.number != 0) return Add(file, QString::fromStdString(System_Error_Text(error.number)));
    const QString text = QString::fromStdString(error.text);
    if (text.startsWith(file))
        lines_ << text;
    else
        Add(file, text);
}

void File_Failures::Tell(User_Dialogs& dialogs, const QString& verb, const QString& plural, const QString& things) const
{
    if (lines_.isEmpty()) return;
    const QString question = QStringLiteral("Halvine was unable to %1 %2 of the %3.\r\n"
                                            "Do you wish to see a list of failed %4?")
                                 .arg(verb, QString::number(lines_.size()), things, plural);
    if (dialogs.Confirm(question))
        dialogs.Show_File_List(QStringLiteral("Halvine ") + verb + QStringLiteral(" failure for"), lines_);
}
