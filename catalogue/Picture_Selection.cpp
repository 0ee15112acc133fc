#include "catalogue/Picture_Selection.h"

#include "catalogue/Picture_List.h"

#include <algorithm>

std::vector<int> Picture_Selection::Selected_Indices() const
{
    std::vector<int> indices;
    indices.reserve(order_.size());
    for (const int key : order_) indices.push_back(pictures_.Index_From_Key(key));
    return indices;
}

bool Picture_Selection::Test_Index(int index) const
{
    return pictures_.Is_Index(index) && Test_Key(pictures_.Item(index).Picture_Key);
}

int Picture_Selection::Position_Of_Key(int key) const
{
    const auto place = places_.constFind(key);
    if (place == places_.constEnd()) return 0;
    return int(std::distance(order_.begin(), std::list<int>::const_iterator(*place))) + 1;
}

bool Picture_Selection::Set_Index(int index, bool selected)
{
    return pictures_.Is_Index(index) && Set_Key(pictures_.Item(index).Picture_Key, selected);
}

bool Picture_Selection::Set_Key(int key, bool selected)
{
    if (pictures_.Find(key) == nullptr || Test_Key(key) == selected) return false;
    if (selected)
        places_.insert(key, order_.insert(order_.end(), key));
    else
        Forget_Key(key);
    return true;
}

void Picture_Selection::Forget_Key(int key)
{
    const auto place = places_.constFind(key);
    if (place == places_.constEnd()) return;
    order_.erase(*place);
    places_.erase(place);
}

void Picture_Selection::Clear()
{
    order_.clear();
    places_.clear();
}

void Picture_Selection::Cut_To_First()
{
    if (order_.empty()) return;
    const int anchor = order_.front();
    Clear();
    places_.insert(anchor, order_.insert(order_.end(), anchor));
}
