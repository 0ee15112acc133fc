#include "controls/ui/BKC_DirTree.h"

#include "controls/Folder_Listing.h"
#include "controls/ui/Folder_Tree_Model.h"
#include "controls/ui/bkcGrid.h"
#include "frame/text/Text_Utilities.h"
#include "frame/text/Uri_List.h"

namespace {

constexpr int Settle_Milliseconds = 250;

QStringList Local_Paths(const QMimeData& data)
{
    QStringList paths;
    for (const auto& path : Paths_Of_Uri_List(data.data(QStringLiteral("text/uri-list"))))
        paths += Without_Trailing_Separator(path);
    return paths;
}

} // namespace

BKC_DirTree::BKC_DirTree(QWidget* parent) : QTreeView(parent), folders_(new Folder_Tree_Model(QDir::homePath(), this))
{
    setModel(folders_);
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setAccessibleName(tr("Folders"));
    header()->setAccessibleName(tr("Folders"));
    setDragEnabled(true);
    setAcceptDrops(true);
    setDropIndicatorShown(true);
    setAutoExpandDelay(800);
    setEditTriggers(NoEditTriggers);
    settle_.setSingleShot(true);
    settle_.setInterval(Settle_Milliseconds);
    connect(&settle_, &QTimer::timeout, this, &BKC_DirTree::Disk_Changed);
    connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, [this](const QString& folder) {
        if (!changed_folders_.contains(folder)) changed_folders_ += folder;
        if (!settle_.isActive()) settle_.start(); // a steady stream of changes still shows
    });
    connect(this, &QTreeView::expanded, this, &BKC_DirTree::Opened);
    connect(this, &QTreeView::collapsed, this, &BKC_DirTree::Unwatch_Below);
}

// Nobody watched the folder while it was closed.
void BKC_DirTree::Opened(const QModelIndex& index)
{
    auto& node = folders_->Node_Of(index);
    if (node.path.isEmpty()) return;
    watcher_.addPath(node.path);
    if (!following_) folders_->Folders().Read(node);
}

void BKC_DirTree::Unwatch_Below(const QModelIndex& index)
{
    const auto path = folders_->Node_Of(index).path;
    const auto below = With_Trailing_Separator(path);
    QStringList gone;
    for (const auto& folder : watcher_.directories())
        if (folder == path || folder.startsWith(below)) gone += folder;
    if (!gone.isEmpty()) watcher_.removePaths(gone);
}

bool BKC_DirTree::ShowHidden() const
{
    return folders_->Folders().Hidden;
}

void BKC_DirTree::Set_ShowHidden(bool New_Show)
{
    if (ShowHidden() == New_Show) return;
    folders_->Folders().Hidden = New_Show;
    RefreshTree();
}

void BKC_DirTree::Turn_Hidden_Over()
{
    Set_ShowHidden(!ShowHidden());
    emit ShowHiddenChange(ShowHidden());
}

void BKC_DirTree::Set_BrowseOnly(bool New_BrowseOnly)
{
    browse_only_ = New_BrowseOnly;
    setDragEnabled(!New_BrowseOnly);
    setAcceptDrops(!New_BrowseOnly);
}

void BKC_DirTree::Set_Icons(const QIcon& Folder, const QIcon& Home)
{
    folders_->Set_Icons(Folder, Home);
    viewport()->update();
}

bool BKC_DirTree::Set_Path(const QString& New_Path)
{
    const auto way = folders_->Folders().Way_To(New_Path);
    if (way.empty()) return false;
    const QScopedValueRollback following(following_, true);
    for (auto* node : way)
        if (node != way.back()) expand(folders_->Index_Of(*node));
    const auto index = folders_->Index_Of(*way.back());
    path_ = way.back()->path;
    setCurrentIndex(index);
    scrollTo(index);
    return true;
}

void BKC_DirTree::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    QTreeView::currentChanged(current, previous);
    if (following_ || !current.isValid()) return;
    const auto path = folders_->Node_Of(current).path;
    if (path == path_) return;
    path_ = path;
    emit DirectoryChange(path_);
}

QString BKC_DirTree::Folder_At(const QPoint& viewport_point) const
{
    const auto index = indexAt(viewport_point);
    return index.isValid() ? folders_->Node_Of(index).path : QString();
}

// What stands below is read again only where it has been read before.
void BKC_DirTree::Refresh_Index(const QModelIndex& index)
{
    auto& node = folders_->Node_Of(index);
    if (index.isValid() && !node.read) return;
    folders_->Folders().Read(node);
    for (const auto& child : node.children)
        if (child->read) Refresh_Index(folders_->Index_Of(*child));
}

