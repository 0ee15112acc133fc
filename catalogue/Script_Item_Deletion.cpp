#include "catalogue/Script_Item_Deletion.h"

#include <QtCore/QCoreApplication>

Script_Item_Deletion::Script_Item_Deletion(Catalogue_State& state, std::span<const int> keys) : state_(state)
{
    for (const int key : keys)
        if (state_.pictures.Find(key) != nullptr) keys_.push_back(key);
    position_ = keys_.empty() ? 0 : 1;
}

Picture_Item* Script_Item_Deletion::Item() const
{
    return position_ > 0 ? state_.pictures.Find(keys_[std::size_t(position_) - 1]) : nullptr;
}

QString Script_Item_Deletion::Caption() const
{
    const Picture_Item* item = Item();
    return QStringLiteral("Halvine - Script Items For %1 (%2 of %3)")
        .arg(item != nullptr ? item->File_Name : QString(), QString::number(position_), QString::number(Count()));
}

std::vector<Script_Item_Deletion::Row> Script_Item_Deletion::Rows() const
{
    std::vector<Row> rows;
    const Picture_Item* item = Item();
    for (int i = 1; item != nullptr && i <= item->Script_Items.Count(); ++i) {
        const Script_Item& script = item->Script_Items.Item(i);
        rows.push_back(
            {Script_Item_Type_Text(script.Script_Item_Type), script.Script_Item_String, marked_.count(i) > 0});
    }
    return rows;
}

void Script_Item_Deletion::Mark(int row, bool marked)
{
    const Picture_Item* item = Item();
    if (item == nullptr || row < 1 || row > item->Script_Items.Count()) return;
    if (marked)
        marked_.insert(row);
    else
        marked_.erase(row);
}

void Script_Item_Deletion::Commit()
{
    Picture_Item* item = Item();
    if (item == nullptr || marked_.empty()) return;
    for (const int row : marked_) item->Script_Items.Set_Item(row, {});
    item->Script_Items.Compact();
    item->Script_Modified = true;
    marked_.clear();
}

bool Script_Item_Deletion::May_Leave() const
{
    return marked_.empty() || state_.platform.dialogs.Confirm(
                                  QStringLiteral("There have been uncommitted deletions, do you wish to abandon?"));
}

bool Script_Item_Deletion::Step(int by)
{
    const int target = position_ + by;
    if (target < 1 || target > Count() || !May_Leave()) return false;
    marked_.clear();
    position_ = target;
    return true;
}

QString Script_Item_Type_Text(int type)
{
    const char* text = "";
    switch (Script_Item_Kind(type)) {
    case Script_Item_Kind::Cleared: break;
    case Script_Item_Kind::Contrast_Optimize: text = "Contrast Optimize"; break;
    case Script_Item_Kind::Saturation_Value: text = "Saturation"; break;
    case Script_Item_Kind::Color_Balance: text = "Color Balance"; break;
    case Script_Item_Kind::Gamma: text = "Gamma"; break;
    case Script_Item_Kind::Crop: text = "Crop"; break;
    case Script_Item_Kind::Scale: text = "Scale"; break;
    case Script_Item_Kind::Unsharp: text = "Unsharp Mask"; break;
    case Script_Item_Kind::Blur: text = "Blur"; break;
    case Script_Item_Kind::Text: text = "Text"; break;
    }
    return *text != 0 ? QCoreApplication::translate("Script_Item_Deletion", text) : QString();
}
