#pragma once

#include "frame/Qt_Settings.h"
#include "frame/ui/Help_Form.h"
#include "frame/ui/Qt_Dialogs.h"
#include "frame/ui/Screen_Saver_Hold.h"

#include <QtCore/QTimer>

class Qt_Event_Pump final : public Event_Pump {
public:
    void Process_Pending_Events() override;
};

class Qt_Clock final : public Clock {
public:
    QDateTime Now() const override { return QDateTime::currentDateTime(); }
};

class Qt_Timer final : public Repeating_Timer {
public:
    explicit Qt_Timer(std::function<void()> call);
    void Start(int milliseconds) override { timer_.start(milliseconds); }
    void Stop() override { timer_.stop(); }
    bool Is_On() const override { return timer_.isActive(); }

private:
    QTimer timer_;
};

class Qt_Shell final : public Shell {
public:
    bool Move_To_Trash(const QString& path, QString* reason) override;
    void Beep() override;
    void Show_Busy_Pointer(bool busy) override; ///< calls come in pairs and may nest
    QSize Screen_Size_Twips() const override;   ///< what the desktop leaves to windows of the primary screen
    void Hold_Off_Screen_Saver(bool on) override { screen_saver_.Set(on); }
    void Open_Help(const QString& topic) override;
    void Quit_Help() override;

    void Set_Platform(const Platform& platform) { platform_ = &platform; } ///< keeps the place of the help window

private:
    const Platform* platform_ = nullptr;
    std::unique_ptr<Help_Form> help_;
    Screen_Saver_Hold screen_saver_;
};

/// The platform of the program with windows; one lives as long as the application object.
class Qt_Platform {
public:
    Qt_Platform();
    Qt_Platform(const Qt_Platform&) = delete;
    Qt_Platform& operator=(const Qt_Platform&) = delete;

private:
    Qt_Event_Pump events_;
    Qt_Clock clock_;
    Qt_Settings settings_;
    Qt_Shell shell_;
    Qt_Dialogs dialogs_;

public:
    Platform platform;
};
