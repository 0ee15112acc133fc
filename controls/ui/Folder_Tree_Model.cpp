#include "controls/ui/Folder_Tree_Model.h"

#include "frame/text/Uri_List.h"

#include <QtCore/QMimeData>
#include <QtWidgets/QApplication>
#include <QtWidgets/QStyle>

Folder_Tree_Model::Folder_Tree_Model(const QString& home, QObject* parent)
    : QAbstractItemModel(parent),
      tree_(home),
      folder_icon_(QApplication::style()->standardIcon(QStyle::SP_DirIcon)),
      home_icon_(QApplication::style()->standardIcon(QStyle::SP_DirHomeIcon))
{
    tree_.Listener = this;
}

void Folder_Tree_Model::Set_Icons(const QIcon& folder, const QIcon& home)
{
    folder_icon_ = folder;
    home_icon_ = home;
}

Folder_Node& Folder_Tree_Model::Node_Of(const QModelIndex& index) const
{
    return index.isValid() ? *static_cast<Folder_Node*>(index.internalPointer()) : tree_.Top();
}

QModelIndex Folder_Tree_Model::Index_Of(const Folder_Node& node) const
{
    return node.parent ? createIndex(node.row, 0, &node) : QModelIndex();
}

QModelIndex Folder_Tree_Model::index(int row, int column, const QModelIndex& parent) const
{
    const auto& node = Node_Of(parent);
    if (column != 0 || row < 0 || row >= int(node.children.size())) return {};
    return createIndex(row, 0, node.children[std::size_t(row)].get());
}

QModelIndex Folder_Tree_Model::parent(const QModelIndex& child) const
{
    const auto& node = Node_Of(child);
    return node.parent ? Index_Of(*node.parent) : QModelIndex();
}

int Folder_Tree_Model::rowCount(const QModelIndex& parent) const
{
    return int(Node_Of(parent).children.size());
}

bool Folder_Tree_Model::hasChildren(const QModelIndex& parent) const
{
    return tree_.May_Have_Children(Node_Of(parent));
}

bool Folder_Tree_Model::canFetchMore(const QModelIndex& parent) const
{
    return !Node_Of(parent).read;
}

void Folder_Tree_Model::fetchMore(const QModelIndex& parent)
{
    tree_.Read(Node_Of(parent));
}

QVariant Folder_Tree_Model::data(const QModelIndex& index, int role) const
{
    const auto& node = Node_Of(index);
    switch (role) {
    case Qt::DisplayRole: return node.name;
    case Qt::ToolTipRole: return node.readable ? node.path : tr("%1 cannot be read").arg(node.path);
    case Qt::DecorationRole: return node.parent == &tree_.Top() && node.path != u"/" ? home_icon_ : folder_icon_;
    case Qt::ForegroundRole:
        if (node.readable) return {};
        return QApplication::palette().brush(QPalette::Disabled, QPalette::Text);
    default: return {};
    }
}

Qt::ItemFlags Folder_Tree_Model::flags(const QModelIndex& index) const
{
    if (!index.isValid()) return Qt::NoItemFlags;
    auto flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDropEnabled;
    if (Node_Of(index).parent != &tree_.Top()) flags |= Qt::ItemIsDragEnabled; // home and "/" stay where they are
    return flags;
}

QStringList Folder_Tree_Model::mimeTypes() const
{
    return {QStringLiteral("text/uri-list")};
}

QMimeData* Folder_Tree_Model::mimeData(const QModelIndexList& indexes) const
{
    QStringList paths;
    for (const auto& index : indexes) paths += Node_Of(index).path;
    auto* data = new QMimeData; // owned by the drag
    data->setData(mimeTypes().front(), Uri_List_Of(paths));
    return data;
}

void Folder_Tree_Model::Before_Insert(const Folder_Node& node, int first, int last)
{
    beginInsertRows(Index_Of(node), first, last);
}

void Folder_Tree_Model::Before_Remove(const Folder_Node& node, int first, int last)
{
    beginRemoveRows(Index_Of(node), first, last);
}
