// What the folder pane wishes: its keys, its menu and what is dragged in it, brought to the commands.

#include "catalogue/Configuration_Commands.h"
#include "catalogue/ui/Halvine_Window.h"

namespace {

constexpr int Shift_Key = 1;
constexpr int Control_Key = 2;

} // namespace

void Halvine_Window::Connect_Folder_Pane()
{
    connect(explorer_, &bkcExplorer::GridDblClick, this, [this](const QString& path) {
        if (QFileInfo(path).isFile()) commands_.Run_Unlisted([&] { commands_.Pick_Paths({path}, true, false); });
        Schedule_Actions();
    });
    // Copies of the paths: the tree's own may change while a command runs.
    connect(explorer_, &bkcExplorer::Create, this, [this](QString parent) { commands_.New_Folder_In(parent); });
    connect(explorer_, &bkcExplorer::Rename, this, [this](QString folder) { commands_.Rename_Folder(folder); });
    connect(explorer_, &bkcExplorer::FolderList, this, [this](QString folder) { commands_.Copy_Folder(folder); });
    connect(explorer_, &bkcExplorer::Delete, this, [this](QString folder) { commands_.Delete_Folder(folder); });
    connect(explorer_, &bkcExplorer::RefreshAlert, this, [this](const QString& folder, bool added) {
        parts_.ports.platform.dialogs.Explorer_Tree_Refresh(folder, added);
    });
    connect(explorer_, &bkcExplorer::DragDropRecycle, this,
            [this] { commands_.Delete_Files(explorer_->Selected_Files()); });
    connect(explorer_, &bkcExplorer::DragDrop, this, [this](const QString& folder, int shift) {
        // Files of our own pane move and those of another program are copied; Control copies and Shift moves.
        const QStringList paths = explorer_->DroppedFiles();
        const bool ours = paths == explorer_->Selected_Files();
        const bool copy = (shift & Control_Key) != 0 || (!ours && (shift & Shift_Key) == 0);
        // After the drop has ended, for a question must not hold up the program that the files come from.
        QTimer::singleShot(0, this, [this, paths, folder, copy] { commands_.Drop_Files(paths, folder, copy); });
    });
    connect(explorer_, &bkcExplorer::DirectoryDragDrop, this,
            [this](int, int shift, const QString& source, const QString& target, bool is_recycle_bin) {
                const bool copy = (shift & Control_Key) != 0;
                QTimer::singleShot(0, this, [this, source, target, is_recycle_bin, copy] {
                    if (is_recycle_bin)
                        commands_.Delete_Folder(source);
                    else
                        commands_.Drop_Folder(source, target, copy);
                });
            });
    explorer_->ExplorerGrid().installEventFilter(this);
    explorer_->ExplorerTree().installEventFilter(this);
}

/// Keys that mean something else in the pane than in the menus.
bool Halvine_Window::Keeps_Key(const QWidget& part, const QKeyEvent& key) const
{
    const bool plain = key.modifiers() == Qt::NoModifier || key.modifiers() == Qt::KeypadModifier;
    if (&part == &explorer_->ExplorerGrid())
        return key.matches(QKeySequence::SelectAll) || (plain && key.key() == Qt::Key_Delete);
    if (&part == &explorer_->ExplorerTree())
        return plain && (key.key() == Qt::Key_Delete || key.key() == Qt::Key_F2 || key.key() == Qt::Key_Insert);
    return false;
}

void Halvine_Window::Show_File_Changes()
{
    if (Shows_Found_Files()) {
        QStringList present = All_File_Paths();
        present.removeIf([](const QString& path) { return !QFileInfo::exists(path); });
        explorer_->InitializeGridExplicit(present);
    } else {
        explorer_->Refresh();
    }
    Show_Status();
}

QStringList Halvine_Window::Selected_Folders() const
{
    if (explorer_->ExplorerGridMode() == Explorer_Grid_Mode::Folders && !explorer_->Selected_Files().isEmpty())
        return explorer_->Selected_Files();
    return explorer_->Path().isEmpty() ? QStringList() : QStringList(explorer_->Path());
}

void Halvine_Window::Open_Configuration_File()
{
    Read_Configuration_File(parts_.state, parts_.ports.platform.dialogs, parts_.ports.platform.settings,
                            explorer_->Path());
}

void Halvine_Window::Save_Configuration_File()
{
    Write_Configuration_File(parts_.state, parts_.ports.platform.dialogs, explorer_->Path());
}
