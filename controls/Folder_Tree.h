#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <memory>
#include <vector>

/// The folders of a tree, read when they are asked for. The top has two: home and the root of the file system.
struct Folder_Node {
    QString name{}; ///< what the tree shows
    QString path{}; ///< native, without a separator at its end but for "/"; empty at the top
    Folder_Node* parent = nullptr;
    int row = 0;
    bool read = false;    ///< children are known
    bool readable = true; ///< false after a failed read
    std::vector<std::unique_ptr<Folder_Node>> children{};
};

/// Who shows the tree hears of rows that come and go, before and after; first and last are rows of the node.
class Folder_Tree_Listener {
public:
    virtual ~Folder_Tree_Listener() = default;
    virtual void Before_Insert(const Folder_Node& node, int first, int last) = 0;
    virtual void After_Insert() = 0;
    virtual void Before_Remove(const Folder_Node& node, int first, int last) = 0;
    virtual void After_Remove() = 0;
};

class Folder_Tree {
public:
    explicit Folder_Tree(const QString& home);

    Folder_Node& Top() { return top_; }
    bool Hidden = false;                      ///< folders that begin with a dot too; takes effect at the next read
    Folder_Tree_Listener* Listener = nullptr; ///< not owned

    /// The children anew; nodes that stay keep what is below them. Returns the names that came.
    QStringList Read(Folder_Node& node);
    bool May_Have_Children(const Folder_Node& node) const;
    /// The nodes from a top folder down to `path`, read on the way; below home the way goes through the home node. A
    /// hidden folder on the way is added. Empty, and nothing read, when there is no such folder.
    std::vector<Folder_Node*> Way_To(const QString& path);
    Folder_Node* Known(const QString& path); ///< a node that is in the tree already, or null

private:
    Folder_Node* Child_Named(Folder_Node& node, const QString& name) const;
    Folder_Node& Insert_Child(Folder_Node& node, const QString& name);
    void Insert_All(Folder_Node& node, const QStringList& names);
    void Remove_Missing(Folder_Node& node, const QStringList& names);
    Folder_Node& Top_For(const QString& path);

    Folder_Node top_;
};
