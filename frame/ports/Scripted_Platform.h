#pragma once

#include "frame/ports/Platform.h"

#include <QtCore/QHash>
#include <QtCore/QSize>
#include <deque>

/// Answers from a list, for tests; without an answer left the reply is No, Cancel, or nothing. All questions are kept.
class Scripted_Dialogs : public User_Dialogs {
public:
    Message_Answer Ask(const Message& message) override;
    std::optional<QString> Input(const Input_Question& question) override;
    QStringList Pick(const Picker_Question& question) override;
    void Explorer_Tree_Refresh(const QString& Refresh_FolderName, bool Folder_Added) override;
    void Show_Text(const QString& caption, const QString& text) override;
    void Show_File_List(const QString& caption, const QStringList& files) override;
    std::unique_ptr<Progress_Window> Operation_Progress_Cancel_Dialog(const QString& caption,
                                                                      const QString& text) override;

    Response_Code Yes_Yes_To_All_No_Cancel_Dialog(const QString& caption, const QString& prompt) override;
    Response_Code Delete_File_List_Cancel_Dialog(const QString& caption, const QString& prompt) override;
    Response_Code Commitment_Dialog(const QString& caption, const QString& prompt) override;
    bool Confirm_File_List(const QString& caption, const QStringList& files) override;

    std::deque<Message_Answer> answers;
    std::deque<Response_Code> responses; ///< of the dialogs with their own buttons; Cancel without one
    std::deque<bool> list_answers;       ///< of lists with OK and Cancel; Cancel without one
    std::deque<std::optional<QString>> inputs;
    std::deque<QStringList> picks;
    int stop_after_progress_steps = -1; ///< Stop counts as pressed once so many steps were shown; -1 never

    std::vector<Message> asked;
    std::vector<Input_Question> input_asked;
    std::vector<Picker_Question> pick_asked;
    std::vector<std::pair<QString, QString>> response_asked; ///< caption and prompt
    std::vector<std::pair<QString, QString>> texts_shown;
    std::vector<std::pair<QString, QStringList>> lists_shown;
    std::vector<std::pair<QString, bool>> trees_refreshed; ///< folder, and whether one came there
    QStringList progress_shown;                            ///< captions and texts as they came
};

class Scripted_Events : public Event_Pump {
public:
    void Process_Pending_Events() override;
    std::function<void(int call)> on_call; ///< gets the number of the call, from 1
    int calls = 0;
};

class Scripted_Clock : public Clock {
public:
    QDateTime Now() const override { return now; }
    QDateTime now = QDateTime(QDate(2026, 3, 14), QTime(15, 9, 26));
};

class Scripted_Timer : public Repeating_Timer {
public:
    explicit Scripted_Timer(std::function<void()> call) : call_(std::move(call)) {}
    void Start(int milliseconds) override
    {
        interval = milliseconds;
        on = true;
    }
    void Stop() override { on = false; }
    bool Is_On() const override { return on; }
    void Fire()
    {
        if (on) call_();
    }
    int interval = 0;
    bool on = false;

private:
    std::function<void()> call_;
};

class Settings_In_Memory : public Settings_Map {
public:
    QString Read_Value(const QString& key, const QString& name) override;
    int Write_Value(const QString& key, const QString& name, const QString& value) override;
    QStringList Value_Names(const QString& key) override;
    QHash<QString, QHash<QString, QString>> user;
    QHash<QString, QHash<QString, QString>> machine;
    bool refuse_writes = false;
};

class Scripted_Shell : public Shell {
public:
    bool Move_To_Trash(const QString& path, QString* reason) override;
    void Beep() override { ++beeps; }
    void Show_Busy_Pointer(bool busy) override { busy_depth += busy ? 1 : -1; }
    QSize Screen_Size_Twips() const override { return screen; }
    void Hold_Off_Screen_Saver(bool on) override { screen_saver_held_off = on; }
    void Open_Help(const QString& topic) override { help_opened << topic; }
    void Quit_Help() override { ++help_quits; }
    QStringList trashed;            ///< the file is removed for good
    std::function<void()> on_trash; ///< before each
    QString refuse_trash_with;
    QSize screen = QSize(1920 * 15, 1080 * 15);
    bool screen_saver_held_off = false;
    QStringList help_opened; ///< topics
    int help_quits = 0;
    int beeps = 0;
    int busy_depth = 0;
};

/// A whole platform for tests, with its parts at hand.
struct Scripted_Platform {
    Scripted_Dialogs dialogs;
    Scripted_Events events;
    Scripted_Clock clock;
    Settings_In_Memory settings;
    Scripted_Shell shell;
    std::vector<Scripted_Timer*> timers; ///< alive as long as their owners keep them
    Platform platform{dialogs, events, clock, settings, shell, [this](std::function<void()> call) {
                          auto timer = std::make_unique<Scripted_Timer>(std::move(call));
                          timers.push_back(timer.get());
                          return timer;
                      }};
};
