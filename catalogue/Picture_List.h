#pragma once

#include "catalogue/Picture_Item.h"

#include <QtCore/QHash>
#include <QtCore/QString>
#include <memory>
#include <span>
#include <vector>

/// The pictures of the run. An index is a 1-based position and shifts when pictures are discarded; a key stays with its
/// picture as long as that is listed and is never given out again. Keys and names are found in constant time however
/// many pictures are listed; a record stays where it is in memory until it is removed.
class Picture_List {
public:
    int Count() const { return int(items_.size()); }
    bool Is_Empty() const { return items_.empty(); }
    bool Is_Index(int index) const { return index >= 1 && index <= Count(); }

    /// index 1 to Count().
    Picture_Item& Item(int index) { return *items_[std::size_t(index) - 1]; }
    const Picture_Item& Item(int index) const { return *items_[std::size_t(index) - 1]; }

    /// -1 when the key is not listed.
    int Index_From_Key(int key) const;

    /// Null when the key is not listed.
    Picture_Item* Find(int key);
    const Picture_Item* Find(int key) const;

    /// The first picture at or behind `first_index` with this full name, compared without regard to case; 0 when none.
    int Index_From_Name(const QString& full_name, int first_index = 1) const;

    /// All of them, in list order.
    std::vector<int> Indices_From_Name(const QString& full_name) const;

    /// Keys start at 1 and only grow.
    int Take_Next_Key() { return next_key_++; }

    /// Room for so many pictures more.
    void Reserve(int more) { items_.reserve(items_.size() + std::size_t(more)); }
    void Shrink() { items_.shrink_to_fit(); }

    /// The record is complete and becomes the last of the list; returns its index. Its key must be the newest.
    int Append(Picture_Item item);

    /// The records of these indices end; the others move up and keep their order. Freeing the memory of a hundred thousand
    /// records takes a third of a second: beyond Most_Freed_At_Once they only leave the list, and Free_Some goes on.
    void Remove(std::span<const int> indices);
    void Remove_All();
    bool Has_Removed_Records() const { return !removed_.empty() || !removed_names_.isEmpty(); }
    void Free_Some();

    static constexpr int Most_Freed_At_Once = 2000;

    void Set_Name(int index, const QString& path, const QString& file_name);

private:
    bool Are_All(std::span<const int> indices) const;
    void Number_From(int first_index);
    void Forget_Name(const Picture_Item& item);
    void Learn_Name(const Picture_Item& item);

    using Names = QHash<QString, std::vector<int>>;
    std::vector<std::unique_ptr<Picture_Item>> items_;
    std::vector<int> index_by_key_; // 0 for keys that are listed no more
    Names keys_by_name_;            // folded full name; keys grow, and so do their indices
    std::vector<std::unique_ptr<Picture_Item>> removed_;
    Names removed_names_;
    int next_key_ = 1;
};
