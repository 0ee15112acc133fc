#pragma once

#include "controls/Explorer_Model.h"
#include "controls/ui/BKC_DirTree.h"
#include "controls/ui/bkcGrid.h"
#include "controls/ui/bkcSplit.h"
#include <QtWidgets/QLabel>

/// A folder tree and a grid of what the folder holds. Watches the folder and shows changes.
class bkcExplorer : public QWidget {
    Q_OBJECT

public:
    explicit bkcExplorer(QWidget* parent = nullptr);

    BKC_DirTree& ExplorerTree() { return *tree_; }
    bkcGrid& ExplorerGrid() { return *grid_; }
    bkcSplit& Split() { return *split_; } ///< tree above the grid
    const Explorer_Model& Model() const { return model_; }
    /// Called with a folder before its files are read, for a host that puts folders in order first.
    void Set_Before_Listing(std::function<void(const QString& folder)> call)
    {
        model_.Before_Listing = std::move(call);
    }

    QString Path() const { return model_.Path; }
    bool Set_Path(const QString& New_Path); ///< false, and nothing changed, when there is no such folder
    QString PreviousPath() const { return model_.PreviousPath; }
    QString ExplorerPattern() const { return model_.Pattern; }
    void Set_ExplorerPattern(const QString& New_Pattern);
    QString PatternSeparator() const { return model_.PatternSeparator; } ///< default ";"
    void Set_PatternSeparator(const QString& New_Separator);
    Explorer_Grid_Mode ExplorerGridMode() const { return model_.Mode; }
    void Set_ExplorerGridMode(Explorer_Grid_Mode New_Mode);
    bool ShowHidden() const { return model_.Hidden; }
    void Set_ShowHidden(bool New_Show);
    /// Whether an empty folder says so in the grid's place. Default on.
    bool FolderItemAvailableMessage() const { return folder_item_available_message_; }
    void Set_FolderItemAvailableMessage(bool New_Message);
    void Set_EmptyMessage(const QString& New_Message); ///< what it says then; empty, the default: in general words

    void Refresh(); ///< reads the folder again
    void RefreshTree(const QString& Refresh_From_Folder = {});
    void InitializeTree();                                     ///< the tree as at the start, opened down to Path
    void InitializeGrid();                                     ///< columns and content for the mode
    void InitializeGridExplicit(const QStringList& File_List); ///< whole paths, such as files that were found
    QStringList Selected_Files() const { return model_.Selected_Paths(); } ///< whole paths, in display order
    /// The files of the last drop, while DragDrop is being raised.
    const QStringList& DroppedFiles() const { return dropped_files_; }

signals:
    void Listed(); ///< the grid holds other rows, or the same rows read again
    void ChangePath(const QString& New_Path);
    void DirectoryDragDrop(int Button, int Shift, const QString& Source_Directory_Path,
                           const QString& Target_Directory_Path, bool Target_Is_Recycle_Bin);
    void DragDrop(const QString& Drop_FolderName, int Shift); ///< see DroppedFiles
    void DragDropRecycle();                                   ///< the Delete key on the grid's selection
    void RefreshAlert(const QString& Refresh_FolderName, bool Folder_Added);
    void FolderList(const QString& Parent_FolderName);
    void Create(const QString& Parent_FolderName);
    void Delete(const QString& Delete_FolderName);
    void Rename(const QString& Old_FolderName);
    void TreeMouseUp(int Button, int Shift, int X, int Y);
    void GridClick();
    void GridDblClick(const QString& Path); ///< a file, or a folder in folder mode (which is then opened)
    void SelChange();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Connect_Tree();
    void Connect_Grid();
    void Go_To(const QString& path);
    void Show_Message();
    void Watch();
    void Folder_Changed();
    void Open_Row(int Grid_Row);

    bkcSplit* split_;
    BKC_DirTree* tree_;
    bkcGrid* grid_;
    QLabel* message_;
    Explorer_Model model_;
    QFileSystemWatcher watcher_;
    QTimer settle_;
    QStringList dropped_files_;
    QString empty_message_;
    bool folder_item_available_message_ = true;
};
