#pragma once

#include <QtCore/QHash>
#include <list>
#include <span>
#include <vector>

class Picture_List;

/// The selected pictures in the order of selecting, each once. Testing, adding and taking out are of constant time.
class Picture_Selection {
public:
    explicit Picture_Selection(const Picture_List& pictures) : pictures_(pictures) {}

    int Count() const { return int(order_.size()); }
    bool Is_Empty() const { return order_.empty(); }

    /// In the order of selecting.
    std::vector<int> Selected_Indices() const;
    std::vector<int> Selected_Keys() const { return {order_.begin(), order_.end()}; }

    bool Test_Index(int index) const;
    bool Test_Key(int key) const { return places_.contains(key); }

    /// 1-based place in the order of selecting; 0 when not selected.
    int Position_Of_Key(int key) const;

    /// True when something changed; unknown pictures change nothing.
    bool Set_Index(int index, bool selected);
    bool Set_Key(int key, bool selected);

    /// The picture was discarded.
    void Forget_Key(int key);
    void Clear();

    /// Keeps the anchor, the picture that was selected first, alone.
    void Cut_To_First();

private:
    const Picture_List& pictures_;
    std::list<int> order_; // keys
    QHash<int, std::list<int>::iterator> places_;
};
