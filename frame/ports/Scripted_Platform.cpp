#include "frame/ports/Scripted_Platform.h"

#include <QtCore/QFile>

namespace {

class Scripted_Progress : public Progress_Window {
public:
    Scripted_Progress(QStringList& shown, int stop_after) : shown_(shown), stop_after_(stop_after) {}
    void Show(const QString& text, int, int) override
    {
        shown_ << text;
        ++steps_;
    }
    bool Stop_Requested() override { return stop_after_ >= 0 && steps_ >= stop_after_; }

private:
    QStringList& shown_;
    int stop_after_;
    int steps_ = 0;
};

template <class Answer>
Answer Next(std::deque<Answer>& answers, Answer without)
{
    if (answers.empty()) return without;
    Answer answer = answers.front();
    answers.pop_front();
    return answer;
}

} // namespace

Message_Answer Scripted_Dialogs::Ask(const Message& message)
{
    asked.push_back(message);
    if (message.buttons == Message_Buttons::Ok) return Message_Answer::Ok;
    return Next(answers, Message_Answer::No);
}

std::optional<QString> Scripted_Dialogs::Input(const Input_Question& question)
{
    input_asked.push_back(question);
    return Next(inputs, std::optional<QString>());
}

QStringList Scripted_Dialogs::Pick(const Picker_Question& question)
{
    pick_asked.push_back(question);
    return Next(picks, QStringList());
}

void Scripted_Dialogs::Explorer_Tree_Refresh(const QString& Refresh_FolderName, bool Folder_Added)
{
    trees_refreshed.emplace_back(Refresh_FolderName, Folder_Added);
}

void Scripted_Dialogs::Show_Text(const QString& caption, const QString& text)
{
    texts_shown.emplace_back(caption, text);
}

void Scripted_Dialogs::Show_File_List(const QString& caption, const QStringList& files)
{
    lists_shown.emplace_back(caption, files);
}

std::unique_ptr<Progress_Window> Scripted_Dialogs::Operation_Progress_Cancel_Dialog(const QString& caption,
                                                                                    const QString& text)
{
    progress_shown << caption << text;
    return std::make_unique<Scripted_Progress>(progress_shown, stop_after_progress_steps);
}

Response_Code Scripted_Dialogs::Yes_Yes_To_All_No_Cancel_Dialog(const QString& caption, const QString& prompt)
{
    response_asked.emplace_back(caption, prompt);
    return Next(responses, Response_Code::Cancel);
}

Response_Code Scripted_Dialogs::Delete_File_List_Cancel_Dialog(const QString& caption, const QString& prompt)
{
    response_asked.emplace_back(caption, prompt);
    return Next(responses, Response_Code::Cancel);
}

Response_Code Scripted_Dialogs::Commitment_Dialog(const QString& caption, const QString& prompt)
{
    response_asked.emplace_back(caption, prompt);
    return Next(responses, Response_Code::Cancel);
}

bool Scripted_Dialogs::Confirm_File_List(const QString& caption, const QStringList& files)
{
    lists_shown.emplace_back(caption, files);
    return Next(list_answers, false);
}

void Scripted_Events::Process_Pending_Events()
{
    ++calls;
    if (on_call) on_call(calls);
}

QString Settings_In_Memory::Read_Value(const QString& key, const QString& name)
{
    const auto values = user.constFind(key);
    return values != user.constEnd() ? values->value(name) : machine.value(key).value(name);
}

int Settings_In_Memory::Write_Value(const QString& key, const QString& name, const QString& value)
{
    if (refuse_writes) return 5;
    user[key][name] = value;
    return 0;
}

QStringList Settings_In_Memory::Value_Names(const QString& key)
{
    return (user.contains(key) ? user : machine).value(key).keys();
}

bool Scripted_Shell::Move_To_Trash(const QString& path, QString* reason)
{
    if (on_trash) on_trash();
    if (!refuse_trash_with.isEmpty()) {
        if (reason != nullptr) *reason = refuse_trash_with;
        return false;
    }
    trashed << path;
    return QFile::remove(path);
}
