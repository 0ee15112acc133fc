#include "frame/command/Terminal_Platform.h"

#include "frame/command/Terminal.h"

#include <QtCore/QFile>

namespace {

/// Stop is pressed with Ctrl-C.
struct Terminal_Progress final : Progress_Window {
    void Show(const QString&, int, int) override {}
    bool Stop_Requested() override { return Is_Interrupted(); }
};

} // namespace

Message_Answer Terminal_Dialogs::Ask(const Message& message)
{
    if (message.buttons == Message_Buttons::Ok) {
        reason_ = message.text;
        return Message_Answer::Ok;
    }
    if (overwrite_) return Message_Answer::Yes;
    reason_ = message.text + QStringLiteral(" No; --overwrite means Yes");
    return Message_Answer::No;
}

Response_Code Terminal_Dialogs::Overwrite_Or(const QString& prompt, Response_Code refused)
{
    const Message question{.text = prompt, .buttons = Message_Buttons::Yes_No};
    return Ask(question) == Message_Answer::Yes ? Response_Code::Yes : refused;
}

std::unique_ptr<Progress_Window> Terminal_Dialogs::Operation_Progress_Cancel_Dialog(const QString&, const QString&)
{
    return std::make_unique<Terminal_Progress>();
}

bool Terminal_Platform::No_Desktop::Move_To_Trash(const QString& path, QString* reason)
{
    QFile file(path);
    const bool moved = file.moveToTrash();
    if (!moved && reason != nullptr) *reason = file.errorString();
    return moved;
}
