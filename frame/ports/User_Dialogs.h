#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <memory>
#include <optional>

enum class Message_Icon { None, Question, Exclamation, Information, Critical };
enum class Message_Buttons { Ok, Yes_No, Yes_No_Cancel, Ok_Cancel, Retry_Cancel, Abort_Retry_Ignore };
enum class Message_Answer { Ok, Yes, No, Cancel, Abort, Retry, Ignore };

/// A question or a message. The title is the program's name unless one is given.
struct Message {
    QString text;
    Message_Buttons buttons = Message_Buttons::Ok;
    Message_Answer standard = Message_Answer::Ok; ///< what Enter answers
    Message_Icon icon = Message_Icon::None;
    QString title = QStringLiteral("Halvine");
};

struct Input_Question {
    QString prompt;
    QString title = QStringLiteral("Halvine");
    QString text{}; ///< what stands in the field at first
};

/// What a button of the dialogs with their own buttons answers. Hosts compare the numbers: never renumber.
enum class Response_Code { None = 0, Yes = 1, Yes_To_All = 2, No = 3, Cancel = 4 };

/// A folder or file picker ("bkcExplorer").
struct Picker_Question {
    QString caption{};
    QString folder{};  ///< where it starts
    QString name{};    ///< proposed name; may carry a save qualifier behind the name
    QString pattern{}; ///< "*.jpg;*.jif;*.tif"
    enum class Kind { Open_File = 0, Save_File = 1, Folder = 2 } kind = Kind::Save_File;
};

/// The progress window of the longest operations. It shows itself, keeps the window alive and knows whether the user
/// pressed Stop.
class Progress_Window {
public:
    virtual ~Progress_Window() = default; ///< takes the window away
    virtual void Show(const QString& text, int done, int total) = 0;
    virtual bool Stop_Requested() = 0; ///< processes pending events first
    /// Sets the texts, processes pending events, and answers Cancel when the user pressed Stop, otherwise None.
    Response_Code Operation_Progress_Cancel_Dialog_Update(const QString& text, int done, int total)
    {
        Show(text, done, total);
        return Stop_Requested() ? Response_Code::Cancel : Response_Code::None;
    }
};

/// Everything the logic asks of the person. Logic never opens a window itself; tests and hv answer in the window's place.
class User_Dialogs {
public:
    virtual ~User_Dialogs() = default;
    virtual Message_Answer Ask(const Message& message) = 0;
    virtual std::optional<QString> Input(const Input_Question& question) = 0;
    virtual QStringList Pick(const Picker_Question& question) = 0; ///< empty when cancelled
    /// A folder came or went: a picker that is open shows it.
    virtual void Explorer_Tree_Refresh(const QString& /*Refresh_FolderName*/, bool /*Folder_Added*/) {}
    virtual void Show_Text(const QString& caption, const QString& text) = 0;
    virtual void Show_File_List(const QString& caption, const QStringList& files) = 0;
    /// Shows the window of a long operation, not modally, and returns at once.
    virtual std::unique_ptr<Progress_Window> Operation_Progress_Cancel_Dialog(const QString& caption,
                                                                              const QString& text) = 0;

    /// Yes, Yes To All, No, Cancel; a close by the system is Cancel. An empty caption means the program's name.
    virtual Response_Code Yes_Yes_To_All_No_Cancel_Dialog(const QString& Dialog_Caption,
                                                          const QString& Dialog_Prompt) = 0;
    /// Yes is "delete", No is "show the list first".
    virtual Response_Code Delete_File_List_Cancel_Dialog(const QString& Dialog_Caption,
                                                         const QString& Dialog_Prompt) = 0;
    /// Yes, or Cancel.
    virtual Response_Code Commitment_Dialog(const QString& Dialog_Caption, const QString& Dialog_Prompt) = 0;
    /// The list with OK and Cancel; true on OK.
    virtual bool Confirm_File_List(const QString& caption, const QStringList& files) = 0;

    void Refuse(const QString& text) { Ask({.text = text, .icon = Message_Icon::Exclamation}); }
    /// Yes, No, Cancel with No as default; only Yes goes on.
    bool Confirm(const QString& text)
    {
        return Ask({.text = text,
                    .buttons = Message_Buttons::Yes_No_Cancel,
                    .standard = Message_Answer::No,
                    .icon = Message_Icon::Question}) == Message_Answer::Yes;
    }
};
