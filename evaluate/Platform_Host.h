#pragma once

#include "evaluate/System_Host.h"

namespace Formula {

/// What formulas reach in the desktop program: the machine as System_Host has it, and the person through the program's
/// dialogs. A box without a title carries the program's name. A message box shows its buttons, its icon and its default
/// button; it is always modal, and there is no help behind it.
class Platform_Host final : public System_Host {
public:
    explicit Platform_Host(Platform& platform) : System_Host(&platform.settings), platform_(platform) {}

    QDateTime Now() override { return platform_.clock.Now(); }
    QString Input_Box(const Host_Input_Question& question) override;
    int Message_Box(const Host_Message& message) override;
    void Beep() override { platform_.shell.Beep(); }

private:
    Platform& platform_;
};

} // namespace Formula
