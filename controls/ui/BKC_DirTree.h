#pragma once

#include <QtCore/QFileSystemWatcher>
#include <QtCore/QTimer>
#include <QtWidgets/QTreeView>

class Folder_Tree_Model;

/// A tree of folders that starts at home and at the root of the file system. Native paths without a separator at their
/// end (but for "/"). Folders are read when they are opened.
class BKC_DirTree : public QTreeView {
    Q_OBJECT

public:
    explicit BKC_DirTree(QWidget* parent = nullptr);

    QString Path() const { return path_; }
    /// Opens the tree down to the folder and selects it. False, and nothing changed, when there is no such folder.
    bool Set_Path(const QString& New_Path);
    /// Default off: folders that begin with a dot do not show. The user changes it by Ctrl+H or the menu.
    bool ShowHidden() const;
    void Set_ShowHidden(bool New_Show);
    /// Default off. On: the user can ask for new folders, but not rename, copy, delete or drag them.
    bool BrowseOnly() const { return browse_only_; }
    void Set_BrowseOnly(bool New_BrowseOnly);
    /// In the place of the style's. Folder is drawn in the state On where it is open.
    void Set_Icons(const QIcon& Folder, const QIcon& Home);
    // Kept as they are given and never looked into.
    QString Alias() const { return alias_; }
    void Set_Alias(const QString& New_Alias) { alias_ = New_Alias; }
    QString Pattern() const { return pattern_; }
    void Set_Pattern(const QString& New_Pattern) { pattern_ = New_Pattern; }

    /// Reads a folder's children again, keeping what is open and selected; empty: the whole tree. When the selected
    /// folder is gone its parent is selected.
    void RefreshTree(const QString& Refresh_From_Folder = {});
    QString Folder_At(const QPoint& viewport_point) const; ///< empty beside the rows

signals:
    void DirectoryChange(const QString& New_Path); ///< by the user, or because the folder went away
    /// Files (or folders) were dropped on a folder. Shift is a bit set: 1 shift, 2 control.
    void FilesDropped(const QStringList& Paths, const QString& Target_Directory_Path, int Shift);
    void DirectoryDropped(int Button, int Shift, const QString& Source_Directory_Path,
                          const QString& Target_Directory_Path);   ///< a folder of this tree
    void FoldersChanged(const QString& Folder, bool Folder_Added); ///< on disk, by somebody else
    void ShowHiddenChange(bool New_Show);                          ///< by the user
    void TreeMouseUp(int Button, int Shift, int X, int Y);
    void Create(const QString& Parent_FolderName);     ///< Insert, or the menu
    void Rename(const QString& Old_FolderName);        ///< F2, or the menu
    void Delete(const QString& Delete_FolderName);     ///< Delete, or the menu
    void FolderList(const QString& Parent_FolderName); ///< the menu's Copy Folders

protected:
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void resizeEvent(QResizeEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void Opened(const QModelIndex& index);
    void Turn_Hidden_Over();
    void Unwatch_Below(const QModelIndex& index);
    void Disk_Changed();
    void Refresh_Index(const QModelIndex& index);

    Folder_Tree_Model* folders_;
    QFileSystemWatcher watcher_;
    QTimer settle_; // changes on disk come in bursts
    QStringList changed_folders_;
    QString path_;
    QString alias_;
    QString pattern_;
    bool browse_only_ = false;
    bool following_ = false; // the path is being set by the program
};
