#pragma once

#include "frame/ports/Platform.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QPointer>

class bkcExplorer_Form;

/// The questions of the logic as windows of the desktop, over the window that is active. A busy pointer steps back while
/// somebody is asked.
class Qt_Dialogs final : public User_Dialogs {
    Q_DECLARE_TR_FUNCTIONS(Qt_Dialogs)

public:
    /// Dialogs that remember their place keep it in the settings of this platform; before the call they do not.
    void Set_Platform(const Platform& platform) { platform_ = &platform; }

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

private:
    const Platform* platform_ = nullptr;
    QPointer<bkcExplorer_Form> open_picker_;
};
