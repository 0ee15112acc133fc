#pragma once

#include "frame/ports/Platform.h"
#include "frame/ports/Scripted_Platform.h"

/// The platform without windows: nobody is there to ask. A question is answered with Yes where the command line allows
/// overwriting, else with No; the last message is kept as the reason why something was not done.
class Terminal_Dialogs final : public User_Dialogs {
public:
    explicit Terminal_Dialogs(bool overwrite) : overwrite_(overwrite) {}

    Message_Answer Ask(const Message& message) override;
    std::optional<QString> Input(const Input_Question&) override { return {}; }
    QStringList Pick(const Picker_Question&) override { return {}; }
    void Show_Text(const QString&, const QString&) override {}
    void Show_File_List(const QString&, const QStringList&) override {}
    std::unique_ptr<Progress_Window> Operation_Progress_Cancel_Dialog(const QString& caption,
                                                                      const QString& text) override;
    Response_Code Yes_Yes_To_All_No_Cancel_Dialog(const QString&, const QString& prompt) override
    {
        return Overwrite_Or(prompt, Response_Code::No);
    }
    Response_Code Delete_File_List_Cancel_Dialog(const QString&, const QString& prompt) override
    {
        return Overwrite_Or(prompt, Response_Code::Cancel);
    }
    Response_Code Commitment_Dialog(const QString&, const QString& prompt) override
    {
        return Overwrite_Or(prompt, Response_Code::Cancel);
    }
    bool Confirm_File_List(const QString&, const QStringList&) override { return overwrite_; }

    const QString& Reason() const { return reason_; } ///< empty when nothing was refused

private:
    Response_Code Overwrite_Or(const QString& prompt, Response_Code refused);
    bool overwrite_ = false;
    QString reason_;
};

class Terminal_Platform {
public:
    explicit Terminal_Platform(bool overwrite) : dialogs(overwrite) {}
    Terminal_Dialogs dialogs;

private:
    struct No_Events final : Event_Pump {
        void Process_Pending_Events() override {}
    };
    struct System_Clock final : Clock {
        QDateTime Now() const override { return QDateTime::currentDateTime(); }
    };
    struct No_Desktop final : Shell {
        bool Move_To_Trash(const QString& path, QString* reason) override;
        void Beep() override {}
        void Show_Busy_Pointer(bool) override {}
        QSize Screen_Size_Twips() const override { return {1920 * 15, 1080 * 15}; }
        void Hold_Off_Screen_Saver(bool) override {}
        void Open_Help(const QString&) override {}
        void Quit_Help() override {}
    };
    No_Events events_;
    System_Clock clock_;
    No_Desktop shell_;
    Settings_In_Memory settings_; // what the user set for the window has no say here

public:
    Platform platform{
        dialogs, events_,
        clock_,  settings_,
        shell_,  [](std::function<void()> call) { return std::make_unique<Scripted_Timer>(std::move(call)); }};
};
