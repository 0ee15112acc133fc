#include "frame/ui/Qt_Dialogs.h"

#include "frame/text/Path_Utilities.h"
#include "frame/ui/File_List_Dialog.h"
#include "frame/ui/Message_Response_Form.h"
#include "frame/ui/Progress_Form.h"
#include "frame/ui/bkcExplorer_Form.h"

#include <QtGui/QFontDatabase>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QInputDialog>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QVBoxLayout>

namespace {

const QString Program_Name = QStringLiteral("Halvine");

/// The ordinary pointer for as long as somebody is asked, whatever is going on.
class Ordinary_Pointer {
public:
    Ordinary_Pointer() : covers_(QGuiApplication::overrideCursor() != nullptr)
    {
        if (covers_) QGuiApplication::setOverrideCursor(Qt::ArrowCursor);
    }
    ~Ordinary_Pointer()
    {
        if (covers_) QGuiApplication::restoreOverrideCursor();
    }
    Ordinary_Pointer(const Ordinary_Pointer&) = delete;
    Ordinary_Pointer& operator=(const Ordinary_Pointer&) = delete;

private:
    bool covers_;
};

QMessageBox::StandardButtons Buttons_Of(Message_Buttons buttons)
{
    switch (buttons) {
    case Message_Buttons::Ok: return QMessageBox::Ok;
    case Message_Buttons::Yes_No: return QMessageBox::Yes | QMessageBox::No;
    case Message_Buttons::Yes_No_Cancel: return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case Message_Buttons::Ok_Cancel: return QMessageBox::Ok | QMessageBox::Cancel;
    case Message_Buttons::Retry_Cancel: return QMessageBox::Retry | QMessageBox::Cancel;
    case Message_Buttons::Abort_Retry_Ignore: return QMessageBox::Abort | QMessageBox::Retry | QMessageBox::Ignore;
    }
    return QMessageBox::Ok;
}

QMessageBox::StandardButton Button_Of(Message_Answer answer)
{
    switch (answer) {
    case Message_Answer::Ok: return QMessageBox::Ok;
    case Message_Answer::Yes: return QMessageBox::Yes;
    case Message_Answer::No: return QMessageBox::No;
    case Message_Answer::Cancel: return QMessageBox::Cancel;
    case Message_Answer::Abort: return QMessageBox::Abort;
    case Message_Answer::Retry: return QMessageBox::Retry;
    case Message_Answer::Ignore: return QMessageBox::Ignore;
    }
    return QMessageBox::Ok;
}

Message_Answer Answer_Of(int button)
{
    switch (button) {
    case QMessageBox::Yes: return Message_Answer::Yes;
    case QMessageBox::No: return Message_Answer::No;
    case QMessageBox::Cancel: return Message_Answer::Cancel;
    case QMessageBox::Abort: return Message_Answer::Abort;
    case QMessageBox::Retry: return Message_Answer::Retry;
    case QMessageBox::Ignore: return Message_Answer::Ignore;
    default: return Message_Answer::Ok;
    }
}

QMessageBox::Icon Icon_Of(Message_Icon icon)
{
    switch (icon) {
    case Message_Icon::None: return QMessageBox::NoIcon;
    case Message_Icon::Question: return QMessageBox::Question;
    case Message_Icon::Exclamation: return QMessageBox::Warning;
    case Message_Icon::Information: return QMessageBox::Information;
    case Message_Icon::Critical: return QMessageBox::Critical;
    }
    return QMessageBox::NoIcon;
}

/// What Escape and the close button answer.
QMessageBox::StandardButton Escape_Of(Message_Buttons buttons)
{
    switch (buttons) {
    case Message_Buttons::Ok: return QMessageBox::Ok;
    case Message_Buttons::Yes_No: return QMessageBox::No;
    case Message_Buttons::Abort_Retry_Ignore: return QMessageBox::Abort;
    case Message_Buttons::Yes_No_Cancel:
    case Message_Buttons::Ok_Cancel:
    case Message_Buttons::Retry_Cancel: break;
    }
    return QMessageBox::Cancel;
}

} // namespace

Message_Answer Qt_Dialogs::Ask(const Message& message)
{
    const Ordinary_Pointer pointer;
    QMessageBox box(QApplication::activeWindow());
    box.setWindowTitle(message.title.isEmpty() ? Program_Name : message.title);
    box.setTextFormat(Qt::PlainText);
    box.setText(message.text);
    box.setIcon(Icon_Of(message.icon));
    box.setStandardButtons(Buttons_Of(message.buttons));
    box.setDefaultButton(Button_Of(message.standard));
    box.setEscapeButton(Escape_Of(message.buttons));
    return Answer_Of(box.exec());
}

