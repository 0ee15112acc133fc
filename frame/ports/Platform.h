#pragma once

#include "frame/ports/User_Dialogs.h"

#include <QtCore/QDateTime>
#include <QtCore/QRect>
#include <QtCore/QString>
#include <functional>

/// "Process pending events": long loops call it at their own points.
class Event_Pump {
public:
    virtual ~Event_Pump() = default;
    virtual void Process_Pending_Events() = 0;
};

class Clock {
public:
    virtual ~Clock() = default;
    virtual QDateTime Now() const = 0; ///< local time
};

/// A timer of the event loop; it fires its call again and again while it is on.
class Repeating_Timer {
public:
    virtual ~Repeating_Timer() = default;
    virtual void Start(int milliseconds) = 0;
    virtual void Stop() = 0;
    virtual bool Is_On() const = 0;
};

/// Values by key and name. Reading falls back from the user's scope to the machine's; writing goes to the user's only.
class Settings_Map {
public:
    virtual ~Settings_Map() = default;
    virtual QString Read_Value(const QString& key, const QString& name) = 0;                    ///< empty when missing
    virtual int Write_Value(const QString& key, const QString& name, const QString& value) = 0; ///< 0, or 5 on failure
    virtual QStringList Value_Names(const QString& key) = 0;
};

/// What the desktop does with files and windows in general.
class Shell {
public:
    virtual ~Shell() = default;
    virtual bool Move_To_Trash(const QString& path, QString* reason) = 0;
    virtual void Beep() = 0;
    virtual void Show_Busy_Pointer(bool busy) = 0;
    virtual QSize Screen_Size_Twips() const = 0;
    virtual void Hold_Off_Screen_Saver(bool on) = 0;  ///< calls do not nest
    virtual void Open_Help(const QString& topic) = 0; ///< empty: no page in particular
    virtual void Quit_Help() = 0;
};

/// All ports in one place; what owns the program fills it once.
struct Platform {
    User_Dialogs& dialogs;
    Event_Pump& events;
    Clock& clock;
    Settings_Map& settings;
    Shell& shell;
    std::function<std::unique_ptr<Repeating_Timer>(std::function<void()>)> make_timer;
};
