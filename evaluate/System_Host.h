#pragma once

#include "evaluate/library/Formula_Host_Services.h"
#include "frame/ports/Platform.h"

namespace Formula {

/// What formulas reach of the machine: its clock, files, environment, and the settings below "Formulas" in our own tree.
/// Nobody is there to ask: an input box answers "" and a message box 1. Hosts with windows derive from it.
class System_Host : public Formula_Host_Services {
public:
    explicit System_Host(Settings_Map* settings = nullptr) : settings_(settings) {} ///< null: no settings

    QDateTime Now() override { return QDateTime::currentDateTime(); }
    QString Input_Box(const Host_Input_Question&) override { return {}; }
    int Message_Box(const Host_Message&) override { return 1; }
    void Beep() override {}
    QString Environment_Value(const QString& name) override;
    QString Current_Folder(const QString& drive) override;
    std::optional<std::vector<Host_File_Facts>> Folder_Entries(const QString& folder) override;
    std::optional<Host_File_Facts> File_Facts(const QString& path) override;
    std::optional<QString> Setting(const QString& application, const QString& section, const QString& key) override;
    std::vector<std::pair<QString, QString>> All_Settings(const QString& application, const QString& section) override;

private:
    Settings_Map* settings_;
};

} // namespace Formula