std::optional<QString> Qt_Dialogs::Input(const Input_Question& question)
{
    const Ordinary_Pointer pointer;
    QInputDialog dialog(QApplication::activeWindow());
    dialog.setInputMode(QInputDialog::TextInput);
    dialog.setWindowTitle(question.title.isEmpty() ? Program_Name : question.title);
    dialog.setLabelText(QString(question.prompt).replace(u'\r', u'\n'));
    dialog.setTextValue(question.text);
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    return dialog.textValue();
}

QStringList Qt_Dialogs::Pick(const Picker_Question& question)
{
    const Ordinary_Pointer pointer;
    bkcExplorer_Form picker(platform_, *this, QApplication::activeWindow());
    open_picker_ = &picker;
    QString path = question.folder;
    QString name = question.name;
    if (!picker.Explorer(int(question.kind), question.caption, path, question.pattern, name)) return {};
    return {question.kind == Picker_Question::Kind::Folder ? path : With_Trailing_Separator(path) + name};
}

void Qt_Dialogs::Explorer_Tree_Refresh(const QString& Refresh_FolderName, bool Folder_Added)
{
    if (open_picker_) open_picker_->Explorer_Tree_Refresh(Refresh_FolderName, Folder_Added);
}

void Qt_Dialogs::Show_Text(const QString& caption, const QString& text)
{
    const Ordinary_Pointer pointer;
    QDialog dialog(QApplication::activeWindow());
    dialog.setWindowTitle(caption.isEmpty() ? Program_Name : caption);
    auto* view = new QPlainTextEdit(text);
    view->setReadOnly(true);
    view->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    view->setAccessibleName(caption);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    auto* column = new QVBoxLayout(&dialog);
    column->addWidget(view);
    column->addWidget(buttons);
    dialog.resize(560, 420);
    dialog.exec();
}

void Qt_Dialogs::Show_File_List(const QString& caption, const QStringList& files)
{
    const Ordinary_Pointer pointer;
    File_List_Dialog(platform_, caption, files, /*cancel_enabled=*/false, QApplication::activeWindow()).exec();
}

bool Qt_Dialogs::Confirm_File_List(const QString& caption, const QStringList& files)
{
    const Ordinary_Pointer pointer;
    File_List_Dialog dialog(platform_, caption, files, /*cancel_enabled=*/true, QApplication::activeWindow());
    return dialog.exec() == QDialog::Accepted;
}

std::unique_ptr<Progress_Window> Qt_Dialogs::Operation_Progress_Cancel_Dialog(const QString& caption,
                                                                              const QString& text)
{
    return std::make_unique<Progress_Form>(platform_, caption, text, QApplication::activeWindow());
}

Response_Code Qt_Dialogs::Yes_Yes_To_All_No_Cancel_Dialog(const QString& caption, const QString& prompt)
{
    const Ordinary_Pointer pointer;
    return Message_Response_Form(platform_, caption, prompt,
                                 {{tr("&Yes"), Response_Code::Yes},
                                  {tr("Yes To &All"), Response_Code::Yes_To_All},
                                  {tr("&No"), Response_Code::No},
                                  {tr("Cancel"), Response_Code::Cancel}},
                                 Response_Code::No, QApplication::activeWindow())
        .Response();
}

Response_Code Qt_Dialogs::Delete_File_List_Cancel_Dialog(const QString& caption, const QString& prompt)
{
    const Ordinary_Pointer pointer;
    return Message_Response_Form(platform_, caption, prompt,
                                 {{tr("&Delete"), Response_Code::Yes},
                                  {tr("&List"), Response_Code::No},
                                  {tr("Cancel"), Response_Code::Cancel}},
                                 Response_Code::Cancel, QApplication::activeWindow())
        .Response();
}

Response_Code Qt_Dialogs::Commitment_Dialog(const QString& caption, const QString& prompt)
{
    const Ordinary_Pointer pointer;
    return Message_Response_Form(nullptr, caption, prompt,
                                 {{tr("OK"), Response_Code::Yes}, {tr("Cancel"), Response_Code::Cancel}},
                                 Response_Code::Yes, QApplication::activeWindow())
        .Response();
}
