#pragma once

#include "frame/Program_State.h"

/// The printer that this machine prints to when nobody says otherwise, as the printing system's own files tell. The service
/// itself is not asked: it may be on a network, and take seconds to answer.
struct Default_Printer {
    QString name{}; ///< empty when only the service knows
    Page_Orientation orientation = Page_Orientation::Portrait;
    bool operator==(const Default_Printer&) const = default;
};

/// From the texts of the option files, lines of a printer's name and its options:
///     Default Office orientation-requested=4
///     Dest Attic media=A4 landscape=true
/// named    a name that goes before those that are marked as the default; empty for none
/// The user's lines go before the machine's, name and options each for itself. Other lines are passed over.
Default_Printer Default_Printer_From(const QString& machine_options, const QString& user_options, const QString& named);

/// From the environment (LPDEST, PRINTER) and the option files of the user and the machine.
Default_Printer Read_Default_Printer();
