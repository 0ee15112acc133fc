#pragma once

#include "controls/Explorer_Answer.h"
#include "controls/ui/bkcExplorer.h"
#include "frame/ui/Framed_Form.h"

#include <QtWidgets/QComboBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QToolButton>

/// The picker of files and folders: a folder browser with a field for the name. Folders can be made here, but not renamed,
/// moved or deleted.
class bkcExplorer_Form final : public Framed_Form {
    Q_OBJECT

public:
    /// platform    keeps the window's place; may be null
    /// dialogs     asks for the names of new folders, and says why a name cannot be taken
    bkcExplorer_Form(const Platform* platform, User_Dialogs& dialogs, QWidget* parent);

    /// Shows the window until it is answered; true on OK.
    /// Explorer_Function    0 opens a file, 1 saves one, 2 picks a folder; any other number is 0
    /// Explorer_Path        where it starts, or the nearest folder that exists; on OK the folder of the file, or the folder
    /// Explorer_Pattern     "*.jpg;*.jif;*.tif"; empty is every file
    /// Explorer_FileName    the proposed name; on OK the file's, without its folder, or empty
    bool Explorer(int Explorer_Function, const QString& Explorer_Caption, QString& Explorer_Path,
                  const QString& Explorer_Pattern, QString& Explorer_FileName);

    /// A folder came or went below Refresh_FolderName.
    void Explorer_Tree_Refresh(const QString& Refresh_FolderName, bool Folder_Added);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QLayout* Make_Top();
    QLayout* Make_Bottom();
    void Connect_Explorer();
    void Prepare(const QString& caption, const QString& folder, const QString& pattern, const QString& name);
    bool Picks_Folder() const { return function_ == Explorer_Function::Pick_Folder; }
    void Show_Pattern(const QString& pattern);
    void Show_Folder(); ///< after the browser went somewhere
    void Go_To(const QString& folder);
    void Go_Up();
    void Take_Row();
    void Take_Name();
    void New_Folder(const QString& parent);

    User_Dialogs& dialogs_;
    Explorer_Function function_ = Explorer_Function::Open_File;
    QString taken_;
    bkcExplorer* explorer_;
    QLineEdit* folder_;
    QToolButton* back_ = nullptr;
    QToolButton* up_ = nullptr;
    QLabel* name_label_;
    QLineEdit* name_;
    QLabel* pattern_label_;
    QComboBox* pattern_;
    QPushButton* ok_ = nullptr;
};
