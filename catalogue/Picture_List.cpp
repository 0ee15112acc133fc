#include "catalogue/Picture_List.h"

#include "frame/text/Text_Utilities.h"

#include <algorithm>
#include <iterator>

int Picture_List::Index_From_Key(int key) const
{
    const bool was_given = key > 0 && std::size_t(key) < index_by_key_.size();
    const int index = was_given ? index_by_key_[std::size_t(key)] : 0;
    return index > 0 ? index : -1;
}

Picture_Item* Picture_List::Find(int key)
{
    const int index = Index_From_Key(key);
    return index > 0 ? &Item(index) : nullptr;
}

const Picture_Item* Picture_List::Find(int key) const
{
    const int index = Index_From_Key(key);
    return index > 0 ? &Item(index) : nullptr;
}

int Picture_List::Index_From_Name(const QString& full_name, int first_index) const
{
    const auto found = keys_by_name_.constFind(Case_Folded(full_name));
    if (found == keys_by_name_.constEnd()) return 0;
    for (const int key : *found) {
        const int index = Index_From_Key(key);
        if (index >= first_index) return index;
    }
    return 0;
}

std::vector<int> Picture_List::Indices_From_Name(const QString& full_name) const
{
    std::vector<int> indices;
    for (const int key : keys_by_name_.value(Case_Folded(full_name))) indices.push_back(Index_From_Key(key));
    return indices;
}

int Picture_List::Append(Picture_Item item)
{
    const auto key = std::size_t(item.Picture_Key);
    items_.push_back(std::make_unique<Picture_Item>(std::move(item)));
    if (index_by_key_.size() <= key) index_by_key_.resize(key + 1, 0);
    index_by_key_[key] = Count();
    Learn_Name(*items_.back());
    return Count();
}

void Picture_List::Remove(std::span<const int> indices)
{
    if (Are_All(indices)) return Remove_All(); // nobody needs to be looked up one by one
    int first = Count() + 1;
    for (const int index : indices) {
        if (!Is_Index(index) || !items_[std::size_t(index) - 1]) continue;
        Forget_Name(Item(index));
        index_by_key_[std::size_t(Item(index).Picture_Key)] = 0;
        removed_.push_back(std::move(items_[std::size_t(index) - 1]));
        first = std::min(first, index);
    }
    std::erase_if(items_, [](const auto& item) { return !item; });
    Number_From(first);
    Free_Some();
}

void Picture_List::Remove_All()
{
    std::fill(index_by_key_.begin(), index_by_key_.end(), 0);
    std::move(items_.begin(), items_.end(), std::back_inserter(removed_));
    items_.clear();
    while (!removed_names_.isEmpty()) Free_Some(); // of an earlier time, which nobody has freed yet
    removed_names_.swap(keys_by_name_);
    Free_Some();
}

void Picture_List::Free_Some()
{
    const auto count = std::min(removed_.size(), std::size_t(Most_Freed_At_Once));
    removed_.resize(removed_.size() - count);
    if (removed_names_.size() <= Most_Freed_At_Once) {
        removed_names_ = {};
        return;
    }
    auto name = removed_names_.cbegin();
    for (int i = 0; i < Most_Freed_At_Once; ++i) name = removed_names_.erase(name);
}

bool Picture_List::Are_All(std::span<const int> indices) const
{
    std::vector<bool> named(items_.size(), false);
    for (const int index : indices)
        if (Is_Index(index)) named[std::size_t(index) - 1] = true;
    return std::find(named.begin(), named.end(), false) == named.end();
}

void Picture_List::Set_Name(int index, const QString& path, const QString& file_name)
{
    Picture_Item& item = Item(index);
    Forget_Name(item);
    item.Path = path;
    item.File_Name = file_name;
    Learn_Name(item);
}

void Picture_List::Number_From(int first_index)
{
    for (int index = first_index; index <= Count(); ++index)
        index_by_key_[std::size_t(Item(index).Picture_Key)] = index;
}

void Picture_List::Forget_Name(const Picture_Item& item)
{
    const auto found = keys_by_name_.find(Case_Folded(item.Full_Name()));
    if (found == keys_by_name_.end()) return;
    std::erase(*found, item.Picture_Key);
    if (found->empty()) keys_by_name_.erase(found);
}

void Picture_List::Learn_Name(const Picture_Item& item)
{
    std::vector<int>& keys = keys_by_name_[Case_Folded(item.Full_Name())];
    keys.insert(std::upper_bound(keys.begin(), keys.end(), item.Picture_Key), item.Picture_Key);
}
