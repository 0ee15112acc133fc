#pragma once

#include <QtCore/QString>
#include <memory>
#include <vector>

/// The folders of a tree, read when they are asked for. The top has two: home and the root of the file system.
struct Folder_Node {
    QString name; ///< what the tree shows
    QString path; ///< native, without a separator at its end but for "/"
    Folder_Node* parent = nullptr;
    int row = 0;
    bool read = false;    ///< children are known
    bool readable = true; ///< false after a failed read
    std::vector<std::unique_ptr<Folder_Node>> children{};
};

class Folder_Tree {
public:
    explicit Folder_Tree(const QString& home);

    Folder_Node& Top() { return top_; }
    bool Hidden = false; ///< folders that begin with a dot too

    void Read(Folder_Node& node); ///< the children anew; deeper nodes of children that stay are kept
    bool May_Have_Children(const Folder_Node& node) const;
    /// The nodes from a top folder down to `path`, read on the way; under home the way goes through the home node. A
    /// hidden folder on the way is added. Empty when there is no such folder.
    std::vector<Folder_Node*> Way_To(const QString& path);
    /// A node that has been read, or null.
    Folder_Node* Known(const QString& path);

private:
    Folder_Node* Child_Named(Folder_Node& node, const QString& name);

    Folder_Node top_;
};