void BKC_DirTree::RefreshTree(const QString& Refresh_From_Folder)
{
    {
        const QScopedValueRollback following(following_, true);
        auto* node =
            Refresh_From_Folder.isEmpty() ? &folders_->Folders().Top() : folders_->Folders().Known(Refresh_From_Folder);
        if (node) Refresh_Index(folders_->Index_Of(*node));
    }
    if (path_.isEmpty()) return;
    auto present = path_;
    while (!Is_Folder(present) && present != u"/" && !present.isEmpty())
        present = Without_Trailing_Separator(Folder_Part(present));
    const bool gone = present != path_;
    if (Set_Path(present) && gone) emit DirectoryChange(path_);
}

void BKC_DirTree::Disk_Changed()
{
    const auto folders = std::exchange(changed_folders_, {});
    for (const auto& folder : folders) {
        auto* node = folders_->Folders().Known(folder);
        if (!node || !node->read) continue;
        const auto count_before = node->children.size();
        RefreshTree(folder);
        node = folders_->Folders().Known(folder);
        const auto count = node ? node->children.size() : 0;
        if (count != count_before) emit FoldersChanged(folder, count > count_before);
    }
}

// The chosen folder stays on view when the tree gets smaller.
void BKC_DirTree::resizeEvent(QResizeEvent* event)
{
    const QRect place = visualRect(currentIndex());
    const bool was_on_view = place.isValid() && place.bottom() < event->oldSize().height() && place.top() >= 0;
    QTreeView::resizeEvent(event);
    if (was_on_view) scrollTo(currentIndex());
}

void BKC_DirTree::mouseReleaseEvent(QMouseEvent* event)
{
    QTreeView::mouseReleaseEvent(event);
    const auto point = event->position().toPoint();
    emit TreeMouseUp(Button_Of(event->button()), Shift_Of(event->modifiers()), point.x(), point.y());
}

void BKC_DirTree::keyPressEvent(QKeyEvent* event)
{
    const int key = path_.isEmpty() ? 0 : event->key();
    if (key == Qt::Key_H && event->modifiers() == Qt::ControlModifier) return Turn_Hidden_Over();
    if (key == Qt::Key_Insert) return emit Create(path_);
    if (key == Qt::Key_F2 && !browse_only_) return emit Rename(path_);
    if (key == Qt::Key_Delete && !browse_only_) return emit Delete(path_);
    QTreeView::keyPressEvent(event);
}

void BKC_DirTree::contextMenuEvent(QContextMenuEvent* event)
{
    const bool by_key = event->reason() == QContextMenuEvent::Keyboard;
    const auto folder = by_key ? path_ : Folder_At(event->pos());
    if (folder.isEmpty()) return;
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(tr("&New Folder..."), this, [this, folder] { emit Create(folder); });
    if (!browse_only_) {
        menu->addAction(tr("&Rename Folder..."), this, [this, folder] { emit Rename(folder); });
        menu->addAction(tr("&Copy Folders..."), this, [this, folder] { emit FolderList(folder); });
        menu->addAction(tr("&Delete Folder..."), this, [this, folder] { emit Delete(folder); });
    }
    menu->addSeparator();
    auto* hidden = menu->addAction(tr("Show &Hidden"), this, &BKC_DirTree::Turn_Hidden_Over);
    hidden->setShortcut(Qt::CTRL | Qt::Key_H);
    hidden->setCheckable(true);
    hidden->setChecked(ShowHidden());
    const auto place = by_key ? viewport()->mapToGlobal(visualRect(currentIndex()).center()) : event->globalPos();
    menu->popup(place);
}

void BKC_DirTree::dragEnterEvent(QDragEnterEvent* event)
{
    event->setAccepted(event->mimeData()->hasUrls());
}

void BKC_DirTree::dragMoveEvent(QDragMoveEvent* event)
{
    QTreeView::dragMoveEvent(event); // scrolls and opens folders
    event->setAccepted(event->mimeData()->hasUrls() && !Folder_At(event->position().toPoint()).isEmpty());
}

// The host copies or moves; this control only tells. A folder of this tree comes as one directory, all else as files.
void BKC_DirTree::dropEvent(QDropEvent* event)
{
    const auto target = Folder_At(event->position().toPoint());
    const auto paths = Local_Paths(*event->mimeData());
    setState(NoState);
    if (target.isEmpty() || paths.isEmpty()) return event->ignore();
    event->setDropAction(Qt::CopyAction); // nobody removes the source behind the host's back
    event->accept();
    const int shift = Shift_Of(event->modifiers());
    if (event->source() != this) return emit FilesDropped(paths, target, shift);
    if (paths.front() != target) emit DirectoryDropped(1, shift, paths.front(), target); // else a drag that slipped
}
