#pragma once

#include "catalogue/ui/Halvine_Window.h"
#include "rename/Rename_Commands.h"
#include "rename/ui/Rename_Describe_Windows.h"
#include "slides/Slide_Commands.h"

/// Puts renaming, describing and slide times and the main window together, which do not know each other. Everything that
/// it is given must outlive it.
class Rename_Wiring {
public:
    /// journal_folder    where renames are remembered
    Rename_Wiring(Halvine_Form& form, Halvine_Window& window, Program_State& program,
                  const std::string& journal_folder);
    Rename_Wiring(const Rename_Wiring&) = delete;
    Rename_Wiring& operator=(const Rename_Wiring&) = delete;

    void Bring_Slide_Times(Slide_Commands& slides);

    /// What a crash left half renamed gets its old names, before anything is picked.
    void Put_Interrupted_Right() { commands_.Put_Interrupted_Right(); }

    Rename_Describe_Windows& Windows() { return windows_; }
    Rename_Commands& Commands() { return commands_; }

private:
    Rename_Describe_Windows windows_;
    System_Rename_Files files_;
    Rename_Journal_Folder journal_;
    Rename_Commands commands_;
};
