#include "controls/Folder_Tree.h"

#include "controls/Folder_Listing.h"
#include "frame/text/Text_Utilities.h"
#include <QtCore/QCoreApplication>
#include <QtCore/QSet>

namespace {

bool Comes_Before(const QString& left, const QString& right)
{
    const int compared = Compare_Without_Case(left, right);
    return compared != 0 ? compared < 0 : left < right;
}

bool Is_Below(const QString& path, const QString& folder)
{
    return path == folder || folder == QLatin1String("/") || path.startsWith(folder + QLatin1Char('/'));
}

void Number_Children(Folder_Node& node)
{
    for (std::size_t i = 0; i < node.children.size(); ++i) node.children[i]->row = int(i);
}

std::unique_ptr<Folder_Node> New_Child(Folder_Node& node, const QString& name)
{
    auto child = std::make_unique<Folder_Node>();
    child->name = name;
    child->path = With_Trailing_Separator(node.path) + name;
    child->parent = &node;
    return child;
}

} // namespace

Folder_Tree::Folder_Tree(const QString& home)
{
    const auto add = [this](const QString& name, const QString& path) {
        auto node = std::make_unique<Folder_Node>();
        node->name = name;
        node->path = path;
        node->parent = &top_;
        top_.children.push_back(std::move(node));
    };
    const auto home_path = Without_Trailing_Separator(home);
    if (!home_path.isEmpty() && home_path != QLatin1String("/"))
        add(QCoreApplication::translate("Folder_Tree", "Home"), home_path);
    add(QStringLiteral("/"), QStringLiteral("/"));
    Number_Children(top_);
    top_.read = true;
}

Folder_Node* Folder_Tree::Child_Named(Folder_Node& node, const QString& name) const
{
    for (const auto& child : node.children)
        if (child->name == name) return child.get();
    return nullptr;
}

Folder_Node& Folder_Tree::Insert_Child(Folder_Node& node, const QString& name)
{
    const auto place = std::find_if(node.children.begin(), node.children.end(),
                                    [&](const auto& child) { return Comes_Before(name, child->name); });
    const int row = int(place - node.children.begin());
    if (Listener) Listener->Before_Insert(node, row, row);
    const auto added = node.children.insert(place, New_Child(node, name));
    Number_Children(node);
    if (Listener) Listener->After_Insert();
    return **added;
}

void Folder_Tree::Insert_All(Folder_Node& node, const QStringList& names)
{
    if (Listener) Listener->Before_Insert(node, 0, int(names.size()) - 1);
    for (const auto& name : names) node.children.push_back(New_Child(node, name));
    Number_Children(node);
    if (Listener) Listener->After_Insert();
}

// Runs of neighbours go at once, from the end so that rows in front keep their numbers.
void Folder_Tree::Remove_Missing(Folder_Node& node, const QStringList& names)
{
    const QSet<QString> stay(names.begin(), names.end());
    for (int last = int(node.children.size()) - 1; last >= 0; --last) {
        if (stay.contains(node.children[std::size_t(last)]->name)) continue;
        int first = last;
        while (first > 0 && !stay.contains(node.children[std::size_t(first - 1)]->name)) --first;
        if (Listener) Listener->Before_Remove(node, first, last);
        node.children.erase(node.children.begin() + first, node.children.begin() + last + 1);
        Number_Children(node);
        if (Listener) Listener->After_Remove();
        last = first;
    }
}

QStringList Folder_Tree::Read(Folder_Node& node)
{
    if (&node == &top_) return {};
    const auto listed = List_Folder({.folder = node.path, .folders = true, .hidden = Hidden});
    node.readable = listed.has_value();
    node.read = true;
    QStringList names;
    if (listed)
        for (const auto& entry : *listed) names += entry.name;
    Remove_Missing(node, names);
    QStringList came;
    QSet<QString> present;
    for (const auto& child : node.children) present.insert(child->name);
    for (const auto& name : names)
        if (!present.contains(name)) came += name;
    if (came.isEmpty()) return came;
    if (node.children.empty())
        Insert_All(node, came);
    else
        for (const auto& name : came) Insert_Child(node, name);
    return came;
}

bool Folder_Tree::May_Have_Children(const Folder_Node& node) const
{
    if (node.read) return !node.children.empty();
    return Has_Folders(node.path, Hidden);
}

Folder_Node& Folder_Tree::Top_For(const QString& path)
{
    for (const auto& child : top_.children)
        if (Is_Below(path, child->path)) return *child;
    return *top_.children.back();
}

std::vector<Folder_Node*> Folder_Tree::Way_To(const QString& path)
{
    const auto target = Without_Trailing_Separator(path);
    if (!target.startsWith(QLatin1Char('/')) || !Is_Folder(target)) return {};
    auto* node = &Top_For(target);
    std::vector<Folder_Node*> way{node};
    const auto rest = target.mid(node->path.size()).split(QLatin1Char('/'), Qt::SkipEmptyParts);
    for (const auto& name : rest) {
        if (!node->read) Read(*node);
        auto* child = Child_Named(*node, name);
        if (!child) child = &Insert_Child(*node, name);
        way.push_back(node = child);
    }
    return way;
}

Folder_Node* Folder_Tree::Known(const QString& path)
{
    const auto target = Without_Trailing_Separator(path);
    auto* node = &Top_For(target);
    for (const auto& name : target.mid(node->path.size()).split(QLatin1Char('/'), Qt::SkipEmptyParts)) {
        node = Child_Named(*node, name);
        if (!node) return nullptr;
    }
    return node;
}
