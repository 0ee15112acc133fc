#pragma once

#include <QtCore/QDateTime>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <optional>
#include <utility>
#include <vector>

namespace Formula {

struct Host_File_Facts {
    QString name;          ///< without a folder
    std::int64_t size = 0; ///< bytes
    QDateTime modified;    ///< local time
    int attributes = 0;    ///< read-only 1, hidden 2, system 4, directory 16, archive 32
};

struct Host_Input_Question {
    QString prompt, title, text;
};

struct Host_Message {
    QString prompt, title;
    int buttons = 0; ///< the message box styles of the language
};

/// Everything that a formula can reach outside itself. There is no way to write a file or run a program, on purpose.
/// Without a user an input box answers "" and a message box 1.
class Formula_Host_Services {
public:
    virtual ~Formula_Host_Services() = default;

    virtual QDateTime Now() = 0; ///< local time

    virtual QString Input_Box(const Host_Input_Question& question) = 0; ///< "" when cancelled
    virtual int Message_Box(const Host_Message& message) = 0;           ///< the number of the button
    virtual void Beep() = 0;

    virtual QString Environment_Value(const QString& name) = 0; ///< "" when missing

    virtual QString Current_Folder(const QString& drive) = 0;
    /// The entries of a folder in the order of their names, without "." and ".."; nothing when there is no such folder.
    virtual std::optional<std::vector<Host_File_Facts>> Folder_Entries(const QString& folder) = 0;
    virtual std::optional<Host_File_Facts> File_Facts(const QString& path) = 0;

    /// Values of our own settings tree, below application and section.
    virtual std::optional<QString> Setting(const QString& application, const QString& section, const QString& key) = 0;
    virtual std::vector<std::pair<QString, QString>> All_Settings(const QString& application,
                                                                  const QString& section) = 0;
};

} // namespace Formula
