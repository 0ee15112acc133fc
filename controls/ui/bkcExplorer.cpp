#include "controls/ui/bkcExplorer.h"

#include "frame/text/Text_Utilities.h"
#include "frame/text/Uri_List.h"

namespace {

constexpr int Settle_Milliseconds = 250; // changes on disk come in bursts

}

bkcExplorer::bkcExplorer(QWidget* parent)
    : QWidget(parent),
      split_(new bkcSplit(this)),
      tree_(new BKC_DirTree),
      grid_(new bkcGrid),
      message_(new QLabel(grid_->viewport())),
      model_(grid_->Content())
{
    setAccessibleName(tr("Folders and files"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(split_);
    split_->Set_Orientation(Split_Orientation::Vertical);
    split_->Set_MinSplitRatio(0.1);
    split_->Set_MaxSplitRatio(0.9);
    split_->Set_Caption(tr("Between folders and files"));
    split_->Initialize(nullptr, tree_, grid_, true);
    message_->setWordWrap(true);
    message_->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    message_->setMargin(8);
    message_->setAttribute(Qt::WA_TransparentForMouseEvents);
    message_->hide();
    grid_->viewport()->installEventFilter(this);
    grid_->installEventFilter(this);
    settle_.setSingleShot(true);
    settle_.setInterval(Settle_Milliseconds);
    connect(&settle_, &QTimer::timeout, this, &bkcExplorer::Folder_Changed);
    connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, [this] {
        if (!settle_.isActive()) settle_.start(); // a steady stream of changes still shows
    });
    Connect_Tree();
    Connect_Grid();
    InitializeGrid();
}

void bkcExplorer::Connect_Tree()
{
    connect(tree_, &BKC_DirTree::DirectoryChange, this, &bkcExplorer::Go_To);
    connect(tree_, &BKC_DirTree::DirectoryDropped, this,
            [this](int Button, int Shift, const QString& source, const QString& target) {
                emit DirectoryDragDrop(Button, Shift, source, target, false);
            });
    connect(tree_, &BKC_DirTree::FilesDropped, this,
            [this](const QStringList& paths, const QString& target, int Shift) {
                dropped_files_ = paths;
                emit DragDrop(target, Shift);
                dropped_files_.clear();
            });
    connect(tree_, &BKC_DirTree::FoldersChanged, this, &bkcExplorer::RefreshAlert);
    connect(tree_, &BKC_DirTree::ShowHiddenChange, this, &bkcExplorer::Set_ShowHidden);
    connect(tree_, &BKC_DirTree::FolderList, this, &bkcExplorer::FolderList);
    connect(tree_, &BKC_DirTree::Create, this, &bkcExplorer::Create);
    connect(tree_, &BKC_DirTree::Delete, this, &bkcExplorer::Delete);
    connect(tree_, &BKC_DirTree::Rename, this, &bkcExplorer::Rename);
    connect(tree_, &BKC_DirTree::TreeMouseUp, this, &bkcExplorer::TreeMouseUp);
}

void bkcExplorer::Connect_Grid()
{
    auto& content = grid_->Content();
    content.Set_SelectionMode(2);
    for (const auto property : {Grid_Property::AllowColumnSort, Grid_Property::AllowColumnSizing,
                                Grid_Property::AllowCopy, Grid_Property::ScrollTrack, Grid_Property::ToolTipEnabled})
        content.Set(property, true);
    for (const auto property : {Grid_Property::RowHeadings, Grid_Property::HorzLines, Grid_Property::VertLines})
        content.Set(property, false);
    grid_->setAccessibleName(tr("Files"));
    grid_->setTextElideMode(Qt::ElideMiddle); // names often differ at their ends
    grid_->Drag_Data = [this] {
        auto* payload = new QMimeData; // owned by the drag
        payload->setData(QStringLiteral("text/uri-list"), Uri_List_Of(Selected_Files()));
        return payload;
    };
    connect(grid_, &bkcGrid::Click, this, &bkcExplorer::GridClick);
    connect(grid_, &bkcGrid::SelChange, this, &bkcExplorer::SelChange);
    connect(grid_, &bkcGrid::DblClick, this, [this](int, int Grid_Row) { Open_Row(Grid_Row); });
}

void bkcExplorer::Open_Row(int Grid_Row)
{
    const auto path = model_.Path_At(Grid_Row);
    if (path.isEmpty()) return;
    if (ExplorerGridMode() == Explorer_Grid_Mode::Folders && Set_Path(path)) emit ChangePath(Path());
    emit GridDblClick(path);
}

bool bkcExplorer::Set_Path(const QString& New_Path)
{
    const auto path = Existing_Path(New_Path);
    if (!tree_->Set_Path(path)) return false;
    model_.Set_Path(tree_->Path());
    Refresh();
    return true;
}

void bkcExplorer::Go_To(const QString& path)
{
    model_.Set_Path(path);
    Refresh();
    emit ChangePath(path);
}

void bkcExplorer::Refresh()
{
    settle_.stop();
    if (!Path().isEmpty()) model_.Refresh();
    Watch();
    Show_Message();
    emit Listed();
}

void bkcExplorer::Watch()
{
    const auto watched = watcher_.directories();
    if (watched == QStringList(Path())) return;
    if (!watched.isEmpty()) watcher_.removePaths(watched);
    if (!Path().isEmpty()) watcher_.addPath(Path());
}

// A vanished folder is left for its nearest one that still exists.
void bkcExplorer::Folder_Changed()
{
    if (!Is_Folder(Path())) return tree_->RefreshTree();
    if (!model_.Shows_File_List() && model_.Is_Stale()) Refresh();
}

void bkcExplorer::RefreshTree(const QString& Refresh_From_Folder)
{
    tree_->RefreshTree(Refresh_From_Folder);
}

void bkcExplorer::InitializeTree()
{
    tree_->collapseAll();
    tree_->RefreshTree();
    if (!Path().isEmpty()) tree_->Set_Path(Path());
}

void bkcExplorer::InitializeGrid()
{
    model_.Initialize_Columns();
    grid_->setAccessibleName(ExplorerGridMode() == Explorer_Grid_Mode::Files ? tr("Files") : tr("Folders in folder"));
    Refresh();
}

void bkcExplorer::InitializeGridExplicit(const QStringList& File_List)
{
    model_.Show_Files(File_List);
    Show_Message();
    emit Listed();
}

void bkcExplorer::Set_ExplorerPattern(const QString& New_Pattern)
{
    if (model_.Pattern == New_Pattern) return;
    model_.Pattern = New_Pattern;
    tree_->Set_Pattern(New_Pattern);
    Refresh();
}

void bkcExplorer::Set_PatternSeparator(const QString& New_Separator)
{
    model_.PatternSeparator = New_Separator;
    Refresh();
}

void bkcExplorer::Set_ExplorerGridMode(Explorer_Grid_Mode New_Mode)
{
    if (model_.Mode == New_Mode) return;
    model_.Mode = New_Mode;
    InitializeGrid();
}

void bkcExplorer::Set_ShowHidden(bool New_Show)
{
    model_.Hidden = New_Show;
    tree_->Set_ShowHidden(New_Show);
    Refresh();
}

void bkcExplorer::Set_FolderItemAvailableMessage(bool New_Message)
{
    folder_item_available_message_ = New_Message;
    Show_Message();
}

void bkcExplorer::Set_EmptyMessage(const QString& New_Message)
{
    empty_message_ = New_Message;
    Show_Message();
}

void bkcExplorer::Show_Message()
{
    const bool empty = grid_->Content().Rows() == 0 && !Path().isEmpty();
    const bool files = ExplorerGridMode() == Explorer_Grid_Mode::Files;
    auto text = model_.Error_Text();
    if (text.isEmpty() && empty && folder_item_available_message_) {
        const auto usual = files ? tr("No pictures in this folder") : tr("No folders in this folder");
        text = empty_message_.isEmpty() ? usual : empty_message_;
    }
    message_->setText(text);
    message_->setVisible(!text.isEmpty());
    message_->setGeometry(grid_->viewport()->rect());
}

bool bkcExplorer::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == grid_->viewport() && event->type() == QEvent::Resize)
        message_->setGeometry(grid_->viewport()->rect());
    const bool key = watched == grid_ && event->type() == QEvent::KeyPress;
    if (key && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Delete && !Selected_Files().isEmpty()) {
        emit DragDropRecycle();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}
