#pragma once

#include "controls/Folder_Tree.h"
#include <QtCore/QAbstractItemModel>
#include <QtGui/QIcon>

/// A Folder_Tree as the tree view wants to see it. Children are read when the view opens a folder.
class Folder_Tree_Model : public QAbstractItemModel, private Folder_Tree_Listener {
    Q_OBJECT

public:
    Folder_Tree_Model(const QString& home, QObject* parent);

    Folder_Tree& Folders() { return tree_; }
    void Set_Icons(const QIcon& folder, const QIcon& home);
    Folder_Node& Node_Of(const QModelIndex& index) const;
    QModelIndex Index_Of(const Folder_Node& node) const;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& = {}) const override { return 1; }
    bool hasChildren(const QModelIndex& parent = {}) const override;
    bool canFetchMore(const QModelIndex& parent) const override;
    void fetchMore(const QModelIndex& parent) override;
    QVariant data(const QModelIndex& index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QMimeData* mimeData(const QModelIndexList& indexes) const override;
    QStringList mimeTypes() const override;

private:
    void Before_Insert(const Folder_Node& node, int first, int last) override;
    void After_Insert() override { endInsertRows(); }
    void Before_Remove(const Folder_Node& node, int first, int last) override;
    void After_Remove() override { endRemoveRows(); }

    mutable Folder_Tree tree_;
    QIcon folder_icon_;
    QIcon home_icon_;
};
