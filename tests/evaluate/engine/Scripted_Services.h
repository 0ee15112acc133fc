#pragma once

#include "evaluate/library/Formula_Host_Services.h"

#include <deque>

/// A host that answers from lists and keeps what it was asked.
class Scripted_Services : public Formula::Formula_Host_Services {
public:
    QDateTime Now() override { return QDateTime(QDate(2026, 3, 14), QTime(15, 9, 26)); }
    QString Input_Box(const Formula::Host_Input_Question& question) override
    {
        asked += question.title + u'|' + question.prompt;
        if (answers.empty()) return {};
        const QString answer = answers.front();
        answers.pop_front();
        return answer;
    }
    int Message_Box(const Formula::Host_Message& message) override
    {
        asked += message.title + u'|' + message.prompt;
        return 1;
    }
    void Beep() override { ++beeps; }
    QString Environment_Value(const QString& name) override { return QStringLiteral("value of ") + name; }
    QString Current_Folder(const QString&) override { return QStringLiteral("/pictures"); }
    std::optional<std::vector<Formula::Host_File_Facts>> Folder_Entries(const QString&) override
    {
        return std::nullopt;
    }
    std::optional<Formula::Host_File_Facts> File_Facts(const QString&) override { return std::nullopt; }
    std::optional<QString> Setting(const QString&, const QString&, const QString&) override { return std::nullopt; }
    std::vector<std::pair<QString, QString>> All_Settings(const QString&, const QString&) override { return {}; }

    std::deque<QString> answers;
    QStringList asked;
    int beeps = 0;
};
