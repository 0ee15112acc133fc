#include "catalogue/Picture_Scripts.h"

#include "frame/files/Limits.h"

#include <algorithm>

namespace {

/// The last item of the type; 0 when there is none.
int Last_Of_Type(const Script_Item_Array& items, int type)
{
    for (int index = items.Count(); index >= 1; --index)
        if (items.Item(index).Script_Item_Type == type) return index;
    return 0;
}

} // namespace

bool Picture_Scripts::Set_All(int key, const QString& script)
{
    Picture_Item* item = state_.pictures.Find(key);
    if (item == nullptr) return false;
    Script_Item_Array items;
    if (Parse_Script_Items(script, items) != Script_Status::Complete) return false;
    item->Script_Items = items;
    item->Script_Modified = true;
    Show(*item);
    return true;
}

QString Picture_Scripts::Recall_All(int key) const
{
    const Picture_Item* item = state_.pictures.Find(key);
    return item != nullptr ? Join_Script_Items(item->Script_Items) : QString();
}

int Picture_Scripts::Set_Item(int key, const QString& text, int index)
{
    const int nothing[] = {0};
    return Set_Item(key, text, nothing, index);
}

int Picture_Scripts::Set_Item(int key, const QString& text, std::span<const int> clear_types, int index)
{
    Picture_Item* item = state_.pictures.Find(key);
    if (item == nullptr) return 0;
    Script_Item_Array& items = item->Script_Items;
    if (index < 1 || index > items.Count()) {
        if (text.isEmpty()) return 0;
        if (items.Count() >= Current_Limits().script_items) { // a reader of the file would stop there
            state_.platform.dialogs.Refuse(Script_Status_Text(Script_Status::Too_Many_Items));
            return 0;
        }
        items.Append({});
        index = items.Count();
    }
    std::vector<int> types(clear_types.begin(), clear_types.end());
    if (!text.isEmpty()) {
        const int type = Script_Item_Type_From_String(text);
        items.Set_Item(index, {type, text});
        item->Script_Modified = true;
        std::erase(types, type); // what was just written survives
    }
    const int before = items.Count();
    items.Remove_Types(types);
    if (items.Count() != before) item->Script_Modified = true;
    if (!text.isEmpty() || items.Count() != before) Show(*item);
    return index;
}

/// What is on view is always what the script makes of the file.
void Picture_Scripts::Show(const Picture_Item& item)
{
    state_.view->Draw_Thumbnail(state_.pictures.Index_From_Key(item.Picture_Key));
    const bool is_current = item.Picture_Key == state_.current_picture_key;
    if (is_current) state_.keeper->Keep_Now(); // the script of a large one takes seconds
    if (is_current) state_.view->Show_Current_Picture();
    state_.keeper->Keep_If_Due();
}

int Picture_Scripts::Recall_Item(int key, int type, QString& text) const
{
    text.clear();
    const Picture_Item* item = state_.pictures.Find(key);
    if (item == nullptr) return -1;
    const Script_Item_Array& items = state_.Items_In_Force(*item);
    const int found = Last_Of_Type(items, type);
    if (found == 0) return -1;
    text = items.Item(found).Script_Item_String;
    return &items == &item->Script_Items ? found : -1; // a prepared item is shown, but is not the picture's own
}
